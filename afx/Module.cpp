// Module state, resource search, extension modules, the state of each thread, the DLL's entry point.
// Layer 1: afx.
#include "ThreadState.h"
#include "AfxInternal.h"

#include <algorithm>
#include <exception>

namespace {

HINSTANCE g_hLayer = nullptr;
DWORD g_tlsIndex = TLS_OUT_OF_INDEXES;
AFX_MODULE_STATE g_appState;
// Libraries are loaded and unloaded on any thread, and any thread looks for resources in them.
SRWLOCK g_librariesLock = SRWLOCK_INIT;
CDynLinkLibrary* g_libraries = nullptr; // newest first
TCHAR g_programName[MAX_PATH];

// The first module that holds something: the current resource handle, the extension modules, the layer itself.
template <class Holds>
HINSTANCE FindModule(Holds holds) {
    const HINSTANCE current = AfxGetResourceHandle();
    if (holds(current)) {
        return current;
    }
    HINSTANCE found = nullptr;
    ::AcquireSRWLockShared(&g_librariesLock);
    for (const CDynLinkLibrary* each = g_libraries; each != nullptr && found == nullptr; each = each->m_pNextDLL) {
        if (each->m_hResource != nullptr && holds(each->m_hResource)) {
            found = each->m_hResource;
        }
    }
    ::ReleaseSRWLockShared(&g_librariesLock);
    return found != nullptr || !holds(g_hLayer) ? found : g_hLayer;
}

HINSTANCE StringResourceForHook(UINT nID) {
    return AfxFindStringResourceHandle(nID);
}

int MessageBoxForHook(LPCTSTR lpszText, UINT nType) {
    return AfxMessageBox(lpszText, nType);
}

} // namespace

// --- thread state ------------------------------------------------------------------------------------------------

AfxThreadState* AfxStateIfAny() {
    return g_tlsIndex == TLS_OUT_OF_INDEXES ? nullptr : static_cast<AfxThreadState*>(::TlsGetValue(g_tlsIndex));
}

AfxThreadState& AfxState() {
    auto* state = static_cast<AfxThreadState*>(::TlsGetValue(g_tlsIndex));
    if (state == nullptr) {
        if (g_tlsIndex == TLS_OUT_OF_INDEXES) {
            g_tlsIndex = ::TlsAlloc();
        }
        state = new AfxThreadState;
        ::TlsSetValue(g_tlsIndex, state);
    }
    return *state;
}

void AfxDeleteTemporaries() {
    AfxThreadState& state = AfxState();
    if (state.depth != 0) {
        return;
    }
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
        if (module == ::GetModuleHandle(nullptr)) {
            return &g_appState;
        }
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
    if (name == nullptr) {
        name = g_appState.m_lpszCurrentAppName;
    }
    if (name != nullptr) {
        return name;
    }
    if (g_programName[0] == 0) {
        TCHAR path[MAX_PATH] = {};
        ::GetModuleFileName(nullptr, path, MAX_PATH - 1);
        CString title(path);
        title = title.Mid(title.ReverseFind(_T('\\')) + 1);
        if (title.ReverseFind(_T('.')) > 0) {
            title = title.Left(title.ReverseFind(_T('.')));
        }
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

HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType) {
    const HINSTANCE found =
        FindModule([=](HMODULE module) { return ::FindResource(module, lpszName, lpszType) != nullptr; });
    return found != nullptr ? found : AfxGetResourceHandle();
}

HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID) {
    // A block of sixteen may be there without this string: the module must hold the string itself.
    return FindModule([nID](HMODULE module) {
        const wchar_t* text = nullptr;
        return ::LoadStringW(module, nID, reinterpret_cast<LPWSTR>(&text), 0) > 0;
    });
}

int AFXAPI AfxLoadString(UINT nID, LPTSTR lpszBuf, UINT nMaxBuf) {
    if (lpszBuf == nullptr || nMaxBuf == 0) {
        return 0;
    }
    lpszBuf[0] = 0;
    const HINSTANCE module = AfxFindStringResourceHandle(nID);
    return module != nullptr ? ::LoadString(module, nID, lpszBuf, static_cast<int>(nMaxBuf)) : 0;
}

// --- extension modules -------------------------------------------------------------------------------------------

BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule) {
    if (hModule == nullptr) {
        return FALSE;
    }
    if (state.bInitialized) {
        return TRUE;
    }
    state.bInitialized = TRUE;
    state.hModule = hModule;
    state.hResource = hModule;
    return TRUE;
}

void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll) {
    if (!state.bInitialized) {
        return;
    }
    // Each destructor takes its library out of the list.
    const auto next = [&] {
        ::AcquireSRWLockShared(&g_librariesLock);
        CDynLinkLibrary* library = g_libraries;
        while (library != nullptr && !bAll && library->m_hModule != state.hModule) {
            library = library->m_pNextDLL;
        }
        ::ReleaseSRWLockShared(&g_librariesLock);
        return library;
    };
    while (CDynLinkLibrary* library = next()) {
        delete library;
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
    ::AcquireSRWLockExclusive(&g_librariesLock);
    for (CDynLinkLibrary** link = &g_libraries; *link != nullptr; link = &(*link)->m_pNextDLL) {
        if (*link == this) {
            *link = m_pNextDLL;
            break;
        }
    }
    ::ReleaseSRWLockExclusive(&g_librariesLock);
    AfxDetachModuleClasses(m_hModule);
}

void CDynLinkLibrary::Link() {
    AfxAttachModuleClasses(m_hModule);
    ::AcquireSRWLockExclusive(&g_librariesLock);
    m_pNextDLL = g_libraries;
    g_libraries = this;
    ::ReleaseSRWLockExclusive(&g_librariesLock);
}

// --- the DLL's entry point ---------------------------------------------------------------------------------------

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD reason, LPVOID reserved);

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_ATTACH || reason == DLL_THREAD_ATTACH) {
        // The compiler's runtime allocates the memory for a thread's exceptions at the first one, and faults where that
        // fails. So it is allocated now, and a lack of memory can be thrown later.
        [[maybe_unused]] volatile const int none = std::uncaught_exceptions();
    }
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        g_hLayer = hInstance;
        if (g_tlsIndex == TLS_OUT_OF_INDEXES) {
            g_tlsIndex = ::TlsAlloc();
        }
        afxWindowHooks.findStringResource = StringResourceForHook;
        afxWindowHooks.messageBox = MessageBoxForHook;
        return g_tlsIndex != TLS_OUT_OF_INDEXES;
    case DLL_THREAD_DETACH:
        if (AfxThreadState* state = AfxStateIfAny()) {
            state->depth = 0;
            AfxDeleteTemporaries();
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
