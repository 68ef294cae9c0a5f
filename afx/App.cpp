// The thread's message loop, the application, message boxes.
// Layer 1: afx.
#include "ThreadState.h"
#include "afxdlgs.h"

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)
IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

// --- the loop without an object ----------------------------------------------------------------------------------

static BOOL PumpOne(MSG& message) {
    const BOOL got = ::GetMessage(&message, nullptr, 0, 0);
    if (got <= 0) {
        AfxState().exitCode = got == 0 ? static_cast<int>(message.wParam) : 0;
        return FALSE;
    }
    if (!AfxPreTranslateMessage(&message)) {
        ::TranslateMessage(&message);
        ::DispatchMessage(&message);
    }
    return TRUE;
}

BOOL AFXAPI AfxPumpMessage() {
    if (CWinThread* thread = AfxGetThread()) {
        return thread->PumpMessage();
    }
    MSG message;
    return PumpOne(message);
}

BOOL AFXAPI AfxPreTranslateMessage(MSG* pMsg) {
    if (CWinThread* thread = AfxGetThread()) {
        return thread->PreTranslateMessage(pMsg);
    }
    return CWnd::WalkPreTranslateTree(nullptr, pMsg);
}

void AFXAPI AfxPostQuitMessage(int nExitCode) {
    ::PostQuitMessage(nExitCode);
}

// --- CWinThread --------------------------------------------------------------------------------------------------

CWinThread::CWinThread()
    : m_pMainWnd(nullptr), m_hThread(::GetCurrentThread()), m_nThreadID(::GetCurrentThreadId()), m_msgCur(),
      m_ptCursorLast(0, 0), m_nMsgLast(WM_NULL) {
    // The object of a DLL with a module state of its own is not the program's thread.
    if (AfxGetModuleState() == AfxGetAppModuleState()) {
        AfxState().thread = this;
    }
}

CWinThread::~CWinThread() {
    if (AfxThreadState* state = AfxStateIfAny()) {
        if (state->thread == this) {
            state->thread = nullptr;
        }
    }
}

BOOL CWinThread::InitInstance() {
    return FALSE;
}

int CWinThread::Run() {
    bool idle = true;
    LONG idleCount = 0;
    for (;;) {
        // Idle work continues until it is done or a message comes.
        while (idle && !::PeekMessage(&m_msgCur, nullptr, 0, 0, PM_NOREMOVE)) {
            if (!OnIdle(idleCount++)) {
                idle = false;
            }
        }
        do {
            if (!PumpMessage()) {
                return ExitInstance();
            }
            if (IsIdleMessage(&m_msgCur)) {
                idle = true;
                idleCount = 0;
            }
        } while (::PeekMessage(&m_msgCur, nullptr, 0, 0, PM_NOREMOVE));
    }
}

BOOL CWinThread::PreTranslateMessage(MSG* pMsg) {
    CWnd* main = GetMainWnd();
    if (CWnd::WalkPreTranslateTree(AfxHandleOf(main), pMsg)) {
        return TRUE;
    }
    // The message of another top-level window, for example a modeless dialog, has not been shown to the main window
    // yet.
    if (main != nullptr && pMsg->hwnd != nullptr) {
        HWND top = pMsg->hwnd;
        for (HWND parent = top; parent != nullptr; parent = ::GetParent(parent)) {
            top = parent;
        }
        if (top != main->m_hWnd) {
            return main->PreTranslateMessage(pMsg);
        }
    }
    return FALSE;
}

BOOL CWinThread::PumpMessage() {
    return PumpOne(m_msgCur);
}

BOOL CWinThread::OnIdle(LONG lCount) {
    if (lCount == 0) {
        return TRUE; // more to do
    }
    AfxDeleteTemporaries();
    return FALSE;
}

BOOL CWinThread::IsIdleMessage(MSG* pMsg) {
    // A mouse that has not moved changes no state; neither do paints, the caret's timer and timers.
    if (pMsg->message == WM_MOUSEMOVE || pMsg->message == WM_NCMOUSEMOVE) {
        const CPoint place(static_cast<int>(pMsg->pt.x), static_cast<int>(pMsg->pt.y));
        if (m_ptCursorLast == place && pMsg->message == m_nMsgLast) {
            return FALSE;
        }
        m_ptCursorLast = place;
        m_nMsgLast = pMsg->message;
        return TRUE;
    }
    constexpr UINT caretTimer = 0x0118; // WM_SYSTIMER
    return pMsg->message != WM_PAINT && pMsg->message != caretTimer;
}

int CWinThread::ExitInstance() {
    // The loop has ended with WM_QUIT: its parameter is the exit code.
    return static_cast<int>(m_msgCur.wParam);
}

LRESULT CWinThread::ProcessWndProcException(CException*, const MSG* pMsg) {
    if (pMsg->message == WM_CREATE) {
        return -1; // the window is not made
    }
    // A window that can't be painted must not ask for it endlessly.
    if (pMsg->message == WM_PAINT) {
        ::ValidateRect(pMsg->hwnd, nullptr);
    }
    return 0;
}

CWnd* CWinThread::GetMainWnd() {
    return m_pMainWnd;
}

BOOL CWinThread::PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::PostThreadMessage(m_nThreadID, message, wParam, lParam);
}

// --- CWinApp -----------------------------------------------------------------------------------------------------

CWinApp::CWinApp(LPCTSTR lpszAppName)
    : m_hInstance(::GetModuleHandle(nullptr)), m_lpCmdLine(nullptr), m_nCmdShow(SW_SHOWNORMAL),
      m_pszAppName(lpszAppName), m_pszExeName(m_szExeName), m_nWaitCursorCount(0), m_hcurWaitCursorRestore(nullptr) {
    AFX_MODULE_STATE* state = AfxGetModuleState();
    ::lstrcpyn(m_szExeName, AfxGetAppName(), MAX_PATH);
    state->m_pCurrentWinApp = this;
    if (lpszAppName == nullptr) {
        m_pszAppName = m_szExeName;
    }
    state->m_lpszCurrentAppName = m_pszAppName;
}

CWinApp::~CWinApp() {
    AFX_MODULE_STATE* state = AfxGetAppModuleState();
    if (state->m_pCurrentWinApp == this) {
        state->m_pCurrentWinApp = nullptr;
        state->m_lpszCurrentAppName = nullptr;
    }
}

BOOL CWinApp::InitApplication() {
    return TRUE;
}

BOOL CWinApp::InitInstance() {
    return TRUE;
}

int CWinApp::Run() {
    // The loop of a program that has shown no window would never end.
    if (m_pMainWnd == nullptr) {
        AfxPostQuitMessage(0);
    }
    return CWinThread::Run();
}

BOOL CWinApp::OnIdle(LONG lCount) {
    return CWinThread::OnIdle(lCount);
}

int CWinApp::ExitInstance() {
    return CWinThread::ExitInstance();
}

LRESULT CWinApp::ProcessWndProcException(CException* e, const MSG* pMsg) {
    return AfxProcessWndProcException(e, *pMsg);
}

LRESULT AfxProcessWndProcException(CException* e, const MSG& message) {
    if (message.message == WM_CREATE) {
        return -1; // the code that creates the window gets the failure
    }
    // A window that can't be painted must not ask for it endlessly.
    if (message.message == WM_PAINT) {
        ::ValidateRect(message.hwnd, nullptr);
    }
    const bool command = message.message == WM_COMMAND && message.lParam == 0;
    // Code that throws a user exception has informed the user already.
    if (!e->IsKindOf(RUNTIME_CLASS(CUserException))) {
        e->ReportError(MB_ICONEXCLAMATION, command ? AFX_IDP_COMMAND_FAILURE : AFX_IDP_INTERNAL_FAILURE);
    }
    return message.message == WM_COMMAND ? TRUE : 0;
}

int CWinApp::DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT) {
    if ((nType & MB_ICONMASK) == 0) {
        nType |= MB_ICONEXCLAMATION;
    }
    // The owner is the last active popup of the active window, or else of the main window.
    HWND owner = ::GetActiveWindow();
    if (owner == nullptr && m_pMainWnd != nullptr) {
        owner = m_pMainWnd->m_hWnd;
    }
    if (owner != nullptr) {
        owner = ::GetLastActivePopup(owner);
    }
    return AfxShowMessageBox(owner, lpszPrompt, m_pszAppName, nType);
}

void CWinApp::DoWaitCursor(int nCode) {
    m_nWaitCursorCount += nCode;
    if (m_nWaitCursorCount > 0) {
        const HCURSOR before = ::SetCursor(::LoadCursor(nullptr, IDC_WAIT));
        if (nCode > 0 && m_nWaitCursorCount == 1) {
            m_hcurWaitCursorRestore = before;
        }
    } else {
        m_nWaitCursorCount = 0;
        if (nCode < 0) {
            ::SetCursor(m_hcurWaitCursorRestore);
        }
    }
}

BOOL CWinApp::DoPromptFileName(CString& fileName, UINT nIDSTitle, DWORD lFlags, BOOL bOpenFileDialog) {
    CFileDialog dialog(bOpenFileDialog);
    CString title, all;
    title.LoadString(nIDSTitle);
    all.LoadString(AFX_IDS_ALLFILTER);
    // The pairs of a filter are separated by zeros, and the whole ends with one more.
    CString filter = all;
    filter += _T('\0');
    filter += _T("*.*");
    filter += _T('\0');
    dialog.m_ofn.Flags |= lFlags;
    dialog.m_ofn.lpstrFilter = filter;
    dialog.m_ofn.lpstrTitle = title;
    dialog.m_ofn.lpstrFile = fileName.GetBuffer(MAX_PATH);
    dialog.m_ofn.nMaxFile = MAX_PATH;
    const INT_PTR result = dialog.DoModal();
    fileName.ReleaseBuffer();
    return result == IDOK;
}

HCURSOR CWinApp::LoadCursor(LPCTSTR lpszResourceName) const {
    return ::LoadCursor(AfxFindResourceHandle(lpszResourceName, RT_GROUP_CURSOR), lpszResourceName);
}

HCURSOR CWinApp::LoadCursor(UINT nIDResource) const {
    return LoadCursor(MAKEINTRESOURCE(nIDResource));
}

HCURSOR CWinApp::LoadStandardCursor(LPCTSTR lpszCursorName) const {
    return ::LoadCursor(nullptr, lpszCursorName);
}

HICON CWinApp::LoadIcon(LPCTSTR lpszResourceName) const {
    return ::LoadIcon(AfxFindResourceHandle(lpszResourceName, RT_GROUP_ICON), lpszResourceName);
}

HICON CWinApp::LoadIcon(UINT nIDResource) const {
    return LoadIcon(MAKEINTRESOURCE(nIDResource));
}

HICON CWinApp::LoadStandardIcon(LPCTSTR lpszIconName) const {
    return ::LoadIcon(nullptr, lpszIconName);
}

// --- starting ----------------------------------------------------------------------------------------------------

BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE, LPTSTR lpCmdLine, int nCmdShow) {
    AFX_MODULE_STATE* state = AfxGetAppModuleState();
    if (hInstance == nullptr) {
        hInstance = ::GetModuleHandle(nullptr);
    }
    state->m_hCurrentInstanceHandle = hInstance;
    state->m_hCurrentResourceHandle = hInstance;
    CWinApp* app = AfxGetApp();
    if (app == nullptr) {
        return TRUE;
    }
    if (lpCmdLine == nullptr) {
        // After the program's name, which may be in quotes.
        lpCmdLine = ::GetCommandLine();
        const bool quoted = *lpCmdLine == _T('"');
        if (quoted) {
            ++lpCmdLine;
        }
        while (*lpCmdLine != 0 && (quoted ? *lpCmdLine != _T('"') : *lpCmdLine > _T(' '))) {
            ++lpCmdLine;
        }
        if (quoted && *lpCmdLine != 0) {
            ++lpCmdLine;
        }
        while (*lpCmdLine != 0 && *lpCmdLine <= _T(' ')) {
            ++lpCmdLine;
        }
    }
    app->m_hInstance = hInstance;
    app->m_lpCmdLine = lpCmdLine;
    app->m_nCmdShow = nCmdShow;
    return TRUE;
}

int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine, int nCmdShow) {
    if (!AfxWinInit(hInstance, hPrevInstance, lpCmdLine, nCmdShow)) {
        return -1;
    }
    CWinApp* app = AfxGetApp();
    if (app == nullptr || !app->InitApplication()) {
        AfxWinTerm();
        return -1;
    }
    int result = 0;
    if (app->InitInstance()) {
        result = app->Run();
    } else {
        if (app->m_pMainWnd != nullptr) {
            app->m_pMainWnd->DestroyWindow();
        }
        result = app->ExitInstance();
    }
    AfxWinTerm();
    return result;
}

void AFXAPI AfxWinTerm() {
    AfxDeleteTemporaries();
}

// --- message boxes -----------------------------------------------------------------------------------------------

struct AfxBoxWatch {
    UINT buttons;   // a bit for the number of each button
    int answer = 0; // the button that ended the box
    HHOOK hook = nullptr;
    HWND box = nullptr;
};

namespace {

constexpr UINT Bit(int button) {
    return 1u << button;
}

UINT ButtonsOf(UINT type) {
    switch (type & MB_TYPEMASK) {
    case MB_OK:
        return Bit(IDOK);
    case MB_OKCANCEL:
        return Bit(IDOK) | Bit(IDCANCEL);
    case MB_ABORTRETRYIGNORE:
        return Bit(IDABORT) | Bit(IDRETRY) | Bit(IDIGNORE);
    case MB_YESNOCANCEL:
        return Bit(IDYES) | Bit(IDNO) | Bit(IDCANCEL);
    case MB_YESNO:
        return Bit(IDYES) | Bit(IDNO);
    case MB_RETRYCANCEL:
        return Bit(IDRETRY) | Bit(IDCANCEL);
    case MB_CANCELTRYCONTINUE:
        return Bit(IDCANCEL) | Bit(IDTRYAGAIN) | Bit(IDCONTINUE);
    default:
        return 0;
    }
}

// Withholds Escape and the close button from a box that has no button for them, and stores the button that was pressed.
LRESULT CALLBACK BoxProc(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR data) {
    auto* watch = reinterpret_cast<AfxBoxWatch*>(data);
    const int cancel = watch->buttons == Bit(IDOK) ? IDOK : IDCANCEL; // Escape presses a lone OK
    const bool isCancel = message == WM_CLOSE || (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL);
    if (isCancel && (watch->buttons & Bit(cancel)) == 0) {
        return 0;
    }
    if (message == WM_COMMAND && LOWORD(wParam) <= IDCONTINUE) {
        const int pressed = isCancel ? cancel : static_cast<int>(LOWORD(wParam));
        if ((watch->buttons & Bit(pressed)) != 0) {
            watch->answer = pressed;
        }
    }
    if (message == WM_NCDESTROY) {
        ::RemoveWindowSubclass(box, BoxProc, id);
    }
    return ::DefSubclassProc(box, message, wParam, lParam);
}

// The first dialog that MessageBox makes is the box.
LRESULT CALLBACK BoxHook(int code, WPARAM wParam, LPARAM lParam) {
    AfxBoxWatch* watch = AfxState().box;
    TCHAR name[8] = {};
    if (code == HCBT_CREATEWND && watch != nullptr && watch->box == nullptr &&
        ::GetClassName(reinterpret_cast<HWND>(wParam), name, 8) != 0 && ::lstrcmp(name, _T("#32770")) == 0 &&
        ::SetWindowSubclass(reinterpret_cast<HWND>(wParam), BoxProc, 0, reinterpret_cast<DWORD_PTR>(watch))) {
        watch->box = reinterpret_cast<HWND>(wParam);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

int AfxShowMessageBox(HWND hOwner, LPCTSTR lpszText, LPCTSTR lpszCaption, UINT nType) {
    const UINT buttons = ButtonsOf(nType);
    if (buttons == 0) {
        return ::MessageBox(hOwner, lpszText, lpszCaption, nType);
    }
    AfxThreadState& state = AfxState();
    AfxBoxWatch watch = {buttons};
    AfxBoxWatch* const outer = state.box;
    state.box = &watch;
    const HHOOK hook = ::SetWindowsHookEx(WH_CBT, BoxHook, nullptr, ::GetCurrentThreadId());
    const int result = ::MessageBox(hOwner, lpszText, lpszCaption, nType);
    if (hook != nullptr) {
        ::UnhookWindowsHookEx(hook);
    }
    state.box = outer;
    if (watch.answer != 0) {
        return watch.answer;
    }
    // Ended by EndDialog, or a box that could not be watched. A box that ends with the program gives IDOK under Wine,
    // whatever its buttons are.
    MSG quit = {};
    const bool isOurs = result > 0 && result <= IDCONTINUE && (buttons & Bit(result)) != 0;
    if (isOurs && (result != IDOK || !::PeekMessage(&quit, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE))) {
        return result;
    }
    // Compatibility 108: a Yes/No box that ends unanswered gives No.
    for (const int harmless : {IDCANCEL, IDNO, IDABORT}) {
        if ((buttons & Bit(harmless)) != 0) {
            return harmless;
        }
    }
    return result != 0 ? IDOK : 0;
}

int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType, UINT nIDHelp) {
    if (CWinApp* app = AfxGetApp()) {
        return app->DoMessageBox(lpszText, nType, nIDHelp);
    }
    if ((nType & MB_ICONMASK) == 0) {
        nType |= MB_ICONEXCLAMATION;
    }
    return AfxShowMessageBox(::GetActiveWindow(), lpszText, AfxGetAppName(), nType);
}

int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp) {
    CString text;
    text.LoadString(nIDPrompt);
    return AfxMessageBox(text, nType, nIDHelp == static_cast<UINT>(-1) ? nIDPrompt : nIDHelp);
}

static void Substitute(CString& result, UINT id, LPCTSTR const* texts, int count) {
    CString format;
    format.LoadString(id);
    result.Empty();
    for (int i = 0; i < format.GetLength(); ++i) {
        const int which = format[i] == _T('%') && i + 1 < format.GetLength() ? format[i + 1] - _T('1') : -1;
        if (which >= 0 && which < count) {
            if (texts[which] != nullptr) {
                result += texts[which];
            }
            ++i;
        } else {
            result += format[i];
        }
    }
}

void AFXAPI AfxFormatString1(CString& rString, UINT nIDS, LPCTSTR lpsz1) {
    const LPCTSTR texts[] = {lpsz1};
    Substitute(rString, nIDS, texts, 1);
}

void AFXAPI AfxFormatString2(CString& rString, UINT nIDS, LPCTSTR lpsz1, LPCTSTR lpsz2) {
    const LPCTSTR texts[] = {lpsz1, lpsz2};
    Substitute(rString, nIDS, texts, 2);
}
