// The exception classes, their texts, and the functions that throw them. Layer 1: afx.
#include "AfxInternal.h"
#include "afxexcept.h"
#include "afxres.h"

#include <cerrno>
#include <cstdlib>

namespace {

HINSTANCE FindInProgram(UINT) {
    return GetModuleHandleW(NULL);
}

int PlainMessageBox(LPCTSTR lpszText, UINT nType) {
    return ::MessageBoxW(NULL, lpszText, L"", nType);
}

// Copies a string resource without allocating; with no number, or when there is no such string, an empty text.
BOOL CopyMessage(UINT nMessage, LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) {
    if (pnHelpContext != NULL) {
        *pnHelpContext = 0;
    }
    if (lpszError == NULL || nMaxError == 0) {
        return FALSE;
    }
    lpszError[0] = 0;
    const HINSTANCE hModule = nMessage == 0 ? NULL : afxWindowHooks.findStringResource(nMessage);
    return hModule != NULL && ::LoadStringW(hModule, nMessage, lpszError, static_cast<int>(nMaxError)) > 0;
}

// Causes are numbered from 0 without gaps; their texts are the string resources from nFirst on.
BOOL CopyCause(UINT nFirst, int nCauses, int cause, const CString& strFileName, LPTSTR lpszError, UINT nMaxError,
               PUINT pnHelpContext) {
    if (!CopyMessage(AFX_IDS_NAME_AND_CAUSE, lpszError, nMaxError, pnHelpContext)) {
        return FALSE;
    }
    CString strMessage, strCause, strName = strFileName;
    strMessage.LoadString(AFX_IDS_NAME_AND_CAUSE);
    strCause.LoadString(nFirst + static_cast<UINT>(cause >= 0 && cause < nCauses ? cause : 1));
    if (strName.IsEmpty()) {
        strName.LoadString(AFX_IDS_UNNAMED_FILE);
    }
    strMessage.Replace(L"%2", strCause);
    strMessage.Replace(L"%1", strName);
    lstrcpynW(lpszError, strMessage, static_cast<int>(nMaxError));
    return TRUE;
}

} // namespace

AfxWindowHooks afxWindowHooks = {FindInProgram, PlainMessageBox};

// ---- CException ----------------------------------------------------------------------------------------------------

IMPLEMENT_DYNAMIC(CException, CObject)

CException::CException() : m_bAutoDelete(TRUE) {}

CException::CException(BOOL bAutoDelete) : m_bAutoDelete(bAutoDelete) {}

CException::~CException() {}

void CException::Delete() {
    if (m_bAutoDelete) {
        delete this;
    }
}

BOOL CException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    return CopyMessage(0, lpszError, nMaxError, pnHelpContext);
}

int CException::ReportError(UINT nType, UINT nError) {
    TCHAR szText[512];
    if (GetErrorMessage(szText, _countof(szText))) {
        return afxWindowHooks.messageBox(szText, nType);
    }
    CString strText;
    if (nError == 0 || !strText.LoadString(nError)) {
        strText.LoadString(AFX_IDS_UNKNOWN_ERROR);
    }
    return afxWindowHooks.messageBox(strText, nType);
}

// ---- exceptions without data ---------------------------------------------------------------------------------------

IMPLEMENT_DYNAMIC(CSimpleException, CException)

CSimpleException::CSimpleException() : m_nMessage(0) {}

CSimpleException::CSimpleException(BOOL bAutoDelete) : CException(bAutoDelete), m_nMessage(0) {}

CSimpleException::CSimpleException(BOOL bAutoDelete, UINT nMessage) : CException(bAutoDelete), m_nMessage(nMessage) {}

BOOL CSimpleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    return CopyMessage(m_nMessage, lpszError, nMaxError, pnHelpContext);
}

// Thrown from static objects, since there may be no memory left to make one.
#define AFX_SIMPLE_EXCEPTION(class_name, function_name, nText)                                                         \
    IMPLEMENT_DYNAMIC(class_name, CSimpleException)                                                                    \
    class_name::class_name() : class_name(TRUE) {}                                                                     \
    class_name::class_name(BOOL bAutoDelete) : CSimpleException(bAutoDelete, nText) {}                                 \
    static class_name the##class_name(FALSE);                                                                          \
    void AFXAPI function_name() {                                                                                      \
        throw &the##class_name;                                                                                        \
    }

AFX_SIMPLE_EXCEPTION(CMemoryException, AfxThrowMemoryException, AFX_IDS_OUT_OF_MEMORY)
AFX_SIMPLE_EXCEPTION(CNotSupportedException, AfxThrowNotSupportedException, AFX_IDS_NOT_SUPPORTED)
AFX_SIMPLE_EXCEPTION(CResourceException, AfxThrowResourceException, AFX_IDS_NO_RESOURCE)
AFX_SIMPLE_EXCEPTION(CInvalidArgException, AfxThrowInvalidArgException, AFX_IDS_INVALID_ARGUMENT)
// The user has been informed of what was cancelled already.
AFX_SIMPLE_EXCEPTION(CUserException, AfxThrowUserException, 0)

// ---- CArchiveException ---------------------------------------------------------------------------------------------

IMPLEMENT_DYNAMIC(CArchiveException, CException)

CArchiveException::CArchiveException(int cause, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_strFileName(lpszArchiveName) {}

BOOL CArchiveException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    return CopyCause(AFX_IDS_ARCHIVE_CAUSE, 8, m_cause, m_strFileName, lpszError, nMaxError, pnHelpContext);
}

void AFXAPI AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName) {
    throw new CArchiveException(cause, lpszArchiveName);
}

// ---- CFileException ------------------------------------------------------------------------------------------------

IMPLEMENT_DYNAMIC(CFileException, CException)

CFileException::CFileException(int cause, LONG lOsError, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszArchiveName) {}

BOOL CFileException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    return CopyCause(AFX_IDS_FILE_CAUSE, 15, m_cause, m_strFileName, lpszError, nMaxError, pnHelpContext);
}

int PASCAL CFileException::OsErrorToException(LONG lOsError) {
    switch (lOsError) {
    case NO_ERROR:
        return none;
    case ERROR_FILE_NOT_FOUND:
        return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_NO_MORE_FILES:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
        return badPath;
    case ERROR_TOO_MANY_OPEN_FILES:
    case ERROR_SHARING_BUFFER_EXCEEDED:
        return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_INVALID_ACCESS:
    case ERROR_WRITE_PROTECT:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
    case ERROR_CANNOT_MAKE:
        return accessDenied;
    case ERROR_INVALID_HANDLE:
    case ERROR_INVALID_TARGET_HANDLE:
    case ERROR_DIRECT_ACCESS_HANDLE:
        return invalidFile;
    case ERROR_CURRENT_DIRECTORY:
        return removeCurrentDir;
    case ERROR_DIR_NOT_EMPTY:
        return directoryFull;
    case ERROR_SEEK:
    case ERROR_SEEK_ON_DEVICE:
    case ERROR_NEGATIVE_SEEK:
        return badSeek;
    case ERROR_NOT_READY:
    case ERROR_BAD_COMMAND:
    case ERROR_CRC:
    case ERROR_BAD_LENGTH:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
    case ERROR_GEN_FAILURE:
    case ERROR_IO_DEVICE:
        return hardIO;
    case ERROR_SHARING_VIOLATION:
        return sharingViolation;
    case ERROR_LOCK_VIOLATION:
    case ERROR_LOCK_FAILED:
    case ERROR_NOT_LOCKED:
    case ERROR_DRIVE_LOCKED:
        return lockViolation;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return diskFull;
    case ERROR_HANDLE_EOF:
        return endOfFile;
    default:
        return genericException;
    }
}

int PASCAL CFileException::ErrnoToException(int nErrno) {
    switch (nErrno) {
    case 0:
        return none;
    case EPERM:
    case EACCES:
        return accessDenied;
    case EBADF:
        return invalidFile;
    case EDEADLOCK:
        return sharingViolation;
    case EMFILE:
    case ENFILE:
        return tooManyOpenFiles;
    case ENOENT:
        return fileNotFound;
    case ENOSPC:
        return diskFull;
    case EINVAL:
    case EIO:
        return hardIO;
    default:
        return genericException;
    }
}

void PASCAL CFileException::ThrowOsError(LONG lOsError, LPCTSTR lpszFileName) {
    AfxThrowFileException(OsErrorToException(lOsError), lOsError, lpszFileName);
}

void PASCAL CFileException::ThrowErrno(int nErrno, LPCTSTR lpszFileName) {
    AfxThrowFileException(ErrnoToException(nErrno), static_cast<LONG>(_doserrno), lpszFileName);
}

void AFXAPI AfxThrowFileException(int cause, LONG lOsError, LPCTSTR lpszFileName) {
    throw new CFileException(cause, lOsError, lpszFileName);
}

void AFXAPI AfxAbort() {
    abort();
}
