#include "SectionView.h"

#include "DemoIds.h"
#include "HostText.h"
#include "LibraryWindows.h"

#include <KxBaseClass.h>
#include <TextParm.h>

#include <algorithm>
#include <regex>

#include "SectionDiagram.h"

namespace {

// Longer than any value. The limit also keeps the matching of an expression short, which recurses with every character.
const int LongestText = 40;

// A real number with its sign, as the keyword asks for.
const wchar_t RealKeyword[] = L"$shishu$";
const wchar_t RealExpression[] = L"^[+-]?(\\d+\\.?\\d*|\\.\\d+)$";

const COLORREF Back = RGB(20, 28, 40);
const COLORREF Mark = RGB(90, 170, 250);
const COLORREF Refused = RGB(255, 205, 60);

CString Trimmed(CString text) {
    text.TrimLeft();
    text.TrimRight();
    return text;
}

bool Matches(const CString& expression, const CString& text) {
    try {
        const std::wregex pattern(expression == RealKeyword ? RealExpression : static_cast<LPCTSTR>(expression));
        return std::regex_match(static_cast<LPCTSTR>(text), pattern);
    } catch (const std::regex_error&) {
        return false;
    }
}

bool IsShiftDown() {
    return (::GetKeyState(VK_SHIFT) & 0x8000) != 0;
}

} // namespace

BEGIN_MESSAGE_MAP(CSectionView, CVectorViewParm)
    ON_WM_SIZE()
    ON_WM_LBUTTONDOWN()
    ON_WM_MBUTTONDOWN()
    ON_WM_MOUSEWHEEL()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_KEYDOWN()
    ON_WM_CHAR()
    ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

BOOL CSectionView::CreateIn(CWnd* parent, const RECT& rect, UINT id) {
    const LPCTSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_ARROW), nullptr, nullptr);
    if (!Create(className, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, rect, parent, id)) {
        return FALSE;
    }
    GetDocument()->SetBKColor(Back);
    SectionDiagram::Make(*this);
    SectionDiagram::ShowFigures(*this, m_section);
    m_Graphic.SetZoomByPixs(1);
    m_Graphic.SetZoomAllMargin(36);
    Fit();
    return TRUE;
}

void CSectionView::Fit() {
    if (m_hWnd != nullptr && GetDocument()->GetDrawableObjs()->GetSize() > 0) {
        ZoomAll();
    }
}

CTextParm* CSectionView::Find(const wchar_t* name) {
    return SectionDiagram::Find(*this, name);
}

CString CSectionView::GetSectionName() {
    CTextParm* parm = Find(SectionDiagram::NameOfSection);
    return parm != nullptr ? parm->GetText() : CString();
}

// ---- Opening and walking

CRect CSectionView::GetEditRect(CTextParm* parm) {
    CGePoint2d a;
    CGePoint2d b;
    parm->GetParmEditRect(a, b);
    CPoint topLeft;
    CPoint bottomRight;
    m_CoordTran.DPToLP(a, topLeft);
    m_CoordTran.DPToLP(b, bottomRight);
    return CRect(topLeft.x - 1, topLeft.y, bottomRight.x, bottomRight.y);
}

void CSectionView::Open(CTextParm* parm) {
    if (parm != nullptr) {
        DoEditParm(parm, GetEditRect(parm), 0, 0, L"");
    }
}

// While a refused text is in the box no other edit may open: it would overwrite that text without a message.
void CSectionView::DoEditParm(CTextParm* parm, CRect rect, unsigned int n, int m, CString text) {
    DoEndEdit();
    if (m_pEditParm != nullptr) {
        BackToBox();
        return;
    }
    CVectorViewParm::DoEditParm(parm, rect, n, m, text);
}

void CSectionView::OnPreEditParm(CTextParm* parm, unsigned int&, int&, CString&) {
    m_reason.Empty();
    m_result.Empty();
    if (parm->GetParmType() == SectionDiagram::TypeLocked) {
        ShowResult(parm); // the library opens no box for it, and sends no notification
    } else {
        m_current = parm->GetParmName();
    }
    Invalidate();
}

void CSectionView::ShowResult(CTextParm* parm) {
    m_result = parm->GetText() + LoadText(IDS_COLON) + parm->GetParmDes() + LoadText(IDS_RESULT);
}

void CSectionView::BackToBox() {
    m_Edit.SetFocus();
    m_Edit.SetSel(0, -1);
}

void CSectionView::Enter() {
    if (m_pEditParm != nullptr) {
        m_Edit.SetFocus();
        return;
    }
    SetFocus();
    UpdateWindow(); // a parameter's height, and with it that of its box, is measured by the paint
    Open(Find(m_current));
}

bool CSectionView::FinishEdit() {
    DoEndEdit();
    if (m_pEditParm != nullptr) {
        BackToBox();
        return false;
    }
    return true;
}

void CSectionView::SettleEdit() {
    DoEndEdit();
    if (m_pEditParm != nullptr) {
        m_Edit.SetEditText(m_pEditParm->GetText());
        DoEndEdit();
    }
}

CTextParm* CSectionView::Neighbour(CTextParm* from, bool backward) {
    CDrawableArray* list = GetDocument()->GetDrawableObjs();
    CArray<CTextParm*, CTextParm*> stops;
    INT_PTR at = -1;
    for (INT_PTR i = 0; i < list->GetSize(); ++i) {
        auto* parm = DYNAMIC_DOWNCAST(CTextParm, list->GetAt(i));
        if (parm != nullptr && parm->GetNeedEditBox() != 0 && parm->GetParmType() != SectionDiagram::TypeLocked) {
            if (parm == from) {
                at = stops.GetSize();
            }
            stops.Add(parm);
        }
    }
    const INT_PTR count = stops.GetSize();
    if (count == 0) {
        return nullptr;
    }
    return stops[backward ? (std::max<INT_PTR>(at, 0) + count - 1) % count : (at + 1) % count];
}

void CSectionView::Walk(CTextParm* from, bool backward) {
    Open(Neighbour(from, backward));
}

// The library's own walk has no backward direction, and it ends at a parameter that refuses.
void CSectionView::OnEditTabDown(CTextParm* current) {
    if (m_pEditParm != nullptr) {
        BackToBox(); // the text was refused
        return;
    }
    Walk(current, IsShiftDown());
}

// ---- Checking and taking over

CString CSectionView::FindReason(CTextParm* parm, CString text) {
    text = Trimmed(text);
    if (text.GetLength() > LongestText) {
        return LoadText(IDS_TOO_LONG);
    }
    const CString expression = parm->GetParmRegularExp();
    if (text.IsEmpty() && (!expression.IsEmpty() || parm->GetParmName() == SectionDiagram::NameOfSection)) {
        return LoadText(IDS_EMPTY_VALUE);
    }
    if (!expression.IsEmpty() && !Matches(expression, text)) {
        CString reason;
        reason.Format(LoadText(expression == RealKeyword ? IDS_NOT_REAL : IDS_NOT_NUMBER), static_cast<LPCTSTR>(text));
        return reason;
    }
    WeldedSection wanted = m_section;
    if (double* value = SectionDiagram::ValueOf(wanted, parm->GetParmName())) {
        *value = _wtof(text);
        if (const unsigned fault = wanted.FindFault()) {
            return LoadText(fault);
        }
    }
    return CString();
}

void CSectionView::Refuse(const CString& reason) {
    if (m_reason != reason) {
        m_reason = reason;
        Invalidate();
    }
}

int CSectionView::OnAcceptEditData(CTextParm* parm, CString text) {
    // The former text is always accepted, so that Escape ends every edit.
    const CString reason = text == parm->GetText() ? CString() : FindReason(parm, text);
    Refuse(reason);
    return reason.IsEmpty();
}

void CSectionView::OnEditChanging(CTextParm* parm, CString& oldText, CString& newText) {
    newText = Trimmed(newText);
    if (newText != oldText && SectionDiagram::ValueOf(m_section, parm->GetParmName()) != nullptr) {
        newText.TrimRight(L'.'); // the expression allows a point at the end
    }
}

void CSectionView::OnEditChanged(CTextParm* parm, CString oldText, CString newText) {
    if (oldText == newText) {
        return;
    }
    if (double* value = SectionDiagram::ValueOf(m_section, parm->GetParmName())) {
        *value = _wtof(newText);
        SectionDiagram::ShowFigures(*this, m_section);
    }
    if (m_changed) {
        m_changed();
    }
}

void CSectionView::OnEndEdit(CTextParm*) {
    m_reason.Empty();
}

// ---- Painting

// Draws, over the drawing, a frame around the value that has the keyboard focus, and the reason for a refusal beside
// its box.
int CSectionView::DrawSpecInfo(CDC* dc, int) {
    CTextParm* parm = m_pEditParm != nullptr ? m_pEditParm : Find(m_current);
    const HWND focus = ::GetFocus();
    const bool inside = focus == m_hWnd || ::IsChild(m_hWnd, focus);
    if (parm == nullptr || (!inside && m_pEditParm == nullptr)) {
        return 1;
    }
    CRect box = m_pEditParm != nullptr ? m_Edit.GetEditRect() : GetEditRect(parm);
    box.InflateRect(3, 2);
    CBrush brush(m_reason.IsEmpty() ? Mark : Refused);
    dc->FrameRect(&box, &brush);
    box.InflateRect(1, 1);
    dc->FrameRect(&box, &brush);
    if (m_reason.IsEmpty()) {
        return 1;
    }

    LOGFONTW description = {};
    description.lfHeight = -14;
    description.lfCharSet = DEFAULT_CHARSET;
    wcscpy(description.lfFaceName, L"宋体");
    CFont font;
    font.CreateFontIndirect(&description);
    CFont* oldFont = dc->SelectObject(&font);
    const int oldMode = dc->SetBkMode(TRANSPARENT);
    const COLORREF oldColor = dc->SetTextColor(RGB(30, 20, 0));
    CRect client;
    GetClientRect(&client);
    CRect text(0, 0, std::min(300, std::max(60, client.Width() - 24)), 0);
    dc->DrawText(m_reason, &text, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    CRect balloon(0, 0, text.Width() + 16, text.Height() + 10);
    const int x = std::max(4, std::min(static_cast<int>(box.left), client.Width() - balloon.Width() - 4));
    const bool below = box.bottom + 8 + balloon.Height() < client.Height();
    balloon.OffsetRect(x, below ? box.bottom + 7 : box.top - 7 - balloon.Height());
    CBrush fill(Refused);
    CBrush* oldBrush = dc->SelectObject(&fill);
    CPen edge(PS_SOLID, 1, RGB(120, 80, 0));
    CPen* oldPen = dc->SelectObject(&edge);
    dc->Rectangle(&balloon);
    // Its pointer, up or down to the box.
    const int tip = box.left + 14;
    const int foot = below ? balloon.top : balloon.bottom - 1;
    for (int i = 0; i < 7; ++i) {
        const int y = below ? foot - i : foot + i;
        dc->FillSolidRect(tip - 6 + i, y, 13 - 2 * i, 1, Refused);
    }
    dc->SelectObject(oldPen);
    dc->SelectObject(oldBrush);
    dc->SetBkMode(TRANSPARENT);
    balloon.DeflateRect(8, 5);
    dc->DrawText(m_reason, &balloon, DT_WORDBREAK | DT_NOPREFIX);
    dc->SetTextColor(oldColor);
    dc->SetBkMode(oldMode);
    dc->SelectObject(oldFont);
    return 1;
}

void CSectionView::SetPixelScale(float scale) {
    CEditingOptions options;
    options.pixelScale = scale;
    GetDocument()->SetEditingOptions(options);
}

CString CSectionView::GetHint() {
    if (IsRefused()) {
        return m_reason + LoadText(IDS_ESCAPE_VALUE);
    }
    if (m_pEditParm == nullptr && !m_result.IsEmpty()) {
        return m_result;
    }
    CTextParm* parm = m_pEditParm != nullptr ? m_pEditParm : Find(m_current);
    if (parm == nullptr) {
        return CString();
    }
    CStringArray pieces;
    const int count = KxMfc::Fun::Split(parm->GetParmDes(), L"||", pieces);
    CString hint = pieces[0];
    if (count >= 3 && !pieces[2].IsEmpty()) {
        hint += L" (" + pieces[2] + L")";
    }
    return hint + (m_pEditParm != nullptr ? LoadText(IDS_HINT_EDIT) : LoadText(IDS_HINT_WALK));
}

// ---- Keys and mouse

BOOL CSectionView::PreTranslateMessage(MSG* message) {
    const bool toBox = m_Edit.GetSafeHwnd() != nullptr && message->hwnd == m_Edit.m_hWnd;
    if (toBox && message->message == WM_KEYDOWN && (message->wParam == VK_UP || message->wParam == VK_DOWN) &&
        m_pEditParm != nullptr) {
        // In a single-line box these two keys have no other effect.
        CTextParm* from = m_pEditParm;
        DoEndEdit();
        if (m_pEditParm != nullptr) {
            BackToBox();
        } else {
            Walk(from, message->wParam == VK_UP);
        }
        return TRUE;
    }
    return CVectorViewParm::PreTranslateMessage(message);
}

void CSectionView::OnKeyDown(UINT nChar, UINT, UINT) {
    switch (nChar) {
    case VK_TAB:
        Walk(Find(m_current), IsShiftDown());
        break;
    case VK_DOWN:
        Walk(Find(m_current), false);
        break;
    case VK_UP:
        Walk(Find(m_current), true);
        break;
    case VK_RETURN:
    case VK_F2:
        Open(Find(m_current));
        break;
    default:
        Default();
        break;
    }
}

// A key typed while no box is open replaces the old value.
void CSectionView::OnChar(UINT nChar, UINT nRepCnt, UINT) {
    if (nChar <= L' ' || m_pEditParm != nullptr) {
        Default();
        return;
    }
    Open(Find(m_current));
    if (m_pEditParm != nullptr) {
        m_Edit.SendMessage(WM_CHAR, nChar, static_cast<LPARAM>(nRepCnt));
    }
}

void CSectionView::OnLButtonDown(UINT nFlags, CPoint point) {
    CVectorViewParm::OnLButtonDown(nFlags, point);
    if (m_pEditParm != nullptr && IsRefused()) {
        BackToBox();
    }
}

// The box does not follow the picture: it is closed before the picture moves.
void CSectionView::OnMButtonDown(UINT nFlags, CPoint point) {
    if (FinishEdit()) {
        CVectorViewParm::OnMButtonDown(nFlags, point);
    }
}

BOOL CSectionView::OnMouseWheel(UINT nFlags, short zDelta, CPoint point) {
    return FinishEdit() ? CVectorViewParm::OnMouseWheel(nFlags, zDelta, point) : TRUE;
}

// The menu of the right button is the library's.
void CSectionView::OnInitMenuPopup(CMenu* popup, UINT, BOOL) {
    TranslateLibraryMenu(*popup);
}

void CSectionView::OnSize(UINT nType, int cx, int cy) {
    CVectorViewParm::OnSize(nType, cx, cy);
    Fit();
    if (m_pEditParm != nullptr) {
        const CRect rect = GetEditRect(m_pEditParm);
        m_Edit.MoveWindow(rect.left + 1, rect.top, rect.Width() - 1, rect.Height());
    }
}

void CSectionView::OnSetFocus(CWnd*) {
    Default();
    if (m_pEditParm != nullptr && IsRefused()) {
        BackToBox();
    }
    Invalidate();
}

void CSectionView::OnKillFocus(CWnd*) {
    Default();
    Invalidate();
}
