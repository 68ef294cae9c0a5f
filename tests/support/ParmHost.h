// A parameter view in a parent window, both writing down what happens to them, for tests on real windows.
// Layer 16: tests.
#pragma once

#include <TextParm.h>
#include <VectorViewParm.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using Events = std::vector<std::string>;

// UTF-16 to UTF-8, for readable comparisons.
std::string Narrow(const CString& text);

// The host's frame: "query A", "click 5 A", "click 1", "click 0", "dblclk".
class ParmParent : public CWnd {
public:
    Events* log = nullptr;
    std::function<void(NMVECTORPARM*)> onNotify;
    NMVECTORPARM last = {};
    WPARAM lastParam = 0;
    std::vector<int> wheels; // The deltas that reached the parent.

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

// The host's subclass: "pre A", "accept A 7", "changing A 10>7", "changed A 10>7", "end A", "tab A".
class ParmView : public CVectorViewParm {
public:
    Events* log = nullptr;
    std::function<void(CTextParm*)> onPre;
    std::function<int(CTextParm*, const CString&)> onAccept;
    std::function<void(CTextParm*, const CString&, CString&)> onChanging;
    std::function<void(CTextParm*)> onChanged;
    std::function<void(CTextParm*)> onEnd;
    std::function<void(UINT)> onDefault; // Called with the message, before the window's default.

    CInPlaceEdit& Edit() { return m_Edit; }
    CTextParm* EditParm() { return m_pEditParm; }
    CToolTipCtrl& Tip() { return m_ToolTip; }
    CDrawable* TipObject() { return m_pTipObject; }
    NMVECTORPARM& Record() { return m_Notify; }
    CVectorGraphic& Graphic() { return m_Graphic; }
    void EditAt(CTextParm* parm, const CRect& rect) { DoEditParm(parm, rect, 5, 6, L"seven"); }
    void Walk(CTextParm* current) { OnEditTabDown(current); }
    void BaseWalk(CTextParm* current) { CVectorViewParm::OnEditTabDown(current); }
    int Can(CTextParm* parm) { return CanParmEdit(parm); }

protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPreEditParm(CTextParm* parm, unsigned int& n, int& m, CString& text) override;
    int OnAcceptEditData(CTextParm* parm, CString text) override;
    void OnEditChanging(CTextParm* parm, CString& oldText, CString& newText) override;
    void OnEditChanged(CTextParm* parm, CString oldText, CString newText) override;
    void OnEndEdit(CTextParm* parm) override;
    void OnEditTabDown(CTextParm* current) override;

private:
    void Log(const char* what, CTextParm* parm, const std::string& more = "");
};

inline const Gdiplus::Color kColor(0xFFFFFFFF);

// The view fills (0, 0, 500, 300) of the parent, one drawing unit a pixel, the drawing's origin at its lower left.
class ParmViewFixture : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A parameter 20 units high in a box 100 wide, its top left corner at (x, y) in client pixels.
    CTextParm* AddParm(const wchar_t* name, const wchar_t* text, int x, int y);
    // Paints, so that texts have their height.
    void Paint();
    // Posts messages as the system posts them, then handles everything that waits.
    void Click(int x, int y);
    void Click(CTextParm* parm);
    void Key(UINT key, bool translated = true);
    void ControlKey(UINT key);
    void Type(const wchar_t* text);
    // `translated`: with PreTranslateMessage first, as a host's loop does.
    void Pump(bool translated = true);
    Events Take();

    bool IsBoxShown() { return view.Edit().GetSafeHwnd() != nullptr && view.Edit().IsWindowVisible(); }
    CString BoxText();
    // Client pixels of the view.
    CRect BoxRect();
    void SelectInBox(int start, int end) { view.Edit().SendMessage(EM_SETSEL, static_cast<WPARAM>(start), end); }
    bool HasFocus(const CWnd& wnd) { return wnd.m_hWnd != nullptr && ::GetFocus() == wnd.m_hWnd; }
    // The drawing as a stream.
    std::vector<BYTE> Store();

    Events log;
    ParmParent parent;
    ParmView view;
    CEdit other; // Another control of the host, to give the focus to.
};

struct ThreeParms : ParmViewFixture {
    CTextParm* a = nullptr;
    CTextParm* b = nullptr;
    CTextParm* c = nullptr;

    // Three parameters below one another, with a line between the second and the third in the list.
    void Three() {
        a = AddParm(L"A", L"10", 50, 50);
        b = AddParm(L"B", L"20", 50, 100);
        view.AddLine(CGePoint2d(300, 250), CGePoint2d(400, 250), kColor, 1);
        c = AddParm(L"C", L"30", 50, 150);
        Paint();
    }
    // Opens an edit of A with the text 7 in its box, and empties the log.
    void EditA() {
        Three();
        Click(a);
        ASSERT_TRUE(IsBoxShown());
        Type(L"7");
        ASSERT_EQ(L"7", BoxText());
        log.clear();
    }
    const Events storedA = {"accept A 7", "changing A 10>7", "changed A 10>7", "end A"};
    const Events openB = {"pre B", "query B"};

    void ExpectClosed() {
        EXPECT_FALSE(IsBoxShown());
        EXPECT_EQ(nullptr, view.EditParm());
        EXPECT_EQ(nullptr, view.Edit().GetTextParm());
    }
    void ExpectOpenOn(CTextParm* parm, const wchar_t* text) {
        EXPECT_TRUE(IsBoxShown());
        EXPECT_EQ(parm, view.EditParm());
        EXPECT_EQ(parm, view.Edit().GetTextParm());
        EXPECT_EQ(text, BoxText());
    }
};

inline Events operator+(Events left, const Events& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}
