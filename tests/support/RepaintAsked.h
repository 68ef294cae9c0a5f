// Whether a window waits for the repaint of its whole client area.
// Layer 16: tests.
#pragma once

#include <afxwin.h>

// The whole client area: a child or a message box that was closed has uncovered only a part of it.
inline bool IsRepaintAskedFor(const CWnd& wnd) {
    CRect client;
    CRect asked;
    wnd.GetClientRect(&client);
    return ::GetUpdateRect(wnd.m_hWnd, &asked, FALSE) && asked == client;
}
