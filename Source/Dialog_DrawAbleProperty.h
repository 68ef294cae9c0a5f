// CDialog_DrawAbleProperty: a modeless window with a grid that shows one object's rows and writes every edit back.
// Layer: views and dialogs.
#pragma once

#include "DrawableProperty.h"

#include <KxSheetGrid.h>
#include <afxwin.h>

class CDrawable;

// Template 131. The library creates none: a derived view provides one and sets its own pointer to it.
class CDialog_DrawAbleProperty : public CDialog {
    DECLARE_DYNAMIC(CDialog_DrawAbleProperty)
public:
    explicit CDialog_DrawAbleProperty(CWnd* parent = nullptr);
    ~CDialog_DrawAbleProperty() override;

    int Create(unsigned int id, CWnd* parent);
    // What a click on an object calls: shows it when the window is there and visible. Not owned.
    void SetObject(CDrawable* object);
    // Fills the rows; null empties them.
    void LoadObject(CDrawable* object);
    // Hands all rows edited so far to the object.
    void ApplyToObject();
    // The window to repaint after an edit; none at first.
    void SetView(CWnd* view) { m_pView = view; }

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    void OnCancel() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    DECLARE_MESSAGE_MAP()

private:
    void FitGrid(int cx, int cy);
    CString GetRowLabel(int row) const;
    CString GetRowValue(int row) const;
    void SetRowValue(int row, CString text);

    CWnd* m_pView = nullptr;
    CSheetGridCtrl m_Grid;
    CDrawableProperty m_Property;
    CDrawable* m_pObject = nullptr;
};
