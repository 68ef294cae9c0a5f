// The library's commands as the demo's menus, toolbar and status texts use them.
// Layer 13: demo.
#pragma once

#include <CommandWords.h>

extern const int CommandRowCount;
extern const CommandWord* const CommandRows;
// Numbers of pictures in the list of menus and toolbar, after those of the rows.
extern const int UndoImage;
extern const int RedoImage;

// The row of a word, or -1.
int FindCommandRow(const wchar_t* word);
// The row's caption in the language of the user; for a command that the demo has no text for, the library's own.
CString GetCaption(int row);
// What the user does next while the command runs, after that many left clicks, with the keys that have an effect then.
CString GetPrompt(int row, int clicks);
// A caption without mnemonic, dots and key.
CString PlainCaption(int row);
CString PlainCaption(CString caption);
