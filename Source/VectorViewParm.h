// CVectorViewParm: the view of a diagram of parameters, with click-to-edit, tooltips and notifications to the parent.
// Layer 10: views and dialogs. Hosts include this header and derive from the class.
#pragma once

#include "InPlaceEdit.h"
#include "VectorParmNotify.h"
#include "vectorview.h"

#include <afxcmn.h>

class CTextParm;

// A press on a parameter text opens an edit box over it, Tab and Return go on to the next parameter, and a press on any
// other object is reported to the parent. The end of an edit sends no message: override the hooks. A hook may change
// the document; it must not destroy the view.
class NRVECTORVIEW_API CVectorViewParm : public CVectorView {
    DECLARE_DYNAMIC(CVectorViewParm)
public:
    CVectorViewParm();
    ~CVectorViewParm() override;

    // ---- The drawing ----

    // Always 1, whatever the load did. An edit that is open when its parameter goes stores nothing.
    int LoadFile(unsigned char* data, unsigned int size) override;
    // Breaks an edit off (OnEndEdit is called, nothing is stored) and empties the drawing. Always 1.
    int ResetVectorView();
    // Null, for every name: find parameters through the document's list.
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
    // Ends the edit, if there is one, and stores its text unless a hook refuses it.
    virtual void DoEndEdit();

    // ---- Tooltip ----

    // Made on first use, inactive.
    void InitToolTip();
    // Null leaves everything as it is.
    void SetTooltipText(const wchar_t* text, int activate);
    void ActivateTooltip(int activate);
    // The description under a client pixel, on every move of the mouse.
    void SetToolTip(unsigned int nFlags, CPoint point);

    BOOL PreTranslateMessage(MSG* msg) override;

protected:
    // ---- Hooks, in this order ----

    // Opens the box on `rect`, in client pixels, one of them left of the text. The three others reach OnPreEditParm and
    // go no further.
    virtual void DoEditParm(CTextParm* parm, CRect rect, unsigned int n, int m, CString text);
    // Before the box opens and before the parent is asked.
    virtual void OnPreEditParm(CTextParm* parm, unsigned int& n, int& m, CString& text);
    // After the text was stored.
    virtual void OnEditChanged(CTextParm* parm, CString oldText, CString newText);
    // Before the text is stored. What newText holds on return is what gets stored.
    virtual void OnEditChanging(CTextParm* parm, CString& oldText, CString& newText);
    // Validation: 0 keeps the edit open. The library applies no expression of its own.
    virtual int OnAcceptEditData(CTextParm* parm, CString text);
    // Last, also for an unchanged text and for an edit that ResetVectorView breaks off.
    virtual void OnEndEdit(CTextParm* parm);
    // Opens the next parameter of the document's list that wants an edit box, from the last one on to the first.
    virtual void OnEditTabDown(CTextParm* current);
    // 0 for a parameter of type 4, and when the parent refuses.
    virtual int CanParmEdit(CTextParm* parm);

    void OnCreateCommandOperationManager() override;
    void PreSubclassWindow() override;
    // Makes the box on first use and gives it the parameter's font at this zoom.
    void CreateInplaceEdit(CTextParm* parm, CRect& rect, unsigned int n);

    // ---- Window messages ----

    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint point);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKillFocus(CWnd* newWnd);
    afx_msg BOOL OnSetCursor(CWnd* wnd, UINT nHitTest, UINT message);
    afx_msg void OnMenuitemZoomAll();
    afx_msg void OnMenuitemMoveVector();
    DECLARE_MESSAGE_MAP()

    CInPlaceEdit m_Edit;
    NMVECTORPARM m_Notify = {};
    CTextParm* m_pEditParm = nullptr; // Not owned; look it up in the document before following it.
    CToolTipCtrl m_ToolTip;
    CDrawable* m_pTipObject = nullptr; // Where the tooltip last stopped. Compared only.
    int m_bEnableWheel = 1;

private:
    friend class CInPlaceEdit;
    static constexpr UINT_PTR kTipTool = 1; // The tooltip's one tool.

    // What is known of a parameter before hooks run.
    struct ParmStanding {
        const CTextParm* parm = nullptr; // Compared only.
        unsigned long long generation = 0;
        bool isListed = false; // Whether it stands in the drawing.
    };

    // The one place that sends.
    void Notify(UINT code);
    // Compares addresses only, so that a pointer whose object may be gone can be asked about.
    bool IsInDrawing(const CTextParm* parm);
    ParmStanding StandingOf(const CTextParm* parm);
    // Whether the parameter has left the drawing since. One that the host keeps to itself leaves nothing; once it is
    // seen in the drawing, it is marked as such.
    bool HasLeft(ParmStanding& standing);
    // Whether that very edit is still open. Closes it when its parameter has left the drawing.
    bool ContinueEdit(const CTextParm* parm, unsigned int serial);
    void CloseEdit();
    void CallOnEndEdit(CTextParm* parm);
    void EditOverText(CTextParm* parm);
    bool IsWithinPick(CDrawable* obj, const CGePoint2d& p);
    bool HasTool();

    HFONT m_hEditFont = nullptr;   // The box's font; owned.
    unsigned int m_EditSerial = 0; // Counts the edits: one that a hook opened is told from the one that ends.
    ParmStanding m_EditStanding;   // Of the parameter being edited.
    bool m_bInEndEdit = false;
    bool m_bInOnEndEdit = false;
};
