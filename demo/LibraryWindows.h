// The library's own texts in the demo's language: its questions, its text dialog, its property window, its menu.
// Layer 13: demo.
#pragma once

#include <afxwin.h>

// The demo's text for one of the library's. Any other text is given back as it is.
CString TranslateLibraryText(const CString& text);
// From now on the dialogs that the library makes on this thread are translated when they become active, which is before
// they are painted. Does nothing where the demo speaks the library's language.
void TranslateLibraryWindows();
// The items of a menu of the library that is about to be shown.
void TranslateLibraryMenu(CMenu& menu);
