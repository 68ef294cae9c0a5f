// CVectorViewParm: the view of a diagram of parameters, with click-to-edit, tooltips and notifications to the parent.
// Layer 11: views and dialogs. Hosts include this header and derive from the class.
#pragma once

#include "InPlaceEdit.h"
#include "ParmEditSession.h"
#include "VectorParmNotify.h"
#include "vectorview.h"

#include <afxcmn.h>

class CTextParm;

// A press on a parameter text opens an edit box over it, Tab and Return go on to the next parameter, and a press on any
// other object is reported to the parent. The end of an edit sends no message: override the hooks. Every function may
// be called from a hook or a notification. When the parameter is freed there or leaves the drawing, or the view or its
// window ends, the edit is over at once: nothing more is called or stored. A window that ends closes an open edit
// without a hook.
class NRVECTORVIEW_API CVectorViewParm : public CVectorView, public CInPlaceEditParent {
    DECLARE_DYNAMIC(CVectorViewParm)
public:
    CVectorViewParm();
    ~CVectorViewParm() override;

    // ---- The drawing ----

    // Always 1, whatever the load did. It frees the old drawing: an edit that is open then stores nothing, and its box
    // closes when it next loses the focus or DoEndEdit is called.
    int LoadFile(unsigned char* data, unsigned int size) override;
    // Cancels an edit (OnEndEdit is called, nothing is stored) and empties the drawing. Always 1. When the view or its
    // window ends in OnEndEdit, the drawing stays as it is.
    int ResetVectorView();
    // Null for every name: find parameters through the document's list.
    CTextParm* GetTextParmDrawObj(CString name);
    // 0, as set at construction, shows numeric values with one decimal at most; what is stored and edited stays whole.
    void SetNeedShowDecimal(int need);
    // 1 lets the wheel zoom; anything else does not.
    void EnableWheel(int enable) { m_bEnableWheel = enable; }

    // ---- Clicks and edits ----

    // Tells the parent which object was clicked; null for none.
    void SendClickNotify(CDrawable* obj);
    // The press at a drawing point: opens an edit or reports. 1 when an object was hit. The flags play no part.
    int DoEditForClicked(unsigned int nFlags, CGePoint2d p);
    // Ends the edit, if there is one, and stores its text unless OnAcceptEditData refuses it. Does nothing while a hook
    // of an end runs.
    void DoEndEdit() override;
    // 1 while an edit is open: from the opening of the box to the return of OnEndEdit. 0 as soon as the parameter was
    // freed.
    int IsEditOpen() const { return GetEditParm() != nullptr; }
    // The parameter being edited; null when no edit is open. Owned by the drawing, or by the host.
    CTextParm* GetEditParm() const { return m_Session.IsParmAlive() ? m_pEditParm : nullptr; }
    // The text in the box, not stored yet; empty when no edit is open.
    CString GetEditText() const;
    // 0, as at first: a text that OnAcceptEditData refuses stays in the open box until Tab, Return or a press on
    // another parameter opens the next edit, which drops it without a hook; each step of such an action asks the hook
    // again. Nonzero: the text stays, and the box keeps the focus, whatever the user does, until the hook accepts a
    // text. Each action asks once, and does nothing else when the text is refused: Tab and Return do not move on, a
    // press in the view, or a choice in its menu, has no effect and sends no notification, and no other edit opens.
    // Escape restores the text that the edit began with and asks about that. The focus is not taken back from another
    // top-level window. ResetVectorView, a new drawing and the end of the window close the edit in any case.
    void SetStrictRefusal(int strict) { m_bStrictRefusal = strict; }
    int GetStrictRefusal() const { return m_bStrictRefusal; } // As SetStrictRefusal set it.

    // ---- Tooltip ----
    // Without a window there is none, and these calls do nothing.

    // Made on first use, inactive.
    void InitToolTip();
    // For a null text nothing changes.
    void SetTooltipText(const wchar_t* text, int activate);
    void ActivateTooltip(int activate); // 0 hides it until it is activated again.
    // Called on every move of the mouse: shows the description of the parameter under a client pixel.
    void SetToolTip(unsigned int nFlags, CPoint point);

    // Passes mouse messages on to the tooltip.
    BOOL PreTranslateMessage(MSG* msg) override;

protected:
    // ---- Hooks, in this order ----

    // Opens the box on `rect`, in client pixels, which begins one pixel left of the text. OnPreEditParm gets the three
    // other arguments; nothing else uses them.
    virtual void DoEditParm(CTextParm* parm, CRect rect, unsigned int n, int m, CString text);
    // Called before the parent is asked and the box opens.
    virtual void OnPreEditParm(CTextParm* parm, unsigned int& n, int& m, CString& text);
    // Called after the text was stored.
    virtual void OnEditChanged(CTextParm* parm, CString oldText, CString newText);
    // Called before the text is stored. The value of newText on return is stored.
    virtual void OnEditChanging(CTextParm* parm, CString& oldText, CString& newText);
    // Validation: 0 refuses the text. It is not stored, and the edit stays open; SetStrictRefusal decides for how long.
    // The library applies no expression of its own.
    virtual int OnAcceptEditData(CTextParm* parm, CString text);
    // Called last, also for an unchanged text and for an edit that ResetVectorView cancels.
    virtual void OnEndEdit(CTextParm* parm);
    // Opens the next parameter of the document's list that needs an edit box; the last one is followed by the first.
    // `current` is only compared. A refused parameter is not skipped: the walk ends there, and no box is open.
    void OnEditTabDown(CTextParm* current) override;
    // 0 for a parameter of type 4, and when the parent refuses.
    virtual int CanParmEdit(CTextParm* parm);
    // The one place that tells the parent; m_Notify is filled in. An override may tell it in another way.
    virtual void Notify(UINT code);

    void OnCreateCommandOperationManager() override;
    // Ends an open edit as DoEndEdit does; a text that is refused is dropped or, where refusals are strict, prevents
    // the undo. 0 while a hook of an end runs.
    int OnBeforeUndo() override;
    void PreSubclassWindow() override; // As that of CWnd.
    // Makes the box on first use and gives it the parameter's font at this zoom.
    void CreateInplaceEdit(CTextParm* parm, CRect& rect, unsigned int n);

    // ---- Window messages ----

    // Each handles the message of its name, with points in client pixels; OnMouseWheel has a point of the screen.
    afx_msg void OnNcDestroy();
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point); // Tells the parent: kVpnDblClk.
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);   // Opens the view's menu.
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint point);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKillFocus(CWnd* newWnd);
    afx_msg BOOL OnSetCursor(CWnd* wnd, UINT nHitTest, UINT message);
    afx_msg void OnMenuitemZoomAll();    // The item of the view's menu that calls ZoomAll.
    afx_msg void OnMenuitemMoveVector(); // The item that starts the command "viewmove".
    DECLARE_MESSAGE_MAP()

    CInPlaceEdit m_Edit;               // The box of all edits; hidden in between.
    NMVECTORPARM m_Notify = {};        // What Notify sends.
    CTextParm* m_pEditParm = nullptr;  // Null when no edit is open. Not owned; GetEditParm tells whether it was freed.
    CToolTipCtrl m_ToolTip;            // Made by InitToolTip.
    CDrawable* m_pTipObject = nullptr; // Where the tooltip last stopped. Compared only.
    int m_bEnableWheel = 1;            // See EnableWheel.

private:
    static constexpr UINT_PTR kTipTool = 1; // The tooltip's one tool.

    bool KeepsFocus() const override;
    // Gives the view the focus, which ends an open edit. False when the view has been freed, or a strict refusal keeps
    // the focus in the box.
    bool TakeFocus();
    // Marks the edit of that number as refused.
    void Refuse(unsigned int edit);
    // Whether the edit of that number is still open. Closes it when its parameter has been freed or taken out.
    bool ContinueEdit(unsigned int edit);
    // The end of the edit that is open, accepted text and hooks.
    void StoreEdit();
    // Nothing is stored, no hook is called.
    void DropEdit();
    void CloseEdit();
    // What a press on a parameter does.
    void EditOrReport(CTextParm* parm);
    void EditOverText(CTextParm* parm);
    bool IsWithinPick(CDrawable* obj, const CGePoint2d& p);
    bool HasTool();

    HFONT m_hEditFont = nullptr; // The box's font; owned.
    CParmEditSession m_Session;  // Of the edit on m_pEditParm.
    int m_bStrictRefusal = 0;
};
