// CRenderDC: a device context that changes colours and line widths on their way, for prints in black and in other
// widths. Layer 8: render.
#pragma once

#include "DrawingRender.h"

// What the caller selects stays the caller's; in its place a pen or font of this object's own is in force. Selecting
// gives back what the caller had selected before, so that the usual "select the old one back" works.
class CRenderDC : public CDC {
public:
    explicit CRenderDC(const CRenderOptions& options);
    // Takes its own objects out of the context; the handles stay with whom they came from.
    ~CRenderDC() override;
    // Draws where `dc` does, which is borrowed.
    void Wrap(CDC* dc);

    using CDC::SelectObject;
    CPen* SelectObject(CPen* pen) override;
    CFont* SelectObject(CFont* font) override;
    COLORREF SetTextColor(COLORREF color) override;
    COLORREF SetBkColor(COLORREF color) override;

    static COLORREF StrokeColor(const CRenderOptions& options, COLORREF color);
    // Lengths of ink and gap of a style from PS_DASH to PS_DASHDOTDOT, in widths of the line, ended by 0: those that
    // GDI gives to pens of one pixel, and here to wider ones as well. Null for any other style.
    static const double* Pattern(int style);
    static bool ChangesWidths(const CRenderOptions& options);
    // A pen's width in pixels after the options' scale, and at least their least.
    static int StrokeWidth(const CRenderOptions& options, int width);

private:
    CRenderOptions m_Options;
    CPen* m_pFirstPen = nullptr; // What was selected before anything.
    CFont* m_pFirstFont = nullptr;
    CPen* m_pPen = nullptr; // What the caller selected last.
    CFont* m_pFont = nullptr;
    CPen m_OwnPen;
    CFont m_OwnFont;
};
