// "text" and "textparm", and the dialog that asks for their content.

#include "Dialog_TextEdit.h"
#include "DlgSetAngle.h"
#include "support/RepaintAsked.h"
#include "support/ViewDriver.h"
#include "TextParm.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

constexpr int kContent = 1006;
constexpr int kAngle = 1002;
constexpr int kMessageText = 0xffff; // Of a message box.

std::string TitleOf(HWND dialog) {
    wchar_t title[100] = {};
    ::GetWindowText(dialog, title, 100);
    return Utf8(title);
}

TEST(OperationCreateText, AClickAsksAndPlacesTheText) {
    ViewDriver d;
    d.Start(L"text");
    DialogScript script({DialogScript::TypeAndAnswer(kContent, L"半径 R5", IDOK)});
    d.ClickAt(120, 80);
    EXPECT_EQ(script.Seen(), 1u);
    EXPECT_EQ(d.TakeResults(), "down 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "text (120,80) 半径 R5 normal 137");
    EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
    auto* text = static_cast<CText*>(d.Object(0));
    EXPECT_EQ(text->GetTextHeight(), 20.0f);
    EXPECT_EQ(text->GetTextWide(), 20.0f);
    EXPECT_TRUE(CKXMemoryManager::Instance()->IsKnown(text));
}

TEST(OperationCreateText, CancellingTheDialogLeavesTheToolWaiting) {
    ViewDriver d;
    d.Start(L"text");
    DialogScript script(
        {DialogScript::TypeAndAnswer(kContent, L"no", IDCANCEL), DialogScript::TypeAndAnswer(kContent, L"yes", IDOK)});
    d.ClickAt(120, 80);
    EXPECT_EQ(d.TakeResults(), "down 0, up 0");
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(d.ClickCount(), 1);
    EXPECT_EQ(d.Count(), 0);
    d.ClickAt(50, 60);
    EXPECT_EQ(d.AllWords(), "text (50,60) yes normal 137");
}

TEST(OperationCreateText, AnEmptyTextIsATextToo) {
    ViewDriver d;
    d.Start(L"text");
    DialogScript script({DialogScript::Answer(IDOK)});
    d.ClickAt(120, 80);
    EXPECT_EQ(d.AllWords(), "text (120,80)  normal 137");
}

TEST(OperationCreateText, ParameterTextsAreMadeTheSameWay) {
    ViewDriver d;
    d.Document().SetFGColorIndex(9);
    d.Start(L"textparm");
    DialogScript script({DialogScript::TypeAndAnswer(kContent, L"12.5", IDOK)});
    d.ClickAt(120, 80);
    EXPECT_EQ(d.AllWords(), "textparm (120,80) 12.5 normal 9");
    EXPECT_EQ(static_cast<CTextParm*>(d.Object(0))->GetParmName(), CString());
    EXPECT_TRUE(CKXMemoryManager::Instance()->IsKnown(d.Object(0)));
}

TEST(OperationCreateText, ThePlacedTextAsksForTheRepaintThatShowsIt) {
    for (LPCTSTR word : {L"text", L"textparm"}) {
        ViewDriver d;
        d.TakeFresh();
        d.Start(word);
        DialogScript script({DialogScript::TypeAndAnswer(kContent, L"12.5", IDOK)});
        ::ValidateRect(d.view.m_hWnd, nullptr);
        d.PressAt(120, 80);
        EXPECT_FALSE(d.IsRunning()) << Utf8(word);
        EXPECT_TRUE(IsRepaintAskedFor(d.view)) << Utf8(word);
        d.Update();
        EXPECT_LT(d.Take().Count(0), 400 * 300) << Utf8(word);
        EXPECT_EQ(d.DifferenceFromFresh(), 0) << Utf8(word);
    }
}

TEST(OperationCreateText, ExecuteAndTheWheelDoNothing) {
    for (LPCTSTR word : {L"text", L"textparm"}) {
        ViewDriver d;
        d.TakeFresh();
        d.Start(word);
        DialogScript script({}); // No dialog.
        d.Manager().Execute();
        EXPECT_EQ(d.Tool()->OnMouseWheel(0, 120, CGePoint2d(120, 80)), CCommandOperation::RS_Continue) << Utf8(word);
        EXPECT_TRUE(d.IsRunning()) << Utf8(word);
        EXPECT_EQ(d.ClickCount(), 0) << Utf8(word);
        EXPECT_EQ(d.Count(), 0) << Utf8(word);
        EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE)) << Utf8(word);
    }
}

TEST(OperationCreateText, TheRightButtonBreaksOff) {
    ViewDriver d;
    d.TakeFresh();
    d.Start(L"text");
    d.RightAt(1, 1);
    EXPECT_EQ(d.TakeResults(), "right 2");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
    d.Start(L"textparm");
    d.RightAt(1, 1);
    EXPECT_EQ(d.TakeResults(), "right 2");
}

TEST(OperationCreateText, AMoveShowsTheMarkerAndNoBand) {
    ViewDriver d;
    d.AddLine(200, 200, 260, 240);
    d.TakeFresh();
    d.Start(L"text");
    d.MoveTo(50, 60);
    EXPECT_FALSE(d.IsBandDrawn());
    EXPECT_FALSE(d.IsMarkDrawn());
    d.MoveTo(203, 198);
    EXPECT_TRUE(d.IsMarkDrawn());
    EXPECT_FALSE(d.IsBandDrawn());
    d.MoveTo(50, 60);
    EXPECT_EQ(d.DifferenceFromFresh(), 0);
    EXPECT_EQ(d.TakeResults(), "move 2, move 0, move 2");
}

TEST(OperationCreateText, ASnappedClickPlacesTheTextOnTheGrip) {
    ViewDriver d;
    d.AddLine(200, 200, 260, 240);
    d.Start(L"text");
    DialogScript script({DialogScript::TypeAndAnswer(kContent, L"A", IDOK)});
    d.ClickAt(203, 198);
    EXPECT_EQ(Words(d.Object(1)), "text (200,200) A normal 137");
}

TEST(OperationCreateText, ACommandStartedWhileTheDialogIsOpenEndsThisOneUntouched) {
    ViewDriver d;
    d.Start(L"text");
    DialogScript script({[&](HWND dialog) {
        d.Start(L"line");
        DialogScript::TypeAndAnswer(kContent, L"late", IDOK)(dialog);
    }});
    d.PressAt(120, 80);
    EXPECT_EQ(d.ToolName(), "COperationCreateLine");
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(d.Count(), 0);
    EXPECT_EQ(d.ClickCount(), 0); // The press was not the line's.
}

TEST(DialogTextEdit, ItShowsAsLaidOut) {
    ViewDriver d;
    d.Start(L"text");
    std::string title;
    LONG style = 0;
    LONG editStyle = 0;
    CRect edit;
    CRect expected;
    std::string ok;
    std::string cancel;
    DialogScript script({[&](HWND dialog) {
        title = TitleOf(dialog);
        style = ::GetWindowLong(dialog, GWL_STYLE);
        HWND box = ::GetDlgItem(dialog, kContent);
        editStyle = ::GetWindowLong(box, GWL_STYLE);
        ::GetWindowRect(box, &edit);
        ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(static_cast<RECT*>(&edit)), 2);
        expected = CRect(2, 2, 314, 69);
        ::MapDialogRect(dialog, &expected);
        ok = TitleOf(::GetDlgItem(dialog, IDOK));
        cancel = TitleOf(::GetDlgItem(dialog, IDCANCEL));
        ::PostMessage(dialog, WM_COMMAND, IDCANCEL, 0);
    }});
    d.ClickAt(1, 1);
    EXPECT_EQ(title, "文字编辑器");
    EXPECT_EQ(style & (WS_POPUP | WS_CAPTION | WS_SYSMENU), static_cast<LONG>(WS_POPUP | WS_CAPTION | WS_SYSMENU));
    EXPECT_NE(style & DS_MODALFRAME, 0);
    EXPECT_NE(editStyle & ES_AUTOHSCROLL, 0);
    EXPECT_EQ(editStyle & ES_MULTILINE, 0);
    EXPECT_NE(editStyle & WS_TABSTOP, 0);
    EXPECT_EQ(edit, expected);
    EXPECT_EQ(ok, "确定");
    EXPECT_EQ(cancel, "取消");
}

TEST(DialogTextEdit, ItIsTheLibrarysOwnAlsoWhereTheHostHasADialogOfThatNumber) {
    // This program has one: its title is "host".
    ViewDriver d;
    d.Start(L"text");
    std::string title;
    DialogScript script({[&](HWND dialog) {
        title = TitleOf(dialog);
        ::PostMessage(dialog, WM_COMMAND, IDCANCEL, 0);
    }});
    HINSTANCE before = AfxGetResourceHandle();
    d.ClickAt(1, 1);
    EXPECT_EQ(title, "文字编辑器");
    EXPECT_EQ(AfxGetResourceHandle(), before);
}

TEST(DialogTextEdit, TheFieldFollowsTheTypingAlsoWhereTheDialogIsCancelledThen) {
    CDialog_TextEdit dialog(nullptr);
    EXPECT_EQ(Utf8(dialog.m_EditText), "");
    DialogScript script({[&](HWND shown) {
        HWND box = ::GetDlgItem(shown, kContent);
        ::SendMessage(box, WM_CHAR, L'半', 1);
        EXPECT_EQ(Utf8(dialog.m_EditText), "半");
        ::SendMessage(box, WM_CHAR, L'5', 1);
        EXPECT_EQ(Utf8(dialog.m_EditText), "半5");
        ::SendMessage(box, WM_CHAR, L'\b', 1);
        EXPECT_EQ(Utf8(dialog.m_EditText), "半");
        DialogScript::Answer(IDCANCEL)(shown);
    }});
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(script.Seen(), 1u);
    EXPECT_EQ(Utf8(dialog.m_EditText), "半");
}

TEST(DlgSetAngle, WhatIsNoNumberIsRefusedAndTheDialogStays) {
    for (LPCTSTR text : {L"abc", L"", L"45 degrees"}) {
        CDlgSetAngle dialog(nullptr);
        EXPECT_EQ(dialog.m_dAngle, 0.0);
        dialog.m_dAngle = 12.5;
        HWND shown = nullptr;
        DialogScript script({[&](HWND window) {
                                 shown = window;
                                 DialogScript::TypeAndAnswer(kAngle, text, IDOK)(window);
                             },
                             [&](HWND refusal) {
                                 EXPECT_NE(::GetDlgItem(refusal, kMessageText), nullptr);
                                 EXPECT_EQ(dialog.m_dAngle, 12.5) << Utf8(text);
                                 // In this order: the second one is for the dialog after the message box.
                                 DialogScript::Answer(IDOK)(refusal);
                                 DialogScript::TypeAndAnswer(kAngle, L"-30", IDOK)(shown);
                             }});
        EXPECT_EQ(dialog.DoModal(), IDOK) << Utf8(text);
        EXPECT_EQ(script.Seen(), 2u) << Utf8(text);
        EXPECT_EQ(dialog.m_dAngle, -30.0) << Utf8(text);
    }
}

} // namespace
