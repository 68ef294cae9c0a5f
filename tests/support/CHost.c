#include "CHost.h"

#include <stdio.h>

#define LOG_SIZE 8192

static wchar_t g_log[LOG_SIZE];
static wchar_t g_taken[LOG_SIZE];
static CHostHandler g_handler;

static const wchar_t* NameOf(const wchar_t* const* names, int32_t count, int32_t index) {
    return index >= 0 && index < count ? names[index] : L"?";
}

void CHostWriteDown(NrvEvent* event) {
    static const wchar_t* const kinds[] = {L"none", L"line", L"circle", L"arc",   L"polyline",
                                           L"parm", L"text", L"center", L"label", L"frame"};
    static const wchar_t* const ends[] = {L"?", L"done", L"cancelled", L"lost"};
    static const wchar_t* const changes[] = {L"?",       L"added",  L"removed",    L"modified", L"order",  L"loaded",
                                             L"cleared", L"layers", L"background", L"command",  L"history"};
    static const wchar_t* const steps[] = {L"?", L"new", L"undone", L"redone", L"forgotten", L"saved"};
    wchar_t line[512] = L"";
    switch (event->header.code) {
    case NRV_N_CLICK:
        _snwprintf(line, 511, L"click %ls %d", NameOf(kinds, 10, event->kind), event->segment);
        break;
    case NRV_N_DOUBLE_CLICK:
        _snwprintf(line, 511, L"double %ls", NameOf(kinds, 10, event->kind));
        break;
    case NRV_N_HOVER:
        _snwprintf(line, 511, L"hover %ls", NameOf(kinds, 10, event->kind));
        break;
    case NRV_N_SELECTION:
        _snwprintf(line, 511, L"selection %u", event->count);
        break;
    case NRV_N_COMMAND_BEGUN:
        _snwprintf(line, 511, L"begun %ls", event->text);
        break;
    case NRV_N_COMMAND_ENDED:
        _snwprintf(line, 511, L"ended %ls %ls", event->text, NameOf(ends, 4, event->reason));
        break;
    case NRV_N_CHANGING:
        if (event->reason == NRV_CHANGE_COMMAND) {
            _snwprintf(line, 511, L"changing command %ls", event->text);
        } else {
            _snwprintf(line, 511, L"changing %ls %u", NameOf(changes, 11, event->reason), event->count);
        }
        break;
    case NRV_N_CHANGED:
        _snwprintf(line, 511, L"changed %ls %u", NameOf(changes, 11, event->reason), event->count);
        break;
    case NRV_N_EDIT_OPENING:
        _snwprintf(line, 511, L"opening %ls", event->text);
        break;
    case NRV_N_EDIT_ACCEPT:
        _snwprintf(line, 511, L"accept %ls", event->text);
        break;
    case NRV_N_EDIT_STORING:
        _snwprintf(line, 511, L"storing %ls>%ls", event->old_text, event->text);
        break;
    case NRV_N_EDIT_STORED:
        _snwprintf(line, 511, L"stored %ls>%ls", event->old_text, event->text);
        break;
    case NRV_N_EDIT_ENDED:
        _snwprintf(line, 511, L"closed");
        break;
    case NRV_N_MESSAGE:
        _snwprintf(line, 511, L"message %ls", event->text);
        break;
    case NRV_N_STEPS:
        _snwprintf(line, 511, L"steps %ls", NameOf(steps, 6, event->reason));
        break;
    default:
        return;
    }
    if (wcslen(g_log) + wcslen(line) + 3 < LOG_SIZE) {
        wcscat(g_log, line);
        wcscat(g_log, L"; ");
    }
}

static LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY) {
        NrvEvent* event = (NrvEvent*)lParam;
        if (event->header.code >= NRV_N_CLICK && event->header.code <= NRV_N_STEPS) {
            CHostWriteDown(event);
            if (g_handler != NULL) {
                g_handler(event);
            }
        } else if (event->header.code >= (UINT)-162 && event->header.code <= (UINT)-160) {
            wcscat(g_log, L"a notification of the C++ interface; ");
        }
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int CHostOpen(CHost* host, const wchar_t* className) {
    WNDCLASSW wc = {0};
    wc.lpfnWndProc = ParentProc;
    wc.hInstance = GetModuleHandleW(NULL);
    wc.lpszClassName = L"CHostParent";
    RegisterClassW(&wc);
    g_handler = NULL;
    memset(host, 0, sizeof *host);
    if (NrvInitialize() != NRV_OK) {
        return 0;
    }
    host->parent = CreateWindowExW(0, L"CHostParent", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 100, 80, 400, 300,
                                   NULL, NULL, wc.hInstance, NULL);
    host->view = CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 400, 300, host->parent,
                                 (HMENU)7, wc.hInstance, NULL);
    host->other = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, 0, host->parent,
                                  (HMENU)8, wc.hInstance, NULL);
    if (host->view != NULL) {
        SetForegroundWindow(host->parent);
        UpdateWindow(host->view);
        CHostPump();
    }
    CHostTakeLog();
    return host->parent != NULL && host->view != NULL && host->other != NULL;
}

void CHostClose(CHost* host) {
    g_handler = NULL;
    if (host->parent != NULL) {
        DestroyWindow(host->parent);
    }
    CHostPump();
    memset(host, 0, sizeof *host);
}

void CHostSetHandler(CHostHandler handler) {
    g_handler = handler;
}

const wchar_t* CHostTakeLog(void) {
    wcscpy(g_taken, g_log);
    g_log[0] = 0;
    return g_taken;
}

void CHostPump(void) {
    MSG message;
    while (PeekMessageW(&message, NULL, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void CHostPumpDialog(HWND dialog) {
    MSG message;
    while (PeekMessageW(&message, NULL, 0, 0, PM_REMOVE)) {
        if (!IsDialogMessageW(dialog, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

void CHostPumpTranslated(void) {
    MSG message;
    while (PeekMessageW(&message, NULL, 0, 0, PM_REMOVE)) {
        int32_t translated = 0;
        EXPECT_INT(NRV_OK, NrvTranslateMessage(&message, &translated));
        if (!translated) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

void CHostMove(CHost* host, int x, int y) {
    PostMessageW(host->view, WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
    CHostPump();
}

void CHostClick(CHost* host, int x, int y) {
    PostMessageW(host->view, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    PostMessageW(host->view, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    CHostPump();
}

void CHostPostKey(WPARAM key) {
    const LPARAM lParam = (LPARAM)(1 | (MapVirtualKeyW((UINT)key, 0) << 16));
    PostMessageW(GetFocus(), WM_KEYDOWN, key, lParam);
}

void CHostType(const wchar_t* text) {
    for (; *text != 0; ++text) {
        PostMessageW(GetFocus(), WM_CHAR, *text, 1);
    }
    CHostPump();
}

typedef struct Work {
    CHostWork work;
    void* data;
} Work;

static DWORD WINAPI ThreadProc(LPVOID parameter) {
    Work* work = (Work*)parameter;
    work->work(work->data);
    return 0;
}

void CHostRunOnThread(CHostWork work, void* data) {
    Work both = {work, data};
    HANDLE thread = CreateThread(NULL, 0, ThreadProc, &both, 0, NULL);
    if (EXPECT(thread != NULL)) {
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
    }
}

const wchar_t* CHostString(NrvHandle handle, NrvId id, int32_t what) {
    static wchar_t text[256];
    uint32_t length = 0;
    text[0] = 0;
    EXPECT_INT(NRV_OK, NrvGetString(handle, id, what, text, 256, &length));
    EXPECT_INT(wcslen(text), length);
    return text;
}

HWND CHostBox(CHost* host) {
    for (HWND child = GetWindow(host->view, GW_CHILD); child != NULL; child = GetWindow(child, GW_HWNDNEXT)) {
        if ((GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0) {
            return child;
        }
    }
    return NULL;
}
