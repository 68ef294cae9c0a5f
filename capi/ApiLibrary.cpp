// The C interface: version, errors, handles, events, messages.
// Layer 12: capi.

#include "NrvCall.h"
#include "NrvWindow.h"

#include "MemoryInfo.h"

uint32_t NRV_CALL NrvGetVersion(void) {
    return NRV_VERSION_MAJOR * 0x1000000u + NRV_VERSION_MINOR * 0x10000u + NRV_VERSION_PATCH * 0x100u;
}

NrvResult NRV_CALL NrvErrorText(NrvResult error, NrvChar* buffer, uint32_t capacity, uint32_t* length) {
    static constexpr LPCTSTR kTexts[] = {
        L"No error.",
        L"An argument is null, out of range, not finite or unknown.",
        L"The handle is no window of the two classes and no drawing, or one that has ended.",
        L"The window belongs to another thread.",
        L"Another thread is in a call for this drawing.",
        L"The id names no object of this drawing.",
        L"Objects or handles of this kind do not have what was asked for.",
        L"The buffer is too small; the needed length was told.",
        L"The size of a record is too small.",
        L"Not enough memory.",
        L"A part of the drawing could not be loaded; the rest is there.",
        L"Refused: nothing could be loaded, or the edited text was not accepted.",
        L"The file cannot be read or written.",
        L"Not possible now.",
        L"There is no command of this word, or no parameter of this name.",
        L"The drawing could not be painted.",
        L"The view or drawing was ended during the call.",
        L"Windows refused the operation.",
    };
    static_assert(std::size(kTexts) == NRV_E_SYSTEM + 1, "a text for each error");
    return NrvGuarded([&]() -> NrvResult {
        if (error < 0 || error > NRV_E_SYSTEM) {
            return NRV_E_ARGUMENT;
        }
        return NrvGive(CString(kTexts[error]), buffer, capacity, length);
    });
}

// ---- Handles -------------------------------------------------------------------------------------------------------

NrvResult NRV_CALL NrvGetHandleKind(NrvHandle handle, int32_t* kind) {
    return NrvGuarded([&]() -> NrvResult {
        if (kind == nullptr) {
            return NRV_E_ARGUMENT;
        }
        const auto control = NrvHandles::Find(handle);
        if (control == nullptr || (control->IsWindow() && ::IsWindow(static_cast<HWND>(handle)) == FALSE)) {
            return NRV_E_HANDLE;
        }
        *kind = control->GetKind();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvCreateDrawing(NrvHandle* drawing) {
    return NrvGuarded([&]() -> NrvResult {
        if (drawing == nullptr) {
            return NRV_E_ARGUMENT;
        }
        if (!NrvEnsureInitialized()) {
            return NRV_E_SYSTEM;
        }
        auto* made = new CNrvView(NRV_HANDLE_DRAWING);
        KX_ADD_MEMORY(static_cast<CWnd*>(made));
        std::shared_ptr<CNrvView> control(made, [](CNrvView* ended) {
            KX_REMOVE_MEMORY(static_cast<CWnd*>(ended));
            delete ended;
        });
        const NrvHandle handle = NrvHandles::NewDrawingHandle();
        control->SetHandle(handle);
        control->SetMessages(NRV_MESSAGES_SILENT);
        NrvHandles::Enter(handle, control);
        *drawing = handle;
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvFreeDrawing(NrvHandle drawing) {
    return NrvCall(drawing, NrvNeeds::Drawing, [&](CNrvControl& control) -> NrvResult {
        control.End();
        NrvHandles::Remove(drawing);
        return NRV_OK;
    });
}

// ---- Events and messages -------------------------------------------------------------------------------------------

NrvResult NRV_CALL NrvSetCallback(NrvHandle handle, NrvCallback callback, void* user) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        control.SetCallback(callback, user);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetEventMask(NrvHandle handle, uint32_t* mask) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (mask == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *mask = control.GetMask();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetEventMask(NrvHandle handle, uint32_t mask) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        control.SetMask(mask);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetMessages(NrvHandle handle, int32_t* mode) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (mode == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *mode = control.GetMessages();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetMessages(NrvHandle handle, int32_t mode) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (mode != NRV_MESSAGES_BOX && mode != NRV_MESSAGES_SILENT) {
            return NRV_E_ARGUMENT;
        }
        if (!control.IsWindow() && mode != NRV_MESSAGES_SILENT) {
            return NRV_E_KIND;
        }
        control.SetMessages(mode);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetLastMessage(NrvHandle handle, NrvChar* buffer, uint32_t capacity, uint32_t* length) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        return NrvGive(control.GetLastMessage(), buffer, capacity, length);
    });
}
