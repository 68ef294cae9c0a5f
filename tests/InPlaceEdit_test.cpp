// The edit box over a parameter: growth, clipboard keys, long and Chinese texts, and its use by itself.

#include "support/BoxAnswer.h"
#include "support/ParmHost.h"

#include <climits>
#include <limits>

namespace {

// Writes down the messages of some kinds that are sent to edit boxes of the thread: "select 0 -1", "scroll",
// "font 1" with the flag for the repaint.
class SentToBoxes {
public:
    SentToBoxes() : m_hook(::SetWindowsHookEx(WH_CALLWNDPROC, Filter, nullptr, ::GetCurrentThreadId())) {
        s_log.clear();
        s_font = nullptr;
    }
    ~SentToBoxes() { ::UnhookWindowsHookEx(m_hook); }
    SentToBoxes(const SentToBoxes&) = delete;
    SentToBoxes& operator=(const SentToBoxes&) = delete;

    Events Take() {
        Events taken;
        taken.swap(s_log);
        return taken;
    }
    HGDIOBJ Font() const { return s_font; }

private:
    static LRESULT CALLBACK Filter(int code, WPARAM wParam, LPARAM lParam) {
        const auto* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code == HC_ACTION && call->message == EM_SETSEL) {
            s_log.push_back("select " + std::to_string(static_cast<int>(call->wParam)) + " " +
                            std::to_string(static_cast<int>(call->lParam)));
        } else if (code == HC_ACTION && call->message == EM_SCROLLCARET) {
            s_log.push_back("scroll");
        } else if (code == HC_ACTION && call->message == WM_SETFONT) {
            s_log.push_back("font " + std::to_string(call->lParam));
            s_font = reinterpret_cast<HGDIOBJ>(call->wParam);
        }
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
    HHOOK m_hook;
    static Events s_log;
    static HGDIOBJ s_font;
};

Events SentToBoxes::s_log;
HGDIOBJ SentToBoxes::s_font = nullptr;

struct InPlaceEdit : ThreeParms {
    // Opens A's box, 100 pixels wide at x 50, with that text in it.
    void OpenWith(const wchar_t* text) {
        Three();
        a->SetText(text);
        Click(a);
        ASSERT_TRUE(IsBoxShown());
        log.clear();
    }
    // Pixels of a text in the box's own font.
    int WidthOf(const CString& text) {
        HDC dc = ::GetDC(nullptr);
        const HGDIOBJ old = ::SelectObject(dc, reinterpret_cast<HGDIOBJ>(view.Edit().SendMessage(WM_GETFONT)));
        SIZE size = {};
        ::GetTextExtentPoint32W(dc, text, text.GetLength(), &size);
        ::SelectObject(dc, old);
        ::ReleaseDC(nullptr, dc);
        return size.cx;
    }
    static void SetClipboard(const std::wstring& text) {
        ASSERT_TRUE(::OpenClipboard(nullptr));
        ::EmptyClipboard();
        HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
        memcpy(::GlobalLock(block), text.c_str(), (text.size() + 1) * sizeof(wchar_t));
        ::GlobalUnlock(block);
        ::SetClipboardData(CF_UNICODETEXT, block);
        ::CloseClipboard();
    }
    static std::string Clipboard() {
        std::string text = "nothing";
        if (::OpenClipboard(nullptr)) {
            if (HANDLE block = ::GetClipboardData(CF_UNICODETEXT)) {
                text = Narrow(static_cast<const wchar_t*>(::GlobalLock(block)));
                ::GlobalUnlock(block);
            }
            ::CloseClipboard();
        }
        return text;
    }
    int Caret() { return HIWORD(view.Edit().SendMessage(EM_GETSEL)); }
};

// ---- Growth --------------------------------------------------------------------------------------------------------

TEST_F(InPlaceEdit, AShortTextLeavesTheBoxAsItIs) {
    OpenWith(L"10");
    Type(L"1");
    EXPECT_EQ(50, BoxRect().left);
    EXPECT_EQ(150, BoxRect().right);
}

TEST_F(InPlaceEdit, TheBoxGrowsWithTheTextAndTwoBlanks) {
    OpenWith(L"");
    const CString twelve = L"WWWWWWWWWWWW";
    CString typed;
    int expected = 100;
    bool grown = false;
    for (int i = 0; i < twelve.GetLength(); ++i) {
        Type(L"W");
        typed += L"W";
        const int wide = WidthOf(typed + L"  ");
        if (wide > expected && wide <= 200) {
            expected = wide;
            grown = true;
        }
        if (wide > 200) {
            break;
        }
        EXPECT_EQ(expected, BoxRect().Width()) << i;
        EXPECT_EQ(expected, view.Edit().GetEditRect().Width()) << i;
    }
    EXPECT_TRUE(grown);
}

TEST_F(InPlaceEdit, BeyondTwoHundredPixelsTheWindowStaysAndTheRectangleGrowsOn) {
    OpenWith(L"");
    int window = 100;
    int rectangle = 100;
    CString typed;
    for (int i = 0; i < 40; ++i) {
        Type(L"W");
        typed += L"W";
        const int wide = WidthOf(typed + L"  ");
        if (wide > rectangle) {
            // The view is 500 wide and the box begins at 50.
            rectangle = wide < 450 ? wide : 450;
        }
        if (rectangle <= 200) {
            window = rectangle;
        }
    }
    EXPECT_EQ(typed, BoxText());
    EXPECT_LE(window, 200);
    EXPECT_EQ(450, rectangle);
    EXPECT_EQ(window, BoxRect().Width());
    EXPECT_EQ(CRect(50, 50, 500, view.Edit().GetEditRect().bottom), view.Edit().GetEditRect());
    // The caret stays in sight: the text scrolls inside.
    const LRESULT at = view.Edit().SendMessage(EM_POSFROMCHAR, 39);
    EXPECT_LT(static_cast<short>(LOWORD(at)), window);
    EXPECT_GE(static_cast<short>(LOWORD(at)), 0);
}

TEST_F(InPlaceEdit, TheBoxGrowsNoFurtherThanTheViewsEdge) {
    a = AddParm(L"A", L"1", 420, 50);
    Paint();
    Click(a);
    // The text's own box reaches beyond the view.
    EXPECT_EQ(520, BoxRect().right);
    Type(L"WWWWWWWWWWWWWWWWWW");
    EXPECT_EQ(500, BoxRect().right);
    EXPECT_EQ(420, BoxRect().left);
}

TEST_F(InPlaceEdit, ABoxWiderThanTwoHundredFromTheStartIsNotMoved) {
    Three();
    a->SetTextEditWide(300.0f);
    Click(a);
    const CRect before = BoxRect();
    Type(L"WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW");
    EXPECT_EQ(300, before.Width());
    EXPECT_EQ(before, BoxRect());
}

TEST_F(InPlaceEdit, AWidthThatIsNoPixelWrapsAroundAndTheEditGoesOn) {
    for (const float wide : {3e9f, std::numeric_limits<float>::infinity()}) {
        SCOPED_TRACE(wide);
        Three();
        a->SetTextEditWide(wide);
        Click(a);
        ExpectOpenOn(a, L"10");
        // INT_MIN - 50 is 2147483598 in 32 bits: wider than any text, and wider than what grows.
        EXPECT_EQ(50, view.Edit().GetEditRect().left);
        EXPECT_EQ(INT_MIN, view.Edit().GetEditRect().right);
        const CRect before = BoxRect();
        EXPECT_GT(before.Width(), 200);
        Type(L"WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW");
        EXPECT_EQ(INT_MIN, view.Edit().GetEditRect().right);
        EXPECT_EQ(before, BoxRect());
        Key(VK_TAB);
        EXPECT_EQ(L"WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW", a->GetText());
        view.ResetVectorView();
    }
}

TEST_F(InPlaceEdit, AtAZoomThatPutsTheEdgesOfTheTextBeyondAllPixelsTheEditOpensAndEnds) {
    Three();
    CVectorViewCoordTran& tran = *view.GetVectorViewCoordTran();
    tran.SetScale(1e-9f);
    // All of the view is inside the text, whose edges are 10 units off or more: 1e10 pixels.
    tran.SetOriginX(60.0);
    tran.SetOriginY(240.0);
    Click(6, 150);
    ExpectOpenOn(a, L"10");
    EXPECT_EQ(INT_MIN, view.Edit().GetEditRect().left);
    EXPECT_EQ(INT_MIN, view.Edit().GetEditRect().right);
    EXPECT_EQ(INT_MIN, view.Edit().GetEditRect().bottom);
    Type(L"7");
    Key(VK_ESCAPE);
    ExpectClosed();
    EXPECT_EQ(L"10", a->GetText());
}

TEST_F(InPlaceEdit, ABoxWhoseSizeWrappedBelowNothingGrowsWithItsText) {
    Three();
    // From 0 to INT_MIN: a width of INT_MIN.
    view.EditAt(a, CRect(-1, 100, INT_MIN, INT_MIN));
    EXPECT_EQ(0, BoxRect().Width());
    Type(L"W");
    const int wide = WidthOf(L"W  ");
    ASSERT_LT(wide, 200);
    EXPECT_EQ(0, view.Edit().GetEditRect().left);
    EXPECT_EQ(wide, view.Edit().GetEditRect().right);
    EXPECT_EQ(wide, BoxRect().Width());
}

TEST_F(InPlaceEdit, TheNextEditStartsWithItsOwnSize) {
    OpenWith(L"");
    Type(L"WWWWWWWW");
    Click(c);
    EXPECT_EQ(100, BoxRect().Width());
    EXPECT_EQ(50, BoxRect().left);
}

TEST_F(InPlaceEdit, TheBoxIsPaintedWhenItOpensAndGoneWhenItEnds) {
    view.GetDocument()->SetBKColorIndex(kColorBlack);
    OpenWith(L"1");
    const auto pixel = [this](int x, int y) {
        HDC dc = ::GetDC(nullptr);
        CPoint at(x, y);
        view.ClientToScreen(&at);
        const COLORREF color = ::GetPixel(dc, at.x, at.y);
        ::ReleaseDC(nullptr, dc);
        return color;
    };
    view.UpdateWindow();
    Pump();
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), pixel(140, 55));
    other.SetFocus();
    Pump();
    EXPECT_EQ(RGB(0, 0, 0), pixel(140, 55));
}

// ---- Keys ----------------------------------------------------------------------------------------------------------

TEST_F(InPlaceEdit, ControlCCopies) {
    OpenWith(L"1234");
    SetClipboard(L"before");
    SelectInBox(1, 3);
    ControlKey('C');
    EXPECT_EQ("23", Clipboard());
    EXPECT_EQ(L"1234", BoxText());
    EXPECT_EQ(Events{}, Take());
}

TEST_F(InPlaceEdit, ControlXCuts) {
    OpenWith(L"5678");
    SetClipboard(L"before");
    SelectInBox(1, 3);
    ControlKey('X');
    EXPECT_EQ("67", Clipboard());
    EXPECT_EQ(L"58", BoxText());
}

TEST_F(InPlaceEdit, ControlASelectsAll) {
    OpenWith(L"1234");
    SelectInBox(2, 2);
    SentToBoxes sent;
    ControlKey('A');
    EXPECT_EQ((Events{"select 0 -1", "scroll"}), sent.Take());
    EXPECT_EQ(MAKELONG(0, 4), view.Edit().SendMessage(EM_GETSEL));
}

TEST_F(InPlaceEdit, ControlVPastesAndTheBoxGrows) {
    OpenWith(L"");
    SetClipboard(L"WWWWWWWW");
    ControlKey('V');
    EXPECT_EQ(L"WWWWWWWW", BoxText());
    const int wide = WidthOf(L"WWWWWWWW  ");
    ASSERT_GT(wide, 100);
    EXPECT_EQ(wide < 450 ? wide : 450, view.Edit().GetEditRect().Width());
}

TEST_F(InPlaceEdit, TheClipboardMessagesCopyCutAndClear) {
    OpenWith(L"1234");
    SetClipboard(L"before");
    SelectInBox(0, 2);
    view.Edit().SendMessage(WM_COPY);
    EXPECT_EQ("12", Clipboard());
    SelectInBox(2, 4);
    view.Edit().SendMessage(WM_CUT);
    EXPECT_EQ("34", Clipboard());
    EXPECT_EQ(L"12", BoxText());
    SelectInBox(0, 1);
    view.Edit().SendMessage(WM_CLEAR);
    EXPECT_EQ(L"2", BoxText());
    EXPECT_EQ("34", Clipboard());
}

TEST_F(InPlaceEdit, ClipboardKeysForAnotherWindowAreLeftAlone) {
    OpenWith(L"1234");
    SelectInBox(1, 3);
    SetClipboard(L"kept");
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    ::SetKeyboardState(keys);
    MSG msg = {};
    msg.hwnd = other.m_hWnd;
    msg.message = WM_KEYDOWN;
    msg.wParam = 'X';
    view.Edit().PreTranslateMessage(&msg);
    keys[VK_CONTROL] = 0;
    ::SetKeyboardState(keys);
    EXPECT_EQ("kept", Clipboard());
    EXPECT_EQ(L"1234", BoxText());
}

TEST_F(InPlaceEdit, LettersWithoutControlAreLetters) {
    OpenWith(L"12");
    SetClipboard(L"kept");
    Key('X');
    EXPECT_EQ("kept", Clipboard());
    ExpectOpenOn(a, L"x");
}

TEST_F(InPlaceEdit, SystemCharactersAreSwallowed) {
    OpenWith(L"12");
    MSG msg = {};
    msg.hwnd = view.Edit().m_hWnd;
    msg.message = WM_SYSCHAR;
    msg.wParam = L'f';
    EXPECT_TRUE(view.Edit().PreTranslateMessage(&msg));
    msg.message = WM_CHAR;
    EXPECT_FALSE(view.Edit().PreTranslateMessage(&msg));
}

TEST_F(InPlaceEdit, ADialogAroundItLeavesItAllKeys) {
    OpenWith(L"12");
    EXPECT_EQ(DLGC_WANTALLKEYS, view.Edit().SendMessage(WM_GETDLGCODE));
}

// ---- Texts ---------------------------------------------------------------------------------------------------------

TEST_F(InPlaceEdit, ChineseIsTypedStoredAndShown) {
    OpenWith(L"");
    Type(L"翼缘厚度");
    Key(VK_TAB);
    EXPECT_EQ((Events{"accept A 翼缘厚度", "changing A >翼缘厚度", "changed A >翼缘厚度", "end A", "tab", "pre B",
                      "query B"}),
              Take());
    EXPECT_EQ(L"翼缘厚度", a->GetText());
}

TEST_F(InPlaceEdit, CharactersAboveTheBasicPlaneComeThroughWhole) {
    const CString rare = L"\xD840\xDC0B\xD83D\xDE00";
    OpenWith(L"");
    Type(rare);
    EXPECT_EQ(rare, BoxText());
    Key(VK_TAB);
    EXPECT_EQ(rare, a->GetText());
    // And back into the box, and out again by Escape.
    Click(a);
    EXPECT_EQ(rare, BoxText());
    Type(L"x");
    Key(VK_ESCAPE);
    EXPECT_EQ(rare, a->GetText());
}

TEST_F(InPlaceEdit, APasteOfManyLinesStaysOneLine) {
    OpenWith(L"");
    SetClipboard(L"first\r\nsecond\r\nthird");
    ControlKey('V');
    const CString text = BoxText();
    EXPECT_EQ(0, text.Find(L"first"));
    EXPECT_EQ(-1, text.FindOneOf(L"\r\n"));
    Key(VK_TAB);
    EXPECT_EQ(text, a->GetText());
}

TEST_F(InPlaceEdit, TenThousandCharactersArePastedStoredAndEditedAgain) {
    OpenWith(L"");
    std::wstring pasted(10000, L'长');
    SetClipboard(pasted);
    ControlKey('V');
    EXPECT_EQ(10000, BoxText().GetLength());
    // The view's edge ends the rectangle; the window has never been wider than 200.
    EXPECT_EQ(500, view.Edit().GetEditRect().right);
    EXPECT_EQ(100, BoxRect().Width());
    Type(L"x");
    Key(VK_TAB);
    ASSERT_EQ(10001, a->GetText().GetLength());
    EXPECT_EQ(L'x', a->GetText().GetAt(10000));
    Paint();
    Click(a);
    EXPECT_EQ(a->GetText(), BoxText());
    SelectInBox(10001, 10001);
    ControlKey(VK_RIGHT);
    ExpectClosed();
}

// ---- The interface -------------------------------------------------------------------------------------------------

TEST_F(InPlaceEdit, ShowEditPlacesTheCaretByItsKey) {
    OpenWith(L"");
    CInPlaceEdit& box = view.Edit();
    box.ShowEdit(CRect(10, 20, 110, 40), L"1234", VK_F2, 0, L"");
    EXPECT_EQ(CRect(11, 20, 110, 40), BoxRect());
    EXPECT_EQ(MAKELONG(4, 4), box.SendMessage(EM_GETSEL));
    box.ShowEdit(CRect(10, 20, 110, 40), L"12", 0, 1, L"other");
    EXPECT_EQ(L"other", BoxText());
    // At the length of the start text, not of the one shown.
    EXPECT_EQ(MAKELONG(2, 2), box.SendMessage(EM_GETSEL));
    box.ShowEdit(CRect(10, 20, 110, 40), L"12", 'A', 0, L"other");
    EXPECT_EQ(MAKELONG(0, 2), box.SendMessage(EM_GETSEL));
    // Escape restores the start text, not the one shown.
    box.ShowEdit(CRect(10, 20, 110, 40), L"12", 0, 1, L"other");
    Key(VK_ESCAPE);
    EXPECT_EQ(L"12", a->GetText());
}

TEST_F(InPlaceEdit, EndEditHidesTheBoxAndDropsItsParameter) {
    OpenWith(L"12");
    view.onAccept = [](CTextParm*, const CString&) { return 0; };
    view.Edit().EndEdit();
    EXPECT_FALSE(view.Edit().IsWindowVisible());
    EXPECT_EQ(nullptr, view.Edit().GetTextParm());
}

TEST_F(InPlaceEdit, TheOperationsThatNothingCallsGiveTheirFixedAnswers) {
    CInPlaceEdit& box = view.Edit();
    EXPECT_EQ(1, box.CheckText(L"abc"));
    EXPECT_EQ(L"abc", box.FormatText(L"abc"));
    box.SetEditLimit(1, 2);
    OpenWith(L"12");
    box.SetEditLimit(1, 1);
    Type(L"345");
    EXPECT_EQ(L"345", BoxText());
}

TEST_F(InPlaceEdit, CallsOfABoxWithoutAWindowDoNothing) {
    CInPlaceEdit box;
    CWnd nowhere;
    EXPECT_EQ(0, box.Create(nullptr, nullptr, 1));
    EXPECT_EQ(0, box.Create(&nowhere, nullptr, 1));
    box.ShowEdit(CRect(1, 2, 3, 4), L"text", 0, 0, L"");
    CString text;
    EXPECT_EQ(1, box.GetEditText(text));
    EXPECT_EQ(L"text", text);
    EXPECT_EQ(1, box.SetEditText(L"x"));
    EXPECT_EQ(0, box.SetFont(nullptr, TRUE));
    box.EndEdit();
}

TEST_F(InPlaceEdit, ANullFontSelectsTheSystemFont) {
    OpenWith(L"12");
    view.Edit().SetFont(nullptr, FALSE);
    EXPECT_EQ(0, view.Edit().SendMessage(WM_GETFONT));
    // Growth measures in it nevertheless.
    Type(L"WWWWWWWWWW");
    EXPECT_GT(view.Edit().GetEditRect().Width(), 100);
}

TEST_F(InPlaceEdit, AFontIsHandedOnWithARepaintWhateverIsAsked) {
    OpenWith(L"12");
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(120, L"Arial"));
    SentToBoxes sent;
    for (const int redraw : {FALSE, TRUE, 7}) {
        view.Edit().SetFont(&font, redraw);
        EXPECT_EQ(Events{"font 1"}, sent.Take()) << redraw;
        EXPECT_EQ(font.GetSafeHandle(), sent.Font());
        EXPECT_EQ(font.GetSafeHandle(), reinterpret_cast<HGDIOBJ>(view.Edit().SendMessage(WM_GETFONT)));
    }
    view.Edit().SetFont(nullptr, FALSE);
    EXPECT_EQ(Events{"font 1"}, sent.Take());
}

// In a parent that is no parameter view the box makes no calls; it still gives the focus up.
struct LoneBox : InPlaceEdit {
    CInPlaceEdit box;

    void SetUp() override {
        InPlaceEdit::SetUp();
        ASSERT_NE(0, box.Create(&parent, nullptr, 9));
        box.ShowEdit(CRect(10, 310, 110, 330), L"12", 0, 0, L"");
        ASSERT_TRUE(HasFocus(box));
    }
    void TearDown() override {
        box.DestroyWindow();
        InPlaceEdit::TearDown();
    }
};

TEST_F(LoneBox, MakesNoCalls) {
    Key(VK_TAB);
    EXPECT_TRUE(HasFocus(box));
    Type(L"345");
    Key(VK_ESCAPE, false);
    CString text;
    box.GetWindowText(text);
    EXPECT_EQ(L"12", text);
    EXPECT_TRUE(HasFocus(parent));
    EXPECT_TRUE(box.IsWindowVisible());
    EXPECT_EQ(Events{}, Take());
}

// ---- The box that opens by a key -----------------------------------------------------------------------------------

TEST_F(InPlaceEdit, OpenedByAKeyItSelectsOrTypesByThatKey) {
    const struct {
        UINT key;
        const wchar_t* text;
        int start;
        int end;
    } rows[] = {
        {VK_LBUTTON, L"abc", 3, 3},                         // The caret at the end.
        {VK_RETURN, L"abc", 3, 3},  {VK_BACK, L"ab", 2, 2}, // At the end, and then the key itself.
        {VK_TAB, L"abc", 0, 3},                             // All selected.
        {VK_SPACE, L"abc", 0, 3},   {VK_LEFT, L"abc", 0, 3}, {VK_DOWN, L"abc", 0, 3},
        {41, L")", 1, 1}, // The first one above the arrows: it takes the place of the text.
        {31, L"abc", -1, -1},       {L'x', L"x", 1, 1},      {L'长', L"长", 1, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.key);
        const CRect rect(10, 310, 110, 335);
        CInPlaceEdit box(&parent, rect, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 9, 0, 0, L"abc", row.key);
        ASSERT_NE(nullptr, box.m_hWnd);
        EXPECT_EQ(static_cast<DWORD>(WS_EX_CLIENTEDGE), box.GetExStyle() & WS_EX_CLIENTEDGE);
        EXPECT_TRUE(HasFocus(box));
        EXPECT_EQ(9, box.GetDlgCtrlID());
        if (row.start >= 0) {
            CString text;
            box.GetWindowText(text);
            EXPECT_EQ(row.text, text);
            EXPECT_EQ(MAKELONG(row.start, row.end), box.SendMessage(EM_GETSEL));
        }
        box.DestroyWindow();
    }
}

TEST_F(InPlaceEdit, OpenedByAKeyItScrollsToTheCaretAndHasTheParentsFont) {
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(120, L"Arial"));
    other.SetFont(&font);
    const struct {
        UINT key;
        const char* select;
    } rows[] = {{VK_LBUTTON, "select 3 3"}, {VK_RETURN, "select 3 3"}, {VK_BACK, "select 3 3"},
                {VK_TAB, "select 0 -1"},    {VK_DOWN, "select 0 -1"},  {'x', "select 0 -1"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.key);
        SentToBoxes sent;
        CInPlaceEdit box(&other, CRect(0, 0, 50, 20), WS_CHILD | WS_VISIBLE, 9, 0, 0, L"abc", row.key);
        EXPECT_EQ((Events{"font 1", row.select, "scroll"}), sent.Take());
        EXPECT_EQ(font.GetSafeHandle(), reinterpret_cast<HGDIOBJ>(box.SendMessage(WM_GETFONT)));
        box.DestroyWindow();
    }
    other.SetFont(nullptr);
}

TEST_F(InPlaceEdit, OpenedByAKeyItEndsAtTheEdgesOfItsText) {
    const struct {
        UINT key;
        int caret;
        bool ends;
    } rows[] = {
        {VK_RIGHT, 3, true},  {VK_RIGHT, 2, false}, {VK_RIGHT, 0, false}, {VK_LEFT, 0, true},  {VK_LEFT, 1, false},
        {VK_LEFT, 3, false},  {VK_UP, 0, true},     {VK_UP, 1, true},     {VK_DOWN, 1, true},  {VK_DOWN, 3, true},
        {VK_PRIOR, 0, false}, {VK_PRIOR, 3, false}, {VK_NEXT, 0, false},  {VK_NEXT, 3, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.key) + " at " + std::to_string(row.caret));
        CInPlaceEdit box(&parent, CRect(10, 310, 110, 335), WS_CHILD | WS_VISIBLE, 9, 0, 0, L"abc", VK_RETURN);
        box.SendMessage(EM_SETSEL, static_cast<WPARAM>(row.caret), row.caret);
        Key(row.key);
        EXPECT_EQ(row.ends, HasFocus(parent));
        EXPECT_EQ(!row.ends, HasFocus(box));
        EXPECT_EQ(row.key, box.GetLastKey());
        box.DestroyWindow();
    }
}

TEST_F(InPlaceEdit, OpenedByAKeyItsArrowsEndWithoutControl) {
    CInPlaceEdit byKey(&parent, CRect(10, 310, 110, 335), WS_CHILD | WS_VISIBLE, 9, 0, 0, L"abc", VK_RETURN);
    Key(VK_UP);
    EXPECT_TRUE(HasFocus(parent));
    EXPECT_EQ(static_cast<unsigned>(VK_UP), byKey.GetLastKey());
    byKey.DestroyWindow();
    CInPlaceEdit byMouse(&parent, CRect(10, 310, 110, 335), WS_CHILD | WS_VISIBLE, 9, 0, 0, L"abc", VK_LBUTTON);
    Key(VK_UP);
    EXPECT_TRUE(HasFocus(byMouse));
    EXPECT_EQ(0u, byMouse.GetLastKey());
    byMouse.DestroyWindow();
}

} // namespace
