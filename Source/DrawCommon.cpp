#include "DrawCommon.h"

#include "Arc.h"
#include "DrawStrokes.h"

#include <cmath>

namespace {

// Twice the area of the triangle under an arc, in square drawing units. At or below this its top counts as a point of
// the chord.
constexpr double kFlatTriangle = 1e-5;

CGePoint2d Middle(const CGePoint2d& a, const CGePoint2d& b) {
    return CGePoint2d((a.x + b.x) / 2.0, (a.y + b.y) / 2.0);
}

} // namespace

// ---- Geometry ------------------------------------------------------------------------------------------------------

CGePoint2d CDraw_Common::GetArcMidHighPt(CGePoint2d p1, CGePoint2d p2, double bulge) {
    const double vx = p2.x - p1.x;
    const double vy = p2.y - p1.y;
    const double length = std::sqrt(vx * vx + vy * vy);
    double leftX = -vy / length;
    double leftY = vx / length;
    // Compatibility 25: a tiny positive bulge has its top on the left.
    if (bulge > kStraightDrawn) {
        leftX = -leftX;
        leftY = -leftY;
    }
    const double height = length / 2.0 * GetAbs(bulge);
    const CGePoint2d middle = Middle(p1, p2);
    return CGePoint2d(middle.x + leftX * height, middle.y + leftY * height);
}

// Compatibility 24: the two functions of a bulge have opposite signs.
int CDraw_Common::CalTwoPoint_Bulge(CGePoint2d p1, CGePoint2d p2, CGePoint2d mp, double& bulge) {
    if (p1 == p2) {
        return 0;
    }
    const CGePoint2d m = Middle(p1, p2);
    const double half = p1.distance(m);
    const double height = m.distance(mp);
    const double c = (p2 - p1).CrossProduct(mp - p1);
    bulge = GetAbs(c) > kFlatTriangle ? height / half * c / std::fabs(c) : 0.0;
    return 1;
}

// ---- Painting ------------------------------------------------------------------------------------------------------

int CDraw_Common::DrawPolyLine(CDC* pDC, CDrawGeometry* pGeom, CPoint* pts, int count, CBulgeArray& bulges) {
    if (pts == nullptr) {
        return 0;
    }
    if (count < 2) {
        return 1;
    }
    const CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
    for (int i = 0; i < count - 1; ++i) {
        const double bulge = i < bulges.GetSize() ? bulges[i] : 0.0;
        const CGePoint2d start(pts[i]);
        const CGePoint2d end(pts[i + 1]);
        if (kStraightDrawn > GetAbs(bulge)) {
            CPoint from;
            CPoint to;
            tran->DPToLP(start, from);
            tran->DPToLP(end, to);
            pDC->MoveTo(from);
            pDC->LineTo(to);
            continue;
        }
        double centerX = 0.0;
        double centerY = 0.0;
        double radius = 0.0;
        double startAngle = 0.0;
        double endAngle = 0.0;
        if (CArc::Calarc(start, GetArcMidHighPt(start, end, bulge), end, &centerX, &centerY, &radius, &startAngle,
                         &endAngle) == 0) {
            return 0;
        }
        CArcPixels(*tran, centerX, centerY, radius, startAngle, endAngle).Stroke(pDC, [](float coordinate) {
            return Truncate(coordinate);
        });
    }
    return 1;
}
