// Where a circle and a line meet: level, upright and slanted lines, touching and missing, and no line at all.

#include "GeArithmetic.h"

#include "support/CurveTools.h"

#include <gtest/gtest.h>

namespace {

struct Meeting {
    Meeting(CGePoint2d p, double r, double a, double b, double c)
        : count(CGeArithmetic::CircleLineIntersection(p, r, a, b, c, q1, q2)) {}
    // The former contents of the results.
    CGePoint2d q1 = CGePoint2d(1000, 2000);
    CGePoint2d q2 = CGePoint2d(3000, 4000);
    int count;
};

} // namespace

TEST(GeArithmetic, ALevelLineMeetsTheCircleRightThenLeft) {
    const Meeting m(CGePoint2d(10, 20), 5, 0, 1, -23);
    EXPECT_EQ(2, m.count);
    EXPECT_POINT(14, 23, m.q1);
    EXPECT_POINT(6, 23, m.q2);
}

TEST(GeArithmetic, AnUprightLineMeetsTheCircleAboveThenBelow) {
    const Meeting m(CGePoint2d(10, 20), 5, 2, 0, -14); // x = 7
    EXPECT_EQ(2, m.count);
    EXPECT_POINT(7, 24, m.q1);
    EXPECT_POINT(7, 16, m.q2);
}

TEST(GeArithmetic, ATouchingLineGivesOnePointAndMovesTheOtherByTheCentre) {
    const Meeting level(CGePoint2d(10, 20), 5, 0, 1, -25);
    EXPECT_EQ(1, level.count);
    EXPECT_POINT(10, 25, level.q1);
    EXPECT_POINT(3010, 4020, level.q2);
    const Meeting upright(CGePoint2d(10, 20), 5, 1, 0, -5);
    EXPECT_EQ(1, upright.count);
    EXPECT_POINT(5, 20, upright.q1);
    const Meeting slanted(CGePoint2d(0, 0), 5, 3, 4, -25);
    EXPECT_EQ(1, slanted.count);
    EXPECT_POINT(3, 4, slanted.q1);
    EXPECT_POINT(3000, 4000, slanted.q2);
}

TEST(GeArithmetic, ASlantedLineGivesTheUpperPointFirst) {
    const Meeting unit(CGePoint2d(0, 0), 1, 1, 1, -1);
    EXPECT_EQ(2, unit.count);
    EXPECT_POINT(0, 1, unit.q1);
    EXPECT_POINT(1, 0, unit.q2);
    // The same away from the origin: x + y = 31.
    const Meeting moved(CGePoint2d(10, 20), 1, 1, 1, -31);
    EXPECT_POINT(10, 21, moved.q1);
    EXPECT_POINT(11, 20, moved.q2);
}

TEST(GeArithmetic, AMissMovesBothResultsByTheCentre) {
    for (const Meeting& m : {Meeting(CGePoint2d(1, 2), 5, 0, 1, -8), Meeting(CGePoint2d(1, 2), 5, 1, 0, -7),
                             Meeting(CGePoint2d(1, 2), 5, 3, 4, -61), Meeting(CGePoint2d(1, 2), 5, 0, 0, 3)}) {
        EXPECT_EQ(0, m.count);
        EXPECT_POINT(1001, 2002, m.q1);
        EXPECT_POINT(3001, 4002, m.q2);
    }
}
