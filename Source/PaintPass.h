// CPaintPass: one paint of a view's own window, which need not stroke what its buffer can't show.
// Layer 5: drawables.
#pragma once

#include "TextMeasures.h"

#include <algorithm>
#include <cmath>

class CDrawable;

// A box of pixels, with fractions: two opposite corners, any of them.
struct CPixelBox {
    // Grows the box to the point; before, the first corner is the upper left one.
    void Add(double x, double y) {
        x1 = std::min(x1, x);
        y1 = std::min(y1, y);
        x2 = std::max(x2, x);
        y2 = std::max(y2, y);
    }
    // Whether all edges fit an int: one that does not is drawn as INT_MIN.
    bool FitsInt() const {
        constexpr double kMost = 2e9;
        return std::fabs(x1) < kMost && std::fabs(y1) < kMost && std::fabs(x2) < kMost && std::fabs(y2) < kMost;
    }

    // y downwards.
    double x1;
    double y1;
    double x2;
    double y2;
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
               (AreBeyond(box.x1, box.x2, margin, m_Seen.left, m_Seen.right) ||
                AreBeyond(box.y1, box.y2, margin, m_Seen.top, m_Seen.bottom)) &&
               box.FitsInt();
    }

private:
    static constexpr double kRounding = 4.0; // Pixels.

    // Both on the same side. The two are not ordered first: which is the smaller one no processor can foretell.
    static bool AreBeyond(double a, double b, double margin, LONG low, LONG high) {
        return (a + margin < static_cast<double>(low) && b + margin < static_cast<double>(low)) ||
               (a - margin > static_cast<double>(high) && b - margin > static_cast<double>(high));
    }

    const CDC* m_pDC;
    const CRect m_Seen;
    const CDrawable* m_Object = nullptr;
    CTextMeasures m_Texts;
};
