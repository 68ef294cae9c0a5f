// Functions that the window sources of nrafx.dll share: handles of objects that may be null, the hook on the creation
// of windows, reports of exceptions, message boxes. Internal to nrafx.dll. Layer 1: afx.
#pragma once

#include "afxwin.h"

inline HGDIOBJ AfxHandleOf(const CGdiObject* object) {
    return object == nullptr ? nullptr : object->m_hObject;
}
inline HWND AfxHandleOf(const CWnd* window) {
    return window == nullptr ? nullptr : window->m_hWnd;
}
inline HDC AfxHandleOf(const CDC* dc) {
    return dc == nullptr ? nullptr : dc->m_hDC;
}
inline HMENU AfxHandleOf(const CMenu* menu) {
    return menu == nullptr ? nullptr : menu->m_hMenu;
}

HINSTANCE AfxLayerInstance(); // nrafx.dll itself

// The next window that this thread makes belongs to the object. Unhooking returns whether one was made.
void AfxHookWindowCreate(CWnd* pWnd);
BOOL AfxUnhookWindowCreate();

// For a catch (...) around a host's code that Windows has called: reports what was thrown, deletes it and gives the
// message's result in its place. Throws nothing.
LRESULT AfxReportCaught(const MSG& message);
// What an application does when a message handler throws.
LRESULT AfxProcessWndProcException(CException* e, const MSG& message);

// MessageBox of Windows, with one rule on every system: a box without a Cancel button is not left by Escape or its
// close button, and the answer is always that of one of its buttons. A box that ended without an answer, because the
// program quits, its owner was destroyed or it could not be made, gives Cancel if it has it, else No, else Abort; one
// with OK alone gives what Windows gave.
int AfxShowMessageBox(HWND hOwner, LPCTSTR lpszText, LPCTSTR lpszCaption, UINT nType);
