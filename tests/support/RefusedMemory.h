// Refuses the project's DLLs one request for memory, or all from one on. For tests of what a lack of memory leaves.
// Layer 15: tests.
#pragma once

#include <windows.h>

// One at a time, and in the guarded build alone: its allocator is asked. Refused are requests of operator new in all
// modules; the memory of a thrown exception is not among them.
class RefusedMemory {
public:
    enum Extent { One, AllFromThere };
    // The nth request, counted from 1.
    RefusedMemory(LONG nth, Extent extent);
    ~RefusedMemory();
    RefusedMemory(const RefusedMemory&) = delete;
    RefusedMemory& operator=(const RefusedMemory&) = delete;

    // How many requests have been refused since.
    LONG Refused() const;
};
