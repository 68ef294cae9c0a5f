#include "Arc.h"

#include "DrawStrokes.h"

#include <cmath>
#include <utility>

IMPLEMENT_SERIAL(CArc, CCircle, VERSIONABLE_SCHEMA | 5)

namespace {

enum Grip { kGripCenter = 0, kGripStart = 1, kGripMiddle = 2, kGripEnd = 3 };

// Twice the area of the triangle of three points, in square drawing units: below this they are on one line.
constexpr double kInLine = 1e-15;

// The angle between two quadrant points. It has single precision, like the angle that IsInArc takes: a double would
// move the limits of the extent's test.
constexpr float kQuadrantStep = 1.5707964f;

// Compatibility 46: an arc's width falls to zero.
// Zoomed out, an arc takes GDI's thinnest pen, of width 0; the other kinds take at least one pixel.
constexpr float kThinnestPen = 0.0f;

void GrowBy(double x, double y, CGePoint2d& min, CGePoint2d& max) {
    if (x < min.x) {
        min.x = x;
    }
    if (y < min.y) {
        min.y = y;
    }
    if (x > max.x) {
        max.x = x;
    }
    if (y > max.y) {
        max.y = y;
    }
}

} // namespace

// ---- Construction --------------------------------------------------------------------------------------------------

CArc::CArc(Gdiplus::PointF center, float radius, float startAngle, float endAngle)
    : CCircle(center, radius), m_StartAngle(startAngle), m_EndAngle(endAngle) {}

// ---- The circle through three points -------------------------------------------------------------------------------

int CArc::Calarc(CGePoint2d p1, CGePoint2d p2, CGePoint2d p3, CGePoint2d& center, double& radius) {
    if (p1 == p2 || p1 == p3 || p2 == p3) {
        return 0;
    }
    // The sides of the triangle, without the vector class: each paint calls this for every curved segment.
    const double ax = p2.x - p1.x;
    const double ay = p2.y - p1.y;
    const double bx = p3.x - p2.x;
    const double by = p3.y - p2.y;
    const double cx = p1.x - p3.x;
    const double cy = p1.y - p3.y;
    if (std::fabs(ax * -by + ay * bx) < kInLine) {
        return 0;
    }
    const double t = (bx * cx + by * cy) / (-ay * cx + ax * cy);
    center = CGePoint2d(p1.x + (ax + -ay * t) * 0.5, p1.y + (ay + ax * t) * 0.5);
    // Compatibility 83: the radius through three points has single precision.
    radius = static_cast<double>(static_cast<float>(std::sqrt(ax * ax + ay * ay) * std::sqrt(t * t + 1)) / 2.0f);
    return 1;
}

int CArc::Calarc(CGePoint2d p1, CGePoint2d p2, CGePoint2d p3, double* cx, double* cy, double* radius,
                 double* startAngle, double* endAngle) {
    CGePoint2d center;
    double r = 0.0;
    const int found = Calarc(p1, p2, p3, center, r);
    const double a1 = (p1 - center).angle();
    const double a2 = (p2 - center).angle();
    const double a3 = (p3 - center).angle();
    double lo = a1;
    double hi = a3;
    if (lo > hi) {
        std::swap(lo, hi);
    }
    if (!(lo < a2 && a2 < hi)) {
        std::swap(lo, hi);
    }
    *cx = center.x;
    *cy = center.y;
    *radius = r;
    *startAngle = lo;
    *endAngle = hi;
    return found;
}

// ---- Geometry and queries ------------------------------------------------------------------------------------------

void CArc::PointAt(double angle, CGePoint2d& p) {
    p.SetPoint(m_CircleX + m_Radius * std::cos(angle), m_CircleY + m_Radius * std::sin(angle));
}

void CArc::GetMidPT(CGePoint2d& p) {
    // For an arc across angle 0 the mean of the two numbers is on the opposite side of the circle, so half a turn is
    // added.
    PointAt(m_StartAngle > m_EndAngle ? (m_StartAngle - m_EndAngle) / 2 + m_EndAngle + kHalfTurn
                                      : (m_EndAngle - m_StartAngle) / 2 + m_StartAngle,
            p);
}

int CArc::IsInArc(float angle) {
    // The angle is a float and the limits are doubles: at the ends themselves the result depends on the rounding of the
    // float.
    const double a = static_cast<double>(angle);
    if (m_EndAngle > m_StartAngle) {
        return a > m_StartAngle && a < m_EndAngle;
    }
    if (m_StartAngle > m_EndAngle) {
        return a > m_StartAngle || a < m_EndAngle;
    }
    return 0;
}

CString CArc::GetName() {
    return L"圆弧";
}

int CArc::GetRect(CVectorViewCoordTran*, CGePoint2d& min, CGePoint2d& max) {
    if (m_IsShow == 0) {
        return 0;
    }
    CGePoint2d end;
    GetEndPT(end);
    GetStartPT(min);
    max.SetPoint(min.x, min.y);
    GrowBy(end.x, end.y, min, max);
    const double quadrants[][2] = {{m_CircleX + m_Radius, m_CircleY},
                                   {m_CircleX, m_CircleY + m_Radius},
                                   {m_CircleX - m_Radius, m_CircleY},
                                   {m_CircleX, m_CircleY - m_Radius}};
    for (int i = 0; i < 4; ++i) {
        if (IsInArc(kQuadrantStep * static_cast<float>(i)) != 0) {
            GrowBy(quadrants[i][0], quadrants[i][1], min, max);
        }
    }
    return 1;
}

void CArc::getGripPoints(CGePointArray& out, int) {
    CGePoint2d center = Center();
    CGePoint2d start;
    CGePoint2d mid;
    CGePoint2d end;
    GetStartPT(start);
    GetMidPT(mid);
    GetEndPT(end);
    out.Add(center);
    out.Add(start);
    out.Add(mid);
    out.Add(end);
}

// ---- Editing -------------------------------------------------------------------------------------------------------

int CArc::Set(const CGePoint2d& p1, const CGePoint2d& p2, const CGePoint2d& p3) {
    CGePoint2d center;
    double radius = 0.0;
    if (Calarc(p1, p2, p3, center, radius) == 0) {
        return 0;
    }
    SetCenter(center);
    m_Radius = radius;
    m_StartAngle = (p1 - center).angle();
    m_EndAngle = (p3 - center).angle();
    return 1;
}

void CArc::Rebuild(CGePoint2d start, CGePoint2d mid, CGePoint2d end) {
    double cx = 0.0;
    double cy = 0.0;
    double radius = 0.0;
    double startAngle = 0.0;
    double endAngle = 0.0;
    if (Calarc(start, mid, end, &cx, &cy, &radius, &startAngle, &endAngle) != 0) {
        m_CircleX = cx;
        m_CircleY = cy;
        m_Radius = radius;
        m_StartAngle = startAngle;
        m_EndAngle = endAngle;
    }
}

void CArc::moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) {
    const int grip = indices.GetAt(0);
    if (grip == kGripCenter) {
        SetCenter(Center() + v);
        return;
    }
    CGePoint2d start;
    CGePoint2d mid;
    CGePoint2d end;
    GetStartPT(start);
    GetMidPT(mid);
    GetEndPT(end);
    switch (grip) {
    case kGripStart:
        start = start + v;
        break;
    case kGripMiddle:
        mid = mid + v;
        break;
    case kGripEnd:
        end = end + v;
        break;
    default:
        return;
    }
    Rebuild(start, mid, end);
}

void CArc::transformBy(const CGeMatrix2d& m) {
    CGePoint2d start;
    CGePoint2d mid;
    CGePoint2d end;
    GetStartPT(start);
    GetMidPT(mid);
    GetEndPT(end);
    Rebuild(start.transformBy(m), mid.transformBy(m), end.transformBy(m));
}

void CArc::GetProperty(CDrawableProperty& list) {
    CCircle::GetProperty(list);
    PropertyRows::AddDouble(list, L"m_StartAngle", L"起点弧度", m_StartAngle);
    PropertyRows::AddDouble(list, L"m_EndAngle", L"端点弧度", m_EndAngle);
}

void CArc::SetProperty(CDrawableProperty& list) {
    CCircle::SetProperty(list);
    PropertyRows::TakeDouble(list, L"m_StartAngle", m_StartAngle);
    PropertyRows::TakeDouble(list, L"m_EndAngle", m_EndAngle);
}

void CArc::ExchangeState(CStateExchange& exchange) {
    CCircle::ExchangeState(exchange);
    exchange.Level<CArc>();
    exchange.Value(m_StartAngle);
    exchange.Value(m_EndAngle);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CArc::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    DrawInFrame(pDC, pGeom, L"CArc::Draw", L"3", [&](LPCTSTR& stage) {
        if (!IsToBeDrawn()) {
            return false;
        }
        stage = L"1";
        const PenLook look = ResolvePen(pGeom, m_LockMode != 0, kThinnestPen);
        const CVectorViewCoordTran& tran = *pGeom->GetVectorViewCoordTran();
        float px = 0.0f;
        float py = 0.0f;
        tran.DPToLP(m_CircleX, m_CircleY, &px, &py);
        if (IsOutOfSight(pDC, pGeom, RoundBox(px, py, tran.DToL(m_Radius)), look.width)) {
            pDC->SetBkMode(TRANSPARENT);
            return false;
        }
        const CArcPixels arc(tran, m_CircleX, m_CircleY, m_Radius, m_StartAngle, m_EndAngle);
        stage = L"2";
        const auto truncated = [](float coordinate) { return Truncate(coordinate); };
        if (m_DrawState == Selected || m_DrawState == Normal) {
            pDC->SetBkMode(TRANSPARENT);
            CPen pen(m_DrawState == Selected ? PS_DOT : look.style, look.width, look.color);
            CScopedPen selected(pDC, &pen);
            CScopedStockBrush brush(pDC, NULL_BRUSH);
            arc.Stroke(pDC, truncated);
            brush.Restore();
            selected.Restore();
        } else if (m_DrawState == Dragging) {
            CPen pen(look.style, look.width, look.color);
            CScopedPen selected(pDC, &pen);
            CScopedRop raster(pDC, R2_NOT);
            arc.Stroke(pDC, truncated);
            raster.Restore();
            selected.Restore();
        }
        return true;
    });
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

void CArc::Serialize(CArchive& ar) {
    CCircle::Serialize(ar);
    if (ar.IsStoring()) {
        ar << static_cast<int>(kCurrentSchema) << m_StartAngle << m_EndAngle;
        return;
    }
    if (IsCurrentForm(ar)) {
        int version = 0;
        ar >> version;
    }
    ar >> m_StartAngle >> m_EndAngle;
}
