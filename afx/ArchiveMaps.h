// The numbers that an archive gives to classes and objects, in either direction. Only for the archive's own
// sources. Layer 1: afx.
#pragma once

#include "afxarchive.h"

#include <vector>

// Storing: from the address of an object or a class record to its number. Open addressing, half full at most.
class ArchiveStoreMap {
public:
    void Reserve(size_t nEntries);
    DWORD Find(const void* pKey) const; // 0 when the address has no number
    void Add(const void* pKey, DWORD nNumber);

private:
    struct Slot {
        const void* pKey = NULL;
        DWORD nNumber = 0;
    };
    size_t Place(const void* pKey) const;
    void Resize(size_t nSlots);

    std::vector<Slot> m_slots; // a power of two of them
    size_t m_nUsed = 0;
};

// Loading: the object or class that a number refers to.
struct ArchiveLoadEntry {
    enum Kind : DWORD { isObject, isClass };
    CObject* pObject; // NULL for a class, and for an object that failed to load
    Kind kind;
    DWORD nClass; // of a class: its index in loadedClasses
};

// A class that the stream has named; its schema is that of the latest record.
struct ArchiveLoadedClass {
    CRuntimeClass* pClass;
    UINT nSchema;
};

struct CArchive::ObjectMaps {
    explicit ObjectMaps(bool bLoading);
    DWORD TakeNumber(CArchive& ar); // the next number; raises when there are too many

    DWORD nCount; // of numbers given out, with 0 for the null object
    ArchiveStoreMap storeMap;
    std::vector<ArchiveLoadEntry> loadArray;
    std::vector<ArchiveLoadedClass> loadedClasses; // each class once
};
