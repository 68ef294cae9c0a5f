// The welded I-section of the demo: its figures, worked out by hand plate by plate, and which sizes it refuses.
// Layer 16: tests.
#include "../demo/WeldedSection.h"

#include "../demo/DemoIds.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

WeldedSection Section(double height, double width, double web, double flange, double fillet, double length) {
    WeldedSection section;
    section.height = height;
    section.width = width;
    section.web = web;
    section.flange = flange;
    section.fillet = fillet;
    section.length = length;
    return section;
}

} // namespace

TEST(WeldedSection, ThreePlatesWithoutWelds) {
    // Flanges 60 x 10, their centres 45 from the axis; web 10 x 80.
    // A  = 2 x 600 + 800 = 2000
    // Ix = 2 (60 x 1000 / 12 + 600 x 2025) + 10 x 512000 / 12 = 2440000 + 426666.67
    // Iy = 2 (10 x 216000 / 12) + 80 x 1000 / 12 = 360000 + 6666.67
    const SectionFigures figures = ComputeFigures(Section(100, 60, 10, 10, 0, 2000));
    EXPECT_DOUBLE_EQ(2000.0, figures.area);
    EXPECT_NEAR(2866666.667, figures.inertiaX, 0.001);
    EXPECT_NEAR(366666.667, figures.inertiaY, 0.001);
    EXPECT_NEAR(15.7, figures.massPerMetre, 1e-9); // 0.002 m2 x 7850
    EXPECT_NEAR(31.4, figures.mass, 1e-9);
}

TEST(WeldedSection, WeldsAddFourTrianglesWithTheirOwnMoments) {
    // Legs of 6: each 18 in area, 6^4 / 36 = 36 about its own axis, its centre 2 from both legs.
    // Web 376 high, 8 thick: the centres are 188 - 2 = 186 above the axis and 4 + 2 = 6 beside it.
    // A  = 4800 + 3008 + 72
    // Ix = (200 x 64000000 - 192 x 53157376) / 12 + 4 (36 + 18 x 34596) = 216148650.667 + 2491056
    // Iy = (24 x 8000000 + 376 x 512) / 12 + 4 (36 + 18 x 36) = 16016042.667 + 2736
    const SectionFigures figures = ComputeFigures(Section(400, 200, 8, 12, 6, 6000));
    EXPECT_DOUBLE_EQ(7880.0, figures.area);
    EXPECT_NEAR(218639706.667, figures.inertiaX, 0.01);
    EXPECT_NEAR(16018778.667, figures.inertiaY, 0.01);
    EXPECT_NEAR(61.858, figures.massPerMetre, 1e-9);
    EXPECT_NEAR(371.148, figures.mass, 1e-9);
}

TEST(WeldedSection, TheLengthChangesTheMassOnly) {
    const SectionFigures one = ComputeFigures(Section(100, 60, 10, 10, 0, 1000));
    const SectionFigures three = ComputeFigures(Section(100, 60, 10, 10, 0, 3000));
    EXPECT_DOUBLE_EQ(one.area, three.area);
    EXPECT_DOUBLE_EQ(one.massPerMetre, three.massPerMetre);
    EXPECT_NEAR(3.0 * one.mass, three.mass, 1e-9);
}

TEST(WeldedSection, TheSizesThatItBeginsWithAreGood) {
    EXPECT_EQ(0u, WeldedSection().FindFault());
}

TEST(WeldedSection, AWebAsThickAsTheFlangeIsWideIsRefused) {
    EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_WEB), Section(400, 200, 200, 12, 0, 6000).FindFault());
    EXPECT_EQ(0u, Section(400, 200, 199, 12, 0, 6000).FindFault());
}

TEST(WeldedSection, FlangesThatFillTheHeightAreRefused) {
    EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_FLANGE), Section(400, 200, 8, 200, 0, 6000).FindFault());
    EXPECT_EQ(0u, Section(400, 200, 8, 199, 0, 6000).FindFault());
}

TEST(WeldedSection, WeldsMustFitOnFlangeAndWeb) {
    // (200 - 8) / 2 = 96 on the flange; a web 20 high takes two legs of 10.
    EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_WELD_WIDE), Section(400, 200, 8, 12, 96.5, 6000).FindFault());
    EXPECT_EQ(0u, Section(400, 200, 8, 12, 96, 6000).FindFault());
    EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_WELD_HIGH), Section(44, 200, 8, 12, 10.5, 6000).FindFault());
    EXPECT_EQ(0u, Section(44, 200, 8, 12, 10, 6000).FindFault());
}

TEST(WeldedSection, SizesAreAboveNothingAndFinite) {
    for (const double wrong :
         {0.0, -1.0, 100001.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_SIZE), Section(wrong, 200, 8, 12, 6, 6000).FindFault()) << wrong;
        EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_SIZE), Section(400, wrong, 8, 12, 6, 6000).FindFault()) << wrong;
        EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_SIZE), Section(400, 200, wrong, 12, 6, 6000).FindFault()) << wrong;
        EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_SIZE), Section(400, 200, 8, wrong, 6, 6000).FindFault()) << wrong;
        EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_SIZE), Section(400, 200, 8, 12, 6, wrong).FindFault()) << wrong;
    }
    EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_WELD), Section(400, 200, 8, 12, -1, 6000).FindFault());
    EXPECT_EQ(static_cast<unsigned>(IDS_FAULT_WELD),
              Section(400, 200, 8, 12, std::numeric_limits<double>::quiet_NaN(), 6000).FindFault());
    EXPECT_EQ(0u, Section(400, 200, 8, 12, 0, 6000).FindFault());
}
