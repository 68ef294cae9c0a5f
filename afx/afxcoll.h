// The ready-made arrays. Those of bytes, words, double words, objects and texts can be streamed.
// Classes: CByteArray, CWordArray, CDWordArray, CUIntArray, CPtrArray, CObArray, CStringArray.
// Layer 1: afx.
#pragma once

#include "afxtempl.h"

class NRAFX_API CByteArray : public CArray<BYTE, BYTE> {
    DECLARE_SERIAL(CByteArray)
};

class NRAFX_API CWordArray : public CArray<WORD, WORD> {
    DECLARE_SERIAL(CWordArray)
};

class NRAFX_API CDWordArray : public CArray<DWORD, DWORD> {
    DECLARE_SERIAL(CDWordArray)
};

// Not to be streamed: the width of its numbers and pointers is the platform's.
class NRAFX_API CUIntArray : public CArray<UINT, UINT> {
    DECLARE_DYNAMIC(CUIntArray)
public:
    void Serialize(CArchive& ar) override;
};

class NRAFX_API CPtrArray : public CArray<void*, void*> {
    DECLARE_DYNAMIC(CPtrArray)
public:
    void Serialize(CArchive& ar) override;
};

// Refers to its objects; code that loads it from a stream owns them.
class NRAFX_API CObArray : public CArray<CObject*, CObject*> {
    DECLARE_SERIAL(CObArray)
public:
    void Serialize(CArchive& ar) override;
};

class NRAFX_API CStringArray : public CArray<CString, const CString&> {
    DECLARE_SERIAL(CStringArray)
};
