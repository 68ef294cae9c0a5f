// CArray: a growing array whose index errors raise CInvalidArgException.
// Layer 1: afx.
#pragma once

#include "afxarray_.h"
#include <memory>
#include <new>
#include <utility>

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
