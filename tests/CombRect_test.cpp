// CCombRect: a frame that is always painted, has no extent, and moves others.

#include "CombRect.h"

#include "Circle.h"
#include "Document.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "support/BoxAnswer.h"
#include "support/CurveTools.h"
#include "support/DrawStage.h"
#include "support/FailingStrokeDC.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using DrawableList = CArray<CDrawable*, CDrawable*&>;

struct Frame : CCombRect {
    Frame() {
        SetPenColor(0x302010);
        SetPoint(CGePoint2d(10, 20), CGePoint2d(60, 80));
    }
};

const Calls kFrame = {"SetBkMode(1)",  "SelectObject(pen style=0 width=1 color=0x00302010)",
                      "MoveTo(10,80)", "LineTo(60,80)",
                      "LineTo(60,20)", "LineTo(10,20)",
                      "LineTo(10,80)", "SelectObject(pen default)"};

} // namespace

TEST(CombRect, ANewFrameIsWithoutNameAndSize) {
    CCombRect frame;
    EXPECT_TRUE(frame.GetVectorId().IsEmpty());
    CGePoint2d a(5, 5);
    CGePoint2d b(6, 6);
    frame.GetPoint(a, b);
    EXPECT_POINT(0, 0, a);
    EXPECT_POINT(0, 0, b);
    EXPECT_EQ(1, a.type);
    EXPECT_EQ(0x80000005u, CCombRect::classCCombRect.m_wSchema);
    frame.SetVectorId(L"组1");
    EXPECT_EQ(CString(L"组1"), static_cast<const CCombRect&>(frame).GetVectorId());
}

TEST(CombRect, CornersAreCopiedWithTheirKindAndInNoOrder) {
    CCombRect frame;
    CGePoint2d first(60, 20);
    first.type = 8;
    frame.SetPoint(first, CGePoint2d(10, 80));
    CGePoint2d a;
    CGePoint2d b;
    frame.GetPoint(a, b);
    EXPECT_POINT(60, 20, a);
    EXPECT_EQ(8, a.type);
    EXPECT_POINT(10, 80, b);
}

TEST(CombRect, ItHasNoExtentNoGripsAndIsNeverHit) {
    Frame frame;
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(0, frame.GetRect(nullptr, min, max));
    EXPECT_EQ(100.0f, frame.HitTest(CGePoint2d(10, 20)));
    EXPECT_EQ(0, Grips(frame, 7).Size());
    EXPECT_EQ(CString(L"对象"), frame.GetName());
    PropertyList rows(frame);
    EXPECT_EQ(4, rows.list.GetSize());
}

TEST(CombRect, AFrameAfterAnObjectDoesNotWidenAZoomToExtents) {
    DrawStage stage;
    stage.graphic.SetZoomByPixs(1);
    stage.graphic.SetZoomAllMargin(20);
    auto* line = new CLine;
    KX_ADD_MEMORY(line);
    line->SetStartPoint(CGePoint2d(1000, 2000));
    line->SetEndPoint(CGePoint2d(1160, 2040));
    stage.graphic.GetDocument()->AddDrawAobject(line);
    auto* frame = new CCombRect;
    KX_ADD_MEMORY(frame);
    frame->SetPoint(CGePoint2d(-3000, -3000), CGePoint2d(3000, 3000));
    stage.graphic.GetDocument()->AddDrawAobject(frame);
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, stage.graphic.GetDocument()->GetRect(min, max));
    EXPECT_POINT(1000, 2000, min);
    EXPECT_POINT(1160, 2040, max);
    stage.graphic.ZoomAll(CRect(0, 0, 100, 100));
    EXPECT_EQ(2.0f, stage.tran.GetScale());     // 160 / (100 - 20)
    EXPECT_EQ(980.0, stage.tran.GetOriginX());  // 1000, less 10 pixels of 2 units
    EXPECT_EQ(1920.0, stage.tran.GetOriginY()); // 2000 - (200 - 40) / 2
}

TEST(CombRect, AMatrixDoesNotMoveIt) {
    Frame frame;
    frame.transformBy(CGeMatrix2d::translation(CGeVector2d(100, 100)));
    CGePoint2d a;
    CGePoint2d b;
    frame.GetPoint(a, b);
    EXPECT_POINT(10, 20, a);
}

TEST(CombRect, ItMovesTheObjectsOfAListInOrderAndNotItself) {
    class CWitness : public CDrawable {
    public:
        CWitness(std::vector<CWitness*>& order) : m_order(order) {}
        void transformBy(const CGeMatrix2d& m) override {
            m_order.push_back(this);
            m_matrix = m;
        }
        std::vector<CWitness*>& m_order;
        CGeMatrix2d m_matrix;
    };
    std::vector<CWitness*> order;
    CWitness one(order);
    CWitness two(order);
    CCircle circle;
    DrawableList objects;
    CDrawable* members[] = {&two, nullptr, &one, &circle};
    for (CDrawable*& member : members) {
        objects.Add(member);
    }
    DrawableList* list = &objects;
    Frame frame;
    frame.transformBy(list, CGePoint2d(1, 2), CGePoint2d(11, 32));
    EXPECT_EQ((std::vector<CWitness*>{&two, &one}), order);
    EXPECT_EQ(10.0, one.m_matrix.m[0][2]);
    EXPECT_EQ(30.0, one.m_matrix.m[1][2]);
    EXPECT_POINT(10, 30, circle.Center());
    CGePoint2d a;
    CGePoint2d b;
    frame.GetPoint(a, b);
    EXPECT_POINT(10, 20, a);
    frame.transformBy(list, CGePoint2d(3, 3), CGePoint2d(3, 3));
    EXPECT_EQ(4u, order.size()) << "called also for no way at all";
    EXPECT_EQ(0.0, one.m_matrix.m[0][2]);
    list = nullptr;
    frame.transformBy(list, CGePoint2d(1, 2), CGePoint2d(11, 32));
    EXPECT_EQ(4u, order.size());
}

// ---- Drawing -------------------------------------------------------------------------------------------------------

TEST(CombRectDraw, AFrameIsFourLinesOfOnePixel) {
    DrawStage stage;
    Frame frame;
    frame.SetLineWide(9);
    EXPECT_TRUE(SameCalls(kFrame, stage.Draw(frame)));
    stage.tran.SetScale(0.5f);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00302010)", stage.Draw(frame)[1]);
}

TEST(CombRectDraw, AnyTwoOppositeCornersGiveTheFrame) {
    DrawStage stage;
    Frame frame;
    frame.SetPoint(CGePoint2d(60, 80), CGePoint2d(10, 20));
    EXPECT_TRUE(
        SameCalls({"SetBkMode(1)", "SelectObject(pen style=0 width=1 color=0x00302010)", "MoveTo(60,20)",
                   "LineTo(10,20)", "LineTo(10,80)", "LineTo(60,80)", "LineTo(60,20)", "SelectObject(pen default)"},
                  stage.Draw(frame)));
}

TEST(CombRectDraw, AHiddenDeletedOrDraggedFramePaints) {
    DrawStage stage;
    Frame frame;
    frame.SetIsShow(0);
    EXPECT_TRUE(SameCalls(kFrame, stage.Draw(frame)));
    frame.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(SameCalls(kFrame, stage.Draw(frame)));
    Deleted<CCombRect> deleted;
    deleted.SetPenColor(0x302010);
    deleted.SetPoint(CGePoint2d(10, 20), CGePoint2d(60, 80));
    EXPECT_TRUE(SameCalls(kFrame, stage.Draw(deleted)));
}

TEST(CombRectDraw, ASelectedFrameKeepsItsLineTypeAndFindsNoGrips) {
    DrawStage stage;
    Frame frame;
    frame.SetLineType(PS_DASH);
    frame.SetSelected(1);
    Calls expected = kFrame;
    expected[1] = "SelectObject(pen style=1 width=1 color=0x00302010)";
    for (const char* call : {"SelectObject(pen style=0 width=0 color=0x00FF0000)", "SelectStockObject(5)",
                             "SelectObject(brush default)", "SelectObject(pen default)"}) {
        expected.push_back(call);
    }
    EXPECT_TRUE(SameCalls(expected, stage.Draw(frame)));
}

TEST(CombRectDraw, CornersAreRoundedWithHalvesUpwards) {
    DrawStage stage;
    Frame frame;
    frame.SetPoint(CGePoint2d(10.5, 20.4), CGePoint2d(-60.5, 80.6));
    const Calls calls = stage.Draw(frame);
    EXPECT_EQ("MoveTo(11,80)", calls[2]);
    EXPECT_EQ("LineTo(-60,80)", calls[3]);
    EXPECT_EQ("LineTo(-60,19)", calls[4]);
}

TEST(CombRectDraw, CoordinatesThatAreNoNumbersDoNoHarm) {
    DrawStage stage;
    stage.dc.SetExecution(false);
    Frame frame;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    frame.SetPoint(CGePoint2d(nan, 1e300), CGePoint2d(-1e300, nan));
    EXPECT_EQ(8u, stage.Draw(frame).size());
}

TEST(DesktopCombRectDraw, AFailedDrawingReportsTheLinesName) {
    DrawStage stage;
    BoxAnswer answer;
    Frame layer;
    layer.SetLayer(-1);
    stage.Draw(layer);
    Gripless<CCombRect> gripless;
    gripless.SetSelected(1);
    stage.Draw(gripless);
    EXPECT_EQ((std::vector<std::string>{"CLine::Draw出错:step=1", "CLine::Draw出错:step=2"}), answer.Texts());
}

TEST(DesktopCombRectDraw, AFailedStrokeIsStageOneAndPutsThePenBack) {
    DrawStage stage;
    BoxAnswer answer;
    Frame frame;
    const Calls expected = {"SetBkMode(1)", "SelectObject(pen style=0 width=1 color=0x00302010)", "MoveTo(10,80)",
                            "SelectObject(pen default)"};
    for (CDrawable::DrawState state : {CDrawable::Normal, CDrawable::Selected, CDrawable::Dragging}) {
        frame.SetDrawState(state);
        EXPECT_TRUE(SameCalls(expected, FailStroke(stage, frame))) << state;
    }
    EXPECT_TRUE(SameCalls(expected, FailStroke(stage, frame, true))) << "what is no exception of the library's";
    EXPECT_EQ(std::vector<std::string>(4, "CLine::Draw出错:step=1"), answer.Texts());
}
