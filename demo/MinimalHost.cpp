// The smallest host: a window with a drawing in it, in which the user draws lines. It needs only this file and the
// DLLs. Layer 13: demo.
#include <vectorview.h>

namespace {

class CPartWindow : public CWnd {
public:
    CPartWindow() {
        CreateEx(0, AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), L"A part", WS_OVERLAPPEDWINDOW, 40, 40,
                 640, 480, nullptr, nullptr);
    }
    ~CPartWindow() override { DestroyWindow(); }

private:
    afx_msg int OnCreate(LPCREATESTRUCT create) {
        if (CWnd::OnCreate(create) == -1 || !m_View.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(), this, 1)) {
            return -1;
        }
        const Gdiplus::Color red(255, 255, 0, 0);
        m_View.AddLine(CGePoint2d(0, 0), CGePoint2d(100, 50), red, L"diagonal", L"", 1, 0);
        m_View.DoCommand(L"line"); // the user draws the next one
        return 0;
    }
    afx_msg void OnSize(UINT type, int width, int height) {
        CWnd::OnSize(type, width, height);
        m_View.MoveWindow(0, 0, width, height);
        m_View.ZoomAll();
    }
    afx_msg void OnSetFocus(CWnd*) { m_View.SetFocus(); }
    DECLARE_MESSAGE_MAP()

    CVectorView m_View;
};

BEGIN_MESSAGE_MAP(CPartWindow, CWnd)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
END_MESSAGE_MAP()

class CPartApp : public CWinApp {
    BOOL InitInstance() override {
        static CPartWindow window;
        m_pMainWnd = &window;
        window.ShowWindow(m_nCmdShow);
        return window.m_hWnd != nullptr;
    }
};

CPartApp theApp;

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE former, LPSTR, int show) {
    return AfxWinMain(instance, former, nullptr, show);
}
