#include "LibraryWindows.h"

#include "DemoIds.h"
#include "HostText.h"

#include <KxSheetGrid.h>
#include <resource.h>

#include <commctrl.h>

namespace {

const UINT_PTR PropertySubclass = 1;

CString TextOf(HWND window) {
    CString text;
    const int length = ::GetWindowTextLengthW(window);
    ::GetWindowTextW(window, text.GetBuffer(length), length + 1);
    text.ReleaseBuffer();
    return text;
}

// The word for the window, and after a dash that for the kind of the object.
CString TranslateTitle(const CString& title) {
    const int dash = title.Find(L'-');
    const CString word = dash < 0 ? title : title.Left(dash);
    if (dash < 0 || TranslateLibraryText(word) == word) {
        return TranslateLibraryText(title);
    }
    return TranslateLibraryText(word) + L": " + TranslateLibraryText(title.Mid(dash + 1));
}

// The property window sets its title for each object, and its grid asks it for the text of each cell.
LRESULT CALLBACK PropertyProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (message == WM_SETTEXT && lParam != 0) {
        const CString title = TranslateTitle(reinterpret_cast<LPCWSTR>(lParam));
        return ::DefSubclassProc(window, message, wParam, reinterpret_cast<LPARAM>(static_cast<LPCTSTR>(title)));
    }
    if (message == WM_NCDESTROY) {
        ::RemoveWindowSubclass(window, PropertyProc, PropertySubclass);
    }
    const LRESULT result = ::DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == SGN_GETTEXT) {
        auto* cell = reinterpret_cast<NMSHEETGRID*>(lParam);
        if (cell->nCol == 0) {
            cell->strText = TranslateLibraryText(cell->strText);
        }
    }
    return result;
}

void TranslateDialog(HWND dialog) {
    wchar_t name[16] = L"";
    ::GetClassNameW(dialog, name, 16);
    if (CString(name) != L"#32770") {
        return;
    }
    if (::GetDlgItem(dialog, IDC_PROPERTY_GRID) != nullptr) {
        ::SetWindowSubclass(dialog, PropertyProc, PropertySubclass, 0);
    }
    const CString title = TextOf(dialog);
    if (TranslateTitle(title) != title) {
        ::SetWindowTextW(dialog, TranslateTitle(title));
    }
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        ::GetClassNameW(child, name, 16);
        const CString text = CString(name) == L"Button" ? TextOf(child) : CString();
        if (TranslateLibraryText(text) != text) {
            ::SetWindowTextW(child, TranslateLibraryText(text));
        }
    }
}

LRESULT CALLBACK OnWindow(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE) {
        TranslateDialog(reinterpret_cast<HWND>(wParam));
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

CString TranslateLibraryText(const CString& text) {
    for (UINT id = IDS_LIBRARY_FIRST; !text.IsEmpty() && id <= IDS_LIBRARY_LAST; ++id) {
        if (LoadTextLine(id, 0) == text) {
            return LoadTextLine(id, 1);
        }
    }
    return text;
}

void TranslateLibraryWindows() {
    if (!IsChinese()) {
        ::SetWindowsHookExW(WH_CBT, OnWindow, nullptr, ::GetCurrentThreadId());
    }
}

void TranslateLibraryMenu(CMenu& menu) {
    for (UINT i = 0; i < static_cast<UINT>(menu.GetMenuItemCount()); ++i) {
        CString text;
        menu.GetMenuString(i, text, MF_BYPOSITION);
        const UINT id = menu.GetMenuItemID(static_cast<int>(i));
        if (TranslateLibraryText(text) != text) {
            ::ModifyMenuW(menu, i, MF_BYPOSITION | MF_STRING, id, TranslateLibraryText(text));
        }
    }
}
