// The message sink of the helper libraries.
// Layer 2: kx (uses afx).
#pragma once

#include "KXBaseOpr.h"

namespace KXERROR {

// Called for each message, on the thread that reports it. context is what SetListener was given.
typedef void (*Listener)(const CString& text, int level, void* context);

// Takes a message for the maintainers of the host, not for the user: it is written to the debugger's output as
// "level: text" and then given to the listener. The level has no effect of its own.
NRKX_API void PrintInfo(CString text, int level);

// Installs the one listener (null for none) and returns the one before, whose context is stored in *formerContext
// unless that is null.
NRKX_API Listener SetListener(Listener listener, void* context, void** formerContext = nullptr);

} // namespace KXERROR
