#include "CommandTable.h"

#include "DemoIds.h"
#include "HostText.h"

namespace {

int CountOfRows() {
    int count = 0;
    GetCommandWords(count);
    return count;
}

const CommandWord* FirstRow() {
    int count = 0;
    return GetCommandWords(count);
}

// The number of a command's text, whose first line is its word; 0 where there is none.
UINT FindText(int row) {
    for (UINT id = ID_HOST_COMMAND_FIRST; id <= ID_HOST_COMMAND_LAST; ++id) {
        if (LoadTextLine(id, 0) == CommandRows[row].word) {
            return id;
        }
    }
    return 0;
}

} // namespace

const int CommandRowCount = CountOfRows();
const CommandWord* const CommandRows = FirstRow();
const int UndoImage = CommandRowCount + 1;
const int RedoImage = CommandRowCount + 2;

int FindCommandRow(const wchar_t* word) {
    for (int i = 0; i < CommandRowCount; ++i) {
        if (wcscmp(CommandRows[i].word, word) == 0) {
            return i;
        }
    }
    return -1;
}

CString GetCaption(int row) {
    const UINT text = FindText(row);
    return text != 0 ? LoadTextLine(text, 1) : CString(CommandRows[row].caption);
}

CString GetPrompt(int row, int clicks) {
    const UINT text = FindText(row);
    // The prompt of the last step is also that of all further clicks.
    for (int step = text != 0 ? clicks : -1; step >= 0; --step) {
        const CString prompt = LoadTextLine(text, 2 + step);
        if (!prompt.IsEmpty()) {
            return prompt;
        }
    }
    return CommandRows[row].hint;
}

CString PlainCaption(int row) {
    return PlainCaption(GetCaption(row));
}

CString PlainCaption(CString caption) {
    const int key = caption.Find(L'\t');
    caption = key >= 0 ? caption.Left(key) : caption;
    const int mnemonic = caption.Find(L"(&");
    caption = mnemonic >= 0 ? caption.Left(mnemonic).TrimRight() : caption;
    caption.Remove(L'&');
    caption.Remove(L'…');
    return caption;
}
