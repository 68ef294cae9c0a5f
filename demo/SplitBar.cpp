#include "SplitBar.h"

BEGIN_MESSAGE_MAP(CSplitBar, CWnd)
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_MOUSEMOVE()
    ON_WM_PAINT()
END_MESSAGE_MAP()

BOOL CSplitBar::CreateIn(CWnd* parent, UINT id, std::function<void(int)> moved, std::function<void()> reset) {
    m_moved = std::move(moved);
    m_reset = std::move(reset);
    const LPCTSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_SIZEWE),
                                                  reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), nullptr);
    return Create(className, L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 0, 0), parent, id);
}

void CSplitBar::OnLButtonDown(UINT, CPoint point) {
    m_grip = point.x;
    SetCapture();
}

void CSplitBar::OnLButtonUp(UINT, CPoint) {
    if (::GetCapture() == m_hWnd) {
        ::ReleaseCapture();
    }
}

void CSplitBar::OnLButtonDblClk(UINT, CPoint) {
    m_reset();
}

void CSplitBar::OnMouseMove(UINT, CPoint point) {
    if (::GetCapture() != m_hWnd) {
        return;
    }
    CPoint at(point.x - m_grip, 0);
    MapWindowPoints(GetParent(), &at, 1);
    m_moved(at.x);
}

// Three dots in the middle show that it can be dragged.
void CSplitBar::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    const int x = client.Width() / 2 - 1;
    const int y = client.Height() / 2;
    for (const int step : {-8, 0, 8}) {
        dc.FillSolidRect(x, y + step, 3, 3, ::GetSysColor(COLOR_3DSHADOW));
    }
}
