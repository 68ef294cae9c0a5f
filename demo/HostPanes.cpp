// The demo's main window: its panes, the bar between them, the keyboard's way from one to the other, and the section.
// Layer 13: demo.
#include "HostFrame.h"

#include "DemoIds.h"
#include "SectionDrawing.h"

#include <TextParm.h>

#include <algorithm>

namespace {

const int FrameWidth = 2; // around each pane
const int SplitWidth = 7;
const int NarrowestPane = 160;
const int UsualSplit = 440;

} // namespace

bool CHostFrame::MakeSectionPane() {
    const bool made = m_section.CreateIn(this, CRect(0, 0, UsualSplit, 600), IDC_HOST_SECTION) &&
                      m_split.CreateIn(
                          this, IDC_HOST_SPLIT, [this](int x) { MoveSplit(std::max(x, 1)); }, [this] { MoveSplit(0); });
    if (made) {
        m_section.ShowWindow(SW_HIDE);
        m_split.ShowWindow(SW_HIDE);
        m_section.SetChanged([this] {
            if (m_drawsSection) {
                DrawSection(true);
            }
        });
    }
    return made;
}

// ---- Layout

// At a large scale the drawing keeps more than half of the window.
int CHostFrame::GetUsualSplit() {
    CRect client;
    GetClientRect(&client);
    return std::min<int>(Scaled(UsualSplit), client.Width() * 9 / 20);
}

// The only place that positions the views.
void CHostFrame::LayOut() {
    if (m_view.m_hWnd == nullptr) {
        return;
    }
    CRect client;
    GetClientRect(&client);
    m_status.SendMessage(WM_SIZE, 0, 0);
    CRect status;
    m_status.GetWindowRect(&status);
    CRect bar(0, 0, 0, 0);
    if (m_toolbar != nullptr) {
        ::SendMessageW(m_toolbar, TB_AUTOSIZE, 0, 0);
        ::GetWindowRect(m_toolbar, &bar);
    }
    const int width = client.Width();
    ArrangeStatus();

    CRect rest(0, bar.Height(), width, std::max(bar.Height(), client.Height() - status.Height()));
    if (m_showSection) {
        const int most = std::max(NarrowestPane, width - SplitWidth - NarrowestPane);
        const int at = std::min(std::max(m_splitAt > 0 ? m_splitAt : GetUsualSplit(), NarrowestPane), most);
        CRect pane(rest.left, rest.top, at, rest.bottom);
        pane.DeflateRect(FrameWidth, FrameWidth);
        m_section.MoveWindow(&pane);
        m_split.MoveWindow(at, rest.top, SplitWidth, rest.Height());
        rest.left = at + SplitWidth;
    }
    rest.DeflateRect(FrameWidth, FrameWidth);
    m_view.MoveWindow(&rest);
    Invalidate(); // the frames around the panes
}

void CHostFrame::OnSize(UINT nType, int cx, int cy) {
    CWnd::OnSize(nType, cx, cy);
    if (nType != SIZE_MINIMIZED) {
        LayOut();
        if (m_drawsSection) {
            m_view.ZoomAll();
        }
    }
}

void CHostFrame::MoveSplit(int x) {
    m_splitAt = x;
    LayOut();
    if (m_drawsSection) {
        m_view.ZoomAll();
    }
}

void CHostFrame::ShowSectionPane(bool show) {
    m_section.SettleEdit();
    m_showSection = show;
    m_section.ShowWindow(show ? SW_SHOW : SW_HIDE);
    m_split.ShowWindow(show ? SW_SHOW : SW_HIDE);
    LayOut();
    UpdateWindow();
}

// ---- Focus

CRect CHostFrame::GetPaneFrame(const CWnd& pane) const {
    CRect rect;
    pane.GetWindowRect(&rect);
    ScreenToClient(&rect);
    rect.InflateRect(FrameWidth, FrameWidth);
    return rect;
}

void CHostFrame::OnPaint() {
    CPaintDC dc(this);
    CBrush active(::GetSysColor(COLOR_HIGHLIGHT));
    CBrush idle(::GetSysColor(COLOR_3DSHADOW));
    const CWnd* panes[] = {&m_view, &m_section};
    for (const CWnd* pane : panes) {
        if (pane->m_hWnd != nullptr && (pane != &m_section || m_showSection)) {
            CRect rect = GetPaneFrame(*pane);
            CBrush* brush = m_showSection && (pane == &m_section) == m_inSection ? &active : &idle;
            for (int i = 0; i < FrameWidth; ++i) {
                dc.FrameRect(&rect, brush);
                rect.DeflateRect(1, 1);
            }
        }
    }
}

void CHostFrame::ShowActivePane() {
    const HWND focus = ::GetFocus();
    const bool inSection = focus == m_section.m_hWnd || ::IsChild(m_section.m_hWnd, focus);
    const bool inView = focus == m_view.m_hWnd || ::IsChild(m_view.m_hWnd, focus);
    if ((inSection || inView) && inSection != m_inSection) {
        m_inSection = inSection;
        Invalidate(FALSE);
    }
    // When an edit box is destroyed with its command, no window has the focus.
    if (focus == nullptr && ::GetActiveWindow() == m_hWnd) {
        SetFocus();
    }
}

void CHostFrame::OnSetFocus(CWnd*) {
    if (m_inSection && m_showSection) {
        m_section.SetFocus();
    } else if (m_view.m_hWnd != nullptr) {
        m_view.SetFocus();
    }
}

void CHostFrame::OnNextPane() {
    if (!m_showSection) {
        return;
    }
    if (!m_inSection) {
        m_section.Enter();
    } else if (m_section.FinishEdit()) {
        m_view.TakeFocus();
    }
}

BOOL CHostFrame::PreTranslateMessage(MSG* message) {
    const bool toSection = message->hwnd == m_section.m_hWnd || ::IsChild(m_section.m_hWnd, message->hwnd);
    // While a distance is typed the keys belong to its edit box. In a parameter's box the key that erases objects in
    // the drawing erases characters.
    const bool taken = ::IsChild(m_view.m_hWnd, message->hwnd) || (toSection && message->wParam == VK_DELETE);
    if (!taken && m_keys != nullptr && ::TranslateAcceleratorW(m_hWnd, m_keys, message)) {
        return TRUE;
    }
    return CWnd::PreTranslateMessage(message);
}

// ---- Section

void CHostFrame::OpenSection() {
    m_drawsSection = true;
    m_inSection = true;
    ShowSectionPane(true);
    DrawSection(false);
    m_section.Enter();
}

void CHostFrame::DrawSection(bool changed) {
    m_view.BreakOff(false); // a running command may hold objects of the section
    m_view.EmptyProperties();
    m_view.EnableHistory(0);
    RemoveObjects(m_view, m_drawn);
    m_drawn.clear();
    for (CDrawable* object : ::DrawSection(m_view, m_section.GetSection(), m_section.GetSectionName())) {
        m_view.MakeReadable(object);
        m_drawn.push_back({object, object->GetAlive()});
    }
    if (changed) {
        m_view.GetDocument()->SetModifiedFlag(TRUE);
    }
    m_view.EnableHistory(1);
    m_view.ZoomAll();
}

// Parameters that have no edit box only tell their parent that they were clicked.
void CHostFrame::OnSectionClick(NMHDR* header, LRESULT* result) {
    const auto* notify = reinterpret_cast<const NMVECTORPARM*>(header);
    if (notify->nKind == kVpkParm) {
        m_section.ShowResult(static_cast<CTextParm*>(notify->pText));
    }
    *result = 0;
}

void CHostFrame::OnShowSection() {
    ShowSectionPane(!m_showSection);
    if (m_showSection) {
        m_section.Enter();
    } else {
        m_view.SetFocus();
    }
    if (m_drawsSection) {
        m_view.ZoomAll();
    }
}

void CHostFrame::OnDrawSection() {
    if (!m_showSection || !m_section.FinishEdit() || (!m_drawsSection && !MayDiscard())) {
        return;
    }
    if (!m_drawsSection) {
        ForgetDrawing();
        m_drawsSection = true;
    }
    DrawSection(true);
}
