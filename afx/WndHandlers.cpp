// CWnd's own message handlers: default processing, and controls' messages sent back to the controls.
// Layer 1: afx.
#include "ThreadState.h"

// --- life, place, focus ------------------------------------------------------------------------------------------
int CWnd::OnCreate(LPCREATESTRUCT) {
    return static_cast<int>(Default());
}
BOOL CWnd::OnNcCreate(LPCREATESTRUCT) {
    return static_cast<BOOL>(Default());
}
void CWnd::OnDestroy() {
    Default();
}
void CWnd::OnMove(int, int) {
    Default();
}
void CWnd::OnSize(UINT, int, int) {
    Default();
}
void CWnd::OnActivate(UINT, CWnd*, BOOL) {
    Default();
}
void CWnd::OnActivateApp(BOOL, DWORD) {
    Default();
}
void CWnd::OnSetFocus(CWnd*) {
    Default();
}
void CWnd::OnKillFocus(CWnd*) {
    Default();
}
void CWnd::OnEnable(BOOL) {
    Default();
}
void CWnd::OnShowWindow(BOOL, UINT) {
    Default();
}
void CWnd::OnClose() {
    Default();
}
BOOL CWnd::OnQueryEndSession() {
    return static_cast<BOOL>(Default());
}
void CWnd::OnEndSession(BOOL) {
    Default();
}
BOOL CWnd::OnQueryOpen() {
    return static_cast<BOOL>(Default());
}
void CWnd::OnCancelMode() {
    Default();
}
void CWnd::OnChildActivate() {
    Default();
}
void CWnd::OnParentNotify(UINT, LPARAM) {
    Default();
}
void CWnd::OnGetMinMaxInfo(MINMAXINFO*) {
    Default();
}
void CWnd::OnWindowPosChanging(WINDOWPOS*) {
    Default();
}
void CWnd::OnWindowPosChanged(WINDOWPOS*) {
    Default();
}
void CWnd::OnStyleChanging(int, LPSTYLESTRUCT) {
    Default();
}
void CWnd::OnStyleChanged(int, LPSTYLESTRUCT) {
    Default();
}
void CWnd::OnSettingChange(UINT, LPCTSTR) {
    Default();
}
void CWnd::OnSysColorChange() {
    Default();
}
void CWnd::OnEnterSizeMove() {
    Default();
}
void CWnd::OnExitSizeMove() {
    Default();
}

// --- painting ----------------------------------------------------------------------------------------------------
void CWnd::OnPaint() {
    Default();
}
BOOL CWnd::OnEraseBkgnd(CDC*) {
    return static_cast<BOOL>(Default());
}
void CWnd::OnNcPaint() {
    Default();
}
BOOL CWnd::OnNcActivate(BOOL) {
    return static_cast<BOOL>(Default());
}
void CWnd::OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS*) {
    Default();
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd* pWnd, UINT) {
    LRESULT result = 0;
    if (pWnd != nullptr && ReflectLastMsg(pWnd->m_hWnd, &result)) {
        return reinterpret_cast<HBRUSH>(result);
    }
    return reinterpret_cast<HBRUSH>(Default());
}

void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT lpDrawItemStruct) {
    if (lpDrawItemStruct->CtlType != ODT_MENU && ReflectLastMsg(lpDrawItemStruct->hwndItem)) {
        return;
    }
    Default();
}

void CWnd::OnMeasureItem(int nIDCtl, LPMEASUREITEMSTRUCT lpMeasureItemStruct) {
    if (lpMeasureItemStruct->CtlType != ODT_MENU && ReflectLastMsg(::GetDlgItem(m_hWnd, nIDCtl))) {
        return;
    }
    Default();
}

void CWnd::OnDeleteItem(int, LPDELETEITEMSTRUCT lpDeleteItemStruct) {
    if (!ReflectLastMsg(lpDeleteItemStruct->hwndItem)) {
        Default();
    }
}

int CWnd::OnCompareItem(int, LPCOMPAREITEMSTRUCT lpCompareItemStruct) {
    LRESULT result = 0;
    if (ReflectLastMsg(lpCompareItemStruct->hwndItem, &result)) {
        return static_cast<int>(result);
    }
    return static_cast<int>(Default());
}

// --- mouse -------------------------------------------------------------------------------------------------------
void CWnd::OnMouseMove(UINT, CPoint) {
    Default();
}
void CWnd::OnLButtonDown(UINT, CPoint) {
    Default();
}
void CWnd::OnLButtonUp(UINT, CPoint) {
    Default();
}
void CWnd::OnLButtonDblClk(UINT, CPoint) {
    Default();
}
void CWnd::OnRButtonDown(UINT, CPoint) {
    Default();
}
void CWnd::OnRButtonUp(UINT, CPoint) {
    Default();
}
void CWnd::OnRButtonDblClk(UINT, CPoint) {
    Default();
}
void CWnd::OnMButtonDown(UINT, CPoint) {
    Default();
}
void CWnd::OnMButtonUp(UINT, CPoint) {
    Default();
}
void CWnd::OnMButtonDblClk(UINT, CPoint) {
    Default();
}
BOOL CWnd::OnMouseWheel(UINT, short, CPoint) {
    return static_cast<BOOL>(Default());
}
void CWnd::OnMouseLeave() {
    Default();
}
BOOL CWnd::OnSetCursor(CWnd*, UINT, UINT) {
    return static_cast<BOOL>(Default());
}
int CWnd::OnMouseActivate(CWnd*, UINT, UINT) {
    return static_cast<int>(Default());
}
void CWnd::OnCaptureChanged(CWnd*) {
    Default();
}
void CWnd::OnContextMenu(CWnd*, CPoint) {
    Default();
}
LRESULT CWnd::OnNcHitTest(CPoint) {
    return Default();
}
void CWnd::OnNcMouseMove(UINT, CPoint) {
    Default();
}
void CWnd::OnNcLButtonDown(UINT, CPoint) {
    Default();
}
void CWnd::OnNcLButtonUp(UINT, CPoint) {
    Default();
}
void CWnd::OnNcLButtonDblClk(UINT, CPoint) {
    Default();
}
void CWnd::OnDropFiles(HDROP) {
    Default();
}

// --- keyboard, timer, scroll, menu -------------------------------------------------------------------------------
void CWnd::OnKeyDown(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnKeyUp(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnChar(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnDeadChar(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnSysKeyDown(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnSysKeyUp(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnSysChar(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnSysDeadChar(UINT, UINT, UINT) {
    Default();
}
UINT CWnd::OnGetDlgCode() {
    return static_cast<UINT>(Default());
}
void CWnd::OnSysCommand(UINT, LPARAM) {
    Default();
}
void CWnd::OnTimer(UINT_PTR) {
    Default();
}

void CWnd::OnHScroll(UINT, UINT, CScrollBar* pScrollBar) {
    if (pScrollBar != nullptr && ReflectLastMsg(pScrollBar->m_hWnd)) {
        return;
    }
    Default();
}

void CWnd::OnVScroll(UINT, UINT, CScrollBar* pScrollBar) {
    if (pScrollBar != nullptr && ReflectLastMsg(pScrollBar->m_hWnd)) {
        return;
    }
    Default();
}

void CWnd::OnInitMenu(CMenu*) {
    Default();
}
void CWnd::OnInitMenuPopup(CMenu*, UINT, BOOL) {
    Default();
}
void CWnd::OnMenuSelect(UINT, UINT, HMENU) {
    Default();
}
LRESULT CWnd::OnMenuChar(UINT, UINT, CMenu*) {
    return Default();
}
void CWnd::OnEnterMenuLoop(BOOL) {
    Default();
}
void CWnd::OnExitMenuLoop(BOOL) {
    Default();
}
void CWnd::OnEnterIdle(UINT, CWnd*) {
    Default();
}
BOOL CWnd::OnHelpInfo(HELPINFO*) {
    return static_cast<BOOL>(Default());
}
BOOL CWnd::OnCopyData(CWnd*, COPYDATASTRUCT*) {
    return static_cast<BOOL>(Default());
}
