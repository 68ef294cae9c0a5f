// Tooltips and the status bar.
// Layer 1: afx.
#include "ThreadState.h"
#include "afxcmn.h"

IMPLEMENT_DYNAMIC(CToolTipCtrl, CWnd)
IMPLEMENT_DYNAMIC(CStatusBarCtrl, CWnd)

static void InitControls(DWORD classes) {
    INITCOMMONCONTROLSEX controls = {sizeof(INITCOMMONCONTROLSEX), classes};
    ::InitCommonControlsEx(&controls);
}

// --- CToolTipCtrl ------------------------------------------------------------------------------------------------

BOOL CToolTipCtrl::Create(CWnd* pParentWnd, DWORD dwStyle) {
    InitControls(ICC_TAB_CLASSES);
    const BOOL done = CWnd::CreateEx(0, TOOLTIPS_CLASS, nullptr, WS_POPUP | dwStyle, CW_USEDEFAULT, CW_USEDEFAULT,
                                     CW_USEDEFAULT, CW_USEDEFAULT, AfxHandleOf(pParentWnd), nullptr, nullptr);
    // The control's window belongs to the parent's top-level window; messages about it go to the parent.
    if (done) {
        SetOwner(pParentWnd);
    }
    return done;
}

void CToolTipCtrl::FillToolInfo(TOOLINFO& ti, CWnd* pWnd, UINT_PTR nIDTool) const {
    ti = {};
    // The oldest size: the one that every version of the control takes.
    ti.cbSize = TTTOOLINFO_V1_SIZE;
    if (nIDTool == 0) {
        ti.hwnd = ::GetParent(AfxHandleOf(pWnd));
        ti.uFlags = TTF_IDISHWND;
        ti.uId = reinterpret_cast<UINT_PTR>(AfxHandleOf(pWnd));
    } else {
        ti.hwnd = AfxHandleOf(pWnd);
        ti.uId = nIDTool;
    }
}

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, LPCTSTR lpszText, LPCRECT lpRectTool, UINT_PTR nIDTool) {
    TOOLINFO ti;
    FillToolInfo(ti, pWnd, nIDTool);
    if (lpRectTool != nullptr) {
        ti.rect = *lpRectTool;
    }
    ti.lpszText = const_cast<LPTSTR>(lpszText);
    return static_cast<BOOL>(SendMessage(TTM_ADDTOOL, 0, reinterpret_cast<LPARAM>(&ti)));
}

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool, UINT_PTR nIDTool) {
    CString text;
    text.LoadString(nIDText);
    return AddTool(pWnd, text, lpRectTool, nIDTool);
}

void CToolTipCtrl::DelTool(CWnd* pWnd, UINT_PTR nIDTool) {
    TOOLINFO ti;
    FillToolInfo(ti, pWnd, nIDTool);
    SendMessage(TTM_DELTOOL, 0, reinterpret_cast<LPARAM>(&ti));
}

void CToolTipCtrl::UpdateTipText(LPCTSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool) {
    TOOLINFO ti;
    FillToolInfo(ti, pWnd, nIDTool);
    ti.lpszText = const_cast<LPTSTR>(lpszText);
    SendMessage(TTM_UPDATETIPTEXT, 0, reinterpret_cast<LPARAM>(&ti));
}

void CToolTipCtrl::UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool) {
    CString text;
    text.LoadString(nIDText);
    UpdateTipText(text, pWnd, nIDTool);
}

void CToolTipCtrl::SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect) {
    TOOLINFO ti;
    FillToolInfo(ti, pWnd, nIDTool);
    ti.rect = *lpRect;
    SendMessage(TTM_NEWTOOLRECT, 0, reinterpret_cast<LPARAM>(&ti));
}

int CToolTipCtrl::GetToolCount() const {
    return static_cast<int>(SendMessage(TTM_GETTOOLCOUNT));
}

void CToolTipCtrl::GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool) const {
    TCHAR text[1024] = {};
    TOOLINFO ti;
    FillToolInfo(ti, pWnd, nIDTool);
    ti.lpszText = text;
    // The size of the buffer that the control may fill, in characters.
    SendMessage(TTM_GETTEXT, _countof(text), reinterpret_cast<LPARAM>(&ti));
    str = text;
}

BOOL CToolTipCtrl::GetToolInfo(TOOLINFO& toolInfo, CWnd* pWnd, UINT_PTR nIDTool) const {
    FillToolInfo(toolInfo, pWnd, nIDTool);
    return static_cast<BOOL>(SendMessage(TTM_GETTOOLINFO, 0, reinterpret_cast<LPARAM>(&toolInfo)));
}

BOOL CToolTipCtrl::HitTest(CWnd* pWnd, CPoint pt, LPTOOLINFO lpToolInfo) const {
    TTHITTESTINFO hit = {};
    hit.hwnd = AfxHandleOf(pWnd);
    hit.pt = pt;
    hit.ti.cbSize = TTTOOLINFO_V1_SIZE;
    if (!SendMessage(TTM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit))) {
        return FALSE;
    }
    *lpToolInfo = hit.ti;
    return TRUE;
}

void CToolTipCtrl::Activate(BOOL bActivate) {
    SendMessage(TTM_ACTIVATE, static_cast<WPARAM>(bActivate));
}

void CToolTipCtrl::RelayEvent(LPMSG lpMsg) {
    SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(lpMsg));
}

void CToolTipCtrl::Update() {
    SendMessage(TTM_UPDATE);
}

void CToolTipCtrl::Pop() {
    SendMessage(TTM_POP);
}

void CToolTipCtrl::SetDelayTime(UINT nDelay) {
    SendMessage(TTM_SETDELAYTIME, TTDT_AUTOMATIC, static_cast<LPARAM>(nDelay));
}

void CToolTipCtrl::SetDelayTime(DWORD dwDuration, int iTime) {
    SendMessage(TTM_SETDELAYTIME, dwDuration, MAKELPARAM(iTime, 0));
}

int CToolTipCtrl::GetDelayTime(DWORD dwDuration) const {
    return static_cast<int>(SendMessage(TTM_GETDELAYTIME, dwDuration));
}

int CToolTipCtrl::SetMaxTipWidth(int iWidth) {
    return static_cast<int>(SendMessage(TTM_SETMAXTIPWIDTH, 0, iWidth));
}

int CToolTipCtrl::GetMaxTipWidth() const {
    return static_cast<int>(SendMessage(TTM_GETMAXTIPWIDTH));
}

// --- CStatusBarCtrl ----------------------------------------------------------------------------------------------

BOOL CStatusBarCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    InitControls(ICC_BAR_CLASSES);
    return CWnd::Create(STATUSCLASSNAME, nullptr, dwStyle, rect, pParentWnd, nID);
}

BOOL CStatusBarCtrl::SetText(LPCTSTR lpszText, int nPane, int nType) {
    return static_cast<BOOL>(
        SendMessage(SB_SETTEXT, static_cast<WPARAM>(nPane | nType), reinterpret_cast<LPARAM>(lpszText)));
}

CString CStatusBarCtrl::GetText(int nPane, int* pType) const {
    CString text;
    const int length = GetTextLength(nPane, pType);
    SendMessage(SB_GETTEXT, static_cast<WPARAM>(nPane), reinterpret_cast<LPARAM>(text.GetBufferSetLength(length)));
    text.ReleaseBuffer();
    return text;
}

int CStatusBarCtrl::GetTextLength(int nPane, int* pType) const {
    const LRESULT result = SendMessage(SB_GETTEXTLENGTH, static_cast<WPARAM>(nPane));
    if (pType != nullptr) {
        *pType = HIWORD(result);
    }
    return LOWORD(result);
}

BOOL CStatusBarCtrl::SetParts(int nParts, int* pWidths) {
    return static_cast<BOOL>(SendMessage(SB_SETPARTS, static_cast<WPARAM>(nParts), reinterpret_cast<LPARAM>(pWidths)));
}

int CStatusBarCtrl::GetParts(int nParts, int* pParts) const {
    return static_cast<int>(SendMessage(SB_GETPARTS, static_cast<WPARAM>(nParts), reinterpret_cast<LPARAM>(pParts)));
}

BOOL CStatusBarCtrl::GetRect(int nPane, LPRECT lpRect) const {
    return static_cast<BOOL>(SendMessage(SB_GETRECT, static_cast<WPARAM>(nPane), reinterpret_cast<LPARAM>(lpRect)));
}

void CStatusBarCtrl::SetMinHeight(int nMin) {
    SendMessage(SB_SETMINHEIGHT, static_cast<WPARAM>(nMin));
}

BOOL CStatusBarCtrl::SetSimple(BOOL bSimple) {
    return static_cast<BOOL>(SendMessage(SB_SIMPLE, static_cast<WPARAM>(bSimple)));
}
