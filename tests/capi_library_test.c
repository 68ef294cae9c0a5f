// The C interface: version, errors, handles, drawings without a window.

#include "support/CHost.h"

#include <stddef.h>

_Static_assert(offsetof(NrvEventHeader, window) == offsetof(NMHDR, hwndFrom) &&
                   offsetof(NrvEventHeader, identity) == offsetof(NMHDR, idFrom) &&
                   offsetof(NrvEventHeader, code) == offsetof(NMHDR, code) && sizeof(NrvEventHeader) == sizeof(NMHDR),
               "an event begins as every WM_NOTIFY record does");
_Static_assert(sizeof(NrvChar) == 2, "strings are UTF-16");

C_TEST(CapiLibrary, TheVersionIsThatOfTheHeader) {
    EXPECT_INT(0x01000000, NrvGetVersion());
    EXPECT_INT(NRV_VERSION_MAJOR, NrvGetVersion() >> 24);
}

C_TEST(CapiLibrary, InitializingTwiceIsOneRegistration) {
    WNDCLASSEXW wc = {0};
    wc.cbSize = sizeof wc;
    EXPECT_INT(NRV_OK, NrvInitialize());
    EXPECT_INT(NRV_OK, NrvInitialize());
    EXPECT(GetClassInfoExW(GetModuleHandleW(NULL), NRV_VIEW_CLASS, &wc));
    EXPECT(wc.style & CS_GLOBALCLASS);
    EXPECT(wc.style & CS_DBLCLKS);
    EXPECT(GetClassInfoExW(GetModuleHandleW(NULL), NRV_PARM_VIEW_CLASS, &wc));
}

C_TEST(CapiLibrary, EachErrorHasATextAndOthersHaveNone) {
    wchar_t text[128];
    uint32_t length = 0;
    for (NrvResult error = NRV_OK; error <= NRV_E_SYSTEM; ++error) {
        EXPECT_INT(NRV_OK, NrvErrorText(error, text, 128, &length));
        EXPECT(length > 5 && length == wcslen(text));
    }
    EXPECT_INT(NRV_OK, NrvErrorText(NRV_E_THREAD, text, 128, &length));
    EXPECT_TEXT(L"The window belongs to another thread.", text);
    EXPECT_INT(NRV_E_ARGUMENT, NrvErrorText(NRV_E_SYSTEM + 1, text, 128, &length));
    EXPECT_INT(NRV_E_ARGUMENT, NrvErrorText(-1, text, 128, &length));
    EXPECT_INT(NRV_E_ARGUMENT, NrvErrorText(NRV_OK, text, 128, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvErrorText(NRV_OK, NULL, 128, &length));
}

C_TEST(CapiLibrary, AStringTellsItsLengthAndFitsWithItsZeroOrNotAtAll) {
    wchar_t text[16] = L"xxxxxxxxxxxxxxx";
    uint32_t length = 0;
    EXPECT_INT(NRV_OK, NrvErrorText(NRV_OK, NULL, 0, &length));
    EXPECT_INT(9, length); // "No error."
    length = 0;
    EXPECT_INT(NRV_E_BUFFER, NrvErrorText(NRV_OK, text, 9, &length));
    EXPECT_INT(9, length);
    EXPECT_INT(0, text[0]);
    EXPECT_INT(L'x', text[1]);
    EXPECT_INT(NRV_OK, NrvErrorText(NRV_OK, text, 10, &length));
    EXPECT_TEXT(L"No error.", text);
    EXPECT_INT(L'x', text[10]);
}

C_TEST(CapiLibrary, ADrawingHasItsHandleUntilItIsFreed) {
    NrvHandle first = NULL;
    NrvHandle second = NULL;
    int32_t kind = 0;
    EXPECT_INT(NRV_E_ARGUMENT, NrvCreateDrawing(NULL));
    REQUIRE(NrvCreateDrawing(&first) == NRV_OK);
    REQUIRE(NrvCreateDrawing(&second) == NRV_OK);
    EXPECT(first != NULL && second != NULL && first != second);
    EXPECT_INT(NRV_OK, NrvGetHandleKind(first, &kind));
    EXPECT_INT(NRV_HANDLE_DRAWING, kind);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(first));
    EXPECT_INT(NRV_E_HANDLE, NrvFreeDrawing(first));
    EXPECT_INT(NRV_E_HANDLE, NrvGetHandleKind(first, &kind));
    EXPECT_INT(NRV_OK, NrvGetHandleKind(second, &kind));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(second));
}

C_TEST(CapiLibrary, WindowsHaveTheKindOfTheirClass) {
    CHost host;
    int32_t kind = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvGetHandleKind(host.view, &kind));
    EXPECT_INT(NRV_HANDLE_VIEW, kind);
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetHandleKind(host.view, NULL));
    EXPECT_INT(NRV_E_HANDLE, NrvGetHandleKind(host.parent, &kind));
    EXPECT_INT(NRV_E_KIND, NrvFreeDrawing(host.view));
    const HWND gone = host.view;
    CHostClose(&host);
    EXPECT_INT(NRV_E_HANDLE, NrvGetHandleKind(gone, &kind));
    REQUIRE(CHostOpen(&host, NRV_PARM_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvGetHandleKind(host.view, &kind));
    EXPECT_INT(NRV_HANDLE_PARM_VIEW, kind);
    CHostClose(&host);
}
