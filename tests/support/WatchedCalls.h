// Counts what the project's DLLs take from the system, and makes the system refuse some of it. The DLLs stay as they
// ship: their import tables are changed while it exists.
// Layer 16: tests.
#pragma once

#include "ImportPatch.h"

// One at a time. Only calls of the thread that made it are counted and refused: the system starts threads of its own in
// the process at any time, and each DLL takes memory for a thread's exceptions then. In the guarded build, whose DLLs
// have an operator new of their own, a refusal of memory is one of that operator, and blocks are not counted.
class WatchedCalls {
public:
    enum Kind {
        Memory,  // malloc, calloc, realloc: operator new calls the first.
        Drawing, // Pens, brushes, fonts, regions, bitmaps and device contexts.
        Files,   // Opening, writing, flushing and closing a file, names of new files, renaming and replacing.
    };
    enum Extent { One, AllFromThere };

    WatchedCalls();
    ~WatchedCalls();
    WatchedCalls(const WatchedCalls&) = delete;
    WatchedCalls& operator=(const WatchedCalls&) = delete;

    // Refuses the nth call of the kind from now on, counted from 1, or all from there; 0 refuses none. A refused call
    // returns what the system returns: null or zero, and for files the error of a full disk, or of refused access where
    // a file is opened.
    void Refuse(Kind kind, LONG nth, Extent extent = One);
    void RefuseNone() { Refuse(Memory, 0); }
    // Since the last call of Refuse: the calls of its kind, and how many of them were refused.
    LONG Seen() const;
    LONG Refused() const;

    // Blocks that were taken and not given back since this object was made. Negative where older ones were given back.
    LONG Blocks() const;
    LONG DrawingObjects() const;

private:
    ImportPatch m_all;
    ImportPatch m_libraries; // Patches after the other, and so is restored first.
};
