#include "ExampleStrip.h"

#include "CommandTable.h"
#include "DemoIds.h"
#include "HostText.h"

#include <algorithm>

namespace {

const COLORREF Blue = RGB(0, 80, 180); // Of a link: the system's colour for it is not readable in every scheme.

} // namespace

BEGIN_MESSAGE_MAP(CExampleStrip, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_SETCURSOR()
    ON_MESSAGE(WM_MOUSELEAVE, &CExampleStrip::OnMouseLeave)
END_MESSAGE_MAP()

BOOL CExampleStrip::CreateIn(CWnd* parent, UINT id, std::function<void(UINT)> chosen) {
    m_chosen = std::move(chosen);
    m_links.push_back({0, PlainCaption(LoadText(IDS_MENU_EXAMPLES)) + LoadText(IDS_COLON), CRect()});
    for (UINT item = ID_HOST_EXAMPLE_FIRST; item <= ID_HOST_EXAMPLE_LAST; ++item) {
        m_links.push_back({item, PlainCaption(LoadTextLine(item, 0)), CRect()});
    }
    const LPCTSTR className = AfxRegisterWndClass(0, nullptr, nullptr, nullptr);
    return Create(className, L"", WS_CHILD | WS_CLIPSIBLINGS, CRect(0, 0, 0, 0), parent, id);
}

void CExampleStrip::SetFontAndScale(CFont& font, float scale) {
    m_font = &font;
    m_scale = scale;
    m_within.SetRectEmpty(); // The next Show computes the layout.
}

CSize CExampleStrip::LayOut(int widest) {
    const auto scaled = [this](int pixels) { return static_cast<int>(static_cast<float>(pixels) * m_scale); };
    const int edge = scaled(4);
    CClientDC dc(this);
    CFont* former = dc.SelectObject(m_font);
    const int height = dc.GetTextExtent(L"X").cy + scaled(8);
    CPoint at(edge, 0);
    int right = 0;
    for (Link& link : m_links) {
        const int width = dc.GetTextExtent(link.text).cx + scaled(link.id != 0 ? 16 : 8);
        if (at.x > edge && at.x + width + edge > widest) {
            at = CPoint(edge, at.y + height);
        }
        link.rect = CRect(at.x, at.y, at.x + width, at.y + height);
        at.x += width;
        right = std::max<int>(right, at.x + edge);
    }
    dc.SelectObject(former);
    return CSize(right, at.y + height);
}

void CExampleStrip::Show(bool show, const CRect& within) {
    if (show == m_shown && (!show || within == m_within)) {
        return;
    }
    m_shown = show;
    m_hot = -1;
    m_within = within;
    const CSize size = LayOut(within.Width());
    ::SetWindowPos(m_hWnd, HWND_TOP, within.left, within.top, size.cx, size.cy,
                   SWP_NOACTIVATE | (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
    Invalidate();
}

int CExampleStrip::FindLink(CPoint point) const {
    for (size_t i = 0; i < m_links.size(); ++i) {
        if (m_links[i].id != 0 && m_links[i].rect.PtInRect(point)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void CExampleStrip::SetHot(int link) {
    if (link != m_hot) {
        m_hot = link;
        Invalidate();
    }
}

BOOL CExampleStrip::OnEraseBkgnd(CDC*) {
    return TRUE; // The paint covers the whole strip.
}

void CExampleStrip::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    dc.FillSolidRect(&client, ::GetSysColor(COLOR_BTNFACE));
    CFont* former = dc.SelectObject(m_font);
    dc.SetBkMode(TRANSPARENT);
    for (size_t i = 0; i < m_links.size(); ++i) {
        CRect rect = m_links[i].rect;
        const bool hot = static_cast<int>(i) == m_hot;
        if (hot) {
            dc.FillSolidRect(&rect, ::GetSysColor(COLOR_HIGHLIGHT));
        }
        const COLORREF text = m_links[i].id == 0 ? ::GetSysColor(COLOR_BTNTEXT) : Blue;
        dc.SetTextColor(hot ? ::GetSysColor(COLOR_HIGHLIGHTTEXT) : text);
        dc.DrawText(m_links[i].text, &rect, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
    }
    dc.SelectObject(former);
}

void CExampleStrip::OnLButtonDown(UINT, CPoint point) {
    const int link = FindLink(point);
    if (link >= 0) {
        m_chosen(m_links[static_cast<size_t>(link)].id);
    }
}

void CExampleStrip::OnMouseMove(UINT, CPoint point) {
    SetHot(FindLink(point));
    TRACKMOUSEEVENT track = {sizeof(track), TME_LEAVE, m_hWnd, 0};
    ::TrackMouseEvent(&track);
}

// The default processing would ask the parent first, whose cursor is a cross.
BOOL CExampleStrip::OnSetCursor(CWnd*, UINT, UINT) {
    ::SetCursor(::LoadCursorW(nullptr, IDC_HAND));
    return TRUE;
}

LRESULT CExampleStrip::OnMouseLeave(WPARAM, LPARAM) {
    SetHot(-1);
    return 0;
}
