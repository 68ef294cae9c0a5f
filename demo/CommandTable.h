// The library's commands as the demo's menus, toolbar and status texts use them.
// Layer 13: demo.
#pragma once

#include <CommandWords.h>

extern const int CommandRowCount;
extern const CommandWord* const CommandRows;

// The row of a word, or -1.
int FindCommandRow(const wchar_t* word);
// The caption without mnemonic, dots and key.
CString PlainCaption(const CommandWord& row);
