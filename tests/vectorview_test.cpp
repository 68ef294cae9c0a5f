// The view window: every message of its table, the paint, the wheel, command words, construction and destruction.

#include "CommandOperationManager.h"
#include "Dialog_DrawAbleProperty.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "PropertyDialogHost.h"
#include "support/BoxAnswer.h"
#include "support/FileDialogAnswer.h"
#include "support/RecordingDC.h"
#include "support/TestData.h"
#include "support/ViewHost.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>

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

// An engine that records the view's calls.
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
        moduleState = AfxGetModuleState();
        return cursorResult;
    }
    void PreRedraw() override {
        calls.push_back("PreRedraw");
        if (inPreRedraw) {
            inPreRedraw();
        }
    }
    int DoCommand(CString word) override {
        calls.push_back("DoCommand " + Utf8(word));
        if (inDoCommand) {
            inDoCommand();
        }
        return 0;
    }

    std::vector<std::string> calls;
    ResultState cursorResult = RS_Continue;
    std::function<void()> inPreRedraw;
    std::function<void()> inDoCommand;
    AFX_MODULE_STATE* moduleState = nullptr; // During OnSetCursor.

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
        resources = AfxGetResourceHandle();
        scaleAtDefault = m_CoordTran.GetScale();
        return CVectorView::DefWindowProc(message, wParam, lParam);
    }
    int DrawSpecInfo(CDC* dc, int n) override {
        Engine().calls.push_back(Text("DrawSpecInfo %d", n));
        CRect clip;
        dc->GetClipBox(&clip);
        specClip = clip;
        BITMAP bitmap = {};
        ::GetObject(::GetCurrentObject(dc->m_hDC, OBJ_BITMAP), sizeof bitmap, &bitmap);
        specBitmap = bitmap;
        if (inDrawSpecInfo) {
            inDrawSpecInfo();
        }
        return 0;
    }
    using CVectorView::FreeCommandOperationManager;
    CRect specClip;
    BITMAP specBitmap = {};
    bool countDefaults = false;
    std::function<void()> inDrawSpecInfo;
    HINSTANCE resources = nullptr; // During the last default.
    float scaleAtDefault = 0.0f;

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

TEST(VectorView, ALeftDoubleClickIsNotPassedToTheEngine) {
    Recorded r;
    HINSTANCE before = AfxGetResourceHandle();
    EXPECT_EQ((Calls{"Default 515"}), r.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(1, 1)));
    EXPECT_EQ(VectorViewModule(), r.view.resources) << "the library's, for the default's duration";
    EXPECT_NE(before, r.view.resources);
    EXPECT_EQ(before, AfxGetResourceHandle());
}

TEST(VectorView, OfADoubleClickTheEngineGetsTheFirstPressAndBothReleases) {
    // The window class asks for double clicks, so the second press comes as one, and is not passed on.
    Recorded r;
    EXPECT_NE(0u, ::GetClassLongPtr(r.view.m_hWnd, GCL_STYLE) & CS_DBLCLKS);
    const LPARAM at = MAKELPARAM(10, 20);
    Calls calls;
    for (UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) {
        for (const std::string& call : r.Send(message, 0, at)) {
            calls.push_back(call);
        }
    }
    EXPECT_EQ((Calls{"LButtonDown 0 (10,20;1)", "Default 513", "LButtonUp 0 (10,20;1)", "Default 514", "Default 515",
                     "LButtonUp 0 (10,20;1)", "Default 514"}),
              calls);
}

TEST(VectorView, TwoQuickPressesThatAreNoDoubleClickAreTwoPairs) {
    Recorded r;
    Calls calls;
    for (UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDOWN, WM_LBUTTONUP}) {
        calls.push_back(r.Send(message, 0, MAKELPARAM(10, 20))[0]);
    }
    EXPECT_EQ(
        (Calls{"LButtonDown 0 (10,20;1)", "LButtonUp 0 (10,20;1)", "LButtonDown 0 (10,20;1)", "LButtonUp 0 (10,20;1)"}),
        calls);
}

TEST(VectorView, AWindowWhoseDefaultRefusesItIsNotCreated) {
    class Refused : public CVectorView {
    public:
        LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            return message == WM_CREATE ? -1 : CVectorView::DefWindowProc(message, wParam, lParam);
        }
    };
    ParentWindow parent;
    Refused view;
    EXPECT_EQ(0, view.Create(nullptr, L"view", WS_CHILD, CRect(0, 0, 10, 10), &parent, 1));
    EXPECT_EQ(nullptr, view.m_hWnd);
    EXPECT_EQ(nullptr, ::GetWindow(parent.m_hWnd, GW_CHILD));
}

TEST(VectorView, TheCursorIsAskedForInTheApplicationsModuleState) {
    Recorded r;
    AFX_MODULE_STATE other = {};
    AFX_MODULE_STATE* before = AfxSetModuleState(&other);
    r.Send(WM_SETCURSOR, reinterpret_cast<WPARAM>(r.view.m_hWnd), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    AFX_MODULE_STATE* after = AfxSetModuleState(before);
    EXPECT_EQ(AfxGetAppModuleState(), r.view.Engine().moduleState);
    EXPECT_EQ(&other, after) << "and put back";
}

TEST(VectorView, WithoutAnEngineEveryMessageGoesToTheDefault) {
    ParentWindow parent;
    class Bare : public CVectorView {
    public:
        Bare() { FreeCommandOperationManager(); }
        LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            defaults.push_back(message);
            return CVectorView::DefWindowProc(message, wParam, lParam);
        }
        std::vector<UINT> defaults;
    } view;
    ShowView(view, parent);
    view.AddLine(CGePoint2d(0, 0), CGePoint2d(300, 200), Gdiplus::Color(255, 200, 0, 0), 1);
    const auto window = reinterpret_cast<WPARAM>(view.m_hWnd);
    for (UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_MOUSEMOVE, WM_RBUTTONDOWN, WM_MBUTTONDOWN,
                         WM_MBUTTONUP, WM_MOUSEWHEEL, WM_KEYDOWN, WM_SETCURSOR}) {
        view.defaults.clear();
        view.SendMessage(message, message == WM_SETCURSOR ? window : 1, MAKELPARAM(HTCLIENT, 1));
        EXPECT_EQ(std::vector<UINT>{message}, view.defaults);
    }
    BoxAnswer boxes;
    view.InvalidateRect(nullptr, TRUE);
    view.UpdateWindow();
    CClientDC dc(&view);
    EXPECT_EQ(1, view.VectorPaint(&dc));
    view.DoCommand(L"line");
    EXPECT_TRUE(boxes.Texts().empty());
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
    EXPECT_EQ(r.view.GetVectorViewCoordTran()->GetScale(), r.view.scaleAtDefault) << "fitted before the default";
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
    int defaults = 0;
    for (const std::string& call : r.view.TakeCalls()) {
        defaults += call == Text("Default %u", WM_SIZE) ? 1 : 0;
        EXPECT_EQ(0u, call.find("Default")) << call << ": the engine is not told";
    }
    EXPECT_EQ(1, defaults);
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
    r.view.inDrawSpecInfo = [&] {
        r.view.inDrawSpecInfo = nullptr;
        throw 1;
    };
    r.view.InvalidateRect(nullptr, TRUE);
    r.view.UpdateWindow();
    EXPECT_EQ((Calls{"CVectorView::OnPaint() 错误"}), boxes.Texts());
}

namespace {

// An exception of the framework's kind with a text of its own.
class Trouble : public CException {
public:
    BOOL GetErrorMessage(LPTSTR text, UINT size, PUINT) const override {
        ::lstrcpyn(text, L"trouble", static_cast<int>(size));
        return TRUE;
    }
};

} // namespace

TEST(VectorView, AnMfcExceptionInThePaintIsReportedByItselfFirst) {
    Recorded r;
    BoxAnswer boxes;
    r.view.inDrawSpecInfo = [&] {
        r.view.inDrawSpecInfo = nullptr;
        throw new Trouble;
    };
    r.view.InvalidateRect(nullptr, TRUE);
    r.view.UpdateWindow();
    EXPECT_EQ((Calls{"trouble", "CVectorView::OnPaint() 错误"}), boxes.Texts());
}

TEST(VectorView, AFailureBeforeThePaintHasBegunIsShownOnce) {
    Recorded r;
    int failures = 0;
    r.view.Engine().inPreRedraw = [&] {
        // A window that stays invalid would fail again and again under its own message box.
        if (++failures <= 5) {
            throw 1;
        }
    };
    BoxAnswer boxes;
    r.view.InvalidateRect(nullptr, TRUE);
    r.view.UpdateWindow();
    EXPECT_EQ((Calls{"CVectorView::OnPaint() 错误"}), boxes.Texts());
    EXPECT_FALSE(::GetUpdateRect(r.view.m_hWnd, nullptr, FALSE));
    r.view.Engine().inPreRedraw = nullptr;
}

TEST(VectorView, APaintWithNothingInvalidShowsNoMessage) {
    Recorded r;
    BoxAnswer boxes;
    ::ValidateRect(r.view.m_hWnd, nullptr);
    r.view.countDefaults = false;
    EXPECT_EQ((Calls{"PreRedraw", "DrawSpecInfo 1"}), r.Send(WM_PAINT, 0, 0));
    EXPECT_TRUE(boxes.Texts().empty());
    EXPECT_EQ(1, r.view.specBitmap.bmWidth);
    EXPECT_EQ(1, r.view.specBitmap.bmHeight);
    EXPECT_LT(1, r.view.specBitmap.bmBitsPixel) << "a bitmap of the window's own colours, not the stock one";
}

TEST(VectorView, AnEmptyDrawingPaintsItsBackgroundAlone) {
    ViewHost host;
    host.Document().SetBKColor(RGB(10, 20, 30));
    EXPECT_EQ(400 * 300, host.TakeFresh().Count(RGB(10, 20, 30)));
}

namespace {

int CALLBACK NoteRecord(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM counts) {
    ++(*reinterpret_cast<std::map<DWORD, int>*>(counts))[record->iType];
    return 1;
}

} // namespace

TEST(VectorView, PaintingIntoAMetafileRecordsTheDrawingAndNoBackground) {
    ViewHost host;
    host.Document().SetBKColor(RGB(10, 20, 30));
    host.view.AddLine(CGePoint2d(50, 100), CGePoint2d(150, 100), Gdiplus::Color(255, 200, 0, 0), 1);
    HDC metafile = ::CreateEnhMetaFile(nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(nullptr, metafile);
    CDC dc;
    dc.Attach(metafile);
    EXPECT_EQ(1, host.view.VectorPaint(&dc));
    dc.Detach();
    HENHMETAFILE file = ::CloseEnhMetaFile(metafile);
    std::map<DWORD, int> records;
    ::EnumEnhMetaFile(nullptr, file, NoteRecord, &records, nullptr);
    ::DeleteEnhMetaFile(file);
    EXPECT_EQ(1, records[EMR_LINETO]);
    for (DWORD fill :
         {EMR_BITBLT, EMR_STRETCHBLT, EMR_FILLRGN, EMR_RECTANGLE, EMR_EXTTEXTOUTW, EMR_CREATEBRUSHINDIRECT}) {
        EXPECT_EQ(0, records[fill]) << fill;
    }
}

TEST(VectorView, AFailureInPaintingForTheHostIsShownAndGivesZero) {
    Recorded r;
    RecordingDC dc;
    BoxAnswer boxes;
    r.view.Engine().inPreRedraw = [] { throw 1; };
    EXPECT_EQ(0, r.view.VectorPaint(&dc));
    r.view.Engine().inPreRedraw = [] { throw new Trouble; };
    EXPECT_EQ(0, r.view.VectorPaint(&dc));
    r.view.Engine().inPreRedraw = nullptr;
    EXPECT_EQ((Calls{"CVectorView::VectorPaint() 错误", "trouble", "CVectorView::VectorPaint() 错误"}), boxes.Texts());
    EXPECT_EQ(1, r.view.VectorPaint(&dc));
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

TEST(VectorView, AWheelThatWouldMakeTheScaleInfiniteKeepsScaleAndOrigin) {
    Recorded r;
    r.view.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, 0, 0, 100, 40)->SetEndPoint(CGePoint2d(1e45, 0));
    r.view.GetVectorViewCoordTran()->SetScale(3e38f);
    r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, -120), 0); // 3.6e38 is more than a float holds.
    EXPECT_EQ(3e38f, r.view.GetVectorViewCoordTran()->GetScale());
    EXPECT_EQ(0.0, r.view.GetVectorViewCoordTran()->GetOriginX());
    EXPECT_EQ(0.0, r.view.GetVectorViewCoordTran()->GetOriginY());
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

TEST(VectorView, AnEmptyDrawingDoesNotZoomAndTheEngineGetsNoWheel) {
    Recorded r;
    ::ValidateRect(r.view.m_hWnd, nullptr);
    EXPECT_EQ((Calls{"Default 522"}), r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0));
    EXPECT_EQ(1.0f, r.view.GetVectorViewCoordTran()->GetScale());
    EXPECT_FALSE(::GetUpdateRect(r.view.m_hWnd, nullptr, FALSE));
}

TEST(VectorView, TheWheelStopsAtExactlyFiftyPixels) {
    Recorded r;
    r.view.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, 0, 0, 80, 40);
    r.view.GetVectorViewCoordTran()->SetScale(2.0f); // 80 / 1.6 = 50: not above.
    r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    EXPECT_EQ(2.0f, r.view.GetVectorViewCoordTran()->GetScale());
    r.view.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, 80, 0, 80.5f, 0);
    r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    EXPECT_EQ(1.6f, r.view.GetVectorViewCoordTran()->GetScale());
}

TEST(VectorView, OfADrawingThatIsTallerThanWideTheHeightCounts) {
    Recorded r;
    r.view.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, 0, 0, 40, 100);
    r.view.GetVectorViewCoordTran()->SetScale(1.9f); // 100 / 1.52 is above 50, and 40 / 1.52 is not.
    r.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    EXPECT_NEAR(1.52, r.view.GetVectorViewCoordTran()->GetScale(), 1e-6);
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

TEST(VectorView, TheEngineGetsOpenAndSaveBeforeTheFileDialogShows) {
    for (LPCTSTR word : {L"open", L"save"}) {
        Recorded r;
        r.view.countDefaults = false;
        FileDialogAnswer cancel(L"");
        size_t seenByEngine = 99;
        r.view.Engine().inDoCommand = [&] { seenByEngine = cancel.Seen().size(); };
        r.view.DoCommand(word);
        EXPECT_EQ("DoCommand " + Utf8(word), r.view.TakeCalls().at(0));
        EXPECT_EQ(0u, seenByEngine) << Utf8(word);
        EXPECT_EQ(1u, cancel.Seen().size()) << Utf8(word);
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

TEST(VectorView, TheEngineIsFreedBeforeTheDocument) {
    static Calls order;
    order.clear();
    class Object : public CLine {
    public:
        ~Object() override { order.push_back("object"); }
    };
    class Engine : public CCommandOperationManager {
    public:
        using CCommandOperationManager::CCommandOperationManager;
        ~Engine() override {
            order.push_back(Text("engine, %d", static_cast<int>(m_pDocument->GetDrawableObjs()->GetSize())));
        }
    };
    class View : public CVectorView {
    public:
        View() {
            FreeCommandOperationManager();
            m_pManager = new Engine(this, &m_Graphic, &m_CoordTran, GetDocument());
            KX_ADD_MEMORY(m_pManager);
        }
    };
    {
        View view;
        CDrawable* object = new Object;
        KX_ADD_MEMORY(object);
        view.GetDocument()->AddDrawAobject(object);
    }
    EXPECT_EQ((Calls{"engine, 1", "object"}), order);
}

namespace {

// What a view does when it is destroyed, in order.
struct LastWords {
    static Calls s_order;
    static HWND s_dialog;

    class Object : public CLine {
    public:
        ~Object() override { s_order.push_back("object"); }
    };
    class Engine : public CCommandOperationManager {
    public:
        using CCommandOperationManager::CCommandOperationManager;
        ~Engine() override { s_order.push_back("engine"); }
    };
    class View : public CVectorView {
    public:
        View() {
            FreeCommandOperationManager();
            m_pManager = new Engine(this, &m_Graphic, &m_CoordTran, GetDocument());
            KX_ADD_MEMORY(m_pManager);
        }
        void Provide() {
            m_pDlgDrawAbleProperty = CreateDrawAbleProperty(this, GetParent());
            ASSERT_NE(nullptr, m_pDlgDrawAbleProperty);
            s_dialog = m_pDlgDrawAbleProperty->GetSafeHwnd();
        }
    };
    static LRESULT CALLBACK Filter(int code, WPARAM wParam, LPARAM lParam) {
        const auto* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code == HC_ACTION && call->hwnd == s_dialog && call->message == WM_CLOSE) {
            s_order.push_back("close");
        }
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
};

Calls LastWords::s_order;
HWND LastWords::s_dialog = nullptr;

} // namespace

TEST(VectorView, ThePropertyDialogIsClosedAfterTheEngineAndBeforeTheDrawing) {
    LastWords::s_order.clear();
    HHOOK hook = ::SetWindowsHookEx(WH_CALLWNDPROC, LastWords::Filter, nullptr, ::GetCurrentThreadId());
    {
        ParentWindow parent;
        LastWords::View view;
        ShowView(view, parent);
        view.Provide();
        ASSERT_TRUE(::IsWindow(LastWords::s_dialog));
        CDrawable* object = new LastWords::Object;
        KX_ADD_MEMORY(object);
        view.GetDocument()->AddDrawAobject(object);
    }
    ::UnhookWindowsHookEx(hook);
    EXPECT_EQ((Calls{"engine", "close", "object"}), LastWords::s_order);
    EXPECT_FALSE(::IsWindow(LastWords::s_dialog));
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
