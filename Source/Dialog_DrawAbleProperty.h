// CDialog_DrawAbleProperty: a modeless window with a grid that shows one object's rows and writes every edit back.
// Layer 11: views and dialogs.
#pragma once

#include "DrawableProperty.h"

#include <KxAlive.h>
#include <KxSheetGrid.h>
#include <afxwin.h>

#include <optional>

class CDrawable;

// Uses template 131. The library creates no such dialog: a derived view makes one and sets its own pointer to it.
class CDialog_DrawAbleProperty : public CDialog {
    DECLARE_DYNAMIC(CDialog_DrawAbleProperty)
public:
    explicit CDialog_DrawAbleProperty(CWnd* parent = nullptr);
    ~CDialog_DrawAbleProperty() override;

    // Modeless; `id` is the template.
    int Create(unsigned int id, CWnd* parent) override;
    // Called when an object is clicked: shows its rows when the window is there and visible. The object is not owned:
    // code that frees it calls LoadObject with null first. If not, its rows stay until the next edit, which then
    // empties the dialog.
    void SetObject(CDrawable* object);
    // Fills the rows; null empties them.
    void LoadObject(CDrawable* object);
    // Gives all rows edited so far to the object.
    void ApplyToObject();
    // The window to repaint after an edit; none at first.
    void SetView(CWnd* view) { m_pView = view; }
    // Null also when the object has been freed.
    CDrawable* GetObject() const { return m_ObjectAlive && m_ObjectAlive->IsAlive() ? m_pObject : nullptr; }

    BOOL PreTranslateMessage(MSG* msg) override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    void OnCancel() override;
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    // What the grid asks and tells.
    afx_msg void OnGridGetText(NMHDR* header, LRESULT* result);
    afx_msg void OnGridEdited(NMHDR* header, LRESULT* result);
    afx_msg void OnGridOther(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    using CDialog::Create;

    void Remember(CDrawable* object);
    void FitGrid(int cx, int cy);
    // Row i of the grid is row i of the object. Empty outside the rows.
    CString GetRowLabel(int row) const;
    CString GetRowValue(int row) const;
    void SetRowValue(int row, CString text);

    CWnd* m_pView = nullptr;
    CSheetGridCtrl m_Grid;
    CDrawableProperty m_Property;
    CDrawable* m_pObject = nullptr;
    std::optional<CKxAliveToken> m_ObjectAlive; // Of m_pObject; none for null.
};
