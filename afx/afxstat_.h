// Module state: which application, which instance and which resources the running code belongs to, and the list of
// extension modules. Included by afxwin.h.
// Classes: CDynLinkLibrary.
// Layer 1: afx.
#pragma once

#include "afx.h"

class CWinApp;
class CWinThread;
class CWnd;

// The description that a module (the application, or a DLL with a state of its own) gives to the layer.
struct AFX_MODULE_STATE {
    CWinApp* m_pCurrentWinApp = nullptr;
    HINSTANCE m_hCurrentInstanceHandle = nullptr; // null: the program's own
    HINSTANCE m_hCurrentResourceHandle = nullptr; // null: the instance handle
    LPCTSTR m_lpszCurrentAppName = nullptr;       // null: the program's file name
};

NRAFX_API AFX_MODULE_STATE* AFXAPI AfxGetAppModuleState();
NRAFX_API AFX_MODULE_STATE* AFXAPI AfxGetModuleState();
// Makes the state current for this thread and gives back the one before.
NRAFX_API AFX_MODULE_STATE* AFXAPI AfxSetModuleState(AFX_MODULE_STATE* pNewState);
// Gives a fresh state the instance that holds the address; used by AfxGetStaticModuleState.
NRAFX_API AFX_MODULE_STATE* AFXAPI AfxInitStaticModuleState(AFX_MODULE_STATE* pState, const void* pAddress);

// The state of the module that the call is compiled into.
inline AFX_MODULE_STATE* AfxGetStaticModuleState() {
    static AFX_MODULE_STATE state;
    static AFX_MODULE_STATE* const p = AfxInitStaticModuleState(&state, &state);
    return p;
}

// Makes a module state current for the rest of the block.
class AFX_MAINTAIN_STATE2 {
public:
    explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* pNewState) : m_pPrevModuleState(AfxSetModuleState(pNewState)) {}
    ~AFX_MAINTAIN_STATE2() { AfxSetModuleState(m_pPrevModuleState); }
    AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
    AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

protected:
    AFX_MODULE_STATE* m_pPrevModuleState;
};
#define AFX_MANAGE_STATE(p) AFX_MAINTAIN_STATE2 _ctlState(p);

// --- the current module, application and thread -----------------------------------------------------------------
NRAFX_API CWinThread* AFXAPI AfxGetThread();
NRAFX_API CWinApp* AFXAPI AfxGetApp();
NRAFX_API CWnd* AFXAPI AfxGetMainWnd();
NRAFX_API LPCTSTR AFXAPI AfxGetAppName();
NRAFX_API HINSTANCE AFXAPI AfxGetInstanceHandle();
NRAFX_API HINSTANCE AFXAPI AfxGetResourceHandle();
NRAFX_API void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource);

// The first module that holds the resource: the current resource handle, then the extension modules with the newest
// first, then the layer itself. The current resource handle when none has it.
NRAFX_API HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType);
// Same for the block of sixteen strings that the number belongs to; null when no module has it.
NRAFX_API HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID);
// Copies the string into the buffer, always ended by a zero, and gives its length; 0 when there is none.
NRAFX_API int AFXAPI AfxLoadString(UINT nID, LPTSTR lpszBuf, UINT nMaxBuf = 256);

// --- extension modules -------------------------------------------------------------------------------------------
// A DLL that extends the layer keeps one of these as a static and passes it to the calls below.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
};

// Called from the DLL's entry point on process attach. FALSE when the handle is null.
NRAFX_API BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule);
// Called on process detach: frees the module's CDynLinkLibrary objects.
NRAFX_API void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll = FALSE);

// Makes an extension module's resources, and classes by name, known to the application. Made with new on attach;
// AfxTermExtensionModule deletes it.
class NRAFX_API CDynLinkLibrary {
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem = FALSE);
    CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource);
    virtual ~CDynLinkLibrary();
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    HMODULE m_hModule;
    HMODULE m_hResource;
    BOOL m_bSystem;
    CDynLinkLibrary* m_pNextDLL;

private:
    void Link();
};
