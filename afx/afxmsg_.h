// Message maps: the rows for the messages of windows; the other macros of message maps come with it. Included by
// afxwin.h. Each row names the message and how its parameters are passed to the handler.
// Layer 1: afx.
#pragma once

#include "afxmap_.h"
#include "afxcmdmap_.h"

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
