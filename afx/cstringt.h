// CString: shared, copy-on-write text of 16-bit (CStringW) or 8-bit (CStringA) characters; CString is the former. A
// copy costs one atomic increment, an empty string no memory.
// Classes: CStringT.
// Layer 1: afx.
#pragma once

#include "cstringdata_.h"
#include <cstdarg>
#include <type_traits>

// Lengths and indices are in characters. An index outside the text raises CInvalidArgException, too little memory
// (or a text above the limit of an int) CMemoryException. The other character width converts with the ANSI page.
template <typename T>
class NRAFX_API CStringT {
public:
    typedef T XCHAR;
    typedef T* PXSTR;
    typedef const T* PCXSTR;
    typedef typename std::conditional<std::is_same<T, wchar_t>::value, char, wchar_t>::type YCHAR;
    typedef const YCHAR* PCYSTR;

    CStringT() noexcept : m_pszData(Nil()) {}
    CStringT(const CStringT& strSrc) noexcept : m_pszData(strSrc.m_pszData) { AddRef(); }
    CStringT(CStringT&& strSrc) noexcept : m_pszData(strSrc.m_pszData) { strSrc.m_pszData = Nil(); }
    CStringT(PCXSTR pszSrc); // also takes MAKEINTRESOURCE(id), as LoadString
    CStringT(PCYSTR pszSrc);
    CStringT(PCXSTR pchSrc, int nLength);
    CStringT(PCYSTR pchSrc, int nLength);
    explicit CStringT(XCHAR ch, int nRepeat = 1);
    explicit CStringT(const CStringT<YCHAR>& strSrc);
    ~CStringT() { Release(); }

    CStringT& operator=(const CStringT& strSrc) noexcept;
    CStringT& operator=(CStringT&& strSrc) noexcept;
    CStringT& operator=(PCXSTR pszSrc);
    CStringT& operator=(PCYSTR pszSrc);
    CStringT& operator=(XCHAR ch);

    // The text
    int GetLength() const noexcept { return Data()->nDataLength; }
    bool IsEmpty() const noexcept { return GetLength() == 0; }
    XCHAR GetAt(int iChar) const;
    XCHAR operator[](int iChar) const { return GetAt(iChar); }
    operator PCXSTR() const noexcept { return m_pszData; }
    PCXSTR GetString() const noexcept { return m_pszData; }
    int GetAllocLength() const noexcept { return Data()->nAllocLength; }

    // Comparison; results below, at or above 0
    int Compare(PCXSTR psz) const;
    int CompareNoCase(PCXSTR psz) const;
    int Collate(PCXSTR psz) const;
    int CollateNoCase(PCXSTR psz) const;

    // Search; results are indices, or -1
    int Find(PCXSTR pszSub, int iStart = 0) const;
    int Find(XCHAR ch, int iStart = 0) const;
    int ReverseFind(XCHAR ch) const;
    int FindOneOf(PCXSTR pszCharSet) const;

    // Parts
    CStringT Left(int nCount) const;
    CStringT Right(int nCount) const;
    CStringT Mid(int iFirst) const;
    CStringT Mid(int iFirst, int nCount) const;
    CStringT SpanIncluding(PCXSTR pszCharSet) const;
    CStringT SpanExcluding(PCXSTR pszCharSet) const;
    CStringT Tokenize(PCXSTR pszTokens, int& iStart) const; // sets iStart to -1 when there is no further token

    // Editing
    void Empty() noexcept;
    void SetAt(int iChar, XCHAR ch);
    void SetString(PCXSTR pszSrc);
    void SetString(PCXSTR pchSrc, int nLength);
    void Append(PCXSTR pszSrc);
    void Append(PCXSTR pchSrc, int nLength);
    void Append(const CStringT& strSrc);
    void AppendChar(XCHAR ch);
    CStringT& operator+=(const CStringT& strSrc);
    CStringT& operator+=(PCXSTR pszSrc);
    CStringT& operator+=(PCYSTR pszSrc);
    CStringT& operator+=(XCHAR ch);
    int Insert(int iIndex, XCHAR ch);
    int Insert(int iIndex, PCXSTR psz);
    int Delete(int iIndex, int nCount = 1);
    int Replace(XCHAR chOld, XCHAR chNew);
    int Replace(PCXSTR pszOld, PCXSTR pszNew);
    int Remove(XCHAR chRemove);
    CStringT& MakeUpper();
    CStringT& MakeLower();
    CStringT& MakeReverse();
    CStringT& Trim();
    CStringT& Trim(XCHAR ch);
    CStringT& Trim(PCXSTR pszTargets);
    CStringT& TrimLeft();
    CStringT& TrimLeft(XCHAR ch);
    CStringT& TrimLeft(PCXSTR pszTargets);
    CStringT& TrimRight();
    CStringT& TrimRight(XCHAR ch);
    CStringT& TrimRight(PCXSTR pszTargets);
    void Truncate(int nNewLength);

    // Formatting, with the C runtime of Windows: %s takes a text of this string's own character width
    void AFX_CDECL Format(PCXSTR pszFormat, ...);
    void AFX_CDECL Format(UINT nFormatID, ...);
    void FormatV(PCXSTR pszFormat, va_list args);
    void AFX_CDECL AppendFormat(PCXSTR pszFormat, ...);
    void AFX_CDECL AppendFormat(UINT nFormatID, ...);
    void AppendFormatV(PCXSTR pszFormat, va_list args);

    // Direct access: the buffer is this string's own until ReleaseBuffer; -1 measures up to the ending zero
    PXSTR GetBuffer();
    PXSTR GetBuffer(int nMinBufLength);
    PXSTR GetBufferSetLength(int nLength);
    void ReleaseBuffer(int nNewLength = -1);
    void ReleaseBufferSetLength(int nNewLength);
    void Preallocate(int nLength);
    void FreeExtra();

    // Resources and OLE. LoadString(UINT) looks in the current module state; FALSE leaves the text as it was.
    BOOL LoadString(UINT nID);
    BOOL LoadString(HINSTANCE hInstance, UINT nID);
    BSTR AllocSysString() const; // owned by the caller

    static int PASCAL StringLength(PCXSTR psz) noexcept;

    friend CStringT operator+(const CStringT& a, const CStringT& b) {
        return Concat(a, a.GetLength(), b, b.GetLength());
    }
    friend CStringT operator+(const CStringT& a, PCXSTR b) { return Concat(a, a.GetLength(), b, StringLength(b)); }
    friend CStringT operator+(PCXSTR a, const CStringT& b) { return Concat(a, StringLength(a), b, b.GetLength()); }
    friend CStringT operator+(const CStringT& a, PCYSTR b) { return a + CStringT(b); }
    friend CStringT operator+(PCYSTR a, const CStringT& b) { return CStringT(a) + b; }
    friend CStringT operator+(const CStringT& a, XCHAR b) { return Concat(a, a.GetLength(), &b, 1); }
    friend CStringT operator+(XCHAR a, const CStringT& b) { return Concat(&a, 1, b, b.GetLength()); }

#define AFX_STRING_COMPARISON(op)                                                                                      \
    friend bool operator op(const CStringT& a, const CStringT& b) {                                                    \
        return a.Compare(b.m_pszData) op 0;                                                                            \
    }                                                                                                                  \
    friend bool operator op(const CStringT& a, PCXSTR b) {                                                             \
        return a.Compare(b) op 0;                                                                                      \
    }                                                                                                                  \
    friend bool operator op(PCXSTR a, const CStringT& b) {                                                             \
        return 0 op b.Compare(a);                                                                                      \
    }                                                                                                                  \
    friend bool operator op(const CStringT& a, PCYSTR b) {                                                             \
        return a.Compare(CStringT(b)) op 0;                                                                            \
    }                                                                                                                  \
    friend bool operator op(PCYSTR a, const CStringT& b) {                                                             \
        return CStringT(a).Compare(b) op 0;                                                                            \
    }
    AFX_STRING_COMPARISON(<)
    AFX_STRING_COMPARISON(>)
    AFX_STRING_COMPARISON(<=)
    AFX_STRING_COMPARISON(>=)
    AFX_STRING_COMPARISON(==)
    AFX_STRING_COMPARISON(!=)
#undef AFX_STRING_COMPARISON
    friend bool operator==(const CStringT& a, XCHAR b) {
        return a.GetLength() == 1 && a.m_pszData[0] == b;
    }
    friend bool operator==(XCHAR a, const CStringT& b) {
        return b == a;
    }
    friend bool operator!=(const CStringT& a, XCHAR b) {
        return !(a == b);
    }
    friend bool operator!=(XCHAR a, const CStringT& b) {
        return !(b == a);
    }

private:
    static T* Nil() noexcept {
        return const_cast<T*>(reinterpret_cast<const T*>(afxNilString.nul));
    }
    CStringData* Data() const noexcept {
        return reinterpret_cast<CStringData*>(m_pszData) - 1;
    }
    void AddRef() const noexcept {
        Data()->AddRef();
    }
    void Release() noexcept {
        Data()->Release();
    }
    static T* NewData(int nAllocLength);
    static CStringT Concat(PCXSTR pchA, int nA, PCXSTR pchB, int nB);
    void Reserve(int nAllocLength, bool bExact); // own, writable buffer of at least that many characters
    void SetLength(int nLength) noexcept;
    void CheckIndex(bool bGood) const;
    void Assign(PCYSTR pchSrc, int nLength);

    T* m_pszData; // never NULL, always ended by a zero
};

typedef CStringT<wchar_t> CStringW;
typedef CStringT<char> CStringA;
typedef CStringW CString;
