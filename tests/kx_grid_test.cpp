// Tests of the two-column grid on real windows: its requests, its notifications, and their order.
#include <KxSheetGrid.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

typedef std::vector<std::string> Events;

std::string Narrow(const CString& text) {
    std::string result;
    for (int i = 0; i < text.GetLength(); ++i) {
        const wchar_t c = text[i];
        char code[8];
        if (c < 0x80) {
            result += static_cast<char>(c);
        } else {
            _snprintf(code, sizeof(code), "<%x>", c);
            result += code;
        }
    }
    return result;
}

void Pump() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

// The host: a plain window that holds the values and writes down every notification but the calls for a text.
class GridTest : public testing::Test {
protected:
    static const int Id = 1000;

    void SetUp() override {
        WNDCLASSW wc = {};
        wc.lpfnWndProc = HostProc;
        wc.hInstance = ::GetModuleHandleW(nullptr);
        wc.lpszClassName = L"GridTestHost";
        ::RegisterClassW(&wc);
        m_host = ::CreateWindowExW(0, wc.lpszClassName, L"", WS_POPUP | WS_VISIBLE, 40, 40, 400, 300, nullptr, nullptr,
                                   wc.hInstance, nullptr);
        ASSERT_NE(nullptr, m_host) << "no window without a display";
        ::SetWindowLongPtrW(m_host, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        m_other = ::CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 300, 0, 80, 30, m_host,
                                    nullptr, wc.hInstance, nullptr);
        ::SetForegroundWindow(m_host);
        m_values = {L"10", L"20", L"30", L"40", L"50"};
    }

    void TearDown() override {
        m_grid = nullptr;
        m_owned.reset();
        ::DestroyWindow(m_host);
        Pump();
    }

    // A grid of 200 by exactly `rows` rows and a header of the same height when it is shown.
    CSheetGridCtrl& MakeGrid(int rows, int header = 0) {
        m_owned.reset(new CSheetGridCtrl);
        m_grid = m_owned.get();
        CWnd* host = CWnd::FromHandle(m_host);
        EXPECT_TRUE(m_grid->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(0, 0, 200, 100), host, Id));
        m_grid->SetShowHeader(header);
        m_grid->SetRowCount(static_cast<int>(m_values.size()));
        m_row = m_grid->GetCellRect(0, 0).Height();
        ::SetWindowPos(m_grid->m_hWnd, nullptr, 0, 0, 200, m_row * (rows + header), SWP_NOZORDER | SWP_NOMOVE);
        Pump();
        m_events.clear();
        return *m_grid;
    }

    // Focus on a grid whose current row is `row`, with nothing written down yet.
    void FocusRow(int row) {
        m_grid->SetCurrentRow(row);
        ::SetFocus(m_grid->m_hWnd);
        Pump();
        ASSERT_EQ(m_grid->m_hWnd, ::GetFocus());
        m_events.clear();
    }

    // A key as the system posts it to the window with the focus; the host runs a dialog's message loop.
    void Press(UINT key, bool shift = false, bool control = false) {
        BYTE keys[256] = {};
        ::GetKeyboardState(keys);
        keys[VK_SHIFT] = shift ? 0x80 : 0;
        keys[VK_CONTROL] = control ? 0x80 : 0;
        ::SetKeyboardState(keys);
        ::PostMessageW(::GetFocus(), WM_KEYDOWN, key, 1);
        PumpDialog();
        keys[VK_SHIFT] = keys[VK_CONTROL] = 0;
        ::SetKeyboardState(keys);
    }

    void Type(const wchar_t* text) {
        for (; *text != 0; ++text) {
            ::PostMessageW(::GetFocus(), WM_CHAR, *text, 1);
            PumpDialog();
        }
    }

    void PumpDialog() {
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (!::IsDialogMessageW(m_host, &message)) {
                ::TranslateMessage(&message);
                ::DispatchMessageW(&message);
            }
        }
    }

    void Click(int row, int col) {
        const CPoint at = m_grid->GetCellRect(row, col).CenterPoint();
        ::SendMessageW(m_grid->m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        ::SendMessageW(m_grid->m_hWnd, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
        Pump();
    }

    Events Take() {
        const Events events = m_events;
        m_events.clear();
        return events;
    }

    CString EditText() {
        CString text;
        m_grid->GetEdit()->GetWindowText(text);
        return text;
    }

    LRESULT OnNotify(WPARAM wParam, NMSHEETGRID* note) {
        EXPECT_EQ(static_cast<WPARAM>(Id), wParam);
        EXPECT_EQ(static_cast<UINT_PTR>(Id), note->hdr.idFrom);
        EXPECT_EQ(m_grid->m_hWnd, note->hdr.hwndFrom);
        EXPECT_EQ(1u, note->mask);
        const int code = static_cast<int>(note->hdr.code);
        const size_t row = static_cast<size_t>(note->nRow);
        if (code == -177) {
            ++m_asked[{note->nRow, note->nCol}];
            if (row < m_values.size()) {
                note->strText = note->nCol == 0 ? L"label" : m_values[row].c_str();
            }
            return 0;
        }
        m_events.push_back(std::to_string(code) + " " + std::to_string(note->nRow) + "," + std::to_string(note->nCol) +
                           " " + Narrow(note->strText));
        if (code == -178 && row < m_values.size()) {
            m_values[row] = static_cast<const wchar_t*>(note->strText);
        }
        if (m_onNotify) {
            m_onNotify(code);
        }
        return code == -175 ? m_refuse : 0;
    }

    static LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        GridTest* self = reinterpret_cast<GridTest*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_NOTIFY && self != nullptr && self->m_grid != nullptr) {
            return self->OnNotify(wParam, reinterpret_cast<NMSHEETGRID*>(lParam));
        }
        if (message == WM_COMMAND && self != nullptr && LOWORD(wParam) == IDCANCEL) {
            ++self->m_cancels;
        }
        return ::DefWindowProcW(window, message, wParam, lParam);
    }

    HWND m_host = nullptr;
    HWND m_other = nullptr;
    std::unique_ptr<CSheetGridCtrl> m_owned;
    CSheetGridCtrl* m_grid = nullptr;
    int m_row = 0; // height of a row in pixels
    std::vector<std::wstring> m_values;
    Events m_events;
    std::map<std::pair<int, int>, int> m_asked;
    std::function<void(int)> m_onNotify;
    LRESULT m_refuse = 0;
    int m_cancels = 0;
};

typedef GridTest KxSheetGrid;

} // namespace

// ---- Window and texts

TEST_F(KxSheetGrid, WindowClassIsKnownToEveryModule) {
    const CSheetGridCtrl first;
    const HWND window = ::CreateWindowExW(0, L"CGridCtrl", L"", WS_CHILD, 0, 0, 10, 10, m_host, nullptr,
                                          ::GetModuleHandleW(nullptr), nullptr);
    EXPECT_NE(nullptr, window);
    wchar_t name[32] = L"";
    ::GetClassNameW(window, name, 32);
    EXPECT_STREQ(L"CGridCtrl", name);
}

TEST_F(KxSheetGrid, RecordIsLaidOutAsHostsReadIt) {
    const size_t head = sizeof(NMHDR);
    EXPECT_EQ(head, offsetof(NMSHEETGRID, mask));
    EXPECT_EQ(head + 4, offsetof(NMSHEETGRID, nCol));
    EXPECT_EQ(head + 8, offsetof(NMSHEETGRID, nRow));
    EXPECT_EQ(head + 16, offsetof(NMSHEETGRID, strText));
}

TEST_F(KxSheetGrid, PaintAsksForTheCellsThatShow) {
    CSheetGridCtrl& grid = MakeGrid(3);
    grid.SetTopRow(1);
    Pump();
    m_asked.clear();
    grid.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const std::map<std::pair<int, int>, int> expected = {{{1, 0}, 1}, {{1, 1}, 1}, {{2, 0}, 1},
                                                         {{2, 1}, 1}, {{3, 0}, 1}, {{3, 1}, 1}};
    EXPECT_EQ(expected, m_asked);
}

TEST_F(KxSheetGrid, FontSetBeforeSubclassingIsKept) {
    CSheetGridCtrl grid;
    const HWND window = ::CreateWindowExW(0, L"CGridCtrl", L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 100, m_host, nullptr,
                                          ::GetModuleHandleW(nullptr), nullptr);
    LOGFONTW face = {};
    face.lfHeight = -40;
    const HFONT font = ::CreateFontIndirectW(&face);
    ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    ASSERT_TRUE(grid.SubclassWindow(window));
    EXPECT_EQ(reinterpret_cast<LRESULT>(font), grid.SendMessage(WM_GETFONT));
    EXPECT_GE(grid.GetCellRect(0, 0).Height(), 40);
    grid.DestroyWindow();
    ::DeleteObject(font);
}

TEST_F(KxSheetGrid, HeaderMovesTheRowsDownAndIsNoRow) {
    CSheetGridCtrl& grid = MakeGrid(3, 1);
    EXPECT_EQ(m_row, grid.GetCellRect(0, 0).top);
    int col = -1;
    EXPECT_EQ(-1, grid.HitTest(CPoint(5, m_row - 1), col));
    EXPECT_EQ(0, grid.HitTest(CPoint(5, m_row), col));
    EXPECT_EQ(0, col);
    EXPECT_EQ(2, grid.HitTest(CPoint(grid.GetDivider() + 1, 4 * m_row - 1), col));
    EXPECT_EQ(1, col);
    grid.SetShowHeader(0);
    EXPECT_EQ(0, grid.GetCellRect(0, 0).top);
}

TEST_F(KxSheetGrid, NoRowBelowTheLastOne) {
    m_values.resize(2);
    CSheetGridCtrl& grid = MakeGrid(4);
    int col = -1;
    EXPECT_EQ(1, grid.HitTest(CPoint(5, 2 * m_row - 1), col));
    EXPECT_EQ(-1, grid.HitTest(CPoint(5, 2 * m_row), col));
}

TEST_F(KxSheetGrid, PaintsTheCurrentRowInTheHighlightColour) {
    MakeGrid(3);
    FocusRow(1);
    m_grid->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const HDC dc = ::GetDC(m_grid->m_hWnd);
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), ::GetPixel(dc, 1, m_row + 1));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), ::GetPixel(dc, 1, 1));
    EXPECT_EQ(::GetSysColor(COLOR_BTNFACE), ::GetPixel(dc, 1, m_row - 1)); // the line under a row
    ::ReleaseDC(m_grid->m_hWnd, dc);
    EXPECT_TRUE(m_grid->SendMessage(WM_ERASEBKGND, 0, 0)); // it paints no background of its own: no flicker
}

TEST_F(KxSheetGrid, WorksBeforeItHasAWindow) {
    CSheetGridCtrl grid;
    grid.SetRowCount(4);
    grid.SetShowHeader(0);
    grid.SetAllowEdit(0);
    grid.SetCurrentRow(2);
    EXPECT_EQ(4, grid.GetRowCount());
    EXPECT_EQ(2, grid.GetCurrentRow());
    EXPECT_FALSE(grid.BeginEdit(0));
    grid.SetRowCount(-3);
    EXPECT_EQ(0, grid.GetRowCount());
}

// ---- Edit by mouse

TEST_F(KxSheetGrid, ClickOnAValueOpensTheEditOverItsCell) {
    CSheetGridCtrl& grid = MakeGrid(5);
    Click(2, 1);
    EXPECT_EQ((Events{"-163 2,1 ", "-161 2,1 ", "-175 2,1 30"}), Take());
    ASSERT_TRUE(grid.IsEditing());
    EXPECT_EQ(grid.GetEdit()->m_hWnd, ::GetFocus());
    EXPECT_EQ(CString(L"30"), EditText());
    int start = -1;
    int end = -1;
    grid.GetEdit()->GetSel(start, end);
    EXPECT_EQ(0, start);
    EXPECT_EQ(2, end);
    CRect box;
    grid.GetEdit()->GetWindowRect(&box);
    grid.ScreenToClient(&box);
    const CRect cell = grid.GetCellRect(2, 1);
    EXPECT_EQ(cell.left, box.left);
    EXPECT_EQ(cell.right, box.right);
    EXPECT_GE(box.top, cell.top);
    EXPECT_LE(box.bottom, cell.bottom);
}

TEST_F(KxSheetGrid, ClickOnALabelOnlySelects) {
    MakeGrid(5);
    Click(1, 0);
    EXPECT_EQ((Events{"-163 1,1 ", "-161 1,0 "}), Take());
    EXPECT_FALSE(m_grid->IsEditing());
    EXPECT_EQ(m_grid->m_hWnd, ::GetFocus());
    EXPECT_EQ(1, m_grid->GetCurrentRow());
}

TEST_F(KxSheetGrid, DoubleClickOnALabelEditsTheRow) {
    MakeGrid(5);
    FocusRow(1);
    const CPoint at = m_grid->GetCellRect(1, 0).CenterPoint();
    ::SendMessageW(m_grid->m_hWnd, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    EXPECT_EQ((Events{"-164 1,0 ", "-175 1,1 20"}), Take());
    EXPECT_TRUE(m_grid->IsEditing());
}

TEST_F(KxSheetGrid, ClickOnAnotherValueCommitsTheFirst) {
    MakeGrid(5);
    Click(0, 1);
    Take();
    Type(L"7");
    Click(3, 1);
    EXPECT_EQ((Events{"-178 0,1 7", "-180 0,1 7", "-163 3,1 ", "-161 3,1 ", "-175 3,1 40"}), Take());
    EXPECT_EQ(L"7", m_values[0]);
    EXPECT_TRUE(m_grid->IsEditing());
}

TEST_F(KxSheetGrid, ClickBelowTheRowsCommitsAndSelectsNothing) {
    m_values.resize(2);
    MakeGrid(5);
    Click(1, 1);
    Type(L"8");
    Take();
    ::SendMessageW(m_grid->m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 4 * m_row));
    EXPECT_EQ((Events{"-178 1,1 8", "-180 1,1 8"}), Take());
    EXPECT_EQ(1, m_grid->GetCurrentRow());
}

// ---- Edit by keyboard

TEST_F(KxSheetGrid, TypingReplacesTheValueAndReturnCommitsAndMovesDown) {
    MakeGrid(5);
    FocusRow(0);
    Type(L"125");
    EXPECT_EQ(CString(L"125"), EditText());
    Press(VK_RETURN);
    EXPECT_EQ((Events{"-175 0,1 10", "-178 0,1 125", "-180 0,1 125", "-163 1,1 "}), Take());
    EXPECT_EQ(L"125", m_values[0]);
    EXPECT_FALSE(m_grid->IsEditing());
    EXPECT_EQ(m_grid->m_hWnd, ::GetFocus());
    EXPECT_EQ(1, m_grid->GetCurrentRow());
}

TEST_F(KxSheetGrid, F2AndReturnOpenTheEditAndReturnWithoutAChangeReportsNoEdit) {
    MakeGrid(5);
    for (const UINT key : {VK_F2, VK_RETURN}) {
        FocusRow(2);
        Press(key);
        EXPECT_EQ((Events{"-175 2,1 30"}), Take());
        ASSERT_TRUE(m_grid->IsEditing());
        Press(VK_RETURN);
        EXPECT_EQ((Events{"-180 2,1 30", "-163 3,1 "}), Take());
    }
}

TEST_F(KxSheetGrid, ReturnOnTheLastRowStaysThere) {
    MakeGrid(5);
    FocusRow(4);
    Press(VK_F2);
    Press(VK_RETURN);
    EXPECT_EQ((Events{"-175 4,1 50", "-180 4,1 50"}), Take());
    EXPECT_EQ(4, m_grid->GetCurrentRow());
    EXPECT_FALSE(m_grid->IsEditing());
}

TEST_F(KxSheetGrid, TabCommitsAndEditsTheNextRow) {
    MakeGrid(5);
    FocusRow(0);
    Type(L"1");
    Press(VK_TAB);
    EXPECT_EQ((Events{"-175 0,1 10", "-178 0,1 1", "-180 0,1 1", "-163 1,1 ", "-175 1,1 20"}), Take());
    EXPECT_TRUE(m_grid->IsEditing());
    Type(L"2");
    EXPECT_EQ(CString(L"2"), EditText());
    Press(VK_TAB, true);
    EXPECT_EQ((Events{"-178 1,1 2", "-180 1,1 2", "-163 0,1 ", "-175 0,1 1"}), Take());
    EXPECT_EQ(CString(L"1"), EditText());
}

TEST_F(KxSheetGrid, TabOnTheLastRowCommitsAndTheNextTabLeavesTheGrid) {
    MakeGrid(5);
    FocusRow(4);
    Type(L"9");
    Press(VK_TAB);
    EXPECT_EQ((Events{"-175 4,1 50", "-178 4,1 9", "-180 4,1 9"}), Take());
    EXPECT_EQ(m_grid->m_hWnd, ::GetFocus());
    Press(VK_TAB);
    EXPECT_EQ(m_other, ::GetFocus());
}

TEST_F(KxSheetGrid, EscapeGivesTheCellUp) {
    MakeGrid(5);
    FocusRow(1);
    Type(L"999");
    Press(VK_ESCAPE);
    EXPECT_EQ((Events{"-175 1,1 20", "-180 1,1 999"}), Take());
    EXPECT_EQ(L"20", m_values[1]);
    EXPECT_FALSE(m_grid->IsEditing());
    EXPECT_EQ(m_grid->m_hWnd, ::GetFocus());
}

TEST_F(KxSheetGrid, EscapeNeverReachesTheDialog) {
    MakeGrid(5);
    FocusRow(1);
    Press(VK_F2);
    Press(VK_ESCAPE);
    Press(VK_ESCAPE);
    EXPECT_EQ(0, m_cancels);
    EXPECT_EQ(m_grid->m_hWnd, ::GetFocus());
}

TEST_F(KxSheetGrid, UpAndDownWalkAndStopAtTheEnds) {
    MakeGrid(5);
    FocusRow(1);
    Press(VK_UP);
    Press(VK_UP);
    EXPECT_EQ((Events{"-163 0,1 "}), Take());
    Press(VK_DOWN);
    EXPECT_EQ((Events{"-163 1,1 "}), Take());
    Press(VK_END);
    Press(VK_DOWN);
    EXPECT_EQ((Events{"-163 4,1 "}), Take());
    Press(VK_HOME);
    EXPECT_EQ((Events{"-163 0,1 "}), Take());
}

TEST_F(KxSheetGrid, UpAndDownInTheEditCommitAndWalk) {
    MakeGrid(5);
    FocusRow(2);
    Type(L"3");
    Press(VK_UP);
    EXPECT_EQ((Events{"-175 2,1 30", "-178 2,1 3", "-180 2,1 3", "-163 1,1 "}), Take());
    EXPECT_FALSE(m_grid->IsEditing());
    Press(VK_F2);
    Press(VK_DOWN);
    EXPECT_EQ((Events{"-175 1,1 20", "-180 1,1 20", "-163 2,1 "}), Take());
}

TEST_F(KxSheetGrid, PageKeysMoveByWhatShows) {
    m_values.assign(20, L"v");
    MakeGrid(4);
    FocusRow(0);
    Press(VK_NEXT);
    EXPECT_EQ(4, m_grid->GetCurrentRow());
    EXPECT_EQ(1, m_grid->GetTopRow());
    Press(VK_NEXT);
    EXPECT_EQ(8, m_grid->GetCurrentRow());
    Press(VK_PRIOR);
    EXPECT_EQ(4, m_grid->GetCurrentRow());
    EXPECT_EQ(4, m_grid->GetTopRow());
    Press(VK_END);
    EXPECT_EQ(19, m_grid->GetCurrentRow());
    EXPECT_EQ(16, m_grid->GetTopRow());
    Press(VK_HOME);
    EXPECT_EQ(0, m_grid->GetTopRow());
}

TEST_F(KxSheetGrid, DeleteOpensTheEditEmpty) {
    MakeGrid(5);
    FocusRow(0);
    Press(VK_DELETE);
    EXPECT_TRUE(m_grid->IsEditing());
    EXPECT_EQ(CString(L""), EditText());
    Press(VK_RETURN);
    EXPECT_EQ(L"", m_values[0]);
}

TEST_F(KxSheetGrid, TakesChineseAndCharactersBeyondSixteenBits) {
    MakeGrid(5);
    FocusRow(0);
    Type(L"宽度\xD840\xDC0B");
    EXPECT_EQ(CString(L"宽度\xD840\xDC0B"), EditText());
    Press(VK_RETURN);
    EXPECT_EQ(L"宽度\xD840\xDC0B", m_values[0]);
}

TEST_F(KxSheetGrid, KeepsALongText) {
    m_values[0] = std::wstring(100000, L'x');
    MakeGrid(5);
    m_grid->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    ASSERT_TRUE(m_grid->BeginEdit(0));
    EXPECT_EQ(100000, EditText().GetLength());
    m_grid->GetEdit()->SetSel(-1, -1);
    m_grid->GetEdit()->SendMessage(WM_CHAR, L'y', 1);
    m_grid->EndEdit(1);
    EXPECT_EQ(100001u, m_values[0].size());
}

TEST_F(KxSheetGrid, FirstFocusTakesTheFirstRow) {
    MakeGrid(5);
    ASSERT_EQ(-1, m_grid->GetCurrentRow());
    ::SetFocus(m_grid->m_hWnd);
    EXPECT_EQ((Events{"-163 0,1 "}), Take());
}

// ---- Ends of an edit from outside

TEST_F(KxSheetGrid, LosingTheFocusCommits) {
    MakeGrid(5);
    FocusRow(1);
    Type(L"21");
    ::SetFocus(m_other);
    EXPECT_EQ((Events{"-175 1,1 20", "-178 1,1 21", "-180 1,1 21"}), Take());
    EXPECT_EQ(m_other, ::GetFocus());
    EXPECT_FALSE(m_grid->IsEditing());
    EXPECT_FALSE(m_grid->GetEdit()->IsWindowVisible());
}

TEST_F(KxSheetGrid, NewRowsGiveTheRunningEditUp) {
    MakeGrid(5);
    FocusRow(3);
    Type(L"wrong row");
    Take();
    m_values = {L"1", L"2"};
    m_grid->SetRowCount(2);
    EXPECT_EQ((Events{"-180 3,1 wrong row"}), Take());
    EXPECT_EQ((std::vector<std::wstring>{L"1", L"2"}), m_values);
    EXPECT_EQ(1, m_grid->GetCurrentRow());
}

TEST_F(KxSheetGrid, NoRowsNoEdit) {
    MakeGrid(5);
    m_grid->SetRowCount(0);
    ::SetFocus(m_grid->m_hWnd);
    for (const UINT key : {VK_DOWN, VK_UP, VK_END, VK_HOME, VK_NEXT, VK_PRIOR, VK_F2, VK_RETURN, VK_DELETE}) {
        Press(key);
    }
    Type(L"x");
    EXPECT_EQ((Events{}), Take());
    EXPECT_EQ(-1, m_grid->GetCurrentRow());
}

TEST_F(KxSheetGrid, EditNotAllowedMeansNoEdit) {
    MakeGrid(5);
    m_grid->SetAllowEdit(0);
    FocusRow(0);
    Press(VK_F2);
    Type(L"5");
    Click(0, 1);
    EXPECT_EQ((Events{"-161 0,1 "}), Take());
    EXPECT_FALSE(m_grid->IsEditing());
}

TEST_F(KxSheetGrid, ForbiddingEditsDiscardsTheRunningOne) {
    MakeGrid(5);
    FocusRow(0);
    Type(L"5");
    m_grid->SetAllowEdit(0);
    EXPECT_EQ((Events{"-175 0,1 10", "-180 0,1 5"}), Take());
    EXPECT_EQ(L"10", m_values[0]);
}

TEST_F(KxSheetGrid, ParentRefusesAnEdit) {
    MakeGrid(5);
    FocusRow(0);
    m_refuse = 1;
    Press(VK_F2);
    EXPECT_EQ((Events{"-175 0,1 10"}), Take());
    EXPECT_FALSE(m_grid->IsEditing());
    EXPECT_EQ(m_grid->m_hWnd, ::GetFocus());
}

TEST_F(KxSheetGrid, ParentEmptiesTheGridInsideTheReport) {
    MakeGrid(5);
    FocusRow(0);
    Type(L"5");
    Take();
    m_onNotify = [this](int code) {
        if (code == -178) {
            m_grid->SetRowCount(0);
        }
    };
    Press(VK_TAB);
    EXPECT_EQ((Events{"-178 0,1 5", "-180 0,1 5"}), Take());
    EXPECT_FALSE(m_grid->IsEditing());
    EXPECT_EQ(-1, m_grid->GetCurrentRow());
}

TEST_F(KxSheetGrid, ParentDestroysTheGridInsideTheReport) {
    MakeGrid(5);
    FocusRow(0);
    Type(L"5");
    Take();
    m_onNotify = [this](int code) {
        if (code == -178) {
            CSheetGridCtrl* grid = m_grid;
            m_grid = nullptr;
            grid->DestroyWindow();
        }
    };
    Press(VK_TAB);
    EXPECT_EQ((Events{"-178 0,1 5"}), Take());
    EXPECT_EQ(L"5", m_values[0]);
}

TEST_F(KxSheetGrid, DestroyedWhileEditingReportsNoEditAfterwards) {
    MakeGrid(5);
    FocusRow(0);
    Type(L"5");
    m_owned->DestroyWindow();
    EXPECT_EQ(nullptr, m_owned->m_hWnd);
    EXPECT_FALSE(m_owned->IsEditing());
}

// ---- Scrolling

TEST_F(KxSheetGrid, TheScrollBarIsShownOnlyWhereRowsAreHidden) {
    m_values.assign(20, L"v");
    MakeGrid(4);
    SCROLLINFO info = {sizeof(info), SIF_ALL, 0, 0, 0, 0, 0};
    ASSERT_TRUE(::GetScrollInfo(m_grid->m_hWnd, SB_VERT, &info));
    EXPECT_EQ(19, info.nMax);
    EXPECT_EQ(4u, info.nPage);
    EXPECT_TRUE(m_grid->GetStyle() & WS_VSCROLL);
    m_grid->SetRowCount(4);
    EXPECT_FALSE(m_grid->GetStyle() & WS_VSCROLL);
}

TEST_F(KxSheetGrid, ScrollBarMovesTheRows) {
    m_values.assign(20, L"v");
    MakeGrid(4);
    const auto scroll = [this](int code) {
        m_grid->SendMessage(WM_VSCROLL, static_cast<WPARAM>(code));
        return m_grid->GetTopRow();
    };
    EXPECT_EQ(1, scroll(SB_LINEDOWN));
    EXPECT_EQ(5, scroll(SB_PAGEDOWN));
    EXPECT_EQ(4, scroll(SB_LINEUP));
    EXPECT_EQ(0, scroll(SB_PAGEUP));
    EXPECT_EQ(16, scroll(SB_BOTTOM));
    EXPECT_EQ(16, scroll(SB_LINEDOWN));
    EXPECT_EQ(0, scroll(SB_TOP));
}

TEST_F(KxSheetGrid, WheelScrollsAndGathersSmallTurns) {
    m_values.assign(40, L"v");
    MakeGrid(4);
    UINT lines = 0;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    ASSERT_EQ(3u, lines);
    const auto turn = [this](int delta) {
        m_grid->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
        return m_grid->GetTopRow();
    };
    EXPECT_EQ(3, turn(-120));
    EXPECT_EQ(3, turn(-39)); // 39 * 3 is not yet 120
    EXPECT_EQ(4, turn(-1));
    EXPECT_EQ(1, turn(120));
    EXPECT_EQ(0, turn(120));
}

TEST_F(KxSheetGrid, EditFollowsItsCellWhileScrolling) {
    m_values.assign(20, L"v");
    MakeGrid(4);
    ASSERT_TRUE(m_grid->BeginEdit(2));
    CRect before;
    m_grid->GetEdit()->GetWindowRect(&before);
    m_grid->GetEdit()->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120), 0);
    EXPECT_EQ(3, m_grid->GetTopRow());
    CRect after;
    m_grid->GetEdit()->GetWindowRect(&after);
    EXPECT_EQ(before.top - 3 * m_row, after.top);
    EXPECT_TRUE(m_grid->IsEditing());
}

// ---- Divider

TEST_F(KxSheetGrid, DividerFollowsTheMouse) {
    MakeGrid(5);
    EXPECT_EQ(80, m_grid->GetDivider()); // two fifths of 200
    m_grid->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(82, 5));
    EXPECT_EQ(m_grid->m_hWnd, ::GetCapture());
    m_grid->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(120, 5));
    EXPECT_EQ(120, m_grid->GetDivider());
    m_grid->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-50, 5));
    EXPECT_EQ(24, m_grid->GetDivider());
    m_grid->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(500, 5));
    EXPECT_EQ(176, m_grid->GetDivider());
    m_grid->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(150, 5));
    EXPECT_EQ(nullptr, ::GetCapture());
    m_grid->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(60, 5));
    EXPECT_EQ(176, m_grid->GetDivider());
    EXPECT_EQ((Events{}), Take());
}

TEST_F(KxSheetGrid, ControlWithArrowsMovesTheDivider) {
    MakeGrid(5);
    FocusRow(0);
    Press(VK_RIGHT, false, true);
    EXPECT_EQ(88, m_grid->GetDivider());
    Press(VK_LEFT, false, true);
    EXPECT_EQ(80, m_grid->GetDivider());
    Press(VK_LEFT);
    EXPECT_EQ(80, m_grid->GetDivider());
}

// ---- In a dialog

namespace {

// A dialog with the grid as control 1000, as a resource would describe it.
class GridDialog : public CDialog {
public:
    CSheetGridCtrl m_grid;

protected:
    void DoDataExchange(CDataExchange* pDX) override {
        CDialog::DoDataExchange(pDX);
        DDX_Control(pDX, 1000, m_grid);
    }
};

#pragma pack(push, 2)
struct GridTemplate {
    DLGTEMPLATE head = {WS_POPUP | WS_CAPTION | WS_VISIBLE | DS_SETFONT, 0, 1, 0, 0, 180, 120};
    WORD menu = 0;
    WORD dialogClass = 0;
    wchar_t title[3] = L"属性";
    WORD points = 9;
    wchar_t face[3] = L"宋体";
    DLGITEMTEMPLATE item = {WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 2, 1, 140, 100, 1000};
    wchar_t itemClass[10] = L"CGridCtrl";
    wchar_t itemTitle[7] = L"Custom";
    WORD extra = 0;
};
#pragma pack(pop)
static_assert(offsetof(GridTemplate, item) % 4 == 0, "control records begin at multiples of four bytes");

} // namespace

TEST(KxSheetGridDialog, TemplateMakesItAndDataExchangeTakesItOver) {
    GridDialog dialog;
    const GridTemplate resource;
    ASSERT_TRUE(dialog.CreateIndirect(&resource.head));
    const HWND window = ::GetDlgItem(dialog.m_hWnd, 1000);
    ASSERT_NE(nullptr, window);
    EXPECT_EQ(window, dialog.m_grid.m_hWnd);
    EXPECT_EQ(dialog.SendMessage(WM_GETFONT), dialog.m_grid.SendMessage(WM_GETFONT));
    EXPECT_NE(0, dialog.m_grid.SendMessage(WM_GETFONT));
    dialog.m_grid.SetRowCount(3);
    ASSERT_TRUE(dialog.m_grid.BeginEdit(1)); // a dialog that answers nothing gives empty texts and refuses nothing
    dialog.m_grid.EndEdit(1);
    dialog.DestroyWindow();
    EXPECT_EQ(nullptr, dialog.m_grid.m_hWnd);
}

TEST(KxSheetGridDialog, EscapeReachesTheCellAndNotTheDialog) {
    GridDialog dialog;
    const GridTemplate resource;
    ASSERT_TRUE(dialog.CreateIndirect(&resource.head));
    dialog.m_grid.SetRowCount(3);
    ASSERT_TRUE(dialog.m_grid.BeginEdit(1));
    MSG escape = {dialog.m_grid.GetEdit()->m_hWnd, WM_KEYDOWN, VK_ESCAPE, 1, 0, {0, 0}};
    EXPECT_TRUE(dialog.PreTranslateMessage(&escape));
    EXPECT_FALSE(dialog.m_grid.IsEditing());
    escape.hwnd = dialog.m_grid.m_hWnd;
    EXPECT_TRUE(dialog.PreTranslateMessage(&escape));
    EXPECT_TRUE(dialog.IsWindowVisible());
    dialog.DestroyWindow();
}
