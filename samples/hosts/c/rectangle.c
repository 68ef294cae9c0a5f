/* A parameter view of a rectangle in a host in C: width and height are edited in the picture, the area follows.
 * Negative values are refused. After every change the drawing is stored in a buffer and read back without a window. The
 * message loop knows nothing of the view. */
#include "figure.h"

#include <windows.h>

static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    HWND view = GetDlgItem(window, 1);
    switch (message) {
    case WM_CREATE:
        view = CreateWindowExW(0, NRV_PARM_VIEW_CLASS, L"", WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, window, (HMENU)1, NULL,
                               NULL);
        return view != NULL ? 0 : -1;
    case WM_SIZE:
        MoveWindow(view, 0, 0, LOWORD(lparam), HIWORD(lparam), TRUE);
        if (outline != 0) {
            CHECK(NrvZoomExtents(view));
        }
        return 0;
    case WM_SETFOCUS: /* the keyboard begins at the width; a refused text keeps its own box */
        if (outline != 0) {
            UpdateWindow(view);
            NrvBeginEdit(view, width);
        }
        return 0;
    case WM_NOTIFY:
        if (((NMHDR*)lparam)->hwndFrom == view) {
            on_event((NrvEvent*)lparam);
        }
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(window, message, wparam, lparam);
    }
}

int main(void) {
    WNDCLASSW class = {0};
    HWND window;
    MSG message;
    setvbuf(stdout, NULL, _IONBF, 0);
    CHECK(NrvInitialize());
    class.lpfnWndProc = procedure;
    class.hCursor = LoadCursor(NULL, IDC_ARROW);
    class.lpszClassName = L"RectangleHost";
    RegisterClassW(&class);
    window = CreateWindowExW(0, L"RectangleHost", L"Rectangle", WS_OVERLAPPEDWINDOW, 40, 40, 640, 480, NULL, NULL, NULL,
                             NULL);
    if (window == NULL) {
        return 1;
    }
    begin(GetDlgItem(window, 1));
    ShowWindow(window, SW_SHOW);
    while (GetMessageW(&message, NULL, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
