// Holds the desktop of a Wine prefix open with one hidden window, so that each test process need not set it up again.
// Ends on WM_CLOSE to its window, which has the class name below, or with the prefix's server.
// Layer 16: tests (Win32 only).

#include <windows.h>

namespace {

constexpr wchar_t kClassName[] = L"NRKeepalive";

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

int main() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = WindowProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClassName;
    if (!RegisterClassW(&windowClass) || !CreateWindowExW(0, kClassName, L"", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10,
                                                          nullptr, nullptr, windowClass.hInstance, nullptr)) {
        return 1;
    }
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}
