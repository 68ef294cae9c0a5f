// Long use: repaints, commands, parameter edits, views made and destroyed. Memory, registry and handles end where they
// began, in a host with a message loop and in one without.

#include "CommandOperationManager.h"
#include "MemoryInfo.h"
#include "TextParm.h"
#include "VectorViewParm.h"
#include "support/ViewHost.h"
#include "support/WatchedCalls.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>

namespace {

// The long form is for a run by hand: NR_LONG=1.
bool IsLong() {
    return ::GetEnvironmentVariableW(L"NR_LONG", nullptr, 0) != 0;
}

class EnduringView : public CVectorViewParm {
public:
    using CVectorViewParm::m_Edit;
};

void Fill(CVectorView& view) {
    const Gdiplus::Color white(0xFFFFFFFF);
    view.AddLine(CGePoint2d(50, 50), CGePoint2d(250, 150), white, 1);
    view.AddArc(CGePoint2d(100, 200), 30, 0, 2, white, L"", L"", 0, 0);
    view.AddText(CGePoint2d(150, 250), L"text", 30.0, white, 12.0, 1, 0);
    CString text = L"10";
    CString name = L"A";
    view.AddParmTextNoRegExp(CGePoint2d(50, 250), text, name, 0.0, white, 20.0, 0);
}

void Click(CWnd& view, int x, int y) {
    view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
    view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    view.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

// The heap takes memory from the system in pieces of up to this; a block in each round of the long form would be more.
constexpr long long kMoreBytes = 1 << 20;

// The private bytes of the process: the memory that it has committed for itself. Summed up over its address space:
// the counter of the process did not move under Wine.
SIZE_T PrivateBytes() {
    SIZE_T sum = 0;
    MEMORY_BASIC_INFORMATION part = {};
    for (const char* at = nullptr; ::VirtualQuery(at, &part, sizeof part) != 0;
         at = static_cast<const char*>(part.BaseAddress) + part.RegionSize) {
        sum += part.State == MEM_COMMIT && part.Type == MEM_PRIVATE ? part.RegionSize : 0;
    }
    return sum;
}

struct Counts {
    LONG blocks;
    LONG objects;
    int registered;
    SIZE_T bytes;
};

class HardEndurance : public testing::Test {
protected:
    Counts Now() const {
        return {calls.Blocks(), calls.DrawingObjects(), CKXMemoryManager::Instance()->GetCount(), PrivateBytes()};
    }

    // Does it `shortly` times, or `fully` times in the long form, after a warm-up. With a loop, what waits is handled
    // each time, and temporary objects are freed as a message loop frees them.
    void Endure(const char* name, int shortly, int fully, bool hasLoop, const std::function<void()>& act) {
        const int rounds = IsLong() ? fully : shortly;
        const auto once = [&] {
            act();
            if (hasLoop) {
                PumpMessages();
                CGdiObject::DeleteTempMap();
                CDC::DeleteTempMap();
                CWnd::DeleteTempMap();
            }
        };
        for (int i = 0; i < 150; ++i) {
            once();
        }
        const Counts before = Now();
        for (int i = 0; i < rounds; ++i) {
            once();
        }
        const Counts after = Now();
        const long long bytes = static_cast<long long>(after.bytes) - static_cast<long long>(before.bytes);
        std::printf("%s, %s a loop: %d times, blocks %+ld, drawing objects %+ld, registered %+d, private bytes %+lld\n",
                    name, hasLoop ? "with" : "without", rounds, after.blocks - before.blocks,
                    after.objects - before.objects, after.registered - before.registered, bytes);
        EXPECT_GE(before.blocks, after.blocks); // What the warm-up still held may have been given back.
        EXPECT_EQ(before.objects, after.objects);
        EXPECT_EQ(before.registered, after.registered);
        EXPECT_LT(bytes, kMoreBytes);
        EXPECT_GT(before.bytes, 1000000u) << "the program alone has more";
    }
    void EndureBoth(const char* name, int shortly, int fully, const std::function<void()>& act) {
        Endure(name, shortly, fully, false, act);
        Endure(name, shortly, fully, true, act);
    }

    WatchedCalls calls;
};

} // namespace

TEST_F(HardEndurance, RepaintsLeaveNothingAllocated) {
    ViewHost host;
    Fill(host.view);
    EndureBoth("window repaints", 1000, 100000,
               [&] { host.view.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE); });
    CDC dc;
    CBitmap bitmap;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    ASSERT_TRUE(bitmap.CreateBitmap(64, 64, 1, 32, nullptr));
    // Its handle: the temporary object is freed with the others below.
    const HGDIOBJ old = dc.SelectObject(&bitmap)->m_hObject;
    EndureBoth("paints for a host", 1000, 100000, [&] { host.view.VectorPaint(&dc); });
    EndureBoth("paints for a host, a context each", 1000, 100000, [&] {
        const HDC window = ::GetDC(host.view.m_hWnd);
        host.view.VectorPaint(CDC::FromHandle(window));
        ::ReleaseDC(host.view.m_hWnd, window);
        const HDC memory = ::CreateCompatibleDC(nullptr);
        host.view.VectorPaint(CDC::FromHandle(memory));
        ::DeleteDC(memory);
    });
    ::SelectObject(dc.m_hDC, old);
}

TEST_F(HardEndurance, CommandsLeaveNothingAllocated) {
    ViewHost host;
    const LPCTSTR words[] = {L"line", L"circle", L"pline", L"arc", L"viewmove", L"pline_bound"};
    size_t next = 0;
    EndureBoth("commands", 300, 10000, [&] {
        host.view.DoCommand(words[next++ % std::size(words)]);
        Click(host.view, 40, 60);
        Click(host.view, 80, 90);
        host.view.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(130, 130));
        static_cast<CCommandOperationManager*>(host.view.GetCommandOperationManager())->Cancel();
        host.Document().Reset();
        host.view.UpdateWindow();
    });
}

TEST_F(HardEndurance, ParameterEditsLeaveNothingAllocated) {
    ParentWindow parent;
    EnduringView view;
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    ShowView(view, parent);
    Fill(view);
    view.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    auto* parm = static_cast<CTextParm*>(view.GetDocument()->GetDrawableObjs()->GetAt(3));
    int edits = 0;
    int edited = 0;
    EndureBoth("parameter edits", 300, 10000, [&] {
        Click(view, 56, 56);
        CString text;
        text.Format(L"%d", ++edits);
        if (view.m_Edit.GetSafeHwnd() != nullptr && view.m_Edit.IsWindowVisible()) {
            view.m_Edit.SetWindowText(text);
        }
        Click(view, 380, 280);
        view.UpdateWindow();
        edited += text == parm->GetText() ? 1 : 0;
    });
    EXPECT_EQ(edits, edited);
}

TEST_F(HardEndurance, ViewsLeaveNothingAllocated) {
    EndureBoth("views", 100, 1000, [&] {
        ParentWindow parent;
        EnduringView view;
        view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
        CRect client;
        parent.GetClientRect(&client);
        ASSERT_TRUE(view.Create(nullptr, L"view", WS_CHILD | WS_VISIBLE, client, &parent, 1));
        Fill(view);
        view.UpdateWindow();
        Click(view, 150, 200);
        view.DoCommand(L"line");
        static_cast<CCommandOperationManager*>(view.GetCommandOperationManager())->Cancel();
    });
}
