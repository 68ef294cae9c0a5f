// The arithmetic of bulges: tops, the way back with its turned sign, the thresholds, and the stroke for hosts.

#include "DrawCommon.h"

#include "support/CurveTools.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(DrawCommon, TheMagnitudeOfZeroIsANegativeZero) {
    EXPECT_EQ(2.5, CDraw_Common::GetAbs(2.5));
    EXPECT_EQ(2.5, CDraw_Common::GetAbs(-2.5));
    EXPECT_TRUE(std::signbit(CDraw_Common::GetAbs(0.0))) << "0 is not above 0";
}

TEST(DrawCommon, APositiveBulgeHasItsTopOnTheRight) {
    EXPECT_POINT(1, -1, CDraw_Common::GetArcMidHighPt(CGePoint2d(0, 0), CGePoint2d(2, 0), 1.0));
    EXPECT_POINT(1, 1, CDraw_Common::GetArcMidHighPt(CGePoint2d(0, 0), CGePoint2d(2, 0), -1.0));
    // Upwards, a chord of 10 about (3, 5), a height of 5 * 0.4.
    EXPECT_POINT(5, 5, CDraw_Common::GetArcMidHighPt(CGePoint2d(3, 0), CGePoint2d(3, 10), 0.4));
    EXPECT_POINT(1, 5, CDraw_Common::GetArcMidHighPt(CGePoint2d(3, 0), CGePoint2d(3, 10), -0.4));
}

TEST(DrawCommon, ATinyPositiveBulgeHasItsTopOnTheLeft) {
    EXPECT_POINT(1, 0.0005, CDraw_Common::GetArcMidHighPt(CGePoint2d(0, 0), CGePoint2d(2, 0), 0.0005));
    EXPECT_POINT(1, 0.001, CDraw_Common::GetArcMidHighPt(CGePoint2d(0, 0), CGePoint2d(2, 0), 0.001));
    EXPECT_POINT(1, -0.0011, CDraw_Common::GetArcMidHighPt(CGePoint2d(0, 0), CGePoint2d(2, 0), 0.0011));
}

TEST(DrawCommon, AStraightSegmentHasItsTopInTheMiddle) {
    EXPECT_POINT(1, 3, CDraw_Common::GetArcMidHighPt(CGePoint2d(0, 2), CGePoint2d(2, 4), 0.0));
}

TEST(DrawCommon, AChordWithoutLengthHasNoTop) {
    const CGePoint2d top = CDraw_Common::GetArcMidHighPt(CGePoint2d(4, 4), CGePoint2d(4, 4), 1.0);
    EXPECT_TRUE(std::isnan(top.x));
    EXPECT_TRUE(std::isnan(top.y));
}

TEST(DrawCommon, TheWayBackGivesATopOnTheLeftAPositiveNumber) {
    double bulge = 99;
    EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(0, 0), CGePoint2d(2, 0), CGePoint2d(1, 1), bulge));
    EXPECT_EQ(1.0, bulge);
    EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(0, 0), CGePoint2d(2, 0), CGePoint2d(1, -1), bulge));
    EXPECT_EQ(-1.0, bulge);
}

TEST(DrawCommon, TheWayBackMeasuresFromTheMiddleOfTheChordAlsoAslant) {
    double bulge = 99;
    // From (1, 0) to (1.6, 0.8) is 1, though its height is 0.8 only.
    EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(0, 0), CGePoint2d(2, 0), CGePoint2d(1.6, 0.8), bulge));
    EXPECT_DOUBLE_EQ(1.0, bulge);
}

TEST(DrawCommon, ATopOnTheChordIsStraight) {
    double bulge = 99;
    EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(0, 0), CGePoint2d(2, 0), CGePoint2d(1.5, 0), bulge));
    EXPECT_EQ(0.0, bulge);
}

TEST(DrawCommon, WhetherATopIsOnTheChordIsAskedOfAnArea) {
    double bulge = 99;
    EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(0, 0), CGePoint2d(2, 0), CGePoint2d(1, 5e-6), bulge));
    EXPECT_EQ(0.0, bulge) << "2 * 5e-6 is not above 1e-5";
    EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(0, 0), CGePoint2d(2, 0), CGePoint2d(1, 6e-6), bulge));
    EXPECT_DOUBLE_EQ(6e-6, bulge);
    // A long chord: the ratio is a billion times smaller and counts.
    EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(0, 0), CGePoint2d(2e6, 0), CGePoint2d(1e6, 6e-9), bulge));
    EXPECT_DOUBLE_EQ(6e-15, bulge);
}

TEST(DrawCommon, BetweenCoincidentPointsThereIsNoBulge) {
    double bulge = 99;
    EXPECT_EQ(0, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(1, 1), CGePoint2d(1, 1 + 4e-16), CGePoint2d(5, 5), bulge));
    EXPECT_EQ(99, bulge) << "left alone";
}

TEST(DrawCommon, AStoredBulgeIsTheNegativeOfWhatTheWayBackGives) {
    const CGePoint2d a(-3, 7);
    const CGePoint2d b(12, -1);
    for (double stored : {0.25, -0.25, 1.0, -1.0, 3.5, -3.5}) {
        double bulge = 0;
        EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(a, b, CDraw_Common::GetArcMidHighPt(a, b, stored), bulge));
        EXPECT_NEAR(stored, -1.0 * bulge, 1e-14);
    }
}
