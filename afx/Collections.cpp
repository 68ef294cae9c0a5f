// The ready-made arrays' class records, and the two ways in which they differ from CArray. Layer 1: afx.
#include "afxcoll.h"

IMPLEMENT_SERIAL(CByteArray, CObject, 0)
IMPLEMENT_SERIAL(CWordArray, CObject, 0)
IMPLEMENT_SERIAL(CDWordArray, CObject, 0)
IMPLEMENT_SERIAL(CStringArray, CObject, 0)
IMPLEMENT_SERIAL(CObArray, CObject, 0)
IMPLEMENT_DYNAMIC(CUIntArray, CObject)
IMPLEMENT_DYNAMIC(CPtrArray, CObject)

void CUIntArray::Serialize(CArchive&) {
    AfxThrowNotSupportedException();
}

void CPtrArray::Serialize(CArchive&) {
    AfxThrowNotSupportedException();
}

void CObArray::Serialize(CArchive& ar) {
    CObject::Serialize(ar); // NOLINT(bugprone-parent-virtual-call): as documented.
    if (ar.IsStoring()) {
        ar.WriteCount(static_cast<DWORD_PTR>(GetSize()));
        for (INT_PTR i = 0; i < GetSize(); ++i) {
            ar << GetAt(i);
        }
        return;
    }
    const DWORD_PTR nCount = ar.ReadCount();
    RemoveAll();
    for (DWORD_PTR i = 0; i < nCount; ++i) {
        Add(ar.ReadObject(NULL));
    }
}
