// A two-column grid of labels and values that keeps no data: it asks its parent for each text and reports each edit.
// Layer 2: kx (uses afx).
#pragma once

#include <afxwin.h>

#include "KXBaseOpr.h"
#include "KxAlive.h"

// What the parent gets with WM_NOTIFY; wParam is the grid's control ID.
struct NMSHEETGRID {
    NMHDR hdr;       // the grid, its control ID and the code
    UINT mask;       // SGIF_TEXT when strText is wanted or given
    int nCol;        // 0 the label, 1 the value
    int nRow;        // from 0
    UINT nReserved;  // always 0
    CString strText; // the answer to SGN_GETTEXT; otherwise the text concerned
};

const UINT SGIF_TEXT = 1; // a bit of the mask

// Notification codes. The parent's result counts for SGN_BEGINEDIT only.
const UINT SGN_CLICK = static_cast<UINT>(-161);      // a cell was pressed with the left button
const UINT SGN_SELCHANGED = static_cast<UINT>(-163); // the user moved to another row
const UINT SGN_DBLCLK = static_cast<UINT>(-164);     // a cell was double-clicked, outside of an edit
const UINT SGN_BEGINEDIT = static_cast<UINT>(-175);  // a cell is about to be edited, strText its text; nonzero refuses
const UINT SGN_GETTEXT = static_cast<UINT>(-177);    // the text of a cell is wanted in strText
const UINT SGN_EDITED = static_cast<UINT>(-178);  // a cell was given the new text strText; unchanged texts are not sent
const UINT SGN_ENDEDIT = static_cast<UINT>(-180); // the edit has ended, committed or discarded; after SGN_EDITED

class CSheetGridCtrl;

// The edit box that covers the cell while it is edited. It passes the keys that end an edit to its grid.
class CSheetGridEdit : public CEdit {
    friend class CSheetGridCtrl;

protected:
    // Each handles the message of its name.
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    DECLARE_MESSAGE_MAP()

private:
    CSheetGridCtrl* m_pGrid = nullptr;
};

// The grid. A row has the focus mark; keys move it, and a click on the value, F2, Return or typing edits the value. In
// the edit Return commits and moves to the next row, Tab commits and edits the next row (with Shift the one before),
// Up, Down and the page keys commit and move, Escape discards the edit, and losing the focus commits. The divider
// between the columns follows the mouse, or Ctrl with Left and Right.
// Works through Create and, with the window class "CGridCtrl", as a control of a dialog template that is then
// subclassed. The class is registered by the first constructor.
class NRKX_API CSheetGridCtrl : public CWnd {
public:
    CSheetGridCtrl();
    virtual ~CSheetGridCtrl();
    static int RegisterWindowClass(); // nonzero when the class is there
    // A child window; FALSE when Windows refuses it.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetRowCount() const { return m_rowCount; }   // 0 at first
    int GetCurrentRow() const { return m_current; }  // -1 for none
    int GetTopRow() const { return m_top; }          // the first row that is shown
    int GetDivider() const;                          // x of the line between the columns, client pixels
    int IsEditing() const { return m_editRow >= 0; } // whether the edit box is open
    CEdit* GetEdit() { return &m_edit; }             // owned by the grid; without a window until the first edit
    // Client rectangle of a cell, also where it is scrolled out of view.
    CRect GetCellRect(int row, int col) const;
    // The row under a client point, or -1; col gets its column.
    int HitTest(CPoint point, int& col) const;

    // A new number of rows means new contents: a running edit is discarded, and every text is requested again.
    void SetRowCount(int count);
    void SetShowHeader(int show); // 0: no row of titles; shown at first
    void SetAllowEdit(int allow); // 0: no edit opens, and an open one is discarded
    // Moves the focus mark and scrolls it into view, without a notification.
    void SetCurrentRow(int row);
    void SetTopRow(int row); // scrolls, as far as the rows reach
    void SetDivider(int x);  // client pixels

    // Opens the edit box on the value of the row with all of it selected. Returns whether it is open.
    int BeginEdit(int row);
    // Closes the edit box; a changed text is reported when commit is nonzero.
    void EndEdit(int commit);

protected:
    // Each handles the message of its name.
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg UINT OnGetDlgCode();
    afx_msg LRESULT OnLayoutMessage(WPARAM wParam, LPARAM lParam); // another font, state or system colour
    afx_msg LRESULT OnCaptureChanged(WPARAM wParam, LPARAM lParam);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    friend class CSheetGridEdit;

    LRESULT Notify(UINT code, int row, int col, CString& text);
    CString GetCellText(int row, int col);
    int OnEditKey(UINT key, int shift);
    int PressCell(CPoint point, int& col);
    int WalkTo(int row);
    HFONT GetTextFont() const;
    void MeasureFont() const;
    int GetHeaderHeight() const;
    int GetPageRows() const;
    int ClampTop(int row) const;
    void UpdateScrollBar();
    void PlaceEdit();
    void RedrawRow(int row);
    void PaintAll(HDC dc, const RECT& clip);
    void PaintHeader(HDC dc) const;
    void PaintRow(HDC dc, int row);

    CKxAlive m_alive; // Ends with the window, which a parent may destroy in any notification.
    CSheetGridEdit m_edit;
    CString m_editText; // as the cell was when the edit began
    int m_rowCount;
    int m_current;
    int m_top;
    int m_editRow; // -1 with no edit
    int m_showHeader;
    int m_allowEdit;
    int m_divider;            // pixels; -1 until the user moves it: two fifths of the width
    int m_dragging;           // the divider follows the mouse
    int m_wheel;              // what is left of the wheel's turn after whole steps
    mutable int m_rowHeight;  // 0 until measured
    mutable int m_textHeight; // of the font
};
