#include "GripReach.h"

#include "Arc.h"
#include "Line.h"
#include "Text.h"

#include <algorithm>
#include <cmath>
#include <typeinfo>

bool AreGripsFar(CDrawable* object, const CGePoint2d& point, int aperture) {
    constexpr double kRoundings = 1e-9; // Relative to the coordinates: far above the rounding errors of a grip.
    CGePoint2d middle;
    double reach = 0.0; // The greatest distance of a grip from `middle`, in each direction.
    // Compared by address: each kind of this library has one type_info.
    const std::type_info* kind = &typeid(*object);
    if (kind == &typeid(CArc) || kind == &typeid(CCircle)) {
        auto* circle = static_cast<CCircle*>(object);
        middle = circle->Center();
        reach = std::fabs(circle->Radius());
    } else if (kind == &typeid(CText)) {
        auto* text = static_cast<CText*>(object);
        middle = text->GetPos();
        reach = std::fabs(static_cast<double>(text->m_TextWide)) + std::fabs(static_cast<double>(text->m_MinCalHeight));
    } else {
        return false;
    }
    const double numbers = std::fabs(middle.x) + std::fabs(middle.y) + reach + std::fabs(static_cast<double>(aperture));
    const double limit = reach + aperture + kRoundings * numbers;
    // Beyond this sum a grip may be infinite, and an infinite point equals it.
    constexpr double kLargest = 1e300;
    return numbers < kLargest && (std::fabs(point.x - middle.x) > limit || std::fabs(point.y - middle.y) > limit);
}

bool IsLineFar(CDrawable* object, const CGePoint2d& point, double reach) {
    if (&typeid(*object) != &typeid(CLine) || object->GetIsShow() == 0) {
        return false;
    }
    auto* line = static_cast<CLine*>(object);
    const CGePoint2d a = line->GetStartPoint();
    const CGePoint2d b = line->GetEndPoint();
    const double gapX = std::max(std::min(a.x, b.x) - point.x, point.x - std::max(a.x, b.x));
    const double gapY = std::max(std::min(a.y, b.y) - point.y, point.y - std::max(a.y, b.y));
    const double gap = std::max(gapX, gapY);
    const double size = std::fabs(b.x - a.x) + std::fabs(b.y - a.y); // Not-a-number where a coordinate is.
    // Beyond these sizes a number of the hit test may not be normal. Between them its roundings are far below
    // what is added here.
    constexpr double kLeast = 1e-30;
    constexpr double kLargest = 1e100;
    constexpr double kRoundings = 1e-6;
    return size > kLeast && size < kLargest && gap > kLeast && gap < kLargest &&
           gap > reach + kRoundings * (gap + size);
}
