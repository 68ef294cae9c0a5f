// Points, vectors and matrices: every operation, the digits of the turns, signs of zero, what is not a number.

#include "Geometry2d.h"

#include "support/CurveTools.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>

// ---- Points --------------------------------------------------------------------------------------------------------

TEST(GePoint2d, EveryConstructorMakesAnOrdinaryPoint) {
    const CGePoint2d none;
    EXPECT_EQ(0.0, none.x);
    EXPECT_EQ(0.0, none.y);
    EXPECT_EQ(1, none.type);
    const CGePoint2d pair(1.5, -2.5);
    EXPECT_EQ(1.5, pair.x);
    EXPECT_EQ(-2.5, pair.y);
    EXPECT_EQ(1, pair.GetType());
    const CGePoint2d pixel(CPoint(-3, 70000));
    EXPECT_EQ(-3.0, pixel.x);
    EXPECT_EQ(70000.0, pixel.y);
    const CGePoint2d floats(Gdiplus::PointF(0.1f, 2.0f));
    EXPECT_EQ(0.100000001490116119384765625, floats.x) << "the float widened, not the decimal";
    EXPECT_EQ(1, floats.type);
}

TEST(GePoint2d, TheKindSurvivesCopyingSettingAndTransformingAndNoArithmetic) {
    CGePoint2d p(1, 2);
    p.SetType(7);
    const CGePoint2d copy(p);
    EXPECT_EQ(7, copy.type);
    CGePoint2d assigned;
    assigned = p;
    EXPECT_EQ(7, assigned.type);
    p.SetPoint(5, 6);
    EXPECT_EQ(7, p.type);
    EXPECT_EQ(7, p.transformBy(CGeMatrix2d()).type);
    EXPECT_EQ(1, (p + CGeVector2d(0, 0)).type);
    EXPECT_EQ(1, (p - CGeVector2d(0, 0)).type);
}

TEST(GePoint2d, TransformingWorksInPlaceAndGivesThePointItself) {
    CGePoint2d p(1, 2);
    CGePoint2d& result = p.transformBy(CGeMatrix2d::translation(CGeVector2d(10, 20)));
    EXPECT_EQ(&p, &result);
    EXPECT_POINT(11, 22, p);
}

TEST(GePoint2d, BothNewCoordinatesComeFromTheOldOnes) {
    CGeMatrix2d m;
    m.m[0][0] = 0;
    m.m[0][1] = 1; // x' = y
    m.m[1][0] = 1; // y' = x
    m.m[1][1] = 0;
    CGePoint2d p(3, 8);
    p.transformBy(m);
    EXPECT_POINT(8, 3, p);
}

TEST(GePoint2d, DifferencesPointFromTheArgumentToThis) {
    const CGeVector2d v = CGePoint2d(5, 7) - CGePoint2d(2, 3);
    EXPECT_EQ(3.0, v.x);
    EXPECT_EQ(4.0, v.y);
    EXPECT_POINT(8, 11, CGePoint2d(5, 7) + v);
    EXPECT_POINT(2, 3, CGePoint2d(5, 7) - v);
}

TEST(GePoint2d, EqualIsStrictlyBelowTenToTheMinusFifteenInEachCoordinate) {
    EXPECT_FALSE(CGePoint2d(1, 2) == CGePoint2d(1 + 2e-15, 2));
    EXPECT_TRUE(CGePoint2d(1, 2) == CGePoint2d(1 + 5e-16, 2));
    EXPECT_FALSE(CGePoint2d(0, 0) == CGePoint2d(0, 1e-15)) << "exactly the limit is different already";
    EXPECT_TRUE(CGePoint2d(0, 0) == CGePoint2d(-9e-16, 9e-16));
    CGePoint2d snapped(1, 2);
    snapped.type = 8;
    EXPECT_TRUE(CGePoint2d(1, 2) == snapped) << "the kind plays no part";
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(CGePoint2d(nan, 0) == CGePoint2d(nan, 0));
}

TEST(GePoint2d, DistanceIsEuclidean) {
    EXPECT_EQ(5.0, CGePoint2d(1, 1).distance(CGePoint2d(4, -3)));
    EXPECT_EQ(0.0, CGePoint2d(-2, 9).distance(CGePoint2d(-2, 9)));
}

// ---- Vectors -------------------------------------------------------------------------------------------------------

TEST(GeVector2d, TwoPointsMakeTheVectorFromTheFirstToTheSecond) {
    const CGeVector2d v(CGePoint2d(1, 2), CGePoint2d(4, 8));
    EXPECT_EQ(3.0, v.x);
    EXPECT_EQ(6.0, v.y);
    const CGeVector2d pixels(CPoint(10, 20), CPoint(7, 25));
    EXPECT_EQ(-3.0, pixels.x);
    EXPECT_EQ(5.0, pixels.y);
}

TEST(GeVector2d, PixelsAreSubtractedInThirtyTwoBits) {
    const CGeVector2d v(CPoint(INT_MIN, 0), CPoint(INT_MAX, 0));
    EXPECT_EQ(-1.0, v.x) << "4294967295 wrapped around";
}

TEST(GeVector2d, VectorsAreAddedSubtractedAndScaled) {
    const CGeVector2d a(3, 4);
    const CGeVector2d b(-2, 5);
    EXPECT_TRUE(a * 0.5 == CGeVector2d(1.5, 2));
    EXPECT_TRUE(a + b == CGeVector2d(1, 9));
    EXPECT_EQ(14.0, a.dotProduct(b));
    EXPECT_EQ(23.0, a.CrossProduct(b)); // 3 * 5 - 4 * -2
    EXPECT_EQ(5.0, a.length());
    EXPECT_TRUE(a.normal() == CGeVector2d(0.6, 0.8));
    EXPECT_TRUE(a == CGeVector2d(3 + 4e-16, 4));
    EXPECT_FALSE(a == CGeVector2d(3, 4.00000000000001));
}

TEST(GeVector2d, NegatingChangesTheSignOfAZeroToo) {
    const CGeVector2d n = CGeVector2d(0.0, -0.0).negate();
    EXPECT_TRUE(std::signbit(n.x));
    EXPECT_FALSE(std::signbit(n.y));
    const CGeVector2d left = CGeVector2d(5, 0.0).perpVector();
    EXPECT_TRUE(std::signbit(left.x));
    EXPECT_EQ(5.0, left.y);
    EXPECT_TRUE(CGeVector2d(2, 3).perpVector() == CGeVector2d(-3, 2)) << "a quarter turn to the left";
}

TEST(GeVector2d, TheZeroVectorHasNoDirectionAndRaisesNothing) {
    const CGeVector2d n = CGeVector2d(0, 0).normal();
    EXPECT_TRUE(std::isnan(n.x));
    EXPECT_TRUE(std::isnan(n.y));
    EXPECT_TRUE(std::isnan(CGeVector2d().angle()));
}

TEST(GeVector2d, RotatingIsAnticlockwise) {
    const CGeVector2d v = CGeVector2d(1, 0).rotateBy(std::acos(0.0));
    EXPECT_NEAR(0.0, v.x, 1e-15);
    EXPECT_DOUBLE_EQ(1.0, v.y);
    const CGeVector2d w = CGeVector2d(3, 4).rotateBy(std::acos(-1.0));
    EXPECT_NEAR(-3.0, w.x, 1e-14);
    EXPECT_NEAR(-4.0, w.y, 1e-14);
}

TEST(GeVector2d, TheAngleRunsFromZeroToTheFullTurnOfTenDigits) {
    EXPECT_EQ(0.0, CGeVector2d(7, 0).angle());
    EXPECT_EQ(1.5707963267948966, CGeVector2d(0, 2).angle());
    EXPECT_EQ(3.141592653589793, CGeVector2d(-3, 0).angle());
    EXPECT_EQ(4.7123889802051036, CGeVector2d(0, -1).angle()) << "6.283185307 less a quarter turn";
    EXPECT_LT(CGeVector2d(0, -1).angle(), 4.71238898038) << "not three quarters of the true turn";
    EXPECT_EQ(6.283185307, CGeVector2d(1, -1e-300).angle()) << "just below the axis: the constant itself";
}

TEST(GeVector2d, TheHalfIsDecidedByTheVectorItselfNotByItsUnitVector) {
    // The unit vector's y underflows to zero, the vector's own does not.
    EXPECT_EQ(6.283185307, CGeVector2d(1e10, -5e-324).angle());
}

// ---- Matrices ------------------------------------------------------------------------------------------------------

TEST(GeMatrix2d, ANewOneIsTheIdentity) {
    const CGeMatrix2d m;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            EXPECT_EQ(i == j ? 1.0 : 0.0, m.m[i][j]);
        }
    }
}

TEST(GeMatrix2d, AProductActsWithItsRightFactorFirst) {
    const double quarter = std::acos(0.0);
    const CGeMatrix2d m =
        CGeMatrix2d::translation(CGeVector2d(1, 0)) * CGeMatrix2d::rotation(quarter, CGePoint2d(0, 0));
    CGePoint2d p(1, 0);
    EXPECT_POINT_NEAR(1, 1, p.transformBy(m), 1e-15);
}

TEST(GeMatrix2d, AProductMultipliesTheThirdRowLikeTheOthers) {
    CGeMatrix2d a;
    a.m[2][0] = 1;
    a.m[2][1] = 2;
    a.m[2][2] = 3;
    CGeMatrix2d b = CGeMatrix2d::translation(CGeVector2d(10, 100));
    const CGeMatrix2d c = a * b;
    EXPECT_EQ(1.0, c.m[2][0]);
    EXPECT_EQ(2.0, c.m[2][1]);
    EXPECT_EQ(213.0, c.m[2][2]); // 1 * 10 + 2 * 100 + 3
    CGePoint2d p(4, 5);
    EXPECT_POINT(14, 105, p.transformBy(c)); // The third row is never read for a point.
}

TEST(GeMatrix2d, RotationIsAnticlockwiseAboutItsCentre) {
    CGePoint2d p(4, 2);
    EXPECT_POINT_NEAR(3, 3, p.transformBy(CGeMatrix2d::rotation(std::acos(0.0), CGePoint2d(3, 2))), 1e-14);
    const CGeMatrix2d m = CGeMatrix2d::rotation(0.5, CGePoint2d(1, 2));
    EXPECT_DOUBLE_EQ(0.87758256189037276, m.m[0][0]);
    EXPECT_DOUBLE_EQ(-0.47942553860420301, m.m[0][1]);
    EXPECT_DOUBLE_EQ(0.47942553860420301, m.m[1][0]);
    EXPECT_EQ(0.0, m.m[2][0]);
    EXPECT_EQ(1.0, m.m[2][2]);
}

TEST(GeMatrix2d, ScalingKeepsItsCentre) {
    CGePoint2d p(5, 5);
    EXPECT_POINT(13, 11, p.transformBy(CGeMatrix2d::scaling(3, CGePoint2d(1, 2))));
    CGePoint2d centre(1, 2);
    EXPECT_POINT(1, 2, centre.transformBy(CGeMatrix2d::scaling(3, CGePoint2d(1, 2))));
}

TEST(GeMatrix2d, MirroringSendsAPointToTheOtherSide) {
    CGePoint2d p(2, 3);
    EXPECT_POINT(2, -3, p.transformBy(CGeMatrix2d::mirroring(CGePoint2d(0, 0), CGePoint2d(1, 0))));
    CGePoint2d q(2, 3);
    EXPECT_POINT_NEAR(3, 2, q.transformBy(CGeMatrix2d::mirroring(CGePoint2d(1, 1), CGePoint2d(5, 5))), 1e-14);
    CGePoint2d r(4, 7);
    EXPECT_POINT_NEAR(-2, 7, r.transformBy(CGeMatrix2d::mirroring(CGePoint2d(1, 0), CGePoint2d(1, 9))), 1e-14);
}

TEST(GeMatrix2d, ADownwardMirrorLineGivesTheMatrixOfTheUpwardOneButForTheDigitsOfTheHalfTurn) {
    const CGeMatrix2d down = CGeMatrix2d::mirroring(CGePoint2d(0, 0), CGePoint2d(0, -1));
    const CGeMatrix2d up = CGeMatrix2d::mirroring(CGePoint2d(0, -1), CGePoint2d(0, 0));
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            EXPECT_NEAR(up.m[i][j], down.m[i][j], 1e-9) << i << j;
        }
    }
    // Twice the half turn of eleven digits falls short of the true turn by 1.795865e-10.
    EXPECT_NEAR(1.795865e-10, down.m[0][1], 1e-14);
    EXPECT_NEAR(0.0, up.m[0][1], 1e-15);
}

TEST(GeMatrix2d, MirroringInOnePointGivesNotANumberEverywhere) {
    const CGeMatrix2d m = CGeMatrix2d::mirroring(CGePoint2d(3, 4), CGePoint2d(3, 4));
    for (int i = 0; i < 2; ++i) {
        for (int j = 0; j < 3; ++j) {
            EXPECT_TRUE(std::isnan(m.m[i][j])) << i << j;
        }
    }
    EXPECT_EQ(1.0, m.m[2][2]);
}

// ---- Sines and cosines ---------------------------------------------------------------------------------------------

namespace {

// How many doubles there are from one to the other; both of one sign.
long long Steps(double a, double b) {
    long long x = 0;
    long long y = 0;
    std::memcpy(&x, &a, sizeof x);
    std::memcpy(&y, &b, sizeof y);
    return x > y ? x - y : y - x;
}

} // namespace

TEST(GeMatrix2d, RotationTakesSinesAndCosinesThatAreRightToTheLastBitOrOneOff) {
    // The nearest doubles, from two thousand bits of precision.
    const struct {
        double angle, cosine, sine;
    } rows[] = {{1.5707963267948966, 6.123233995736766e-17, 1.0},
                {3.141592653589793, -1.0, 1.2246467991473532e-16},
                {0.5, 0.8775825618903728, 0.479425538604203},
                {2.356194490192345, -0.7071067811865475, 0.7071067811865476},
                {6.283185307, 1.0, -1.7958636867904636e-10},
                {-4.71238898038469, -1.8369701987210297e-16, 1.0},
                {100000.0, -0.9993608074382124, 0.03574879797201651},
                {1e10, 0.873119622676856, -0.4875060250875107},
                {1e20, 0.7639704044417283, -0.6452512852657808},
                {1e22, 0.523214785395139, -0.8522008497671888},
                {1e300, -0.5753861119575491, -0.8178819121159085}};
    for (const auto& row : rows) {
        const CGeMatrix2d m = CGeMatrix2d::rotation(row.angle, CGePoint2d(0, 0));
        EXPECT_GE(1, Steps(row.cosine, m.m[0][0])) << row.angle << " gives " << m.m[0][0];
        EXPECT_GE(1, Steps(row.sine, m.m[1][0])) << row.angle << " gives " << m.m[1][0];
        const CGeVector2d v = CGeVector2d(1, 0).rotateBy(row.angle);
        EXPECT_GE(1, Steps(row.cosine, v.x)) << row.angle;
        EXPECT_GE(1, Steps(row.sine, v.y)) << row.angle;
    }
    EXPECT_EQ(6.123233995736766e-17, CGeMatrix2d::rotation(1.5707963267948966, CGePoint2d(0, 0)).m[0][0]);
}
