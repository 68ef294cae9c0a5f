#include "VectorViewCoordTran.h"

#include <cmath>

void CVectorViewCoordTran::SetScreenSize(CSize size) {
    wScreen = size.cx;
    hScreen = size.cy;
}

int CVectorViewCoordTran::SetScale(float unitsPerPixel) {
    scale = unitsPerPixel;
    return 1;
}

void CVectorViewCoordTran::SetScale(CPoint pixel, float unitsPerPixel) {
    CGePoint2d before;
    CGePoint2d after;
    LPToDP(pixel, before);
    scale = unitsPerPixel;
    LPToDP(pixel, after);
    const CGeVector2d shift = after - before;
    originX -= shift.x;
    originY -= shift.y;
}

void CVectorViewCoordTran::Pan(const CGeVector2d& pixels) {
    CVectorViewCoordTran moved = *this;
    moved.originX -= LToD(static_cast<float>(pixels.x));
    moved.originY += LToD(static_cast<float>(pixels.y));
    TakeIfFinite(moved);
}

bool CVectorViewCoordTran::TakeIfFinite(const CVectorViewCoordTran& other) {
    const bool finite = std::isfinite(other.scale) && std::isfinite(other.originX) && std::isfinite(other.originY);
    if (finite) {
        *this = other;
    }
    return finite;
}

// Compatibility 31: pixels in double have single precision.
void CVectorViewCoordTran::DPToLP_Double(double x, double y, double* lx, double* ly) const {
    float fx = 0.0f;
    float fy = 0.0f;
    DPToLP(x, y, &fx, &fy);
    *lx = static_cast<double>(fx);
    *ly = static_cast<double>(fy);
}

void CVectorViewCoordTran::DPToLP(double x, double y, int* lx, int* ly) const {
    float fx = 0.0f;
    float fy = 0.0f;
    DPToLP(x, y, &fx, &fy);
    *lx = Truncate(fx);
    *ly = Truncate(fy);
}

void CVectorViewCoordTran::DPToLP(const CGePoint2d& point, CPoint& pixel) const {
    int x = 0;
    int y = 0;
    DPToLP(point.x, point.y, &x, &y);
    pixel.x = x;
    pixel.y = y;
}

void CVectorViewCoordTran::LPToDP(float lx, float ly, double* x, double* y) const {
    *x = originX + static_cast<double>(lx * scale);
    *y = originY + static_cast<double>(scale * (static_cast<float>(hScreen) - ly));
}

void CVectorViewCoordTran::LPToDP(CPoint pixel, CGePoint2d& point) const {
    LPToDP(static_cast<float>(pixel.x), static_cast<float>(pixel.y), &point.x, &point.y);
}
