// CArchive: a buffered little-endian stream of values and objects on a CFile, in the published object format.
// Classes: CArchive.
// Layer 1: afx.
#pragma once

#include "afxfile.h"
#include <cstring>

class CDocument;

// Tags of the object format. A 16-bit tag names an object, or, with its highest bit, a class; numbers from
// wBigObjectTag on follow it in 32 bits.
#define wNullTag ((WORD)0)
#define wNewClassTag ((WORD)0xFFFF)
#define wClassTag ((WORD)0x8000)
#define wBigObjectTag ((WORD)0x7FFF)
#define dwBigClassTag ((DWORD)0x80000000)
#define nMaxMapCount ((DWORD)0x3FFFFFFE)

// The wrong direction, a stream that ends early (the value then stays as it was) or holds what it must not, and objects
// more than a thousand deep raise CArchiveException; failures of the file are passed on unchanged.
class NRAFX_API CArchive {
public:
    enum Mode { store = 0, load = 1, bNoFlushOnDelete = 2, bNoByteSwap = 4 };

    // The file and a given buffer still belong to the caller. A buffer below 128 bytes is replaced by one of 128.
    CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = NULL);
    // Closes unless bNoFlushOnDelete is set. May raise, unless an exception is already under way.
    ~CArchive() noexcept(false);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsLoading() const { return (m_nMode & load) != 0; }
    BOOL IsStoring() const { return (m_nMode & load) == 0; }
    BOOL IsByteSwapping() const { return FALSE; }
    BOOL IsBufferEmpty() const { return m_lpBufCur == m_lpBufMax; }
    CFile* GetFile() const { return m_pFile; }
    // The class schema of the object that is being read, once: asking resets it to (UINT)-1, which it also is outside
    // ReadObject. A level of Serialize that leaves it to the next ones puts it back with SetObjectSchema.
    UINT GetObjectSchema();
    void SetObjectSchema(UINT nSchema);

    UINT Read(void* lpBuf, UINT nMax);         // the bytes read: fewer only at the end
    void EnsureRead(void* lpBuf, UINT nCount); // all of it; else an exception, and the bytes there are as they were
    void Write(const void* lpBuf, UINT nMax);
    void Flush(); // loading: gives unread bytes back to the file
    void Close();
    void Abort(); // detaches from the file without writing what is left

    LPTSTR ReadString(LPTSTR lpsz, UINT nMax); // one line without its end, NULL at the end of the data
    BOOL ReadString(CString& rString);
    void WriteString(LPCTSTR lpsz);
    DWORD_PTR ReadCount();
    void WriteCount(DWORD_PTR dwCount);

    CObject* ReadObject(const CRuntimeClass* pClass); // owned by the caller; NULL accepts every class
    void WriteObject(const CObject* pOb);
    void
    MapObject(const CObject* pOb); // gives a number to an object that is streamed without ReadObject and WriteObject
    void WriteClass(const CRuntimeClass* pClassRef);
    CRuntimeClass* ReadClass(const CRuntimeClass* pClassRefRequested = NULL, UINT* pSchema = NULL,
                             DWORD* pObTag = NULL);
    void SerializeClass(const CRuntimeClass* pClassRef);
    void SetStoreParams(UINT nHashSize = 2053, UINT nBlockSize = 128); // expected number of objects
    void SetLoadParams(UINT nGrowBy = 1024);

    CArchive& operator<<(BYTE by) { return Put(by); }
    CArchive& operator<<(WORD w) { return Put(w); }
    CArchive& operator<<(LONG l) { return Put(l); }
    CArchive& operator<<(DWORD dw) { return Put(dw); }
    CArchive& operator<<(float f) { return Put(f); }
    CArchive& operator<<(double d) { return Put(d); }
    CArchive& operator<<(LONGLONG dwdw) { return Put(dwdw); }
    CArchive& operator<<(ULONGLONG dwdw) { return Put(dwdw); }
    CArchive& operator<<(int i) { return Put(i); }
    CArchive& operator<<(short w) { return Put(w); }
    CArchive& operator<<(char ch) { return Put(ch); }
    CArchive& operator<<(wchar_t ch) { return Put(ch); }
    CArchive& operator<<(unsigned u) { return Put(u); }
    CArchive& operator<<(bool b) { return Put(static_cast<BYTE>(b ? 1 : 0)); }

    CArchive& operator>>(BYTE& by) { return Get(by); }
    CArchive& operator>>(WORD& w) { return Get(w); }
    CArchive& operator>>(LONG& l) { return Get(l); }
    CArchive& operator>>(DWORD& dw) { return Get(dw); }
    CArchive& operator>>(float& f) { return Get(f); }
    CArchive& operator>>(double& d) { return Get(d); }
    CArchive& operator>>(LONGLONG& dwdw) { return Get(dwdw); }
    CArchive& operator>>(ULONGLONG& dwdw) { return Get(dwdw); }
    CArchive& operator>>(int& i) { return Get(i); }
    CArchive& operator>>(short& w) { return Get(w); }
    CArchive& operator>>(char& ch) { return Get(ch); }
    CArchive& operator>>(wchar_t& ch) { return Get(ch); }
    CArchive& operator>>(unsigned& u) { return Get(u); }
    CArchive& operator>>(bool& b) {
        BYTE by;
        Get(by);
        b = by != 0;
        return *this;
    }

    CDocument* m_pDocument;
    BOOL m_bForceFlat;
    CString m_strFileName; // of the file, for exceptions

private:
    struct ObjectMaps;

    template <typename T>
    CArchive& Put(T value) {
        if (IsStoring() && static_cast<size_t>(m_lpBufMax - m_lpBufCur) >= sizeof(T)) {
            memcpy(m_lpBufCur, &value, sizeof(T));
            m_lpBufCur += sizeof(T);
        } else {
            Write(&value, sizeof(T));
        }
        return *this;
    }
    template <typename T>
    CArchive& Get(T& value) {
        if (IsLoading() && static_cast<size_t>(m_lpBufMax - m_lpBufCur) >= sizeof(T)) {
            memcpy(&value, m_lpBufCur, sizeof(T));
            m_lpBufCur += sizeof(T);
        } else {
            EnsureRead(&value, sizeof(T));
        }
        return *this;
    }
    [[noreturn]] void Fail(int cause);
    void CheckDirection(bool bLoading);
    ObjectMaps& Maps();
    template <typename T>
    void ReadText(CStringT<T>& str, ULONGLONG nLength);
    void WriteTag(DWORD dwTag, bool bClass);
    friend NRAFX_API CArchive& AFXAPI operator>>(CArchive& ar, CString& string);
    friend NRAFX_API CArchive& AFXAPI operator>>(CArchive& ar, CStringA& string);

    CFile* m_pFile;
    UINT m_nMode;
    BOOL m_bUserBuf;
    UINT m_nBufSize;
    BYTE* m_lpBufStart;
    BYTE* m_lpBufCur;
    BYTE* m_lpBufMax; // storing: end of the buffer; loading: end of what the file gave
    UINT m_nObjectSchema;
    int m_nObjectDepth;
    int m_nUncaught; // exceptions under way at construction
    ObjectMaps* m_pMaps;
};

// Text: AfxWriteStringLength, then the characters. One-byte text is read in code page 936, whatever the system's
// own page is: streams of that older form come from systems of that page.
NRAFX_API CArchive& AFXAPI operator<<(CArchive& ar, const CString& string);
NRAFX_API CArchive& AFXAPI operator>>(CArchive& ar, CString& string);
NRAFX_API CArchive& AFXAPI operator<<(CArchive& ar, const CStringA& string);
NRAFX_API CArchive& AFXAPI operator>>(CArchive& ar, CStringA& string);
NRAFX_API CArchive& AFXAPI operator<<(CArchive& ar, const CObject* pOb);
NRAFX_API CArchive& AFXAPI operator>>(CArchive& ar, CObject*& pOb);

// The length prefix of a text, in characters. nCharSize becomes 1 or 2.
NRAFX_API void AFXAPI AfxWriteStringLength(CArchive& ar, UINT_PTR nLength, BOOL bUnicode);
NRAFX_API UINT_PTR AFXAPI AfxReadStringLength(CArchive& ar, int& nCharSize);
