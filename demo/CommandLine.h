// The demo's command line: options with a value, "--lang zh" or "en" and "--scale PERCENT", and a file.
// Layer 13: demo.
#pragma once

#include <afxwin.h>

// The value of an option such as L"--lang"; empty where it is not given.
CString FindOption(const wchar_t* name);
// The first argument that is neither an option nor its value; empty without one.
CString FindFile();
