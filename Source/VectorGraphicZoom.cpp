// CVectorGraphic: fitting the drawing into a rectangle, by a margin in pixels or in percent. Layer 7: painter.

#include "Document.h"
#include "VectorGraphic.h"

#include <cmath>

// Compatibility 123: the two ways of fitting round at different places.

namespace {

constexpr double kLeastMargin = 10.0; // Pixels, of the form by percent.

bool HasNoNaN(const CVectorViewCoordTran& tran) {
    return !std::isnan(tran.GetScale()) && !std::isnan(tran.GetOriginX()) && !std::isnan(tran.GetOriginY());
}

} // namespace

void CVectorGraphic::ZoomAll(CRect rc) {
    if (m_ZoomByPixs != 0) {
        ZoomAll_ByPixs(rc);
    } else {
        ZoomAll_ByPrecent(rc);
    }
}

void CVectorGraphic::ZoomAll_ByPixs(CRect rc) {
    const int W = rc.Width();
    const int H = rc.Height();
    const int m = m_ZoomAllMargin;
    m_pCoordTran->SetScreenSize(CSize(W, H));
    CGePoint2d min;
    CGePoint2d max;
    if (m_pDocument->GetRect(min, max) == 0) {
        return;
    }
    CVectorViewCoordTran fitted = *m_pCoordTran;
    const int freeWidth = WrapSubtract(W, m);
    const int freeHeight = WrapSubtract(H, m);
    const double sx = (max.x - min.x) / static_cast<double>(freeWidth);
    const double sy = (max.y - min.y) / static_cast<double>(freeHeight);
    const bool byWidth = sx > sy;
    if (byWidth) {
        const float s = static_cast<float>(max.x - min.x) / static_cast<float>(freeWidth);
        fitted.SetScale(s);
        min.y = min.y - (fitted.LToD(static_cast<float>(H)) - (max.y - min.y)) / 2.0;
        // Compatibility 66: an odd margin leaves the picture a pixel off centre.
        // Half the margin is truncated to whole pixels.
        min.x = min.x - static_cast<double>(static_cast<float>(m / 2) * s);
    } else {
        const float s = static_cast<float>(max.y - min.y) / static_cast<float>(freeHeight);
        fitted.SetScale(s);
        min.x = min.x - (fitted.LToD(static_cast<float>(W)) - (max.x - min.x)) / 2.0;
        min.y = min.y - static_cast<double>(static_cast<float>(m / 2) * s);
    }
    if (StoreFit(fitted, rc, min)) {
        return;
    }
    // Compatibility 95: a margin as wide as the window gives an infinite scale.
    // The infinite scale is stored.
    if ((byWidth ? freeWidth : freeHeight) == 0 && HasNoNaN(fitted)) {
        *m_pCoordTran = fitted;
    }
}

void CVectorGraphic::ZoomAll_ByPrecent(CRect rc) {
    const int W = rc.Width();
    const int H = rc.Height();
    m_pCoordTran->SetScreenSize(CSize(W, H));
    CGePoint2d min;
    CGePoint2d max;
    if (m_pDocument->GetRect(min, max) == 0) {
        return;
    }
    CVectorViewCoordTran fitted = *m_pCoordTran;
    double mx = static_cast<double>(WrapMultiply(W, m_ZoomAllMargin)) * 0.01;
    double my = static_cast<double>(WrapMultiply(H, m_ZoomAllMargin)) * 0.01;
    if (mx < kLeastMargin) {
        mx = kLeastMargin;
    }
    if (my < kLeastMargin) {
        my = kLeastMargin;
    }
    const double sx = (max.x - min.x) / (static_cast<double>(W) - mx);
    const double sy = (max.y - min.y) / (static_cast<double>(H) - my);
    if (sx > sy) {
        const float s =
            static_cast<float>(static_cast<double>(static_cast<float>(max.x - min.x)) / (static_cast<double>(W) - mx));
        fitted.SetScale(s);
        min.y = min.y - (fitted.LToD(static_cast<float>(H)) - (max.y - min.y)) / 2.0;
        min.x = min.x - (mx / 2.0) * static_cast<double>(s);
    } else {
        const float s =
            static_cast<float>(static_cast<double>(static_cast<float>(max.y - min.y)) / (static_cast<double>(H) - my));
        fitted.SetScale(s);
        min.x = min.x - (fitted.LToD(static_cast<float>(W)) - (max.x - min.x)) / 2.0;
        min.y = min.y - (my / 2.0) * static_cast<double>(s);
    }
    StoreFit(fitted, rc, min);
}

// `fitted` has the scale; `corner` is the drawing point of the rectangle's lower left corner, as if the rectangle began
// at the client corner. False when the result is not finite; the view's mapping is then left as it was.
bool CVectorGraphic::StoreFit(CVectorViewCoordTran& fitted, const CRect& rc, const CGePoint2d& corner) {
    CGePoint2d origin = corner;
    if (rc.left != 0) {
        origin.x = origin.x - fitted.LToD(static_cast<float>(rc.left));
    }
    if (rc.top != 0) {
        origin.y = origin.y + fitted.LToD(static_cast<float>(rc.top));
    }
    fitted.SetOriginX(origin.x);
    fitted.SetOriginY(origin.y);
    return m_pCoordTran->TakeIfFinite(fitted);
}
