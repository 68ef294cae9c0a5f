// The interface between the two halves of nrafx.dll; no client includes this. The window-less half never calls
// up: the window half installs its module state here when the DLL starts. Layer 1: afx.
#pragma once

#include "afxobject.h"

struct AfxWindowHooks {
    // The module that holds a string resource, according to the current module state. Default: the program.
    HINSTANCE (*findStringResource)(UINT nID);
    // Shows a text and returns the button. Default: MessageBox without a parent.
    int (*messageBox)(LPCTSTR lpszText, UINT nType);
};
extern AfxWindowHooks afxWindowHooks;

// Classes of the program and of nrafx.dll are found by name at once. Those of any other module are from
// AfxAttachModuleClasses (called for each CDynLinkLibrary) until as many calls of AfxDetachModuleClasses.
void AfxAttachModuleClasses(HMODULE hModule);
void AfxDetachModuleClasses(HMODULE hModule);
