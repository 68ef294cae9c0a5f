// The arithmetic of bulges: tops, the computed bulge with its opposite sign, the thresholds, and the stroke for hosts.

#include "DrawCommon.h"

#include "support/CurveTools.h"
#include "support/DrawStage.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {

struct RunStage : DrawStage {
    RunStage() { dc.SetRecordQueries(true); }
    // The result of a run; its calls are then in `dc`.
    int Run(std::vector<CPoint> points, std::initializer_list<double> bulges) {
        CBulgeArray list;
        for (double bulge : bulges) {
            list.Add(bulge);
        }
        dc.Clear();
        return CDraw_Common::DrawPolyLine(&dc, &geometry, points.data(), static_cast<int>(points.size()), list);
    }
};

} // namespace

// ---- Geometry ------------------------------------------------------------------------------------------------------

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

TEST(DrawCommon, TheBulgeOfATopOnTheLeftIsPositive) {
    double bulge = 99;
    EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(0, 0), CGePoint2d(2, 0), CGePoint2d(1, 1), bulge));
    EXPECT_EQ(1.0, bulge);
    EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(CGePoint2d(0, 0), CGePoint2d(2, 0), CGePoint2d(1, -1), bulge));
    EXPECT_EQ(-1.0, bulge);
}

TEST(DrawCommon, TheBulgeIsMeasuredFromTheMiddleOfTheChordAlsoAslant) {
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

TEST(DrawCommon, ATopIsOnTheChordByTheAreaOfItsTriangle) {
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

TEST(DrawCommon, AStoredBulgeIsTheNegativeOfTheComputedOne) {
    const CGePoint2d a(-3, 7);
    const CGePoint2d b(12, -1);
    for (double stored : {0.25, -0.25, 1.0, -1.0, 3.5, -3.5}) {
        double bulge = 0;
        EXPECT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(a, b, CDraw_Common::GetArcMidHighPt(a, b, stored), bulge));
        EXPECT_NEAR(stored, -1.0 * bulge, 1e-14);
    }
}

// ---- The stroke for hosts ------------------------------------------------------------------------------------------

TEST(DrawCommon, ARunWithoutPointsIsRefusedAndOneWithoutASegmentIsDone) {
    RunStage stage;
    CBulgeArray bulges;
    CPoint points[] = {CPoint(10, 10), CPoint(30, 10)};
    EXPECT_EQ(0, CDraw_Common::DrawPolyLine(&stage.dc, &stage.geometry, nullptr, 2, bulges));
    EXPECT_EQ(0, CDraw_Common::DrawPolyLine(&stage.dc, &stage.geometry, nullptr, 0, bulges));
    for (int count : {1, 0, -1, INT_MIN}) {
        EXPECT_EQ(1, CDraw_Common::DrawPolyLine(&stage.dc, &stage.geometry, points, count, bulges)) << count;
        EXPECT_EQ(1, CDraw_Common::DrawPolyLine(&stage.dc, nullptr, points, count, bulges))
            << count << ": nothing is to be mapped";
    }
    EXPECT_TRUE(stage.dc.Calls().empty());
}

TEST(DrawCommon, StraightSegmentsAreOneStrokeEachOnTruncatedPixels) {
    RunStage stage;
    stage.tran.SetOriginX(0.25);
    stage.tran.SetOriginY(0.75);
    // (9.75, 90.75), (29.75, 80.75) and (-0.25, -0.25): 100 - (101 - 0.75).
    EXPECT_EQ(1, stage.Run({CPoint(10, 10), CPoint(30, 20), CPoint(0, 101)}, {0.0, 0.0, 0.0}));
    EXPECT_TRUE(SameCalls({"MoveTo(9,90)", "LineTo(29,80)", "MoveTo(29,80)", "LineTo(0,0)"}, stage.dc.Calls()));
}

TEST(DrawCommon, AnArcOverAnUprightChordRunsAnticlockwiseOnEitherSide) {
    RunStage stage;
    // About (50, 50) with 10. On the right: from the lower end, the pixel (50, 60), to the upper one, (50, 40). The
    // lower end's angle is short of three quarters in its tenth digit; in single precision its x is nevertheless 50.
    EXPECT_EQ(1, stage.Run({CPoint(50, 40), CPoint(50, 60)}, {1.0}));
    EXPECT_TRUE(SameCalls({"Arc(40,40,60,60,50,60,50,40)"}, stage.dc.Calls()));
    EXPECT_EQ(1, stage.Run({CPoint(50, 40), CPoint(50, 60)}, {-1.0}));
    EXPECT_TRUE(SameCalls({"Arc(40,40,60,60,50,40,50,60)"}, stage.dc.Calls()));
}

TEST(DrawCommon, AnArcsPixelsAreTruncated) {
    RunStage stage;
    stage.tran.SetOriginX(0.25);
    stage.tran.SetOriginY(0.75);
    // The centre (50, 50) is at (49.75, 50.75).
    EXPECT_EQ(1, stage.Run({CPoint(50, 40), CPoint(50, 60)}, {1.0}));
    EXPECT_TRUE(SameCalls({"Arc(39,40,59,60,49,60,49,40)"}, stage.dc.Calls()));
}

TEST(DrawCommon, AnArcFollowsTheScale) {
    RunStage stage;
    stage.tran.SetScale(2.0f); // The centre at (25, 75), 5 pixels of radius.
    EXPECT_EQ(1, stage.Run({CPoint(50, 40), CPoint(50, 60)}, {1.0}));
    EXPECT_TRUE(SameCalls({"Arc(20,70,30,80,25,80,25,70)"}, stage.dc.Calls()));
}

TEST(DrawCommon, SegmentsBeyondTheBulgeListAreStraight) {
    RunStage stage;
    EXPECT_EQ(1, stage.Run({CPoint(50, 40), CPoint(50, 60), CPoint(70, 60)}, {1.0}));
    EXPECT_TRUE(SameCalls({"Arc(40,40,60,60,50,60,50,40)", "MoveTo(50,40)", "LineTo(70,40)"}, stage.dc.Calls()));
    EXPECT_EQ(1, stage.Run({CPoint(50, 60), CPoint(70, 60)}, {}));
    EXPECT_TRUE(SameCalls({"MoveTo(50,40)", "LineTo(70,40)"}, stage.dc.Calls()));
}

TEST(DrawCommon, ARunEndsAtAnArcThatCannotBeBuilt) {
    RunStage stage;
    // The second segment has a bulge and no chord.
    EXPECT_EQ(0, stage.Run({CPoint(10, 10), CPoint(30, 10), CPoint(30, 10), CPoint(60, 10)}, {0.0, 0.5, 0.0}));
    EXPECT_TRUE(SameCalls({"MoveTo(10,90)", "LineTo(30,90)"}, stage.dc.Calls()));
}

TEST(DrawCommon, ASegmentOfARunIsStraightBelowABulgeOfAThousandth) {
    RunStage stage;
    for (double sign : {1.0, -1.0}) {
        EXPECT_EQ(1, stage.Run({CPoint(10, 10), CPoint(30, 10)}, {sign * 0.000999}));
        EXPECT_TRUE(SameCalls({"MoveTo(10,90)", "LineTo(30,90)"}, stage.dc.Calls()));
        EXPECT_EQ(1, stage.Run({CPoint(10, 10), CPoint(30, 10)}, {sign * 0.001}));
        ASSERT_EQ(1u, stage.dc.Calls().size());
        EXPECT_EQ(0u, stage.dc.Calls()[0].find("Arc(")) << stage.dc.Calls()[0];
    }
}

TEST(DrawCommon, ARunIsStrokedWithTheCallersPenAndModes) {
    RunStage stage;
    CPen red(PS_SOLID, 1, RGB(255, 0, 0));
    CPen* before = stage.dc.SelectObject(&red);
    stage.dc.SetROP2(R2_NOTCOPYPEN); // Red comes out as its complement.
    stage.dc.SetBkMode(OPAQUE);
    EXPECT_EQ(1, stage.Run({CPoint(10, 10), CPoint(30, 10), CPoint(50, 10)}, {0.0, 1.0}));
    EXPECT_TRUE(SameCalls({"MoveTo(10,90)", "LineTo(30,90)", "Arc(30,80,50,100,30,90,50,90)"}, stage.dc.Calls()))
        << "strokes and nothing else";
    EXPECT_EQ(&red, stage.dc.GetCurrentPen());
    EXPECT_EQ(R2_NOTCOPYPEN, stage.dc.GetROP2());
    EXPECT_EQ(OPAQUE, stage.dc.GetBkMode());
    EXPECT_EQ(RGB(0, 255, 255), stage.dc.Pixel(20, 90));
    stage.dc.SelectObject(before);
}
