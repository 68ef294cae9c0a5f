// "arc": three points, collinear ones among them.

#include "Arc.h"
#include "OperationCreateArc.h"
#include "support/RepaintAsked.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

constexpr COLORREF kInverted = 0xFFFFFF;

int IsObjectDrawn(ViewDriver& d) {
    return PeekAt<COperationCreateCircle>(*static_cast<COperationCreateArc*>(d.Tool()), CircleDrawn());
}

TEST(OperationCreateArc, ThreeClicksGiveTheArcThroughThem) {
    ViewDriver d;
    d.Start(L"arc");
    d.ClickAt(200, 100);
    EXPECT_EQ(d.ClickCount(), 1);
    ASSERT_NE(d.Document().GetCurrentObject(), nullptr);
    EXPECT_EQ(d.Document().GetCurrentObject()->GetDrawState(), CDrawable::Dragging);
    d.ClickAt(150, 150);
    EXPECT_EQ(d.ClickCount(), 2);
    EXPECT_TRUE(d.LastPoint() == CGePoint2d(150, 150));
    EXPECT_EQ(d.Count(), 0);
    d.TakeResults();
    d.ClickAt(100, 100);
    EXPECT_EQ(d.TakeResults(), "down 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "arc (150,100) r 50 from 0 to 3.14159 normal 137");
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
}

TEST(OperationCreateArc, TheThirdClickAsksForARepaintThatWipesThePreview) {
    for (const CGePoint2d& last : {CGePoint2d(100, 100), CGePoint2d(100, 200)}) { // The second makes no circle.
        ViewDriver d;
        d.TakeFresh();
        d.Start(L"arc");
        d.ClickAt(200, 100);
        d.ClickAt(150, 150);
        d.MoveTo(110, 105);
        ::ValidateRect(d.view.m_hWnd, nullptr);
        d.PressAt(last.x, last.y);
        EXPECT_TRUE(IsRepaintAskedFor(d.view)) << last.y;
        d.Update();
        EXPECT_EQ(d.DifferenceFromFresh(), 0) << last.y;
    }
}

TEST(OperationCreateArc, ClockwisePointsGiveTheSameArc) {
    ViewDriver d;
    d.Start(L"arc");
    d.ClickAt(100, 100);
    d.ClickAt(150, 150);
    d.ClickAt(200, 100);
    EXPECT_EQ(d.AllWords(), "arc (150,100) r 50 from 0 to 3.14159 normal 137");
}

TEST(OperationCreateArc, AMoveBeforeTheFirstPointDrawsABandOfNoLength) {
    ViewDriver d;
    d.Start(L"arc");
    d.MoveTo(50, 60);
    EXPECT_EQ(d.TakeResults(), "move 0");
    EXPECT_EQ(d.BandStart(), CPoint(50, 240));
    EXPECT_EQ(d.BandEnd(), CPoint(50, 240));
}

TEST(OperationCreateArc, BetweenTheFirstTwoClicksNoBandStaysOnTheWindow) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"arc");
    d.ClickAt(200, 100);
    d.MoveTo(150, 160);
    EXPECT_TRUE(d.IsBandDrawn());
    EXPECT_EQ(d.BandStart(), CPoint(150, 140));
    EXPECT_EQ(d.BandEnd(), CPoint(150, 140));
    EXPECT_EQ(d.BandPenStyle(), PS_SOLID);
    EXPECT_EQ(d.Take().Count(kInverted), 0);
    EXPECT_FALSE(IsObjectDrawn(d));
}

TEST(OperationCreateArc, TheBandDrawnAndTakenOffLeavesItsPenStyle) {
    ViewDriver d;
    d.Start(L"arc");
    d.ClickAt(200, 100);
    d.MoveTo(150, 100);
    // The first drawing was level, hence dotted; a band of no length keeps the style of the one before it.
    EXPECT_EQ(d.BandPenStyle(), PS_DOT);
    EXPECT_EQ(d.BandEnd(), CPoint(150, 200));
}

TEST(OperationCreateArc, TheThirdMoveShowsTheArc) {
    ViewDriver d;
    d.Start(L"arc");
    d.ClickAt(200, 100);
    d.ClickAt(150, 150);
    d.MoveTo(100, 100);
    EXPECT_TRUE(IsObjectDrawn(d));
    auto* arc = static_cast<CArc*>(d.Document().GetCurrentObject());
    EXPECT_EQ(Words(arc), "arc (150,100) r 50 from 0 to 3.14159 dragging 137");
    EXPECT_FALSE(d.IsBandDrawn());
    EXPECT_GT(d.Take().Count(kInverted), 60);
}

TEST(OperationCreateArc, ManyMovesLeaveThePictureOfTheLastOne) {
    ViewDriver many;
    ViewDriver one;
    for (ViewDriver* d : {&many, &one}) {
        d->AddLine(200, 200, 260, 240);
        d->TakeFresh();
        d->Start(L"arc");
        d->ClickAt(250, 100);
        d->ClickAt(150, 150);
    }
    const double path[][2] = {{120, 80}, {202, 199}, {202, 60}, {20, 200}, {50, 200},  {260, 241},
                              {300, 30}, {65, 175},  {65, 30},  {150, 30}, {390, 290}, {12, 150}};
    for (const auto& p : path) {
        many.MoveTo(p[0], p[1]);
    }
    many.MoveTo(133, 37);
    one.MoveTo(133, 37);
    EXPECT_EQ(many.Take().Difference(one.Take()), 0);
}

TEST(OperationCreateArc, OverACollinearSpotThePreviewIsTakenOffAndNoneIsDrawn) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"arc");
    d.ClickAt(200, 100);
    d.ClickAt(150, 150);
    d.MoveTo(100, 100);
    d.MoveTo(100, 200);
    EXPECT_FALSE(IsObjectDrawn(d));
    EXPECT_EQ(d.Take().Count(kInverted), 0);
    // The third click ends it nevertheless, with the values of the last good move.
    d.ClickAt(100, 200);
    EXPECT_EQ(d.AllWords(), "arc (150,100) r 50 from 0 to 3.14159 normal 137");
}

TEST(OperationCreateArc, ThreeCollinearClicksLeaveAnArcAsItWasMade) {
    ViewDriver d;
    d.Start(L"arc");
    d.ClickAt(200, 100);
    d.ClickAt(150, 150);
    d.ClickAt(100, 200);
    EXPECT_EQ(d.AllWords(), "arc (200,100) r 0 from 0 to 0 normal 137");
    EXPECT_FALSE(d.IsRunning());
}

TEST(OperationCreateArc, WithTheSecondClickOnTheFirstThereIsNoPreviewAndNoCircle) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"arc");
    d.ClickAt(200, 100);
    d.ClickAt(200, 100);
    EXPECT_EQ(d.ClickCount(), 2);
    d.MoveTo(120, 160);
    EXPECT_FALSE(IsObjectDrawn(d));
    d.ClickAt(120, 160);
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "arc (200,100) r 0 from 0 to 0 normal 137");
}

TEST(OperationCreateArc, BrokenOffItIsFreedAndItsPixelsStay) {
    ViewDriver d;
    d.TakeFresh();
    const int before = CKXMemoryManager::Instance()->GetCount();
    d.Start(L"arc");
    d.RightAt(1, 1);
    EXPECT_EQ(d.TakeResults(), "right 2");
    d.Start(L"arc");
    d.ClickAt(200, 100);
    d.RightAt(1, 1);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0, right 2");
    d.Start(L"arc");
    d.ClickAt(200, 100);
    d.ClickAt(150, 150);
    d.MoveTo(100, 100);
    const Picture seen = d.Take();
    ::ValidateRect(d.view.m_hWnd, nullptr);
    d.RightAt(1, 1);
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
    d.Update();
    EXPECT_EQ(d.Take().Difference(seen), 0);
    EXPECT_GT(seen.Count(kInverted), 60);
}

TEST(OperationCreateArc, ARepaintInTheMiddleForgetsThePreview) {
    ViewDriver d;
    d.Start(L"arc");
    d.ClickAt(200, 100);
    d.ClickAt(150, 150);
    d.MoveTo(100, 100);
    const Picture fresh = d.TakeFresh();
    EXPECT_FALSE(IsObjectDrawn(d));
    EXPECT_GT(fresh.Count(kInverted), 60); // From the current slot.
}

} // namespace
