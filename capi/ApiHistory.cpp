// The C interface: undo and redo.
// Layer 12: capi.

#include "NrvCall.h"

#include "DrawingHistory.h"
#include "vectorview.h"

namespace {

// `body` gets the history; NRV_E_STATE while it is off.
template <class Body>
NrvResult HistoryCall(NrvHandle handle, Body body) noexcept {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        CDrawingHistory* history = control.View().GetHistory();
        return history != nullptr ? body(control, *history) : static_cast<NrvResult>(NRV_E_STATE);
    });
}

NrvResult Travel(NrvHandle handle, int (CVectorView::*go)()) noexcept {
    return HistoryCall(handle, [&](CNrvControl& control, CDrawingHistory&) -> NrvResult {
        if (!control.Changing(NRV_CHANGE_HISTORY)) {
            return NRV_E_ENDED;
        }
        if (control.Wants(NRV_N_CHANGED) && !control.Watch().IsOn()) {
            control.Watch().Begin(control.Document());
        }
        const bool changed = (control.View().*go)() != 0;
        if (control.HasEnded()) {
            return NRV_E_ENDED;
        }
        control.QueueDifference();
        if (!changed) {
            return NRV_E_STATE;
        }
        // Also for changes that belong to no object: background, layers, the drawing order.
        CNrvNote note(NRV_N_CHANGED);
        note.reason = NRV_CHANGE_HISTORY;
        control.Queue(std::move(note));
        control.Repaint();
        return NRV_OK;
    });
}

} // namespace

NrvResult NRV_CALL NrvGetHistory(NrvHandle handle, int32_t* on) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (on == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *on = control.View().GetHistory() != nullptr ? 1 : 0;
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetHistory(NrvHandle handle, int32_t on) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        const int is = control.View().EnableHistory(on);
        if (CDrawingHistory* history = control.View().GetHistory()) {
            history->SetListener(&control);
        }
        return on != 0 && is == 0 ? NRV_E_MEMORY : NRV_OK;
    });
}

NrvResult NRV_CALL NrvUndo(NrvHandle handle) {
    return Travel(handle, &CVectorView::Undo);
}

NrvResult NRV_CALL NrvRedo(NrvHandle handle) {
    return Travel(handle, &CVectorView::Redo);
}

NrvResult NRV_CALL NrvGetStepCount(NrvHandle handle, int32_t redo, uint32_t* count) {
    return HistoryCall(handle, [&](CNrvControl&, CDrawingHistory& history) -> NrvResult {
        if (count == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *count = static_cast<uint32_t>(redo != 0 ? history.GetRedoCount() : history.GetUndoCount());
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetStepName(NrvHandle handle, int32_t redo, int32_t english, NrvChar* buffer, uint32_t capacity,
                                  uint32_t* length) {
    return HistoryCall(handle, [&](CNrvControl&, CDrawingHistory& history) -> NrvResult {
        return NrvGive(redo != 0 ? history.GetRedoName(english) : history.GetUndoName(english), buffer, capacity,
                       length);
    });
}

NrvResult NRV_CALL NrvBeginStep(NrvHandle handle, const NrvChar* chinese, const NrvChar* english) {
    return HistoryCall(handle, [&](CNrvControl&, CDrawingHistory& history) -> NrvResult {
        history.BeginGroup(chinese, english);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvEndStep(NrvHandle handle) {
    return HistoryCall(handle, [&](CNrvControl&, CDrawingHistory& history) -> NrvResult {
        history.EndGroup();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetStepLimits(NrvHandle handle, uint64_t bytes, uint32_t steps) {
    return HistoryCall(handle, [&](CNrvControl&, CDrawingHistory& history) -> NrvResult {
        if (steps == 0 || steps > INT32_MAX) {
            return NRV_E_ARGUMENT;
        }
        history.SetLimits(static_cast<size_t>(bytes), static_cast<int>(steps));
        return NRV_OK;
    });
}
