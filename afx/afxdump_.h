// CDumpContext: a stream of readable text about objects, for diagnosis. Included by afx.h.
// Classes: CDumpContext.
// Layer 1: afx.
#pragma once

#include "afxapi.h"

class CFile;
class CObject;

class NRAFX_API CDumpContext {
public:
    // The file must exist as long as the context; NULL: the debugger's output.
    explicit CDumpContext(CFile* pFile = NULL);
    CDumpContext(const CDumpContext&) = delete;
    CDumpContext& operator=(const CDumpContext&) = delete;

    CFile* m_pFile;

    // Above 0 an object that holds others dumps those too.
    int GetDepth() const { return m_nDepth; }
    void SetDepth(int nNewDepth) { m_nDepth = nNewDepth; }
    void Flush();

    // Text is written to a file in the system's code page. Throws CFileException.
    CDumpContext& operator<<(LPCTSTR lpsz);
    CDumpContext& operator<<(const void* lp);     // the address in hexadecimal digits after a $
    CDumpContext& operator<<(const CObject* pOb); // its Dump; "NULL" for none
    CDumpContext& operator<<(const CObject& ob);
    CDumpContext& operator<<(BYTE by);
    CDumpContext& operator<<(WORD w);
    CDumpContext& operator<<(int n);
    CDumpContext& operator<<(UINT u);
    CDumpContext& operator<<(LONG l);
    CDumpContext& operator<<(DWORD dw);
    CDumpContext& operator<<(LONGLONG n);
    CDumpContext& operator<<(ULONGLONG n);
    CDumpContext& operator<<(float f);
    CDumpContext& operator<<(double d);

private:
    int m_nDepth;
};

NRAFX_API extern CDumpContext afxDump; // to the debugger
