// Makes faults of memory visible that the layout of the heap hides in the release build.
// Layer 16: tests.
#pragma once

#include "ImportPatch.h"

// While it exists, memory that the project's modules and the test program take from malloc is filled with 0xCD, and
// what they free is filled with 0xDD and kept for a while: code that reads it finds no plausible pointer, and code that
// has written to it ends the test program with a line that says so. Without effect in the guarded build, whose own
// allocator checks more.
class FilledHeap {
public:
    FilledHeap();
    ~FilledHeap();
    FilledHeap(const FilledHeap&) = delete;
    FilledHeap& operator=(const FilledHeap&) = delete;

private:
    ImportPatch m_patch;
};
