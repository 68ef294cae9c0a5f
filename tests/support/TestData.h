// Golden streams of tests/data, and documents made from and turned into bytes.
// Layer 16: tests.
#pragma once

#include "Document.h"
#include "VectorViewCoordTran.h"

#include <string>
#include <vector>

using Bytes = std::vector<BYTE>;

// The bytes of a file, its name relative to tests/data/; a missing file fails the test that asks.
Bytes ReadTestData(const std::string& name);

// A document with a mapping of its own, and no painter or view.
struct LoneDocument {
    LoneDocument() { document.SetVectorViewCoordTran(&tran); }
    CDrawableArray& Objects() { return *document.GetDrawableObjs(); }
    // Calls OpenDocument with the bytes, copied to a block of exactly their size.
    int Load(const Bytes& bytes);
    // Calls ReadData, without the message boxes of the frame; gives the exception's cause, or -1 for none.
    int LoadRaw(const Bytes& bytes);
    Bytes Store();

    CVectorViewCoordTran tran;
    CGraphicDocument document;
};

// One object's own Serialize, outside ReadObject.
Bytes StoreObject(CDrawable& object);
