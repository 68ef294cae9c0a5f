// CWnd: the modal loop, the exchange of values with the controls, the state of the controls.
// Layer 1: afx.
#include "ThreadState.h"

// --- modal loop --------------------------------------------------------------------------------------------------

int CWnd::RunModalLoop(DWORD dwFlags) {
    const HWND parent = ::GetParent(m_hWnd);
    bool show = (dwFlags & MLF_SHOWONIDLE) != 0 && !IsWindowVisible();
    bool idle = true;
    LONG idleCount = 0;
    MSG next;
    m_nFlags |= WF_MODALLOOP | WF_CONTINUEMODAL;
    while (ContinueModal()) {
        // With nothing in the queue: first the window is shown, then parent and window may do idle work.
        while (idle && !::PeekMessage(&next, nullptr, 0, 0, PM_NOREMOVE)) {
            if (show) {
                ShowWindow(SW_SHOWNORMAL);
                UpdateWindow();
                show = false;
            }
            if ((dwFlags & MLF_NOIDLEMSG) == 0 && parent != nullptr && idleCount == 0) {
                ::SendMessage(parent, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(m_hWnd));
            }
            if ((dwFlags & MLF_NOKICKIDLE) != 0 || SendMessage(WM_KICKIDLE, MSGF_DIALOGBOX, idleCount++) == 0) {
                idle = false;
            }
            if (!ContinueModal()) {
                break;
            }
        }
        if (!ContinueModal()) {
            break;
        }
        if (!AfxPumpMessage()) {
            // The program ends: the outer loops must get WM_QUIT too, with its exit code.
            AfxPostQuitMessage(AfxState().exitCode);
            m_nFlags &= ~static_cast<UINT>(WF_MODALLOOP | WF_CONTINUEMODAL);
            return -1;
        }
        if (!::PeekMessage(&next, nullptr, 0, 0, PM_NOREMOVE)) {
            idle = true;
            idleCount = 0;
        }
    }
    m_nFlags &= ~static_cast<UINT>(WF_MODALLOOP | WF_CONTINUEMODAL);
    return m_nModalResult;
}

BOOL CWnd::ContinueModal() {
    return (m_nFlags & WF_CONTINUEMODAL) != 0;
}

void CWnd::EndModalLoop(int nResult) {
    m_nModalResult = nResult;
    if ((m_nFlags & WF_CONTINUEMODAL) != 0) {
        m_nFlags &= ~static_cast<UINT>(WF_CONTINUEMODAL);
        PostMessage(WM_NULL); // wakes the loop
    }
}

void CWnd::BeginModalState() {
    ::EnableWindow(m_hWnd, FALSE);
}

void CWnd::EndModalState() {
    ::EnableWindow(m_hWnd, TRUE);
}

// --- exchange ----------------------------------------------------------------------------------------------------

void CWnd::DoDataExchange(CDataExchange*) {}

BOOL CWnd::UpdateData(BOOL bSaveAndValidate) {
    CDataExchange exchange(this, bSaveAndValidate);
    struct LockOut {
        AfxThreadState& state = AfxState();
        const HWND before = state.lockedOut;
        ~LockOut() { state.lockedOut = before; }
    } lock;
    lock.state.lockedOut = m_hWnd;
    try {
        DoDataExchange(&exchange);
        return TRUE;
    } catch (CUserException* e) {
        e->Delete(); // the user has been informed
    } catch (CException* e) {
        const AFX_EXCEPTION_LINK owned(e);
        e->ReportError(MB_ICONEXCLAMATION, AFX_IDP_INTERNAL_FAILURE);
    }
    return FALSE;
}

// --- state of the controls ---------------------------------------------------------------------------------------

void CWnd::UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler) {
    // An object for a window that is not its own: it must not destroy it, whatever a handler throws.
    struct Borrowed : CWnd {
        explicit Borrowed(HWND window) : CWnd(window) {}
        ~Borrowed() override { m_hWnd = nullptr; }
    };
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        Borrowed control(child);
        CCmdUI ui;
        ui.m_nID = LOWORD(::GetDlgCtrlID(child));
        ui.m_pOther = &control;
        // The window's own handlers come first; then the target's.
        if (!CWnd::OnCmdMsg(ui.m_nID, static_cast<int>(CN_UPDATE_COMMAND_UI), &ui, nullptr)) {
            const bool button = (::SendMessage(child, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) != 0;
            ui.DoUpdate(pTarget, bDisableIfNoHndler && button);
        }
    }
}

INT_PTR CWnd::OnToolHitTest(CPoint point, TOOLINFO* pTI) const {
    const HWND child = ::ChildWindowFromPoint(m_hWnd, point);
    if (child == nullptr || child == m_hWnd) {
        return -1;
    }
    if (pTI != nullptr && pTI->cbSize >= TTTOOLINFO_V1_SIZE) {
        pTI->hwnd = m_hWnd;
        pTI->uId = reinterpret_cast<UINT_PTR>(child);
        pTI->uFlags |= TTF_IDISHWND;
        pTI->lpszText = LPSTR_TEXTCALLBACK;
    }
    return ::GetDlgCtrlID(child);
}
