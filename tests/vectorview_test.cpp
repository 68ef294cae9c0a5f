// The view window: every message of its table, the paint, the wheel, command words, construction and destruction.

#include "CommandOperationManager.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "support/BoxAnswer.h"
#include "support/TestData.h"
#include "support/ViewHost.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

std::string Text(const char* format, ...) {
    char buffer[200];
    va_list args;
    va_start(args, format);
    vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    return buffer;
}

std::string PointText(const CGePoint2d& p) {
    return Text("(%g,%g;%d)", p.x, p.y, p.type);
}

// An engine that writes down what the view tells it.
class RecordingManager : public CCommandOperationManager {
public:
    using CCommandOperationManager::CCommandOperationManager;

    ResultState OnLButtonDown(unsigned int f, CGePoint2d p) override { return Note("LButtonDown", f, p); }
    ResultState OnLButtonUp(unsigned int f, CGePoint2d p) override { return Note("LButtonUp", f, p); }
    ResultState OnMouseMove(unsigned int f, CGePoint2d p) override { return Note("MouseMove", f, p); }
    ResultState OnRButtonDown(unsigned int f, CGePoint2d p) override { return Note("RButtonDown", f, p); }
    ResultState OnMButtonDown(unsigned int f, CGePoint2d p) override { return Note("MButtonDown", f, p); }
    ResultState OnMouseWheel(unsigned int f, short delta, CGePoint2d p) override {
        calls.push_back(Text("MouseWheel %u %d ", f, delta) + PointText(p));
        return RS_Continue;
    }
    ResultState OnKeyDown(unsigned int c, unsigned int n, unsigned int f) override {
        calls.push_back(Text("KeyDown %u %u %u", c, n, f));
        return RS_Continue;
    }
    ResultState OnSetCursor(CWnd* wnd, unsigned int hit, unsigned int message) override {
        calls.push_back(Text("SetCursor %d %u %u", wnd == m_pWnd ? 1 : 0, hit, message));
        return cursorResult;
    }
    void PreRedraw() override { calls.push_back("PreRedraw"); }
    int DoCommand(CString word) override {
        calls.push_back("DoCommand " + Utf8(word));
        return 0;
    }

    std::vector<std::string> calls;
    ResultState cursorResult = RS_Continue;

private:
    ResultState Note(const char* name, unsigned int flags, const CGePoint2d& p) {
        calls.push_back(Text("%s %u ", name, flags) + PointText(p));
        return RS_Continue;
    }
};

class RecordedView : public CVectorView {
public:
    RecordedView() { OnCreateCommandOperationManager(); }
    RecordingManager& Engine() { return *static_cast<RecordingManager*>(m_pManager); }
    std::vector<std::string> TakeCalls() {
        std::vector<std::string> calls;
        calls.swap(Engine().calls);
        return calls;
    }
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (countDefaults) {
            Engine().calls.push_back(Text("Default %u", message));
        }
        return CVectorView::DefWindowProc(message, wParam, lParam);
    }
    int DrawSpecInfo(CDC* dc, int n) override {
        Engine().calls.push_back(Text("DrawSpecInfo %d", n));
        CRect clip;
        dc->GetClipBox(&clip);
        specClip = clip;
        if (throwInPaint) {
            throw 1;
        }
        return 0;
    }
    CRect specClip;
    bool countDefaults = false;
    bool throwInPaint = false;

protected:
    void OnCreateCommandOperationManager() override {
        FreeCommandOperationManager();
        m_pManager = new RecordingManager(this, &m_Graphic, &m_CoordTran, GetDocument());
        KX_ADD_MEMORY(m_pManager);
    }
};

struct Recorded {
    Recorded() {
        ShowView(view, parent);
        view.TakeCalls();
        view.countDefaults = true;
    }
    std::vector<std::string> Send(UINT message, WPARAM wParam, LPARAM lParam) {
        result = view.SendMessage(message, wParam, lParam);
        return view.TakeCalls();
    }
    ParentWindow parent;
    RecordedView view;
    LRESULT result = 0;
};

using Calls = std::vector<std::string>;

} // namespace

// ---- The table of messages -----------------------------------------------------------------------------------------

TEST(VectorView, ALeftPressGoesToTheEngineInPixelsThenToTheDefault) {
    Recorded r;
    EXPECT_EQ((Calls{"LButtonDown 1 (10,20;1)", "Default 513"}),
              r.Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 20)));
}

TEST(VectorView, AReleaseGoesToTheEngineThenToTheDefault) {
    Recorded r;
    EXPECT_EQ((Calls{"LButtonUp 8 (11,21;1)", "Default 514"}), r.Send(WM_LBUTTONUP, MK_CONTROL, MAKELPARAM(11, 21)));
}

TEST(VectorView, ALeftDoubleClickIsNotToldToTheEngine) {
    Recorded r;
    HINSTANCE before = AfxGetResourceHandle();
    EXPECT_EQ((Calls{"Default 515"}), r.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(1, 1)));
    EXPECT_EQ(before, AfxGetResourceHandle());
}

TEST(VectorView, AMoveGoesToTheEngineAlsoWithNegativePixels) {
    Recorded r;
    EXPECT_EQ((Calls{"MouseMove 0 (-3,-4;1)", "Default 512"}), r.Send(WM_MOUSEMOVE, 0, MAKELPARAM(-3, -4)));
}

TEST(VectorView, RightAndMiddlePressesGoToTheEngine) {
    Recorded r;
    EXPECT_EQ((Calls{"RButtonDown 2 (5,6;1)", "Default 516"}), r.Send(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 6)));
    EXPECT_EQ((Calls{"MButtonDown 16 (7,8;1)", "Default 519"}), r.Send(WM_MBUTTONDOWN, MK_MBUTTON, MAKELPARAM(7, 8)));
    EXPECT_EQ((Calls{"Default 520"}), r.Send(WM_MBUTTONUP, 0, MAKELPARAM(7, 8)));
}

TEST(VectorView, AMiddleDoubleClickFitsTheDrawing) {
    Recorded r;
    r.view.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, 0, 0, 1000, 500);
    EXPECT_EQ((Calls{"Default 521"}), r.Send(WM_MBUTTONDBLCLK, MK_MBUTTON, MAKELPARAM(1, 1)));
    EXPECT_EQ(400, r.view.GetVectorViewCoordTran()->GetScreenSize().cx);
    EXPECT_NE(1.0f, r.view.GetVectorViewCoordTran()->GetScale());
    EXPECT_TRUE(::GetUpdateRect(r.view.m_hWnd, nullptr, FALSE));
}

TEST(VectorView, AKeyGoesToTheEngineWithRepeatCountAndFlags) {
    Recorded r;
    EXPECT_EQ((Calls{"KeyDown 65 3 30", "Default 256"}), r.Send(WM_KEYDOWN, 'A', MAKELPARAM(3, 30)));
}

TEST(VectorView, ScrollMessagesGoToTheBaseAlone) {
    Recorded r;
    EXPECT_EQ((Calls{"Default 276"}), r.Send(WM_HSCROLL, SB_LINEDOWN, 0));
    EXPECT_EQ((Calls{"Default 277"}), r.Send(WM_VSCROLL, SB_LINEDOWN, 0));
}

TEST(VectorView, ErasingPaintsNothingAndSaysDone) {
    Recorded r;
    CClientDC dc(&r.view);
    EXPECT_EQ((Calls{}), r.Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.m_hDC), 0));
    EXPECT_EQ(1, r.result);
}

TEST(VectorView, ResizingLeavesTheMappingAlone) {
    Recorded r;
    r.view.GetVectorViewCoordTran()->SethScreen(77);
    r.view.SetWindowPos(nullptr, 0, 0, 200, 150, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(77, r.view.GetVectorViewCoordTran()->GethScreen());
    EXPECT_EQ(0, r.view.GetVectorViewCoordTran()->GetScreenSize().cx);
    EXPECT_EQ(1.0f, r.view.GetVectorViewCoordTran()->GetScale());
}

TEST(VectorView, OnlyACursorResultOfExactlyOneEndsTheMessage) {
    Recorded r;
    const auto window = reinterpret_cast<WPARAM>(r.view.m_hWnd);
    const LPARAM lParam = MAKELPARAM(HTCLIENT, WM_MOUSEMOVE);
    r.view.Engine().cursorResult = CCommandOperation::RS_Done;
    EXPECT_EQ((Calls{"SetCursor 1 1 512"}), r.Send(WM_SETCURSOR, window, lParam));
    EXPECT_EQ(1, r.result);
    r.view.Engine().cursorResult = CCommandOperation::RS_Cancelled;
    EXPECT_EQ((Calls{"SetCursor 1 1 512", "Default 32"}), r.Send(WM_SETCURSOR, window, lParam));
}

TEST(VectorView, NothingCapturesTheMouse) {
    ViewHost host;
    host.view.DoCommand(L"line");
    host.Send(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(50, 50));
    EXPECT_EQ(nullptr, ::GetCapture());
}

// ---- Paint ---------------------------------------------------------------------------------------------------------

TEST(VectorView, APaintTellsTheEngineFirstAndTheHookLast) {
    Recorded r;
    r.view.countDefaults = false;
    r.view.InvalidateRect(CRect(10, 20, 110, 70), FALSE);
    r.view.UpdateWindow();
    EXPECT_EQ((Calls{"PreRedraw", "DrawSpecInfo 1"}), r.view.TakeCalls());
    EXPECT_EQ(CRect(10, 20, 110, 70), r.view.specClip) << "the buffer is the clip box, in client pixels";
}

TEST(VectorView, APaintShowsBackgroundAndLines) {
    ViewHost host;
    host.Document().SetBKColor(RGB(10, 20, 30));
    host.view.AddLine(CGePoint2d(50, 100), CGePoint2d(150, 100), Gdiplus::Color(255, 200, 0, 0), 1);
    const Picture picture = host.TakeFresh();
    EXPECT_EQ(RGB(200, 0, 0), picture.At(100, 200));
    EXPECT_EQ(RGB(10, 20, 30), picture.At(100, 199));
    EXPECT_EQ(RGB(10, 20, 30), picture.At(0, 0));
    EXPECT_EQ(100, picture.Count(RGB(200, 0, 0)));
}

TEST(VectorView, AFailureInThePaintIsShownAndSwallowed) {
    Recorded r;
    BoxAnswer boxes;
    r.view.throwInPaint = true;
    r.view.InvalidateRect(nullptr, TRUE);
    r.view.UpdateWindow();
    ASSERT_FALSE(boxes.Texts().empty());
    EXPECT_EQ("CVectorView::OnPaint() 错误", boxes.Texts()[0]);
    r.view.throwInPaint = false;
}

TEST(VectorView, PaintingForTheHostLeavesBackgroundAndHookAlone) {
    Recorded r;
    r.view.countDefaults = false;
    CClientDC window(&r.view);
    CDC memory;
    ASSERT_TRUE(memory.CreateCompatibleDC(&window));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&window, 50, 50));
    CBitmap* old = memory.SelectObject(&bitmap);
    memory.FillSolidRect(0, 0, 50, 50, RGB(1, 2, 3));
    EXPECT_EQ(1, r.view.VectorPaint(&memory));
    EXPECT_EQ((Calls{"PreRedraw"}), r.view.TakeCalls());
    EXPECT_EQ(RGB(1, 2, 3), memory.GetPixel(25, 25));
    memory.SelectObject(old);
}

// ---- Wheel ---------------------------------------------------------------------------------------------------------

namespace {

void SetExtent100(CVectorView& view, float scale) {
    view.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, 0, 0, 100, 40);
    view.GetVectorViewCoordTran()->SetScale(scale);
    ::ValidateRect(view.m_hWnd, nullptr);
}

} // namespace

TEST(VectorView, TheWheelForwardZoomsInAndTellsTheEngineScreenCoordinates) {
    Recorded r;
    SetExtent100(r.view, 1.9f);
    EXPECT_EQ((Calls{"MouseWheel 0 120 (321,123;1)", "Default 522"}),
              r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(321, 123)));
    EXPECT_NEAR(1.52, r.view.GetVectorViewCoordTran()->GetScale(), 1e-6);
    EXPECT_TRUE(::GetUpdateRect(r.view.m_hWnd, nullptr, FALSE));
}

TEST(VectorView, TheWheelBackwardStopsAtFiftyPixelsAndStillRepaintsAndTells) {
    Recorded r;
    SetExtent100(r.view, 2.6f); // 100 / 3.12 = 32.05
    EXPECT_EQ((Calls{"MouseWheel 4 -120 (5,6;1)", "Default 522"}),
              r.Send(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -120), MAKELPARAM(5, 6)));
    EXPECT_EQ(2.6f, r.view.GetVectorViewCoordTran()->GetScale());
    EXPECT_TRUE(::GetUpdateRect(r.view.m_hWnd, nullptr, FALSE));
}

TEST(VectorView, AnyDeltaCountsOnceAndZeroIsForward) {
    Recorded r;
    SetExtent100(r.view, 1.0f);
    r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 1200), 0);
    EXPECT_NEAR(0.8, r.view.GetVectorViewCoordTran()->GetScale(), 1e-6);
    r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 0), 0);
    EXPECT_NEAR(0.64, r.view.GetVectorViewCoordTran()->GetScale(), 1e-6);
    r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, -1), 0);
    EXPECT_NEAR(0.768, r.view.GetVectorViewCoordTran()->GetScale(), 1e-6);
}

TEST(VectorView, AnEmptyDrawingDoesNotZoomAndTheEngineIsNotTold) {
    Recorded r;
    ::ValidateRect(r.view.m_hWnd, nullptr);
    EXPECT_EQ((Calls{"Default 522"}), r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0));
    EXPECT_EQ(1.0f, r.view.GetVectorViewCoordTran()->GetScale());
    EXPECT_FALSE(::GetUpdateRect(r.view.m_hWnd, nullptr, FALSE));
}

TEST(VectorView, ASinglePointNeverZooms) {
    Recorded r;
    r.view.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, 5, 5, 5, 5);
    r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    EXPECT_EQ(1.0f, r.view.GetVectorViewCoordTran()->GetScale());
}

TEST(VectorView, TheWheelZoomsAboutTheCursorAndNotAboutTheMessagesPoint) {
    ViewHost host;
    host.Document().AddLine(0, 0, 0, 0, 0, 0, 0, 0, 1000, 1000);
    CPoint cursor(120, 90);
    host.view.ClientToScreen(&cursor);
    ASSERT_TRUE(::SetCursorPos(cursor.x, cursor.y));
    PumpMessages();
    CGePoint2d before;
    host.Tran().LPToDP(CPoint(120, 90), before);
    host.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), CPoint(0, 0));
    CGePoint2d after;
    host.Tran().LPToDP(CPoint(120, 90), after);
    EXPECT_NEAR(0.8, host.Tran().GetScale(), 1e-6);
    EXPECT_NEAR(before.x, after.x, 1e-4);
    EXPECT_NEAR(before.y, after.y, 1e-4);
}

// ---- Command words -------------------------------------------------------------------------------------------------

TEST(VectorView, EveryWordGoesToTheEngineAndMarksTheDocument) {
    Recorded r;
    for (LPCTSTR word : {L"line", L"nonsense", L"Open", L""}) {
        r.view.GetDocument()->SetModifiedFlag(FALSE);
        r.view.DoCommand(word);
        EXPECT_EQ((Calls{"DoCommand " + Utf8(word)}), r.view.TakeCalls());
        EXPECT_TRUE(r.view.GetDocument()->IsModified()) << Utf8(word);
    }
}

// ---- Life ----------------------------------------------------------------------------------------------------------

TEST(VectorView, EverythingExistsBeforeTheWindow) {
    const int before = CKXMemoryManager::Instance()->GetCount();
    {
        CVectorView view;
        ASSERT_NE(nullptr, view.GetDocument());
        ASSERT_NE(nullptr, view.GetCommandOperationManager());
        EXPECT_EQ(view.GetVectorViewCoordTran(), view.GetDocument()->GetVectorViewCoordTran());
        EXPECT_EQ(nullptr, view.GetDlgDrawAbleProperty());
        view.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, 0, 0, 1, 1);
        view.ZoomAll(); // No window: nothing to fit into.
        EXPECT_EQ(1.0f, view.GetVectorViewCoordTran()->GetScale());
    }
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

TEST(VectorView, LoadFileNeitherFitsNorRepaintsAndGivesWhatTheDocumentGave) {
    ViewHost host;
    Bytes bytes = ReadTestData("lines_two.nrv");
    ::ValidateRect(host.view.m_hWnd, nullptr);
    EXPECT_EQ(1, host.view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size())));
    EXPECT_FALSE(::GetUpdateRect(host.view.m_hWnd, nullptr, FALSE));
    EXPECT_EQ(0.5f, host.Tran().GetScale());
    EXPECT_EQ(2, host.Objects().GetSize());
    EXPECT_EQ(0, host.view.LoadFile(nullptr, 10));
    EXPECT_EQ(0, host.view.LoadFile(bytes.data(), 0));
    EXPECT_EQ(2, host.Objects().GetSize());
}

TEST(VectorView, TheWindowClassHasNoDeviceContextOfItsOwn) {
    ViewHost host;
    EXPECT_EQ(0u, ::GetClassLongPtr(host.view.m_hWnd, GCL_STYLE) & (CS_OWNDC | CS_CLASSDC | CS_PARENTDC));
    {
        CClientDC dc(&host.view);
        dc.SetROP2(R2_NOT);
    }
    CClientDC dc(&host.view);
    EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
}
