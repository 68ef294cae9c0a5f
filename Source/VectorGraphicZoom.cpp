// CVectorGraphic: fitting the drawing into a rectangle, by a margin in pixels or in percent. Layer 7: painter.

#include "Document.h"
#include "VectorGraphic.h"

// The two forms differ in the margin and, on purpose, in where they round to single precision. The mapping takes any
// scale, so that none has to be read back.

namespace {

constexpr double kLeastMargin = 10.0; // Pixels, of the form by percent.

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
    const int freeWidth = WrapSubtract(W, m);
    const int freeHeight = WrapSubtract(H, m);
    const double sx = (max.x - min.x) / static_cast<double>(freeWidth);
    const double sy = (max.y - min.y) / static_cast<double>(freeHeight);
    if (sx > sy) {
        const float s = static_cast<float>(max.x - min.x) / static_cast<float>(freeWidth);
        m_pCoordTran->SetScale(s);
        min.y = min.y - (m_pCoordTran->LToD(static_cast<float>(H)) - (max.y - min.y)) / 2.0;
        // Half the margin in whole pixels: an odd margin leaves the picture a pixel off centre.
        min.x = min.x - static_cast<double>(static_cast<float>(m / 2) * s);
    } else {
        const float s = static_cast<float>(max.y - min.y) / static_cast<float>(freeHeight);
        m_pCoordTran->SetScale(s);
        min.x = min.x - (m_pCoordTran->LToD(static_cast<float>(W)) - (max.x - min.x)) / 2.0;
        min.y = min.y - static_cast<double>(static_cast<float>(m / 2) * s);
    }
    StoreOrigin(rc, min);
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
        m_pCoordTran->SetScale(s);
        min.y = min.y - (m_pCoordTran->LToD(static_cast<float>(H)) - (max.y - min.y)) / 2.0;
        min.x = min.x - (mx / 2.0) * static_cast<double>(s);
    } else {
        const float s =
            static_cast<float>(static_cast<double>(static_cast<float>(max.y - min.y)) / (static_cast<double>(H) - my));
        m_pCoordTran->SetScale(s);
        min.x = min.x - (m_pCoordTran->LToD(static_cast<float>(W)) - (max.x - min.x)) / 2.0;
        min.y = min.y - (my / 2.0) * static_cast<double>(s);
    }
    StoreOrigin(rc, min);
}

// `corner` is the drawing point of the rectangle's lower left corner, as if the rectangle began at the client corner.
void CVectorGraphic::StoreOrigin(const CRect& rc, const CGePoint2d& corner) {
    CGePoint2d origin = corner;
    if (rc.left != 0) {
        origin.x = origin.x - m_pCoordTran->LToD(static_cast<float>(rc.left));
    }
    if (rc.top != 0) {
        origin.y = origin.y + m_pCoordTran->LToD(static_cast<float>(rc.top));
    }
    m_pCoordTran->SetOriginX(origin.x);
    m_pCoordTran->SetOriginY(origin.y);
}
