// CPLine: painting, hit test and extents of a polyline. Layer 5: drawables.

#include "PLine.h"

#include "Arc.h"
#include "DrawStrokes.h"
#include "EditingOptions.h"

#include <cmath>

namespace {

constexpr COLORREF kVertexBlue = 0xFF0000; // 0x00BBGGRR
constexpr COLORREF kMidpointYellow = 0x0BEEF6;

// Ten times the distance that most other kinds report when they are not hit. Also reported without a segment.
constexpr float kNotHit = 1000.0f;

// Points at most this far from each other, in drawing units, count as one in GetClosestDistance.
constexpr double kTouching = 1e-5;

// An arc whose height is at least this part of its coordinates has a circle, whatever the rounding of its computation.
// One with a bulge beyond the other limit is nearly a whole circle, whose ends might coincide after rounding.
constexpr double kSurelyRound = 1e-6;
constexpr double kSteepest = 1e3;

void MergeBox(const CGePoint2d& boxMin, const CGePoint2d& boxMax, CGePoint2d& min, CGePoint2d& max) {
    if (boxMin.x < min.x) {
        min.x = boxMin.x;
    }
    if (boxMin.y < min.y) {
        min.y = boxMin.y;
    }
    if (boxMax.x > max.x) {
        max.x = boxMax.x;
    }
    if (boxMax.y > max.y) {
        max.y = boxMax.y;
    }
}

// Compatibility 85: a straight segment under inversion shows only its ends.
// A segment is stroked there and back, because LineTo leaves out its last pixel. Under inversion the two strokes cancel
// each other except in the end pixels; `once` leaves out the way back.
void StrokeStraight(CDC* pDC, const CVectorViewCoordTran& tran, const CGePoint2d& start, const CGePoint2d& end,
                    bool once) {
    float sx = 0.0f;
    float sy = 0.0f;
    float ex = 0.0f;
    float ey = 0.0f;
    tran.DPToLP(start.x, start.y, &sx, &sy);
    tran.DPToLP(end.x, end.y, &ex, &ey);
    const int x1 = PixelOf(sx);
    const int y1 = PixelOf(sy);
    const int x2 = PixelOf(ex);
    const int y2 = PixelOf(ey);
    pDC->MoveTo(x1, y1);
    pDC->LineTo(x2, y2);
    if (!once) {
        pDC->MoveTo(x2, y2);
        pDC->LineTo(x1, y1);
    }
}

// False when there is no circle through the ends and the top of the arc. For either sign of the bulge Calarc orders the
// angles anticlockwise.
bool StrokeArc(CDC* pDC, const CVectorViewCoordTran& tran, const CGePoint2d& start, const CGePoint2d& end,
               double bulge) {
    double cx = 0.0;
    double cy = 0.0;
    double radius = 0.0;
    double startAngle = 0.0;
    double endAngle = 0.0;
    if (CArc::Calarc(start, CDraw_Common::GetArcMidHighPt(start, end, bulge), end, &cx, &cy, &radius, &startAngle,
                     &endAngle) == 0) {
        return false;
    }
    CArcPixels(tran, cx, cy, radius, startAngle, endAngle).Stroke(pDC, [](float coordinate) {
        return PixelOf(coordinate);
    });
    return true;
}

} // namespace

// ---- Hit test ------------------------------------------------------------------------------------------------------

float CPLine::HitTest(CGePoint2d p) {
    if (m_IsShow == 0) {
        // Compatibility 42: a hidden polyline is 1000 units away, a line 100.
        return kNotHit;
    }
    float best = kNotHit;
    int found = -1;
    // Compared in single precision and strictly, so that of two segments at the same distance the first one is found.
    const auto measure = [&](const CGePoint2d& start, const CGePoint2d& end, double bulge, int segment) {
        float distance = 0.0f;
        // Compatibility 26: two limits decide that a segment is straight.
        if (CDraw_Common::GetAbs(bulge) < kStraightHit) {
            distance = std::fabs(DistanceLine(start, end, p));
        } else {
            // Compatibility 29: an arc segment is hit on its whole circle.
            // The distance to the whole circle and, where there is none, to the origin.
            CGePoint2d center;
            double radius = 0.0;
            CArc::Calarc(start, CDraw_Common::GetArcMidHighPt(start, end, bulge), end, center, radius);
            distance = static_cast<float>(std::fabs(p.distance(center) - radius));
        }
        if (best > distance) {
            best = distance;
            found = segment;
        }
    };
    for (int i = 1; i < m_VertexCount; ++i) {
        measure(m_PointList[i - 1], m_PointList[i], m_BulgeList[i - 1], i - 1);
    }
    if (m_isClosed != 0 && m_VertexCount > 0) {
        const int last = m_VertexCount - 1;
        measure(m_PointList[last], m_PointList[0], m_BulgeList[last], last);
    }
    m_SelLine = found;
    return best;
}

// ---- Feet and distances --------------------------------------------------------------------------------------------

CGePoint2d CPLine::GetClosetPt(CGePoint2d a, CGePoint2d b, CGePoint2d p) {
    return PerpendicularFoot(a, b, p);
}

int CPLine::GetClosetPt(CGePoint2d p, CGePointArray& out) {
    const auto addFoot = [&](const CGePoint2d& start, const CGePoint2d& end, double bulge) {
        if (CDraw_Common::GetAbs(bulge) < kStraightHit) {
            CGePoint2d foot = GetClosetPt(start, end, p);
            out.Add(foot);
        }
    };
    for (int i = 1; i < m_VertexCount; ++i) {
        addFoot(m_PointList[i - 1], m_PointList[i], m_BulgeList[i - 1]);
    }
    if (m_isClosed != 0 && m_VertexCount > 0) {
        const int last = m_VertexCount - 1;
        addFoot(m_PointList[last], m_PointList[0], m_BulgeList[last]);
    }
    return 1;
}

int CPLine::isLeft(CGePoint2d p) {
    if (m_PointList.GetSize() != 2 || IsArc(0) != 0) {
        return 0;
    }
    const CGePoint2d& a = m_PointList[0];
    const CGePoint2d& b = m_PointList[1];
    return (a.x - p.x) * (b.y - p.y) - (b.x - p.x) * (a.y - p.y) >= 0;
}

double CPLine::GetClosestDistance(CGePoint2d p) {
    if (m_PointList.GetSize() != 2 || IsArc(0) != 0) {
        return 0.0;
    }
    const CGePoint2d& a = m_PointList[0];
    const CGePoint2d& b = m_PointList[1];
    const double d1 = b.distance(p);
    const double d2 = a.distance(p);
    const double d3 = a.distance(b);
    if (d1 <= kTouching || d2 <= kTouching) {
        return 0.0;
    }
    if (d3 <= kTouching) {
        return d1;
    }
    // Beyond an end: the distance to that end.
    if (d1 * d1 >= d2 * d2 + d3 * d3) {
        return d2;
    }
    if (d2 * d2 >= d1 * d1 + d3 * d3) {
        return d1;
    }
    // The height of the triangle from its area. Rounding can make the product negative for a point on the line.
    const double s = (d1 + d2 + d3) / 2;
    const double areaSquared = s * (s - d1) * (s - d2) * (s - d3);
    return 2 * std::sqrt(areaSquared < 0 ? 0.0 : areaSquared) / d3;
}

// ---- Extents -------------------------------------------------------------------------------------------------------

int CPLine::GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) {
    if (m_IsShow == 0) {
        return 0;
    }
    min = m_PointList[0];
    max = m_PointList[0];
    for (int i = 1; i < m_VertexCount; ++i) {
        MergeBox(m_PointList[i], m_PointList[i], min, max);
    }
    // Compatibility 86: a segment without a circle merges the last box or the origin.
    // One arc object serves all segments, and keeps its values when there is no circle.
    CArc arc;
    const auto mergeArc = [&](const CGePoint2d& from, const CGePoint2d& mid, const CGePoint2d& to) {
        CGePoint2d boxMin;
        CGePoint2d boxMax;
        arc.Set(from, mid, to);
        arc.GetRect(tran, boxMin, boxMax);
        MergeBox(boxMin, boxMax, min, max);
    };
    for (int i = 0; i < m_VertexCount - 1; ++i) {
        const double bulge = m_BulgeList[i];
        if (CDraw_Common::GetAbs(bulge) >= kStraightDrawn) {
            const CGePoint2d& start = m_PointList[i];
            const CGePoint2d& end = m_PointList[i + 1];
            const CGePoint2d mid = CDraw_Common::GetArcMidHighPt(start, end, bulge);
            // Set takes the points anticlockwise.
            if (bulge >= 0) {
                mergeArc(start, mid, end);
            } else {
                mergeArc(end, mid, start);
            }
        }
    }
    if (m_isClosed != 0) {
        const int last = m_VertexCount - 1;
        const double bulge = m_BulgeList[last];
        if (CDraw_Common::GetAbs(bulge) >= kStraightDrawn) {
            // Compatibility 27: the closing arc's ends are not swapped.
            mergeArc(m_PointList[last], CDraw_Common::GetArcMidHighPt(m_PointList[last], m_PointList[0], bulge),
                     m_PointList[0]);
        }
    }
    return 1;
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CPLine::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    DrawInFrame(pDC, pGeom, L"CPLine::Draw", L"4", [&](LPCTSTR& stage) {
        if (!IsToBeDrawn() || m_VertexCount == 0) {
            return false;
        }
        // Resolved here although each stroke does it again: a layer that fails is reported as stage 0.
        const PenLook look = ResolvePen(pGeom, m_LockMode != 0);
        if (IsPathOutOfSight(pDC, pGeom, look.width)) {
            return false;
        }
        CGePointArray closed; // Of a closed one, with the first vertex at the end as well.
        if (m_isClosed != 0) {
            // Reserves memory for the first vertex at the end, so that appending it does not move the whole copy.
            closed.SetSize(0, m_PointList.GetSize() + 1);
            closed.Copy(m_PointList);
            CGePoint2d first = closed[0];
            closed.Add(first);
        }
        stage = L"1";
        DrawPolyLine(pDC, pGeom, m_isClosed != 0 ? closed : m_PointList, m_BulgeList, look.style);
        return true;
    });
}

// Tests the vertices and, for each arc, a square around its whole circle. False where drawing would fail: a list that
// is too short, and an arc without a circle, affect what is drawn afterwards.
bool CPLine::IsPathOutOfSight(CDC* pDC, CDrawGeometry* pGeom, double penWidth) const {
    const INT_PTR count = m_PointList.GetSize();
    if (pGeom->GetPass() == nullptr || count == 0 || m_SegPenFlagList.GetSize() < count ||
        m_SegPenColorList.GetSize() < count) {
        return false;
    }
    const CGePoint2d* points = m_PointList.GetData();
    CGePoint2d min = points[0];
    CGePoint2d max = points[0];
    double sum = 0.0; // Not-a-number where a coordinate is.
    for (INT_PTR i = 0; i < count; ++i) {
        sum += points[i].x + points[i].y;
        MergeBox(points[i], points[i], min, max);
        const double bulge = i < m_BulgeList.GetSize() ? CDraw_Common::GetAbs(m_BulgeList[i]) : 0.0;
        if (bulge < kStraightDrawn || (i + 1 == count && m_isClosed == 0)) {
            continue;
        }
        const CGePoint2d& start = points[i];
        const CGePoint2d& end = points[i + 1 < count ? i + 1 : 0];
        const double chord = std::fabs(end.x - start.x) + std::fabs(end.y - start.y); // At least its length.
        const double place = std::fabs(start.x) + std::fabs(start.y) + std::fabs(end.x) + std::fabs(end.y);
        if (!(chord * bulge > kSurelyRound * (1.0 + place)) || !(bulge < kSteepest)) {
            return false;
        }
        const double diameter = chord * (1.0 + bulge * bulge) / (2.0 * bulge);
        MergeBox(CGePoint2d(start.x - diameter, start.y - diameter), CGePoint2d(start.x + diameter, start.y + diameter),
                 min, max);
    }
    float x1 = 0.0f;
    float y1 = 0.0f;
    float x2 = 0.0f;
    float y2 = 0.0f;
    const CVectorViewCoordTran& tran = *pGeom->GetVectorViewCoordTran();
    tran.DPToLP(min.x, min.y, &x1, &y1);
    tran.DPToLP(max.x, max.y, &x2, &y2);
    return !std::isnan(sum) && IsOutOfSight(pDC, pGeom, {x1, y1, x2, y2}, penWidth);
}

// Each segment is a stroke of its own with its own pen: a dash pattern begins anew at each vertex, and a segment may
// have its own colour.
int CPLine::DrawPolyLine(CDC* pDC, CDrawGeometry* pGeom, CGePointArray& pts, CBulgeArray& bulges, int penStyle) {
    if (pts.IsEmpty()) {
        return 0;
    }
    const CVectorViewCoordTran& tran = *pGeom->GetVectorViewCoordTran();
    const int width = Truncate(PenWidth(pGeom, m_LockMode != 0));
    const bool once = m_DrawState == Dragging && pGeom->GetEditingOptions().strokesOnce;
    for (INT_PTR i = 0; i < pts.GetSize() - 1; ++i) {
        const double bulge = i < bulges.GetSize() ? bulges[i] : 0.0;
        CScopedBkMode background(pDC, TRANSPARENT);
        CKeptRop raster(pDC);
        const DWORD color = m_SegPenFlagList[i] == 1 ? m_SegPenColorList[i] : InnerGetPenColor(pGeom);
        // Compatibility 41: a polyline in an unknown state selects an empty pen.
        // In such a state, and when GDI makes no pen, an empty pen is selected. That changes nothing in the context,
        // whose own pen draws the strokes.
        CPen pen;
        if (m_DrawState == Normal || m_DrawState == Dragging) {
            pen.CreatePen(penStyle, width, color);
        } else if (m_DrawState == Selected) {
            pen.CreatePen(PS_DOT, width, color);
        }
        if (m_DrawState == Dragging) {
            pDC->SetROP2(R2_NOT);
        }
        CScopedPen selected(pDC, &pen);
        if (CDraw_Common::GetAbs(bulge) < kStraightDrawn) {
            // Compatibility 36: a straight line's stroke leaves out its last pixel, a polyline's inks both.
            StrokeStraight(pDC, tran, pts[i], pts[i + 1], once);
        } else if (!StrokeArc(pDC, tran, pts[i], pts[i + 1], bulge)) {
            // Compatibility 40: an arc that can't be built leaves pen and modes as they are.
            // A segment without a circle ends the polyline. Its pen is deleted here; GDI keeps it until another one is
            // selected.
            selected.Abandon();
            raster.Abandon();
            background.Abandon();
            return 0;
        }
        selected.Restore();
        background.Restore();
        raster.Restore();
    }
    return 1;
}

void CPLine::DrawGripPoints(CDC* pDC, CGePointArray& grips, CDrawGeometry* pGeom) {
    CPen vertexPen(PS_SOLID, 0, kVertexBlue);
    CPen midpointPen(PS_SOLID, 0, kMidpointYellow);
    CScopedPen selectedPen(pDC, &vertexPen);
    CScopedStockBrush selectedBrush(pDC, NULL_BRUSH);
    const CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
    const int half = GripHalf(pGeom);
    for (INT_PTR i = 0; i < grips.GetSize(); ++i) {
        int x = 0;
        int y = 0;
        tran->DPToLP(grips[i].x, grips[i].y, &x, &y);
        pDC->SelectObject(i % 2 != 0 ? &midpointPen : &vertexPen);
        pDC->Rectangle(WrapSubtract(x, half), WrapSubtract(y, half), WrapAdd(x, half + 1), WrapAdd(y, half + 1));
    }
    // Deleted while one of them is still selected: GDI frees that one when the old pen is selected again.
    vertexPen.DeleteObject();
    midpointPen.DeleteObject();
    selectedBrush.Restore();
    selectedPen.Restore();
}
