// The arithmetic of a welded I-section: what a set of sizes must fulfil, and the section's figures.
// Layer 13: demo; uses no window.
#pragma once

// All lengths in millimetres.
struct WeldedSection {
    double height = 400.0; // outer faces of the flanges
    double width = 200.0;  // of both flanges
    double web = 8.0;      // thickness
    double flange = 12.0;  // thickness of each
    double fillet = 6.0;   // leg of the four welds; 0 for none
    double length = 6000.0;

    // The clear height of the web between the flanges.
    double GetWebHeight() const { return height - 2.0 * flange; }
    // The number of the text that says why these sizes make no section; 0 when they do.
    unsigned FindFault() const;
};

// Kilograms in a cubic metre.
inline constexpr double kSteelDensity = 7850.0;

// The figures of the section with its welds, each weld a right triangle with two legs.
struct SectionFigures {
    double area = 0.0;         // square millimetres
    double inertiaX = 0.0;     // about the axis parallel to the flanges, in millimetres to the fourth
    double inertiaY = 0.0;     // about the axis parallel to the web
    double massPerMetre = 0.0; // kilograms
    double mass = 0.0;         // of the whole length, in kilograms
};

SectionFigures ComputeFigures(const WeldedSection& section);
