// CGeArithmetic: where a circle and a line meet.
// Layer 4: geometry.
#pragma once

#include "Geometry2d.h"

class CGeArithmetic {
public:
    CGeArithmetic() = default;
    virtual ~CGeArithmetic() = default;

    // The circle about p with radius r, and the line a x + b y + c = 0. Gives the number of common points, 0 to 2, and
    // writes that many. p is added to q1 and q2 in every case, so that a point without a result is moved by p.
    static int CircleLineIntersection(CGePoint2d p, double r, double a, double b, double c, CGePoint2d& q1,
                                      CGePoint2d& q2);
};
