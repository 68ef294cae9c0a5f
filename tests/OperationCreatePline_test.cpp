// "pline" and "pline_bound": clicked and typed vertices, and that a polyline in progress is never thrown away.

#include "OperationCreatePline.h"
#include "support/RepaintAsked.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

#include <functional>

namespace {

constexpr COLORREF kInverted = 0xFFFFFF; // On the black of an empty drawing.

INT_PTR WrittenPoints(ViewDriver& d) {
    return PeekAt(*static_cast<COperationCreatePline*>(d.Tool()), PlinePoints()).GetSize();
}

TEST(OperationCreatePline, ClicksAddVerticesAndTheRightButtonKeepsThem) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 30);
    d.ClickAt(120, 80);
    d.ClickAt(60, 200);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0, down 0, up 0, down 0, up 0");
    EXPECT_EQ(d.Count(), 0);
    EXPECT_EQ(d.ClickCount(), 3);
    EXPECT_EQ(WrittenPoints(d), 3);
    EXPECT_NE(d.Document().GetCurrentObject(), nullptr);
    d.RightAt(10, 10);
    EXPECT_EQ(d.TakeResults(), "right 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
    EXPECT_EQ(d.AllWords(), "pline (20,30) (120,80) (60,200) normal -2");
    EXPECT_EQ(d.Object(0)->GetPenColor(), 0xFFFFFFu);
    auto* line = static_cast<CPLine*>(d.Object(0));
    EXPECT_EQ(line->IsClosed(), 0);
    EXPECT_EQ(line->IsArc(0) + line->IsArc(1) + line->IsArc(2), 0);
}

TEST(OperationCreatePline, ARightClickBeforeAnyVertexAddsNothing) {
    ViewDriver d;
    d.Start(L"pline");
    d.RightAt(10, 10);
    EXPECT_EQ(d.TakeResults(), "right 1");
    EXPECT_EQ(d.Count(), 0);
    EXPECT_FALSE(d.IsRunning());
}

TEST(OperationCreatePline, OneVertexIsEnough) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 30);
    d.RightAt(10, 10);
    EXPECT_EQ(d.AllWords(), "pline (20,30) normal -2");
}

TEST(OperationCreatePline, BoundMakesItYellowUnlessTheForegroundWasChanged) {
    ViewDriver d;
    d.Start(L"pline_bound");
    d.ClickAt(20, 30);
    d.RightAt(10, 10);
    EXPECT_EQ(d.Object(0)->GetPenColor(), RGB(0xFF, 0xFF, 0));
    EXPECT_EQ(d.Object(0)->GetPenColorIndex(), -2);
    d.Document().SetFGColorIndex(9);
    d.Start(L"pline_bound");
    d.ClickAt(20, 130);
    d.RightAt(10, 10);
    EXPECT_EQ(Words(d.Object(0)), "pline (20,130) normal 9");
    EXPECT_EQ(d.Object(0)->GetPenColor(), 0xFF0000u); // Blue, as a COLORREF.
}

TEST(OperationCreatePline, TheFinishedOneLiesUnderEverythingDrawnBefore) {
    ViewDriver d;
    d.AddLine(200, 200, 260, 240);
    d.Start(L"pline");
    d.ClickAt(20, 30);
    d.ClickAt(120, 80);
    d.RightAt(10, 10);
    EXPECT_EQ(d.AllWords(), "pline (20,30) (120,80) normal -2; line (200,200)-(260,240) normal -1");
}

// Nothing in the library clears the field.
TEST(OperationCreatePline, WithoutItsFieldTheFinishedOneLiesAboveEverything) {
    ViewDriver d;
    d.AddLine(200, 200, 260, 240);
    d.Start(L"pline");
    PeekAt(static_cast<COperationCreatePline&>(*d.Tool()), PlineToBottom()) = 0;
    d.ClickAt(20, 30);
    d.ClickAt(120, 80);
    d.RightAt(10, 10);
    EXPECT_EQ(d.AllWords(), "line (200,200)-(260,240) normal -1; pline (20,30) (120,80) normal -2");
}

TEST(OperationCreatePline, ALineDrawnLaterLiesAtTheEnd) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 30);
    d.ClickAt(120, 80);
    d.RightAt(10, 10);
    d.Start(L"line");
    d.ClickAt(200, 200);
    d.ClickAt(260, 240);
    EXPECT_EQ(d.AllWords(), "pline (20,30) (120,80) normal -2; line (200,200)-(260,240) normal 137");
}

TEST(OperationCreatePline, EveryVertexAndEveryEndAskForARepaintThatWipesTheBand) {
    const struct {
        const char* name;
        std::function<void(ViewDriver&)> act;
    } rows[] = {{"clicked", [](ViewDriver& d) { d.PressAt(200, 200); }},
                {"typed", [](ViewDriver& d) { d.Manager().Execute(); }},
                {"right button", [](ViewDriver& d) { d.RightAt(200, 200); }},
                {"cancelled", [](ViewDriver& d) { d.Manager().Cancel(); }}};
    for (const auto& row : rows) {
        ViewDriver d;
        d.Start(L"pline");
        d.ClickAt(100, 100);
        d.Update();
        d.MoveTo(200, 200);
        ::ValidateRect(d.view.m_hWnd, nullptr);
        row.act(d);
        EXPECT_TRUE(IsRepaintAskedFor(d.view)) << row.name;
        d.Update();
        EXPECT_EQ(d.DifferenceFromFresh(), 0) << row.name;
    }
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"pline");
    d.PressAt(100, 100);
    EXPECT_TRUE(IsRepaintAskedFor(d.view)) << "the first vertex";
    d.RightAt(1, 1);
    d.Start(L"pline");
    d.TakeFresh();
    d.RightAt(1, 1);
    EXPECT_TRUE(IsRepaintAskedFor(d.view)) << "and where there is no vertex";
}

TEST(OperationCreatePline, BothEndsTakeTheBandOffBeforeTheRepaint) {
    for (const bool byButton : {true, false}) {
        ViewDriver d;
        d.Start(L"pline");
        d.ClickAt(100, 100);
        d.Update();
        d.MoveTo(200, 200);
        EXPECT_TRUE(d.IsBandDrawn());
        EXPECT_EQ(d.Take().At(150, 150), kInverted);
        if (byButton) {
            d.RightAt(200, 200);
        } else {
            d.Manager().Cancel();
        }
        EXPECT_FALSE(d.IsBandDrawn()) << byButton;
        EXPECT_EQ(d.Take().At(150, 150), 0u) << byButton;
    }
}

TEST(OperationCreatePline, TheBandIsDrawnOverTheRepaintThatTheClickAskedFor) {
    ::SetCursorPos(0, 0); // Off the window: the real mouse has no part in what waits.
    ViewDriver d;
    PumpMessages();
    d.Update();
    d.Start(L"pline");
    d.ClickAt(100, 100);
    EXPECT_TRUE(IsRepaintAskedFor(d.view));
    // The repaint is made with the edit box, before the band is drawn; otherwise it would wipe the band as soon as the
    // messages are handled.
    d.MoveTo(200, 200);
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
    PumpMessages();
    EXPECT_TRUE(d.IsBandDrawn());
    // From pixel (100, 200) to (200, 100); the edit box is to the left of it.
    const Picture seen = d.Take();
    EXPECT_EQ(seen.At(110, 190), kInverted);
    EXPECT_EQ(seen.At(150, 150), kInverted);
    EXPECT_EQ(seen.At(190, 110), kInverted);
}

TEST(OperationCreatePline, AMoveBeforeTheFirstVertexDrawsABandOfNoLengthAndNoEditBox) {
    ViewDriver d;
    d.Start(L"pline");
    d.MoveTo(50, 60);
    EXPECT_EQ(d.TakeResults(), "move 0");
    EXPECT_EQ(d.BandStart(), CPoint(50, 240));
    EXPECT_EQ(d.BandEnd(), CPoint(50, 240));
    EXPECT_EQ(d.EditBox(), nullptr);
}

TEST(OperationCreatePline, AMoveShowsBandAndLengthBesideTheMiddle) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.MoveTo(120, 100);
    EXPECT_EQ(d.BandStart(), CPoint(20, 200));
    EXPECT_EQ(d.BandEnd(), CPoint(400, 200)); // Level, so it runs dotted to the edge.
    EXPECT_EQ(d.BandPenStyle(), PS_DOT);
    ASSERT_NE(d.EditBox(), nullptr);
    // Middle (70, 100), thirty to the left of the direction: (70, 130), that is pixel (70, 170); less (20, 10).
    CRect box;
    ::GetWindowRect(d.EditBox(), &box);
    d.view.ScreenToClient(&box);
    EXPECT_EQ(box, CRect(50, 160, 90, 180));
    EXPECT_EQ(d.EditText(), "100");
    EXPECT_EQ(::GetFocus(), d.EditBox());
    DWORD from = 9;
    DWORD to = 9;
    ::SendMessage(d.EditBox(), EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    EXPECT_EQ(from, 0u);
    EXPECT_EQ(to, 3u);
}

TEST(OperationCreatePline, TheLengthIsCutToWholeUnits) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.MoveTo(30, 110); // The square root of 200, 14.14.
    EXPECT_EQ(d.EditText(), "14");
    d.MoveTo(29, 119); // 21.02.
    EXPECT_EQ(d.EditText(), "21");
}

TEST(OperationCreatePline, ATypedLengthAddsAVertexInTheDirectionOfTheLastMove) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.MoveTo(50, 140); // Three to four.
    d.Manager().SetInEdit(1);
    d.TypeInEdit(L"150");
    d.Manager().Execute();
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "pline (20,100) (110,220) normal -2");
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
    EXPECT_EQ(d.ClickCount(), 1); // A typed vertex is no click,
    EXPECT_TRUE(d.LastPoint() == CGePoint2d(20, 100));
    EXPECT_EQ(WrittenPoints(d), 2);
    EXPECT_EQ(d.EditText(), "0"); // and the next length begins at it.
    ASSERT_EQ(d.Tracked().size(), 2u);
    EXPECT_TRUE(d.Tracked()[1] == CGePoint2d(110, 220));
}

TEST(OperationCreatePline, AfterATypedVertexTheMouseShowsTheNextLength) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.MoveTo(50, 140);
    d.Manager().SetInEdit(1);
    d.TypeInEdit(L"150");
    d.Manager().Execute(); // To (110, 220).
    d.MoveTo(140, 260);    // Thirty across and forty up.
    EXPECT_EQ(d.EditText(), "50");
    EXPECT_EQ(d.BandStart(), CPoint(110, 80));
    EXPECT_EQ(d.BandEnd(), CPoint(140, 40));
}

TEST(OperationCreatePline, AfterATypedVertexClicksGoOnWithTheSameObject) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.MoveTo(50, 140);
    d.TypeInEdit(L"50");
    d.Manager().Execute();
    d.ClickAt(200, 50);
    EXPECT_EQ(d.AllWords(), "pline (20,100) (50,140) (200,50) normal -2");
    d.RightAt(10, 10);
    EXPECT_EQ(d.Count(), 1);
}

TEST(OperationCreatePline, ATypedWordIsNoLengthAndAddsAVertexOnTheLastOne) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.MoveTo(50, 140);
    d.TypeInEdit(L"abc");
    d.Manager().Execute();
    EXPECT_EQ(d.AllWords(), "pline (20,100) (20,100) normal -2");
}

TEST(OperationCreatePline, WithNoMoveThereIsNoDirectionAndATypedLengthStaysOnTheVertex) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.TypeInEdit(L"70");
    d.Manager().Execute();
    EXPECT_EQ(d.AllWords(), "pline (20,100) (20,100) normal -2");
}

TEST(OperationCreatePline, ExecuteBeforeTheFirstVertexDoesNothing) {
    ViewDriver d;
    d.Start(L"pline");
    d.Manager().Execute();
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(d.Count(), 0);
}

TEST(OperationCreatePline, WhileALengthIsTypedTheMouseChangesNothing) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.MoveTo(50, 140);
    d.Manager().SetInEdit(1);
    d.TypeInEdit(L"7");
    d.TakeResults();
    d.MoveTo(200, 200);
    EXPECT_EQ(d.TakeResults(), "move 0");
    EXPECT_EQ(d.EditText(), "7");
    EXPECT_EQ(d.BandEnd(), CPoint(50, 160));
    d.ClickAt(200, 200); // A click ends the typing.
    d.MoveTo(200, 260);
    EXPECT_EQ(d.EditText(), "60");
}

TEST(OperationCreatePline, TheLockMakesSegmentsLevelOrUpright) {
    ViewDriver d;
    d.Manager().SetDrawObjLatus(1);
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.MoveTo(120, 140);
    EXPECT_EQ(d.EditText(), "100");
    EXPECT_EQ(d.BandEnd(), CPoint(400, 200));
    d.ClickAt(120, 140); // Further to the side than up.
    d.ClickAt(150, 260); // Further up.
    d.ClickAt(250, 160); // As far to the side as down: a tie is level.
    d.RightAt(1, 1);
    EXPECT_EQ(d.AllWords(), "pline (20,100) (120,100) (120,260) (250,260) normal -2");
}

TEST(OperationCreatePline, TheLockHoldsNothingBeforeTheFirstVertex) {
    ViewDriver d;
    d.Manager().SetDrawObjLatus(1);
    d.Start(L"pline");
    d.MoveTo(50, 60);
    EXPECT_EQ(d.BandStart(), CPoint(50, 240));
    EXPECT_EQ(d.BandEnd(), CPoint(50, 240));
    d.ClickAt(50, 60);
    EXPECT_TRUE(d.LastPoint() == CGePoint2d(50, 60));
}

TEST(OperationCreatePline, TheMarkerFollowsTheLock) {
    ViewDriver d;
    d.AddPolyline({{240, 120}, {300, 250}});
    d.Manager().SetOsnapMode(1);
    d.Manager().SetDrawObjLatus(1);
    d.Start(L"pline");
    d.ClickAt(200, 100);
    // Snaps to (240, 120), which the lock brings to (240, 100): no vertex is within seven units of that.
    d.MoveTo(240, 120);
    EXPECT_FALSE(d.IsMarkDrawn());
    EXPECT_EQ(d.EditText(), "40");
    d.Manager().SetDrawObjLatus(0);
    d.MoveTo(240, 120);
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(240, 120));
}

TEST(OperationCreatePline, ItSnapsToItsOwnVertices) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.ClickAt(120, 160);
    d.ClickAt(200, 60);
    d.MoveTo(24, 97);
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(20, 100));
    d.ClickAt(24, 97);
    EXPECT_FALSE(d.IsMarkDrawn()); // The click takes the marker off before the repaint.
    d.RightAt(1, 1);
    EXPECT_EQ(d.AllWords(), "pline (20,100) (120,160) (200,60) (20,100) normal -2");
}

TEST(OperationCreatePline, AnotherCommandKeepsWhatThereIs) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 30);
    d.ClickAt(120, 80);
    d.Start(L"line");
    EXPECT_EQ(d.ToolName(), "COperationCreateLine");
    EXPECT_EQ(d.AllWords(), "pline (20,30) (120,80) normal -2");
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
}

TEST(OperationCreatePline, ItIsKeptAlsoWhenAHostCancelsIt) {
    ViewDriver d;
    d.Start(L"pline");
    d.ClickAt(20, 30);
    d.Manager().Cancel();
    EXPECT_EQ(d.AllWords(), "pline (20,30) normal -2");
}

TEST(OperationCreatePline, ManyMovesLeaveThePictureOfTheLastOne) {
    ViewDriver many;
    ViewDriver one;
    for (ViewDriver* d : {&many, &one}) {
        d->AddLine(200, 200, 260, 240);
        d->TakeFresh();
        d->Start(L"pline");
        d->ClickAt(60, 60);
        d->Update();
    }
    const double path[][2] = {{120, 80}, {150, 60},  {202, 199}, {60, 200}, {205, 60},  {261, 241},
                              {300, 30}, {180, 175}, {60, 260},  {230, 60}, {390, 290}, {150, 140}};
    for (const auto& p : path) {
        many.MoveTo(p[0], p[1]);
    }
    many.MoveTo(243, 97);
    one.MoveTo(243, 97);
    // The edit box blinks, so it is looked at apart.
    CRect box;
    ::GetWindowRect(one.EditBox(), &box);
    one.view.ScreenToClient(&box);
    CRect same;
    ::GetWindowRect(many.EditBox(), &same);
    many.view.ScreenToClient(&same);
    EXPECT_EQ(box, same);
    const Picture a = many.Take();
    const Picture b = one.Take();
    int different = 0;
    for (int y = 0; y < a.height; ++y) {
        for (int x = 0; x < a.width; ++x) {
            different += !box.PtInRect(CPoint(x, y)) && a.At(x, y) != b.At(x, y) ? 1 : 0;
        }
    }
    EXPECT_EQ(different, 0);
}

TEST(OperationCreatePline, TheEditBoxIsDestroyedWithTheToolAndNothingStaysAllocated) {
    ViewDriver d;
    const int before = CKXMemoryManager::Instance()->GetCount();
    d.Start(L"pline");
    d.ClickAt(20, 100);
    d.MoveTo(50, 140);
    HWND edit = d.EditBox();
    ASSERT_NE(edit, nullptr);
    d.RightAt(1, 1);
    EXPECT_FALSE(::IsWindow(edit));
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before + 1); // The polyline itself.
}

} // namespace
