#include "Dialog_DrawAbleProperty.h"

#include "Drawable.h"
#include "DrawingHistory.h"
#include "ResourceScope.h"
#include "resource.h"
#include "vectorview.h"

IMPLEMENT_DYNAMIC(CDialog_DrawAbleProperty, CDialog)

BEGIN_MESSAGE_MAP(CDialog_DrawAbleProperty, CDialog)
    ON_WM_SIZE()
    ON_WM_DESTROY()
    ON_WM_KEYDOWN()
    ON_NOTIFY(SGN_GETTEXT, IDC_PROPERTY_GRID, &CDialog_DrawAbleProperty::OnGridGetText)
    ON_NOTIFY(SGN_EDITED, IDC_PROPERTY_GRID, &CDialog_DrawAbleProperty::OnGridEdited)
    ON_NOTIFY(SGN_SELCHANGED, IDC_PROPERTY_GRID, &CDialog_DrawAbleProperty::OnGridOther)
    ON_NOTIFY(SGN_BEGINEDIT, IDC_PROPERTY_GRID, &CDialog_DrawAbleProperty::OnGridOther)
    ON_NOTIFY(SGN_ENDEDIT, IDC_PROPERTY_GRID, &CDialog_DrawAbleProperty::OnGridOther)
    ON_NOTIFY(SGN_CLICK, IDC_PROPERTY_GRID, &CDialog_DrawAbleProperty::OnGridOther)
    ON_NOTIFY(SGN_DBLCLK, IDC_PROPERTY_GRID, &CDialog_DrawAbleProperty::OnGridOther)
END_MESSAGE_MAP()

namespace {

constexpr wchar_t kTitle[] = L"属性";
constexpr int kLabelColumn = 0;
constexpr int kValueColumn = 1;

} // namespace

CDialog_DrawAbleProperty::CDialog_DrawAbleProperty(CWnd* parent) : CDialog(IDD_DRAWABLE_PROPERTY, parent) {}

CDialog_DrawAbleProperty::~CDialog_DrawAbleProperty() {
    // Without a window there is no WM_DESTROY that would free the rows.
    m_Property.Clear();
}

int CDialog_DrawAbleProperty::Create(unsigned int id, CWnd* parent) {
    return CDialog::Create(id, parent);
}

// ---- The object shown ----------------------------------------------------------------------------------------------

void CDialog_DrawAbleProperty::Remember(CDrawable* object) {
    m_pObject = object;
    m_ObjectAlive.reset();
    if (object != nullptr) {
        m_ObjectAlive.emplace(object->GetAlive());
    }
}

void CDialog_DrawAbleProperty::SetObject(CDrawable* object) {
    Remember(object);
    if (m_hWnd != nullptr && IsWindowVisible()) {
        LoadObject(m_pObject);
    }
}

void CDialog_DrawAbleProperty::LoadObject(CDrawable* object) {
    CString title = kTitle;
    if (object != nullptr) {
        Remember(object);
        m_Property.Clear();
        object->GetProperty(m_Property);
        m_Grid.SetRowCount(m_Property.GetSize());
        title = title + L"-" + object->GetName();
        if (m_hWnd != nullptr) {
            SetWindowText(title);
        }
        return;
    }
    m_Property.Clear();
    if (m_hWnd != nullptr) {
        SetWindowText(title);
    }
    m_Grid.SetRowCount(0);
    Remember(nullptr);
}

void CDialog_DrawAbleProperty::ApplyToObject() {
    if (m_pObject == nullptr) {
        return;
    }
    if (GetObject() == nullptr) {
        LoadObject(nullptr);
        return;
    }
    {
        auto* view = DYNAMIC_DOWNCAST(CVectorView, m_pView);
        const CHistoryGroup step(view != nullptr ? view->GetHistory() : nullptr, L"修改属性", L"Edit properties");
        m_pObject->SetProperty(m_Property);
    }
    if (m_pView != nullptr && m_pView->GetSafeHwnd() != nullptr) {
        ::InvalidateRect(m_pView->m_hWnd, nullptr, TRUE);
    }
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

CString CDialog_DrawAbleProperty::GetRowLabel(int row) const {
    const CSimpleProperty* property = m_Property.GetRow(row);
    return property != nullptr ? property->m_Label : CString();
}

CString CDialog_DrawAbleProperty::GetRowValue(int row) const {
    CString text;
    const CSimpleProperty* property = m_Property.GetRow(row);
    if (property == nullptr) {
        return text;
    }
    const COleVariant& value = property->m_Value;
    switch (value.vt) {
    case VT_I2:
        text.Format(L"%d", value.iVal);
        break;
    case VT_I4:
        text.Format(L"%d", static_cast<int>(value.lVal));
        break;
    case VT_R4:
        text.Format(L"%f", static_cast<double>(value.fltVal));
        break;
    case VT_R8:
        text.Format(L"%f", value.dblVal);
        break;
    case VT_BSTR:
        text = CString(value.bstrVal, static_cast<int>(::SysStringLen(value.bstrVal)));
        break;
    case VT_BOOL:
        text.Format(L"%d", value.boolVal);
        break;
    default:
        break;
    }
    return text;
}

void CDialog_DrawAbleProperty::SetRowValue(int row, CString text) {
    if (CSimpleProperty* property = m_Property.GetRow(row)) {
        COleVariant value = property->m_Value;
        text.TrimLeft();
        text.TrimRight();
        switch (value.vt) {
        case VT_I2:
            value = static_cast<short>(_wtoi(text));
            break;
        case VT_I4:
            value = static_cast<long>(_wtoi(text));
            break;
        case VT_R4:
            value = static_cast<float>(_wtof(text));
            break;
        case VT_R8:
            value = _wtof(text);
            break;
        case VT_BSTR:
            value = text;
            break;
        case VT_BOOL:
            value = static_cast<long>(_wtoi(text));
            value.ChangeType(VT_BOOL);
            break;
        default:
            break;
        }
        property->m_Value = value;
        // Compatibility 126: an edited row stays marked as changed.
        property->m_Changed = 1;
    }
    ApplyToObject();
}

// ---- The window ----------------------------------------------------------------------------------------------------

void CDialog_DrawAbleProperty::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    CResourceScope resources(VectorViewModule());
    DDX_Control(pDX, IDC_PROPERTY_GRID, m_Grid);
}

BOOL CDialog_DrawAbleProperty::OnInitDialog() {
    CDialog::OnInitDialog();
    CRect client;
    GetClientRect(&client);
    FitGrid(client.Width(), client.Height());
    m_Grid.SetShowHeader(0);
    m_Grid.SetAllowEdit(1);
    return TRUE;
}

void CDialog_DrawAbleProperty::OnCancel() {
    CDialog::OnCancel();
}

BOOL CDialog_DrawAbleProperty::PreTranslateMessage(MSG* msg) {
    if (msg->message == WM_KEYDOWN && msg->wParam == VK_ESCAPE) {
        // The dialog manager would take Escape for the Cancel button, which the dialog lacks, and close the window.
        return CWnd::PreTranslateMessage(msg); // NOLINT(bugprone-parent-virtual-call): the dialog's own is left out.
    }
    return CDialog::PreTranslateMessage(msg);
}

void CDialog_DrawAbleProperty::FitGrid(int cx, int cy) {
    if (m_Grid.GetSafeHwnd() == nullptr) {
        return;
    }
    CRect rect;
    m_Grid.GetWindowRect(&rect);
    ScreenToClient(&rect);
    m_Grid.SetWindowPos(&wndTop, 0, 0, cx - ::GetSystemMetrics(SM_CXDLGFRAME) - rect.left,
                        cy - ::GetSystemMetrics(SM_CYDLGFRAME) - rect.top,
                        SWP_NOMOVE | SWP_NOZORDER | SWP_NOOWNERZORDER);
}

void CDialog_DrawAbleProperty::OnSize(UINT, int cx, int cy) {
    Default();
    FitGrid(cx, cy);
}

void CDialog_DrawAbleProperty::OnDestroy() {
    CWnd::OnDestroy();
    m_Property.Clear();
}

void CDialog_DrawAbleProperty::OnKeyDown(UINT nChar, UINT, UINT) {
    if (nChar != VK_ESCAPE) {
        Default();
    }
}

// ---- The grid ------------------------------------------------------------------------------------------------------

void CDialog_DrawAbleProperty::OnGridGetText(NMHDR* header, LRESULT* result) {
    auto* cell = reinterpret_cast<NMSHEETGRID*>(header);
    *result = 0;
    if ((cell->mask & SGIF_TEXT) == 0) {
        return;
    }
    if (cell->nCol == kLabelColumn) {
        cell->strText = GetRowLabel(cell->nRow);
    } else if (cell->nCol == kValueColumn) {
        cell->strText = GetRowValue(cell->nRow);
    }
}

void CDialog_DrawAbleProperty::OnGridEdited(NMHDR* header, LRESULT* result) {
    const auto* cell = reinterpret_cast<NMSHEETGRID*>(header);
    if (cell->nCol == kValueColumn) {
        SetRowValue(cell->nRow, cell->strText);
    }
    *result = 0;
}

void CDialog_DrawAbleProperty::OnGridOther(NMHDR*, LRESULT* result) {
    // The grid may always go to a row, react to a click on it, and edit it.
    *result = 0;
}
