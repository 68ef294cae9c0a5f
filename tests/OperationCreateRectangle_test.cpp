// "rect": every state and event, and what stays on the window and in memory on purpose.

#include "OperationCreateRectangle.h"
#include "support/RepaintAsked.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

constexpr COLORREF kInverted = 0xFFFFFF; // On the black of an empty drawing.

int IsPreviewDrawn(ViewDriver& d) {
    return PeekAt(*static_cast<COperationCreateRectangle*>(d.Tool()), RectPreview());
}

TEST(OperationCreateRectangle, TwoClicksLeaveFourLinesRoundTheFirstCornerAnticlockwise) {
    ViewDriver d;
    d.Start(L"rect");
    d.ClickAt(20, 30);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0");
    d.ClickAt(120, 80);
    EXPECT_EQ(d.TakeResults(), "down 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "line (20,30)-(120,30) dragging 137; line (120,30)-(120,80) dragging 137; "
                            "line (120,80)-(20,80) dragging 137; line (20,80)-(20,30) dragging 137");
}

TEST(OperationCreateRectangle, TheSecondClickAsksForARepaintThatShowsTheSidesAlone) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.MoveTo(120, 80);
    ::ValidateRect(d.view.m_hWnd, nullptr);
    d.PressAt(120, 80);
    EXPECT_TRUE(IsRepaintAskedFor(d.view));
    d.Update();
    EXPECT_EQ(d.Take().At(70, 245), 0u); // The middle of the diagonal.
    EXPECT_EQ(d.DifferenceFromFresh(), 0);
}

TEST(OperationCreateRectangle, BeforeTheFirstClickAMoveDrawsABandOfNoLength) {
    ViewDriver d;
    d.Start(L"rect");
    d.MoveTo(50, 60);
    EXPECT_EQ(d.TakeResults(), "move 0");
    EXPECT_TRUE(d.IsBandDrawn());
    EXPECT_EQ(d.BandStart(), CPoint(50, 240));
    EXPECT_EQ(d.BandEnd(), CPoint(50, 240));
    EXPECT_EQ(d.DifferenceFromFresh(), 0);
}

TEST(OperationCreateRectangle, TheFirstClickTracksTheCornerAndAddsNothing) {
    ViewDriver d;
    d.Start(L"rect");
    d.ClickAt(20, 30);
    EXPECT_EQ(d.Count(), 0);
    EXPECT_EQ(d.ClickCount(), 1);
    ASSERT_EQ(d.Tracked().size(), 1u);
    EXPECT_TRUE(d.Tracked()[0] == CGePoint2d(20, 30));
    EXPECT_TRUE(d.LastPoint() == CGePoint2d(20, 30));
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
}

TEST(OperationCreateRectangle, AMoveShowsTheDiagonalAndTheFourSides) {
    ViewDriver d;
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.MoveTo(120, 80);
    EXPECT_EQ(d.BandStart(), CPoint(20, 270));
    EXPECT_EQ(d.BandEnd(), CPoint(120, 220));
    EXPECT_TRUE(IsPreviewDrawn(d));
    const Picture seen = d.Take();
    EXPECT_EQ(seen.At(90, 270), kInverted);  // Lower side.
    EXPECT_EQ(seen.At(120, 260), kInverted); // Right side.
    EXPECT_EQ(seen.At(90, 220), kInverted);  // Upper side.
    EXPECT_EQ(seen.At(20, 230), kInverted);  // Left side.
    EXPECT_EQ(seen.At(70, 245), kInverted);  // The middle of the diagonal.
    EXPECT_EQ(seen.At(90, 230), 0u);
}

TEST(OperationCreateRectangle, ManyMovesLeaveThePictureOfTheLastOne) {
    ViewDriver many;
    ViewDriver one;
    for (ViewDriver* d : {&many, &one}) {
        d->AddLine(200, 200, 260, 240);
        d->AddLine(40, 200, 90, 150);
        d->TakeFresh();
        d->Start(L"rect");
        d->ClickAt(20, 30);
        d->Update();
    }
    // Over snap points, along tracked columns and rows, to every side.
    const double path[][2] = {{120, 80}, {202, 199}, {202, 60}, {20, 200}, {5, 5},     {260, 241},
                              {300, 30}, {65, 175},  {65, 30},  {20, 30},  {390, 290}, {12, 140}};
    for (const auto& p : path) {
        many.MoveTo(p[0], p[1]);
    }
    EXPECT_GT(many.Tracked().size(), 1u);
    many.MoveTo(133, 97);
    one.MoveTo(133, 97);
    EXPECT_EQ(many.Take().Difference(one.Take()), 0);
}

TEST(OperationCreateRectangle, BrokenOffItLeavesTheDiagonalOnTheWindowAndTakesTheSidesOff) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.MoveTo(120, 80);
    d.TakeResults();
    ::ValidateRect(d.view.m_hWnd, nullptr);
    d.RightAt(120, 80);
    EXPECT_EQ(d.TakeResults(), "right 2");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE)) << "it asks for no repaint";
    EXPECT_EQ(d.Count(), 0);
    const Picture seen = d.Take();
    EXPECT_EQ(seen.At(90, 270), 0u);        // The lower side is erased,
    EXPECT_EQ(seen.At(70, 245), kInverted); // the diagonal is not: 100 pixels, one a column, without the last.
    EXPECT_EQ(seen.Count(kInverted), 100);
    EXPECT_TRUE(d.IsBandDrawn());
    EXPECT_EQ(d.TakeFresh().Count(kInverted), 0);
}

TEST(OperationCreateRectangle, CancelledByTheHostItTakesNothingOffAndAsksForNothing) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.MoveTo(120, 80);
    const Picture seen = d.Take();
    EXPECT_EQ(seen.At(90, 270), kInverted); // The lower side.
    ::ValidateRect(d.view.m_hWnd, nullptr);
    d.Manager().Cancel();
    EXPECT_FALSE(d.IsRunning());
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
    EXPECT_TRUE(d.IsBandDrawn());
    EXPECT_EQ(d.Take().Difference(seen), 0);
    EXPECT_EQ(d.TakeFresh().Count(kInverted), 0);
    EXPECT_FALSE(d.IsBandDrawn());
}

TEST(OperationCreateRectangle, TheDiagonalThatStaysIsErasedByTheNextBandOfAnyTool) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.MoveTo(120, 80);
    d.RightAt(120, 80);
    d.Start(L"line");
    d.MoveTo(300, 200);
    EXPECT_EQ(d.Take().At(70, 245), 0u);
}

TEST(OperationCreateRectangle, TheRightButtonBeforeAnyClickBreaksOff) {
    ViewDriver d;
    d.Start(L"rect");
    d.RightAt(10, 10);
    EXPECT_EQ(d.TakeResults(), "right 2");
    EXPECT_FALSE(d.IsRunning());
}

TEST(OperationCreateRectangle, TheSidesOfOneBrokenOffStayAllocatedAndListed) {
    ViewDriver d;
    const int before = CKXMemoryManager::Instance()->GetCount();
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.RightAt(20, 30);
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before + 4);
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.Manager().Cancel();
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before + 8);
    d.Start(L"rect");
    d.RightAt(20, 30);
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before + 8);
}

TEST(OperationCreateRectangle, BothClicksOnOnePointGiveFourLinesOfNoLength) {
    ViewDriver d;
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.ClickAt(20, 30);
    EXPECT_EQ(d.AllWords(), "line (20,30)-(20,30) dragging 137; line (20,30)-(20,30) dragging 137; "
                            "line (20,30)-(20,30) dragging 137; line (20,30)-(20,30) dragging 137");
}

TEST(OperationCreateRectangle, FinishedSidesAreDrawnByInversionUntilASelectionChangesThem) {
    ViewDriver d;
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.ClickAt(120, 80);
    // A white line below the lower side: inverted there, black comes out.
    CLine* below = d.AddLine(0, 30, 200, 30);
    d.Objects().RemoveAt(4);
    CDrawable* obj = below;
    d.Objects().InsertAt(0, obj);
    const Picture seen = d.TakeFresh();
    EXPECT_EQ(seen.At(10, 270), 0xFFFFFFu);
    EXPECT_EQ(seen.At(90, 270), 0u);
    d.Select(d.Object(1));
    d.Document().RemoveAllSelected();
    EXPECT_EQ(d.Object(1)->GetDrawState(), CDrawable::Normal);
    EXPECT_EQ(d.Object(2)->GetDrawState(), CDrawable::Dragging);
    EXPECT_EQ(d.TakeFresh().At(90, 270), 0xFFFFFFu);
}

TEST(OperationCreateRectangle, ARepaintInTheMiddleWipesThePreviewAndForgetsIt) {
    ViewDriver d;
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.MoveTo(120, 80);
    const Picture fresh = d.TakeFresh();
    EXPECT_EQ(fresh.Count(kInverted), 0);
    EXPECT_FALSE(IsPreviewDrawn(d));
    EXPECT_FALSE(d.IsBandDrawn());
    d.MoveTo(150, 100);
    d.MoveTo(120, 80);
    d.RightAt(120, 80);
    EXPECT_EQ(d.Take().Count(kInverted), 100); // Nothing but the diagonal.
}

TEST(OperationCreateRectangle, TheNewSidesTakeTheForegroundOfTheMoment) {
    ViewDriver d;
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.Document().SetFGColorIndex(9);
    d.ClickAt(40, 50);
    for (INT_PTR i = 0; i < 4; ++i) {
        EXPECT_EQ(d.Object(i)->GetPenColorIndex(), 9);
    }
}

TEST(OperationCreateRectangle, ExecuteAndKeysDoNothing) {
    ViewDriver d;
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.TakeResults();
    d.Manager().Execute();
    d.Key(VK_ESCAPE);
    EXPECT_EQ(d.TakeResults(), "key 5");
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(d.ClickCount(), 1);
}

TEST(OperationCreateRectangle, TheSecondClickMaySnapAndTheMarkerShowsIt) {
    ViewDriver d;
    d.AddLine(200, 200, 260, 240);
    d.Start(L"rect");
    d.ClickAt(20, 30);
    d.MoveTo(203, 198);
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(200, 200));
    EXPECT_EQ(d.BandEnd(), CPoint(200, 100));
    d.ClickAt(203, 198);
    EXPECT_EQ(Words(d.Object(2)), "line (200,30)-(200,200) dragging 137");
}

} // namespace
