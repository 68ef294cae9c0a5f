// The rubber band, tracked grips and assistant lines: shapes, flags, and that inversion leaves no pixels.

#include "CommandOperationManager.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "support/RecordingDC.h"
#include "support/ViewHost.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class OpenManager : public CCommandOperationManager {
public:
    using CCommandOperationManager::CCommandOperationManager;
    using CCommandOperationManager::DrawShirrLine;
    void DrawShirrLine(CPoint p1, CPoint p2, int erasing) override {
        steps += "draw " + std::to_string(p1.x) + "-" + std::to_string(p2.x) + (erasing != 0 ? " again, " : ", ");
        CCommandOperationManager::DrawShirrLine(p1, p2, erasing);
    }
    void ErasShirrLine() override {
        steps += "erase, ";
        CCommandOperationManager::ErasShirrLine();
    }
    std::string steps;
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

// A tool that does nothing by itself.
class PlainTool : public CCommandOperation {
public:
    explicit PlainTool(CVectorView& view)
        : CCommandOperation(&view, nullptr, view.GetVectorViewCoordTran(), view.GetDocument()) {}
    ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
};

// What the whole screen shows.
Picture TakeScreen() {
    CWnd screen;
    screen.Attach(::GetDesktopWindow());
    const Picture picture = TakePicture(screen);
    screen.Detach();
    return picture;
}

const std::string kDottedPen = "SelectObject(pen style=2 width=0 color=0x00FFFFFF)";
const std::string kPenBack = "SelectObject(pen default)";

// A view of 400 by 300 pixels in which drawing (x, y) is on pixel (x, 300 - y), with a line across it.
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

TEST(RubberBand, AnAxisParallelBandHasGapsBetweenItsDots) {
    // 300 pixels from x = 100 to the right edge, 250 from y = 50 down, 100 and 50 to the near edges: between a fifth
    // and four fifths of them differ, so there are dots, and the pixels between them stay as they were.
    Band b;
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(150, 50), 0);
    EXPECT_LT(60, b.DifferentInRow(50));
    EXPECT_GT(240, b.DifferentInRow(50));
    EXPECT_EQ(b.DifferentInRow(50), b.Difference()) << "and nothing beside it";
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(60, 50), 0);
    EXPECT_LT(20, b.DifferentInRow(50));
    EXPECT_GT(80, b.DifferentInRow(50));
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(100, 51), 0);
    EXPECT_LT(50, b.DifferentInColumn(100, 50, 300));
    EXPECT_GT(200, b.DifferentInColumn(100, 50, 300));
    EXPECT_EQ(b.DifferentInColumn(100, 50, 300), b.Difference());
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(100, 49), 0);
    EXPECT_LT(10, b.DifferentInColumn(100, 0, 51));
    EXPECT_GT(40, b.DifferentInColumn(100, 0, 51));
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

TEST(RubberBand, AtMostOneBandIsDrawn) {
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

TEST(RubberBand, ABandFromOutsideTheClientAreaLeavesATrace) {
    // From beyond the left edge leftwards: it ends at x = 0, on no pixel of the window. Taken off from that end, it
    // points to the right, and runs to the other edge.
    Band b;
    b.manager.DrawShirrLine(CPoint(-50, 20), CPoint(-60, 20), 0);
    EXPECT_EQ(CPoint(0, 20), b.manager.m_ShirrEnd);
    EXPECT_EQ(0, b.Difference());
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.manager.m_ShirrDrawn);
    EXPECT_EQ(CPoint(400, 20), b.manager.m_ShirrEnd);
    EXPECT_LT(100, b.DifferentInRow(20));
    EXPECT_EQ(b.DifferentInRow(20), b.Difference());
}

TEST(RubberBand, AToolsBandIsTheManagersAndDropsItsThirdArgument) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(200, 250)); // Pixel (200, 50).
    PlainTool tool(b.view);
    tool.DrawShirrLine(CPoint(10, 10), CPoint(200, 200), 1);
    EXPECT_EQ(CPoint(10, 10), b.manager.m_ShirrStart);
    EXPECT_EQ(1, b.manager.m_ShirrDrawn);
    EXPECT_LT(20, b.DifferentInColumn(200, 210, 300)) << "drawn and not taken off: the assistant line is on the window";
    tool.ErasShirrLine();
    EXPECT_EQ(0, b.manager.m_ShirrDrawn);
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, ABandInDrawingUnitsIsCutToPixelsAndNotRounded) {
    Band b;
    PlainTool tool(b.view);
    tool.DrawShirrLine(CGePoint2d(10.875, 250.125), CGePoint2d(-0.875, 200.0625)); // Rows 49.875 and 99.9375.
    EXPECT_EQ(CPoint(10, 49), b.manager.m_ShirrStart);
    EXPECT_EQ(CPoint(0, 99), b.manager.m_ShirrEnd);
}

TEST(RubberBand, ABandWithoutLengthAfterASlantedOneStaysSolid) {
    Band b;
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(150, 50), 0);
    b.manager.DrawShirrLine(CPoint(10, 10), CPoint(110, 60), 0);
    b.manager.DrawShirrLine(CPoint(70, 70), CPoint(70, 70), 0);
    EXPECT_EQ(PS_SOLID, b.manager.m_ShirrPenStyle);
    EXPECT_EQ(CPoint(70, 70), b.manager.m_ShirrEnd);
    EXPECT_EQ(1, b.manager.m_ShirrDrawn);
}

TEST(RubberBand, ABandIsTakenOffByDrawingItAgain) {
    Band b;
    b.manager.DrawShirrLine(CPoint(10, 10), CPoint(110, 60), 0);
    EXPECT_EQ("draw 10-110, erase, ", b.manager.steps);
    b.manager.steps.clear();
    b.manager.DrawShirrLine(CPoint(20, 20), CPoint(120, 70), 0);
    EXPECT_EQ("draw 20-120, erase, draw 10-110 again, erase, ", b.manager.steps);
    b.manager.steps.clear();
    b.manager.ErasShirrLine();
    EXPECT_EQ("erase, draw 20-120 again, erase, ", b.manager.steps);
    b.manager.steps.clear();
    b.manager.ErasShirrLine();
    EXPECT_EQ("erase, ", b.manager.steps);
}

TEST(RubberBand, BeforeARepaintTheBandIsForgottenAndNotInverted) {
    Band b;
    b.manager.DrawShirrLine(CPoint(10, 10), CPoint(110, 60), 0);
    b.manager.PreRedraw();
    EXPECT_EQ(0, b.manager.m_ShirrDrawn);
    EXPECT_EQ(100, b.Difference());
    b.manager.ErasShirrLine();
    EXPECT_EQ(100, b.Difference());
}

TEST(RubberBand, BeforeARepaintTheBandIsForgottenBeforeTheRunningToolTakesItsOwnOff) {
    // The tool erases its band then; forgotten by that time, it stays on the window until the paint wipes it.
    Band b;
    b.view.DoCommand(L"line");
    b.view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 10));
    b.view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(110, 60));
    ASSERT_EQ(1, b.manager.m_ShirrDrawn);
    ASSERT_EQ(100, b.Difference());
    b.manager.PreRedraw();
    EXPECT_EQ(0, b.manager.m_ShirrDrawn);
    EXPECT_EQ(100, b.Difference());
    b.manager.Cancel();
}

TEST(RubberBand, AViewWithoutAWindowDrawsOnNoScreenAndRepaintsNoOtherWindow) {
    Band shown;
    CVectorView bare;
    auto& manager = *static_cast<CCommandOperationManager*>(bare.GetCommandOperationManager());
    bare.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    CDrawable* line = bare.AddLine(CGePoint2d(0, 300), CGePoint2d(400, 0), Gdiplus::Color(255, 1, 2, 3), 1);
    PumpMessages();
    ::ValidateRect(shown.view.m_hWnd, nullptr);
    const Picture before = TakeScreen();
    ASSERT_LT(0, before.width);
    for (LPCTSTR word : {L"line", L"rect", L"circle", L"arc", L"pline", L"DrawLabel", L"offset", L"copy"}) {
        bare.GetDocument()->AddSelected(line);
        bare.DoCommand(word);
        manager.OnMouseMove(0, CGePoint2d(1, 1));
        for (const CGePoint2d& pixel : {CGePoint2d(150, 130), CGePoint2d(300, 250), CGePoint2d(170, 260)}) {
            manager.OnLButtonDown(0, pixel);
            manager.OnMouseMove(0, CGePoint2d(320, 120)); // Over the selected line's grips, too.
            manager.OnMouseMove(0, CGePoint2d(399, 299));
            manager.OnMouseMove(MK_MBUTTON, CGePoint2d(250, 150));
        }
        manager.OnRButtonDown(0, CGePoint2d(1, 1));
        manager.Cancel();
    }
    manager.OnKeyDown('A', 1, 0);
    bare.ZoomAll();
    EXPECT_EQ(0, before.Difference(TakeScreen()));
    EXPECT_FALSE(::GetUpdateRect(shown.view.m_hWnd, nullptr, FALSE));
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

TEST(RubberBand, AGripOnThePixelItselfIsTakenWholeAndEndsTheSearch) {
    // All on pixel column 100 or row 199 (300 - 100.5 = 199.5, 300 - 100.75 = 199.25, cut).
    CGePoint2d exact(100.25, 100.5);
    exact.type = 8;
    Band b;
    b.manager.AddGripPoint(CGePoint2d(100.125, 30));
    b.manager.AddGripPoint(CGePoint2d(40, 100.75));
    b.manager.AddGripPoint(exact);
    b.manager.AddGripPoint(CGePoint2d(100.75, 20));
    b.manager.AddGripPoint(CGePoint2d(10, 100.625));
    b.manager.AddGripPoint(CGePoint2d(100.875, 100.875));
    CGePoint2d point(7, 8);
    EXPECT_EQ(1, b.manager.GetInTrackGripPoint(CPoint(100, 199), point));
    EXPECT_EQ(100.25, point.x);
    EXPECT_EQ(100.5, point.y);
    EXPECT_EQ(8, point.type) << "the kind as well";
}

TEST(RubberBand, AssistantLinesRunFromTrackedGripsThroughTheCursorAndAreErasedWithTheBand) {
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

TEST(RubberBand, AssistantLinesGoThroughTheCursorAndNotThroughTheBandsFarEnd) {
    // The band runs on to (400, 50); the grip is below the cursor at (150, 50), and its line runs up to the edge.
    Band b;
    b.manager.AddGripPoint(CGePoint2d(150, 50)); // Pixel (150, 250).
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(150, 50), 0);
    ASSERT_EQ(CPoint(400, 50), b.manager.m_ShirrEnd);
    EXPECT_LT(40, b.DifferentInColumn(150, 60, 250));
    EXPECT_LT(5, b.DifferentInColumn(150, 0, 45));
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, ACursorOnATrackedGripItselfHasAVerticalLineDownFromIt) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(200, 250)); // Pixel (200, 50).
    b.manager.DrawShirrLine(CPoint(10, 10), CPoint(200, 50), 0);
    EXPECT_LT(40, b.DifferentInColumn(200, 60, 300));
    EXPECT_EQ(0, b.DifferentInColumn(200, 0, 49));
    EXPECT_EQ(0, b.DifferentInColumn(300, 40, 60)) << "and no level one";
}

TEST(RubberBand, AssistantLinesShareOnePenWhenDrawnAndHaveOneEachWhenTakenOff) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(200, 250)); // Pixel (200, 50).
    b.manager.AddGripPoint(CGePoint2d(50, 100));  // Pixel (50, 200).
    b.manager.AddGripPoint(CGePoint2d(333, 111)); // In neither column nor row of the cursor.
    RecordingDC dc;
    b.manager.DrawAssistantLine(&dc, CPoint(200, 200));
    EXPECT_EQ(1, b.manager.m_ShirrDrawn);
    EXPECT_TRUE(SameCalls(
        {kDottedPen, "MoveTo(200,50)", "LineTo(200,300)", "MoveTo(50,200)", "LineTo(400,200)", kPenBack}, dc.Calls()));
    dc.Clear();
    b.manager.ErasDrawAssistantLine(&dc);
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", kDottedPen, "MoveTo(200,50)", "LineTo(200,300)", kPenBack, kDottedPen,
                           "MoveTo(50,200)", "LineTo(400,200)", kPenBack},
                          dc.Calls()));
    dc.Clear();
    b.manager.ErasDrawAssistantLine(&dc);
    EXPECT_TRUE(SameCalls({"SetBkMode(1)"}, dc.Calls())) << "forgotten once taken off";
}

TEST(RubberBand, WithoutAnAssistantLineNoPenIsMade) {
    Band b;
    RecordingDC dc;
    b.manager.DrawAssistantLine(&dc, CPoint(200, 200));
    EXPECT_TRUE(SameCalls({}, dc.Calls()));
    EXPECT_EQ(1, b.manager.m_ShirrDrawn);
}

TEST(RubberBand, AssistantLinesRunUpOrLeftWhereTheGripLiesBeyondTheCursor) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(200, 50));  // Pixel (200, 250), below the cursor.
    b.manager.AddGripPoint(CGePoint2d(350, 100)); // Pixel (350, 200), right of it.
    RecordingDC dc;
    b.manager.DrawAssistantLine(&dc, CPoint(200, 200));
    EXPECT_TRUE(SameCalls(
        {kDottedPen, "MoveTo(200,250)", "LineTo(200,0)", "MoveTo(350,200)", "LineTo(0,200)", kPenBack}, dc.Calls()));
}

TEST(RubberBand, InstallingAToolForgetsTrackedGripsAndACapturedOneKeepsThem) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(200, 250));
    auto* captured = new PlainTool(b.view);
    KX_ADD_MEMORY(captured);
    b.manager.CheckResultState(captured, CCommandOperation::RS_Capture);
    CGePoint2d point;
    EXPECT_EQ(1, b.manager.GetInTrackGripPoint(CPoint(200, 9), point));
    auto* installed = new PlainTool(b.view);
    KX_ADD_MEMORY(installed);
    b.manager.SetCommand(installed, 1);
    EXPECT_EQ(0, b.manager.GetInTrackGripPoint(CPoint(200, 9), point));
    b.manager.Cancel();
}

TEST(RubberBand, TheBandItselfIsNotDrawnTwiceAsAnAssistantLine) {
    Band b;
    b.manager.AddGripPoint(CGePoint2d(100, 250)); // Pixel (100, 50): where the band begins.
    b.manager.DrawShirrLine(CPoint(100, 50), CPoint(150, 50), 0);
    EXPECT_LT(50, b.DifferentInRow(50));
    b.manager.ErasShirrLine();
    EXPECT_EQ(0, b.Difference());
}

TEST(RubberBand, AClickEndsTrackingAndLeavesTheAssistantLineUntilTheNextPaint) {
    Band b;
    b.view.DoCommand(L"line");
    b.manager.AddGripPoint(CGePoint2d(200, 250));
    b.view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(200, 200));
    const int drawn = b.DifferentInColumn(200, 210, 300);
    EXPECT_LT(20, drawn);
    b.view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 200));
    EXPECT_EQ(drawn, b.DifferentInColumn(200, 210, 300));
    b.view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(260, 260));
    EXPECT_EQ(drawn, b.DifferentInColumn(200, 210, 300)) << "forgotten, so no later erasure finds it";
    b.view.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(1, 1));
    b.view.InvalidateRect(nullptr, TRUE);
    b.view.UpdateWindow();
    EXPECT_EQ(0, b.Difference());
}
