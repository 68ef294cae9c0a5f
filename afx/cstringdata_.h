// The memory of a CString: the record before its characters, and the empty text that all empty ones share.
// Classes: CStringData.
// Layer 1: afx.
#pragma once

#include "afxapi.h"

// Placed right before the characters. nRefs is -1 for the one shared empty text, which is never written to.
struct CStringData {
    LONG nRefs;
    int nDataLength;  // characters, without the ending zero
    int nAllocLength; // capacity in characters, without the ending zero

    // The shared empty text is not counted: it is in read-only memory and all threads use it.
    void AddRef() noexcept {
        if (nRefs >= 0) {
            __atomic_fetch_add(&nRefs, 1, __ATOMIC_RELAXED);
        }
    }
    // Frees the memory when that was the last reference.
    void Release() noexcept {
        if (nRefs >= 0 && __atomic_fetch_sub(&nRefs, 1, __ATOMIC_ACQ_REL) <= 1) {
            AfxFreeBlock(this);
        }
    }
};

struct AFX_NIL_STRING {
    CStringData head;
    wchar_t nul[2];
};
extern NRAFX_API const AFX_NIL_STRING afxNilString;
