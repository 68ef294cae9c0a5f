// The library as a module: what happens when it is attached to a process and detached again.
// Layer 11: views and dialogs.

#include "GraphInfo.h"
#include "VecotrVeiwParmOpr.h"
#include "VectorViewApi.h"

#include <afxext.h>

namespace {

AFX_EXTENSION_MODULE g_Module = {};

} // namespace

HINSTANCE VectorViewModule() {
    return g_Module.hModule;
}

extern "C" int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        if (!AfxInitExtensionModule(g_Module, instance)) {
            return 0;
        }
        // From here on the archive finds the library's classes by name.
        new CDynLinkLibrary(g_Module);
    } else if (reason == DLL_PROCESS_DETACH) {
        CVecotrVeiwParmOpr::Instance().ReleaseVector();
        CGraphColorInfo::Release();
        AfxTermExtensionModule(g_Module);
    }
    return 1;
}
