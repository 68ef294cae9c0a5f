// CNrvIds: the ids by which the C interface names the objects of one drawing.
// Layer 12: capi.
#pragma once

#include "nrview.h"

#include <KxAlive.h>

#include <unordered_map>

class CDrawable;

// An object gets an id when a host first sees it, and keeps it until it is freed. No id is used twice in a process, so
// that one of another drawing, or of a freed object whose memory is used by another one, is never found.
class CNrvIds {
public:
    // 0 for null.
    NrvId IdOf(CDrawable* object);
    // The id of an object that may have been freed, which is therefore not accessed: a new id when it had none.
    NrvId IdOfGone(const CDrawable* object);
    // Null for an id of no object, or of one that was freed.
    CDrawable* Find(NrvId id) const;

private:
    struct Entry {
        CDrawable* object;
        CKxAliveToken alive;
    };
    void Purge();

    std::unordered_map<NrvId, Entry> m_Objects;
    std::unordered_map<const CDrawable*, NrvId> m_Ids;
    size_t m_PurgeAt = 256; // Entries of freed objects are removed each time the table has doubled.
};
