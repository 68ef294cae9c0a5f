// The C interface: commands, mapping, zoom, paint, background.
// Layer 12: capi.

#include "NrvCall.h"

#include "CommandWords.h"
#include "InPlaceEdit.h"
#include "PLine.h"
#include "VectorGraphic.h"
#include "vectorview.h"

namespace {

constexpr int32_t kLastColor = 140; // The last index of the colour table.

} // namespace

// ---- Commands ------------------------------------------------------------------------------------------------------

namespace {

CNrvNote NoteOf(uint32_t code, LPCTSTR word, int32_t reason = 0) {
    CNrvNote note(code);
    note.text = word;
    note.reason = reason;
    return note;
}

// Starts a command that has ended when its word returns.
void RunAtOnce(CNrvControl& control, LPCTSTR word) {
    if (control.Wants(NRV_N_CHANGED) && !control.Watch().IsOn()) {
        control.Watch().Begin(control.Document());
    }
    control.View().DoCommand(word);
    if (!control.HasEnded()) {
        const bool changed = control.QueueDifference();
        control.Queue(NoteOf(NRV_N_COMMAND_ENDED, word, changed ? NRV_END_DONE : NRV_END_CANCELLED));
    }
}

// The box in which a running command expects a distance; null when none is shown.
HWND DistanceBox(CNrvControl& control) {
    for (HWND child = ::GetWindow(control.Window(), GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        const CWnd* box = CWnd::FromHandlePermanent(child);
        if (box != nullptr && box->IsKindOf(RUNTIME_CLASS(CEdit)) && !box->IsKindOf(RUNTIME_CLASS(CInPlaceEdit)) &&
            (::GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0) {
            return child;
        }
    }
    return nullptr;
}

} // namespace

NrvResult NRV_CALL NrvGetCommandCount(uint32_t* count) {
    if (count == nullptr) {
        return NRV_E_ARGUMENT;
    }
    int rows = 0;
    GetCommandWords(rows);
    *count = static_cast<uint32_t>(rows);
    return NRV_OK;
}

NrvResult NRV_CALL NrvGetCommand(uint32_t index, int32_t field, NrvChar* buffer, uint32_t capacity, uint32_t* length) {
    return NrvGuarded([&]() -> NrvResult {
        int rows = 0;
        const CommandWord* words = GetCommandWords(rows);
        if (index >= static_cast<uint32_t>(rows)) {
            return NRV_E_ARGUMENT;
        }
        switch (field) {
        case NRV_COMMAND_WORD:
            return NrvGive(CString(words[index].word), buffer, capacity, length);
        case NRV_COMMAND_CAPTION:
            return NrvGive(CString(words[index].caption), buffer, capacity, length);
        case NRV_COMMAND_HINT:
            return NrvGive(CString(words[index].hint), buffer, capacity, length);
        case NRV_COMMAND_CHINESE:
            return NrvGive(CString(words[index].chinese), buffer, capacity, length);
        case NRV_COMMAND_ENGLISH:
            return NrvGive(CString(words[index].english), buffer, capacity, length);
        default:
            return NRV_E_ARGUMENT;
        }
    });
}

NrvResult NRV_CALL NrvDoCommand(NrvHandle handle, const NrvChar* word) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        if (word == nullptr) {
            return NRV_E_ARGUMENT;
        }
        const CString text = word; // The caller's text may be freed in an event.
        const CommandWord* row = FindCommandWord(text);
        const bool file = text == L"open" || text == L"save";
        if (row == nullptr && !file) {
            return NRV_E_WORD;
        }
        control.FocusView();
        if (control.HasEnded()) {
            return NRV_E_ENDED;
        }
        if (row != nullptr && row->running == CommandRunning::Installed) {
            control.View().DoCommand(text);
            return NRV_OK;
        }
        control.Send(NoteOf(NRV_N_COMMAND_BEGUN, text));
        if (!control.Changing(NRV_CHANGE_COMMAND, {}, text)) {
            return NRV_E_ENDED;
        }
        RunAtOnce(control, text);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetRunningCommand(NrvHandle handle, NrvChar* buffer, uint32_t capacity, uint32_t* length) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        return NrvGive(control.GetWord(), buffer, capacity, length);
    });
}

NrvResult NRV_CALL NrvCancelCommand(NrvHandle handle) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        control.BreakOff();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvEnterDistance(NrvHandle handle, int32_t distance) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        CCommandOperationManager* engine = control.Engine();
        const HWND box = DistanceBox(control);
        if (engine == nullptr || engine->GetHasCommand() == 0 || box == nullptr) {
            return NRV_E_STATE;
        }
        CString text;
        text.Format(L"%d", distance);
        ::SetWindowTextW(box, text);
        engine = control.HasEnded() ? nullptr : control.Engine();
        if (engine != nullptr) {
            engine->Execute();
        }
        if (!control.HasEnded()) {
            control.FocusView();
        }
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetSnapMode(NrvHandle handle, int32_t* mode) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        if (mode == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *mode = control.snapMode;
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetSnapMode(NrvHandle handle, int32_t mode) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        if (mode < 0 || mode > kOsnapAll) {
            return NRV_E_ARGUMENT;
        }
        control.snapMode = mode;
        control.Engine()->SetOsnapMode(mode);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetOrtho(NrvHandle handle, int32_t* ortho) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        if (ortho == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *ortho = control.Engine()->GetDrawObjLatus() != 0;
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetOrtho(NrvHandle handle, int32_t ortho) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        control.Engine()->SetDrawObjLatus(ortho != 0);
        return NRV_OK;
    });
}

namespace {

// Gives access to the mode of the engine's own search, without that of the running tool.
struct COpenEngine : CCommandOperationManager {
    static int& OwnMode(CCommandOperationManager& engine) { return engine.*(&COpenEngine::m_OsnapMode); }
};

} // namespace

NrvResult NRV_CALL NrvSnap(NrvHandle handle, double px, double py, double* sx, double* sy, int32_t* kind) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        if (sx == nullptr || sy == nullptr || kind == nullptr || !NrvFitsFloat(px) || !NrvFitsFloat(py)) {
            return NRV_E_ARGUMENT;
        }
        CGePoint2d found;
        *kind = 0;
        int& mode = COpenEngine::OwnMode(*control.Engine());
        mode = control.snapMode & ~kOsnapPerpendicular;
        const int hit = control.Engine()->GetGripPointForL(CGePoint2d(px, py), found);
        mode = control.snapMode;
        if (hit != 0) {
            *sx = found.x;
            *sy = found.y;
            *kind = found.type != 0 ? found.type : 1;
        }
        return NRV_OK;
    });
}

// ---- Editing options -----------------------------------------------------------------------------------------------

namespace {

// The size of the record's first version.
constexpr uint32_t kOptionsSize = sizeof(NrvEditingOptions);

NrvEditingOptions RecordOf(const CEditingOptions& options) {
    NrvEditingOptions record = {};
    record.strokes_once = options.strokesOnce ? 1 : 0;
    record.no_self_snap = options.noSelfSnap ? 1 : 0;
    record.previews_return = options.previewsReturn ? 1 : 0;
    record.repaints_at_end = options.repaintsAtEnd ? 1 : 0;
    record.modified_by_change = options.modifiedByChange ? 1 : 0;
    record.texts_as_shown = options.textsAsShown ? 1 : 0;
    record.clean_rectangle = options.cleanRectangle ? 1 : 0;
    record.transforms_end_early = options.transformsEndEarly ? 1 : 0;
    record.figure_height = static_cast<double>(options.figureHeight);
    record.pixel_scale = static_cast<double>(options.pixelScale);
    return record;
}

bool IsPositiveFloat(double number) {
    return NrvFitsFloat(number) && static_cast<float>(number) > 0.0f;
}

} // namespace

NrvResult NRV_CALL NrvGetEditingOptions(NrvHandle handle, NrvEditingOptions* options) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        return NrvGiveRecord(RecordOf(control.Document().GetEditingOptions()), kOptionsSize, options);
    });
}

NrvResult NRV_CALL NrvSetEditingOptions(NrvHandle handle, const NrvEditingOptions* options) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        CEditingOptions set = control.Document().GetEditingOptions();
        NrvEditingOptions record = RecordOf(set);
        const NrvResult taken = NrvTakeRecord(options, kOptionsSize, record);
        if (taken != NRV_OK) {
            return taken;
        }
        if (!IsPositiveFloat(record.figure_height) || !IsPositiveFloat(record.pixel_scale)) {
            return NRV_E_ARGUMENT;
        }
        set.strokesOnce = record.strokes_once != 0;
        set.noSelfSnap = record.no_self_snap != 0;
        set.previewsReturn = record.previews_return != 0;
        set.repaintsAtEnd = record.repaints_at_end != 0;
        set.modifiedByChange = record.modified_by_change != 0;
        set.textsAsShown = record.texts_as_shown != 0;
        set.cleanRectangle = record.clean_rectangle != 0;
        set.transformsEndEarly = record.transforms_end_early != 0;
        set.figureHeight = static_cast<float>(record.figure_height);
        set.pixelScale = static_cast<float>(record.pixel_scale);
        control.Document().SetEditingOptions(set);
        return NRV_OK;
    });
}

// ---- Mapping -------------------------------------------------------------------------------------------------------

namespace {

// The size of the record's first version.
constexpr uint32_t kMappingSize = sizeof(NrvMapping);

// A fit into an area that is only as wide or high as the margin has no scale: the mapping is then restored.
NrvResult ZoomInto(CNrvControl& control, const CRect& area) {
    CVectorViewCoordTran& mapping = control.Mapping();
    const CVectorViewCoordTran before = mapping;
    control.Graphic().ZoomAll(area);
    if (!(std::isfinite(mapping.GetScale()) && mapping.GetScale() > 0.0f)) {
        mapping = before;
        return NRV_E_ARGUMENT;
    }
    control.freshMapping = false;
    control.Repaint();
    return NRV_OK;
}

} // namespace

NrvResult NRV_CALL NrvGetMapping(NrvHandle handle, NrvMapping* mapping) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (mapping == nullptr) {
            return NRV_E_ARGUMENT;
        }
        if (mapping->size < kMappingSize) {
            return NRV_E_RECORD;
        }
        const CVectorViewCoordTran& tran = control.Mapping();
        mapping->height = tran.GethScreen();
        mapping->scale = static_cast<double>(tran.GetScale());
        mapping->origin_x = tran.GetOriginX();
        mapping->origin_y = tran.GetOriginY();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetMapping(NrvHandle handle, const NrvMapping* mapping) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (mapping == nullptr) {
            return NRV_E_ARGUMENT;
        }
        if (mapping->size < kMappingSize) {
            return NRV_E_RECORD;
        }
        const bool valid = mapping->height >= 0 && NrvFitsFloat(mapping->scale) &&
                           static_cast<float>(mapping->scale) > 0.0f &&
                           NrvAreFinite(mapping->origin_x, mapping->origin_y);
        if (!valid) {
            return NRV_E_ARGUMENT;
        }
        CVectorViewCoordTran& tran = control.Mapping();
        tran.SethScreen(mapping->height);
        tran.SetScale(static_cast<float>(mapping->scale));
        tran.SetOriginX(mapping->origin_x);
        tran.SetOriginY(mapping->origin_y);
        control.freshMapping = false;
        control.Repaint();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvZoomExtents(NrvHandle handle) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        CRect client;
        ::GetClientRect(control.Window(), &client);
        return ZoomInto(control, client);
    });
}

NrvResult NRV_CALL NrvZoomInto(NrvHandle handle, int32_t left, int32_t top, int32_t right, int32_t bottom) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        constexpr int32_t kMost = 0x3FFFFFFF; // Small enough that no difference overflows.
        const auto within = [](int32_t edge) { return edge >= -kMost && edge <= kMost; };
        if (!within(left) || !within(top) || !within(right) || !within(bottom) || right <= left || bottom <= top) {
            return NRV_E_ARGUMENT;
        }
        return ZoomInto(control, CRect(left, top, right, bottom));
    });
}

NrvResult NRV_CALL NrvSetZoomMargin(NrvHandle handle, int32_t margin, int32_t pixels) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        constexpr int32_t kMost = 10000;
        if (margin < 0 || margin > kMost) {
            return NRV_E_ARGUMENT;
        }
        control.Graphic().SetZoomAllMargin(margin);
        control.Graphic().SetZoomByPixs(pixels != 0);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvToPixels(NrvHandle handle, double x, double y, double* px, double* py) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (px == nullptr || py == nullptr || !NrvAreFinite(x, y)) {
            return NRV_E_ARGUMENT;
        }
        control.Mapping().DPToLP_Double(x, y, px, py);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvToDrawing(NrvHandle handle, double px, double py, double* x, double* y) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (x == nullptr || y == nullptr || !NrvFitsFloat(px) || !NrvFitsFloat(py)) {
            return NRV_E_ARGUMENT;
        }
        control.Mapping().LPToDP(static_cast<float>(px), static_cast<float>(py), x, y);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvHitTest(NrvHandle handle, int32_t px, int32_t py, NrvId* id, int32_t* segment) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (id == nullptr) {
            return NRV_E_ARGUMENT;
        }
        int32_t hit = -1;
        *id = control.Ids().IdOf(control.HitAt(CPoint(px, py), hit));
        if (segment != nullptr) {
            *segment = hit;
        }
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvHitCurve(NrvHandle handle, int32_t px, int32_t py, NrvId* id, int32_t* segment) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (id == nullptr) {
            return NRV_E_ARGUMENT;
        }
        int hit = -1;
        CPLine* pline = control.View().GetPLine_IsArc(CPoint(px, py), hit);
        *id = control.Ids().IdOf(pline);
        if (segment != nullptr) {
            *segment = pline != nullptr ? hit : -1;
        }
        return NRV_OK;
    });
}

// ---- Paint ---------------------------------------------------------------------------------------------------------

NrvResult NRV_CALL NrvPaint(NrvHandle handle, void* hdc) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (!NrvIsDeviceContext(hdc)) {
            return NRV_E_ARGUMENT;
        }
        CNrvBorrowedDC dc(hdc);
        const CNrvControl::CQuiet quiet(control);
        const bool painted = control.View().VectorPaint(&dc) != 0;
        return painted && quiet.Count() == 0 ? NRV_OK : NRV_E_PAINT;
    });
}

NrvResult NRV_CALL NrvGetShowDecimals(NrvHandle handle, int32_t* show) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (show == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *show = control.showDecimals;
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetShowDecimals(NrvHandle handle, int32_t show) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        control.showDecimals = show != 0;
        control.Graphic().SetNeedShowDecimal(control.showDecimals);
        control.Repaint();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetBackground(NrvHandle handle, uint32_t* color) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (color == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *color = NrvSwapColor(control.Document().GetBKColor());
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetBackground(NrvHandle handle, uint32_t color) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (!control.Changing(NRV_CHANGE_BACKGROUND)) {
            return NRV_E_ENDED;
        }
        control.Document().SetBKColor(NrvSwapColor(color));
        control.Changed(NRV_CHANGE_BACKGROUND);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetBackgroundIndex(NrvHandle handle, int32_t* index) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (index == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *index = control.Document().GetBKColorIndex();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetBackgroundIndex(NrvHandle handle, int32_t index) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (index != kColorExplicit && (index < 0 || index > kLastColor)) {
            return NRV_E_ARGUMENT;
        }
        if (!control.Changing(NRV_CHANGE_BACKGROUND)) {
            return NRV_E_ENDED;
        }
        control.Document().SetBKColorIndex(static_cast<short>(index));
        control.Changed(NRV_CHANGE_BACKGROUND);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetTableColor(int32_t index, uint32_t* color) {
    return NrvGuarded([&]() -> NrvResult {
        if (color == nullptr || index < 0 || index > kLastColor) {
            return NRV_E_ARGUMENT;
        }
        *color = NrvSwapColor(CGraphColorInfo::GetInstance()->GetColor(index));
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetPenIndex(NrvHandle handle, int32_t* index) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (index == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *index = control.Document().GetFGColorIndex();
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetPenIndex(NrvHandle handle, int32_t index) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (index < kColorByLayer || index > kLastColor) {
            return NRV_E_ARGUMENT;
        }
        control.Document().SetFGColorIndex(static_cast<short>(index));
        return NRV_OK;
    });
}
