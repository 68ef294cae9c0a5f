// Files: CFile on a Windows handle, CMemFile on a growing or a borrowed block of memory.
// Classes: CFileStatus, CFile, CMemFile.
// Layer 1: afx.
#pragma once

#include "afxexcept.h"
#include "atltime.h"

struct NRAFX_API CFileStatus {
    CTime m_ctime; // creation
    CTime m_mtime; // last modification
    CTime m_atime; // last access
    ULONGLONG m_size = 0;
    BYTE m_attribute = 0; // CFile::Attribute values
    TCHAR m_szFullName[MAX_PATH] = {};
};

// Failures of an open file raise CFileException; a short Read at the end of the file does not.
class NRAFX_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)
public:
    enum OpenFlags {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,     // makes the file; an old one is emptied
        modeNoTruncate = 0x2000, // with modeCreate: an old one is kept
        typeText = 0x4000,
        typeBinary = 0x8000,
        osNoBuffer = 0x10000,
        osWriteThrough = 0x20000,
        osRandomAccess = 0x40000,
        osSequentialScan = 0x80000
    };
    enum Attribute {
        normal = 0x00,
        readOnly = 0x01,
        hidden = 0x02,
        system = 0x04,
        volume = 0x08,
        directory = 0x10,
        archive = 0x20
    };
    enum SeekPosition { begin = 0x0, current = 0x1, end = 0x2 };

    static const HANDLE hFileNull;

    CFile();
    explicit CFile(HANDLE hFile); // borrows an open handle: the destructor does not close it, Close does
    CFile(LPCTSTR lpszFileName, UINT nOpenFlags);
    ~CFile() override;
    virtual BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = NULL); // FALSE: *pError tells
    virtual CFile* Duplicate() const;
    virtual void Close();
    virtual void Abort() noexcept; // closes, ignoring every failure
    operator HANDLE() const { return m_hFile; }

    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG dwNewLen);
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom); // the new position; beyond the end is allowed
    ULONGLONG SeekToEnd() { return Seek(0, CFile::end); }
    void SeekToBegin() { Seek(0, CFile::begin); }
    virtual UINT Read(void* lpBuf, UINT nCount); // the bytes read: fewer only at the end
    virtual void Write(const void* lpBuf, UINT nCount);
    virtual void Flush();
    virtual void LockRange(ULONGLONG dwPos, ULONGLONG dwCount);
    virtual void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount);

    virtual CString GetFileName() const; // name with extension
    virtual CString GetFileTitle() const;
    virtual CString GetFilePath() const; // in full
    virtual void SetFilePath(LPCTSTR lpszNewName);
    BOOL GetStatus(CFileStatus& rStatus) const;
    static BOOL PASCAL GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus);
    static void PASCAL SetStatus(LPCTSTR lpszFileName, const CFileStatus& status); // a zero m_mtime keeps all times
    static void PASCAL Rename(LPCTSTR lpszOldName, LPCTSTR lpszNewName);
    static void PASCAL Remove(LPCTSTR lpszFileName);

    HANDLE m_hFile; // hFileNull when not open

protected:
    BOOL m_bCloseOnDelete;
    CString m_strFileName;
};

// A file in memory. With nGrowBytes 0 the block can't grow: a write past its end raises CMemoryException.
class NRAFX_API CMemFile : public CFile {
    DECLARE_DYNAMIC(CMemFile)
public:
    explicit CMemFile(UINT nGrowBytes = 1024);
    CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    ~CMemFile() override;

    // Works on the caller's block without copying it. nGrowBytes 0: the block is the file's content and stays the
    // caller's. Else the file starts empty, and the block must come from malloc, since it may be moved.
    void Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    BYTE*
    Detach(); // gives the block to the caller, who frees it with free(); the file is empty and owns its next block

    CFile* Duplicate() const override;
    void Close() override;
    void Abort() noexcept override;
    ULONGLONG GetPosition() const override;
    ULONGLONG GetLength() const override;
    void SetLength(ULONGLONG dwNewLen) override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    void Flush() override;
    void LockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;

protected:
    virtual BYTE* Alloc(SIZE_T nBytes);
    virtual BYTE* Realloc(BYTE* lpMem, SIZE_T nBytes);
    virtual BYTE* Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes);
    virtual void Free(BYTE* lpMem);
    virtual void GrowFile(SIZE_T dwNewLen);

    UINT m_nGrowBytes;
    SIZE_T m_nPosition; // may lie beyond the end
    SIZE_T m_nBufferSize;
    SIZE_T m_nFileSize;
    BYTE* m_lpBuffer;
    BOOL m_bAutoDelete; // the block is the file's own
};

// The full form of a path, or the text itself when the system can't tell.
NRAFX_API CString AFXAPI AfxGetFullPath(LPCTSTR lpszFileName);
