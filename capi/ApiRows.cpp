// The C interface: property rows and layers.
// Layer 12: capi.

#include "NrvCall.h"

#include "Drawable.h"

#include <cwchar>

namespace {

// The rows of an object, freed at the end.
struct CRows {
    explicit CRows(CDrawable& object) { object.GetProperty(list); }
    ~CRows() { list.Clear(); }
    CRows(const CRows&) = delete;
    CRows& operator=(const CRows&) = delete;
    // Null beyond the last one.
    CSimpleProperty* At(uint32_t row) { return row <= INT32_MAX ? list.GetRow(static_cast<int>(row)) : nullptr; }
    CDrawableProperty list;
};

CString TextOf(const COleVariant& value) {
    CString text;
    switch (value.vt) {
    case VT_I2:
        text.Format(L"%d", value.iVal);
        break;
    case VT_I4:
        text.Format(L"%d", static_cast<int>(value.lVal));
        break;
    case VT_R4:
        text.Format(L"%.9g", static_cast<double>(value.fltVal));
        break;
    case VT_R8:
        text.Format(L"%.17g", value.dblVal);
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

// False for a text that is no whole number in the range.
bool ToWhole(LPCTSTR text, long least, long most, long& number) {
    wchar_t* end = nullptr;
    errno = 0;
    number = std::wcstol(text, &end, 10);
    return end != text && *end == 0 && errno == 0 && number >= least && number <= most;
}

bool ToNumber(LPCTSTR text, double& number) {
    wchar_t* end = nullptr;
    number = std::wcstod(text, &end);
    return end != text && *end == 0 && std::isfinite(number);
}

// The text as a value of the row's type; false when it is not one.
bool FromText(LPCTSTR text, COleVariant& value) {
    long whole = 0;
    double number = 0.0;
    switch (value.vt) {
    case VT_I2:
        if (!ToWhole(text, INT16_MIN, INT16_MAX, whole)) {
            return false;
        }
        value = static_cast<short>(whole);
        return true;
    case VT_I4:
        if (!ToWhole(text, LONG_MIN, LONG_MAX, whole)) {
            return false;
        }
        value = whole;
        return true;
    case VT_R4:
        if (!ToNumber(text, number) || !NrvFitsFloat(number)) {
            return false;
        }
        value = static_cast<float>(number);
        return true;
    case VT_R8:
        if (!ToNumber(text, number)) {
            return false;
        }
        value = number;
        return true;
    case VT_BSTR:
        value = text;
        return true;
    default:
        return false;
    }
}

} // namespace

NrvResult NRV_CALL NrvGetRowCount(NrvHandle handle, NrvId id, uint32_t* count) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        if (count == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *count = static_cast<uint32_t>(CRows(object).list.GetSize());
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetRowType(NrvHandle handle, NrvId id, uint32_t row, int32_t* type) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        CRows rows(object);
        const CSimpleProperty* property = rows.At(row);
        if (type == nullptr || property == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *type = property->m_Type;
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetRow(NrvHandle handle, NrvId id, uint32_t row, int32_t what, NrvChar* buffer, uint32_t capacity,
                             uint32_t* length) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        CRows rows(object);
        const CSimpleProperty* property = rows.At(row);
        if (property == nullptr) {
            return NRV_E_ARGUMENT;
        }
        switch (what) {
        case NRV_ROW_KEY:
            return NrvGive(property->m_Key, buffer, capacity, length);
        case NRV_ROW_LABEL:
            return NrvGive(property->m_Label, buffer, capacity, length);
        case NRV_ROW_DESCRIPTION:
            return NrvGive(property->m_Description, buffer, capacity, length);
        case NRV_ROW_VALUE:
            return NrvGive(TextOf(property->m_Value), buffer, capacity, length);
        default:
            return NRV_E_ARGUMENT;
        }
    });
}

NrvResult NRV_CALL NrvSetRow(NrvHandle handle, NrvId id, uint32_t row, const NrvChar* value) {
    return NrvEditCall(handle, id, [&](CNrvControl&, CDrawable& object, bool apply) -> NrvResult {
        CRows rows(object);
        CSimpleProperty* property = rows.At(row);
        if (value == nullptr || property == nullptr || !FromText(value, property->m_Value)) {
            return NRV_E_ARGUMENT;
        }
        if (apply) {
            property->m_Changed = 1;
            object.SetProperty(rows.list);
        }
        return NRV_OK;
    });
}

// ---- Layers --------------------------------------------------------------------------------------------------------

namespace {

constexpr UINT kLayerCodePage = 936; // GBK.
constexpr int kLayerNameBytes = 20;
// The size of the record's first version.
constexpr uint32_t kLayerSize = sizeof(NrvLayer);

// False for a name that is too long or has characters outside the code page.
bool ToLayerName(const NrvChar* name, char (&narrow)[kLayerNameBytes + 1]) {
    BOOL replaced = FALSE;
    const int length = ::WideCharToMultiByte(kLayerCodePage, WC_NO_BEST_FIT_CHARS, name, -1, narrow,
                                             kLayerNameBytes + 1, nullptr, &replaced);
    return length != 0 && !replaced;
}

// Null beyond the last one.
CLayerInfo* LayerAt(CNrvControl& control, uint32_t index) {
    return index <= INT16_MAX ? control.Document().GetLayerManager()->GetLayerInfo(static_cast<int>(index)) : nullptr;
}

} // namespace

NrvResult NRV_CALL NrvGetLayerCount(NrvHandle handle, uint32_t* count) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (count == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *count = static_cast<uint32_t>(control.Document().GetLayerManager()->GetLayerCount());
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvAddLayer(NrvHandle handle, const NrvChar* name, uint32_t* index) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        char narrow[kLayerNameBytes + 1] = {};
        if (name == nullptr || !ToLayerName(name, narrow)) {
            return NRV_E_ARGUMENT;
        }
        if (!control.Changing(NRV_CHANGE_LAYERS)) {
            return NRV_E_ENDED;
        }
        const int added = control.Document().GetLayerManager()->AddLayer(narrow);
        if (added < 0) {
            return NRV_E_STATE;
        }
        if (index != nullptr) {
            *index = static_cast<uint32_t>(added);
        }
        control.Changed(NRV_CHANGE_LAYERS);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetLayer(NrvHandle handle, uint32_t index, NrvLayer* layer) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        const CLayerInfo* info = LayerAt(control, index);
        if (layer == nullptr || info == nullptr) {
            return NRV_E_ARGUMENT;
        }
        if (layer->size < kLayerSize) {
            return NRV_E_RECORD;
        }
        layer->color_index = info->m_ColorIndex;
        layer->color = NrvSwapColor(info->m_Color);
        layer->line_type = info->m_LineType;
        layer->line_width = static_cast<double>(info->m_LineWide);
        layer->state = info->m_State;
        layer->reserved = 0;
        std::fill(std::begin(layer->name), std::end(layer->name), L'\0');
        ::MultiByteToWideChar(kLayerCodePage, 0, info->GetName(), -1, layer->name,
                              static_cast<int>(std::size(layer->name)));
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetLayer(NrvHandle handle, uint32_t index, const NrvLayer* layer) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (layer == nullptr || LayerAt(control, index) == nullptr) {
            return NRV_E_ARGUMENT;
        }
        if (layer->size < kLayerSize) {
            return NRV_E_RECORD;
        }
        char name[kLayerNameBytes + 1] = {};
        const bool ended = std::find(std::begin(layer->name), std::end(layer->name), L'\0') != std::end(layer->name);
        const bool index_fits =
            layer->color_index == kColorExplicit || (layer->color_index >= 0 && layer->color_index <= 140);
        const bool style_fits = layer->line_type >= 0 && layer->line_type <= PS_DASHDOTDOT;
        const bool width_fits = NrvFitsFloat(layer->line_width) && layer->line_width >= 0.0;
        if (!ended || !ToLayerName(layer->name, name) || !index_fits || !style_fits || !width_fits) {
            return NRV_E_ARGUMENT;
        }
        if (!control.Changing(NRV_CHANGE_LAYERS)) {
            return NRV_E_ENDED;
        }
        CLayerInfo* info = LayerAt(control, index);
        if (info == nullptr) {
            return NRV_E_ARGUMENT; // The handler has removed the layers.
        }
        info->SetName(name);
        info->m_ColorIndex = layer->color_index;
        info->m_Color = NrvSwapColor(layer->color);
        info->m_LineType = static_cast<short>(layer->line_type);
        info->m_LineWide = static_cast<float>(layer->line_width);
        info->m_State = layer->state;
        control.Changed(NRV_CHANGE_LAYERS);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvRemoveLayers(NrvHandle handle) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (!control.Changing(NRV_CHANGE_LAYERS)) {
            return NRV_E_ENDED;
        }
        control.Document().GetLayerManager()->RemoveAll();
        control.Changed(NRV_CHANGE_LAYERS);
        return NRV_OK;
    });
}
