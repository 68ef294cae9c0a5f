// The C interface: parts of a drawing as streams of their own, and the clipboard.
// Layer 12: capi.

#include "NrvCall.h"

#include "DrawingClipboard.h"
#include "DrawingHistory.h"
#include "MemoryInfo.h"
#include "NrvPictures.h"
#include "ObjectStream.h"
#include "OperationPlaceObjects.h"
#include "vectorview.h"

namespace {

// The objects of a host's list of ids, all of them in the drawing.
NrvResult TakeIds(CNrvControl& control, const NrvId* ids, uint32_t count, CDrawableArray& objects) {
    if (ids == nullptr || count == 0) {
        return NRV_E_ARGUMENT;
    }
    for (uint32_t i = 0; i < count; ++i) {
        CDrawable* object = control.Find(ids[i]);
        if (object == nullptr) {
            return NRV_E_OBJECT;
        }
        if (control.IndexOf(object) < 0) {
            return NRV_E_KIND;
        }
        objects.Add(object);
    }
    return NRV_OK;
}

// Objects of a stream that no drawing owns yet.
class CLooseObjects {
public:
    CLooseObjects() = default;
    ~CLooseObjects() {
        for (INT_PTR i = 0; i < list.GetSize(); ++i) {
            KX_REMOVE_MEMORY(list[i]);
            delete list[i];
        }
    }
    CLooseObjects(const CLooseObjects&) = delete;
    CLooseObjects& operator=(const CLooseObjects&) = delete;
    CDrawableArray list;
};

} // namespace

NrvResult NRV_CALL NrvSaveObjects(NrvHandle handle, const NrvId* ids, uint32_t id_count, void* buffer,
                                  uint32_t capacity, uint32_t* size) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (size == nullptr || (buffer == nullptr && capacity != 0)) {
            return NRV_E_ARGUMENT;
        }
        CDrawableArray objects;
        const NrvResult taken = TakeIds(control, ids, id_count, objects);
        if (taken != NRV_OK) {
            return taken;
        }
        CByteArray bytes;
        if (!CObjectStream::Store(&control.Document(), objects, bytes)) {
            return NRV_E_SYSTEM;
        }
        return NrvGive(bytes.GetData(), static_cast<size_t>(bytes.GetSize()), static_cast<BYTE*>(buffer), capacity,
                       size);
    });
}

NrvResult NRV_CALL NrvInsertBuffer(NrvHandle handle, const void* data, uint32_t size, double dx, double dy,
                                   uint32_t* count) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (data == nullptr || size == 0 || !NrvAreFinite(dx, dy)) {
            return NRV_E_ARGUMENT;
        }
        CLooseObjects objects;
        {
            const CNrvControl::CQuiet quiet(control, true);
            if (!CObjectStream::Load(data, size, objects.list)) {
                return NRV_E_REFUSED;
            }
        }
        if (!control.Changing(NRV_CHANGE_ADDED)) {
            return NRV_E_ENDED;
        }
        const CGeMatrix2d matrix = CGeMatrix2d::translation(CGeVector2d(dx, dy));
        std::vector<NrvId> ids;
        for (INT_PTR i = 0; i < objects.list.GetSize(); ++i) {
            objects.list[i]->transformBy(matrix);
            ids.push_back(control.Ids().IdOf(objects.list[i]));
        }
        {
            const CHistoryGroup step(control.View().GetHistory(), L"插入对象", L"Insert objects");
            CDrawableArray added;
            added.Append(objects.list);
            control.Document().GetDrawableObjs()->Append(added);
            objects.list.RemoveAll();
            for (INT_PTR i = 0; i < added.GetSize(); ++i) {
                control.Watch().Enter(added[i]);
            }
        }
        if (count != nullptr) {
            *count = static_cast<uint32_t>(ids.size());
        }
        control.Changed(NRV_CHANGE_ADDED, std::move(ids));
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvCopyObjects(NrvHandle handle, const NrvId* ids, uint32_t id_count) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        CDrawableArray objects;
        const NrvResult taken = TakeIds(control, ids, id_count, objects);
        if (taken != NRV_OK) {
            return taken;
        }
        return CDrawingClipboard::CopyObjects(&control.View(), &control.Document(), objects) ? NRV_OK : NRV_E_SYSTEM;
    });
}

NrvResult NRV_CALL NrvCopyPicture(NrvHandle handle, const NrvPicture* picture) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        CRenderOptions options;
        const NrvResult taken = NrvOptionsOf(control, picture, options);
        if (taken != NRV_OK) {
            return taken;
        }
        const CNrvControl::CQuiet quiet(control, true);
        const RenderStatus status = CDrawingRender(&control.Document(), options).Status();
        if (status != RenderStatus::Done) {
            return NRV_E_ARGUMENT;
        }
        if (!CDrawingClipboard::CopyPicture(&control.View(), &control.Document(), options)) {
            return NRV_E_SYSTEM;
        }
        return quiet.Count() == 0 ? NRV_OK : NRV_E_PAINT;
    });
}

NrvResult NRV_CALL NrvCanPaste(int32_t* can) {
    return NrvGuarded([&]() -> NrvResult {
        if (can == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *can = CDrawingClipboard::HasObjects() ? 1 : 0;
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvPaste(NrvHandle handle) {
    return NrvCall(handle, NrvNeeds::Window, [&](CNrvControl& control) -> NrvResult {
        if (!CDrawingClipboard::HasObjects()) {
            return NRV_E_STATE;
        }
        CByteArray bytes;
        if (!CDrawingClipboard::PasteObjects(&control.View(), bytes)) {
            return NRV_E_SYSTEM;
        }
        control.BreakOff();
        control.FocusView();
        CCommandOperationManager* engine = control.HasEnded() ? nullptr : control.Engine();
        if (engine == nullptr) {
            return NRV_E_ENDED;
        }
        COperationPlaceObjects* tool =
            COperationPlaceObjects::Make(&control.View(), &control.Graphic(), &control.Mapping(), &control.Document(),
                                         bytes.GetData(), static_cast<size_t>(bytes.GetSize()));
        if (tool == nullptr) {
            return NRV_E_REFUSED;
        }
        control.SetWord(L"paste");
        const int begun = engine->SetCommand(tool, 1);
        control.SetWord(L"");
        return begun != 0 ? NRV_OK : NRV_E_ENDED;
    });
}
