#include "KxFoundation.h"

namespace {

KXERROR::Listener s_listener = nullptr;
void* s_context = nullptr;

} // namespace

namespace KXERROR {

void PrintInfo(CString text, int level) {
    CString line;
    line.Format(L"%d: ", level);
    line += text;
    line += L"\n";
    ::OutputDebugStringW(line);
    if (s_listener != nullptr) {
        s_listener(text, level, s_context);
    }
}

Listener SetListener(Listener listener, void* context, void** formerContext) {
    const Listener former = s_listener;
    if (formerContext != nullptr) {
        *formerContext = s_context;
    }
    s_listener = listener;
    s_context = context;
    return former;
}

} // namespace KXERROR
