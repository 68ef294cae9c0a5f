// The file dialog of Windows.
// Layer 1: afx.
#include "ThreadState.h"
#include "afxdlgs.h"

IMPLEMENT_DYNAMIC(CCommonDialog, CDialog)
IMPLEMENT_DYNAMIC(CFileDialog, CCommonDialog)

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt, LPCTSTR lpszFileName, DWORD dwFlags,
                         LPCTSTR lpszFilter, CWnd* pParentWnd, DWORD, BOOL bVistaStyle)
    : CCommonDialog(pParentWnd), m_ofn(), m_bOpenFileDialog(bOpenFileDialog), m_szFileTitle(), m_szFileName(),
      m_bVistaStyle(bVistaStyle) {
    m_ofn.lStructSize = sizeof(m_ofn);
    m_ofn.lpstrFile = m_szFileName;
    m_ofn.nMaxFile = _countof(m_szFileName);
    m_ofn.lpstrDefExt = lpszDefExt;
    m_ofn.lpstrFileTitle = m_szFileTitle;
    m_ofn.nMaxFileTitle = _countof(m_szFileTitle);
    m_ofn.Flags = dwFlags | OFN_EXPLORER | OFN_ENABLEHOOK;
    m_ofn.hInstance = AfxGetResourceHandle();
    m_ofn.lpfnHook = HookProc;
    if (lpszFileName != nullptr) {
        ::lstrcpyn(m_szFileName, lpszFileName, static_cast<int>(_countof(m_szFileName)));
    }
    if (lpszFilter != nullptr) {
        m_strFilter = lpszFilter;
        // Windows separates the entries by zeros.
        const int length = m_strFilter.GetLength();
        LPTSTR text = m_strFilter.GetBuffer(length + 1);
        for (int i = 0; i < length; ++i) {
            if (text[i] == _T('|')) {
                text[i] = 0;
            }
        }
        text[length] = 0;
        m_strFilter.ReleaseBuffer(length);
        m_ofn.lpstrFilter = m_strFilter;
    }
}

CFileDialog::~CFileDialog() = default;

INT_PTR CFileDialog::DoModal() {
    HWND owner = AfxHandleOf(m_pParentWnd);
    if (owner == nullptr) {
        owner = AfxHandleOf(AfxGetMainWnd());
    }
    if (owner == nullptr) {
        owner = ::GetActiveWindow();
    }
    while (owner != nullptr && (::GetWindowLongPtr(owner, GWL_STYLE) & WS_CHILD) != 0) {
        owner = ::GetParent(owner);
    }
    m_ofn.hwndOwner = owner;
    m_ofn.lCustData = reinterpret_cast<LPARAM>(this);
    const HWND focus = ::GetFocus();
    const BOOL chosen = m_bOpenFileDialog ? ::GetOpenFileName(&m_ofn) : ::GetSaveFileName(&m_ofn);
    if (focus != nullptr && ::IsWindow(focus) && ::GetFocus() == nullptr) {
        ::SetFocus(focus);
    }
    return chosen ? IDOK : IDCANCEL;
}

// Handles the dialog's hook messages for as long as it is open; the object's window is the hook's child dialog.
UINT_PTR CALLBACK CFileDialog::HookProc(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    // Stack frames of Windows are between here and the caller: nothing may be thrown through them.
    try {
        if (message == WM_INITDIALOG) {
            const auto* ofn = reinterpret_cast<OPENFILENAME*>(lParam);
            reinterpret_cast<CFileDialog*>(ofn->lCustData)->Attach(hDlg);
            return 0;
        }
        auto* dialog = DYNAMIC_DOWNCAST(CFileDialog, CWnd::FromHandlePermanent(hDlg));
        if (dialog == nullptr) {
            return 0;
        }
        if (message == WM_NCDESTROY) {
            dialog->Detach();
            return 0;
        }
        if (message != WM_NOTIFY) {
            return 0;
        }
        switch (reinterpret_cast<NMHDR*>(lParam)->code) {
        case CDN_INITDONE:
            dialog->OnInitDone();
            break;
        case CDN_SELCHANGE:
            dialog->OnFileNameChange();
            break;
        case CDN_FOLDERCHANGE:
            dialog->OnFolderChange();
            break;
        case CDN_TYPECHANGE:
            dialog->OnTypeChange();
            break;
        case CDN_FILEOK:
            if (dialog->OnFileNameOK()) {
                ::SetWindowLongPtr(hDlg, DWLP_MSGRESULT, 1);
                return 1;
            }
            break;
        default:
            break;
        }
    } catch (...) {
        MSG current = {};
        current.hwnd = hDlg;
        current.message = message;
        current.wParam = wParam;
        current.lParam = lParam;
        AfxReportCaught(current);
    }
    return 0;
}

// --- the chosen name ---------------------------------------------------------------------------------------------

CString CFileDialog::GetPathName() const {
    return m_ofn.lpstrFile;
}

CString CFileDialog::GetFileName() const {
    const CString path = GetPathName();
    const int slash = path.ReverseFind(_T('\\'));
    const int other = path.ReverseFind(_T('/'));
    return path.Mid((slash > other ? slash : other) + 1);
}

CString CFileDialog::GetFileExt() const {
    const CString name = GetFileName();
    const int dot = name.ReverseFind(_T('.'));
    return dot < 0 ? CString() : name.Mid(dot + 1);
}

CString CFileDialog::GetFileTitle() const {
    const CString name = GetFileName();
    const int dot = name.ReverseFind(_T('.'));
    return dot < 0 ? name : name.Left(dot);
}

CString CFileDialog::GetFolderPath() const {
    const CString path = GetPathName();
    const int slash = path.ReverseFind(_T('\\'));
    return slash < 0 ? CString() : path.Left(slash);
}

BOOL CFileDialog::GetReadOnlyPref() const {
    return (m_ofn.Flags & OFN_READONLY) != 0;
}

POSITION CFileDialog::GetStartPosition() const {
    return reinterpret_cast<POSITION>(m_ofn.lpstrFile);
}

CString CFileDialog::GetNextPathName(POSITION& pos) const {
    // One name: a full path. Several: the folder, then each name, each ended by a zero.
    LPTSTR current = reinterpret_cast<LPTSTR>(pos);
    const bool first = current == m_ofn.lpstrFile;
    const CString folder = m_ofn.lpstrFile;
    pos = nullptr;
    if (first) {
        LPTSTR next = current + ::lstrlen(current) + 1;
        if ((m_ofn.Flags & OFN_ALLOWMULTISELECT) == 0 || *next == 0) {
            return current;
        }
        current = next;
    }
    LPTSTR next = current + ::lstrlen(current) + 1;
    if (*next != 0) {
        pos = reinterpret_cast<POSITION>(next);
    }
    const bool root = folder.GetLength() > 0 && folder[folder.GetLength() - 1] == _T('\\');
    return folder + (root ? _T("") : _T("\\")) + current;
}
