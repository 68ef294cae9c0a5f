// The one table from which menus, toolbar and status texts of the demo's commands are made.
// Layer: demo.
#pragma once

#include <afxwin.h>

enum class CommandMenu { Draw, Edit };

// Flags of a row.
const unsigned CommandGroup = 1;    // a line above it in the menu
const unsigned CommandHarmless = 2; // running it changes nothing that would have to be saved
const unsigned CommandAtOnce = 4;   // acts at once and leaves nothing running
// Moves the objects themselves while it runs: only its right button, and only after the base point, puts them back.
const unsigned CommandRestores = 8;

// One command of the engine as the host offers it.
struct CommandRow {
    const wchar_t* word;    // what CVectorView::DoCommand is given
    const wchar_t* caption; // menu text with its mnemonic and, behind a tab, its key
    const wchar_t* hint;    // what to do while it runs; shown in the status bar
    UINT icon;              // resource of the library
    CommandMenu menu;
    unsigned flags;
};

extern const CommandRow CommandRows[];
extern const int CommandRowCount;

// The row of a word, or -1.
int FindCommandRow(const wchar_t* word);
// The caption without mnemonic, dots and key.
CString PlainCaption(const CommandRow& row);
