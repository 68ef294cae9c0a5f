// CDraw_Common: the arithmetic of bulges, the one number that stands for a curved segment.
// Layer 5: drawables (geometry, and one stroke for hosts).
#pragma once

#include "Geometry2d.h"

#include <afxtempl.h>

class CDrawGeometry;

using CBulgeArray = CArray<double, double&>;

// A bulge is the height of an arc over its chord divided by half the chord: 1 is a half circle, 0 straight. A positive
// one lies on the right of the direction p1 to p2 (y up), which makes the arc run anticlockwise; a negative one on the
// left. Entry i of a bulge list belongs to the segment from vertex i to vertex i + 1.

// Below this magnitude a segment is drawn and measured as straight. Hit tests and perpendicular feet have a limit of
// their own, see CPLine.
inline constexpr double kStraightDrawn = 0.001;

class NRVECTORVIEW_API CDraw_Common {
public:
    CDraw_Common() = default;
    virtual ~CDraw_Common() = default;

    static double GetAbs(double x) { return x > 0 ? x : -x; }
    // The top of the arc. A bulge of 0.001 or less counts as a negative one here, so that a tiny positive bulge has
    // its top on the left. Not-a-number for a chord without length.
    static CGePoint2d GetArcMidHighPt(CGePoint2d p1, CGePoint2d p2, double bulge);
    // The number for an arc over p1-p2 with its top at mp, and with the opposite sign of a stored bulge: a top on the
    // left comes out positive. Whoever stores it multiplies by -1. A top on the chord gives 0. Returns 0, and leaves
    // `bulge` alone, when p1 and p2 are one point.
    static int CalTwoPoint_Bulge(CGePoint2d p1, CGePoint2d p2, CGePoint2d mp, double& bulge);

    // Strokes a run of segments with the context's own pen and raster mode. The points are whole drawing units, not
    // pixels. 0 for null and for an arc that can't be built; what came before it is drawn.
    static int DrawPolyLine(CDC* pDC, CDrawGeometry* pGeom, CPoint* pts, int count, CBulgeArray& bulges);
};
