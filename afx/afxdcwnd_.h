// The device contexts of windows, and of metafiles. Included by afxwin.h.
// Classes: CClientDC, CWindowDC, CPaintDC, CMetaFileDC.
// Layer 1: afx.
#pragma once

#include "afxdc_.h"

// The client area of a window for as long as the object lives. Throws when Windows gives no context.
class NRAFX_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* pWnd); // null: the screen
    virtual ~CClientDC();

protected:
    HWND m_hWnd;
};

// The whole window, frame included.
class NRAFX_API CWindowDC : public CDC {
    DECLARE_DYNAMIC(CWindowDC)
public:
    explicit CWindowDC(CWnd* pWnd);
    virtual ~CWindowDC();

protected:
    HWND m_hWnd;
};

// BeginPaint to EndPaint; only while answering WM_PAINT.
class NRAFX_API CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)
public:
    explicit CPaintDC(CWnd* pWnd);
    virtual ~CPaintDC();
    PAINTSTRUCT m_ps;

protected:
    HWND m_hWnd;
};

// Records into a metafile. Close gives the metafile, which the caller then owns.
class NRAFX_API CMetaFileDC : public CDC {
    DECLARE_DYNAMIC(CMetaFileDC)
public:
    CMetaFileDC() = default;
    virtual ~CMetaFileDC();
    BOOL Create(LPCTSTR lpszFilename = nullptr);
    BOOL CreateEnhanced(CDC* pDCRef, LPCTSTR lpszFileName, LPCRECT lpBounds, LPCTSTR lpszDescription);
    HMETAFILE Close();
    HENHMETAFILE CloseEnhanced();
};
