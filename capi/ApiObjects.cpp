// The C interface: lists of objects, their points, order, extents, transformations, grips.
// Layer 12: capi.

#include "NrvCall.h"

#include "CenterPoint.h"
#include "Circle.h"
#include "CombRect.h"
#include "DrawingHistory.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "Text.h"
#include "VectorLabel.h"
#include "vectorview.h"

namespace {

// Null for an unknown list.
CDrawableArray* ListOf(CNrvControl& control, int32_t list) {
    switch (list) {
    case NRV_LIST_DRAWING:
        return control.Document().GetDrawableObjs();
    case NRV_LIST_NET:
        return control.Document().GetNetDrawableObjs();
    case NRV_LIST_SELECTED:
        return control.Document().GetSelectedDrawableObjs();
    default:
        return nullptr;
    }
}

NrvPoint PointOf(const CGePoint2d& point) {
    return {point.x, point.y};
}

CGePoint2d PointOf(const NrvPoint& point) {
    return CGePoint2d(point.x, point.y);
}

// Empty for a kind without points.
std::vector<NrvPoint> PointsOf(CDrawable& object) {
    if (auto* line = dynamic_cast<CLine*>(&object)) {
        return {PointOf(line->GetStartPoint()), PointOf(line->GetEndPoint())};
    }
    if (auto* circle = dynamic_cast<CCircle*>(&object)) {
        return {PointOf(circle->Center())};
    }
    if (auto* mark = dynamic_cast<CCenterPoint*>(&object)) {
        return {PointOf(mark->Center())};
    }
    if (auto* text = dynamic_cast<CText*>(&object)) {
        return {PointOf(text->GetPos())};
    }
    std::vector<NrvPoint> points;
    if (auto* pline = dynamic_cast<CPLine*>(&object)) {
        for (int i = 0; i < pline->GetVertexCount(); ++i) {
            points.push_back(PointOf(pline->GetPointList()->GetAt(i)));
        }
    } else if (auto* label = dynamic_cast<CKXVectorLabel*>(&object)) {
        points = {PointOf(label->GetLeftLabelStartPt()), PointOf(label->GetLeftLabelEntPt()),
                  PointOf(label->GetRightLabelStartPt()), PointOf(label->GetRightLabelEndPt())};
    } else if (auto* frame = dynamic_cast<CCombRect*>(&object)) {
        CGePoint2d a;
        CGePoint2d b;
        frame->GetPoint(a, b);
        points = {PointOf(a), PointOf(b)};
    }
    return points;
}

// Makes as many vertices as there are points; existing ones keep their bulges and tags.
void SetVertices(CPLine& pline, const NrvPoint* points, uint32_t count) {
    const int size = static_cast<int>(count);
    while (pline.GetVertexCount() > size) {
        pline.RemovePoint(pline.GetVertexCount() - 1);
    }
    for (int i = 0; i < size; ++i) {
        if (i < pline.GetVertexCount()) {
            pline.SetPoint(i, PointOf(points[i]));
        } else {
            pline.AddPoint(PointOf(points[i]));
        }
    }
}

void SetPoints(CDrawable& object, const NrvPoint* points, uint32_t count) {
    if (auto* line = dynamic_cast<CLine*>(&object)) {
        line->SetStartPoint(PointOf(points[0]));
        line->SetEndPoint(PointOf(points[1]));
    } else if (auto* circle = dynamic_cast<CCircle*>(&object)) {
        circle->SetCenter(PointOf(points[0]));
    } else if (auto* mark = dynamic_cast<CCenterPoint*>(&object)) {
        mark->SetCenter(PointOf(points[0]));
    } else if (auto* text = dynamic_cast<CText*>(&object)) {
        text->SetPos(PointOf(points[0]));
    } else if (auto* pline = dynamic_cast<CPLine*>(&object)) {
        SetVertices(*pline, points, count);
    } else if (auto* label = dynamic_cast<CKXVectorLabel*>(&object)) {
        label->SetLeftLabel(PointOf(points[0]), PointOf(points[1]));
        label->SetRightLabel(PointOf(points[2]), PointOf(points[3]));
    } else if (auto* frame = dynamic_cast<CCombRect*>(&object)) {
        frame->SetPoint(PointOf(points[0]), PointOf(points[1]));
    }
}

} // namespace

// ---- Lists ---------------------------------------------------------------------------------------------------------

NrvResult NRV_CALL NrvGetObjects(NrvHandle handle, int32_t list, NrvId* ids, uint32_t capacity, uint32_t* count) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        const CDrawableArray* objects = ListOf(control, list);
        if (objects == nullptr || count == nullptr || (ids == nullptr && capacity != 0)) {
            return NRV_E_ARGUMENT;
        }
        const auto size = static_cast<uint32_t>(objects->GetSize());
        *count = size;
        if (ids == nullptr) {
            return NRV_OK;
        }
        if (capacity < size) {
            return NRV_E_BUFFER;
        }
        for (uint32_t i = 0; i < size; ++i) {
            ids[i] = control.Ids().IdOf(objects->GetAt(i));
        }
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetObject(NrvHandle handle, int32_t list, uint32_t index, NrvId* id) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        const CDrawableArray* objects = ListOf(control, list);
        if (objects == nullptr || id == nullptr || index >= static_cast<size_t>(objects->GetSize())) {
            return NRV_E_ARGUMENT;
        }
        *id = control.Ids().IdOf(objects->GetAt(static_cast<INT_PTR>(index)));
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetKind(NrvHandle handle, NrvId id, int32_t* kind) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        if (kind == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *kind = NrvKindOf(&object);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetKindName(NrvHandle handle, NrvId id, NrvChar* buffer, uint32_t capacity, uint32_t* length) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        return NrvGive(object.GetName(), buffer, capacity, length);
    });
}

NrvResult NRV_CALL NrvRemove(NrvHandle handle, NrvId id) {
    return NrvObjectCall(handle, id, [&](CNrvControl& control, CDrawable&) -> NrvResult {
        if (!control.Changing(NRV_CHANGE_REMOVED, {id})) {
            return NRV_E_ENDED;
        }
        CDrawable* object = control.Find(id);
        if (object == nullptr) {
            return NRV_E_OBJECT;
        }
        CGraphicDocument& document = control.Document();
        const bool inNet = control.IsInNet(object);
        document.DeleteObject(object);
        CDrawableArray& net = *document.GetNetDrawableObjs();
        for (INT_PTR i = net.GetSize(); i-- > 0;) {
            if (net.GetAt(i) == object) {
                net.RemoveAt(i);
            }
        }
        control.Watch().Forget(object);
        CDrawingHistory* history = control.View().GetHistory();
        if (inNet || history == nullptr || history->Knows(object) == 0) {
            KX_REMOVE_MEMORY(object);
            delete object;
        } // Otherwise the history owns it.
        control.Changed(NRV_CHANGE_REMOVED, {id});
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetOrder(NrvHandle handle, NrvId id, uint32_t* index) {
    return NrvObjectCall(handle, id, [&](CNrvControl& control, CDrawable& object) -> NrvResult {
        if (index == nullptr) {
            return NRV_E_ARGUMENT;
        }
        const INT_PTR place = control.IndexOf(&object);
        if (place < 0) {
            return NRV_E_KIND;
        }
        *index = static_cast<uint32_t>(place);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvSetOrder(NrvHandle handle, NrvId id, uint32_t index) {
    return NrvObjectCall(handle, id, [&](CNrvControl& control, CDrawable& object) -> NrvResult {
        if (control.IndexOf(&object) < 0) {
            return NRV_E_KIND;
        }
        if (!control.Changing(NRV_CHANGE_ORDER, {id})) {
            return NRV_E_ENDED;
        }
        CDrawable* moved = control.Find(id);
        const INT_PTR before = moved != nullptr ? control.IndexOf(moved) : -1;
        if (before < 0) {
            return NRV_E_OBJECT;
        }
        CDrawableArray& objects = *control.Document().GetDrawableObjs();
        const INT_PTR after = std::min<INT_PTR>(static_cast<INT_PTR>(index), objects.GetSize() - 1);
        // The array keeps its memory, so that the insertion can't fail with the object out of the list.
        objects.RemoveAt(before);
        objects.InsertAt(after, moved);
        control.Changed(NRV_CHANGE_ORDER, {id});
        return NRV_OK;
    });
}

// ---- Points --------------------------------------------------------------------------------------------------------

NrvResult NRV_CALL NrvGetPoints(NrvHandle handle, NrvId id, NrvPoint* points, uint32_t capacity, uint32_t* count) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        const std::vector<NrvPoint> all = PointsOf(object);
        return NrvGive(all.data(), all.size(), points, capacity, count);
    });
}

NrvResult NRV_CALL NrvSetPoints(NrvHandle handle, NrvId id, const NrvPoint* points, uint32_t count) {
    return NrvEditCall(handle, id, [&](CNrvControl&, CDrawable& object, bool apply) -> NrvResult {
        if (apply) {
            SetPoints(object, points, count);
            return NRV_OK;
        }
        const bool polyline = dynamic_cast<CPLine*>(&object) != nullptr;
        if (points == nullptr || count == 0 || count > INT32_MAX || (!polyline && count != PointsOf(object).size())) {
            return NRV_E_ARGUMENT;
        }
        const bool finite =
            std::all_of(points, points + count, [](const NrvPoint& point) { return NrvAreFinite(point.x, point.y); });
        return finite ? NRV_OK : NRV_E_ARGUMENT;
    });
}

NrvResult NRV_CALL NrvGetBulges(NrvHandle handle, NrvId id, double* bulges, uint32_t capacity, uint32_t* count) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        auto* pline = dynamic_cast<CPLine*>(&object);
        if (pline == nullptr) {
            return NRV_E_KIND;
        }
        const CBulgeArray& list = *pline->GetBulgeList();
        return NrvGive(list.GetData(), static_cast<size_t>(pline->GetVertexCount()), bulges, capacity, count);
    });
}

NrvResult NRV_CALL NrvSetBulges(NrvHandle handle, NrvId id, const double* bulges, uint32_t count) {
    return NrvEditCall(handle, id, [&](CNrvControl&, CDrawable& object, bool apply) -> NrvResult {
        auto* pline = dynamic_cast<CPLine*>(&object);
        if (apply) {
            for (uint32_t i = 0; i < count; ++i) {
                pline->SetBulge(static_cast<int>(i), bulges[i]);
            }
            return NRV_OK;
        }
        if (pline == nullptr) {
            return NRV_E_KIND;
        }
        const bool valid = bulges != nullptr && count == static_cast<uint32_t>(pline->GetVertexCount()) &&
                           std::all_of(bulges, bulges + count, [](double bulge) { return std::isfinite(bulge); });
        return valid ? NRV_OK : NRV_E_ARGUMENT;
    });
}

namespace {

// A change of one polyline; `valid` and `change` are called with it.
template <class Valid, class Change>
NrvResult EditPolyline(NrvHandle handle, NrvId id, Valid valid, Change change) noexcept {
    return NrvEditCall(handle, id, [&](CNrvControl&, CDrawable& object, bool apply) -> NrvResult {
        auto* pline = dynamic_cast<CPLine*>(&object);
        if (pline == nullptr) {
            return NRV_E_KIND;
        }
        if (!valid(*pline)) {
            return NRV_E_ARGUMENT;
        }
        if (apply) {
            change(*pline);
        }
        return NRV_OK;
    });
}

} // namespace

NrvResult NRV_CALL NrvInsertVertex(NrvHandle handle, NrvId id, uint32_t index, double x, double y) {
    return EditPolyline(
        handle, id,
        [&](CPLine& pline) {
            const auto vertices = static_cast<uint32_t>(pline.GetVertexCount());
            return vertices > 0 && index <= vertices && NrvAreFinite(x, y);
        },
        [&](CPLine& pline) { pline.InsertPoint(static_cast<int>(index), CGePoint2d(x, y)); });
}

NrvResult NRV_CALL NrvRemoveVertex(NrvHandle handle, NrvId id, uint32_t index) {
    return EditPolyline(
        handle, id,
        [&](CPLine& pline) {
            return pline.GetVertexCount() > 1 && index < static_cast<uint32_t>(pline.GetVertexCount());
        },
        [&](CPLine& pline) { pline.RemovePoint(static_cast<int>(index)); });
}

NrvResult NRV_CALL NrvSetSegmentColor(NrvHandle handle, NrvId id, uint32_t segment, int32_t own, uint32_t color) {
    return EditPolyline(
        handle, id, [&](CPLine& pline) { return segment < static_cast<uint32_t>(pline.GetVertexCount()); },
        [&](CPLine& pline) {
            const int at = static_cast<int>(segment);
            const DWORD swapped = NrvSwapColor(color);
            own != 0 ? pline.SetSLPenColor(at, swapped) : pline.ResetPenColor(at, swapped);
        });
}

NrvResult NRV_CALL NrvSetSnapPoints(NrvHandle handle, NrvId id, const NrvPoint* points, uint32_t count) {
    return EditPolyline(
        handle, id,
        [&](CPLine&) {
            return count == 0 || (points != nullptr && std::all_of(points, points + count, [](const NrvPoint& point) {
                                      return NrvAreFinite(point.x, point.y);
                                  }));
        },
        [&](CPLine& pline) {
            pline.ClearInsertPoints();
            for (uint32_t i = 0; i < count; ++i) {
                CGePoint2d point = PointOf(points[i]);
                point.SetType(kGripInsertPoints);
                pline.AddInsertPoint(point);
            }
        });
}

// ---- Geometry ------------------------------------------------------------------------------------------------------

NrvResult NRV_CALL NrvGetExtents(NrvHandle handle, NrvId id, NrvRect* extents) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (extents == nullptr) {
            return NRV_E_ARGUMENT;
        }
        CGePoint2d min;
        CGePoint2d max;
        int found = 0;
        if (id == 0) {
            found = control.Document().GetRect(min, max);
        } else if (CDrawable* object = control.Find(id)) {
            found = object->GetRect(&control.Mapping(), min, max);
        } else {
            return NRV_E_OBJECT;
        }
        if (found == 0 || !NrvAreFinite(min.x, min.y, max.x, max.y)) {
            return NRV_E_STATE;
        }
        *extents = {min.x, min.y, max.x, max.y};
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetDistance(NrvHandle handle, NrvId id, double x, double y, double* distance) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        if (distance == nullptr || !NrvAreFinite(x, y)) {
            return NRV_E_ARGUMENT;
        }
        *distance = static_cast<double>(object.HitTest(CGePoint2d(x, y)));
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetFeet(NrvHandle handle, NrvId id, double x, double y, NrvPoint* points, uint32_t capacity,
                              uint32_t* count) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        if (!NrvAreFinite(x, y)) {
            return NRV_E_ARGUMENT;
        }
        CGePointArray feet;
        object.GetClosetPt(CGePoint2d(x, y), feet);
        std::vector<NrvPoint> all;
        for (INT_PTR i = 0; i < feet.GetSize(); ++i) {
            all.push_back(PointOf(feet[i]));
        }
        return NrvGive(all.data(), all.size(), points, capacity, count);
    });
}

NrvResult NRV_CALL NrvTransform(NrvHandle handle, NrvId id, const double* matrix) {
    const auto valid = [&] { return matrix != nullptr && std::all_of(matrix, matrix + 6, NrvAreFinite<double>); };
    const auto filled = [&] {
        CGeMatrix2d m;
        for (int i = 0; i < 6; ++i) {
            m.m[i / 3][i % 3] = matrix[i];
        }
        return m;
    };
    if (id != 0) {
        return NrvEditCall(handle, id, [&](CNrvControl&, CDrawable& object, bool apply) -> NrvResult {
            if (apply) {
                object.transformBy(filled());
            }
            return apply || valid() ? NRV_OK : NRV_E_ARGUMENT;
        });
    }
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (!valid()) {
            return NRV_E_ARGUMENT;
        }
        const auto idsOfAll = [&] {
            std::vector<NrvId> ids;
            const CDrawableArray& objects = *control.Document().GetDrawableObjs();
            for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
                ids.push_back(control.Ids().IdOf(objects.GetAt(i)));
            }
            return ids;
        };
        if (!control.Changing(NRV_CHANGE_MODIFIED, idsOfAll())) {
            return NRV_E_ENDED;
        }
        const CDrawableArray& objects = *control.Document().GetDrawableObjs();
        for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
            objects.GetAt(i)->transformBy(filled());
            control.Watch().Enter(objects.GetAt(i));
        }
        control.Changed(NRV_CHANGE_MODIFIED, idsOfAll());
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetGrips(NrvHandle handle, NrvId id, NrvPoint* points, uint32_t capacity, uint32_t* count) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        CGePointArray grips;
        object.getGripPoints(grips, kGripPainted);
        std::vector<NrvPoint> all;
        for (INT_PTR i = 0; i < grips.GetSize(); ++i) {
            all.push_back(PointOf(grips[i]));
        }
        return NrvGive(all.data(), all.size(), points, capacity, count);
    });
}

NrvResult NRV_CALL NrvMoveGrip(NrvHandle handle, NrvId id, uint32_t grip, double dx, double dy) {
    return NrvEditCall(handle, id, [&](CNrvControl&, CDrawable& object, bool apply) -> NrvResult {
        if (!apply) {
            CGePointArray grips;
            object.getGripPoints(grips, kGripPainted);
            const bool valid = grip < static_cast<size_t>(grips.GetSize()) && NrvAreFinite(dx, dy);
            return valid ? NRV_OK : NRV_E_ARGUMENT;
        }
        CIndexArray indices;
        int index = static_cast<int>(grip);
        indices.Add(index);
        object.moveGripPointsAt(indices, CGeVector2d(dx, dy));
        return NRV_OK;
    });
}

// ---- Selection -----------------------------------------------------------------------------------------------------

NrvResult NRV_CALL NrvSetSelection(NrvHandle handle, const NrvId* ids, uint32_t count) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (ids == nullptr && count != 0) {
            return NRV_E_ARGUMENT;
        }
        std::vector<CDrawable*> objects;
        for (uint32_t i = 0; i < count; ++i) {
            CDrawable* object = control.Find(ids[i]);
            if (object == nullptr) {
                return NRV_E_OBJECT;
            }
            if (control.IndexOf(object) < 0) {
                return NRV_E_KIND;
            }
            objects.push_back(object);
        }
        control.Document().RemoveAllSelected();
        for (CDrawable* object : objects) {
            control.Document().AddSelected(object);
        }
        control.Repaint();
        return NRV_OK;
    });
}
