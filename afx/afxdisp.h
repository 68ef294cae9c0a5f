// COleVariant: a VARIANT that owns its text and raises an exception when a conversion fails.
// Classes: COleException, COleVariant.
// Layer 1: afx.
#pragma once

#include "afxcoll.h"
#include <oleauto.h>

typedef const VARIANT* LPCVARIANT;

class NRAFX_API COleException : public CException {
    DECLARE_DYNAMIC(COleException)
public:
    COleException();
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;
    static SCODE PASCAL Process(const CException* pAnyException); // the status code of an exception

    SCODE m_sc;
};

[[noreturn]] NRAFX_API void AFXAPI AfxThrowOleException(SCODE sc);
NRAFX_API void AFXAPI AfxCheckError(SCODE sc); // raises the exception of a failing code

// An assignment of a short or a long keeps the type of a variant that already is a BOOL (or an error, for a long).
class NRAFX_API COleVariant : public tagVARIANT {
public:
    COleVariant();
    COleVariant(const VARIANT& varSrc);
    COleVariant(LPCVARIANT pSrc);
    COleVariant(const COleVariant& varSrc);
    COleVariant(COleVariant&& varSrc) noexcept;
    COleVariant(LPCTSTR lpszSrc);
    COleVariant(LPCTSTR lpszSrc, VARTYPE vtSrc); // VT_BSTR, or VT_BSTRT: the text as one-byte characters
    COleVariant(CString& strSrc);
    COleVariant(BYTE nSrc);
    COleVariant(short nSrc, VARTYPE vtSrc = VT_I2); // VT_I2 or VT_BOOL
    COleVariant(long lSrc, VARTYPE vtSrc = VT_I4);  // VT_I4, VT_ERROR or VT_BOOL
    COleVariant(LONGLONG nSrc);
    COleVariant(ULONGLONG nSrc);
    COleVariant(float fltSrc);
    COleVariant(double dblSrc);
    ~COleVariant();

    COleVariant& operator=(const VARIANT& varSrc);
    COleVariant& operator=(LPCVARIANT pSrc);
    COleVariant& operator=(const COleVariant& varSrc);
    COleVariant& operator=(LPCTSTR lpszSrc);
    COleVariant& operator=(const CString& strSrc);
    COleVariant& operator=(BYTE nSrc);
    COleVariant& operator=(short nSrc);
    COleVariant& operator=(long lSrc);
    COleVariant& operator=(LONGLONG nSrc);
    COleVariant& operator=(ULONGLONG nSrc);
    COleVariant& operator=(float fltSrc);
    COleVariant& operator=(double dblSrc);

    BOOL operator==(const VARIANT& varSrc) const; // same type and same value
    BOOL operator==(LPCVARIANT pSrc) const;
    operator LPVARIANT() { return this; }
    operator LPCVARIANT() const { return this; }

    void Clear();
    // Converts pSrc, or this variant itself, to another type; raises COleException when that can't be.
    void ChangeType(VARTYPE vartype, LPVARIANT pSrc = NULL);
    void Attach(VARIANT& varSrc); // takes the value over; varSrc is empty then
    VARIANT Detach();
    void SetString(LPCTSTR lpszSrc, VARTYPE vtSrc);

private:
    void Retype(VARTYPE vartype);
};

#ifndef VT_BSTRT
#define VT_BSTRT 82
#endif
