// "PLine_AddPoint" and "PLine_RemovePoint": a click each, until the right button.

#include "MemoryInfo.h"
#include "support/AfxCaught.h"
#include "support/ViewDriver.h"

#include <gtest/gtest.h>

namespace {

TEST(CommandOperationPLinePoint, AClickOnASegmentPutsAVertexThere) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}, {200, 200}});
    d.Start(L"PLine_AddPoint");
    d.ClickAt(130, 103);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0");
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(Words(line), "pline (100,100) (130,103) (200,100) (200,200) normal -1");
    EXPECT_EQ(line->GetVertexCount(), 4);
    d.ClickAt(202, 130);
    EXPECT_EQ(Words(line), "pline (100,100) (130,103) (200,100) (202,130) (200,200) normal -1");
    d.RightAt(1, 1);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0, right 1");
    EXPECT_FALSE(d.IsRunning());
}

TEST(CommandOperationPLinePoint, TheNewVertexMaySnap) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
    d.AddLine(120, 103, 120, 200);
    d.Start(L"PLine_AddPoint");
    d.ClickAt(122, 101);
    EXPECT_EQ(Words(line), "pline (100,100) (120,103) (200,100) normal -1");
}

TEST(CommandOperationPLinePoint, OnTheClosingSegmentTheNewVertexIsTheLast) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}, {200, 200}}, true);
    d.Start(L"PLine_AddPoint");
    d.ClickAt(130, 132);
    EXPECT_EQ(Words(line), "pline (100,100) (200,100) (200,200) (130,132) normal -1");
}

TEST(CommandOperationPLinePoint, OtherKindsArePassedOverAndTheUndermostPolylineIsTaken) {
    ViewDriver d;
    d.AddLine(100, 101, 200, 101);
    CPLine* first = d.AddPolyline({{100, 103}, {200, 103}});
    CPLine* second = d.AddPolyline({{100, 100}, {200, 100}});
    first->SetCanBeSelect(0); // Selectability plays no part.
    d.Start(L"PLine_AddPoint");
    d.ClickAt(130, 100);
    EXPECT_EQ(first->GetVertexCount(), 3);
    EXPECT_EQ(second->GetVertexCount(), 2);
}

TEST(CommandOperationPLinePoint, AMissedClickChangesNothingAndRepaints) {
    for (LPCTSTR word : {L"PLine_AddPoint", L"PLine_RemovePoint"}) {
        ViewDriver d;
        d.AddPolyline({{100, 100}, {200, 100}, {200, 200}, {100, 200}});
        d.TakeFresh();
        d.Start(word);
        EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
        d.PressAt(150, 150);
        EXPECT_TRUE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
        EXPECT_EQ(d.AllWords(), "pline (100,100) (200,100) (200,200) (100,200) normal -1");
        EXPECT_TRUE(d.IsRunning());
    }
}

TEST(CommandOperationPLinePoint, FourPixelsAwayIsAHitAndFiveAreNot) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
    d.Start(L"PLine_AddPoint");
    d.Tool()->OnLButtonDown(0, CGePoint2d(130, 105));
    EXPECT_EQ(line->GetVertexCount(), 2);
    d.Tool()->OnLButtonDown(0, CGePoint2d(130, 104));
    EXPECT_EQ(line->GetVertexCount(), 3);
}

TEST(CommandOperationPLinePoint, AnAddedVertexTakesTheBulgeOfItsSegment) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}});
    line->SetBulge(0, -1.0); // A half circle: its middle is 50 to the left of the direction.
    d.Start(L"PLine_AddPoint");
    d.Tool()->OnLButtonDown(0, CGePoint2d(150, 150));
    ASSERT_EQ(line->GetVertexCount(), 3);
    EXPECT_EQ(line->GetBulgeList()->GetAt(0), -1.0);
    EXPECT_EQ(line->GetBulgeList()->GetAt(1), -1.0);
}

TEST(CommandOperationPLinePoint, TheVertexNearestToTheClickIsRemovedWhicheverSegmentWasHit) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}, {200, 200}, {100, 200}});
    d.Start(L"PLine_RemovePoint");
    d.ClickAt(170, 102);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0");
    EXPECT_EQ(Words(line), "pline (100,100) (200,200) (100,200) normal -1");
    EXPECT_TRUE(d.IsRunning());
    d.RightAt(1, 1);
    EXPECT_EQ(d.TakeResults(), "right 1");
}

TEST(CommandOperationPLinePoint, OfTwoAtTheSameDistanceTheFirstIsRemoved) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}, {200, 200}, {100, 200}});
    d.Start(L"PLine_RemovePoint");
    d.Tool()->OnLButtonDown(0, CGePoint2d(150, 100));
    EXPECT_EQ(Words(line), "pline (200,100) (200,200) (100,200) normal -1");
}

TEST(CommandOperationPLinePoint, ThreeVerticesRemain) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{100, 100}, {200, 100}, {200, 200}});
    d.TakeFresh();
    d.Start(L"PLine_RemovePoint");
    d.PressAt(130, 102);
    EXPECT_EQ(line->GetVertexCount(), 3);
    EXPECT_TRUE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
}

TEST(CommandOperationPLinePoint, WithAllVerticesAMillionUnitsAwayTheRemovalRaises) {
    ViewDriver d;
    CPLine* line = d.AddPolyline({{-2e6, 100}, {2e6, 100}, {2e6, 2e6}, {-2e6, 2e6}});
    d.Start(L"PLine_RemovePoint");
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { d.Tool()->OnLButtonDown(0, CGePoint2d(0, 100)); }));
    EXPECT_EQ(line->GetVertexCount(), 4);
    EXPECT_TRUE(d.IsRunning());
}

TEST(CommandOperationPLinePoint, NoMarkerNoBandAndKeysAreHandled) {
    for (LPCTSTR word : {L"PLine_AddPoint", L"PLine_RemovePoint"}) {
        ViewDriver d;
        d.AddPolyline({{100, 100}, {200, 100}});
        d.TakeFresh();
        d.Start(word);
        d.MoveTo(101, 101);
        EXPECT_FALSE(d.IsMarkDrawn());
        EXPECT_FALSE(d.IsBandDrawn());
        EXPECT_EQ(d.DifferenceFromFresh(), 0);
        d.Key(VK_ESCAPE);
        d.Wheel(120, 150, 150);
        d.Manager().Execute();
        EXPECT_EQ(d.TakeResults(), "move 0, key 0, wheel 0, move 0");
        EXPECT_TRUE(d.IsRunning());
    }
}

TEST(CommandOperationPLinePoint, EachHasACursorOfItsOwn) {
    HCURSOR cursors[3] = {};
    LPCTSTR const words[] = {L"PLine_AddPoint", L"PLine_RemovePoint", L"line"};
    for (int i = 0; i < 3; ++i) {
        ViewDriver d;
        d.Start(words[i]);
        ::SetCursor(nullptr);
        EXPECT_EQ(d.view.SendMessage(WM_SETCURSOR, reinterpret_cast<WPARAM>(d.view.m_hWnd),
                                     MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)),
                  1);
        cursors[i] = ::GetCursor();
        EXPECT_NE(cursors[i], nullptr);
        // Again, from what is loaded already.
        ::SetCursor(nullptr);
        d.view.SendMessage(WM_SETCURSOR, reinterpret_cast<WPARAM>(d.view.m_hWnd), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        EXPECT_EQ(::GetCursor(), cursors[i]);
    }
    HINSTANCE library = VectorViewModule();
    EXPECT_EQ(cursors[0], ::LoadCursor(library, MAKEINTRESOURCE(7001)));
    EXPECT_EQ(cursors[1], ::LoadCursor(library, MAKEINTRESOURCE(7002)));
    EXPECT_EQ(cursors[2], ::LoadCursor(library, MAKEINTRESOURCE(131)));
}

} // namespace
