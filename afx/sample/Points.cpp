// A program on this layer alone: a window that marks where the user clicks, and keeps the marks in the file points.dat
// of the working folder.
#include <afxwin.h>

static const wchar_t kFile[] = L"points.dat";

struct CPointsDocument : CDocument {
    void Serialize(CArchive& ar) override { m_Points.Serialize(ar); }
    CArray<CPoint, CPoint&> m_Points; // in pixels of the window
};

class CPointsWindow : public CWnd {
public:
    CPointsWindow() {
        if (::GetFileAttributes(kFile) != INVALID_FILE_ATTRIBUTES) {
            m_Document.OnOpenDocument(kFile);
        }
        CreateEx(0, AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_CROSS), ::GetSysColorBrush(COLOR_WINDOW)),
                 L"Points", WS_OVERLAPPEDWINDOW, 60, 60, 480, 360, nullptr, nullptr);
    }
    ~CPointsWindow() override { DestroyWindow(); }

    afx_msg void OnLButtonDown(UINT, CPoint point) {
        m_Document.m_Points.Add(point);
        Invalidate();
    }
    afx_msg void OnPaint() {
        CPaintDC dc(this);
        CBrush red(RGB(255, 0, 0));
        for (int i = 0; i < m_Document.m_Points.GetSize(); ++i) {
            const CPoint point = m_Document.m_Points[i];
            dc.FillRect(CRect(point.x - 4, point.y - 4, point.x + 4, point.y + 4), &red);
        }
    }
    afx_msg void OnClose() {
        m_Document.OnSaveDocument(kFile); // shows why it failed
        CWnd::OnClose();
    }
    DECLARE_MESSAGE_MAP()

    CPointsDocument m_Document;
};

BEGIN_MESSAGE_MAP(CPointsWindow, CWnd)
    ON_WM_LBUTTONDOWN()
    ON_WM_PAINT()
    ON_WM_CLOSE()
END_MESSAGE_MAP()

class CPointsApp : public CWinApp {
    BOOL InitInstance() override {
        static CPointsWindow window;
        m_pMainWnd = &window;
        window.ShowWindow(m_nCmdShow);
        return window.m_hWnd != nullptr;
    }
} theApp;

int WINAPI WinMain(HINSTANCE instance, HINSTANCE former, LPSTR, int show) {
    return AfxWinMain(instance, former, nullptr, show);
}
