/* The parameter view of a rectangle as a control of a dialog: the template in rectangle.rc names its window class, and
 * the dialog's own loop runs it, Tab, Return and Escape of an open edit included. The figure is that of the C sample.
 */
#include "../c/figure.h"

#include <windows.h>

static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    HWND view = GetDlgItem(dialog, 100);
    switch (message) {
    case WM_INITDIALOG:
        begin(view);
        PostMessage(dialog, WM_APP, 0, 0);
        return TRUE;
    case WM_APP: /* the dialog is shown */
        UpdateWindow(view);
        CHECK(NrvBeginEdit(view, width));
        return TRUE;
    case WM_NOTIFY:
        if (((NMHDR*)lparam)->hwndFrom == view) {
            on_event((NrvEvent*)lparam);
        }
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wparam) == IDCANCEL) {
            EndDialog(dialog, 0);
        }
        return TRUE;
    default:
        return FALSE;
    }
}

int main(void) {
    setvbuf(stdout, NULL, _IONBF, 0);
    CHECK(NrvInitialize()); /* before the template names the class */
    return (int)DialogBoxParamW(GetModuleHandle(NULL), MAKEINTRESOURCEW(1), NULL, procedure, 0);
}
