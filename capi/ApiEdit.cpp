// The C interface: editing a parameter in a parameter view.
// Layer 12: capi.

#include "NrvCall.h"
#include "NrvWindow.h"

#include "TextParm.h"

namespace {

template <class Body>
NrvResult ParmCall(NrvHandle handle, Body body) noexcept {
    return NrvCall(handle, NrvNeeds::ParmView,
                   [&](CNrvControl& control) -> NrvResult { return body(static_cast<CNrvParmView&>(control)); });
}

} // namespace

NrvResult NRV_CALL NrvBeginEdit(NrvHandle handle, NrvId id) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        CDrawable* object = view.Find(id);
        if (object == nullptr) {
            return NRV_E_OBJECT;
        }
        auto* parm = dynamic_cast<CTextParm*>(object);
        if (parm == nullptr || view.IndexOf(object) < 0) {
            return NRV_E_KIND;
        }
        view.OpenEdit(parm);
        return view.GetEditParm() != nullptr && view.Ids().IdOf(view.GetEditParm()) == id ? NRV_OK : NRV_E_REFUSED;
    });
}

NrvResult NRV_CALL NrvGetEdit(NrvHandle handle, NrvId* id) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        if (id == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *id = view.Ids().IdOf(view.GetEditParm());
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetEditText(NrvHandle handle, NrvChar* buffer, uint32_t capacity, uint32_t* length) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        if (view.IsEditOpen() == 0) {
            return NRV_E_STATE;
        }
        return NrvGive(view.textToStore != nullptr ? *view.textToStore : view.GetEditText(), buffer, capacity, length);
    });
}

NrvResult NRV_CALL NrvSetEditText(NrvHandle handle, const NrvChar* text) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        if (text == nullptr) {
            return NRV_E_ARGUMENT;
        }
        if (view.textToStore != nullptr) {
            *view.textToStore = text;
            return NRV_OK;
        }
        if (view.IsEditOpen() == 0) {
            return NRV_E_STATE;
        }
        view.SetOpenText(text);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvEndEdit(NrvHandle handle) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        view.DoEndEdit();
        return view.HasEnded() || view.IsEditOpen() == 0 ? NRV_OK : NRV_E_REFUSED;
    });
}

NrvResult NRV_CALL NrvGetStrictRefusal(NrvHandle handle, int32_t* strict) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        if (strict == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *strict = view.CVectorViewParm::GetStrictRefusal() != 0;
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetStrictRefusal(NrvHandle handle, int32_t strict) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        view.SetStrictRefusal(strict != 0);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetWheel(NrvHandle handle, int32_t on) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        view.EnableWheel(on != 0);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetWheel(NrvHandle handle, int32_t* on) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        if (on == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *on = view.IsWheelEnabled();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetTooltip(NrvHandle handle, const NrvChar* text) {
    return ParmCall(handle, [&](CNrvParmView& view) -> NrvResult {
        if (text != nullptr) {
            view.SetTooltipText(text, 1);
        } else {
            view.ActivateTooltip(0);
        }
        return NRV_OK;
    });
}
