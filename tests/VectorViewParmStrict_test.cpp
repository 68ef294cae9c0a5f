// Strict refusal in a parameter view: a refused text stays open and focused, and each action of the user asks once.

#include "support/BoxAnswer.h"
#include "support/ParmHost.h"

namespace {

struct StrictRefusal : ThreeParms {
    // An edit of A with the text 7, which the host refuses.
    void Refuse() {
        EditA();
        view.SetStrictRefusal(1);
        view.onAccept = [](CTextParm*, const CString&) { return 0; };
    }
    void ExpectAskedOnceAndKept() {
        EXPECT_EQ(Events{"accept A 7"}, Take());
        ExpectKept(L"7");
    }
    void ExpectKept(const wchar_t* text) {
        ExpectOpenOn(a, text);
        EXPECT_TRUE(HasFocus(view.Edit()));
        EXPECT_EQ(L"10", a->GetText());
    }
    CGePoint2d On(CTextParm* parm) { return CGePoint2d(parm->GetPos().x + 6, parm->GetPos().y - 6); }
};

TEST_F(StrictRefusal, IsOffAtFirst) {
    EXPECT_EQ(0, view.GetStrictRefusal());
    view.SetStrictRefusal(1);
    EXPECT_EQ(1, view.GetStrictRefusal());
}

TEST_F(StrictRefusal, KeepsTheTextUnderTab) {
    for (const bool translated : {true, false}) {
        SCOPED_TRACE(translated);
        Refuse();
        Key(VK_TAB, translated);
        ExpectAskedOnceAndKept();
        // The key is over: the next one asks again.
        Key(VK_TAB, translated);
        ExpectAskedOnceAndKept();
        view.ResetVectorView();
    }
}

TEST_F(StrictRefusal, KeepsTheTextUnderReturn) {
    for (const bool translated : {true, false}) {
        SCOPED_TRACE(translated);
        Refuse();
        Key(VK_RETURN, translated);
        ExpectAskedOnceAndKept();
        view.ResetVectorView();
    }
}

TEST_F(StrictRefusal, UnderEscapeTheOldTextIsAskedAboutOnceAndKeptWhenRefused) {
    for (const bool translated : {true, false}) {
        SCOPED_TRACE(translated);
        Refuse();
        Key(VK_ESCAPE, translated);
        EXPECT_EQ(Events{"accept A 10"}, Take());
        ExpectKept(L"10");
        view.ResetVectorView();
    }
}

TEST_F(StrictRefusal, EscapeLeavesAnEditWhoseOldTextIsAccepted) {
    Refuse();
    view.onAccept = [](CTextParm*, const CString& text) { return text == L"10" ? 1 : 0; };
    Key(VK_TAB);
    ExpectAskedOnceAndKept();
    Key(VK_ESCAPE);
    EXPECT_EQ((Events{"accept A 10", "changing A 10>10", "changed A 10>10", "end A"}), Take());
    ExpectClosed();
    EXPECT_TRUE(HasFocus(view));
}

TEST_F(StrictRefusal, KeepsTheTextUnderAnArrowThatWouldEndTheEdit) {
    Refuse();
    ControlKey(VK_UP);
    ExpectAskedOnceAndKept();
}

TEST_F(StrictRefusal, APressOnAnotherParameterAsksOnceAndOpensNothing) {
    Refuse();
    Click(c);
    ExpectAskedOnceAndKept();
}

TEST_F(StrictRefusal, APressElsewhereAsksOnceAndIsNotReported) {
    Refuse();
    Click(350, 50);
    ExpectAskedOnceAndKept();
    Click(450, 200);
    ExpectAskedOnceAndKept();
}

TEST_F(StrictRefusal, APressIsNotGivenToTheRunningCommand) {
    Refuse();
    view.DoCommand(L"line");
    Click(450, 200);
    Click(450, 250);
    EXPECT_EQ((Events{"accept A 7", "accept A 7"}), Take());
    EXPECT_EQ(4, view.GetDocument()->GetDrawableObjs()->GetSize());
    view.GetCommandOperationManager()->Cancel();
}

TEST_F(StrictRefusal, AnotherControlDoesNotGetTheFocus) {
    Refuse();
    other.SetFocus();
    ExpectAskedOnceAndKept();
}

TEST_F(StrictRefusal, TheFocusIsNotTakenBackFromAnotherTopLevelWindow) {
    Refuse();
    CWnd second;
    ASSERT_TRUE(second.CreateEx(0, AfxRegisterWndClass(0), L"second", WS_POPUP | WS_VISIBLE, 700, 20, 100, 100, nullptr,
                                nullptr));
    second.SetFocus();
    EXPECT_EQ(Events{"accept A 7"}, Take());
    EXPECT_TRUE(HasFocus(second));
    ExpectOpenOn(a, L"7");
    second.DestroyWindow();
}

TEST_F(StrictRefusal, ThePressInAnOpenBoxWithoutTheFocusAsksOnce) {
    Refuse();
    CWnd second;
    ASSERT_TRUE(second.CreateEx(0, AfxRegisterWndClass(0), L"second", WS_POPUP | WS_VISIBLE, 700, 20, 100, 100, nullptr,
                                nullptr));
    second.SetFocus();
    Take();
    parent.SetForegroundWindow();
    Click(450, 200);
    ExpectAskedOnceAndKept();
    second.DestroyWindow();
}

TEST_F(StrictRefusal, TheMenuDoesNothing) {
    Refuse();
    view.SendMessage(WM_COMMAND, 32790, 0);
    ExpectAskedOnceAndKept();
    EXPECT_EQ(1.0f, view.GetVectorViewCoordTran()->GetScale());
    view.SendMessage(WM_COMMAND, 32791, 0);
    ExpectAskedOnceAndKept();
    EXPECT_EQ(0, view.GetCommandOperationManager()->GetHasCommand());
}

TEST_F(StrictRefusal, TheHostOpensNoOtherEdit) {
    Refuse();
    view.EditAt(c, CRect(10, 10, 90, 40));
    ExpectAskedOnceAndKept();
    EXPECT_EQ(1, view.DoEditForClicked(0, On(c)));
    ExpectAskedOnceAndKept();
    c->SetNeedEditBox(0);
    EXPECT_EQ(1, view.DoEditForClicked(0, On(c)));
    ExpectAskedOnceAndKept();
    view.BaseWalk(a);
    ExpectAskedOnceAndKept();
    view.DoEndEdit();
    ExpectAskedOnceAndKept();
}

TEST_F(StrictRefusal, AMessageBoxInTheRefusalAsksOnceAndTheBoxHasTheFocusAfterIt) {
    for (const UINT key : {VK_TAB, VK_RETURN}) {
        Refuse();
        BoxAnswer boxes;
        view.onAccept = [](CTextParm*, const CString&) {
            AfxMessageBox(L"not a number");
            return 0;
        };
        Key(key, false);
        ExpectAskedOnceAndKept();
        EXPECT_EQ(1u, boxes.Texts().size());
        other.SetFocus();
        ExpectAskedOnceAndKept();
        EXPECT_EQ(2u, boxes.Texts().size());
        view.ResetVectorView();
        Take();
    }
}

TEST_F(StrictRefusal, OnceAcceptedTheEditEndsAsEver) {
    Refuse();
    Key(VK_TAB);
    ExpectAskedOnceAndKept();
    view.onAccept = nullptr;
    Key(VK_TAB);
    EXPECT_EQ(storedA + Events{"tab"} + openB, Take());
    ExpectOpenOn(b, L"20");
    Type(L"8");
    Click(c);
    EXPECT_EQ((Events{"accept B 8", "changing B 20>8", "changed B 20>8", "end B", "pre C", "query C"}), Take());
    ExpectOpenOn(c, L"30");
    Click(450, 200);
    EXPECT_EQ((Events{"accept C 30", "changing C 30>30", "changed C 30>30", "end C", "click 0"}), Take());
    EXPECT_TRUE(HasFocus(view));
}

TEST_F(StrictRefusal, AnEditThatAHookOpensIsNotTakenForARefusedOne) {
    EditA();
    view.SetStrictRefusal(1);
    view.onEnd = [&](CTextParm* parm) {
        if (parm == a) {
            view.EditAt(c, CRect(10, 10, 90, 40));
        }
    };
    Key(VK_TAB);
    // As without the switch: the walk goes on from A, and ends the edit of C.
    const Events storedC = {"pre C", "query C", "tab", "accept C 30", "changing C 30>30", "changed C 30>30", "end C"};
    EXPECT_EQ(storedA + storedC + openB, Take());
    ExpectOpenOn(b, L"20");
}

TEST_F(StrictRefusal, AResetClosesTheEdit) {
    Refuse();
    Key(VK_TAB);
    Take();
    view.ResetVectorView();
    EXPECT_EQ(Events{"end A"}, Take());
    ExpectClosed();
}

TEST_F(StrictRefusal, ANewDrawingClosesTheEdit) {
    Refuse();
    Key(VK_TAB);
    Take();
    std::vector<BYTE> bytes = Store();
    view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size()));
    other.SetFocus();
    EXPECT_EQ(Events{}, Take());
    ExpectClosed();
    EXPECT_TRUE(HasFocus(other));
}

TEST_F(StrictRefusal, TwoViewsThatRefuseDoNotFightForTheFocus) {
    Refuse();
    ParmView second;
    Events lines;
    second.log = &lines;
    ASSERT_TRUE(
        second.Create(AfxRegisterWndClass(0), L"", WS_CHILD | WS_VISIBLE, CRect(0, 310, 200, 400), &parent, 79));
    auto* parm = static_cast<CTextParm*>(second.AddParmText(CGePoint2d(), L"1", L"D", 0, kColor, 20.0, 0));
    second.SetStrictRefusal(1);
    second.onAccept = [](CTextParm*, const CString&) { return 0; };
    second.EditAt(parm, CRect(10, 10, 90, 40));
    // The first box takes the focus back, and the second one takes it back from there.
    EXPECT_EQ(Events{"accept A 7"}, Take());
    EXPECT_EQ((Events{"pre D", "accept D 1"}), lines);
    EXPECT_EQ(a, view.EditParm());
    EXPECT_EQ(parm, second.EditParm());
    EXPECT_TRUE(HasFocus(second.Edit()));
    second.DestroyWindow();
}

} // namespace
