// What extension modules and windows made by other code need besides afxwin.h.
// Classes: CCreateContext.
// Layer 1: afx.
#pragma once

#include "afxwin.h"

class CDocument;

// Handed through CWnd::Create to OnCreate as lpCreateParams; the fields are the caller's own.
struct CCreateContext {
    CRuntimeClass* m_pNewViewClass = nullptr;
    CDocument* m_pCurrentDoc = nullptr;
    void* m_pNewDocTemplate = nullptr;
    CWnd* m_pLastView = nullptr;
    CWnd* m_pCurrentFrame = nullptr;
};
