// Grip editing: click, move, click; typed distances; what is restored and what is not.

#include "Arc.h"
#include "CenterPoint.h"
#include "CommandSelectGripPoint.h"
#include "MemoryInfo.h"
#include "TextParm.h"
#include "VectorLabel.h"
#include "support/RepaintAsked.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

int IsPreviewDrawn(ViewDriver& d) {
    return PeekAt(*static_cast<CCommandSelectGripPoint*>(d.Tool()), GripPreview());
}

int GripIndex(ViewDriver& d) {
    return PeekAt(*static_cast<CCommandSelectGripPoint*>(d.Tool()), GripTakenIndex());
}

// A selected line from (100, 100) to (200, 100).
CLine* SelectedLine(ViewDriver& d) {
    CLine* line = d.AddLine(100, 100, 200, 100);
    d.Select(line);
    return line;
}

TEST(CommandSelectGripPoint, AClickOnAGripTakesItAndChangesNothing) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(198, 102);
    EXPECT_EQ(d.ToolName(), "CCommandSelectGripPoint");
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(GripIndex(d), 2);
    EXPECT_EQ(Words(line), "line (100,100)-(200,100) selected -1");
    EXPECT_TRUE(d.LastPoint() == CGePoint2d(200, 100));
}

TEST(CommandSelectGripPoint, TheNextClickDropsItAndTheObjectStaysSelected) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(198, 102);
    d.MoveTo(220, 150);
    EXPECT_EQ(Words(line), "line (100,100)-(200,100) selected -1");
    d.TakeResults();
    d.ClickAt(230, 160);
    EXPECT_EQ(d.TakeResults(), "down 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(Words(line), "line (100,100)-(230,160) selected -1");
    EXPECT_EQ(d.Selected().GetSize(), 1);
}

TEST(CommandSelectGripPoint, AClickThatMeetsNoGripStartsNothing) {
    ViewDriver d;
    SelectedLine(d);
    d.ClickAt(130, 102); // On the selected line, off its grips.
    EXPECT_FALSE(d.IsRunning());
    d.ClickAt(300, 250);
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.Selected().GetSize(), 1);
}

TEST(CommandSelectGripPoint, TheApertureIsASquareOfFourUnitsItsEdgesIncluded) {
    ViewDriver d;
    SelectedLine(d);
    d.ClickAt(204, 104);
    EXPECT_TRUE(d.IsRunning());
    d.RightAt(1, 1);
    d.ClickAt(205, 104);
    EXPECT_FALSE(d.IsRunning());
    // At a quarter unit a pixel and above it counts whole units; below, only an exact hit.
    d.Tran().SetScale(0.24f);
    d.Manager().OnDefaultLButtonDown(0, CGePoint2d(200, 100.5));
    EXPECT_FALSE(d.IsRunning());
    d.Manager().OnDefaultLButtonDown(0, CGePoint2d(200, 100));
    EXPECT_TRUE(d.IsRunning());
}

TEST(CommandSelectGripPoint, GripsOfUnselectedObjectsAreNotSeen) {
    ViewDriver d;
    CLine* line = d.AddLine(100, 100, 200, 100);
    d.Manager().OnDefaultLButtonDown(0, CGePoint2d(300, 300));
    line->SetCanBeSelect(0); // So that the click selects nothing either.
    d.ClickAt(200, 100);
    EXPECT_FALSE(d.IsRunning());
}

TEST(CommandSelectGripPoint, ThePointsInsertedIntoAPolylineAreNoGripsToTake) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}, {200, 200}});
    line->AddInsertPoint(CGePoint2d(300, 250));
    d.Select(line);
    d.Manager().SetOsnapMode(2); // They snap, and still are not taken.
    d.ClickAt(300, 250);
    EXPECT_FALSE(d.IsRunning());
    d.ClickAt(200, 200);
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(GripIndex(d), 4) << "counted among vertices and middles";
}

TEST(CommandSelectGripPoint, TheFirstGripOfTheFirstSelectedObjectWins) {
    ViewDriver d;
    CLine* first = d.AddLine(100, 100, 203, 100);
    CLine* second = d.AddLine(200, 100, 300, 100);
    d.Select(second);
    d.Select(first);
    d.ClickAt(202, 100); // Nearer to the end of `first`, which was selected later.
    d.ClickAt(202, 150);
    EXPECT_EQ(Words(second), "line (202,150)-(300,100) selected -1");
}

TEST(CommandSelectGripPoint, TheRightButtonRestores) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(250, 150);
    d.MoveTo(150, 50);
    line->SetEndPoint(CGePoint2d(0, 0)); // A host's change in between is undone too.
    d.TakeResults();
    d.RightAt(150, 50);
    EXPECT_EQ(d.TakeResults(), "right 1");
    EXPECT_EQ(Words(line), "line (100,100)-(200,100) selected -1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.Selected().GetSize(), 1);
}

TEST(CommandSelectGripPoint, EveryEndAsksForARepaintThatWipesThePreview) {
    const struct {
        const char* name;
        std::function<void(ViewDriver&)> end;
    } rows[] = {{"dropped", [](ViewDriver& d) { d.PressAt(230, 140); }},
                {"right button", [](ViewDriver& d) { d.RightAt(230, 140); }},
                {"typed", [](ViewDriver& d) { d.Manager().Execute(); }},
                {"cancelled", [](ViewDriver& d) { d.Manager().Cancel(); }}};
    for (const auto& row : rows) {
        ViewDriver d;
        SelectedLine(d);
        d.TakeFresh();
        d.ClickAt(200, 100);
        d.MoveTo(230, 140);
        ::ValidateRect(d.view.m_hWnd, nullptr);
        row.end(d);
        EXPECT_FALSE(d.IsRunning()) << row.name;
        EXPECT_TRUE(IsRepaintAskedFor(d.view)) << row.name;
        d.Update();
        EXPECT_EQ(d.DifferenceFromFresh(), 0) << row.name;
    }
}

TEST(CommandSelectGripPoint, ATypedDistanceGoesAlongTheLastMove) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(230, 140);
    EXPECT_EQ(d.EditText(), "50");
    EXPECT_EQ(::GetFocus(), d.EditBox());
    d.Manager().SetInEdit(1);
    d.TypeInEdit(L"150");
    d.Manager().Execute();
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(Words(line), "line (100,100)-(290,220) selected -1");
}

TEST(CommandSelectGripPoint, NoNumberMeansNoDistance) {
    for (LPCTSTR text : {L"abc", L"", L"x7"}) {
        ViewDriver d;
        CLine* line = SelectedLine(d);
        d.ClickAt(200, 100);
        d.MoveTo(230, 140);
        d.TypeInEdit(text);
        d.Manager().Execute();
        EXPECT_EQ(Words(line), "line (100,100)-(200,100) selected -1");
    }
}

TEST(CommandSelectGripPoint, TheParseStopsAtTheFirstBadCharacter) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(260, 100);
    d.TypeInEdit(L" 25mm");
    d.Manager().Execute();
    EXPECT_EQ(Words(line), "line (100,100)-(225,100) selected -1");
}

TEST(CommandSelectGripPoint, WithoutAMoveATypedDistanceMovesNothing) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.TypeInEdit(L"150");
    d.Manager().Execute();
    EXPECT_EQ(Words(line), "line (100,100)-(200,100) selected -1");
    EXPECT_FALSE(d.IsRunning());
}

TEST(CommandSelectGripPoint, ADropOnTheGripItselfMovesByNothing) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(200, 100); // The edit box at the grip itself is survived.
    EXPECT_EQ(d.EditText(), "0");
    d.ClickAt(200, 100);
    EXPECT_EQ(Words(line), "line (100,100)-(200,100) selected -1");
    EXPECT_FALSE(d.IsRunning());
}

TEST(CommandSelectGripPoint, TheEditBoxIsThirtyPixelsBesideTheMiddle) {
    ViewDriver d;
    SelectedLine(d);
    d.Tran().SetScale(0.5f);
    d.Tran().SetOriginX(100);
    d.ClickAt(200, 100);
    d.MoveTo(200, 140);
    // Middle (200, 120), thirty pixels are fifteen units, to the left of upwards: (185, 120) is pixel (170, 60).
    CRect box;
    ASSERT_NE(d.EditBox(), nullptr);
    ::GetWindowRect(d.EditBox(), &box);
    d.view.ScreenToClient(&box);
    EXPECT_EQ(box, CRect(150, 50, 190, 70));
    EXPECT_EQ(d.EditText(), "40");
}

TEST(CommandSelectGripPoint, WhileADistanceIsTypedThePreviewFreezesUntilAClick) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(230, 140);
    d.Manager().SetInEdit(1);
    d.TypeInEdit(L"7");
    d.MoveTo(300, 250);
    EXPECT_EQ(d.EditText(), "7");
    EXPECT_EQ(d.BandEnd(), CPoint(230, 160));
    d.ClickAt(250, 150);
    EXPECT_EQ(Words(line), "line (100,100)-(250,150) selected -1");
}

TEST(CommandSelectGripPoint, TheLockMovesLevelOrUpright) {
    ViewDriver d;
    d.Manager().SetDrawObjLatus(1);
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(240, 120);
    EXPECT_EQ(d.EditText(), "40");
    d.ClickAt(240, 120);
    EXPECT_EQ(Words(line), "line (100,100)-(240,100) selected -1");
    d.ClickAt(240, 100);
    d.ClickAt(270, 130); // A tie is level.
    EXPECT_EQ(Words(line), "line (100,100)-(270,100) selected -1");
    d.ClickAt(270, 100);
    d.ClickAt(280, 140);
    EXPECT_EQ(Words(line), "line (100,100)-(270,140) selected -1");
}

TEST(CommandSelectGripPoint, TheMarkerIsWhereTheMouseSnapsAndTheLockHoldsTheBandOnly) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.AddPolyline({{240, 120}, {300, 250}});
    d.Manager().SetDrawObjLatus(1);
    d.ClickAt(200, 100);
    d.Manager().SetOsnapMode(1);
    d.MoveTo(240, 120);
    // Forty across and twenty up: the lock makes it level, (240, 100), and no snap point is within seven units of that.
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(240, 120));
    EXPECT_EQ(d.EditText(), "40");
    EXPECT_EQ(d.BandStart(), CPoint(200, 200));
    EXPECT_EQ(d.BandEnd(), CPoint(400, 200)) << "level, so out to the edge";
    d.ClickAt(240, 120);
    EXPECT_EQ(Words(line), "line (100,100)-(240,100) selected -1");
}

TEST(CommandSelectGripPoint, TheTypedDistanceKeepsTheDirectionOfTheLockedMove) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.Manager().SetDrawObjLatus(1);
    d.MoveTo(240, 120);
    d.Manager().SetDrawObjLatus(0);
    d.TypeInEdit(L"30");
    d.Manager().Execute();
    EXPECT_EQ(Words(line), "line (100,100)-(230,100) selected -1");
}

TEST(CommandSelectGripPoint, ATypedDistanceIgnoresTheLock) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(230, 140);
    d.Manager().SetDrawObjLatus(1);
    d.TypeInEdit(L"50");
    d.Manager().Execute();
    EXPECT_EQ(Words(line), "line (100,100)-(230,140) selected -1");
}

TEST(CommandSelectGripPoint, ANegativeDistanceGoesTheOtherWay) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(230, 140);
    d.TypeInEdit(L"-50");
    d.Manager().Execute();
    EXPECT_EQ(Words(line), "line (100,100)-(170,60) selected -1");
}

TEST(CommandSelectGripPoint, AnObjectThatWasErasedMeanwhileCanStillBeDropped) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(230, 140);
    {
        BoxAnswer yes({IDYES});
        d.Start(L"erase");
    }
    EXPECT_EQ(d.Count(), 0);
    ASSERT_TRUE(d.IsRunning());
    d.MoveTo(240, 150);
    d.ClickAt(230, 160);
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(Words(line), "line (100,100)-(230,160) selected -1") << "as stored, so selected, and in no list";
    EXPECT_EQ(d.Count(), 0);
    EXPECT_EQ(d.Selected().GetSize(), 0);
    KX_REMOVE_MEMORY(line); // Erased objects stay allocated; this one is the test's by now.
    delete line;
}

TEST(CommandSelectGripPoint, AFootIsDroppedFromTheGrip) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.AddLine(250, 20, 250, 290);
    d.ClickAt(202, 98); // Not on the grip itself.
    d.MoveTo(253, 103);
    ASSERT_TRUE(d.IsMarkDrawn());
    EXPECT_EQ(d.Mark().type, 8);
    EXPECT_TRUE(d.Mark() == CGePoint2d(250, 100));
    d.ClickAt(253, 103);
    EXPECT_EQ(Words(line), "line (100,100)-(250,100) selected -1");
}

TEST(CommandSelectGripPoint, AGripDoesNotSnapToItselfAndAnotherOfTheSameObjectMay) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.Manager().SetOsnapMode(5); // Without perpendicular feet.
    d.MoveTo(204, 103);
    EXPECT_FALSE(d.IsMarkDrawn());
    d.MoveTo(103, 102);
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(100, 100));
    d.ClickAt(103, 102);
    EXPECT_EQ(Words(line), "line (100,100)-(100,100) selected -1");
}

TEST(CommandSelectGripPoint, TheVetoCountsInTheSearchesOwnMask) {
    // Vertex 1 of a polyline is grip 2 under the mask that takes grips. Under the mask of vertices alone it is number
    // 1: it is not refused there, and the vertex with the number 2 is.
    ViewDriver d;
    d.Select(d.AddPolyline({{100, 100}, {200, 100}, {200, 200}}));
    d.ClickAt(200, 100);
    ASSERT_EQ(GripIndex(d), 2);
    d.Manager().SetOsnapMode(1);
    d.MoveTo(203, 103);
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_TRUE(d.Mark() == CGePoint2d(200, 100));
    d.MoveTo(203, 203);
    EXPECT_FALSE(d.IsMarkDrawn());
}

TEST(CommandSelectGripPoint, ATakenGripSnapsWithAllModesWhateverTheHostSetBefore) {
    ViewDriver d;
    d.Manager().SetOsnapMode(0);
    SelectedLine(d);
    CPLine* other = d.AddPolyline({{250, 200}, {350, 200}});
    d.ClickAt(200, 100);
    d.MoveTo(303, 203);
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_EQ(d.Mark().type, 4); // The middle of the segment.
    EXPECT_EQ(other->GetVertexCount(), 2);
    // Installed by a word it would have taken the mode over.
    d.Start(L"line");
    d.MoveTo(303, 203);
    EXPECT_FALSE(d.IsMarkDrawn());
}

TEST(CommandSelectGripPoint, AnotherCommandClearsTheSelectionAndRestoresNothing) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(230, 140);
    d.Start(L"line");
    EXPECT_EQ(Words(line), "line (100,100)-(200,100) normal -1");
    EXPECT_EQ(d.Selected().GetSize(), 0);
    // The same for a host that breaks it off.
    d.Manager().Cancel();
    d.Select(line);
    d.ClickAt(200, 100);
    line->SetEndPoint(CGePoint2d(201, 101));
    d.Manager().Cancel();
    EXPECT_EQ(Words(line), "line (100,100)-(201,101) normal -1");
}

TEST(CommandSelectGripPoint, KeysDoNothing) {
    ViewDriver d;
    SelectedLine(d);
    d.ClickAt(200, 100);
    d.TakeResults();
    d.Key(VK_ESCAPE);
    EXPECT_EQ(d.TakeResults(), "key 5");
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(d.Selected().GetSize(), 1);
}

TEST(CommandSelectGripPoint, AMidpointGripBendsAPolylineAndAVertexGripMovesIt) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}, {200, 200}});
    d.Select(line);
    d.ClickAt(150, 100);
    EXPECT_EQ(GripIndex(d), 1);
    d.ClickAt(150, 150);
    EXPECT_EQ(line->GetBulgeList()->GetAt(0), -1.0);
    EXPECT_EQ(Words(line), "pline (100,100) (200,100) (200,200) selected -1");
    d.ClickAt(200, 200);
    EXPECT_EQ(GripIndex(d), 4);
    d.ClickAt(260, 220);
    EXPECT_EQ(Words(line), "pline (100,100) (200,100) (260,220) selected -1");
}

TEST(CommandSelectGripPoint, EveryKindIsTakenMovedAndRestored) {
    ViewDriver d;
    auto* circle = new CCircle(Gdiplus::PointF(150, 150), 40);
    auto* arc = new CArc(Gdiplus::PointF(300, 100), 40, 0, 3);
    auto* text = new CTextParm;
    text->SetPos(CGePoint2d(50, 250));
    auto* label = new CKXVectorLabel;
    label->SetLeftLabel(CGePoint2d(250, 200), CGePoint2d(250, 230));
    label->SetRightLabel(CGePoint2d(350, 200), CGePoint2d(350, 230));
    for (CDrawable* object : {static_cast<CDrawable*>(circle), static_cast<CDrawable*>(arc),
                              static_cast<CDrawable*>(text), static_cast<CDrawable*>(label)}) {
        KX_ADD_MEMORY(object);
        d.Document().AddDrawAobject(object);
        d.Select(object);
    }
    d.TakeFresh();
    const CGePoint2d grips[] = {{190, 150}, {300, 100}, {50, 250}, {250, 230}};
    for (const CGePoint2d& grip : grips) {
        const std::string before = d.AllWords();
        d.ClickAt(grip.x, grip.y);
        ASSERT_TRUE(d.IsRunning());
        d.MoveTo(grip.x + 20, grip.y - 30);
        d.RightAt(1, 1);
        EXPECT_EQ(d.AllWords(), before);
        d.ClickAt(grip.x, grip.y);
        d.ClickAt(grip.x + 20, grip.y - 30);
    }
    EXPECT_EQ(Words(circle), "circle (150,150) r 60 selected -1");
    EXPECT_EQ(Words(arc), "arc (320,70) r 40 from 0 to 3 selected -1");
    EXPECT_EQ(Words(text), "textparm (70,220)  selected -1");
    EXPECT_EQ(Words(label), "label (250,200)-(250,230) (350,200)-(350,230) selected -1"); // Its grips do not move.
}

TEST(CommandSelectGripPoint, AMarkOfTheHostIsTakenMovedAndRestored) {
    ViewDriver d;
    auto* mark = new CCenterPoint(Gdiplus::PointF(150, 150)); // Half its length is 70.
    KX_ADD_MEMORY(mark);
    d.Document().AddDrawAobject(mark);
    d.Select(mark);
    d.TakeFresh();
    const auto radius = [&] {
        CGePoint2d min;
        CGePoint2d max;
        EXPECT_EQ(mark->GetRect(&d.Tran(), min, max), 1);
        return max.x - mark->GetCenter().x;
    };
    d.ClickAt(220, 150);
    EXPECT_EQ(GripIndex(d), 1);
    d.MoveTo(260, 130);
    mark->SetCenter(CGePoint2d(1, 2));
    d.RightAt(1, 1);
    EXPECT_TRUE(mark->GetCenter() == CGePoint2d(150, 150));
    EXPECT_EQ(radius(), 70.0);
    d.ClickAt(220, 150);
    d.ClickAt(250, 130);
    EXPECT_TRUE(mark->GetCenter() == CGePoint2d(150, 150));
    EXPECT_EQ(radius(), 100.0) << "thirty further to the right; the way down does not count";
    d.ClickAt(150, 150);
    EXPECT_EQ(GripIndex(d), 0);
    d.ClickAt(170, 120);
    EXPECT_TRUE(mark->GetCenter() == CGePoint2d(170, 120));
    EXPECT_EQ(radius(), 100.0);
    EXPECT_EQ(mark->GetDrawState(), CDrawable::Selected);
}

TEST(CommandSelectGripPoint, RestoringRunsTheRulesOfLoading) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
    line->SetSLPenColor(0, RGB(1, 2, 3));
    EXPECT_GT(d.TakeFresh().Count(RGB(1, 2, 3)), 0);
    d.Select(line);
    d.ClickAt(100, 100);
    d.RightAt(1, 1);
    d.Document().RemoveAllSelected();
    EXPECT_EQ(d.TakeFresh().Count(RGB(1, 2, 3)), 0); // Colours of segments are not in the stream.
}

TEST(CommandSelectGripPoint, ManyMovesLeaveThePictureOfTheLastOne) {
    ViewDriver many;
    ViewDriver one;
    for (ViewDriver* d : {&many, &one}) {
        SelectedLine(*d);
        d->AddLine(220, 200, 320, 160);
        d->TakeFresh();
        d->ClickAt(200, 100);
        d->Update();
    }
    const double path[][2] = {{250, 80}, {222, 199}, {250, 60}, {20, 200}, {5, 5},     {318, 161},
                              {300, 30}, {65, 175},  {65, 30},  {200, 30}, {390, 290}, {12, 240}};
    for (const auto& p : path) {
        many.MoveTo(p[0], p[1]);
    }
    many.MoveTo(283, 47);
    one.MoveTo(283, 47);
    EXPECT_TRUE(IsPreviewDrawn(many));
    EXPECT_EQ(many.DifferenceBesideEditBox(one), 0);
}

TEST(CommandSelectGripPoint, AfterARepaintTheNextMoveLeavesAnInvertedOutline) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.ClickAt(200, 100);
    d.MoveTo(250, 160);
    d.TakeFresh();
    EXPECT_TRUE(IsPreviewDrawn(d));
    // The next move inverts the object, wiped already, once more and then draws it: the two cancel out, and where the
    // preview should be there is the plain picture.
    d.MoveTo(280, 190);
    const Picture seen = d.Take();
    d.Manager().Cancel();
    d.Select(line);
    EXPECT_EQ(seen.At(130, 200), d.TakeFresh().At(130, 200));
}

TEST(CommandSelectGripPoint, NothingStaysAllocated) {
    ViewDriver d;
    SelectedLine(d);
    const int before = CKXMemoryManager::Instance()->GetCount();
    const int unknown = CKXMemoryManager::Instance()->GetUnknownCount();
    d.ClickAt(200, 100);
    d.MoveTo(250, 150);
    d.ClickAt(250, 150);
    d.ClickAt(250, 150);
    d.RightAt(1, 1);
    d.ClickAt(250, 150);
    d.Manager().Execute();
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
    EXPECT_EQ(CKXMemoryManager::Instance()->GetUnknownCount(), unknown);
}

} // namespace
