#include "KxSheetGrid.h"

#include <algorithm>

namespace {

const wchar_t ClassName[] = L"CGridCtrl";
const UINT EditId = 1;
const int CellMargin = 4;  // pixels between a cell's edge and its text
const int RowPadding = 6;  // pixels that a row is higher than its text
const int MinColumn = 24;  // pixels; the divider leaves this much to each side
const int DividerGrab = 3; // pixels to each side in which the divider can be taken

// Keeps the font between its WM_SETFONT and the moment when the window is subclassed: a dialog sets the font of a
// control before it looks at it again, and DefWindowProc would drop it.
LRESULT CALLBACK GridWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETFONT:
        ::SetWindowLongPtrW(window, 0, static_cast<LONG_PTR>(wParam));
        return 0;
    case WM_GETFONT:
        return ::GetWindowLongPtrW(window, 0);
    default:
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
}

bool IsDown(int key) {
    return (::GetKeyState(key) & 0x8000) != 0;
}

} // namespace

BEGIN_MESSAGE_MAP(CSheetGridCtrl, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_SIZE()
    ON_WM_VSCROLL()
    ON_WM_MOUSEWHEEL()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_SETCURSOR()
    ON_WM_KEYDOWN()
    ON_WM_CHAR()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_GETDLGCODE()
    ON_WM_DESTROY()
    ON_MESSAGE(WM_SETFONT, &CSheetGridCtrl::OnLayoutMessage)
    ON_MESSAGE(WM_ENABLE, &CSheetGridCtrl::OnLayoutMessage)
    ON_MESSAGE(WM_SYSCOLORCHANGE, &CSheetGridCtrl::OnLayoutMessage)
    ON_MESSAGE(WM_CAPTURECHANGED, &CSheetGridCtrl::OnCaptureChanged)
END_MESSAGE_MAP()

// ---- Construction

CSheetGridCtrl::CSheetGridCtrl()
    : m_rowCount(0), m_current(-1), m_top(0), m_editRow(-1), m_showHeader(1), m_allowEdit(1), m_divider(-1),
      m_dragging(0), m_wheel(0), m_rowHeight(0), m_textHeight(0) {
    m_edit.m_pGrid = this;
    RegisterWindowClass();
}

CSheetGridCtrl::~CSheetGridCtrl() {
    if (m_hWnd != nullptr) {
        DestroyWindow();
    }
}

// The class is global, so that a dialog template of any module finds it. Returns whether it is there.
int CSheetGridCtrl::RegisterWindowClass() {
    WNDCLASSW known;
    const HINSTANCE module = ::GetModuleHandleW(L"nrkx.dll");
    if (::GetClassInfoW(module, ClassName, &known)) {
        return 1;
    }
    WNDCLASSW wc = {};
    wc.style = CS_GLOBALCLASS | CS_DBLCLKS;
    wc.lpfnWndProc = GridWndProc;
    wc.cbWndExtra = sizeof(LONG_PTR);
    wc.hInstance = module;
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.lpszClassName = ClassName;
    return ::RegisterClassW(&wc) != 0;
}

BOOL CSheetGridCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(ClassName, L"", style | WS_CHILD, rect, parent, id);
}

// ---- Geometry

HFONT CSheetGridCtrl::GetTextFont() const {
    HFONT font = reinterpret_cast<HFONT>(::SendMessageW(m_hWnd, WM_GETFONT, 0, 0));
    if (font == nullptr) {
        font = reinterpret_cast<HFONT>(::SendMessageW(::GetParent(m_hWnd), WM_GETFONT, 0, 0));
    }
    return font != nullptr ? font : static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
}

void CSheetGridCtrl::MeasureFont() const {
    if (m_rowHeight != 0) {
        return;
    }
    TEXTMETRICW metrics = {};
    const HDC dc = ::GetDC(m_hWnd);
    const HGDIOBJ former = ::SelectObject(dc, GetTextFont());
    ::GetTextMetricsW(dc, &metrics);
    ::SelectObject(dc, former);
    ::ReleaseDC(m_hWnd, dc);
    m_textHeight = std::max(1, static_cast<int>(metrics.tmHeight));
    m_rowHeight = m_textHeight + RowPadding;
}

int CSheetGridCtrl::GetHeaderHeight() const {
    MeasureFont();
    return m_showHeader ? m_rowHeight : 0;
}

// Whole rows that fit below the header, at least one.
int CSheetGridCtrl::GetPageRows() const {
    CRect client;
    GetClientRect(&client);
    const int header = GetHeaderHeight();
    return std::max(1, (static_cast<int>(client.bottom) - header) / m_rowHeight);
}

int CSheetGridCtrl::GetDivider() const {
    CRect client;
    GetClientRect(&client);
    const int wanted = m_divider >= 0 ? m_divider : static_cast<int>(client.right) * 2 / 5;
    return std::max(std::min(wanted, static_cast<int>(client.right) - MinColumn), MinColumn);
}

CRect CSheetGridCtrl::GetCellRect(int row, int col) const {
    CRect client;
    GetClientRect(&client);
    const int top = GetHeaderHeight() + (row - m_top) * m_rowHeight;
    const int divider = GetDivider();
    return col == 0 ? CRect(0, top, divider, top + m_rowHeight)
                    : CRect(divider + 1, top, std::max(static_cast<int>(client.right), divider + 1), top + m_rowHeight);
}

int CSheetGridCtrl::HitTest(CPoint point, int& col) const {
    CRect client;
    GetClientRect(&client);
    const int header = GetHeaderHeight();
    if (!client.PtInRect(point) || point.y < header) {
        return -1;
    }
    const int row = m_top + (point.y - header) / m_rowHeight;
    col = point.x > GetDivider() ? 1 : 0;
    return row < m_rowCount ? row : -1;
}

int CSheetGridCtrl::ClampTop(int row) const {
    return std::max(0, std::min(row, m_rowCount - GetPageRows()));
}

// ---- Rows

void CSheetGridCtrl::SetRowCount(int count) {
    EndEdit(0);
    m_rowCount = std::max(0, count);
    m_current = std::min(m_current, m_rowCount - 1);
    if (m_hWnd == nullptr) {
        return;
    }
    if (m_current < 0 && m_rowCount > 0 && ::GetFocus() == m_hWnd) {
        m_current = 0;
    }
    m_top = ClampTop(m_top);
    UpdateScrollBar();
    Invalidate(FALSE);
}

void CSheetGridCtrl::SetShowHeader(int show) {
    m_showHeader = show;
    if (m_hWnd != nullptr) {
        SetTopRow(m_top);
        UpdateScrollBar();
        PlaceEdit();
        Invalidate(FALSE);
    }
}

void CSheetGridCtrl::SetAllowEdit(int allow) {
    m_allowEdit = allow;
    if (!allow) {
        EndEdit(0);
    }
}

void CSheetGridCtrl::SetCurrentRow(int row) {
    row = std::max(-1, std::min(row, m_rowCount - 1));
    if (m_hWnd == nullptr) {
        m_current = row;
        return;
    }
    RedrawRow(m_current);
    m_current = row;
    RedrawRow(m_current);
    if (row >= 0 && row < m_top) {
        SetTopRow(row);
    } else if (row >= m_top + GetPageRows()) {
        SetTopRow(row - GetPageRows() + 1);
    }
}

void CSheetGridCtrl::SetTopRow(int row) {
    const int top = ClampTop(row);
    if (top == m_top) {
        return;
    }
    m_top = top;
    UpdateScrollBar();
    PlaceEdit();
    Invalidate(FALSE);
}

void CSheetGridCtrl::SetDivider(int x) {
    m_divider = std::max(0, x);
    if (m_hWnd != nullptr) {
        m_divider = GetDivider();
        PlaceEdit();
        Invalidate(FALSE);
    }
}

// Moves the focus mark for the user and notifies the parent. Returns 0 when the row stayed or the window was destroyed.
int CSheetGridCtrl::WalkTo(int row) {
    row = std::max(0, std::min(row, m_rowCount - 1));
    if (m_rowCount == 0 || row == m_current) {
        SetCurrentRow(m_current);
        return 0;
    }
    SetCurrentRow(row);
    const CKxAliveToken alive(m_alive);
    CString none;
    Notify(SGN_SELCHANGED, row, 1, none);
    return alive.IsAlive() && m_current == row;
}

// ---- The edit of a cell

int CSheetGridCtrl::BeginEdit(int row) {
    if (m_hWnd == nullptr || !m_allowEdit || row < 0 || row >= m_rowCount) {
        return 0;
    }
    const CKxAliveToken alive(m_alive);
    EndEdit(1);
    if (!alive.IsAlive() || row >= m_rowCount) {
        return 0;
    }
    SetCurrentRow(row);
    CString text = GetCellText(row, 1);
    if (!alive.IsAlive()) {
        return 0;
    }
    CString offered = text;
    if (Notify(SGN_BEGINEDIT, row, 1, offered) != 0 || !alive.IsAlive() || row >= m_rowCount) {
        return 0;
    }
    if (m_edit.m_hWnd == nullptr && !m_edit.Create(WS_CHILD | ES_AUTOHSCROLL, CRect(0, 0, 0, 0), this, EditId)) {
        return 0;
    }
    m_edit.SendMessage(EM_SETLIMITTEXT, 0, 0);
    m_edit.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(GetTextFont()), FALSE);
    m_edit.SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(CellMargin, CellMargin));
    m_edit.SetWindowText(text);
    m_editText = text;
    m_editRow = row;
    PlaceEdit();
    m_edit.ShowWindow(SW_SHOW);
    // The control that loses the focus here may end the edit at once, or destroy the grid.
    m_edit.SetFocus();
    if (!alive.IsAlive() || !IsEditing()) {
        return 0;
    }
    m_edit.SetSel(0, -1);
    RedrawRow(row);
    return 1;
}

void CSheetGridCtrl::EndEdit(int commit) {
    if (m_editRow < 0) {
        return;
    }
    const int row = m_editRow;
    m_editRow = -1; // First: the box below loses the focus, which would end the edit again.
    const CKxAliveToken alive(m_alive);
    CString text;
    m_edit.GetWindowText(text);
    if (::GetFocus() == m_edit.m_hWnd) {
        SetFocus();
        if (!alive.IsAlive()) {
            return;
        }
    }
    m_edit.ShowWindow(SW_HIDE);
    RedrawRow(row);
    if (commit && text != m_editText) {
        CString edited = text;
        Notify(SGN_EDITED, row, 1, edited);
        if (!alive.IsAlive()) {
            return;
        }
        // Other rows may depend on the new value.
        Invalidate(FALSE);
    }
    Notify(SGN_ENDEDIT, row, 1, text);
}

// Handles a key of the edit box. Returns whether the key ended the edit or moved on.
int CSheetGridCtrl::OnEditKey(UINT key, int shift) {
    const CKxAliveToken alive(m_alive);
    int step = 0;
    switch (key) {
    case VK_ESCAPE:
        EndEdit(0);
        return 1;
    case VK_RETURN:
    case VK_DOWN:
        step = 1;
        break;
    case VK_UP:
        step = -1;
        break;
    case VK_TAB:
        step = shift ? -1 : 1;
        break;
    case VK_NEXT:
        step = GetPageRows();
        break;
    case VK_PRIOR:
        step = -GetPageRows();
        break;
    default:
        return 0;
    }
    const int row = m_editRow + step;
    EndEdit(1);
    if (alive.IsAlive() && WalkTo(row) && key == VK_TAB) {
        BeginEdit(m_current);
    }
    return 1;
}

// Lays the box over the value of its row, also while it scrolls.
void CSheetGridCtrl::PlaceEdit() {
    if (m_editRow < 0) {
        return;
    }
    const CRect cell = GetCellRect(m_editRow, 1);
    const int height = m_textHeight;
    const int top = cell.top + (m_rowHeight - 1 - height) / 2;
    ::SetWindowPos(m_edit.m_hWnd, nullptr, cell.left, top, cell.Width(), height, SWP_NOZORDER | SWP_NOACTIVATE);
}

// ---- Notifications

LRESULT CSheetGridCtrl::Notify(UINT code, int row, int col, CString& text) {
    NMSHEETGRID note = {};
    note.hdr.hwndFrom = m_hWnd;
    note.hdr.idFrom = static_cast<UINT_PTR>(::GetDlgCtrlID(m_hWnd));
    note.hdr.code = code;
    note.mask = SGIF_TEXT;
    note.nCol = col;
    note.nRow = row;
    note.strText = text;
    const LRESULT result = ::SendMessageW(::GetParent(m_hWnd), WM_NOTIFY, static_cast<WPARAM>(note.hdr.idFrom),
                                          reinterpret_cast<LPARAM>(&note));
    text = note.strText;
    return result;
}

CString CSheetGridCtrl::GetCellText(int row, int col) {
    CString text;
    Notify(SGN_GETTEXT, row, col, text);
    return text;
}

// ---- Mouse

// Ends a running edit and moves to the row under the point. Returns the row, or -1 for none.
int CSheetGridCtrl::PressCell(CPoint point, int& col) {
    const CKxAliveToken alive(m_alive);
    EndEdit(1);
    if (!alive.IsAlive()) {
        return -1;
    }
    const int row = HitTest(point, col);
    if (row >= 0 && row != m_current) {
        WalkTo(row);
        if (!alive.IsAlive() || row >= m_rowCount) {
            return -1;
        }
    }
    SetFocus();
    return alive.IsAlive() ? row : -1;
}

void CSheetGridCtrl::OnLButtonDown(UINT, CPoint point) {
    if (std::abs(point.x - GetDivider()) <= DividerGrab) {
        m_dragging = 1;
        SetCapture();
        return;
    }
    const CKxAliveToken alive(m_alive);
    int col = 0;
    const int row = PressCell(point, col);
    if (row < 0) {
        return;
    }
    CString none;
    Notify(SGN_CLICK, row, col, none);
    if (alive.IsAlive() && col == 1) {
        BeginEdit(row);
    }
}

void CSheetGridCtrl::OnLButtonDblClk(UINT, CPoint point) {
    const CKxAliveToken alive(m_alive);
    int col = 0;
    const int row = std::abs(point.x - GetDivider()) <= DividerGrab ? -1 : PressCell(point, col);
    if (row < 0) {
        return;
    }
    CString none;
    Notify(SGN_DBLCLK, row, col, none);
    if (alive.IsAlive()) {
        BeginEdit(row);
    }
}

void CSheetGridCtrl::OnLButtonUp(UINT, CPoint) {
    if (m_dragging) {
        ::ReleaseCapture();
    }
}

void CSheetGridCtrl::OnMouseMove(UINT, CPoint point) {
    if (m_dragging) {
        SetDivider(point.x);
    }
}

LRESULT CSheetGridCtrl::OnCaptureChanged(WPARAM, LPARAM) {
    m_dragging = 0;
    return 0;
}

BOOL CSheetGridCtrl::OnSetCursor(CWnd*, UINT nHitTest, UINT) {
    if (nHitTest == HTCLIENT) {
        CPoint point;
        ::GetCursorPos(&point);
        ScreenToClient(&point);
        if (m_dragging || std::abs(point.x - GetDivider()) <= DividerGrab) {
            ::SetCursor(::LoadCursorW(nullptr, IDC_SIZEWE));
            return TRUE;
        }
    }
    return static_cast<BOOL>(Default());
}

BOOL CSheetGridCtrl::OnMouseWheel(UINT, short zDelta, CPoint) {
    UINT lines = 3;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int step = lines == WHEEL_PAGESCROLL ? GetPageRows() : static_cast<int>(lines);
    m_wheel += zDelta * step;
    const int rows = m_wheel / WHEEL_DELTA;
    m_wheel -= rows * WHEEL_DELTA;
    SetTopRow(m_top - rows);
    return TRUE;
}

void CSheetGridCtrl::OnVScroll(UINT nSBCode, UINT, CScrollBar*) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    ::GetScrollInfo(m_hWnd, SB_VERT, &info);
    switch (nSBCode) {
    case SB_LINEUP:
        SetTopRow(m_top - 1);
        break;
    case SB_LINEDOWN:
        SetTopRow(m_top + 1);
        break;
    case SB_PAGEUP:
        SetTopRow(m_top - GetPageRows());
        break;
    case SB_PAGEDOWN:
        SetTopRow(m_top + GetPageRows());
        break;
    case SB_TOP:
        SetTopRow(0);
        break;
    case SB_BOTTOM:
        SetTopRow(m_rowCount);
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        // The message's own position has 16 bits only.
        SetTopRow(info.nTrackPos);
        break;
    default:
        break;
    }
}

// ---- Keys and focus

UINT CSheetGridCtrl::OnGetDlgCode() {
    // Tab stays the dialog's key for the next control. Return and Escape are handled here: Return begins an edit, and
    // Escape must not close the dialog when it is pressed again after it has discarded an edit.
    UINT code = DLGC_WANTARROWS | DLGC_WANTCHARS;
    const MSG* message = GetCurrentMessage();
    if (message != nullptr && message->message == WM_GETDLGCODE &&
        (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE)) {
        code |= DLGC_WANTALLKEYS;
    }
    return code;
}

void CSheetGridCtrl::OnKeyDown(UINT nChar, UINT, UINT) {
    const bool control = IsDown(VK_CONTROL);
    switch (nChar) {
    case VK_UP:
        WalkTo(m_current - 1);
        break;
    case VK_DOWN:
        WalkTo(m_current + 1);
        break;
    case VK_PRIOR:
        WalkTo(m_current - GetPageRows());
        break;
    case VK_NEXT:
        WalkTo(m_current + GetPageRows());
        break;
    case VK_HOME:
        WalkTo(0);
        break;
    case VK_END:
        WalkTo(m_rowCount - 1);
        break;
    case VK_F2:
    case VK_RETURN:
        BeginEdit(m_current);
        break;
    case VK_DELETE:
        if (BeginEdit(m_current)) {
            m_edit.SetWindowText(L"");
        }
        break;
    case VK_LEFT:
    case VK_RIGHT:
        if (control) {
            SetDivider(GetDivider() + (nChar == VK_LEFT ? -8 : 8));
        }
        break;
    default:
        Default();
        break;
    }
}

void CSheetGridCtrl::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags) {
    if (nChar < L' ' || nChar == 0x7f) {
        return;
    }
    // The box opens with all of its text selected, so the character replaces it.
    if (BeginEdit(m_current)) {
        m_edit.SendMessage(WM_CHAR, nChar, MAKELPARAM(nRepCnt, nFlags));
    }
}

void CSheetGridCtrl::OnSetFocus(CWnd*) {
    if (m_editRow >= 0) {
        m_edit.SetFocus();
        return;
    }
    const CKxAliveToken alive(m_alive);
    if (m_current < 0) {
        WalkTo(0);
    }
    if (alive.IsAlive()) {
        RedrawRow(m_current);
    }
}

void CSheetGridCtrl::OnKillFocus(CWnd*) {
    RedrawRow(m_current);
}

// ---- Window

void CSheetGridCtrl::OnSize(UINT, int, int) {
    Default();
    m_top = ClampTop(m_top);
    UpdateScrollBar();
    PlaceEdit();
    Invalidate(FALSE);
}

LRESULT CSheetGridCtrl::OnLayoutMessage(WPARAM, LPARAM) {
    const LRESULT result = Default();
    m_rowHeight = 0;
    SetTopRow(m_top);
    UpdateScrollBar();
    PlaceEdit();
    Invalidate(FALSE);
    return result;
}

void CSheetGridCtrl::OnDestroy() {
    m_editRow = -1; // The parent can no longer take the text.
    m_alive.End();
    CWnd::OnDestroy();
}

void CSheetGridCtrl::UpdateScrollBar() {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(0, m_rowCount - 1);
    info.nPage = static_cast<UINT>(GetPageRows());
    info.nPos = m_top;
    ::SetScrollInfo(m_hWnd, SB_VERT, &info, TRUE);
}

// ---- The edit box

BEGIN_MESSAGE_MAP(CSheetGridEdit, CEdit)
    ON_WM_GETDLGCODE()
    ON_WM_KEYDOWN()
    ON_WM_CHAR()
    ON_WM_KILLFOCUS()
    ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

UINT CSheetGridEdit::OnGetDlgCode() {
    return static_cast<UINT>(Default()) | DLGC_WANTALLKEYS;
}

void CSheetGridEdit::OnKeyDown(UINT nChar, UINT, UINT) {
    if (!m_pGrid->OnEditKey(nChar, IsDown(VK_SHIFT))) {
        Default();
    }
}

void CSheetGridEdit::OnChar(UINT nChar, UINT, UINT) {
    // Drops the characters of the keys that OnKeyDown has handled: the box would only beep.
    if (nChar != VK_RETURN && nChar != VK_TAB && nChar != VK_ESCAPE) {
        Default();
    }
}

void CSheetGridEdit::OnKillFocus(CWnd*) {
    Default();
    m_pGrid->EndEdit(1);
}

BOOL CSheetGridEdit::OnMouseWheel(UINT, short, CPoint) {
    // One line has nothing to scroll, but an edit control may keep the message to itself.
    const MSG* message = GetCurrentMessage();
    return m_pGrid->SendMessage(WM_MOUSEWHEEL, message->wParam, message->lParam) != 0;
}
