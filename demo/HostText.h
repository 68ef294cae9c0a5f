// The demo's texts in the language of the user.
// Layer 13: demo.
#pragma once

#include <afxwin.h>

// A string resource in Chinese or English: as the command line says ("--lang zh" or "--lang en"), else Chinese where
// that is the user's interface language, and English elsewhere. It stays valid as long as the program; empty for a
// number without one.
const wchar_t* LoadText(UINT id);
// One line of that text.
CString LoadTextLine(UINT id, int line);
bool IsChinese();
// Sets the language in which the layer loads dialogs and its own messages for this thread. Called once, at the start.
void SetThreadLanguage();
