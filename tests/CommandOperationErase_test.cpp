// "erase" and "rotatetext": they act at once, and leave the running tool alone.

#include "CommandOperationErase.h"
#include "CommandOperationRotateText.h"
#include "MemoryInfo.h"
#include "TextParm.h"
#include "support/OnBox.h"
#include "support/RepaintAsked.h"
#include "support/ViewDriver.h"

#include <gtest/gtest.h>

namespace {

const char* const kQuestion = "是否确认删除选中的对象";
constexpr int kAngle = 1002;

// Angles have no getter: the text's property rows give them.
float AngleOf(CText* text) {
    CDrawableProperty rows;
    text->GetProperty(rows);
    CSimpleProperty* row = rows.Find(L"m_Angle");
    const float angle = row != nullptr ? row->m_Value.fltVal : -1.0f;
    rows.Clear();
    return angle;
}

// Buttons, moves, wheel and keys: nothing for a command that acts at once.
template <typename Command>
void ExpectAllEventsIgnored() {
    ViewDriver d;
    d.AddLine(100, 100, 150, 100);
    d.TakeFresh();
    CCommandOperation* command = new Command(&d.view, nullptr, &d.Tran(), &d.Document());
    const CGePoint2d grip(100, 100);
    EXPECT_EQ(command->OnLButtonDown(MK_LBUTTON, grip), CCommandOperation::RS_Continue);
    EXPECT_EQ(command->OnLButtonUp(0, grip), CCommandOperation::RS_Continue);
    EXPECT_EQ(command->OnMouseMove(0, grip), CCommandOperation::RS_Continue);
    EXPECT_EQ(command->OnMouseWheel(0, 120, grip), CCommandOperation::RS_Continue);
    EXPECT_EQ(command->OnRButtonDown(MK_RBUTTON, grip), CCommandOperation::RS_Continue);
    EXPECT_EQ(command->OnKeyDown(VK_ESCAPE, 1, 0), CCommandOperation::RS_Continue);
    EXPECT_EQ(d.AllWords(), "line (100,100)-(150,100) normal -1");
    EXPECT_FALSE(IsRepaintAskedFor(d.view));
    EXPECT_EQ(d.DifferenceFromFresh(), 0); // No marker on the grip.
    delete command;
}

TEST(CommandOperationErase, ItIgnoresAllEvents) {
    ExpectAllEventsIgnored<CCommandOperationErase>();
}

TEST(CommandOperationErase, YesUnlinksTheSelectedAndFreesNothing) {
    ViewDriver d;
    CLine* gone = d.AddLine(100, 100, 150, 100);
    d.AddLine(200, 100, 250, 100);
    d.Select(gone);
    const int before = CKXMemoryManager::Instance()->GetCount();
    BoxAnswer boxes({IDYES});
    EXPECT_EQ(d.Manager().DoCommand(L"erase"), 0);
    EXPECT_EQ(boxes.Texts(), std::vector<std::string>{kQuestion});
    EXPECT_EQ(d.AllWords(), "line (200,100)-(250,100) normal -1");
    EXPECT_EQ(d.Selected().GetSize(), 0);
    EXPECT_FALSE(d.IsRunning());
    // Not freed, still listed, and still in the state of a selected object.
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
    EXPECT_TRUE(CKXMemoryManager::Instance()->IsKnown(gone));
    EXPECT_EQ(Words(gone), "line (100,100)-(150,100) selected -1");
}

TEST(CommandOperationErase, NoChangesNothingAndAsksForNoRepaint) {
    ViewDriver d;
    d.Select(d.AddLine(100, 100, 150, 100));
    d.TakeFresh();
    BoxAnswer boxes({IDNO});
    d.Manager().DoCommand(L"erase");
    EXPECT_EQ(d.AllWords(), "line (100,100)-(150,100) selected -1");
    EXPECT_EQ(boxes.Texts().size(), 1u);
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
}

TEST(CommandOperationErase, EscapeAndTheCloseButtonLeaveTheQuestionOpen) {
    ViewDriver d;
    d.Select(d.AddLine(100, 100, 150, 100));
    OnBox question([](HWND box) { OnBox::TryToLeave(box, IDNO); });
    d.Manager().DoCommand(L"erase");
    EXPECT_EQ(question.Seen(), 1u);
    EXPECT_EQ(d.AllWords(), "line (100,100)-(150,100) selected -1");
}

TEST(CommandOperationErase, AQuestionThatEndsWithTheProgramErasesNothing) {
    ViewDriver d;
    d.Select(d.AddLine(100, 100, 150, 100));
    OnBox question([](HWND) { ::PostQuitMessage(3); });
    d.Manager().DoCommand(L"erase");
    MSG message = {};
    EXPECT_TRUE(::PeekMessage(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(question.Seen(), 1u);
    EXPECT_EQ(d.AllWords(), "line (100,100)-(150,100) selected -1");
}

TEST(CommandOperationErase, YesAsksForARepaint) {
    for (const bool selected : {true, false}) {
        ViewDriver d;
        CLine* line = d.AddLine(100, 100, 150, 100);
        if (selected) {
            d.Select(line);
        }
        d.TakeFresh();
        BoxAnswer boxes({IDYES});
        d.Manager().DoCommand(L"erase");
        EXPECT_TRUE(IsRepaintAskedFor(d.view)) << selected;
    }
}

TEST(CommandOperationErase, ItAsksAlsoWithNothingSelected) {
    ViewDriver d;
    d.AddLine(100, 100, 150, 100);
    ::ValidateRect(d.view.m_hWnd, nullptr);
    BoxAnswer boxes({IDYES});
    d.Manager().DoCommand(L"erase");
    EXPECT_EQ(boxes.Texts().size(), 1u);
    EXPECT_TRUE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE)) << "it asks for a repaint";
    EXPECT_EQ(d.Count(), 1);
}

TEST(CommandOperationErase, TheRunningToolStays) {
    ViewDriver d;
    d.Start(L"line");
    d.ClickAt(10, 10);
    d.Select(d.AddLine(100, 100, 150, 100));
    BoxAnswer boxes({IDYES});
    d.Start(L"erase");
    EXPECT_EQ(d.ToolName(), "COperationCreateLine");
    EXPECT_EQ(d.ClickCount(), 1);
    EXPECT_EQ(d.Count(), 0);
}

TEST(CommandOperationErase, AnErasedRepaintShowsNoneOfThem) {
    ViewDriver d;
    d.Select(d.AddLine(100, 100, 150, 100));
    d.TakeFresh();
    BoxAnswer boxes({IDYES});
    d.Manager().DoCommand(L"erase");
    d.Update();
    EXPECT_EQ(d.Take().Count(0), 400 * 300);
}

TEST(CommandOperationRotateText, ItIgnoresAllEvents) {
    ExpectAllEventsIgnored<CCommandOperationRotateText>();
}

TEST(CommandOperationRotateText, TheAngleIsGivenToTheSelectedTexts) {
    ViewDriver d;
    auto* text = new CText;
    auto* parm = new CTextParm;
    auto* other = new CText;
    KX_ADD_MEMORY(text);
    KX_ADD_MEMORY(parm);
    KX_ADD_MEMORY(other);
    for (CDrawable* object : {static_cast<CDrawable*>(text), static_cast<CDrawable*>(parm)}) {
        d.Document().AddDrawAobject(object);
        d.Select(object);
    }
    d.Document().AddDrawAobject(other);
    CLine* line = d.AddLine(1, 2, 3, 4);
    d.Select(line);
    d.TakeFresh();
    DialogScript script({DialogScript::TypeAndAnswer(kAngle, L"33.3", IDOK)});
    EXPECT_EQ(d.Manager().DoCommand(L"rotatetext"), 0);
    EXPECT_EQ(script.Seen(), 1u);
    EXPECT_EQ(AngleOf(text), 33.3f); // Narrowed from the double.
    EXPECT_EQ(AngleOf(parm), 33.3f);
    EXPECT_EQ(AngleOf(other), 0.0f);
    EXPECT_EQ(Words(line), "line (1,2)-(3,4) selected -1");
    EXPECT_TRUE(IsRepaintAskedFor(d.view));
}

TEST(CommandOperationRotateText, CancellingLeavesTheAngles) {
    ViewDriver d;
    auto* text = new CText;
    KX_ADD_MEMORY(text);
    text->SetAngle(5);
    d.Document().AddDrawAobject(text);
    d.Select(text);
    d.TakeFresh();
    DialogScript script({DialogScript::TypeAndAnswer(kAngle, L"90", IDCANCEL)});
    d.Manager().DoCommand(L"rotatetext");
    EXPECT_EQ(script.Seen(), 1u);
    EXPECT_EQ(AngleOf(text), 5.0f);
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
}

TEST(CommandOperationRotateText, WithoutATemplateNothingHappensAndNothingFails) {
    ViewDriver d;
    auto* text = new CText;
    KX_ADD_MEMORY(text);
    text->SetAngle(5);
    d.Document().AddDrawAobject(text);
    d.Select(text);
    d.TakeFresh();
    // The library's own resources, without those of this program: there is no such dialog among them.
    HINSTANCE before = AfxGetResourceHandle();
    AfxSetResourceHandle(VectorViewModule());
    DialogScript script({});
    EXPECT_EQ(d.Manager().DoCommand(L"rotatetext"), 0);
    AfxSetResourceHandle(before);
    EXPECT_EQ(script.Seen(), 0u);
    EXPECT_EQ(AngleOf(text), 5.0f);
    EXPECT_FALSE(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE));
}

TEST(CommandOperationRotateText, EachWordLeavesOneCommandAllocated) {
    ViewDriver d;
    d.Start(L"line");
    const int before = CKXMemoryManager::Instance()->GetCount();
    DialogScript script({DialogScript::Answer(IDCANCEL), DialogScript::Answer(IDCANCEL)});
    d.Start(L"rotatetext");
    d.Start(L"rotatetext");
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before + 2);
    EXPECT_EQ(d.ToolName(), "COperationCreateLine");
    EXPECT_TRUE(d.IsRunning());
}

} // namespace
