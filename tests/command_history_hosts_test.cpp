// Undo and redo of views whose hosts do unusual things: two views on one document, another document, calls out of
// message boxes and notifications, a view that is freed in the middle of an undo.

#include "DrawingHistory.h"
#include "MemoryInfo.h"
#include "support/BoxAnswer.h"
#include "support/HistoryDrawing.h"
#include "support/ViewDriver.h"
#include "support/WatchedCalls.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace HistoryTests;

namespace {

// A view in a window that may get another document, which its engine then works on. Calls `onChild` when a child window
// comes or goes, such as the edit box of a command.
class CDocumentView : public CVectorView {
public:
    std::function<void()> onChild;
    void Show(CGraphicDocument* document) {
        m_Graphic.SetDocument(document, 1);
        FreeCommandOperationManager();
        OnCreateCommandOperationManager();
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_PARENTNOTIFY && onChild && (LOWORD(wParam) == WM_DESTROY || LOWORD(wParam) == WM_CREATE)) {
            const auto call = onChild;
            call();
            return 0;
        }
        return CVectorView::WindowProc(message, wParam, lParam);
    }
};

struct Pane {
    ParentWindow parent;
    CDocumentView view;

    Pane() {
        ShowView(view, parent);
        view.GetVectorViewCoordTran()->SethScreen(300);
    }
    void Click(int x, int y) {
        view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        view.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }
    void Move(int x, int y) { view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(x, y)); }
    void DrawLine(int x) {
        view.DoCommand(L"line");
        Click(x, 20);
        Click(x, 90);
    }
    INT_PTR Count() { return view.GetDocument()->GetDrawableObjs()->GetSize(); }
};

CDrawable* AddAny(CVectorView& view, double x) {
    return view.AddLine(CGePoint2d(x, 1), CGePoint2d(x, 9), Gdiplus::Color(255, 1, 2, 3), 1);
}

} // namespace

TEST(CommandHistoryHosts, ADocumentThatIsSetIsFollowedAtOnce) {
    LoneDocument other;
    Pane a;
    a.view.EnableHistory(1);
    AddAny(a.view, 1);
    EXPECT_EQ(1, a.view.CanUndo());
    a.view.Show(&other.document);
    EXPECT_EQ(0, a.view.CanUndo());
    EXPECT_EQ(&other.document, a.view.GetHistory()->GetDocument());
    a.view.Show(&other.document);
    AddAny(a.view, 2);
    EXPECT_EQ(1, a.view.Undo()) << "the first call on the new document is a step";
    EXPECT_EQ(0, a.Count());
}

TEST(CommandHistoryHosts, TwoViewsOnOneDocumentHaveOneHistory) {
    LoneDocument shared;
    auto a = std::make_unique<Pane>();
    Pane b;
    for (CDocumentView* view : {&a->view, &b.view}) {
        view->Show(&shared.document);
        EXPECT_EQ(1, view->EnableHistory(1));
    }
    EXPECT_EQ(a->view.GetHistory(), b.view.GetHistory());
    a->DrawLine(20);
    b.DrawLine(40);
    AddAny(b.view, 5);
    b.Click(200, 200);
    a->Click(200, 200);
    EXPECT_EQ(3, a->view.GetHistory()->GetUndoCount());
    EXPECT_EQ(1, b.view.Undo());
    EXPECT_EQ(L"Line", b.view.GetHistory()->GetUndoName(1));
    EXPECT_EQ(1, b.view.Undo());
    EXPECT_EQ(1, a->view.Undo());
    EXPECT_EQ(0, b.Count());
    EXPECT_EQ(0, a->view.CanUndo() + b.view.CanUndo());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(1, b.view.Redo());
    }
    EXPECT_EQ(3, a->Count());
    // The undo of one view ends a command of its own and one of the view that the history belongs to.
    for (Pane* running : {a.get(), &b}) {
        running->view.DoCommand(L"pline");
        running->Click(20, 20);
        running->Click(60, 20);
        EXPECT_EQ(1, b.view.Undo());
        EXPECT_EQ(0, running->view.GetCommandOperationManager()->GetHasCommand());
        EXPECT_EQ(3, b.Count());
    }
    a.reset();
    EXPECT_EQ(0, b.view.CanUndo());
    b.DrawLine(60);
    EXPECT_EQ(1, b.view.Undo()) << "its own one now";
    EXPECT_EQ(3, b.Count());
}

TEST(CommandHistoryHosts, AnUndoUnderARunningCommandOfAnotherViewFreesNothingThatThisOneHolds) {
    for (LPCTSTR word : {L"pline", L"translation", L"offset", L"circle", L"rect", L"PLine_AddPoint", L"DrawLabel"}) {
        SCOPED_TRACE(Utf8(word));
        LoneDocument shared;
        Pane a;
        Pane b;
        a.view.Show(&shared.document);
        b.view.Show(&shared.document);
        a.view.EnableHistory(1);
        a.view.GetHistory()->SetLimits(0, 1);
        a.DrawLine(20);
        a.DrawLine(120);
        shared.document.AddSelected(shared.Objects()[0]);
        const BoxAnswer boxes({IDYES});
        b.view.DoCommand(word);
        b.Move(120, 50);
        b.Click(120, 50);
        b.Move(140, 60);
        if (b.view.GetCommandOperationManager()->GetHasCommand() != 0) {
            b.view.GetCommandOperationManager()->Execute(); // A typed length.
        }
        a.view.Undo();
        a.view.Undo();
        a.DrawLine(200);
        a.DrawLine(220);
        a.view.GetHistory()->Forget();
        b.Move(150, 70);
        b.Click(160, 80);
        b.Click(170, 90);
        b.view.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 10));
        b.view.GetCommandOperationManager()->Cancel();
        a.view.Undo();
        b.view.SendMessage(WM_PAINT);
        EXPECT_EQ(0, b.view.GetCommandOperationManager()->GetHasCommand());
    }
}

TEST(CommandHistoryHosts, AnUndoOutOfTheQuestionOfACommandEndsThatCommand) {
    ViewDriver d;
    CLine* line = d.AddLine(60, 30, 90, 60);
    d.view.EnableHistory(1);
    line->SetEndPoint(CGePoint2d(95, 60));
    d.view.GetHistory()->Mark();
    d.Select(line);
    d.view.DoCommand(L"translation");
    d.ClickAt(50, 50);
    int undone = 0;
    const DialogScript dialogs({}, [&](HWND box) {
        undone = d.view.Undo();
        DialogScript::Answer(IDYES)(box);
    });
    d.ClickAt(150, 150);
    EXPECT_EQ(1, undone);
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(1, d.Count());
    EXPECT_EQ(60, line->GetStartPoint().x) << "the move is taken back";
    EXPECT_EQ(95, line->GetEndPoint().x);
    EXPECT_EQ(1, d.view.CanUndo());
    EXPECT_EQ(1, d.view.CanRedo());
}

TEST(CommandHistoryHosts, AViewMayBeFreedByWhatAnUndoEnds) {
    ParentWindow parent;
    auto view = std::make_unique<CDocumentView>();
    ShowView(*view, parent);
    view->EnableHistory(1);
    AddAny(*view, 1);
    view->DoCommand(L"pline"); // Its edit box is a child window.
    view->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 20));
    view->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 20));
    int freed = 0;
    view->onChild = [&] {
        if (++freed == 1) {
            view.reset();
        }
    };
    CDocumentView* const raw = view.get();
    EXPECT_EQ(0, raw->Undo());
    EXPECT_EQ(1, freed);
    EXPECT_EQ(nullptr, view);
}

TEST(CommandHistoryHosts, UndoOutOfEveryNotificationOfAChildWindow) {
    for (LPCTSTR word : {L"pline", L"offset", L"line", L"circle"}) {
        ParentWindow parent;
        CDocumentView view;
        ShowView(view, parent);
        view.EnableHistory(1);
        view.GetHistory()->SetLimits(0, 2);
        for (int i = 0; i < 3; ++i) {
            AddAny(view, 20 * i);
        }
        int depth = 0;
        int calls = 0;
        bool back = true;
        view.onChild = [&] {
            if (depth == 0) {
                ++depth;
                ++calls;
                back ? view.Undo() : view.Redo();
                back = !back;
                AddAny(view, 100);
                --depth;
            }
        };
        for (int round = 0; round < 3; ++round) {
            view.DoCommand(word);
            for (int x = 20; x < 80; x += 20) {
                view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(x, 30));
                view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 20));
            }
            view.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(20, 20));
            view.GetCommandOperationManager()->Cancel();
        }
        view.onChild = nullptr;
        EXPECT_GE(calls, 6) << "the box of each command has come and gone";
        view.GetCommandOperationManager()->Cancel();
        while (view.Undo() != 0) {
        }
        while (view.Redo() != 0) {
        }
    }
}

TEST(CommandHistoryHosts, AGroupLeftOpenTakesNothingBackAndLosesNothing) {
    ViewDriver d;
    d.view.EnableHistory(1);
    AddAny(d.view, 1);
    d.view.GetHistory()->BeginGroup(L"组", L"Group");
    d.view.DoCommand(L"line");
    d.ClickAt(20, 20);
    d.ClickAt(40, 20);
    EXPECT_EQ(0, d.view.Undo() + d.view.CanUndo() + d.view.Redo() + d.view.CanRedo());
    EXPECT_EQ(2, d.Count());
    std::vector<BYTE> stored = d.Store();
    d.view.LoadFile(stored.data(), static_cast<unsigned int>(stored.size()));
    EXPECT_EQ(0, d.view.Undo());
    EXPECT_EQ(0, d.view.GetHistory()->EndGroup()) << "the drawing is as it was loaded";
    EXPECT_EQ(0, d.view.GetHistory()->EndGroup());
    AddAny(d.view, 1);
    EXPECT_EQ(1, d.view.Undo());
    EXPECT_EQ(2, d.Count());
    d.view.GetHistory()->BeginGroup(nullptr, nullptr);
    d.view.EnableHistory(0);
    d.view.EnableHistory(1);
    AddAny(d.view, 1);
    EXPECT_EQ(1, d.view.CanUndo());
}

TEST(CommandHistoryHosts, ALoadThatFailsStartsAnewToo) {
    ViewDriver d;
    const BoxAnswer boxes({IDYES});
    d.view.EnableHistory(1);
    for (const std::vector<BYTE>& bytes : {std::vector<BYTE>{1, 2, 3}, std::vector<BYTE>(400, 0xFF)}) {
        AddAny(d.view, 1);
        CDrawable* erased = AddAny(d.view, 2);
        d.Select(erased);
        d.view.DoCommand(L"erase");
        EXPECT_EQ(3, d.view.GetHistory()->GetUndoCount());
        std::vector<BYTE> data = bytes;
        EXPECT_EQ(1, d.view.LoadFile(data.data(), static_cast<unsigned int>(data.size())));
        EXPECT_EQ(0, d.view.Undo() + d.view.Redo());
        EXPECT_EQ(0, d.Count());
        EXPECT_FALSE(d.Document().IsModified());
        AddAny(d.view, 1);
        EXPECT_TRUE(d.Document().IsModified());
        EXPECT_EQ(1, d.view.Undo());
        EXPECT_FALSE(d.Document().IsModified()) << "as it was loaded";
        d.Document().Reset();
    }
}

TEST(CommandHistoryHosts, AListenerMayStartCommandsUndoAndSwitchDocuments) {
    LoneDocument other;
    Pane a;
    struct Acting : CDrawingHistoryListener {
        std::function<void()> act;
        int told = 0;
        void OnHistoryChanged(CDrawingHistory*, Change) override {
            if (++told < 20 && act) {
                act();
            }
        }
    } listener;
    a.view.EnableHistory(1);
    a.view.GetHistory()->SetListener(&listener);
    int turn = 0;
    listener.act = [&] {
        switch (++turn % 6) {
        case 0:
            a.view.DoCommand(L"pline");
            break;
        case 1:
            a.view.Undo();
            break;
        case 2:
            AddAny(a.view, turn);
            break;
        case 3:
            a.view.GetDocument()->Reset();
            break;
        case 4:
            a.view.Redo();
            break;
        default:
            throw 5;
        }
    };
    for (int i = 0; i < 6; ++i) {
        listener.told = 0;
        a.DrawLine(20 * i);
        a.Click(300, 200);
        a.view.Undo();
    }
    a.view.GetCommandOperationManager()->Cancel();
    listener.act = nullptr;
    a.view.Show(&other.document);
    a.DrawLine(20);
    EXPECT_EQ(1, a.view.Undo());
    a.view.GetHistory()->SetListener(nullptr);
}

TEST(CommandHistoryHosts, AfterASaveInTheMiddleOfACommandUndoAndRedoAreModified) {
    ViewDriver d;
    d.view.EnableHistory(1);
    AddAny(d.view, 1);
    d.view.DoCommand(L"pline");
    d.ClickAt(20, 20);
    d.Document().SetModifiedFlag(FALSE);
    EXPECT_EQ(0, d.view.GetHistory()->IsClean());
    d.RightAt(30, 30);
    EXPECT_TRUE(d.Document().IsModified());
    d.view.Undo();
    EXPECT_TRUE(d.Document().IsModified());
    d.view.Undo();
    EXPECT_TRUE(d.Document().IsModified());
}

TEST(CommandHistoryHosts, WithEveryRequestForMemoryRefusedOnceInACommandAllIsTakenBackAndRepeated) {
    ViewDriver d;
    const BoxAnswer boxes;
    d.view.EnableHistory(1);
    CDrawingHistory& history = *d.view.GetHistory();
    LONG refusals = 0;
    for (LONG nth = 1;; ++nth) {
        ASSERT_LT(nth, 5000);
        SCOPED_TRACE(nth);
        d.Manager().Cancel();
        d.Document().Reset();
        d.Select(d.AddLine(50, 50, 250, 150));
        history.Mark();
        history.Forget();
        const std::vector<BYTE> before = d.Store();
        LONG refused = 0;
        {
            WatchedCalls watched;
            watched.Refuse(WatchedCalls::Memory, nth, WatchedCalls::One);
            try {
                d.view.DoCommand(L"copy");
                d.view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(50, 250));
                d.view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(90, 200));
                d.view.Undo();
                d.view.Redo();
            } catch (CException* e) {
                e->Delete();
            } catch (const std::bad_alloc&) {
            }
            refused = watched.Refused();
        }
        if (refused == 0) {
            break;
        }
        ++refusals;
        d.Manager().Cancel();
        history.Mark();
        const std::vector<BYTE> after = d.Store();
        const std::string words = d.AllWords();
        int steps = 0; // Those that can be redone from here, where a redo was refused, are no part of it.
        while (d.view.Undo() != 0) {
            ++steps;
        }
        ASSERT_EQ(before, d.Store());
        for (; steps > 0; --steps) {
            ASSERT_EQ(1, d.view.Redo());
        }
        EXPECT_EQ(words, d.AllWords());
        ASSERT_EQ(after, d.Store());
    }
    EXPECT_GT(refusals, 20);
}
