// The export mark of the library's public classes, and the handle of the library's own module for its resources.
// Layer 3: base; included by every public header.
#pragma once

#include <afxwin.h>

// How a class or function of the DLL is declared.
#ifdef NRVECTORVIEW_BUILD
#define NRVECTORVIEW_API __declspec(dllexport)
#else
#define NRVECTORVIEW_API __declspec(dllimport) // Taken from the DLL.
#endif

// The module that holds the library's cursors, dialogs and menu; null before the library is attached.
NRVECTORVIEW_API HINSTANCE VectorViewModule();
