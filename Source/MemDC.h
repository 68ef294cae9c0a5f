// CMemDC: the off-screen bitmap through which the view paints without flicker; it lives for one paint.
// Layer 7: painter.
#pragma once

#include <afxwin.h>

class CMemDC : public CDC {
public:
    // `dc` is borrowed and outlives this object. For a printer the object merely wraps it. Throws when GDI refuses.
    explicit CMemDC(CDC* dc);
    // Copies the picture to the target.
    ~CMemDC() override;
    CMemDC(const CMemDC&) = delete;
    CMemDC& operator=(const CMemDC&) = delete;

private:
    CBitmap m_Bitmap; // The size of the clip box, and one pixel where that is empty.
    CBitmap* m_pOldBitmap = nullptr;
    CDC* m_pDC;
    CRect m_Rect; // The clip box of the target; drawing coordinates still are client pixels.
    int m_bMemDC;
};
