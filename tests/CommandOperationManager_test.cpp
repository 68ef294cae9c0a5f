// The manager: routing, states, installing and ending tools, the default click, pan, keys, cursor.

#include "CommandOperationManager.h"
#include "CommandWords.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "support/ViewHost.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

using State = CCommandOperation::ResultState;

// A tool that notes its events and gives back what it was told to.
class Probe : public CCommandOperation {
public:
    Probe(ViewHost& host, std::vector<std::string>& calls)
        : CCommandOperation(&host.view, nullptr, &host.Tran(), &host.Document()), log(calls) {
        KX_ADD_MEMORY(this);
        m_SnapEnabled = 0;
    }
    ~Probe() override { log.push_back("deleted"); }
    void Execute() override { log.push_back("Execute"); }
    void Cancel() override { log.push_back("Cancel"); }
    ResultState OnLButtonDown(unsigned int, CGePoint2d p) override { return Note("down", p); }
    ResultState OnLButtonUp(unsigned int, CGePoint2d p) override { return Note("up", p); }
    ResultState OnMouseMove(unsigned int, CGePoint2d p) override { return Note("move", p); }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d p) override { return Note("wheel", p); }
    ResultState OnRButtonDown(unsigned int, CGePoint2d p) override { return Note("right", p); }
    ResultState OnMouseMoveForL(unsigned int, CPoint p) override { return Note("moveL", CGePoint2d(p)); }
    ResultState OnButtonDownForL(unsigned int, CPoint p) override { return Note("downL", CGePoint2d(p)); }
    ResultState OnKeyDown(unsigned int c, unsigned int, unsigned int) override { return Note("key", CGePoint2d(c, 0)); }
    int RefreshGrip() override {
        log.push_back("RefreshGrip");
        return 1;
    }
    void PreRedraw() override { log.push_back("PreRedraw"); }
    void SetInEdit(int inEdit) override { log.push_back("SetInEdit " + std::to_string(inEdit)); }
    void SetOsnapMode(int mode) override { log.push_back("SetOsnapMode " + std::to_string(mode)); }
    int GetGripPoint(CGePoint2d, CGePoint2d& result) override {
        if (!snaps) {
            return 0;
        }
        result = CGePoint2d(77, 88);
        return 5;
    }
    ResultState OnSetCursor(CWnd*, unsigned int, unsigned int) override { return answer; }

    std::vector<std::string>& log;
    ResultState answer = RS_Continue;
    bool snaps = false;

private:
    ResultState Note(const char* name, const CGePoint2d& p) {
        char text[80];
        snprintf(text, sizeof text, "%s(%g,%g)", name, p.x, p.y);
        log.push_back(text);
        return answer;
    }
};

using Calls = std::vector<std::string>;

struct Managed {
    Managed() : manager(*static_cast<CCommandOperationManager*>(host.view.GetCommandOperationManager())) {}
    Probe* Install(int inCommand = 1) {
        auto* probe = new Probe(host, log);
        manager.SetCommand(probe, inCommand);
        log.clear();
        return probe;
    }
    Calls Take() {
        Calls result;
        result.swap(log);
        return result;
    }
    Calls log;
    ViewHost host;
    CCommandOperationManager& manager;
};

CLine* AddLine(ViewHost& host, double x1, double y1, double x2, double y2) {
    return static_cast<CLine*>(
        host.view.AddLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), Gdiplus::Color(255, 255, 255, 255), 1));
}

} // namespace

// ---- Routing -------------------------------------------------------------------------------------------------------

TEST(CommandOperationManager, EventsReachTheRunningToolInDrawingUnits) {
    Managed m;
    m.Install();
    m.host.Send(WM_LBUTTONDOWN, 0, CPoint(10, 20));
    EXPECT_EQ((Calls{"down(10,280)", "downL(10,20)"}), m.Take());
    m.host.Send(WM_LBUTTONUP, 0, CPoint(10, 20));
    EXPECT_EQ((Calls{"up(10,280)"}), m.Take());
    m.host.Send(WM_MOUSEMOVE, 0, CPoint(30, 40));
    EXPECT_EQ((Calls{"move(30,260)", "moveL(30,40)"}), m.Take());
    m.host.Send(WM_RBUTTONDOWN, 0, CPoint(1, 2));
    EXPECT_EQ((Calls{"right(1,298)"}), m.Take());
    m.host.Key('Q');
    EXPECT_EQ((Calls{"key(81,0)"}), m.Take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, ASnapReplacesThePointOfPressesAndMovesButNotOfTheRest) {
    Managed m;
    m.Install()->snaps = true;
    m.host.Send(WM_LBUTTONDOWN, 0, CPoint(10, 20));
    EXPECT_EQ((Calls{"down(77,88)", "downL(10,20)"}), m.Take());
    m.host.Send(WM_MOUSEMOVE, 0, CPoint(30, 40));
    EXPECT_EQ((Calls{"move(77,88)", "moveL(30,40)"}), m.Take());
    m.host.Send(WM_LBUTTONUP, 0, CPoint(10, 20));
    EXPECT_EQ((Calls{"up(10,280)"}), m.Take()) << "a release asks the manager's own search";
    m.host.Send(WM_RBUTTONDOWN, 0, CPoint(1, 2));
    EXPECT_EQ((Calls{"right(1,298)"}), m.Take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, AReleaseSnapsByTheManagersOwnSearchAndMode) {
    Managed m;
    AddLine(m.host, 100, 100, 300, 100);
    m.Install();
    m.host.Send(WM_LBUTTONUP, 0, CPoint(103, 198));
    EXPECT_EQ((Calls{"up(100,100)"}), m.Take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, TheWheelGoesOnAsAMoveAtTheSamePoint) {
    Managed m;
    m.Install();
    m.manager.OnMouseWheel(0, 120, CGePoint2d(500, 600));
    EXPECT_EQ((Calls{"wheel(500,-300)", "move(500,-300)"}), m.Take()) << "screen coordinates, taken for client pixels";
    m.manager.Cancel();
}

TEST(CommandOperationManager, EveryEventGivesZeroToTheView) {
    Managed m;
    Probe* probe = m.Install();
    probe->answer = State::RS_Capture;
    EXPECT_EQ(0, static_cast<int>(m.manager.OnLButtonDown(0, CGePoint2d(1, 1))));
    EXPECT_EQ(0, static_cast<int>(m.manager.OnMouseMove(0, CGePoint2d(1, 1))));
    EXPECT_EQ(0, static_cast<int>(m.manager.OnKeyDown('A', 1, 0)));
    EXPECT_EQ(0, static_cast<int>(m.manager.OnRButtonDown(0, CGePoint2d(1, 1))));
    m.manager.Cancel();
}

// ---- States --------------------------------------------------------------------------------------------------------

TEST(CommandOperationManager, AToolEndsOnAnyStateButContinueAndCapture) {
    for (int state : {1, 2, 3, 5}) {
        Managed m;
        m.Install()->answer = static_cast<State>(state);
        m.host.Send(WM_LBUTTONDOWN, 0, CPoint(10, 20));
        EXPECT_EQ((Calls{"down(10,280)", "downL(10,20)", "deleted"}), m.Take()) << state;
        EXPECT_EQ(0, m.manager.GetHasCommand());
    }
    for (int state : {0, 7}) {
        Managed m;
        m.Install()->answer = static_cast<State>(state);
        m.host.Send(WM_LBUTTONDOWN, 0, CPoint(10, 20));
        EXPECT_EQ(1, m.manager.GetHasCommand()) << state;
        m.manager.Cancel();
    }
}

TEST(CommandOperationManager, AMoveAWheelOrAKeyNeverEndsATool) {
    Managed m;
    m.Install()->answer = State::RS_Done;
    m.host.Move(CPoint(5, 5));
    m.host.Key(VK_ESCAPE);
    m.manager.OnMouseWheel(0, 120, CGePoint2d(1, 1));
    EXPECT_EQ(1, m.manager.GetHasCommand());
    m.manager.Cancel();
}

TEST(CommandOperationManager, CancelBreaksOffAndDeletesAndThenFindsNothing) {
    Managed m;
    m.Install();
    m.manager.Cancel();
    EXPECT_EQ((Calls{"Cancel", "deleted"}), m.Take());
    m.manager.Cancel();
    m.manager.Execute();
    EXPECT_EQ((Calls{}), m.Take());
}

TEST(CommandOperationManager, InstallingCancelsTheRunningToolExactlyOnceAndHandsTheSnapModeOn) {
    Managed m;
    m.manager.SetOsnapMode(3);
    m.Install();
    auto* second = new Probe(m.host, m.log);
    EXPECT_EQ(1, m.manager.SetCommand(second, 1));
    EXPECT_EQ((Calls{"Cancel", "deleted", "SetOsnapMode 3"}), m.Take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, AHeldToolGetsNoEventsAndSwallowsKeys) {
    Managed m;
    CLine* line = AddLine(m.host, 100, 100, 300, 100);
    m.host.Document().AddSelected(line);
    m.Install(0);
    m.host.Move(CPoint(5, 5));
    m.host.Key('A');
    m.host.Send(WM_RBUTTONDOWN, 0, CPoint(1, 1));
    EXPECT_EQ((Calls{}), m.Take());
    EXPECT_EQ(1, m.host.Document().IsSelected(line)) << "a key clears the selection only without any tool";
    m.manager.Execute();
    EXPECT_EQ((Calls{"Execute"}), m.Take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, ATemporaryToolIsInstalledOnCaptureAlone) {
    Managed m;
    m.Install();
    auto* temporary = new Probe(m.host, m.log);
    m.manager.CheckResultState(temporary, State::RS_Done);
    EXPECT_EQ((Calls{}), m.Take());
    m.manager.CheckResultState(temporary, State::RS_Capture);
    EXPECT_EQ((Calls{"Cancel", "deleted"}), m.Take()) << "and the snap mode is not handed on";
    m.host.Move(CPoint(1, 1));
    EXPECT_EQ((Calls{"move(1,299)", "moveL(1,1)"}), m.Take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, HostSettingsReachTheRunningTool) {
    Managed m;
    m.manager.SetInEdit(1);
    m.Install();
    m.manager.SetInEdit(4);
    m.manager.SetOsnapMode(9);
    m.manager.PreRedraw();
    EXPECT_EQ((Calls{"SetInEdit 4", "SetOsnapMode 9", "PreRedraw"}), m.Take());
    EXPECT_EQ(0, m.manager.GetDrawObjLatus());
    m.manager.SetDrawObjLatus(1);
    EXPECT_EQ(1, m.manager.GetDrawObjLatus());
    m.manager.Cancel();
}

TEST(CommandOperationManager, ToolsAreRegisteredAndDeregistered) {
    Managed m;
    const int before = CKXMemoryManager::Instance()->GetCount();
    m.host.view.DoCommand(L"line");
    EXPECT_EQ(before + 1, CKXMemoryManager::Instance()->GetCount());
    m.host.view.DoCommand(L"line");
    EXPECT_EQ(before + 1, CKXMemoryManager::Instance()->GetCount());
    m.host.RightClick(CPoint(1, 1));
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

// ---- Words ---------------------------------------------------------------------------------------------------------

TEST(CommandOperationManager, WordsAreComparedWithCaseAndUnknownOnesChangeNothing) {
    Managed m;
    Probe* probe = m.Install();
    for (LPCTSTR word : {L"LINE", L"Line", L"", L"line ", L"open", L"save"}) {
        EXPECT_EQ(0, m.manager.DoCommand(word));
    }
    EXPECT_EQ((Calls{}), m.Take());
    EXPECT_NE(nullptr, probe);
    EXPECT_EQ(1, m.manager.DoCommand(L"line"));
    EXPECT_EQ((Calls{"Cancel", "deleted"}), m.Take());
    m.manager.Cancel();
}

// ---- Default behaviour ---------------------------------------------------------------------------------------------

TEST(CommandOperationManager, TheFirstClickSelectsTheSecondTakesAGripAndEmptySpaceKeepsTheSelection) {
    Managed m;
    CLine* line = AddLine(m.host, 100, 100, 300, 100);
    m.host.Click(CPoint(100, 200));
    EXPECT_EQ(1, m.host.Document().IsSelected(line));
    EXPECT_EQ(0, m.manager.GetHasCommand()) << "no grip is taken by the click that selects";
    m.host.Click(CPoint(50, 50));
    EXPECT_EQ(1, m.host.Document().IsSelected(line));
    EXPECT_EQ(0, m.manager.GetHasCommand());
    m.host.Click(CPoint(100, 200));
    EXPECT_EQ(1, m.manager.GetHasCommand());
    m.manager.Cancel();
}

TEST(CommandOperationManager, AnyKeyWithoutAToolClearsTheSelectionAndRepaints) {
    for (UINT key : {UINT(VK_ESCAPE), UINT('A'), UINT(VK_SHIFT)}) {
        Managed m;
        CLine* line = AddLine(m.host, 100, 100, 300, 100);
        m.host.Document().AddSelected(line);
        ::ValidateRect(m.host.view.m_hWnd, nullptr);
        m.host.Key(key);
        EXPECT_EQ(0, m.host.Document().IsSelected(line));
        EXPECT_TRUE(::GetUpdateRect(m.host.view.m_hWnd, nullptr, FALSE));
    }
}

TEST(CommandOperationManager, TheMiddleButtonPansWithAndWithoutATool) {
    Managed m;
    m.host.Tran().SetScale(2.0f);
    m.host.Send(WM_MBUTTONDOWN, MK_MBUTTON, CPoint(100, 100));
    ::ValidateRect(m.host.view.m_hWnd, nullptr);
    m.host.Move(CPoint(110, 105), MK_MBUTTON);
    EXPECT_EQ(-20.0, m.host.Tran().GetOriginX());
    EXPECT_EQ(10.0, m.host.Tran().GetOriginY());
    EXPECT_TRUE(::GetUpdateRect(m.host.view.m_hWnd, nullptr, FALSE));
    m.Install();
    m.host.Move(CPoint(109, 105), MK_MBUTTON);
    EXPECT_EQ(-18.0, m.host.Tran().GetOriginX());
    const Calls calls = m.Take();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ("RefreshGrip", calls.back());
    EXPECT_EQ(1, m.manager.GetHasCommand());
    m.manager.Cancel();
}

TEST(CommandOperationManager, AMoveWithoutTheMiddleButtonAsksForNoRepaint) {
    Managed m;
    ::ValidateRect(m.host.view.m_hWnd, nullptr);
    m.host.Move(CPoint(110, 105));
    EXPECT_FALSE(::GetUpdateRect(m.host.view.m_hWnd, nullptr, FALSE));
}

TEST(CommandOperationManager, TheCursorIsTheToolsOrTheDefault) {
    Managed m;
    EXPECT_EQ(1, static_cast<int>(m.manager.OnSetCursor(&m.host.view, HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_NE(nullptr, ::GetCursor());
    m.Install()->answer = State::RS_Cancelled;
    EXPECT_EQ(2, static_cast<int>(m.manager.OnSetCursor(&m.host.view, HTCLIENT, WM_MOUSEMOVE)));
    m.manager.Cancel();
}

TEST(CommandOperationManager, PassingOverASnapPointStartsTrackingIt) {
    Managed m;
    Probe* probe = m.Install();
    probe->snaps = true;
    m.host.Move(CPoint(30, 40)); // Tracks (77, 88).
    probe->snaps = false;
    m.log.clear();
    m.host.Send(WM_LBUTTONDOWN, 0, CPoint(77, 10));
    EXPECT_EQ((Calls{"down(77,290)", "downL(77,10)"}), m.Take());
    m.host.Tran().SetOriginX(-0.5); // The grip's column is pixel 77 still, and its x is not that of the pixel now.
    probe->snaps = true;
    m.host.Move(CPoint(30, 40));
    probe->snaps = false;
    m.log.clear();
    m.host.Send(WM_LBUTTONDOWN, 0, CPoint(77, 10));
    EXPECT_EQ("down(77,290)", m.Take()[0]) << "the grip's own x, not 76.5";
    m.host.Send(WM_LBUTTONDOWN, 0, CPoint(77, 10));
    EXPECT_EQ("down(76.5,290)", m.Take()[0]) << "tracking ended with the click";
    m.manager.Cancel();
}
