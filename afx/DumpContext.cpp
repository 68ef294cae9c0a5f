// CDumpContext, and the dump and validity check of every object. Layer 1: afx.
#include "afx.h"

#include <cstdio>

CDumpContext afxDump;

CDumpContext::CDumpContext(CFile* pFile) : m_pFile(pFile), m_nDepth(0) {}

void CDumpContext::Flush() {
    if (m_pFile != NULL) {
        m_pFile->Flush();
    }
}

CDumpContext& CDumpContext::operator<<(LPCTSTR lpsz) {
    if (lpsz == NULL) {
        lpsz = L"NULL";
    }
    if (m_pFile == NULL) {
        ::OutputDebugStringW(lpsz);
    } else {
        const CStringA text(lpsz);
        m_pFile->Write(text.GetString(), static_cast<UINT>(text.GetLength()));
    }
    return *this;
}

template <class T>
static CDumpContext& Write(CDumpContext& dc, LPCTSTR format, T value) {
    TCHAR text[64] = {};
    _snwprintf(text, 63, format, value);
    return dc << text;
}

CDumpContext& CDumpContext::operator<<(const void* lp) {
    return Write(*this, L"$%I64X", reinterpret_cast<ULONG_PTR>(lp));
}

CDumpContext& CDumpContext::operator<<(const CObject* pOb) {
    return pOb != NULL ? *this << *pOb : *this << L"NULL";
}

CDumpContext& CDumpContext::operator<<(const CObject& ob) {
    ob.Dump(*this);
    return *this;
}

CDumpContext& CDumpContext::operator<<(BYTE by) {
    return *this << static_cast<UINT>(by);
}

CDumpContext& CDumpContext::operator<<(WORD w) {
    return *this << static_cast<UINT>(w);
}

CDumpContext& CDumpContext::operator<<(int n) {
    return Write(*this, L"%d", n);
}

CDumpContext& CDumpContext::operator<<(UINT u) {
    return Write(*this, L"%u", u);
}

CDumpContext& CDumpContext::operator<<(LONG l) {
    return Write(*this, L"%ld", l);
}

CDumpContext& CDumpContext::operator<<(DWORD dw) {
    return Write(*this, L"%lu", dw);
}

CDumpContext& CDumpContext::operator<<(LONGLONG n) {
    return Write(*this, L"%I64d", n);
}

CDumpContext& CDumpContext::operator<<(ULONGLONG n) {
    return Write(*this, L"%I64u", n);
}

CDumpContext& CDumpContext::operator<<(float f) {
    return Write(*this, L"%g", static_cast<double>(f));
}

CDumpContext& CDumpContext::operator<<(double d) {
    return Write(*this, L"%g", d);
}

// ---- CObject -------------------------------------------------------------------------------------------------------

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext& dc) const {
    dc << L"a " << CString(GetRuntimeClass()->m_lpszClassName) << L" at " << static_cast<const void*>(this) << L"\n";
}

void AFXAPI AfxAssertValidObject(const CObject* pOb, const char* lpszFileName, int nLine) {
    if (pOb == NULL) {
        AfxAssertFailedLine(lpszFileName, nLine);
    } else {
        pOb->AssertValid();
    }
}
