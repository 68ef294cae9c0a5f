// The property dialog on a real window: rows of an object in its grid, every edit at once in the object, by mouse and
// by keyboard alone.

#include "support/BoxAnswer.h"

#include <CommandOperationManager.h>
#include <Dialog_DrawAbleProperty.h>
#include <KXBaseOpr.h>
#include <Line.h>
#include <TextParm.h>
#include <vectorview.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// A row of each type, and one that is no drawable's: what SetProperty is given is kept.
class RowsObject : public CLine {
public:
    int given = 0;
    int changed = 0;

    void GetProperty(CDrawableProperty& list) override {
        Add(list, L"I2", VT_I2, COleVariant(static_cast<short>(-7), VT_I2));
        Add(list, L"I4", VT_I4, COleVariant(70000L, VT_I4));
        Add(list, L"R4", VT_R4, COleVariant(1.5f));
        Add(list, L"R8", VT_R8, COleVariant(2.0));
        Add(list, L"BSTR", VT_BSTR, COleVariant(L"文字", VT_BSTR));
        Add(list, L"BOOL", VT_BOOL, COleVariant(static_cast<short>(1), VT_BOOL));
        Add(list, L"EMPTY", VT_EMPTY, COleVariant());
    }
    void SetProperty(CDrawableProperty& list) override {
        ++given;
        changed = 0;
        for (int i = 0; i < list.GetSize(); ++i) {
            changed += list.GetRow(i)->m_Changed;
            values[i] = list.GetRow(i)->m_Value;
        }
    }
    COleVariant values[7];

private:
    static void Add(CDrawableProperty& list, const wchar_t* label, VARTYPE type, const COleVariant& value) {
        auto* row = new CSimpleProperty(label, L"description", label, static_cast<short>(type), value);
        CKXMemoryManager::Instance()->AddMemoryInfo(row, __FILE__, __LINE__);
        list.Add(row);
    }
};

struct PropertyDialog : testing::Test {
    CWnd frame;
    CDialog_DrawAbleProperty* dialog = nullptr;

    void SetUp() override {
        ASSERT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), L"frame", WS_POPUP | WS_VISIBLE, 20, 20, 300, 300,
                                   nullptr, nullptr))
            << "no window without a display";
        dialog = new CDialog_DrawAbleProperty(&frame);
        ASSERT_NE(0, dialog->Create(131, &frame));
        dialog->ShowWindow(SW_SHOW);
        dialog->SetForegroundWindow();
        Grid()->SetFocus();
        Pump();
    }
    void TearDown() override {
        if (dialog != nullptr) {
            if (dialog->m_hWnd != nullptr) {
                dialog->DestroyWindow();
            }
            delete dialog;
        }
        frame.DestroyWindow();
    }

    // As a host's loop does it.
    static void Pump() {
        MSG msg;
        while (::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (!AfxPreTranslateMessage(&msg)) {
                ::TranslateMessage(&msg);
                ::DispatchMessage(&msg);
            }
        }
    }
    static void Key(UINT key) {
        ::PostMessage(::GetFocus(), WM_KEYDOWN, key, 1);
        Pump();
    }
    static void Type(const wchar_t* text) {
        for (; *text != 0; ++text) {
            ::PostMessage(::GetFocus(), WM_CHAR, *text, 1);
        }
        Pump();
    }
    CSheetGridCtrl* Grid() { return static_cast<CSheetGridCtrl*>(dialog->GetDlgItem(1000)); }
    std::string Title() {
        CString title;
        dialog->GetWindowText(title);
        return Utf8(title);
    }
    // Asked as the grid asks.
    std::string Cell(int row, int col, UINT mask = SGIF_TEXT) {
        NMSHEETGRID ask = {};
        ask.hdr.hwndFrom = Grid()->m_hWnd;
        ask.hdr.idFrom = 1000;
        ask.hdr.code = SGN_GETTEXT;
        ask.mask = mask;
        ask.nRow = row;
        ask.nCol = col;
        ask.strText = L"unanswered";
        EXPECT_EQ(0, dialog->SendMessage(WM_NOTIFY, 1000, reinterpret_cast<LPARAM>(&ask)));
        return Utf8(ask.strText);
    }
    // Sent as the grid sends it.
    LRESULT Tell(UINT code, int row, int col, const wchar_t* text) {
        NMSHEETGRID tell = {};
        tell.hdr.hwndFrom = Grid()->m_hWnd;
        tell.hdr.idFrom = 1000;
        tell.hdr.code = code;
        tell.mask = SGIF_TEXT;
        tell.nRow = row;
        tell.nCol = col;
        tell.strText = text;
        return dialog->SendMessage(WM_NOTIFY, 1000, reinterpret_cast<LPARAM>(&tell));
    }
    LRESULT Edit(int row, const wchar_t* text) { return Tell(SGN_EDITED, row, 1, text); }
    int RowOf(const char* label) {
        for (int i = 0; i < Grid()->GetRowCount(); ++i) {
            if (Cell(i, 0) == label) {
                return i;
            }
        }
        return -1;
    }
};

// ---- Showing -------------------------------------------------------------------------------------------------------

TEST_F(PropertyDialog, StartsEmptyWithItsGridFitted) {
    EXPECT_EQ("属性", Title());
    EXPECT_EQ(0, Grid()->GetRowCount());
    CRect client;
    dialog->GetClientRect(&client);
    CRect grid;
    Grid()->GetWindowRect(&grid);
    dialog->ScreenToClient(&grid);
    EXPECT_EQ(client.Width() - ::GetSystemMetrics(SM_CXDLGFRAME) - grid.left, grid.Width());
    EXPECT_EQ(client.Height() - ::GetSystemMetrics(SM_CYDLGFRAME) - grid.top, grid.Height());
    EXPECT_NE(0u, dialog->GetExStyle() & WS_EX_TOOLWINDOW);
}

TEST_F(PropertyDialog, TheGridFollowsTheSize) {
    CRect before;
    Grid()->GetWindowRect(&before);
    CRect rect;
    dialog->GetWindowRect(&rect);
    dialog->SetWindowPos(nullptr, 0, 0, rect.Width() + 40, rect.Height() + 30, SWP_NOMOVE | SWP_NOZORDER);
    CRect after;
    Grid()->GetWindowRect(&after);
    EXPECT_EQ(before.Width() + 40, after.Width());
    EXPECT_EQ(before.Height() + 30, after.Height());
    EXPECT_EQ(before.TopLeft(), after.TopLeft());
}

TEST_F(PropertyDialog, ShowsEachTypeAsText) {
    RowsObject object;
    dialog->LoadObject(&object);
    EXPECT_EQ("属性-直线", Title());
    EXPECT_EQ(7, Grid()->GetRowCount());
    const char* labels[] = {"I2", "I4", "R4", "R8", "BSTR", "BOOL", "EMPTY"};
    // A true is -1, as automation has it.
    const char* values[] = {"-7", "70000", "1.500000", "2.000000", "文字", "-1", ""};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(labels[i], Cell(i, 0));
        EXPECT_EQ(values[i], Cell(i, 1));
        EXPECT_EQ("unanswered", Cell(i, 2));
        EXPECT_EQ("unanswered", Cell(i, 1, 2));
    }
    EXPECT_EQ("", Cell(7, 0));
    EXPECT_EQ("", Cell(7, 1));
    EXPECT_EQ("", Cell(-1, 1));
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, LoadingNullEmptiesIt) {
    CLine line;
    dialog->LoadObject(&line);
    EXPECT_EQ(&line, dialog->GetObject());
    EXPECT_LT(0, Grid()->GetRowCount());
    dialog->LoadObject(nullptr);
    EXPECT_EQ("属性", Title());
    EXPECT_EQ(0, Grid()->GetRowCount());
    EXPECT_EQ(nullptr, dialog->GetObject());
}

TEST_F(PropertyDialog, SettingAnObjectShowsItOnlyWhereItCanBeSeen) {
    CLine line;
    dialog->ShowWindow(SW_HIDE);
    dialog->SetObject(&line);
    EXPECT_EQ(&line, dialog->GetObject());
    EXPECT_EQ(0, Grid()->GetRowCount());
    EXPECT_EQ("属性", Title());
    dialog->ShowWindow(SW_SHOW);
    dialog->SetObject(&line);
    EXPECT_LT(0, Grid()->GetRowCount());
    EXPECT_EQ("属性-直线", Title());
    dialog->SetObject(nullptr);
    EXPECT_EQ(0, Grid()->GetRowCount());
}

TEST_F(PropertyDialog, ADialogWithoutAWindowLoadsAndFreesItsRows) {
    const int alive = CKXMemoryManager::Instance()->GetCount();
    {
        CLine line;
        CDialog_DrawAbleProperty unborn;
        unborn.SetObject(&line);
        unborn.LoadObject(&line);
        unborn.ApplyToObject();
        EXPECT_LT(alive, CKXMemoryManager::Instance()->GetCount());
        unborn.LoadObject(nullptr);
        EXPECT_EQ(alive, CKXMemoryManager::Instance()->GetCount());
        unborn.LoadObject(&line);
    }
    EXPECT_EQ(alive, CKXMemoryManager::Instance()->GetCount());
}

TEST_F(PropertyDialog, DestroyingTheWindowFreesTheRows) {
    const int alive = CKXMemoryManager::Instance()->GetCount();
    CLine line;
    dialog->LoadObject(&line);
    dialog->LoadObject(&line);
    dialog->DestroyWindow();
    EXPECT_EQ(alive, CKXMemoryManager::Instance()->GetCount());
}

// ---- Editing -------------------------------------------------------------------------------------------------------

TEST_F(PropertyDialog, EachTypeTakesItsText) {
    const struct {
        int row;
        const wchar_t* typed;
        const char* shown;
    } rows[] = {
        {0, L"  12  ", "12"},
        {0, L"abc", "0"},
        {0, L"70000", "4464"}, // Cut to 16 bits: 70000 - 65536.
        {1, L"-70000", "-70000"},
        {1, L"12abc", "12"},
        {2, L"0.1", "0.100000"},
        {2, L"x", "0.000000"},
        {3, L"1e3", "1000.000000"},
        {3, L"-2.5 mm", "-2.500000"},
        {4, L"  两 字 ", "两 字"},
        {4, L"", ""},
        {5, L"0", "0"},
        {5, L"5", "-1"},
        {5, L"yes", "0"},
        {6, L"5", ""},
    };
    RowsObject object;
    dialog->LoadObject(&object);
    for (const auto& row : rows) {
        EXPECT_EQ(0, Edit(row.row, row.typed));
        EXPECT_EQ(row.shown, Cell(row.row, 1)) << row.row << " " << Utf8(row.typed);
    }
    EXPECT_EQ(VT_BOOL, object.values[5].vt);
    EXPECT_EQ(VT_R4, object.values[2].vt);
    EXPECT_EQ(VT_EMPTY, object.values[6].vt);
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, AnEditReachesTheObjectAtOnceAndRowsStayChanged) {
    RowsObject object;
    dialog->LoadObject(&object);
    Edit(1, L"5");
    EXPECT_EQ(1, object.given);
    EXPECT_EQ(1, object.changed);
    EXPECT_EQ(5, object.values[1].lVal);
    Edit(3, L"7");
    EXPECT_EQ(2, object.given);
    EXPECT_EQ(2, object.changed) << "the first row is handed over once more";
    // A row number that no row has gives all rows to the object too.
    Edit(99, L"7");
    EXPECT_EQ(3, object.given);
    EXPECT_EQ(2, object.changed);
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, OnlyTheSecondColumnIsTaken) {
    RowsObject object;
    dialog->LoadObject(&object);
    EXPECT_EQ(0, Tell(SGN_EDITED, 1, 0, L"5"));
    EXPECT_EQ(0, Tell(SGN_EDITED, 1, 2, L"5"));
    EXPECT_EQ(0, object.given);
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, TheOtherCodesAreAnsweredWithZero) {
    RowsObject object;
    dialog->LoadObject(&object);
    for (const int code : {-163, -175, -180, -161, -164}) {
        NMSHEETGRID tell = {};
        tell.hdr.code = static_cast<UINT>(code);
        tell.nRow = 1;
        tell.nCol = 1;
        tell.strText = L"5";
        LRESULT result = 7;
        AFX_NOTIFY notify = {&result, &tell.hdr};
        EXPECT_TRUE(dialog->OnCmdMsg(1000, code, &notify, nullptr)) << code << " is handled";
        EXPECT_EQ(0, result) << code;
    }
    EXPECT_EQ(0, object.given);
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, WithoutAnObjectAnEditChangesNothing) {
    EXPECT_EQ(0, Edit(0, L"5"));
    CLine line;
    dialog->LoadObject(&line);
    dialog->LoadObject(nullptr);
    EXPECT_EQ(0, Edit(0, L"5"));
    EXPECT_EQ(0, line.GetLineType() + 1);
}

TEST_F(PropertyDialog, TheViewThatWasGivenIsRepainted) {
    CLine line;
    dialog->LoadObject(&line);
    frame.ValidateRect(nullptr);
    CRect dirty;
    Edit(RowOf("起点x坐标"), L"5");
    EXPECT_FALSE(frame.GetUpdateRect(&dirty));
    dialog->SetView(&frame);
    Edit(RowOf("起点x坐标"), L"6");
    EXPECT_TRUE(frame.GetUpdateRect(&dirty));
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, ALinesStartIsEditedAndARepeatedKeyIsNot) {
    CLine line;
    line.SetStartPoint(CGePoint2d(1, 2));
    dialog->LoadObject(&line);
    Edit(RowOf("起点x坐标"), L"12.5");
    EXPECT_EQ(12.5, line.GetStartPoint().x);
    EXPECT_EQ(2.0, line.GetStartPoint().y);
    CTextParm parm;
    parm.SetTextRatio(0.5f);
    dialog->LoadObject(&parm);
    const int ratio = RowOf("文字宽高比");
    EXPECT_EQ("0.500000", Cell(ratio, 1));
    Edit(ratio, L"2");
    EXPECT_EQ("2.000000", Cell(ratio, 1));
    EXPECT_EQ(0.5f, parm.GetTextRatio());
    EXPECT_EQ(20.0f, parm.GetTextHeight());
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, TheGridKeepsItsRowsWhenTheObjectChanges) {
    CLine line;
    dialog->LoadObject(&line);
    line.SetStartPoint(CGePoint2d(9, 9));
    EXPECT_EQ("0.000000", Cell(RowOf("起点x坐标"), 1));
    dialog->LoadObject(&line);
    EXPECT_EQ("9.000000", Cell(RowOf("起点x坐标"), 1));
    dialog->LoadObject(nullptr);
}

// ---- By keyboard alone ---------------------------------------------------------------------------------------------

TEST_F(PropertyDialog, KeysWalkEditCommitAndGiveUp) {
    CLine line;
    dialog->LoadObject(&line);
    const int x1 = RowOf("起点x坐标");
    Grid()->SetFocus();
    Grid()->SetCurrentRow(0);
    for (int i = 0; i < x1; ++i) {
        Key(VK_DOWN);
    }
    EXPECT_EQ(x1, Grid()->GetCurrentRow());
    Key(VK_F2);
    EXPECT_TRUE(Grid()->IsEditing());
    Type(L"7");
    Key(VK_RETURN);
    EXPECT_EQ(7.0, line.GetStartPoint().x);
    Grid()->SetCurrentRow(x1);
    Key(VK_F2);
    Type(L"8");
    Key(VK_ESCAPE);
    EXPECT_FALSE(Grid()->IsEditing());
    EXPECT_EQ(7.0, line.GetStartPoint().x);
    EXPECT_TRUE(dialog->IsWindowVisible());
    Key(VK_F2);
    Type(L"9");
    Key(VK_TAB);
    EXPECT_EQ(9.0, line.GetStartPoint().x);
    Key(VK_ESCAPE);
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, AClickOnAValueEditsItAndTheNextClickStoresIt) {
    CLine line;
    dialog->LoadObject(&line);
    const int x1 = RowOf("起点x坐标");
    const auto click = [this](int row) {
        Grid()->SetCurrentRow(row);
        const CPoint at = Grid()->GetCellRect(row, 1).CenterPoint();
        ::PostMessage(Grid()->m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        ::PostMessage(Grid()->m_hWnd, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
        Pump();
    };
    click(x1);
    ASSERT_TRUE(Grid()->IsEditing());
    Type(L"4");
    click(x1 + 1);
    EXPECT_EQ(4.0, line.GetStartPoint().x);
    Type(L"5");
    frame.SetFocus();
    EXPECT_EQ(5.0, line.GetStartPoint().y);
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, ChineseIsTypedIntoACell) {
    CLine line;
    dialog->LoadObject(&line);
    Grid()->SetFocus();
    Grid()->SetCurrentRow(RowOf("参数名称"));
    Key(VK_F2);
    Type(L"宽度\xD840\xDC0B");
    Key(VK_RETURN);
    EXPECT_EQ("宽度𠀋", Utf8(line.GetParmName()));
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, EscapeDoesNotCloseIt) {
    CLine line;
    dialog->LoadObject(&line);
    Grid()->SetFocus();
    Key(VK_ESCAPE);
    EXPECT_TRUE(dialog->IsWindowVisible());
    dialog->SendMessage(WM_KEYDOWN, VK_ESCAPE, 1);
    EXPECT_TRUE(dialog->IsWindowVisible());
    ::PostMessage(dialog->m_hWnd, WM_KEYDOWN, VK_ESCAPE, 1);
    Pump();
    EXPECT_TRUE(dialog->IsWindowVisible());
    // Its own close button does.
    dialog->SendMessage(WM_CLOSE);
    Pump();
    EXPECT_TRUE(dialog->m_hWnd == nullptr || !dialog->IsWindowVisible());
    dialog->LoadObject(nullptr);
}

TEST_F(PropertyDialog, ANewObjectDiscardsTheEditOfACell) {
    CLine first;
    CLine second;
    dialog->LoadObject(&first);
    Grid()->SetFocus();
    Grid()->SetCurrentRow(RowOf("起点x坐标"));
    Key(VK_F2);
    Type(L"5");
    dialog->LoadObject(&second);
    EXPECT_FALSE(Grid()->IsEditing());
    EXPECT_EQ(0.0, first.GetStartPoint().x);
    EXPECT_EQ(0.0, second.GetStartPoint().x);
    dialog->LoadObject(nullptr);
}

// ---- In a view -----------------------------------------------------------------------------------------------------

class ViewWithDialog : public CVectorView {
public:
    void SetDialog(CDialog_DrawAbleProperty* dialog) { m_pDlgDrawAbleProperty = dialog; }
};

TEST_F(PropertyDialog, AViewShowsTheSelectedObjectAndFreesTheDialogInTheEnd) {
    const int unknown = CKXMemoryManager::Instance()->GetUnknownCount();
    CKXMemoryManager::Instance()->AddMemoryInfo(dialog, __FILE__, __LINE__);
    {
        ViewWithDialog view;
        ASSERT_TRUE(view.Create(AfxRegisterWndClass(0), L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 200), &frame, 5));
        view.GetVectorViewCoordTran()->SetScreenSize(CSize(200, 200));
        view.SetDialog(dialog);
        CDrawable* line = view.AddLine(CGePoint2d(10, 100), CGePoint2d(190, 100), Gdiplus::Color(0xFFFFFFFF), 1);
        view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 100));
        view.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(100, 100));
        EXPECT_TRUE(line->IsSelected());
        EXPECT_EQ("属性-直线", Title());
        Edit(RowOf("起点y坐标"), L"50");
        EXPECT_EQ(50.0, static_cast<CLine*>(line)->GetStartPoint().y);
        // Any key deselects and empties the dialog.
        view.SendMessage(WM_KEYDOWN, 'A', 1);
        EXPECT_EQ("属性", Title());
        EXPECT_EQ(0, Grid()->GetRowCount());
    }
    // The view has taken it along.
    dialog = nullptr;
    EXPECT_EQ(unknown, CKXMemoryManager::Instance()->GetUnknownCount());
}

TEST_F(PropertyDialog, ADrawingThatIsReplacedTakesItsObjectOutOfTheDialog) {
    CKXMemoryManager::Instance()->AddMemoryInfo(dialog, __FILE__, __LINE__);
    {
        ViewWithDialog view;
        view.SetDialog(dialog);
        CDrawable* line = view.AddLine(CGePoint2d(10, 100), CGePoint2d(190, 100), Gdiplus::Color(0xFFFFFFFF), 1);
        dialog->SetObject(line);
        CMemFile file;
        view.GetDocument()->StoreToMemFile(&file);
        std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
        file.SeekToBegin();
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
        // A load that leaves the drawing alone leaves the dialog alone.
        EXPECT_EQ(0, view.LoadFile(bytes.data(), 0));
        EXPECT_EQ(line, dialog->GetObject());
        EXPECT_EQ(1, view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size())));
        EXPECT_EQ(nullptr, dialog->GetObject());
        EXPECT_EQ(0, Grid()->GetRowCount());
        EXPECT_EQ("属性", Title());
    }
    dialog = nullptr;
}

} // namespace
