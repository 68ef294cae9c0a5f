// "viewmove": the drag with the left button, its cursor, its end.

#include "support/ViewDriver.h"

#include <gtest/gtest.h>

namespace {

TEST(CommandOperationRTPAN, ADragMovesTheOriginByDrawingUnits) {
    ViewDriver d;
    d.Tran().SetScale(2.0f);
    d.Start(L"viewmove");
    d.Send(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(100, 100));
    d.Move(CPoint(110, 100), MK_LBUTTON);
    EXPECT_EQ(d.Tran().GetOriginX(), -20.0);
    EXPECT_EQ(d.Tran().GetOriginY(), 0.0);
    d.Move(CPoint(110, 107), MK_LBUTTON); // Downwards.
    EXPECT_EQ(d.Tran().GetOriginX(), -20.0);
    EXPECT_EQ(d.Tran().GetOriginY(), 14.0);
    d.Send(WM_LBUTTONUP, 0, CPoint(110, 107));
    EXPECT_EQ(d.TakeResults(), "down 0, move 0, move 0, up 0");
    EXPECT_TRUE(d.IsRunning());
}

TEST(CommandOperationRTPAN, ADragThatWouldMakeAnOriginInfiniteMovesNothing) {
    ViewDriver d;
    d.Tran().SetScale(1e37f);
    d.Start(L"viewmove");
    d.Send(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(100, 100));
    d.Move(CPoint(200, 101), MK_LBUTTON); // 100 pixels are 1e39 units, more than a float holds.
    EXPECT_EQ(d.Tran().GetOriginX(), 0.0);
    EXPECT_EQ(d.Tran().GetOriginY(), 0.0);
}

TEST(CommandOperationRTPAN, AMoveWithoutTheButtonChangesNothingAndRepaintsNothing) {
    ViewDriver d;
    d.AddLine(10, 10, 50, 50);
    d.TakeFresh();
    d.Start(L"viewmove");
    d.Move(CPoint(100, 100));
    d.Move(CPoint(130, 130));
    EXPECT_EQ(d.Tran().GetOriginX(), 0.0);
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
    // Over a grip there is no marker.
    d.MoveTo(11, 11);
    EXPECT_FALSE(d.IsMarkDrawn());
    EXPECT_EQ(d.DifferenceFromFresh(), 0);
    d.Send(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(100, 100));
    d.Move(CPoint(101, 100), MK_LBUTTON);
    EXPECT_TRUE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
}

TEST(CommandOperationRTPAN, EachPressStartsANewPan) {
    ViewDriver d;
    d.Start(L"viewmove");
    d.Send(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(100, 100));
    d.Move(CPoint(110, 100), MK_LBUTTON);
    d.Send(WM_LBUTTONUP, 0, CPoint(110, 100));
    d.Move(CPoint(300, 200));
    d.Send(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(300, 200));
    d.Move(CPoint(300, 205), MK_LBUTTON);
    EXPECT_EQ(d.Tran().GetOriginX(), -10.0);
    EXPECT_EQ(d.Tran().GetOriginY(), 5.0);
}

TEST(CommandOperationRTPAN, AHeldKeyDoesNotStopTheDrag) {
    ViewDriver d;
    d.Start(L"viewmove");
    d.Send(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, CPoint(100, 100));
    d.Move(CPoint(112, 95), MK_LBUTTON | MK_SHIFT);
    EXPECT_EQ(d.Tran().GetOriginX(), -12.0);
    EXPECT_EQ(d.Tran().GetOriginY(), -5.0);
}

TEST(CommandOperationRTPAN, TheSnapSearchRunsAndThePanCountsPixels) {
    ViewDriver d;
    d.AddLine(100, 100, 200, 150);
    d.Start(L"viewmove");
    EXPECT_TRUE(d.Tracked().empty());
    d.MoveTo(103, 102);
    ASSERT_EQ(d.Tracked().size(), 1u);
    EXPECT_TRUE(d.Tracked()[0] == CGePoint2d(100, 100));
    d.PressAt(60, 150); // A press ends tracking.
    EXPECT_TRUE(d.Tracked().empty());
    d.MoveTo(103, 102, MK_LBUTTON);
    EXPECT_EQ(d.Tracked().size(), 1u);
    // 43 pixels to the right and 48 down; to the grip itself it would be 40 and 50.
    EXPECT_EQ(d.Tran().GetOriginX(), -43.0);
    EXPECT_EQ(d.Tran().GetOriginY(), 48.0);
}

TEST(CommandOperationRTPAN, TheRightButtonEndsItAndTheViewStaysWhereItIs) {
    ViewDriver d;
    d.Start(L"viewmove");
    d.Send(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(100, 100));
    d.Move(CPoint(110, 100), MK_LBUTTON);
    d.TakeResults();
    d.RightClick(CPoint(110, 100));
    EXPECT_EQ(d.TakeResults(), "right 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.Tran().GetOriginX(), -10.0);
}

TEST(CommandOperationRTPAN, ItHasTheHandCursorAndKeysDoNothing) {
    ViewDriver d;
    d.Start(L"viewmove");
    for (int i = 0; i < 2; ++i) {
        ::SetCursor(nullptr);
        d.view.SendMessage(WM_SETCURSOR, reinterpret_cast<WPARAM>(d.view.m_hWnd), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        EXPECT_EQ(::GetCursor(), ::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(1479)));
    }
    d.Key(VK_ESCAPE);
    EXPECT_EQ(d.TakeResults(), "key 0");
    EXPECT_TRUE(d.IsRunning());
}

} // namespace
