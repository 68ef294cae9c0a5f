// The one conversion to int, sums that wrap, and where the mapping between points and pixels rounds.

#include "Truncate.h"

#include "VectorViewCoordTran.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>

// ---- Truncation ----------------------------------------------------------------------------------------------------

TEST(Truncate, GoesTowardsZero) {
    EXPECT_EQ(2, Truncate(2.999999999));
    EXPECT_EQ(-2, Truncate(-2.999999999));
    EXPECT_EQ(0, Truncate(0.9999999999999999));
    EXPECT_EQ(0, Truncate(-0.9999999999999999));
    EXPECT_EQ(0, Truncate(-0.0));
    EXPECT_EQ(0, Truncate(std::numeric_limits<double>::denorm_min()));
    EXPECT_EQ(2, Truncate(2.9999998f));
    EXPECT_EQ(-2, Truncate(-2.9999998f));
    EXPECT_EQ(0, Truncate(-0.99999994f));
}

TEST(Truncate, ADoubleReachesEveryIntAndItsFraction) {
    EXPECT_EQ(2147483647, Truncate(2147483647.0));
    EXPECT_EQ(2147483647, Truncate(2147483647.9999998)); // The last double below 2^31.
    EXPECT_EQ(-2147483647, Truncate(-2147483647.9999998));
    EXPECT_EQ(INT_MIN, Truncate(-2147483648.0));
    EXPECT_EQ(INT_MIN, Truncate(-2147483648.9));
}

TEST(Truncate, AFloatReachesItsLastValueBelowTwoToTheThirtyOne) {
    EXPECT_EQ(2147483520, Truncate(2147483520.0f)); // 2^31 - 128.
    EXPECT_EQ(-2147483520, Truncate(-2147483520.0f));
    EXPECT_EQ(INT_MIN, Truncate(-2147483648.0f));
    EXPECT_EQ(16777216, Truncate(16777217.0f)) << "the float itself is even";
}

TEST(Truncate, WhatFitsNoIntIsTheLowest) {
    const double inf = std::numeric_limits<double>::infinity();
    const float infinite = std::numeric_limits<float>::infinity();
    for (double value : {2147483648.0, -2147483649.0, 4294967296.0, 1e300, -1e300, inf, -inf,
                         std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(INT_MIN, Truncate(value)) << value;
    }
    for (float value :
         {2147483648.0f, -2147483904.0f, 1e38f, -1e38f, infinite, -infinite, std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(INT_MIN, Truncate(value)) << value;
    }
}

TEST(Truncate, SumsDifferencesAndProductsWrapAround) {
    EXPECT_EQ(7, WrapAdd(3, 4));
    EXPECT_EQ(INT_MIN, WrapAdd(INT_MAX, 1));
    EXPECT_EQ(INT_MAX, WrapAdd(INT_MIN, -1));
    EXPECT_EQ(0, WrapAdd(INT_MIN, INT_MIN));
    EXPECT_EQ(-1, WrapSubtract(3, 4));
    EXPECT_EQ(2147483645, WrapSubtract(INT_MIN, 3));
    EXPECT_EQ(INT_MIN, WrapSubtract(0, INT_MIN));
    EXPECT_EQ(-12, WrapMultiply(3, -4));
    EXPECT_EQ(-2, WrapMultiply(INT_MAX, 2));
    EXPECT_EQ(0, WrapMultiply(65536, 65536));
    EXPECT_EQ(INT_MIN, WrapMultiply(INT_MIN, -1));
}

// ---- The mapping's precision ---------------------------------------------------------------------------------------

TEST(MappingPrecision, AZoomByAnOddFactorKeepsThePointUnderThePixelToSinglePrecision) {
    CVectorViewCoordTran tran;
    tran.SetScreenSize(CSize(800, 600));
    tran.SetScale(1.3f);
    tran.SetOriginX(1234.5);
    tran.SetOriginY(-77.25);
    const CPoint pixel(123, 45);
    CGePoint2d before;
    tran.LPToDP(pixel, before);
    // 123 * 1.3f is 159.89999389648438 as a float, and 555 * 1.3f is 721.5.
    EXPECT_EQ(1394.3999938964844, before.x);
    EXPECT_EQ(644.25, before.y);
    tran.SetScale(pixel, 0.37f);
    EXPECT_EQ(1348.889991760254, tran.GetOriginX());
    EXPECT_EQ(438.8999938964844, tran.GetOriginY());
    CGePoint2d after;
    tran.LPToDP(pixel, after);
    EXPECT_EQ(before.x, after.x);
    EXPECT_EQ(before.y, after.y);
    CPoint back;
    tran.DPToLP(after, back);
    EXPECT_NEAR(123, back.x, 1);
    EXPECT_NEAR(45, back.y, 1);
}

TEST(MappingPrecision, BackwardsTheFlipIsMadeInSinglePrecision) {
    CVectorViewCoordTran tran;
    double x = 0;
    double y = 0;
    tran.SethScreen(16777217);
    tran.LPToDP(0.0f, 1.0f, &x, &y);
    EXPECT_EQ(16777215.0, y) << "the height is rounded to 16777216 first";
    tran.SethScreen(16777216);
    tran.LPToDP(0.0f, 0.5f, &x, &y);
    EXPECT_EQ(16777216.0, y) << "not 16777215.5";
    tran.SetScale(3.0f);
    tran.LPToDP(16777213.0f, 16777216.0f, &x, &y);
    EXPECT_EQ(50331640.0, x) << "the product 50331639 has no float";
}

TEST(MappingPrecision, LengthsOfPixelsAreProductsInSinglePrecision) {
    CVectorViewCoordTran tran;
    tran.SetScale(0.1f);
    EXPECT_EQ(1677721.625, tran.LToD(16777216.0f)) << "0.1f is 13421773 / 2^27";
    EXPECT_EQ(0.699999988079071, tran.LToD(7.0f));
}
