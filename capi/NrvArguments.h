// Arguments and results of the functions of the C interface: buffers, records, numbers, device contexts.
// Layer 12: capi.
#pragma once

#include "nrview.h"

#include <afxwin.h>

#include <algorithm>
#include <cmath>
#include <cstring>

// Whether the handle is that of a device context into which a drawing can be painted.
inline bool NrvIsDeviceContext(void* hdc) {
    const DWORD type = hdc != nullptr ? ::GetObjectType(hdc) : 0;
    return type == OBJ_DC || type == OBJ_MEMDC || type == OBJ_ENHMETADC || type == OBJ_METADC;
}

// A context of the caller, borrowed.
class CNrvBorrowedDC : public CDC {
public:
    explicit CNrvBorrowedDC(void* hdc) { Attach(static_cast<HDC>(hdc)); }
    ~CNrvBorrowedDC() override { Detach(); }
};

// Writes into a buffer of the caller, as the head of nrview.h says.
NrvResult NrvGive(const CString& text, NrvChar* buffer, uint32_t capacity, uint32_t* length);

template <class Item>
NrvResult NrvGive(const Item* items, size_t size, Item* buffer, uint32_t capacity, uint32_t* count) {
    if (count == nullptr || (buffer == nullptr && capacity != 0)) {
        return NRV_E_ARGUMENT;
    }
    if (size > UINT32_MAX) {
        return NRV_E_MEMORY;
    }
    *count = static_cast<uint32_t>(size);
    if (buffer == nullptr) {
        return NRV_OK;
    }
    if (capacity < size) {
        return NRV_E_BUFFER;
    }
    std::copy(items, items + size, buffer);
    return NRV_OK;
}

// The caller's record may be that of an older or a newer header: its fields replace those of `record`, which has the
// defaults of the others, and as many fields as the caller's size allows are written back. `first` is the size of the
// first version.
template <class Record>
NrvResult NrvTakeRecord(const Record* given, uint32_t first, Record& record) {
    if (given == nullptr) {
        return NRV_E_ARGUMENT;
    }
    if (given->size < first) {
        return NRV_E_RECORD;
    }
    std::memcpy(&record, given, std::min<size_t>(given->size, sizeof(Record)));
    return NRV_OK;
}

template <class Record>
NrvResult NrvGiveRecord(Record record, uint32_t first, Record* given) {
    if (given == nullptr) {
        return NRV_E_ARGUMENT;
    }
    if (given->size < first) {
        return NRV_E_RECORD;
    }
    record.size = given->size;
    std::memcpy(given, &record, std::min<size_t>(given->size, sizeof(Record)));
    return NRV_OK;
}

template <class... Numbers>
bool NrvAreFinite(Numbers... numbers) {
    return (std::isfinite(numbers) && ...);
}

// Whether the number can be stored in single precision.
inline bool NrvFitsFloat(double number) {
    return std::isfinite(number) && std::isfinite(static_cast<float>(number));
}

// 0x00RRGGBB and COLORREF, either way; the highest byte is dropped.
inline DWORD NrvSwapColor(DWORD color) {
    return ((color & 0xFFu) << 16) | (color & 0xFF00u) | ((color >> 16) & 0xFFu);
}
