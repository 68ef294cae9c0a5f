// A top-level window with a view in it, at a known place, for tests on a real display.
// Layer 16: tests.
#pragma once

#include "vectorview.h"

#include <string>
#include <vector>

// Handles the messages that are waiting, and no others.
void PumpMessages();

// The pixels of a window's client area, as the screen has them; 0x00BBGGRR, row by row from the top.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> pixels;

    COLORREF At(int x, int y) const { return pixels[static_cast<size_t>(y * width + x)]; }
    bool operator==(const Picture& other) const { return width == other.width && pixels == other.pixels; }
    // Pixels that differ.
    int Difference(const Picture& other) const;
    int Count(COLORREF color) const;
};

Picture TakePicture(CWnd& wnd);

// The parent: a plain popup whose client area begins at its own corner, shown at (100, 80).
class ParentWindow : public CWnd {
public:
    explicit ParentWindow(CSize client = CSize(400, 300));
    ~ParentWindow() override;
};

// Creates `view` as a child that fills `parent`, paints it once, and checks that the window is there.
void ShowView(CVectorView& view, ParentWindow& parent);

// A view in a window, ready to work with: scale 1, client height known to the mapping, so that the drawing point (x, y)
// is on pixel (x, 300 - y).
struct ViewHost {
    explicit ViewHost(CSize client = CSize(400, 300));

    CVectorViewCoordTran& Tran() { return *view.GetVectorViewCoordTran(); }
    CGraphicDocument& Document() { return *view.GetDocument(); }
    CDrawableArray& Objects() { return *view.GetDocument()->GetDrawableObjs(); }
    // Sends a message as the system does, in client pixels, then makes the repaint that it asks for.
    void Send(UINT message, WPARAM wParam, CPoint pixel);
    void Move(CPoint pixel, UINT flags = 0) { Send(WM_MOUSEMOVE, flags, pixel); }
    void Click(CPoint pixel);
    void RightClick(CPoint pixel) { Send(WM_RBUTTONDOWN, MK_RBUTTON, pixel); }
    void Key(UINT key);
    // Repaints what is invalid.
    void Update();
    Picture Take() { return TakePicture(view); }
    // What a fresh paint of the whole window shows.
    Picture TakeFresh();

    ParentWindow parent;
    CVectorView view;
};
