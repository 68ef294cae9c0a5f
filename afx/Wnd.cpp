// CWnd: the tie between object and window, creation, the window procedure, subclassing.
// Layer 1: afx.
#include "HandleMap.h"

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

// A program with a message loop of its own knows no idle time. When it has gathered this many temporary GDI objects,
// they go as soon as no window procedure is at work.
constexpr size_t kManyTemporaries = 4096;

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
        if (state.depth == 0 && state.gdi.GetTemporaryCount() > kManyTemporaries)
            CGdiObject::DeleteTempMap();
    }
    MessageScope(const MessageScope&) = delete;
    MessageScope& operator=(const MessageScope&) = delete;
    AfxThreadState& state;
    MSG saved;
};

} // namespace

LRESULT AfxReportHandlerException(CException* e, const MSG& message) {
    LRESULT result = 0;
    if (CWinThread* thread = AfxGetThread()) {
        result = thread->ProcessWndProcException(e, &message);
    } else if (message.message == WM_CREATE) {
        result = -1;
    } else {
        // A window that can't be painted must not ask for it for ever.
        if (message.message == WM_PAINT)
            ::ValidateRect(message.hwnd, nullptr);
        e->ReportError(MB_ICONEXCLAMATION, AFX_IDP_INTERNAL_FAILURE);
    }
    e->Delete();
    return result;
}

namespace {

// A standard exception under the layer's exceptions, for the one who reports it.
LRESULT ReportStandard(const MSG& message, bool memory) {
    try {
        if (memory)
            AfxThrowMemoryException();
        AfxThrowNotSupportedException();
    } catch (CException* e) {
        return AfxReportHandlerException(e, message);
    }
}

LRESULT CALLBACK CreateHook(int code, WPARAM wParam, LPARAM lParam) {
    AfxThreadState& state = AfxState();
    if (code != HCBT_CREATEWND || state.created == nullptr)
        return ::CallNextHookEx(state.createHook, code, wParam, lParam);
    const HWND window = reinterpret_cast<HWND>(wParam);
    // Input methods put windows of their own in between.
    if ((::GetClassLongPtr(window, GCL_STYLE) & CS_IME) == 0) {
        CWnd* object = state.created;
        state.created = nullptr;
        object->Attach(window);
        try {
            object->PreSubclassWindow();
        } catch (CException* e) {
            AfxReportHandlerException(e, state.message);
        }
        const auto old = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtr(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
        if (old != &AfxWndProc)
            *object->GetSuperWndProcAddr() = old;
    }
    return ::CallNextHookEx(state.createHook, code, wParam, lParam);
}

} // namespace

void AfxHookWindowCreate(CWnd* pWnd) {
    AfxThreadState& state = AfxState();
    if (state.createHook == nullptr)
        state.createHook = ::SetWindowsHookEx(WH_CBT, CreateHook, nullptr, ::GetCurrentThreadId());
    if (state.createHook == nullptr)
        AfxThrowMemoryException();
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

CWnd::CWnd(HWND hWnd) : m_hWnd(hWnd), m_pfnSuper(nullptr), m_hWndOwner(nullptr), m_nModalResult(0), m_nFlags(0) {}

CWnd::~CWnd() {
    if (m_hWnd != nullptr && !IsPlaceValue(m_hWnd))
        CWnd::DestroyWindow();
    // The object goes although the window could not be made away with, by another thread's window for one.
    if (m_hWnd != nullptr && !IsPlaceValue(m_hWnd))
        Detach();
    if (AfxThreadState* state = AfxStateIfAny())
        if (state->created == this)
            state->created = nullptr;
}

// --- handles -----------------------------------------------------------------------------------------------------

CWnd* PASCAL CWnd::FromHandle(HWND hWnd) {
    if (hWnd == nullptr)
        return nullptr;
    HandleMap<CWnd>& map = AfxState().windows;
    if (auto* entry = map.Find(hWnd))
        return entry->object;
    CWnd* object = new CWnd(hWnd);
    map.Set(hWnd, object, true);
    return object;
}

CWnd* PASCAL CWnd::FromHandlePermanent(HWND hWnd) {
    return hWnd == nullptr ? nullptr : AfxState().windows.Permanent(hWnd);
}

void PASCAL CWnd::DeleteTempMap() {
    AfxState().windows.DeleteTemporaries([](CWnd* object) { object->m_hWnd = nullptr; });
}

BOOL CWnd::Attach(HWND hWndNew) {
    if (hWndNew == nullptr)
        return FALSE;
    m_hWnd = hWndNew;
    AfxState().windows.Set(hWndNew, this, false);
    return TRUE;
}

HWND CWnd::Detach() {
    const HWND window = m_hWnd;
    m_hWnd = nullptr;
    if (window != nullptr)
        if (AfxThreadState* state = AfxStateIfAny())
            state->windows.Remove(window, this);
    return window;
}

// --- creation ----------------------------------------------------------------------------------------------------

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs) {
    if (cs.lpszClass != nullptr)
        return TRUE;
    // No device context of its own: what a handler sets in one is gone with that context.
    WNDCLASS wc = {};
    wc.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    wc.lpfnWndProc = ::DefWindowProc;
    wc.hInstance = AfxGetInstanceHandle();
    wc.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    wc.lpszClassName = kDefaultClass;
    if (!AfxRegisterClass(&wc))
        return FALSE;
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
        if (m_hWnd == nullptr)
            PostNcDestroy();
        return FALSE;
    }
    AfxHookWindowCreate(this);
    const HWND window = ::CreateWindowEx(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x,
                                         cs.y, cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    // Windows refused before the object was tied to anything: it still gets its last call.
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();
    return window != nullptr;
}

BOOL CWnd::DestroyWindow() {
    if (m_hWnd == nullptr)
        return FALSE;
    const HWND window = m_hWnd;
    const bool permanent = FromHandlePermanent(window) == this;
    const BOOL done = ::DestroyWindow(window);
    // The object may be gone by now. A window that is not subclassed sends it no last message.
    if (done && (!permanent || FromHandlePermanent(window) == this))
        Detach();
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
    if (!AfxRegisterClass(&wc))
        AfxThrowResourceException();
    return name;
}

BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass) {
    WNDCLASS known;
    if (::GetClassInfo(lpWndClass->hInstance, lpWndClass->lpszClassName, &known))
        return TRUE;
    return ::RegisterClass(lpWndClass) != 0;
}

// --- subclassing -------------------------------------------------------------------------------------------------

WNDPROC* CWnd::GetSuperWndProcAddr() {
    return &m_pfnSuper;
}

void CWnd::PreSubclassWindow() {}

BOOL CWnd::SubclassWindow(HWND hWnd) {
    if (!Attach(hWnd))
        return FALSE;
    PreSubclassWindow();
    const auto old =
        reinterpret_cast<WNDPROC>(::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    if (old != &AfxWndProc)
        *GetSuperWndProcAddr() = old;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent) {
    const HWND control = ::GetDlgItem(AfxHandleOf(pParent), static_cast<int>(nID));
    return control != nullptr && SubclassWindow(control);
}

HWND CWnd::UnsubclassWindow() {
    if (m_hWnd != nullptr) {
        WNDPROC* super = GetSuperWndProcAddr();
        if (*super != nullptr)
            ::SetWindowLongPtr(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(*super));
        *super = nullptr;
    }
    return Detach();
}

// --- the window procedure ----------------------------------------------------------------------------------------

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam) {
    CWnd* object = CWnd::FromHandlePermanent(hWnd);
    if (object == nullptr || object->m_hWnd != hWnd)
        return ::DefWindowProc(hWnd, nMsg, wParam, lParam);
    return AfxCallWndProc(object, hWnd, nMsg, wParam, lParam);
}

LRESULT AFXAPI AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam) {
    MSG message = {};
    message.hwnd = hWnd;
    message.message = nMsg;
    message.wParam = wParam;
    message.lParam = lParam;
    const MessageScope scope(AfxState(), message);
    // Windows' own frames lie between here and the caller: nothing may be thrown through them.
    try {
        return pWnd->WindowProc(nMsg, wParam, lParam);
    } catch (CException* e) {
        return AfxReportHandlerException(e, message);
    } catch (const std::bad_alloc&) {
        return ReportStandard(message, true);
    } catch (const std::exception&) {
        return ReportStandard(message, false);
    }
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result))
        return result;
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT nMsg, WPARAM wParam, LPARAM lParam) {
    const WNDPROC super = *GetSuperWndProcAddr();
    if (super != nullptr)
        return ::CallWindowProc(super, m_hWnd, nMsg, wParam, lParam);
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
    // Gives the window its own procedure back, unless somebody has subclassed it in between.
    if (::GetWindowLongPtr(window, GWLP_WNDPROC) == before && *GetSuperWndProcAddr() != nullptr)
        ::SetWindowLongPtr(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(*GetSuperWndProcAddr()));
    m_pfnSuper = nullptr;
    m_hWndOwner = nullptr;
    Detach();
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
        if (object != nullptr && object->PreTranslateMessage(pMsg))
            return TRUE;
        if (window == hWndStop)
            break;
    }
    return FALSE;
}
