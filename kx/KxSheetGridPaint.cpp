// The two-column grid: painting, through a bitmap and in the system's colours.
// Layer 2: kx.
#include "KxSheetGrid.h"

#include <algorithm>

namespace {

const int CellMargin = 4;    // pixels between a cell's edge and its text
const int LongestText = 512; // characters; more would never show, and measuring a long text for its dots is slow

// A bitmap of the window's size to paint on; copied and freed at the end of the scope.
class BackBuffer {
public:
    BackBuffer(HDC target, const RECT& area) : m_target(target), m_area(area), m_dc(::CreateCompatibleDC(target)) {
        m_bitmap = ::CreateCompatibleBitmap(target, std::max(1, static_cast<int>(area.right - area.left)),
                                            std::max(1, static_cast<int>(area.bottom - area.top)));
        m_former = ::SelectObject(m_dc, m_bitmap);
        ::SetViewportOrgEx(m_dc, -area.left, -area.top, nullptr);
    }
    ~BackBuffer() {
        ::BitBlt(m_target, m_area.left, m_area.top, m_area.right - m_area.left, m_area.bottom - m_area.top, m_dc,
                 m_area.left, m_area.top, SRCCOPY);
        ::SelectObject(m_dc, m_former);
        ::DeleteObject(m_bitmap);
        ::DeleteDC(m_dc);
    }
    BackBuffer(const BackBuffer&) = delete;
    BackBuffer& operator=(const BackBuffer&) = delete;
    HDC Get() const { return m_dc; }

private:
    HDC m_target;
    RECT m_area;
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_former;
};

void Fill(HDC dc, const CRect& area, int color) {
    ::FillRect(dc, &area, ::GetSysColorBrush(color));
}

void PutText(HDC dc, const CString& text, CRect cell, int color) {
    cell.left += CellMargin;
    cell.right -= CellMargin;
    ::SetTextColor(dc, ::GetSysColor(color));
    ::DrawTextW(dc, text, std::min(text.GetLength(), LongestText), &cell,
                DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

} // namespace

BOOL CSheetGridCtrl::OnEraseBkgnd(CDC*) {
    // OnPaint draws everything, through a bitmap: nothing flickers.
    return TRUE;
}

void CSheetGridCtrl::OnPaint() {
    PAINTSTRUCT paint;
    const HDC target = ::BeginPaint(m_hWnd, &paint);
    if (!::IsRectEmpty(&paint.rcPaint)) {
        const BackBuffer buffer(target, paint.rcPaint);
        PaintAll(buffer.Get(), paint.rcPaint);
    }
    ::EndPaint(m_hWnd, &paint);
}

void CSheetGridCtrl::RedrawRow(int row) {
    if (m_hWnd != nullptr && row >= 0) {
        CRect area = GetCellRect(row, 0);
        area.right = GetCellRect(row, 1).right;
        InvalidateRect(&area, FALSE);
    }
}

void CSheetGridCtrl::PaintAll(HDC dc, const RECT& clip) {
    const HGDIOBJ former = ::SelectObject(dc, GetTextFont());
    ::SetBkMode(dc, TRANSPARENT);
    Fill(dc, CRect(clip), COLOR_WINDOW);
    const int header = GetHeaderHeight();
    const int first = m_top + std::max(0, static_cast<int>(clip.top) - header) / m_rowHeight;
    for (int row = first; row < m_rowCount && GetCellRect(row, 0).top < clip.bottom; ++row) {
        PaintRow(dc, row);
    }
    if (m_showHeader && clip.top < header) {
        PaintHeader(dc);
    }
    ::SelectObject(dc, former);
}

void CSheetGridCtrl::PaintHeader(HDC dc) const {
    CRect client;
    GetClientRect(&client);
    const int divider = GetDivider();
    CRect label(0, 0, divider + 1, m_rowHeight);
    CRect value(divider + 1, 0, client.right, m_rowHeight);
    for (CRect* part : {&label, &value}) {
        Fill(dc, *part, COLOR_BTNFACE);
        ::DrawEdge(dc, part, BDR_RAISEDINNER, BF_RECT);
    }
    PutText(dc, L"名称", label, COLOR_BTNTEXT);
    PutText(dc, L"值", value, COLOR_BTNTEXT);
}

void CSheetGridCtrl::PaintRow(HDC dc, int row) {
    CRect label = GetCellRect(row, 0);
    CRect value = GetCellRect(row, 1);
    const bool current = row == m_current;
    const bool focused = ::GetFocus() == m_hWnd || IsEditing();
    const int text = IsWindowEnabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT;

    // The line under the row and the one between the columns.
    Fill(dc, CRect(0, label.bottom - 1, value.right, label.bottom), COLOR_BTNFACE);
    Fill(dc, CRect(label.right, label.top, label.right + 1, label.bottom), COLOR_BTNFACE);
    label.bottom -= 1;
    value.bottom -= 1;

    if (current) {
        Fill(dc, label, focused ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
    }
    PutText(dc, GetCellText(row, 0), label, current && focused ? COLOR_HIGHLIGHTTEXT : text);
    if (row == m_editRow) {
        return; // the edit box covers the cell
    }
    PutText(dc, GetCellText(row, 1), value, text);
    if (current && ::GetFocus() == m_hWnd) {
        ::SetTextColor(dc, ::GetSysColor(COLOR_WINDOWTEXT));
        ::SetBkColor(dc, ::GetSysColor(COLOR_WINDOW));
        ::DrawFocusRect(dc, &value);
    }
}
