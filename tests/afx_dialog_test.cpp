// The MFC layer's dialogs, data exchange, controls, menus and file dialog.
// Layer 14: tests.
#include "support/BoxAnswer.h"

#include <afxcmn.h>
#include <afxdlgs.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

// A dialog that does what the test says as soon as its loop runs.
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
        if (m_onInit)
            m_onInit(*this);
        return TRUE;
    }
    afx_msg LRESULT OnScript(WPARAM, LPARAM) {
        if (m_script)
            m_script(*this);
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

TEST(DesktopAfxDialog, ARefusedValueIsToldAndTheDialogStays) {
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

TEST(DesktopAfxDialog, TheOwnerTakesNoInputWhileTheDialogStands) {
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
        // The name box of the dialog that stands, and its button.
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
