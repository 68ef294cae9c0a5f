// Undo and redo of every command, grip edit, property edit and host call of a view whose history is switched on.

#include "Arc.h"
#include "Dialog_DrawAbleProperty.h"
#include "DrawingHistory.h"
#include "MemoryInfo.h"
#include "PropertyDialogHost.h"
#include "Text.h"
#include "resource.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

using Bytes = std::vector<BYTE>;

std::vector<CDrawable*> ListOf(ViewDriver& d) {
    std::vector<CDrawable*> list;
    for (INT_PTR i = 0; i < d.Count(); ++i) {
        list.push_back(d.Object(i));
    }
    return list;
}

struct Case {
    std::string title;
    LPCTSTR chinese;
    LPCTSTR english;
    std::function<void(ViewDriver&)> run;
    bool select = false;
};

// A line, a polyline of two vertices with a coloured segment, a closed one of four, and a text.
void Fill(ViewDriver& d) {
    d.AddLine(50, 50, 250, 150);
    CPLine* two = d.AddPolyline({{60, 200}, {220, 200}});
    two->SetSLPenColor(0, 0x0000FF);
    d.AddPolyline({{260, 60}, {340, 60}, {340, 140}, {260, 140}}, true);
    d.view.AddText(CGePoint2d(20, 280), L"T", 0, Gdiplus::Color(255, 1, 2, 3), 0);
}

std::function<void(ViewDriver&)> ClickAll(LPCTSTR word, std::vector<CGePoint2d> points, bool right = false) {
    return [=](ViewDriver& d) {
        d.view.DoCommand(word);
        for (const CGePoint2d& p : points) {
            d.MoveTo(p.x, p.y);
            d.ClickAt(p.x, p.y);
        }
        if (right) {
            d.RightAt(10, 10);
        }
    };
}

std::vector<Case> Cases() {
    const std::vector<CGePoint2d> two = {{100, 20}, {180, 35}};
    const std::vector<CGePoint2d> three = {{100, 20}, {180, 35}, {140, 45}};
    return {
        {"line", L"直线", L"Line", ClickAll(L"line", two)},
        {"pline", L"多段线", L"Polyline", ClickAll(L"pline", three, true)},
        {"pline_bound", L"边界多段线", L"Boundary polyline", ClickAll(L"pline_bound", three, true)},
        {"rect", L"矩形", L"Rectangle", ClickAll(L"rect", two)},
        {"circle", L"圆", L"Circle", ClickAll(L"circle", two)},
        {"arc", L"圆弧", L"Arc", ClickAll(L"arc", three)},
        {"text", L"文字", L"Text", ClickAll(L"text", {{100, 20}})},
        {"textparm", L"参数文字", L"Parameter text", ClickAll(L"textparm", {{100, 20}})},
        {"DrawLabel", L"尺寸标注", L"Dimension", ClickAll(L"DrawLabel", three)},
        {"DrawLabel_Green", L"绿色尺寸标注", L"Green dimension", ClickAll(L"DrawLabel_Green", three)},
        {"translation", L"平移", L"Move", ClickAll(L"translation", two), true},
        {"copy", L"复制", L"Copy", ClickAll(L"copy", two), true},
        {"rotation", L"旋转", L"Rotate", ClickAll(L"rotation", two), true},
        {"mirroring", L"镜像", L"Mirror", ClickAll(L"mirroring", two), true},
        {"offset", L"偏移", L"Offset", ClickAll(L"offset", {{140, 200}, {140, 230}})},
        {"PLine_AddPoint", L"多段线加点", L"Add vertices", ClickAll(L"PLine_AddPoint", {{300, 60}, {340, 100}}, true)},
        {"PLine_RemovePoint", L"多段线减点", L"Remove vertices", ClickAll(L"PLine_RemovePoint", {{340, 140}}, true)},
        {"erase", L"删除", L"Erase", [](ViewDriver& d) { d.view.DoCommand(L"erase"); }, true},
        {"rotatetext", L"旋转文字", L"Rotate text", [](ViewDriver& d) { d.view.DoCommand(L"rotatetext"); }, true},
        {"grip", L"夹点编辑", L"Grip edit",
         [](ViewDriver& d) {
             d.ClickAt(60, 200); // The first vertex of the selected polyline.
             d.MoveTo(70, 240);
             d.ClickAt(70, 240);
         },
         true},
        {"grip by a typed distance", L"夹点编辑", L"Grip edit",
         [](ViewDriver& d) {
             d.ClickAt(60, 200);
             d.MoveTo(60, 240);
             d.TypeInEdit(L"25");
             d.Manager().Execute();
         },
         true},
        {"AddLine", L"添加对象", L"Add object",
         [](ViewDriver& d) {
             d.view.AddLine(CGePoint2d(1, 2), CGePoint2d(3, 4), Gdiplus::Color(255, 1, 2, 3), L"", L"", 0, 1);
         }},
        {"AddPLine at the bottom", L"添加对象", L"Add object",
         [](ViewDriver& d) {
             CGePointArray points;
             CBulgeArray bulges;
             points.SetSize(2);
             bulges.SetSize(2);
             d.view.AddPLine(points, bulges, Gdiplus::Color(255, 1, 2, 3), 0, 1, 0);
         }},
        {"transformBy", L"旋转图形", L"Rotate drawing",
         [](ViewDriver& d) { d.view.transformBy(0.5, CGePoint2d(100, 100)); }},
    };
}

// Texts and angles are typed, questions answered with Yes or No.
DialogScript::Step AnswerAll(int question) {
    return [=](HWND dialog) {
        if (::GetDlgItem(dialog, 1006) != nullptr) {
            DialogScript::TypeAndAnswer(1006, L"text", IDOK)(dialog);
        } else if (::GetDlgItem(dialog, 1002) != nullptr) {
            DialogScript::TypeAndAnswer(1002, L"30", IDOK)(dialog);
        } else {
            DialogScript::Answer(question)(dialog);
        }
    };
}

void SelectAll(ViewDriver& d) {
    for (INT_PTR i = 0; i < d.Count(); ++i) {
        d.Select(d.Object(i));
    }
}

} // namespace

TEST(CommandHistory, EveryCommandAndCallIsOneStepThatIsUndoneAndRedone) {
    for (const Case& c : Cases()) {
        for (const int answer : {IDYES, IDNO}) {
            if (c.title == "erase" && answer == IDNO) {
                continue;
            }
            SCOPED_TRACE(c.title + (answer == IDYES ? ", yes" : ", no"));
            ViewDriver d;
            Fill(d);
            d.view.EnableHistory(1);
            CDrawingHistory& history = *d.view.GetHistory();
            const DialogScript dialogs({}, AnswerAll(answer));
            if (c.select) {
                SelectAll(d);
            }
            d.Update();
            const Bytes before = d.Store();
            const auto listBefore = ListOf(d);
            const DWORD color = PeekAt(*static_cast<CPLine*>(d.Object(1)), SegmentColors())[0];
            c.run(d);
            d.Update();
            const Bytes after = d.Store();
            const auto listAfter = ListOf(d);
            ASSERT_EQ(d.ToolName(), "");
            EXPECT_NE(before, after);
            ASSERT_EQ(history.GetUndoCount(), 1);
            EXPECT_EQ(history.GetUndoName(0), c.chinese);
            EXPECT_EQ(history.GetUndoName(1), c.english);
            for (int round = 0; round < 2; ++round) {
                EXPECT_EQ(d.view.Undo(), 1);
                EXPECT_EQ(before, d.Store());
                EXPECT_EQ(listBefore, ListOf(d));
                EXPECT_EQ(PeekAt(*static_cast<CPLine*>(listBefore[1]), SegmentColors())[0], color);
                EXPECT_EQ(PeekAt(*static_cast<CPLine*>(listBefore[1]), SegmentColorFlags())[0], 1u);
                EXPECT_EQ(d.view.CanUndo(), 0);
                d.Update();
                EXPECT_EQ(d.view.Redo(), 1);
                EXPECT_EQ(after, d.Store());
                EXPECT_EQ(listAfter, ListOf(d));
                EXPECT_EQ(d.view.CanRedo(), 0);
                d.Update();
            }
        }
    }
}

TEST(CommandHistory, ClicksKeysMovesAndViewChangesAreNoSteps) {
    ViewDriver d;
    Fill(d);
    d.view.EnableHistory(1);
    d.ClickAt(150, 100);
    EXPECT_EQ(d.Selected().GetSize(), 1);
    d.Key(VK_ESCAPE);
    d.MoveTo(30, 30);
    d.Wheel(120, 30, 30);
    d.MiddleDrag(100, 100, 130, 120);
    d.view.ZoomAll();
    ClickAll(L"viewmove", {{20, 20}}, true)(d);
    ClickAll(L"line", {{20, 20}}, true)(d); // Broken off.
    EXPECT_EQ(d.view.GetHistory()->GetUndoCount(), 0);
    EXPECT_EQ(d.view.Undo(), 0);
}

TEST(CommandHistory, UndoInTheMiddleOfACommandEndsItFirst) {
    ViewDriver d;
    Fill(d);
    d.view.EnableHistory(1);
    const Bytes before = d.Store();
    d.view.DoCommand(L"pline");
    d.ClickAt(20, 20);
    d.ClickAt(40, 20);
    EXPECT_EQ(d.view.Undo(), 1) << "the polyline that was broken off is in the drawing, and taken back";
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(before, d.Store());
    EXPECT_EQ(d.view.Redo(), 1);
    EXPECT_EQ(d.Count(), 5);
    d.view.Undo();
    d.Select(d.Object(0));
    const Bytes selected = d.Store();
    d.view.DoCommand(L"translation");
    d.ClickAt(50, 50);
    d.MoveTo(90, 90);
    EXPECT_NE(selected, d.Store());
    EXPECT_EQ(d.view.Undo(), 1);
    EXPECT_EQ(selected, d.Store());
    d.Update();
    EXPECT_EQ(d.DifferenceFromFresh(), 0);
    d.view.DoCommand(L"line");
    d.ClickAt(20, 20);
    EXPECT_EQ(d.view.Undo(), 0) << "ended, and nothing else to undo";
    EXPECT_FALSE(d.IsRunning());
}

TEST(CommandHistory, CallsOfAHostInTheMiddleOfACommandArePartOfItsStep) {
    ViewDriver d;
    d.view.EnableHistory(1);
    d.view.DoCommand(L"line");
    d.ClickAt(20, 20);
    d.view.AddLine(CGePoint2d(1, 2), CGePoint2d(3, 4), Gdiplus::Color(255, 1, 2, 3), 1);
    EXPECT_EQ(d.view.GetHistory()->Mark(), 0);
    EXPECT_EQ(d.view.GetHistory()->GetUndoCount(), 0);
    d.ClickAt(40, 20);
    EXPECT_EQ(d.view.GetHistory()->GetUndoCount(), 1);
    d.view.Undo();
    EXPECT_EQ(d.Count(), 0);
}

TEST(CommandHistory, WhatAHostChangedBeforeACommandIsAStepOfItsOwn) {
    ViewDriver d;
    CLine* line = d.AddLine(50, 50, 250, 150);
    d.view.EnableHistory(1);
    line->SetEndPoint(CGePoint2d(99, 99));
    ClickAll(L"line", {{20, 20}, {40, 20}})(d);
    EXPECT_EQ(d.view.GetHistory()->GetUndoCount(), 2);
    d.view.Undo();
    EXPECT_EQ(line->GetEndPoint().x, 99);
    EXPECT_EQ(d.view.GetHistory()->GetUndoName(1), L"Edit");
    d.view.Undo();
    EXPECT_EQ(line->GetEndPoint().x, 250);
}

TEST(CommandHistory, ErasedObjectsAreFreedWithTheHistoryAndStayAllocatedWithoutOne) {
    const int before = CKXMemoryManager::Instance()->GetCount();
    for (const bool on : {true, false}) {
        CLine* line = nullptr;
        {
            ViewDriver d;
            line = d.AddLine(50, 50, 250, 150);
            KX_ADD_MEMORY(line);
            const int with = CKXMemoryManager::Instance()->GetCount();
            d.view.EnableHistory(on);
            d.Select(line);
            const DialogScript dialogs({}, DialogScript::Answer(IDYES));
            d.view.DoCommand(L"erase");
            EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), with);
        }
        EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before + (on ? 0 : 1));
        if (!on) {
            KX_REMOVE_MEMORY(line);
            delete line;
        }
    }
}

TEST(CommandHistory, OffThereIsNoHistory) {
    ViewDriver d;
    EXPECT_EQ(d.view.GetHistory(), nullptr);
    EXPECT_EQ(d.view.Undo() + d.view.Redo() + d.view.CanUndo() + d.view.CanRedo(), 0);
    EXPECT_EQ(d.view.EnableHistory(1), 1);
    d.AddLine(1, 2, 3, 4);
    d.view.GetHistory()->Mark();
    EXPECT_EQ(d.view.CanUndo(), 1);
    EXPECT_EQ(d.view.EnableHistory(1), 1);
    EXPECT_EQ(d.view.CanUndo(), 1) << "on already";
    EXPECT_EQ(d.view.EnableHistory(0), 0);
    EXPECT_EQ(d.view.CanUndo(), 0);
    EXPECT_EQ(d.Count(), 1);
}

TEST(CommandHistory, ALoadStartsAnewAndResetToo) {
    ViewDriver d;
    Fill(d);
    Bytes stored = d.Store();
    d.view.EnableHistory(1);
    ClickAll(L"line", {{20, 20}, {40, 20}})(d);
    EXPECT_EQ(d.view.LoadFile(stored.data(), static_cast<unsigned int>(stored.size())), 1);
    EXPECT_EQ(d.view.CanUndo(), 0);
    EXPECT_EQ(d.view.Undo(), 0);
    EXPECT_EQ(stored, d.Store());
    ClickAll(L"line", {{20, 20}, {40, 20}})(d);
    EXPECT_EQ(d.view.CanUndo(), 1);
    EXPECT_EQ(d.view.Undo(), 1);
    EXPECT_EQ(stored, d.Store());
    d.Document().Reset();
    EXPECT_EQ(d.view.Undo() + d.view.Redo(), 0);
    EXPECT_EQ(d.Count(), 0);
}

namespace {

class DialogView : public CVectorView {
public:
    CDialog_DrawAbleProperty* Provide() { return m_pDlgDrawAbleProperty = CreateDrawAbleProperty(this, GetParent()); }
};

} // namespace

TEST(CommandHistory, AnEditInThePropertyDialogIsAStepAndItsRowsFollow) {
    ParentWindow parent;
    DialogView view;
    ShowView(view, parent);
    view.EnableHistory(1);
    CDrawable* line = view.AddLine(CGePoint2d(5, 6), CGePoint2d(9, 9), Gdiplus::Color(255, 1, 2, 3), 1);
    CDialog_DrawAbleProperty* dialog = view.Provide();
    ASSERT_NE(nullptr, dialog);
    view.GetDocument()->AddSelected(line);
    ShowDrawAbleProperty(dialog, &view, 1);
    // The first coordinate is row 4: colour, width, line type and layer come before it.
    const auto edit = [&](int row, LPCTSTR text) {
        NMSHEETGRID cell = {};
        cell.hdr.hwndFrom = dialog->GetDlgItem(IDC_PROPERTY_GRID)->m_hWnd;
        cell.hdr.idFrom = IDC_PROPERTY_GRID;
        cell.hdr.code = SGN_EDITED;
        cell.nRow = row;
        cell.nCol = 1;
        cell.strText = text;
        dialog->SendMessage(WM_NOTIFY, IDC_PROPERTY_GRID, reinterpret_cast<LPARAM>(&cell));
    };
    const auto x = [&] { return static_cast<CLine*>(line)->GetStartPoint().x; };
    const auto y = [&] { return static_cast<CLine*>(line)->GetStartPoint().y; };
    edit(4, L"50");
    EXPECT_EQ(50, x());
    EXPECT_EQ(2, view.GetHistory()->GetUndoCount());
    EXPECT_EQ(L"修改属性", view.GetHistory()->GetUndoName(0));
    EXPECT_EQ(1, view.Undo());
    EXPECT_EQ(5, x());
    EXPECT_EQ(line, dialog->GetObject());
    edit(5, L"60");
    EXPECT_EQ(60, y());
    EXPECT_EQ(5, x()) << "the row that was undone is not given again";
    view.Undo();
    view.Undo();
    EXPECT_EQ(nullptr, dialog->GetObject()) << "its object has left the drawing";
    edit(4, L"70");
    EXPECT_EQ(5, x());
}
