// CCircle: geometry, grips, rows, and every call of its drawing.

#include "Circle.h"

#include "support/AfxCaught.h"
#include "support/BoxAnswer.h"
#include "support/CurveTools.h"
#include "support/DrawStage.h"
#include "support/FailingStrokeDC.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

struct Disc : CCircle {
    Disc() : Disc(50, 50, 20) {}
    Disc(double x, double y, double radius) {
        SetPenColor(0x302010);
        SetCenter(CGePoint2d(x, y));
        setRadius(radius);
    }
};

const std::string kInk = "SelectObject(pen style=0 width=1 color=0x00302010)";
const std::string kPenBack = "SelectObject(pen default)";
const std::string kBrushBack = "SelectObject(brush default)";

} // namespace

// ---- Geometry ------------------------------------------------------------------------------------------------------

TEST(Circle, ANewCircleIsAHollowPointAtTheOrigin) {
    CCircle circle;
    EXPECT_POINT(0, 0, circle.Center());
    EXPECT_EQ(0.0, circle.Radius());
    EXPECT_EQ(0, circle.IsFill());
    EXPECT_EQ(0, circle.GetLockMode());
    EXPECT_EQ(CString(L"圆"), circle.GetName());
    EXPECT_EQ(0x80000005u, CCircle::classCCircle.m_wSchema);
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, circle.GetRect(nullptr, min, max));
    EXPECT_EQ(0.0f, circle.HitTest(CGePoint2d(0, 0)));
}

TEST(Circle, FloatsAreWidened) {
    CCircle two(Gdiplus::PointF(0.1f, 2), 0.1f);
    EXPECT_POINT(0.100000001490116119384765625, 2, two.Center());
    EXPECT_EQ(0.100000001490116119384765625, two.Radius());
    EXPECT_EQ(0, two.IsFill());
    CCircle three(Gdiplus::PointF(1, 2), 3, -7);
    EXPECT_EQ(-7, three.IsFill());
    three.SetCenter(Gdiplus::PointF(0.1f, 0));
    EXPECT_POINT(0.100000001490116119384765625, 0, three.Center());
}

TEST(Circle, TheCentreIsAnOrdinaryPoint) {
    CCircle circle;
    CGePoint2d snapped(1, 2);
    snapped.type = 8;
    circle.SetCenter(snapped);
    EXPECT_EQ(1, circle.Center().type);
}

TEST(Circle, GripsAreTheCentreAndTheFourQuadrantsUnderEveryMask) {
    Disc circle;
    for (int mask : {0, 1, 2, 5}) {
        Grips grips(circle, mask);
        ASSERT_EQ(5, grips.Size());
        EXPECT_POINT(50, 50, grips[0]);
        EXPECT_POINT(70, 50, grips[1]);
        EXPECT_POINT(50, 70, grips[2]);
        EXPECT_POINT(30, 50, grips[3]);
        EXPECT_POINT(50, 30, grips[4]);
    }
}

TEST(Circle, QuadrantsChangeTheRadiusAlongTheirAxis) {
    Disc circle;
    MoveGrip(circle, 1, -2, 100);
    EXPECT_EQ(18.0, circle.Radius());
    MoveGrip(circle, 2, 100, 3);
    EXPECT_EQ(21.0, circle.Radius());
    MoveGrip(circle, 3, -2, 100);
    EXPECT_EQ(23.0, circle.Radius());
    MoveGrip(circle, 4, 100, 4);
    EXPECT_EQ(19.0, circle.Radius());
    EXPECT_POINT(50, 50, circle.Center());
    circle.moveGripPointsAt(Indices({0, 1}), CGeVector2d(1, 2));
    EXPECT_POINT(51, 52, circle.Center());
    EXPECT_EQ(19.0, circle.Radius()) << "only the first index counts";
    MoveGrip(circle, 5, 9, 9);
    MoveGrip(circle, -1, 9, 9);
    EXPECT_POINT(51, 52, circle.Center());
    EXPECT_EQ(19.0, circle.Radius());
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { circle.moveGripPointsAt(Indices({}), CGeVector2d(1, 1)); }));
}

TEST(Circle, ARadiusDraggedBelowZeroGivesAMinimumAboveTheMaximum) {
    Disc circle;
    MoveGrip(circle, 1, -25, 0);
    EXPECT_EQ(-5.0, circle.Radius());
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, circle.GetRect(nullptr, min, max));
    EXPECT_POINT(55, 55, min);
    EXPECT_POINT(45, 45, max);
    DrawStage stage;
    EXPECT_EQ("Ellipse(55,55,45,45)", stage.Draw(circle)[3]);
}

TEST(Circle, AMatrixMovesItAndNeverResizesIt) {
    Disc circle(3, 4, 5);
    circle.transformBy(CGeMatrix2d::scaling(10, CGePoint2d(0, 0)));
    EXPECT_POINT(30, 40, circle.Center());
    EXPECT_EQ(5.0, circle.Radius());
}

TEST(Circle, ItHitsAtItsOutlineAlsoWhenFilled) {
    Disc circle(3, 4, 5);
    EXPECT_EQ(0.0f, circle.HitTest(CGePoint2d(0, 0)));
    EXPECT_EQ(5.0f, circle.HitTest(CGePoint2d(3, 4)));
    circle.SetFill(1);
    EXPECT_EQ(5.0f, circle.HitTest(CGePoint2d(3, 4)));
    EXPECT_EQ(2.0f, circle.HitTest(CGePoint2d(10, 4)));
    CGePointArray feet;
    EXPECT_EQ(1, circle.GetClosetPt(CGePoint2d(10, 4), feet));
    EXPECT_EQ(0, feet.GetSize());
    circle.SetIsShow(0);
    EXPECT_EQ(100.0f, circle.HitTest(CGePoint2d(0, 0)));
    CGePoint2d min(7, 7);
    CGePoint2d max(8, 8);
    EXPECT_EQ(0, circle.GetRect(nullptr, min, max));
    EXPECT_POINT(7, 7, min);
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

TEST(Circle, ItsRowsFollowTheBaseRows) {
    Disc circle;
    PropertyList rows(circle);
    const ExpectedRow expected[] = {
        {L"m_CircleX", L"中心点x坐标", VT_R8, VT_R8},
        {L"m_CircleY", L"中心点y坐标", VT_R8, VT_R8},
        {L"m_Radius", L"半径", VT_R8, VT_R8},
        {L"m_Fill", L"填充", VT_BOOL, VT_I4},
        {L"m_strParmName", L"参数名称", VT_BSTR, VT_BSTR},
        {L"m_strMsgInfo", L"扩展信息", VT_BSTR, VT_BSTR},
        {L"m_LockObjZoom", L"是否锁定线宽", VT_I4, VT_I4},
    };
    ASSERT_EQ(11, rows.list.GetSize());
    for (int i = 0; i < 7; ++i) {
        EXPECT_ROW(rows.list, 4 + i, expected[i]);
    }
}

TEST(Circle, EachRowHasItsOwnValue) {
    Disc circle(1.5, 2.5, 3.5);
    circle.SetFill(4);
    circle.SetParmName(L"n");
    circle.SetMsgInfo(L"i");
    circle.SetLockMode(300);
    PropertyList rows(circle);
    EXPECT_EQ(1.5, rows.list.Find(L"m_CircleX")->GetValue().dblVal);
    EXPECT_EQ(2.5, rows.list.Find(L"m_CircleY")->GetValue().dblVal);
    EXPECT_EQ(3.5, rows.list.Find(L"m_Radius")->GetValue().dblVal);
    EXPECT_EQ(4, rows.list.Find(L"m_Fill")->GetValue().lVal);
    EXPECT_EQ(CString(L"n"), rows.list.Find(L"m_strParmName")->GetValue().bstrVal);
    EXPECT_EQ(CString(L"i"), rows.list.Find(L"m_strMsgInfo")->GetValue().bstrVal);
    EXPECT_EQ(300, rows.list.Find(L"m_LockObjZoom")->GetValue().lVal) << "narrowed only on the way back";
}

TEST(Circle, TheCentresRowsAreTakenBackEachForItself) {
    Disc circle;
    PropertyList rows(circle);
    rows.Change(L"m_CircleY", COleVariant(9.5));
    circle.SetProperty(rows.list);
    EXPECT_POINT(50, 9.5, circle.Center());
    EXPECT_EQ(20.0, circle.Radius());
}

TEST(Circle, ChangedRowsAreTakenBack) {
    Disc circle;
    PropertyList rows(circle);
    rows.Change(L"m_CircleX", COleVariant(1.5));
    rows.Change(L"m_Radius", COleVariant(-2.5));
    rows.Change(L"m_strParmName", COleVariant(L"n", VT_BSTR));
    rows.Change(L"m_strMsgInfo", COleVariant(L"i", VT_BSTR));
    rows.list.Find(L"m_CircleY")->m_Value = COleVariant(9.0); // Not marked as changed.
    circle.SetProperty(rows.list);
    EXPECT_POINT(1.5, 50, circle.Center());
    EXPECT_EQ(-2.5, circle.Radius());
    EXPECT_EQ(CString(L"n"), circle.GetParmName());
    EXPECT_EQ(CString(L"i"), circle.GetMsgInfo());
}

TEST(Circle, TheLockTakesOnlyTheLowByteOfItsRow) {
    const struct {
        long value;
        int lock;
    } cases[] = {{1, 1}, {256, 0}, {255, -1}, {127, 127}, {128, -128}, {-1, -1}, {0x10103, 3}};
    for (const auto& c : cases) {
        Disc circle;
        circle.SetLockMode(77);
        PropertyList rows(circle);
        rows.Change(L"m_LockObjZoom", COleVariant(c.value, VT_I4));
        circle.SetProperty(rows.list);
        EXPECT_EQ(c.lock, circle.GetLockMode()) << c.value;
    }
}

TEST(Circle, TheFillTakesSixteenBitsOfItsRow) {
    Disc circle;
    PropertyList rows(circle);
    COleVariant yes;
    yes.vt = VT_BOOL;
    yes.boolVal = VARIANT_TRUE;
    rows.Change(L"m_Fill", yes);
    circle.SetProperty(rows.list);
    EXPECT_EQ(-1, circle.IsFill());
    rows.Change(L"m_Fill", COleVariant(70000L, VT_I4));
    circle.SetProperty(rows.list);
    EXPECT_EQ(4464, circle.IsFill()); // 70000 - 65536
}

// ---- Drawing -------------------------------------------------------------------------------------------------------

TEST(CircleDraw, AHollowCircleTakesTheNullBrushAndThenItsPen) {
    DrawStage stage;
    Disc circle;
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectStockObject(5)", kInk, "Ellipse(30,30,70,70)", kPenBack, kBrushBack},
                          stage.Draw(circle)));
}

TEST(CircleDraw, CornersAreTruncated) {
    DrawStage stage;
    Disc circle(50.6, 50.4, 20); // On the screen (50.6, 49.6).
    EXPECT_EQ("Ellipse(30,29,70,69)", stage.Draw(circle)[3]);
}

TEST(CircleDraw, CornersAreComputedInSinglePrecision) {
    DrawStage stage;
    stage.dc.SetExecution(false);
    stage.tran.SethScreen(0); // Pixels are (x, -y).
    // As floats 1722.7 less 134.7 is 1588 sharp, and 1587.99995 in double; 1722.7 and 134.7 are 1857.4.
    Disc lower(1722.7, 1722.7, 134.7);
    EXPECT_EQ("Ellipse(1588,-1857,1857,-1588)", stage.Draw(lower)[3]);
    // As floats 95.1 and 137.9 are 233 sharp, and 232.99999 in double; 95.1 less 137.9 is -42.8.
    Disc upper(95.1, 95.1, 137.9);
    EXPECT_EQ("Ellipse(-42,-233,233,42)", stage.Draw(upper)[3]);
}

TEST(CircleDraw, ARadiusOfZeroIsAnEllipseWithoutSize) {
    DrawStage stage;
    Disc circle(50, 50, 0);
    EXPECT_EQ("Ellipse(50,50,50,50)", stage.Draw(circle)[3]);
}

TEST(CircleDraw, AFilledCircleIsFilledWithTheBrushOfTheContext) {
    DrawStage stage;
    CBrush red(0x0000FF);
    CBrush* old = stage.dc.SelectObject(&red);
    Disc circle;
    circle.SetFill(-1);
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectStockObject(15)", kInk, "Ellipse(30,30,70,70)", kPenBack},
                          stage.Draw(circle)));
    EXPECT_EQ(0x0000FFu, stage.dc.Pixel(50, 50)) << "it fills";
    circle.SetFill(0);
    circle.setRadius(10);
    stage.Draw(circle);
    EXPECT_EQ(0x0000FFu, stage.dc.Pixel(50, 45)) << "the null brush does not";
    stage.dc.SelectObject(old);
}

TEST(CircleDraw, ASelectedCircleIsDottedAndShowsItsGrips) {
    DrawStage stage;
    Disc circle;
    circle.SetLineType(PS_DASHDOT);
    circle.SetSelected(1);
    EXPECT_TRUE(
        SameCalls({"SetBkMode(1)", "SelectStockObject(5)", "SelectObject(pen style=2 width=1 color=0x00302010)",
                   "Ellipse(30,30,70,70)", kPenBack, kBrushBack, "SelectObject(pen style=0 width=0 color=0x00FF0000)",
                   "SelectStockObject(5)", "Rectangle(47,47,54,54)", "Rectangle(67,47,74,54)", "Rectangle(47,27,54,34)",
                   "Rectangle(27,47,34,54)", "Rectangle(47,67,54,74)", kBrushBack, kPenBack},
                  stage.Draw(circle)));
}

TEST(CircleDraw, ASelectedFilledCircleIsFilledWithTheBrushOfTheContextToo) {
    DrawStage stage;
    Disc circle;
    circle.SetFill(1);
    circle.SetSelected(1);
    const Calls calls = stage.Draw(circle);
    ASSERT_EQ(14u, calls.size());
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectStockObject(15)",
                           "SelectObject(pen style=2 width=1 color=0x00302010)", "Ellipse(30,30,70,70)", kPenBack},
                          Calls(calls.begin(), calls.begin() + 5)));
    EXPECT_EQ("SelectObject(pen style=0 width=0 color=0x00FF0000)", calls[5]) << "no brush to put back, then the grips";
}

TEST(CircleDraw, ADraggedCircleIsInvertedWithThePenOfTheContext) {
    DrawStage stage;
    Disc circle;
    circle.SetLineWide(9);
    circle.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(SameCalls({"SetROP2(6)", "SelectStockObject(5)", "Ellipse(30,30,70,70)", "SetROP2(13)", kBrushBack},
                          stage.Draw(circle)));
    EXPECT_EQ(0x00FFFFFFu, stage.dc.Pixel(50, 33)) << "not nine pixels wide";
    circle.SetFill(1);
    EXPECT_TRUE(
        SameCalls({"SetROP2(6)", "SelectStockObject(15)", "Ellipse(30,30,70,70)", "SetROP2(13)"}, stage.Draw(circle)));
}

TEST(CircleDraw, ADraggedCirclePutsTheRasterModeBackThatItFound) {
    DrawStage stage;
    stage.dc.SetROP2(R2_MASKPEN);
    Disc circle;
    circle.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(SameCalls({"SetROP2(6)", "SelectStockObject(5)", "Ellipse(30,30,70,70)", "SetROP2(9)", kBrushBack},
                          stage.Draw(circle)));
    EXPECT_EQ(R2_MASKPEN, stage.dc.GetROP2());
}

TEST(CircleDraw, ASecondDraggedDrawingErasesTheFirst) {
    DrawStage stage;
    Disc circle(48.3, 51.7, 33.3);
    circle.SetDrawState(CDrawable::Dragging);
    const std::vector<DWORD> before = stage.dc.Pixels();
    stage.Draw(circle);
    EXPECT_NE(before, stage.dc.Pixels());
    stage.Draw(circle);
    EXPECT_EQ(before, stage.dc.Pixels());
}

TEST(CircleDraw, AnUnknownStateDrawsNothing) {
    DrawStage stage;
    Disc circle;
    circle.SetDrawState(static_cast<CDrawable::DrawState>(3));
    EXPECT_TRUE(stage.Draw(circle).empty());
}

TEST(CircleDraw, AHiddenOrDeletedCircleDrawsNothing) {
    DrawStage stage;
    Disc hidden;
    hidden.SetIsShow(0);
    EXPECT_TRUE(stage.Draw(hidden).empty());
    Deleted<CCircle> deleted;
    deleted.setRadius(5);
    EXPECT_TRUE(stage.Draw(deleted).empty());
}

TEST(CircleDraw, OnlyThePenIsLockedAgainstTheZoom) {
    DrawStage stage;
    stage.tran.SetScale(0.5f);
    Disc circle(25, 25, 10);
    circle.SetLineWide(2);
    Calls calls = stage.Draw(circle);
    EXPECT_EQ("SelectObject(pen style=0 width=4 color=0x00302010)", calls[2]);
    EXPECT_EQ("Ellipse(30,30,70,70)", calls[3]);
    circle.SetLockMode(-5);
    calls = stage.Draw(circle);
    EXPECT_EQ("SelectObject(pen style=0 width=2 color=0x00302010)", calls[2]);
    EXPECT_EQ("Ellipse(30,30,70,70)", calls[3]);
    circle.SetLockMode(0);
    stage.tran.SetScale(100.0f);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00302010)", stage.Draw(circle)[2]) << "raised to a pixel";
}

TEST(CircleDraw, ColoursComeByIndexAndByLayerToo) {
    DrawStage stage;
    Disc circle;
    circle.SetPenColorIndex(10);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00E22B8A)", stage.Draw(circle)[2]);
    circle.SetPenColorIndex(-1);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00FFFFFF)", stage.Draw(circle)[2]);
}

TEST(CircleDraw, CoordinatesThatAreNoNumbersOrTooFarDoNoHarm) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (double bad : {nan, infinite, -infinite, 1e300}) {
        DrawStage stage;
        stage.dc.SetExecution(false);
        Disc circle(bad, 1, bad);
        circle.SetSelected(1);
        EXPECT_FALSE(stage.Draw(circle).empty());
    }
}

TEST(DesktopCircleDraw, AFailedDrawingNamesItsStage) {
    DrawStage stage;
    BoxAnswer answer;
    Disc layer;
    layer.SetLayer(-1);
    stage.Draw(layer);
    Gripless<CCircle> gripless;
    gripless.SetSelected(1);
    stage.Draw(gripless);
    EXPECT_EQ((std::vector<std::string>{"CCircle::Draw出错:step=0", "CCircle::Draw出错:step=3"}), answer.Texts());
}

TEST(DesktopCircleDraw, AFailedStrokeIsStageOneAndPutsBackWhatWasSelected) {
    DrawStage stage;
    BoxAnswer answer;
    Disc circle;
    EXPECT_TRUE(
        SameCalls({"SetBkMode(1)", "SelectStockObject(5)", kInk, kPenBack, kBrushBack}, FailStroke(stage, circle)));
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectStockObject(5)", kInk, kPenBack, kBrushBack},
                          FailStroke(stage, circle, true)))
        << "what is no exception of the library's";
    circle.SetSelected(1);
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectStockObject(5)", "SelectObject(pen style=2 width=1 color=0x00302010)",
                           kPenBack, kBrushBack},
                          FailStroke(stage, circle)))
        << "no grips after a failure";
    circle.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(SameCalls({"SetROP2(6)", "SelectStockObject(5)", kBrushBack, "SetROP2(9)"}, FailStroke(stage, circle)));
    EXPECT_EQ(std::vector<std::string>(4, "CCircle::Draw出错:step=1"), answer.Texts());
}
