#include "InPlaceEdit.h"

#include "Truncate.h"

#include <algorithm>
#include <utility>

IMPLEMENT_DYNAMIC(CInPlaceEdit, CEdit)

BEGIN_MESSAGE_MAP(CInPlaceEdit, CEdit)
    ON_WM_KEYDOWN()
    ON_WM_CHAR()
    ON_WM_KILLFOCUS()
    ON_WM_GETDLGCODE()
    ON_WM_CUT()
    ON_WM_COPY()
    ON_WM_CLEAR()
END_MESSAGE_MAP()

namespace {

// Without a border, so that the box looks like the text that it covers.
constexpr DWORD kBoxStyle = WS_CHILD | ES_AUTOHSCROLL | ES_NOHIDESEL;

// Pixels up to which the window grows with its text; a longer text scrolls inside.
// Compatibility 71: the box grows on beyond 200 pixels without its window.
constexpr int kWidestGrown = 200;

// A stored parameter may have any width and height; edges whose pixel does not fit an int are at INT_MIN.

int WidthOf(const CRect& rect) {
    return WrapSubtract(rect.right, rect.left);
}

int HeightOf(const CRect& rect) {
    return WrapSubtract(rect.bottom, rect.top);
}

bool IsControlDown() {
    return (::GetKeyState(VK_CONTROL) & 0x8000) != 0;
}

} // namespace

// ---- Construction --------------------------------------------------------------------------------------------------

CInPlaceEdit::CInPlaceEdit(CWnd* parent, const CRect& rect, DWORD style, UINT id, int, int, CString text, UINT firstKey)
    : m_InitText(text), m_ArrowsEndEdit(firstKey != VK_LBUTTON), m_EditRect(rect), m_pParentView(parent) {
    if (!CWnd::CreateEx(WS_EX_CLIENTEDGE, L"EDIT", nullptr, style, rect, parent, id)) {
        return;
    }
    SetFont(parent->GetFont(), TRUE);
    SetWindowText(text);
    SetFocus();
    if (firstKey == VK_LBUTTON || firstKey == VK_RETURN) {
        PlaceCaret(text.GetLength(), text.GetLength());
        return;
    }
    if (firstKey == VK_BACK) {
        PlaceCaret(text.GetLength(), text.GetLength());
    } else {
        PlaceCaret(0, -1);
        if (firstKey == VK_TAB || (firstKey >= VK_SPACE && firstKey <= VK_DOWN)) {
            return;
        }
    }
    SendMessage(WM_CHAR, firstKey);
}

// ---- The virtual interface -----------------------------------------------------------------------------------------

int CInPlaceEdit::CheckText(CString) {
    return 1;
}

LRESULT CInPlaceEdit::SetFont(CFont* font, int) {
    if (m_hWnd == nullptr) {
        return 0;
    }
    const HGDIOBJ handle = font != nullptr ? font->GetSafeHandle() : nullptr;
    return SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(handle), TRUE);
}

void CInPlaceEdit::SetEditLimit(unsigned int, unsigned int) {}

int CInPlaceEdit::Create(CWnd* parent, CTextParm* parm, unsigned int id) {
    m_pTextParm = parm;
    if (parent == nullptr || parent->GetSafeHwnd() == nullptr) {
        return 0;
    }
    if (!CEdit::Create(kBoxStyle, CRect(0, 0, 100, 100), parent, id)) {
        return 0;
    }
    m_pParentView = parent;
    return 1;
}

int CInPlaceEdit::GetEditText(CString& text) {
    text = GetShownText();
    return 1;
}

CString CInPlaceEdit::GetShownText() const {
    if (m_hWnd == nullptr) {
        return m_InitText;
    }
    CString text;
    GetWindowText(text);
    return text;
}

int CInPlaceEdit::SetEditText(const CString& text) {
    if (m_hWnd != nullptr) {
        SetWindowText(text);
    }
    return 1;
}

CString CInPlaceEdit::FormatText(const CString& text) {
    return text;
}

void CInPlaceEdit::ShowEdit(CRect rect, CString text, unsigned int key, int useOther, CString other) {
    // The view's rectangle begins one pixel left of the text.
    rect.left = WrapAdd(rect.left, 1);
    m_EditRect = rect;
    m_InitText = text;
    if (m_hWnd == nullptr) {
        return;
    }
    const CKxAliveToken alive(m_Alive);
    SetWindowText(useOther != 0 ? other : text);
    if (!alive.IsAlive()) {
        return;
    }
    SetWindowPos(&wndTop, rect.left, rect.top, WidthOf(rect), HeightOf(rect), SWP_NOREDRAW | SWP_SHOWWINDOW);
    SetFocus();
    if (!alive.IsAlive()) {
        return;
    }
    if (key == VK_F2 || useOther != 0) {
        // Compatibility 82: the caret is at the length of a text that is not shown.
        // The caret is placed at the length of `text` also where `other` is shown.
        SendMessage(EM_SETSEL, static_cast<WPARAM>(text.GetLength()), text.GetLength());
    } else {
        SendMessage(EM_SETSEL, 0, -1);
    }
}

void CInPlaceEdit::EndEdit() {
    const CKxAliveToken alive(m_Alive);
    if (m_hWnd != nullptr) {
        // The hidden window loses the focus, and WM_KILLFOCUS arrives within this call.
        SetWindowPos(&wndNoTopMost, 0, 0, 0, 0, SWP_NOZORDER | SWP_HIDEWINDOW);
    }
    if (alive.IsAlive()) {
        m_pTextParm = nullptr;
    }
}

// ---- Ending an edit ------------------------------------------------------------------------------------------------

CInPlaceEditParent* CInPlaceEdit::Parent() const {
    return dynamic_cast<CInPlaceEditParent*>(m_pParentView);
}

bool CInPlaceEdit::EndParentEdit() {
    CInPlaceEditParent* parent = Parent();
    if (parent == nullptr) {
        return true;
    }
    const CKxAliveToken alive(m_Alive);
    parent->DoEndEdit();
    return alive.IsAlive() && !parent->KeepsFocus();
}

void CInPlaceEdit::FocusParent() {
    if (m_hWnd != nullptr) {
        if (CWnd* parent = GetParent()) {
            parent->SetFocus();
        }
    }
}

// Whether the caret can't go further in the direction of the key. False for the page keys.
bool CInPlaceEdit::IsAtEdge(UINT key) {
    const int caret = HIWORD(SendMessage(EM_GETSEL));
    switch (key) {
    case VK_RIGHT:
        return caret >= GetWindowTextLength();
    case VK_LEFT:
        return caret == 0;
    case VK_UP:
    case VK_DOWN:
        return true;
    default:
        return false;
    }
}

// ---- Messages ------------------------------------------------------------------------------------------------------

BOOL CInPlaceEdit::PreTranslateMessage(MSG* msg) {
    if (msg->message == WM_SYSCHAR) {
        return TRUE;
    }
    if (msg->message == WM_KEYDOWN && (msg->wParam == VK_TAB || msg->wParam == VK_RETURN)) {
        // Return does what Tab does. The repeat count of 0 distinguishes this call from a message.
        OnKeyDown(VK_TAB, 0, 0);
        return TRUE;
    }
    if (msg->message == WM_KEYDOWN && msg->hwnd == m_hWnd && IsControlDown()) {
        switch (msg->wParam) {
        case 'C':
            SendMessage(WM_COPY);
            break;
        case 'X': {
            const CKxAliveToken alive(m_Alive);
            SendMessage(WM_CUT);
            if (!alive.IsAlive()) {
                return TRUE;
            }
            SendMessage(WM_CLEAR);
            break;
        }
        case 'A':
            PlaceCaret(0, -1);
            break;
        default:
            break;
        }
    }
    return CWnd::PreTranslateMessage(msg);
}

void CInPlaceEdit::OnKeyDown(UINT nChar, UINT nRepCnt, UINT) {
    m_bTabPressed = nChar == VK_TAB && nRepCnt != 0;
    switch (nChar) {
    case VK_PRIOR:
    case VK_NEXT:
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
        if (m_ArrowsEndEdit != 0 || IsControlDown()) {
            m_LastKey = nChar;
            if (IsAtEdge(nChar)) {
                if (EndParentEdit()) {
                    FocusParent();
                }
                return;
            }
        }
        break;
    case VK_TAB: {
        // Read first: the end of the edit clears the member.
        CTextParm* parm = m_pTextParm;
        if (EndParentEdit()) {
            if (CInPlaceEditParent* parent = Parent()) {
                parent->OnEditTabDown(parm);
            }
        }
        return;
    }
    default:
        break;
    }
    Default();
}

void CInPlaceEdit::OnChar(UINT nChar, UINT, UINT) {
    const CKxAliveToken alive(m_Alive);
    // Without PreTranslateMessage the character of a Tab follows its key; it must not end the edit that the key has
    // opened.
    if (std::exchange(m_bTabPressed, false) && nChar == VK_TAB && m_pTextParm != nullptr) {
        return;
    }
    switch (nChar) {
    case VK_ESCAPE:
        // Compatibility 70: Escape stores.
        // Stores the text with which the edit began; every hook runs as for any other end.
        SetWindowText(m_InitText);
        if (!alive.IsAlive()) {
            return;
        }
        [[fallthrough]];
    case VK_TAB:
    case VK_RETURN:
        m_LastKey = nChar;
        if (EndParentEdit()) {
            FocusParent();
        }
        return;
    default:
        Default();
        if (alive.IsAlive()) {
            GrowToText();
        }
        return;
    }
}

void CInPlaceEdit::OnKillFocus(CWnd*) {
    const CKxAliveToken alive(m_Alive);
    Default();
    if (alive.IsAlive()) {
        EndParentEdit();
    }
}

UINT CInPlaceEdit::OnGetDlgCode() {
    // A dialog around the view must not take Tab, Return or Escape away.
    return DLGC_WANTALLKEYS;
}

void CInPlaceEdit::OnCut() {
    const CKxAliveToken alive(m_Alive);
    Default();
    if (alive.IsAlive()) {
        SendMessage(WM_CLEAR);
    }
}

void CInPlaceEdit::OnCopy() {
    Default();
}

void CInPlaceEdit::OnClear() {
    Default();
}

void CInPlaceEdit::PostNcDestroy() {
    m_Alive.End();
    // Deletes nothing, because the box is a member of its view.
    CEdit::PostNcDestroy();
}

// ---- Looks ---------------------------------------------------------------------------------------------------------

void CInPlaceEdit::PlaceCaret(int start, int end) {
    SendMessage(EM_SETSEL, static_cast<WPARAM>(start), end);
    SendMessage(EM_SCROLLCARET);
}

void CInPlaceEdit::GrowToText() {
    CString text;
    GetWindowText(text);
    text += L"  "; // Space for the next character.
    CSize size;
    {
        CWindowDC dc(this);
        const auto font = reinterpret_cast<HGDIOBJ>(SendMessage(WM_GETFONT));
        const HGDIOBJ old = font != nullptr ? ::SelectObject(dc.m_hDC, font) : nullptr;
        ::GetTextExtentPoint32W(dc.m_hDC, text, text.GetLength(), &size);
        if (old != nullptr) {
            ::SelectObject(dc.m_hDC, old);
        }
    }
    if (size.cx > WidthOf(m_EditRect)) {
        m_EditRect.right = WrapAdd(m_EditRect.left, size.cx);
        CRect client;
        if (CWnd* parent = GetParent()) {
            parent->GetClientRect(&client);
            m_EditRect.right = std::min(m_EditRect.right, client.right);
        }
    }
    if (WidthOf(m_EditRect) <= kWidestGrown) {
        MoveWindow(m_EditRect.left, m_EditRect.top, WidthOf(m_EditRect), HeightOf(m_EditRect), TRUE);
    }
}
