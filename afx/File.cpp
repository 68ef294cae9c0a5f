// CFile on a Windows handle, file status and the static file operations; CTime. Layer 1: afx.
#include "afxfile.h"

#include <memory>

namespace {

// File times count 100 ns since 1601; the other number is the seconds from 1601 to 1970.
const ULONGLONG kTicksPerSecond = 10000000;
const ULONGLONG kEpochSeconds = 11644473600ULL;

[[noreturn]] void ThrowLastError(LPCTSTR lpszFileName) {
    CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), lpszFileName);
}

// The part of a path after its last separator.
CString LastPart(const CString& strPath) {
    int i = strPath.GetLength();
    while (i > 0 && strPath[i - 1] != L'\\' && strPath[i - 1] != L'/' && strPath[i - 1] != L':') {
        --i;
    }
    return strPath.Mid(i);
}

DWORD ShareMode(UINT nOpenFlags) {
    switch (nOpenFlags & 0x70) {
    case CFile::shareDenyWrite:
        return FILE_SHARE_READ;
    case CFile::shareDenyRead:
        return FILE_SHARE_WRITE;
    case CFile::shareDenyNone:
        return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default:
        return 0;
    }
}

DWORD FileFlags(UINT nOpenFlags) {
    DWORD dwFlags = FILE_ATTRIBUTE_NORMAL;
    if (nOpenFlags & CFile::osNoBuffer) {
        dwFlags |= FILE_FLAG_NO_BUFFERING;
    }
    if (nOpenFlags & CFile::osWriteThrough) {
        dwFlags |= FILE_FLAG_WRITE_THROUGH;
    }
    if (nOpenFlags & CFile::osRandomAccess) {
        dwFlags |= FILE_FLAG_RANDOM_ACCESS;
    }
    if (nOpenFlags & CFile::osSequentialScan) {
        dwFlags |= FILE_FLAG_SEQUENTIAL_SCAN;
    }
    return dwFlags;
}

} // namespace

// ---- CTime ---------------------------------------------------------------------------------------------------------

CTime::CTime(int nYear, int nMonth, int nDay, int nHour, int nMin, int nSec) : m_time(0) {
    struct tm parts = {};
    parts.tm_year = nYear - 1900;
    parts.tm_mon = nMonth - 1;
    parts.tm_mday = nDay;
    parts.tm_hour = nHour;
    parts.tm_min = nMin;
    parts.tm_sec = nSec;
    parts.tm_isdst = -1;
    m_time = _mktime64(&parts);
    if (m_time == -1) {
        AfxThrowInvalidArgException();
    }
}

CTime::CTime(const FILETIME& fileTime) noexcept : m_time(0) {
    const ULONGLONG nTicks = (static_cast<ULONGLONG>(fileTime.dwHighDateTime) << 32) | fileTime.dwLowDateTime;
    m_time = static_cast<__time64_t>(nTicks / kTicksPerSecond) - static_cast<__time64_t>(kEpochSeconds);
}

CTime WINAPI CTime::GetCurrentTime() noexcept {
    return CTime(_time64(NULL));
}

FILETIME CTime::GetAsFileTime() const noexcept {
    const ULONGLONG nTicks = (static_cast<ULONGLONG>(m_time) + kEpochSeconds) * kTicksPerSecond;
    FILETIME fileTime;
    fileTime.dwLowDateTime = static_cast<DWORD>(nTicks & 0xFFFFFFFF);
    fileTime.dwHighDateTime = static_cast<DWORD>(nTicks >> 32);
    return fileTime;
}

bool CTime::GetAsSystemTime(SYSTEMTIME& timeDest) const {
    const FILETIME fileTime = GetAsFileTime();
    SYSTEMTIME universal;
    return FileTimeToSystemTime(&fileTime, &universal) && SystemTimeToTzSpecificLocalTime(NULL, &universal, &timeDest);
}

#define AFX_TIME_PART(function_name, field)                                                                            \
    int CTime::function_name() const {                                                                                 \
        SYSTEMTIME parts;                                                                                              \
        return GetAsSystemTime(parts) ? parts.field : 0;                                                               \
    }
AFX_TIME_PART(GetYear, wYear)
AFX_TIME_PART(GetMonth, wMonth)
AFX_TIME_PART(GetDay, wDay)
AFX_TIME_PART(GetHour, wHour)
AFX_TIME_PART(GetMinute, wMinute)
AFX_TIME_PART(GetSecond, wSecond)
#undef AFX_TIME_PART

// ---- opening and closing -------------------------------------------------------------------------------------------

IMPLEMENT_DYNAMIC(CFile, CObject)

const HANDLE CFile::hFileNull = INVALID_HANDLE_VALUE;

CFile::CFile() : m_hFile(INVALID_HANDLE_VALUE), m_bCloseOnDelete(FALSE) {}

CFile::CFile(HANDLE hFile) : m_hFile(hFile), m_bCloseOnDelete(FALSE) {}

CFile::CFile(LPCTSTR lpszFileName, UINT nOpenFlags) : m_hFile(INVALID_HANDLE_VALUE), m_bCloseOnDelete(FALSE) {
    CFileException failure;
    if (!CFile::Open(lpszFileName, nOpenFlags, &failure)) {
        AfxThrowFileException(failure.m_cause, failure.m_lOsError, failure.m_strFileName);
    }
}

CFile::~CFile() {
    if (m_bCloseOnDelete) {
        CFile::Abort();
    }
}

BOOL CFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError) {
    if (lpszFileName == NULL) {
        AfxThrowInvalidArgException();
    }
    m_hFile = INVALID_HANDLE_VALUE;
    m_bCloseOnDelete = FALSE;
    m_strFileName = AfxGetFullPath(lpszFileName);

    DWORD dwAccess = GENERIC_READ;
    if ((nOpenFlags & 3) == modeWrite) {
        dwAccess = GENERIC_WRITE;
    } else if ((nOpenFlags & 3) == modeReadWrite) {
        dwAccess = GENERIC_READ | GENERIC_WRITE;
    }
    DWORD dwCreation = OPEN_EXISTING;
    if (nOpenFlags & modeCreate) {
        dwCreation = (nOpenFlags & modeNoTruncate) ? OPEN_ALWAYS : CREATE_ALWAYS;
    }
    SECURITY_ATTRIBUTES security = {sizeof(security), NULL, (nOpenFlags & modeNoInherit) == 0};

    HANDLE hFile = ::CreateFileW(lpszFileName, dwAccess, ShareMode(nOpenFlags), &security, dwCreation,
                                 FileFlags(nOpenFlags), NULL);
    if (hFile == INVALID_HANDLE_VALUE) {
        if (pError != NULL) {
            pError->m_lOsError = static_cast<LONG>(GetLastError());
            pError->m_cause = CFileException::OsErrorToException(pError->m_lOsError);
            pError->m_strFileName = m_strFileName;
        }
        m_strFileName.Empty();
        return FALSE;
    }
    m_hFile = hFile;
    m_bCloseOnDelete = TRUE;
    return TRUE;
}

CFile* CFile::Duplicate() const {
    std::unique_ptr<CFile> file(new CFile);
    if (!::DuplicateHandle(::GetCurrentProcess(), m_hFile, ::GetCurrentProcess(), &file->m_hFile, 0, FALSE,
                           DUPLICATE_SAME_ACCESS)) {
        ThrowLastError(m_strFileName);
    }
    file->m_bCloseOnDelete = TRUE;
    file->m_strFileName = m_strFileName;
    return file.release();
}

void CFile::Close() {
    const HANDLE hFile = m_hFile;
    const CString strFileName = m_strFileName;
    m_hFile = INVALID_HANDLE_VALUE;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
    if (hFile != INVALID_HANDLE_VALUE && !::CloseHandle(hFile)) {
        ThrowLastError(strFileName);
    }
}

void CFile::Abort() noexcept {
    if (m_hFile != INVALID_HANDLE_VALUE) {
        ::CloseHandle(m_hFile);
    }
    m_hFile = INVALID_HANDLE_VALUE;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
}

// ---- reading and writing -------------------------------------------------------------------------------------------

ULONGLONG CFile::GetPosition() const {
    LARGE_INTEGER position;
    const LARGE_INTEGER none = {};
    if (!::SetFilePointerEx(m_hFile, none, &position, FILE_CURRENT)) {
        ThrowLastError(m_strFileName);
    }
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetLength() const {
    LARGE_INTEGER length;
    if (!::GetFileSizeEx(m_hFile, &length)) {
        ThrowLastError(m_strFileName);
    }
    return static_cast<ULONGLONG>(length.QuadPart);
}

void CFile::SetLength(ULONGLONG dwNewLen) {
    Seek(static_cast<LONGLONG>(dwNewLen), begin);
    if (!::SetEndOfFile(m_hFile)) {
        ThrowLastError(m_strFileName);
    }
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom) {
    if (nFrom > end) {
        AfxThrowInvalidArgException();
    }
    LARGE_INTEGER offset;
    LARGE_INTEGER position;
    offset.QuadPart = lOff;
    if (!::SetFilePointerEx(m_hFile, offset, &position, nFrom)) {
        const DWORD dwError = GetLastError();
        // A place before the beginning is reported as a bad parameter by some file systems.
        if (dwError == ERROR_INVALID_PARAMETER) {
            AfxThrowFileException(CFileException::badSeek, static_cast<LONG>(dwError), m_strFileName);
        }
        CFileException::ThrowOsError(static_cast<LONG>(dwError), m_strFileName);
    }
    return static_cast<ULONGLONG>(position.QuadPart);
}

UINT CFile::Read(void* lpBuf, UINT nCount) {
    if (nCount == 0) {
        return 0;
    }
    if (lpBuf == NULL) {
        AfxThrowInvalidArgException();
    }
    DWORD dwRead = 0;
    if (!::ReadFile(m_hFile, lpBuf, nCount, &dwRead, NULL)) {
        ThrowLastError(m_strFileName);
    }
    return dwRead;
}

void CFile::Write(const void* lpBuf, UINT nCount) {
    if (nCount == 0) {
        return;
    }
    if (lpBuf == NULL) {
        AfxThrowInvalidArgException();
    }
    DWORD dwWritten = 0;
    if (!::WriteFile(m_hFile, lpBuf, nCount, &dwWritten, NULL)) {
        ThrowLastError(m_strFileName);
    }
    // Windows calls a write that was cut short a success.
    if (dwWritten != nCount) {
        AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
    }
}

void CFile::Flush() {
    if (m_hFile != INVALID_HANDLE_VALUE && !::FlushFileBuffers(m_hFile)) {
        ThrowLastError(m_strFileName);
    }
}

void CFile::LockRange(ULONGLONG dwPos, ULONGLONG dwCount) {
    if (!::LockFile(m_hFile, static_cast<DWORD>(dwPos), static_cast<DWORD>(dwPos >> 32), static_cast<DWORD>(dwCount),
                    static_cast<DWORD>(dwCount >> 32))) {
        ThrowLastError(m_strFileName);
    }
}

void CFile::UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) {
    if (!::UnlockFile(m_hFile, static_cast<DWORD>(dwPos), static_cast<DWORD>(dwPos >> 32), static_cast<DWORD>(dwCount),
                      static_cast<DWORD>(dwCount >> 32))) {
        ThrowLastError(m_strFileName);
    }
}

// ---- names and status ----------------------------------------------------------------------------------------------

CString CFile::GetFileName() const {
    return LastPart(m_strFileName);
}

CString CFile::GetFileTitle() const {
    CString strName = LastPart(m_strFileName);
    const int iDot = strName.ReverseFind(L'.');
    return iDot > 0 ? strName.Left(iDot) : strName;
}

CString CFile::GetFilePath() const {
    return m_strFileName;
}

void CFile::SetFilePath(LPCTSTR lpszNewName) {
    m_strFileName = lpszNewName;
}

BOOL CFile::GetStatus(CFileStatus& rStatus) const {
    rStatus = CFileStatus();
    lstrcpynW(rStatus.m_szFullName, m_strFileName, _countof(rStatus.m_szFullName));
    if (m_hFile == INVALID_HANDLE_VALUE) {
        return TRUE; // a file in memory: nothing more to tell
    }
    BY_HANDLE_FILE_INFORMATION info;
    if (!::GetFileInformationByHandle(m_hFile, &info)) {
        return FALSE;
    }
    rStatus.m_ctime = CTime(info.ftCreationTime);
    rStatus.m_mtime = CTime(info.ftLastWriteTime);
    rStatus.m_atime = CTime(info.ftLastAccessTime);
    rStatus.m_size = (static_cast<ULONGLONG>(info.nFileSizeHigh) << 32) | info.nFileSizeLow;
    rStatus.m_attribute = static_cast<BYTE>(info.dwFileAttributes & 0x3F);
    return TRUE;
}

BOOL PASCAL CFile::GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus) {
    WIN32_FILE_ATTRIBUTE_DATA info;
    if (lpszFileName == NULL || !::GetFileAttributesExW(lpszFileName, GetFileExInfoStandard, &info)) {
        return FALSE;
    }
    rStatus = CFileStatus();
    lstrcpynW(rStatus.m_szFullName, AfxGetFullPath(lpszFileName), _countof(rStatus.m_szFullName));
    rStatus.m_ctime = CTime(info.ftCreationTime);
    rStatus.m_mtime = CTime(info.ftLastWriteTime);
    rStatus.m_atime = CTime(info.ftLastAccessTime);
    rStatus.m_size = (static_cast<ULONGLONG>(info.nFileSizeHigh) << 32) | info.nFileSizeLow;
    rStatus.m_attribute = static_cast<BYTE>(info.dwFileAttributes & 0x3F);
    return TRUE;
}

void PASCAL CFile::SetStatus(LPCTSTR lpszFileName, const CFileStatus& status) {
    const DWORD dwOld = ::GetFileAttributesW(lpszFileName);
    if (dwOld == INVALID_FILE_ATTRIBUTES) {
        ThrowLastError(lpszFileName);
    }
    const DWORD dwNew = status.m_attribute & 0x27; // what may be set: read-only, hidden, system, archive
    // A read-only file takes no new times: the attribute is removed first and set last.
    if (dwNew != (dwOld & 0x27) && (dwOld & FILE_ATTRIBUTE_READONLY) != 0 &&
        !::SetFileAttributesW(lpszFileName, dwOld & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY))) {
        ThrowLastError(lpszFileName);
    }
    if (status.m_mtime.GetTime() != 0) {
        const FILETIME written = status.m_mtime.GetAsFileTime();
        const FILETIME created = status.m_ctime.GetAsFileTime();
        const FILETIME used = status.m_atime.GetAsFileTime();
        HANDLE hFile = ::CreateFileW(lpszFileName, FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, NULL,
                                     OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, NULL);
        if (hFile == INVALID_HANDLE_VALUE) {
            ThrowLastError(lpszFileName);
        }
        const BOOL bSet = ::SetFileTime(hFile, status.m_ctime.GetTime() != 0 ? &created : NULL,
                                        status.m_atime.GetTime() != 0 ? &used : NULL, &written);
        const DWORD dwError = GetLastError();
        ::CloseHandle(hFile);
        if (!bSet) {
            CFileException::ThrowOsError(static_cast<LONG>(dwError), lpszFileName);
        }
    }
    if (dwNew != (dwOld & 0x27) && !::SetFileAttributesW(lpszFileName, dwNew == 0 ? FILE_ATTRIBUTE_NORMAL : dwNew)) {
        ThrowLastError(lpszFileName);
    }
}

void PASCAL CFile::Rename(LPCTSTR lpszOldName, LPCTSTR lpszNewName) {
    if (!::MoveFileW(lpszOldName, lpszNewName)) {
        ThrowLastError(lpszOldName);
    }
}

void PASCAL CFile::Remove(LPCTSTR lpszFileName) {
    if (!::DeleteFileW(lpszFileName)) {
        ThrowLastError(lpszFileName);
    }
}

CString AFXAPI AfxGetFullPath(LPCTSTR lpszFileName) {
    CString strFull;
    const DWORD nNeeded = ::GetFullPathNameW(lpszFileName, 0, NULL, NULL);
    if (nNeeded == 0) {
        return CString(lpszFileName);
    }
    const DWORD nLength = ::GetFullPathNameW(lpszFileName, nNeeded, strFull.GetBuffer(static_cast<int>(nNeeded)), NULL);
    strFull.ReleaseBuffer();
    return nLength == 0 || nLength >= nNeeded ? CString(lpszFileName) : strFull;
}
