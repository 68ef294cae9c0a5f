// The table of command words. Layer: manager.

#include "CommandWords.h"

#include "OperationCreateLine.h"

#include <cwchar>

namespace {

// What a row names: a function that makes the tool with the usual four arguments.
#define NEW_TOOL(Class)                                                                                                \
    [](CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,                                                 \
       CGraphicDocument* document) -> CCommandOperation* { return new Class(wnd, graphic, tran, document); }

constexpr CommandWord kCommandWords[] = {
    {L"line", NEW_TOOL(COperationCreateLine), CommandRunning::Installed},
};

#undef NEW_TOOL

} // namespace

const CommandWord* FindCommandWord(LPCTSTR word) {
    for (const CommandWord& row : kCommandWords) {
        if (std::wcscmp(row.word, word) == 0) {
            return &row;
        }
    }
    return nullptr;
}
