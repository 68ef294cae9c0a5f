#include "CommandTable.h"

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

} // namespace

const int CommandRowCount = CountOfRows();
const CommandWord* const CommandRows = FirstRow();

int FindCommandRow(const wchar_t* word) {
    for (int i = 0; i < CommandRowCount; ++i) {
        if (wcscmp(CommandRows[i].word, word) == 0) {
            return i;
        }
    }
    return -1;
}

CString PlainCaption(const CommandWord& row) {
    const CString text = row.caption;
    return text.Left(text.Find(L"(&"));
}
