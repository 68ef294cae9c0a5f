// CArc: a circular arc, and the circle through three points on which all bulged segments stand.
// Layer 5: drawables.
#pragma once

#include "Circle.h"

// Runs anticlockwise (y up) from the start angle to the end angle; a start above the end crosses angle 0.
class NRVECTORVIEW_API CArc : public CCircle {
    DECLARE_SERIAL(CArc)
public:
    CArc() = default;
    // Angles in radians.
    CArc(Gdiplus::PointF center, float radius, float startAngle, float endAngle);

    // The circle through three points. 0, with the results untouched, when two of them are one or all are in line.
    // The radius carries the seven digits of a float, no more.
    static int Calarc(CGePoint2d p1, CGePoint2d p2, CGePoint2d p3, CGePoint2d& center, double& radius);
    // The same with the angles of the anticlockwise sweep that passes through p2, whichever way the points run. The
    // results are written on failure too: zeros, and the angles of the points as seen from (0, 0).
    static int Calarc(CGePoint2d p1, CGePoint2d p2, CGePoint2d p3, double* cx, double* cy, double* radius,
                      double* startAngle, double* endAngle);

    double GetStartAngle() { return m_StartAngle; }
    double GetEndAngle() { return m_EndAngle; }
    // 1 when the angle, in radians, lies strictly within the sweep: the ends are outside.
    int IsInArc(float angle);
    CString GetName() override;
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    // Centre, start, middle, end.
    void getGripPoints(CGePointArray& out, int mask) override;

    void SetStartAngle(double angle) { m_StartAngle = angle; }
    void SetEndAngle(double angle) { m_EndAngle = angle; }
    // The arc from p1 to p3 on the circle through the three. The angles are not put into any order: the caller gives
    // the points anticlockwise. 0, and the arc as it was, when there is no such circle.
    int Set(const CGePoint2d& p1, const CGePoint2d& p2, const CGePoint2d& p3);
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    // Through the start, middle and end points: scales the radius and mirrors, as a circle does not.
    void transformBy(const CGeMatrix2d& m) override;
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override;

protected:
    // These write x and y and leave `type` alone.
    void GetStartPT(CGePoint2d& p) { PointAt(m_StartAngle, p); }
    void GetEndPT(CGePoint2d& p) { PointAt(m_EndAngle, p); }
    void GetMidPT(CGePoint2d& p);

    double m_StartAngle = 0.0; // Radians.
    double m_EndAngle = 0.0;

private:
    void PointAt(double angle, CGePoint2d& p);
    // The arc through three points in any order; stays as it was when there is none.
    void Rebuild(CGePoint2d start, CGePoint2d mid, CGePoint2d end);
};
