// The C interface: adding objects.
// Layer 12: capi.

#include "NrvCall.h"

#include "Arc.h"
#include "CombRect.h"
#include "DrawingHistory.h"
#include "MemoryInfo.h"
#include "VectorLabel.h"
#include "vectorview.h"

namespace {

Gdiplus::Color ColorOf(uint32_t color) {
    return Gdiplus::Color(0xFF000000u | (color & 0xFFFFFFu));
}

// One adding function: `make` makes the object and puts it into the drawing; null when the arguments describe none.
template <class Make>
NrvResult Add(NrvHandle handle, bool valid, NrvId* id, Make make) noexcept {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (!valid) {
            return NRV_E_ARGUMENT;
        }
        if (!control.Changing(NRV_CHANGE_ADDED)) {
            return NRV_E_ENDED;
        }
        CDrawable* object = make(control.View());
        if (object == nullptr) {
            return NRV_E_ARGUMENT;
        }
        const NrvId added = control.Ids().IdOf(object);
        if (id != nullptr) {
            *id = added;
        }
        control.Watch().Enter(object);
        control.Changed(NRV_CHANGE_ADDED, {added});
        return NRV_OK;
    });
}

// Adds an object of a kind for which the view has no adding function.
template <class Object, class Fill>
CDrawable* Make(CVectorView& view, uint32_t color, Fill fill) {
    auto object = std::make_unique<Object>();
    object->SetPenColor(NrvSwapColor(color));
    fill(*object);
    view.GetDocument()->AddDrawAobject(object.get());
    KX_ADD_MEMORY(object.get());
    if (CDrawingHistory* history = view.GetHistory()) {
        // As the view's own adding functions do.
        history->MarkAdded(object.get(), L"添加对象", L"Add object");
    }
    return object.release();
}

bool AreFinite(const NrvPoint* points, uint32_t count) {
    for (uint32_t i = 0; i < count; ++i) {
        if (!NrvAreFinite(points[i].x, points[i].y)) {
            return false;
        }
    }
    return true;
}

bool AreFinite(const double* numbers, uint32_t count) {
    return std::all_of(numbers, numbers + count, [](double number) { return std::isfinite(number); });
}

CGePoint2d PointOf(const NrvPoint& point) {
    return CGePoint2d(point.x, point.y);
}

} // namespace

NrvResult NRV_CALL NrvAddLine(NrvHandle handle, double x1, double y1, double x2, double y2, uint32_t color, NrvId* id) {
    return Add(handle, NrvAreFinite(x1, y1, x2, y2), id, [&](CVectorView& view) {
        return view.AddLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), ColorOf(color), 1);
    });
}

NrvResult NRV_CALL NrvAddNetLine(NrvHandle handle, double x1, double y1, double x2, double y2, uint32_t color,
                                 NrvId* id) {
    return Add(handle, NrvAreFinite(x1, y1, x2, y2), id, [&](CVectorView& view) {
        return view.AddNetLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), ColorOf(color), 1);
    });
}

NrvResult NRV_CALL NrvAddCircle(NrvHandle handle, double x, double y, double radius, uint32_t color, NrvId* id) {
    return Add(handle, NrvAreFinite(x, y, radius), id, [&](CVectorView& view) {
        return Make<CCircle>(view, color, [&](CCircle& circle) {
            circle.SetCenter(CGePoint2d(x, y));
            circle.setRadius(radius);
        });
    });
}

NrvResult NRV_CALL NrvAddArc(NrvHandle handle, double x, double y, double radius, double start, double end,
                             uint32_t color, NrvId* id) {
    const bool valid =
        NrvFitsFloat(x) && NrvFitsFloat(y) && NrvFitsFloat(radius) && NrvFitsFloat(start) && NrvFitsFloat(end);
    return Add(handle, valid, id, [&](CVectorView& view) {
        return view.AddArc(CGePoint2d(x, y), static_cast<float>(radius), static_cast<float>(start),
                           static_cast<float>(end), ColorOf(color), L"", L"", 0, 0);
    });
}

NrvResult NRV_CALL NrvAddArc3(NrvHandle handle, double x1, double y1, double x2, double y2, double x3, double y3,
                              uint32_t color, NrvId* id) {
    const CGePoint2d p1(x1, y1);
    const CGePoint2d p2(x2, y2);
    const CGePoint2d p3(x3, y3);
    CGePoint2d center;
    double radius = 0.0;
    const bool valid =
        NrvAreFinite(x1, y1, x2, y2, x3, y3) && CArc::Calarc(p1, p2, p3, center, radius) != 0 && NrvFitsFloat(radius);
    return Add(handle, valid, id,
               [&](CVectorView& view) { return view.AddArc(p1, p2, p3, ColorOf(color), L"", L"", 0, 0); });
}

NrvResult NRV_CALL NrvAddCenterPoint(NrvHandle handle, double x, double y, uint32_t color, NrvId* id) {
    return Add(handle, NrvFitsFloat(x) && NrvFitsFloat(y), id,
               [&](CVectorView& view) { return view.AddCenterPoint(CGePoint2d(x, y), L"", L"", ColorOf(color), 0); });
}

NrvResult NRV_CALL NrvAddPolyline(NrvHandle handle, const NrvPoint* points, const double* bulges, uint32_t count,
                                  int32_t closed, uint32_t color, NrvId* id) {
    const bool valid = points != nullptr && count != 0 && count <= INT32_MAX && AreFinite(points, count) &&
                       (bulges == nullptr || AreFinite(bulges, count));
    return Add(handle, valid, id, [&](CVectorView& view) {
        CGePointArray vertices;
        CBulgeArray curves;
        for (uint32_t i = 0; i < count; ++i) {
            CGePoint2d vertex = PointOf(points[i]);
            double bulge = bulges != nullptr ? bulges[i] : 0.0;
            vertices.Add(vertex);
            curves.Add(bulge);
        }
        return view.AddPLine(vertices, curves, ColorOf(color), closed != 0, 1, 1);
    });
}

NrvResult NRV_CALL NrvAddText(NrvHandle handle, double x, double y, const NrvChar* text, double angle, double height,
                              uint32_t color, NrvId* id) {
    const bool valid =
        text != nullptr && NrvAreFinite(x, y) && NrvFitsFloat(angle) && NrvFitsFloat(height) && height >= 0.0;
    return Add(handle, valid, id, [&](CVectorView& view) {
        const CGePoint2d corner(x, y);
        return height > 0.0 ? view.AddText(corner, text, angle, ColorOf(color), height, 1, 0)
                            : view.AddText(corner, text, angle, ColorOf(color), 0);
    });
}

NrvResult NRV_CALL NrvAddParm(NrvHandle handle, double x, double y, const NrvChar* value, const NrvChar* name,
                              double height, uint32_t color, NrvId* id) {
    const bool valid =
        value != nullptr && name != nullptr && NrvAreFinite(x, y) && NrvFitsFloat(height) && height >= 0.0;
    return Add(handle, valid, id, [&](CVectorView& view) {
        const CGePoint2d corner(x, y);
        return height > 0.0 ? view.AddParmText(corner, value, name, 0.0, ColorOf(color), height, 0)
                            : view.AddParmText(corner, value, name, 0.0, ColorOf(color), 0);
    });
}

NrvResult NRV_CALL NrvAddLabel(NrvHandle handle, const NrvPoint* points, uint32_t color, NrvId* id) {
    return Add(handle, points != nullptr && AreFinite(points, 4), id, [&](CVectorView& view) {
        return Make<CKXVectorLabel>(view, color, [&](CKXVectorLabel& label) {
            label.SetLeftLabel(PointOf(points[0]), PointOf(points[1]));
            label.SetRightLabel(PointOf(points[2]), PointOf(points[3]));
            label.SetTextShow(1);
        });
    });
}

NrvResult NRV_CALL NrvAddFrame(NrvHandle handle, double x1, double y1, double x2, double y2, const NrvChar* identifier,
                               uint32_t color, NrvId* id) {
    return Add(handle, identifier != nullptr && NrvAreFinite(x1, y1, x2, y2), id, [&](CVectorView& view) {
        return Make<CCombRect>(view, color, [&](CCombRect& frame) {
            frame.SetPoint(CGePoint2d(x1, y1), CGePoint2d(x2, y2));
            frame.SetVectorId(identifier);
        });
    });
}
