#include "GeArithmetic.h"

#include <cmath>

namespace {

// The half chord at distance `offset` from the centre of a circle of radius r, and the number of its ends.
int HalfChord(double r, double offset, double& half) {
    const double offsetSquared = offset * offset;
    const double rSquared = r * r;
    if (offsetSquared > rSquared) {
        return 0;
    }
    half = offsetSquared == rSquared ? 0.0 : std::sqrt(rSquared - offsetSquared);
    return offsetSquared == rSquared ? 1 : 2;
}

// These three take the circle's centre as the origin, where the line is a x + b y + k = 0.

int MeetHorizontal(double r, double y, CGePoint2d& q1, CGePoint2d& q2) {
    double half = 0.0;
    const int count = HalfChord(r, y, half);
    if (count >= 1) {
        q1.SetPoint(half, y);
    }
    if (count == 2) {
        q2.SetPoint(-half, y);
    }
    return count;
}

int MeetVertical(double r, double x, CGePoint2d& q1, CGePoint2d& q2) {
    double half = 0.0;
    const int count = HalfChord(r, x, half);
    if (count >= 1) {
        q1.SetPoint(x, half);
    }
    if (count == 2) {
        q2.SetPoint(x, -half);
    }
    return count;
}

int MeetSlanted(double r, double a, double b, double k, CGePoint2d& q1, CGePoint2d& q2) {
    const double normSquared = a * a + b * b;
    const double d = b * b * k * k - normSquared * (k * k - a * a * r * r);
    if (d < 0) {
        return 0;
    }
    const auto pointAt = [&](double y, CGePoint2d& q) { q.SetPoint((-k - b * y) / a, y); };
    if (d == 0) {
        pointAt(-b * k / normSquared, q1);
        return 1;
    }
    const double root = std::sqrt(d);
    pointAt((-b * k + root) / normSquared, q1);
    pointAt((-b * k - root) / normSquared, q2);
    return 2;
}

} // namespace

int CGeArithmetic::CircleLineIntersection(CGePoint2d p, double r, double a, double b, double c, CGePoint2d& q1,
                                          CGePoint2d& q2) {
    const double k = c + a * p.x + b * p.y;
    int count = 0;
    if (a == 0 && b != 0) {
        count = MeetHorizontal(r, -k / b, q1, q2);
    } else if (b == 0 && a != 0) {
        count = MeetVertical(r, -k / a, q1, q2);
    } else if (a != 0) {
        count = MeetSlanted(r, a, b, k, q1, q2);
    }
    // Compatibility 30: a missed line moves both results by the centre.
    // Moved back from the circle's centre, whether or not a point was found.
    q1.SetPoint(q1.x + p.x, q1.y + p.y);
    q2.SetPoint(q2.x + p.x, q2.y + p.y);
    return count;
}
