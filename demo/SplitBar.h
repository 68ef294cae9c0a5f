// The bar between two panes, dragged by the mouse.
// Layer 13: demo.
#pragma once

#include <afxwin.h>

#include <functional>

class CSplitBar : public CWnd {
public:
    CSplitBar() = default;

    // `moved` gets the wanted left edge in the parent's client pixels, `reset` is called for a double click.
    BOOL CreateIn(CWnd* parent, UINT id, std::function<void(int)> moved, std::function<void()> reset);

protected:
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()

private:
    std::function<void(int)> m_moved;
    std::function<void()> m_reset;
    int m_grip = 0; // where the bar was taken, in its own pixels
};
