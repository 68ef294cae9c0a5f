// The classic controls, each a thin cover of its messages. Included by afxwin.h.
// Classes: CStatic, CButton, CEdit, CListBox, CComboBox, CScrollBar.
// Layer 1: afx.
#pragma once

#include "afxwnd_.h"

class NRAFX_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
public:
    virtual BOOL Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID = 0xFFFF);
    HICON SetIcon(HICON hIcon);
    HICON GetIcon() const;
    HBITMAP SetBitmap(HBITMAP hBitmap);
    HBITMAP GetBitmap() const;

protected:
    using CWnd::Create;
};

class NRAFX_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)
public:
    virtual BOOL Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    int GetCheck() const;
    void SetCheck(int nCheck);
    UINT GetState() const;
    void SetState(BOOL bHighlight);
    UINT GetButtonStyle() const;
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE);

protected:
    using CWnd::Create;
};

class NRAFX_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    BOOL CanUndo() const;
    BOOL GetModify() const;
    void SetModify(BOOL bModified = TRUE);
    DWORD GetSel() const;
    void GetSel(int& nStartChar, int& nEndChar) const;
    void SetSel(DWORD dwSelection, BOOL bNoScroll = FALSE);
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE);
    void ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo = FALSE);
    void LimitText(int nChars = 0);
    void SetLimitText(UINT nMax);
    UINT GetLimitText() const;
    int GetLineCount() const;
    int GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const;
    int LineFromChar(int nIndex = -1) const;
    int LineIndex(int nLine = -1) const;
    int LineLength(int nLine = -1) const;
    void LineScroll(int nLines, int nChars = 0);
    void GetRect(LPRECT lpRect) const;
    void SetRect(LPCRECT lpRect);
    void SetMargins(UINT nLeft, UINT nRight);
    DWORD GetMargins() const;
    BOOL SetReadOnly(BOOL bReadOnly = TRUE);
    void SetPasswordChar(TCHAR ch);
    CPoint PosFromChar(UINT nChar) const;
    int CharFromPos(CPoint pt) const;
    BOOL Undo();
    void EmptyUndoBuffer();
    void Clear();
    void Copy();
    void Cut();
    void Paste();

protected:
    using CWnd::Create;
};

class NRAFX_API CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    int GetCount() const;
    int AddString(LPCTSTR lpszItem);
    int InsertString(int nIndex, LPCTSTR lpszItem);
    int DeleteString(UINT nIndex);
    void ResetContent();
    int FindString(int nStartAfter, LPCTSTR lpszItem) const;
    int FindStringExact(int nIndexStart, LPCTSTR lpszFind) const;
    int SelectString(int nStartAfter, LPCTSTR lpszItem);
    int GetCurSel() const;
    int SetCurSel(int nSelect);
    int GetTextLen(int nIndex) const;
    int GetText(int nIndex, LPTSTR lpszBuffer) const;
    void GetText(int nIndex, CString& rString) const;
    DWORD_PTR GetItemData(int nIndex) const;
    int SetItemData(int nIndex, DWORD_PTR dwItemData);

protected:
    using CWnd::Create;
};

class NRAFX_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    int GetCount() const;
    int AddString(LPCTSTR lpszString);
    int InsertString(int nIndex, LPCTSTR lpszString);
    int DeleteString(UINT nIndex);
    void ResetContent();
    int FindString(int nStartAfter, LPCTSTR lpszString) const;
    int FindStringExact(int nIndexStart, LPCTSTR lpszFind) const;
    int SelectString(int nStartAfter, LPCTSTR lpszString);
    int GetCurSel() const;
    int SetCurSel(int nSelect);
    int GetLBTextLen(int nIndex) const;
    int GetLBText(int nIndex, LPTSTR lpszText) const;
    void GetLBText(int nIndex, CString& rString) const;
    DWORD_PTR GetItemData(int nIndex) const;
    int SetItemData(int nIndex, DWORD_PTR dwItemData);
    void ShowDropDown(BOOL bShowIt = TRUE);
    BOOL GetDroppedState() const;
    BOOL LimitText(int nMaxChars);

protected:
    using CWnd::Create;
};

class NRAFX_API CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    int GetScrollPos() const;
    int SetScrollPos(int nPos, BOOL bRedraw = TRUE);
    void GetScrollRange(LPINT lpMinPos, LPINT lpMaxPos) const;
    void SetScrollRange(int nMinPos, int nMaxPos, BOOL bRedraw = TRUE);
    BOOL GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL);
    BOOL SetScrollInfo(LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE);
    void ShowScrollBar(BOOL bShow = TRUE);
    BOOL EnableScrollBar(UINT nArrowFlags = ESB_ENABLE_BOTH);

protected:
    using CWnd::Create;
};
