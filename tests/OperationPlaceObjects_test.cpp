// COperationPlaceObjects: objects of a stream follow the mouse, and one click adds them.

#include "DrawingHistory.h"
#include "OperationPlaceObjects.h"

#include "Circle.h"
#include "ObjectStream.h"
#include "PLine.h"
#include "support/ViewDriver.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>

namespace {

struct PainterAccess : CVectorView {
    static auto Painter() { return &PainterAccess::m_Graphic; }
};

CLine* NewLine(double x1, double y1, double x2, double y2) {
    auto* line = new CLine;
    line->SetStartPoint(CGePoint2d(x1, y1));
    line->SetEndPoint(CGePoint2d(x2, y2));
    return line;
}

// The stream of the objects, which are freed.
void Store(std::initializer_list<CDrawable*> added, CByteArray& bytes) {
    CVectorGraphic graphic;
    CDrawableArray objects;
    for (CDrawable* object : added) {
        object->SetPenColorIndex(137);
        graphic.GetDocument()->AddDrawAobject(object);
        objects.Add(object);
    }
    CObjectStream::Store(graphic.GetDocument(), objects, bytes);
}

// The stream of a line from (1000, 500) to (1040, 530) and of a circle within its extent.
const CByteArray& LineAndCircle() {
    static CByteArray bytes;
    if (bytes.IsEmpty()) {
        Store({NewLine(1000, 500, 1040, 530), new CCircle(Gdiplus::PointF(1020, 515), 10, 0)}, bytes);
    }
    return bytes;
}

int Begin(ViewDriver& d, const CByteArray& bytes) {
    auto* tool = COperationPlaceObjects::Make(&d.view, &(d.view.*PainterAccess::Painter()), &d.Tran(), &d.Document(),
                                              bytes.GetData(), static_cast<size_t>(bytes.GetSize()));
    return tool != nullptr ? d.Manager().SetCommand(tool, 1) : 0;
}

TEST(OperationPlaceObjects, OneClickPutsTheLowerLeftCornerThere) {
    ViewDriver d;
    CLine* other = d.AddLine(300, 10, 310, 10);
    d.Select(other);
    ASSERT_EQ(1, Begin(d, LineAndCircle()));
    d.MoveTo(20, 30);
    d.MoveTo(100, 120);
    EXPECT_EQ(1, d.Count());
    d.ClickAt(100, 120);
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ("line (300,10)-(310,10) normal -1; line (100,120)-(140,150) selected 137; "
              "circle (120,135) r 10 selected 137",
              d.AllWords());
    EXPECT_EQ(2, d.Selected().GetSize());
    EXPECT_TRUE(d.Document().IsModified());
    d.Update();
    EXPECT_EQ(0, d.DifferenceFromFresh());
}

TEST(OperationPlaceObjects, TheCornerIsThatOfTheObjectsThatAreSeen) {
    ViewDriver d;
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    CLine* hidden = NewLine(1, 2, 3, 4);
    hidden->SetIsShow(0);
    CByteArray bytes;
    Store({hidden, NewLine(-kInfinity, 2, 3, 4), new CPLine, NewLine(1000, 500, 1040, 530)}, bytes);
    ASSERT_EQ(1, Begin(d, bytes));
    d.ClickAt(100, 120);
    ASSERT_EQ(4, d.Count());
    EXPECT_TRUE(static_cast<CLine*>(d.Object(3))->GetStartPoint() == CGePoint2d(100, 120));
    EXPECT_TRUE(static_cast<CLine*>(d.Object(0))->GetStartPoint() == CGePoint2d(-899, -378));
}

TEST(OperationPlaceObjects, TheStepOfAHistoryIsCalledPaste) {
    ViewDriver d;
    ASSERT_EQ(1, d.view.EnableHistory(1));
    ASSERT_EQ(1, Begin(d, LineAndCircle()));
    d.MoveTo(100, 120);
    d.ClickAt(100, 120);
    ASSERT_EQ(2, d.Count());
    EXPECT_STREQ(L"粘贴", d.view.GetHistory()->GetUndoName(0));
    EXPECT_STREQ(L"Paste", d.view.GetHistory()->GetUndoName(1));
    EXPECT_EQ(1, d.view.Undo());
    EXPECT_EQ(0, d.Count());
}

TEST(OperationPlaceObjects, TheObjectsAreSeenAtTheMouseAndLeaveNoTrace) {
    ViewDriver d;
    const Picture empty = d.TakeFresh();
    ASSERT_EQ(1, Begin(d, LineAndCircle()));
    d.MoveTo(100, 120);
    const Picture first = d.Take();
    EXPECT_GT(first.Difference(empty), 60);
    d.MoveTo(200, 120);
    const Picture second = d.Take();
    EXPECT_GT(second.Difference(first), 120);
    // Where the preview was first, the window is as before.
    for (int x = 95; x < 145; ++x) {
        for (int y = 145; y < 185; ++y) {
            ASSERT_EQ(empty.At(x, y), second.At(x, y)) << x << " " << y;
        }
    }
}

// A repaint of the left half of the preview wipes that half, and the next move would draw the right half away.
TEST(OperationPlaceObjects, WherePreviewsReturnARepaintOfAPartLeavesTheWholePreview) {
    for (const bool on : {false, true}) {
        ViewDriver d;
        CEditingOptions options;
        options.previewsReturn = on;
        d.Document().SetEditingOptions(options);
        d.TakeFresh();
        ASSERT_EQ(1, Begin(d, LineAndCircle()));
        d.MoveTo(100, 120);
        const Picture before = d.Take();
        const CRect left(0, 0, 120, 300);
        d.view.InvalidateRect(&left);
        d.Update();
        EXPECT_EQ(on, d.Take().Difference(before) == 0);
        d.RightAt(100, 120);
        d.Update();
        EXPECT_EQ(0, d.DifferenceFromFresh());
    }
}

TEST(OperationPlaceObjects, ManyMovesDoNotMoveTheObjectsByRounding) {
    ViewDriver d;
    ASSERT_EQ(1, Begin(d, LineAndCircle()));
    CCommandOperation* tool = d.Tool();
    for (int i = 0; i < 100; ++i) {
        tool->OnMouseMove(0, CGePoint2d(0.1 * i, 1e9 / (i + 3)));
    }
    tool->OnLButtonDown(0, CGePoint2d(0.5, 0.25));
    EXPECT_TRUE(static_cast<CLine*>(d.Object(0))->GetStartPoint() == CGePoint2d(0.5, 0.25));
    EXPECT_TRUE(static_cast<CLine*>(d.Object(0))->GetEndPoint() == CGePoint2d(40.5, 30.25));
    d.Manager().CheckResultState(CCommandOperation::RS_Done);
}

TEST(OperationPlaceObjects, TheRightButtonAddsNothingAndFreesTheObjects) {
    ViewDriver d;
    d.TakeFresh();
    const int before = CKXMemoryManager::Instance()->GetCount();
    ASSERT_EQ(1, Begin(d, LineAndCircle()));
    EXPECT_EQ(before + 3, CKXMemoryManager::Instance()->GetCount());
    d.MoveTo(100, 120);
    d.RightAt(100, 120);
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(0, d.Count());
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
    d.Update();
    EXPECT_EQ(0, d.DifferenceFromFresh());
}

TEST(OperationPlaceObjects, AnotherCommandEndsItAndItsPreview) {
    ViewDriver d;
    d.TakeFresh();
    ASSERT_EQ(1, Begin(d, LineAndCircle()));
    d.MoveTo(100, 120);
    d.Start(L"line");
    d.Update();
    EXPECT_EQ(0, d.DifferenceFromFresh());
    EXPECT_EQ("COperationCreateLine", d.ToolName());
}

TEST(OperationPlaceObjects, APartOfAStreamMakesNoTool) {
    ViewDriver d;
    CByteArray bytes;
    bytes.Copy(LineAndCircle());
    bytes.SetSize(bytes.GetSize() - 1);
    const int before = CKXMemoryManager::Instance()->GetCount();
    EXPECT_EQ(0, Begin(d, bytes));
    EXPECT_EQ(0, Begin(d, CByteArray()));
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

} // namespace
