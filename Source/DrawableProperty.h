// The editable data of an object as keyed rows, which a property window shows and gives back.
// Layer 5: drawables.
#pragma once

#include "VectorViewApi.h"

#include <afxdisp.h>
#include <afxtempl.h>

// One row. Owned by its list once it has been added to one.
class NRVECTORVIEW_API CSimpleProperty : public CObject {
    DECLARE_DYNAMIC(CSimpleProperty)
public:
    // `type` is a VARTYPE; the value's own type may differ from it (a yes-or-no row carries a 4-byte integer).
    // Without a value the row has an empty one.
    CSimpleProperty(CString key, CString description, CString label, short type, COleVariant value);
    CSimpleProperty(CString key, CString description, CString label, short type);

    // See the fields below.
    CString GetKey() const { return m_Key; }
    CString GetLabel() const { return m_Label; }
    COleVariant GetValue() const { return m_Value; }

    CString m_Description; // What the field is, in a sentence.
    CString m_Label;       // What a property window shows beside the value.
    CString m_Key;         // By which SetProperty of the object finds the row.
    VARTYPE m_Type;        // The type in which the value is shown and edited.
    int m_Changed = 0;     // Set by the window that edits the row; never reset.
    COleVariant m_Value;   // The value, shown and edited.
};

// Marks a value that is one number of a list. The names are not known here: the row shows and edits the plain number.
class NRVECTORVIEW_API CEnumProperty : public CSimpleProperty {
    DECLARE_DYNAMIC(CEnumProperty)
public:
    // As those of CSimpleProperty.
    CEnumProperty(CString key, CString description, CString label, short type, COleVariant value);
    CEnumProperty(CString key, CString description, CString label, short type);
};

// The rows of one object, in order. Rows are freed by Clear only: the destructor leaves them alone.
class NRVECTORVIEW_API CDrawableProperty {
public:
    CDrawableProperty() = default;
    virtual ~CDrawableProperty() = default;
    CDrawableProperty(const CDrawableProperty&) = delete;
    CDrawableProperty& operator=(const CDrawableProperty&) = delete;

    void Add(CSimpleProperty* row); // At the end. The row, made with new and registered, is the list's from now on.
    void Clear();                   // Frees all rows.
    // The first row of that key, with case; null when there is none.
    CSimpleProperty* Find(CString key);
    // The number of rows.
    int GetSize() const { return static_cast<int>(m_Rows.GetSize()); }
    // Null outside the rows.
    CSimpleProperty* GetRow(int index) const;

private:
    CArray<CSimpleProperty*, CSimpleProperty*&> m_Rows;
};

// The operations on rows of every GetProperty and SetProperty; for the kinds of a host as well.
namespace PropertyRows {

// A new row, registered and appended; label and description are the same text in most rows.
NRVECTORVIEW_API void Add(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, LPCTSTR description, VARTYPE type,
                          const COleVariant& value);
NRVECTORVIEW_API void AddEnum(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, LPCTSTR description, VARTYPE type,
                              const COleVariant& value);
NRVECTORVIEW_API void AddText(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, const CString& value);
NRVECTORVIEW_API void AddShort(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, short value);
NRVECTORVIEW_API void AddLong(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, long value);
NRVECTORVIEW_API void AddFloat(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, float value);
NRVECTORVIEW_API void AddDouble(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, double value);
// A row of type VT_BOOL whose value is a 4-byte integer variant.
NRVECTORVIEW_API void AddFlag(CDrawableProperty& list, LPCTSTR key, LPCTSTR label, int value);

// Takes the first row of that key back when it was changed; otherwise the field stays. The field is read from the
// variant's member of the named type, with no conversion.
NRVECTORVIEW_API void TakeText(CDrawableProperty& list, LPCTSTR key, CString& field);
NRVECTORVIEW_API void TakeShort(CDrawableProperty& list, LPCTSTR key, short& field);
NRVECTORVIEW_API void TakeLong(CDrawableProperty& list, LPCTSTR key, int& field);
NRVECTORVIEW_API void TakeFloat(CDrawableProperty& list, LPCTSTR key, float& field);
NRVECTORVIEW_API void TakeDouble(CDrawableProperty& list, LPCTSTR key, double& field);
// The 16-bit value with sign, widened: a true variant stores -1.
NRVECTORVIEW_API void TakeFlag(CDrawableProperty& list, LPCTSTR key, int& field);
// The low byte with sign, widened: 256 stores 0, 255 stores -1.
NRVECTORVIEW_API void TakeLowByte(CDrawableProperty& list, LPCTSTR key, int& field);

} // namespace PropertyRows
