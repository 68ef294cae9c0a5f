#include "MemDC.h"

#include <algorithm>

CMemDC::CMemDC(CDC* dc) : m_pDC(dc), m_bMemDC(!dc->IsPrinting()) {
    if (m_bMemDC == 0) {
        m_bPrinting = dc->m_bPrinting;
        m_hDC = dc->m_hDC;
        m_hAttribDC = dc->m_hAttribDC;
        return;
    }
    dc->GetClipBox(&m_Rect);
    // A paint of an empty region has an empty clip box. For a bitmap of no size GDI would return its own stock bitmap,
    // which must not be selected.
    const int width = std::max(1, m_Rect.Width());
    const int height = std::max(1, m_Rect.Height());
    if (!CreateCompatibleDC(dc) || !m_Bitmap.CreateCompatibleBitmap(dc, width, height)) {
        AfxThrowResourceException();
    }
    m_pOldBitmap = SelectObject(&m_Bitmap);
    SetWindowOrg(m_Rect.left, m_Rect.top);
}

CMemDC::~CMemDC() {
    if (m_bMemDC != 0) {
        m_pDC->BitBlt(m_Rect.left, m_Rect.top, m_Rect.Width(), m_Rect.Height(), this, m_Rect.left, m_Rect.top, SRCCOPY);
        SelectObject(m_pOldBitmap);
    } else {
        // The handles belong to the target.
        m_hDC = nullptr;
        m_hAttribDC = nullptr;
    }
}
