// Undo and redo in a parameter view: an edit is a step, with what its hooks change, and an open one is ended first.

#include "DrawingHistory.h"
#include "support/ParmHost.h"

namespace {

struct ParmHistory : ThreeParms {
    void OpenA() {
        EditA();
        view.EnableHistory(1);
        Take();
    }
    CDrawingHistory& History() { return *view.GetHistory(); }
};

} // namespace

TEST_F(ParmHistory, AnEditIsOneStepWithWhatItsHooksChange) {
    OpenA();
    const std::vector<BYTE> before = Store();
    view.onChanged = [&](CTextParm*) {
        b->SetText(L"70");
        view.AddLine(CGePoint2d(1, 2), CGePoint2d(3, 4), kColor, 1);
    };
    view.DoEndEdit();
    ExpectClosed();
    EXPECT_EQ(L"70", b->GetText());
    const std::vector<BYTE> after = Store();
    EXPECT_EQ(1, History().GetUndoCount());
    EXPECT_EQ(L"修改参数", History().GetUndoName(0));
    EXPECT_EQ(L"Edit parameter", History().GetUndoName(1));
    EXPECT_EQ(1, view.Undo());
    EXPECT_EQ(before, Store());
    EXPECT_EQ(1, view.Redo());
    EXPECT_EQ(after, Store());
}

TEST_F(ParmHistory, UndoWithABoxOpenStoresItsTextAndTakesItBack) {
    OpenA();
    EXPECT_EQ(1, view.Undo());
    ExpectClosed();
    EXPECT_EQ(storedA, Take());
    EXPECT_EQ(L"10", a->GetText());
    EXPECT_EQ(1, view.Redo());
    EXPECT_EQ(L"7", a->GetText());
}

TEST_F(ParmHistory, ARefusedTextIsDroppedByUndoAndPreventsItWhereRefusalsAreStrict) {
    OpenA();
    a->SetMsgInfo(L"note");
    History().Mark();
    view.onAccept = [](CTextParm*, const CString&) { return 0; };
    view.SetStrictRefusal(1);
    EXPECT_EQ(0, view.Undo());
    ExpectOpenOn(a, L"7");
    EXPECT_EQ(L"note", a->GetMsgInfo());
    view.SetStrictRefusal(0);
    EXPECT_EQ(1, view.Undo());
    ExpectClosed();
    EXPECT_EQ(L"10", a->GetText());
    EXPECT_EQ(L"", a->GetMsgInfo());
}

TEST_F(ParmHistory, NoHookOfAnEndCanUndo) {
    OpenA();
    int undone = 0;
    view.onChanged = [&](CTextParm*) { undone = view.Undo() + view.Redo() + view.CanUndo(); };
    view.DoEndEdit();
    EXPECT_EQ(0, undone);
    ExpectClosed();
    EXPECT_EQ(L"7", a->GetText());
    EXPECT_EQ(1, view.Undo());
}

TEST_F(ParmHistory, AHookMayTurnItOffOrResetTheView) {
    for (const bool reset : {false, true}) {
        OpenA();
        view.onChanged = [&](CTextParm*) { reset ? view.ResetVectorView() : view.EnableHistory(0); };
        view.DoEndEdit();
        view.onChanged = nullptr;
        EXPECT_EQ(0, view.Undo());
        view.EnableHistory(0);
        view.ResetVectorView();
        Take();
    }
}

TEST_F(ParmHistory, AHookMayUseTheHistoryThatItTurnsOn) {
    EditA();
    view.onChanging = [&](CTextParm*, const CString&, CString&) { view.EnableHistory(1); };
    view.DoEndEdit();
    EXPECT_EQ(L"7", a->GetText());
    EXPECT_EQ(1, view.Undo()) << "what was not marked";
    EXPECT_EQ(L"10", a->GetText());
}

TEST_F(ParmHistory, AParameterThatIsTakenOutByUndoWhileItsBoxIsOpenIsEndedFirst) {
    view.EnableHistory(1);
    Three();
    History().Mark();
    History().BeginGroup(L"参数", L"Parameter");
    CTextParm* late = AddParm(L"D", L"40", 50, 200);
    History().EndGroup();
    Paint();
    Click(late);
    ASSERT_TRUE(IsBoxShown());
    EXPECT_EQ(1, view.Undo()) << "its text is the old one, so that the step before is undone";
    ExpectClosed();
    EXPECT_EQ(4, view.GetDocument()->GetDrawableObjs()->GetSize());
}
