// CMemDC: the off-screen bitmap through which the view paints without flicker; it exists for one paint.
// Layer 7: painter.
#pragma once

#include <afxwin.h>

class CMemDC : public CDC {
public:
    // `dc` is borrowed and must exist as long as this object. A printer is not buffered: this object then draws
    // straight into it. Throws the resource exception when GDI makes no context or bitmap.
    explicit CMemDC(CDC* dc);
    // Copies the picture to the target.
    ~CMemDC() override;
    CMemDC(const CMemDC&) = delete;
    CMemDC& operator=(const CMemDC&) = delete;

    // What the bitmap shows, in pixels of the target; empty for a printer.
    const CRect& GetRect() const { return m_Rect; }

private:
    CBitmap m_Bitmap; // As large as the clip box, and at least one pixel wide and high.
    CBitmap* m_pOldBitmap = nullptr;
    CDC* m_pDC;
    CRect m_Rect; // The clip box of the target, whose coordinates also are those of this context.
    int m_bMemDC; // 0: a printer.
};
