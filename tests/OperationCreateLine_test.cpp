// The command "line" on a real window, and what it shares with the other creating tools: search, tracking, base.

#include "CommandOperationManager.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "OperationCreateObjAb.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <gtest/gtest.h>

namespace {

struct Drawing : ViewHost {
    Drawing() { view.DoCommand(L"line"); }
    CCommandOperationManager& Manager() {
        return *static_cast<CCommandOperationManager*>(view.GetCommandOperationManager());
    }
    bool Running() { return Manager().GetHasCommand() != 0; }
    CPoint BandStart() { return PeekAt<CCommandOperation>(Manager(), BandFrom()); }
    CPoint BandEnd() { return PeekAt<CCommandOperation>(Manager(), BandTo()); }
    int BandStyle() { return PeekAt<CCommandOperation>(Manager(), ::BandStyle()); }
    CLine* Last() { return static_cast<CLine*>(Objects()[Objects().GetUpperBound()]); }
    void ExpectLast(double x1, double y1, double x2, double y2) {
        ASSERT_LT(0, Objects().GetSize());
        EXPECT_EQ(x1, Last()->GetStartPoint().x);
        EXPECT_EQ(y1, Last()->GetStartPoint().y);
        EXPECT_EQ(x2, Last()->GetEndPoint().x);
        EXPECT_EQ(y2, Last()->GetEndPoint().y);
    }
};

} // namespace

TEST(OperationCreateLine, TwoClicksMakeALineAndEndTheTool) {
    Drawing d;
    d.Move(CPoint(50, 60));
    d.Click(CPoint(50, 60));
    EXPECT_EQ(0, d.Objects().GetSize()) << "the object exists from the second click on";
    EXPECT_TRUE(d.Running());
    d.Move(CPoint(150, 200));
    ::ValidateRect(d.view.m_hWnd, nullptr);
    d.Send(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(150, 200));
    d.ExpectLast(50, 240, 150, 100);
    EXPECT_TRUE(CKXMemoryManager::Instance()->IsKnown(d.Last()));
    EXPECT_FALSE(d.Running()) << "the tool does not repeat";
    EXPECT_TRUE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
}

TEST(OperationCreateLine, TheLineHasTheForegroundColourOfItsClickAndDefaultsOtherwise) {
    Drawing d;
    d.Click(CPoint(50, 60));
    d.Document().SetFGColorIndex(9);
    d.Click(CPoint(150, 200));
    EXPECT_EQ(9, d.Last()->GetPenColorIndex());
    EXPECT_EQ(-1.0f, d.Last()->GetLineWide());
    EXPECT_EQ(-1, d.Last()->GetLineType());
    EXPECT_EQ(CDrawable::Normal, d.Last()->GetDrawState());
    ViewHost plain;
    plain.view.DoCommand(L"line");
    plain.Click(CPoint(10, 10));
    plain.Click(CPoint(90, 90));
    EXPECT_EQ(137, plain.Objects()[0]->GetPenColorIndex());
}

TEST(OperationCreateLine, BothClicksOnOnePointMakeALineWithoutLength) {
    Drawing d;
    d.Click(CPoint(50, 60));
    d.Click(CPoint(50, 60));
    d.ExpectLast(50, 240, 50, 240);
}

TEST(OperationCreateLine, TheRightButtonBreaksOffAndTakesTheBandAway) {
    Drawing d;
    const Picture fresh = d.TakeFresh();
    d.Click(CPoint(50, 60));
    d.Move(CPoint(150, 200));
    EXPECT_LT(90, fresh.Difference(d.Take()));
    d.RightClick(CPoint(150, 200));
    EXPECT_EQ(0, fresh.Difference(d.Take()));
    EXPECT_EQ(0, d.Objects().GetSize());
    EXPECT_FALSE(d.Running());
}

TEST(OperationCreateLine, TheRightButtonBreaksOffBeforeTheFirstClickToo) {
    Drawing d;
    const Picture fresh = d.TakeFresh();
    d.Move(CPoint(150, 200));
    EXPECT_EQ(CCommandOperation::RS_Cancelled,
              PeekAt<CCommandOperation>(d.Manager(), RunningTool())->OnRButtonDown(MK_RBUTTON, CGePoint2d(150, 100)));
    EXPECT_TRUE(d.Running()) << "ending it is the manager's part";
    d.RightClick(CPoint(150, 200));
    EXPECT_FALSE(d.Running());
    EXPECT_EQ(0, fresh.Difference(d.Take()));
    EXPECT_EQ(0, d.Objects().GetSize());
}

TEST(OperationCreateLine, ADozenMovesWithSnapsAndTrackingLeaveThePictureAsItWas) {
    Drawing d;
    d.view.AddLine(CGePoint2d(100, 100), CGePoint2d(300, 200), Gdiplus::Color(255, 0, 255, 0), 1);
    d.view.AddLine(CGePoint2d(30, 250), CGePoint2d(200, 20), Gdiplus::Color(255, 0, 0, 255), 1);
    const Picture fresh = d.TakeFresh();
    const CPoint path[] = {CPoint(20, 20),   CPoint(101, 201), CPoint(100, 60),  CPoint(300, 100), CPoint(300, 250),
                           CPoint(30, 100),  CPoint(30, 50),   CPoint(200, 280), CPoint(390, 280), CPoint(200, 150),
                           CPoint(115, 165), CPoint(60, 250),  CPoint(0, 0)};
    for (const CPoint& point : path) {
        d.Move(point);
    }
    d.Send(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(150, 250));
    // Assistant lines that are shown stay until the next paint, by design: the last move above has none.
    for (const CPoint& point : path) {
        d.Move(point);
    }
    d.Move(CPoint(77, 222)); // On no snap point, so that the marker is erased.
    d.RightClick(CPoint(77, 222));
    EXPECT_EQ(0, fresh.Difference(d.Take()));
}

TEST(OperationCreateLine, BeforeTheFirstClickABandOfNoLengthCarriesAssistantLines) {
    Drawing d;
    d.view.AddLine(CGePoint2d(100, 100), CGePoint2d(300, 200), Gdiplus::Color(255, 0, 255, 0), 1);
    const Picture fresh = d.TakeFresh();
    d.Move(CPoint(100, 200)); // Over the start point: tracked from now on.
    d.Move(CPoint(100, 40));
    EXPECT_LT(60, fresh.Difference(d.Take()));
    d.Move(CPoint(140, 40));
    EXPECT_EQ(0, fresh.Difference(d.Take()));
}

TEST(OperationCreateLine, TheFirstClickIsTrackedForTheSecond) {
    Drawing d;
    d.Tran().SetOriginX(0.25);
    d.Click(CPoint(50, 60)); // x is 50.25.
    d.Tran().SetOriginX(0.0);
    d.Click(CPoint(50, 200)); // Pixel column of 50.25.
    EXPECT_EQ(50.25, d.Last()->GetStartPoint().x);
    EXPECT_EQ(50.25, d.Last()->GetEndPoint().x);
}

TEST(OperationCreateLine, TheOrthoLockHoldsTheLineLevelOrUpright) {
    const struct {
        CPoint click;
        double x;
        double y;
    } rows[] = {{CPoint(150, 110), 150, 200}, {CPoint(110, 180), 100, 120}, {CPoint(140, 140), 140, 200}};
    for (const auto& row : rows) {
        Drawing d;
        d.Manager().SetDrawObjLatus(1);
        d.Click(CPoint(100, 100));
        d.Move(row.click);
        d.Click(row.click);
        d.ExpectLast(100, 200, row.x, row.y);
    }
}

TEST(OperationCreateLine, TheOrthoLockOverridesASnapInOneCoordinate) {
    Drawing d;
    d.view.AddLine(CGePoint2d(200, 190), CGePoint2d(390, 20), Gdiplus::Color(255, 0, 255, 0), 1);
    d.Manager().SetDrawObjLatus(5);
    d.Manager().SetOsnapMode(7);
    d.Click(CPoint(100, 100));
    d.Click(CPoint(203, 112)); // Snaps to (200, 190).
    d.ExpectLast(100, 200, 200, 200);
}

TEST(OperationCreateLine, APerpendicularIsOfferedAfterTheFirstClickOnlyAndBeforeTheGrips) {
    Drawing d;
    d.view.AddLine(CGePoint2d(100, 100), CGePoint2d(300, 100), Gdiplus::Color(255, 0, 255, 0), 1);
    d.Click(CPoint(2, 201));   // The foot from (0, 0) would be (0, 100): not offered.
    d.Click(CPoint(104, 198)); // The foot from (2, 99) is (2, 100): too far; the grip is near.
    d.ExpectLast(2, 99, 100, 100);
    d.view.DoCommand(L"line");
    d.Click(CPoint(103, 100));
    d.Click(CPoint(102, 202)); // The foot (103, 100) and the grip (100, 100) are both near: the foot is first.
    d.ExpectLast(103, 200, 103, 100);
}

TEST(OperationCreateLine, TheFootMayLieOnTheExtensionOfALine) {
    Drawing d;
    d.view.AddLine(CGePoint2d(100, 100), CGePoint2d(200, 100), Gdiplus::Color(255, 0, 255, 0), 1);
    d.Click(CPoint(350, 50));
    d.Click(CPoint(352, 203));
    d.ExpectLast(350, 250, 350, 100);
}

TEST(OperationCreateLine, AHiddenObjectGivesNoSnapHere) {
    Drawing d;
    d.view.AddLine(CGePoint2d(100, 100), CGePoint2d(200, 100), Gdiplus::Color(255, 0, 255, 0), 1)->SetIsShow(0);
    d.Click(CPoint(103, 198));
    d.Click(CPoint(300, 20));
    d.ExpectLast(103, 102, 300, 280);
}

TEST(OperationCreateLine, AnotherCommandReplacesALineInProgress) {
    Drawing d;
    d.Click(CPoint(50, 60));
    d.view.DoCommand(L"line");
    d.Click(CPoint(100, 100));
    EXPECT_EQ(0, d.Objects().GetSize());
    d.Click(CPoint(150, 100));
    d.ExpectLast(100, 200, 150, 200);
}

TEST(OperationCreateLine, PanningInTheMiddleOfALineKeepsIt) {
    Drawing d;
    d.Click(CPoint(50, 60)); // (50, 240)
    d.Send(WM_MBUTTONDOWN, MK_MBUTTON, CPoint(200, 200));
    d.Move(CPoint(230, 180), MK_MBUTTON);
    d.Send(WM_MBUTTONUP, 0, CPoint(230, 180));
    EXPECT_TRUE(d.Running());
    d.Move(CPoint(300, 100));
    EXPECT_EQ(CPoint(80, 40), d.BandStart()) << "the start point has moved with the drawing";
    d.Click(CPoint(300, 100)); // Thirty units to the left and twenty down of where it was.
    d.ExpectLast(50, 240, 270, 180);
}

TEST(OperationCreateLine, BeforeTheFirstClickTheOrthoLockHoldsNothing) {
    Drawing d;
    d.Manager().SetDrawObjLatus(1);
    d.Move(CPoint(150, 140));
    EXPECT_EQ(CPoint(150, 140), d.BandStart());
    EXPECT_EQ(CPoint(150, 140), d.BandEnd());
}

TEST(OperationCreateLine, TheBandFollowsTheOrthoLock) {
    Drawing d;
    d.Manager().SetDrawObjLatus(1);
    d.Click(CPoint(100, 100));
    d.Move(CPoint(150, 110));
    EXPECT_EQ(CPoint(100, 100), d.BandStart());
    EXPECT_EQ(CPoint(400, 100), d.BandEnd()) << "level, so out to the edge";
    EXPECT_EQ(PS_DOT, d.BandStyle());
    d.Move(CPoint(110, 180));
    EXPECT_EQ(CPoint(100, 300), d.BandEnd());
    d.Manager().SetDrawObjLatus(0);
    d.Move(CPoint(150, 110));
    EXPECT_EQ(CPoint(150, 110), d.BandEnd());
    EXPECT_EQ(PS_SOLID, d.BandStyle());
}

TEST(OperationCreateLine, UnderTheOrthoLockTheSnapPointItselfIsTracked) {
    Drawing d;
    d.view.AddLine(CGePoint2d(200, 195), CGePoint2d(390, 20), Gdiplus::Color(255, 0, 255, 0), 1);
    d.Manager().SetDrawObjLatus(1);
    d.Manager().SetOsnapMode(7);
    d.Click(CPoint(100, 100));
    // Snaps to (200, 195), which the lock brings to (200, 200): the grip is near that one too, so the marker shows.
    d.Move(CPoint(202, 106));
    const CGePointArray& tracked = PeekAt(d.Manager(), TrackedGrips());
    ASSERT_EQ(3, tracked.GetSize());
    EXPECT_TRUE(tracked.GetAt(0) == CGePoint2d(100, 200)) << "the start point";
    EXPECT_TRUE(tracked.GetAt(1) == CGePoint2d(200, 195)) << "the engine's own";
    EXPECT_TRUE(tracked.GetAt(2) == CGePoint2d(200, 200));
}

TEST(OperationCreateLine, UnderTheOrthoLockLessThanAUnitIsLevel) {
    Drawing d;
    d.Tran().SetScale(0.25f);
    d.Manager().SetDrawObjLatus(1);
    d.Click(CPoint(100, 100)); // (25, 50)
    d.Click(CPoint(101, 103)); // A quarter of a unit across and three quarters down.
    d.ExpectLast(25, 50, 25.25, 50);
}

TEST(OperationCreateLine, WithoutBit8ThereIsNoFootAfterTheFirstClickEither) {
    Drawing d;
    d.view.AddLine(CGePoint2d(100, 100), CGePoint2d(200, 100), Gdiplus::Color(255, 0, 255, 0), 1);
    d.Manager().SetOsnapMode(7);
    d.Click(CPoint(350, 50));
    d.Click(CPoint(352, 203));
    d.ExpectLast(350, 250, 352, 97);
}

TEST(OperationCreateLine, CancellingALineEmptiesTheCurrentSlot) {
    Drawing d;
    CLine other;
    d.Click(CPoint(50, 60));
    d.Document().AddCurrentObject(&other);
    d.Manager().Cancel();
    EXPECT_EQ(nullptr, d.Document().GetCurrentObject());
    EXPECT_EQ(0, d.Objects().GetSize());
}

TEST(OperationCreateLine, KeysMeanNothingToALine) {
    Drawing d;
    CDrawable* line = d.view.AddLine(CGePoint2d(10, 10), CGePoint2d(20, 20), Gdiplus::Color(255, 0, 255, 0), 1);
    d.Document().AddSelected(line);
    d.Click(CPoint(50, 60));
    for (UINT key : {UINT(VK_ESCAPE), UINT(VK_RETURN), UINT('5'), UINT(VK_DELETE)}) {
        d.Key(key);
    }
    EXPECT_TRUE(d.Running());
    EXPECT_EQ(1, d.Document().IsSelected(line));
    d.Click(CPoint(250, 160));
    d.ExpectLast(50, 240, 250, 140);
}

// ---- The base of the creating tools --------------------------------------------------------------------------------

namespace {

class PlainTool : public COperationCreateObjAb {
public:
    explicit PlainTool(ViewHost& host) : COperationCreateObjAb(&host.view, nullptr, &host.Tran(), &host.Document()) {}
    using COperationCreateObjAb::GetGripPoint;
    using COperationCreateObjAb::m_ClickCount;
    using COperationCreateObjAb::m_LastPoint;
    using COperationCreateObjAb::m_pCurrentObject;
    using COperationCreateObjAb::m_SnapEnabled;
    using COperationCreateObjAb::OnCreateObject;
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }

    // The candidate that is refused, by object and place; none at first.
    CDrawable* refusedObject = nullptr;
    int refusedGrip = -1;

protected:
    int OnGetGripPoint(CDrawable* object, int gripIndex, CGePoint2d) override {
        return object == refusedObject && gripIndex == refusedGrip ? 0 : 1;
    }
};

} // namespace

TEST(OperationCreateObjAb, TheBaseCountsClicksAndForgetsThemOnTheRightButton) {
    ViewHost host;
    PlainTool tool(host);
    EXPECT_EQ(0, static_cast<int>(tool.OnLButtonDown(0, CGePoint2d(3, 4))));
    EXPECT_EQ(1, tool.m_ClickCount);
    EXPECT_EQ(4.0, tool.m_LastPoint.y);
    EXPECT_EQ(CCommandOperation::RS_Cancelled, tool.OnRButtonDown(0, CGePoint2d()));
    EXPECT_EQ(0, tool.m_ClickCount);
}

TEST(OperationCreateObjAb, TheObjectBeingBuiltIsShownThroughTheCurrentSlot) {
    ViewHost host;
    PlainTool tool(host);
    EXPECT_EQ(0, tool.AddCurrentObjectToDocument());
    CLine line;
    tool.m_pCurrentObject = &line;
    EXPECT_EQ(1, tool.AddCurrentObjectToDocument());
    EXPECT_EQ(&line, host.Document().GetCurrentObject());
    EXPECT_EQ(&line, tool.GetCurrentObject());
    tool.RemoveCurrentObjectAtDocument();
    EXPECT_EQ(nullptr, host.Document().GetCurrentObject());
}

TEST(OperationCreateObjAb, TheObjectBeingBuiltIsSearchedLast) {
    ViewHost host;
    PlainTool tool(host);
    tool.SetOsnapMode(7);
    CLine line;
    line.SetStartPoint(CGePoint2d(100, 100));
    tool.m_pCurrentObject = &line;
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(101, 101), hit));
    EXPECT_EQ(100.0, hit.x);
    host.view.AddLine(CGePoint2d(105, 100), CGePoint2d(300, 300), Gdiplus::Color(255, 0, 0, 0), 1);
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(101, 101), hit));
    EXPECT_EQ(105.0, hit.x);
}

TEST(OperationCreateObjAb, TheNetIsSearchedAfterTheDrawing) {
    ViewHost host;
    PlainTool tool(host);
    tool.SetOsnapMode(7);
    auto* net = new CLine;
    net->SetStartPoint(CGePoint2d(100, 100));
    host.Document().AddNetobject(net);
    CLine building;
    building.SetStartPoint(CGePoint2d(103, 100));
    tool.m_pCurrentObject = &building;
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(101, 101), hit));
    EXPECT_EQ(100.0, hit.x) << "before the object being built";
    host.view.AddLine(CGePoint2d(105, 100), CGePoint2d(300, 300), Gdiplus::Color(255, 0, 0, 0), 1);
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(101, 101), hit));
    EXPECT_EQ(105.0, hit.x);
    net->SetIsShow(0);
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(97, 100), hit));
    EXPECT_EQ(103.0, hit.x) << "a hidden line of the net is passed over";
}

TEST(OperationCreateObjAb, WithSnapOffNothingIsFound) {
    ViewHost host;
    PlainTool tool(host);
    host.view.AddLine(CGePoint2d(100, 100), CGePoint2d(300, 300), Gdiplus::Color(255, 0, 0, 0), 1);
    CGePoint2d hit;
    tool.m_SnapEnabled = 0;
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(100, 100), hit));
    tool.m_SnapEnabled = 1;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(100, 100), hit));
}

TEST(OperationCreateObjAb, ARefusedCandidateIsPassedOver) {
    ViewHost host;
    PlainTool tool(host);
    tool.SetOsnapMode(7);
    const Gdiplus::Color black(255, 0, 0, 0);
    CDrawable* first = host.view.AddLine(CGePoint2d(100, 100), CGePoint2d(300, 300), black, 1);
    CDrawable* second = host.view.AddLine(CGePoint2d(300, 20), CGePoint2d(104, 100), black, 1);
    CGePoint2d hit;
    tool.refusedObject = first;
    tool.refusedGrip = 0;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(101, 101), hit));
    EXPECT_EQ(104.0, hit.x);
    tool.refusedObject = second; // Its start, far away.
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(101, 101), hit));
    EXPECT_EQ(100.0, hit.x);
    // Alone, the refused one leaves nothing; with the feet before the grips the count begins with the foot.
    second->SetIsShow(0);
    tool.refusedObject = first;
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(101, 101), hit));
    tool.SetOsnapMode(15);
    tool.m_ClickCount = 1;
    tool.m_LastPoint = CGePoint2d(50, 50); // On the line's own extension: so is its foot, far away.
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(101, 101), hit));
    EXPECT_EQ(100.0, hit.x);
}

TEST(OperationCreateObjAb, ANewObjectTakesTheForegroundColourAndNullIsIgnored) {
    ViewHost host;
    PlainTool tool(host);
    host.Document().SetFGColorIndex(12);
    CLine line;
    tool.OnCreateObject(&line);
    EXPECT_EQ(12, line.GetPenColorIndex());
    tool.OnCreateObject(nullptr);
}
