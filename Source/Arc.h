// CArc: a circular arc, and the circle through three points, by which the curved segments of polylines are computed.
// Layer 5: drawables.
#pragma once

#include "Circle.h"

// Runs anticlockwise (y up) from the start angle to the end angle. With a start above the end it crosses angle 0.
// Compatibility 28: an arc is hit on its whole circle.
class NRVECTORVIEW_API CArc : public CCircle {
    DECLARE_SERIAL(CArc)
public:
    CArc() = default;
    // Angles in radians.
    CArc(Gdiplus::PointF center, float radius, float startAngle, float endAngle);

    // The circle through three points. 0, with the results unchanged, when two of them are equal or all are on one
    // line. The radius is rounded to single precision.
    static int Calarc(CGePoint2d p1, CGePoint2d p2, CGePoint2d p3, CGePoint2d& center, double& radius);
    // The same, and the angles of the anticlockwise arc between p1 and p3 that passes through p2, whichever way the
    // points run. On failure the results are set too: zeros, and the angles of the points as seen from (0, 0).
    static int Calarc(CGePoint2d p1, CGePoint2d p2, CGePoint2d p3, double* cx, double* cy, double* radius,
                      double* startAngle, double* endAngle);

    // Radians, anticlockwise from the positive x axis; any value is stored.
    double GetStartAngle() { return m_StartAngle; }
    double GetEndAngle() { return m_EndAngle; }
    // 1 when the angle, in radians, is strictly within the sweep: the ends are outside.
    int IsInArc(float angle);
    CString GetName() override;
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    // Centre, start, middle, end.
    void getGripPoints(CGePointArray& out, int mask) override;

    // Radians. Nothing repaints.
    void SetStartAngle(double angle) { m_StartAngle = angle; }
    void SetEndAngle(double angle) { m_EndAngle = angle; }
    // The arc from p1 to p3 on the circle through the three points, which the caller gives anticlockwise: the angles
    // are not put into any order. 0, and the arc is unchanged, when there is no such circle.
    int Set(const CGePoint2d& p1, const CGePoint2d& p2, const CGePoint2d& p3);
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    // Transforms the start, middle and end points and builds the arc through them: unlike a circle's, its radius
    // scales, and it mirrors.
    void transformBy(const CGeMatrix2d& m) override;
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;
    void ExchangeState(CStateExchange& exchange) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override; // The angles, after the circle.

protected:
    // These set x and y and leave `type` unchanged.
    void GetStartPT(CGePoint2d& p) { PointAt(m_StartAngle, p); }
    void GetEndPT(CGePoint2d& p) { PointAt(m_EndAngle, p); }
    void GetMidPT(CGePoint2d& p);

    // Radians.
    double m_StartAngle = 0.0;
    double m_EndAngle = 0.0;

private:
    void PointAt(double angle, CGePoint2d& p);
    // The arc through three points in either direction; unchanged when there is none.
    void Rebuild(CGePoint2d start, CGePoint2d mid, CGePoint2d end);
};
