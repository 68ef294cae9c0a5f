// "circle": the radius of the last move in single precision, and what stays on the window.

#include "OperationCreateCircle.h"
#include "support/RepaintAsked.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"
#include "Circle.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

constexpr COLORREF kInverted = 0xFFFFFF;

int IsObjectDrawn(ViewDriver& d) {
    return PeekAt(*static_cast<COperationCreateCircle*>(d.Tool()), CircleDrawn());
}

TEST(OperationCreateCircle, CentreThenTheRadiusOfTheLastMove) {
    ViewDriver d;
    d.Start(L"circle");
    d.ClickAt(150, 150);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0");
    EXPECT_EQ(d.Count(), 0);
    ASSERT_NE(d.Document().GetCurrentObject(), nullptr);
    EXPECT_EQ(d.Document().GetCurrentObject()->GetDrawState(), CDrawable::Dragging);
    EXPECT_EQ(d.ClickCount(), 1);
    EXPECT_TRUE(d.LastPoint() == CGePoint2d(150, 150));
    d.MoveTo(180, 190);
    EXPECT_EQ(d.TakeResults(), "move 0");
    d.ClickAt(180, 190);
    EXPECT_EQ(d.TakeResults(), "down 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "circle (150,150) r 50 normal 137");
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
}

TEST(OperationCreateCircle, TheSecondClickAsksForARepaintThatWipesThePreview) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"circle");
    d.ClickAt(150, 150);
    d.MoveTo(180, 190);
    ::ValidateRect(d.view.m_hWnd, nullptr);
    d.PressAt(180, 190);
    EXPECT_TRUE(IsRepaintAskedFor(d.view));
    d.Update();
    const Picture seen = d.Take();
    EXPECT_EQ(seen.At(165, 130), 0u); // Half way along the band.
    EXPECT_NE(seen.At(100, 150), 0u); // The circle's left end.
    EXPECT_EQ(d.DifferenceFromFresh(), 0);
}

TEST(OperationCreateCircle, TheSecondClickDoesNotChangeTheRadius) {
    ViewDriver d;
    d.Start(L"circle");
    d.ClickAt(150, 150);
    d.MoveTo(180, 190);
    d.ClickAt(250, 270);
    EXPECT_EQ(d.AllWords(), "circle (150,150) r 50 normal 137");
}

TEST(OperationCreateCircle, TwoClicksWithNoMoveGiveTheRadiusOfANewCircle) {
    ViewDriver d;
    d.Start(L"circle");
    d.ClickAt(150, 150);
    d.ClickAt(150, 150);
    EXPECT_EQ(d.AllWords(), "circle (150,150) r 0 normal 137");
}

TEST(OperationCreateCircle, TheRadiusHasSinglePrecision) {
    ViewDriver d;
    d.Start(L"circle");
    d.Tool()->OnLButtonDown(0, CGePoint2d(0, 0));
    d.Tool()->OnMouseMove(0, CGePoint2d(1e9, 1));
    d.Tool()->OnLButtonDown(0, CGePoint2d(5, 5));
    EXPECT_EQ(static_cast<CCircle*>(d.Object(0))->Radius(), 1e9);
    d.Manager().CheckResultState(CCommandOperation::RS_Done);
    d.Start(L"circle");
    d.Tool()->OnLButtonDown(0, CGePoint2d(0, 0));
    d.Tool()->OnMouseMove(0, CGePoint2d(1, 1));
    // The float next to the square root of two, 11863283 / 2^23, and not the double.
    auto* circle = static_cast<CCircle*>(d.Document().GetCurrentObject());
    EXPECT_EQ(circle->Radius(), 11863283.0 / 8388608.0);
    // Floats of this size are the even numbers: 4243 squared, 18003049, is between two and becomes 18003048, with 98
    // squared 18012652. The float next to that root; of the exact sum, 18012653, it would be 4244.1318359375.
    d.Tool()->OnMouseMove(0, CGePoint2d(98, 4243));
    EXPECT_EQ(circle->Radius(), 4244.13134765625);
}

TEST(OperationCreateCircle, TheMoveShowsBandAndOutline) {
    ViewDriver d;
    d.Start(L"circle");
    d.ClickAt(150, 150);
    d.MoveTo(180, 190);
    EXPECT_TRUE(IsObjectDrawn(d));
    EXPECT_EQ(d.BandStart(), CPoint(150, 150));
    EXPECT_EQ(d.BandEnd(), CPoint(180, 110));
    const Picture seen = d.Take();
    EXPECT_EQ(seen.At(165, 130), kInverted); // Half way along the band.
    EXPECT_EQ(seen.At(100, 150), kInverted); // The circle's left end.
}

TEST(OperationCreateCircle, AMoveBeforeTheCentreDrawsABandOfNoLength) {
    ViewDriver d;
    d.Start(L"circle");
    d.MoveTo(50, 60);
    EXPECT_EQ(d.TakeResults(), "move 0");
    EXPECT_EQ(d.BandStart(), CPoint(50, 240));
    EXPECT_EQ(d.BandEnd(), CPoint(50, 240));
    EXPECT_FALSE(IsObjectDrawn(d));
}

TEST(OperationCreateCircle, ManyMovesLeaveThePictureOfTheLastOne) {
    ViewDriver many;
    ViewDriver one;
    for (ViewDriver* d : {&many, &one}) {
        d->AddLine(200, 200, 260, 240);
        d->TakeFresh();
        d->Start(L"circle");
        d->ClickAt(150, 150);
    }
    const double path[][2] = {{120, 80}, {202, 199}, {202, 60}, {20, 200}, {5, 5},     {260, 241},
                              {300, 30}, {65, 175},  {65, 30},  {150, 30}, {390, 290}, {12, 150}};
    for (const auto& p : path) {
        many.MoveTo(p[0], p[1]);
    }
    many.MoveTo(233, 97);
    one.MoveTo(233, 97);
    EXPECT_EQ(many.Take().Difference(one.Take()), 0);
}

TEST(OperationCreateCircle, BrokenOffAfterTheCentreNothingIsLeftButThePixels) {
    ViewDriver d;
    d.TakeFresh();
    const int before = CKXMemoryManager::Instance()->GetCount();
    d.Start(L"circle");
    d.ClickAt(150, 150);
    d.MoveTo(180, 190);
    const Picture seen = d.Take();
    d.TakeResults();
    ::ValidateRect(d.view.m_hWnd, nullptr);
    d.RightAt(180, 190);
    EXPECT_EQ(d.TakeResults(), "right 2");
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
    EXPECT_EQ(d.Count(), 0);
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
    // No repaint is requested: band and outline stay as they were.
    d.Update();
    EXPECT_EQ(d.Take().Difference(seen), 0);
    EXPECT_GT(seen.Count(kInverted), 100);
    EXPECT_EQ(d.TakeFresh().Count(kInverted), 0);
}

TEST(OperationCreateCircle, BrokenOffBeforeTheCentre) {
    ViewDriver d;
    d.Start(L"circle");
    d.RightAt(10, 10);
    EXPECT_EQ(d.TakeResults(), "right 2");
    EXPECT_FALSE(d.IsRunning());
}

TEST(OperationCreateCircle, AnotherCommandFreesTheCircle) {
    ViewDriver d;
    const int before = CKXMemoryManager::Instance()->GetCount();
    d.Start(L"circle");
    d.ClickAt(150, 150);
    d.MoveTo(180, 190);
    d.Start(L"line");
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
    d.Manager().Cancel();
    EXPECT_EQ(d.Count(), 0);
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
}

TEST(OperationCreateCircle, AToolThatAHostEndsByItsStateFreesWhatItWasBuilding) {
    for (const LPCTSTR word : {L"circle", L"arc", L"pline"}) {
        ViewDriver d;
        const int registered = CKXMemoryManager::Instance()->GetCount();
        d.Start(word);
        d.ClickAt(150, 150);
        ASSERT_NE(d.Document().GetCurrentObject(), nullptr);
        d.Manager().CheckResultState(CCommandOperation::RS_Done);
        EXPECT_FALSE(d.IsRunning());
        EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
        EXPECT_EQ(d.Count(), 0);
        EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), registered) << CStringA(word);
    }
}

TEST(OperationCreateCircle, AnObjectThatAHostHasEnteredStaysWhenItEndsTheTool) {
    ViewDriver d;
    d.Start(L"circle");
    d.ClickAt(150, 150);
    CDrawable* circle = d.Document().GetCurrentObject();
    d.Document().AddDrawAobject(circle);
    d.Manager().CheckResultState(CCommandOperation::RS_Done);
    ASSERT_EQ(d.Count(), 1);
    EXPECT_EQ(d.Object(0), circle);
    EXPECT_TRUE(circle->IsKindOf(RUNTIME_CLASS(CCircle)));
    d.Document().removeCurrentObject();
}

TEST(OperationCreateCircle, ItsOwnQuadrantPointsSnap) {
    ViewDriver d;
    d.Start(L"circle");
    d.ClickAt(150, 150);
    d.MoveTo(210, 150);
    d.MoveTo(213, 152);
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(210, 150));
    d.ClickAt(213, 152);
    EXPECT_EQ(d.AllWords(), "circle (150,150) r 60 normal 137");
}

TEST(OperationCreateCircle, AfterARepaintTheNextMoveLeavesTheRepaintedOutline) {
    ViewDriver d;
    d.Start(L"circle");
    d.ClickAt(150, 150);
    d.MoveTo(180, 190);
    const Picture fresh = d.TakeFresh();
    EXPECT_FALSE(IsObjectDrawn(d));
    EXPECT_FALSE(d.IsBandDrawn());
    EXPECT_EQ(fresh.At(165, 130), 0u);        // The band is erased,
    EXPECT_EQ(fresh.At(100, 150), kInverted); // the circle comes from the current slot.
    d.MoveTo(150, 130);
    EXPECT_EQ(d.Take().At(100, 150), kInverted); // The old outline is not erased by any later drawing.
    d.MoveTo(180, 190);                          // Here it is inverted away by the new one.
    EXPECT_EQ(d.Take().At(100, 150), 0u);
}

TEST(OperationCreateCircle, TheLockAndTypingPlayNoPart) {
    ViewDriver d;
    d.Manager().SetDrawObjLatus(1);
    d.Start(L"circle");
    d.ClickAt(150, 150);
    d.MoveTo(180, 190);
    d.Manager().Execute();
    EXPECT_TRUE(d.IsRunning());
    d.ClickAt(1, 1);
    EXPECT_EQ(d.AllWords(), "circle (150,150) r 50 normal 137");
}

} // namespace
