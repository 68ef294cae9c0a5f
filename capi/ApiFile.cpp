// The C interface: loading, saving, clearing.
// Layer 12: capi.

#include "NrvCall.h"
#include "NrvWindow.h"

#include "vectorview.h"

namespace {

// The size of the record's first version.
constexpr uint32_t kLoadSize = sizeof(NrvLoad);

bool IsRecord(const NrvLoad* load) {
    return load == nullptr || load->size >= kLoadSize;
}

uint32_t CountOf(CNrvControl& control) {
    return static_cast<uint32_t>(control.Document().GetDrawableObjs()->GetSize());
}

NrvResult Load(CNrvControl& control, const void* data, uint32_t size, NrvLoad* load) {
    if (!control.Changing(NRV_CHANGE_LOADED)) {
        return NRV_E_ENDED;
    }
    int messages = 0;
    {
        const CNrvControl::CQuiet quiet(control);
        // The buffer is only read.
        control.View().LoadFile(static_cast<unsigned char*>(const_cast<void*>(data)), size);
        messages = quiet.Count();
    }
    if (control.HasEnded()) {
        return NRV_E_ENDED;
    }
    // Every failure of a load is reported by a message.
    const uint32_t objects = CountOf(control);
    const int32_t outcome = messages == 0 ? NRV_LOAD_WHOLE : objects != 0 ? NRV_LOAD_PARTLY : NRV_LOAD_REFUSED;
    if (load != nullptr) {
        load->outcome = outcome;
        load->objects = objects;
    }
    control.freshMapping = false;
    control.Changed(NRV_CHANGE_LOADED);
    control.Document().SetModifiedFlag(FALSE);
    return outcome == NRV_LOAD_WHOLE ? NRV_OK : outcome == NRV_LOAD_PARTLY ? NRV_E_PARTLY : NRV_E_REFUSED;
}

// False when it can't be read, or is larger than a stream can be.
bool ReadWhole(const NrvChar* path, std::vector<BYTE>& bytes) {
    const HANDLE file = ::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    struct Closed {
        HANDLE file;
        ~Closed() { ::CloseHandle(file); }
    };
    const Closed closed{file};
    LARGE_INTEGER size = {};
    if (!::GetFileSizeEx(file, &size) || size.QuadPart > INT32_MAX) {
        return false;
    }
    bytes.resize(static_cast<size_t>(size.QuadPart));
    DWORD read = 0;
    return bytes.empty() ||
           (::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) && read == bytes.size());
}

} // namespace

NrvResult NRV_CALL NrvLoadBuffer(NrvHandle handle, const void* data, uint32_t size, NrvLoad* load) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (data == nullptr || size == 0) {
            return NRV_E_ARGUMENT;
        }
        return IsRecord(load) ? Load(control, data, size, load) : static_cast<NrvResult>(NRV_E_RECORD);
    });
}

NrvResult NRV_CALL NrvLoadFile(NrvHandle handle, const NrvChar* path, NrvLoad* load) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (path == nullptr) {
            return NRV_E_ARGUMENT;
        }
        if (!IsRecord(load)) {
            return NRV_E_RECORD;
        }
        std::vector<BYTE> bytes;
        if (!ReadWhole(path, bytes) || bytes.empty()) {
            return NRV_E_FILE;
        }
        return Load(control, bytes.data(), static_cast<uint32_t>(bytes.size()), load);
    });
}

NrvResult NRV_CALL NrvSaveBuffer(NrvHandle handle, void* buffer, uint32_t capacity, uint32_t* size) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (size == nullptr || (buffer == nullptr && capacity != 0)) {
            return NRV_E_ARGUMENT;
        }
        CMemFile file(1024);
        control.Document().StoreToMemFile(&file);
        const auto length = static_cast<size_t>(file.GetLength());
        std::vector<BYTE> bytes(length);
        file.SeekToBegin();
        file.Read(bytes.data(), static_cast<UINT>(length));
        const NrvResult given = NrvGive(bytes.data(), length, static_cast<BYTE*>(buffer), capacity, size);
        if (given == NRV_OK && buffer != nullptr) {
            control.Document().SetModifiedFlag(FALSE);
        }
        return given;
    });
}

NrvResult NRV_CALL NrvSaveFile(NrvHandle handle, const NrvChar* path) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (path == nullptr || *path == 0) {
            return NRV_E_ARGUMENT;
        }
        const CNrvControl::CQuiet quiet(control);
        return control.Document().DoSave(path, FALSE) != 0 ? NRV_OK : NRV_E_FILE;
    });
}

NrvResult NRV_CALL NrvClear(NrvHandle handle) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (!control.Changing(NRV_CHANGE_CLEARED)) {
            return NRV_E_ENDED;
        }
        if (CCommandOperationManager* engine = control.Engine()) {
            engine->Cancel();
        }
        if (auto* parm = dynamic_cast<CVectorViewParm*>(&control.View())) {
            parm->ResetVectorView();
        } else {
            control.Document().Reset();
        }
        control.Changed(NRV_CHANGE_CLEARED);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetModified(NrvHandle handle, int32_t* modified) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (modified == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *modified = control.Document().IsModified() != FALSE;
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetModified(NrvHandle handle, int32_t modified) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        control.Document().SetModifiedFlag(modified != 0);
        return NRV_OK;
    });
}
