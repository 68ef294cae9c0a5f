// The base of the tools: snap search, marker, edit box, cursor, and what it answers by itself.

#include "Arc.h"
#include "CommandOperation.h"
#include "CommandOperationManager.h"
#include "GripReach.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "Text.h"
#include "support/EdgeNumbers.h"
#include "support/ViewHost.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <memory>

namespace {

class Tool : public CCommandOperation {
public:
    explicit Tool(ViewHost& host) : CCommandOperation(&host.view, nullptr, &host.Tran(), &host.Document()) {}
    Tool(ViewHost& host, CVectorGraphic* graphic)
        : CCommandOperation(&host.view, graphic, &host.Tran(), &host.Document()) {}

    ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    void Cancel() override { ++cancels; }
    int OnGetGripPoint(CDrawable* object, int index, CGePoint2d point) override {
        asked.push_back(index);
        return veto == index ? 0 : CCommandOperation::OnGetGripPoint(object, index, point);
    }

    using CCommandOperation::IsWithin;
    using CCommandOperation::m_Edit;
    using CCommandOperation::m_hCursor;
    using CCommandOperation::m_InEdit;
    using CCommandOperation::m_LastPoint;
    using CCommandOperation::m_OsnapMode;
    using CCommandOperation::m_SnapEnabled;
    using CCommandOperation::m_SnapMark;
    using CCommandOperation::m_SnapMarkDrawn;
    using CCommandOperation::m_Step;
    using CCommandOperation::OrthoStep;
    using CCommandOperation::PlaceEditBox;
    using CCommandOperation::TypedDistance;

    int cancels = 0;
    int veto = -1;
    std::vector<int> asked;
};

// Its own painter is private to a view, so the marker's tests look through this door.
class OpenView : public CVectorView {
public:
    CVectorGraphic* Graphic() { return &m_Graphic; }
};

CLine* AddLine(ViewHost& host, double x1, double y1, double x2, double y2) {
    return static_cast<CLine*>(
        host.view.AddLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), Gdiplus::Color(255, 255, 255, 255), 1));
}

} // namespace

// ---- Snap search ---------------------------------------------------------------------------------------------------

TEST(CommandOperation, ADrawingWithoutObjectsHasNoSnap) {
    ViewHost host;
    Tool tool(host);
    CGePoint2d hit(9, 9);
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(0, 0), hit));
    EXPECT_EQ(9.0, hit.x);
}

TEST(CommandOperation, TheEdgeOfTheSquareApertureIsAHit) {
    ViewHost host;
    AddLine(host, 100, 100, 300, 100);
    Tool tool(host);
    tool.SetOsnapMode(7);
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(107, 107), hit)) << "a square, not a circle";
    EXPECT_TRUE(hit == CGePoint2d(100, 100));
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(93, 93), hit));
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(107.001, 100), hit));
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(100, 92.999), hit));
}

TEST(CommandOperation, TheApertureIsSevenPixelsCutToWholeUnits) {
    ViewHost host;
    AddLine(host, 100, 100, 300, 100);
    Tool tool(host);
    tool.SetOsnapMode(7);
    CGePoint2d hit;
    host.Tran().SetScale(0.5f); // 3.5 units: 3.
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(103, 100), hit));
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(103.4, 100), hit));
    host.Tran().SetScale(0.125f); // 0.875 units: 0, and only an exact hit counts.
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(100.1, 100), hit));
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(100, 100), hit));
}

TEST(CommandOperation, TheFirstCandidateInListOrderWinsAndNotTheNearest) {
    ViewHost host;
    AddLine(host, 106, 100, 300, 300);
    AddLine(host, 100, 100, 300, 400);
    Tool tool(host);
    tool.SetOsnapMode(7);
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(100, 100), hit));
    EXPECT_EQ(106.0, hit.x);
}

TEST(CommandOperation, NetObjectsAreSearchedLastAndHiddenOnesToo) {
    ViewHost host;
    auto* net = new CLine;
    net->SetStartPoint(CGePoint2d(101, 100));
    net->SetEndPoint(CGePoint2d(900, 900));
    host.Document().AddNetobject(net);
    Tool tool(host);
    tool.SetOsnapMode(7);
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(100, 100), hit));
    EXPECT_EQ(101.0, hit.x);
    AddLine(host, 105, 100, 300, 300)->SetIsShow(0);
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(100, 100), hit));
    EXPECT_EQ(105.0, hit.x) << "hidden, and snapped to all the same";
}

TEST(CommandOperation, ThePerpendicularFootComesAfterTheObjectsOwnGrips) {
    ViewHost host;
    AddLine(host, 0, 0, 100, 0);
    Tool tool(host);
    tool.m_LastPoint = CGePoint2d(20, 50);
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(20, 3), hit));
    EXPECT_EQ(8, hit.type);
    EXPECT_DOUBLE_EQ(20.0, hit.x);
    EXPECT_EQ((std::vector<int>{3}), tool.asked) << "counted as one past the three grips";
    tool.SetOsnapMode(7);
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(20, 3), hit)) << "without bit 8 nothing is dropped";
}

TEST(CommandOperation, AToolThatAcceptedNoPointDropsPerpendicularsFromTheOrigin) {
    ViewHost host;
    AddLine(host, 50, 200, 150, 200);
    Tool tool(host);
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(2, 198), hit));
    EXPECT_EQ(8, hit.type);
    EXPECT_DOUBLE_EQ(0.0, hit.x);
    EXPECT_DOUBLE_EQ(200.0, hit.y);
}

TEST(CommandOperation, AVetoLetsTheSearchGoOn) {
    ViewHost host;
    AddLine(host, 100, 100, 100, 104);
    Tool tool(host);
    tool.SetOsnapMode(7);
    tool.veto = 0;
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(100, 100), hit));
    EXPECT_EQ(102.0, hit.y);
    EXPECT_EQ((std::vector<int>{0, 1}), tool.asked);
}

TEST(CommandOperation, NoGripOfARoundKindOrATextIsPassedOverForAnyNumbers) {
    EdgeNumbers random(21);
    CVectorViewCoordTran fromAfar; // The texts are below a pixel there, so that none is measured with a font.
    fromAfar.SetScale(1e30f);
    int within = 0;
    int passedOver = 0;
    for (int i = 0; i < 300000; ++i) {
        const int rarity = i % 2 == 0 ? 4 : 1000000;
        CArc arc;
        CCircle circle;
        CText text;
        CDrawable* object = &text;
        if (const int kind = random.Below(3); kind == 0) {
            object = &circle;
            circle.SetCenter(CGePoint2d(random.Coordinate(rarity), random.Coordinate(rarity)));
            circle.setRadius(random.Coordinate(rarity));
        } else if (kind == 1) {
            object = &arc;
            arc.SetCenter(CGePoint2d(random.Coordinate(rarity), random.Coordinate(rarity)));
            arc.setRadius(random.Coordinate(rarity));
            arc.SetStartAngle(random.Coordinate(rarity));
            arc.SetEndAngle(random.Coordinate(rarity));
        } else {
            text.SetPos(CGePoint2d(random.Coordinate(rarity), random.Coordinate(rarity)));
            text.SetTextWide(static_cast<float>(random.Coordinate(rarity)));
            text.SetTextHeight(static_cast<float>(random.Coordinate(rarity)));
            text.SetAngle(static_cast<float>(random.Coordinate(rarity)));
            CGePoint2d min;
            CGePoint2d max;
            text.GetRect(&fromAfar, min, max);
        }
        const int apertures[] = {7, 0, 1, -3, 100, 1000000, INT_MAX, INT_MIN};
        const int aperture = apertures[i % 3 == 0 ? random.Below(8) : 0];
        CGePointArray grips;
        object->getGripPoints(grips, 15);
        ASSERT_EQ(object == &circle ? 5 : 4, grips.GetSize());
        // On a grip, on the edge of its square, or anywhere.
        CGePoint2d point(random.Coordinate(rarity), random.Coordinate(rarity));
        if (const int grip = random.Below(6); grip < 4) {
            point = grips[grip];
            point.x += random.Below(2) == 0 ? aperture : 0.0;
            point.y -= random.Below(2) == 0 ? aperture : 0.0;
        }
        bool isWithin = false;
        for (INT_PTR k = 0; k < grips.GetSize(); ++k) {
            isWithin = isWithin || Tool::IsWithin(grips[k], point, aperture);
        }
        const bool isFar = AreGripsFar(object, point, aperture);
        ASSERT_FALSE(isWithin && isFar) << i << ": " << point.x << ", " << point.y << ", aperture " << aperture;
        within += isWithin ? 1 : 0;
        passedOver += isFar ? 1 : 0;
    }
    EXPECT_GT(within, 30000);
    EXPECT_GT(passedOver, 10000);
}

TEST(CommandOperation, NoLineThatAClickHitsIsPassedOverForAnyNumbers) {
    EdgeNumbers random(23);
    int hits = 0;
    int passedOver = 0;
    for (int i = 0; i < 300000; ++i) {
        const int rarity = i % 2 == 0 ? 4 : 1000000;
        CLine line;
        const CGePoint2d start(random.Coordinate(rarity), random.Coordinate(rarity));
        CGePoint2d end(random.Coordinate(rarity), random.Coordinate(rarity));
        if (const int way = random.Below(4); way < 2) { // Along an axis.
            (way == 0 ? end.x : end.y) = way == 0 ? start.x : start.y;
        }
        line.SetStartPoint(start);
        line.SetEndPoint(end);
        const float scales[] = {1.0f, 0.25f, 3.0f, 1e-30f, 1e-44f, 1e30f};
        CVectorViewCoordTran tran;
        tran.SetScale(scales[i % 3 == 0 ? random.Below(6) : 0]);
        const double reach = 4.0 * static_cast<double>(tran.GetScale());
        // Around the edge of what is hit beside an end, or anywhere.
        CGePoint2d point(random.Coordinate(rarity), random.Coordinate(rarity));
        if (const int place = random.Below(6); place < 4) {
            const double shifts[] = {0.0, 0.9, 0.9999999, 1.0, 1.0000001, 1.01};
            point = place < 2 ? start : end;
            (place % 2 == 0 ? point.x : point.y) += (random.Below(2) == 0 ? reach : -reach) * shifts[random.Below(6)];
        }
        const bool isHit = tran.DToL(static_cast<double>(line.HitTest(point))) <= 4.0f;
        const bool isFar = IsLineFar(&line, point, reach);
        ASSERT_FALSE(isHit && isFar) << i << ": " << point.x << ", " << point.y << ", scale " << tran.GetScale();
        hits += isHit ? 1 : 0;
        passedOver += isFar ? 1 : 0;
    }
    EXPECT_GT(hits, 30000);
    EXPECT_GT(passedOver, 10000);
}

TEST(CommandOperation, OnlyAShownLineOfTheLibraryIsPassedOver) {
    class Marked : public CLine {};
    const CGePoint2d away(1000, 1000);
    CLine line;
    line.SetEndPoint(CGePoint2d(10, 10));
    EXPECT_TRUE(IsLineFar(&line, away, 4.0));
    line.SetIsShow(0); // Its hit test gives 100 everywhere.
    EXPECT_FALSE(IsLineFar(&line, away, 4.0));
    Marked marked;
    marked.SetEndPoint(CGePoint2d(10, 10));
    EXPECT_FALSE(IsLineFar(&marked, away, 4.0));
    CArc arc;
    EXPECT_FALSE(IsLineFar(&arc, away, 4.0));
}

TEST(CommandOperation, AHostsKindOfArcSnapsByItsOwnGrips) {
    class Marked : public CArc {
    public:
        void getGripPoints(CGePointArray& out, int) override {
            CGePoint2d mark(400, 400);
            out.Add(mark);
        }
    };
    ViewHost host;
    auto* arc = new Marked;
    arc->SetCenter(CGePoint2d(10, 10));
    arc->setRadius(5);
    host.Document().AddDrawAobject(arc);
    Tool tool(host);
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(401, 399), hit));
    EXPECT_TRUE(hit == CGePoint2d(400, 400));
}

// The arc's ends are (20, 10) and (10, 20), its middle 10 * cos(45 degrees) from the centre.
TEST(CommandOperation, TheGripsOfAnArcAreFoundUpToTheEdgeOfTheAperture) {
    ViewHost host;
    auto* arc = new CArc(Gdiplus::PointF(10, 10), 10.0f, 0.0f, 1.5707963f);
    host.Document().AddDrawAobject(arc);
    Tool tool(host);
    tool.SetOsnapMode(7);
    CGePoint2d hit;
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(27, 10), hit));
    EXPECT_EQ((std::vector<int>{1}), tool.asked);
    EXPECT_NE(0, tool.GetGripPoint(CGePoint2d(10, 26.999), hit));
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(27.001, 10), hit));
}

TEST(CommandOperation, SwitchedOffTheSnapFindsNothing) {
    ViewHost host;
    AddLine(host, 100, 100, 300, 100);
    Tool tool(host);
    tool.m_SnapEnabled = 0;
    CGePoint2d hit;
    EXPECT_EQ(0, tool.GetGripPoint(CGePoint2d(100, 100), hit));
    EXPECT_EQ(CCommandOperation::RS_Cancelled, tool.OnMouseMove(0, CGePoint2d(100, 100)));
}

TEST(CommandOperation, APointInPixelsIsSearchedByTheBaseRuleAndAnsweredInWholePixels) {
    class OwnSearch : public Tool {
    public:
        using Tool::Tool;
        int GetGripPoint(CGePoint2d, CGePoint2d&) override { return 0; }
    };
    ViewHost host;
    AddLine(host, 100.75, 100.25, 300, 100);
    OwnSearch tool(host);
    tool.SetOsnapMode(7);
    CGePoint2d hit;
    ASSERT_NE(0, tool.GetGripPointForL(CGePoint2d(102, 199), hit));
    EXPECT_EQ(100.0, hit.x);
    EXPECT_EQ(199.0, hit.y); // 300 - 100.25 = 199.75, truncated.
    EXPECT_EQ(0, tool.GetGripPointForL(CGePoint2d(120, 199), hit));
}

TEST(CommandOperation, APointInPixelsIsSearchedAtEveryScaleAndKeepsTheKindOfTheGrip) {
    ViewHost host;
    AddLine(host, 0, 0, 100, 0);
    Tool tool(host);
    tool.m_LastPoint = CGePoint2d(20, 50);
    host.Tran().SetScale(0.5f);
    host.Tran().SetOriginY(-10.0);
    // The foot (20, 0) is pixel (40, 300 - 20); three units are six pixels.
    CGePoint2d hit;
    ASSERT_NE(0, tool.GetGripPointForL(CGePoint2d(46, 274), hit));
    EXPECT_EQ(40.0, hit.x);
    EXPECT_EQ(280.0, hit.y);
    EXPECT_EQ(8, hit.type);
    EXPECT_EQ(0, tool.GetGripPointForL(CGePoint2d(47, 274), hit));
}

// ---- Marker --------------------------------------------------------------------------------------------------------

namespace {

struct MarkerHost {
    MarkerHost() {
        view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
        ShowView(view, parent);
        view.AddLine(CGePoint2d(100, 100), CGePoint2d(300, 100), Gdiplus::Color(255, 255, 255, 255), 1);
        view.InvalidateRect(nullptr, TRUE);
        view.UpdateWindow();
        fresh = TakePicture(view);
    }
    ParentWindow parent;
    OpenView view;
    Picture fresh;
};

class MarkerTool : public CCommandOperation {
public:
    explicit MarkerTool(MarkerHost& host) : MarkerTool(host, host.view.Graphic()) {}
    MarkerTool(MarkerHost& host, CVectorGraphic* graphic)
        : CCommandOperation(&host.view, graphic, host.view.GetVectorViewCoordTran(), host.view.GetDocument()) {
        m_OsnapMode = 7;
    }
    ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    using CCommandOperation::m_LastPoint;
    using CCommandOperation::m_SnapEnabled;
    using CCommandOperation::m_SnapMark;
    using CCommandOperation::m_SnapMarkDrawn;
};

} // namespace

TEST(CommandOperation, TheMarkersShapeTellsTheKindOfTheSnapPoint) {
    // Offsets from the marker's pixel. An end: a square of 7 to each side. A midpoint: a triangle with its base 5
    // below, 7 to each side. A foot: a square of 4 to each side, with ticks up from its upper left corner and right
    // from its lower right one. The pen is two pixels wide, so the points that count as off are well inside or outside.
    const struct {
        CGePoint2d mouse;
        CPoint pixel;
        int type;
        CPoint on;
        CPoint off;
    } rows[] = {
        {CGePoint2d(102, 99), CPoint(100, 200), 1, CPoint(-7, 3), CPoint(0, 4)},
        {CGePoint2d(148, 201), CPoint(150, 100), 4, CPoint(0, 5), CPoint(-7, 0)},
        {CGePoint2d(152, 99), CPoint(150, 200), 8, CPoint(-4, -6), CPoint(-7, 0)},
    };
    MarkerHost host;
    CGePointArray points; // Its middle is (150, 200); a plain line's is an ordinary point.
    CBulgeArray bulges;
    for (double x : {50.0, 250.0}) {
        CGePoint2d point(x, 200);
        double straight = 0;
        points.Add(point);
        bulges.Add(straight);
    }
    ASSERT_NE(nullptr, host.view.AddPLine(points, bulges, Gdiplus::Color(255, 255, 255, 255), 0, 1, 1));
    host.view.InvalidateRect(nullptr, TRUE);
    host.view.UpdateWindow();
    host.fresh = TakePicture(host.view);
    MarkerTool tool(host);
    tool.SetOsnapMode(15);
    tool.m_LastPoint = CGePoint2d(150, 250); // Its foot on the line is (150, 100).
    for (const auto& row : rows) {
        ASSERT_EQ(CCommandOperation::RS_Continue, tool.OnMouseMove(0, row.mouse)) << row.type;
        ASSERT_EQ(row.type, tool.m_SnapMark.type);
        const Picture marked = TakePicture(host.view);
        const auto differs = [&](CPoint offset) {
            const CPoint at = row.pixel + offset;
            return marked.At(at.x, at.y) != host.fresh.At(at.x, at.y);
        };
        EXPECT_TRUE(differs(row.on)) << row.type;
        EXPECT_FALSE(differs(row.off)) << row.type;
    }
    EXPECT_EQ(CCommandOperation::RS_Cancelled, tool.OnMouseMove(0, CGePoint2d(0, 0)));
    EXPECT_TRUE(host.fresh == TakePicture(host.view)) << "each taken off in its own shape";
}

TEST(CommandOperation, TheMarkerIsDrawnMovedAndErasedWithoutATrace) {
    MarkerHost host;
    MarkerTool tool(host);
    EXPECT_EQ(CCommandOperation::RS_Cancelled, tool.OnMouseMove(0, CGePoint2d(50, 50)));
    EXPECT_EQ(0, tool.m_SnapMarkDrawn);
    EXPECT_TRUE(host.fresh == TakePicture(host.view));
    EXPECT_EQ(CCommandOperation::RS_Continue, tool.OnMouseMove(0, CGePoint2d(102, 99)));
    EXPECT_EQ(1, tool.m_SnapMarkDrawn);
    EXPECT_TRUE(tool.m_SnapMark == CGePoint2d(100, 100));
    const Picture first = TakePicture(host.view);
    EXPECT_LT(50, host.fresh.Difference(first));
    EXPECT_EQ(CCommandOperation::RS_Continue, tool.OnMouseMove(0, CGePoint2d(299, 100)));
    const Picture second = TakePicture(host.view);
    EXPECT_LT(50, host.fresh.Difference(second));
    EXPECT_LT(50, first.Difference(second));
    EXPECT_EQ(CCommandOperation::RS_Cancelled, tool.OnMouseMove(0, CGePoint2d(0, 0)));
    EXPECT_EQ(0, tool.m_SnapMarkDrawn);
    EXPECT_TRUE(host.fresh == TakePicture(host.view));
}

TEST(CommandOperation, AToolWithoutAPainterFindsTheSnapPointAndShowsNoMarker) {
    MarkerHost host;
    MarkerTool tool(host, nullptr);
    EXPECT_EQ(CCommandOperation::RS_Continue, tool.OnMouseMove(0, CGePoint2d(102, 99)));
    EXPECT_TRUE(tool.m_SnapMark == CGePoint2d(100, 100));
    EXPECT_TRUE(host.fresh == TakePicture(host.view));
}

TEST(CommandOperation, RefreshTakesTheMarkerOffOnce) {
    MarkerHost host;
    MarkerTool tool(host);
    EXPECT_EQ(0, tool.RefreshGrip());
    tool.OnMouseMove(0, CGePoint2d(100, 100));
    tool.m_SnapEnabled = 0;
    EXPECT_EQ(0, tool.RefreshGrip());
    tool.m_SnapEnabled = 1;
    EXPECT_EQ(1, tool.RefreshGrip());
    EXPECT_EQ(0, tool.RefreshGrip());
    EXPECT_TRUE(host.fresh == TakePicture(host.view));
}

TEST(CommandOperation, ARepaintUnderADrawnMarkerLeavesAnExtraOneAtTheNextMove) {
    MarkerHost host;
    MarkerTool tool(host);
    tool.OnMouseMove(0, CGePoint2d(100, 100));
    host.view.InvalidateRect(nullptr, TRUE);
    host.view.UpdateWindow();
    EXPECT_TRUE(host.fresh == TakePicture(host.view));
    tool.OnMouseMove(0, CGePoint2d(0, 0));
    EXPECT_LT(50, host.fresh.Difference(TakePicture(host.view)));
}

TEST(CommandOperation, ADrawingWithoutObjectsHasNoMarker) {
    ParentWindow parent;
    OpenView view;
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    ShowView(view, parent);
    MarkerHost other;
    const Picture fresh = TakePicture(view);
    class OfView : public MarkerTool {
    public:
        OfView(MarkerHost& host, OpenView& v) : MarkerTool(host) {
            m_pWnd = &v;
            m_pGraphic = v.Graphic();
            m_pDocument = v.GetDocument();
            m_OsnapMode = kOsnapAll;
        }
    } tool(other, view);
    for (const CGePoint2d& point : {CGePoint2d(0, 0), CGePoint2d(100, 100), CGePoint2d(200, 150)}) {
        EXPECT_EQ(CCommandOperation::RS_Cancelled, tool.OnMouseMove(0, point));
        EXPECT_EQ(0, tool.m_SnapMarkDrawn);
    }
    EXPECT_EQ(0, fresh.Difference(TakePicture(view)));
}

// ---- The base by itself --------------------------------------------------------------------------------------------

TEST(CommandOperation, ANewToolHasItsInitialValuesAndAHiddenEditBox) {
    ViewHost host;
    Tool tool(host);
    EXPECT_EQ(15, tool.m_OsnapMode);
    EXPECT_EQ(1, tool.m_SnapEnabled);
    EXPECT_EQ(0, tool.m_SnapMarkDrawn);
    EXPECT_EQ(0, tool.m_InEdit);
    EXPECT_EQ(0, tool.m_Step);
    EXPECT_EQ(0.0, tool.m_LastPoint.x + tool.m_LastPoint.y);
    EXPECT_EQ(0, tool.GetHasCommand());
    ASSERT_NE(nullptr, tool.m_Edit.m_hWnd);
    EXPECT_FALSE(::IsWindowVisible(tool.m_Edit.m_hWnd));
    EXPECT_EQ(host.view.m_hWnd, ::GetParent(tool.m_Edit.m_hWnd));
    EXPECT_EQ(1, ::GetDlgCtrlID(tool.m_Edit.m_hWnd));
    EXPECT_EQ(0x40000180u, static_cast<DWORD>(::GetWindowLongPtr(tool.m_Edit.m_hWnd, GWL_STYLE)) & 0xF000FFFFu);
    CRect rect;
    tool.m_Edit.GetWindowRect(&rect);
    EXPECT_EQ(CSize(40, 20), rect.Size());
}

TEST(CommandOperation, TheEditBoxIsDestroyedWithItsTool) {
    ViewHost host;
    HWND edit = nullptr;
    {
        Tool tool(host);
        edit = tool.m_Edit.m_hWnd;
    }
    EXPECT_FALSE(::IsWindow(edit));
}

TEST(CommandOperation, WithoutAWindowThereIsNoEditBoxAndNothingFails) {
    CVectorView view;
    class Bare : public CCommandOperation {
    public:
        explicit Bare(CVectorView& v) : CCommandOperation(&v, nullptr, v.GetVectorViewCoordTran(), v.GetDocument()) {}
        ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
        ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
        ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
        ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
        using CCommandOperation::m_Edit;
        using CCommandOperation::RequestRedraw;
        using CCommandOperation::TypedDistance;
    } tool(view);
    EXPECT_EQ(nullptr, tool.m_Edit.m_hWnd);
    EXPECT_EQ(0, tool.TypedDistance());
    tool.RequestRedraw();
}

TEST(CommandOperation, TheBaseAnswersWhatNoToolHandles) {
    ViewHost host;
    Tool tool(host);
    EXPECT_EQ(CCommandOperation::RS_NotHandled, tool.OnKeyDown('A', 1, 0));
    EXPECT_EQ(CCommandOperation::RS_Cancelled, tool.OnCancel());
    EXPECT_EQ(1, tool.cancels);
    EXPECT_EQ(0, static_cast<int>(tool.OnMouseMoveForL(0, CPoint(1, 1))));
    EXPECT_EQ(0, static_cast<int>(tool.OnButtonDownForL(0, CPoint(1, 1))));
    EXPECT_EQ(0, static_cast<int>(tool.OnLButtonDblClk(0, CPoint(1, 1))));
    tool.SetInEdit(7);
    EXPECT_EQ(7, tool.m_InEdit);
}

TEST(CommandOperation, ACursorIsSetWhenThereIsOne) {
    ViewHost host;
    Tool tool(host);
    ASSERT_NE(nullptr, tool.m_hCursor);
    EXPECT_EQ(1, static_cast<int>(tool.OnSetCursor(&host.view, HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_EQ(tool.m_hCursor, ::GetCursor());
    HCURSOR kept = tool.m_hCursor;
    tool.m_hCursor = nullptr;
    EXPECT_EQ(0, static_cast<int>(tool.OnSetCursor(&host.view, HTCLIENT, WM_MOUSEMOVE)));
    tool.m_hCursor = kept;
}

TEST(CommandOperation, TheOrthoStepComparesWholeUnitsAndATieIsLevel) {
    const struct {
        CGePoint2d point;
        CGePoint2d expected;
    } rows[] = {
        {CGePoint2d(10, 3), CGePoint2d(10, 0)},     {CGePoint2d(-3, 10), CGePoint2d(0, 10)},
        {CGePoint2d(5.1, 5.9), CGePoint2d(5.1, 0)}, // 5 and 5.
        {CGePoint2d(0.2, 0.9), CGePoint2d(0.2, 0)}, // 0 and 0.
        {CGePoint2d(4.9, -5.0), CGePoint2d(0, -5)},
    };
    for (const auto& row : rows) {
        CGePoint2d point = row.point;
        Tool::OrthoStep(CGePoint2d(0, 0), point);
        EXPECT_TRUE(point == row.expected) << row.point.x << "," << row.point.y;
    }
}

TEST(CommandOperation, TheEditBoxIsThirtyPixelsBesideTheBandAndHoldsTheWholeLength) {
    ViewHost host;
    Tool tool(host);
    host.view.SetFocus();
    // From (100, 100) to (200, 100): the middle is (150, 100), the left side is up: (150, 130), pixel (150, 170).
    tool.PlaceEditBox(CGePoint2d(100, 100), CGePoint2d(200, 100), CGeVector2d(100, 0));
    CRect rect;
    tool.m_Edit.GetWindowRect(&rect);
    host.view.ScreenToClient(&rect);
    EXPECT_EQ(CRect(130, 160, 170, 180), rect);
    CString text;
    tool.m_Edit.GetWindowText(text);
    EXPECT_EQ(CString(L"100"), text);
    EXPECT_EQ(tool.m_Edit.m_hWnd, ::GetFocus());
    EXPECT_EQ(MAKELONG(0, 3), tool.m_Edit.SendMessage(EM_GETSEL, 0, 0)) << "all of it is selected";
    EXPECT_TRUE(::IsWindowVisible(tool.m_Edit.m_hWnd));
    tool.PlaceEditBox(CGePoint2d(0, 0), CGePoint2d(3, 3.9), CGeVector2d(3, 3.9));
    tool.m_Edit.GetWindowText(text);
    EXPECT_EQ(CString(L"4"), text) << "4.92 is cut, not rounded";
}

TEST(CommandOperation, AMoveWithoutLengthPlacesTheBoxHarmlessly) {
    ViewHost host;
    Tool tool(host);
    tool.PlaceEditBox(CGePoint2d(1, 1), CGePoint2d(1, 1), CGeVector2d(0, 0));
    CString text;
    tool.m_Edit.GetWindowText(text);
    EXPECT_EQ(CString(L"0"), text);
}

TEST(CommandOperation, ATypedDistanceEndsAtItsFirstBadCharacter) {
    ViewHost host;
    Tool tool(host);
    const struct {
        LPCTSTR text;
        int value;
    } rows[] = {{L"150", 150}, {L"-12", -12}, {L"7.9", 7}, {L"12abc", 12}, {L"abc", 0}, {L"", 0}};
    for (const auto& row : rows) {
        tool.m_Edit.SetWindowText(row.text);
        EXPECT_EQ(row.value, tool.TypedDistance()) << row.text;
    }
}

// ---- A host that answers the edit box ------------------------------------------------------------------------------

namespace {

// Breaks the running tool off, or starts another, as soon as the edit box sends that notification code.
class AnsweringView : public CVectorView {
public:
    WORD code = 0;
    LPCTSTR word = nullptr; // Null breaks off.
    int answers = 0;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        if (HIWORD(wParam) == code && lParam != 0 && code != 0) {
            code = 0;
            ++answers;
            if (word == nullptr) {
                GetCommandOperationManager()->Cancel();
            } else {
                DoCommand(word);
            }
        }
        return CVectorView::OnCommand(wParam, lParam);
    }
};

} // namespace

TEST(CommandOperation, AHostMayEndTheToolInAnyMessageOfItsEditBox) {
    for (WORD code : {WORD(EN_CHANGE), WORD(EN_UPDATE), WORD(EN_SETFOCUS)}) {
        for (LPCTSTR word : {static_cast<LPCTSTR>(nullptr), L"line"}) {
            ParentWindow parent;
            AnsweringView view;
            view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
            ShowView(view, parent);
            CDrawable* line =
                view.AddLine(CGePoint2d(100, 100), CGePoint2d(200, 100), Gdiplus::Color(255, 255, 255, 255), 1);
            view.GetDocument()->AddSelected(line);
            view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 200));
            ASSERT_NE(0, view.GetCommandOperationManager()->GetHasCommand());
            const int registered = CKXMemoryManager::Instance()->GetCount();
            view.code = code;
            view.word = word;
            view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(250, 150));
            EXPECT_EQ(1, view.answers) << code;
            EXPECT_EQ(word != nullptr ? 1 : 0, view.GetCommandOperationManager()->GetHasCommand()) << code;
            EXPECT_EQ(registered - (word != nullptr ? 0 : 1), CKXMemoryManager::Instance()->GetCount()) << code;
            EXPECT_EQ(CDrawable::Normal, line->GetDrawState());
            view.GetCommandOperationManager()->Cancel();
        }
    }
}

// ---- A tool without a view -----------------------------------------------------------------------------------------

namespace {

// A window of the test's own that a tool works in.
class HostWindow : public CWnd, public COperationHost {
public:
    CCommandOperation* OperationEngine() override { return nullptr; }
    bool IsOperationOrtho() override { return ortho; }
    void TrackOperationGrip(const CGePoint2d& point) override { Note("track", point); }
    void EndOperation() override { calls += "end;"; }
    void ShowOperationObject(CDrawable* object) override { calls += object != nullptr ? "show;" : "empty;"; }

    void Note(const char* what, const CGePoint2d& p) {
        char text[80];
        snprintf(text, sizeof text, "%s(%g,%g);", what, p.x, p.y);
        calls += text;
    }
    std::string calls;
    bool ortho = false;
};

} // namespace

TEST(CommandOperation, AToolWorksInAnyWindowThatIsAHost) {
    HostWindow window;
    CVectorGraphic graphic;
    CVectorViewCoordTran tran;
    graphic.SetVectorViewCoordTran(&tran);
    class InHost : public CCommandOperation {
    public:
        InHost(CWnd* w, CVectorGraphic* g, CVectorViewCoordTran* t) : CCommandOperation(w, g, t, g->GetDocument()) {}
        ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
        ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
        ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
        ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
        using CCommandOperation::AnnounceToPropertyDialog;
        using CCommandOperation::EndRunningOperation;
        using CCommandOperation::IsOrthoOn;
        using CCommandOperation::TrackGripPoint;
    } tool(&window, &graphic, &tran);
    EXPECT_FALSE(tool.IsOrthoOn());
    window.ortho = true;
    EXPECT_TRUE(tool.IsOrthoOn());
    tool.TrackGripPoint(CGePoint2d(3, 4));
    CLine line;
    tool.AnnounceToPropertyDialog(&line);
    tool.AnnounceToPropertyDialog(nullptr);
    tool.DrawShirrLine(CGePoint2d(0, 0), CGePoint2d(1, 1)); // No engine, no band.
    tool.ErasShirrLine();
    tool.EndRunningOperation();
    EXPECT_EQ("track(3,4);show;empty;end;", window.calls);
}

TEST(CommandOperation, ATokenOfADrawingObjectEndsWithTheObject) {
    auto line = std::make_unique<CLine>();
    const CKxAliveToken first = line->GetAlive();
    const CKxAliveToken second = line->GetAlive();
    EXPECT_TRUE(first.IsAlive());
    line.reset();
    EXPECT_FALSE(first.IsAlive());
    EXPECT_FALSE(second.IsAlive());
}
