// The pick of the default click.

#include "CommandSelectObj.h"
#include "Dialog_DrawAbleProperty.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "PropertyDialogHost.h"
#include "support/ViewHost.h"

#include <gtest/gtest.h>

// The class is not exported: everything here is tested by a click on a view with no tool running.

namespace {

CLine* AddLine(ViewHost& host, double x1, double y1, double x2, double y2) {
    return static_cast<CLine*>(
        host.view.AddLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), Gdiplus::Color(255, 255, 255, 255), 1));
}

} // namespace

TEST(CommandSelectObj, FourPixelsAwayIsAHitAndALittleMoreIsNot) {
    ViewHost host;
    CLine* line = AddLine(host, 100, 100, 300, 100);
    host.Click(CPoint(200, 205));
    EXPECT_EQ(0, host.Document().IsSelected(line));
    host.Click(CPoint(200, 204));
    EXPECT_EQ(1, host.Document().IsSelected(line));
    EXPECT_EQ(CDrawable::Selected, line->GetDrawState());
}

TEST(CommandSelectObj, TheReachIsInPixelsAtEveryZoom) {
    ViewHost host;
    host.Tran().SetScale(10.0f); // 40 units.
    CLine* line = AddLine(host, 1000, 1000, 3000, 1000);
    host.Click(CPoint(200, 196)); // 40 units above the line on row 200.
    EXPECT_EQ(1, host.Document().IsSelected(line));
}

TEST(CommandSelectObj, SelectionAddsUp) {
    ViewHost host;
    CLine* a = AddLine(host, 100, 100, 300, 100);
    CLine* b = AddLine(host, 100, 150, 300, 150);
    host.Click(CPoint(150, 200));
    host.Click(CPoint(150, 150));
    EXPECT_EQ(1, host.Document().IsSelected(a));
    EXPECT_EQ(1, host.Document().IsSelected(b));
    EXPECT_EQ(2, host.Document().GetSelectedDrawableObjs()->GetSize());
}

TEST(CommandSelectObj, OfTwoOverlappingObjectsTheSelectedOneHidesTheOtherFromClicks) {
    ViewHost host;
    CLine* lower = AddLine(host, 100, 100, 300, 100);
    CLine* upper = AddLine(host, 100, 101, 300, 101);
    host.Click(CPoint(150, 199)); // On the upper one: the object with the lower index is taken.
    EXPECT_EQ(1, host.Document().IsSelected(lower));
    EXPECT_EQ(0, host.Document().IsSelected(upper));
    host.Click(CPoint(150, 199));
    EXPECT_EQ(0, host.Document().IsSelected(upper));
}

TEST(CommandSelectObj, AnObjectThatIsNotSelectableIsPassedOver) {
    ViewHost host;
    CLine* fixed = AddLine(host, 100, 100, 300, 100);
    fixed->SetCanBeSelect(0);
    CLine* free = AddLine(host, 100, 100, 300, 100);
    host.Click(CPoint(150, 200));
    EXPECT_EQ(0, host.Document().IsSelected(fixed));
    EXPECT_EQ(1, host.Document().IsSelected(free));
}

TEST(CommandSelectObj, ASelectedObjectThatIsNotSelectableStillHidesTheOneAbove) {
    ViewHost host;
    CLine* fixed = AddLine(host, 100, 100, 300, 100);
    fixed->SetCanBeSelect(0);
    host.Document().AddSelected(fixed);
    CLine* other = AddLine(host, 100, 100, 300, 100);
    host.Click(CPoint(150, 200));
    EXPECT_EQ(0, host.Document().IsSelected(other));
}

TEST(CommandSelectObj, AnObjectInTheStateSelectedButInNoListIsSelectedByAClick) {
    ViewHost host;
    CLine* loaded = AddLine(host, 100, 100, 300, 100);
    loaded->SetDrawState(CDrawable::Selected); // As after loading a drawing that was saved with it selected.
    CLine* above = AddLine(host, 100, 100, 300, 100);
    host.Click(CPoint(150, 200));
    EXPECT_EQ(1, host.Document().IsSelected(loaded));
    EXPECT_EQ(CDrawable::Selected, loaded->GetDrawState());
    EXPECT_EQ(0, host.Document().IsSelected(above));
    host.Key(VK_ESCAPE);
    EXPECT_EQ(0, host.Document().IsSelected(loaded));
    EXPECT_EQ(CDrawable::Normal, loaded->GetDrawState()) << "and so it can be let go of again";
}

namespace {

class WithDialog : public CVectorView {
public:
    WithDialog() {
        m_pDlgDrawAbleProperty = new CDialog_DrawAbleProperty(this);
        KX_ADD_MEMORY(m_pDlgDrawAbleProperty);
    }
};

} // namespace

TEST(CommandSelectObj, ClicksAnnounceTheObjectToThePropertyDialogAlsoASelectedOne) {
    ParentWindow parent;
    WithDialog view;
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    ShowView(view, parent);
    CDrawable* a = view.AddLine(CGePoint2d(100, 100), CGePoint2d(300, 100), Gdiplus::Color(255, 255, 255, 255), 1);
    CDrawable* b = view.AddLine(CGePoint2d(100, 200), CGePoint2d(300, 200), Gdiplus::Color(255, 255, 255, 255), 1);
    const auto click = [&](int x, int y) {
        view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        return view.GetDlgDrawAbleProperty()->GetObject();
    };
    EXPECT_EQ(a, click(150, 200));
    EXPECT_EQ(b, click(150, 100));
    EXPECT_EQ(a, click(150, 200)) << "selected already";
    EXPECT_EQ(2, view.GetDocument()->GetSelectedDrawableObjs()->GetSize());
    EXPECT_EQ(a, click(390, 10)) << "empty space says nothing";
    view.SendMessage(WM_KEYDOWN, 'A', 1);
    EXPECT_EQ(nullptr, view.GetDlgDrawAbleProperty()->GetObject());
}

TEST(CommandSelectObj, OfTwoSelectedObjectsTheOneSelectedFirstIsAnnounced) {
    ParentWindow parent;
    WithDialog view;
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    ShowView(view, parent);
    const Gdiplus::Color white(255, 255, 255, 255);
    CDrawable* lower = view.AddLine(CGePoint2d(100, 100), CGePoint2d(300, 100), white, 1);
    CDrawable* upper = view.AddLine(CGePoint2d(100, 101), CGePoint2d(300, 101), white, 1);
    view.GetDocument()->AddSelected(upper);
    view.GetDocument()->AddSelected(lower);
    view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 200));
    EXPECT_EQ(upper, view.GetDlgDrawAbleProperty()->GetObject());
}

TEST(CommandSelectObj, AClickRepaintsThePropertyDialogsWindow) {
    class WithWindow : public CVectorView {
    public:
        void Provide() {
            m_pDlgDrawAbleProperty = CreateDrawAbleProperty(this, GetParent());
            ShowDrawAbleProperty(m_pDlgDrawAbleProperty, this, 1);
        }
    };
    ParentWindow parent;
    WithWindow view;
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    ShowView(view, parent);
    view.AddLine(CGePoint2d(100, 100), CGePoint2d(300, 100), Gdiplus::Color(255, 255, 255, 255), 1);
    view.Provide();
    const HWND dialog = view.GetDlgDrawAbleProperty()->m_hWnd;
    CRect client;
    ::GetClientRect(dialog, &client);
    ASSERT_FALSE(client.IsRectEmpty());
    // The first click selects, the second one announces only, and the third does nothing.
    const CPoint clicks[] = {CPoint(150, 200), CPoint(150, 200), CPoint(390, 10)};
    for (const CPoint& click : clicks) {
        ::RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        EXPECT_FALSE(::GetUpdateRect(dialog, nullptr, FALSE));
        view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(click.x, click.y));
        CRect update;
        ::GetUpdateRect(dialog, &update, FALSE);
        EXPECT_EQ(click.x == 150 ? client : CRect(), update);
    }
}

TEST(CommandSelectObj, NetLinesCannotBePicked) {
    ViewHost host;
    auto* net = new CLine;
    net->SetStartPoint(CGePoint2d(100, 100));
    net->SetEndPoint(CGePoint2d(300, 100));
    host.Document().AddNetobject(net);
    host.Click(CPoint(150, 200));
    EXPECT_EQ(0, host.Document().GetSelectedDrawableObjs()->GetSize());
}

TEST(CommandSelectObj, AHiddenObjectCanBePickedInAViewZoomedFarOut) {
    ViewHost host;
    CLine* hidden = AddLine(host, 100, 100, 300, 100);
    hidden->SetIsShow(0);
    host.Tran().SetScale(24.9f); // 100 / 24.9 = 4.02 pixels.
    host.Click(CPoint(390, 10));
    EXPECT_EQ(0, host.Document().IsSelected(hidden));
    host.Tran().SetScale(25.0f);
    host.Click(CPoint(390, 10));
    EXPECT_EQ(1, host.Document().IsSelected(hidden));
}

TEST(CommandSelectObj, SelectingRepaintsWithBlueGripsAndDots) {
    ViewHost host;
    AddLine(host, 100, 100, 300, 100);
    host.Click(CPoint(200, 200));
    host.Update();
    const Picture picture = host.Take();
    // Three hollow squares of seven pixels a side: 24 pixels each.
    EXPECT_EQ(72, picture.Count(RGB(0, 0, 255)));
    EXPECT_EQ(RGB(0, 0, 255), picture.At(97, 197));
    EXPECT_EQ(RGB(0, 0, 255), picture.At(303, 203));
    EXPECT_EQ(RGB(0, 0, 255), picture.At(197, 200));
}
