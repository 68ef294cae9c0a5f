#include "RenderDC.h"

#include "Truncate.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMostLengths = 6;
constexpr double kPatterns[4][kMostLengths + 1] = {{18, 6, 0}, {3, 3, 0}, {9, 6, 3, 6, 0}, {9, 3, 3, 3, 3, 3, 0}};

} // namespace

CRenderDC::CRenderDC(const CRenderOptions& options) : m_Options(options) {}

CRenderDC::~CRenderDC() {
    if (m_pFirstPen != nullptr) {
        CDC::SelectObject(m_pFirstPen);
    }
    if (m_pFirstFont != nullptr) {
        CDC::SelectObject(m_pFirstFont);
    }
    m_hDC = nullptr;
    m_hAttribDC = nullptr;
}

void CRenderDC::Wrap(CDC* dc) {
    m_bPrinting = dc->m_bPrinting;
    m_hDC = dc->m_hDC;
    m_hAttribDC = dc->m_hAttribDC;
}

COLORREF CRenderDC::StrokeColor(const CRenderOptions& options, COLORREF color) {
    return options.colors == CRenderOptions::Stored ? color : RGB(0, 0, 0);
}

const double* CRenderDC::Pattern(int style) {
    return style >= PS_DASH && style <= PS_DASHDOTDOT ? kPatterns[style - PS_DASH] : nullptr;
}

bool CRenderDC::ChangesWidths(const CRenderOptions& options) {
    return options.lineWidthScale != 1.0 || options.leastLineWidth > 1;
}

int CRenderDC::StrokeWidth(const CRenderOptions& options, int width) {
    // GDI uses the magnitude, and 1 for 0.
    const double given = std::max(1.0, std::fabs(static_cast<double>(width)));
    return std::max(options.leastLineWidth, Truncate(std::min(given * options.lineWidthScale + 0.5, 32767.0)));
}

CPen* CRenderDC::SelectObject(CPen* pen) {
    LOGPEN given = {};
    CPen* old = m_pPen;
    if (pen == m_pFirstPen || pen == nullptr || pen->GetLogPen(&given) == 0 ||
        (m_Options.colors == CRenderOptions::Stored && !ChangesWidths(m_Options))) {
        CPen* before = CDC::SelectObject(pen);
        m_OwnPen.DeleteObject();
        if (m_pFirstPen == nullptr) {
            m_pFirstPen = before;
            old = before;
        }
        m_pPen = pen;
        return old;
    }
    const COLORREF color = StrokeColor(m_Options, given.lopnColor);
    const int asked = static_cast<int>(given.lopnWidth.x);
    const int width = ChangesWidths(m_Options) ? StrokeWidth(m_Options, asked) : asked;
    CPen own;
    // GDI draws a plain pen of more than one pixel without its pattern. So such a line stays solid when it becomes
    // thin, and a patterned line that becomes wide gets a geometric pen.
    const double* pattern = Pattern(static_cast<int>(given.lopnStyle));
    if (pattern != nullptr && std::abs(given.lopnWidth.x) > 1) {
        given.lopnStyle = PS_SOLID;
    } else if (pattern != nullptr && width > 1) {
        DWORD lengths[kMostLengths] = {};
        DWORD count = 0;
        for (; pattern[count] != 0; ++count) {
            lengths[count] = static_cast<DWORD>(Truncate(pattern[count] * width));
        }
        const LOGBRUSH brush = {BS_SOLID, color, 0};
        own.Attach(::ExtCreatePen(PS_GEOMETRIC | PS_ENDCAP_FLAT | PS_USERSTYLE, width, &brush, count, lengths));
    }
    if (own.m_hObject == nullptr) {
        own.CreatePen(static_cast<int>(given.lopnStyle), width, color);
    }
    CPen* before = CDC::SelectObject(&own);
    m_OwnPen.DeleteObject();
    m_OwnPen.Attach(own.Detach());
    if (m_pFirstPen == nullptr) {
        m_pFirstPen = before;
        old = before;
    }
    m_pPen = pen;
    return old;
}

CFont* CRenderDC::SelectObject(CFont* font) {
    LOGFONT given = {};
    CFont* old = m_pFont;
    const bool plain = font == m_pFirstFont || font == nullptr || m_Options.colors != CRenderOptions::Monochrome ||
                       font->GetLogFont(&given) == 0;
    CFont own;
    if (!plain) {
        given.lfQuality = NONANTIALIASED_QUALITY;
        own.CreateFontIndirect(&given);
    }
    CFont* before = CDC::SelectObject(plain ? font : &own);
    m_OwnFont.DeleteObject();
    if (!plain) {
        m_OwnFont.Attach(own.Detach());
    }
    if (m_pFirstFont == nullptr) {
        m_pFirstFont = before;
        old = before;
    }
    m_pFont = font;
    return old;
}

COLORREF CRenderDC::SetTextColor(COLORREF color) {
    // Callers restore the former colour through this function: what they restore is what they had set, or black.
    return CDC::SetTextColor(StrokeColor(m_Options, color));
}

COLORREF CRenderDC::SetBkColor(COLORREF color) {
    return CDC::SetBkColor(m_Options.colors == CRenderOptions::Stored ? color : RGB(255, 255, 255));
}
