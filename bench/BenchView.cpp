#include "BenchView.h"

#include "BenchTools.h"

namespace bench {

std::vector<DWORD> Pixels(HDC dc, int width, int height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HDC memory = ::CreateCompatibleDC(dc);
    const HBITMAP bitmap = ::CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ old = ::SelectObject(memory, bitmap);
    ::BitBlt(memory, 0, 0, width, height, dc, 0, 0, SRCCOPY);
    ::GdiFlush();
    const auto* first = static_cast<const DWORD*>(bits);
    std::vector<DWORD> pixels(first, first + static_cast<size_t>(width) * static_cast<size_t>(height));
    ::SelectObject(memory, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    return pixels;
}

BenchView::BenchView() {
    const CRect place(0, 0, kWidth, kHeight);
    m_parent.CreateEx(0, AfxRegisterWndClass(0), L"bench", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, place, nullptr, 0);
    Create(AfxRegisterWndClass(0), L"view", WS_CHILD | WS_VISIBLE, place, &m_parent, 1, nullptr);
    GetVectorViewCoordTran()->SetScreenSize(CSize(kWidth, kHeight));
}

BenchView::~BenchView() {
    DestroyWindow();
    m_parent.DestroyWindow();
}

void BenchView::Repaint() {
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    ::GdiFlush();
}

std::vector<DWORD> BenchView::Shown() {
    CClientDC dc(this);
    return Pixels(dc.m_hDC, kWidth, kHeight);
}

LRESULT BenchView::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT && m_bare != nullptr) {
        PaintBare();
        return 0;
    }
    return CVectorView::WindowProc(message, wParam, lParam);
}

void BenchView::PaintBare() {
    PAINTSTRUCT paint;
    const HDC window = ::BeginPaint(m_hWnd, &paint);
    const HDC memory = ::CreateCompatibleDC(window);
    const HBITMAP bitmap = ::CreateCompatibleBitmap(window, kWidth, kHeight);
    const HGDIOBJ old = ::SelectObject(memory, bitmap);
    const HBRUSH brush = ::CreateSolidBrush(GetDocument()->GetBKColor());
    const HGDIOBJ oldBrush = ::SelectObject(memory, brush);
    ::PatBlt(memory, 0, 0, kWidth, kHeight, PATCOPY);
    ::SelectObject(memory, oldBrush);
    ::DeleteObject(brush);
    if (m_part) {
        m_bare->PaintPart(memory, RECT{0, 0, kWidth, kHeight});
    } else {
        m_bare->Paint(memory);
    }
    ::BitBlt(window, 0, 0, kWidth, kHeight, memory, 0, 0, SRCCOPY);
    ::SelectObject(memory, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    ::EndPaint(m_hWnd, &paint);
}

} // namespace bench
