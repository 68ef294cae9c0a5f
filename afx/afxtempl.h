// CArray: a growing array whose index errors raise CInvalidArgException.
// Classes: CArray.
// Layer 1: afx.
#pragma once

#include "afx.h"
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

// Streams nCount elements that lie side by side: their bytes, unless the type has a specialisation.
template <class TYPE>
void AFXAPI SerializeElements(CArchive& ar, TYPE* pElements, INT_PTR nCount) {
    const INT_PTR nMost = static_cast<INT_PTR>(0x40000000 / sizeof(TYPE));
    for (; nCount > 0; pElements += nMost, nCount -= nMost) {
        UINT nBytes = static_cast<UINT>(static_cast<size_t>(nCount < nMost ? nCount : nMost) * sizeof(TYPE));
        if (ar.IsStoring()) {
            ar.Write(pElements, nBytes);
        } else {
            ar.EnsureRead(static_cast<void*>(pElements), nBytes);
        }
    }
}

template <>
inline void AFXAPI SerializeElements<CString>(CArchive& ar, CString* pElements, INT_PTR nCount) {
    for (; nCount > 0; ++pElements, --nCount) {
        if (ar.IsStoring()) {
            ar << *pElements;
        } else {
            ar >> *pElements;
        }
    }
}

// Elements are values: new ones start as TYPE(), and may be moved in memory when the array grows. ARG_TYPE is how
// they are handed in. Indices run from 0 to GetUpperBound.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
public:
    CArray() noexcept : m_pData(NULL), m_nSize(0), m_nMaxSize(0), m_nGrowBy(0) {}
    ~CArray() override { FreeAll(); }

    INT_PTR GetSize() const { return m_nSize; }
    INT_PTR GetCount() const { return m_nSize; }
    BOOL IsEmpty() const { return m_nSize == 0; }
    INT_PTR GetUpperBound() const { return m_nSize - 1; }

    const TYPE& GetAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& GetAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    TYPE& ElementAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    const TYPE& ElementAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    const TYPE& operator[](INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& operator[](INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    const TYPE* GetData() const { return m_pData; }
    TYPE* GetData() { return m_pData; }

    // nGrowBy is the least number of elements to make room for when the array grows; 0 lets the array choose, -1
    // keeps what was set. Size 0 frees the memory.
    void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1);
    void FreeExtra();
    void RemoveAll() { SetSize(0, -1); }
    void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { m_pData[Checked(nIndex)] = newElement; }
    void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement);
    INT_PTR Add(ARG_TYPE newElement);  // the index of the new element
    INT_PTR Append(const CArray& src); // the index of the first new element
    void Copy(const CArray& src);
    void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1);
    void InsertAt(INT_PTR nStartIndex, CArray* pNewArray);
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1);

    // The count, then SerializeElements. Loading makes room as the data comes, not ahead of it.
    void Serialize(CArchive& ar) override;

private:
    INT_PTR Checked(INT_PTR nIndex) const {
        if (static_cast<size_t>(nIndex) >= static_cast<size_t>(m_nSize)) {
            AfxThrowInvalidArgException();
        }
        return nIndex;
    }
    INT_PTR GrownSize(INT_PTR nNeeded) const;
    void Relocate(INT_PTR nNewMax); // nNewMax at least m_nSize
    void FreeAll();

    TYPE* m_pData;
    INT_PTR m_nSize;
    INT_PTR m_nMaxSize;
    INT_PTR m_nGrowBy;
};

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::GrownSize(INT_PTR nNeeded) const {
    // By half, so that adding one by one stays cheap at any size.
    INT_PTR nGrowBy = m_nSize / 2;
    if (nGrowBy < m_nGrowBy) {
        nGrowBy = m_nGrowBy;
    }
    if (nGrowBy < 4) {
        nGrowBy = 4;
    }
    INT_PTR nNewMax = nGrowBy > INTPTR_MAX - m_nMaxSize ? nNeeded : m_nMaxSize + nGrowBy;
    return nNewMax < nNeeded ? nNeeded : nNewMax;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Relocate(INT_PTR nNewMax) {
    if (static_cast<size_t>(nNewMax) > static_cast<size_t>(INTPTR_MAX) / sizeof(TYPE)) {
        AfxThrowMemoryException();
    }
    TYPE* pNewData = static_cast<TYPE*>(AfxAllocBlock(static_cast<size_t>(nNewMax) * sizeof(TYPE)));
    if constexpr (std::is_trivially_copyable<TYPE>::value) {
        if (m_nSize > 0) {
            memcpy(static_cast<void*>(pNewData), m_pData, static_cast<size_t>(m_nSize) * sizeof(TYPE));
        }
    } else {
        std::uninitialized_move(m_pData, m_pData + m_nSize, pNewData);
        std::destroy(m_pData, m_pData + m_nSize);
    }
    AfxFreeBlock(m_pData);
    m_pData = pNewData;
    m_nMaxSize = nNewMax;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::FreeAll() {
    std::destroy(m_pData, m_pData + m_nSize);
    AfxFreeBlock(m_pData);
    m_pData = NULL;
    m_nSize = m_nMaxSize = 0;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetSize(INT_PTR nNewSize, INT_PTR nGrowBy) {
    if (nNewSize < 0) {
        AfxThrowInvalidArgException();
    }
    if (nGrowBy >= 0) {
        m_nGrowBy = nGrowBy;
    }
    if (nNewSize == 0) {
        if (m_pData != NULL) {
            FreeAll();
        }
        return;
    }
    if (nNewSize > m_nMaxSize) {
        Relocate(m_pData == NULL && nNewSize >= m_nGrowBy ? nNewSize : GrownSize(nNewSize));
    }
    if (nNewSize > m_nSize) {
        std::uninitialized_value_construct(m_pData + m_nSize, m_pData + nNewSize);
    } else {
        std::destroy(m_pData + nNewSize, m_pData + m_nSize);
    }
    m_nSize = nNewSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::FreeExtra() {
    if (m_nSize == m_nMaxSize) {
        return;
    }
    if (m_nSize == 0) {
        FreeAll();
    } else {
        Relocate(m_nSize);
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement) {
    if (nIndex < 0) {
        AfxThrowInvalidArgException();
    }
    if (nIndex >= m_nSize) {
        TYPE element(newElement); // it may be one of our own, which SetSize moves
        SetSize(nIndex + 1, -1);
        m_pData[nIndex] = std::move(element);
    } else {
        m_pData[nIndex] = newElement;
    }
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Add(ARG_TYPE newElement) {
    if (m_nSize < m_nMaxSize) {
        ::new (static_cast<void*>(m_pData + m_nSize)) TYPE(newElement);
    } else {
        TYPE element(newElement);
        Relocate(GrownSize(m_nSize + 1));
        ::new (static_cast<void*>(m_pData + m_nSize)) TYPE(std::move(element));
    }
    return m_nSize++;
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Append(const CArray& src) {
    if (this == &src) {
        AfxThrowInvalidArgException();
    }
    INT_PTR nOldSize = m_nSize;
    if (src.m_nSize > m_nMaxSize - m_nSize) {
        Relocate(GrownSize(m_nSize + src.m_nSize));
    }
    std::uninitialized_copy(src.m_pData, src.m_pData + src.m_nSize, m_pData + m_nSize);
    m_nSize += src.m_nSize;
    return nOldSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Copy(const CArray& src) {
    if (this == &src) {
        return;
    }
    SetSize(src.m_nSize);
    for (INT_PTR i = 0; i < m_nSize; ++i) {
        m_pData[i] = src.m_pData[i];
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount) {
    if (nIndex < 0 || nCount <= 0 || nCount > INTPTR_MAX - (nIndex > m_nSize ? nIndex : m_nSize)) {
        AfxThrowInvalidArgException();
    }
    TYPE element(newElement); // it may be one of our own, which moves
    INT_PTR nOldSize = m_nSize;
    SetSize((nIndex > nOldSize ? nIndex : nOldSize) + nCount, -1);
    for (INT_PTR i = nOldSize; i-- > nIndex;) {
        m_pData[i + nCount] = std::move(m_pData[i]);
    }
    for (INT_PTR i = nIndex; i < nIndex + nCount; ++i) {
        m_pData[i] = element;
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nStartIndex, CArray* pNewArray) {
    if (pNewArray == NULL || nStartIndex < 0 || pNewArray == this) {
        AfxThrowInvalidArgException();
    }
    if (pNewArray->m_nSize == 0) {
        return;
    }
    InsertAt(nStartIndex, pNewArray->m_pData[0], pNewArray->m_nSize);
    for (INT_PTR i = 1; i < pNewArray->m_nSize; ++i) {
        m_pData[nStartIndex + i] = pNewArray->m_pData[i];
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::RemoveAt(INT_PTR nIndex, INT_PTR nCount) {
    if (nIndex < 0 || nCount < 0 || nIndex > m_nSize || nCount > m_nSize - nIndex) {
        AfxThrowInvalidArgException();
    }
    if (nCount == 0) {
        return;
    }
    for (INT_PTR i = nIndex; i + nCount < m_nSize; ++i) {
        m_pData[i] = std::move(m_pData[i + nCount]);
    }
    std::destroy(m_pData + m_nSize - nCount, m_pData + m_nSize);
    m_nSize -= nCount;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(static_cast<DWORD_PTR>(m_nSize));
        SerializeElements<TYPE>(ar, m_pData, m_nSize);
        return;
    }
    const DWORD_PTR nCount = ar.ReadCount();
    const DWORD_PTR nChunk = sizeof(TYPE) >= 0x4000 ? 1 : 0x4000 / sizeof(TYPE);
    SetSize(0, -1);
    for (DWORD_PTR nDone = 0; nDone < nCount;) {
        DWORD_PTR nNow = nCount - nDone < nChunk ? nCount - nDone : nChunk;
        SetSize(static_cast<INT_PTR>(nDone + nNow), -1);
        SerializeElements<TYPE>(ar, m_pData + nDone, static_cast<INT_PTR>(nNow));
        nDone += nNow;
    }
}
