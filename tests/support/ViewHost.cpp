#include "ViewHost.h"

#include <gtest/gtest.h>

void PumpMessages() {
    MSG msg;
    while (::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&msg);
        ::DispatchMessage(&msg);
    }
}

// ---- Picture -------------------------------------------------------------------------------------------------------

int Picture::Difference(const Picture& other) const {
    if (pixels.size() != other.pixels.size()) {
        return -1;
    }
    int count = 0;
    for (size_t i = 0; i < pixels.size(); ++i) {
        count += pixels[i] != other.pixels[i] ? 1 : 0;
    }
    return count;
}

int Picture::Count(COLORREF color) const {
    int count = 0;
    for (COLORREF pixel : pixels) {
        count += pixel == color ? 1 : 0;
    }
    return count;
}

Picture TakePicture(CWnd& wnd) {
    CRect client;
    wnd.GetClientRect(&client);
    Picture picture;
    picture.width = client.Width();
    picture.height = client.Height();
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = picture.width;
    info.bmiHeader.biHeight = -picture.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC window = ::GetDC(wnd.m_hWnd);
    HBITMAP bitmap = ::CreateDIBSection(window, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HDC memory = ::CreateCompatibleDC(window);
    HGDIOBJ old = ::SelectObject(memory, bitmap);
    EXPECT_TRUE(::BitBlt(memory, 0, 0, picture.width, picture.height, window, 0, 0, SRCCOPY));
    ::GdiFlush();
    const auto* source = static_cast<const DWORD*>(bits);
    picture.pixels.reserve(static_cast<size_t>(picture.width * picture.height));
    for (int i = 0; i < picture.width * picture.height; ++i) {
        const DWORD c = source[i];
        picture.pixels.push_back(((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF));
    }
    ::SelectObject(memory, old);
    ::DeleteDC(memory);
    ::DeleteObject(bitmap);
    ::ReleaseDC(wnd.m_hWnd, window);
    return picture;
}

// ---- Windows -------------------------------------------------------------------------------------------------------

ParentWindow::ParentWindow(CSize client) {
    EXPECT_TRUE(CreateEx(0, AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), L"parent",
                         WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 100, 80, client.cx, client.cy, nullptr, nullptr));
}

ParentWindow::~ParentWindow() {
    DestroyWindow();
}

void ShowView(CVectorView& view, ParentWindow& parent) {
    CRect client;
    parent.GetClientRect(&client);
    ASSERT_TRUE(view.Create(nullptr, L"view", WS_CHILD | WS_VISIBLE, client, &parent, 1));
    PumpMessages();
    view.UpdateWindow();
}

ViewHost::ViewHost(CSize client) : parent(client) {
    view.GetVectorViewCoordTran()->SetScreenSize(client);
    ShowView(view, parent);
}

void ViewHost::Send(UINT message, WPARAM wParam, CPoint pixel) {
    view.SendMessage(message, wParam, MAKELPARAM(pixel.x, pixel.y));
}

void ViewHost::Click(CPoint pixel) {
    Send(WM_LBUTTONDOWN, MK_LBUTTON, pixel);
    Send(WM_LBUTTONUP, 0, pixel);
}

void ViewHost::Key(UINT key) {
    view.SendMessage(WM_KEYDOWN, key, 1);
}

void ViewHost::Update() {
    view.UpdateWindow();
}

Picture ViewHost::TakeFresh() {
    view.InvalidateRect(nullptr, TRUE);
    view.UpdateWindow();
    return TakePicture(view);
}
