// CArc: the circle through three points, the sweep, grips, matrices, extents, rows, and every call of its drawing.

#include "Arc.h"

#include "support/AfxCaught.h"
#include "support/BoxAnswer.h"
#include "support/CurveTools.h"
#include "support/DrawStage.h"
#include "support/FailingStrokeDC.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

const double kPi = std::acos(-1.0);

struct Bow : CArc {
    Bow(double x, double y, double radius, double start, double end) {
        SetPenColor(0x302010);
        SetCenter(CGePoint2d(x, y));
        setRadius(radius);
        SetStartAngle(start);
        SetEndAngle(end);
    }
    using CArc::GetEndPT;
    using CArc::GetMidPT;
    using CArc::GetStartPT;
};

struct Through {
    Through(CGePoint2d p1, CGePoint2d p2, CGePoint2d p3)
        : result(CArc::Calarc(p1, p2, p3, &x, &y, &radius, &start, &end)) {}
    double x = 9;
    double y = 9;
    double radius = 9;
    double start = 9;
    double end = 9;
    int result;
};

struct Box {
    explicit Box(CDrawable& object) : result(object.GetRect(nullptr, min, max)) {}
    CGePoint2d min = CGePoint2d(-77, -77);
    CGePoint2d max = CGePoint2d(-77, -77);
    int result;
};

const std::string kInk = "SelectObject(pen style=0 width=1 color=0x00302010)";
const std::string kPenBack = "SelectObject(pen default)";
const std::string kBrushBack = "SelectObject(brush default)";
const std::string kQuarter = "Arc(30,30,70,70,70,50,50,30)";

} // namespace

// ---- The circle through three points -------------------------------------------------------------------------------

TEST(ArcCircle, ThreePointsGiveCentreRadiusAndTheSweepThroughTheSecond) {
    CGePoint2d center;
    double radius = 0;
    EXPECT_EQ(1, CArc::Calarc(CGePoint2d(1, 0), CGePoint2d(0, 1), CGePoint2d(-1, 0), center, radius));
    EXPECT_POINT(0, 0, center);
    EXPECT_EQ(1.0, radius);
    const Through upper(CGePoint2d(1, 0), CGePoint2d(0, 1), CGePoint2d(-1, 0));
    EXPECT_EQ(1, upper.result);
    EXPECT_EQ(0.0, upper.x);
    EXPECT_EQ(0.0, upper.y);
    EXPECT_EQ(1.0, upper.radius);
    EXPECT_EQ(0.0, upper.start);
    EXPECT_EQ(kPi, upper.end);
}

TEST(ArcCircle, TheDirectionOfThePointsDoesNotMatter) {
    const Through back(CGePoint2d(-1, 0), CGePoint2d(0, 1), CGePoint2d(1, 0));
    EXPECT_EQ(0.0, back.start);
    EXPECT_EQ(kPi, back.end);
    const Through left(CGePoint2d(0, 1), CGePoint2d(-1, 0), CGePoint2d(0, -1));
    EXPECT_DOUBLE_EQ(kPi / 2, left.start);
    EXPECT_DOUBLE_EQ(6.283185307 - kPi / 2, left.end);
}

TEST(ArcCircle, AcrossTheAxisTheStartIsAboveTheEnd) {
    const Through lower(CGePoint2d(1, 0), CGePoint2d(0, -1), CGePoint2d(-1, 0));
    EXPECT_EQ(kPi, lower.start);
    EXPECT_EQ(0.0, lower.end);
    const Through right(CGePoint2d(0, 1), CGePoint2d(1, 0), CGePoint2d(0, -1));
    EXPECT_DOUBLE_EQ(6.283185307 - kPi / 2, right.start);
    EXPECT_DOUBLE_EQ(kPi / 2, right.end);
}

TEST(ArcCircle, TheRadiusHasThePrecisionOfAFloat) {
    const Through small(CGePoint2d(0.1, 0), CGePoint2d(0, 0.1), CGePoint2d(-0.1, 0));
    EXPECT_EQ(0.100000001490116119384765625, small.radius);
    const Through large(CGePoint2d(16777217, 0), CGePoint2d(0, 16777217), CGePoint2d(-16777217, 0));
    EXPECT_EQ(16777216.0, large.radius);
}

TEST(ArcCircle, CoincidentPointsHaveNoCircleAndLeaveTheResults) {
    const CGePoint2d a(1, 2);
    const CGePoint2d b(5, 6);
    const CGePoint2d c(9, 1);
    const CGePoint2d points[][3] = {{a, a, c}, {a, b, a}, {a, b, b}};
    for (const auto& p : points) {
        CGePoint2d center(77, 88);
        double radius = 99;
        EXPECT_EQ(0, CArc::Calarc(p[0], p[1], p[2], center, radius));
        EXPECT_POINT(77, 88, center);
        EXPECT_EQ(99.0, radius);
    }
}

TEST(ArcCircle, PointsInLineHaveNoCircleAndTheLongFormWritesAnglesFromTheOrigin) {
    const Through line(CGePoint2d(0, 1), CGePoint2d(0, 2), CGePoint2d(0, 3));
    EXPECT_EQ(0, line.result);
    EXPECT_EQ(0.0, line.x);
    EXPECT_EQ(0.0, line.y);
    EXPECT_EQ(0.0, line.radius);
    EXPECT_DOUBLE_EQ(kPi / 2, line.start);
    EXPECT_DOUBLE_EQ(kPi / 2, line.end);
}

TEST(ArcCircle, PointsAreInLineByTheAreaOfTheirTriangleSoThatATinyCircleIsNone) {
    // Twice the area: 2 r r. 2e-16 is below 1e-15, 1.8e-15 is not.
    EXPECT_EQ(0, Through(CGePoint2d(1e-8, 0), CGePoint2d(0, 1e-8), CGePoint2d(-1e-8, 0)).result);
    EXPECT_EQ(1, Through(CGePoint2d(3e-8, 0), CGePoint2d(0, 3e-8), CGePoint2d(-3e-8, 0)).result);
}

TEST(ArcCircle, PointsThatAreNoNumbersGiveNoNumbers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Through bad(CGePoint2d(nan, 0), CGePoint2d(0, 1), CGePoint2d(-1, 0));
    EXPECT_TRUE(std::isnan(bad.x));
    EXPECT_TRUE(std::isnan(bad.radius));
}

// ---- The sweep -----------------------------------------------------------------------------------------------------

TEST(Arc, ANewArcHasNoAngles) {
    CArc arc;
    EXPECT_EQ(0.0, arc.GetStartAngle());
    EXPECT_EQ(0.0, arc.GetEndAngle());
    EXPECT_EQ(CString(L"圆弧"), arc.GetName());
    EXPECT_EQ(0x80000005u, CArc::classCArc.m_wSchema);
    EXPECT_TRUE(arc.IsKindOf(RUNTIME_CLASS(CCircle)));
    CArc floats(Gdiplus::PointF(1, 2), 3, 0.1f, 0.2f);
    EXPECT_POINT(1, 2, floats.Center());
    EXPECT_EQ(3.0, floats.Radius());
    EXPECT_EQ(0.100000001490116119384765625, floats.GetStartAngle());
    EXPECT_EQ(0.20000000298023223876953125, floats.GetEndAngle());
}

TEST(Arc, TheEndsThemselvesAreOutside) {
    Bow arc(0, 0, 1, 0.5, 2.5);
    EXPECT_EQ(0, arc.IsInArc(0.5f));
    EXPECT_EQ(1, arc.IsInArc(0.6f));
    EXPECT_EQ(0, arc.IsInArc(2.5f));
    EXPECT_EQ(0, arc.IsInArc(3.0f));
    Bow across(0, 0, 1, 2.5, 0.5);
    EXPECT_EQ(0, across.IsInArc(2.5f));
    EXPECT_EQ(1, across.IsInArc(3.0f));
    EXPECT_EQ(1, across.IsInArc(0.0f));
    EXPECT_EQ(0, across.IsInArc(0.5f));
    EXPECT_EQ(0, across.IsInArc(1.0f));
    Bow none(0, 0, 1, 1.0, 1.0);
    EXPECT_EQ(0, none.IsInArc(1.0f));
    EXPECT_EQ(0, none.IsInArc(2.0f));
}

TEST(Arc, AFloatAngleIsComparedWithTheStoredDoubles) {
    Bow arc(0, 0, 1, 0.1, 2.0);
    EXPECT_EQ(1, arc.IsInArc(0.1f)) << "0.1f is a little more than 0.1";
    Bow up(0, 0, 1, 1.0, 0.1 + 2e-10);
    EXPECT_EQ(0, up.IsInArc(0.1f));
}

TEST(Arc, AcrossTheAxisTheMiddleIsOnTheFarSide) {
    const double degrees350 = 350 * kPi / 180;
    const double degrees10 = 10 * kPi / 180;
    Bow arc(5, 7, 2, degrees350, degrees10);
    CGePoint2d mid(0, 0);
    mid.type = 8;
    arc.GetMidPT(mid);
    EXPECT_POINT_NEAR(7, 7, mid, 1e-9);
    EXPECT_EQ(8, mid.type) << "x and y are written, no more";
    EXPECT_EQ(1, arc.IsInArc(0.0f));
    CGePoint2d start;
    arc.GetStartPT(start);
    EXPECT_POINT_NEAR(5 + 2 * 0.984807753012208, 7 - 2 * 0.17364817766693033, start, 1e-12);
    CGePoint2d end;
    arc.GetEndPT(end);
    EXPECT_POINT_NEAR(5 + 2 * 0.984807753012208, 7 + 2 * 0.17364817766693033, end, 1e-12);
}

TEST(Arc, TheHalfTurnToTheMiddleHasElevenDigits) {
    Bow arc(0, 0, 1e10, 1.5 * kPi, 0.5 * kPi); // The middle at a whole turn, which falls short by 8.98e-11.
    Grips grips(arc);
    EXPECT_NEAR(-0.898, grips[2].y, 0.001);
}

TEST(Arc, SetTakesThePointsAsTheyComeAndOrdersNothing) {
    CArc arc;
    EXPECT_EQ(1, arc.Set(CGePoint2d(-1, 0), CGePoint2d(0, 1), CGePoint2d(1, 0)));
    EXPECT_EQ(kPi, arc.GetStartAngle()) << "clockwise points give the rest of the circle";
    EXPECT_EQ(0.0, arc.GetEndAngle());
    EXPECT_EQ(1, arc.Set(CGePoint2d(3, 0), CGePoint2d(2, 1), CGePoint2d(1, 0)));
    EXPECT_EQ(0.0, arc.GetStartAngle());
    EXPECT_EQ(kPi, arc.GetEndAngle());
    EXPECT_POINT(2, 0, arc.Center());
    EXPECT_EQ(1.0, arc.Radius());
    EXPECT_EQ(0, arc.Set(CGePoint2d(0, 0), CGePoint2d(1, 1), CGePoint2d(2, 2)));
    EXPECT_POINT(2, 0, arc.Center());
    EXPECT_EQ(kPi, arc.GetEndAngle());
}

// ---- Grips and matrices --------------------------------------------------------------------------------------------

TEST(Arc, GripsAreCentreStartMiddleAndEnd) {
    Bow arc(10, 20, 5, 0, kPi);
    Grips grips(arc, 0);
    ASSERT_EQ(4, grips.Size());
    EXPECT_POINT(10, 20, grips[0]);
    EXPECT_POINT_NEAR(15, 20, grips[1], 1e-12);
    EXPECT_POINT_NEAR(10, 25, grips[2], 1e-12);
    EXPECT_POINT_NEAR(5, 20, grips[3], 1e-12);
}

TEST(Arc, DraggingTheCentreMovesTheArc) {
    Bow arc(10, 20, 5, 0.25, 1.25);
    arc.moveGripPointsAt(Indices({0, 1}), CGeVector2d(1, -1));
    EXPECT_POINT(11, 19, arc.Center());
    EXPECT_EQ(5.0, arc.Radius());
    EXPECT_EQ(0.25, arc.GetStartAngle());
    MoveGrip(arc, 4, 9, 9);
    MoveGrip(arc, -1, 9, 9);
    EXPECT_POINT(11, 19, arc.Center());
    EXPECT_EQ(1.25, arc.GetEndAngle());
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { arc.moveGripPointsAt(Indices({}), CGeVector2d(1, 1)); }));
}

TEST(Arc, ADraggedPointRebuildsTheArcThroughAllThree) {
    Bow arc(0, 0, 5, 0, kPi);
    MoveGrip(arc, 2, 0, 5); // Through (5, 0), (0, 10), (-5, 0): the centre (0, 3.75), the radius 6.25.
    EXPECT_POINT_NEAR(0, 3.75, arc.Center(), 1e-12);
    EXPECT_NEAR(6.25, arc.Radius(), 1e-6);
    // From (5, -3.75) off the centre, 0.6435011087932844 below the axis, to its mirror image.
    EXPECT_NEAR(6.283185307 - 0.6435011087932844, arc.GetStartAngle(), 1e-9);
    EXPECT_NEAR(kPi + 0.6435011087932844, arc.GetEndAngle(), 1e-9);
    Bow start(0, 0, 5, 0, kPi);
    MoveGrip(start, 1, 5, 5);                       // Through (10, 5), (0, 5), (-5, 0).
    EXPECT_POINT_NEAR(5, -5, start.Center(), 1e-9); // On x = 5 and on y = -x.
    EXPECT_NEAR(std::sqrt(125.0), start.Radius(), 1e-5);
    Bow end(0, 0, 5, 0, kPi);
    MoveGrip(end, 3, -5, 5); // Through (5, 0), (0, 5), (-10, 5).
    EXPECT_POINT_NEAR(-5, -5, end.Center(), 1e-9);
}

TEST(Arc, AMiddleDraggedOntoTheChordLeavesTheArc) {
    Bow arc(0, 0, 1, 0, kPi);
    MoveGrip(arc, 2, 0, -1);
    EXPECT_POINT(0, 0, arc.Center());
    EXPECT_EQ(1.0, arc.Radius());
    EXPECT_EQ(0.0, arc.GetStartAngle());
    EXPECT_EQ(kPi, arc.GetEndAngle());
}

TEST(Arc, AMatrixScalesTheRadiusAndMirrorsTheArc) {
    Bow arc(0, 0, 1, 0.25, 1.5);
    arc.transformBy(CGeMatrix2d::scaling(3, CGePoint2d(10, 0)));
    EXPECT_POINT_NEAR(-20, 0, arc.Center(), 1e-6);
    EXPECT_NEAR(3.0, arc.Radius(), 1e-6);
    EXPECT_NEAR(0.25, arc.GetStartAngle(), 1e-6);
    EXPECT_NEAR(1.5, arc.GetEndAngle(), 1e-6);
    arc.transformBy(CGeMatrix2d::mirroring(CGePoint2d(0, 0), CGePoint2d(1, 0)));
    EXPECT_NEAR(6.283185307 - 1.5, arc.GetStartAngle(), 1e-6);
    EXPECT_NEAR(6.283185307 - 0.25, arc.GetEndAngle(), 1e-6);
}

TEST(Arc, AMatrixThatFlattensLeavesTheArc) {
    Bow arc(3, 4, 1, 0.25, 1.5);
    arc.transformBy(CGeMatrix2d::scaling(0, CGePoint2d(0, 0)));
    EXPECT_POINT(3, 4, arc.Center());
    EXPECT_EQ(1.0, arc.Radius());
}

TEST(Arc, ItHitsOnItsWholeCircle) {
    Bow arc(0, 0, 5, 0, 1);
    EXPECT_EQ(0.0f, arc.HitTest(CGePoint2d(-5, 0)));
    EXPECT_EQ(2.0f, arc.HitTest(CGePoint2d(0, -3)));
    arc.SetIsShow(0);
    EXPECT_EQ(100.0f, arc.HitTest(CGePoint2d(-5, 0)));
}

// ---- Extents -------------------------------------------------------------------------------------------------------

TEST(Arc, WithinAQuadrantTheBoxIsThatOfTheEnds) {
    Bow arc(10, 20, 5, 0.25, 1.25);
    const Box box(arc);
    EXPECT_EQ(1, box.result);
    EXPECT_POINT_NEAR(10 + 5 * 0.31532236239526867, 20 + 5 * 0.24740395925452294, box.min, 1e-12);
    EXPECT_POINT_NEAR(10 + 5 * 0.9689124217106447, 20 + 5 * 0.9489846193555862, box.max, 1e-12);
}

TEST(Arc, EachQuadrantPassedIsTakenIn) {
    Bow top(10, 20, 5, 0.8, 2.3);
    EXPECT_EQ(25.0, Box(top).max.y);
    Bow left(10, 20, 5, 2.3, 4.0);
    EXPECT_EQ(5.0, Box(left).min.x);
    Bow bottom(10, 20, 5, 4.0, 5.5);
    EXPECT_EQ(15.0, Box(bottom).min.y);
    Bow right(10, 20, 5, 5.5, 0.8);
    EXPECT_EQ(15.0, Box(right).max.x);
    Bow most(10, 20, 5, 0.8, 0.7);
    EXPECT_POINT(5, 15, Box(most).min);
    EXPECT_POINT(15, 25, Box(most).max);
}

TEST(Arc, QuadrantsAreTestedInSinglePrecision) {
    // The quarter turn as a float is 4e-8 above the true one. This arc begins between the two.
    Bow arc(0, 0, 1, 1.57079635, 3.0);
    CGePoint2d start;
    arc.GetStartPT(start);
    ASSERT_LT(start.y, 1.0);
    EXPECT_EQ(1.0, Box(arc).max.y);
}

TEST(Arc, AHiddenArcHasNoExtent) {
    Bow arc(10, 20, 5, 0.25, 1.25);
    arc.SetIsShow(0);
    const Box box(arc);
    EXPECT_EQ(0, box.result);
    EXPECT_POINT(-77, -77, box.min);
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

TEST(Arc, TheRowsOfTheAnglesFollowThoseOfTheCircle) {
    Bow arc(1, 2, 3, 0.25, 1.25);
    PropertyList rows(arc);
    ASSERT_EQ(13, rows.list.GetSize());
    const ExpectedRow circle = {L"m_LockObjZoom", L"是否锁定线宽", VT_I4, VT_I4};
    const ExpectedRow start = {L"m_StartAngle", L"起点弧度", VT_R8, VT_R8};
    const ExpectedRow end = {L"m_EndAngle", L"端点弧度", VT_R8, VT_R8};
    EXPECT_ROW(rows.list, 10, circle);
    EXPECT_ROW(rows.list, 11, start);
    EXPECT_ROW(rows.list, 12, end);
    EXPECT_EQ(1.0, rows.list.Find(L"m_CircleX")->GetValue().dblVal);
    EXPECT_EQ(2.0, rows.list.Find(L"m_CircleY")->GetValue().dblVal);
    EXPECT_EQ(3.0, rows.list.Find(L"m_Radius")->GetValue().dblVal);
    EXPECT_EQ(0.25, rows.list.GetRow(11)->GetValue().dblVal);
    EXPECT_EQ(1.25, rows.list.GetRow(12)->GetValue().dblVal);
    rows.Change(L"m_StartAngle", COleVariant(0.5));
    rows.Change(L"m_EndAngle", COleVariant(7.5));
    rows.Change(L"m_Radius", COleVariant(4.0));
    rows.Change(L"m_LockObjZoom", COleVariant(255L, VT_I4));
    arc.SetProperty(rows.list);
    EXPECT_EQ(0.5, arc.GetStartAngle());
    EXPECT_EQ(7.5, arc.GetEndAngle());
    EXPECT_EQ(4.0, arc.Radius());
    EXPECT_EQ(-1, arc.GetLockMode());
}

TEST(Arc, OnlyChangedAnglesAreTakenBackEachForItself) {
    Bow arc(1, 2, 3, 0.25, 1.25);
    PropertyList rows(arc);
    rows.list.Find(L"m_StartAngle")->m_Value = COleVariant(9.0); // Not marked as changed.
    rows.Change(L"m_EndAngle", COleVariant(7.5));
    rows.Change(L"m_CircleX", COleVariant(4.5));
    rows.Change(L"m_CircleY", COleVariant(5.5));
    arc.SetProperty(rows.list);
    EXPECT_EQ(0.25, arc.GetStartAngle());
    EXPECT_EQ(7.5, arc.GetEndAngle());
    EXPECT_POINT(4.5, 5.5, arc.Center());
    EXPECT_EQ(3.0, arc.Radius());
    PropertyList again(arc);
    again.list.Find(L"m_EndAngle")->m_Value = COleVariant(9.0);
    again.Change(L"m_StartAngle", COleVariant(6.5));
    arc.SetProperty(again.list);
    EXPECT_EQ(6.5, arc.GetStartAngle());
    EXPECT_EQ(7.5, arc.GetEndAngle());
}

// ---- Drawing -------------------------------------------------------------------------------------------------------

TEST(ArcDraw, AnArcTakesItsPenAndThenTheNullBrush) {
    DrawStage stage;
    Bow arc(50, 50, 20, 0, kPi / 2);
    arc.SetFill(1); // Has no meaning here.
    EXPECT_TRUE(
        SameCalls({"SetBkMode(1)", kInk, "SelectStockObject(5)", kQuarter, kBrushBack, kPenBack}, stage.Draw(arc)));
    EXPECT_EQ(0x00302010u, stage.dc.Pixel(64, 36)) << "up and to the right";
    EXPECT_EQ(0x00FFFFFFu, stage.dc.Pixel(36, 64));
}

TEST(ArcDraw, PixelsAreTruncatedUnlikeAPolylinesArcs) {
    DrawStage stage;
    Bow arc(50.6, 50.4, 20, 0, kPi / 2); // On the screen (50.6, 49.6).
    EXPECT_EQ("Arc(30,29,70,69,70,49,50,29)", stage.Draw(arc)[3]);
}

TEST(ArcDraw, CornersAndEndsAreComputedInSinglePrecision) {
    DrawStage stage;
    stage.dc.SetExecution(false);
    stage.tran.SethScreen(0); // Pixels are (x, -y).
    // As floats 1722.7 less 134.7 is 1588 sharp, and 1587.99995 in double. From the left end down to the lowest.
    Bow left(1722.7, 1722.7, 134.7, kPi, 1.5 * kPi);
    EXPECT_EQ("Arc(1588,-1857,1857,-1588,1588,-1722,1722,-1588)", stage.Draw(left)[3]);
    Bow back(1722.7, 1722.7, 134.7, 1.5 * kPi, kPi);
    EXPECT_EQ("Arc(1588,-1857,1857,-1588,1722,-1588,1588,-1722)", stage.Draw(back)[3]);
    // As floats 95.1 and 137.9 are 233 sharp, and 232.99999 in double. From the right end up to the highest.
    Bow right(95.1, 95.1, 137.9, 0, kPi / 2);
    EXPECT_EQ("Arc(-42,-233,233,42,233,-95,95,-233)", stage.Draw(right)[3]);
    Bow most(95.1, 95.1, 137.9, kPi / 2, 0);
    EXPECT_EQ("Arc(-42,-233,233,42,95,-233,233,-95)", stage.Draw(most)[3]);
}

TEST(ArcDraw, ASelectedArcIsDottedAndShowsItsGrips) {
    DrawStage stage;
    Bow arc(50, 50, 20, 0, kPi);
    arc.SetLineType(PS_DASH);
    arc.SetSelected(1);
    const Calls calls = stage.Draw(arc);
    const std::string dotted = "SelectObject(pen style=2 width=1 color=0x00302010)";
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", dotted, "SelectStockObject(5)", "Arc(30,30,70,70,70,50,30,50)", kBrushBack,
                           kPenBack, "SelectObject(pen style=0 width=0 color=0x00FF0000)", "SelectStockObject(5)",
                           "Rectangle(47,47,54,54)", "Rectangle(67,47,74,54)", "Rectangle(47,27,54,34)",
                           "Rectangle(27,47,34,54)", kBrushBack, kPenBack},
                          calls));
}

TEST(ArcDraw, ADraggedArcKeepsItsPenUnderInversionAndTouchesNoBrush) {
    DrawStage stage;
    Bow arc(50, 50, 20, 0, kPi / 2);
    arc.SetLineType(PS_DASH);
    arc.SetDrawState(CDrawable::Dragging);
    const std::vector<DWORD> before = stage.dc.Pixels();
    EXPECT_TRUE(SameCalls(
        {"SelectObject(pen style=1 width=1 color=0x00302010)", "SetROP2(6)", kQuarter, "SetROP2(13)", kPenBack},
        stage.Draw(arc)));
    EXPECT_NE(before, stage.dc.Pixels());
    stage.Draw(arc);
    EXPECT_EQ(before, stage.dc.Pixels());
}

TEST(ArcDraw, ADraggedArcPutsTheRasterModeBackThatItFound) {
    DrawStage stage;
    stage.dc.SetROP2(R2_MASKPEN);
    Bow arc(50, 50, 20, 0, kPi / 2);
    arc.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(SameCalls({kInk, "SetROP2(6)", kQuarter, "SetROP2(9)", kPenBack}, stage.Draw(arc)));
}

TEST(ArcDraw, TheWidthFallsToZeroWhereOtherKindsStopAtOne) {
    DrawStage stage;
    stage.tran.SetScale(2.0f);
    Bow arc(100, 100, 40, 0, kPi / 2);
    EXPECT_EQ("SelectObject(pen style=0 width=0 color=0x00302010)", stage.Draw(arc)[1]) << "half a pixel, truncated";
    arc.SetLineWide(5);
    EXPECT_EQ("SelectObject(pen style=0 width=2 color=0x00302010)", stage.Draw(arc)[1]);
    arc.SetLineWide(-6);
    EXPECT_EQ("SelectObject(pen style=0 width=0 color=0x00302010)", stage.Draw(arc)[1]) << "raised to 0";
    arc.SetLineWide(5);
    arc.SetLockMode(3);
    EXPECT_EQ("SelectObject(pen style=0 width=5 color=0x00302010)", stage.Draw(arc)[1]);
}

TEST(ArcDraw, AHiddenDeletedOrUnknownArcDrawsNothing) {
    DrawStage stage;
    Bow arc(50, 50, 20, 0, 1);
    arc.SetIsShow(0);
    EXPECT_TRUE(stage.Draw(arc).empty());
    arc.SetIsShow(1);
    arc.SetDrawState(static_cast<CDrawable::DrawState>(3));
    EXPECT_TRUE(stage.Draw(arc).empty());
    Deleted<CArc> deleted;
    EXPECT_TRUE(stage.Draw(deleted).empty());
}

TEST(ArcDraw, ColoursComeByIndexAndByLayerToo) {
    DrawStage stage;
    Bow arc(50, 50, 20, 0, 1);
    arc.SetPenColorIndex(10);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00E22B8A)", stage.Draw(arc)[1]);
    arc.SetPenColorIndex(-1);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00FFFFFF)", stage.Draw(arc)[1]);
}

TEST(ArcDraw, CoordinatesThatAreNoNumbersOrTooFarDoNoHarm) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (double bad : {nan, infinite, -infinite, 1e300}) {
        DrawStage stage;
        stage.dc.SetExecution(false);
        Bow arc(bad, 1, bad, bad, 1);
        arc.SetSelected(1);
        EXPECT_FALSE(stage.Draw(arc).empty());
        Box box(arc);
        EXPECT_EQ(1, box.result);
    }
}

TEST(DesktopArcDraw, AFailedDrawingNamesItsStage) {
    DrawStage stage;
    BoxAnswer answer;
    Bow layer(50, 50, 20, 0, 1);
    layer.SetLayer(-1);
    stage.Draw(layer);
    Gripless<CArc> gripless;
    gripless.SetSelected(1);
    stage.Draw(gripless);
    EXPECT_EQ((std::vector<std::string>{"CArc::Draw出错:step=1", "CArc::Draw出错:step=3"}), answer.Texts());
}

TEST(DesktopArcDraw, AFailedStrokeIsStageTwoAndPutsBackWhatWasSelected) {
    DrawStage stage;
    BoxAnswer answer;
    Bow arc(50, 50, 20, 0, 1);
    EXPECT_TRUE(
        SameCalls({"SetBkMode(1)", kInk, "SelectStockObject(5)", kBrushBack, kPenBack}, FailStroke(stage, arc)));
    EXPECT_TRUE(
        SameCalls({"SetBkMode(1)", kInk, "SelectStockObject(5)", kBrushBack, kPenBack}, FailStroke(stage, arc, true)))
        << "what is no exception of the library's";
    arc.SetSelected(1);
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectObject(pen style=2 width=1 color=0x00302010)", "SelectStockObject(5)",
                           kBrushBack, kPenBack},
                          FailStroke(stage, arc)))
        << "no grips after a failure";
    arc.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(SameCalls({kInk, "SetROP2(6)", "SetROP2(9)", kPenBack}, FailStroke(stage, arc)));
    EXPECT_EQ(std::vector<std::string>(4, "CArc::Draw出错:step=2"), answer.Texts());
}
