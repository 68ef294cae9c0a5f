#include "TextObjects.h"

#include "Document.h"

#include <gtest/gtest.h>

#include <algorithm>

CLayerManager* Scene::Layers() {
    return graphic.GetDocument()->GetLayerManager();
}

Canvas::Canvas(int width, int height, COLORREF ground) : m_Width(width), m_Height(height), m_Ground(ground) {
    m_DC.CreateCompatibleDC(nullptr);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    m_hBitmap = ::CreateDIBSection(m_DC.m_hDC, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    EXPECT_NE(nullptr, m_hBitmap);
    m_pBits = static_cast<const DWORD*>(bits);
    m_hOld = ::SelectObject(m_DC.m_hDC, m_hBitmap);
    const RECT all = {0, 0, width, height};
    const HBRUSH brush = ::CreateSolidBrush(ground);
    ::FillRect(m_DC.m_hDC, &all, brush);
    ::DeleteObject(brush);
}

Canvas::~Canvas() {
    ::SelectObject(m_DC.m_hDC, m_hOld);
    ::DeleteObject(m_hBitmap);
}

COLORREF Canvas::At(int x, int y) const {
    ::GdiFlush();
    return ExchangeRedBlue(m_pBits[y * m_Width + x]);
}

CRect Canvas::Ink() const {
    ::GdiFlush();
    const DWORD ground = ExchangeRedBlue(m_Ground);
    CRect ink(m_Width, m_Height, 0, 0);
    for (int y = 0; y < m_Height; ++y) {
        for (int x = 0; x < m_Width; ++x) {
            if ((m_pBits[y * m_Width + x] & 0xFFFFFF) != ground) {
                ink.left = std::min<LONG>(ink.left, x);
                ink.top = std::min<LONG>(ink.top, y);
                ink.right = std::max<LONG>(ink.right, x + 1);
                ink.bottom = std::max<LONG>(ink.bottom, y + 1);
            }
        }
    }
    return ink.right == 0 ? CRect(0, 0, 0, 0) : ink;
}

int Canvas::Count(COLORREF color) const {
    ::GdiFlush();
    const DWORD wanted = ExchangeRedBlue(color);
    return static_cast<int>(std::count_if(m_pBits, m_pBits + m_Width * m_Height,
                                          [=](DWORD pixel) { return (pixel & 0xFFFFFF) == wanted; }));
}
