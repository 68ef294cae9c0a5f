// The font of a text as GDI wants it, and the selections that a text makes for the time of its painting.
// Layer: drawables.
#pragma once

#include <afxwin.h>

#include <algorithm>

namespace TextFont {

// A positive height, so that it is that of the cell. Width 0 leaves it to the font. The escapement is in tenths of a
// degree. Of the name the first 31 characters count.
inline LOGFONTW Describe(int height, int width, int escapement, const CString& faceName) {
    LOGFONTW font = {};
    font.lfHeight = height;
    font.lfWidth = width;
    font.lfEscapement = escapement;
    font.lfWeight = FW_NORMAL;
    font.lfOutPrecision = OUT_TT_PRECIS;
    const LPCTSTR name = faceName;
    std::copy_n(name, std::min<int>(faceName.GetLength(), LF_FACESIZE - 1), font.lfFaceName);
    return font;
}

// For destructors: something is being thrown already, and a device context that fails again adds nothing.
template <typename Scope>
void QuietlyRestore(Scope& scope) noexcept {
    try {
        scope.Restore();
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
    }
}

// Selects a font; Restore, or the destructor where no Restore came, selects the old one back.
class ScopedSelection {
public:
    ScopedSelection(CDC* dc, CFont* font) : m_pDC(dc), m_pOld(dc->SelectObject(font)) {}
    ~ScopedSelection() { QuietlyRestore(*this); }
    ScopedSelection(const ScopedSelection&) = delete;
    ScopedSelection& operator=(const ScopedSelection&) = delete;
    void Restore() {
        if (m_pDC != nullptr) {
            CDC* dc = m_pDC;
            m_pDC = nullptr;
            dc->SelectObject(m_pOld);
        }
    }

private:
    CDC* m_pDC;
    CFont* m_pOld;
};

// The same for the text colour.
class ScopedColor {
public:
    ScopedColor(CDC* dc, COLORREF color) : m_pDC(dc), m_Old(dc->SetTextColor(color)) {}
    ~ScopedColor() { QuietlyRestore(*this); }
    ScopedColor(const ScopedColor&) = delete;
    ScopedColor& operator=(const ScopedColor&) = delete;
    void Restore() {
        if (m_pDC != nullptr) {
            CDC* dc = m_pDC;
            m_pDC = nullptr;
            dc->SetTextColor(m_Old);
        }
    }

private:
    CDC* m_pDC;
    COLORREF m_Old;
};

} // namespace TextFont
