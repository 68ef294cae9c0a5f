// The MFC layer's dialogs, data exchange, controls, menus and file dialog.
// Layer 16: tests.
#include "support/BoxAnswer.h"
#include "support/UiLanguage.h"

#include <afxcmn.h>
#include <afxdlgs.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <stdexcept>

namespace {

// A dialog that runs the test's script as soon as its loop runs.
class Asking : public CDialog {
public:
    explicit Asking(UINT id = 500) : CDialog(id) {}
    CString m_text;
    int m_number = 0;
    double m_real = 0.0;
    int m_check = 0, m_radio = -1, m_index = -1;
    CEdit m_edit;
    int m_changes = 0;
    std::function<void(Asking&)> m_script;
    std::function<void(Asking&)> m_onInit;

protected:
    void DoDataExchange(CDataExchange* pDX) override {
        CDialog::DoDataExchange(pDX);
        DDX_Control(pDX, 1001, m_edit);
        DDX_Text(pDX, 1001, m_text);
        DDV_MaxChars(pDX, m_text, 5);
        DDX_Text(pDX, 1002, m_number);
        DDV_MinMaxInt(pDX, m_number, -10, 100);
        DDX_Text(pDX, 1003, m_real);
        DDX_Check(pDX, 1004, m_check);
        DDX_Radio(pDX, 1005, m_radio);
        DDX_LBIndex(pDX, 1007, m_index);
    }
    BOOL OnInitDialog() override {
        SendDlgItemMessage(1007, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"a"));
        SendDlgItemMessage(1007, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"b"));
        CDialog::OnInitDialog();
        PostMessage(WM_APP);
        if (m_onInit) {
            m_onInit(*this);
        }
        return TRUE;
    }
    afx_msg LRESULT OnScript(WPARAM, LPARAM) {
        if (m_script) {
            m_script(*this);
        }
        return 0;
    }
    afx_msg void OnChange() { ++m_changes; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Asking, CDialog)
    ON_MESSAGE(WM_APP, &Asking::OnScript)
    ON_EN_CHANGE(1001, &Asking::OnChange)
END_MESSAGE_MAP()

std::string TextOf(Asking& dialog, int id) {
    CString text;
    dialog.GetDlgItemText(id, text);
    return Utf8(text);
}

} // namespace

TEST(DesktopAfxDialog, OkTakesTheValuesAndCancelDoesNot) {
    Asking dialog;
    dialog.m_text = L"旧";
    dialog.m_number = -3;
    dialog.m_real = 2.5;
    dialog.m_check = 1;
    dialog.m_radio = 1;
    dialog.m_index = 1;
    dialog.m_script = [](Asking& d) {
        EXPECT_EQ(TextOf(d, 1001), "旧");
        EXPECT_EQ(TextOf(d, 1002), "-3");
        EXPECT_EQ(TextOf(d, 1003), "2.5");
        EXPECT_EQ(d.IsDlgButtonChecked(1004), 1u);
        EXPECT_EQ(d.GetCheckedRadioButton(1005, 1006), 1006);
        EXPECT_EQ(d.SendDlgItemMessage(1007, LB_GETCURSEL), 1);
        EXPECT_EQ(d.m_changes, 0) << "filling the controls is no change by the user";
        d.SetDlgItemText(1001, L"新");
        EXPECT_EQ(d.m_changes, 1);
        d.SetDlgItemText(1002, L" 42 ");
        d.SetDlgItemText(1003, L"-1e3");
        d.CheckDlgButton(1004, 0);
        d.CheckRadioButton(1005, 1006, 1005);
        d.SendDlgItemMessage(1007, LB_SETCURSEL, 0);
        d.PostMessage(WM_COMMAND, IDOK);
    };
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(Utf8(dialog.m_text), "新");
    EXPECT_EQ(dialog.m_number, 42);
    EXPECT_EQ(dialog.m_real, -1000.0);
    EXPECT_EQ(dialog.m_check, 0);
    EXPECT_EQ(dialog.m_radio, 0);
    EXPECT_EQ(dialog.m_index, 0);

    Asking other;
    other.m_text = L"old";
    other.m_script = [](Asking& d) {
        d.SetDlgItemText(1001, L"new");
        d.PostMessage(WM_COMMAND, IDCANCEL);
    };
    EXPECT_EQ(other.DoModal(), IDCANCEL);
    EXPECT_EQ(Utf8(other.m_text), "old");
}

TEST(DesktopAfxDialog, ARefusedValueIsReportedAndTheDialogStays) {
    Asking dialog;
    BoxAnswer boxes({IDOK});
    std::vector<std::string> wrong = {"abc", "", "12x", "101", "99999999999"};
    size_t at = 0;
    dialog.m_script = [&](Asking& d) {
        for (; at < wrong.size(); ++at) {
            d.SetDlgItemText(1002, CString(wrong[at].c_str()));
            EXPECT_FALSE(d.UpdateData(TRUE)) << wrong[at];
            EXPECT_EQ(boxes.Texts().size(), at + 1);
        }
        d.SetDlgItemText(1002, L"7");
        d.SetDlgItemText(1003, L"1.5 m");
        EXPECT_FALSE(d.UpdateData(TRUE));
        d.SetDlgItemText(1003, L"1.5");
        EXPECT_TRUE(d.UpdateData(TRUE));
        d.EndDialog(77);
    };
    EXPECT_EQ(dialog.DoModal(), 77);
    ASSERT_EQ(boxes.Texts().size(), 6u);
    EXPECT_NE(boxes.Texts()[3].find("-10"), std::string::npos);
    EXPECT_NE(boxes.Texts()[3].find("100"), std::string::npos);
    EXPECT_EQ(dialog.m_number, 7);
    EXPECT_EQ(dialog.m_real, 1.5);
}

namespace {

// A dialog that takes one value from the first of its edit boxes.
template <class T>
class Taking : public CDialog {
public:
    Taking() : CDialog(500) {}
    T m_value = T(7);

protected:
    void DoDataExchange(CDataExchange* pDX) override { DDX_Text(pDX, 1001, m_value); }
};

// Enters each text in turn. The message for those that are refused, and focus and selection on the control.
template <class T>
void ExpectRefused(const char* prompt, std::vector<const wchar_t*> texts) {
    const UiLanguage english(UiLanguage::kEnglish);
    Taking<T> dialog;
    ASSERT_TRUE(dialog.Create(500, nullptr));
    dialog.ShowWindow(SW_SHOW);
    BoxAnswer boxes({IDOK});
    for (const wchar_t* text : texts) {
        SCOPED_TRACE(Utf8(text));
        dialog.SetDlgItemText(1001, text);
        ::SetFocus(::GetDlgItem(dialog, 1002));
        const size_t before = boxes.Texts().size();
        EXPECT_FALSE(dialog.UpdateData(TRUE));
        EXPECT_EQ(dialog.m_value, T(7)) << "the member stays";
        EXPECT_EQ(boxes.Texts().size(), before + 1);
        EXPECT_EQ(boxes.Texts().empty() ? "" : boxes.Texts().back(), prompt);
        EXPECT_EQ(::GetFocus(), ::GetDlgItem(dialog, 1001));
        DWORD start = 1, end = 0;
        dialog.SendDlgItemMessage(1001, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(start, 0u);
        EXPECT_EQ(end, ::wcslen(text));
    }
}

template <class T>
void ExpectTaken(std::vector<std::pair<const wchar_t*, T>> texts) {
    Taking<T> dialog;
    ASSERT_TRUE(dialog.Create(500, nullptr));
    for (const auto& each : texts) {
        SCOPED_TRACE(Utf8(each.first));
        dialog.SetDlgItemText(1001, each.first);
        EXPECT_TRUE(dialog.UpdateData(TRUE));
        EXPECT_EQ(dialog.m_value, each.second);
    }
}

constexpr char kNumber[] = "Please enter a number.";
constexpr char kWhole[] = "Please enter a whole number.";
constexpr char kPositive[] = "Please enter a positive whole number.";

} // namespace

TEST(DesktopAfxDialog, ARealIsAFiniteDecimalNumber) {
    ExpectRefused<double>(kNumber, {L"nan", L"NaN", L"-nan", L"inf", L"-inf", L"infinity", L"1e999", L"-1e999", L"0x10",
                                    L"0x1p3", L"1.#INF", L"1d5", L"1e", L"", L" ", L".", L"1 2", L"--1", L"１"});
    ExpectTaken<double>(
        {{L"1e308", 1e308}, {L"-.5", -0.5}, {L"5.", 5.0}, {L"+2E-3", 0.002}, {L" 42 ", 42.0}, {L"1e-999", 0.0}});
}

TEST(DesktopAfxDialog, AFloatIsInItsOwnRange) {
    ExpectRefused<float>(kNumber, {L"1e39", L"-3.5e38", L"1e999", L"nan", L"inf", L"0x10"});
    ExpectTaken<float>({{L"3.4e38", 3.4e38f}, {L"-1e-30", -1e-30f}, {L"1e-60", 0.0f}});
}

TEST(DesktopAfxDialog, AWholeNumberIsInTheRangeOfItsType) {
    ExpectRefused<int>(kWhole,
                       {L"2147483648", L"-2147483649", L"99999999999999999999", L"0x10", L"1.5", L"1e3", L"nan"});
    ExpectTaken<int>({{L"2147483647", 2147483647}, {L"-2147483648", -2147483647 - 1}, {L" +12 ", 12}});
    ExpectRefused<short>(kWhole, {L"32768", L"-32769", L"0x10"});
    ExpectTaken<short>({{L"32767", short{32767}}, {L"-32768", short{-32768}}});
    ExpectRefused<long>(kWhole, {L"2147483648", L"-2147483649"});
    ExpectTaken<long>({{L"-2147483648", -2147483647L - 1}});
    ExpectRefused<LONGLONG>(kWhole, {L"9223372036854775808", L"-9223372036854775809"});
    ExpectTaken<LONGLONG>({{L"9223372036854775807", 9223372036854775807LL}});
    ExpectRefused<UINT>(kPositive, {L"4294967296", L"-1", L"0x10"});
    ExpectTaken<UINT>({{L"4294967295", 4294967295u}, {L"0", 0u}});
    ExpectRefused<DWORD>(kPositive, {L"4294967296", L"-1"});
    ExpectTaken<DWORD>({{L"4294967295", 4294967295ul}});
    ExpectRefused<ULONGLONG>(kPositive, {L"18446744073709551616", L"-1"});
    ExpectTaken<ULONGLONG>({{L"18446744073709551615", 18446744073709551615ull}});
    ExpectRefused<BYTE>("Please enter a whole number from 0 to 255.", {L"256", L"-1", L"0x10", L"1e1"});
    ExpectTaken<BYTE>({{L"255", BYTE{255}}, {L"0", BYTE{0}}});
}

TEST(DesktopAfxDialog, TheMessagesAboutNumbersFollowTheLanguageOfTheInterface) {
    const UiLanguage chinese(UiLanguage::kChinese);
    Taking<double> dialog;
    ASSERT_TRUE(dialog.Create(500, nullptr));
    BoxAnswer boxes({IDOK});
    dialog.SetDlgItemText(1001, L"x");
    EXPECT_FALSE(dialog.UpdateData(TRUE));
    EXPECT_EQ(boxes.Texts(), std::vector<std::string>{"请输入一个数字。"});
}

TEST(DesktopAfxDialog, AMissingTemplateGivesMinusOne) {
    Asking dialog(9999);
    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_FALSE(dialog.Create(9999, nullptr));
    CDialog none;
    EXPECT_EQ(none.DoModal(), -1);
}

TEST(DesktopAfxDialog, ADialogCanEndItselfBeforeItShows) {
    Asking dialog;
    dialog.m_onInit = [](Asking& d) { d.EndDialog(5); };
    EXPECT_EQ(dialog.DoModal(), 5);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST(DesktopAfxDialog, EscapeCancelsThroughTheMessageLoop) {
    Asking dialog;
    dialog.m_script = [](Asking& d) { ::PostMessage(::GetDlgItem(d.m_hWnd, 1001), WM_KEYDOWN, VK_ESCAPE, 1); };
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST(DesktopAfxDialog, TheOwnerTakesNoInputWhileTheDialogIsShown) {
    CWnd owner;
    ASSERT_TRUE(
        owner.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP | WS_VISIBLE, CRect(100, 100, 500, 400), nullptr, 0));
    class Owned : public Asking {
    public:
        explicit Owned(CWnd* parent) { m_pParentWnd = parent; }
    } dialog(&owner);
    dialog.m_script = [&](Asking& d) {
        EXPECT_FALSE(owner.IsWindowEnabled());
        EXPECT_EQ(::GetWindow(d.m_hWnd, GW_OWNER), owner.m_hWnd);
        CRect place;
        d.GetWindowRect(&place);
        EXPECT_NEAR(place.CenterPoint().x, 300, 1);
        EXPECT_NEAR(place.CenterPoint().y, 250, 1);
        d.PostMessage(WM_COMMAND, IDOK);
    };
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST(DesktopAfxDialog, WhatOnInitDialogThrowsEndsTheDialog) {
    Asking dialog;
    BoxAnswer boxes({IDOK});
    dialog.m_onInit = [](Asking&) { AfxThrowResourceException(); };
    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_EQ(boxes.Texts().size(), 1u);
}

TEST(DesktopAfxDialog, WhateverOnInitDialogThrowsEndsTheDialog) {
    const std::function<void(Asking&)> throws[] = {
        [](Asking&) { throw std::runtime_error("x"); },
        [](Asking&) { throw std::bad_alloc(); },
        [](Asking&) { throw 5; },
    };
    for (const auto& each : throws) {
        Asking dialog;
        BoxAnswer boxes({IDOK});
        dialog.m_onInit = each;
        EXPECT_EQ(dialog.DoModal(), -1);
        EXPECT_EQ(boxes.Texts().size(), 1u);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
    }
}

namespace {

class OwnedBy : public Asking {
public:
    explicit OwnedBy(CWnd* parent) { m_pParentWnd = parent; }
};

} // namespace

TEST(DesktopAfxDialog, ADialogDestroyedWithItsOwnerGivesAbort) {
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(100, 100, 500, 400), nullptr, 0));
    OwnedBy dialog(&owner);
    dialog.m_script = [&](Asking&) { owner.DestroyWindow(); };
    // Ends a loop that does not end by itself: the timer has no window.
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 3000, [](HWND, UINT, UINT_PTR, DWORD) { ::PostQuitMessage(9); });
    EXPECT_EQ(dialog.DoModal(), IDABORT);
    ::KillTimer(nullptr, timer);
    MSG message = {};
    EXPECT_FALSE(::PeekMessage(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "it did not end by itself";
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(owner.m_hWnd, nullptr);
    // The same object can be shown again.
    dialog.m_script = [](Asking& d) { d.EndDialog(4); };
    dialog.m_onInit = nullptr;
    EXPECT_EQ(dialog.DoModal(), 4);
}

TEST(DesktopAfxDialog, ADialogWhoseOwnerIsDestroyedBeforeItShowsIsNotMade) {
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(100, 100, 500, 400), nullptr, 0));
    OwnedBy dialog(&owner);
    dialog.m_onInit = [&](Asking&) { owner.DestroyWindow(); };
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 3000, [](HWND, UINT, UINT_PTR, DWORD) { ::PostQuitMessage(9); });
    EXPECT_EQ(dialog.DoModal(), -1);
    ::KillTimer(nullptr, timer);
    MSG message = {};
    EXPECT_FALSE(::PeekMessage(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "it did not end by itself";
}

TEST(DesktopAfxDialog, AQuitReachesTheOuterLoopWithItsExitCode) {
    Asking dialog;
    dialog.m_script = [](Asking&) { ::PostQuitMessage(42); };
    EXPECT_EQ(dialog.DoModal(), -1);
    MSG message = {};
    ASSERT_TRUE(::PeekMessage(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 42u);
}

TEST(DesktopAfxDialog, AModelessDialogLivesUntilDestroyed) {
    Asking dialog;
    ASSERT_TRUE(dialog.Create(500, nullptr));
    ASSERT_NE(dialog.m_edit.m_hWnd, nullptr);
    EXPECT_EQ(dialog.GetDlgItem(1001), &dialog.m_edit);
    EXPECT_TRUE(dialog.DestroyWindow());
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.m_edit.m_hWnd, nullptr);
}

// --- controls, menus, file dialog --------------------------------------------------------------------------------

TEST(DesktopAfxControls, AnEditKeepsTextAndSelection) {
    CWnd frame;
    ASSERT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(0, 0, 300, 200), nullptr, 0));
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | ES_AUTOHSCROLL, CRect(0, 0, 100, 20), &frame, 4));
    edit.SetWindowText(L"abcdef");
    edit.SetSel(2, 4);
    int start = 0, end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 4);
    edit.ReplaceSel(L"X");
    CString text;
    edit.GetWindowText(text);
    EXPECT_EQ(Utf8(text), "abXef");
    edit.SetWindowText(L"");
    edit.GetWindowText(text);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(DesktopAfxControls, ASelectionInOneWordHasPlacesUpTo65534) {
    CWnd frame;
    ASSERT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(0, 0, 300, 200), nullptr, 0));
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | ES_MULTILINE, CRect(0, 0, 100, 20), &frame, 4));
    edit.SetLimitText(0);
    // In short lines: the edit control takes most of a minute for one of 60000 characters.
    CString text;
    for (int line = 0; line < 1000; ++line) {
        text += CString(L'a', 58) + L"\r\n";
    }
    edit.SetWindowText(text);
    const auto selected = [&] {
        DWORD start = 0, end = 0;
        edit.SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        return std::make_pair(start, end);
    };
    edit.SetSel(static_cast<DWORD>(MAKELONG(10, 40000)));
    EXPECT_EQ(selected(), std::make_pair(DWORD{10}, DWORD{40000}));
    edit.SetSel(static_cast<DWORD>(MAKELONG(33000, 34000)));
    EXPECT_EQ(selected(), std::make_pair(DWORD{33000}, DWORD{34000}));
    edit.SetSel(static_cast<DWORD>(MAKELONG(0, -1)));
    EXPECT_EQ(selected(), std::make_pair(DWORD{0}, DWORD{60000}));
    edit.SetSel(static_cast<DWORD>(MAKELONG(-1, 0)));
    EXPECT_EQ(selected().first, selected().second) << "no selection any more";
}

TEST(DesktopAfxControls, ATooltipKeepsItsTools) {
    CWnd frame;
    ASSERT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(0, 0, 300, 200), nullptr, 0));
    CToolTipCtrl tip;
    ASSERT_TRUE(tip.Create(&frame, 0));
    EXPECT_EQ(tip.GetToolCount(), 0);
    EXPECT_TRUE(tip.AddTool(&frame, L"first", CRect(0, 0, 300, 200), 1));
    EXPECT_EQ(tip.GetToolCount(), 1);
    tip.UpdateTipText(L"说明", &frame, 1);
    CString text;
    tip.GetText(text, &frame, 1);
    EXPECT_EQ(Utf8(text), "说明");
    tip.SetDelayTime(TTDT_INITIAL, 100);
    EXPECT_EQ(tip.GetDelayTime(TTDT_INITIAL), 100);
    tip.SetMaxTipWidth(120);
    EXPECT_EQ(tip.GetMaxTipWidth(), 120);
    tip.DelTool(&frame, 1);
    EXPECT_EQ(tip.GetToolCount(), 0);
}

TEST(DesktopAfxControls, AStatusBarKeepsTheTextsOfItsParts) {
    CWnd frame;
    ASSERT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(0, 0, 300, 200), nullptr, 0));
    CStatusBarCtrl bar;
    ASSERT_TRUE(bar.Create(WS_CHILD, CRect(0, 0, 0, 0), &frame, 5));
    int parts[] = {100, -1};
    ASSERT_TRUE(bar.SetParts(2, parts));
    bar.SetText(L"左", 0, 0);
    bar.SetText(L"right", 1, 0);
    EXPECT_EQ(Utf8(bar.GetText(0)), "左");
    EXPECT_EQ(Utf8(bar.GetText(1)), "right");
}

TEST(DesktopAfxMenu, ALoadedMenuHasItsItems) {
    CMenu menu;
    ASSERT_TRUE(menu.LoadMenu(600));
    ASSERT_EQ(menu.GetMenuItemCount(), 1);
    CMenu* popup = menu.GetSubMenu(0);
    ASSERT_NE(popup, nullptr);
    EXPECT_EQ(menu.GetSubMenu(0), popup);
    EXPECT_EQ(popup->GetMenuItemID(1), 32791u);
    CString text;
    popup->GetMenuString(32790, text, MF_BYCOMMAND);
    EXPECT_EQ(Utf8(text), "甲");
    popup->CheckMenuItem(32790, MF_CHECKED);
    EXPECT_NE(popup->GetMenuState(32790, MF_BYCOMMAND) & MF_CHECKED, 0u);
    EXPECT_FALSE(CMenu().LoadMenu(999));
    const HMENU handle = menu.m_hMenu;
    EXPECT_TRUE(menu.DestroyMenu());
    EXPECT_FALSE(::IsMenu(handle));
}

TEST(DesktopAfxFileDialog, WhateverItsHookThrowsIsReportedAndStopsThere) {
    class Throwing : public CFileDialog {
    public:
        Throwing() : CFileDialog(TRUE, nullptr, nullptr, OFN_HIDEREADONLY, L"All|*.*||") {}
        int m_thrown = 0;

    protected:
        void OnInitDone() override {
            ++m_thrown;
            throw 5;
        }
        void OnFolderChange() override {
            ++m_thrown;
            throw std::runtime_error("x");
        }
    } dialog;
    BoxAnswer boxes({IDOK});
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 30, [](HWND, UINT, UINT_PTR, DWORD) {
        HWND window = nullptr;
        while ((window = ::FindWindowEx(nullptr, window, L"#32770", nullptr)) != nullptr) {
            if (::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId() &&
                ::GetDlgItem(window, 0x47c) != nullptr) {
                ::PostMessage(window, WM_COMMAND, IDCANCEL, 0);
            }
        }
    });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    ::KillTimer(nullptr, timer);
    EXPECT_GE(dialog.m_thrown, 1);
    EXPECT_EQ(boxes.Texts().size(), static_cast<size_t>(dialog.m_thrown));
}

TEST(DesktopAfxFileDialog, TheChosenNameComesBackInParts) {
    TCHAR temp[MAX_PATH] = {};
    ::GetTempPath(MAX_PATH, temp);
    CString path = CString(temp) + L"afx 图.abc";
    CFile(path, CFile::modeCreate | CFile::modeWrite).Close();
    static CString typed;
    typed = path;
    CFileDialog dialog(TRUE, nullptr, nullptr, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, L"All|*.*||", nullptr, 0, TRUE);
    EXPECT_EQ(dialog.m_ofn.Flags & (OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT), 6u);
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 30, [](HWND, UINT, UINT_PTR, DWORD) {
        // The name box of the dialog that is shown, and its button.
        HWND window = nullptr;
        while ((window = ::FindWindowEx(nullptr, window, L"#32770", nullptr)) != nullptr) {
            if (::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId() &&
                ::GetDlgItem(window, 0x47c) != nullptr) {
                ::SetDlgItemText(window, 0x47c, typed);
                ::PostMessage(window, WM_COMMAND, IDOK, 0);
            }
        }
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    ::KillTimer(nullptr, timer);
    EXPECT_EQ(Utf8(dialog.GetFileName()), "afx 图.abc");
    EXPECT_EQ(Utf8(dialog.GetFileExt()), "abc");
    EXPECT_EQ(Utf8(dialog.GetFileTitle()), "afx 图");
    EXPECT_EQ(Utf8(dialog.GetPathName()).substr(1, 2), ":\\");
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    CFile::Remove(path);
}
