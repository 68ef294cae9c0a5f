// The demo's parameter view: the diagram of a welded I-section, whose sizes are edited right in the picture.
// Layer 13: demo.
#pragma once

#include <VectorViewParm.h>

#include <functional>

#include "WeldedSection.h"

class CSectionView : public CVectorViewParm {
public:
    CSectionView() = default;

    BOOL CreateIn(CWnd* parent, const RECT& rect, UINT id);
    // Called after each edit that was taken over.
    void SetChanged(std::function<void()> changed) { m_changed = std::move(changed); }
    const WeldedSection& GetSection() const { return m_section; }
    CString GetSectionName();
    // Called when the view gets the focus by a key: opens the box over the value that was edited last, or keeps the
    // open one.
    void Enter();
    // Ends an open edit. False when its text is refused: then the box stays open and has the focus.
    bool FinishEdit();
    // The same, but a refused text is dropped and the old one is shown again.
    void SettleEdit();
    // What to do now, or why the last text was refused; for the status bar.
    CString GetHint();
    // After a click on a result: the hint tells what it is.
    void ShowResult(CTextParm* parm);
    // The factor for the aperture of clicks.
    void SetPixelScale(float scale);
    bool IsRefused() const { return !m_reason.IsEmpty(); }

protected:
    BOOL PreTranslateMessage(MSG* message) override;
    int DrawSpecInfo(CDC* dc, int n) override;

    void DoEditParm(CTextParm* parm, CRect rect, unsigned int n, int m, CString text) override;
    void OnPreEditParm(CTextParm* parm, unsigned int& n, int& m, CString& text) override;
    int OnAcceptEditData(CTextParm* parm, CString text) override;
    void OnEditChanging(CTextParm* parm, CString& oldText, CString& newText) override;
    void OnEditChanged(CTextParm* parm, CString oldText, CString newText) override;
    void OnEndEdit(CTextParm* parm) override;
    void OnEditTabDown(CTextParm* current) override;

    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint point);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnKillFocus(CWnd* next);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnInitMenuPopup(CMenu* popup, UINT index, BOOL sysMenu);
    DECLARE_MESSAGE_MAP()

private:
    CTextParm* Find(const wchar_t* name);
    // The next parameter that can be edited, after or before this one, around the ends.
    CTextParm* Neighbour(CTextParm* from, bool backward);
    CRect GetEditRect(CTextParm* parm);
    void Open(CTextParm* parm);
    void Walk(CTextParm* from, bool backward);
    void BackToBox();
    // Why the text cannot be the parameter's value; empty when it can.
    CString FindReason(CTextParm* parm, CString text);
    void Refuse(const CString& reason);
    void Fit();

    WeldedSection m_section;
    CString m_current = L"h"; // name of the parameter that was edited last
    CString m_reason;         // why the open edit's text was refused
    CString m_result;         // what the result is that was clicked last
    std::function<void()> m_changed;
};
