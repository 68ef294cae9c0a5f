// What the layer keeps for each thread: its tables of handles, and what its windows are doing.
// Internal to nrafx.dll. Layer 1: afx.
#pragma once

#include "HandleMap.h"

// What the layer keeps for each thread.
struct AfxThreadState {
    HandleMap<CWnd> windows;
    HandleMap<CDC> contexts;
    HandleMap<CMenu> menus;
    HandleMap<CGdiObject> gdi;
    MSG message = {};                        // the message being handled
    int depth = 0;                           // nesting of window procedures
    CWnd* created = nullptr;                 // gets the next window that is made
    HHOOK createHook = nullptr;              // for `created`; null while none is set
    HWND lockedOut = nullptr;                // its controls' notifications are ignored: an exchange is running
    struct AfxBoxWatch* box = nullptr;       // gets the next message box that is made
    int exitCode = 0;                        // of the last WM_QUIT
    AFX_MODULE_STATE* moduleState = nullptr; // null: the application's
    CWinThread* thread = nullptr;
};

AfxThreadState& AfxState();
// The state of the thread if it has one: for destructors, which may run at the end of the process.
AfxThreadState* AfxStateIfAny();
void AfxDeleteTemporaries(); // unless a window procedure is on the stack
