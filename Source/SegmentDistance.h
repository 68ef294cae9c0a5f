// The distance of a point from a segment, for the hit tests of every click.
// Layer 4: geometry.
#pragma once

#include "Geometry2d.h"

#include <cmath>

// Whether the angle between the two vectors is obtuse: the sign of the product of the unit vector of u and v or, with
// `unitV`, the unit vector of v. Where the plain product is clearly not 0 it has the same sign, whatever the rounding
// of a root; only elsewhere are the roots computed.
inline bool PointApart(const CGeVector2d& u, const CGeVector2d& v, bool unitV) {
    constexpr double kClearly = 1e-9; // Relative to the product of the sizes: far above any rounding.
    const double product = u.x * v.x + u.y * v.y;
    const double sizeU = std::fabs(u.x) + std::fabs(u.y);
    const double sizeV = std::fabs(v.x) + std::fabs(v.y);
    // Beyond these sizes the square in a length may overflow or underflow.
    const bool ordinary = sizeU > 1e-100 && sizeU < 1e100 && sizeV > 1e-100 && sizeV < 1e100;
    if (ordinary && std::fabs(product) > kClearly * sizeU * sizeV) {
        return product < 0.0;
    }
    return u.normal().dotProduct(unitV ? v.normal() : v) < 0.0;
}

// Computes the same as CDrawable::DistanceLine.
inline float SegmentDistance(double ax, double ay, double bx, double by, const CGePoint2d& p) {
    const CGeVector2d ap(p.x - ax, p.y - ay);
    const CGeVector2d ab(bx - ax, by - ay);
    if (PointApart(ap, ab, true)) {
        return static_cast<float>(std::sqrt(ap.x * ap.x + ap.y * ap.y));
    }
    const CGeVector2d bp(p.x - bx, p.y - by);
    const CGeVector2d ba(ax - bx, ay - by);
    if (PointApart(bp, ba, false)) {
        return static_cast<float>(std::sqrt(bp.x * bp.x + bp.y * bp.y));
    }
    return static_cast<float>((-ab.y * ap.x + ab.x * ap.y) / std::sqrt(ab.x * ab.x + ab.y * ab.y));
}
