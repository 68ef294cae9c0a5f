// A small extension module for afx_object_test.cpp: one streamable class, and two functions that link it in and out.
// Layer 16: tests.
#include <afxwin.h>
#include <afxdllx.h>

namespace {

AFX_EXTENSION_MODULE module = {};
CDynLinkLibrary* library = nullptr;

class CExtensionThing : public CObject {
    DECLARE_SERIAL(CExtensionThing)
};
IMPLEMENT_SERIAL(CExtensionThing, CObject, 1)

} // namespace

extern "C" __declspec(dllexport) void LinkExtension(HMODULE self) {
    AfxInitExtensionModule(module, self);
    library = new CDynLinkLibrary(module);
}

extern "C" __declspec(dllexport) void UnlinkExtension() {
    delete library;
    AfxTermExtensionModule(module);
}
