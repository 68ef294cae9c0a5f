// CRenderDC: a device context that replaces colours and line widths before it draws, for prints in black and in other
// widths.
// Layer 8: render.
#pragma once

#include "DrawingRender.h"

// The caller keeps what it selects; a pen or font that this object owns is selected in its place. Selecting returns
// what the caller had selected before, so that the usual "select the old one back" works.
class CRenderDC : public CDC {
public:
    explicit CRenderDC(const CRenderOptions& options);
    // Deselects its own objects; the callers' handles stay theirs.
    ~CRenderDC() override;
    // Draws on `dc`, which is borrowed.
    void Wrap(CDC* dc);

    using CDC::SelectObject;
    CPen* SelectObject(CPen* pen) override;
    CFont* SelectObject(CFont* font) override;
    COLORREF SetTextColor(COLORREF color) override;
    COLORREF SetBkColor(COLORREF color) override;

    static COLORREF StrokeColor(const CRenderOptions& options, COLORREF color);
    // Lengths of ink and gap of a style from PS_DASH to PS_DASHDOTDOT, in line widths, ended by 0. GDI uses them for
    // pens of one pixel, this class for wider ones as well. Null for any other style.
    static const double* Pattern(int style);
    static bool ChangesWidths(const CRenderOptions& options);
    // A pen's width in pixels, scaled by the options and at least their least width.
    static int StrokeWidth(const CRenderOptions& options, int width);

private:
    CRenderOptions m_Options;
    CPen* m_pFirstPen = nullptr; // What was selected in the context at first.
    CFont* m_pFirstFont = nullptr;
    CPen* m_pPen = nullptr; // What the caller selected last.
    CFont* m_pFont = nullptr;
    CPen m_OwnPen;
    CFont m_OwnFont;
};
