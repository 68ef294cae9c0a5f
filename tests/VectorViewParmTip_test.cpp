// The tooltip of a parameter view: what the control is sent, in which order, and for which description.

#include "support/ParmHost.h"

namespace {

// Writes down what is sent to any tooltip control of the thread.
struct ParmTip : ThreeParms {
    Events sent;
    HHOOK hook = nullptr;
    static ParmTip* s_test;

    void SetUp() override {
        ThreeParms::SetUp();
        s_test = this;
        hook = ::SetWindowsHookEx(WH_CALLWNDPROC, Filter, nullptr, ::GetCurrentThreadId());
    }
    void TearDown() override {
        ::UnhookWindowsHookEx(hook);
        s_test = nullptr;
        ThreeParms::TearDown();
    }
    static LRESULT CALLBACK Filter(int code, WPARAM wParam, LPARAM lParam) {
        const auto* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
        wchar_t name[32] = {};
        if (code == HC_ACTION && s_test != nullptr && call->message >= WM_USER &&
            ::GetClassName(call->hwnd, name, 32) != 0 && CString(name) == TOOLTIPS_CLASS) {
            s_test->Note(*call);
        }
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
    void Note(const CWPSTRUCT& call) {
        const auto* tool = reinterpret_cast<const TOOLINFO*>(call.lParam);
        switch (call.message) {
        case TTM_ACTIVATE:
            sent.push_back("activate " + std::to_string(call.wParam));
            break;
        case TTM_SETDELAYTIME:
            sent.push_back("delay " + std::to_string(call.wParam) + " " + std::to_string(call.lParam));
            break;
        case TTM_SETMAXTIPWIDTH:
            sent.push_back("width " + std::to_string(call.lParam));
            break;
        case TTM_ADDTOOL:
            sent.push_back("add " + std::to_string(tool->uId) + " " + std::to_string(tool->rect.right) + "x" +
                           std::to_string(tool->rect.bottom));
            break;
        case TTM_DELTOOL:
            sent.push_back("delete " + std::to_string(tool->uId));
            break;
        case TTM_UPDATETIPTEXT:
            sent.push_back("text " + Narrow(tool->lpszText));
            break;
        case TTM_UPDATE:
            sent.push_back("update");
            break;
        case TTM_RELAYEVENT:
            sent.push_back("relay");
            break;
        default:
            break;
        }
    }
    Events TakeSent() {
        Events taken;
        taken.swap(sent);
        return taken;
    }
    void Hover(int x, int y) { view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(x, y)); }
    // Past the making of the control and of its tool.
    void MakeTip() {
        view.SetTooltipText(L"", 0);
        TakeSent();
    }
};

ParmTip* ParmTip::s_test = nullptr;

const Events kMade = {"activate 0", "delay 0 100", "width 120"};

TEST_F(ParmTip, IsMadeOnFirstUseAndOnce) {
    EXPECT_EQ(nullptr, view.Tip().GetSafeHwnd());
    view.InitToolTip();
    EXPECT_EQ(kMade, TakeSent());
    view.InitToolTip();
    EXPECT_EQ(Events{}, TakeSent());
}

TEST_F(ParmTip, TheFirstTextRegistersTheTool) {
    view.SetTooltipText(L"height", 1);
    EXPECT_EQ((kMade + Events{"add 1 500x300", "text height", "activate 1"}), TakeSent());
    view.SetTooltipText(L"width", 0);
    EXPECT_EQ((Events{"text width", "activate 0"}), TakeSent());
    view.SetTooltipText(nullptr, 1);
    EXPECT_EQ(Events{}, TakeSent());
}

TEST_F(ParmTip, ActivatingNeedsATool) {
    view.ActivateTooltip(1);
    EXPECT_EQ(Events{}, TakeSent());
    view.InitToolTip();
    TakeSent();
    view.ActivateTooltip(1);
    EXPECT_EQ(Events{}, TakeSent());
    MakeTip();
    view.ActivateTooltip(1);
    EXPECT_EQ(Events{"activate 1"}, TakeSent());
}

TEST_F(ParmTip, ANewSizeTakesTheToolAwayAndTheNextTextRegistersIt) {
    MakeTip();
    view.SetWindowPos(nullptr, 0, 0, 400, 200, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(Events{"delete 1"}, TakeSent());
    view.SetTooltipText(L"x", 1);
    EXPECT_EQ((Events{"add 1 400x200", "text x", "activate 1"}), TakeSent());
}

TEST_F(ParmTip, HoveringShowsTheDescriptionOnce) {
    Three();
    a->SetParmDes(L"高度");
    MakeTip();
    Hover(56, 56);
    EXPECT_EQ((Events{"text 高度", "activate 1", "update"}), TakeSent());
    EXPECT_EQ(a, view.TipObject());
    Hover(57, 57);
    EXPECT_EQ(Events{}, TakeSent());
    // Leaving hides nothing, and coming back shows it anew.
    Hover(450, 20);
    EXPECT_EQ(Events{}, TakeSent());
    EXPECT_EQ(nullptr, view.TipObject());
    Hover(56, 56);
    EXPECT_EQ((Events{"text 高度", "activate 1", "update"}), TakeSent());
}

TEST_F(ParmTip, AnEmptyDescriptionSwitchesItOff) {
    Three();
    MakeTip();
    Hover(56, 56);
    EXPECT_EQ(Events{"activate 0"}, TakeSent());
    EXPECT_EQ(a, view.TipObject());
}

TEST_F(ParmTip, OnlyADescriptionOfThreePiecesIsCut) {
    const struct {
        const wchar_t* description;
        const char* shown;
    } rows[] = {
        {L"plain", "text plain"},
        {L"one||two", "text one||two"},
        {L"one||two||three", "text one"},
        {L"one||two||three||four", "text one"},
        {L"||||", "text "},
        {L"one|two|three", "text one|two|three"},
    };
    Three();
    MakeTip();
    for (const auto& row : rows) {
        a->SetParmDes(row.description);
        Hover(450, 20);
        Hover(56, 56);
        EXPECT_EQ((Events{row.shown, "activate 1", "update"}), TakeSent()) << row.shown;
    }
}

TEST_F(ParmTip, OtherKindsOnTheWayAreSkipped) {
    view.AddLine(CGePoint2d(0, 244), CGePoint2d(200, 244), kColor, 1);
    view.AddText(CGePoint2d(50, 250), L"text", 0, kColor, 20.0, 1, 0);
    Three();
    a->SetParmDes(L"height");
    CTextParm* above = AddParm(L"D", L"1", 50, 50);
    above->SetParmDes(L"hidden below A");
    Paint();
    MakeTip();
    Hover(56, 56);
    EXPECT_EQ((Events{"text height", "activate 1", "update"}), TakeSent());
    EXPECT_EQ(a, view.TipObject());
}

TEST_F(ParmTip, ALoadEmptiesAndDeactivatesIt) {
    Three();
    a->SetParmDes(L"height");
    MakeTip();
    Hover(56, 56);
    std::vector<BYTE> bytes = Store();
    TakeSent();
    view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size()));
    EXPECT_EQ((Events{"text ", "activate 0"}), TakeSent());
    EXPECT_EQ(nullptr, view.TipObject()) << "another parameter may be at that address now";
    Paint();
    Hover(56, 56);
    EXPECT_EQ((Events{"text height", "activate 1", "update"}), TakeSent());
    view.ResetVectorView();
    EXPECT_EQ((Events{"text ", "activate 0"}), TakeSent());
    EXPECT_EQ(nullptr, view.TipObject());
}

TEST_F(ParmTip, EveryMessageOfTheLoopIsRelayed) {
    MakeTip();
    MSG msg = {};
    msg.hwnd = view.m_hWnd;
    msg.message = WM_MOUSEMOVE;
    EXPECT_FALSE(view.PreTranslateMessage(&msg));
    EXPECT_EQ(Events{"relay"}, TakeSent());
}

TEST_F(ParmTip, TheLoopMakesTheControl) {
    MSG msg = {};
    msg.hwnd = view.m_hWnd;
    msg.message = WM_MOUSEMOVE;
    view.PreTranslateMessage(&msg);
    EXPECT_EQ(kMade + Events{"relay"}, TakeSent());
}

TEST_F(ParmTip, ALongDescriptionIsShownWhole) {
    Three();
    const CString description(L'长', 2000);
    a->SetParmDes(description);
    MakeTip();
    Hover(56, 56);
    EXPECT_EQ((Events{"text " + Narrow(description), "activate 1", "update"}), TakeSent());
}

} // namespace
