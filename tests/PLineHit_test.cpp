// CPLine: distances, feet and extents, with their two thresholds for straightness and their deliberate oddities.

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "Line.h"
#include "PLine.h"
#include "TextParm.h"
#include "VectorLabel.h"

#include "support/AfxCaught.h"
#include "support/CurveTools.h"
#include "support/DrawStage.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct Box {
    explicit Box(CDrawable& object) : result(object.GetRect(nullptr, min, max)) {}
    CGePoint2d min = CGePoint2d(-77, -77);
    CGePoint2d max = CGePoint2d(-77, -77);
    int result;
};

// A two-vertex line.
void FillLine(CPLine& line, double x1, double y1, double x2, double y2, double bulge = 0.0) {
    line.AddPoint(CGePoint2d(x1, y1), bulge);
    line.AddPoint(CGePoint2d(x2, y2), 0.0);
}

} // namespace

// ---- Hit test ------------------------------------------------------------------------------------------------------

TEST(PLineHit, TheNearestSegmentIsRemembered) {
    CPLine line;
    line.AddPoint(CGePoint2d(0, 0));
    line.AddPoint(CGePoint2d(10, 0));
    line.AddPoint(CGePoint2d(10, 10));
    EXPECT_EQ(1.0f, line.HitTest(CGePoint2d(11, 5)));
    EXPECT_EQ(1, line.GetSelSelLine());
    EXPECT_EQ(2.0f, line.HitTest(CGePoint2d(5, -2)));
    EXPECT_EQ(0, line.GetSelSelLine());
    EXPECT_EQ(5.0f, line.HitTest(CGePoint2d(-3, -4)));
    EXPECT_EQ(0, line.GetSelSelLine());
}

TEST(PLineHit, OfTwoSegmentsAtOneDistanceTheFirstIsTaken) {
    CPLine line;
    line.AddPoint(CGePoint2d(0, 0));
    line.AddPoint(CGePoint2d(10, 0));
    line.AddPoint(CGePoint2d(10, 10));
    EXPECT_EQ(3.0f, line.HitTest(CGePoint2d(7, 3)));
    EXPECT_EQ(0, line.GetSelSelLine());
}

TEST(PLineHit, DistancesAreComparedInSinglePrecision) {
    CPLine line;
    line.AddPoint(CGePoint2d(0, 0));
    line.AddPoint(CGePoint2d(100, 0));
    line.AddPoint(CGePoint2d(100, 16 - 1e-9)); // Closer by less than a float shows.
    line.AddPoint(CGePoint2d(0, 16 - 1e-9));
    EXPECT_EQ(8.0f, line.HitTest(CGePoint2d(50, 8)));
    EXPECT_EQ(0, line.GetSelSelLine());
}

TEST(PLineHit, DistancesToArcsAreComparedInSinglePrecisionToo) {
    CPLine line;
    line.AddPoint(CGePoint2d(0, 0), -1); // About (50, 0) with 50: 8 away from the point.
    line.AddPoint(CGePoint2d(100, 0));
    line.AddPoint(CGePoint2d(100, 116 - 1e-9), 1); // The same from above, closer by less than a float shows.
    line.AddPoint(CGePoint2d(0, 116 - 1e-9));
    EXPECT_EQ(8.0f, line.HitTest(CGePoint2d(50, 58)));
    EXPECT_EQ(0, line.GetSelSelLine());
}

TEST(PLineHit, AnArcIsHitOnItsFullCircle) {
    CPLine line;
    FillLine(line, 0, 0, 10, 0, 1); // The lower half circle about (5, 0).
    EXPECT_EQ(1.0f, line.HitTest(CGePoint2d(5, -6)));
    EXPECT_EQ(0.0f, line.HitTest(CGePoint2d(5, 5))) << "on the missing half";
    EXPECT_EQ(5.0f, line.HitTest(CGePoint2d(5, 0))) << "on the chord, in the centre";
}

TEST(PLineHit, ABulgeOfTenToTheMinusFourIsHitAsAnArc) {
    // Half a chord of 1 and a top of 0.0001: a circle of 10000 across, whose far side is at (1, -10000).
    CPLine arc;
    FillLine(arc, 0, 0, 2, 0, -0.0001);
    EXPECT_LT(arc.HitTest(CGePoint2d(1, -10000)), 1.0f);
    EXPECT_EQ(0, arc.GetSelSelLine());
    CPLine straight;
    FillLine(straight, 0, 0, 2, 0, -0.0000999);
    EXPECT_EQ(1000.0f, straight.HitTest(CGePoint2d(1, -10000)));
}

TEST(PLineHit, WithoutACircleTheDistanceIsToTheOrigin) {
    CPLine line;
    FillLine(line, 50, 50, 50, 50, 0.5); // A bulge over no chord.
    EXPECT_EQ(5.0f, line.HitTest(CGePoint2d(3, 4)));
    EXPECT_EQ(0, line.GetSelSelLine());
}

TEST(PLineHit, ASegmentWithoutLengthIsNeverNearest) {
    CPLine line;
    FillLine(line, 5, 5, 5, 5);
    EXPECT_EQ(1000.0f, line.HitTest(CGePoint2d(5, 6)));
    EXPECT_EQ(-1, line.GetSelSelLine());
}

TEST(PLineHit, TheClosingSegmentIsTheLastOne) {
    CPLine line;
    line.AddPoint(CGePoint2d(0, 0));
    line.AddPoint(CGePoint2d(10, 0));
    line.AddPoint(CGePoint2d(10, 10));
    EXPECT_NE(0.0f, line.HitTest(CGePoint2d(5, 5)));
    line.SetClose(1);
    EXPECT_NEAR(0.0f, line.HitTest(CGePoint2d(5, 5)), 1e-6);
    EXPECT_EQ(2, line.GetSelSelLine());
    line.SetBulge(2, 1); // A half circle about (5, 5) through (10, 10) and (0, 0).
    EXPECT_EQ(5.0f, line.HitTest(CGePoint2d(5, 5))) << "the centre of the circle: the straight ones are nearer";
    EXPECT_EQ(0, line.GetSelSelLine());
    EXPECT_NEAR(0.0f, line.HitTest(CGePoint2d(5 - std::sqrt(50.0), 5)), 1e-5);
    EXPECT_EQ(2, line.GetSelSelLine());
}

TEST(PLineHit, FartherThanAThousandUnitsIsNoHit) {
    CPLine line;
    FillLine(line, 0, 0, 10, 0);
    EXPECT_EQ(999.0f, line.HitTest(CGePoint2d(5, 999)));
    EXPECT_EQ(0, line.GetSelSelLine());
    EXPECT_EQ(1000.0f, line.HitTest(CGePoint2d(5, 1000)));
    EXPECT_EQ(-1, line.GetSelSelLine());
}

TEST(PLineHit, AHiddenObjectIsAThousandUnitsAwayOrAHundredByItsKind) {
    CPLine pline;
    CText text;
    CTextParm parm;
    CCenterPoint mark;
    CKXVectorLabel label;
    for (CDrawable* object : std::initializer_list<CDrawable*>{&pline, &text, &parm, &mark, &label}) {
        object->SetIsShow(0);
        EXPECT_EQ(1000.0f, object->HitTest(CGePoint2d(0, 0))) << object->GetRuntimeClass()->m_lpszClassName;
    }
    CLine line;
    CCircle circle;
    CArc arc;
    CCombRect frame;
    for (CDrawable* object : std::initializer_list<CDrawable*>{&line, &circle, &arc, &frame}) {
        object->SetIsShow(0);
        EXPECT_EQ(100.0f, object->HitTest(CGePoint2d(0, 0))) << object->GetRuntimeClass()->m_lpszClassName;
    }
}

TEST(PLineHit, AHiddenPolylineAnswersAThousandAndKeepsItsSegment) {
    CPLine line;
    FillLine(line, 0, 0, 10, 0);
    line.HitTest(CGePoint2d(5, 1));
    line.SetIsShow(0);
    EXPECT_EQ(1000.0f, line.HitTest(CGePoint2d(5, 1)));
    EXPECT_EQ(0, line.GetSelSelLine());
}

TEST(PLineHit, WithoutVerticesNothingIsHitOpenOrClosed) {
    CPLine line;
    EXPECT_EQ(1000.0f, line.HitTest(CGePoint2d()));
    EXPECT_EQ(-1, line.GetSelSelLine());
    line.SetClose(1);
    EXPECT_EQ(1000.0f, line.HitTest(CGePoint2d()));
    CGePointArray feet;
    EXPECT_EQ(1, line.GetClosetPt(CGePoint2d(), feet));
    EXPECT_EQ(0, feet.GetSize());
}

TEST(PLineHit, ADeletedPolylineIsHitAndMeasuredLikeAnyOther) {
    Deleted<CPLine> line;
    line.AddPoint(CGePoint2d(0, 0));
    line.AddPoint(CGePoint2d(10, 0));
    line.AddPoint(CGePoint2d(10, 10));
    ASSERT_NE(0, line.IsDelete());
    EXPECT_EQ(1.0f, line.HitTest(CGePoint2d(11, 5)));
    EXPECT_EQ(1, line.GetSelSelLine());
    CGePointArray feet;
    EXPECT_EQ(1, line.GetClosetPt(CGePoint2d(3, 4), feet));
    EXPECT_EQ(2, feet.GetSize());
    Box box(line);
    EXPECT_EQ(1, box.result);
    EXPECT_POINT(0, 0, box.min);
    EXPECT_POINT(10, 10, box.max);
}

TEST(PLineHit, AnyValueButZeroCloses) {
    for (int closed : {1, -1, 256}) {
        CPLine line;
        line.AddPoint(CGePoint2d(0, 0));
        line.AddPoint(CGePoint2d(10, 0));
        line.AddPoint(CGePoint2d(10, 10));
        line.SetClose(closed);
        EXPECT_NEAR(0.0f, line.HitTest(CGePoint2d(5, 5)), 1e-6) << closed;
        EXPECT_EQ(2, line.GetSelSelLine()) << closed;
        CGePointArray feet;
        EXPECT_EQ(1, line.GetClosetPt(CGePoint2d(0, 8), feet));
        ASSERT_EQ(3, feet.GetSize()) << closed;
        EXPECT_POINT(4, 4, feet[2]);
        // The half circle about (5, 5) from (10, 10) to (0, 0), on the right of that direction: up to 5 - sqrt(50)
        // on the left and 5 + sqrt(50) at the top.
        line.SetBulge(2, 1);
        Box box(line);
        EXPECT_NEAR(5 - std::sqrt(50.0), box.min.x, 1e-5) << closed;
        EXPECT_NEAR(5 + std::sqrt(50.0), box.max.y, 1e-5) << closed;
    }
}

TEST(PLineHit, UncountedVerticesAreNotHit) {
    CPLine line;
    FillLine(line, 0, 0, 10, 0);
    line.SetPoint(2, CGePoint2d(10, 100));
    EXPECT_EQ(50.0f, line.HitTest(CGePoint2d(10, 50)));
    EXPECT_EQ(0, line.GetSelSelLine());
}

// ---- Feet and sides ------------------------------------------------------------------------------------------------

TEST(PLineHit, FeetAreOnTheInfiniteLinesOfStraightSegments) {
    CPLine line;
    line.AddPoint(CGePoint2d(0, 0));
    line.AddPoint(CGePoint2d(10, 0), 0.5); // An arc: no foot.
    line.AddPoint(CGePoint2d(20, 0));
    line.AddPoint(CGePoint2d(20, 10));
    CGePointArray feet;
    CGePoint2d before(9, 9);
    feet.Add(before);
    EXPECT_EQ(1, line.GetClosetPt(CGePoint2d(50, 30), feet));
    ASSERT_EQ(3, feet.GetSize()) << "appended to what was in the list";
    EXPECT_POINT(50, 0, feet[1]);
    EXPECT_POINT(20, 30, feet[2]);
    EXPECT_EQ(8, feet[1].type);
    line.SetClose(1);
    feet.RemoveAll();
    line.GetClosetPt(CGePoint2d(0, 5), feet);
    ASSERT_EQ(3, feet.GetSize());
    EXPECT_POINT(2, 1, feet[2]); // On the line (20, 10)-(0, 0).
}

TEST(PLineHit, AFootNeedsABulgeBelowTenToTheMinusFour) {
    CPLine line;
    FillLine(line, 0, 0, 10, 0, 0.0005); // Painted straight.
    CGePointArray feet;
    EXPECT_EQ(1, line.GetClosetPt(CGePoint2d(5, 5), feet));
    EXPECT_EQ(0, feet.GetSize());
    for (double limit : {0.0001, -0.0001}) {
        line.SetBulge(0, limit);
        EXPECT_EQ(1, line.GetClosetPt(CGePoint2d(5, 5), feet));
        EXPECT_EQ(0, feet.GetSize()) << "the limit itself is an arc's";
    }
    line.SetBulge(0, 0.00009);
    line.GetClosetPt(CGePoint2d(5, 5), feet);
    EXPECT_EQ(1, feet.GetSize());
    line.SetBulge(0, -0.00009);
    line.GetClosetPt(CGePoint2d(5, 5), feet);
    EXPECT_EQ(2, feet.GetSize());
}

TEST(PLineHit, TheFootOfOneLineIsMarkedAsOne) {
    CPLine line;
    const CGePoint2d foot = line.GetClosetPt(CGePoint2d(0, 0), CGePoint2d(4, 4), CGePoint2d(0, 8));
    EXPECT_POINT(4, 4, foot);
    EXPECT_EQ(8, foot.type);
    EXPECT_TRUE(std::isnan(line.GetClosetPt(CGePoint2d(1, 1), CGePoint2d(1, 1), CGePoint2d(0, 8)).x));
}

TEST(PLineHit, TheSideIsAskedOfTwoStraightVertices) {
    CPLine line;
    FillLine(line, 0, 0, 10, 0);
    EXPECT_EQ(1, line.isLeft(CGePoint2d(5, 1)));
    EXPECT_EQ(0, line.isLeft(CGePoint2d(5, -1)));
    EXPECT_EQ(1, line.isLeft(CGePoint2d(-7, 0))) << "on the line counts as left";
    line.SetBulge(0, 1e-9);
    EXPECT_EQ(0, line.isLeft(CGePoint2d(5, 1))) << "an arc, however flat";
    line.SetBulge(0, 0);
    line.SetPoint(2, CGePoint2d(20, 0));
    EXPECT_EQ(0, line.isLeft(CGePoint2d(5, 1))) << "three vertices, counted or not";
    EXPECT_EQ(0.0, line.GetClosestDistance(CGePoint2d(5, 1)));
}

TEST(PLineHit, TheDistanceToALineEndsAtItsEnds) {
    CPLine line;
    FillLine(line, 0, 0, 10, 0);
    EXPECT_DOUBLE_EQ(3.0, line.GetClosestDistance(CGePoint2d(4, 3)));
    EXPECT_DOUBLE_EQ(3.0, line.GetClosestDistance(CGePoint2d(4, -3)));
    EXPECT_DOUBLE_EQ(5.0, line.GetClosestDistance(CGePoint2d(13, 4)));
    EXPECT_DOUBLE_EQ(5.0, line.GetClosestDistance(CGePoint2d(-3, 4)));
    EXPECT_EQ(0.0, line.GetClosestDistance(CGePoint2d(10, 0)));
    EXPECT_EQ(0.0, line.GetClosestDistance(CGePoint2d(1e-5, 0))) << "within 1e-5 of an end";
    EXPECT_NEAR(0.0, line.GetClosestDistance(CGePoint2d(4, 0)), 1e-6) << "on the line, not a root of a negative";
    line.SetBulge(0, 0.5);
    EXPECT_EQ(0.0, line.GetClosestDistance(CGePoint2d(4, 3)));
}

TEST(PLineHit, OnTheLineTheDistanceIsZeroWhereRoundingTakesTheRootBelowIt) {
    // For each of these, s (s - d1) (s - d2) (s - d3) comes out at about -1e-9 in doubles.
    const struct {
        CGePoint2d end;
        CGePoint2d p;
    } cases[] = {{CGePoint2d(73.2, 80.8), CGePoint2d(7.32, 8.08)},
                 {CGePoint2d(70.1, 75.3), CGePoint2d(21.029999999999998, 22.59)},
                 {CGePoint2d(47.6, 35.5), CGePoint2d(35.7, 26.625)},
                 {CGePoint2d(76.6, 53.2), CGePoint2d(22.979999999999997, 15.96)}};
    for (const auto& c : cases) {
        CPLine line;
        FillLine(line, 0, 0, c.end.x, c.end.y);
        EXPECT_EQ(0.0, line.GetClosestDistance(c.p));
    }
}

TEST(PLineHit, ALineWithoutLengthIsAsFarAsItsPoint) {
    CPLine line;
    FillLine(line, 1, 1, 1, 1 + 1e-6);
    EXPECT_NEAR(5.0, line.GetClosestDistance(CGePoint2d(4, 5)), 1e-5);
}

// ---- Extents -------------------------------------------------------------------------------------------------------

TEST(PLineHit, TheExtentTakesInTheTopOfAnArcOnEitherSide) {
    CPLine right;
    FillLine(right, 0, 0, 10, 0, 1);
    Box box(right);
    EXPECT_EQ(1, box.result);
    EXPECT_POINT_NEAR(0, -5, box.min, 1e-9);
    EXPECT_POINT_NEAR(10, 0, box.max, 1e-9);
    CPLine left;
    FillLine(left, 0, 0, 10, 0, -1);
    EXPECT_POINT_NEAR(0, 0, Box(left).min, 1e-9);
    EXPECT_POINT_NEAR(10, 5, Box(left).max, 1e-9);
}

TEST(PLineHit, BelowATenthOfAPercentTheExtentIsThatOfTheChord) {
    CPLine line;
    FillLine(line, 0, 0, 2000, 0, -0.000999);
    EXPECT_EQ(0.0, Box(line).max.y);
    line.SetBulge(0, -0.001); // An arc here, and its top 1 off the chord.
    EXPECT_NEAR(1.0, Box(line).max.y, 1e-2);
}

TEST(PLineHit, ANegativeClosingBulgeGivesTheBoxOfTheRestOfItsCircle) {
    CPLine line;
    FillLine(line, 0, 0, 10, 0);
    line.SetClose(1);
    line.SetBulge(1, 1); // From (10, 0) to (0, 0) the right is upwards.
    EXPECT_NEAR(5.0, Box(line).max.y, 1e-9);
    EXPECT_NEAR(0.0, Box(line).min.y, 1e-9);
    line.SetBulge(1, -1); // The arc runs below; its points are given clockwise, and the upper half is reported.
    EXPECT_NEAR(5.0, Box(line).max.y, 1e-9);
    EXPECT_NEAR(0.0, Box(line).min.y, 1e-9);
}

TEST(PLineHit, ASegmentWithoutACircleMergesTheLastArcsBoxOrTheOrigin) {
    CPLine alone;
    FillLine(alone, 50, 60, 50, 60, 0.5);
    EXPECT_POINT(0, 0, Box(alone).min) << "the box of an arc that was never set";
    EXPECT_POINT(50, 60, Box(alone).max);

    CPLine after; // The half circle's box is merged twice, and the origin never.
    after.AddPoint(CGePoint2d(100, 100), -1);
    after.AddPoint(CGePoint2d(110, 100), 0.5);
    after.AddPoint(CGePoint2d(110, 100));
    EXPECT_POINT_NEAR(100, 100, Box(after).min, 1e-5);
    EXPECT_POINT_NEAR(110, 105, Box(after).max, 1e-5);

    CPLine closing; // The same arc serves the closing segment.
    closing.AddPoint(CGePoint2d(110, 100));
    closing.AddPoint(CGePoint2d(100, 100), -1);
    closing.AddPoint(CGePoint2d(110, 100), 0.5);
    closing.SetClose(1);
    EXPECT_POINT_NEAR(100, 100, Box(closing).min, 1e-5);
    EXPECT_POINT_NEAR(110, 105, Box(closing).max, 1e-5);
}

TEST(PLineHit, TheExtentCountsVerticesAndAHiddenPolylineHasNone) {
    CPLine line;
    FillLine(line, 3, 8, -2, 5);
    line.SetPoint(2, CGePoint2d(1000, 1000));
    EXPECT_POINT(-2, 5, Box(line).min);
    EXPECT_POINT(3, 8, Box(line).max);
    line.SetIsShow(0);
    Box hidden(line);
    EXPECT_EQ(0, hidden.result);
    EXPECT_POINT(-77, -77, hidden.min);
    CPLine empty;
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { empty.GetRect(nullptr, min, max); }));
}
