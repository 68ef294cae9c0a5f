// What the Draw of several kinds has in common beside its frame: the stroke of each state, and how an arc and a
// coordinate become pixels. Not for hosts.
// Layer 5: drawables.
#pragma once

#include "Drawable.h"
#include "GdiScope.h"

#include <cmath>

// The whole pixel nearest to a coordinate in pixels, halves upwards: lines, polylines and frames. All other kinds
// truncate.
inline int PixelOf(float coordinate) {
    return CSerialable::GetNear(static_cast<double>(coordinate), 0);
}

// The box of a circle in pixels.
inline CPixelBox RoundBox(float x, float y, float radius) {
    return {x - radius, y - radius, x + radius, y + radius};
}

// A circular arc in pixels with fractions: the box of its circle and its two ends. Angles are taken with y upwards and
// pixels run downwards, so that the context's own direction, anticlockwise as seen on the screen, is the arc's.
class CArcPixels {
public:
    // Centre and radius in drawing units, angles in radians.
    CArcPixels(const CVectorViewCoordTran& tran, double centerX, double centerY, double radius, double startAngle,
               double endAngle)
        : m_Radius(tran.DToL(radius)) {
        tran.DPToLP(centerX, centerY, &m_CenterX, &m_CenterY);
        m_StartX = m_CenterX + tran.DToL(radius * std::cos(startAngle));
        m_StartY = m_CenterY - tran.DToL(radius * std::sin(startAngle));
        m_EndX = m_CenterX + tran.DToL(radius * std::cos(endAngle));
        m_EndY = m_CenterY - tran.DToL(radius * std::sin(endAngle));
    }

    // One Arc call; `whole` makes an int of each coordinate (PixelOf or Truncate).
    template <class Whole>
    void Stroke(CDC* pDC, Whole whole) const {
        pDC->Arc(whole(m_CenterX - m_Radius), whole(m_CenterY - m_Radius), whole(m_CenterX + m_Radius),
                 whole(m_CenterY + m_Radius), whole(m_StartX), whole(m_StartY), whole(m_EndX), whole(m_EndY));
    }

private:
    float m_Radius;
    float m_CenterX = 0.0f;
    float m_CenterY = 0.0f;
    float m_StartX = 0.0f;
    float m_StartY = 0.0f;
    float m_EndX = 0.0f;
    float m_EndY = 0.0f;
};

// The strokes of a line or a label in its present state. A dragged one is drawn with a solid pen in the raster mode
// `draggedMode`; in a state that does not exist nothing is drawn. Only a dragged one puts the background mode back.
template <class Strokes>
void StrokeOutline(CDC* pDC, CDrawable::DrawState state, const CDrawable::PenLook& look, int draggedMode,
                   Strokes strokes) {
    if (state == CDrawable::Selected || state == CDrawable::Normal) {
        pDC->SetBkMode(TRANSPARENT);
        CPen pen(state == CDrawable::Selected ? PS_DOT : look.style, look.width, look.color);
        CScopedPen selected(pDC, &pen);
        strokes();
        selected.Restore();
    } else if (state == CDrawable::Dragging) {
        CScopedBkMode background(pDC, TRANSPARENT);
        CPen pen(PS_SOLID, look.width, look.color);
        CScopedPen selected(pDC, &pen);
        CScopedRop raster(pDC, draggedMode);
        strokes();
        selected.Restore();
        raster.Restore();
        background.Restore();
    }
}

// The strokes of a circle or a centre mark in its present state, with the stock object `stockBrush` as the brush; in a
// state that does not exist nothing is drawn.
template <class Strokes>
void StrokeRound(CDC* pDC, CDrawable::DrawState state, const CDrawable::PenLook& look, int stockBrush,
                 Strokes strokes) {
    if (state == CDrawable::Selected || state == CDrawable::Normal) {
        pDC->SetBkMode(TRANSPARENT);
        CPen pen(state == CDrawable::Selected ? PS_DOT : look.style, look.width, look.color);
        CScopedStockBrush brush(pDC, stockBrush);
        CScopedPen selected(pDC, &pen);
        strokes();
        selected.Restore();
        brush.Restore();
    } else if (state == CDrawable::Dragging) {
        CScopedRop raster(pDC, R2_NOT);
        // Compatibility 45: a dragged circle is drawn with the pen of the context.
        // The pen is not selected; it is made so that the drawing fails where no pen can be made.
        CPen pen(look.style, look.width, look.color);
        CScopedStockBrush brush(pDC, stockBrush);
        strokes();
        raster.Restore();
        brush.Restore();
    }
}
