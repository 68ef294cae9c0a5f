// CWnd: the tie between object and window, creation, the window procedure, subclassing.
// Layer 1: afx.
#include "ThreadState.h"

#include <new>

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_NCDESTROY()
END_MESSAGE_MAP()

const CWnd CWnd::wndTop(HWND_TOP);
const CWnd CWnd::wndBottom(HWND_BOTTOM);
const CWnd CWnd::wndTopMost(HWND_TOPMOST);
const CWnd CWnd::wndNoTopMost(HWND_NOTOPMOST);

namespace {

constexpr TCHAR kDefaultClass[] = _T("NrAfxWnd");

bool IsPlaceValue(HWND window) {
    return window == HWND_BOTTOM || window == HWND_TOPMOST || window == HWND_NOTOPMOST;
}

// Restores what was current before a window procedure, also when a handler throws.
struct MessageScope {
    MessageScope(AfxThreadState& threadState, const MSG& message) : state(threadState), saved(state.message) {
        state.message = message;
        ++state.depth;
    }
    ~MessageScope() {
        --state.depth;
        state.message = saved;
    }
    MessageScope(const MessageScope&) = delete;
    MessageScope& operator=(const MessageScope&) = delete;
    AfxThreadState& state;
    MSG saved;
};

} // namespace

static LRESULT ReportException(CException* e, const MSG& message) {
    const AFX_EXCEPTION_LINK owned(e);
    CWinThread* thread = AfxGetThread();
    return thread != nullptr ? thread->ProcessWndProcException(e, &message) : AfxProcessWndProcException(e, message);
}

LRESULT AfxReportCaught(const MSG& message) {
    // The report itself may throw, for lack of memory or in a host's message box; then there is nothing left that could
    // report it.
    try {
        try {
            throw;
        } catch (CException* e) {
            return ReportException(e, message);
        } catch (const std::bad_alloc&) {
            AfxThrowMemoryException();
        } catch (...) {
            AfxThrowNotSupportedException(); // not known to the layer
        }
    } catch (CException* e) {
        try {
            return ReportException(e, message);
        } catch (...) {
        }
    } catch (...) {
    }
    return message.message == WM_CREATE ? -1 : 0;
}

namespace {

LRESULT CALLBACK CreateHook(int code, WPARAM wParam, LPARAM lParam) {
    AfxThreadState& state = AfxState();
    if (code != HCBT_CREATEWND || state.created == nullptr) {
        return ::CallNextHookEx(state.createHook, code, wParam, lParam);
    }
    const HWND window = reinterpret_cast<HWND>(wParam);
    // Input methods create windows of their own in between.
    if ((::GetClassLongPtr(window, GCL_STYLE) & CS_IME) == 0) {
        CWnd* object = state.created;
        // Stack frames of Windows are between here and the caller: nothing may be thrown through them.
        try {
            object->Attach(window);
        } catch (...) {
            return 1; // no memory: the window is not made
        }
        state.created = nullptr;
        try {
            object->PreSubclassWindow();
        } catch (...) {
            AfxReportCaught(state.message);
        }
        const auto old = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtr(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
        if (old != &AfxWndProc) {
            *object->GetSuperWndProcAddr() = old;
        }
    }
    return ::CallNextHookEx(state.createHook, code, wParam, lParam);
}

} // namespace

void AfxHookWindowCreate(CWnd* pWnd) {
    AfxThreadState& state = AfxState();
    if (state.createHook == nullptr) {
        state.createHook = ::SetWindowsHookEx(WH_CBT, CreateHook, nullptr, ::GetCurrentThreadId());
    }
    if (state.createHook == nullptr) {
        AfxThrowMemoryException();
    }
    state.created = pWnd;
}

BOOL AfxUnhookWindowCreate() {
    AfxThreadState& state = AfxState();
    if (state.createHook != nullptr) {
        ::UnhookWindowsHookEx(state.createHook);
        state.createHook = nullptr;
    }
    const BOOL used = state.created == nullptr;
    state.created = nullptr;
    return used;
}

// --- construction ------------------------------------------------------------------------------------------------

CWnd::CWnd() : CWnd(nullptr) {}

CWnd::CWnd(HWND hWnd) : CWndOps(hWnd), m_pfnSuper(nullptr), m_hWndOwner(nullptr), m_nModalResult(0), m_nFlags(0) {}

CWnd::~CWnd() {
    if (m_hWnd != nullptr && !IsPlaceValue(m_hWnd)) {
        CWnd::DestroyWindow();
    }
    // The object is destroyed although its window could not be destroyed, for example because another thread owns it.
    if (m_hWnd != nullptr && !IsPlaceValue(m_hWnd)) {
        Detach();
    }
    if (AfxThreadState* state = AfxStateIfAny()) {
        if (state->created == this) {
            state->created = nullptr;
        }
    }
}

// --- handles -----------------------------------------------------------------------------------------------------

CWnd* PASCAL CWnd::FromHandle(HWND hWnd) {
    if (hWnd == nullptr) {
        return nullptr;
    }
    HandleMap<CWnd>& map = AfxState().windows;
    if (auto* entry = map.Find(hWnd)) {
        return entry->object;
    }
    if (CWnd* revived = map.Revive(hWnd, [=](const CWnd* each) { return each->m_hWnd == hWnd; })) {
        return revived;
    }
    // Compatibility 107: a temporary object may be used again for another handle.
    std::unique_ptr<CWnd> spare =
        map.TakeSpare([](const CWnd* each) { return !::IsWindow(each->m_hWnd); }, [](const CWnd*) { return true; });
    if (spare != nullptr) {
        spare->m_hWnd = nullptr; // so that it destroys nothing when the map has no memory
    } else {
        spare = std::make_unique<CWnd>();
    }
    CWnd* object = map.SetTemporary(hWnd, std::move(spare));
    object->m_hWnd = hWnd;
    return object;
}

CWnd* PASCAL CWnd::FromHandlePermanent(HWND hWnd) {
    return hWnd == nullptr ? nullptr : AfxState().windows.Permanent(hWnd);
}

void PASCAL CWnd::DeleteTempMap() {
    AfxState().windows.DeleteTemporaries([](CWnd* object) { object->m_hWnd = nullptr; });
}

BOOL CWnd::Attach(HWND hWndNew) {
    return AfxAttach(AfxState().windows, this, m_hWnd, hWndNew);
}

HWND CWnd::Detach() {
    const HWND window = m_hWnd;
    m_hWnd = nullptr;
    if (window != nullptr) {
        if (AfxThreadState* state = AfxStateIfAny()) {
            state->windows.Remove(window, this);
        }
    }
    return window;
}

// --- creation ----------------------------------------------------------------------------------------------------

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs) {
    if (cs.lpszClass != nullptr) {
        return TRUE;
    }
    // No device context of its own: what a handler sets in one is lost with that context.
    WNDCLASS wc = {};
    wc.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    wc.lpfnWndProc = ::DefWindowProc;
    wc.hInstance = AfxGetInstanceHandle();
    wc.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    wc.lpszClassName = kDefaultClass;
    if (!AfxRegisterClass(&wc)) {
        return FALSE;
    }
    cs.lpszClass = kDefaultClass;
    return TRUE;
}

BOOL CWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                  UINT nID, CCreateContext* pContext) {
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect, pParentWnd, nID, pContext);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                    CWnd* pParentWnd, UINT nID, LPVOID lpParam) {
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, static_cast<int>(rect.left),
                    static_cast<int>(rect.top), static_cast<int>(rect.right - rect.left),
                    static_cast<int>(rect.bottom - rect.top), AfxHandleOf(pParentWnd),
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), lpParam);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, int x, int y,
                    int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam) {
    CREATESTRUCT cs = {};
    cs.dwExStyle = dwExStyle;
    cs.lpszClass = lpszClassName;
    cs.lpszName = lpszWindowName;
    cs.style = static_cast<LONG>(dwStyle);
    cs.x = x;
    cs.y = y;
    cs.cx = nWidth;
    cs.cy = nHeight;
    cs.hwndParent = hWndParent;
    cs.hMenu = nIDorHMenu;
    cs.hInstance = AfxGetInstanceHandle();
    cs.lpCreateParams = lpParam;
    if (m_hWnd != nullptr || !PreCreateWindow(cs)) {
        if (m_hWnd == nullptr) {
            PostNcDestroy();
        }
        return FALSE;
    }
    AfxHookWindowCreate(this);
    const HWND window = ::CreateWindowEx(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x,
                                         cs.y, cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    // Windows refused before the object was attached: it still gets its last call, PostNcDestroy.
    if (!AfxUnhookWindowCreate()) {
        PostNcDestroy();
    }
    return window != nullptr;
}

BOOL CWnd::DestroyWindow() {
    if (m_hWnd == nullptr) {
        return FALSE;
    }
    const HWND window = m_hWnd;
    const bool permanent = FromHandlePermanent(window) == this;
    const BOOL done = ::DestroyWindow(window);
    // The object may have been freed. A window that is not subclassed sends it no last message.
    if (done && (!permanent || FromHandlePermanent(window) == this)) {
        Detach();
    }
    return done;
}

LPCTSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon) {
    thread_local TCHAR name[96];
    const HINSTANCE instance = AfxGetInstanceHandle();
    _snwprintf(name, 95, L"NrAfx:%p:%x:%p:%p:%p", static_cast<void*>(instance), nClassStyle,
               static_cast<void*>(hCursor), static_cast<void*>(hbrBackground), static_cast<void*>(hIcon));
    WNDCLASS wc = {};
    wc.style = nClassStyle;
    wc.lpfnWndProc = ::DefWindowProc;
    wc.hInstance = instance;
    wc.hIcon = hIcon;
    wc.hCursor = hCursor;
    wc.hbrBackground = hbrBackground;
    wc.lpszClassName = name;
    if (!AfxRegisterClass(&wc)) {
        AfxThrowResourceException();
    }
    return name;
}

BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass) {
    WNDCLASS known;
    if (::GetClassInfo(lpWndClass->hInstance, lpWndClass->lpszClassName, &known)) {
        return TRUE;
    }
    return ::RegisterClass(lpWndClass) != 0;
}

// --- subclassing -------------------------------------------------------------------------------------------------

WNDPROC* CWnd::GetSuperWndProcAddr() {
    return &m_pfnSuper;
}

void CWnd::PreSubclassWindow() {}

BOOL CWnd::SubclassWindow(HWND hWnd) {
    if (!Attach(hWnd)) {
        return FALSE;
    }
    PreSubclassWindow();
    const auto old =
        reinterpret_cast<WNDPROC>(::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    if (old != &AfxWndProc) {
        *GetSuperWndProcAddr() = old;
    }
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent) {
    const HWND control = ::GetDlgItem(AfxHandleOf(pParent), static_cast<int>(nID));
    return control != nullptr && SubclassWindow(control);
}

HWND CWnd::UnsubclassWindow() {
    if (m_hWnd != nullptr) {
        WNDPROC* super = GetSuperWndProcAddr();
        if (*super != nullptr) {
            ::SetWindowLongPtr(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(*super));
        }
        *super = nullptr;
    }
    return Detach();
}

// --- the window procedure ----------------------------------------------------------------------------------------

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam) {
    CWnd* object = CWnd::FromHandlePermanent(hWnd);
    if (object == nullptr || object->m_hWnd != hWnd) {
        return ::DefWindowProc(hWnd, nMsg, wParam, lParam);
    }
    return AfxCallWndProc(object, hWnd, nMsg, wParam, lParam);
}

LRESULT AFXAPI AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam) {
    MSG message = {};
    message.hwnd = hWnd;
    message.message = nMsg;
    message.wParam = wParam;
    message.lParam = lParam;
    const MessageScope scope(AfxState(), message);
    // Stack frames of Windows are between here and the caller: nothing may be thrown through them.
    try {
        return pWnd->WindowProc(nMsg, wParam, lParam);
    } catch (...) {
        return AfxReportCaught(message);
    }
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result)) {
        return result;
    }
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT nMsg, WPARAM wParam, LPARAM lParam) {
    const WNDPROC super = *GetSuperWndProcAddr();
    if (super != nullptr) {
        return ::CallWindowProc(super, m_hWnd, nMsg, wParam, lParam);
    }
    return ::DefWindowProc(m_hWnd, nMsg, wParam, lParam);
}

LRESULT CWnd::Default() {
    const MSG message = AfxState().message;
    return DefWindowProc(message.message, message.wParam, message.lParam);
}

const MSG* PASCAL CWnd::GetCurrentMessage() {
    AfxThreadState& state = AfxState();
    state.message.time = static_cast<DWORD>(::GetMessageTime());
    const DWORD place = ::GetMessagePos();
    state.message.pt.x = static_cast<short>(LOWORD(place));
    state.message.pt.y = static_cast<short>(HIWORD(place));
    return &state.message;
}

void CWnd::OnNcDestroy() {
    CWinThread* thread = AfxGetThread();
    if (thread != nullptr && thread->m_pMainWnd == this) {
        thread->m_pMainWnd = nullptr;
        AfxPostQuitMessage(0);
    }
    const HWND window = m_hWnd;
    const LONG_PTR before = ::GetWindowLongPtr(window, GWLP_WNDPROC);
    Default();
    // Gives the window its own procedure back, unless other code has subclassed it in between.
    if (::GetWindowLongPtr(window, GWLP_WNDPROC) == before && *GetSuperWndProcAddr() != nullptr) {
        ::SetWindowLongPtr(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(*GetSuperWndProcAddr()));
    }
    m_pfnSuper = nullptr;
    m_hWndOwner = nullptr;
    Detach();
    // Compatibility 109: a modal dialog that is destroyed with its owner gives `IDABORT`.
    // A modal window that is destroyed, for example with its owner, gets no other result.
    if ((m_nFlags & (WF_MODALLOOP | WF_CONTINUEMODAL)) == (WF_MODALLOOP | WF_CONTINUEMODAL)) {
        EndModalLoop(IDABORT);
    }
    PostNcDestroy();
}

void CWnd::PostNcDestroy() {}

// --- before dispatch ---------------------------------------------------------------------------------------------

BOOL CWnd::PreTranslateMessage(MSG*) {
    return FALSE;
}

BOOL CWnd::PreTranslateInput(LPMSG lpMsg) {
    const bool keyboard = lpMsg->message >= WM_KEYFIRST && lpMsg->message <= WM_KEYLAST;
    const bool mouse = lpMsg->message >= WM_MOUSEFIRST && lpMsg->message <= WM_MOUSELAST;
    return (keyboard || mouse) && ::IsDialogMessage(m_hWnd, lpMsg);
}

BOOL PASCAL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg) {
    for (HWND window = pMsg->hwnd; window != nullptr; window = ::GetParent(window)) {
        CWnd* object = FromHandlePermanent(window);
        if (object != nullptr && object->PreTranslateMessage(pMsg)) {
            return TRUE;
        }
        if (window == hWndStop) {
            break;
        }
    }
    return FALSE;
}
