// Pictures of the same drawing, once through the layer and once by bare GDI, and how far they differ.
#pragma once

#include "support/RecordingDC.h"

#include <algorithm>
#include <vector>

// A picture in memory with a pen of its own selected.
class Picture {
public:
    explicit Picture(int width = 200, int height = 150) : dc(width, height) {}
    void Ink(int style, int width, COLORREF color = 0x302010) {
        pen.DeleteObject();
        pen.CreatePen(style, width, color);
        dc.SelectObject(&pen);
    }
    ~Picture() { dc.SelectStockObject(BLACK_PEN); }

    int Inked() const {
        const std::vector<DWORD> pixels = dc.Pixels();
        return static_cast<int>(std::count_if(pixels.begin(), pixels.end(), [](DWORD p) { return p != 0xFFFFFF; }));
    }

    RecordingDC dc;
    CPen pen;
};

// The inked pixels of each picture from which the other has no ink, nor on one of the eight pixels around.
inline int FarFromEachOther(const Picture& a, const Picture& b) {
    const std::vector<DWORD> pixels[2] = {a.dc.Pixels(), b.dc.Pixels()};
    const int width = a.dc.Width();
    const int height = a.dc.Height();
    int apart = 0;
    for (int which = 0; which < 2; ++which) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (pixels[which][static_cast<size_t>(y * width + x)] == 0xFFFFFF) {
                    continue;
                }
                bool met = false;
                for (int at = 0; at < 9 && !met; ++at) {
                    const int nx = std::clamp(x + at % 3 - 1, 0, width - 1);
                    const int ny = std::clamp(y + at / 3 - 1, 0, height - 1);
                    met = pixels[1 - which][static_cast<size_t>(ny * width + nx)] != 0xFFFFFF;
                }
                apart += met ? 0 : 1;
            }
        }
    }
    return apart;
}
