// "DrawLabel" and "DrawLabel_Green": two ends and a height, on either side.

#include "OperationCreateLabel.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"
#include "VectorLabel.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

void Measure(ViewDriver& d, CGePoint2d a, CGePoint2d b, CGePoint2d height) {
    d.Start(L"DrawLabel");
    d.ClickAt(a.x, a.y);
    d.ClickAt(b.x, b.y);
    d.ClickAt(height.x, height.y);
}

void ExpectPoint(const CGePoint2d& seen, double x, double y) {
    EXPECT_NEAR(seen.x, x, 1e-9);
    EXPECT_NEAR(seen.y, y, 1e-9);
}

// The label of the first object, its four points.
void ExpectLabel(ViewDriver& d, CGePoint2d a, CGePoint2d aEnd, CGePoint2d b, CGePoint2d bEnd) {
    ASSERT_EQ(d.Count(), 1);
    auto* label = static_cast<CKXVectorLabel*>(d.Object(0));
    ExpectPoint(label->GetLeftLabelStartPt(), a.x, a.y);
    ExpectPoint(label->GetLeftLabelEntPt(), aEnd.x, aEnd.y);
    ExpectPoint(label->GetRightLabelStartPt(), b.x, b.y);
    ExpectPoint(label->GetRightLabelEndPt(), bEnd.x, bEnd.y);
}

TEST(OperationCreateLabel, ThreeClicksFromTheFirstStateToTheLast) {
    ViewDriver d;
    d.Start(L"DrawLabel");
    d.ClickAt(100, 100);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0");
    EXPECT_EQ(d.ClickCount(), 1);
    auto* label = static_cast<CKXVectorLabel*>(d.Document().GetCurrentObject());
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->GetTextShow(), 1);
    EXPECT_EQ(label->GetDrawState(), CDrawable::Dragging);
    EXPECT_EQ(Words(label), "label (100,100)-(100,100) (100,100)-(100,100) dragging -2");
    d.ClickAt(200, 100);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0");
    EXPECT_EQ(d.ClickCount(), 2);
    EXPECT_EQ(Words(label), "label (100,100)-(100,100) (200,100)-(200,100) dragging -2");
    EXPECT_TRUE(d.LastPoint() == CGePoint2d(200, 100));
    d.ClickAt(170, 150);
    EXPECT_EQ(d.TakeResults(), "down 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
    EXPECT_EQ(label->GetDrawState(), CDrawable::Normal);
    ExpectLabel(d, {100, 100}, {100, 150}, {200, 100}, {200, 150});
}

TEST(OperationCreateLabel, TheLineGoesToTheSideOfTheThirdPoint) {
    // Above and below, measured from left to right and from right to left.
    struct Case {
        CGePoint2d a, b, height;
        double end;
    };
    const Case cases[] = {{{100, 100}, {200, 100}, {130, 160}, 160},
                          {{100, 100}, {200, 100}, {130, 60}, 60},
                          {{200, 100}, {100, 100}, {130, 160}, 160},
                          {{200, 100}, {100, 100}, {130, 60}, 60}};
    for (const Case& c : cases) {
        ViewDriver d;
        Measure(d, c.a, c.b, c.height);
        // The constants of the full turn have ten digits, so the height is exact to about eight.
        ASSERT_EQ(d.Count(), 1);
        auto* label = static_cast<CKXVectorLabel*>(d.Object(0));
        EXPECT_NEAR(label->GetLeftLabelEntPt().x, c.a.x, 1e-6);
        EXPECT_NEAR(label->GetLeftLabelEntPt().y, c.end, 1e-6);
        EXPECT_NEAR(label->GetRightLabelEndPt().x, c.b.x, 1e-6);
        EXPECT_NEAR(label->GetRightLabelEndPt().y, c.end, 1e-6);
    }
}

TEST(OperationCreateLabel, AnUprightMeasureWithTheAnglesOnEitherSideOfZero) {
    // From the right end (100, 100) the left end is at 300 degrees, the third point at 30: they differ by 270, whose
    // sine is -1. The distance is 50, so the line is 50 beside the measured one, on the side of the point.
    ViewDriver d;
    d.Start(L"DrawLabel");
    const double root3 = 1.7320508075688772;
    CCommandOperation* tool = d.Tool();
    tool->OnLButtonDown(0, CGePoint2d(150, 100 - 50 * root3));
    tool->OnLButtonDown(0, CGePoint2d(100, 100));
    tool->OnLButtonDown(0, CGePoint2d(100 + 25 * root3, 125));
    auto* label = static_cast<CKXVectorLabel*>(d.Object(0));
    ASSERT_NE(label, nullptr);
    EXPECT_NEAR(label->GetRightLabelEndPt().x, 100 + 25 * root3, 1e-6);
    EXPECT_NEAR(label->GetRightLabelEndPt().y, 125, 1e-6);
    EXPECT_NEAR(label->GetLeftLabelEntPt().x, 150 + 25 * root3, 1e-6);
    EXPECT_NEAR(label->GetLeftLabelEntPt().y, 100 - 50 * root3 + 25, 1e-6);
    d.Manager().CheckResultState(CCommandOperation::RS_Done);
}

TEST(OperationCreateLabel, AThirdPointOnTheMeasuredLineLeavesTheDimensionLineOnIt) {
    ViewDriver d;
    Measure(d, {100, 100}, {200, 100}, {150, 100});
    ExpectLabel(d, {100, 100}, {100, 100}, {200, 100}, {200, 100});
}

TEST(OperationCreateLabel, AThirdPointOnAnEndOrBeyondLeavesTheDimensionLineOnTheMeasuredOne) {
    // The second end itself is where the pointer is right after its click, and where it snaps to.
    for (const double x : {200.0, 100.0, 250.0, 60.0}) {
        ViewDriver d;
        d.Start(L"DrawLabel");
        d.ClickAt(100, 100);
        d.ClickAt(200, 100);
        d.MoveTo(x, 100);
        d.MoveTo(150, 130);
        d.MoveTo(x, 100);
        d.ClickAt(x, 100);
        ASSERT_FALSE(d.IsRunning()) << x;
        ExpectLabel(d, {100, 100}, {100, 100}, {200, 100}, {200, 100});
    }
}

TEST(OperationCreateLabel, TheSecondClickShowsTheFlatLabelAndTheNextMoveTakesItOff) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"DrawLabel");
    d.ClickAt(100, 100);
    d.ClickAt(200, 100);
    const auto whiteInRow = [](const Picture& picture, int y) {
        int count = 0;
        for (int x = 110; x < 190; ++x) {
            count += picture.At(x, y) == RGB(255, 255, 255) ? 1 : 0;
        }
        return count;
    };
    EXPECT_GT(whiteInRow(d.Take(), 200), 20) << "the drawing's 100 is row 200";
    d.MoveTo(150, 180);
    const Picture moved = d.Take();
    EXPECT_EQ(whiteInRow(moved, 200), 0);
    EXPECT_GT(whiteInRow(moved, 120), 20);
}

TEST(OperationCreateLabel, TheColourIsItsOwnWhateverTheForeground) {
    ViewDriver d;
    d.Document().SetFGColorIndex(9);
    Measure(d, {100, 100}, {200, 100}, {170, 150});
    EXPECT_EQ(d.Object(0)->GetPenColorIndex(), -2);
    EXPECT_EQ(d.Object(0)->GetPenColor(), 0xFFFFFFu);
    d.Start(L"DrawLabel_Green");
    d.ClickAt(20, 20);
    EXPECT_EQ(d.Document().GetCurrentObject()->GetPenColorIndex(), -2);
    EXPECT_EQ(d.Document().GetCurrentObject()->GetPenColor(), RGB(0x22, 0xB1, 0x4C));
}

TEST(OperationCreateLabel, NoBandBeforeTheFirstEndOneToTheSecondNoneForTheHeight) {
    ViewDriver d;
    d.Start(L"DrawLabel");
    d.MoveTo(50, 60);
    EXPECT_FALSE(d.IsBandDrawn());
    d.ClickAt(100, 100);
    d.MoveTo(180, 130);
    EXPECT_TRUE(d.IsBandDrawn());
    EXPECT_EQ(d.BandStart(), CPoint(100, 200));
    EXPECT_EQ(d.BandEnd(), CPoint(180, 170));
    d.ClickAt(200, 100);
    EXPECT_TRUE(d.IsBandDrawn()); // The click leaves it,
    d.MoveTo(170, 150);
    EXPECT_FALSE(d.IsBandDrawn()); // the next move takes it off.
    EXPECT_EQ(PeekAt(*static_cast<COperationCreateLabel*>(d.Tool()), LabelDrawn()), 1);
    EXPECT_EQ(Words(d.Document().GetCurrentObject()).substr(0, 40), "label (100,100)-(100,150) (200,100)-(200");
}

TEST(OperationCreateLabel, TheRightButtonFreesItAndRepaints) {
    ViewDriver d;
    d.TakeFresh();
    const int before = CKXMemoryManager::Instance()->GetCount();
    d.Start(L"DrawLabel");
    d.RightAt(1, 1);
    EXPECT_EQ(d.TakeResults(), "right 2");
    EXPECT_FALSE(d.IsRunning());
    d.Update();
    d.Start(L"DrawLabel");
    d.ClickAt(100, 100);
    d.ClickAt(200, 100);
    d.MoveTo(170, 150);
    d.MoveTo(120, 60);
    EXPECT_GT(d.Take().Count(0xFFFFFF), 50);
    d.RightAt(1, 1);
    EXPECT_EQ(d.Count(), 0);
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
    d.Update();
    EXPECT_EQ(d.Take().Count(0xFFFFFF), 0);
}

TEST(OperationCreateLabel, ManyMovesOfAWhiteLabelLeaveThePictureOfTheLastOne) {
    // The raster mode of labels takes the pen's colour where the window is dark and black where it is light: with a
    // white pen that is an inversion.
    ViewDriver many;
    ViewDriver one;
    for (ViewDriver* d : {&many, &one}) {
        d->AddLine(50, 180, 360, 190);
        d->TakeFresh();
        d->Start(L"DrawLabel");
        d->ClickAt(100, 100);
        d->ClickAt(200, 100);
    }
    const double path[][2] = {{120, 80},  {202, 199}, {205, 185}, {20, 200}, {50, 180},  {260, 241},
                              {300, 130}, {65, 175},  {65, 130},  {150, 30}, {390, 290}, {12, 150}};
    for (const auto& p : path) {
        many.MoveTo(p[0], p[1]);
    }
    many.MoveTo(133, 157);
    one.MoveTo(133, 157);
    EXPECT_EQ(many.Take().Difference(one.Take()), 0);
}

TEST(OperationCreateLabel, AColouredLabelLeavesInvertedPixelsOnALightWindowUntilTheNextRepaint) {
    // Green over white gives black, and green again over that does not restore the white.
    ViewDriver d;
    d.Document().SetBKColorIndex(137);
    d.TakeFresh();
    d.Start(L"DrawLabel_Green");
    d.ClickAt(100, 100);
    d.ClickAt(200, 100);
    d.MoveTo(170, 200);
    d.MoveTo(170, 130);
    const Picture seen = d.Take();
    EXPECT_EQ(seen.At(130, 100), RGB(0x22, 0xB1, 0x4C)); // Where the dimension line was.
    EXPECT_EQ(seen.At(130, 170), 0u);                    // Where it is.
    EXPECT_EQ(d.TakeFresh().At(130, 100), 0xFFFFFFu);
}

TEST(OperationCreateLabel, BothEndsOnOnePointAreSurvived) {
    ViewDriver d;
    d.Start(L"DrawLabel");
    d.ClickAt(100, 100);
    d.ClickAt(100, 100);
    BoxAnswer boxes;
    d.MoveTo(170, 150);
    d.ClickAt(170, 150);
    EXPECT_FALSE(d.IsRunning());
    d.TakeFresh();
    EXPECT_EQ(d.Count(), 1);
    EXPECT_TRUE(boxes.Texts().empty());
}

TEST(OperationCreateLabel, AnotherCommandFreesIt) {
    ViewDriver d;
    const int before = CKXMemoryManager::Instance()->GetCount();
    d.Start(L"DrawLabel");
    d.ClickAt(100, 100);
    d.Start(L"viewmove");
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
    d.Manager().Cancel();
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
}

} // namespace
