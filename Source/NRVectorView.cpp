// The library as a module: what happens when it is attached to a process and detached again.
// Layer 11: views and dialogs.

#include "GraphInfo.h"
#include "VecotrVeiwParmOpr.h"
#include "VectorViewApi.h"

#include <afxext.h>

#include <exception>

namespace {

AFX_EXTENSION_MODULE g_Module = {};

} // namespace

HINSTANCE VectorViewModule() {
    return g_Module.hModule;
}

extern "C" int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH || reason == DLL_THREAD_ATTACH) {
        // The compiler's runtime allocates the memory for a thread's exceptions at the first one, and faults where that
        // fails. So it is allocated now, and a lack of memory can be thrown later. Each module has a runtime of its
        // own.
        [[maybe_unused]] volatile const int none = std::uncaught_exceptions();
    }
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
