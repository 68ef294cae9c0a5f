// The parameter view on real windows: whole sequences of hooks and notifications for every way in which an edit ends,
// clicks, walks, the menu, and hosts that misbehave.

#include "support/BoxAnswer.h"
#include "support/ParmHost.h"

#include <CommandOperationManager.h>
#include <KXBaseOpr.h>

namespace {

using VectorViewParm = ThreeParms;

// ---- Construction --------------------------------------------------------------------------------------------------

TEST(VectorViewParmAlone, StartsWithItsOwnEngineAndWithoutDecimals) {
    const int alive = CKXMemoryManager::Instance()->GetCount();
    const int unknown = CKXMemoryManager::Instance()->GetUnknownCount();
    {
        ParmView view;
        EXPECT_STREQ("CCommandOperationManager_ViewParm",
                     view.GetCommandOperationManager()->GetRuntimeClass()->m_lpszClassName);
        EXPECT_EQ(nullptr, view.EditParm());
        EXPECT_EQ(nullptr, view.TipObject());
        CString value = L"12.50";
        EXPECT_EQ(L"12.5", view.Graphic().GetTextParm_ShowText(value));
        view.SetNeedShowDecimal(1);
        EXPECT_EQ(L"12.50", view.Graphic().GetTextParm_ShowText(value));
        EXPECT_TRUE(view.IsKindOf(RUNTIME_CLASS(CVectorView)));
        EXPECT_EQ(nullptr, view.GetRuntimeClass()->CreateObject());
    }
    EXPECT_EQ(alive, CKXMemoryManager::Instance()->GetCount());
    EXPECT_EQ(unknown, CKXMemoryManager::Instance()->GetUnknownCount());
}

TEST(VectorViewParmAlone, WorksWithoutAWindow) {
    Events log;
    ParmView view;
    view.log = &log;
    auto* parm = static_cast<CTextParm*>(view.AddParmText(CGePoint2d(10, 10), L"5", L"P", 0, kColor, 20.0, 1));
    view.SetTooltipText(L"text", 1);
    view.ActivateTooltip(1);
    view.InitToolTip();
    view.SetToolTip(0, CPoint(10, -10));
    view.SendClickNotify(parm);
    EXPECT_EQ(1, view.Can(parm));
    // The edit of a box that can't be made stores what it began with.
    view.EditAt(parm, CRect(0, 0, 10, 10));
    EXPECT_EQ(parm, view.EditParm());
    view.DoEndEdit();
    EXPECT_EQ(nullptr, view.EditParm());
    EXPECT_EQ(L"5", parm->GetText());
    EXPECT_EQ((Events{"pre P", "accept P 5", "changing P 5>5", "changed P 5>5", "end P"}), log);
    EXPECT_EQ(1, view.LoadFile(nullptr, 0));
    EXPECT_EQ(1, view.ResetVectorView());
    EXPECT_EQ(0, view.GetDocument()->GetDrawableObjs()->GetSize());
    EXPECT_EQ(nullptr, view.Edit().GetSafeHwnd());
    EXPECT_EQ(nullptr, view.Tip().GetSafeHwnd());
}

TEST_F(VectorViewParm, AKeyReachesTheEngineWhichDeselects) {
    Three();
    view.GetDocument()->AddSelected(a);
    view.SendMessage(WM_KEYDOWN, 'A', 1);
    EXPECT_EQ(0, view.GetDocument()->GetSelectedDrawableObjs()->GetSize());
    EXPECT_EQ(CDrawable::Normal, a->GetDrawState());
}

// ---- Opening -------------------------------------------------------------------------------------------------------

TEST_F(VectorViewParm, AClickOpensTheBoxOverTheTextWithAllOfItSelected) {
    Three();
    Click(a);
    EXPECT_EQ((Events{"pre A", "query A"}), Take());
    ExpectOpenOn(a, L"10");
    EXPECT_TRUE(HasFocus(view.Edit()));
    EXPECT_EQ(MAKELONG(0, 2), view.Edit().SendMessage(EM_GETSEL));
    CGePoint2d topLeft;
    CGePoint2d bottomRight;
    a->GetParmEditRect(topLeft, bottomRight);
    // At the very left of the text, as wide as its box and as high as the text as last painted.
    EXPECT_EQ(CRect(50, 50, 150, static_cast<int>(300.0 - bottomRight.y)), BoxRect());
    EXPECT_GT(BoxRect().Height(), 10);
    LOGFONT font = {};
    ::GetObject(reinterpret_cast<HGDIOBJ>(view.Edit().SendMessage(WM_GETFONT)), sizeof(font), &font);
    EXPECT_EQ(20, font.lfHeight);
    EXPECT_EQ(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL | ES_NOHIDESEL, static_cast<int>(view.Edit().GetStyle()));
    EXPECT_EQ(1, view.Edit().GetDlgCtrlID());
}

TEST_F(VectorViewParm, TheFontFollowsTheZoom) {
    Three();
    view.GetVectorViewCoordTran()->SetScale(0.5f);
    view.EditAt(a, CRect(9, 10, 100, 40));
    LOGFONT font = {};
    ::GetObject(reinterpret_cast<HGDIOBJ>(view.Edit().SendMessage(WM_GETFONT)), sizeof(font), &font);
    EXPECT_EQ(40, font.lfHeight);
    EXPECT_EQ(CRect(10, 10, 100, 40), BoxRect());
}

TEST_F(VectorViewParm, TheBoxShowsTheValueAsStoredAndNotAsDrawn) {
    CTextParm* parm = AddParm(L"P", L"12.3456", 50, 50);
    Paint();
    Click(parm);
    EXPECT_EQ(L"12.3456", BoxText());
}

TEST_F(VectorViewParm, TheQueryCarriesTheParameterAndTheHeader) {
    Three();
    Click(a);
    EXPECT_EQ(view.m_hWnd, parent.last.hwndFrom);
    EXPECT_EQ(77u, parent.last.idFrom);
    EXPECT_EQ(77u, parent.lastParam);
    EXPECT_EQ(static_cast<UINT>(-160), parent.last.code);
    EXPECT_EQ(a, parent.last.pText);
    EXPECT_EQ(0, parent.last.nKind);
}

TEST_F(VectorViewParm, TheParentRefusesWithMinusOne) {
    Three();
    parent.onNotify = [](NMVECTORPARM* record) { record->nKind = -1; };
    Click(a);
    EXPECT_EQ((Events{"pre A", "query A"}), Take());
    ExpectClosed();
    CGePoint2d on = a->GetPos();
    on.x += 6;
    on.y -= 6;
    EXPECT_EQ(1, view.DoEditForClicked(0, on));
    parent.onNotify = [](NMVECTORPARM* record) { record->nKind = -2; };
    EXPECT_EQ(1, view.Can(a));
}

TEST_F(VectorViewParm, AParameterOfTypeFourNeverReachesTheParent) {
    Three();
    a->SetParmType(4);
    Click(a);
    EXPECT_EQ(Events{"pre A"}, Take());
    ExpectClosed();
}

TEST_F(VectorViewParm, AParameterWithoutABoxIsReported) {
    Three();
    a->SetNeedEditBox(0);
    Click(a);
    EXPECT_EQ(Events{"click 5 A"}, Take());
    EXPECT_EQ(a, parent.last.pText);
    ExpectClosed();
}

TEST_F(VectorViewParm, OneBoxServesAllEditsAndItsOldFontsAreFreed) {
    Three();
    Click(a);
    const HWND box = view.Edit().m_hWnd;
    const auto font = reinterpret_cast<HGDIOBJ>(view.Edit().SendMessage(WM_GETFONT));
    Click(c);
    EXPECT_EQ(box, view.Edit().m_hWnd);
    const auto newFont = reinterpret_cast<HGDIOBJ>(view.Edit().SendMessage(WM_GETFONT));
    LOGFONT data = {};
    EXPECT_NE(0, ::GetObject(newFont, sizeof(data), &data));
    if (newFont != font) {
        EXPECT_EQ(0, ::GetObject(font, sizeof(data), &data));
    }
}

// ---- Every way in which an edit ends -------------------------------------------------------------------------------

TEST_F(VectorViewParm, TabStoresAndOpensTheNextOne) {
    EditA();
    Key(VK_TAB);
    EXPECT_EQ(storedA + Events{"tab"} + openB, Take());
    EXPECT_EQ(L"7", a->GetText());
    ExpectOpenOn(b, L"20");
    EXPECT_TRUE(HasFocus(view.Edit()));
}

TEST_F(VectorViewParm, TabSentToTheBoxDoesTheSame) {
    EditA();
    view.Edit().SendMessage(WM_KEYDOWN, VK_TAB, 1);
    EXPECT_EQ(storedA + Events{"tab"} + openB, Take());
    ExpectOpenOn(b, L"20");
}

TEST_F(VectorViewParm, TabInALoopWithoutTranslationOpensTheNextOneAndItsCharacterIsIgnored) {
    EditA();
    Key(VK_TAB, false);
    EXPECT_EQ(storedA + Events{"tab"} + openB, Take());
    ExpectOpenOn(b, L"20");
    EXPECT_TRUE(HasFocus(view.Edit()));
    // Once more, from a box that a Tab has opened.
    Key(VK_TAB, false);
    ExpectOpenOn(c, L"30");
    // A character that follows no key ends the edit.
    Take();
    view.Edit().SendMessage(WM_CHAR, VK_TAB, 1);
    EXPECT_EQ((Events{"accept C 30", "changing C 30>30", "changed C 30>30", "end C"}), Take());
    ExpectClosed();
    EXPECT_TRUE(HasFocus(view));
}

TEST_F(VectorViewParm, TheCharacterOfATabThatOpensNothingGivesTheViewTheFocus) {
    EditA();
    parent.onNotify = [](NMVECTORPARM* record) { record->nKind = -1; };
    Key(VK_TAB, false);
    EXPECT_EQ(storedA + Events{"tab"} + openB, Take());
    ExpectClosed();
    EXPECT_TRUE(HasFocus(view));
    EXPECT_EQ(static_cast<unsigned>(VK_TAB), view.Edit().GetLastKey());
}

TEST_F(VectorViewParm, TheCharacterOfATabThroughTheLoopIsNotWaitedFor) {
    EditA();
    Key(VK_TAB);
    Take();
    view.Edit().SendMessage(WM_CHAR, VK_TAB, 1);
    EXPECT_EQ((Events{"accept B 20", "changing B 20>20", "changed B 20>20", "end B"}), Take());
}

TEST_F(VectorViewParm, ReturnThroughTheLoopOpensTheNextOneLikeTab) {
    EditA();
    Key(VK_RETURN);
    EXPECT_EQ(storedA + Events{"tab"} + openB, Take());
    ExpectOpenOn(b, L"20");
}

TEST_F(VectorViewParm, ReturnWithoutTheLoopStoresAndGivesTheViewTheFocus) {
    EditA();
    Key(VK_RETURN, false);
    EXPECT_EQ(storedA, Take());
    EXPECT_EQ(L"7", a->GetText());
    ExpectClosed();
    EXPECT_TRUE(HasFocus(view));
    EXPECT_EQ(static_cast<unsigned>(VK_RETURN), view.Edit().GetLastKey());
}

TEST_F(VectorViewParm, EscapeStoresTheOldTextThroughAllHooks) {
    for (const bool translated : {true, false}) {
        EditA();
        Key(VK_ESCAPE, translated);
        EXPECT_EQ((Events{"accept A 10", "changing A 10>10", "changed A 10>10", "end A"}), Take());
        EXPECT_EQ(L"10", a->GetText());
        ExpectClosed();
        EXPECT_TRUE(HasFocus(view));
        EXPECT_EQ(static_cast<unsigned>(VK_ESCAPE), view.Edit().GetLastKey());
        view.ResetVectorView();
    }
}

TEST_F(VectorViewParm, LosingTheFocusStores) {
    EditA();
    other.SetFocus();
    EXPECT_EQ(storedA, Take());
    EXPECT_EQ(L"7", a->GetText());
    ExpectClosed();
    EXPECT_TRUE(HasFocus(other));
}

TEST_F(VectorViewParm, AClickOnEmptySpaceStoresTheTextBeforeItIsReported) {
    EditA();
    Click(450, 20);
    EXPECT_EQ((storedA + Events{"click 0"}), Take());
    EXPECT_EQ(nullptr, parent.last.pText);
    ExpectClosed();
    EXPECT_TRUE(HasFocus(view));
}

TEST_F(VectorViewParm, AClickOnAnotherParameterStoresAndOpensThat) {
    EditA();
    Click(c);
    EXPECT_EQ((storedA + Events{"pre C", "query C"}), Take());
    EXPECT_EQ(L"7", a->GetText());
    ExpectOpenOn(c, L"30");
    EXPECT_TRUE(HasFocus(view.Edit()));
}

TEST_F(VectorViewParm, AClickOnALineStoresAndReportsIt) {
    EditA();
    Click(350, 50);
    EXPECT_EQ((storedA + Events{"click 1"}), Take());
    ExpectClosed();
}

TEST_F(VectorViewParm, AClickIntoTheBoxGoesToTheBoxAlone) {
    EditA();
    Click(a);
    EXPECT_EQ(Events{}, Take());
    ExpectOpenOn(a, L"7");
}

TEST_F(VectorViewParm, DoEndEditFromTheHostStores) {
    EditA();
    view.DoEndEdit();
    EXPECT_EQ(storedA, Take());
    ExpectClosed();
    view.DoEndEdit();
    EXPECT_EQ(Events{}, Take());
}

TEST_F(VectorViewParm, ResetBreaksTheEditOffWithTheLastHookOnly) {
    EditA();
    EXPECT_EQ(1, view.ResetVectorView());
    EXPECT_EQ(Events{"end A"}, Take());
    ExpectClosed();
    EXPECT_EQ(0, view.GetDocument()->GetDrawableObjs()->GetSize());
    other.SetFocus();
    EXPECT_EQ(Events{}, Take());
}

TEST_F(VectorViewParm, ALoadInTheMiddleOfAnEditLetsItEndWithoutAStore) {
    EditA();
    std::vector<BYTE> bytes = Store();
    EXPECT_EQ(1, view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size())));
    other.SetFocus();
    EXPECT_EQ(Events{}, Take());
    ExpectClosed();
    for (INT_PTR i = 0; i < view.GetDocument()->GetDrawableObjs()->GetSize(); ++i) {
        if (auto* parm = DYNAMIC_DOWNCAST(CTextParm, view.GetDocument()->GetDrawableObjs()->GetAt(i))) {
            EXPECT_NE(L"7", parm->GetText());
        }
    }
}

TEST_F(VectorViewParm, ALoadOfNothingLeavesTheEditAlone) {
    EditA();
    EXPECT_EQ(1, view.LoadFile(nullptr, 5));
    ExpectOpenOn(a, L"7");
    other.SetFocus();
    EXPECT_EQ(storedA, Take());
}

TEST_F(VectorViewParm, ALoadOfRubbishIsOneAndEmptiesTheDrawing) {
    EditA();
    BoxAnswer boxes;
    BYTE two[] = {2, 0, 0, 0};
    EXPECT_EQ(1, view.LoadFile(two, sizeof(two)));
    EXPECT_EQ(std::vector<std::string>{"文件格式错误!"}, boxes.Texts());
    EXPECT_EQ(0, view.GetDocument()->GetDrawableObjs()->GetSize());
    other.SetFocus();
    ExpectClosed();
}

TEST_F(VectorViewParm, DestroyingTheWindowInAnEditStores) {
    EditA();
    parent.DestroyWindow();
    EXPECT_EQ(storedA, Take());
    EXPECT_EQ(L"7", a->GetText());
}

TEST_F(VectorViewParm, TheEndRepaintsAllOfTheView) {
    EditA();
    view.UpdateWindow();
    view.ValidateRect(nullptr);
    other.SetFocus();
    CRect dirty;
    EXPECT_TRUE(view.GetUpdateRect(&dirty));
    EXPECT_EQ(CRect(0, 0, 500, 300), dirty);
}

// ---- Arrows under Ctrl ---------------------------------------------------------------------------------------------

struct ControlArrows : VectorViewParm {
    // The box holds 1234 with the caret at that place.
    void Caret(int at) {
        Three();
        Click(a);
        Type(L"1234");
        SelectInBox(at, at);
        log.clear();
    }
    const Events stored = {"accept A 1234", "changing A 10>1234", "changed A 10>1234", "end A"};
    void ExpectEnded(UINT key) {
        ControlKey(key);
        EXPECT_EQ(stored, Take());
        ExpectClosed();
        EXPECT_TRUE(HasFocus(view));
        EXPECT_EQ(key, view.Edit().GetLastKey());
    }
    void ExpectOpen(UINT key) {
        ControlKey(key);
        EXPECT_EQ(Events{}, Take());
        ExpectOpenOn(a, L"1234");
        EXPECT_EQ(key, view.Edit().GetLastKey());
    }
};

TEST_F(ControlArrows, RightAtTheEndEnds) {
    Caret(4);
    ExpectEnded(VK_RIGHT);
}

TEST_F(ControlArrows, RightInsideMovesTheCaret) {
    Caret(1);
    ExpectOpen(VK_RIGHT);
    EXPECT_NE(MAKELONG(1, 1), view.Edit().SendMessage(EM_GETSEL));
}

TEST_F(ControlArrows, LeftAtTheBeginningEnds) {
    Caret(0);
    ExpectEnded(VK_LEFT);
}

TEST_F(ControlArrows, LeftInsideMovesTheCaret) {
    Caret(4);
    ExpectOpen(VK_LEFT);
}

TEST_F(ControlArrows, UpEndsAnywhere) {
    Caret(2);
    ExpectEnded(VK_UP);
}

TEST_F(ControlArrows, DownEndsAnywhere) {
    Caret(2);
    ExpectEnded(VK_DOWN);
}

TEST_F(ControlArrows, PageKeysNeverEnd) {
    Caret(4);
    ExpectOpen(VK_NEXT);
    ExpectOpen(VK_PRIOR);
}

TEST_F(ControlArrows, ArrowsAloneNeverEnd) {
    Caret(4);
    for (const UINT key : {VK_RIGHT, VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT}) {
        Key(key);
    }
    SelectInBox(0, 0);
    Key(VK_LEFT);
    EXPECT_EQ(Events{}, Take());
    ExpectOpenOn(a, L"1234");
    EXPECT_EQ(0u, view.Edit().GetLastKey());
}

// ---- Refusal -------------------------------------------------------------------------------------------------------

struct Refusal : VectorViewParm {
    void Refuse() {
        EditA();
        view.onAccept = [](CTextParm*, const CString&) { return 0; };
    }
};

TEST_F(Refusal, KeepsTheBoxOpenAndStoresNothing) {
    Refuse();
    view.DoEndEdit();
    EXPECT_EQ(Events{"accept A 7"}, Take());
    EXPECT_EQ(L"10", a->GetText());
    ExpectOpenOn(a, L"7");
    EXPECT_TRUE(HasFocus(view.Edit()));
}

TEST_F(Refusal, OnEscapeTheOldTextIsPutIntoTheOpenBoxAndOfferedAgain) {
    Refuse();
    Key(VK_ESCAPE);
    // Once for the key, once because the view gets the focus.
    EXPECT_EQ((Events{"accept A 10", "accept A 10"}), Take());
    ExpectOpenOn(a, L"10");
    view.onAccept = nullptr;
    view.DoEndEdit();
    EXPECT_EQ((Events{"accept A 10", "changing A 10>10", "changed A 10>10", "end A"}), Take());
}

TEST_F(Refusal, AfterARefusedEscapeTheLossOfFocusOffersTheTextAgain) {
    Refuse();
    Key(VK_ESCAPE);
    Take();
    view.Edit().SetFocus();
    other.SetFocus();
    EXPECT_EQ(Events{"accept A 10"}, Take());
    ExpectOpenOn(a, L"10");
}

TEST_F(Refusal, OnReturnWithoutTheLoopTheBoxStaysAndTheViewHasTheFocus) {
    Refuse();
    Key(VK_RETURN, false);
    EXPECT_EQ((Events{"accept A 7", "accept A 7"}), Take());
    ExpectOpenOn(a, L"7");
    EXPECT_TRUE(HasFocus(view));
}

TEST_F(Refusal, OnLossOfFocusTheTextIsOfferedOnceAndStaysInTheBox) {
    Refuse();
    other.SetFocus();
    EXPECT_EQ(Events{"accept A 7"}, Take());
    ExpectOpenOn(a, L"7");
    EXPECT_TRUE(HasFocus(other));
    view.Edit().SetFocus();
    other.SetFocus();
    EXPECT_EQ(Events{"accept A 7"}, Take());
}

TEST_F(Refusal, ATabLosesTheRefusedTextWithoutAHook) {
    Refuse();
    Key(VK_TAB);
    // The key, the opening of the next one, and nothing any more for the box that is used again.
    EXPECT_EQ((Events{"accept A 7", "tab", "accept A 7", "pre B", "query B"}), Take());
    EXPECT_EQ(L"10", a->GetText());
    ExpectOpenOn(b, L"20");
}

TEST_F(Refusal, AClickOnAnotherParameterLosesTheRefusedTextWithoutAHook) {
    Refuse();
    Click(c);
    // The focus that the view takes, the click, the opening.
    EXPECT_EQ((Events{"accept A 7", "accept A 7", "accept A 7", "pre C", "query C"}), Take());
    EXPECT_EQ(L"10", a->GetText());
    ExpectOpenOn(c, L"30");
}

TEST_F(Refusal, AClickOnEmptySpaceLeavesTheBoxOpen) {
    Refuse();
    Click(450, 20);
    EXPECT_EQ((Events{"accept A 7", "click 0", "accept A 7"}), Take());
    ExpectOpenOn(a, L"7");
}

TEST_F(Refusal, ByTheParentOnATabOpensNoBox) {
    EditA();
    parent.onNotify = [this](NMVECTORPARM* record) { record->nKind = record->pText == b ? -1 : 0; };
    Key(VK_TAB);
    // C, which would take it, is not tried.
    EXPECT_EQ((storedA + Events{"tab", "pre B", "query B"}), Take());
    ExpectClosed();
}

TEST_F(Refusal, AResetClosesABoxThatWasRefused) {
    Refuse();
    view.DoEndEdit();
    Take();
    view.ResetVectorView();
    EXPECT_EQ(Events{"end A"}, Take());
    ExpectClosed();
}

// ---- Questions -----------------------------------------------------------------------------------------------------

TEST_F(VectorViewParm, TellsWhetherAnEditIsOpenOnWhichParameterAndWithWhichText) {
    const CVectorViewParm& asked = view;
    const auto expect = [&](int open, const CTextParm* parm, const wchar_t* text) {
        EXPECT_EQ(open, asked.IsEditOpen());
        EXPECT_EQ(parm, asked.GetEditParm());
        EXPECT_EQ(text, asked.GetEditText());
    };
    Three();
    expect(0, nullptr, L"");
    view.onPre = [&](CTextParm*) { expect(0, nullptr, L""); };
    Click(a);
    expect(1, a, L"10");
    Type(L"7");
    expect(1, a, L"7");
    view.onAccept = [&](CTextParm*, const CString&) {
        expect(1, a, L"7");
        return 0;
    };
    other.SetFocus();
    expect(1, a, L"7");
    view.onAccept = nullptr;
    view.onPre = nullptr;
    view.onEnd = [&](CTextParm*) { expect(1, a, L"7"); };
    view.DoEndEdit();
    expect(0, nullptr, L"");
}

TEST_F(VectorViewParm, NoEditIsOpenOnAParameterThatWasFreed) {
    EditA();
    view.GetDocument()->Reset();
    EXPECT_EQ(0, view.IsEditOpen());
    EXPECT_EQ(nullptr, view.GetEditParm());
    EXPECT_EQ(L"", view.GetEditText());
}

TEST(VectorViewParmAlone, TellsOfAnEditWithoutAWindow) {
    ParmView view;
    auto* parm = static_cast<CTextParm*>(view.AddParmText(CGePoint2d(10, 10), L"5", L"P", 0, kColor, 20.0, 1));
    view.EditAt(parm, CRect(0, 0, 10, 10));
    EXPECT_EQ(parm, view.GetEditParm());
    EXPECT_EQ(L"5", view.GetEditText());
    view.DoEndEdit();
    EXPECT_EQ(nullptr, view.GetEditParm());
    EXPECT_EQ(L"", view.GetEditText());
    EXPECT_EQ(nullptr, view.Edit().GetTextParm());
}

// ---- The hooks ---------------------------------------------------------------------------------------------------

TEST_F(VectorViewParm, WhatOnEditChangingLeavesIsStored) {
    EditA();
    view.onChanging = [](CTextParm*, const CString&, CString& text) { text += L".5"; };
    other.SetFocus();
    EXPECT_EQ((Events{"accept A 7", "changing A 10>7", "changed A 10>7.5", "end A"}), Take());
    EXPECT_EQ(L"7.5", a->GetText());
}

TEST_F(VectorViewParm, WhatOnAcceptEditDataPutsIntoTheBoxCounts) {
    EditA();
    view.onAccept = [this](CTextParm*, const CString&) {
        view.Edit().SetEditText(L"8");
        return 1;
    };
    other.SetFocus();
    EXPECT_EQ((Events{"accept A 7", "changing A 10>8", "changed A 10>8", "end A"}), Take());
    EXPECT_EQ(L"8", a->GetText());
}

TEST_F(VectorViewParm, TheParameterIsSetUntilTheLastHook) {
    EditA();
    CTextParm* seen = nullptr;
    bool shown = false;
    view.onEnd = [&](CTextParm*) {
        seen = view.EditParm();
        shown = IsBoxShown();
    };
    other.SetFocus();
    EXPECT_EQ(a, seen);
    EXPECT_TRUE(shown);
    ExpectClosed();
}

// ---- Walking -------------------------------------------------------------------------------------------------------

TEST_F(VectorViewParm, TabWalksInListOrderAndWrapsAround) {
    Three();
    Click(b);
    Take();
    Key(VK_TAB);
    ExpectOpenOn(c, L"30");
    Key(VK_TAB);
    ExpectOpenOn(a, L"10");
    Key(VK_RETURN);
    ExpectOpenOn(b, L"20");
}

TEST_F(VectorViewParm, WithOneEditableParameterTabOpensItAgain) {
    Three();
    b->SetNeedEditBox(0);
    c->SetNeedEditBox(0);
    Click(a);
    Take();
    Key(VK_TAB);
    EXPECT_EQ((Events{"accept A 10", "changing A 10>10", "changed A 10>10", "end A", "tab", "pre A", "query A"}),
              Take());
    ExpectOpenOn(a, L"10");
}

TEST_F(VectorViewParm, WithNoEditableParameterTheWalkOpensNothing) {
    Three();
    for (CTextParm* each : {a, b, c}) {
        each->SetNeedEditBox(0);
    }
    view.Walk(a);
    view.Walk(nullptr);
    EXPECT_EQ((Events{"tab", "tab"}), Take());
    ExpectClosed();
}

TEST_F(VectorViewParm, WithNoParameterAtAllTheWalkOpensNothing) {
    view.AddLine(CGePoint2d(0, 0), CGePoint2d(1, 1), kColor, 1);
    view.Walk(nullptr);
    EXPECT_EQ(Events{"tab"}, Take());
    ExpectClosed();
}

TEST_F(VectorViewParm, AWalkFromNoParameterOpensTheFirst) {
    Three();
    view.Walk(nullptr);
    EXPECT_EQ((Events{"tab", "pre A", "query A"}), Take());
}

TEST_F(VectorViewParm, AWalkFromAParameterWithoutABoxBeforeTheFirstOpensTheFirst) {
    Three();
    a->SetNeedEditBox(0);
    // A is passed over before it could count as the present one, so the walk never finds it and wraps around.
    view.Walk(a);
    EXPECT_EQ((Events{"tab", "pre B", "query B"}), Take());
    ExpectOpenOn(b, L"20");
}

TEST_F(VectorViewParm, AWalkFromAParameterWithoutABoxAfterTheFirstOpensTheNextOne) {
    Three();
    b->SetNeedEditBox(0);
    view.Walk(b);
    EXPECT_EQ((Events{"tab", "pre C", "query C"}), Take());
}

TEST_F(VectorViewParm, AThousandParametersAreWalkedByTabAlone) {
    for (int i = 0; i < 1000; ++i) {
        CString name;
        name.Format(L"P%d", i);
        AddParm(name, L"1", 50, 50)->SetNeedEditBox(i % 100 == 0);
    }
    Paint();
    view.Walk(nullptr);
    for (int i = 0; i < 10; ++i) {
        ASSERT_NE(nullptr, view.EditParm());
        CString name;
        name.Format(L"P%d", i * 100);
        EXPECT_EQ(name, view.EditParm()->GetParmName());
        Key(VK_TAB);
    }
    EXPECT_EQ(L"P0", view.EditParm()->GetParmName());
}

// ---- Looking up ----------------------------------------------------------------------------------------------------

TEST_F(VectorViewParm, GetTextParmDrawObjFindsNoParameterByAnyName) {
    Three();
    EXPECT_EQ(nullptr, view.GetTextParmDrawObj(L"A"));
    EXPECT_EQ(nullptr, view.GetTextParmDrawObj(L"a"));
    EXPECT_EQ(nullptr, view.GetTextParmDrawObj(L""));
}

// ---- Resources -----------------------------------------------------------------------------------------------------

TEST_F(VectorViewParm, EachEditFreesTheFontOfTheOneBefore) {
    Three();
    HGDIOBJ before = nullptr;
    for (int i = 0; i < 100; ++i) {
        a->SetTextHeight(static_cast<float>(10 + i % 40));
        view.EditAt(a, CRect(10, 10, 90, 40));
        const auto font = reinterpret_cast<HGDIOBJ>(view.Edit().SendMessage(WM_GETFONT));
        LOGFONT data = {};
        ASSERT_NE(0, ::GetObject(font, sizeof(data), &data));
        EXPECT_EQ(10 + i % 40, data.lfHeight);
        EXPECT_TRUE(before == font || ::GetObjectType(before) == 0) << i;
        before = font;
        view.DoEndEdit();
    }
}

} // namespace
