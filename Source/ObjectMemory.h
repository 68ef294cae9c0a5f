// CObjectMemory: the restore point of an editing command: objects write themselves into memory and are read back.
// Layer 9: command operations.
#pragma once

#include "Document.h"
#include "DrawableState.h"

#include <afx.h>

#include <vector>

// The objects' own Serialize makes the restore point, so reading back applies their rules of loading: a polyline loses
// its segment colours, a text box narrower than its font is made wider.
class CObjectMemory : public CMemFile {
public:
    CObjectMemory();

    // With `exactly` every field is stored too, so that Restore also brings back what those rules change.
    void Store(CDrawable* object, bool exactly = false);
    // One after the other, in list order.
    void Store(const CDrawableArray& objects, bool exactly = false);
    // Whether the objects would be stored with the same bytes.
    bool IsEqualTo(const CDrawableArray& objects) const;
    // Into the object that was stored, or into another one of its class. Raises CArchiveException when nothing is
    // there.
    void Restore(CDrawable* object);
    void Restore(const CDrawableArray& objects);

private:
    std::vector<CDrawableState> m_States; // Of what was stored exactly, in list order.
};

// Reads the objects back one by one, from the first.
class CObjectMemoryReader {
public:
    explicit CObjectMemoryReader(CObjectMemory& memory);
    void Read(CDrawable* object);

private:
    CArchive m_Archive;
};
