// The MFC layer's windows: creation, handles, subclassing, default processing, exceptions, the message loop.
// Layer 16: tests.
#include "support/BoxAnswer.h"

#include <afxext.h>

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

namespace {

constexpr RECT kPlace = {10, 20, 210, 120};

class Frame : public CWnd {
public:
    Frame() { CreateEx(0, AfxRegisterWndClass(0), L"frame", WS_POPUP, kPlace, nullptr, 0); }
};

class Child : public CWnd {
public:
    void Log(const char* what) { m_log += what; }
    std::string m_log;
    CWnd* m_atNcCreate = nullptr;
    int m_createResult = 0;
    void* m_createParam = nullptr;
    bool m_throwInPaint = false, m_throwInCommand = false, m_throwStandard = false;

protected:
    void PreSubclassWindow() override { Log("presubclass "); }
    void PostNcDestroy() override { Log("postnc "); }
    afx_msg BOOL OnNcCreate(LPCREATESTRUCT cs) {
        m_atNcCreate = CWnd::FromHandlePermanent(m_hWnd);
        Log("nccreate ");
        return CWnd::OnNcCreate(cs);
    }
    afx_msg int OnCreate(LPCREATESTRUCT cs) {
        Log("create ");
        m_createParam = cs->lpCreateParams;
        return CWnd::OnCreate(cs) == -1 ? -1 : m_createResult;
    }
    afx_msg void OnDestroy() {
        Log("destroy ");
        CWnd::OnDestroy();
    }
    afx_msg void OnPaint() {
        if (m_throwInPaint) {
            AfxThrowResourceException();
        }
        Default();
    }
    afx_msg void OnBad() {
        if (m_throwStandard) {
            throw std::bad_alloc();
        }
        if (m_throwInCommand) {
            AfxThrowNotSupportedException();
        }
    }
    afx_msg LRESULT OnAsk(WPARAM w, LPARAM l) {
        // The current message is the outer one again after a nested message.
        SendMessage(WM_APP + 2);
        const MSG* current = GetCurrentMessage();
        return current->message == WM_APP + 1 && current->wParam == w && current->lParam == l;
    }
    afx_msg LRESULT OnNested(WPARAM, LPARAM) { return 0; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Child, CWnd)
    ON_WM_NCCREATE()
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_PAINT()
    ON_COMMAND(77, &Child::OnBad)
    ON_MESSAGE(WM_APP + 1, &Child::OnAsk)
    ON_MESSAGE(WM_APP + 2, &Child::OnNested)
END_MESSAGE_MAP()

} // namespace

TEST(DesktopAfxWnd, TheObjectIsTiedToItsWindowBeforeTheFirstMessage) {
    Frame frame;
    ASSERT_NE(frame.m_hWnd, nullptr);
    Child child;
    CCreateContext context;
    ASSERT_TRUE(child.Create(nullptr, L"c", WS_CHILD | WS_VISIBLE, CRect(1, 2, 31, 42), &frame, 5, &context));
    EXPECT_EQ(child.m_log, "presubclass nccreate create ");
    EXPECT_EQ(child.m_atNcCreate, &child);
    EXPECT_EQ(child.m_createParam, &context);
    EXPECT_EQ(child.GetDlgCtrlID(), 5);
    EXPECT_EQ(child.GetParent(), &frame);
    CRect client;
    child.GetClientRect(&client);
    EXPECT_EQ(client, CRect(0, 0, 30, 40));
    EXPECT_TRUE(child.DestroyWindow());
    EXPECT_EQ(child.m_log, "presubclass nccreate create destroy postnc ");
    EXPECT_EQ(child.m_hWnd, nullptr);
    EXPECT_FALSE(child.DestroyWindow());
}

TEST(DesktopAfxWnd, CreateAddsTheChildStyle) {
    Frame frame;
    Child child;
    ASSERT_TRUE(child.Create(nullptr, L"", 0, kPlace, &frame, 1));
    EXPECT_TRUE(child.GetStyle() & WS_CHILD);
}

TEST(DesktopAfxWnd, TheDefaultClassHasNoDeviceContextOfItsOwnAndReportsDoubleClicks) {
    Frame frame;
    Child child;
    ASSERT_TRUE(child.Create(nullptr, L"", WS_CHILD, kPlace, &frame, 1));
    const auto style = static_cast<UINT>(::GetClassLongPtr(child.m_hWnd, GCL_STYLE));
    EXPECT_EQ(style & (CS_OWNDC | CS_CLASSDC), 0u);
    EXPECT_NE(style & CS_DBLCLKS, 0u);
}

TEST(DesktopAfxWnd, AModeSetInOneContextIsNotSetInTheNext) {
    Frame frame;
    Child child;
    ASSERT_TRUE(child.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kPlace, &frame, 1));
    {
        CClientDC dc(&child);
        dc.SetROP2(R2_NOT);
    }
    CClientDC dc(&child);
    EXPECT_EQ(dc.GetROP2(), R2_COPYPEN);
}

TEST(DesktopAfxWnd, AFailingOnCreateLeavesNoWindow) {
    Frame frame;
    Child child;
    child.m_createResult = -1;
    EXPECT_FALSE(child.Create(nullptr, L"", WS_CHILD, kPlace, &frame, 1));
    EXPECT_EQ(child.m_hWnd, nullptr);
    // Whether WM_DESTROY comes in between is the system's affair.
    EXPECT_EQ(child.m_log.find("presubclass nccreate create "), 0u);
    EXPECT_EQ(child.m_log.substr(child.m_log.size() - 7), "postnc ");
}

TEST(DesktopAfxWnd, AChildWithoutParentIsRefusedAndStillGetsItsLastCall) {
    Child child;
    EXPECT_FALSE(child.Create(nullptr, L"", WS_CHILD, kPlace, nullptr, 1));
    EXPECT_EQ(child.m_hWnd, nullptr);
    EXPECT_EQ(child.m_log, "postnc ");
    // The next window is not taken for the refused one.
    Frame frame;
    EXPECT_EQ(child.m_hWnd, nullptr);
    EXPECT_EQ(child.m_log, "postnc ");
}

TEST(DesktopAfxWnd, TheDestructorDestroysTheWindow) {
    Frame frame;
    HWND window = nullptr;
    {
        CEdit edit;
        ASSERT_TRUE(edit.Create(WS_CHILD | ES_AUTOHSCROLL, kPlace, &frame, 3));
        window = edit.m_hWnd;
        ASSERT_TRUE(::IsWindow(window));
    }
    EXPECT_FALSE(::IsWindow(window));
}

TEST(DesktopAfxWnd, FromHandleGivesTheAttachedObjectOrTheSameTemporaryOne) {
    Frame frame;
    EXPECT_EQ(CWnd::FromHandle(frame.m_hWnd), &frame);
    EXPECT_EQ(CWnd::FromHandlePermanent(frame.m_hWnd), &frame);
    const HWND plain = ::CreateWindow(L"STATIC", L"", WS_CHILD, 0, 0, 5, 5, frame.m_hWnd, nullptr, nullptr, nullptr);
    CWnd* temporary = CWnd::FromHandle(plain);
    ASSERT_NE(temporary, nullptr);
    EXPECT_EQ(temporary->m_hWnd, plain);
    EXPECT_EQ(CWnd::FromHandle(plain), temporary);
    EXPECT_EQ(CWnd::FromHandlePermanent(plain), nullptr);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
    // The end of a temporary object is not the end of its window.
    CWnd::DeleteTempMap();
    EXPECT_TRUE(::IsWindow(plain));
    CWnd attached;
    attached.Attach(plain);
    EXPECT_EQ(CWnd::FromHandle(plain), &attached);
    EXPECT_EQ(attached.Detach(), plain);
    EXPECT_NE(CWnd::FromHandle(plain), &attached);
}

TEST(DesktopAfxWnd, ASubclassedControlAnswersThroughTheObjectAndThenItself) {
    class Shouting : public CEdit {
    public:
        int m_count = 0;
        LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
            m_count += message == WM_SETTEXT;
            return CEdit::WindowProc(message, w, l);
        }
    };
    Frame frame;
    const HWND plain = ::CreateWindow(L"EDIT", L"old", WS_CHILD, 0, 0, 50, 20, frame.m_hWnd, nullptr, nullptr, nullptr);
    const auto before = ::GetWindowLongPtr(plain, GWLP_WNDPROC);
    Shouting edit;
    ASSERT_TRUE(edit.SubclassWindow(plain));
    ::SetWindowText(plain, L"new");
    EXPECT_EQ(edit.m_count, 1);
    CString text;
    edit.GetWindowText(text);
    EXPECT_EQ(Utf8(text), "new");
    EXPECT_EQ(edit.UnsubclassWindow(), plain);
    EXPECT_EQ(::GetWindowLongPtr(plain, GWLP_WNDPROC), before);
    ::SetWindowText(plain, L"newer");
    EXPECT_EQ(edit.m_count, 1);
}

TEST(DesktopAfxWnd, TheCurrentMessageIsRestoredAfterANestedOne) {
    Frame frame;
    Child child;
    ASSERT_TRUE(child.Create(nullptr, L"", WS_CHILD, kPlace, &frame, 1));
    EXPECT_EQ(child.SendMessage(WM_APP + 1, 11, 22), 1);
}

TEST(DesktopAfxWnd, WhatAHandlerThrowsIsShownAndStopsThere) {
    Frame frame;
    Child child;
    ASSERT_TRUE(child.Create(nullptr, L"", WS_CHILD, kPlace, &frame, 1));
    BoxAnswer boxes({IDOK});
    child.m_throwInCommand = true;
    child.SendMessage(WM_COMMAND, 77, 0);
    EXPECT_EQ(boxes.Texts().size(), 1u);
    child.m_throwStandard = true;
    child.SendMessage(WM_COMMAND, 77, 0);
    EXPECT_EQ(boxes.Texts().size(), 2u);
    EXPECT_TRUE(::IsWindow(child.m_hWnd));
}

TEST(DesktopAfxWnd, AThrowingPaintDoesNotAskForPaintAgain) {
    Frame frame;
    Child child;
    frame.ShowWindow(SW_SHOW);
    ASSERT_TRUE(child.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &frame, 1));
    child.UpdateWindow();
    child.m_throwInPaint = true;
    BoxAnswer boxes({IDOK});
    child.Invalidate();
    child.UpdateWindow();
    EXPECT_EQ(boxes.Texts().size(), 1u);
    EXPECT_FALSE(child.GetUpdateRect(nullptr));
}

TEST(DesktopAfxWnd, PlaceValuesAreNoWindows) {
    EXPECT_EQ(CWnd::wndTop.m_hWnd, HWND_TOP);
    EXPECT_EQ(CWnd::wndNoTopMost.m_hWnd, HWND_NOTOPMOST);
    Frame frame;
    EXPECT_TRUE(frame.SetWindowPos(&CWnd::wndTop, 30, 40, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE));
    CRect place;
    frame.GetWindowRect(&place);
    EXPECT_EQ(place.TopLeft(), CPoint(30, 40));
}

TEST(DesktopAfxWnd, PreTranslateMessageIsAskedFromTheChildUpward) {
    static std::string order;
    order.clear();
    class Asked : public CWnd {
    public:
        char m_name = '?';
        bool m_use = false;
        BOOL PreTranslateMessage(MSG* message) override {
            if (message->message == WM_APP + 9) {
                order += m_name;
            }
            return m_use && message->message == WM_APP + 9;
        }
    };
    Frame frame;
    Asked outer, inner;
    outer.m_name = 'o';
    inner.m_name = 'i';
    ASSERT_TRUE(outer.Create(nullptr, L"", WS_CHILD, kPlace, &frame, 1));
    ASSERT_TRUE(inner.Create(nullptr, L"", WS_CHILD, kPlace, &outer, 2));
    inner.PostMessage(WM_APP + 9);
    MSG next;
    while (::PeekMessage(&next, nullptr, 0, 0, PM_NOREMOVE)) {
        ASSERT_TRUE(AfxPumpMessage());
    }
    EXPECT_EQ(order, "io");
    order.clear();
    inner.m_use = true;
    inner.PostMessage(WM_APP + 9);
    while (::PeekMessage(&next, nullptr, 0, 0, PM_NOREMOVE)) {
        ASSERT_TRUE(AfxPumpMessage());
    }
    EXPECT_EQ(order, "i");
}

TEST(DesktopAfxWnd, ARegisteredClassNameIsTheSameForTheSameStyle) {
    const CString first = AfxRegisterWndClass(CS_DBLCLKS);
    const CString other = AfxRegisterWndClass(CS_HREDRAW);
    EXPECT_EQ(Utf8(first), Utf8(AfxRegisterWndClass(CS_DBLCLKS)));
    EXPECT_NE(Utf8(first), Utf8(other));
}

// --- what handlers throw ------------------------------------------------------------------------------------------

TEST(DesktopAfxWnd, AnythingThrownByAHandlerIsReportedAndStopsThere) {
    class Throwing : public CWnd {
    public:
        int m_what = 0;

    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message == WM_APP + 9) {
                if (m_what == 0) {
                    throw 5;
                }
                if (m_what == 1) {
                    throw std::runtime_error("x");
                }
                AfxThrowUserException();
            }
            return CWnd::WindowProc(message, wParam, lParam);
        }
    } window;
    ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, kPlace, nullptr, 0));
    BoxAnswer boxes({IDOK});
    window.SendMessage(WM_APP + 9);
    EXPECT_EQ(boxes.Texts().size(), 1u);
    window.m_what = 1;
    window.SendMessage(WM_APP + 9);
    EXPECT_EQ(boxes.Texts().size(), 2u);
    window.m_what = 2;
    ASSERT_EQ(AfxGetThread(), nullptr) << "no application";
    window.SendMessage(WM_APP + 9);
    EXPECT_EQ(boxes.Texts().size(), 2u) << "who cancelled knows it already";
}

TEST(DesktopAfxWnd, WhateverTheReportItselfThrowsStopsThereToo) {
    class App : public CWinApp {
    public:
        int m_boxes = 0;
        int DoMessageBox(LPCTSTR, UINT, UINT) override {
            ++m_boxes;
            throw 6;
        }
    } app;
    Frame frame;
    Child child;
    ASSERT_TRUE(child.Create(nullptr, L"", WS_CHILD, kPlace, &frame, 1));
    child.m_throwInCommand = true;
    EXPECT_EQ(child.SendMessage(WM_COMMAND, 77, 0), 0);
    EXPECT_EQ(app.m_boxes, 1);
}

TEST(DesktopAfxWnd, WhateverIsThrownWhileAWindowIsBeingMadeIsReportedAndStopsThere) {
    class Throwing : public CWnd {
    protected:
        void PreSubclassWindow() override { throw std::runtime_error("x"); }
    } window;
    BoxAnswer boxes({IDOK});
    EXPECT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, kPlace, nullptr, 0));
    EXPECT_EQ(boxes.Texts().size(), 1u);
    EXPECT_NE(window.m_hWnd, nullptr);
    EXPECT_TRUE(window.DestroyWindow());
}

TEST(DesktopAfxWnd, AnExceptionOnTheWayThroughTheChildrenDestroysNone) {
    class Refusing : public CWnd {
    public:
        BOOL OnCmdMsg(UINT, int, void*, AFX_CMDHANDLERINFO*) override { AfxThrowNotSupportedException(); }
    } target;
    Frame frame;
    Child child;
    ASSERT_TRUE(child.Create(nullptr, L"", WS_CHILD, kPlace, &frame, 8));
    CWnd inner;
    ASSERT_TRUE(inner.Create(nullptr, L"", WS_CHILD, kPlace, &child, 9));
    bool thrown = false;
    try {
        frame.UpdateDialogControls(&target, FALSE);
    } catch (CNotSupportedException* e) {
        thrown = true;
        e->Delete();
    }
    EXPECT_TRUE(thrown);
    EXPECT_TRUE(::IsWindow(child.m_hWnd));
    EXPECT_TRUE(::IsWindow(inner.m_hWnd));
    EXPECT_EQ(frame.GetDescendantWindow(9), &inner);
    EXPECT_EQ(frame.GetDescendantWindow(9, TRUE), &inner);
    EXPECT_EQ(frame.GetDescendantWindow(10), nullptr);
}

TEST(DesktopAfxWnd, AMessageToTheDescendantsThatThrowsDestroysNone) {
    Frame frame;
    Child child;
    ASSERT_TRUE(child.Create(nullptr, L"", WS_CHILD, kPlace, &frame, 8));
    // A procedure that is not the layer's, so that what it throws comes out of the call.
    const HWND bare = ::CreateWindow(L"STATIC", L"", WS_CHILD, 0, 0, 9, 9, child.m_hWnd, nullptr, nullptr, nullptr);
    ASSERT_NE(bare, nullptr);
    ::SetWindowLongPtr(bare, GWLP_WNDPROC,
                       reinterpret_cast<LONG_PTR>(+[](HWND window, UINT message, WPARAM w, LPARAM l) -> LRESULT {
                           if (message == WM_APP + 7) {
                               throw 5;
                           }
                           return ::DefWindowProc(window, message, w, l);
                       }));
    EXPECT_THROW(frame.SendMessageToDescendants(WM_APP + 7), int);
    EXPECT_TRUE(::IsWindow(bare));
    EXPECT_TRUE(::IsWindow(child.m_hWnd));
}

// The attribute is for this caller only: where sanitizers stop at each call through a null pointer, they would here.
__attribute__((no_sanitize("null"), noinline)) static HWND HandleThrough(const CWnd* window) {
    return window->GetSafeHwnd();
}

TEST(DesktopAfxWnd, ANullPointerHasNoHandle) {
    EXPECT_EQ(HandleThrough(nullptr), nullptr);
    const Frame frame;
    EXPECT_EQ(HandleThrough(&frame), frame.m_hWnd);
}

// --- temporary GDI objects
// --------------------------------------------------------------------------------------------

TEST(DesktopAfxWnd, AMessageFreesNoTemporaryGdiObjectThatItsSenderHolds) {
    CGdiObject::DeleteTempMap();
    Frame frame;
    std::vector<HGDIOBJ> pens;
    std::vector<CGdiObject*> held;
    for (int i = 0; i < 5000; ++i) {
        pens.push_back(::CreatePen(PS_SOLID, 1, static_cast<COLORREF>(i)));
        ASSERT_NE(pens.back(), nullptr);
        held.push_back(CGdiObject::FromHandle(pens.back()));
    }
    frame.SendMessage(WM_NULL);
    for (size_t i = 0; i < pens.size(); ++i) {
        ASSERT_EQ(CGdiObject::FromHandle(pens[i]), held[i]);
        ASSERT_EQ(held[i]->m_hObject, pens[i]);
    }
    for (HGDIOBJ pen : pens) {
        ::DeleteObject(pen);
    }
    CGdiObject::DeleteTempMap();
}

TEST(DesktopAfxWnd, AHostThatIsNeverIdleGathersNoTemporaryGdiObjects) {
    CGdiObject::DeleteTempMap();
    // Ten of each kind at once, freed and made again in another order, so that handles come back as other kinds.
    std::set<const CGdiObject*> objects;
    for (int paint = 0; paint < 2000; ++paint) {
        std::vector<HGDIOBJ> handles;
        for (int i = 0; i < 20; ++i) {
            const bool pen = (i + paint) % 2 == 0;
            handles.push_back(pen ? static_cast<HGDIOBJ>(::CreatePen(PS_SOLID, 1, static_cast<COLORREF>(i)))
                                  : static_cast<HGDIOBJ>(::CreateSolidBrush(static_cast<COLORREF>(i))));
            const CGdiObject* object = CGdiObject::FromHandle(handles.back());
            EXPECT_TRUE(object->IsKindOf(pen ? RUNTIME_CLASS(CPen) : RUNTIME_CLASS(CBrush)));
            EXPECT_EQ(object->m_hObject, handles.back());
            objects.insert(object);
        }
        for (HGDIOBJ handle : handles) {
            ::DeleteObject(handle);
        }
    }
    EXPECT_LE(objects.size(), 200u);
    CGdiObject::DeleteTempMap();
}
