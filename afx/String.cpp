// CString and CStringA, compiled once for all modules. Layer 1: afx.
#include "AfxInternal.h"
#include "StringTraits.h"

const AFX_NIL_STRING afxNilString = {{-1, 0, 0}, {0, 0}};

using namespace AfxStringTraits;

// ---- buffers -------------------------------------------------------------------------------------------------------

template <typename T>
T* CStringT<T>::NewData(int nAllocLength) {
    // In steps of eight characters, so that small edits need no new block.
    if (nAllocLength > INT_MAX - 16) {
        AfxThrowMemoryException();
    }
    const int nRoom = ((nAllocLength + 8) & ~7) - 1;
    void* pBlock = AfxAllocBlock(sizeof(CStringData) + (static_cast<size_t>(nRoom) + 1) * sizeof(T));
    CStringData* pData = ::new (pBlock) CStringData{1, 0, nRoom};
    T* pszText = reinterpret_cast<T*>(pData + 1);
    pszText[0] = 0;
    return pszText;
}

template <typename T>
void CStringT<T>::Reserve(int nAllocLength, bool bExact) {
    const CStringData* pOld = Data();
    const int nLength = pOld->nDataLength;
    if (nAllocLength < nLength) {
        nAllocLength = nLength;
    }
    if (pOld->nRefs == 1) {
        if (nAllocLength <= pOld->nAllocLength) {
            return;
        }
        // Growing text grows by half, so that appending one by one stays cheap.
        if (!bExact && pOld->nAllocLength < INT_MAX / 2 && nAllocLength < pOld->nAllocLength + pOld->nAllocLength / 2) {
            nAllocLength = pOld->nAllocLength + pOld->nAllocLength / 2;
        }
    }
    T* pszNew = NewData(nAllocLength);
    CopyText(pszNew, m_pszData, nLength);
    Release();
    m_pszData = pszNew;
    SetLength(nLength);
}

template <typename T>
void CStringT<T>::SetLength(int nLength) noexcept {
    Data()->nDataLength = nLength;
    m_pszData[nLength] = 0;
}

template <typename T>
void CStringT<T>::CheckIndex(bool bGood) const {
    if (!bGood) {
        AfxThrowInvalidArgException();
    }
}

template <typename T>
CStringT<T> CStringT<T>::Concat(PCXSTR pchA, int nA, PCXSTR pchB, int nB) {
    CStringT str;
    const int nLength = Sum(nA, nB);
    if (nLength > 0) {
        str.Reserve(nLength, true);
        CopyText(str.m_pszData, pchA, nA);
        CopyText(str.m_pszData + nA, pchB, nB);
        str.SetLength(nLength);
    }
    return str;
}

template <typename T>
void CStringT<T>::Assign(PCYSTR pchSrc, int nLength) {
    const int nNew = pchSrc == NULL || nLength <= 0 ? 0 : ConvertedLength(pchSrc, nLength, m_pszData);
    if (nNew <= 0) {
        Empty();
        return;
    }
    CStringT str;
    str.Reserve(nNew, true);
    ConvertInto(pchSrc, nLength, str.m_pszData, nNew);
    str.SetLength(nNew);
    *this = static_cast<CStringT&&>(str);
}

// ---- construction and assignment -----------------------------------------------------------------------------------

template <typename T>
CStringT<T>::CStringT(PCXSTR pszSrc) : m_pszData(Nil()) {
    if (pszSrc != NULL && IS_INTRESOURCE(pszSrc)) {
        LoadString(static_cast<UINT>(reinterpret_cast<UINT_PTR>(pszSrc)));
    } else {
        SetString(pszSrc);
    }
}

template <typename T>
CStringT<T>::CStringT(PCYSTR pszSrc) : m_pszData(Nil()) {
    if (pszSrc != NULL && IS_INTRESOURCE(pszSrc)) {
        LoadString(static_cast<UINT>(reinterpret_cast<UINT_PTR>(pszSrc)));
    } else {
        Assign(pszSrc, CheckedLength(pszSrc));
    }
}

template <typename T>
CStringT<T>::CStringT(PCXSTR pchSrc, int nLength) : m_pszData(Nil()) {
    SetString(pchSrc, nLength);
}

template <typename T>
CStringT<T>::CStringT(PCYSTR pchSrc, int nLength) : m_pszData(Nil()) {
    CheckIndex(nLength >= 0 && (pchSrc != NULL || nLength == 0));
    Assign(pchSrc, nLength);
}

template <typename T>
CStringT<T>::CStringT(XCHAR ch, int nRepeat) : m_pszData(Nil()) {
    CheckIndex(nRepeat >= 0);
    if (nRepeat == 0) {
        return;
    }
    Reserve(nRepeat, true);
    for (int i = 0; i < nRepeat; ++i) {
        m_pszData[i] = ch;
    }
    SetLength(nRepeat);
}

template <typename T>
CStringT<T>::CStringT(const CStringT<YCHAR>& strSrc) : m_pszData(Nil()) {
    Assign(strSrc.GetString(), strSrc.GetLength());
}

template <typename T>
CStringT<T>& CStringT<T>::operator=(const CStringT& strSrc) noexcept {
    strSrc.AddRef();
    Release();
    m_pszData = strSrc.m_pszData;
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::operator=(CStringT&& strSrc) noexcept {
    T* pszData = strSrc.m_pszData;
    strSrc.m_pszData = m_pszData;
    m_pszData = pszData;
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::operator=(PCXSTR pszSrc) {
    SetString(pszSrc);
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::operator=(PCYSTR pszSrc) {
    Assign(pszSrc, CheckedLength(pszSrc));
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::operator=(XCHAR ch) {
    SetString(&ch, 1);
    return *this;
}

template <typename T>
void CStringT<T>::SetString(PCXSTR pszSrc) {
    SetString(pszSrc, CheckedLength(pszSrc));
}

template <typename T>
void CStringT<T>::SetString(PCXSTR pchSrc, int nLength) {
    CheckIndex(nLength >= 0 && (pchSrc != NULL || nLength == 0));
    if (nLength == 0) {
        Empty();
        return;
    }
    CStringData* pData = Data();
    if (pData->nRefs == 1 && nLength <= pData->nAllocLength) {
        CopyText(m_pszData, pchSrc, nLength); // the source may be a part of this very text
        SetLength(nLength);
        return;
    }
    T* pszNew = NewData(nLength);
    CopyText(pszNew, pchSrc, nLength);
    Release();
    m_pszData = pszNew;
    SetLength(nLength);
}

template <typename T>
void CStringT<T>::Empty() noexcept {
    Release();
    m_pszData = Nil();
}

// ---- the text ------------------------------------------------------------------------------------------------------

template <typename T>
int PASCAL CStringT<T>::StringLength(PCXSTR psz) noexcept {
    if (psz == NULL) {
        return 0;
    }
    const size_t nLength = Length(psz);
    return nLength > INT_MAX ? INT_MAX : static_cast<int>(nLength);
}

template <typename T>
T CStringT<T>::GetAt(int iChar) const {
    // The ending zero may be read as well.
    if (static_cast<unsigned>(iChar) > static_cast<unsigned>(GetLength())) {
        AfxThrowInvalidArgException();
    }
    return m_pszData[iChar];
}

template <typename T>
void CStringT<T>::SetAt(int iChar, XCHAR ch) {
    CheckIndex(iChar >= 0 && iChar < GetLength());
    Reserve(GetLength(), true);
    m_pszData[iChar] = ch;
}

template <typename T>
int CStringT<T>::Compare(PCXSTR psz) const {
    CheckIndex(psz != NULL);
    return CompareText(m_pszData, psz);
}

template <typename T>
int CStringT<T>::CompareNoCase(PCXSTR psz) const {
    CheckIndex(psz != NULL);
    return CompareTextNoCase(m_pszData, psz);
}

template <typename T>
int CStringT<T>::Collate(PCXSTR psz) const {
    CheckIndex(psz != NULL);
    return CollateText(m_pszData, psz);
}

template <typename T>
int CStringT<T>::CollateNoCase(PCXSTR psz) const {
    CheckIndex(psz != NULL);
    return CollateTextNoCase(m_pszData, psz);
}

template <typename T>
int CStringT<T>::Find(PCXSTR pszSub, int iStart) const {
    if (pszSub == NULL || iStart < 0 || iStart > GetLength()) {
        return -1;
    }
    if (pszSub[0] == 0) {
        return iStart; // C runtimes differ on whether an empty text contains an empty one
    }
    const T* pszFound = FindText(m_pszData + iStart, pszSub);
    return pszFound == NULL ? -1 : static_cast<int>(pszFound - m_pszData);
}

template <typename T>
int CStringT<T>::Find(XCHAR ch, int iStart) const {
    if (iStart < 0 || iStart >= GetLength()) {
        return -1;
    }
    const T* pszFound = FindChar(m_pszData + iStart, ch);
    return pszFound == NULL ? -1 : static_cast<int>(pszFound - m_pszData);
}

template <typename T>
int CStringT<T>::ReverseFind(XCHAR ch) const {
    const T* pszFound = FindLastChar(m_pszData, ch);
    return pszFound == NULL ? -1 : static_cast<int>(pszFound - m_pszData);
}

template <typename T>
int CStringT<T>::FindOneOf(PCXSTR pszCharSet) const {
    CheckIndex(pszCharSet != NULL);
    const T* pszFound = FindAny(m_pszData, pszCharSet);
    return pszFound == NULL ? -1 : static_cast<int>(pszFound - m_pszData);
}

template <typename T>
CStringT<T> CStringT<T>::Left(int nCount) const {
    if (nCount >= GetLength()) {
        return *this;
    }
    return CStringT(m_pszData, nCount < 0 ? 0 : nCount);
}

template <typename T>
CStringT<T> CStringT<T>::Right(int nCount) const {
    const int nLength = GetLength();
    if (nCount >= nLength) {
        return *this;
    }
    if (nCount < 0) {
        nCount = 0;
    }
    return CStringT(m_pszData + nLength - nCount, nCount);
}

template <typename T>
CStringT<T> CStringT<T>::Mid(int iFirst) const {
    return Mid(iFirst, GetLength());
}

template <typename T>
CStringT<T> CStringT<T>::Mid(int iFirst, int nCount) const {
    const int nLength = GetLength();
    if (iFirst < 0) {
        iFirst = 0;
    }
    if (iFirst >= nLength || nCount <= 0) {
        return CStringT();
    }
    if (nCount > nLength - iFirst) {
        nCount = nLength - iFirst;
    }
    if (iFirst == 0 && nCount == nLength) {
        return *this;
    }
    return CStringT(m_pszData + iFirst, nCount);
}

template <typename T>
CStringT<T> CStringT<T>::SpanIncluding(PCXSTR pszCharSet) const {
    CheckIndex(pszCharSet != NULL);
    return Left(static_cast<int>(Span(m_pszData, pszCharSet)));
}

template <typename T>
CStringT<T> CStringT<T>::SpanExcluding(PCXSTR pszCharSet) const {
    CheckIndex(pszCharSet != NULL);
    return Left(static_cast<int>(SpanNot(m_pszData, pszCharSet)));
}

template <typename T>
CStringT<T> CStringT<T>::Tokenize(PCXSTR pszTokens, int& iStart) const {
    CheckIndex(iStart >= 0);
    const int nLength = GetLength();
    if (iStart < nLength) {
        if (pszTokens == NULL || pszTokens[0] == 0) {
            return Mid(iStart);
        }
        const int iFirst = iStart + static_cast<int>(Span(m_pszData + iStart, pszTokens));
        if (iFirst < nLength) {
            const int nCount = static_cast<int>(SpanNot(m_pszData + iFirst, pszTokens));
            iStart = iFirst + nCount + 1;
            return Mid(iFirst, nCount);
        }
    }
    iStart = -1;
    return CStringT();
}

// ---- editing -------------------------------------------------------------------------------------------------------

template <typename T>
void CStringT<T>::Append(PCXSTR pszSrc) {
    Append(pszSrc, CheckedLength(pszSrc));
}

template <typename T>
void CStringT<T>::Append(PCXSTR pchSrc, int nLength) {
    CheckIndex(nLength >= 0 && (pchSrc != NULL || nLength == 0));
    if (nLength == 0) {
        return;
    }
    const int nOld = GetLength();
    const int nNew = Sum(nOld, nLength);
    CStringT keep;
    if (pchSrc >= m_pszData && pchSrc <= m_pszData + nOld) {
        keep = *this; // the source is a part of this very text
    }
    Reserve(nNew, false);
    CopyText(m_pszData + nOld, pchSrc, nLength);
    SetLength(nNew);
}

template <typename T>
void CStringT<T>::Append(const CStringT& strSrc) {
    if (IsEmpty()) {
        *this = strSrc;
    } else {
        Append(strSrc.m_pszData, strSrc.GetLength());
    }
}

template <typename T>
void CStringT<T>::AppendChar(XCHAR ch) {
    const int nOld = GetLength();
    const int nNew = Sum(nOld, 1);
    Reserve(nNew, false);
    m_pszData[nOld] = ch;
    SetLength(nNew);
}

template <typename T>
CStringT<T>& CStringT<T>::operator+=(const CStringT& strSrc) {
    Append(strSrc);
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::operator+=(PCXSTR pszSrc) {
    Append(pszSrc);
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::operator+=(PCYSTR pszSrc) {
    Append(CStringT(pszSrc));
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::operator+=(XCHAR ch) {
    AppendChar(ch);
    return *this;
}

template <typename T>
int CStringT<T>::Insert(int iIndex, XCHAR ch) {
    const T sz[2] = {ch, 0};
    if (ch != 0) {
        return Insert(iIndex, sz);
    }
    // A zero character is inserted as one, though a text of one zero would be empty.
    const T szMark[2] = {1, 0};
    const int nLength = GetLength();
    if (iIndex < 0) {
        iIndex = 0;
    }
    if (iIndex > nLength) {
        iIndex = nLength;
    }
    Insert(iIndex, szMark);
    m_pszData[iIndex] = 0;
    return GetLength();
}

template <typename T>
int CStringT<T>::Insert(int iIndex, PCXSTR psz) {
    const int nOld = GetLength();
    const int nInsert = CheckedLength(psz);
    if (nInsert == 0) {
        return nOld;
    }
    if (iIndex < 0) {
        iIndex = 0;
    }
    if (iIndex > nOld) {
        iIndex = nOld;
    }
    const CStringT str(psz, nInsert); // it may be a part of this very text
    const int nNew = Sum(nOld, nInsert);
    Reserve(nNew, false);
    CopyText(m_pszData + iIndex + nInsert, m_pszData + iIndex, nOld - iIndex);
    CopyText(m_pszData + iIndex, str.m_pszData, nInsert);
    SetLength(nNew);
    return nNew;
}

template <typename T>
int CStringT<T>::Delete(int iIndex, int nCount) {
    const int nOld = GetLength();
    if (iIndex < 0) {
        iIndex = 0;
    }
    if (nCount > 0 && iIndex < nOld) {
        if (nCount > nOld - iIndex) {
            nCount = nOld - iIndex;
        }
        Reserve(nOld, true);
        CopyText(m_pszData + iIndex, m_pszData + iIndex + nCount, nOld - iIndex - nCount);
        SetLength(nOld - nCount);
    }
    return GetLength();
}

template <typename T>
int CStringT<T>::Replace(XCHAR chOld, XCHAR chNew) {
    int nReplaced = 0;
    if (chOld != chNew) {
        const int nLength = GetLength();
        for (int i = 0; i < nLength; ++i) {
            if (m_pszData[i] == chOld) {
                if (nReplaced++ == 0) {
                    Reserve(nLength, true);
                }
                m_pszData[i] = chNew;
            }
        }
    }
    return nReplaced;
}

template <typename T>
int CStringT<T>::Replace(PCXSTR pszOld, PCXSTR pszNew) {
    const int nOldPart = CheckedLength(pszOld);
    if (nOldPart == 0) {
        return 0;
    }
    const int nNewPart = CheckedLength(pszNew);
    CStringT strResult;
    int nReplaced = 0;
    int iFrom = 0;
    for (int iFound; (iFound = Find(pszOld, iFrom)) >= 0; iFrom = iFound + nOldPart) {
        strResult.Append(m_pszData + iFrom, iFound - iFrom);
        strResult.Append(pszNew, nNewPart);
        ++nReplaced;
    }
    if (nReplaced > 0) {
        strResult.Append(m_pszData + iFrom, GetLength() - iFrom);
        *this = static_cast<CStringT&&>(strResult);
    }
    return nReplaced;
}

template <typename T>
int CStringT<T>::Remove(XCHAR chRemove) {
    const int nLength = GetLength();
    int nKept = 0;
    for (int i = 0; i < nLength; ++i) {
        if (m_pszData[i] == chRemove) {
            if (nKept == i) {
                Reserve(nLength, true); // from the first one found on, this text is our own
            }
        } else {
            if (nKept != i) {
                m_pszData[nKept] = m_pszData[i];
            }
            ++nKept;
        }
    }
    if (nKept != nLength) {
        SetLength(nKept);
    }
    return nLength - nKept;
}

template <typename T>
CStringT<T>& CStringT<T>::MakeUpper() {
    const int nLength = GetLength();
    if (nLength > 0) {
        Reserve(nLength, true);
    }
    for (int i = 0; i < nLength; ++i) {
        m_pszData[i] = Upper(m_pszData[i]);
    }
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::MakeLower() {
    const int nLength = GetLength();
    if (nLength > 0) {
        Reserve(nLength, true);
    }
    for (int i = 0; i < nLength; ++i) {
        m_pszData[i] = Lower(m_pszData[i]);
    }
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::MakeReverse() {
    const int nLength = GetLength();
    if (nLength > 0) {
        Reserve(nLength, true);
    }
    for (int i = 0; i < nLength / 2; ++i) {
        T ch = m_pszData[i];
        m_pszData[i] = m_pszData[nLength - 1 - i];
        m_pszData[nLength - 1 - i] = ch;
    }
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::Trim() {
    return TrimRight().TrimLeft();
}

template <typename T>
CStringT<T>& CStringT<T>::Trim(XCHAR ch) {
    return TrimRight(ch).TrimLeft(ch);
}

template <typename T>
CStringT<T>& CStringT<T>::Trim(PCXSTR pszTargets) {
    return TrimRight(pszTargets).TrimLeft(pszTargets);
}

template <typename T>
CStringT<T>& CStringT<T>::TrimLeft() {
    int i = 0;
    while (i < GetLength() && IsSpace(m_pszData[i])) {
        ++i;
    }
    Delete(0, i);
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::TrimLeft(XCHAR ch) {
    int i = 0;
    while (i < GetLength() && m_pszData[i] == ch) {
        ++i;
    }
    Delete(0, i);
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::TrimLeft(PCXSTR pszTargets) {
    if (pszTargets != NULL && pszTargets[0] != 0) {
        Delete(0, static_cast<int>(Span(m_pszData, pszTargets)));
    }
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::TrimRight() {
    int n = GetLength();
    while (n > 0 && IsSpace(m_pszData[n - 1])) {
        --n;
    }
    Truncate(n);
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::TrimRight(XCHAR ch) {
    int n = GetLength();
    while (n > 0 && m_pszData[n - 1] == ch) {
        --n;
    }
    Truncate(n);
    return *this;
}

template <typename T>
CStringT<T>& CStringT<T>::TrimRight(PCXSTR pszTargets) {
    if (pszTargets != NULL && pszTargets[0] != 0) {
        int n = GetLength();
        while (n > 0 && m_pszData[n - 1] != 0 && FindChar(pszTargets, m_pszData[n - 1]) != NULL) {
            --n;
        }
        Truncate(n);
    }
    return *this;
}

template <typename T>
void CStringT<T>::Truncate(int nNewLength) {
    CheckIndex(nNewLength >= 0);
    if (nNewLength >= GetLength()) {
        return;
    }
    Reserve(GetLength(), true);
    SetLength(nNewLength);
}

// ---- direct access, resources, OLE ---------------------------------------------------------------------------------

template <typename T>
T* CStringT<T>::GetBuffer() {
    return GetBuffer(GetLength());
}

template <typename T>
T* CStringT<T>::GetBuffer(int nMinBufLength) {
    CheckIndex(nMinBufLength >= 0);
    Reserve(nMinBufLength, true);
    return m_pszData;
}

template <typename T>
T* CStringT<T>::GetBufferSetLength(int nLength) {
    T* pszBuffer = GetBuffer(nLength);
    SetLength(nLength);
    return pszBuffer;
}

template <typename T>
void CStringT<T>::ReleaseBuffer(int nNewLength) {
    if (nNewLength == -1) {
        // Never looks beyond the buffer, whatever its user did to the ending zero.
        nNewLength = 0;
        while (nNewLength < GetAllocLength() && m_pszData[nNewLength] != 0) {
            ++nNewLength;
        }
    }
    ReleaseBufferSetLength(nNewLength);
}

template <typename T>
void CStringT<T>::ReleaseBufferSetLength(int nNewLength) {
    CheckIndex(nNewLength >= 0 && nNewLength <= GetAllocLength());
    if (nNewLength == 0) {
        Empty();
    } else {
        SetLength(nNewLength);
    }
}

template <typename T>
void CStringT<T>::Preallocate(int nLength) {
    CheckIndex(nLength >= 0);
    Reserve(nLength, true);
}

template <typename T>
void CStringT<T>::FreeExtra() {
    if (GetAllocLength() > GetLength()) {
        const CStringT str(m_pszData, GetLength());
        *this = str;
    }
}

template <typename T>
BOOL CStringT<T>::LoadString(UINT nID) {
    return LoadString(afxWindowHooks.findStringResource(nID), nID);
}

template <typename T>
BOOL CStringT<T>::LoadString(HINSTANCE hInstance, UINT nID) {
    const wchar_t* pchText = NULL; // with no buffer, LoadString gives a pointer to the resource itself
    const int nLength = ::LoadStringW(hInstance, nID, reinterpret_cast<wchar_t*>(&pchText), 0);
    if (nLength <= 0 || pchText == NULL) {
        return FALSE;
    }
    *this = CStringT(pchText, nLength);
    return TRUE;
}

template <typename T>
BSTR CStringT<T>::AllocSysString() const {
    const CStringW str(m_pszData, GetLength());
    BSTR bstr = ::SysAllocStringLen(str.GetString(), static_cast<UINT>(str.GetLength()));
    if (bstr == NULL) {
        AfxThrowMemoryException();
    }
    return bstr;
}

template class CStringT<wchar_t>;
template class CStringT<char>;
