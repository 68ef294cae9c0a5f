// Clicks in a parameter view: the notifications of each kind, the wheel, and the right-click menu.

#include "support/BoxAnswer.h"
#include "support/ParmHost.h"

#include <Arc.h>
#include <CenterPoint.h>
#include <Circle.h>
#include <CombRect.h>
#include <CommandOperationManager.h>
#include <Line.h>
#include <PLine.h>

namespace {

// ---- Clicks --------------------------------------------------------------------------------------------------------

struct ParmClicks : ThreeParms {
    CGePointArray pts;
    CBulgeArray bulges;

    void Vertex(double x, double y, double bulge) {
        CGePoint2d p(x, y);
        pts.Add(p);
        bulges.Add(bulge);
    }
};

TEST_F(ParmClicks, EachKindHasItsNumberAndItsField) {
    CDrawable* line = view.AddLine(CGePoint2d(10, 290), CGePoint2d(90, 290), kColor, 1);
    auto* circle = new CCircle(Gdiplus::PointF(150, 250), 20);
    view.GetDocument()->AddDrawAobject(circle);
    CDrawable* arc = view.AddArc(CGePoint2d(250, 250), 20, 0, 3, kColor, L"", L"", 0, 0);
    Vertex(310, 290, 0);
    Vertex(390, 290, 0);
    Vertex(390, 210, 0);
    CDrawable* pline = view.AddPLine(pts, bulges, kColor, 0, 1, 1);
    CDrawable* text = view.AddText(CGePoint2d(50, 150), L"T", 0, kColor, 20.0, 1, 0);
    CTextParm* parm = AddParm(L"P", L"5", 50, 200);
    parm->SetNeedEditBox(0);
    Paint();
    Take();

    Click(50, 10);
    EXPECT_EQ(Events{"click 1"}, Take());
    EXPECT_EQ(line, parent.last.pLine);
    EXPECT_EQ(static_cast<UINT>(-161), parent.last.code);
    Click(170, 50);
    EXPECT_EQ(Events{"click 2"}, Take());
    EXPECT_EQ(circle, parent.last.pCircle);
    // An arc is a circle to the host.
    Click(250, 30);
    EXPECT_EQ(Events{"click 2"}, Take());
    EXPECT_EQ(arc, parent.last.pCircle);
    Click(390, 50);
    EXPECT_EQ(Events{"click 4"}, Take());
    EXPECT_EQ(pline, parent.last.pPLine);
    EXPECT_EQ(1, parent.last.nSelLine);
    Click(350, 10);
    EXPECT_EQ(Events{"click 4"}, Take());
    EXPECT_EQ(0, parent.last.nSelLine);
    Click(55, 155);
    EXPECT_EQ(Events{"click 6 T"}, Take());
    EXPECT_EQ(text, parent.last.pText);
    Click(parm);
    EXPECT_EQ(Events{"click 5 P"}, Take());
    EXPECT_EQ(parm, parent.last.pText);
    // A press on nothing sets the text to null; the other fields keep their values.
    Click(450, 200);
    EXPECT_EQ(Events{"click 0"}, Take());
    EXPECT_EQ(nullptr, parent.last.pText);
    EXPECT_EQ(line, parent.last.pLine);
    EXPECT_EQ(arc, parent.last.pCircle);
    EXPECT_EQ(pline, parent.last.pPLine);
    EXPECT_EQ(0, parent.last.nSelLine);
}

TEST_F(ParmClicks, FourPixelsAreNearEnoughAndFiveAreNot) {
    view.AddLine(CGePoint2d(10, 200), CGePoint2d(200, 200), kColor, 1);
    Click(100, 104);
    Click(100, 105);
    Click(100, 96);
    Click(100, 95);
    EXPECT_EQ((Events{"click 1", "click 0", "click 1", "click 0"}), Take());
    // Twice as large: four pixels are two units.
    view.GetVectorViewCoordTran()->SetScale(0.5f);
    view.GetVectorViewCoordTran()->SetOriginY(100);
    Click(100, 104);
    Click(100, 105);
    EXPECT_EQ((Events{"click 1", "click 0"}), Take());
}

TEST_F(ParmClicks, AmongOverlappingObjectsTheOneDrawnFirstIsTaken) {
    CDrawable* below = view.AddLine(CGePoint2d(10, 200), CGePoint2d(200, 200), kColor, 1);
    view.AddLine(CGePoint2d(10, 200), CGePoint2d(200, 200), kColor, 1);
    Click(100, 100);
    EXPECT_EQ(below, parent.last.pLine);
}

TEST_F(ParmClicks, MarksFramesAndLabelsArePassedOver) {
    view.AddCenterPoint(CGePoint2d(100, 200), L"", L"", kColor, 0);
    auto* frame = new CCombRect;
    view.GetDocument()->AddDrawAobject(frame);
    Click(100, 100);
    EXPECT_EQ(Events{"click 0"}, Take());
    view.AddLine(CGePoint2d(10, 200), CGePoint2d(200, 200), kColor, 1);
    Click(100, 100);
    EXPECT_EQ(Events{"click 1"}, Take());
}

TEST_F(ParmClicks, AHiddenObjectIsNotClicked) {
    CDrawable* line = view.AddLine(CGePoint2d(10, 200), CGePoint2d(200, 200), kColor, 1);
    line->SetIsShow(0);
    Click(100, 100);
    EXPECT_EQ(Events{"click 0"}, Take());
}

TEST_F(ParmClicks, ALineWithoutLengthIsHitAnywhere) {
    view.AddLine(CGePoint2d(10, 200), CGePoint2d(10, 200), kColor, 1);
    Click(400, 250);
    EXPECT_EQ(Events{"click 1"}, Take());
}

TEST_F(ParmClicks, ADoubleClickIsTwoPressesAndItsOwnCodeWithTheFieldsOfTheLast) {
    CDrawable* line = view.AddLine(CGePoint2d(10, 200), CGePoint2d(200, 200), kColor, 1);
    Click(100, 100);
    ::PostMessage(view.m_hWnd, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(100, 100));
    ::PostMessage(view.m_hWnd, WM_LBUTTONUP, 0, MAKELPARAM(100, 100));
    Pump();
    EXPECT_EQ((Events{"click 1", "dblclk"}), Take());
    EXPECT_EQ(static_cast<UINT>(-162), parent.last.code);
    EXPECT_EQ(1, parent.last.nKind);
    EXPECT_EQ(line, parent.last.pLine);
    // Also where nothing is: the fields are still those of the click.
    ::PostMessage(view.m_hWnd, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(400, 250));
    ::PostMessage(view.m_hWnd, WM_LBUTTONUP, 0, MAKELPARAM(400, 250));
    Pump();
    EXPECT_EQ(Events{"dblclk"}, Take());
    EXPECT_EQ(1, parent.last.nKind);
    EXPECT_EQ(line, parent.last.pLine);
}

TEST_F(ParmClicks, AClickSelectsNothing) {
    CDrawable* line = view.AddLine(CGePoint2d(10, 200), CGePoint2d(200, 200), kColor, 1);
    Click(100, 100);
    EXPECT_FALSE(line->IsSelected());
    EXPECT_EQ(0, view.GetDocument()->GetSelectedDrawableObjs()->GetSize());
}

TEST_F(ParmClicks, ACommandStillGetsItsClicks) {
    view.DoCommand(L"line");
    Click(100, 100);
    Click(200, 100);
    EXPECT_EQ((Events{"click 0", "click 0"}), Take());
    ASSERT_EQ(1, view.GetDocument()->GetDrawableObjs()->GetSize());
    EXPECT_TRUE(view.GetDocument()->GetDrawableObjs()->GetAt(0)->IsKindOf(RUNTIME_CLASS(CLine)));
}

TEST_F(ParmClicks, AViewWithoutAParentSendsNoNotification) {
    ParmView lone;
    Events lines;
    lone.log = &lines;
    ASSERT_TRUE(lone.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr));
    lone.SendClickNotify(nullptr);
    lone.SendMessage(WM_LBUTTONDBLCLK, 0, 0);
    auto* parm = static_cast<CTextParm*>(lone.AddParmText(CGePoint2d(), L"1", L"P", 0, kColor, 20.0, 0));
    EXPECT_EQ(1, lone.Can(parm));
    lone.DestroyWindow();
}

// ---- Wheel, keys, focus --------------------------------------------------------------------------------------------

TEST_F(ParmClicks, TheWheelZoomsOnlyWhileItIsEnabledByOne) {
    view.AddLine(CGePoint2d(0, 0), CGePoint2d(400, 200), kColor, 1);
    const auto wheel = [this] {
        view.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(100, 100));
        return view.GetVectorViewCoordTran()->GetScale();
    };
    EXPECT_FLOAT_EQ(0.8f, wheel());
    for (const int off : {0, 2, -1}) {
        view.EnableWheel(off);
        EXPECT_FLOAT_EQ(0.8f, wheel()) << off;
    }
    view.EnableWheel(1);
    EXPECT_FLOAT_EQ(0.64f, wheel());
}

TEST_F(ParmClicks, AWheelMessageReachesTheParentWhileTheWheelIsDisabled) {
    view.EnableWheel(0);
    view.AddLine(CGePoint2d(0, 0), CGePoint2d(400, 200), kColor, 1);
    EXPECT_EQ(0, view.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -240), MAKELPARAM(100, 100)));
    EXPECT_EQ(1.0f, view.GetVectorViewCoordTran()->GetScale());
    // The window's default passes it to the parent.
    EXPECT_EQ(std::vector<int>{-240}, parent.wheels);
}

TEST_F(ParmClicks, CharactersAndALostFocusGoToTheDefaultAlone) {
    std::vector<UINT> defaults;
    view.onDefault = [&](UINT message) { defaults.push_back(message); };
    view.SendMessage(WM_CHAR, 'x', 1);
    EXPECT_EQ(std::vector<UINT>{WM_CHAR}, defaults);
    defaults.clear();
    view.SendMessage(WM_KILLFOCUS, 0, 0);
    EXPECT_EQ(std::vector<UINT>{WM_KILLFOCUS}, defaults);
    EXPECT_EQ(Events{}, Take());
}

TEST_F(ParmClicks, AMoveReachesTheTooltipBeforeTheBase) {
    CTextParm* parm = AddParm(L"P", L"5", 50, 50);
    Paint();
    CDrawable* seen = nullptr;
    view.onDefault = [&](UINT message) {
        if (message == WM_MOUSEMOVE) {
            seen = view.TipObject();
        }
    };
    view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(56, 56));
    EXPECT_EQ(parm, seen);
}

TEST_F(ParmClicks, AnObjectOfAKindWithoutANumberIsReportedAsNothing) {
    view.SendClickNotify(view.AddText(CGePoint2d(50, 150), L"T", 0, kColor, 20.0, 1, 0));
    view.SendClickNotify(view.AddCenterPoint(CGePoint2d(100, 200), L"", L"", kColor, 0));
    EXPECT_EQ((Events{"click 6 T", "click 0"}), Take());
    EXPECT_EQ(nullptr, parent.last.pText);
}

// ---- The menu ------------------------------------------------------------------------------------------------------

struct ParmMenu : ThreeParms {
    void SetUp() override {
        ThreeParms::SetUp();
        view.AddLine(CGePoint2d(0, 0), CGePoint2d(400, 200), kColor, 1);
        CPoint middle(250, 150);
        view.ClientToScreen(&middle);
        ::SetCursorPos(middle.x, middle.y);
        s_test = this;
    }
    void TearDown() override {
        s_test = nullptr;
        ThreeParms::TearDown();
    }
    void RightClick() {
        m_hook = ::SetWindowsHookEx(WH_MSGFILTER, Filter, nullptr, ::GetCurrentThreadId());
        view.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(250, 150));
        ::UnhookWindowsHookEx(m_hook);
        Pump();
    }
    // Posted to the menu's loop.
    void Keys(std::initializer_list<UINT> keys) {
        for (const UINT key : keys) {
            ::PostMessage(view.m_hWnd, WM_KEYDOWN, key, 1);
        }
    }
    static LRESULT CALLBACK Filter(int code, WPARAM wParam, LPARAM lParam) {
        if (code == MSGF_MENU && s_test != nullptr) {
            s_test->OnMenuMessage();
        }
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
    void OnMenuMessage() {
        const HWND popup = ::FindWindow(L"#32768", nullptr);
        if (popup == nullptr || !m_texts.empty()) {
            return;
        }
        const auto menu = reinterpret_cast<HMENU>(::SendMessage(popup, 0x01E1 /* MN_GETHMENU */, 0, 0));
        for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
            wchar_t text[64] = {};
            ::GetMenuString(menu, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
            m_texts.push_back(Utf8(text) + " " + std::to_string(::GetMenuItemID(menu, i)));
        }
        if (m_clickItem >= 0) {
            RECT rect = {};
            ::GetMenuItemRect(nullptr, menu, static_cast<UINT>(m_clickItem), &rect);
            const int x = (rect.left + rect.right) / 2;
            const int y = (rect.top + rect.bottom) / 2;
            ::SetCursorPos(x, y);
            ::PostMessage(popup, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
            ::PostMessage(popup, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        }
    }

    HHOOK m_hook = nullptr;
    int m_clickItem = -1;
    Events m_texts;
    static ParmMenu* s_test;
};

ParmMenu* ParmMenu::s_test = nullptr;

TEST_F(ParmMenu, TheFirstItemChosenByKeyFitsTheDrawing) {
    other.SetFocus();
    Keys({VK_DOWN, VK_RETURN});
    RightClick();
    EXPECT_EQ((Events{"全屏缩放 32790", "移动 32791"}), m_texts);
    EXPECT_NE(1.0f, view.GetVectorViewCoordTran()->GetScale());
    EXPECT_TRUE(HasFocus(view));
}

TEST_F(ParmMenu, TheSecondItemChosenByKeyStartsThePan) {
    other.SetFocus();
    Keys({VK_DOWN, VK_DOWN, VK_RETURN});
    RightClick();
    EXPECT_EQ(1, view.GetCommandOperationManager()->GetHasCommand());
    EXPECT_TRUE(HasFocus(view));
    EXPECT_EQ(1.0f, view.GetVectorViewCoordTran()->GetScale());
    // Drags of the left button pan. The right button opens the menu first and then ends the pan.
    ::PostMessage(view.m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 100));
    ::PostMessage(view.m_hWnd, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(210, 100));
    Pump();
    EXPECT_EQ(-10.0, view.GetVectorViewCoordTran()->GetOriginX());
    Keys({VK_ESCAPE});
    RightClick();
    EXPECT_EQ(0, view.GetCommandOperationManager()->GetHasCommand());
}

TEST_F(ParmMenu, TheCursorOfThePanShowsAtOnce) {
    const HCURSOR arrow = ::LoadCursor(nullptr, IDC_ARROW);
    ::SetCursor(arrow);
    // Sent, and no message is handled after it, so that no move of the mouse can have set the cursor.
    view.SendMessage(WM_COMMAND, 32791, 0);
    const HCURSOR shown = ::GetCursor();
    EXPECT_NE(nullptr, shown);
    EXPECT_NE(arrow, shown);
}

TEST_F(ParmMenu, AnItemChosenByMouse) {
    m_clickItem = 0;
    Keys({VK_HOME});
    RightClick();
    EXPECT_NE(1.0f, view.GetVectorViewCoordTran()->GetScale());
}

TEST_F(ParmMenu, EscapeChoosesNothing) {
    Keys({VK_ESCAPE});
    RightClick();
    EXPECT_EQ(1.0f, view.GetVectorViewCoordTran()->GetScale());
    EXPECT_EQ(0, view.GetCommandOperationManager()->GetHasCommand());
}

TEST_F(ParmMenu, ChoosingAnItemEndsAnOpenEdit) {
    Three();
    Click(a);
    Type(L"7");
    Take();
    Keys({VK_DOWN, VK_RETURN});
    RightClick();
    EXPECT_EQ(storedA, Take());
}

TEST_F(ParmMenu, TheResourceHandleIsPutBack) {
    const HINSTANCE before = AfxGetResourceHandle();
    Keys({VK_ESCAPE});
    RightClick();
    EXPECT_EQ(before, AfxGetResourceHandle());
}

} // namespace
