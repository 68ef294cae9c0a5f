// CPaintPass: one paint of a view's own window, which need not stroke what its buffer can't show.
// Layer 5: drawables.
#pragma once

#include "TextMeasures.h"

#include <algorithm>

class CDrawable;

// A box of pixels, with fractions.
struct CPixelBox {
    // Around two corners in any order. A not-a-number becomes one of the edges.
    static CPixelBox Around(double x1, double y1, double x2, double y2) {
        return {x1 < x2 ? x1 : x2, y1 < y2 ? y1 : y2, x1 < x2 ? x2 : x1, y1 < y2 ? y2 : y1};
    }
    // Grows the box to the point.
    void Add(double x, double y) {
        left = std::min(left, x);
        top = std::min(top, y);
        right = std::max(right, x);
        bottom = std::max(bottom, y);
    }
    // Whether all edges fit an int: one that does not is drawn as INT_MIN.
    bool FitsInt() const {
        constexpr double kMost = 2e9;
        return left > -kMost && top > -kMost && right < kMost && bottom < kMost;
    }

    // The edges, y downwards.
    double left;
    double top;
    double right;
    double bottom;
};

// The painter makes one and gives it to its CDrawGeometry for the duration of the paint. Contexts of hosts, printers
// and metafiles have none: they get every drawing call.
class CPaintPass {
public:
    // `seen`: the pixels that the context keeps, in its logical coordinates.
    CPaintPass(const CDC* pDC, const CRect& seen) : m_pDC(pDC), m_Seen(seen), m_Texts(pDC->m_hDC) {}

    CTextMeasures& GetTexts() { return m_Texts; } // What the texts of this paint share.
    const CDC* GetDC() const { return m_pDC; }    // The context that is painted on; not owned.

    // The object of the drawing that is drawn next.
    void Enter(const CDrawable* object) { m_Object = object; }
    // Whether the object, drawn into the context, leaves no pixel of the buffer changed: its strokes and texts, without
    // the width of the pen, lie in `box`. False for an object that another one draws, which may have shifted the
    // context.
    bool IsOutOfSight(const CDC* pDC, const CDrawable* object, const CPixelBox& box, double penWidth) const {
        // A round pen end adds half the width; the rest covers the rounding of coordinates and devices.
        const double margin = (penWidth < 0.0 ? -penWidth : penWidth) + kRounding;
        return object == m_Object && pDC == m_pDC &&
               (box.right + margin < static_cast<double>(m_Seen.left) ||
                box.left - margin > static_cast<double>(m_Seen.right) ||
                box.bottom + margin < static_cast<double>(m_Seen.top) ||
                box.top - margin > static_cast<double>(m_Seen.bottom)) &&
               box.FitsInt();
    }

private:
    static constexpr double kRounding = 4.0; // Pixels.

    const CDC* m_pDC;
    const CRect m_Seen;
    const CDrawable* m_Object = nullptr;
    CTextMeasures m_Texts;
};
