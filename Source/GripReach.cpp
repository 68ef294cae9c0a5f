#include "GripReach.h"

#include "Arc.h"
#include "Text.h"

#include <cmath>
#include <typeinfo>

bool AreGripsFar(CDrawable* object, const CGePoint2d& point, int aperture) {
    constexpr double kRoundings = 1e-9; // Of the coordinates: far above what computing a grip rounds.
    CGePoint2d middle;
    double reach = 0.0; // Of the grips from there.
    // By address: of a kind of this library there is one.
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
    // A larger sum may be an infinite grip, which an infinite point meets.
    constexpr double kLargest = 1e300;
    return numbers < kLargest && (std::fabs(point.x - middle.x) > limit || std::fabs(point.y - middle.y) > limit);
}
