// Undo and redo on a document without a view: whose the objects are, limits, the clean point, groups, notifications,
// cost.

#include "support/HistoryDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <new>

using namespace HistoryTests;

// ---- Ownership -----------------------------------------------------------------------------------------------------

TEST(DrawingHistoryOwners, WhatLeftTheDrawingIsFreedWhenTheLastStepThatKnowsItIsForgotten) {
    const int before = Registered();
    {
        Drawing d;
        CLine* a = d.Add(1);
        CLine* b = d.Add(2);
        d.Mark();
        const CKxAliveToken erased = a->GetAlive();
        d.document.DeleteObject(a);
        d.Mark();
        b->SetEndPoint(CGePoint2d(8, 8));
        d.Mark();
        EXPECT_EQ(3, d.history.GetUndoCount());
        d.history.SetLimits(1 << 20, 2);
        EXPECT_TRUE(erased.IsAlive()) << "the step of the erasing is one of the two";
        d.history.SetLimits(1 << 20, 1);
        EXPECT_FALSE(erased.IsAlive());
        EXPECT_EQ(1, d.history.GetUndoCount());
    }
    EXPECT_EQ(before, Registered());
}

TEST(DrawingHistoryOwners, AnUndoneObjectIsFreedWhenItCannotBeRedoneAnyMore) {
    Drawing d;
    const CKxAliveToken undone = d.Add(1)->GetAlive();
    d.Mark();
    d.history.Undo();
    EXPECT_TRUE(undone.IsAlive());
    d.Add(2);
    d.Mark();
    EXPECT_FALSE(undone.IsAlive());
}

TEST(DrawingHistoryOwners, ErasedObjectsAreFreedWithTheHistory) {
    LoneDocument d;
    const int before = Registered();
    {
        CDrawingHistory history(&d.document);
        CLine* line = NewLine();
        d.document.AddDrawAobject(line);
        history.Mark();
        d.document.AddSelected(line);
        d.document.DeleteAllSelectedObject();
        history.Mark();
        EXPECT_EQ(before + 1, Registered());
    }
    EXPECT_EQ(before, Registered());
    EXPECT_EQ(nullptr, d.document.GetHistory());
}

TEST(DrawingHistoryOwners, AnErasedObjectThatAHostPutsBackIsNotFreed) {
    Drawing d;
    CLine* a = d.Add(1);
    d.Mark();
    d.document.DeleteObject(a);
    d.Mark();
    d.document.AddDrawAobject(a); // Not marked.
    const CKxAliveToken alive = a->GetAlive();
    d.history.Forget();
    EXPECT_TRUE(alive.IsAlive());
    EXPECT_EQ(Pointers({a}), d.List());
    d.document.DeleteObject(a);
    d.Mark();
    d.document.AddNetobject(a);
    d.history.Forget();
    EXPECT_TRUE(alive.IsAlive()) << "it is in the net";
}

TEST(DrawingHistoryOwners, AnObjectThatAHostFreesComesBackInNoStepAndTheOthersDo) {
    Drawing d;
    CLine* a = d.Add(1);
    CLine* b = d.Add(2);
    CLine* c = d.Add(3);
    d.Mark();
    c->SetStartPoint(CGePoint2d(30, 0));
    b->SetStartPoint(CGePoint2d(20, 0));
    d.Mark();
    d.document.DeleteObject(b);
    Free(b);
    EXPECT_EQ(0, d.Mark()) << "nothing that could be taken back";
    CLine* e = d.Add(4);
    d.Mark();
    d.document.MoveToTop(a);
    d.Mark();
    EXPECT_EQ(Pointers({c, e, a}), d.List());
    d.history.Undo();
    EXPECT_EQ(Pointers({a, c, e}), d.List());
    d.history.Undo();
    EXPECT_EQ(Pointers({a, c}), d.List());
    d.history.Undo();
    EXPECT_EQ(3, X(c));
    d.history.Undo();
    EXPECT_EQ(Pointers(), d.List());
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(1, d.history.Redo());
    }
    EXPECT_EQ(Pointers({c, e, a}), d.List());
    EXPECT_EQ(30, X(c));
}

TEST(DrawingHistoryOwners, AnErasedObjectThatAHostFreesLaterIsForgotten) {
    Drawing d;
    CLine* a = d.Add(1);
    CLine* b = d.Add(2);
    d.Mark();
    d.document.DeleteObject(a);
    d.Mark();
    Free(a);
    d.history.Undo();
    EXPECT_EQ(Pointers({b}), d.List());
}

TEST(DrawingHistoryOwners, ANewObjectAtTheAddressOfAFreedOneIsAnotherObject) {
    Drawing d;
    CLine* line = d.Add(1);
    d.Mark();
    d.document.DeleteObject(line);
    line->~CLine();
    new (line) CLine; // At the same address, and at the same place of the list.
    d.document.AddDrawAobject(line);
    EXPECT_EQ(1, d.Mark());
    d.history.Undo();
    EXPECT_EQ(Pointers(), d.List());
    d.history.Redo();
    EXPECT_EQ(0, X(line));
}

TEST(DrawingHistoryOwners, AnObjectGivenUpIsTheCallers) {
    Drawing d;
    CLine* line = d.Add();
    d.Mark();
    d.document.DeleteObject(line);
    d.Mark();
    d.history.GiveUp(line);
    const CKxAliveToken alive = line->GetAlive();
    d.history.Undo();
    EXPECT_EQ(Pointers(), d.List());
    d.history.Forget();
    EXPECT_TRUE(alive.IsAlive());
    Free(line);
}

TEST(DrawingHistoryOwners, AnObjectThatMovesToAnotherDrawingWithAHistoryBelongsToThatOne) {
    Drawing first;
    Drawing second;
    CLine* line = first.Add();
    first.Mark();
    first.document.DeleteObject(line);
    first.Mark();
    second.document.AddDrawAobject(line);
    second.Mark();
    const CKxAliveToken alive = line->GetAlive();
    first.history.Undo();
    EXPECT_EQ(Pointers(), first.List());
    first.history.Forget();
    EXPECT_TRUE(alive.IsAlive());
    second.history.Undo();
    second.history.Redo();
    EXPECT_EQ(Pointers({line}), second.List());
}

TEST(DrawingHistoryOwners, ResetAndALoadStartItAnewAndFreeWhatItKept) {
    LoneDocument source;
    source.document.AddDrawAobject(NewLine(3));
    const Bytes stored = source.Store();
    Drawing d;
    CLine* a = d.Add();
    d.Mark();
    const CKxAliveToken erased = a->GetAlive();
    d.document.DeleteObject(a);
    d.Mark();
    d.document.Reset();
    EXPECT_FALSE(erased.IsAlive());
    EXPECT_EQ(0, d.history.GetUndoCount());
    EXPECT_EQ(0, d.history.Undo());
    d.Add();
    EXPECT_EQ(1, d.Mark());
    Listener listener;
    d.history.SetListener(&listener);
    EXPECT_EQ(1, d.Load(stored));
    EXPECT_EQ("F", listener.told) << "told once";
    EXPECT_EQ(0, d.history.Undo());
    EXPECT_EQ(1, d.Objects().GetSize());
    EXPECT_EQ(1, d.history.IsClean());
    static_cast<CLine*>(d.Objects()[0])->SetStartPoint(CGePoint2d(9, 9));
    EXPECT_EQ(1, d.Mark());
    d.history.Undo();
    EXPECT_EQ(3, X(d.Objects()[0]));
}

TEST(DrawingHistoryOwners, ADocumentFreedFirstLeavesAnEmptyHistory) {
    auto document = std::make_unique<CGraphicDocument>();
    CDrawingHistory history(document.get());
    CLine* line = NewLine();
    const CKxAliveToken alive = line->GetAlive();
    document->AddDrawAobject(line);
    history.Mark();
    document->DeleteObject(line);
    history.Mark();
    document.reset();
    EXPECT_FALSE(alive.IsAlive());
    EXPECT_EQ(nullptr, history.GetDocument());
    EXPECT_EQ(0, history.CanUndo());
    EXPECT_EQ(0, history.Undo());
    EXPECT_EQ(0, history.Mark());
    EXPECT_EQ(0, history.EndGroup());
    history.SetClean();
    history.Forget();
    history.SetLimits(1, 1);
}

TEST(DrawingHistoryOwners, ADocumentHasOneHistory) {
    LoneDocument d;
    CDrawingHistory first(&d.document);
    d.document.AddDrawAobject(NewLine());
    first.Mark();
    CDrawingHistory second(&d.document);
    EXPECT_EQ(nullptr, first.GetDocument());
    EXPECT_EQ(0, first.CanUndo());
    EXPECT_EQ(&second, d.document.GetHistory());
    d.document.AddDrawAobject(NewLine());
    EXPECT_EQ(0, first.Mark());
    EXPECT_EQ(1, second.Mark());
}

// ---- Limits, clean point, groups, notifications --------------------------------------------------------------------

TEST(DrawingHistoryOwners, BeyondALimitTheOldestStepsAreForgotten) {
    Drawing d;
    d.history.SetLimits(64 << 20, 3);
    std::vector<CDrawable*> added;
    for (int i = 0; i < 5; ++i) {
        added.push_back(d.Add(i));
        d.Mark();
    }
    EXPECT_EQ(3, d.history.GetUndoCount());
    while (d.history.Undo() != 0) {
    }
    EXPECT_EQ(Pointers({added[0], added[1]}), d.List());
    d.history.SetLimits(64 << 20, 1);
    EXPECT_EQ(1, d.history.GetRedoCount());
    EXPECT_EQ(1, d.history.Redo());
    EXPECT_EQ(Pointers({added[0], added[1], added[2]}), d.List());
}

TEST(DrawingHistoryOwners, TheLimitInBytesHoldsButForTheNewestStep) {
    Drawing d;
    CLine* line = d.Add();
    d.history.SetLimits(4000, 1000);
    for (int i = 0; i < 100; ++i) {
        line->SetStartPoint(CGePoint2d(i, i));
        d.Mark();
        EXPECT_LE(d.history.GetBytes(), 4000u);
    }
    EXPECT_GT(d.history.GetUndoCount(), 3);
    EXPECT_LT(d.history.GetUndoCount(), 40);
    line->SetMsgInfo(CString(L'x', 5000));
    d.Mark();
    line->SetMsgInfo(L"");
    d.Mark();
    EXPECT_EQ(1, d.history.GetUndoCount()) << "it holds the long text";
    EXPECT_GT(d.history.GetBytes(), 10000u);
    d.history.Undo();
    EXPECT_EQ(5000, line->GetMsgInfo().GetLength());
}

TEST(DrawingHistoryOwners, UndoneToTheCleanPointTheDocumentIsUnmodified) {
    Drawing d;
    EXPECT_EQ(1, d.history.IsClean());
    CLine* line = d.Add();
    d.Mark();
    EXPECT_TRUE(d.document.IsModified()) << "a step modifies";
    d.document.SetModifiedFlag(FALSE); // As a save does.
    EXPECT_EQ(1, d.history.IsClean());
    line->SetEndPoint(CGePoint2d(9, 9));
    d.Mark();
    EXPECT_EQ(0, d.history.IsClean());
    d.history.Undo();
    EXPECT_FALSE(d.document.IsModified());
    d.history.Undo();
    EXPECT_TRUE(d.document.IsModified());
    EXPECT_EQ(0, d.history.IsClean());
    d.history.Redo();
    EXPECT_FALSE(d.document.IsModified());
    d.history.Undo();
    d.Add();
    d.Mark();
    d.history.Undo();
    EXPECT_TRUE(d.document.IsModified()) << "the saved state can't be reached any more";
}

TEST(DrawingHistoryOwners, ASaveMarksWhatIsNotMarked) {
    Drawing d;
    d.Add();
    d.document.SetModifiedFlag(FALSE);
    EXPECT_FALSE(d.document.IsModified());
    EXPECT_EQ(1, d.history.GetUndoCount());
    EXPECT_EQ(1, d.history.IsClean());
    d.history.Undo();
    EXPECT_TRUE(d.document.IsModified());
}

TEST(DrawingHistoryOwners, ForgettingKeepsTheCleanPointThatIsHere) {
    Drawing d;
    d.Add();
    d.history.SetClean();
    d.history.Forget();
    EXPECT_EQ(1, d.history.IsClean());
    EXPECT_EQ(0, d.history.GetBytes());
    d.Add();
    d.Mark();
    d.history.Forget();
    EXPECT_EQ(0, d.history.IsClean());
}

TEST(DrawingHistoryOwners, AGroupIsOneStepWithItsName) {
    Drawing d;
    CLine* before = d.Add(); // Not marked.
    {
        const CHistoryGroup outer(&d.history, L"外", L"Outer");
        d.Add();
        EXPECT_EQ(0, d.Mark());
        EXPECT_EQ(0, d.history.CanUndo());
        EXPECT_EQ(0, d.history.Undo());
        const CHistoryGroup inner(&d.history, L"内", L"Inner");
        d.Add();
    }
    EXPECT_EQ(2, d.history.GetUndoCount());
    EXPECT_EQ(L"Outer", d.history.GetUndoName(1));
    d.history.Undo();
    EXPECT_EQ(Pointers({before}), d.List());
    const CHistoryGroup none(nullptr, L"", L"");
}

TEST(DrawingHistoryOwners, AnAddedObjectIsMarkedWithoutAComparison) {
    Drawing d;
    CLine* first = d.Add(1);
    d.Mark();
    first->SetEndPoint(CGePoint2d(7, 7)); // No mark is set after it.
    CLine* second = d.Add(2);
    EXPECT_EQ(1, d.history.MarkAdded(second, L"加", L"Add"));
    CLine* third = NewLine(3);
    d.document.AddDrawAobjectFront(third);
    EXPECT_EQ(1, d.history.MarkAdded(third, L"加", L"Add"));
    EXPECT_EQ(3, d.history.GetUndoCount());
    EXPECT_EQ(1, d.history.Undo()) << "the end of the line, which Undo marks first";
    EXPECT_EQ(3, first->GetEndPoint().x);
    EXPECT_EQ(1, d.history.Undo());
    EXPECT_EQ(Pointers({first, second}), d.List());
    EXPECT_EQ(1, d.history.Undo());
    EXPECT_EQ(Pointers({first}), d.List());
    EXPECT_EQ(0, d.history.MarkAdded(first, L"", L"")) << "it is known already";
    CLine* a = d.Add(4);
    d.Add(5);
    EXPECT_EQ(1, d.history.MarkAdded(a, L"", L"")) << "more has changed than the host says: all is compared";
    d.history.Undo();
    EXPECT_EQ(Pointers({first}), d.List());
}

TEST(DrawingHistoryOwners, TheListenerIsToldInOrderAndMayCall) {
    Drawing d;
    Listener listener;
    d.history.SetListener(&listener);
    d.Add();
    d.Mark();
    d.document.SetModifiedFlag(FALSE);
    d.history.Undo();
    d.history.Redo();
    d.history.Forget();
    EXPECT_EQ("MSURF", listener.told);
    d.Mark();
    EXPECT_EQ("MSURF", listener.told) << "nothing has changed";
    listener.act = [&](CDrawingHistory* history) {
        listener.act = nullptr;
        EXPECT_EQ(1, history->Undo());
    };
    d.Add();
    EXPECT_EQ(1, d.Mark());
    EXPECT_EQ("MSURFMU", listener.told);
    EXPECT_EQ(1, d.Objects().GetSize());
    listener.act = [](CDrawingHistory*) { AfxThrowNotSupportedException(); };
    EXPECT_EQ(1, d.history.Redo());
}

// ---- What no mark has seen -----------------------------------------------------------------------------------------

TEST(DrawingHistoryOwners, WhatLeftTheDrawingAfterTheLastMarkIsFreedTooWhenTheHistoryEnds) {
    for (const std::string how : {"end", "document", "reset", "load", "another"}) {
        SCOPED_TRACE(how);
        const int before = Registered();
        {
            auto d = std::make_unique<LoneDocument>();
            const int empty = Registered(); // With the document's layer.
            auto history = std::make_unique<CDrawingHistory>(&d->document);
            CLine* left = NewLine(1);
            CLine* stays = NewLine(2);
            d->document.AddDrawAobject(left);
            d->document.AddDrawAobject(stays);
            history->Mark();
            const Bytes stored = d->Store();
            d->document.DeleteObject(left);
            EXPECT_EQ(empty + 2, Registered());
            if (how == "end") {
                history.reset();
                EXPECT_EQ(empty + 1, Registered());
            } else if (how == "document") {
                d.reset();
                EXPECT_EQ(before, Registered());
            } else if (how == "reset") {
                d->document.Reset();
                EXPECT_EQ(empty, Registered());
            } else if (how == "load") {
                d->Load(stored);
                EXPECT_EQ(empty + 2, Registered()) << "the two of the stream";
            } else {
                CDrawingHistory other(&d->document);
                EXPECT_EQ(empty + 1, Registered());
            }
        }
        EXPECT_EQ(before, Registered());
    }
}

TEST(DrawingHistoryOwners, AnObjectThatIsErasedBeforeAMarkHasSeenItIsFreedByTheNextOne) {
    Drawing d;
    d.Add(1);
    d.Mark();
    const int before = Registered();
    d.history.BeginGroup(L"组", L"Group");
    CLine* erased = d.Add(2);
    CLine* back = d.Add(3);
    CLine* freed = d.Add(4);
    for (CLine* line : {erased, back, freed}) {
        d.document.AddSelected(line);
    }
    d.document.DeleteAllSelectedObject();
    d.document.AddDrawAobject(back);
    Free(freed);
    EXPECT_EQ(before + 2, Registered());
    EXPECT_EQ(1, d.history.EndGroup());
    EXPECT_EQ(before + 1, Registered());
    EXPECT_EQ(back, d.List().back());
    d.history.Undo();
    EXPECT_EQ(1u, d.List().size());
    d.history.Redo();
    EXPECT_EQ(back, d.List().back());
    EXPECT_EQ(3, X(back));
}

// ---- Failures of a host --------------------------------------------------------------------------------------------

namespace {

class CThrowingDocument : public CGraphicDocument {
public:
    bool throwing = false;
    void SetModifiedFlag(BOOL modified = TRUE) override {
        CGraphicDocument::SetModifiedFlag(modified);
        if (throwing) {
            throw 5;
        }
    }
};

} // namespace

TEST(DrawingHistoryOwners, AHistoryOutlivesALoadThatThrows) {
    CVectorViewCoordTran tran;
    auto document = std::make_unique<CThrowingDocument>();
    document->SetVectorViewCoordTran(&tran);
    CDrawingHistory history(document.get());
    document->AddDrawAobject(NewLine(1));
    EXPECT_EQ(1, history.Mark());
    BYTE none = 0;
    CMemFile file;
    file.Attach(&none, 0, 0);
    document->throwing = true;
    EXPECT_ANY_THROW(document->OpenDocument(file));
    document->throwing = false;
    EXPECT_EQ(&history, document->GetHistory());
    EXPECT_EQ(0, history.Undo()) << "the drawing has been emptied";
    document->AddDrawAobject(NewLine(2));
    EXPECT_EQ(1, history.Mark());
    document.reset();
    EXPECT_EQ(nullptr, history.GetDocument());
}

TEST(DrawingHistoryOwners, ADocumentWhoseModifiedMarkThrowsIsMarkedAndUndone) {
    CVectorViewCoordTran tran;
    CThrowingDocument document;
    document.SetVectorViewCoordTran(&tran);
    CDrawingHistory history(&document);
    document.AddDrawAobject(NewLine(1));
    document.throwing = true;
    EXPECT_EQ(1, history.Mark());
    EXPECT_EQ(1, history.Undo());
    EXPECT_EQ(0, document.GetDrawableObjs()->GetSize());
    EXPECT_EQ(1, history.Redo());
    document.throwing = false;
}

// ---- Cost -----------------------------------------------------------------------------------------------------------

TEST(DrawingHistory, AMarkOverAHundredThousandObjectsOfWhichOneChangedIsQuick) {
    LoneDocument d;
    constexpr int kObjects = 100000;
    d.Objects().SetSize(0, kObjects);
    for (int i = 0; i < kObjects; ++i) {
        CDrawable* line = NewLine(i);
        d.Objects().Add(line); // Without the search for doubles.
    }
    LARGE_INTEGER frequency;
    ::QueryPerformanceFrequency(&frequency);
    const auto milliseconds = [&](const std::function<void()>& call) {
        LARGE_INTEGER begin;
        LARGE_INTEGER end;
        ::QueryPerformanceCounter(&begin);
        call();
        ::QueryPerformanceCounter(&end);
        return 1000.0 * static_cast<double>(end.QuadPart - begin.QuadPart) / static_cast<double>(frequency.QuadPart);
    };
    std::unique_ptr<CDrawingHistory> history;
    std::printf("begin: %.1f ms\n", milliseconds([&] { history = std::make_unique<CDrawingHistory>(&d.document); }));
    double best = 1e9;
    for (int i = 0; i < 15; ++i) {
        static_cast<CLine*>(d.Objects()[i * 6000])->SetStartPoint(CGePoint2d(-1, -1));
        int marked = 0;
        best = std::min(best, milliseconds([&] { marked = history->Mark(); }));
        ASSERT_EQ(1, marked);
    }
    std::printf("mark: %.2f ms\n", best);
    std::printf("undo: %.2f ms\n", milliseconds([&] { history->Undo(); }));
    const double fill = milliseconds([&] {
        for (int i = 0; i < 10000; ++i) {
            CDrawable* line = NewLine(i);
            d.Objects().Add(line);
            ASSERT_EQ(1, history->MarkAdded(line, L"", L""));
        }
    });
    std::printf("10,000 objects added, a step each: %.1f ms\n", fill);
    for (INT_PTR i = 0; i < d.Objects().GetSize(); ++i) {
        d.Objects()[i]->SetPenColorIndex(5);
    }
    std::printf("mark of 110,000 changes: %.1f ms\n", milliseconds([&] { history->Mark(); }));
    std::printf("its undo: %.1f ms\n", milliseconds([&] { history->Undo(); }));
    std::printf("end: %.1f ms\n", milliseconds([&] { history.reset(); }));
#ifndef NR_GUARDED
    EXPECT_LT(best, 30.0);
#endif
}
