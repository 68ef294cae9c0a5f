// Settings of a device context that are put back on every path, also when something throws.
// Layer 5: drawables.
#pragma once

#include <afxwin.h>

// Restore puts the old value back; where neither Restore nor Abandon was called the destructor does. An exception is
// then being thrown, so whatever the device context throws in the destructor is dropped.
template <typename Old, void (*PutBack)(CDC*, Old)>
class CScopedSetting {
public:
    ~CScopedSetting() {
        try {
            Restore();
        } catch (CException* e) {
            e->Delete();
        } catch (...) {
        }
    }
    CScopedSetting(const CScopedSetting&) = delete;
    CScopedSetting& operator=(const CScopedSetting&) = delete;
    void Restore() {
        if (m_pDC != nullptr) {
            CDC* dc = m_pDC;
            m_pDC = nullptr;
            PutBack(dc, m_Old);
        }
    }
    // Leaves the new value in force.
    void Abandon() { m_pDC = nullptr; }

protected:
    // Null for a context to which nothing is to be put back.
    CScopedSetting(CDC* dc, Old old) : m_pDC(dc), m_Old(old) {}

    CDC* m_pDC;
    const Old m_Old;
};

template <typename Object>
void SelectBack(CDC* dc, Object* object) {
    dc->SelectObject(object);
}

inline void SetRopBack(CDC* dc, int mode) {
    dc->SetROP2(mode);
}

inline void SetBkModeBack(CDC* dc, int mode) {
    dc->SetBkMode(mode);
}

inline void SetTextColorBack(CDC* dc, COLORREF color) {
    dc->SetTextColor(color);
}

class CScopedPen : public CScopedSetting<CPen*, SelectBack<CPen>> {
public:
    CScopedPen(CDC* dc, CPen* pen) : CScopedSetting(dc, dc->SelectObject(pen)) {}
};

class CScopedBrush : public CScopedSetting<CBrush*, SelectBack<CBrush>> {
public:
    CScopedBrush(CDC* dc, CBrush* brush) : CScopedSetting(dc, dc->SelectObject(brush)) {}
};

class CScopedFont : public CScopedSetting<CFont*, SelectBack<CFont>> {
public:
    CScopedFont(CDC* dc, CFont* font) : CScopedSetting(dc, dc->SelectObject(font)) {}
};

// Where GDI refuses the index (15 is no brush) nothing was changed, and nothing is put back.
class CScopedStockBrush : public CScopedSetting<CBrush*, SelectBack<CBrush>> {
public:
    CScopedStockBrush(CDC* dc, int index) : CScopedSetting(dc, static_cast<CBrush*>(dc->SelectStockObject(index))) {
        if (m_Old == nullptr) {
            m_pDC = nullptr;
        }
    }
};

class CScopedRop : public CScopedSetting<int, SetRopBack> {
public:
    CScopedRop(CDC* dc, int mode) : CScopedSetting(dc, dc->SetROP2(mode)) {}
};

// Puts the present raster mode back, which the block may change.
class CKeptRop : public CScopedSetting<int, SetRopBack> {
public:
    explicit CKeptRop(CDC* dc) : CScopedSetting(dc, dc->GetROP2()) {}
};

class CScopedBkMode : public CScopedSetting<int, SetBkModeBack> {
public:
    CScopedBkMode(CDC* dc, int mode) : CScopedSetting(dc, dc->SetBkMode(mode)) {}
};

class CScopedTextColor : public CScopedSetting<COLORREF, SetTextColorBack> {
public:
    CScopedTextColor(CDC* dc, COLORREF color) : CScopedSetting(dc, dc->SetTextColor(color)) {}
};
