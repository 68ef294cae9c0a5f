// Module state, resource search, extension modules, the state of each thread, the DLL's entry point.
// Layer 1: afx.
#include "HandleMap.h"
#include "AfxInternal.h"

#include <atomic>

#include <algorithm>

namespace {

HINSTANCE g_hLayer = nullptr;
DWORD g_tlsIndex = TLS_OUT_OF_INDEXES;
AFX_MODULE_STATE g_appState;
CDynLinkLibrary* g_libraries = nullptr; // newest first
TCHAR g_programName[MAX_PATH];

bool HasResource(HMODULE module, LPCTSTR name, LPCTSTR type) {
    return ::FindResource(module, name, type) != nullptr;
}

HINSTANCE StringResourceForHook(UINT nID) {
    return AfxFindStringResourceHandle(nID);
}

int MessageBoxForHook(LPCTSTR lpszText, UINT nType) {
    return AfxMessageBox(lpszText, nType);
}

} // namespace

// --- thread state ------------------------------------------------------------------------------------------------

namespace {

// Each pen of a paint asks for the state four times, and nearly always on the first thread that asked at all: that one
// is known by its environment block. Written once, state before block, until that thread ends.
std::atomic<void*> g_firstBlock{nullptr};
AfxThreadState* g_firstState = nullptr;

void* OwnBlock() {
    return ::NtCurrentTeb();
}

void ForgetState(const AfxThreadState* state) {
    if (g_firstState == state && g_firstBlock.load(std::memory_order_relaxed) == OwnBlock())
        g_firstBlock.store(nullptr, std::memory_order_relaxed);
}

} // namespace

AfxThreadState* AfxStateIfAny() {
    if (g_firstBlock.load(std::memory_order_acquire) == OwnBlock())
        return g_firstState;
    return g_tlsIndex == TLS_OUT_OF_INDEXES ? nullptr : static_cast<AfxThreadState*>(::TlsGetValue(g_tlsIndex));
}

AfxThreadState& AfxState() {
    if (g_firstBlock.load(std::memory_order_acquire) == OwnBlock())
        return *g_firstState;
    auto* state = static_cast<AfxThreadState*>(::TlsGetValue(g_tlsIndex));
    if (state == nullptr) {
        if (g_tlsIndex == TLS_OUT_OF_INDEXES)
            g_tlsIndex = ::TlsAlloc();
        state = new AfxThreadState;
        ::TlsSetValue(g_tlsIndex, state);
        static std::atomic_flag taken = ATOMIC_FLAG_INIT;
        if (!taken.test_and_set()) {
            g_firstState = state;
            g_firstBlock.store(OwnBlock(), std::memory_order_release);
        }
    }
    return *state;
}

void AfxDeleteTemporaries() {
    AfxThreadState& state = AfxState();
    if (state.depth != 0)
        return;
    CGdiObject::DeleteTempMap();
    CDC::DeleteTempMap();
    CMenu::DeleteTempMap();
    CWnd::DeleteTempMap();
}

HINSTANCE AfxLayerInstance() {
    return g_hLayer;
}

// --- module state ------------------------------------------------------------------------------------------------

AFX_MODULE_STATE* AFXAPI AfxGetAppModuleState() {
    return &g_appState;
}

AFX_MODULE_STATE* AFXAPI AfxGetModuleState() {
    AFX_MODULE_STATE* state = AfxState().moduleState;
    return state != nullptr ? state : &g_appState;
}

AFX_MODULE_STATE* AFXAPI AfxSetModuleState(AFX_MODULE_STATE* pNewState) {
    AFX_MODULE_STATE* old = AfxGetModuleState();
    AfxState().moduleState = pNewState;
    return old;
}

AFX_MODULE_STATE* AFXAPI AfxInitStaticModuleState(AFX_MODULE_STATE* pState, const void* pAddress) {
    HMODULE module = nullptr;
    if (::GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<LPCTSTR>(pAddress), &module)) {
        // Code of the program itself shares the application's state.
        if (module == ::GetModuleHandle(nullptr))
            return &g_appState;
        pState->m_hCurrentInstanceHandle = module;
        pState->m_hCurrentResourceHandle = module;
    }
    return pState;
}

CWinApp* AFXAPI AfxGetApp() {
    CWinApp* app = AfxGetModuleState()->m_pCurrentWinApp;
    return app != nullptr ? app : g_appState.m_pCurrentWinApp;
}

CWinThread* AFXAPI AfxGetThread() {
    CWinThread* thread = AfxState().thread;
    return thread != nullptr ? thread : AfxGetApp();
}

CWnd* AFXAPI AfxGetMainWnd() {
    CWinThread* thread = AfxGetThread();
    return thread != nullptr ? thread->GetMainWnd() : nullptr;
}

LPCTSTR AFXAPI AfxGetAppName() {
    LPCTSTR name = AfxGetModuleState()->m_lpszCurrentAppName;
    if (name == nullptr)
        name = g_appState.m_lpszCurrentAppName;
    if (name != nullptr)
        return name;
    if (g_programName[0] == 0) {
        TCHAR path[MAX_PATH] = {};
        ::GetModuleFileName(nullptr, path, MAX_PATH - 1);
        CString title(path);
        title = title.Mid(title.ReverseFind(_T('\\')) + 1);
        if (title.ReverseFind(_T('.')) > 0)
            title = title.Left(title.ReverseFind(_T('.')));
        ::lstrcpyn(g_programName, title, MAX_PATH);
    }
    return g_programName;
}

HINSTANCE AFXAPI AfxGetInstanceHandle() {
    HINSTANCE instance = AfxGetModuleState()->m_hCurrentInstanceHandle;
    return instance != nullptr ? instance : ::GetModuleHandle(nullptr);
}

HINSTANCE AFXAPI AfxGetResourceHandle() {
    HINSTANCE instance = AfxGetModuleState()->m_hCurrentResourceHandle;
    return instance != nullptr ? instance : AfxGetInstanceHandle();
}

void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource) {
    AfxGetModuleState()->m_hCurrentResourceHandle = hInstResource;
}

// --- resources ---------------------------------------------------------------------------------------------------

static HINSTANCE FindResourceModule(LPCTSTR lpszName, LPCTSTR lpszType) {
    const HINSTANCE current = AfxGetResourceHandle();
    if (HasResource(current, lpszName, lpszType))
        return current;
    for (const CDynLinkLibrary* library = g_libraries; library != nullptr; library = library->m_pNextDLL)
        if (library->m_hResource != nullptr && HasResource(library->m_hResource, lpszName, lpszType))
            return library->m_hResource;
    if (HasResource(g_hLayer, lpszName, lpszType))
        return g_hLayer;
    return nullptr;
}

HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType) {
    const HINSTANCE found = FindResourceModule(lpszName, lpszType);
    return found != nullptr ? found : AfxGetResourceHandle();
}

HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID) {
    // A block of sixteen may be there without this string: the module must hold the string itself.
    auto holds = [nID](HMODULE module) {
        const wchar_t* text = nullptr;
        return ::LoadStringW(module, nID, reinterpret_cast<LPWSTR>(&text), 0) > 0;
    };
    if (holds(AfxGetResourceHandle()))
        return AfxGetResourceHandle();
    for (const CDynLinkLibrary* library = g_libraries; library != nullptr; library = library->m_pNextDLL)
        if (library->m_hResource != nullptr && holds(library->m_hResource))
            return library->m_hResource;
    return holds(g_hLayer) ? g_hLayer : nullptr;
}

int AFXAPI AfxLoadString(UINT nID, LPTSTR lpszBuf, UINT nMaxBuf) {
    if (lpszBuf == nullptr || nMaxBuf == 0)
        return 0;
    lpszBuf[0] = 0;
    const HINSTANCE module = AfxFindStringResourceHandle(nID);
    return module != nullptr ? ::LoadString(module, nID, lpszBuf, static_cast<int>(nMaxBuf)) : 0;
}

// --- extension modules -------------------------------------------------------------------------------------------

BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule) {
    if (hModule == nullptr)
        return FALSE;
    if (state.bInitialized)
        return TRUE;
    state.bInitialized = TRUE;
    state.hModule = hModule;
    state.hResource = hModule;
    return TRUE;
}

void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll) {
    if (!state.bInitialized)
        return;
    for (CDynLinkLibrary* library = g_libraries; library != nullptr;) {
        CDynLinkLibrary* next = library->m_pNextDLL;
        if (bAll || library->m_hModule == state.hModule)
            delete library;
        library = next;
    }
    state.bInitialized = FALSE;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem)
    : m_hModule(state.hModule), m_hResource(state.hResource), m_bSystem(bSystem), m_pNextDLL(nullptr) {
    Link();
}

CDynLinkLibrary::CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource)
    : m_hModule(hModule), m_hResource(hResource), m_bSystem(FALSE), m_pNextDLL(nullptr) {
    Link();
}

CDynLinkLibrary::~CDynLinkLibrary() {
    for (CDynLinkLibrary** link = &g_libraries; *link != nullptr; link = &(*link)->m_pNextDLL) {
        if (*link == this) {
            *link = m_pNextDLL;
            break;
        }
    }
    AfxDetachModuleClasses(m_hModule);
}

void CDynLinkLibrary::Link() {
    m_pNextDLL = g_libraries;
    g_libraries = this;
    AfxAttachModuleClasses(m_hModule);
}

// --- the DLL's entry point ---------------------------------------------------------------------------------------

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD reason, LPVOID reserved);

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD reason, LPVOID reserved) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        g_hLayer = hInstance;
        if (g_tlsIndex == TLS_OUT_OF_INDEXES)
            g_tlsIndex = ::TlsAlloc();
        afxWindowHooks.findStringResource = StringResourceForHook;
        afxWindowHooks.messageBox = MessageBoxForHook;
        return g_tlsIndex != TLS_OUT_OF_INDEXES;
    case DLL_THREAD_DETACH:
        if (AfxThreadState* state = AfxStateIfAny()) {
            state->depth = 0;
            AfxDeleteTemporaries();
            ForgetState(state);
            ::TlsSetValue(g_tlsIndex, nullptr);
            delete state;
        }
        return TRUE;
    case DLL_PROCESS_DETACH:
        // At the end of the process the state stays: destructors of static objects still ask for it.
        if (reserved == nullptr && g_tlsIndex != TLS_OUT_OF_INDEXES) {
            if (AfxThreadState* state = AfxStateIfAny()) {
                state->depth = 0;
                AfxDeleteTemporaries();
                ForgetState(state);
                delete state;
            }
            ::TlsFree(g_tlsIndex);
            g_tlsIndex = TLS_OUT_OF_INDEXES;
        }
        return TRUE;
    default:
        return TRUE;
    }
}
