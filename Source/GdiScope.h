// Selections into a device context that are put back on every path, also when something throws.
// Layer: drawables.
#pragma once

#include <afxwin.h>

// Selects a pen; Restore, or the destructor where no Restore came, selects the old one back.
class CScopedPen {
public:
    CScopedPen(CDC* dc, CPen* pen) : m_pDC(dc), m_pOld(dc->SelectObject(pen)) {}
    ~CScopedPen() { Restore(); }
    CScopedPen(const CScopedPen&) = delete;
    CScopedPen& operator=(const CScopedPen&) = delete;
    void Restore() {
        if (m_pDC != nullptr) {
            CDC* dc = m_pDC;
            m_pDC = nullptr;
            dc->SelectObject(m_pOld);
        }
    }

private:
    CDC* m_pDC;
    CPen* m_pOld;
};

// Selects a stock brush. Where GDI refuses the index (15 is none) nothing was changed, and nothing is put back.
class CScopedStockBrush {
public:
    CScopedStockBrush(CDC* dc, int index) : m_pDC(dc), m_pOld(static_cast<CBrush*>(dc->SelectStockObject(index))) {}
    ~CScopedStockBrush() { Restore(); }
    CScopedStockBrush(const CScopedStockBrush&) = delete;
    CScopedStockBrush& operator=(const CScopedStockBrush&) = delete;
    void Restore() {
        if (m_pDC != nullptr && m_pOld != nullptr) {
            CDC* dc = m_pDC;
            m_pDC = nullptr;
            dc->SelectObject(m_pOld);
        }
    }

private:
    CDC* m_pDC;
    CBrush* m_pOld;
};

// Sets a raster mode; Restore, or the destructor where no Restore came, sets the old one back.
class CScopedRop {
public:
    CScopedRop(CDC* dc, int mode) : m_pDC(dc), m_OldMode(dc->SetROP2(mode)) {}
    ~CScopedRop() { Restore(); }
    CScopedRop(const CScopedRop&) = delete;
    CScopedRop& operator=(const CScopedRop&) = delete;
    void Restore() {
        if (m_pDC != nullptr) {
            CDC* dc = m_pDC;
            m_pDC = nullptr;
            dc->SetROP2(m_OldMode);
        }
    }

private:
    CDC* m_pDC;
    int m_OldMode;
};
