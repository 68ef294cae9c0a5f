// Message maps: the table a class keeps of the messages it answers, and the macros that write its rows. Included by
// afxwin.h. Each row names the message and how its parameters are passed to the handler.
// Layer 1: afx.
#pragma once

#include "afx.h"

class CCmdTarget;
class CWnd;
class CCmdUI;

typedef void (CCmdTarget::*AFX_PMSG)();
typedef void (CWnd::*AFX_PMSGW)();

#ifndef afx_msg
#define afx_msg
#endif

// How a row's handler takes its parameters and what becomes of its result. The letters before the underscore
// give the result, those after it the parameters.
enum AfxSig : UINT {
    AfxSig_end = 0,
    AfxSig_raw,           // LRESULT f(WPARAM, LPARAM)
    AfxSig_v_v,           // void f()
    AfxSig_b_v,           // BOOL f()
    AfxSig_u_v,           // UINT f()
    AfxSig_v_b,           // void f(BOOL)
    AfxSig_b_b,           // BOOL f(BOOL)
    AfxSig_i_create,      // int f(LPCREATESTRUCT)
    AfxSig_b_create,      // BOOL f(LPCREATESTRUCT)
    AfxSig_v_xy,          // void f(int, int)
    AfxSig_v_sizexy,      // void f(UINT, int, int)
    AfxSig_v_activate,    // void f(UINT, CWnd*, BOOL)
    AfxSig_v_bdword,      // void f(BOOL, DWORD)
    AfxSig_v_wndw,        // void f(CWnd*), the window in wParam
    AfxSig_v_wndl,        // void f(CWnd*), the window in lParam
    AfxSig_b_dc,          // BOOL f(CDC*)
    AfxSig_v_bu,          // void f(BOOL, UINT)
    AfxSig_h_ctlcolor,    // HBRUSH f(CDC*, CWnd*, UINT)
    AfxSig_h_ctlreflect,  // HBRUSH f(CDC*, UINT)
    AfxSig_b_cursor,      // BOOL f(CWnd*, UINT, UINT)
    AfxSig_i_mouseact,    // int f(CWnd*, UINT, UINT)
    AfxSig_v_minmax,      // void f(MINMAXINFO*)
    AfxSig_v_draw,        // void f(int, LPDRAWITEMSTRUCT)
    AfxSig_v_measure,     // void f(int, LPMEASUREITEMSTRUCT)
    AfxSig_v_delete,      // void f(int, LPDELETEITEMSTRUCT)
    AfxSig_i_compare,     // int f(int, LPCOMPAREITEMSTRUCT)
    AfxSig_v_drawself,    // void f(LPDRAWITEMSTRUCT)
    AfxSig_v_measureself, // void f(LPMEASUREITEMSTRUCT)
    AfxSig_v_pos,         // void f(WINDOWPOS*)
    AfxSig_v_calc,        // void f(BOOL, NCCALCSIZE_PARAMS*)
    AfxSig_l_point,       // LRESULT f(CPoint)
    AfxSig_v_key,         // void f(UINT, UINT, UINT): character, repeat count, flags
    AfxSig_v_syscmd,      // void f(UINT, LPARAM)
    AfxSig_v_timer,       // void f(UINT_PTR)
    AfxSig_v_scroll,      // void f(UINT, UINT, CScrollBar*)
    AfxSig_v_scrollself,  // void f(UINT, UINT)
    AfxSig_v_menu,        // void f(CMenu*)
    AfxSig_v_popup,       // void f(CMenu*, UINT, BOOL)
    AfxSig_v_menusel,     // void f(UINT, UINT, HMENU)
    AfxSig_l_menuchar,    // LRESULT f(UINT, UINT, CMenu*)
    AfxSig_v_uwnd,        // void f(UINT, CWnd*)
    AfxSig_v_mouse,       // void f(UINT, CPoint)
    AfxSig_b_wheel,       // BOOL f(UINT, short, CPoint)
    AfxSig_v_ulparam,     // void f(UINT, LPARAM)
    AfxSig_v_context,     // void f(CWnd*, CPoint)
    AfxSig_b_help,        // BOOL f(HELPINFO*)
    AfxSig_b_copydata,    // BOOL f(CWnd*, COPYDATASTRUCT*)
    AfxSig_v_drop,        // void f(HDROP)
    AfxSig_v_style,       // void f(int, LPSTYLESTRUCT)
    AfxSig_v_setting,     // void f(UINT, LPCTSTR)
    AfxSigCmd_v,          // void f(): a command or control notification
    AfxSigCmd_b,          // BOOL f(): FALSE continues the search
    AfxSigCmd_v_u,        // void f(UINT): the command's number
    AfxSigCmd_b_u,        // BOOL f(UINT)
    AfxSigCmdUI,          // void f(CCmdUI*)
    AfxSigCmdUI_range,    // void f(CCmdUI*), with a range of numbers
    AfxSigNotify_v,       // void f(NMHDR*, LRESULT*)
    AfxSigNotify_b,       // BOOL f(NMHDR*, LRESULT*)
    AfxSigNotify_v_u,     // void f(UINT, NMHDR*, LRESULT*)
    AfxSigNotify_b_u,     // BOOL f(UINT, NMHDR*, LRESULT*)
};

struct AFX_MSGMAP_ENTRY {
    UINT nMessage;         // window message, WM_COMMAND or WM_NOTIFY; 0xC000 for a registered message
    UINT nCode;            // control code, WM_NOTIFY code or CN_ value
    UINT nID;              // first control or command number, 0 for plain messages
    UINT nLastID;          // last number of the range
    AfxSig nSig;           // how the handler is called
    const UINT* pnMessage; // variable that holds a registered message's number
    AFX_PMSG pfn;          // the handler, cast to the common type
};

struct AFX_MSGMAP {
    const AFX_MSGMAP*(PASCAL* pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

// Where a command's handler was found, without calling it.
struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    AFX_PMSG pmf;
};

// Extra argument of OnCmdMsg for notifications.
struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

#define CN_COMMAND 0
#define CN_UPDATE_COMMAND_UI ((UINT)(-1))

// A control's message, sent back to the control by its parent.
#define WM_REFLECT_BASE 0xBC00
// One number for the family WM_CTLCOLORMSGBOX to WM_CTLCOLORSTATIC.
#ifndef WM_CTLCOLOR
#define WM_CTLCOLOR 0x0019
#endif
#define CTLCOLOR_MSGBOX 0
#define CTLCOLOR_EDIT 1
#define CTLCOLOR_LISTBOX 2
#define CTLCOLOR_BTN 3
#define CTLCOLOR_DLG 4
#define CTLCOLOR_SCROLLBAR 5
#define CTLCOLOR_STATIC 6

#define DECLARE_MESSAGE_MAP()                                                                                          \
protected:                                                                                                             \
    static const AFX_MSGMAP* PASCAL GetThisMessageMap();                                                               \
    virtual const AFX_MSGMAP* GetMessageMap() const;

// The rows cast pointers to handlers to one common type, which the layer casts back before each call.
#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                                         \
    _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wcast-function-type\"") const AFX_MSGMAP*        \
    theClass::GetMessageMap() const {                                                                                  \
        return GetThisMessageMap();                                                                                    \
    }                                                                                                                  \
    const AFX_MSGMAP* PASCAL theClass::GetThisMessageMap() {                                                           \
        [[maybe_unused]] typedef theClass ThisClass;                                                                   \
        typedef baseClass TheBaseClass;                                                                                \
        static const AFX_MSGMAP_ENTRY messageEntries[] = {

#define END_MESSAGE_MAP()                                                                                              \
    { 0, 0, 0, 0, AfxSig_end, nullptr, nullptr }                                                                       \
    }                                                                                                                  \
    ;                                                                                                                  \
    static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, messageEntries};                           \
    return &messageMap;                                                                                                \
    }                                                                                                                  \
    _Pragma("GCC diagnostic pop")

// A window's handler and a command target's handler as the common type. The member casts check the signature.
#define AFX_WNDFXN(ret, memberFxn, params) ((AFX_PMSG)(AFX_PMSGW) static_cast<ret(CWnd::*) params>(memberFxn))
#define AFX_CMDFXN(ret, memberFxn, params) ((AFX_PMSG) static_cast<ret(CCmdTarget::*) params>(memberFxn))
#define AFX_ROW(message, sig, ret, memberFxn, params)                                                                  \
    {message, 0, 0, 0, sig, nullptr, AFX_WNDFXN(ret, &ThisClass::memberFxn, params)},

// --- commands ---------------------------------------------------------------------------------------------------
#define ON_COMMAND(id, memberFxn)                                                                                      \
    {WM_COMMAND, CN_COMMAND, (UINT)(id), (UINT)(id), AfxSigCmd_v, nullptr, AFX_CMDFXN(void, memberFxn, ())},
#define ON_COMMAND_EX(id, memberFxn)                                                                                   \
    {WM_COMMAND, CN_COMMAND, (UINT)(id), (UINT)(id), AfxSigCmd_b_u, nullptr, AFX_CMDFXN(BOOL, memberFxn, (UINT))},
#define ON_COMMAND_RANGE(id, idLast, memberFxn)                                                                        \
    {WM_COMMAND, CN_COMMAND, (UINT)(id), (UINT)(idLast), AfxSigCmd_v_u, nullptr, AFX_CMDFXN(void, memberFxn, (UINT))},
#define ON_COMMAND_EX_RANGE(id, idLast, memberFxn)                                                                     \
    {WM_COMMAND, CN_COMMAND, (UINT)(id), (UINT)(idLast), AfxSigCmd_b_u, nullptr, AFX_CMDFXN(BOOL, memberFxn, (UINT))},
#define ON_UPDATE_COMMAND_UI(id, memberFxn)                                                                            \
    {WM_COMMAND,                                                                                                       \
     CN_UPDATE_COMMAND_UI,                                                                                             \
     (UINT)(id),                                                                                                       \
     (UINT)(id),                                                                                                       \
     AfxSigCmdUI,                                                                                                      \
     nullptr,                                                                                                          \
     AFX_CMDFXN(void, memberFxn, (CCmdUI*))},
#define ON_UPDATE_COMMAND_UI_RANGE(id, idLast, memberFxn)                                                              \
    {WM_COMMAND,                                                                                                       \
     CN_UPDATE_COMMAND_UI,                                                                                             \
     (UINT)(id),                                                                                                       \
     (UINT)(idLast),                                                                                                   \
     AfxSigCmdUI_range,                                                                                                \
     nullptr,                                                                                                          \
     AFX_CMDFXN(void, memberFxn, (CCmdUI*))},

// --- control notifications ---------------------------------------------------------------------------------------
#define ON_CONTROL(wNotifyCode, id, memberFxn)                                                                         \
    {WM_COMMAND, (WORD)(wNotifyCode), (UINT)(id), (UINT)(id), AfxSigCmd_v, nullptr, AFX_CMDFXN(void, memberFxn, ())},
#define ON_CONTROL_RANGE(wNotifyCode, id, idLast, memberFxn)                                                           \
    {WM_COMMAND,                                                                                                       \
     (WORD)(wNotifyCode),                                                                                              \
     (UINT)(id),                                                                                                       \
     (UINT)(idLast),                                                                                                   \
     AfxSigCmd_v_u,                                                                                                    \
     nullptr,                                                                                                          \
     AFX_CMDFXN(void, memberFxn, (UINT))},
#define ON_CONTROL_REFLECT(wNotifyCode, memberFxn)                                                                     \
    {WM_COMMAND + WM_REFLECT_BASE, (WORD)(wNotifyCode), 0, 0, AfxSigCmd_v, nullptr, AFX_CMDFXN(void, memberFxn, ())},
#define ON_CONTROL_REFLECT_EX(wNotifyCode, memberFxn)                                                                  \
    {WM_COMMAND + WM_REFLECT_BASE, (WORD)(wNotifyCode), 0, 0, AfxSigCmd_b, nullptr, AFX_CMDFXN(BOOL, memberFxn, ())},
#define ON_NOTIFY(wNotifyCode, id, memberFxn)                                                                          \
    {WM_NOTIFY,                                                                                                        \
     (UINT)(int)(wNotifyCode),                                                                                         \
     (UINT)(id),                                                                                                       \
     (UINT)(id),                                                                                                       \
     AfxSigNotify_v,                                                                                                   \
     nullptr,                                                                                                          \
     AFX_CMDFXN(void, memberFxn, (NMHDR*, LRESULT*))},
#define ON_NOTIFY_EX(wNotifyCode, id, memberFxn)                                                                       \
    {WM_NOTIFY,                                                                                                        \
     (UINT)(int)(wNotifyCode),                                                                                         \
     (UINT)(id),                                                                                                       \
     (UINT)(id),                                                                                                       \
     AfxSigNotify_b_u,                                                                                                 \
     nullptr,                                                                                                          \
     AFX_CMDFXN(BOOL, memberFxn, (UINT, NMHDR*, LRESULT*))},
#define ON_NOTIFY_RANGE(wNotifyCode, id, idLast, memberFxn)                                                            \
    {WM_NOTIFY,                                                                                                        \
     (UINT)(int)(wNotifyCode),                                                                                         \
     (UINT)(id),                                                                                                       \
     (UINT)(idLast),                                                                                                   \
     AfxSigNotify_v_u,                                                                                                 \
     nullptr,                                                                                                          \
     AFX_CMDFXN(void, memberFxn, (UINT, NMHDR*, LRESULT*))},
#define ON_NOTIFY_EX_RANGE(wNotifyCode, id, idLast, memberFxn)                                                         \
    {WM_NOTIFY,                                                                                                        \
     (UINT)(int)(wNotifyCode),                                                                                         \
     (UINT)(id),                                                                                                       \
     (UINT)(idLast),                                                                                                   \
     AfxSigNotify_b_u,                                                                                                 \
     nullptr,                                                                                                          \
     AFX_CMDFXN(BOOL, memberFxn, (UINT, NMHDR*, LRESULT*))},
#define ON_NOTIFY_REFLECT(wNotifyCode, memberFxn)                                                                      \
    {WM_NOTIFY + WM_REFLECT_BASE,                                                                                      \
     (UINT)(int)(wNotifyCode),                                                                                         \
     0,                                                                                                                \
     0,                                                                                                                \
     AfxSigNotify_v,                                                                                                   \
     nullptr,                                                                                                          \
     AFX_CMDFXN(void, memberFxn, (NMHDR*, LRESULT*))},
#define ON_NOTIFY_REFLECT_EX(wNotifyCode, memberFxn)                                                                   \
    {WM_NOTIFY + WM_REFLECT_BASE,                                                                                      \
     (UINT)(int)(wNotifyCode),                                                                                         \
     0,                                                                                                                \
     0,                                                                                                                \
     AfxSigNotify_b,                                                                                                   \
     nullptr,                                                                                                          \
     AFX_CMDFXN(BOOL, memberFxn, (NMHDR*, LRESULT*))},

#define ON_EN_SETFOCUS(id, memberFxn) ON_CONTROL(EN_SETFOCUS, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn) ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_EN_ERRSPACE(id, memberFxn) ON_CONTROL(EN_ERRSPACE, id, memberFxn)
#define ON_EN_MAXTEXT(id, memberFxn) ON_CONTROL(EN_MAXTEXT, id, memberFxn)
#define ON_EN_HSCROLL(id, memberFxn) ON_CONTROL(EN_HSCROLL, id, memberFxn)
#define ON_EN_VSCROLL(id, memberFxn) ON_CONTROL(EN_VSCROLL, id, memberFxn)
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_BN_SETFOCUS(id, memberFxn) ON_CONTROL(BN_SETFOCUS, id, memberFxn)
#define ON_BN_KILLFOCUS(id, memberFxn) ON_CONTROL(BN_KILLFOCUS, id, memberFxn)
#define ON_STN_CLICKED(id, memberFxn) ON_CONTROL(STN_CLICKED, id, memberFxn)
#define ON_STN_DBLCLK(id, memberFxn) ON_CONTROL(STN_DBLCLK, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_LBN_DBLCLK(id, memberFxn) ON_CONTROL(LBN_DBLCLK, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_CBN_DROPDOWN(id, memberFxn) ON_CONTROL(CBN_DROPDOWN, id, memberFxn)
#define ON_CBN_CLOSEUP(id, memberFxn) ON_CONTROL(CBN_CLOSEUP, id, memberFxn)
#define ON_CBN_EDITCHANGE(id, memberFxn) ON_CONTROL(CBN_EDITCHANGE, id, memberFxn)
#define ON_CBN_KILLFOCUS(id, memberFxn) ON_CONTROL(CBN_KILLFOCUS, id, memberFxn)

// --- any message -------------------------------------------------------------------------------------------------
#define ON_MESSAGE(message, memberFxn)                                                                                 \
    {message, 0, 0, 0, AfxSig_raw, nullptr, AFX_WNDFXN(LRESULT, memberFxn, (WPARAM, LPARAM))},
#define ON_REGISTERED_MESSAGE(nMessageVariable, memberFxn)                                                             \
    {0xC000, 0, 0, 0, AfxSig_raw, &nMessageVariable, AFX_WNDFXN(LRESULT, memberFxn, (WPARAM, LPARAM))},

// --- life, place, focus ------------------------------------------------------------------------------------------
#define ON_WM_CREATE() AFX_ROW(WM_CREATE, AfxSig_i_create, int, OnCreate, (LPCREATESTRUCT))
#define ON_WM_NCCREATE() AFX_ROW(WM_NCCREATE, AfxSig_b_create, BOOL, OnNcCreate, (LPCREATESTRUCT))
#define ON_WM_DESTROY() AFX_ROW(WM_DESTROY, AfxSig_v_v, void, OnDestroy, ())
#define ON_WM_NCDESTROY() AFX_ROW(WM_NCDESTROY, AfxSig_v_v, void, OnNcDestroy, ())
#define ON_WM_MOVE() AFX_ROW(WM_MOVE, AfxSig_v_xy, void, OnMove, (int, int))
#define ON_WM_SIZE() AFX_ROW(WM_SIZE, AfxSig_v_sizexy, void, OnSize, (UINT, int, int))
#define ON_WM_ACTIVATE() AFX_ROW(WM_ACTIVATE, AfxSig_v_activate, void, OnActivate, (UINT, CWnd*, BOOL))
#define ON_WM_ACTIVATEAPP() AFX_ROW(WM_ACTIVATEAPP, AfxSig_v_bdword, void, OnActivateApp, (BOOL, DWORD))
#define ON_WM_SETFOCUS() AFX_ROW(WM_SETFOCUS, AfxSig_v_wndw, void, OnSetFocus, (CWnd*))
#define ON_WM_KILLFOCUS() AFX_ROW(WM_KILLFOCUS, AfxSig_v_wndw, void, OnKillFocus, (CWnd*))
#define ON_WM_ENABLE() AFX_ROW(WM_ENABLE, AfxSig_v_b, void, OnEnable, (BOOL))
#define ON_WM_SHOWWINDOW() AFX_ROW(WM_SHOWWINDOW, AfxSig_v_bu, void, OnShowWindow, (BOOL, UINT))
#define ON_WM_CLOSE() AFX_ROW(WM_CLOSE, AfxSig_v_v, void, OnClose, ())
#define ON_WM_QUERYENDSESSION() AFX_ROW(WM_QUERYENDSESSION, AfxSig_b_v, BOOL, OnQueryEndSession, ())
#define ON_WM_ENDSESSION() AFX_ROW(WM_ENDSESSION, AfxSig_v_b, void, OnEndSession, (BOOL))
#define ON_WM_QUERYOPEN() AFX_ROW(WM_QUERYOPEN, AfxSig_b_v, BOOL, OnQueryOpen, ())
#define ON_WM_CANCELMODE() AFX_ROW(WM_CANCELMODE, AfxSig_v_v, void, OnCancelMode, ())
#define ON_WM_CHILDACTIVATE() AFX_ROW(WM_CHILDACTIVATE, AfxSig_v_v, void, OnChildActivate, ())
#define ON_WM_PARENTNOTIFY() AFX_ROW(WM_PARENTNOTIFY, AfxSig_v_ulparam, void, OnParentNotify, (UINT, LPARAM))
#define ON_WM_GETMINMAXINFO() AFX_ROW(WM_GETMINMAXINFO, AfxSig_v_minmax, void, OnGetMinMaxInfo, (MINMAXINFO*))
#define ON_WM_WINDOWPOSCHANGING() AFX_ROW(WM_WINDOWPOSCHANGING, AfxSig_v_pos, void, OnWindowPosChanging, (WINDOWPOS*))
#define ON_WM_WINDOWPOSCHANGED() AFX_ROW(WM_WINDOWPOSCHANGED, AfxSig_v_pos, void, OnWindowPosChanged, (WINDOWPOS*))
#define ON_WM_STYLECHANGING() AFX_ROW(WM_STYLECHANGING, AfxSig_v_style, void, OnStyleChanging, (int, LPSTYLESTRUCT))
#define ON_WM_STYLECHANGED() AFX_ROW(WM_STYLECHANGED, AfxSig_v_style, void, OnStyleChanged, (int, LPSTYLESTRUCT))
#define ON_WM_SETTINGCHANGE() AFX_ROW(WM_SETTINGCHANGE, AfxSig_v_setting, void, OnSettingChange, (UINT, LPCTSTR))
#define ON_WM_SYSCOLORCHANGE() AFX_ROW(WM_SYSCOLORCHANGE, AfxSig_v_v, void, OnSysColorChange, ())
#define ON_WM_ENTERSIZEMOVE() AFX_ROW(WM_ENTERSIZEMOVE, AfxSig_v_v, void, OnEnterSizeMove, ())
#define ON_WM_EXITSIZEMOVE() AFX_ROW(WM_EXITSIZEMOVE, AfxSig_v_v, void, OnExitSizeMove, ())

// --- painting ----------------------------------------------------------------------------------------------------
#define ON_WM_PAINT() AFX_ROW(WM_PAINT, AfxSig_v_v, void, OnPaint, ())
#define ON_WM_ERASEBKGND() AFX_ROW(WM_ERASEBKGND, AfxSig_b_dc, BOOL, OnEraseBkgnd, (CDC*))
#define ON_WM_CTLCOLOR() AFX_ROW(WM_CTLCOLOR, AfxSig_h_ctlcolor, HBRUSH, OnCtlColor, (CDC*, CWnd*, UINT))
#define ON_WM_CTLCOLOR_REFLECT()                                                                                       \
    AFX_ROW(WM_CTLCOLOR + WM_REFLECT_BASE, AfxSig_h_ctlreflect, HBRUSH, CtlColor, (CDC*, UINT))
#define ON_WM_DRAWITEM() AFX_ROW(WM_DRAWITEM, AfxSig_v_draw, void, OnDrawItem, (int, LPDRAWITEMSTRUCT))
#define ON_WM_MEASUREITEM() AFX_ROW(WM_MEASUREITEM, AfxSig_v_measure, void, OnMeasureItem, (int, LPMEASUREITEMSTRUCT))
#define ON_WM_DELETEITEM() AFX_ROW(WM_DELETEITEM, AfxSig_v_delete, void, OnDeleteItem, (int, LPDELETEITEMSTRUCT))
#define ON_WM_COMPAREITEM() AFX_ROW(WM_COMPAREITEM, AfxSig_i_compare, int, OnCompareItem, (int, LPCOMPAREITEMSTRUCT))
#define ON_WM_DRAWITEM_REFLECT()                                                                                       \
    AFX_ROW(WM_DRAWITEM + WM_REFLECT_BASE, AfxSig_v_drawself, void, DrawItem, (LPDRAWITEMSTRUCT))
#define ON_WM_MEASUREITEM_REFLECT()                                                                                    \
    AFX_ROW(WM_MEASUREITEM + WM_REFLECT_BASE, AfxSig_v_measureself, void, MeasureItem, (LPMEASUREITEMSTRUCT))
#define ON_WM_NCPAINT() AFX_ROW(WM_NCPAINT, AfxSig_v_v, void, OnNcPaint, ())
#define ON_WM_NCACTIVATE() AFX_ROW(WM_NCACTIVATE, AfxSig_b_b, BOOL, OnNcActivate, (BOOL))
#define ON_WM_NCCALCSIZE() AFX_ROW(WM_NCCALCSIZE, AfxSig_v_calc, void, OnNcCalcSize, (BOOL, NCCALCSIZE_PARAMS*))

// --- mouse -------------------------------------------------------------------------------------------------------
#define AFX_MOUSE_ROW(message, memberFxn) AFX_ROW(message, AfxSig_v_mouse, void, memberFxn, (UINT, CPoint))
#define ON_WM_MOUSEMOVE() AFX_MOUSE_ROW(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_LBUTTONDOWN() AFX_MOUSE_ROW(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_MOUSE_ROW(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_MOUSE_ROW(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() AFX_MOUSE_ROW(WM_RBUTTONDOWN, OnRButtonDown)
#define ON_WM_RBUTTONUP() AFX_MOUSE_ROW(WM_RBUTTONUP, OnRButtonUp)
#define ON_WM_RBUTTONDBLCLK() AFX_MOUSE_ROW(WM_RBUTTONDBLCLK, OnRButtonDblClk)
#define ON_WM_MBUTTONDOWN() AFX_MOUSE_ROW(WM_MBUTTONDOWN, OnMButtonDown)
#define ON_WM_MBUTTONUP() AFX_MOUSE_ROW(WM_MBUTTONUP, OnMButtonUp)
#define ON_WM_MBUTTONDBLCLK() AFX_MOUSE_ROW(WM_MBUTTONDBLCLK, OnMButtonDblClk)
#define ON_WM_MOUSEWHEEL() AFX_ROW(WM_MOUSEWHEEL, AfxSig_b_wheel, BOOL, OnMouseWheel, (UINT, short, CPoint))
#define ON_WM_MOUSELEAVE() AFX_ROW(WM_MOUSELEAVE, AfxSig_v_v, void, OnMouseLeave, ())
#define ON_WM_SETCURSOR() AFX_ROW(WM_SETCURSOR, AfxSig_b_cursor, BOOL, OnSetCursor, (CWnd*, UINT, UINT))
#define ON_WM_MOUSEACTIVATE() AFX_ROW(WM_MOUSEACTIVATE, AfxSig_i_mouseact, int, OnMouseActivate, (CWnd*, UINT, UINT))
#define ON_WM_CAPTURECHANGED() AFX_ROW(WM_CAPTURECHANGED, AfxSig_v_wndl, void, OnCaptureChanged, (CWnd*))
#define ON_WM_CONTEXTMENU() AFX_ROW(WM_CONTEXTMENU, AfxSig_v_context, void, OnContextMenu, (CWnd*, CPoint))
#define ON_WM_NCHITTEST() AFX_ROW(WM_NCHITTEST, AfxSig_l_point, LRESULT, OnNcHitTest, (CPoint))
#define ON_WM_NCMOUSEMOVE() AFX_MOUSE_ROW(WM_NCMOUSEMOVE, OnNcMouseMove)
#define ON_WM_NCLBUTTONDOWN() AFX_MOUSE_ROW(WM_NCLBUTTONDOWN, OnNcLButtonDown)
#define ON_WM_NCLBUTTONUP() AFX_MOUSE_ROW(WM_NCLBUTTONUP, OnNcLButtonUp)
#define ON_WM_NCLBUTTONDBLCLK() AFX_MOUSE_ROW(WM_NCLBUTTONDBLCLK, OnNcLButtonDblClk)
#define ON_WM_DROPFILES() AFX_ROW(WM_DROPFILES, AfxSig_v_drop, void, OnDropFiles, (HDROP))

// --- keyboard, timer, scroll, menu, clipboard --------------------------------------------------------------------
#define AFX_KEY_ROW(message, memberFxn) AFX_ROW(message, AfxSig_v_key, void, memberFxn, (UINT, UINT, UINT))
#define ON_WM_KEYDOWN() AFX_KEY_ROW(WM_KEYDOWN, OnKeyDown)
#define ON_WM_KEYUP() AFX_KEY_ROW(WM_KEYUP, OnKeyUp)
#define ON_WM_CHAR() AFX_KEY_ROW(WM_CHAR, OnChar)
#define ON_WM_DEADCHAR() AFX_KEY_ROW(WM_DEADCHAR, OnDeadChar)
#define ON_WM_SYSKEYDOWN() AFX_KEY_ROW(WM_SYSKEYDOWN, OnSysKeyDown)
#define ON_WM_SYSKEYUP() AFX_KEY_ROW(WM_SYSKEYUP, OnSysKeyUp)
#define ON_WM_SYSCHAR() AFX_KEY_ROW(WM_SYSCHAR, OnSysChar)
#define ON_WM_SYSDEADCHAR() AFX_KEY_ROW(WM_SYSDEADCHAR, OnSysDeadChar)
#define ON_WM_GETDLGCODE() AFX_ROW(WM_GETDLGCODE, AfxSig_u_v, UINT, OnGetDlgCode, ())
#define ON_WM_SYSCOMMAND() AFX_ROW(WM_SYSCOMMAND, AfxSig_v_syscmd, void, OnSysCommand, (UINT, LPARAM))
#define ON_WM_TIMER() AFX_ROW(WM_TIMER, AfxSig_v_timer, void, OnTimer, (UINT_PTR))
#define ON_WM_HSCROLL() AFX_ROW(WM_HSCROLL, AfxSig_v_scroll, void, OnHScroll, (UINT, UINT, CScrollBar*))
#define ON_WM_VSCROLL() AFX_ROW(WM_VSCROLL, AfxSig_v_scroll, void, OnVScroll, (UINT, UINT, CScrollBar*))
#define ON_WM_HSCROLL_REFLECT() AFX_ROW(WM_HSCROLL + WM_REFLECT_BASE, AfxSig_v_scrollself, void, HScroll, (UINT, UINT))
#define ON_WM_VSCROLL_REFLECT() AFX_ROW(WM_VSCROLL + WM_REFLECT_BASE, AfxSig_v_scrollself, void, VScroll, (UINT, UINT))
#define ON_WM_INITMENU() AFX_ROW(WM_INITMENU, AfxSig_v_menu, void, OnInitMenu, (CMenu*))
#define ON_WM_INITMENUPOPUP() AFX_ROW(WM_INITMENUPOPUP, AfxSig_v_popup, void, OnInitMenuPopup, (CMenu*, UINT, BOOL))
#define ON_WM_MENUSELECT() AFX_ROW(WM_MENUSELECT, AfxSig_v_menusel, void, OnMenuSelect, (UINT, UINT, HMENU))
#define ON_WM_MENUCHAR() AFX_ROW(WM_MENUCHAR, AfxSig_l_menuchar, LRESULT, OnMenuChar, (UINT, UINT, CMenu*))
#define ON_WM_ENTERMENULOOP() AFX_ROW(WM_ENTERMENULOOP, AfxSig_v_b, void, OnEnterMenuLoop, (BOOL))
#define ON_WM_EXITMENULOOP() AFX_ROW(WM_EXITMENULOOP, AfxSig_v_b, void, OnExitMenuLoop, (BOOL))
#define ON_WM_ENTERIDLE() AFX_ROW(WM_ENTERIDLE, AfxSig_v_uwnd, void, OnEnterIdle, (UINT, CWnd*))
#define ON_WM_HELPINFO() AFX_ROW(WM_HELP, AfxSig_b_help, BOOL, OnHelpInfo, (HELPINFO*))
#define ON_WM_COPYDATA() AFX_ROW(WM_COPYDATA, AfxSig_b_copydata, BOOL, OnCopyData, (CWnd*, COPYDATASTRUCT*))
#define ON_WM_CUT() AFX_ROW(WM_CUT, AfxSig_v_v, void, OnCut, ())
#define ON_WM_COPY() AFX_ROW(WM_COPY, AfxSig_v_v, void, OnCopy, ())
#define ON_WM_PASTE() AFX_ROW(WM_PASTE, AfxSig_v_v, void, OnPaste, ())
#define ON_WM_CLEAR() AFX_ROW(WM_CLEAR, AfxSig_v_v, void, OnClear, ())
