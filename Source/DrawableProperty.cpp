#include "DrawableProperty.h"

#include "MemoryInfo.h"

IMPLEMENT_DYNAMIC(CSimpleProperty, CObject)
IMPLEMENT_DYNAMIC(CEnumProperty, CSimpleProperty)

// ---- Rows ----------------------------------------------------------------------------------------------------------

CSimpleProperty::CSimpleProperty(CString key, CString description, CString label, short type, COleVariant value)
    : m_Description(description), m_Label(label), m_Key(key), m_Type(static_cast<VARTYPE>(type)), m_Value(value) {}

CSimpleProperty::CSimpleProperty(CString key, CString description, CString label, short type)
    : m_Description(description), m_Label(label), m_Key(key), m_Type(static_cast<VARTYPE>(type)) {}

CEnumProperty::CEnumProperty(CString key, CString description, CString label, short type, COleVariant value)
    : CSimpleProperty(key, description, label, type, value) {}

CEnumProperty::CEnumProperty(CString key, CString description, CString label, short type)
    : CSimpleProperty(key, description, label, type) {}

// ---- The list ------------------------------------------------------------------------------------------------------

void CDrawableProperty::Add(CSimpleProperty* row) {
    m_Rows.Add(row);
}

void CDrawableProperty::Clear() {
    for (INT_PTR i = 0; i < m_Rows.GetSize(); ++i) {
        CSimpleProperty* row = m_Rows[i];
        KX_REMOVE_MEMORY(row);
        delete row;
    }
    m_Rows.RemoveAll();
}

CSimpleProperty* CDrawableProperty::Find(CString key) {
    for (INT_PTR i = 0; i < m_Rows.GetSize(); ++i) {
        CSimpleProperty* row = m_Rows[i];
        if (row != nullptr && row->m_Key.Compare(key) == 0) {
            return row;
        }
    }
    return nullptr;
}

CSimpleProperty* CDrawableProperty::GetRow(int index) const {
    return index >= 0 && index < m_Rows.GetSize() ? m_Rows.GetAt(index) : nullptr;
}

// ---- Filling and taking back ---------------------------------------------------------------------------------------

namespace PropertyRows {
namespace {

// The variant of a changed row; null when the row is missing or untouched.
const COleVariant* Changed(CDrawableProperty& list, LPCTSTR key) {
    const CSimpleProperty* row = list.Find(key);
    return row != nullptr && row->m_Changed != 0 ? &row->m_Value : nullptr;
}

} // namespace

void Add(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, LPCTSTR description, VARTYPE type,
         const COleVariant& value) {
    CTracedOwner<CSimpleProperty> row(new CSimpleProperty(key, description, label, static_cast<short>(type), value));
    KX_ADD_MEMORY(row.get());
    list.Add(row.get());
    row.release();
}

void AddEnum(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, LPCTSTR description, VARTYPE type,
             const COleVariant& value) {
    CTracedOwner<CEnumProperty> row(new CEnumProperty(key, description, label, static_cast<short>(type), value));
    KX_ADD_MEMORY(row.get());
    list.Add(row.get());
    row.release();
}

void AddText(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, const CString& value) {
    Add(list, key, label, label, VT_BSTR, COleVariant(value, VT_BSTR));
}

void AddShort(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, short value) {
    Add(list, key, label, label, VT_I2, COleVariant(value, VT_I2));
}

void AddLong(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, long value) {
    Add(list, key, label, label, VT_I4, COleVariant(value, VT_I4));
}

void AddFloat(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, float value) {
    Add(list, key, label, label, VT_R4, COleVariant(value));
}

void AddDouble(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, double value) {
    Add(list, key, label, label, VT_R8, COleVariant(value));
}

void AddFlag(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, int value) {
    Add(list, key, label, label, VT_BOOL, COleVariant(static_cast<long>(value), VT_I4));
}

void TakeText(CDrawableProperty& list, LPCTSTR key, CString& field) {
    if (const COleVariant* value = Changed(list, key)) {
        // The type is tested only here, because only here a member is a pointer.
        field = value->vt == VT_BSTR && value->bstrVal != nullptr
                    ? CString(value->bstrVal, static_cast<int>(::SysStringLen(value->bstrVal)))
                    : CString();
    }
}

void TakeShort(CDrawableProperty& list, LPCTSTR key, short& field) {
    if (const COleVariant* value = Changed(list, key)) {
        field = value->iVal;
    }
}

void TakeLong(CDrawableProperty& list, LPCTSTR key, int& field) {
    if (const COleVariant* value = Changed(list, key)) {
        field = static_cast<int>(value->lVal);
    }
}

void TakeFloat(CDrawableProperty& list, LPCTSTR key, float& field) {
    if (const COleVariant* value = Changed(list, key)) {
        field = value->fltVal;
    }
}

void TakeDouble(CDrawableProperty& list, LPCTSTR key, double& field) {
    if (const COleVariant* value = Changed(list, key)) {
        field = value->dblVal;
    }
}

void TakeFlag(CDrawableProperty& list, LPCTSTR key, int& field) {
    if (const COleVariant* value = Changed(list, key)) {
        field = value->iVal;
    }
}

void TakeLowByte(CDrawableProperty& list, LPCTSTR key, int& field) {
    if (const COleVariant* value = Changed(list, key)) {
        field = static_cast<signed char>(value->bVal); // NOLINT(bugprone-signed-char-misuse): -1 is a value of a row.
    }
}

} // namespace PropertyRows
