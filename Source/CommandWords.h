// The table of commands: which tool a word makes, how the manager runs it, and what a host shows of it. A new command
// is one row here.
// Layer 10: manager.
#pragma once

#include "CommandOperation.h"

// What the manager does with the tool that a word makes.
enum class CommandRunning {
    Installed, // Becomes the running tool.
    AtOnce,    // Executed and freed; the running tool stays.
    // Compatibility 11: "rotatetext" is neither installed nor freed.
    AtOnceAndKept // Executed and neither installed nor freed: "rotatetext" stays allocated.
};

// In which of a host's two menus the word belongs: those that draw, or those that change the drawing or the view.
enum class CommandMenu { Draw, Edit };

// Flags for hosts.
inline constexpr unsigned kCommandGroup = 1;    // A line above it in the menu.
inline constexpr unsigned kCommandHarmless = 2; // Changes nothing that would have to be saved.
// Moves the objects themselves while it runs: only its right button, and only after the base point, puts them back.
inline constexpr unsigned kCommandRestores = 4;

// A row of the table. All texts are constants of the library.
struct CommandWord {
    LPCTSTR word;    // What CVectorView::DoCommand is given.
    LPCTSTR chinese; // What it does, in Chinese: the name of its step in a history.
    LPCTSTR english; // The same in English.
    // Makes the tool, which the caller owns; the four objects are borrowed.
    CCommandOperation* (*create)(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                 CGraphicDocument* document);
    CommandRunning running; // See CommandRunning.
    LPCTSTR caption;        // Menu text with its mnemonic and, after a tab, its key.
    LPCTSTR hint;           // What the user does while it runs; empty when nothing.
    UINT icon;              // Resource number in the library.
    CommandMenu menu;       // See CommandMenu.
    unsigned flags;         // Of kCommandGroup, kCommandHarmless and kCommandRestores.
};

// With case; null for an unknown word.
const CommandWord* FindCommandWord(LPCTSTR word);

// All rows, in the order of a menu; they are valid as long as the library is loaded.
NRVECTORVIEW_API const CommandWord* GetCommandWords(int& count);
