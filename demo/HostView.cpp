#include "HostView.h"

#include "CommandTable.h"

#include <PropertyDialogHost.h>

BEGIN_MESSAGE_MAP(CHostView, CVectorView)
    ON_WM_LBUTTONDOWN()
    ON_WM_RBUTTONDOWN()
    ON_WM_MBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_KEYDOWN()
END_MESSAGE_MAP()

BOOL CHostView::CreateIn(CWnd* parent, const RECT& rect, UINT id) {
    // Double clicks for the zoom on the middle button; no background and no device context of its own, as the view
    // paints everything itself and inverts on fresh contexts. Clipping children keeps the paint off the edit box.
    const LPCTSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_CROSS), nullptr, nullptr);
    return Create(className, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, rect, parent, id, nullptr);
}

// ---- Commands

void CHostView::RunCommand(int row) {
    const CommandWord& command = CommandRows[row];
    CGraphicDocument* document = GetDocument();
    const BOOL modified = document->IsModified();
    SetFocus();
    DoCommand(command.word);
    if (command.flags & kCommandHarmless) {
        // The view marks the drawing as modified after every word; moving the picture about is no change to save.
        document->SetModifiedFlag(modified);
    }
    if (command.running == CommandRunning::Installed) {
        m_row = row;
        m_placing = false;
        m_clicks = 0;
    }
}

int CHostView::GetCommandRow() {
    if (!GetManager()->GetHasCommand()) {
        m_row = -1;
        m_placing = false;
    }
    return m_row;
}

// Whether the running command's right button puts back what it has moved. A grip edit, which has no row, always does.
bool CHostView::CanRestore() {
    const int row = GetCommandRow();
    return row < 0 || ((CommandRows[row].flags & kCommandRestores) && m_clicks > 0);
}

void CHostView::BreakOff(bool takeFocus) {
    CCommandOperationManager* manager = GetManager();
    if (manager->GetHasCommand() && CanRestore()) {
        CVectorView::OnRButtonDown(0, m_cursor);
    }
    manager->Cancel();
    Invalidate();
    if (takeFocus) {
        TakeFocus();
    }
}

// ---- Properties

void CHostView::ToggleProperties() {
    if (m_pDlgDrawAbleProperty == nullptr) {
        m_pDlgDrawAbleProperty = CreateDrawAbleProperty(this, GetParent());
    }
    if (m_pDlgDrawAbleProperty != nullptr) {
        ShowDrawAbleProperty(m_pDlgDrawAbleProperty, this, !HasProperties());
    }
}

bool CHostView::HasProperties() {
    return IsDrawAblePropertyShown(m_pDlgDrawAbleProperty) != 0;
}

void CHostView::EmptyProperties() {
    EmptyDrawAbleProperty(m_pDlgDrawAbleProperty);
}

// ---- Mapping

void CHostView::ResetMapping() {
    CRect client;
    GetClientRect(&client);
    CVectorViewCoordTran* mapping = GetVectorViewCoordTran();
    mapping->SetScreenSize(client.Size());
    mapping->SetScale(1.0f);
    mapping->SetOriginX(0.0);
    mapping->SetOriginY(0.0);
    Invalidate();
}

bool CHostView::GetCursorPoint(CGePoint2d& point) {
    if (m_hasCursor) {
        GetVectorViewCoordTran()->LPToDP(m_cursor, point);
    }
    return m_hasCursor;
}

// ---- Keys and mouse

// Keys come here before any other code sees them, also those of the edit box beside the rubber band: the library shows
// and reads that box, but when a typed distance is meant is the host's business.
BOOL CHostView::PreTranslateMessage(MSG* message) {
    const bool toEditBox = message->hwnd != m_hWnd && ::IsChild(m_hWnd, message->hwnd);
    if (toEditBox && HandleEditKey(*message)) {
        return TRUE;
    }
    if (message->hwnd == m_hWnd && message->message == WM_KEYDOWN && message->wParam == VK_ESCAPE &&
        GetManager()->GetHasCommand()) {
        BreakOff();
        return TRUE;
    }
    return CVectorView::PreTranslateMessage(message);
}

bool CHostView::HandleEditKey(const MSG& message) {
    CCommandOperationManager* manager = GetManager();
    switch (message.message) {
    case WM_RBUTTONDOWN:
        BreakOff();
        return true;
    case WM_CHAR:
        // From now on the mouse must not overwrite the distance.
        if (message.wParam >= L' ') {
            manager->SetInEdit(1);
        }
        return false;
    case WM_KEYDOWN:
        switch (message.wParam) {
        case VK_RETURN:
            manager->Execute();
            TakeFocus();
            return true;
        case VK_ESCAPE:
            BreakOff();
            return true;
        case VK_BACK:
        case VK_DELETE:
        case VK_LEFT:
        case VK_RIGHT:
        case VK_HOME:
        case VK_END:
            manager->SetInEdit(1);
            return false;
        default:
            return false;
        }
    default:
        return false;
    }
}

void CHostView::TakeFocus() {
    const HWND focus = ::GetFocus();
    if (focus == nullptr || (focus != m_hWnd && !(::IsChild(m_hWnd, focus) && ::IsWindowVisible(focus)))) {
        SetFocus();
    }
}

void CHostView::OnLButtonDown(UINT nFlags, CPoint point) {
    TakeFocus();
    ++m_clicks;
    CVectorView::OnLButtonDown(nFlags, point);
}

void CHostView::OnRButtonDown(UINT nFlags, CPoint point) {
    TakeFocus();
    const int row = GetCommandRow();
    if (row >= 0 && (CommandRows[row].flags & kCommandRestores) && !CanRestore()) {
        // Before the base point there is nothing to put back, and the command would fail to read its empty memory.
        BreakOff();
        return;
    }
    CVectorView::OnRButtonDown(nFlags, point);
    Invalidate(); // some commands leave their previews on the window when they are broken off
}

void CHostView::OnMButtonDown(UINT nFlags, CPoint point) {
    TakeFocus();
    CVectorView::OnMButtonDown(nFlags, point);
}

void CHostView::OnMouseMove(UINT nFlags, CPoint point) {
    m_cursor = point;
    m_hasCursor = true;
    CVectorView::OnMouseMove(nFlags, point);
}

void CHostView::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) {
    // Any key clears the selection when nothing runs. Shift and Ctrl alone are no such wish: they begin a shortcut.
    if (nChar == VK_SHIFT || nChar == VK_CONTROL) {
        Default();
        return;
    }
    CVectorView::OnKeyDown(nChar, nRepCnt, nFlags);
}
