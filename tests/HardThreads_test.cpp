// Two views on two threads at once: loading, drawing, editing and painting, each as if it were alone.

#include "CommandOperationManager.h"
#include "MemoryInfo.h"
#include "support/TestData.h"
#include "support/ViewHost.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

namespace {

#ifdef NR_GUARDED
constexpr int kRounds = 6;
#else
constexpr int kRounds = 40;
#endif

// A view's life on the calling thread; no step of it opens a box. Gives the drawing at the end as a stream.
Bytes LifeOfAView(const Bytes& stored, double first) {
    ViewHost host;
    Bytes loaded = stored;
    host.view.LoadFile(loaded.data(), static_cast<unsigned int>(loaded.size()));
    host.Tran() = CVectorViewCoordTran();
    host.Tran().SetScreenSize(CSize(400, 300));
    const Gdiplus::Color white(0xFFFFFFFF);
    for (int i = 0; i < 20; ++i) {
        host.view.AddLine(CGePoint2d(first, 10.0 * i), CGePoint2d(300, 10.0 * i + 5), white, 1);
        host.view.AddText(CGePoint2d(first, 10.0 * i), L"text", 0.0, white, 12.0, 1, 0);
        CString text = L"10";
        CString name = L"A";
        host.view.AddParmTextNoRegExp(CGePoint2d(150, 10.0 * i), text, name, 0.0, white, 12.0, 0);
    }
    for (LPCTSTR word : {L"line", L"circle", L"pline", L"rect", L"copy", L"viewmove"}) {
        host.Click(CPoint(60, 250));
        host.view.DoCommand(word);
        for (int i = 0; i < 4; ++i) {
            host.Move(CPoint(40 + 20 * i, 60 + 30 * i));
            host.Click(CPoint(41 + 20 * i, 61 + 30 * i));
            host.Update();
        }
        host.RightClick(CPoint(200, 200));
        static_cast<CCommandOperationManager*>(host.view.GetCommandOperationManager())->Cancel();
        host.Document().RemoveAllSelected();
    }
    host.view.transformBy(0.1, CGePoint2d(0, 0));
    host.Send(WM_MOUSEMOVE, MK_MBUTTON, CPoint(20, 20));
    host.Key('A');
    PumpMessages();
    host.view.InvalidateRect(nullptr, TRUE);
    host.Update();
    CMemFile file;
    EXPECT_EQ(1, host.Document().StoreToMemFile(&file));
    Bytes bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

} // namespace

TEST(HardThreads, TwoViewsOnTwoThreadsAtOnceDoWhatEachDoesAlone) {
    const Bytes stored[] = {ReadTestData("curves.nrv"), ReadTestData("texts_mixed.nrv")};
    const Bytes alone[] = {LifeOfAView(stored[0], 10), LifeOfAView(stored[1], 30)};
    ASSERT_LT(stored[0].size(), alone[0].size());
    const int before = CKXMemoryManager::Instance()->GetCount();
    int same[2] = {};
    const auto live = [&](int which) {
        for (int round = 0; round < kRounds; ++round) {
            same[which] += LifeOfAView(stored[which], which == 0 ? 10 : 30) == alone[which] ? 1 : 0;
        }
    };
    std::thread other([&] { live(1); });
    live(0);
    other.join();
    EXPECT_EQ(kRounds, same[0]);
    EXPECT_EQ(kRounds, same[1]);
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}
