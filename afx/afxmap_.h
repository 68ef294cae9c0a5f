// Message maps: the table a class keeps of the messages it answers, how a handler is called, and the macros around the
// rows.
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
