// Refuses the project's DLLs one request for memory, or all from one on. For tests of what a lack of memory leaves.
// Layer 14: tests.
#pragma once

#include <windows.h>

// One at a time. Refused are requests of operator new, malloc and realloc in nrafx.dll and NRVectorView.dll; the test's
// own go on. An exception that is thrown takes its memory in the same way, and has a reserve when it is refused.
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
