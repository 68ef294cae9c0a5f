// The classic controls: thin covers of their messages.
// Layer 1: afx.
#include "ThreadState.h"

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)
IMPLEMENT_DYNAMIC(CScrollBar, CWnd)

namespace {

LPARAM Text(LPCTSTR text) {
    return reinterpret_cast<LPARAM>(text);
}

} // namespace

// --- CStatic ---------------------------------------------------------------------------------------------------------

BOOL CStatic::Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    return CWnd::Create(_T("STATIC"), lpszText, dwStyle, rect, pParentWnd, nID);
}

HICON CStatic::SetIcon(HICON hIcon) {
    return reinterpret_cast<HICON>(SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(hIcon)));
}

HICON CStatic::GetIcon() const {
    return reinterpret_cast<HICON>(SendMessage(STM_GETICON));
}

HBITMAP CStatic::SetBitmap(HBITMAP hBitmap) {
    return reinterpret_cast<HBITMAP>(SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(hBitmap)));
}

HBITMAP CStatic::GetBitmap() const {
    return reinterpret_cast<HBITMAP>(SendMessage(STM_GETIMAGE, IMAGE_BITMAP));
}

// --- CButton ---------------------------------------------------------------------------------------------------------

BOOL CButton::Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    return CWnd::Create(_T("BUTTON"), lpszCaption, dwStyle, rect, pParentWnd, nID);
}

int CButton::GetCheck() const {
    return static_cast<int>(SendMessage(BM_GETCHECK, 0, 0));
}

void CButton::SetCheck(int nCheck) {
    SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck), 0);
}

UINT CButton::GetState() const {
    return static_cast<UINT>(SendMessage(BM_GETSTATE, 0, 0));
}

void CButton::SetState(BOOL bHighlight) {
    SendMessage(BM_SETSTATE, static_cast<WPARAM>(bHighlight), 0);
}

UINT CButton::GetButtonStyle() const {
    return GetStyle() & 0xFF;
}

void CButton::SetButtonStyle(UINT nStyle, BOOL bRedraw) {
    SendMessage(BM_SETSTYLE, nStyle, bRedraw);
}

// --- CEdit -----------------------------------------------------------------------------------------------------------

BOOL CEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    return CWnd::Create(_T("EDIT"), nullptr, dwStyle, rect, pParentWnd, nID);
}

BOOL CEdit::CanUndo() const {
    return static_cast<BOOL>(SendMessage(EM_CANUNDO, 0, 0));
}

BOOL CEdit::GetModify() const {
    return static_cast<BOOL>(SendMessage(EM_GETMODIFY, 0, 0));
}

void CEdit::SetModify(BOOL bModified) {
    SendMessage(EM_SETMODIFY, static_cast<WPARAM>(bModified), 0);
}

DWORD CEdit::GetSel() const {
    return static_cast<DWORD>(SendMessage(EM_GETSEL, 0, 0));
}

void CEdit::GetSel(int& nStartChar, int& nEndChar) const {
    DWORD start = 0, end = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    nStartChar = static_cast<int>(start);
    nEndChar = static_cast<int>(end);
}

void CEdit::SetSel(DWORD dwSelection, BOOL bNoScroll) {
    // Two places from 0 to 65,534; the word for -1 is all ones.
    const auto place = [](WORD word) { return word == 0xFFFF ? -1 : static_cast<int>(word); };
    SetSel(place(LOWORD(dwSelection)), place(HIWORD(dwSelection)), bNoScroll);
}

void CEdit::SetSel(int nStartChar, int nEndChar, BOOL bNoScroll) {
    SendMessage(EM_SETSEL, static_cast<WPARAM>(nStartChar), nEndChar);
    if (!bNoScroll) {
        SendMessage(EM_SCROLLCARET);
    }
}

void CEdit::ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo) {
    SendMessage(EM_REPLACESEL, static_cast<WPARAM>(bCanUndo), Text(lpszNewText));
}

void CEdit::LimitText(int nChars) {
    SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(nChars), 0);
}

void CEdit::SetLimitText(UINT nMax) {
    SendMessage(EM_SETLIMITTEXT, nMax, 0);
}

UINT CEdit::GetLimitText() const {
    return static_cast<UINT>(SendMessage(EM_GETLIMITTEXT, 0, 0));
}

int CEdit::GetLineCount() const {
    return static_cast<int>(SendMessage(EM_GETLINECOUNT, 0, 0));
}

int CEdit::GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const {
    // The control reads the buffer's size from its first word, and does not add a zero at the end.
    *reinterpret_cast<WORD*>(lpszBuffer) = static_cast<WORD>(nMaxLength);
    return static_cast<int>(SendMessage(EM_GETLINE, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpszBuffer)));
}

int CEdit::LineFromChar(int nIndex) const {
    return static_cast<int>(SendMessage(EM_LINEFROMCHAR, static_cast<WPARAM>(nIndex), 0));
}

int CEdit::LineIndex(int nLine) const {
    return static_cast<int>(SendMessage(EM_LINEINDEX, static_cast<WPARAM>(nLine), 0));
}

int CEdit::LineLength(int nLine) const {
    return static_cast<int>(SendMessage(EM_LINELENGTH, static_cast<WPARAM>(nLine), 0));
}

void CEdit::LineScroll(int nLines, int nChars) {
    SendMessage(EM_LINESCROLL, static_cast<WPARAM>(nChars), nLines);
}

void CEdit::GetRect(LPRECT lpRect) const {
    SendMessage(EM_GETRECT, 0, reinterpret_cast<LPARAM>(lpRect));
}

void CEdit::SetRect(LPCRECT lpRect) {
    SendMessage(EM_SETRECT, 0, reinterpret_cast<LPARAM>(lpRect));
}

void CEdit::SetMargins(UINT nLeft, UINT nRight) {
    SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, static_cast<LPARAM>(MAKELONG(nLeft, nRight)));
}

DWORD CEdit::GetMargins() const {
    return static_cast<DWORD>(SendMessage(EM_GETMARGINS, 0, 0));
}

BOOL CEdit::SetReadOnly(BOOL bReadOnly) {
    return static_cast<BOOL>(SendMessage(EM_SETREADONLY, static_cast<WPARAM>(bReadOnly), 0));
}

void CEdit::SetPasswordChar(TCHAR ch) {
    SendMessage(EM_SETPASSWORDCHAR, ch, 0);
}

CPoint CEdit::PosFromChar(UINT nChar) const {
    const LRESULT place = SendMessage(EM_POSFROMCHAR, nChar);
    return CPoint(static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place)));
}

int CEdit::CharFromPos(CPoint pt) const {
    return static_cast<int>(SendMessage(EM_CHARFROMPOS, 0, MAKELPARAM(pt.x, pt.y)));
}

BOOL CEdit::Undo() {
    return static_cast<BOOL>(SendMessage(EM_UNDO, 0, 0));
}

void CEdit::EmptyUndoBuffer() {
    SendMessage(EM_EMPTYUNDOBUFFER, 0, 0);
}

void CEdit::Clear() {
    SendMessage(WM_CLEAR, 0, 0);
}

void CEdit::Copy() {
    SendMessage(WM_COPY, 0, 0);
}

void CEdit::Cut() {
    SendMessage(WM_CUT, 0, 0);
}

void CEdit::Paste() {
    SendMessage(WM_PASTE, 0, 0);
}

// --- CListBox --------------------------------------------------------------------------------------------------------

BOOL CListBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    return CWnd::Create(_T("LISTBOX"), nullptr, dwStyle, rect, pParentWnd, nID);
}

int CListBox::GetCount() const {
    return static_cast<int>(SendMessage(LB_GETCOUNT, 0, 0));
}

int CListBox::AddString(LPCTSTR lpszItem) {
    return static_cast<int>(SendMessage(LB_ADDSTRING, 0, Text(lpszItem)));
}

int CListBox::InsertString(int nIndex, LPCTSTR lpszItem) {
    return static_cast<int>(SendMessage(LB_INSERTSTRING, static_cast<WPARAM>(nIndex), Text(lpszItem)));
}

int CListBox::DeleteString(UINT nIndex) {
    return static_cast<int>(SendMessage(LB_DELETESTRING, nIndex, 0));
}

void CListBox::ResetContent() {
    SendMessage(LB_RESETCONTENT, 0, 0);
}

int CListBox::FindString(int nStartAfter, LPCTSTR lpszItem) const {
    return static_cast<int>(SendMessage(LB_FINDSTRING, static_cast<WPARAM>(nStartAfter), Text(lpszItem)));
}

int CListBox::FindStringExact(int nIndexStart, LPCTSTR lpszFind) const {
    return static_cast<int>(SendMessage(LB_FINDSTRINGEXACT, static_cast<WPARAM>(nIndexStart), Text(lpszFind)));
}

int CListBox::SelectString(int nStartAfter, LPCTSTR lpszItem) {
    return static_cast<int>(SendMessage(LB_SELECTSTRING, static_cast<WPARAM>(nStartAfter), Text(lpszItem)));
}

int CListBox::GetCurSel() const {
    return static_cast<int>(SendMessage(LB_GETCURSEL, 0, 0));
}

int CListBox::SetCurSel(int nSelect) {
    return static_cast<int>(SendMessage(LB_SETCURSEL, static_cast<WPARAM>(nSelect), 0));
}

DWORD_PTR CListBox::GetItemData(int nIndex) const {
    return static_cast<DWORD_PTR>(SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(nIndex), 0));
}

int CListBox::SetItemData(int nIndex, DWORD_PTR dwItemData) {
    return static_cast<int>(SendMessage(LB_SETITEMDATA, static_cast<WPARAM>(nIndex), static_cast<LPARAM>(dwItemData)));
}

int CListBox::GetTextLen(int nIndex) const {
    return static_cast<int>(SendMessage(LB_GETTEXTLEN, static_cast<WPARAM>(nIndex), 0));
}

int CListBox::GetText(int nIndex, LPTSTR lpszBuffer) const {
    return static_cast<int>(SendMessage(LB_GETTEXT, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpszBuffer)));
}

void CListBox::GetText(int nIndex, CString& rString) const {
    const int length = GetTextLen(nIndex);
    if (length < 0) {
        AfxThrowInvalidArgException();
    }
    GetText(nIndex, rString.GetBufferSetLength(length));
    rString.ReleaseBuffer();
}

// --- CComboBox -------------------------------------------------------------------------------------------------------

BOOL CComboBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    return CWnd::Create(_T("COMBOBOX"), nullptr, dwStyle, rect, pParentWnd, nID);
}

int CComboBox::GetCount() const {
    return static_cast<int>(SendMessage(CB_GETCOUNT, 0, 0));
}

int CComboBox::AddString(LPCTSTR lpszString) {
    return static_cast<int>(SendMessage(CB_ADDSTRING, 0, Text(lpszString)));
}

int CComboBox::InsertString(int nIndex, LPCTSTR lpszString) {
    return static_cast<int>(SendMessage(CB_INSERTSTRING, static_cast<WPARAM>(nIndex), Text(lpszString)));
}

int CComboBox::DeleteString(UINT nIndex) {
    return static_cast<int>(SendMessage(CB_DELETESTRING, nIndex, 0));
}

void CComboBox::ResetContent() {
    SendMessage(CB_RESETCONTENT, 0, 0);
}

int CComboBox::FindString(int nStartAfter, LPCTSTR lpszString) const {
    return static_cast<int>(SendMessage(CB_FINDSTRING, static_cast<WPARAM>(nStartAfter), Text(lpszString)));
}

int CComboBox::FindStringExact(int nIndexStart, LPCTSTR lpszFind) const {
    return static_cast<int>(SendMessage(CB_FINDSTRINGEXACT, static_cast<WPARAM>(nIndexStart), Text(lpszFind)));
}

int CComboBox::SelectString(int nStartAfter, LPCTSTR lpszString) {
    return static_cast<int>(SendMessage(CB_SELECTSTRING, static_cast<WPARAM>(nStartAfter), Text(lpszString)));
}

int CComboBox::GetCurSel() const {
    return static_cast<int>(SendMessage(CB_GETCURSEL, 0, 0));
}

int CComboBox::SetCurSel(int nSelect) {
    return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(nSelect), 0));
}

DWORD_PTR CComboBox::GetItemData(int nIndex) const {
    return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, static_cast<WPARAM>(nIndex), 0));
}

int CComboBox::SetItemData(int nIndex, DWORD_PTR dwItemData) {
    return static_cast<int>(SendMessage(CB_SETITEMDATA, static_cast<WPARAM>(nIndex), static_cast<LPARAM>(dwItemData)));
}

int CComboBox::GetLBTextLen(int nIndex) const {
    return static_cast<int>(SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(nIndex), 0));
}

int CComboBox::GetLBText(int nIndex, LPTSTR lpszText) const {
    return static_cast<int>(SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpszText)));
}

void CComboBox::GetLBText(int nIndex, CString& rString) const {
    const int length = GetLBTextLen(nIndex);
    if (length < 0) {
        AfxThrowInvalidArgException();
    }
    GetLBText(nIndex, rString.GetBufferSetLength(length));
    rString.ReleaseBuffer();
}

void CComboBox::ShowDropDown(BOOL bShowIt) {
    SendMessage(CB_SHOWDROPDOWN, static_cast<WPARAM>(bShowIt), 0);
}

BOOL CComboBox::GetDroppedState() const {
    return static_cast<BOOL>(SendMessage(CB_GETDROPPEDSTATE, 0, 0));
}

BOOL CComboBox::LimitText(int nMaxChars) {
    return static_cast<BOOL>(SendMessage(CB_LIMITTEXT, static_cast<WPARAM>(nMaxChars), 0));
}

// --- CScrollBar ------------------------------------------------------------------------------------------------------

BOOL CScrollBar::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    return CWnd::Create(_T("SCROLLBAR"), nullptr, dwStyle, rect, pParentWnd, nID);
}

int CScrollBar::GetScrollPos() const {
    return ::GetScrollPos(m_hWnd, SB_CTL);
}

int CScrollBar::SetScrollPos(int nPos, BOOL bRedraw) {
    return ::SetScrollPos(m_hWnd, SB_CTL, nPos, bRedraw);
}

void CScrollBar::GetScrollRange(LPINT lpMinPos, LPINT lpMaxPos) const {
    ::GetScrollRange(m_hWnd, SB_CTL, lpMinPos, lpMaxPos);
}

void CScrollBar::SetScrollRange(int nMinPos, int nMaxPos, BOOL bRedraw) {
    ::SetScrollRange(m_hWnd, SB_CTL, nMinPos, nMaxPos, bRedraw);
}

BOOL CScrollBar::GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask) {
    return CWnd::GetScrollInfo(SB_CTL, lpScrollInfo, nMask);
}

BOOL CScrollBar::SetScrollInfo(LPSCROLLINFO lpScrollInfo, BOOL bRedraw) {
    return CWnd::SetScrollInfo(SB_CTL, lpScrollInfo, bRedraw);
}

void CScrollBar::ShowScrollBar(BOOL bShow) {
    ::ShowScrollBar(m_hWnd, SB_CTL, bShow);
}

BOOL CScrollBar::EnableScrollBar(UINT nArrowFlags) {
    return ::EnableScrollBar(m_hWnd, SB_CTL, nArrowFlags);
}
