// CInPlaceEdit: the single-line edit box that a parameter view lays over the parameter being edited.
// Layer 11: views and dialogs.
#pragma once

#include "VectorViewApi.h"

#include <afxwin.h>

#include <KxAlive.h>

class CTextParm;

// What the box asks of its parent window; the parameter view implements it.
class CInPlaceEditParent {
public:
    // The text is to be stored, and the box hidden.
    virtual void DoEndEdit() = 0;
    // Called after the end of an edit of `current`, which is only compared: opens the next one.
    virtual void OnEditTabDown(CTextParm* current) = 0;
    // After DoEndEdit: the text was refused, and the box keeps the focus.
    virtual bool KeepsFocus() const = 0;

protected:
    ~CInPlaceEditParent() = default;
};

// A member of its view; the window is made once and then hidden and shown. The box decides which keys end an edit and
// how it grows with its text; the view decides what an end does. When the parent is no CInPlaceEditParent, it is not
// called.
// Without a window the calls do nothing, and the text is the one that the edit began with.
class NRVECTORVIEW_API CInPlaceEdit : public CEdit {
    DECLARE_DYNAMIC(CInPlaceEdit)
public:
    CInPlaceEdit() = default;
    // For hosts with a grid of their own: makes the window at once, with a sunken edge and the parent's font, and
    // passes on the key that opened the edit. Unless that key is VK_LBUTTON, arrow keys end the edit without Ctrl.
    CInPlaceEdit(CWnd* parent, const CRect& rect, DWORD style, UINT id, int, int, CString text, UINT firstKey);

    // ---- The virtual interface, in this order ----

    virtual int CheckText(CString text); // For overrides; nothing here calls it. Always 1.
    // Repaints whatever the second argument is. A null font means the system's.
    virtual LRESULT SetFont(CFont* font, int redraw);
    virtual void SetEditLimit(unsigned int, unsigned int); // For overrides; does nothing.
    // The window, hidden; 0 when Windows refuses it.
    virtual int Create(CWnd* parent, CTextParm* parm, unsigned int id);
    // The text in the box, read and replaced; always 1.
    virtual int GetEditText(CString& text);
    virtual int SetEditText(const CString& text);
    virtual CString FormatText(const CString& text); // For overrides; nothing here calls it. The text itself.
    // Shows the box on `rect`, in client pixels of the parent, its left edge one pixel further right. It holds `text`,
    // all of it selected. For VK_F2 the caret is at the end of `text`; `useOther` nonzero shows `other` instead.
    virtual void ShowEdit(CRect rect, CString text, unsigned int key, int useOther, CString other);
    // Hides the box.
    virtual void EndEdit();

    // The parameter that the box belongs to; null while it is closed. Not owned.
    CTextParm* GetTextParm() const { return m_pTextParm; }
    void SetTextParm(CTextParm* parm) { m_pTextParm = parm; }
    // The text in the box.
    CString GetShownText() const;
    unsigned int GetLastKey() const { return m_LastKey; } // See m_LastKey.
    CRect GetEditRect() const { return m_EditRect; }      // See m_EditRect.

    // Handles Tab and Return, and Ctrl with A, C and X, before a host's message loop translates them.
    BOOL PreTranslateMessage(MSG* msg) override;

protected:
    void PostNcDestroy() override; // Frees nothing: the box is a member of its view.
    // Each handles the message of its name. A key that ends the edit is not passed on; the loss of the focus ends the
    // edit too.
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKillFocus(CWnd* newWnd);
    afx_msg UINT OnGetDlgCode(); // All keys, so that a dialog leaves Tab, Return and Escape to the box.
    afx_msg void OnCut();
    afx_msg void OnCopy();
    afx_msg void OnClear();
    DECLARE_MESSAGE_MAP()

    CString m_InitText;         // Escape restores it.
    unsigned int m_LastKey = 0; // The key that ended the edit, or the arrow key that asked for the end; for hosts.
    int m_ArrowsEndEdit = 0;    // Nonzero: arrow and page keys are ending keys without Ctrl too.
    CRect m_EditRect;           // Client pixels of the parent; may have grown wider than the window.
    CTextParm* m_pTextParm = nullptr; // Null when closed.
    CWnd* m_pParentView = nullptr;    // The window that Create was given; not owned.

private:
    CInPlaceEditParent* Parent() const;
    // False when the parent keeps the edit open and the focus here, or when this box has ended.
    bool EndParentEdit();
    void FocusParent();
    bool IsAtEdge(UINT key);
    void PlaceCaret(int start, int end);
    void GrowToText();

    CKxAlive m_Alive;           // Ends with the window, and with the object.
    bool m_bTabPressed = false; // Set by WM_KEYDOWN of Tab until the WM_CHAR that follows it.
};
