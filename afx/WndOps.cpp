// CWnd: the thin covers of Windows' window functions.
// Layer 1: afx.
#include "ThreadState.h"

HWND AFXAPI AfxGetSafeHwnd(const CWnd* pWnd) {
    return AfxHandleOf(pWnd);
}

CWndOps::CWndOps(HWND hWnd) : m_hWnd(hWnd) {}

CWndOps::~CWndOps() = default;

// --- style and kin ---------------------------------------------------------------------------------------------------

DWORD CWndOps::GetStyle() const {
    return static_cast<DWORD>(::GetWindowLongPtr(m_hWnd, GWL_STYLE));
}

DWORD CWndOps::GetExStyle() const {
    return static_cast<DWORD>(::GetWindowLongPtr(m_hWnd, GWL_EXSTYLE));
}

static BOOL ChangeStyle(HWND window, int which, DWORD remove, DWORD add, UINT flags) {
    const auto old = static_cast<DWORD>(::GetWindowLongPtr(window, which));
    const DWORD changed = (old & ~remove) | add;
    if (old == changed) {
        return FALSE;
    }
    ::SetWindowLongPtr(window, which, static_cast<LONG_PTR>(changed));
    if (flags != 0) {
        ::SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
    }
    return TRUE;
}

BOOL CWndOps::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    return ChangeStyle(m_hWnd, GWL_STYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWndOps::ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    return ChangeStyle(m_hWnd, GWL_EXSTYLE, dwRemove, dwAdd, nFlags);
}

CWnd* CWndOps::GetParent() const {
    return CWnd::FromHandle(::GetParent(m_hWnd));
}

CWnd* CWnd::GetOwner() const {
    return m_hWndOwner != nullptr ? CWnd::FromHandle(m_hWndOwner) : GetParent();
}

void CWnd::SetOwner(CWnd* pOwnerWnd) {
    m_hWndOwner = AfxHandleOf(pOwnerWnd);
}

CWnd* CWndOps::SetParent(CWnd* pWndNewParent) {
    return CWnd::FromHandle(::SetParent(m_hWnd, AfxHandleOf(pWndNewParent)));
}

CWnd* CWndOps::GetTopLevelParent() const {
    HWND top = m_hWnd;
    for (HWND parent = top; parent != nullptr; parent = ::GetParent(parent)) {
        top = parent;
    }
    return CWnd::FromHandle(top);
}

CWnd* CWndOps::GetLastActivePopup() const {
    return CWnd::FromHandle(::GetLastActivePopup(m_hWnd));
}

CWnd* CWndOps::GetTopWindow() const {
    return CWnd::FromHandle(::GetTopWindow(m_hWnd));
}

CWnd* CWndOps::GetWindow(UINT nCmd) const {
    return CWnd::FromHandle(::GetWindow(m_hWnd, nCmd));
}

CWnd* CWndOps::GetDlgItem(int nID) const {
    return CWnd::FromHandle(::GetDlgItem(m_hWnd, nID));
}

void CWndOps::GetDlgItem(int nID, HWND* phWnd) const {
    *phWnd = ::GetDlgItem(m_hWnd, nID);
}

int CWndOps::GetDlgCtrlID() const {
    return ::GetDlgCtrlID(m_hWnd);
}

int CWndOps::SetDlgCtrlID(int nID) {
    return static_cast<int>(::SetWindowLongPtr(m_hWnd, GWLP_ID, nID));
}

static CWnd* FindDescendant(HWND window, int nID, BOOL bOnlyPerm) {
    for (HWND child = ::GetTopWindow(window); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (::GetDlgCtrlID(child) == nID) {
            if (CWnd* object = bOnlyPerm ? CWnd::FromHandlePermanent(child) : CWnd::FromHandle(child)) {
                return object;
            }
        }
        if (CWnd* object = FindDescendant(child, nID, bOnlyPerm)) {
            return object;
        }
    }
    return nullptr;
}

CWnd* CWndOps::GetDescendantWindow(int nID, BOOL bOnlyPerm) const {
    return FindDescendant(m_hWnd, nID, bOnlyPerm);
}

CWnd* CWndOps::ChildWindowFromPoint(POINT point) const {
    return CWnd::FromHandle(::ChildWindowFromPoint(m_hWnd, point));
}

BOOL CWndOps::IsChild(const CWnd* pWnd) const {
    return ::IsChild(m_hWnd, AfxHandleOf(pWnd));
}

CWnd* PASCAL CWndOps::FindWindow(LPCTSTR lpszClassName, LPCTSTR lpszWindowName) {
    return CWnd::FromHandle(::FindWindow(lpszClassName, lpszWindowName));
}

CWnd* PASCAL CWndOps::WindowFromPoint(POINT point) {
    return CWnd::FromHandle(::WindowFromPoint(point));
}

CWnd* PASCAL CWndOps::GetDesktopWindow() {
    return CWnd::FromHandle(::GetDesktopWindow());
}

CWnd* PASCAL CWndOps::GetForegroundWindow() {
    return CWnd::FromHandle(::GetForegroundWindow());
}

// --- messages to the window ------------------------------------------------------------------------------------------

LRESULT CWndOps::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendMessage(m_hWnd, message, wParam, lParam);
}

BOOL CWndOps::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::PostMessage(m_hWnd, message, wParam, lParam);
}

BOOL CWndOps::SendNotifyMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::SendNotifyMessage(m_hWnd, message, wParam, lParam);
}

static void SendToDescendants(HWND window, UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm) {
    for (HWND child = ::GetTopWindow(window); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (!bOnlyPerm || CWnd::FromHandlePermanent(child) != nullptr) {
            ::SendMessage(child, message, wParam, lParam);
        }
        if (bDeep) {
            SendToDescendants(child, message, wParam, lParam, bDeep, bOnlyPerm);
        }
    }
}

void CWndOps::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm) {
    SendToDescendants(m_hWnd, message, wParam, lParam, bDeep, bOnlyPerm);
}

// --- text and font ---------------------------------------------------------------------------------------------------

void CWndOps::SetWindowText(LPCTSTR lpszString) {
    ::SetWindowText(m_hWnd, lpszString);
}

int CWndOps::GetWindowText(LPTSTR lpszStringBuf, int nMaxCount) const {
    return ::GetWindowText(m_hWnd, lpszStringBuf, nMaxCount);
}

void CWndOps::GetWindowText(CString& rString) const {
    const int length = ::GetWindowTextLength(m_hWnd);
    ::GetWindowText(m_hWnd, rString.GetBufferSetLength(length), length + 1);
    rString.ReleaseBuffer();
}

int CWndOps::GetWindowTextLength() const {
    return ::GetWindowTextLength(m_hWnd);
}

void CWndOps::SetFont(CFont* pFont, BOOL bRedraw) {
    ::SendMessage(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(AfxHandleOf(pFont)), MAKELPARAM(bRedraw, 0));
}

CFont* CWndOps::GetFont() const {
    return CFont::FromHandle(reinterpret_cast<HFONT>(::SendMessage(m_hWnd, WM_GETFONT, 0, 0)));
}

void CWndOps::SetIcon(HICON hIcon, BOOL bBigIcon) {
    ::SendMessage(m_hWnd, WM_SETICON, static_cast<WPARAM>(bBigIcon), reinterpret_cast<LPARAM>(hIcon));
}

HICON CWndOps::GetIcon(BOOL bBigIcon) const {
    return reinterpret_cast<HICON>(::SendMessage(m_hWnd, WM_GETICON, static_cast<WPARAM>(bBigIcon), 0));
}

// --- place -----------------------------------------------------------------------------------------------------------

void CWndOps::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
}

void CWndOps::MoveWindow(LPCRECT lpRect, BOOL bRepaint) {
    MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top, bRepaint);
}

BOOL CWndOps::SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags) {
    return ::SetWindowPos(m_hWnd, AfxHandleOf(pWndInsertAfter), x, y, cx, cy, nFlags);
}

void CWndOps::BringWindowToTop() {
    ::BringWindowToTop(m_hWnd);
}

void CWndOps::GetWindowRect(LPRECT lpRect) const {
    ::GetWindowRect(m_hWnd, lpRect);
}

void CWndOps::GetClientRect(LPRECT lpRect) const {
    ::GetClientRect(m_hWnd, lpRect);
}

BOOL CWndOps::GetWindowPlacement(WINDOWPLACEMENT* lpwndpl) const {
    lpwndpl->length = sizeof(WINDOWPLACEMENT);
    return ::GetWindowPlacement(m_hWnd, lpwndpl);
}

BOOL CWndOps::SetWindowPlacement(const WINDOWPLACEMENT* lpwndpl) {
    return ::SetWindowPlacement(m_hWnd, lpwndpl);
}

void CWndOps::ClientToScreen(LPPOINT lpPoint) const {
    ::ClientToScreen(m_hWnd, lpPoint);
}

void CWndOps::ClientToScreen(LPRECT lpRect) const {
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWndOps::ScreenToClient(LPPOINT lpPoint) const {
    ::ScreenToClient(m_hWnd, lpPoint);
}

void CWndOps::ScreenToClient(LPRECT lpRect) const {
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWndOps::MapWindowPoints(CWnd* pwndTo, LPPOINT lpPoint, UINT nCount) const {
    ::MapWindowPoints(m_hWnd, AfxHandleOf(pwndTo), lpPoint, nCount);
}

void CWndOps::MapWindowPoints(CWnd* pwndTo, LPRECT lpRect) const {
    ::MapWindowPoints(m_hWnd, AfxHandleOf(pwndTo), reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWndOps::CenterWindow(CWnd* pAlternateOwner) {
    const bool child = (GetStyle() & WS_CHILD) != 0;
    HWND centre = AfxHandleOf(pAlternateOwner);
    if (centre == nullptr) {
        centre = child ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    }
    RECT window, around, limits;
    ::GetWindowRect(m_hWnd, &window);
    if (child) {
        ::GetClientRect(::GetParent(m_hWnd), &limits);
        ::GetClientRect(centre, &around);
        ::MapWindowPoints(centre, ::GetParent(m_hWnd), reinterpret_cast<LPPOINT>(&around), 2);
    } else {
        MONITORINFO monitor = {};
        monitor.cbSize = sizeof(monitor);
        ::GetMonitorInfo(::MonitorFromWindow(centre != nullptr ? centre : m_hWnd, MONITOR_DEFAULTTONEAREST), &monitor);
        limits = around = monitor.rcWork;
        // A window is not centred over a hidden or minimised owner.
        if (centre != nullptr && ::IsWindowVisible(centre) && !::IsIconic(centre)) {
            ::GetWindowRect(centre, &around);
        }
    }
    const int width = window.right - window.left, height = window.bottom - window.top;
    int x = (around.left + around.right) / 2 - width / 2, y = (around.top + around.bottom) / 2 - height / 2;
    if (x + width > limits.right) {
        x = limits.right - width;
    }
    if (x < limits.left) {
        x = limits.left;
    }
    if (y + height > limits.bottom) {
        y = limits.bottom - height;
    }
    if (y < limits.top) {
        y = limits.top;
    }
    ::SetWindowPos(m_hWnd, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL CWndOps::IsIconic() const {
    return ::IsIconic(m_hWnd);
}

BOOL CWndOps::IsZoomed() const {
    return ::IsZoomed(m_hWnd);
}

// --- painting --------------------------------------------------------------------------------------------------------

CDC* CWndOps::GetDC() {
    return CDC::FromHandle(::GetDC(m_hWnd));
}

CDC* CWndOps::GetWindowDC() {
    return CDC::FromHandle(::GetWindowDC(m_hWnd));
}

int CWndOps::ReleaseDC(CDC* pDC) {
    return ::ReleaseDC(m_hWnd, AfxHandleOf(pDC));
}

CDC* CWndOps::BeginPaint(LPPAINTSTRUCT lpPaint) {
    return CDC::FromHandle(::BeginPaint(m_hWnd, lpPaint));
}

void CWndOps::EndPaint(LPPAINTSTRUCT lpPaint) {
    ::EndPaint(m_hWnd, lpPaint);
}

void CWndOps::Invalidate(BOOL bErase) {
    ::InvalidateRect(m_hWnd, nullptr, bErase);
}

void CWndOps::InvalidateRect(LPCRECT lpRect, BOOL bErase) {
    ::InvalidateRect(m_hWnd, lpRect, bErase);
}

void CWndOps::InvalidateRgn(CRgn* pRgn, BOOL bErase) {
    ::InvalidateRgn(m_hWnd, static_cast<HRGN>(AfxHandleOf(pRgn)), bErase);
}

void CWndOps::ValidateRect(LPCRECT lpRect) {
    ::ValidateRect(m_hWnd, lpRect);
}

void CWndOps::UpdateWindow() {
    ::UpdateWindow(m_hWnd);
}

BOOL CWndOps::RedrawWindow(LPCRECT lpRectUpdate, CRgn* prgnUpdate, UINT flags) {
    return ::RedrawWindow(m_hWnd, lpRectUpdate, static_cast<HRGN>(AfxHandleOf(prgnUpdate)), flags);
}

BOOL CWndOps::GetUpdateRect(LPRECT lpRect, BOOL bErase) {
    return ::GetUpdateRect(m_hWnd, lpRect, bErase);
}

int CWndOps::GetUpdateRgn(CRgn* pRgn, BOOL bErase) {
    return ::GetUpdateRgn(m_hWnd, static_cast<HRGN>(AfxHandleOf(pRgn)), bErase);
}

void CWndOps::SetRedraw(BOOL bRedraw) {
    ::SendMessage(m_hWnd, WM_SETREDRAW, static_cast<WPARAM>(bRedraw), 0);
}

BOOL CWndOps::ShowWindow(int nCmdShow) {
    return ::ShowWindow(m_hWnd, nCmdShow);
}

BOOL CWndOps::IsWindowVisible() const {
    return ::IsWindowVisible(m_hWnd);
}

void CWndOps::Print(CDC* pDC, DWORD dwFlags) const {
    ::SendMessage(m_hWnd, WM_PRINT, reinterpret_cast<WPARAM>(AfxHandleOf(pDC)), static_cast<LPARAM>(dwFlags));
}

// --- state, focus, capture, timer ------------------------------------------------------------------------------------

BOOL CWndOps::EnableWindow(BOOL bEnable) {
    return ::EnableWindow(m_hWnd, bEnable);
}

BOOL CWndOps::IsWindowEnabled() const {
    return ::IsWindowEnabled(m_hWnd);
}

CWnd* CWndOps::SetActiveWindow() {
    return CWnd::FromHandle(::SetActiveWindow(m_hWnd));
}

BOOL CWndOps::SetForegroundWindow() {
    return ::SetForegroundWindow(m_hWnd);
}

CWnd* CWndOps::SetFocus() {
    return CWnd::FromHandle(::SetFocus(m_hWnd));
}

CWnd* CWndOps::SetCapture() {
    return CWnd::FromHandle(::SetCapture(m_hWnd));
}

CWnd* PASCAL CWndOps::GetActiveWindow() {
    return CWnd::FromHandle(::GetActiveWindow());
}

CWnd* PASCAL CWndOps::GetFocus() {
    return CWnd::FromHandle(::GetFocus());
}

CWnd* PASCAL CWndOps::GetCapture() {
    return CWnd::FromHandle(::GetCapture());
}

UINT_PTR CWndOps::SetTimer(UINT_PTR nIDEvent, UINT nElapse, void(CALLBACK* lpfnTimer)(HWND, UINT, UINT_PTR, DWORD)) {
    return ::SetTimer(m_hWnd, nIDEvent, nElapse, lpfnTimer);
}

BOOL CWndOps::KillTimer(UINT_PTR nIDEvent) {
    return ::KillTimer(m_hWnd, nIDEvent);
}

void CWndOps::DragAcceptFiles(BOOL bAccept) {
    ::DragAcceptFiles(m_hWnd, bAccept);
}

// --- scroll bars, menu, boxes ----------------------------------------------------------------------------------------

int CWndOps::GetScrollPos(int nBar) const {
    return ::GetScrollPos(m_hWnd, nBar);
}

int CWndOps::SetScrollPos(int nBar, int nPos, BOOL bRedraw) {
    return ::SetScrollPos(m_hWnd, nBar, nPos, bRedraw);
}

void CWndOps::GetScrollRange(int nBar, LPINT lpMinPos, LPINT lpMaxPos) const {
    ::GetScrollRange(m_hWnd, nBar, lpMinPos, lpMaxPos);
}

void CWndOps::SetScrollRange(int nBar, int nMinPos, int nMaxPos, BOOL bRedraw) {
    ::SetScrollRange(m_hWnd, nBar, nMinPos, nMaxPos, bRedraw);
}

BOOL CWndOps::GetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, UINT nMask) {
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    lpScrollInfo->fMask = nMask;
    return ::GetScrollInfo(m_hWnd, nBar, lpScrollInfo);
}

BOOL CWndOps::SetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, BOOL bRedraw) {
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    ::SetScrollInfo(m_hWnd, nBar, lpScrollInfo, bRedraw);
    return TRUE;
}

void CWndOps::ShowScrollBar(UINT nBar, BOOL bShow) {
    ::ShowScrollBar(m_hWnd, static_cast<int>(nBar), bShow);
}

CMenu* CWndOps::GetMenu() const {
    return CMenu::FromHandle(::GetMenu(m_hWnd));
}

BOOL CWndOps::SetMenu(CMenu* pMenu) {
    return ::SetMenu(m_hWnd, AfxHandleOf(pMenu));
}

CMenu* CWndOps::GetSystemMenu(BOOL bRevert) const {
    return CMenu::FromHandle(::GetSystemMenu(m_hWnd, bRevert));
}

void CWndOps::DrawMenuBar() {
    ::DrawMenuBar(m_hWnd);
}

int CWndOps::MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption, UINT nType) {
    return AfxShowMessageBox(m_hWnd, lpszText, lpszCaption != nullptr ? lpszCaption : AfxGetAppName(), nType);
}

// --- children's values -----------------------------------------------------------------------------------------------

void CWndOps::SetDlgItemText(int nID, LPCTSTR lpszString) {
    ::SetDlgItemText(m_hWnd, nID, lpszString);
}

int CWndOps::GetDlgItemText(int nID, LPTSTR lpStr, int nMaxCount) const {
    return static_cast<int>(::GetDlgItemText(m_hWnd, nID, lpStr, nMaxCount));
}

int CWndOps::GetDlgItemText(int nID, CString& rString) const {
    rString.Empty();
    const HWND control = ::GetDlgItem(m_hWnd, nID);
    if (control == nullptr) {
        return 0;
    }
    const int length = ::GetWindowTextLength(control);
    ::GetWindowText(control, rString.GetBufferSetLength(length), length + 1);
    rString.ReleaseBuffer();
    return rString.GetLength();
}

void CWndOps::SetDlgItemInt(int nID, UINT nValue, BOOL bSigned) {
    ::SetDlgItemInt(m_hWnd, nID, nValue, bSigned);
}

UINT CWndOps::GetDlgItemInt(int nID, BOOL* lpTrans, BOOL bSigned) const {
    return ::GetDlgItemInt(m_hWnd, nID, lpTrans, bSigned);
}

void CWndOps::CheckDlgButton(int nIDButton, UINT nCheck) {
    ::CheckDlgButton(m_hWnd, nIDButton, nCheck);
}

void CWndOps::CheckRadioButton(int nIDFirstButton, int nIDLastButton, int nIDCheckButton) {
    ::CheckRadioButton(m_hWnd, nIDFirstButton, nIDLastButton, nIDCheckButton);
}

int CWndOps::GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const {
    for (int id = nIDFirstButton; id <= nIDLastButton; ++id) {
        if (::IsDlgButtonChecked(m_hWnd, id) != 0) {
            return id;
        }
    }
    return 0;
}

UINT CWndOps::IsDlgButtonChecked(int nIDButton) const {
    return ::IsDlgButtonChecked(m_hWnd, nIDButton);
}

LRESULT CWndOps::SendDlgItemMessage(int nID, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::SendDlgItemMessage(m_hWnd, nID, message, wParam, lParam);
}

CWnd* CWndOps::GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious) const {
    return CWnd::FromHandle(::GetNextDlgTabItem(m_hWnd, AfxHandleOf(pWndCtl), bPrevious));
}
