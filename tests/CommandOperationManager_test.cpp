// The manager: routing, states, installing and ending tools, the default click, pan, keys, cursor.

#include "CommandOperationManager.h"
#include "CommandWords.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

#include <functional>

namespace {

using State = CCommandOperation::ResultState;

// A tool that records its events and gives the results that it was set to.
class Probe : public CCommandOperation {
public:
    Probe(ViewHost& host, std::vector<std::string>& calls) : Probe(host.view, calls) {}
    Probe(CVectorView& view, std::vector<std::string>& calls)
        : CCommandOperation(&view, nullptr, view.GetVectorViewCoordTran(), view.GetDocument()), log(calls) {
        KX_ADD_MEMORY(this);
        m_SnapEnabled = 0;
    }
    ~Probe() override { log.push_back("deleted"); }
    void Execute() override { log.push_back("Execute"); }
    void Cancel() override {
        log.push_back("Cancel");
        if (inCancel) {
            inCancel();
        }
    }
    ResultState OnCancel() override {
        log.push_back("OnCancel");
        return CCommandOperation::OnCancel();
    }
    ResultState OnLButtonDown(unsigned int f, CGePoint2d p) override { return Note("down", p, {f}); }
    ResultState OnLButtonUp(unsigned int f, CGePoint2d p) override { return Note("up", p, {f}); }
    ResultState OnMouseMove(unsigned int f, CGePoint2d p) override { return Note("move", p, {f}); }
    ResultState OnMouseWheel(unsigned int f, short d, CGePoint2d p) override { return Note("wheel", p, {f, d}); }
    ResultState OnRButtonDown(unsigned int f, CGePoint2d p) override { return Note("right", p, {f}); }
    ResultState OnMouseMoveForL(unsigned int f, CPoint p) override { return Note("moveL", CGePoint2d(p), {f}); }
    ResultState OnButtonDownForL(unsigned int f, CPoint p) override { return Note("downL", CGePoint2d(p), {f}); }
    ResultState OnKeyDown(unsigned int c, unsigned int n, unsigned int f) override {
        return Note("key", CGePoint2d(c, 0), {n, f});
    }
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
    ResultState OnSetCursor(CWnd*, unsigned int hitTest, unsigned int message) override {
        given.insert(given.end(), {hitTest, message});
        return answer;
    }

    std::vector<std::string>& log;
    // What came with the events beside their points and keys, in order.
    std::vector<long long> given;
    ResultState answer = RS_Continue;
    bool snaps = false;
    int handlersEnded = 0;
    // What a host does while a handler or Cancel runs; once.
    std::function<void()> during;
    std::function<void()> inCancel;

private:
    ResultState Note(const char* name, const CGePoint2d& p, std::initializer_list<long long> more) {
        given.insert(given.end(), more);
        char text[80];
        snprintf(text, sizeof text, "%s(%g,%g)", name, p.x, p.y);
        log.push_back(text);
        const ResultState state = answer;
        std::function<void()> host;
        host.swap(during);
        if (host) {
            host();
            handlersEnded += 1; // The tool stays allocated until the event is over, whatever the host did.
        }
        return state;
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

TEST(CommandOperationManager, FlagsTurnsAndRepeatsReachTheRunningToolAsTheyCame) {
    using Given = std::vector<long long>;
    Managed m;
    Probe* probe = m.Install();
    const auto take = [&] {
        Given result;
        result.swap(probe->given);
        return result;
    };
    const CGePoint2d p(10, 20);
    m.manager.OnLButtonDown(MK_LBUTTON | MK_SHIFT, p); // 1 + 4, for the press and for its pixel.
    EXPECT_EQ((Given{5, 5}), take());
    m.manager.OnLButtonUp(MK_SHIFT | MK_CONTROL, p);
    EXPECT_EQ((Given{12}), take());
    m.manager.OnMouseMove(MK_RBUTTON | MK_CONTROL, p);
    EXPECT_EQ((Given{10, 10}), take());
    m.manager.OnMouseWheel(MK_CONTROL, -240, p); // The turn, and the move after it.
    EXPECT_EQ((Given{8, -240, 8}), take());
    m.manager.OnRButtonDown(MK_RBUTTON | MK_SHIFT, p);
    EXPECT_EQ((Given{6}), take());
    m.manager.OnKeyDown('Q', 3, 0x4010);
    EXPECT_EQ((Given{3, 0x4010}), take());
    m.manager.OnSetCursor(&m.host.view, HTBORDER, WM_RBUTTONDOWN);
    EXPECT_EQ((Given{HTBORDER, WM_RBUTTONDOWN}), take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, AToolInstalledWithAnyNumberButZeroGetsTheEvents) {
    for (int inCommand : {2, -1, 256}) {
        Managed m;
        m.Install(inCommand)->answer = State::RS_Cancelled;
        m.host.Move(CPoint(30, 40));
        EXPECT_EQ((Calls{"move(30,260)", "moveL(30,40)"}), m.Take()) << inCommand;
        m.host.Key('Q');
        EXPECT_EQ((Calls{"key(81,0)"}), m.Take()) << inCommand;
        m.manager.OnMouseWheel(0, 120, CGePoint2d(1, 2));
        EXPECT_EQ((Calls{"wheel(1,298)", "move(1,298)"}), m.Take()) << inCommand;
        EXPECT_EQ(2, static_cast<int>(m.manager.OnSetCursor(&m.host.view, HTCLIENT, WM_MOUSEMOVE))) << inCommand;
        m.host.Send(WM_LBUTTONDOWN, 0, CPoint(10, 20));
        EXPECT_EQ((Calls{"down(10,280)", "downL(10,20)", "deleted"}), m.Take()) << inCommand;
        m.Install(inCommand)->answer = State::RS_Done;
        m.host.Send(WM_LBUTTONUP, 0, CPoint(10, 20));
        EXPECT_EQ((Calls{"up(10,280)", "deleted"}), m.Take()) << inCommand;
        m.Install(inCommand)->answer = State::RS_Done;
        m.host.Send(WM_RBUTTONDOWN, 0, CPoint(1, 2));
        EXPECT_EQ((Calls{"right(1,298)", "deleted"}), m.Take()) << inCommand;
    }
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
    AddLine(m.host, 50, 200, 150, 200);
    m.Install()->snaps = true; // To somewhere else: not asked.
    m.host.Send(WM_LBUTTONUP, 0, CPoint(53, 102));
    EXPECT_EQ((Calls{"up(50,200)"}), m.Take());
    m.host.Send(WM_LBUTTONUP, 0, CPoint(2, 102));
    EXPECT_EQ((Calls{"up(0,200)"}), m.Take()) << "the foot from the origin, where the manager's last point stays";
    m.manager.SetOsnapMode(7);
    m.Take();
    m.host.Send(WM_LBUTTONUP, 0, CPoint(2, 102));
    EXPECT_EQ((Calls{"up(2,198)"}), m.Take()) << "without bit 8";
    m.manager.Cancel();
}

TEST(CommandOperationManager, WithoutAToolAReleaseStillSearchesAndAMoveDoesNot) {
    class Counting : public CCommandOperationManager {
    public:
        using CCommandOperationManager::CCommandOperationManager;
        int GetGripPoint(CGePoint2d point, CGePoint2d& result) override {
            ++searches;
            return CCommandOperationManager::GetGripPoint(point, result);
        }
        int searches = 0;
    };
    ViewHost host;
    Counting manager(&host.view, nullptr, &host.Tran(), &host.Document());
    manager.OnMouseMove(0, CGePoint2d(1, 1));
    EXPECT_EQ(0, manager.searches);
    manager.OnLButtonUp(0, CGePoint2d(1, 1));
    EXPECT_EQ(1, manager.searches);
}

TEST(CommandOperationManager, TheWheelIsFollowedByAMoveAtTheSamePoint) {
    Managed m;
    m.Install();
    m.manager.OnMouseWheel(0, 120, CGePoint2d(500, 600));
    EXPECT_EQ((Calls{"wheel(500,-300)", "move(500,-300)"}), m.Take()) << "screen coordinates, taken for client pixels";
    m.manager.Cancel();
}

TEST(CommandOperationManager, EveryEventGivesZeroToTheView) {
    Managed m;
    const CGePoint2d p(1, 1);
    const std::function<State()> events[] = {
        [&] { return m.manager.OnLButtonDown(0, p); },        [&] { return m.manager.OnLButtonUp(0, p); },
        [&] { return m.manager.OnMouseMove(0, p); },          [&] { return m.manager.OnMouseWheel(0, 120, p); },
        [&] { return m.manager.OnRButtonDown(0, p); },        [&] { return m.manager.OnKeyDown('A', 1, 0); },
        [&] { return m.manager.OnMouseMove(MK_MBUTTON, p); }, [&] { return m.manager.OnMButtonDown(0, p); },
    };
    for (const auto& event : events) {
        for (int state : {0, 1, 2, 5, 7}) {
            m.Install()->answer = static_cast<State>(state);
            EXPECT_EQ(0, static_cast<int>(event())) << &event - events << ", " << state;
            m.manager.Cancel();
            EXPECT_EQ(0, static_cast<int>(event())) << &event - events << ", no tool";
        }
    }
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
    m.host.Send(WM_LBUTTONUP, 0, CPoint(1, 1));
    m.manager.OnMouseWheel(0, 120, CGePoint2d(1, 1));
    EXPECT_EQ((Calls{}), m.Take());
    EXPECT_EQ(1, m.host.Document().IsSelected(line)) << "a key clears the selection only without any tool";
    m.manager.Execute();
    EXPECT_EQ((Calls{"Execute"}), m.Take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, BesideAHeldToolAClickDoesTheDefaultAndAPanRefreshesIt) {
    Managed m;
    CLine* line = AddLine(m.host, 100, 100, 300, 100);
    m.Install(0);
    m.host.Move(CPoint(5, 5), MK_MBUTTON);
    EXPECT_EQ((Calls{"RefreshGrip"}), m.Take());
    m.manager.Cancel();
    m.host.Tran().SetOriginX(0);
    m.host.Tran().SetOriginY(0);
    m.Install(0);
    m.host.Click(CPoint(200, 200));
    EXPECT_EQ(1, m.host.Document().IsSelected(line));
    EXPECT_EQ((Calls{}), m.Take());
    m.host.Click(CPoint(100, 200));
    EXPECT_EQ((Calls{"OnCancel", "Cancel", "deleted"}), m.Take()) << "a grip that is taken replaces it";
    EXPECT_EQ(1, m.manager.GetHasCommand());
    m.manager.Cancel();
}

TEST(CommandOperationManager, ATemporaryToolIsInstalledOnCaptureAlone) {
    Managed m;
    m.Install();
    auto* temporary = new Probe(m.host, m.log);
    m.manager.CheckResultState(temporary, State::RS_Done);
    EXPECT_EQ((Calls{}), m.Take());
    m.manager.CheckResultState(temporary, State::RS_Capture);
    EXPECT_EQ((Calls{"OnCancel", "Cancel", "deleted"}), m.Take()) << "and the snap mode is not handed on";
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
    m.Install();
    for (LPCTSTR word : {L"LINE", L"Line", L"", L"line ", L"open", L"save"}) {
        EXPECT_EQ(0, m.manager.DoCommand(word));
    }
    EXPECT_EQ((Calls{}), m.Take());
    m.host.Move(CPoint(30, 40));
    EXPECT_EQ((Calls{"move(30,260)", "moveL(30,40)"}), m.Take()) << "the same tool runs on";
    EXPECT_EQ(1, m.manager.DoCommand(L"line"));
    EXPECT_EQ((Calls{"Cancel", "deleted"}), m.Take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, AToolDrawsIntoTheDocumentThatThePainterHoldsWhenItsWordComes) {
    class TwoDocuments : public CVectorView {
    public:
        TwoDocuments(CGraphicDocument& first, CGraphicDocument& second) {
            FreeCommandOperationManager();
            m_Graphic.SetDocument(&first, 1);
            OnCreateCommandOperationManager();
            m_Graphic.SetDocument(&second, 1); // The manager keeps the first.
        }
    };
    CGraphicDocument first;
    CGraphicDocument second;
    ParentWindow parent;
    TwoDocuments view(first, second);
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    ShowView(view, parent);
    view.DoCommand(L"line");
    for (const CPoint& pixel : {CPoint(50, 60), CPoint(150, 90)}) {
        view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(pixel.x, pixel.y));
    }
    EXPECT_EQ(0, first.GetDrawableObjs()->GetSize());
    ASSERT_EQ(1, second.GetDrawableObjs()->GetSize());
    auto* line = DYNAMIC_DOWNCAST(CLine, second.GetDrawableObjs()->GetAt(0));
    ASSERT_NE(nullptr, line);
    EXPECT_TRUE(line->GetStartPoint() == CGePoint2d(50, 240));
    EXPECT_TRUE(line->GetEndPoint() == CGePoint2d(150, 210));
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

TEST(CommandOperationManager, APanThatWouldMakeAnOriginInfiniteMovesNothing) {
    Managed m;
    m.host.Tran().SetScale(1e37f);
    m.host.Send(WM_MBUTTONDOWN, MK_MBUTTON, CPoint(100, 100));
    m.host.Move(CPoint(200, 101), MK_MBUTTON); // 100 pixels are 1e39 units, more than a float holds.
    EXPECT_EQ(0.0, m.host.Tran().GetOriginX());
    EXPECT_EQ(0.0, m.host.Tran().GetOriginY());
}

TEST(CommandOperationManager, AMoveWithoutTheMiddleButtonAsksForNoRepaint) {
    Managed m;
    ::ValidateRect(m.host.view.m_hWnd, nullptr);
    m.host.Move(CPoint(110, 105));
    EXPECT_FALSE(::GetUpdateRect(m.host.view.m_hWnd, nullptr, FALSE));
}

TEST(CommandOperationManager, TheCursorIsTheToolsOrTheDefault) {
    Managed m;
    HCURSOR own = ::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(131));
    HCURSOR other = ::LoadCursor(nullptr, IDC_WAIT);
    ASSERT_NE(nullptr, own);
    ASSERT_NE(own, other);
    ::SetCursor(other);
    EXPECT_EQ(1, static_cast<int>(m.manager.OnSetCursor(&m.host.view, HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_EQ(own, ::GetCursor());
    ::SetCursor(other);
    m.Install()->answer = State::RS_Cancelled;
    EXPECT_EQ(2, static_cast<int>(m.manager.OnSetCursor(&m.host.view, HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_EQ(other, ::GetCursor()) << "the tool's business";
    m.manager.Cancel();
    m.Install(0);
    EXPECT_EQ(1, static_cast<int>(m.manager.OnSetCursor(&m.host.view, HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_EQ(own, ::GetCursor()) << "a held tool has no say";
    m.manager.Cancel();
}

TEST(CommandOperationManager, WithoutADefaultCursorNoneIsSetAndTheAnswerIsZero) {
    Managed m;
    HCURSOR& own = PeekAt(m.manager, DefaultCursor());
    HCURSOR kept = own;
    ASSERT_NE(nullptr, kept);
    HCURSOR other = ::LoadCursor(nullptr, IDC_WAIT);
    ASSERT_NE(nullptr, other);
    ::SetCursor(other);
    own = nullptr;
    EXPECT_EQ(0, static_cast<int>(m.manager.OnDefaultSetCursor(&m.host.view, HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_EQ(0, static_cast<int>(m.manager.OnSetCursor(&m.host.view, HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_EQ(other, ::GetCursor());
    own = kept;
    EXPECT_EQ(1, static_cast<int>(m.manager.OnDefaultSetCursor(&m.host.view, HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_EQ(kept, ::GetCursor());
}

TEST(CommandOperationManager, GripsCloserThanAMillionthOfABillionthAreOne) {
    Managed m;
    CGePointArray& grips = PeekAt(m.manager, TrackedGrips());
    m.manager.AddGripPoint(CGePoint2d(0, 0));
    m.manager.AddGripPoint(CGePoint2d(0.9e-15, -0.9e-15));
    EXPECT_EQ(1, grips.GetSize());
    m.manager.AddGripPoint(CGePoint2d(1e-15, 0)); // Not strictly below.
    EXPECT_EQ(2, grips.GetSize());
    m.manager.AddGripPoint(CGePoint2d(0, -1.5e-15));
    EXPECT_EQ(3, grips.GetSize());
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

// ---- What a host does in the middle --------------------------------------------------------------------------------

namespace {

// The events that a tool answers, as messages of its view.
struct Event {
    const char* name;
    UINT message;
    WPARAM wParam;
};

const Event kEvents[] = {
    {"down", WM_LBUTTONDOWN, MK_LBUTTON},  {"up", WM_LBUTTONUP, 0},  {"move", WM_MOUSEMOVE, MK_MBUTTON},
    {"right", WM_RBUTTONDOWN, MK_RBUTTON}, {"key", WM_KEYDOWN, 'A'}, {"wheel", WM_MOUSEWHEEL, MAKEWPARAM(0, 120)},
};

} // namespace

TEST(CommandOperationManager, AToolThatIsReplacedInsideAnEventGetsNothingMoreAndEndsNotTheNext) {
    for (const Event& event : kEvents) {
        Managed m;
        AddLine(m.host, 100, 100, 300, 100); // So that the wheel reaches the engine.
        Probe* first = m.Install();
        first->answer = State::RS_Done;
        first->during = [&] {
            m.log.push_back("host");
            m.manager.SetCommand(new Probe(m.host, m.log), 1);
        };
        m.host.view.SendMessage(event.message, event.wParam, MAKELPARAM(10, 20));
        Calls calls = m.Take();
        ASSERT_LT(4u, calls.size()) << event.name;
        calls.erase(calls.begin());
        Calls expected{"host", "Cancel", "SetOsnapMode 15"};
        if (event.message == WM_MOUSEMOVE) {
            expected.push_back("RefreshGrip"); // The pan continues, with the tool that runs now.
        }
        expected.push_back("deleted");
        EXPECT_EQ(expected, calls) << event.name;
        EXPECT_EQ(1, m.manager.GetHasCommand()) << event.name;
        m.manager.Cancel();
    }
}

TEST(CommandOperationManager, AViewFreedInsideAnEventFreesTheManagerAndLeavesTheTool) {
    for (const Event& event : kEvents) {
        Calls log;
        ParentWindow parent;
        auto* view = new CVectorView;
        view->GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
        ShowView(*view, parent);
        view->AddLine(CGePoint2d(0, 0), CGePoint2d(300, 100), Gdiplus::Color(255, 255, 255, 255), 1);
        auto* probe = new Probe(*view, log);
        static_cast<CCommandOperationManager*>(view->GetCommandOperationManager())->SetCommand(probe, 1);
        log.clear();
        HWND window = view->m_hWnd;
        probe->answer = State::RS_Done;
        probe->during = [&] {
            delete view;
            view = nullptr;
        };
        ::SendMessage(window, event.message, event.wParam, MAKELPARAM(10, 20));
        EXPECT_EQ(nullptr, view) << event.name;
        EXPECT_FALSE(::IsWindow(window)) << event.name;
        EXPECT_EQ(1u, log.size()) << event.name << ": nothing after the handler, not even its end";
        KX_REMOVE_MEMORY(probe);
        delete probe;
    }
}

TEST(CommandOperationManager, AToolThatEndsInsideAnEventIsFreedWhenTheOutermostOneIsOver) {
    Managed m;
    const int before = CKXMemoryManager::Instance()->GetCount();
    m.Install()->during = [&] {
        m.manager.Cancel();
        Probe* second = m.Install();
        second->during = [&] {
            m.manager.Cancel();
            m.log.push_back("inner event ends");
        };
        m.host.Move(CPoint(1, 1));
        m.log.push_back("outer event ends");
        EXPECT_EQ(before + 2, CKXMemoryManager::Instance()->GetCount());
    };
    m.host.Move(CPoint(5, 5));
    // Install empties the log.
    EXPECT_EQ((Calls{"move(1,299)", "Cancel", "inner event ends", "outer event ends", "deleted", "deleted"}), m.Take());
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
    m.Install();
    m.manager.Cancel();
    EXPECT_EQ((Calls{"Cancel", "deleted"}), m.Take()) << "with no event running it is freed at once";
}

TEST(CommandOperationManager, AnExceptionOutOfAHandlerClosesTheEventAndFreesTheToolThatEndedInIt) {
    Managed m;
    m.Install()->during = [&] {
        m.manager.Cancel();
        throw 1;
    };
    EXPECT_THROW(m.manager.OnLButtonUp(0, CGePoint2d(1, 1)), int);
    EXPECT_EQ((Calls{"up(1,299)", "Cancel", "deleted"}), m.Take());
    m.Install();
    m.manager.Cancel();
    EXPECT_EQ((Calls{"Cancel", "deleted"}), m.Take());
}

TEST(CommandOperationManager, AnEngineFreedInItsOwnEventLeavesTheToolThatEndedBeforeToTheEndOfTheEvent) {
    Calls log;
    ParentWindow parent;
    const int before = CKXMemoryManager::Instance()->GetCount();
    auto* view = new CVectorView;
    ShowView(*view, parent);
    auto* manager = static_cast<CCommandOperationManager*>(view->GetCommandOperationManager());
    auto* probe = new Probe(*view, log);
    manager->SetCommand(probe, 1);
    log.clear();
    probe->during = [&] {
        manager->Cancel();
        delete view;
        log.push_back("view freed");
    };
    ::SendMessage(view->m_hWnd, WM_LBUTTONUP, 0, MAKELPARAM(3, 4));
    ASSERT_EQ(4u, log.size());
    EXPECT_EQ((Calls{"Cancel", "view freed", "deleted"}), Calls(log.begin() + 1, log.end()));
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

TEST(CommandOperationManager, TheRunningToolMayBeInstalledAgain) {
    Managed m;
    Probe* probe = m.Install(0);
    EXPECT_EQ(1, m.manager.SetCommand(probe, 1));
    EXPECT_EQ((Calls{"SetOsnapMode 15"}), m.Take());
    m.host.Move(CPoint(1, 1));
    EXPECT_EQ((Calls{"move(1,299)", "moveL(1,1)"}), m.Take());
    EXPECT_EQ(1, m.manager.SetCommand(nullptr, 1));
    EXPECT_EQ((Calls{"Cancel", "deleted"}), m.Take());
    EXPECT_EQ(0, m.manager.GetHasCommand());
}

TEST(CommandOperationManager, AToolThatAHostStartsWhileTheOldOneIsCancelledIsCancelledToo) {
    for (bool captured : {false, true}) {
        Managed m;
        const int before = CKXMemoryManager::Instance()->GetCount();
        Probe* first = m.Install();
        first->inCancel = [&] { m.manager.SetCommand(new Probe(m.host, m.log), 1); };
        auto* last = new Probe(m.host, m.log);
        Calls expected{"Cancel", "SetOsnapMode 15", "deleted", "Cancel", "deleted"};
        if (captured) {
            m.manager.CheckResultState(last, State::RS_Capture);
            expected.insert(expected.begin(), "OnCancel");
            expected.insert(expected.end() - 2, "OnCancel");
        } else {
            m.manager.SetCommand(last, 1);
            expected.push_back("SetOsnapMode 15");
        }
        EXPECT_EQ(expected, m.Take());
        m.host.Move(CPoint(1, 1));
        EXPECT_EQ((Calls{"move(1,299)", "moveL(1,1)"}), m.Take());
        m.manager.Cancel();
        EXPECT_EQ((Calls{"Cancel", "deleted"}), m.Take());
        EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
    }
}

TEST(CommandOperationManager, AToolThatAHostStartsWhileOneIsBrokenOffStays) {
    Managed m;
    m.Install()->inCancel = [&] { m.manager.SetCommand(new Probe(m.host, m.log), 1); };
    m.manager.Cancel();
    EXPECT_EQ((Calls{"Cancel", "SetOsnapMode 15", "deleted"}), m.Take());
    m.host.Move(CPoint(1, 1));
    EXPECT_EQ((Calls{"move(1,299)", "moveL(1,1)"}), m.Take());
    m.manager.Cancel();
}

TEST(CommandOperationManager, AViewFreedWhileAToolIsCancelledFreesTheToolToBeInstalled) {
    Calls log;
    ParentWindow parent;
    auto* view = new CVectorView;
    ShowView(*view, parent);
    auto* manager = static_cast<CCommandOperationManager*>(view->GetCommandOperationManager());
    auto* first = new Probe(*view, log);
    manager->SetCommand(first, 1);
    auto* second = new Probe(*view, log);
    log.clear();
    first->inCancel = [&] { delete view; };
    EXPECT_EQ(0, manager->SetCommand(second, 1));
    EXPECT_EQ((Calls{"Cancel", "deleted", "deleted"}), log);
}

TEST(CommandOperationManager, AThrowInTheDefaultClickLeavesNothingAllocated) {
    class Throwing : public CLine {
    public:
        float HitTest(CGePoint2d) override {
            if (inHitTest) {
                throw 1;
            }
            return 1000.0f;
        }
        void getGripPoints(CGePointArray&, int) override { throw 2; }
        bool inHitTest = true;
    };
    Managed m;
    auto* object = new Throwing;
    KX_ADD_MEMORY(object);
    m.host.Document().AddDrawAobject(object);
    m.host.Document().AddSelected(object);
    const int before = CKXMemoryManager::Instance()->GetCount();
    EXPECT_THROW(m.manager.OnDefaultLButtonDown(0, CGePoint2d(1, 1)), int);
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
    object->inHitTest = false;
    EXPECT_THROW(m.manager.OnDefaultLButtonDown(0, CGePoint2d(1, 1)), int);
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
    EXPECT_EQ(nullptr, ::GetWindow(m.host.view.m_hWnd, GW_CHILD)) << "their edit boxes went with them";
    m.host.Document().RemoveAllSelected();
    ::ValidateRect(m.host.view.m_hWnd, nullptr); // No paint asks for its grips.
}
