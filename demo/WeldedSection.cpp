#include "WeldedSection.h"

#include "DemoIds.h"

#include <cmath>

namespace {

const double Largest = 100000.0;

double Cube(double value) {
    return value * value * value;
}

bool IsSize(double value) {
    return std::isfinite(value) && value > 0.0 && value <= Largest;
}

} // namespace

unsigned WeldedSection::FindFault() const {
    if (!IsSize(height) || !IsSize(width) || !IsSize(web) || !IsSize(flange) || !IsSize(length)) {
        return IDS_FAULT_SIZE;
    }
    if (!(fillet >= 0.0) || fillet > Largest) {
        return IDS_FAULT_WELD;
    }
    if (web >= width) {
        return IDS_FAULT_WEB;
    }
    if (2.0 * flange >= height) {
        return IDS_FAULT_FLANGE;
    }
    if (web + 2.0 * fillet > width) {
        return IDS_FAULT_WELD_WIDE;
    }
    if (2.0 * fillet > GetWebHeight()) {
        return IDS_FAULT_WELD_HIGH;
    }
    return 0;
}

SectionFigures ComputeFigures(const WeldedSection& section) {
    const double webHeight = section.GetWebHeight();
    const double leg = section.fillet;
    // One weld: its area, its moment about an axis of its own, and its centre's distance from each leg.
    const double weldArea = leg * leg / 2.0;
    const double weldInertia = leg * leg * leg * leg / 36.0;
    const double weldCentre = leg / 3.0;
    const double weldX = section.web / 2.0 + weldCentre;
    const double weldY = webHeight / 2.0 - weldCentre;

    SectionFigures figures;
    figures.area = 2.0 * section.width * section.flange + webHeight * section.web + 4.0 * weldArea;
    figures.inertiaX = (section.width * Cube(section.height) - (section.width - section.web) * Cube(webHeight)) / 12.0 +
                       4.0 * (weldInertia + weldArea * weldY * weldY);
    figures.inertiaY = (2.0 * section.flange * Cube(section.width) + webHeight * Cube(section.web)) / 12.0 +
                       4.0 * (weldInertia + weldArea * weldX * weldX);
    figures.massPerMetre = figures.area * 1e-6 * kSteelDensity;
    figures.mass = figures.massPerMetre * section.length * 1e-3;
    return figures;
}
