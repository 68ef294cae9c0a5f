// The exception family. Exceptions are thrown as pointers; code that catches one calls Delete() on it, or lets the
// CATCH macros do it.
// Classes: CException, CSimpleException, CArchiveException, CFileException.
// Layer 1: afx.
#pragma once

#include "afxobject.h"
#include "cstringt.h"

class NRAFX_API CException : public CObject {
    DECLARE_DYNAMIC(CException)
public:
    CException();
    explicit CException(BOOL bAutoDelete); // FALSE: not on the heap, Delete leaves it alone
    ~CException() override;

    void Delete();
    // Writes at most nMaxError characters with the ending zero, in the language of the user interface; FALSE and an
    // empty text when there is none.
    virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const;
    // Shows the text, or the string resource nError when the exception has none; returns the button.
    virtual int ReportError(UINT nType = MB_OK, UINT nError = 0);

    BOOL m_bAutoDelete;
};

// Exceptions with no data but a text among the string resources.
class NRAFX_API CSimpleException : public CException {
    DECLARE_DYNAMIC(CSimpleException)
public:
    CSimpleException();
    explicit CSimpleException(BOOL bAutoDelete);
    CSimpleException(BOOL bAutoDelete, UINT nMessage); // 0: no text
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

private:
    UINT m_nMessage;
};

#define AFX_SIMPLE_EXCEPTION(class_name)                                                                               \
    class NRAFX_API class_name : public CSimpleException {                                                             \
        DECLARE_DYNAMIC(class_name)                                                                                    \
    public:                                                                                                            \
        class_name();                                                                                                  \
        explicit class_name(BOOL bAutoDelete);                                                                         \
    };
AFX_SIMPLE_EXCEPTION(CMemoryException)
AFX_SIMPLE_EXCEPTION(CNotSupportedException)
AFX_SIMPLE_EXCEPTION(CResourceException)
AFX_SIMPLE_EXCEPTION(CUserException)
AFX_SIMPLE_EXCEPTION(CInvalidArgException)
#undef AFX_SIMPLE_EXCEPTION

class NRAFX_API CArchiveException : public CException {
    DECLARE_DYNAMIC(CArchiveException)
public:
    enum {
        none,
        genericException,
        readOnly,  // tried to write into an archive that loads
        endOfFile, // the data ended too early
        writeOnly, // tried to read from an archive that stores
        badIndex,  // an object or class number that the stream never gave out
        badClass,  // an unknown class, or one of another kind than requested
        badSchema  // a version of a class that its code can't read
    };
    explicit CArchiveException(int cause = CArchiveException::none, LPCTSTR lpszArchiveName = NULL);
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

    int m_cause;
    CString m_strFileName;
};

class NRAFX_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)
public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };
    explicit CFileException(int cause = CFileException::none, LONG lOsError = -1, LPCTSTR lpszArchiveName = NULL);
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

    static int PASCAL OsErrorToException(LONG lOsError); // a system error number to a cause
    static int PASCAL ErrnoToException(int nErrno);
    [[noreturn]] static void PASCAL ThrowOsError(LONG lOsError, LPCTSTR lpszFileName = NULL);
    [[noreturn]] static void PASCAL ThrowErrno(int nErrno, LPCTSTR lpszFileName = NULL);

    int m_cause;
    LONG m_lOsError; // the system's error number, -1 when there is none
    CString m_strFileName;
};

[[noreturn]] NRAFX_API void AFXAPI AfxThrowMemoryException();
[[noreturn]] NRAFX_API void AFXAPI AfxThrowNotSupportedException();
[[noreturn]] NRAFX_API void AFXAPI AfxThrowResourceException();
[[noreturn]] NRAFX_API void AFXAPI AfxThrowUserException();
[[noreturn]] NRAFX_API void AFXAPI AfxThrowInvalidArgException();
[[noreturn]] NRAFX_API void AFXAPI AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName = NULL);
[[noreturn]] NRAFX_API void AFXAPI AfxThrowFileException(int cause, LONG lOsError = -1, LPCTSTR lpszFileName = NULL);
NRAFX_API void AFXAPI AfxAbort();

// Deletes a caught exception at the end of its CATCH block, unless THROW_LAST passes it on.
struct AFX_EXCEPTION_LINK {
    explicit AFX_EXCEPTION_LINK(CException* pException) : m_pException(pException) {}
    ~AFX_EXCEPTION_LINK() {
        if (m_pException != NULL) {
            m_pException->Delete();
        }
    }
    AFX_EXCEPTION_LINK(const AFX_EXCEPTION_LINK&) = delete;
    AFX_EXCEPTION_LINK& operator=(const AFX_EXCEPTION_LINK&) = delete;
    void PassOn() { m_pException = NULL; }
    CException* m_pException;
};

#define TRY                                                                                                            \
    {                                                                                                                  \
        try {
#define CATCH(class, e)                                                                                                \
    }                                                                                                                  \
    catch (class * e) {                                                                                                \
        AFX_EXCEPTION_LINK _afxExceptionLink(e);
#define AND_CATCH(class, e) CATCH(class, e)
#define CATCH_ALL(e) CATCH(CException, e)
#define AND_CATCH_ALL(e) CATCH(CException, e)
#define END_CATCH                                                                                                      \
    }                                                                                                                  \
    }
#define END_CATCH_ALL                                                                                                  \
    }                                                                                                                  \
    }
#define END_TRY                                                                                                        \
    }                                                                                                                  \
    catch (CException * _afxException) {                                                                               \
        _afxException->Delete();                                                                                       \
    }                                                                                                                  \
    }
#define THROW(e) throw e
#define THROW_LAST()                                                                                                   \
    do {                                                                                                               \
        _afxExceptionLink.PassOn();                                                                                    \
        throw;                                                                                                         \
    } while (0)
