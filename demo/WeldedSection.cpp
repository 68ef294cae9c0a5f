#include "WeldedSection.h"

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

const wchar_t* WeldedSection::FindFault() const {
    if (!IsSize(height) || !IsSize(width) || !IsSize(web) || !IsSize(flange) || !IsSize(length)) {
        return L"尺寸必须大于 0，且不超过 100000 mm";
    }
    if (!(fillet >= 0.0) || fillet > Largest) {
        return L"焊脚尺寸不能小于 0";
    }
    if (web >= width) {
        return L"腹板厚度必须小于截面宽度";
    }
    if (2.0 * flange >= height) {
        return L"两块翼缘的厚度之和必须小于截面高度";
    }
    if (web + 2.0 * fillet > width) {
        return L"焊脚超出翼缘边缘：腹板厚度加两个焊脚不能大于截面宽度";
    }
    if (2.0 * fillet > GetWebHeight()) {
        return L"腹板上放不下焊缝：两个焊脚不能大于腹板净高";
    }
    return nullptr;
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
