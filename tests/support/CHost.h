// A host in C: a window with a view of the C interface in it, and a record of the events.
// Layer 16: tests.
#pragma once

#include "nrview.h"

#include "CTest.h"

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

// Called for an event before it is written down.
typedef void (*CHostHandler)(NrvEvent* event);

typedef struct CHost {
    HWND parent; // Its client area is 400 by 300 pixels.
    HWND view;   // Fills it; one drawing unit a pixel, the origin in the lower left corner.
    HWND other;  // Another control, a button, without a size.
} CHost;

// Makes the windows; 0 when one can't be made. Empties the record.
int CHostOpen(CHost* host, const wchar_t* className);
void CHostClose(CHost* host);
// Sets the handler for the events of all hosts, which come by WM_NOTIFY; null for none.
void CHostSetHandler(CHostHandler handler);
// The events since the last call, one after another, each ended by "; ". Cursor events are left out.
const wchar_t* CHostTakeLog(void);
// Writes an event down, as the parent does. For callbacks.
void CHostWriteDown(NrvEvent* event);

// Handles the waiting messages, in a loop that knows nothing of the library.
void CHostPump(void);
// The same, with each message given to IsDialogMessage first, or to NrvTranslateMessage.
void CHostPumpDialog(HWND dialog);
void CHostPumpTranslated(void);
// Points are client pixels of the view; messages are posted as the system posts them, then handled.
void CHostMove(CHost* host, int x, int y);
void CHostClick(CHost* host, int x, int y);
// Posts a key to the window with the focus; nothing is handled.
void CHostPostKey(WPARAM key);
void CHostType(const wchar_t* text);

// Runs a function on another thread and waits for its end.
typedef void (*CHostWork)(void* data);
void CHostRunOnThread(CHostWork work, void* data);

// The value of an object's string; valid until the next call.
const wchar_t* CHostString(NrvHandle handle, NrvId id, int32_t what);
// The child window of the view that is shown; null for none.
HWND CHostBox(CHost* host);

#ifdef __cplusplus
}
#endif
