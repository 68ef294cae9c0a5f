// The declaration of CArray, its memory, and how its elements are streamed; afxtempl.h has the rest of it.
// Classes: CArray.
// Layer 1: afx.
#pragma once

#include "afx.h"
#include <cstdint>
#include <memory>
#include <type_traits>

// Streams nCount elements that follow one another in memory: their bytes, unless the type has a specialisation.
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
// they are passed. Indices run from 0 to GetUpperBound.
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

    // nGrowBy is the least number of elements by which the memory is enlarged when the array grows; 0 lets the array
    // choose, -1 keeps what was set. Size 0 frees the memory.
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

    // The count, then SerializeElements. Loading enlarges the array as the data comes, not ahead of it.
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
