// Message maps: finding a message's or command's row and calling its handler.
// Layer 1: afx.
#include "ThreadState.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

// --- command targets ---------------------------------------------------------------------------------------------

const AFX_MSGMAP* PASCAL CCmdTarget::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, AfxSig_end, nullptr, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const {
    return GetThisMessageMap();
}

namespace {

// The nearest row, from the object's own class upward, for a message with a code and a number.
const AFX_MSGMAP_ENTRY* FindCommand(const AFX_MSGMAP* map, UINT message, UINT code, UINT id) {
    for (; map != nullptr; map = map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->nSig != AfxSig_end; ++entry) {
            if (entry->nMessage == message && entry->nCode == code && id >= entry->nID && id <= entry->nLastID) {
                return entry;
            }
        }
    }
    return nullptr;
}

const AFX_MSGMAP_ENTRY* FindMessage(const AFX_MSGMAP* map, UINT message) {
    for (; map != nullptr; map = map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->nSig != AfxSig_end; ++entry) {
            if (entry->pnMessage != nullptr ? *entry->pnMessage == message && message >= 0xC000
                                            : entry->nMessage == message) {
                return entry;
            }
        }
    }
    return nullptr;
}

template <class... Params>
auto As(void (CCmdTarget::*pfn)()) {
    return reinterpret_cast<void (CCmdTarget::*)(Params...)>(pfn);
}

template <class... Params>
auto AsBool(void (CCmdTarget::*pfn)()) {
    return reinterpret_cast<BOOL (CCmdTarget::*)(Params...)>(pfn);
}

// Calls a command's or notification's handler; TRUE unless the handler passes the command on.
BOOL CallCommand(CCmdTarget* target, const AFX_MSGMAP_ENTRY& entry, UINT id, void* extra) {
    auto* notify = static_cast<AFX_NOTIFY*>(extra);
    switch (entry.nSig) {
    case AfxSigCmd_v:
        (target->*As<>(entry.pfn))();
        return TRUE;
    case AfxSigCmd_b:
        return (target->*AsBool<>(entry.pfn))();
    case AfxSigCmd_v_u:
        (target->*As<UINT>(entry.pfn))(id);
        return TRUE;
    case AfxSigCmd_b_u:
        return (target->*AsBool<UINT>(entry.pfn))(id);
    // NOLINTBEGIN(clang-analyzer-core.*): the signature tells that the record came with the message.
    case AfxSigCmdUI:
    case AfxSigCmdUI_range: {
        auto* ui = static_cast<CCmdUI*>(extra);
        ui->m_bContinueRouting = FALSE;
        (target->*As<CCmdUI*>(entry.pfn))(ui);
        return !ui->m_bContinueRouting;
    }
    case AfxSigNotify_v:
        (target->*As<NMHDR*, LRESULT*>(entry.pfn))(notify->pNMHDR, notify->pResult);
        return TRUE;
    case AfxSigNotify_b:
        return (target->*AsBool<NMHDR*, LRESULT*>(entry.pfn))(notify->pNMHDR, notify->pResult);
    case AfxSigNotify_v_u:
        (target->*As<UINT, NMHDR*, LRESULT*>(entry.pfn))(id, notify->pNMHDR, notify->pResult);
        return TRUE;
    case AfxSigNotify_b_u:
        return (target->*AsBool<UINT, NMHDR*, LRESULT*>(entry.pfn))(id, notify->pNMHDR, notify->pResult);
    // NOLINTEND(clang-analyzer-core.*)
    default:
        return FALSE;
    }
}

} // namespace

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    UINT message = WM_COMMAND;
    UINT code = static_cast<UINT>(nCode);
    // A notification's AFX_NOTIFY distinguishes it from a command: its own code is any 32-bit number.
    if (pExtra != nullptr && code != CN_UPDATE_COMMAND_UI) {
        message = WM_NOTIFY;
        code = static_cast<AFX_NOTIFY*>(pExtra)->pNMHDR->code;
    }
    const AFX_MSGMAP_ENTRY* entry = FindCommand(GetMessageMap(), message, code, nID);
    if (entry == nullptr) {
        return FALSE;
    }
    if (pHandlerInfo != nullptr) {
        pHandlerInfo->pTarget = this;
        pHandlerInfo->pmf = entry->pfn;
        return TRUE;
    }
    return CallCommand(this, *entry, nID, pExtra);
}

void CCmdTarget::BeginWaitCursor() {
    if (CWinApp* app = AfxGetApp()) {
        app->DoWaitCursor(1);
    }
}

void CCmdTarget::EndWaitCursor() {
    if (CWinApp* app = AfxGetApp()) {
        app->DoWaitCursor(-1);
    }
}

void CCmdTarget::RestoreWaitCursor() {
    if (CWinApp* app = AfxGetApp()) {
        app->DoWaitCursor(0);
    }
}

CWaitCursor::CWaitCursor() {
    if (CWinApp* app = AfxGetApp()) {
        app->DoWaitCursor(1);
    }
}

CWaitCursor::~CWaitCursor() {
    if (CWinApp* app = AfxGetApp()) {
        app->DoWaitCursor(-1);
    }
}

void CWaitCursor::Restore() {
    if (CWinApp* app = AfxGetApp()) {
        app->DoWaitCursor(0);
    }
}

// --- window messages ---------------------------------------------------------------------------------------------

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    LRESULT result = 0;
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam)) {
            return FALSE;
        }
        if (pResult != nullptr) {
            *pResult = 1;
        }
        return TRUE;
    }
    if (message == WM_NOTIFY) {
        if (lParam == 0 || !OnNotify(wParam, lParam, &result)) {
            return FALSE;
        }
        if (pResult != nullptr) {
            *pResult = result;
        }
        return TRUE;
    }
    // A control handles its own notifications before its parent does.
    HWND child = nullptr;
    switch (message) {
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        message = WM_CTLCOLOR;
        break;
    case WM_DRAWITEM:
        if (lParam != 0 && reinterpret_cast<DRAWITEMSTRUCT*>(lParam)->CtlType != ODT_MENU) {
            child = reinterpret_cast<DRAWITEMSTRUCT*>(lParam)->hwndItem;
        }
        break;
    case WM_MEASUREITEM:
        if (lParam != 0 && reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->CtlType != ODT_MENU) {
            child = ::GetDlgItem(m_hWnd, static_cast<int>(reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->CtlID));
        }
        break;
    case WM_HSCROLL:
    case WM_VSCROLL:
        // OnHScroll and OnVScroll reflect by themselves, after the parent's own handler.
        break;
    default:
        break;
    }
    const AFX_MSGMAP_ENTRY* entry = FindMessage(GetMessageMap(), message);
    if (entry == nullptr) {
        // The base handlers of these messages reflect them; without a row they are not called, so it is done here.
        if (message == WM_CTLCOLOR || message == WM_HSCROLL || message == WM_VSCROLL) {
            child = reinterpret_cast<HWND>(lParam);
        }
        if (child != nullptr && ReflectLastMsg(child, &result)) {
            if (pResult != nullptr) {
                *pResult = result;
            }
            return TRUE;
        }
        return FALSE;
    }
    if (!CallHandler(*entry, wParam, lParam, &result)) {
        return FALSE;
    }
    if (pResult != nullptr) {
        *pResult = result;
    }
    return TRUE;
}

namespace {

template <class Result, class... Params>
auto Handler(AFX_PMSG pfn) {
    return reinterpret_cast<Result (CWnd::*)(Params...)>(pfn);
}

CPoint PointOf(LPARAM lParam) {
    // Two signed 16-bit words: windows left of or above the first screen have negative places.
    return CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
}

CWnd* WndOf(WPARAM handle) {
    return CWnd::FromHandle(reinterpret_cast<HWND>(handle));
}

CWnd* WndOf(LPARAM handle) {
    return CWnd::FromHandle(reinterpret_cast<HWND>(handle));
}

} // namespace

BOOL CWnd::CallHandler(const AFX_MSGMAP_ENTRY& entry, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    const AFX_PMSG pfn = entry.pfn;
    const UINT low = LOWORD(wParam), high = HIWORD(wParam);
    LRESULT& result = *pResult;
    switch (entry.nSig) {
    case AfxSig_raw:
        result = (this->*Handler<LRESULT, WPARAM, LPARAM>(pfn))(wParam, lParam);
        break;
    case AfxSig_v_v:
        (this->*Handler<void>(pfn))();
        break;
    case AfxSig_b_v:
        result = (this->*Handler<BOOL>(pfn))();
        break;
    case AfxSig_u_v:
        result = static_cast<LRESULT>((this->*Handler<UINT>(pfn))());
        break;
    case AfxSig_v_b:
        (this->*Handler<void, BOOL>(pfn))(static_cast<BOOL>(wParam));
        break;
    case AfxSig_b_b:
        result = (this->*Handler<BOOL, BOOL>(pfn))(static_cast<BOOL>(wParam));
        break;
    case AfxSig_i_create:
        result = (this->*Handler<int, LPCREATESTRUCT>(pfn))(reinterpret_cast<LPCREATESTRUCT>(lParam));
        break;
    case AfxSig_b_create:
        result = (this->*Handler<BOOL, LPCREATESTRUCT>(pfn))(reinterpret_cast<LPCREATESTRUCT>(lParam));
        break;
    case AfxSig_v_xy:
        (this->*Handler<void, int, int>(pfn))(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
        break;
    case AfxSig_v_sizexy:
        (this->*Handler<void, UINT, int, int>(pfn))(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_v_activate:
        (this->*Handler<void, UINT, CWnd*, BOOL>(pfn))(low, WndOf(lParam), static_cast<BOOL>(high));
        break;
    case AfxSig_v_bdword:
        (this->*Handler<void, BOOL, DWORD>(pfn))(static_cast<BOOL>(wParam), static_cast<DWORD>(lParam));
        break;
    case AfxSig_v_wndw:
        (this->*Handler<void, CWnd*>(pfn))(WndOf(wParam));
        break;
    case AfxSig_v_wndl:
        (this->*Handler<void, CWnd*>(pfn))(WndOf(lParam));
        break;
    case AfxSig_b_dc:
        result = (this->*Handler<BOOL, CDC*>(pfn))(CDC::FromHandle(reinterpret_cast<HDC>(wParam)));
        break;
    case AfxSig_v_bu:
        (this->*Handler<void, BOOL, UINT>(pfn))(static_cast<BOOL>(wParam), static_cast<UINT>(lParam));
        break;
    case AfxSig_h_ctlcolor: {
        const UINT kind = AfxState().message.message - WM_CTLCOLORMSGBOX;
        result = reinterpret_cast<LRESULT>((this->*Handler<HBRUSH, CDC*, CWnd*, UINT>(pfn))(
            CDC::FromHandle(reinterpret_cast<HDC>(wParam)), WndOf(lParam), kind));
        // Without a brush from the handler Windows' default is used.
        return result != 0;
    }
    case AfxSig_h_ctlreflect: {
        const UINT kind = AfxState().message.message - WM_CTLCOLORMSGBOX;
        result = reinterpret_cast<LRESULT>(
            (this->*Handler<HBRUSH, CDC*, UINT>(pfn))(CDC::FromHandle(reinterpret_cast<HDC>(wParam)), kind));
        return result != 0;
    }
    case AfxSig_b_cursor:
        result = (this->*Handler<BOOL, CWnd*, UINT, UINT>(pfn))(WndOf(wParam), LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_i_mouseact:
        result = (this->*Handler<int, CWnd*, UINT, UINT>(pfn))(WndOf(wParam), LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_v_minmax:
        (this->*Handler<void, MINMAXINFO*>(pfn))(reinterpret_cast<MINMAXINFO*>(lParam));
        break;
    case AfxSig_v_draw:
        (this->*Handler<void, int, LPDRAWITEMSTRUCT>(pfn))(static_cast<int>(wParam),
                                                           reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        result = TRUE;
        break;
    case AfxSig_v_measure:
        (this->*Handler<void, int, LPMEASUREITEMSTRUCT>(pfn))(static_cast<int>(wParam),
                                                              reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        result = TRUE;
        break;
    case AfxSig_v_delete:
        (this->*Handler<void, int, LPDELETEITEMSTRUCT>(pfn))(static_cast<int>(wParam),
                                                             reinterpret_cast<LPDELETEITEMSTRUCT>(lParam));
        result = TRUE;
        break;
    case AfxSig_i_compare:
        result = (this->*Handler<int, int, LPCOMPAREITEMSTRUCT>(pfn))(static_cast<int>(wParam),
                                                                      reinterpret_cast<LPCOMPAREITEMSTRUCT>(lParam));
        break;
    case AfxSig_v_drawself:
        (this->*Handler<void, LPDRAWITEMSTRUCT>(pfn))(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        result = TRUE;
        break;
    case AfxSig_v_measureself:
        (this->*Handler<void, LPMEASUREITEMSTRUCT>(pfn))(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        result = TRUE;
        break;
    case AfxSig_v_pos:
        (this->*Handler<void, WINDOWPOS*>(pfn))(reinterpret_cast<WINDOWPOS*>(lParam));
        break;
    case AfxSig_v_calc:
        (this->*Handler<void, BOOL, NCCALCSIZE_PARAMS*>(pfn))(static_cast<BOOL>(wParam),
                                                              reinterpret_cast<NCCALCSIZE_PARAMS*>(lParam));
        break;
    case AfxSig_l_point:
        result = (this->*Handler<LRESULT, CPoint>(pfn))(PointOf(lParam));
        break;
    case AfxSig_v_key:
        (this->*Handler<void, UINT, UINT, UINT>(pfn))(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_v_syscmd:
        (this->*Handler<void, UINT, LPARAM>(pfn))(static_cast<UINT>(wParam), lParam);
        break;
    case AfxSig_v_timer:
        (this->*Handler<void, UINT_PTR>(pfn))(wParam);
        break;
    case AfxSig_v_scroll:
        (this->*Handler<void, UINT, UINT, CScrollBar*>(pfn))(low, high, reinterpret_cast<CScrollBar*>(WndOf(lParam)));
        break;
    case AfxSig_v_scrollself:
        (this->*Handler<void, UINT, UINT>(pfn))(low, high);
        break;
    case AfxSig_v_menu:
        (this->*Handler<void, CMenu*>(pfn))(CMenu::FromHandle(reinterpret_cast<HMENU>(wParam)));
        break;
    case AfxSig_v_popup:
        (this->*Handler<void, CMenu*, UINT, BOOL>(pfn))(CMenu::FromHandle(reinterpret_cast<HMENU>(wParam)),
                                                        LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_v_menusel:
        (this->*Handler<void, UINT, UINT, HMENU>(pfn))(low, high, reinterpret_cast<HMENU>(lParam));
        break;
    case AfxSig_l_menuchar:
        result = (this->*Handler<LRESULT, UINT, UINT, CMenu*>(pfn))(low, high,
                                                                    CMenu::FromHandle(reinterpret_cast<HMENU>(lParam)));
        break;
    case AfxSig_v_uwnd:
        (this->*Handler<void, UINT, CWnd*>(pfn))(static_cast<UINT>(wParam), WndOf(lParam));
        break;
    case AfxSig_v_mouse:
        (this->*Handler<void, UINT, CPoint>(pfn))(static_cast<UINT>(wParam), PointOf(lParam));
        break;
    case AfxSig_b_wheel:
        result = (this->*Handler<BOOL, UINT, short, CPoint>(pfn))(low, static_cast<short>(high), PointOf(lParam));
        break;
    case AfxSig_v_ulparam:
        (this->*Handler<void, UINT, LPARAM>(pfn))(static_cast<UINT>(wParam), lParam);
        break;
    case AfxSig_v_context:
        (this->*Handler<void, CWnd*, CPoint>(pfn))(WndOf(wParam), PointOf(lParam));
        break;
    case AfxSig_b_help:
        result = (this->*Handler<BOOL, HELPINFO*>(pfn))(reinterpret_cast<HELPINFO*>(lParam));
        break;
    case AfxSig_b_copydata:
        result = (this->*Handler<BOOL, CWnd*, COPYDATASTRUCT*>(pfn))(WndOf(wParam),
                                                                     reinterpret_cast<COPYDATASTRUCT*>(lParam));
        break;
    case AfxSig_v_drop:
        (this->*Handler<void, HDROP>(pfn))(reinterpret_cast<HDROP>(wParam));
        break;
    case AfxSig_v_style:
        (this->*Handler<void, int, LPSTYLESTRUCT>(pfn))(static_cast<int>(wParam),
                                                        reinterpret_cast<LPSTYLESTRUCT>(lParam));
        break;
    case AfxSig_v_setting:
        (this->*Handler<void, UINT, LPCTSTR>(pfn))(static_cast<UINT>(wParam), reinterpret_cast<LPCTSTR>(lParam));
        break;
    default:
        return FALSE;
    }
    return TRUE;
}

// --- commands of a window and its controls -----------------------------------------------------------------------

BOOL CWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    return CCmdTarget::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const UINT id = LOWORD(wParam);
    const HWND control = reinterpret_cast<HWND>(lParam);
    if (control == nullptr) {
        // A menu or an accelerator. One that its update handler greys out is not carried out.
        if (id == 0) {
            return FALSE;
        }
        class CEnabledTest : public CCmdUI {
        public:
            BOOL m_bEnabled = TRUE;
            void Enable(BOOL bOn) override {
                m_bEnabled = bOn;
                m_bEnableChanged = TRUE;
            }
            void SetCheck(int) override {}
            void SetRadio(BOOL) override {}
            void SetText(LPCTSTR) override {}
        } test;
        test.m_nID = id;
        OnCmdMsg(id, static_cast<int>(CN_UPDATE_COMMAND_UI), &test, nullptr);
        if (!test.m_bEnabled) {
            return TRUE;
        }
        return OnCmdMsg(id, CN_COMMAND, nullptr, nullptr);
    }
    // While values are exchanged with the controls, their notifications are ignored.
    if (AfxState().lockedOut == m_hWnd) {
        return TRUE;
    }
    if (ReflectLastMsg(control)) {
        return TRUE;
    }
    return OnCmdMsg(id, HIWORD(wParam), nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult) {
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    if (AfxState().lockedOut == m_hWnd) {
        return TRUE;
    }
    if (ReflectLastMsg(header->hwndFrom, pResult)) {
        return TRUE;
    }
    AFX_NOTIFY notify = {pResult, header};
    // The message in the upper word distinguishes a notification from a command and an update request whatever its code
    // is: NM_OUTOFMEMORY is the same number as CN_UPDATE_COMMAND_UI.
    return OnCmdMsg(static_cast<UINT>(header->idFrom), static_cast<int>(MAKELONG(header->code, WM_NOTIFY)), &notify,
                    nullptr);
}

// --- messages that go back to the control ------------------------------------------------------------------------

BOOL PASCAL CWnd::ReflectLastMsg(HWND hWndChild, LRESULT* pResult) {
    CWnd* child = CWnd::FromHandlePermanent(hWndChild);
    return child != nullptr && child->SendChildNotifyLastMsg(pResult);
}

BOOL CWnd::SendChildNotifyLastMsg(LRESULT* pResult) {
    const MSG message = AfxState().message;
    return OnChildNotify(message.message, message.wParam, message.lParam, pResult);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    return ReflectChildNotify(message, wParam, lParam, pResult);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    LRESULT result = 0;
    const AFX_MSGMAP_ENTRY* entry = nullptr;
    switch (message) {
    case WM_COMMAND: {
        entry = FindCommand(GetMessageMap(), WM_COMMAND + WM_REFLECT_BASE, HIWORD(wParam), 0);
        if (entry == nullptr || !CallCommand(this, *entry, LOWORD(wParam), nullptr)) {
            return FALSE;
        }
        if (pResult != nullptr) {
            *pResult = 1;
        }
        return TRUE;
    }
    case WM_NOTIFY: {
        auto* header = reinterpret_cast<NMHDR*>(lParam);
        entry = FindCommand(GetMessageMap(), WM_NOTIFY + WM_REFLECT_BASE, header->code, 0);
        AFX_NOTIFY notify = {pResult != nullptr ? pResult : &result, header};
        return entry != nullptr && CallCommand(this, *entry, static_cast<UINT>(header->idFrom), &notify);
    }
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        message = WM_CTLCOLOR;
        break;
    default:
        break;
    }
    entry = FindMessage(GetMessageMap(), message + WM_REFLECT_BASE);
    if (entry == nullptr || !CallHandler(*entry, wParam, lParam, &result)) {
        return FALSE;
    }
    if (pResult != nullptr) {
        *pResult = result;
    }
    return TRUE;
}
