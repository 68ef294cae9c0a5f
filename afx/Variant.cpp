// COleVariant and COleException. Layer 1: afx.
#include "afxdisp.h"

#include <cstring>

// ---- COleException -------------------------------------------------------------------------------------------------

IMPLEMENT_DYNAMIC(COleException, CException)

COleException::COleException() : m_sc(S_OK) {}

BOOL COleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    if (pnHelpContext != NULL) {
        *pnHelpContext = 0;
    }
    if (lpszError == NULL || nMaxError == 0) {
        return FALSE;
    }
    lpszError[0] = 0;
    return ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, NULL, static_cast<DWORD>(m_sc),
                            0, lpszError, nMaxError, NULL) != 0;
}

SCODE PASCAL COleException::Process(const CException* pAnyException) {
    if (pAnyException == NULL) {
        return E_UNEXPECTED;
    }
    if (pAnyException->IsKindOf(RUNTIME_CLASS(COleException))) {
        return static_cast<const COleException*>(pAnyException)->m_sc;
    }
    if (pAnyException->IsKindOf(RUNTIME_CLASS(CMemoryException))) {
        return E_OUTOFMEMORY;
    }
    if (pAnyException->IsKindOf(RUNTIME_CLASS(CNotSupportedException))) {
        return E_NOTIMPL;
    }
    if (pAnyException->IsKindOf(RUNTIME_CLASS(CInvalidArgException))) {
        return E_INVALIDARG;
    }
    return E_UNEXPECTED;
}

void AFXAPI AfxThrowOleException(SCODE sc) {
    COleException* pException = new COleException;
    pException->m_sc = sc;
    throw pException;
}

void AFXAPI AfxCheckError(SCODE sc) {
    if (SUCCEEDED(sc)) {
        return;
    }
    if (sc == E_OUTOFMEMORY) {
        AfxThrowMemoryException();
    }
    AfxThrowOleException(sc);
}

// ---- construction --------------------------------------------------------------------------------------------------

COleVariant::COleVariant() {
    ::VariantInit(this);
}

COleVariant::COleVariant(const VARIANT& varSrc) : COleVariant() {
    AfxCheckError(::VariantCopy(this, const_cast<VARIANT*>(&varSrc)));
}

COleVariant::COleVariant(LPCVARIANT pSrc) : COleVariant() {
    AfxCheckError(::VariantCopy(this, const_cast<VARIANT*>(pSrc)));
}

COleVariant::COleVariant(const COleVariant& varSrc) : COleVariant(static_cast<const VARIANT&>(varSrc)) {}

COleVariant::COleVariant(COleVariant&& varSrc) noexcept {
    memcpy(static_cast<VARIANT*>(this), static_cast<VARIANT*>(&varSrc), sizeof(VARIANT));
    varSrc.vt = VT_EMPTY;
}

COleVariant::COleVariant(LPCTSTR lpszSrc) : COleVariant() {
    SetString(lpszSrc, VT_BSTR);
}

COleVariant::COleVariant(LPCTSTR lpszSrc, VARTYPE vtSrc) : COleVariant() {
    SetString(lpszSrc, vtSrc);
}

COleVariant::COleVariant(CString& strSrc) : COleVariant() {
    *this = strSrc;
}

COleVariant::COleVariant(BYTE nSrc) : COleVariant() {
    vt = VT_UI1;
    bVal = nSrc;
}

COleVariant::COleVariant(short nSrc, VARTYPE vtSrc) : COleVariant() {
    if (vtSrc == VT_BOOL) {
        vt = VT_BOOL;
        boolVal = nSrc != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (vtSrc == VT_I2) {
        vt = VT_I2;
        iVal = nSrc;
    } else {
        AfxThrowInvalidArgException();
    }
}

COleVariant::COleVariant(long lSrc, VARTYPE vtSrc) : COleVariant() {
    if (vtSrc == VT_BOOL) {
        vt = VT_BOOL;
        boolVal = lSrc != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (vtSrc == VT_ERROR) {
        vt = VT_ERROR;
        scode = lSrc;
    } else if (vtSrc == VT_I4) {
        vt = VT_I4;
        lVal = lSrc;
    } else {
        AfxThrowInvalidArgException();
    }
}

COleVariant::COleVariant(LONGLONG nSrc) : COleVariant() {
    vt = VT_I8;
    llVal = nSrc;
}

COleVariant::COleVariant(ULONGLONG nSrc) : COleVariant() {
    vt = VT_UI8;
    ullVal = nSrc;
}

COleVariant::COleVariant(float fltSrc) : COleVariant() {
    vt = VT_R4;
    fltVal = fltSrc;
}

COleVariant::COleVariant(double dblSrc) : COleVariant() {
    vt = VT_R8;
    dblVal = dblSrc;
}

COleVariant::~COleVariant() {
    ::VariantClear(this);
}

// ---- assignment ----------------------------------------------------------------------------------------------------

void COleVariant::Retype(VARTYPE vartype) {
    if (vt != vartype) {
        Clear();
        vt = vartype;
    }
}

COleVariant& COleVariant::operator=(const VARIANT& varSrc) {
    if (static_cast<VARIANT*>(this) != &varSrc) {
        AfxCheckError(::VariantCopy(this, const_cast<VARIANT*>(&varSrc)));
    }
    return *this;
}

COleVariant& COleVariant::operator=(LPCVARIANT pSrc) {
    return *this = *pSrc;
}

COleVariant& COleVariant::operator=(const COleVariant& varSrc) {
    return *this = static_cast<const VARIANT&>(varSrc);
}

COleVariant& COleVariant::operator=(LPCTSTR lpszSrc) {
    SetString(lpszSrc, VT_BSTR);
    return *this;
}

COleVariant& COleVariant::operator=(const CString& strSrc) {
    BSTR bstr = strSrc.AllocSysString();
    Clear();
    vt = VT_BSTR;
    bstrVal = bstr;
    return *this;
}

COleVariant& COleVariant::operator=(BYTE nSrc) {
    Retype(VT_UI1);
    bVal = nSrc;
    return *this;
}

COleVariant& COleVariant::operator=(short nSrc) {
    if (vt == VT_BOOL) {
        boolVal = nSrc != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    } else {
        Retype(VT_I2);
        iVal = nSrc;
    }
    return *this;
}

COleVariant& COleVariant::operator=(long lSrc) {
    if (vt == VT_BOOL) {
        boolVal = lSrc != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (vt == VT_ERROR) {
        scode = lSrc;
    } else {
        Retype(VT_I4);
        lVal = lSrc;
    }
    return *this;
}

COleVariant& COleVariant::operator=(LONGLONG nSrc) {
    Retype(VT_I8);
    llVal = nSrc;
    return *this;
}

COleVariant& COleVariant::operator=(ULONGLONG nSrc) {
    Retype(VT_UI8);
    ullVal = nSrc;
    return *this;
}

COleVariant& COleVariant::operator=(float fltSrc) {
    Retype(VT_R4);
    fltVal = fltSrc;
    return *this;
}

COleVariant& COleVariant::operator=(double dblSrc) {
    Retype(VT_R8);
    dblVal = dblSrc;
    return *this;
}

void COleVariant::SetString(LPCTSTR lpszSrc, VARTYPE vtSrc) {
    BSTR bstr = NULL;
    if (vtSrc == VT_BSTR) {
        if (lpszSrc != NULL) {
            bstr = ::SysAllocString(lpszSrc);
        }
    } else if (vtSrc == VT_BSTRT) {
        if (lpszSrc != NULL) {
            const CStringA strNarrow(lpszSrc);
            bstr = ::SysAllocStringByteLen(strNarrow, static_cast<UINT>(strNarrow.GetLength()));
        }
    } else {
        AfxThrowInvalidArgException();
    }
    if (lpszSrc != NULL && bstr == NULL) {
        AfxThrowMemoryException();
    }
    Clear(); // only now: the text may have been this variant's own
    vt = VT_BSTR;
    bstrVal = bstr;
}

// ---- comparison, conversion, ownership -----------------------------------------------------------------------------

BOOL COleVariant::operator==(const VARIANT& varSrc) const {
    if (static_cast<const VARIANT*>(this) == &varSrc) {
        return TRUE;
    }
    if (vt != varSrc.vt) {
        return FALSE;
    }
    switch (vt) {
    case VT_EMPTY:
    case VT_NULL:
        return TRUE;
    case VT_BOOL:
        return boolVal == varSrc.boolVal;
    case VT_UI1:
    case VT_I1:
        return bVal == varSrc.bVal;
    case VT_I2:
    case VT_UI2:
        return iVal == varSrc.iVal;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
        return lVal == varSrc.lVal;
    case VT_I8:
    case VT_UI8:
        return llVal == varSrc.llVal;
    case VT_CY:
        return cyVal.int64 == varSrc.cyVal.int64;
    case VT_R4:
        return fltVal == varSrc.fltVal;
    case VT_R8:
        return dblVal == varSrc.dblVal;
    case VT_DATE:
        return date == varSrc.date;
    case VT_BSTR: {
        const UINT nBytes = ::SysStringByteLen(bstrVal);
        return nBytes == ::SysStringByteLen(varSrc.bstrVal) &&
               (nBytes == 0 || memcmp(bstrVal, varSrc.bstrVal, nBytes) == 0);
    }
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return punkVal == varSrc.punkVal;
    default:
        return (vt & VT_BYREF) != 0 && byref == varSrc.byref;
    }
}

BOOL COleVariant::operator==(LPCVARIANT pSrc) const {
    return *this == *pSrc;
}

void COleVariant::Clear() {
    AfxCheckError(::VariantClear(this));
}

void COleVariant::ChangeType(VARTYPE vartype, LPVARIANT pSrc) {
    if (pSrc == NULL) {
        pSrc = this;
    }
    if (pSrc->vt != vartype) {
        AfxCheckError(::VariantChangeType(this, pSrc, 0, vartype));
    } else if (pSrc != static_cast<VARIANT*>(this)) {
        AfxCheckError(::VariantCopy(this, pSrc));
    }
}

void COleVariant::Attach(VARIANT& varSrc) {
    if (static_cast<VARIANT*>(this) == &varSrc) {
        return;
    }
    Clear();
    memcpy(static_cast<VARIANT*>(this), &varSrc, sizeof(VARIANT));
    varSrc.vt = VT_EMPTY;
}

VARIANT COleVariant::Detach() {
    VARIANT value = *this;
    vt = VT_EMPTY;
    return value;
}
