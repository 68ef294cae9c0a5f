// The MFC layer's message maps: every window message row with its parameters, commands, notifications, reflection.
// Layer 16: tests.
#include "support/BoxAnswer.h"

#include <afxcmn.h>
#include <afxext.h>

#include <gtest/gtest.h>

namespace {

constexpr RECT kPlace = {10, 20, 210, 120};
UINT g_registered = 0;

template <class... Values>
std::string Line(const char* format, Values... values) {
    char text[200];
    std::snprintf(text, sizeof(text), format, values...);
    return text;
}

long long Id(const CWnd* window) {
    return window == nullptr ? 0 : ::GetDlgCtrlID(window->m_hWnd);
}

// Answers every row with a line and a result of its own, and does nothing else.
class Probe : public CWnd {
public:
    std::string m_line;
    bool m_on = false; // before and after the test the window's life is not recorded

protected:
    LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
        return m_on || message == WM_NCDESTROY ? CWnd::WindowProc(message, w, l) : DefWindowProc(message, w, l);
    }
#define SAY(...) m_line = Line(__VA_ARGS__)
    afx_msg int OnCreate(LPCREATESTRUCT cs) {
        return SAY("create %p", static_cast<void*>(cs)), 41;
    }
    afx_msg BOOL OnNcCreate(LPCREATESTRUCT cs) {
        return SAY("nccreate %p", static_cast<void*>(cs)), 42;
    }
    afx_msg void OnDestroy() {
        SAY("destroy");
    }
    afx_msg void OnMove(int x, int y) {
        SAY("move %d %d", x, y);
    }
    afx_msg void OnSize(UINT t, int cx, int cy) {
        SAY("size %u %d %d", t, cx, cy);
    }
    afx_msg void OnActivate(UINT s, CWnd* w, BOOL m) {
        SAY("activate %u %lld %d", s, Id(w), m);
    }
    afx_msg void OnActivateApp(BOOL a, DWORD t) {
        SAY("activateapp %d %lu", a, t);
    }
    afx_msg void OnSetFocus(CWnd* w) {
        SAY("setfocus %lld", Id(w));
    }
    afx_msg void OnKillFocus(CWnd* w) {
        SAY("killfocus %lld", Id(w));
    }
    afx_msg void OnEnable(BOOL b) {
        SAY("enable %d", b);
    }
    afx_msg void OnShowWindow(BOOL b, UINT s) {
        SAY("show %d %u", b, s);
    }
    afx_msg void OnClose() {
        SAY("close");
    }
    afx_msg BOOL OnQueryEndSession() {
        return SAY("queryend"), 43;
    }
    afx_msg void OnEndSession(BOOL b) {
        SAY("endsession %d", b);
    }
    afx_msg BOOL OnQueryOpen() {
        return SAY("queryopen"), 44;
    }
    afx_msg void OnCancelMode() {
        SAY("cancelmode");
    }
    afx_msg void OnChildActivate() {
        SAY("childactivate");
    }
    afx_msg void OnParentNotify(UINT m, LPARAM l) {
        SAY("parentnotify %u %lld", m, static_cast<long long>(l));
    }
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* p) {
        SAY("minmax %p", static_cast<void*>(p));
    }
    afx_msg void OnWindowPosChanging(WINDOWPOS* p) {
        SAY("poschanging %p", static_cast<void*>(p));
    }
    afx_msg void OnWindowPosChanged(WINDOWPOS* p) {
        SAY("poschanged %p", static_cast<void*>(p));
    }
    afx_msg void OnStyleChanging(int t, LPSTYLESTRUCT p) {
        SAY("stylechanging %d %p", t, static_cast<void*>(p));
    }
    afx_msg void OnStyleChanged(int t, LPSTYLESTRUCT p) {
        SAY("stylechanged %d %p", t, static_cast<void*>(p));
    }
    afx_msg void OnSettingChange(UINT f, LPCTSTR s) {
        SAY("setting %u %S", f, s);
    }
    afx_msg void OnSysColorChange() {
        SAY("syscolor");
    }
    afx_msg void OnEnterSizeMove() {
        SAY("entersize");
    }
    afx_msg void OnExitSizeMove() {
        SAY("exitsize");
    }
    afx_msg void OnPaint() {
        SAY("paint");
    }
    afx_msg BOOL OnEraseBkgnd(CDC* dc) {
        return SAY("erase %p", static_cast<void*>(dc->m_hDC)), 45;
    }
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* w, UINT kind) {
        SAY("ctlcolor %p %lld %u", static_cast<void*>(dc->m_hDC), Id(w), kind);
        return reinterpret_cast<HBRUSH>(46);
    }
    afx_msg void OnDrawItem(int i, LPDRAWITEMSTRUCT p) {
        SAY("drawitem %d %p", i, static_cast<void*>(p));
    }
    afx_msg void OnMeasureItem(int i, LPMEASUREITEMSTRUCT p) {
        SAY("measureitem %d %p", i, static_cast<void*>(p));
    }
    afx_msg void OnDeleteItem(int i, LPDELETEITEMSTRUCT p) {
        SAY("deleteitem %d %p", i, static_cast<void*>(p));
    }
    afx_msg int OnCompareItem(int i, LPCOMPAREITEMSTRUCT p) {
        return SAY("compareitem %d %p", i, static_cast<void*>(p)), -1;
    }
    afx_msg void OnNcPaint() {
        SAY("ncpaint");
    }
    afx_msg BOOL OnNcActivate(BOOL b) {
        return SAY("ncactivate %d", b), 47;
    }
    afx_msg void OnNcCalcSize(BOOL b, NCCALCSIZE_PARAMS* p) {
        SAY("nccalc %d %p", b, static_cast<void*>(p));
    }
#define MOUSE(name)                                                                                                    \
    afx_msg void On##name(UINT f, CPoint p) {                                                                          \
        SAY(#name " %u %ld %ld", f, p.x, p.y);                                                                         \
    }
    MOUSE(MouseMove)
    MOUSE(LButtonDown)
    MOUSE(LButtonUp)
    MOUSE(LButtonDblClk)
    MOUSE(RButtonDown)
    MOUSE(RButtonUp)
    MOUSE(RButtonDblClk)
    MOUSE(MButtonDown)
    MOUSE(MButtonUp)
    MOUSE(MButtonDblClk)
    MOUSE(NcMouseMove)
    MOUSE(NcLButtonDown)
    MOUSE(NcLButtonUp)
    MOUSE(NcLButtonDblClk)
    afx_msg BOOL OnMouseWheel(UINT f, short d, CPoint p) {
        return SAY("wheel %u %d %ld %ld", f, d, p.x, p.y), 48;
    }
    afx_msg void OnMouseLeave() {
        SAY("leave");
    }
    afx_msg BOOL OnSetCursor(CWnd* w, UINT h, UINT m) {
        return SAY("setcursor %lld %u %u", Id(w), h, m), 49;
    }
    afx_msg int OnMouseActivate(CWnd* w, UINT h, UINT m) {
        return SAY("mouseactivate %lld %u %u", Id(w), h, m), 3;
    }
    afx_msg void OnCaptureChanged(CWnd* w) {
        SAY("capture %lld", Id(w));
    }
    afx_msg void OnContextMenu(CWnd* w, CPoint p) {
        SAY("context %lld %ld %ld", Id(w), p.x, p.y);
    }
    afx_msg LRESULT OnNcHitTest(CPoint p) {
        return SAY("hittest %ld %ld", p.x, p.y), 50;
    }
    afx_msg void OnDropFiles(HDROP h) {
        SAY("drop %p", static_cast<void*>(h));
    }
#define KEY(name)                                                                                                      \
    afx_msg void On##name(UINT c, UINT r, UINT f) {                                                                    \
        SAY(#name " %u %u %u", c, r, f);                                                                               \
    }
    KEY(KeyDown)
    KEY(KeyUp)
    KEY(Char)
    KEY(DeadChar)
    KEY(SysKeyDown)
    KEY(SysKeyUp)
    KEY(SysChar)
    KEY(SysDeadChar)
    afx_msg UINT OnGetDlgCode() {
        return SAY("dlgcode"), DLGC_WANTALLKEYS;
    }
    afx_msg void OnSysCommand(UINT i, LPARAM l) {
        SAY("syscommand %u %lld", i, static_cast<long long>(l));
    }
    afx_msg void OnTimer(UINT_PTR i) {
        SAY("timer %llu", static_cast<unsigned long long>(i));
    }
    afx_msg void OnHScroll(UINT c, UINT p, CScrollBar* b) {
        SAY("hscroll %u %u %lld", c, p, Id(b));
    }
    afx_msg void OnVScroll(UINT c, UINT p, CScrollBar* b) {
        SAY("vscroll %u %u %lld", c, p, Id(b));
    }
    afx_msg void OnInitMenu(CMenu* m) {
        SAY("initmenu %p", static_cast<void*>(m->m_hMenu));
    }
    afx_msg void OnInitMenuPopup(CMenu* m, UINT i, BOOL s) {
        SAY("initpopup %p %u %d", static_cast<void*>(m->m_hMenu), i, s);
    }
    afx_msg void OnMenuSelect(UINT i, UINT f, HMENU m) {
        SAY("menuselect %u %u %p", i, f, static_cast<void*>(m));
    }
    afx_msg LRESULT OnMenuChar(UINT c, UINT f, CMenu* m) {
        return SAY("menuchar %u %u %p", c, f, static_cast<void*>(m->m_hMenu)), 51;
    }
    afx_msg void OnEnterMenuLoop(BOOL b) {
        SAY("entermenu %d", b);
    }
    afx_msg void OnExitMenuLoop(BOOL b) {
        SAY("exitmenu %d", b);
    }
    afx_msg void OnEnterIdle(UINT y, CWnd* w) {
        SAY("enteridle %u %lld", y, Id(w));
    }
    afx_msg BOOL OnHelpInfo(HELPINFO* p) {
        return SAY("help %p", static_cast<void*>(p)), 52;
    }
    afx_msg BOOL OnCopyData(CWnd* w, COPYDATASTRUCT* p) {
        return SAY("copydata %lld %lu", Id(w), p->cbData), 53;
    }
    afx_msg void OnCut() {
        SAY("cut");
    }
    afx_msg void OnCopy() {
        SAY("copy");
    }
    afx_msg void OnPaste() {
        SAY("paste");
    }
    afx_msg void OnClear() {
        SAY("clear");
    }
    afx_msg LRESULT OnAny(WPARAM w, LPARAM l) {
        return SAY("any"), static_cast<LRESULT>(w) - l;
    }
    DECLARE_MESSAGE_MAP()
};

// clang-format off
BEGIN_MESSAGE_MAP(Probe, CWnd)
    ON_WM_CREATE()
    ON_WM_NCCREATE()
    ON_WM_DESTROY()
    ON_WM_MOVE()
    ON_WM_SIZE()
    ON_WM_ACTIVATE()
    ON_WM_ACTIVATEAPP()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_ENABLE()
    ON_WM_SHOWWINDOW()
    ON_WM_CLOSE()
    ON_WM_QUERYENDSESSION()
    ON_WM_ENDSESSION()
    ON_WM_QUERYOPEN()
    ON_WM_CANCELMODE()
    ON_WM_CHILDACTIVATE()
    ON_WM_PARENTNOTIFY()
    ON_WM_GETMINMAXINFO()
    ON_WM_WINDOWPOSCHANGING()
    ON_WM_WINDOWPOSCHANGED()
    ON_WM_STYLECHANGING()
    ON_WM_STYLECHANGED()
    ON_WM_SETTINGCHANGE()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_ENTERSIZEMOVE()
    ON_WM_EXITSIZEMOVE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_CTLCOLOR()
    ON_WM_DRAWITEM()
    ON_WM_MEASUREITEM()
    ON_WM_DELETEITEM()
    ON_WM_COMPAREITEM()
    ON_WM_NCPAINT()
    ON_WM_NCACTIVATE()
    ON_WM_NCCALCSIZE()
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_RBUTTONDOWN()
    ON_WM_RBUTTONUP()
    ON_WM_RBUTTONDBLCLK()
    ON_WM_MBUTTONDOWN()
    ON_WM_MBUTTONUP()
    ON_WM_MBUTTONDBLCLK()
    ON_WM_MOUSEWHEEL()
    ON_WM_MOUSELEAVE()
    ON_WM_SETCURSOR()
    ON_WM_MOUSEACTIVATE()
    ON_WM_CAPTURECHANGED()
    ON_WM_CONTEXTMENU()
    ON_WM_NCHITTEST()
    ON_WM_NCMOUSEMOVE()
    ON_WM_NCLBUTTONDOWN()
    ON_WM_NCLBUTTONUP()
    ON_WM_NCLBUTTONDBLCLK()
    ON_WM_DROPFILES()
    ON_WM_KEYDOWN()
    ON_WM_KEYUP()
    ON_WM_CHAR()
    ON_WM_DEADCHAR()
    ON_WM_SYSKEYDOWN()
    ON_WM_SYSKEYUP()
    ON_WM_SYSCHAR()
    ON_WM_SYSDEADCHAR()
    ON_WM_GETDLGCODE()
    ON_WM_SYSCOMMAND()
    ON_WM_TIMER()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_INITMENU()
    ON_WM_INITMENUPOPUP()
    ON_WM_MENUSELECT()
    ON_WM_MENUCHAR()
    ON_WM_ENTERMENULOOP()
    ON_WM_EXITMENULOOP()
    ON_WM_ENTERIDLE()
    ON_WM_HELPINFO()
    ON_WM_COPYDATA()
    ON_WM_CUT()
    ON_WM_COPY()
    ON_WM_PASTE()
    ON_WM_CLEAR()
    ON_MESSAGE(WM_APP + 3, &Probe::OnAny)
    ON_REGISTERED_MESSAGE(g_registered, &Probe::OnAny)
END_MESSAGE_MAP()
// clang-format on

class DesktopAfxMessageMap : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_frame.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, kPlace, nullptr, 0));
        ASSERT_TRUE(m_probe.Create(nullptr, L"", WS_CHILD, kPlace, &m_frame, 7));
        ASSERT_TRUE(m_bar.Create(WS_CHILD, kPlace, &m_frame, 9));
        m_probe.m_on = true;
    }
    void TearDown() override { m_probe.m_on = false; }

    // The line and the result of a message, sent straight to the window's procedure.
    void Expect(const std::string& line, LRESULT result, UINT message, WPARAM w = 0, LPARAM l = 0) {
        m_probe.m_line.clear();
        EXPECT_EQ(AfxCallWndProc(&m_probe, m_probe.m_hWnd, message, w, l), result) << line;
        EXPECT_EQ(m_probe.m_line, line);
    }
    template <class T>
    static LPARAM L(T pointer) {
        return reinterpret_cast<LPARAM>(pointer);
    }
    template <class T>
    static WPARAM W(T pointer) {
        return reinterpret_cast<WPARAM>(pointer);
    }
    static std::string P(const void* pointer) { return Line("%p", pointer); }

    CWnd m_frame;
    Probe m_probe;
    CScrollBar m_bar;
};

} // namespace

TEST_F(DesktopAfxMessageMap, LifePlaceAndFocusRowsHandTheirParametersOver) {
    CREATESTRUCT cs = {};
    Expect("create " + P(&cs), 41, WM_CREATE, 0, L(&cs));
    Expect("nccreate " + P(&cs), 42, WM_NCCREATE, 0, L(&cs));
    Expect("destroy", 0, WM_DESTROY);
    Expect("move -3 -4", 0, WM_MOVE, 0, MAKELPARAM(-3, -4));
    Expect("size 2 300 40000", 0, WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(300, 40000));
    Expect("activate 2 9 1", 0, WM_ACTIVATE, MAKEWPARAM(WA_CLICKACTIVE, 1), L(m_bar.m_hWnd));
    Expect("activateapp 1 77", 0, WM_ACTIVATEAPP, 1, 77);
    Expect("setfocus 9", 0, WM_SETFOCUS, W(m_bar.m_hWnd));
    Expect("killfocus 0", 0, WM_KILLFOCUS);
    Expect("enable 1", 0, WM_ENABLE, 1);
    Expect("show 1 3", 0, WM_SHOWWINDOW, 1, 3);
    Expect("close", 0, WM_CLOSE);
    Expect("queryend", 43, WM_QUERYENDSESSION);
    Expect("endsession 1", 0, WM_ENDSESSION, 1);
    Expect("queryopen", 44, WM_QUERYOPEN);
    Expect("cancelmode", 0, WM_CANCELMODE);
    Expect("childactivate", 0, WM_CHILDACTIVATE);
    Expect("parentnotify 513 8", 0, WM_PARENTNOTIFY, WM_LBUTTONDOWN, 8);
    MINMAXINFO minMax = {};
    Expect("minmax " + P(&minMax), 0, WM_GETMINMAXINFO, 0, L(&minMax));
    WINDOWPOS pos = {};
    Expect("poschanging " + P(&pos), 0, WM_WINDOWPOSCHANGING, 0, L(&pos));
    Expect("poschanged " + P(&pos), 0, WM_WINDOWPOSCHANGED, 0, L(&pos));
    STYLESTRUCT style = {};
    Expect("stylechanging -16 " + P(&style), 0, WM_STYLECHANGING, static_cast<WPARAM>(GWL_STYLE), L(&style));
    Expect("stylechanged -20 " + P(&style), 0, WM_STYLECHANGED, static_cast<WPARAM>(GWL_EXSTYLE), L(&style));
    Expect("setting 4 abc", 0, WM_SETTINGCHANGE, 4, L(L"abc"));
    Expect("syscolor", 0, WM_SYSCOLORCHANGE);
    Expect("entersize", 0, WM_ENTERSIZEMOVE);
    Expect("exitsize", 0, WM_EXITSIZEMOVE);
}

TEST_F(DesktopAfxMessageMap, PaintingRowsHandTheirParametersOver) {
    CClientDC dc(&m_frame);
    Expect("paint", 0, WM_PAINT);
    Expect("erase " + P(dc.m_hDC), 45, WM_ERASEBKGND, W(dc.m_hDC));
    const UINT messages[] = {WM_CTLCOLORMSGBOX, WM_CTLCOLOREDIT,      WM_CTLCOLORLISTBOX, WM_CTLCOLORBTN,
                             WM_CTLCOLORDLG,    WM_CTLCOLORSCROLLBAR, WM_CTLCOLORSTATIC};
    for (UINT kind = 0; kind < 7; ++kind) {
        Expect("ctlcolor " + P(dc.m_hDC) + " 9 " + std::to_string(kind), 46, messages[kind], W(dc.m_hDC),
               L(m_bar.m_hWnd));
    }
    DRAWITEMSTRUCT draw = {};
    Expect("drawitem 9 " + P(&draw), TRUE, WM_DRAWITEM, 9, L(&draw));
    MEASUREITEMSTRUCT measure = {};
    Expect("measureitem 9 " + P(&measure), TRUE, WM_MEASUREITEM, 9, L(&measure));
    DELETEITEMSTRUCT gone = {};
    Expect("deleteitem 9 " + P(&gone), TRUE, WM_DELETEITEM, 9, L(&gone));
    COMPAREITEMSTRUCT compare = {};
    Expect("compareitem 9 " + P(&compare), -1, WM_COMPAREITEM, 9, L(&compare));
    Expect("ncpaint", 0, WM_NCPAINT, 1);
    Expect("ncactivate 1", 47, WM_NCACTIVATE, 1);
    NCCALCSIZE_PARAMS calc = {};
    Expect("nccalc 1 " + P(&calc), 0, WM_NCCALCSIZE, 1, L(&calc));
}

TEST_F(DesktopAfxMessageMap, MouseRowsHandTheirParametersOver) {
    const struct {
        UINT message;
        const char* name;
    } rows[] = {{WM_MOUSEMOVE, "MouseMove"},         {WM_LBUTTONDOWN, "LButtonDown"},
                {WM_LBUTTONUP, "LButtonUp"},         {WM_LBUTTONDBLCLK, "LButtonDblClk"},
                {WM_RBUTTONDOWN, "RButtonDown"},     {WM_RBUTTONUP, "RButtonUp"},
                {WM_RBUTTONDBLCLK, "RButtonDblClk"}, {WM_MBUTTONDOWN, "MButtonDown"},
                {WM_MBUTTONUP, "MButtonUp"},         {WM_MBUTTONDBLCLK, "MButtonDblClk"},
                {WM_NCMOUSEMOVE, "NcMouseMove"},     {WM_NCLBUTTONDOWN, "NcLButtonDown"},
                {WM_NCLBUTTONUP, "NcLButtonUp"},     {WM_NCLBUTTONDBLCLK, "NcLButtonDblClk"}};
    for (const auto& row : rows) {
        Expect(std::string(row.name) + " 9 -5 300", 0, row.message, MK_LBUTTON | MK_CONTROL, MAKELPARAM(-5, 300));
    }
    Expect("wheel 8 -120 -1 2", 48, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, -120), MAKELPARAM(-1, 2));
    Expect("leave", 0, WM_MOUSELEAVE);
    Expect("setcursor 9 1 512", 49, WM_SETCURSOR, W(m_bar.m_hWnd), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    Expect("mouseactivate 9 1 513", 3, WM_MOUSEACTIVATE, W(m_bar.m_hWnd), MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
    Expect("capture 9", 0, WM_CAPTURECHANGED, 0, L(m_bar.m_hWnd));
    Expect("context 9 -1 -1", 0, WM_CONTEXTMENU, W(m_bar.m_hWnd), -1);
    Expect("hittest -7 8", 50, WM_NCHITTEST, 0, MAKELPARAM(-7, 8));
    Expect("drop " + P(&m_frame), 0, WM_DROPFILES, W(&m_frame));
}

TEST_F(DesktopAfxMessageMap, KeyTimerScrollAndMenuRowsHandTheirParametersOver) {
    const struct {
        UINT message;
        const char* name;
    } rows[] = {{WM_KEYDOWN, "KeyDown"},
                {WM_KEYUP, "KeyUp"},
                {WM_CHAR, "Char"},
                {WM_DEADCHAR, "DeadChar"},
                {WM_SYSKEYDOWN, "SysKeyDown"},
                {WM_SYSKEYUP, "SysKeyUp"},
                {WM_SYSCHAR, "SysChar"},
                {WM_SYSDEADCHAR, "SysDeadChar"}};
    for (const auto& row : rows) {
        Expect(std::string(row.name) + " 65 2 49182", 0, row.message, 'A', static_cast<LPARAM>(0xC01E0002u));
    }
    Expect("dlgcode", DLGC_WANTALLKEYS, WM_GETDLGCODE);
    Expect("syscommand 61472 5", 0, WM_SYSCOMMAND, SC_MINIMIZE, 5);
    Expect("timer 4294967297", 0, WM_TIMER, 4294967297u);
    Expect("hscroll 5 60000 9", 0, WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 60000), L(m_bar.m_hWnd));
    Expect("vscroll 1 0 0", 0, WM_VSCROLL, MAKEWPARAM(SB_LINEDOWN, 0));
    CMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    Expect("initmenu " + P(menu.m_hMenu), 0, WM_INITMENU, W(menu.m_hMenu));
    Expect("initpopup " + P(menu.m_hMenu) + " 3 1", 0, WM_INITMENUPOPUP, W(menu.m_hMenu), MAKELPARAM(3, 1));
    Expect("menuselect 4 128 " + P(menu.m_hMenu), 0, WM_MENUSELECT, MAKEWPARAM(4, MF_HILITE), L(menu.m_hMenu));
    Expect("menuchar 97 16 " + P(menu.m_hMenu), 51, WM_MENUCHAR, MAKEWPARAM('a', MF_POPUP), L(menu.m_hMenu));
    Expect("entermenu 1", 0, WM_ENTERMENULOOP, 1);
    Expect("exitmenu 1", 0, WM_EXITMENULOOP, 1);
    Expect("enteridle 0 9", 0, WM_ENTERIDLE, MSGF_DIALOGBOX, L(m_bar.m_hWnd));
    HELPINFO help = {};
    Expect("help " + P(&help), 52, WM_HELP, 0, L(&help));
    COPYDATASTRUCT data = {1, 4, nullptr};
    Expect("copydata 9 4", 53, WM_COPYDATA, W(m_bar.m_hWnd), L(&data));
    Expect("cut", 0, WM_CUT);
    Expect("copy", 0, WM_COPY);
    Expect("paste", 0, WM_PASTE);
    Expect("clear", 0, WM_CLEAR);
    Expect("any", 30, WM_APP + 3, 50, 20);
    g_registered = ::RegisterWindowMessage(L"NrAfxTest");
    Expect("any", 3, g_registered, 5, 2);
}

// --- commands and notifications ----------------------------------------------------------------------------------

namespace {

class Host : public CWnd {
public:
    std::string m_log;
    bool m_grey = false;

protected:
    afx_msg void OnOne() { m_log += "one "; }
    afx_msg void OnRange(UINT id) { m_log += "range" + std::to_string(id) + " "; }
    afx_msg BOOL OnMaybe(UINT id) { return m_log += "maybe ", id == 31; }
    afx_msg void OnChange() { m_log += "change "; }
    afx_msg void OnClicked() { m_log += "clicked "; }
    afx_msg void OnTip(NMHDR* header, LRESULT* result) {
        m_log += "notify" + std::to_string(static_cast<int>(header->code)) + " ";
        *result = 99;
    }
    afx_msg void OnUpdateOne(CCmdUI* ui) {
        ui->Enable(!m_grey);
        ui->SetCheck(1);
        ui->SetText(L"text");
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Host, CWnd)
    ON_COMMAND(10, &Host::OnOne)
    ON_COMMAND_RANGE(20, 25, &Host::OnRange)
    ON_COMMAND_EX(30, &Host::OnMaybe)
    ON_COMMAND_EX(31, &Host::OnMaybe)
    ON_EN_CHANGE(40, &Host::OnChange)
    ON_BN_CLICKED(41, &Host::OnClicked)
    ON_NOTIFY(-160, 50, &Host::OnTip)
    ON_NOTIFY(NM_OUTOFMEMORY, 10, &Host::OnTip)
    ON_UPDATE_COMMAND_UI(10, &Host::OnUpdateOne)
END_MESSAGE_MAP()

class SelfTold : public CEdit {
public:
    std::string m_log;
    BOOL m_use = TRUE;

protected:
    afx_msg BOOL OnSelfChange() { return m_log += "self ", m_use; }
    afx_msg HBRUSH CtlColor(CDC*, UINT kind) {
        m_log += "color" + std::to_string(kind) + " ";
        return static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH));
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(SelfTold, CEdit)
    ON_CONTROL_REFLECT_EX(EN_CHANGE, &SelfTold::OnSelfChange)
    ON_WM_CTLCOLOR_REFLECT()
END_MESSAGE_MAP()

class DesktopAfxCommands : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_host.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, kPlace, nullptr, 0));
    }
    Host m_host;
};

} // namespace

TEST_F(DesktopAfxCommands, CommandsGoToTheirRows) {
    EXPECT_EQ(m_host.SendMessage(WM_COMMAND, 10, 0), 1);
    m_host.SendMessage(WM_COMMAND, 19, 0);
    m_host.SendMessage(WM_COMMAND, 20, 0);
    m_host.SendMessage(WM_COMMAND, 25, 0);
    m_host.SendMessage(WM_COMMAND, 26, 0);
    EXPECT_EQ(m_host.SendMessage(WM_COMMAND, 30, 0), 0);
    EXPECT_EQ(m_host.SendMessage(WM_COMMAND, 31, 0), 1);
    EXPECT_EQ(m_host.m_log, "one range20 range25 maybe maybe ");
}

TEST_F(DesktopAfxCommands, ACommandThatItsUpdateHandlerGreysIsNotCarriedOut) {
    m_host.m_grey = true;
    m_host.SendMessage(WM_COMMAND, 10, 0);
    EXPECT_EQ(m_host.m_log, "");
}

TEST_F(DesktopAfxCommands, ControlsTellTheirParentByCode) {
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD, kPlace, &m_host, 40));
    edit.SetWindowText(L"x");
    CButton button;
    ASSERT_TRUE(button.Create(L"b", WS_CHILD, kPlace, &m_host, 41));
    button.SendMessage(BM_CLICK);
    EXPECT_EQ(m_host.m_log, "change clicked ");
}

TEST_F(DesktopAfxCommands, NotificationsBringTheHandlersResultBack) {
    NMHDR header = {nullptr, 50, static_cast<UINT>(-160)};
    EXPECT_EQ(m_host.SendMessage(WM_NOTIFY, 50, reinterpret_cast<LPARAM>(&header)), 99);
    header.code = static_cast<UINT>(-161);
    EXPECT_EQ(m_host.SendMessage(WM_NOTIFY, 50, reinterpret_cast<LPARAM>(&header)), 0);
    EXPECT_EQ(m_host.m_log, "notify-160 ");
}

TEST_F(DesktopAfxCommands, AControlOutOfMemoryAsksForNoUpdate) {
    // Its code is the number of an update request, and a command with its control's number has an update handler.
    struct {
        NMHDR header = {nullptr, 10, NM_OUTOFMEMORY};
        BYTE room[sizeof(CCmdUI)] = {};
    } notification;
    EXPECT_EQ(m_host.SendMessage(WM_NOTIFY, 10, reinterpret_cast<LPARAM>(&notification)), 99);
    EXPECT_EQ(m_host.m_log, "notify-1 ");
}

TEST_F(DesktopAfxCommands, AControlMayAnswerItsOwnMessages) {
    SelfTold edit;
    ASSERT_TRUE(edit.Create(WS_CHILD, kPlace, &m_host, 40));
    edit.SetWindowText(L"x");
    EXPECT_EQ(edit.m_log, "self ");
    EXPECT_EQ(m_host.m_log, "");
    edit.m_use = FALSE;
    edit.SetWindowText(L"y");
    EXPECT_EQ(edit.m_log, "self self ");
    EXPECT_EQ(m_host.m_log, "change ");
    CClientDC dc(&edit);
    EXPECT_EQ(
        m_host.SendMessage(WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc.m_hDC), reinterpret_cast<LPARAM>(edit.m_hWnd)),
        reinterpret_cast<LRESULT>(::GetStockObject(GRAY_BRUSH)));
    EXPECT_EQ(edit.m_log, "self self color1 ");
}

TEST_F(DesktopAfxCommands, UpdateHandlersSetTheStateOfMenuItems) {
    CMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    menu.AppendMenu(MF_STRING, 10, L"ten");
    menu.AppendMenu(MF_STRING, 12, L"twelve");
    CCmdUI ui;
    ui.m_pMenu = &menu;
    ui.m_nIndexMax = 2;
    for (ui.m_nIndex = 0; ui.m_nIndex < 2; ++ui.m_nIndex) {
        ui.m_nID = menu.GetMenuItemID(static_cast<int>(ui.m_nIndex));
        ui.DoUpdate(&m_host, TRUE);
    }
    CString text;
    menu.GetMenuString(0, text, MF_BYPOSITION);
    EXPECT_EQ(Utf8(text), "text");
    EXPECT_EQ(menu.GetMenuState(10, MF_BYCOMMAND) & (MF_CHECKED | MF_GRAYED), static_cast<UINT>(MF_CHECKED));
    // The second has no handler.
    EXPECT_NE(menu.GetMenuState(12, MF_BYCOMMAND) & MF_GRAYED, 0u);
}
