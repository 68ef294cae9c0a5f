// The rows of message maps for commands, for update handlers and for the notifications of controls.
// Layer 1: afx.
#pragma once

#include "afxmap_.h"

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
