// The strip over an empty drawing that opens an example drawing by one click.
// Layer 13: demo.
#pragma once

#include <afxwin.h>

#include <functional>
#include <vector>

// It takes no focus: the keyboard has the menu for the same.
class CExampleStrip : public CWnd {
public:
    CExampleStrip() = default;

    // Hidden at first. `chosen` gets the number of the menu item, one of ID_HOST_EXAMPLE_FIRST and those after it.
    BOOL CreateIn(CWnd* parent, UINT id, std::function<void(UINT)> chosen);
    // The texts are measured with the font, which the caller owns. Pixels at 96 dots per inch are multiplied by the
    // scale.
    void SetFontAndScale(CFont& font, float scale);
    // In client pixels of the parent. Links that do not fit in one row between left and right edge take several.
    void Show(bool show, const CRect& within);

protected:
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg BOOL OnSetCursor(CWnd* wnd, UINT hitTest, UINT message);
    afx_msg LRESULT OnMouseLeave(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    struct Link {
        UINT id; // 0 for the heading.
        CString text;
        CRect rect; // Client pixels.
    };
    int FindLink(CPoint point) const; // -1 for none.
    void SetHot(int link);

    std::function<void(UINT)> m_chosen;
    std::vector<Link> m_links;
    // Places the links in rows; gives the size of all.
    CSize LayOut(int widest);

    CFont* m_font = nullptr;
    float m_scale = 1.0f;
    CRect m_within;
    int m_hot = -1; // The link under the mouse.
    bool m_shown = false;
};
