// Controls of the common controls library: tooltips and the status bar.
// Classes: CToolTipCtrl, CStatusBarCtrl.
// Layer 1: afx.
#pragma once

#include "afxwin.h"
#include <commctrl.h>

class NRAFX_API CToolTipCtrl : public CWnd {
    DECLARE_DYNAMIC(CToolTipCtrl)
public:
    virtual BOOL Create(CWnd* pParentWnd, DWORD dwStyle = 0);

    // The tool is pWnd itself when nIDTool is 0, else the rectangle of that number in it.
    BOOL AddTool(CWnd* pWnd, LPCTSTR lpszText = LPSTR_TEXTCALLBACK, LPCRECT lpRectTool = nullptr, UINT_PTR nIDTool = 0);
    BOOL AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool = nullptr, UINT_PTR nIDTool = 0);
    void DelTool(CWnd* pWnd, UINT_PTR nIDTool = 0);
    void UpdateTipText(LPCTSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    void UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    void SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect);
    int GetToolCount() const;
    void GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool = 0) const;
    BOOL GetToolInfo(TOOLINFO& toolInfo, CWnd* pWnd, UINT_PTR nIDTool = 0) const;
    BOOL HitTest(CWnd* pWnd, CPoint pt, LPTOOLINFO lpToolInfo) const;

    void Activate(BOOL bActivate);
    void RelayEvent(LPMSG lpMsg);
    void Update();
    void Pop();
    void SetDelayTime(UINT nDelay);
    void SetDelayTime(DWORD dwDuration, int iTime);
    int GetDelayTime(DWORD dwDuration) const;
    int SetMaxTipWidth(int iWidth);
    int GetMaxTipWidth() const;

protected:
    using CWnd::Create;
    void FillToolInfo(TOOLINFO& ti, CWnd* pWnd, UINT_PTR nIDTool) const;
};

class NRAFX_API CStatusBarCtrl : public CWnd {
    DECLARE_DYNAMIC(CStatusBarCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    BOOL SetText(LPCTSTR lpszText, int nPane, int nType);
    CString GetText(int nPane, int* pType = nullptr) const;
    int GetTextLength(int nPane, int* pType = nullptr) const;
    BOOL SetParts(int nParts, int* pWidths); // right edges in client pixels, -1 for the rest
    int GetParts(int nParts, int* pParts) const;
    BOOL GetRect(int nPane, LPRECT lpRect) const;
    void SetMinHeight(int nMin);
    BOOL SetSimple(BOOL bSimple = TRUE);

protected:
    using CWnd::Create;
};
