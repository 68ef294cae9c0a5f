// CDraw_Common: the arithmetic of bulges, the numbers that describe how far segments of polylines are curved.
// Layer 5: drawables (geometry, and one stroke for hosts).
#pragma once

#include "Geometry2d.h"

#include <afxtempl.h>

class CDrawGeometry;

using CBulgeArray = CArray<double, double&>; // One bulge for each segment of a polyline.

// A bulge is the height of an arc over its chord divided by half the chord: 1 is a half circle, 0 straight. With a
// positive bulge the arc is on the right of the direction from p1 to p2 (y up), so that it runs anticlockwise; with a
// negative one it is on the left. Entry i of a bulge list belongs to the segment from vertex i to vertex i + 1.

// Below this magnitude a segment is straight when it is drawn and when its extent is computed. Hit tests and
// perpendicular feet have another limit, kStraightHit in PLine.h.
inline constexpr double kStraightDrawn = 0.001;

class NRVECTORVIEW_API CDraw_Common {
public:
    CDraw_Common() = default;
    virtual ~CDraw_Common() = default;

    // The magnitude.
    static double GetAbs(double x) { return x > 0 ? x : -x; }
    // The point of the arc that is farthest from the chord. A bulge of 0.001 or less counts as a negative one here, so
    // that a tiny positive bulge has it on the left. Not-a-number for a chord without length.
    static CGePoint2d GetArcMidHighPt(CGePoint2d p1, CGePoint2d p2, double bulge);
    // The bulge of an arc over p1-p2 whose farthest point is mp, with the opposite sign of a stored bulge: positive for
    // an arc on the left. Callers that store it multiply it by -1. 0 for a point mp on the chord. The result is 0, and
    // `bulge` is unchanged, when p1 and p2 are one point; otherwise it is 1.
    static int CalTwoPoint_Bulge(CGePoint2d p1, CGePoint2d p2, CGePoint2d mp, double& bulge);

    // Strokes a chain of segments with the pen and raster mode of the context. The points are in whole drawing units,
    // not in pixels. 0 for null, and for an arc without a circle, at which the drawing ends; otherwise 1.
    static int DrawPolyLine(CDC* pDC, CDrawGeometry* pGeom, CPoint* pts, int count, CBulgeArray& bulges);
};
