// The table of command words: which tool a word makes, and how the manager runs it. A new command is one row here.
// Layer: manager.
#pragma once

#include "CommandOperation.h"

enum class CommandRunning {
    Installed,    // Becomes the running tool.
    AtOnce,       // Executed and freed; the running tool stays.
    AtOnceAndKept // Executed and neither installed nor freed: "rotatetext" stays allocated.
};

struct CommandWord {
    LPCTSTR word;
    CCommandOperation* (*create)(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                 CGraphicDocument* document);
    CommandRunning running;
};

// With case; null for an unknown word.
const CommandWord* FindCommandWord(LPCTSTR word);
