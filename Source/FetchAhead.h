// A hint to the processor for walks over a large drawing.
// Layer 6: document.
#pragma once

#include "Document.h"

// Asks for the memory of the object that the walk reaches some objects after `index`. Objects are scattered over the
// heap, and a walk waits longer for their memory than it computes. This reads nothing and can't fail.
inline void FetchAhead(const CDrawableArray& list, INT_PTR index) {
    constexpr INT_PTR kDistance = 8; // In objects: what is computed for so many takes as long as one access.
    constexpr int kLine = 64;        // Bytes.
    constexpr int kLines = 4;        // Of an object, in which every kind has its coordinates.
    if (index + kDistance < list.GetSize()) {
        const auto* object = reinterpret_cast<const char*>(list.GetData()[index + kDistance]);
        for (int line = 0; line < kLines; ++line) {
            __builtin_prefetch(object + kLine * line);
        }
    }
}
