// Dialogs, modal and modeless, from resources and from templates in memory.
// Layer 1: afx.
#include "ThreadState.h"

#include <commctrl.h>

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
END_MESSAGE_MAP()

namespace {

// The dialog procedure of every dialog: the CDialog does all work in its window procedure.
INT_PTR CALLBACK DialogProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        CWnd* object = CWnd::FromHandlePermanent(hWnd);
        CDialog* dialog = DYNAMIC_DOWNCAST(CDialog, object);
        // Windows calls this function from its own dialog procedure, through which no exception may pass.
        try {
            return dialog == nullptr || dialog->OnInitDialog();
        } catch (...) {
            AfxReportCaught(*CWnd::GetCurrentMessage());
            if (CWnd::FromHandlePermanent(hWnd) == object) {
                dialog->EndDialog(-1);
            }
            return FALSE;
        }
    }
    static_cast<void>(wParam);
    static_cast<void>(lParam);
    return FALSE;
}

// Whether the control that gets Escape requests all keys. A multi-line edit box requests them too, without using
// Escape.
bool KeepsEscape(const MSG& key) {
    const LRESULT code = ::SendMessage(key.hwnd, WM_GETDLGCODE, key.wParam, reinterpret_cast<LPARAM>(&key));
    if ((code & DLGC_WANTALLKEYS) == 0) {
        return false;
    }
    TCHAR name[8] = {};
    ::GetClassName(key.hwnd, name, 8);
    const bool isEdit = ::lstrcmpi(name, WC_EDIT) == 0;
    return !(isEdit && (::GetWindowLong(key.hwnd, GWL_STYLE) & ES_MULTILINE) != 0);
}

} // namespace

// --- construction ------------------------------------------------------------------------------------------------

CDialog::CDialog() : m_nIDHelp(0), m_lpszTemplateName(nullptr), m_lpDialogTemplate(nullptr), m_pParentWnd(nullptr) {}

CDialog::CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd)
    : m_nIDHelp(0), m_lpszTemplateName(lpszTemplateName), m_lpDialogTemplate(nullptr), m_pParentWnd(pParentWnd) {
    if (IS_INTRESOURCE(lpszTemplateName)) {
        m_nIDHelp = LOWORD(reinterpret_cast<UINT_PTR>(lpszTemplateName));
    }
}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog(MAKEINTRESOURCE(nIDTemplate), pParentWnd) {}

CDialog::~CDialog() = default;

// --- making ------------------------------------------------------------------------------------------------------

BOOL CDialog::CreateDlgIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst) {
    if (lpDialogTemplate == nullptr || m_hWnd != nullptr) {
        return FALSE;
    }
    if (hInst == nullptr) {
        hInst = AfxGetInstanceHandle();
    }
    INITCOMMONCONTROLSEX controls = {sizeof(INITCOMMONCONTROLSEX), ICC_WIN95_CLASSES};
    ::InitCommonControlsEx(&controls);
    // A dialog without an owner could be covered by the program's main window.
    if (pParentWnd == nullptr) {
        pParentWnd = AfxGetMainWnd();
    }
    m_nModalResult = -1;
    m_nFlags |= WF_CONTINUEMODAL;
    AfxHookWindowCreate(this);
    const HWND window = ::CreateDialogIndirect(hInst, lpDialogTemplate, AfxHandleOf(pParentWnd), DialogProc);
    if (!AfxUnhookWindowCreate()) {
        PostNcDestroy();
    }
    // When its window has been destroyed, for example with its owner, the object may have been freed too.
    if (window == nullptr || FromHandlePermanent(window) != this) {
        return FALSE;
    }
    // OnInitDialog may have ended the dialog already.
    if ((m_nFlags & WF_CONTINUEMODAL) == 0) {
        DestroyWindow();
        return FALSE;
    }
    m_nFlags &= ~static_cast<UINT>(WF_CONTINUEMODAL);
    return TRUE;
}

static LPCDLGTEMPLATE LoadTemplate(LPCTSTR name, HINSTANCE& instance) {
    instance = AfxFindResourceHandle(name, RT_DIALOG);
    const HRSRC found = ::FindResource(instance, name, RT_DIALOG);
    const HGLOBAL loaded = found != nullptr ? ::LoadResource(instance, found) : nullptr;
    return loaded != nullptr ? static_cast<LPCDLGTEMPLATE>(::LockResource(loaded)) : nullptr;
}

BOOL CDialog::Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd) {
    m_lpszTemplateName = lpszTemplateName;
    if (IS_INTRESOURCE(lpszTemplateName) && m_nIDHelp == 0) {
        m_nIDHelp = LOWORD(reinterpret_cast<UINT_PTR>(lpszTemplateName));
    }
    HINSTANCE instance = nullptr;
    LPCDLGTEMPLATE dialogTemplate = LoadTemplate(lpszTemplateName, instance);
    return CreateDlgIndirect(dialogTemplate, pParentWnd, instance);
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd) {
    return Create(MAKEINTRESOURCE(nIDTemplate), pParentWnd);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void*) {
    return CreateDlgIndirect(lpDialogTemplate, pParentWnd, AfxGetInstanceHandle());
}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd) {
    m_lpDialogTemplate = lpDialogTemplate;
    if (m_pParentWnd == nullptr) {
        m_pParentWnd = pParentWnd;
    }
    return TRUE;
}

// --- modal -------------------------------------------------------------------------------------------------------

INT_PTR CDialog::DoModal() {
    HINSTANCE instance = AfxGetResourceHandle();
    LPCDLGTEMPLATE dialogTemplate = m_lpDialogTemplate;
    if (dialogTemplate == nullptr && m_lpszTemplateName != nullptr) {
        dialogTemplate = LoadTemplate(m_lpszTemplateName, instance);
    }
    if (dialogTemplate == nullptr) {
        return -1;
    }

    // The owner is a top-level window, and takes no input while the dialog is shown.
    HWND owner = AfxHandleOf(m_pParentWnd);
    if (owner == nullptr) {
        owner = AfxHandleOf(AfxGetMainWnd());
    }
    while (owner != nullptr && (::GetWindowLongPtr(owner, GWL_STYLE) & WS_CHILD) != 0) {
        owner = ::GetParent(owner);
    }
    const bool disable = owner != nullptr && owner != ::GetDesktopWindow() && ::IsWindowEnabled(owner);
    if (disable) {
        ::EnableWindow(owner, FALSE);
    }

    struct Cleanup {
        CDialog* dialog;
        HWND owner;
        bool enable;
        ~Cleanup() {
            if (dialog->m_hWnd != nullptr) {
                ::SetWindowPos(dialog->m_hWnd, nullptr, 0, 0, 0, 0,
                               SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
            }
            // The owner is enabled before the dialog is destroyed; otherwise another program's window would be
            // activated.
            if (enable) {
                ::EnableWindow(owner, TRUE);
            }
            if (owner != nullptr && ::GetActiveWindow() == dialog->m_hWnd && dialog->m_hWnd != nullptr) {
                ::SetActiveWindow(owner);
            }
            dialog->DestroyWindow();
        }
    };
    m_nModalResult = -1;
    {
        const Cleanup cleanup = {this, owner, disable};
        CWnd* parent = CWnd::FromHandle(owner);
        if (CreateDlgIndirect(dialogTemplate, parent, instance)) {
            DWORD flags = MLF_SHOWONIDLE;
            if ((GetStyle() & DS_NOIDLEMSG) != 0) {
                flags |= MLF_NOIDLEMSG;
            }
            RunModalLoop(flags);
        }
    }
    return m_nModalResult;
}

void CDialog::EndDialog(int nResult) {
    m_nModalResult = nResult;
    if ((m_nFlags & (WF_MODALLOOP | WF_CONTINUEMODAL)) != 0) {
        EndModalLoop(nResult);
    }
    if (m_hWnd != nullptr) {
        ::EndDialog(m_hWnd, nResult);
    }
}

// --- messages ----------------------------------------------------------------------------------------------------

void CDialog::PreInitDialog() {}

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM) {
    PreInitDialog();
    RECT before;
    GetWindowRect(&before);
    // Runs DialogProc, which calls OnInitDialog.
    const LRESULT result = Default();
    // Over its owner, unless the template or OnInitDialog has chosen a place.
    if (m_hWnd == nullptr || IsWindowVisible() || (GetStyle() & WS_CHILD) != 0) {
        return result;
    }
    constexpr DWORD placed = DS_ABSALIGN | DS_CENTER | DS_CENTERMOUSE;
    RECT after;
    GetWindowRect(&after);
    if ((GetStyle() & placed) == 0 && ::EqualRect(&before, &after)) {
        CenterWindow();
    }
    return result;
}

BOOL CDialog::OnInitDialog() {
    if (!UpdateData(FALSE)) {
        EndDialog(-1);
        return FALSE;
    }
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) {
        EndDialog(IDOK);
    }
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg) {
    if (CWnd::PreTranslateMessage(pMsg)) {
        return TRUE;
    }
    // Escape reaches OnCancel only where there is a button to press: a disabled Cancel button refuses it.
    if (pMsg->message == WM_KEYDOWN && (pMsg->wParam == VK_ESCAPE || pMsg->wParam == VK_CANCEL) &&
        !KeepsEscape(*pMsg)) {
        const HWND cancel = ::GetDlgItem(m_hWnd, IDCANCEL);
        if (cancel == nullptr || ::IsWindowEnabled(cancel)) {
            SendMessage(WM_COMMAND, IDCANCEL, 0);
            return TRUE;
        }
    }
    return PreTranslateInput(pMsg);
}

BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) {
        return TRUE;
    }
    // Menu commands and their state are passed on to the owner and the application; controls' messages are not.
    const bool routed = nCode == CN_COMMAND || nCode == static_cast<int>(CN_UPDATE_COMMAND_UI);
    if (!routed || nID >= 0xF000 || nID < 0x8000) {
        return FALSE;
    }
    if (CWnd* owner = GetParent()) {
        if (owner->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) {
            return TRUE;
        }
    }
    CWinThread* thread = AfxGetThread();
    return thread != nullptr && thread->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

// --- controls ----------------------------------------------------------------------------------------------------

void CDialog::GotoDlgCtrl(CWnd* pWndCtrl) {
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(AfxHandleOf(pWndCtrl)), TRUE);
}

void CDialog::NextDlgCtrl() const {
    SendMessage(WM_NEXTDLGCTL, 0, FALSE);
}

void CDialog::PrevDlgCtrl() const {
    SendMessage(WM_NEXTDLGCTL, 1, FALSE);
}

void CDialog::SetDefID(UINT nID) {
    SendMessage(DM_SETDEFID, nID);
}

DWORD CDialog::GetDefID() const {
    return static_cast<DWORD>(SendMessage(DM_GETDEFID));
}

void CDialog::MapDialogRect(LPRECT lpRect) const {
    ::MapDialogRect(m_hWnd, lpRect);
}
