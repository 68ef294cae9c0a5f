// All words: what each makes and how it runs, each one replaced by each other, and the wheel and the pan in the middle.

#include "CommandWords.h"
#include "MemoryInfo.h"
#include "support/ViewDriver.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    LPCTSTR word;
    const char* tool; // "" for words that act at once.
};

const Row kRows[] = {{L"rotatetext", ""},
                     {L"DrawLabel", "COperationCreateLabel"},
                     {L"DrawLabel_Green", "COperationCreateLabel"},
                     {L"rect", "COperationCreateRectangle"},
                     {L"line", "COperationCreateLine"},
                     {L"pline", "COperationCreatePline"},
                     {L"pline_bound", "COperationCreatePline"},
                     {L"offset", "CCommandOperationOffset"},
                     {L"circle", "COperationCreateCircle"},
                     {L"text", "COperationCreateText"},
                     {L"arc", "COperationCreateArc"},
                     {L"textparm", "COperationCreateTextParm"},
                     {L"mirroring", "CCommandOperationMirroring"},
                     {L"rotation", "CCommandOperationRotation"},
                     {L"translation", "CCommandOperationTranslation"},
                     {L"copy", "CCommandOperationCopy"},
                     {L"viewmove", "CCommandOperationRTPAN"},
                     {L"erase", ""},
                     {L"PLine_AddPoint", "CCommandOperation_PLine_AddPoint"},
                     {L"PLine_RemovePoint", "CCommandOperation_PLine_RemovePoint"}};

bool IsInstalled(const Row& row) {
    return row.tool[0] != '\0';
}

bool IsText(const Row& row) {
    return std::string(row.tool).find("COperationCreateText") == 0;
}

// A drawing with a selected line and a two-vertex polyline.
void Fill(ViewDriver& d) {
    d.Select(d.AddLine(100, 100, 200, 120));
    d.AddPolyline({{100, 200}, {200, 200}});
    d.TakeFresh();
}

// Brings the tool into its second state, with a preview where it has one. Texts would ask, so they get a move only.
void GoOn(ViewDriver& d, const Row& row) {
    if (!IsText(row)) {
        d.ClickAt(150, 201);
    }
    d.MoveTo(250, 60);
    d.MoveTo(280, 90);
}

TEST(CommandWords, EachWordMakesItsToolAndTheManagerSaysWhetherItWasInstalled) {
    for (const Row& row : kRows) {
        ViewDriver d;
        BoxAnswer boxes({IDNO});
        const HINSTANCE before = AfxGetResourceHandle();
        AfxSetResourceHandle(VectorViewModule()); // No angle dialog there: it asks nothing.
        EXPECT_EQ(d.Manager().DoCommand(row.word), IsInstalled(row) ? 1 : 0) << Utf8(row.word);
        AfxSetResourceHandle(before);
        EXPECT_EQ(d.ToolName(), row.tool) << Utf8(row.word);
        EXPECT_EQ(d.IsRunning(), IsInstalled(row)) << Utf8(row.word);
    }
}

TEST(CommandWords, OtherWordsAndOtherCasesAreUnknownAndChangeNothing) {
    ViewDriver d;
    d.Start(L"circle");
    d.ClickAt(100, 100);
    for (LPCTSTR word : {L"", L"LINE", L"Line", L"line ", L" line", L"lines", L"drawlabel", L"pline_Bound", L"open",
                         L"save", L"pline_addpoint", L"Erase"}) {
        EXPECT_EQ(d.Manager().DoCommand(word), 0) << Utf8(word);
        EXPECT_EQ(d.ToolName(), "COperationCreateCircle");
        EXPECT_EQ(d.ClickCount(), 1);
    }
}

TEST(CommandWords, EveryCommandReplacesEveryOtherBeforeItsEnd) {
    for (const Row& first : kRows) {
        for (const Row& second : kRows) {
            if (!IsInstalled(first) || !IsInstalled(second)) {
                continue;
            }
            const std::string names = Utf8(first.word) + " by " + Utf8(second.word);
            ViewDriver d;
            Fill(d);
            d.Start(first.word);
            GoOn(d, first);
            ASSERT_EQ(d.ToolName(), first.tool) << names;
            d.Start(second.word);
            EXPECT_EQ(d.ToolName(), second.tool) << names;
            EXPECT_TRUE(d.IsRunning()) << names;
            EXPECT_EQ(d.Document().GetCurrentObject(), nullptr) << names;
            EXPECT_TRUE(d.Tracked().empty()) << names;
            EXPECT_EQ(d.EditBox(), nullptr) << names;
            GoOn(d, second);
            d.Manager().Cancel();
            EXPECT_FALSE(d.IsRunning()) << names;
        }
    }
}

TEST(CommandWords, TheWheelZoomsInTheMiddleOfEveryCommandAndItGoesOn) {
    for (const Row& row : kRows) {
        if (!IsInstalled(row)) {
            continue;
        }
        ViewDriver d;
        Fill(d);
        d.Start(row.word);
        GoOn(d, row);
        const int clicks = d.ClickCount();
        const int step = d.Step();
        d.TakeResults();
        d.Wheel(120, 150, 150);
        EXPECT_EQ(d.Tran().GetScale(), 0.8f) << Utf8(row.word);
        const std::string results = d.TakeResults();
        EXPECT_EQ(results.substr(0, 13), "wheel 0, move") << Utf8(row.word);
        d.Wheel(-120, 150, 150);
        d.MoveTo(260, 70);
        EXPECT_EQ(d.ToolName(), row.tool) << Utf8(row.word);
        EXPECT_EQ(d.ClickCount(), clicks) << Utf8(row.word);
        EXPECT_EQ(d.Step(), step) << Utf8(row.word);
    }
}

TEST(CommandWords, TheMiddleButtonPansInTheMiddleOfEveryCommandAndTakesTheMarkerOff) {
    for (const Row& row : kRows) {
        if (!IsInstalled(row)) {
            continue;
        }
        ViewDriver d;
        Fill(d);
        d.Start(row.word);
        GoOn(d, row);
        const std::string before = d.AllWords();
        d.MoveTo(101, 199); // A vertex of the polyline: the marker, where the tool has one.
        d.MoveTo(280, 90);
        d.Send(WM_MBUTTONDOWN, MK_MBUTTON, CPoint(300, 250));
        d.Move(CPoint(310, 243), MK_MBUTTON);
        EXPECT_EQ(d.Tran().GetOriginX(), -10.0) << Utf8(row.word);
        EXPECT_EQ(d.Tran().GetOriginY(), -7.0) << Utf8(row.word);
        EXPECT_FALSE(d.IsMarkDrawn()) << Utf8(row.word);
        EXPECT_EQ(d.ToolName(), row.tool) << Utf8(row.word);
        EXPECT_TRUE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE)) << Utf8(row.word);
        d.Send(WM_MBUTTONUP, 0, CPoint(310, 243));
        d.MoveTo(250, 60);
        d.MoveTo(280, 90);
        EXPECT_TRUE(d.IsRunning()) << Utf8(row.word);
        EXPECT_EQ(d.AllWords(), before) << Utf8(row.word);
    }
}

TEST(CommandWords, WithNothingSelectedAndNothingDrawnEveryCommandRunsAndEnds) {
    for (const Row& row : kRows) {
        if (!IsInstalled(row)) {
            continue;
        }
        ViewDriver d;
        BoxAnswer boxes({IDNO});
        d.Start(row.word);
        GoOn(d, row);
        d.RightAt(10, 10);
        EXPECT_FALSE(d.IsRunning()) << Utf8(row.word);
        EXPECT_EQ(d.Selected().GetSize(), 0) << Utf8(row.word);
        EXPECT_TRUE(boxes.Texts().empty()) << Utf8(row.word);
    }
}

TEST(CommandWords, KeysEndNoCommandAndLeaveTheSelection) {
    for (const Row& row : kRows) {
        if (!IsInstalled(row)) {
            continue;
        }
        ViewDriver d;
        Fill(d);
        d.Start(row.word);
        d.Key(VK_ESCAPE);
        d.Key('A');
        EXPECT_TRUE(d.IsRunning()) << Utf8(row.word);
        EXPECT_EQ(d.Selected().GetSize(), 1) << Utf8(row.word);
    }
}

TEST(CommandWords, ACommandTakesTheSnapModeOfItsManager) {
    ViewDriver d;
    Fill(d);
    d.Manager().SetOsnapMode(0);
    d.Start(L"line");
    d.MoveTo(102, 198); // A polyline's vertex: searched for with bit 1 only.
    EXPECT_FALSE(d.IsMarkDrawn());
    d.Manager().SetOsnapMode(1);
    d.MoveTo(103, 198);
    EXPECT_TRUE(d.IsMarkDrawn());
}

TEST(CommandWords, NothingButTheRequiredLeftoversStaysAllocated) {
    for (const Row& row : kRows) {
        if (!IsInstalled(row)) {
            continue;
        }
        const int before = CKXMemoryManager::Instance()->GetCount();
        const int unknown = CKXMemoryManager::Instance()->GetUnknownCount();
        {
            ViewDriver d;
            Fill(d);
            d.Start(row.word);
            GoOn(d, row);
            d.Manager().Cancel();
        }
        const int left = std::string(row.tool) == "COperationCreateRectangle" ? 4 : 0;
        EXPECT_EQ(CKXMemoryManager::Instance()->GetCount() - before, left) << Utf8(row.word);
        EXPECT_EQ(CKXMemoryManager::Instance()->GetUnknownCount(), unknown) << Utf8(row.word);
    }
}

} // namespace
