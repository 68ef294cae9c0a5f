// CCenterPoint: its differences from a circle, and what both have in common.

#include "CenterPoint.h"

#include "support/AfxCaught.h"
#include "support/BoxAnswer.h"
#include "support/CurveTools.h"
#include "support/DrawStage.h"
#include "support/FailingStrokeDC.h"

#include <gtest/gtest.h>

namespace {

struct Mark : CCenterPoint {
    Mark() {
        SetPenColor(0x302010);
        SetCenter(CGePoint2d(100, 100));
    }
    double Size() { return m_Radius; }
    void SetSize(double radius) { m_Radius = radius; }
    int Fill() { return m_Fill; }
};

const std::string kInk = "SelectObject(pen style=0 width=1 color=0x00302010)";
const std::string kPenBack = "SelectObject(pen default)";
const std::string kBrushBack = "SelectObject(brush default)";

// At two units a pixel: about pixel (50, 50), 35 pixels.
const Calls kStroke = {"MoveTo(50,15)", "LineTo(50,85)", "MoveTo(15,50)", "LineTo(85,50)", "Ellipse(32,32,67,67)"};

Calls Around(Calls before, const Calls& after) {
    before.insert(before.end(), kStroke.begin(), kStroke.end());
    before.insert(before.end(), after.begin(), after.end());
    return before;
}

struct WideStage : DrawStage {
    WideStage() { tran.SetScale(2.0f); }
};

} // namespace

TEST(CenterPoint, ANewMarkHasARadiusOfSeventy) {
    Mark mark;
    EXPECT_EQ(70.0, mark.Size());
    EXPECT_EQ(0, mark.Fill());
    EXPECT_EQ(0, mark.GetLockMode());
    EXPECT_EQ(CString(L"插入点"), mark.GetName());
    EXPECT_EQ(0x80000005u, CCenterPoint::classCCenterPoint.m_wSchema);
    CCenterPoint at(Gdiplus::PointF(0.1f, 2));
    EXPECT_POINT(0.100000001490116119384765625, 2, at.Center());
    EXPECT_POINT(0.100000001490116119384765625, 2, at.GetCenter());
    Grips grips(at);
    EXPECT_POINT(70.100000001490116, 2, grips[1]);
    EXPECT_FALSE(mark.IsKindOf(CRuntimeClass::FromName(L"CCircle"))) << "a class beside the circle, not below it";
}

TEST(CenterPoint, TheWholeDiscHitsAtOneFixedDistance) {
    Mark mark;
    EXPECT_EQ(1.0f, mark.HitTest(CGePoint2d(100, 100)));
    EXPECT_EQ(1.0f, mark.HitTest(CGePoint2d(130, 60)));
    EXPECT_EQ(1.0f, mark.HitTest(CGePoint2d(170, 100))) << "on the rim";
    EXPECT_EQ(1000.0f, mark.HitTest(CGePoint2d(170.0000001, 100)));
    mark.SetIsShow(0);
    EXPECT_EQ(1000.0f, mark.HitTest(CGePoint2d(100, 100)));
    CGePoint2d min(7, 7);
    CGePoint2d max;
    EXPECT_EQ(0, mark.GetRect(nullptr, min, max));
    EXPECT_POINT(7, 7, min);
}

TEST(CenterPoint, GripsExtentAndMatrixAreACirclesOwn) {
    Mark mark;
    Grips grips(mark, 0);
    ASSERT_EQ(5, grips.Size());
    EXPECT_POINT(100, 100, grips[0]);
    EXPECT_POINT(170, 100, grips[1]);
    EXPECT_POINT(100, 170, grips[2]);
    EXPECT_POINT(30, 100, grips[3]);
    EXPECT_POINT(100, 30, grips[4]);
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, mark.GetRect(nullptr, min, max));
    EXPECT_POINT(30, 30, min);
    EXPECT_POINT(170, 170, max);
    MoveGrip(mark, 1, 10, 99);
    EXPECT_EQ(80.0, mark.Size());
    MoveGrip(mark, 2, 99, -10);
    EXPECT_EQ(70.0, mark.Size());
    MoveGrip(mark, 3, 5, 99);
    EXPECT_EQ(65.0, mark.Size());
    MoveGrip(mark, 4, 99, 5);
    EXPECT_EQ(60.0, mark.Size());
    mark.moveGripPointsAt(Indices({0, 1}), CGeVector2d(1, 2));
    EXPECT_POINT(101, 102, mark.Center());
    MoveGrip(mark, 5, 9, 9);
    EXPECT_POINT(101, 102, mark.Center());
    EXPECT_EQ(60.0, mark.Size());
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { mark.moveGripPointsAt(Indices({}), CGeVector2d(1, 1)); }));
    mark.transformBy(CGeMatrix2d::scaling(10, CGePoint2d(0, 0)));
    EXPECT_POINT(1010, 1020, mark.Center());
    EXPECT_EQ(60.0, mark.Size());
    mark.SetCenter(Gdiplus::PointF(3, 4));
    EXPECT_POINT(3, 4, mark.GetCenter());
}

TEST(CenterPoint, RowsAreACirclesOwn) {
    Mark mark;
    PropertyList rows(mark);
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
    rows.Change(L"m_CircleX", COleVariant(1.0));
    rows.Change(L"m_CircleY", COleVariant(2.0));
    rows.Change(L"m_Radius", COleVariant(3.0));
    rows.Change(L"m_Fill", COleVariant(1L, VT_I4));
    rows.Change(L"m_strParmName", COleVariant(L"n", VT_BSTR));
    rows.Change(L"m_strMsgInfo", COleVariant(L"i", VT_BSTR));
    rows.Change(L"m_LockObjZoom", COleVariant(256L, VT_I4));
    mark.SetLockMode(1);
    mark.SetProperty(rows.list);
    EXPECT_POINT(1, 2, mark.Center());
    EXPECT_EQ(3.0, mark.Size());
    EXPECT_EQ(1, mark.Fill());
    EXPECT_EQ(CString(L"n"), mark.GetParmName());
    EXPECT_EQ(CString(L"i"), mark.GetMsgInfo());
    EXPECT_EQ(0, mark.GetLockMode()) << "the low byte of 256";
}

TEST(CenterPoint, EachRowHasItsOwnValue) {
    Mark mark;
    mark.SetCenter(CGePoint2d(1.5, 2.5));
    mark.SetSize(3.5);
    mark.SetParmName(L"n");
    mark.SetMsgInfo(L"i");
    mark.SetLockMode(300);
    PropertyList fill(mark);
    fill.Change(L"m_Fill", COleVariant(4L, VT_I4));
    mark.SetProperty(fill.list);
    PropertyList rows(mark);
    EXPECT_EQ(1.5, rows.list.Find(L"m_CircleX")->GetValue().dblVal);
    EXPECT_EQ(2.5, rows.list.Find(L"m_CircleY")->GetValue().dblVal);
    EXPECT_EQ(3.5, rows.list.Find(L"m_Radius")->GetValue().dblVal);
    EXPECT_EQ(4, rows.list.Find(L"m_Fill")->GetValue().lVal);
    EXPECT_EQ(CString(L"n"), rows.list.Find(L"m_strParmName")->GetValue().bstrVal);
    EXPECT_EQ(CString(L"i"), rows.list.Find(L"m_strMsgInfo")->GetValue().bstrVal);
    EXPECT_EQ(300, rows.list.Find(L"m_LockObjZoom")->GetValue().lVal) << "narrowed only on the way back";
}

TEST(CenterPoint, OnlyChangedRowsAreTakenBackAndTheLockWithItsSign) {
    Mark mark;
    mark.SetParmName(L"n");
    PropertyList rows(mark);
    for (LPCTSTR key : {L"m_CircleX", L"m_CircleY", L"m_Radius"}) {
        rows.list.Find(key)->m_Value = COleVariant(9.0); // Not marked as changed.
    }
    rows.list.Find(L"m_Fill")->m_Value = COleVariant(9L, VT_I4);
    rows.list.Find(L"m_strParmName")->m_Value = COleVariant(L"x", VT_BSTR);
    rows.list.Find(L"m_strMsgInfo")->m_Value = COleVariant(L"x", VT_BSTR);
    rows.Change(L"m_LockObjZoom", COleVariant(255L, VT_I4));
    mark.SetProperty(rows.list);
    EXPECT_POINT(100, 100, mark.Center());
    EXPECT_EQ(70.0, mark.Size());
    EXPECT_EQ(0, mark.Fill());
    EXPECT_EQ(CString(L"n"), mark.GetParmName());
    EXPECT_TRUE(mark.GetMsgInfo().IsEmpty());
    EXPECT_EQ(-1, mark.GetLockMode());
    COleVariant yes;
    yes.vt = VT_BOOL;
    yes.boolVal = VARIANT_TRUE;
    rows.Change(L"m_Fill", yes);
    mark.SetProperty(rows.list);
    EXPECT_EQ(-1, mark.Fill());
}

TEST(CenterPointDraw, ItIsACrossAndACircleOfHalfItsSizeTruncated) {
    WideStage stage;
    Mark mark;
    EXPECT_TRUE(
        SameCalls(Around({"SetBkMode(1)", "SelectStockObject(5)", kInk}, {kPenBack, kBrushBack}), stage.Draw(mark)));
}

TEST(CenterPointDraw, CornersAreComputedInSinglePrecision) {
    DrawStage stage;
    stage.dc.SetExecution(false);
    stage.tran.SethScreen(0); // Pixels are (x, -y).
    const auto stroke = [&](double center, double radius) {
        Mark mark;
        mark.SetCenter(CGePoint2d(center, center));
        mark.SetSize(radius);
        const Calls calls = stage.Draw(mark);
        return Calls(calls.begin() + 3, calls.begin() + 8);
    };
    // As floats 1722.7 less 134.7 is 1588 sharp, and 1587.99995 in double; 95.1 and 137.9 are 233 sharp, and 232.99999
    // in double. Once as the arms of the cross, once as the circle of half the size.
    EXPECT_TRUE(SameCalls({"MoveTo(1722,-1857)", "LineTo(1722,-1588)", "MoveTo(1588,-1722)", "LineTo(1857,-1722)",
                           "Ellipse(1655,-1790,1790,-1655)"},
                          stroke(1722.7, 134.7)));
    EXPECT_TRUE(SameCalls({"MoveTo(1722,-1992)", "LineTo(1722,-1453)", "MoveTo(1453,-1722)", "LineTo(1992,-1722)",
                           "Ellipse(1588,-1857,1857,-1588)"},
                          stroke(1722.7, 269.4)));
    EXPECT_TRUE(SameCalls(
        {"MoveTo(95,-233)", "LineTo(95,42)", "MoveTo(-42,-95)", "LineTo(233,-95)", "Ellipse(26,-164,164,-26)"},
        stroke(95.1, 137.9)));
    EXPECT_TRUE(SameCalls(
        {"MoveTo(95,-370)", "LineTo(95,180)", "MoveTo(-180,-95)", "LineTo(370,-95)", "Ellipse(-42,-233,233,42)"},
        stroke(95.1, 275.8)));
}

TEST(CenterPointDraw, AFilledMarkIsHollow) {
    WideStage stage;
    Mark mark;
    PropertyList rows(mark);
    rows.Change(L"m_Fill", COleVariant(1L, VT_I4));
    mark.SetProperty(rows.list);
    EXPECT_EQ("SelectStockObject(5)", stage.Draw(mark)[1]);
}

TEST(CenterPointDraw, ASelectedMarkIsDottedAndShowsItsGrips) {
    WideStage stage;
    Mark mark;
    mark.SetSelected(1);
    EXPECT_TRUE(SameCalls(
        Around({"SetBkMode(1)", "SelectStockObject(5)", "SelectObject(pen style=2 width=1 color=0x00302010)"},
               {kPenBack, kBrushBack, "SelectObject(pen style=0 width=0 color=0x00FF0000)", "SelectStockObject(5)",
                "Rectangle(47,47,54,54)", "Rectangle(82,47,89,54)", "Rectangle(47,12,54,19)", "Rectangle(12,47,19,54)",
                "Rectangle(47,82,54,89)", kBrushBack, kPenBack}),
        stage.Draw(mark)));
}

TEST(CenterPointDraw, ADraggedMarkIsInvertedWithThePenOfTheContext) {
    WideStage stage;
    Mark mark;
    mark.SetDrawState(CDrawable::Dragging);
    const std::vector<DWORD> before = stage.dc.Pixels();
    EXPECT_TRUE(
        SameCalls(Around({"SetROP2(6)", "SelectStockObject(5)"}, {"SetROP2(13)", kBrushBack}), stage.Draw(mark)));
    EXPECT_NE(before, stage.dc.Pixels());
    stage.Draw(mark);
    EXPECT_EQ(before, stage.dc.Pixels());
}

TEST(CenterPointDraw, ADraggedMarkPutsTheRasterModeBackThatItFound) {
    WideStage stage;
    stage.dc.SetROP2(R2_MASKPEN);
    Mark mark;
    mark.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(
        SameCalls(Around({"SetROP2(6)", "SelectStockObject(5)"}, {"SetROP2(9)", kBrushBack}), stage.Draw(mark)));
}

TEST(CenterPointDraw, AHiddenDeletedOrUnknownMarkDrawsNothing) {
    WideStage stage;
    Mark mark;
    mark.SetIsShow(0);
    EXPECT_TRUE(stage.Draw(mark).empty());
    mark.SetIsShow(1);
    mark.SetDrawState(static_cast<CDrawable::DrawState>(3));
    EXPECT_TRUE(stage.Draw(mark).empty());
    Deleted<CCenterPoint> deleted;
    EXPECT_TRUE(stage.Draw(deleted).empty());
}

TEST(CenterPointDraw, OnlyThePenIsLockedAgainstTheZoom) {
    DrawStage stage;
    stage.tran.SetScale(0.5f);
    Mark mark;
    mark.SetLineWide(2);
    EXPECT_EQ("SelectObject(pen style=0 width=4 color=0x00302010)", stage.Draw(mark)[2]);
    mark.SetLockMode(2);
    EXPECT_EQ("SelectObject(pen style=0 width=2 color=0x00302010)", stage.Draw(mark)[2]);
    EXPECT_EQ("MoveTo(200,-240)", stage.Draw(mark)[3]);
    mark.SetLockMode(0);
    stage.tran.SetScale(50.0f);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00302010)", stage.Draw(mark)[2]);
}

TEST(DesktopCenterPointDraw, AFailedDrawingReportsTheCirclesName) {
    DrawStage stage;
    BoxAnswer answer;
    Mark mark;
    mark.SetLayer(-1);
    stage.Draw(mark);
    Gripless<CCenterPoint> gripless;
    gripless.SetSelected(1);
    stage.Draw(gripless);
    EXPECT_EQ((std::vector<std::string>{"CCircle::Draw出错:step=0", "CCircle::Draw出错:step=3"}), answer.Texts());
}

TEST(DesktopCenterPointDraw, AFailedStrokeIsStageOneAndPutsBackWhatWasSelected) {
    WideStage stage;
    BoxAnswer answer;
    Mark mark;
    const std::string begun = "MoveTo(50,15)";
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectStockObject(5)", kInk, begun, kPenBack, kBrushBack},
                          FailStroke(stage, mark)));
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectStockObject(5)", kInk, begun, kPenBack, kBrushBack},
                          FailStroke(stage, mark, true)))
        << "what is no exception of the library's";
    mark.SetSelected(1);
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectStockObject(5)", "SelectObject(pen style=2 width=1 color=0x00302010)",
                           begun, kPenBack, kBrushBack},
                          FailStroke(stage, mark)))
        << "no grips after a failure";
    mark.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(
        SameCalls({"SetROP2(6)", "SelectStockObject(5)", begun, kBrushBack, "SetROP2(9)"}, FailStroke(stage, mark)));
    EXPECT_EQ(std::vector<std::string>(4, "CCircle::Draw出错:step=1"), answer.Texts());
}
