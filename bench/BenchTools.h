// What the benchmarks share: a clock, a bitmap to paint on, medians, and one way to print what was measured.
// Layer 14: bench.
#pragma once

#include <afxwin.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace bench {

inline double Milliseconds() {
    static const double perSecond = [] {
        LARGE_INTEGER frequency;
        ::QueryPerformanceFrequency(&frequency);
        return static_cast<double>(frequency.QuadPart);
    }();
    LARGE_INTEGER now;
    ::QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * 1000.0 / perSecond;
}

template <class Code>
double Time(Code code) {
    const double begin = Milliseconds();
    code();
    return Milliseconds() - begin;
}

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// A memory context with a 32-bit bitmap.
class Picture {
public:
    Picture(int width, int height) : m_pixels(static_cast<size_t>(width) * static_cast<size_t>(height)) {
        m_dc.CreateCompatibleDC(nullptr);
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_bitmap = ::CreateDIBSection(m_dc.m_hDC, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0);
        m_old = ::SelectObject(m_dc.m_hDC, m_bitmap);
    }
    ~Picture() {
        ::SelectObject(m_dc.m_hDC, m_old);
        ::DeleteObject(m_bitmap);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    CDC& DC() { return m_dc; }
    std::vector<DWORD> Pixels() const {
        const auto* bits = static_cast<const DWORD*>(m_bits);
        return std::vector<DWORD>(bits, bits + m_pixels);
    }
    void Clear() { std::fill_n(static_cast<DWORD*>(m_bits), m_pixels, 0xFFFFFFu); }

private:
    size_t m_pixels;
    CDC m_dc;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_old = nullptr;
    void* m_bits = nullptr;
};

// Two loops over the same work, measured in turn in one run after a warm-up round. The least of each counts: whatever
// else the machine does only adds.
struct Comparison {
    double library = 0.0;
    double bare = 0.0;
    double Ratio() const { return library / bare; }
};

template <class Library, class Bare>
Comparison Compare(int rounds, Library library, Bare bare) {
    library();
    bare();
    Comparison least = {Time(library), Time(bare)};
    for (int i = 1; i < rounds; ++i) {
        least.bare = std::min(least.bare, Time(bare));
        least.library = std::min(least.library, Time(library));
    }
    return least;
}

} // namespace bench
