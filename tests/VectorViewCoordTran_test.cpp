// The mapping between drawing points and pixels: the flip of y, single precision where it is required, truncation,
// zoom.

#include "VectorViewCoordTran.h"

#include "support/CurveTools.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace {

struct Pixel {
    float x;
    float y;
};

Pixel Map(const CVectorViewCoordTran& tran, double x, double y) {
    Pixel pixel = {};
    tran.DPToLP(x, y, &pixel.x, &pixel.y);
    return pixel;
}

} // namespace

TEST(VectorViewCoordTran, ANewOneMapsUnitsToPixelsAboutTheCornerWithNoHeight) {
    CVectorViewCoordTran tran;
    EXPECT_EQ(1.0f, tran.GetScale());
    EXPECT_EQ(0.0, tran.GetOriginX());
    EXPECT_EQ(0.0, tran.GetOriginY());
    EXPECT_EQ(0, tran.GethScreen());
    EXPECT_EQ(CSize(0, 0), tran.GetScreenSize());
    EXPECT_EQ(-5.0f, Map(tran, 3, 5).y) << "above the window until the height is set";
}

TEST(VectorViewCoordTran, TheOriginLiesOnTheLeftEdgeJustBelowTheLastRow) {
    CVectorViewCoordTran tran;
    tran.SetOriginX(-20.25);
    tran.SetOriginY(1e6);
    tran.SetScreenSize(CSize(640, 480));
    EXPECT_EQ(480, tran.GethScreen());
    EXPECT_EQ(CSize(640, 480), tran.GetScreenSize());
    EXPECT_EQ(0.0f, Map(tran, -20.25, 1e6).x);
    EXPECT_EQ(480.0f, Map(tran, -20.25, 1e6).y);
    tran.SethScreen(300);
    EXPECT_EQ(CSize(640, 300), tran.GetScreenSize());
    CGePoint2d p;
    tran.LPToDP(CPoint(0, 300), p);
    EXPECT_EQ(-20.25, p.x);
    EXPECT_EQ(1e6, p.y);
}

TEST(VectorViewCoordTran, YGrowsUpwardsInDrawingsAndDownwardsInPixels) {
    CVectorViewCoordTran tran;
    tran.SethScreen(100);
    tran.SetScale(0.5f);
    EXPECT_EQ(20.0f, Map(tran, 10, 15).x);
    EXPECT_EQ(70.0f, Map(tran, 10, 15).y);
    double x = 0;
    double y = 0;
    tran.LPToDP(20.0f, 70.0f, &x, &y);
    EXPECT_EQ(10.0, x);
    EXPECT_EQ(15.0, y);
}

TEST(VectorViewCoordTran, TheDifferenceToTheOriginIsTakenInDouble) {
    CVectorViewCoordTran tran;
    tran.SetOriginX(16777216.0);
    tran.SetOriginY(16777216.0);
    EXPECT_EQ(1.0f, Map(tran, 16777217.0, 0).x) << "narrowed first, the two would be one";
    EXPECT_EQ(-1.0f, Map(tran, 0, 16777217.0).y);
}

TEST(VectorViewCoordTran, AboveTwoToTheTwentyFourPixelsComeInTwosAlsoInTheDoubleForm) {
    CVectorViewCoordTran tran;
    EXPECT_EQ(16777216.0f, Map(tran, 16777217.0, 0).x);
    EXPECT_EQ(16777220.0f, Map(tran, 16777219.0, 0).x);
    double x = 0;
    double y = 0;
    tran.DPToLP_Double(16777217.0, 16777219.0, &x, &y);
    EXPECT_EQ(16777216.0, x);
    EXPECT_EQ(-16777220.0, y);
}

TEST(VectorViewCoordTran, ForwardsTheDivisionIsTakenInDouble) {
    CVectorViewCoordTran tran;
    tran.SetScale(0.1f);
    // 2513.9 by 0.10000000149 is 25138.99963 in double, whose nearest float is 25139; the two as floats give 25138.998.
    EXPECT_EQ(25139.0f, tran.DToL(2513.9));
    EXPECT_EQ(25139.0f, Map(tran, 2513.9, 0).x);
    EXPECT_EQ(-25139.0f, Map(tran, 0, 2513.9).y);
    int x = 0;
    int y = 0;
    tran.DPToLP(2513.9, 2513.9, &x, &y);
    EXPECT_EQ(25139, x);
    EXPECT_EQ(-25139, y);
}

TEST(VectorViewCoordTran, TheFlipIsMadeInSinglePrecision) {
    CVectorViewCoordTran tran;
    tran.SethScreen(16777216);
    double x = 0;
    double y = 0;
    tran.DPToLP_Double(0.1, 0.5, &x, &y);
    EXPECT_EQ(16777216.0, y) << "not 16777215.5";
    EXPECT_EQ(0.100000001490116119384765625, x) << "the float, widened";
}

TEST(VectorViewCoordTran, WholePixelsAreTruncatedTowardsZero) {
    CVectorViewCoordTran tran;
    int x = 0;
    int y = 0;
    tran.DPToLP(2.9, 0.9, &x, &y);
    EXPECT_EQ(2, x);
    EXPECT_EQ(0, y) << "-0.9";
    tran.DPToLP(-2.9, -2.9, &x, &y);
    EXPECT_EQ(-2, x);
    EXPECT_EQ(2, y);
    CPoint pixel;
    tran.DPToLP(CGePoint2d(2.9, -7.99), pixel);
    EXPECT_EQ(CPoint(2, 7), pixel);
}

TEST(VectorViewCoordTran, WhatFitsNoPixelIsTheLowestInteger) {
    CVectorViewCoordTran tran;
    int x = 0;
    int y = 0;
    tran.DPToLP(3e9, std::numeric_limits<double>::quiet_NaN(), &x, &y);
    EXPECT_EQ(INT_MIN, x);
    EXPECT_EQ(INT_MIN, y);
    tran.DPToLP(1e300, -1e300, &x, &y);
    EXPECT_EQ(INT_MIN, x);
    EXPECT_EQ(INT_MIN, y);
}

TEST(VectorViewCoordTran, BackwardsTheProductIsTakenInSinglePrecisionAndTheSumInDouble) {
    CVectorViewCoordTran tran;
    tran.SetScale(0.1f);
    tran.SetOriginX(1e9);
    tran.SethScreen(3);
    double x = 0;
    double y = 0;
    tran.LPToDP(3.0f, 0.0f, &x, &y);
    // 3 * 0.1f is 0.30000001192092896 as a float, and 0.30000000447034836 in double.
    EXPECT_EQ(1e9 + 0.30000001192092896, x);
    EXPECT_EQ(0.30000001192092896, y);
    EXPECT_EQ(0.30000001192092896, tran.LToD(3.0f));
}

TEST(VectorViewCoordTran, TheKindOfThePointStays) {
    CVectorViewCoordTran tran;
    tran.SethScreen(10);
    CGePoint2d p(1, 1);
    p.type = 8;
    tran.LPToDP(CPoint(4, 4), p);
    EXPECT_POINT(4, 6, p);
    EXPECT_EQ(8, p.type);
}

TEST(VectorViewCoordTran, LengthsGoThroughTheScaleAlone) {
    CVectorViewCoordTran tran;
    tran.SetOriginX(55);
    tran.SetOriginY(66);
    tran.SetScale(4.0f);
    EXPECT_EQ(2.5f, tran.DToL(10));
    EXPECT_EQ(40.0, tran.LToD(10.0f));
    EXPECT_EQ(-2.5f, tran.DToL(-10));
}

TEST(VectorViewCoordTran, AScaleOfZeroIsTakenAndMakesLengthsInfinite) {
    CVectorViewCoordTran tran;
    EXPECT_EQ(1, tran.SetScale(0.0f));
    EXPECT_EQ(0.0f, tran.GetScale());
    EXPECT_TRUE(std::isinf(tran.DToL(5)));
    EXPECT_EQ(1, tran.SetScale(-2.0f));
    EXPECT_EQ(-2.0f, tran.GetScale()) << "no clamp";
}

TEST(VectorViewCoordTran, ZoomingAboutAPixelKeepsTheDrawingPointUnderIt) {
    CVectorViewCoordTran tran;
    tran.SethScreen(200);
    tran.SetScale(CPoint(100, 50), 0.5f); // Under the pixel is (100, 150).
    EXPECT_EQ(0.5f, tran.GetScale());
    EXPECT_EQ(50.0, tran.GetOriginX()); // 100 - 100 * 0.5
    EXPECT_EQ(75.0, tran.GetOriginY()); // 150 - 150 * 0.5
    CGePoint2d under;
    tran.LPToDP(CPoint(100, 50), under);
    EXPECT_POINT(100, 150, under);
}

TEST(VectorViewCoordTran, APanMovesThePictureByPixelsToTheRightAndDown) {
    CVectorViewCoordTran tran;
    tran.SetScale(0.5f);
    tran.SetOriginX(100.0);
    tran.SetOriginY(200.0);
    tran.Pan(CGeVector2d(10, 6));
    EXPECT_EQ(95.0, tran.GetOriginX());
    EXPECT_EQ(203.0, tran.GetOriginY());
    EXPECT_EQ(0.5f, tran.GetScale());
    // 10000 pixels of 1e35 units are more than a float holds.
    tran.SetScale(1e35f);
    tran.Pan(CGeVector2d(10000, 1));
    EXPECT_EQ(95.0, tran.GetOriginX());
    EXPECT_EQ(203.0, tran.GetOriginY()) << "neither axis moves alone";
}

TEST(VectorViewCoordTran, AMappingIsTakenOnlyWithAFiniteScaleAndFiniteOrigins) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    CVectorViewCoordTran tran;
    CVectorViewCoordTran other;
    other.SetScale(2.0f);
    other.SetOriginX(3.0);
    other.SetOriginY(4.0);
    other.SetScreenSize(CSize(640, 480));
    EXPECT_TRUE(tran.TakeIfFinite(other));
    for (float bad : {nan, infinite, -infinite}) {
        for (int field : {0, 1, 2}) {
            CVectorViewCoordTran refused;
            refused.SetScale(field == 0 ? bad : 1.0f);
            refused.SetOriginX(field == 1 ? bad : 0.0);
            refused.SetOriginY(field == 2 ? bad : 0.0);
            EXPECT_FALSE(tran.TakeIfFinite(refused)) << bad << " " << field;
        }
    }
    EXPECT_EQ(2.0f, tran.GetScale());
    EXPECT_EQ(3.0, tran.GetOriginX());
    EXPECT_EQ(4.0, tran.GetOriginY());
    EXPECT_EQ(CSize(640, 480), tran.GetScreenSize());
}

TEST(VectorViewCoordTran, ZoomingAboutThePixelOfTheOriginLeavesTheOrigin) {
    CVectorViewCoordTran tran;
    tran.SethScreen(200);
    tran.SetOriginX(12.5);
    tran.SetOriginY(-3.25);
    tran.SetScale(CPoint(0, 200), 7.3f);
    EXPECT_EQ(12.5, tran.GetOriginX());
    EXPECT_EQ(-3.25, tran.GetOriginY());
}
