// What a test can ask of the guarded build's allocator. Layer 16: tests.
#pragma once

// Asked before each block that a DLL takes (not for the program's own); true refuses it. Null ends it. One for all
// modules of the process.
void SetGuardPagesRefusal(bool (*isRefused)());
