#include "HostView.h"

#include "CommandTable.h"

#include <DrawingHistory.h>
#include <KXBaseOpr.h>
#include <PropertyDialogHost.h>
#include <VectorLabel.h>

#include <algorithm>
#include <cmath>

BEGIN_MESSAGE_MAP(CHostView, CVectorView)
    ON_WM_LBUTTONDOWN()
    ON_WM_RBUTTONDOWN()
    ON_WM_MBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_KEYDOWN()
END_MESSAGE_MAP()

namespace {

const double PickDistance = 4.0; // Pixels, times the scale.
const float TextHeight = 20.0f;  // Of a new text, in drawing units.

} // namespace

// The base's constructor has made an engine of its own: this override does not reach it.
CHostView::CHostView() {
    CHostView::OnCreateCommandOperationManager();
    SetClassic(false);
    EnableHistory(1);
}

void CHostView::OnCreateCommandOperationManager() {
    FreeCommandOperationManager();
    auto* engine = new CHostEngine(this, &m_Graphic, &m_CoordTran, GetDocument());
    engine->SetDone([this] { OnCommandDone(); });
    m_pManager = engine;
    CKXMemoryManager::Instance()->AddMemoryInfo(m_pManager, __FILE__, __LINE__);
}

BOOL CHostView::CreateIn(CWnd* parent, const RECT& rect, UINT id) {
    // Double clicks for the zoom by the middle button; no background and no device context of its own, because the view
    // paints its whole area and inverts on fresh contexts. With WS_CLIPCHILDREN the paint leaves out the edit box.
    const LPCTSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_CROSS), nullptr, nullptr);
    return Create(className, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, rect, parent, id, nullptr);
}

// ---- Commands

void CHostView::RunCommand(int row) {
    const CommandWord& command = CommandRows[row];
    CGraphicDocument* document = GetDocument();
    const CDrawingHistory* history = GetHistory();
    const BOOL modified = document->IsModified();
    const int steps = history != nullptr ? history->GetUndoCount() : 0;
    SetFocus();
    document->SetFGColorIndex(HasLightBackground() ? kColorBlack : kColorWhite);
    DoCommand(command.word);
    const bool same = history == nullptr || history->GetUndoCount() == steps;
    if ((command.flags & kCommandHarmless) && !modified && same) {
        // In the classic way the view marks the drawing as modified after every word; panning and zooming change
        // nothing that would be saved. A command that this word has ended may have changed something. Only the flag is
        // removed: a history would lose the saved state in the middle of a command.
        document->CDocument::SetModifiedFlag(FALSE);
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

// Whether the running command's right button restores what it has moved. A grip edit, which has no row, always does.
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

int CHostView::OnBeforeUndo() {
    BreakOff(false);
    return CVectorView::OnBeforeUndo();
}

void CHostView::RestartHistory() {
    if (CDrawingHistory* history = GetHistory()) {
        history->Restart();
    }
}

// ---- Colours

bool CHostView::HasLightBackground() {
    const COLORREF color = GetDocument()->GetBKColor();
    return 299 * GetRValue(color) + 587 * GetGValue(color) + 114 * GetBValue(color) > 128 * 1000;
}

void CHostView::MakeReadable(CDrawable* object) {
    const bool light = HasLightBackground();
    const COLORREF unseen = light ? RGB(255, 255, 255) : RGB(0, 0, 0);
    if (object->GetPenColorIndex() == (light ? kColorWhite : kColorBlack)) {
        object->SetPenColorIndex(light ? kColorBlack : kColorWhite);
    } else if (object->GetPenColorIndex() == kColorExplicit && object->GetPenColor() == unseen) {
        object->SetPenColor(unseen ^ RGB(255, 255, 255));
    }
}

// For objects that do not take the foreground colour of the drawing: a new dimension, which is white, and pasted
// objects.
void CHostView::OnCommandDone() {
    const CDrawableArray& objects = *GetDocument()->GetDrawableObjs();
    if (m_placing) {
        const CDrawableArray& pasted = *GetDocument()->GetSelectedDrawableObjs();
        for (INT_PTR i = 0; i < pasted.GetSize(); ++i) {
            MakeReadable(pasted.GetAt(i));
        }
    } else if (m_row >= 0 && m_clicks > 2 && wcsncmp(CommandRows[m_row].word, L"DrawLabel", 9) == 0 &&
               !objects.IsEmpty()) {
        CDrawable* added = objects.GetAt(objects.GetSize() - 1);
        MakeReadable(added);
        if (auto* label = DYNAMIC_DOWNCAST(CKXVectorLabel, added); label != nullptr && !IsClassic()) {
            label->SetHasTextHole(false); // The figure is beside the line, and not in a gap of it.
        }
    }
}

// ---- Options and selection

void CHostView::SetClassic(bool classic) {
    CEditingOptions options = classic ? CEditingOptions() : CEditingOptions::Comfortable();
    // The figures of dimensions are as high as texts, and larger in a large drawing, so that they are legible.
    CGePoint2d low;
    CGePoint2d high;
    options.figureHeight = TextHeight;
    if (GetDocument()->GetRect(low, high)) {
        const double extent = std::max(high.x - low.x, high.y - low.y);
        options.figureHeight = std::max(TextHeight, static_cast<float>(extent / 40.0));
    }
    options.pixelScale = m_pixelScale;
    GetDocument()->SetEditingOptions(options);
}

void CHostView::SetPixelScale(float scale, CFont& font) {
    m_pixelScale = scale;
    m_font = font;
    if (m_figure != nullptr) {
        ::SendMessageW(m_figure, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
    }
    SetClassic(IsClassic());
    if (m_hWnd != nullptr) {
        Invalidate();
    }
}

bool CHostView::IsClassic() {
    return !GetDocument()->GetEditingOptions().previewsReturn;
}

bool CHostView::CanSelectAll() {
    CGraphicDocument* document = GetDocument();
    return document->GetSelectedDrawableObjs()->GetSize() < document->GetDrawableObjs()->GetSize();
}

void CHostView::SelectAll() {
    const CDrawableArray& objects = *GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CDrawable* object = objects.GetAt(i);
        if (object->isCanSelect() && object->GetIsShow()) {
            GetDocument()->AddSelected(object);
        }
    }
    Invalidate();
}

CDrawable* CHostView::SelectAt(CPoint point) {
    CGePoint2d place;
    GetVectorViewCoordTran()->LPToDP(point, place);
    const CDrawableArray& objects = *GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CDrawable* object = objects.GetAt(i);
        const double distance = static_cast<double>(object->HitTest(place));
        if (object->isCanSelect() && static_cast<double>(GetVectorViewCoordTran()->DToL(distance)) <=
                                         PickDistance * static_cast<double>(m_pixelScale)) {
            if (!GetDocument()->IsSelected(object)) {
                GetDocument()->RemoveAllSelected();
                GetDocument()->AddSelected(object);
                Invalidate();
            }
            return object;
        }
    }
    return nullptr;
}

bool CHostView::TakeMenuWish() {
    const bool wish = m_wantsMenu;
    m_wantsMenu = false;
    return wish;
}

// ---- The figure beside the band

void CHostView::ShowBandFigure() {
    CPoint from;
    CPoint to;
    // In the classic way a small repaint beside the band would leave parts of it on the window.
    if (!GetManager()->GetHasCommand() || IsClassic() || !GetManager()->GetBand(from, to)) {
        if (m_figure != nullptr) {
            ::ShowWindow(m_figure, SW_HIDE);
        }
        return;
    }
    if (m_figure == nullptr) {
        m_figure = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | SS_CENTER | WS_BORDER, 0, 0, 0, 0, m_hWnd, nullptr,
                                     AfxGetInstanceHandle(), nullptr);
        ::SendMessageW(m_figure, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
    }
    const double dx = to.x - from.x;
    const double dy = from.y - to.y;
    const double length = GetVectorViewCoordTran()->LToD(static_cast<float>(std::hypot(dx, dy)));
    double angle = std::atan2(dy, dx) * 57.29577951308232;
    angle = angle < 0.0 ? angle + 360.0 : angle;
    CString text;
    text.Format(L"%.1f  %.1f°", length, angle);
    if (text != m_figureText) {
        m_figureText = text;
        ::SetWindowTextW(m_figure, text);
    }
    CRect client;
    GetClientRect(&client);
    const auto scaled = [this](int pixels) { return static_cast<int>(static_cast<float>(pixels) * m_pixelScale); };
    const CSize size(scaled(110), scaled(18));
    // Beside the mouse, within the view.
    const int x = std::min<int>(m_cursor.x + scaled(20), client.right - size.cx);
    const int y = std::min<int>(m_cursor.y + scaled(20), client.bottom - size.cy);
    ::SetWindowPos(m_figure, nullptr, x, y, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
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

// Keys arrive here before any other code gets them, also those of the edit box beside the rubber band: the library
// shows and reads that box, but the host decides when a typed distance is meant.
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
        // From the first character on the mouse must not overwrite the distance.
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
    const CDrawableArray& selected = *GetDocument()->GetSelectedDrawableObjs();
    const INT_PTR before = selected.GetSize();
    ++m_clicks;
    CVectorView::OnLButtonDown(nFlags, point);
    // An offset picks again after a click that hit nothing: its next step is still the first one.
    const int row = GetCommandRow();
    if (row >= 0 && wcscmp(CommandRows[row].word, L"offset") == 0 && selected.GetSize() == before) {
        --m_clicks;
    }
}

void CHostView::OnRButtonDown(UINT nFlags, CPoint point) {
    TakeFocus();
    m_wantsMenu = !GetManager()->GetHasCommand();
    const int row = GetCommandRow();
    if (row >= 0 && (CommandRows[row].flags & kCommandRestores) && !CanRestore()) {
        // Before the base point there is nothing to restore, and the command would raise while reading its empty
        // memory.
        BreakOff();
        return;
    }
    CVectorView::OnRButtonDown(nFlags, point);
    Invalidate(); // some cancelled commands leave their previews on the window
}

void CHostView::OnMButtonDown(UINT nFlags, CPoint point) {
    TakeFocus();
    CVectorView::OnMButtonDown(nFlags, point);
}

void CHostView::OnMouseMove(UINT nFlags, CPoint point) {
    m_cursor = point;
    m_hasCursor = true;
    CVectorView::OnMouseMove(nFlags, point);
    ShowBandFigure();
}

void CHostView::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) {
    // Any key clears the selection when nothing runs. Shift and Ctrl are excluded, because they begin a shortcut.
    if (nChar == VK_SHIFT || nChar == VK_CONTROL) {
        Default();
        return;
    }
    CVectorView::OnKeyDown(nChar, nRepCnt, nFlags);
}
