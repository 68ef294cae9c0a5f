// "offset": two-vertex polylines move sideways, everything else is doubled in place.

#include "CommandOperationOffset.h"
#include "MemoryInfo.h"
#include "support/AfxCaught.h"
#include "support/RepaintAsked.h"
#include "support/ViewDriver.h"

#include <gtest/gtest.h>

// A host's kind that can't be made by its class.
class OffsetHandMadePolyline : public CPLine {
    DECLARE_DYNAMIC(OffsetHandMadePolyline)
};
IMPLEMENT_DYNAMIC(OffsetHandMadePolyline, CPLine)

// A host's kind that writes itself and refuses to be read.
class OffsetUnreadablePolyline : public CPLine {
    DECLARE_DYNCREATE(OffsetUnreadablePolyline)
public:
    OffsetUnreadablePolyline() { ++s_alive; }
    ~OffsetUnreadablePolyline() override { --s_alive; }
    void Serialize(CArchive& ar) override {
        if (ar.IsLoading()) {
            AfxThrowArchiveException(CArchiveException::badClass, nullptr);
        }
        CPLine::Serialize(ar);
    }
    static int s_alive;
};
IMPLEMENT_DYNCREATE(OffsetUnreadablePolyline, CPLine)
int OffsetUnreadablePolyline::s_alive = 0;

namespace {

// From (100, 100) to (200, 100), in the drawing.
template <typename Polyline>
void AddLevel(ViewDriver& d) {
    auto* line = new Polyline;
    KX_ADD_MEMORY(line);
    line->AddPoint(CGePoint2d(100, 100));
    line->AddPoint(CGePoint2d(200, 100));
    d.Document().AddDrawAobject(line);
}

TEST(CommandOperationOffset, TheSideClickMovesByItsDistanceFromTheLine) {
    ViewDriver d;
    d.AddLine(5, 5, 6, 6);
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 102);
    EXPECT_EQ(d.TakeResults(), "down 7, up 0");
    EXPECT_EQ(line->GetDrawState(), CDrawable::Selected);
    ASSERT_EQ(d.Selected().GetSize(), 1);
    d.ClickAt(170, 140);
    EXPECT_EQ(d.TakeResults(), "down 1");
    EXPECT_FALSE(d.IsRunning());
    // The copy of the former state is put at the very bottom.
    EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) normal -1; line (5,5)-(6,6) normal -1; "
                            "pline (100,140) (200,140) normal -1");
    EXPECT_EQ(d.Object(2), line);
    EXPECT_EQ(d.Selected().GetSize(), 0);
}

TEST(CommandOperationOffset, OnTheOtherSideItMovesTheOtherWay) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.ClickAt(170, 75);
    EXPECT_EQ(Words(d.Object(1)), "pline (100,75) (200,75) normal -1");
    // The direction of the polyline plays no part for a click.
    ViewDriver back;
    back.AddPolyline({{200, 100}, {100, 100}});
    back.Start(L"offset");
    back.ClickAt(130, 102);
    back.ClickAt(170, 75);
    EXPECT_EQ(Words(back.Object(1)), "pline (200,75) (100,75) normal -1");
}

TEST(CommandOperationOffset, ATypedDistanceGoesToTheSideOfTheCursor) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.MoveTo(170, 40); // On the right of the direction.
    d.Manager().SetInEdit(1);
    d.TypeInEdit(L"25");
    d.Manager().Execute();
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) normal -1; pline (100,75) (200,75) normal -1");
    EXPECT_EQ(d.Object(1), line);
    EXPECT_EQ(d.Selected().GetSize(), 0);
    d.Start(L"offset");
    d.ClickAt(130, 101);
    d.MoveTo(170, 180);
    d.TypeInEdit(L"-30"); // A sign turns the side.
    d.Manager().Execute();
    EXPECT_EQ(Words(d.Object(1)), "pline (100,70) (200,70) normal -1");
}

TEST(CommandOperationOffset, WithoutAPickExecuteOnlyEnds) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.Manager().Execute();
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.Count(), 1);
}

TEST(CommandOperationOffset, ExecuteOnAnotherKindOnlyEndsAndLeavesItSelected) {
    ViewDriver d;
    d.AddLine(100, 100, 200, 100);
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.Manager().Execute();
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "line (100,100)-(200,100) selected -1");
}

TEST(CommandOperationOffset, ALineIsDoubledInPlace) {
    ViewDriver d;
    CLine* line = d.AddLine(100, 100, 200, 100);
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.ClickAt(170, 140);
    EXPECT_EQ(d.AllWords(), "line (100,100)-(200,100) normal -1; line (100,100)-(200,100) normal -1");
    EXPECT_EQ(d.Object(1), line);
    EXPECT_EQ(d.Selected().GetSize(), 0);
}

TEST(CommandOperationOffset, APolylineOfThreeVerticesIsDoubledInPlace) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}, {200, 150}});
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.ClickAt(170, 140);
    EXPECT_EQ(d.AllWords(),
              "pline (100,100) (200,100) (200,150) normal -1; pline (100,100) (200,100) (200,150) normal -1");
}

TEST(CommandOperationOffset, ABentSegmentIsDoubledInPlace) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
    line->SetBulge(0, 0.00011); // Nearly straight, but an arc.
    d.Start(L"offset");
    d.ClickAt(102, 101);
    d.ClickAt(170, 140);
    EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) normal -1; pline (100,100) (200,100) normal -1");
}

TEST(CommandOperationOffset, OnTheLineItselfCopyAndObjectCoincide) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.ClickAt(180, 100);
    EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) normal -1; pline (100,100) (200,100) normal -1");
}

TEST(CommandOperationOffset, ClicksThatHitNothingGoOnPicking) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 180);
    EXPECT_EQ(d.TakeResults(), "down 7, up 0");
    d.MoveTo(150, 200);
    EXPECT_EQ(d.EditBox(), nullptr);
    EXPECT_FALSE(d.IsBandDrawn());
    d.ClickAt(130, 104); // Exactly four pixels away.
    EXPECT_EQ(d.Selected().GetSize(), 1);
}

TEST(CommandOperationOffset, SelectedAndUnselectableObjectsArePassedOver) {
    ViewDriver d;
    CPLine* selected = d.AddPolyline({{100, 100}, {200, 100}});
    CPLine* locked = d.AddPolyline({{100, 101}, {200, 101}});
    CPLine* third = d.AddPolyline({{100, 102}, {200, 102}});
    d.Select(selected);
    locked->SetCanBeSelect(0);
    d.Start(L"offset");
    d.ClickAt(130, 101);
    EXPECT_EQ(third->GetDrawState(), CDrawable::Selected);
    EXPECT_EQ(locked->GetDrawState(), CDrawable::Normal);
    EXPECT_EQ(d.Selected().GetSize(), 2);
    // In the end nothing is selected, also not what was selected before.
    d.ClickAt(150, 150);
    EXPECT_EQ(d.Selected().GetSize(), 0);
    EXPECT_EQ(selected->GetDrawState(), CDrawable::Normal);
}

TEST(CommandOperationOffset, AMoveShowsBandAndDistanceFromThePick) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 103);
    d.Update();
    d.MoveTo(160, 143);
    EXPECT_EQ(d.BandStart(), CPoint(130, 197));
    EXPECT_EQ(d.BandEnd(), CPoint(160, 157));
    EXPECT_EQ(d.EditText(), "50");
    EXPECT_EQ(::GetFocus(), d.EditBox());
    EXPECT_EQ(Words(line), "pline (100,100) (200,100) selected -1");
    // Middle (145, 123), thirty to the left of three to four: less 24, plus 18: (121, 141), pixel (121, 159).
    CRect box;
    ::GetWindowRect(d.EditBox(), &box);
    d.view.ScreenToClient(&box);
    EXPECT_EQ(box, CRect(101, 149, 141, 169));
}

TEST(CommandOperationOffset, WhileADistanceIsTypedTheMouseChangesNothing) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 103);
    d.MoveTo(160, 143);
    d.Manager().SetInEdit(1);
    d.TypeInEdit(L"7");
    d.MoveTo(170, 20); // Would be the other side.
    EXPECT_EQ(d.EditText(), "7");
    d.Manager().Execute();
    EXPECT_EQ(Words(d.Object(1)), "pline (100,107) (200,107) normal -1");
}

TEST(CommandOperationOffset, TheRightButtonDeselectsAndCopiesNothing) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.TakeResults();
    d.RightAt(1, 1);
    EXPECT_EQ(d.TakeResults(), "right 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) normal -1");
    EXPECT_EQ(d.Selected().GetSize(), 0);
}

TEST(CommandOperationOffset, AnotherCommandDeselectsToo) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.Start(L"line");
    EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) normal -1");
    EXPECT_EQ(d.Selected().GetSize(), 0);
}

TEST(CommandOperationOffset, TheCopyIsNotListedWithTheLeakTracer) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    const int before = CKXMemoryManager::Instance()->GetCount();
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.ClickAt(150, 150);
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
    EXPECT_FALSE(CKXMemoryManager::Instance()->IsKnown(d.Object(0)));
}

TEST(CommandOperationOffset, TheCopyIsTheStateAtThePick) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 102);
    line->SetPoint(0, CGePoint2d(100, 90)); // A host's change in between.
    line->SetPoint(1, CGePoint2d(200, 90));
    d.ClickAt(150, 150);
    EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) normal -1; pline (100,150) (200,150) normal -1");
}

TEST(CommandOperationOffset, WithoutAMoveATypedDistanceGoesToTheSideOfTheZeroPoint) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 102); // On the left of the direction; (0, 0) is on the right.
    d.TypeInEdit(L"25");
    d.Manager().Execute();
    EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) normal -1; pline (100,75) (200,75) normal -1");
}

TEST(CommandOperationOffset, ATypedDistanceMovesABentSegmentToTheRightWhereverTheCursorIs) {
    for (const double y : {40.0, 180.0}) {
        ViewDriver d;
        CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
        line->SetBulge(0, 0.00011);
        d.Start(L"offset");
        d.ClickAt(102, 101);
        d.MoveTo(170, y);
        d.TypeInEdit(L"25");
        d.Manager().Execute();
        EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) normal -1; pline (100,75) (200,75) normal -1") << y;
    }
}

TEST(CommandOperationOffset, AfterAPressTheMouseChangesTheDistanceAgain) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.Manager().SetInEdit(1);
    d.ClickAt(130, 103);
    d.MoveTo(160, 143);
    EXPECT_TRUE(d.IsBandDrawn());
    EXPECT_NE(d.EditBox(), nullptr);
    EXPECT_EQ(d.EditText(), "50"); // Thirty across, forty up.
}

TEST(CommandOperationOffset, TheMarkerFollowsTheMouseUntilADistanceIsTyped) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.AddLine(220, 200, 320, 160);
    d.Start(L"offset");
    d.MoveTo(222, 199);
    ASSERT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(220, 200));
    d.MoveTo(130, 102);
    EXPECT_FALSE(d.IsMarkDrawn());
    d.ClickAt(130, 102);
    d.MoveTo(318, 161);
    ASSERT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(320, 160));
    d.Manager().SetInEdit(1);
    d.MoveTo(222, 199);
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(320, 160));
}

// ---- Repaints ------------------------------------------------------------------------------------------------------

TEST(CommandOperationOffset, ThePickAsksForARepaintAndAMissDoesNot) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.TakeFresh();
    d.ClickAt(130, 180);
    EXPECT_FALSE(IsRepaintAskedFor(d.view));
    d.ClickAt(130, 102);
    EXPECT_TRUE(IsRepaintAskedFor(d.view));
}

TEST(CommandOperationOffset, TheSideClickAsksForARepaint) {
    ViewDriver d;
    d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.MoveTo(160, 143); // The edit box is destroyed with the tool.
    d.TakeFresh();
    EXPECT_FALSE(IsRepaintAskedFor(d.view));
    d.PressAt(170, 140);
    EXPECT_TRUE(IsRepaintAskedFor(d.view));
}

TEST(CommandOperationOffset, BreakingOffAsksForARepaintBeforeAndAfterThePick) {
    for (const bool picked : {false, true}) {
        for (const bool byButton : {false, true}) {
            ViewDriver d;
            d.AddPolyline({{100, 100}, {200, 100}});
            d.Start(L"offset");
            if (picked) {
                d.ClickAt(130, 102);
                d.MoveTo(160, 143);
            }
            d.TakeFresh();
            if (byButton) {
                d.RightAt(1, 1);
            } else {
                d.Manager().Cancel();
            }
            EXPECT_TRUE(IsRepaintAskedFor(d.view)) << picked << byButton;
        }
    }
}

TEST(CommandOperationOffset, ExecuteAsksForARepaintWhateverWasPicked) {
    ViewDriver nothing;
    nothing.AddPolyline({{100, 100}, {200, 100}});
    ViewDriver line;
    line.AddLine(100, 100, 200, 100);
    ViewDriver polyline;
    polyline.AddPolyline({{100, 100}, {200, 100}});
    for (ViewDriver* d : {&nothing, &line, &polyline}) {
        d->Start(L"offset");
        if (d != &nothing) {
            d->ClickAt(130, 102);
            d->MoveTo(160, 143);
        }
        d->TakeFresh();
        EXPECT_FALSE(IsRepaintAskedFor(d->view));
        d->Manager().Execute();
        EXPECT_TRUE(IsRepaintAskedFor(d->view));
    }
}

// ---- Kinds of a host -----------------------------------------------------------------------------------------------

TEST(CommandOperationOffset, AKindThatItsClassCannotMakeMovesWithoutACopy) {
    ViewDriver d;
    CLine* other = d.AddLine(5, 5, 6, 6);
    AddLevel<OffsetHandMadePolyline>(d);
    d.Select(other);
    d.Start(L"offset");
    d.ClickAt(130, 102);
    d.ClickAt(170, 140);
    // Deselecting the others belongs to the copy: what was selected before stays so.
    EXPECT_EQ(d.AllWords(), "line (5,5)-(6,6) selected -1; pline (100,140) (200,140) normal -1");
    d.Start(L"offset");
    d.ClickAt(130, 142);
    d.TypeInEdit(L"25");
    d.Manager().Execute();
    EXPECT_EQ(d.AllWords(), "line (5,5)-(6,6) selected -1; pline (100,115) (200,115) selected -1");
}

TEST(CommandOperationOffset, ACopyThatCannotBeReadIsFreed) {
    {
        ViewDriver d;
        AddLevel<OffsetUnreadablePolyline>(d);
        d.Start(L"offset");
        d.ClickAt(130, 102);
        EXPECT_EQ(ArchiveCause([&] { d.Manager().OnLButtonDown(MK_LBUTTON, CGePoint2d(170, 160)); }),
                  CArchiveException::badClass);
        EXPECT_EQ(OffsetUnreadablePolyline::s_alive, 1);
        d.TypeInEdit(L"25");
        EXPECT_EQ(ArchiveCause([&] { d.Manager().Execute(); }), CArchiveException::badClass);
        EXPECT_EQ(OffsetUnreadablePolyline::s_alive, 1);
        // Nothing has moved, and the command is still there.
        EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) selected -1");
        EXPECT_EQ(d.ToolName(), "CCommandOperationOffset");
    }
    EXPECT_EQ(OffsetUnreadablePolyline::s_alive, 0);
}

// ---- The picture ---------------------------------------------------------------------------------------------------

TEST(CommandOperationOffset, ManyMovesLeaveThePictureOfTheLastOne) {
    ViewDriver many;
    ViewDriver one;
    for (ViewDriver* d : {&many, &one}) {
        d->AddPolyline({{100, 100}, {200, 100}});
        d->Start(L"offset");
        d->ClickAt(130, 102);
        d->Update();
    }
    const double path[][2] = {{220, 80}, {250, 60},  {302, 199}, {60, 200}, {305, 60},  {261, 241},
                              {300, 30}, {180, 175}, {60, 260},  {230, 60}, {390, 290}, {250, 140}};
    for (const auto& p : path) {
        many.MoveTo(p[0], p[1]);
    }
    many.MoveTo(243, 197);
    one.MoveTo(243, 197);
    EXPECT_EQ(many.BandEnd(), one.BandEnd());
    EXPECT_EQ(many.DifferenceBesideEditBox(one), 0);
    many.Manager().Cancel();
    many.Update();
    EXPECT_EQ(many.DifferenceFromFresh(), 0);
}

} // namespace
