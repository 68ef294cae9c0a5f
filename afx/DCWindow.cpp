// Device contexts of windows, and of metafiles.
// Layer 1: afx.
#include "ThreadState.h"

IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)
IMPLEMENT_DYNAMIC(CMetaFileDC, CDC)

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(AfxHandleOf(pWnd)) {
    if (!Attach(::GetDC(m_hWnd))) {
        AfxThrowResourceException();
    }
}

CClientDC::~CClientDC() {
    if (m_hDC != nullptr) {
        ::ReleaseDC(m_hWnd, Detach());
    }
}

CWindowDC::CWindowDC(CWnd* pWnd) : m_hWnd(AfxHandleOf(pWnd)) {
    if (!Attach(::GetWindowDC(m_hWnd))) {
        AfxThrowResourceException();
    }
}

CWindowDC::~CWindowDC() {
    if (m_hDC != nullptr) {
        ::ReleaseDC(m_hWnd, Detach());
    }
}

CPaintDC::CPaintDC(CWnd* pWnd) : m_ps(), m_hWnd(AfxHandleOf(pWnd)) {
    if (!Attach(::BeginPaint(m_hWnd, &m_ps))) {
        AfxThrowResourceException();
    }
}

CPaintDC::~CPaintDC() {
    // EndPaint also when the handle was detached meanwhile: only it validates the window and shows the caret again.
    Detach();
    ::EndPaint(m_hWnd, &m_ps);
}

CMetaFileDC::~CMetaFileDC() {
    // A metafile that was not closed is deleted.
    if (m_hDC != nullptr) {
        if (::GetObjectType(m_hDC) == OBJ_ENHMETADC) {
            ::DeleteEnhMetaFile(CloseEnhanced());
        } else {
            ::DeleteMetaFile(Close());
        }
    }
}

BOOL CMetaFileDC::Create(LPCTSTR lpszFilename) {
    const BOOL done = Attach(::CreateMetaFile(lpszFilename));
    m_hAttribDC = nullptr; // the old kind answers no queries
    return done;
}

BOOL CMetaFileDC::CreateEnhanced(CDC* pDCRef, LPCTSTR lpszFileName, LPCRECT lpBounds, LPCTSTR lpszDescription) {
    return Attach(::CreateEnhMetaFile(AfxHandleOf(pDCRef), lpszFileName, lpBounds, lpszDescription));
}

HMETAFILE CMetaFileDC::Close() {
    return ::CloseMetaFile(Detach());
}

HENHMETAFILE CMetaFileDC::CloseEnhanced() {
    return ::CloseEnhMetaFile(Detach());
}
