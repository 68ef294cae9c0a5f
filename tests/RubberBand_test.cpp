// The rubber band, tracked grips and assistant lines: shapes, flags, and that inversion leaves nothing behind.

#include "CommandOperationManager.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "support/ViewHost.h"

#include <gtest/gtest.h>

namespace {

class OpenManager : public CCommandOperationManager {
public:
    using CCommandOperationManager::CCommandOperationManager;
    using CCommandOperationManager::GetInTrackGripPoint;
    using CCommandOperationManager::m_ShirrDrawn;
    using CCommandOperationManager::m_ShirrEnd;
    using CCommandOperationManager::m_ShirrPenStyle;
    using CCommandOperationManager::m_ShirrStart;
};

class OpenView : public CVectorView {
public:
    OpenView() { OnCreateCommandOperationManager(); }
    OpenManager& Manager() { return *static_cast<OpenManager*>(m_pManager); }

protected:
    void OnCreateCommandOperationManager() override {
        FreeCommandOperationManager();
        m_pManager = new OpenManager(this, &m_Graphic, &m_CoordTran, GetDocument());
        KX_ADD_MEMORY(m_pManager);
    }
};

// A view of 400 by 300 pixels in which drawing (x, y) lies on pixel (x, 300 - y), with a line across it.
struct Band {
    Band() : manager(view.Manager()) {
        view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
        ShowView(view, parent);
        view.AddLine(CGePoint2d(20, 30), CGePoint2d(390, 280), Gdiplus::Color(255, 255, 128, 0), 1);
        view.InvalidateRect(nullptr, TRUE);
        view.UpdateWindow();
        fresh = TakePicture(view);
    }
    int Difference() { return fresh.Difference(TakePicture(view)); }
    // Pixels that differ from the fresh paint in a row or a column.
    int DifferentInRow(int y) {
        const Picture now = TakePicture(view);
        int count = 0;
        for (int x = 0; x < now.width; ++x) {
            count += now.At(x, y) != fresh.At(x, y) ? 1 : 0;
        }
        return count;
    }
    int DifferentInColumn(int x, int from, int to) {
        const Picture now = TakePicture(view);
        int count = 0;
        for (int y = from; y < to; ++y) {
            count += now.At(x, y) != fresh.At(x, y) ? 1 : 0;
        }
        return count;
    }
    ParentWindow parent;
    OpenView view;
    OpenManager& manager;
    Picture fresh;
};

} // namespace

TEST(RubberBand, ASlantedBandIsSolidFromPointToPoint) {
    Band b;
    b.manager.DrawShirrLine(CPoint(10, 10), CPoint(110, 60), 0);
    EXPECT_EQ(PS_SOLID, b.manager.m_ShirrPenStyle);
    EXPECT_EQ(CPoint(110, 60), b.manager.m_ShirrEnd);
    EXPECT_EQ(1, b.manager.m_ShirrDrawn);
    EXPECT_EQ(100, b.Difference());
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.manager.m_ShirrDrawn);
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, AHorizontalBandRunsDottedToTheEdgeInItsDirection) {
    Band b;
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(150, 50), 0);
    EXPECT_EQ(PS_DOT, b.manager.m_ShirrPenStyle);
    EXPECT_EQ(CPoint(400, 50), b.manager.m_ShirrEnd);
    EXPECT_LT(50, b.DifferentInRow(50));
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(60, 50), 0);
    EXPECT_EQ(CPoint(0, 50), b.manager.m_ShirrEnd);
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, AVerticalBandRunsDottedToTheEdgeInItsDirection) {
    Band b;
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(100, 51), 0);
    EXPECT_EQ(CPoint(100, 300), b.manager.m_ShirrEnd);
    EXPECT_EQ(PS_DOT, b.manager.m_ShirrPenStyle);
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(100, 40), 0);
    EXPECT_EQ(CPoint(100, 0), b.manager.m_ShirrEnd);
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, ABandWithoutLengthKeepsTheStyleAndDrawsNothing) {
    Band b;
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(150, 50), 0);
    b.manager.DrawShirrLine(CPoint(70, 70), CPoint(70, 70), 0);
    EXPECT_EQ(PS_DOT, b.manager.m_ShirrPenStyle);
    EXPECT_EQ(0, b.Difference());
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, AtMostOneBandStands) {
    Band b;
    for (int i = 0; i < 12; ++i) {
        b.manager.DrawShirrLine(CPoint(200, 150), CPoint(20 + 31 * i, 10 + 20 * i), 0);
    }
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, ForgettingTheBandLeavesItOnTheScreen) {
    Band b;
    b.manager.DrawShirrLine(CPoint(10, 10), CPoint(110, 60), 0);
    b.manager.ResetErasShirrLineState();
    b.manager.ErasShirrLine();
    EXPECT_EQ(100, b.Difference());
}

TEST(RubberBand, ARepaintWipesTheBandAndItsFlag) {
    Band b;
    b.manager.DrawShirrLine(CPoint(10, 10), CPoint(110, 60), 0);
    b.view.InvalidateRect(nullptr, TRUE);
    b.view.UpdateWindow();
    EXPECT_EQ(0, b.manager.m_ShirrDrawn);
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, ABandFromOutsideTheClientAreaFollowsTheSameSteps) {
    // To the left edge from beyond it: the band runs away from the window, to x = 0.
    Band b;
    b.manager.DrawShirrLine(CPoint(-50, 20), CPoint(-60, 20), 0);
    EXPECT_EQ(CPoint(0, 20), b.manager.m_ShirrEnd);
    b.manager.ErasShirrLine();
}

TEST(RubberBand, AToolsBandIsTheManagersAndDropsItsThirdArgument) {
    Band b;
    b.view.DoCommand(L"line");
    b.view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(60, 60));
    EXPECT_EQ(CPoint(60, 60), b.manager.m_ShirrStart);
    EXPECT_EQ(1, b.manager.m_ShirrDrawn);
}

// ---- Tracked grips -------------------------------------------------------------------------------------------------

TEST(RubberBand, AGripIsTrackedOnceAndFollowedInItsPixelColumnOrRow) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(100.25, 100.5));
    b.manager.AddGripPoint(CGePoint2d(100.25, 100.5));
    CGePoint2d point(7, 8);
    EXPECT_EQ(0, b.manager.GetInTrackGripPoint(CPoint(50, 50), point));
    EXPECT_EQ(7.0, point.x);
    // Pixel (100, 199): x is taken in full precision, y stays.
    EXPECT_NE(0, b.manager.GetInTrackGripPoint(CPoint(100, 50), point));
    EXPECT_EQ(100.25, point.x);
    EXPECT_EQ(8.0, point.y);
    point = CGePoint2d(7, 8);
    EXPECT_NE(0, b.manager.GetInTrackGripPoint(CPoint(50, 199), point));
    EXPECT_EQ(7.0, point.x);
    EXPECT_EQ(100.5, point.y);
    CGePoint2d midpoint(100.25, 100.5);
    EXPECT_NE(0, b.manager.GetInTrackGripPoint(CPoint(100, 199), point));
    EXPECT_TRUE(point == midpoint);
}

TEST(RubberBand, APointCanTakeItsCoordinatesFromTwoGripsAndALaterOneWins) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(100.25, 10));
    b.manager.AddGripPoint(CGePoint2d(10, 200.5));
    b.manager.AddGripPoint(CGePoint2d(100.75, 20));
    CGePoint2d point;
    EXPECT_NE(0, b.manager.GetInTrackGripPoint(CPoint(100, 99), point));
    EXPECT_EQ(100.75, point.x);
    EXPECT_EQ(200.5, point.y);
}

TEST(RubberBand, AssistantLinesRunFromTrackedGripsThroughTheCursorAndGoWithTheBand) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(200, 250)); // Pixel (200, 50).
    b.manager.AddGripPoint(CGePoint2d(50, 100));  // Pixel (50, 200).
    b.manager.AddGripPoint(CGePoint2d(333, 111)); // In neither column nor row of the cursor.
    b.manager.DrawShirrLine(CPoint(10, 10), CPoint(200, 200), 0);
    EXPECT_LT(40, b.DifferentInColumn(200, 60, 300)) << "down to the window's edge";
    EXPECT_LT(60, b.DifferentInRow(200));
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, TheBandItselfIsNotDrawnTwiceAsAnAssistantLine) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(100, 250)); // Pixel (100, 50): where the band begins.
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(150, 50), 0);
    EXPECT_LT(50, b.DifferentInRow(50));
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, AClickEndsTrackingAndLeavesAStandingAssistantLineUntilTheNextPaint) {
    Band b;
    b.view.DoCommand(L"line");
    b.manager.AddGripPoint(CGePoint2d(200, 250));
    b.view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(200, 200));
    const int standing = b.DifferentInColumn(200, 210, 300);
    EXPECT_LT(20, standing);
    b.view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 200));
    EXPECT_EQ(standing, b.DifferentInColumn(200, 210, 300));
    b.view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(260, 260));
    EXPECT_EQ(standing, b.DifferentInColumn(200, 210, 300)) << "forgotten, so no later erasure finds it";
    b.view.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(1, 1));
    b.view.InvalidateRect(nullptr, TRUE);
    b.view.UpdateWindow();
    EXPECT_EQ(0, b.Difference());
}
