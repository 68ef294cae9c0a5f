// What a test can ask of the guarded build's allocator. Layer 16: tests.
#pragma once

// `isRefused` is asked before each block that a DLL allocates (not for the program's own); true refuses it. Null ends
// that. One for all modules of the process.
void SetGuardPagesRefusal(bool (*isRefused)());
