// CInPlaceEdit: the single-line edit box that a parameter view lays over the parameter being edited.
// Layer 10: views and dialogs.
#pragma once

#include "VectorViewApi.h"

#include <afxwin.h>

class CTextParm;
class CVectorViewParm;

// Lives by value in its view; the window is made once and then hidden and shown. It decides which keys end an edit and
// how the box grows; what an end means is the view's. It calls its parent only where that is a CVectorViewParm.
// Without a window every call is quietly passed over, and the text stays the one that the edit began with.
class NRVECTORVIEW_API CInPlaceEdit : public CEdit {
    DECLARE_DYNAMIC(CInPlaceEdit)
public:
    CInPlaceEdit() = default;
    // For hosts with a grid of their own: makes the window at once, with a sunken edge and the parent's font, and hands
    // on the key that asked for the edit. Unless that key is VK_LBUTTON, arrow keys end the edit without Ctrl.
    CInPlaceEdit(CWnd* parent, const CRect& rect, DWORD style, UINT id, int, int, CString text, UINT firstKey);

    // ---- The virtual interface, in this order ----

    virtual int CheckText(CString text);
    // Repaints whatever the second argument says. A null font means the system's.
    virtual LRESULT SetFont(CFont* font, int redraw);
    virtual void SetEditLimit(unsigned int, unsigned int);
    // The window, hidden; 0 when Windows refuses it.
    virtual int Create(CWnd* parent, CTextParm* parm, unsigned int id);
    virtual int GetEditText(CString& text);
    virtual int SetEditText(const CString& text);
    virtual CString FormatText(const CString& text);
    // Shows the box on `rect`, in client pixels of the parent, its left edge one pixel further right. It holds `text`,
    // all of it selected; for VK_F2 the caret stands behind it, and `useOther` nonzero shows `other` instead.
    virtual void ShowEdit(CRect rect, CString text, unsigned int key, int useOther, CString other);
    // Hides the box.
    virtual void EndEdit();

    CTextParm* GetTextParm() const { return m_pTextParm; }
    void SetTextParm(CTextParm* parm) { m_pTextParm = parm; }
    unsigned int GetLastKey() const { return m_LastKey; }
    CRect GetEditRect() const { return m_EditRect; }

    BOOL PreTranslateMessage(MSG* msg) override;

protected:
    void PostNcDestroy() override;
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKillFocus(CWnd* newWnd);
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnCut();
    afx_msg void OnCopy();
    afx_msg void OnClear();
    DECLARE_MESSAGE_MAP()

    CString m_InitText;               // Escape restores it.
    unsigned int m_LastKey = 0;       // The key that ended the edit, or the arrow that asked to; for hosts.
    int m_ArrowsEndEdit = 0;          // Nonzero: arrow and page keys are ending keys without Ctrl too.
    CRect m_EditRect;                 // Client pixels of the parent; may have grown wider than the window.
    CTextParm* m_pTextParm = nullptr; // Null when closed.
    CWnd* m_pParentView = nullptr;

private:
    CVectorViewParm* ParentView() const;
    void EndParentEdit();
    void FocusParent();
    bool IsAtEdge(UINT key);
    void PlaceCaret(int start, int end);
    void GrowToText();
};
