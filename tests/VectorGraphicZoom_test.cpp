// Fitting a drawing into a rectangle. Figures worked out by hand.

#include "Document.h"
#include "Line.h"
#include "VectorGraphic.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct Fit {
    Fit() { graphic.SetVectorViewCoordTran(&tran); }
    void Add(double x1, double y1, double x2, double y2) {
        graphic.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, static_cast<float>(x1), static_cast<float>(y1),
                                       static_cast<float>(x2), static_cast<float>(y2));
    }
    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
};

} // namespace

TEST(VectorGraphicZoom, AnEmptyDrawingTakesTheSizeAndKeepsTheView) {
    Fit fit;
    fit.tran.SetScale(3.0f);
    fit.tran.SetOriginX(5.0);
    fit.graphic.ZoomAll(CRect(0, 0, 640, 480));
    EXPECT_EQ(640, fit.tran.GetScreenSize().cx);
    EXPECT_EQ(480, fit.tran.GethScreen());
    EXPECT_EQ(3.0f, fit.tran.GetScale());
    EXPECT_EQ(5.0, fit.tran.GetOriginX());
    EXPECT_EQ(0.0, fit.tran.GetOriginY());
}

TEST(VectorGraphicZoom, ByPercentTheHeightLimitsAWideWindow) {
    Fit fit;
    fit.Add(0, 0, 1000, 500);
    fit.graphic.ZoomAll(CRect(0, 0, 1100, 500));
    // Margins 165 and 75: 1000/935 = 1.0695 against 500/425 = 1.17647.
    EXPECT_EQ(1.17647064f, fit.tran.GetScale());
    // Width: (1100 * 1.17647064 - 1000) / 2 = 147.0588...; height: 37.5 * 1.17647064 = 44.11765.
    EXPECT_NEAR(-147.0588, fit.tran.GetOriginX(), 1e-3);
    EXPECT_NEAR(-44.117649, fit.tran.GetOriginY(), 1e-5);
}

TEST(VectorGraphicZoom, ByPercentTheWidthLimitsATallWindow) {
    Fit fit;
    fit.Add(10, 20, 110, 30);
    fit.graphic.ZoomAll(CRect(0, 0, 200, 200));
    // Margins 30: 100/170 against 10/170.
    EXPECT_EQ(0.588235319f, fit.tran.GetScale());
    EXPECT_NEAR(10 - 15 * 0.588235319, fit.tran.GetOriginX(), 1e-6);
    EXPECT_NEAR(20 - (200 * 0.588235319 - 10) / 2, fit.tran.GetOriginY(), 1e-4);
}

TEST(VectorGraphicZoom, AMarginIsNeverLessThanTenPixels) {
    Fit fit;
    fit.Add(0, 0, 80, 80);
    fit.graphic.ZoomAll(CRect(0, 0, 50, 50));
    EXPECT_EQ(2.0f, fit.tran.GetScale()); // 80 / (50 - 10), and not / (50 - 7.5).
    EXPECT_EQ(-10.0, fit.tran.GetOriginX());
    EXPECT_EQ(-10.0, fit.tran.GetOriginY());
}

TEST(VectorGraphicZoom, WithEqualRatiosTheHeightBranchIsTaken) {
    // Both ratios are exactly 1: 100 units on 100 free pixels. By height, x is centred: -(115 - 100) / 2 = -7.5; by
    // width it would be -(15 / 2 = 7) * 1 = -7.
    Fit fit;
    fit.graphic.SetZoomByPixs(1);
    fit.Add(0, 0, 100, 100);
    fit.graphic.ZoomAll(CRect(0, 0, 115, 115));
    EXPECT_EQ(1.0f, fit.tran.GetScale());
    EXPECT_EQ(-7.5, fit.tran.GetOriginX());
    EXPECT_EQ(-7.0, fit.tran.GetOriginY()) << "half of 15 in whole pixels: a pixel off centre";
}

TEST(VectorGraphicZoom, ByPixelsTheWidthLimits) {
    Fit fit;
    fit.graphic.SetZoomByPixs(-1); // Nonzero counts.
    fit.graphic.SetZoomAllMargin(20);
    fit.Add(0, 0, 160, 40);
    fit.graphic.ZoomAll(CRect(0, 0, 100, 100));
    EXPECT_EQ(2.0f, fit.tran.GetScale());
    EXPECT_EQ(-20.0, fit.tran.GetOriginX()); // 10 pixels of 2 units.
    EXPECT_EQ(-80.0, fit.tran.GetOriginY()); // (200 - 40) / 2.
}

TEST(VectorGraphicZoom, ByPixelsAWindowAsWideAsTheMarginGivesAnInfiniteRatioByWidth) {
    Fit fit;
    fit.graphic.SetZoomByPixs(1);
    fit.Add(0, 0, 100, 10);
    fit.graphic.ZoomAll(CRect(0, 0, 15, 115));
    EXPECT_TRUE(std::isinf(fit.tran.GetScale()));
    EXPECT_EQ(15, fit.tran.GetScreenSize().cx);
}

TEST(VectorGraphicZoom, ASinglePointGivesTheScaleZero) {
    for (int byPixels : {0, 1}) {
        Fit fit;
        fit.graphic.SetZoomByPixs(byPixels);
        fit.Add(7, 9, 7, 9);
        fit.graphic.ZoomAll(CRect(0, 0, 300, 200));
        EXPECT_EQ(0.0f, fit.tran.GetScale());
        EXPECT_EQ(7.0, fit.tran.GetOriginX());
        EXPECT_EQ(9.0, fit.tran.GetOriginY());
        EXPECT_TRUE(std::isinf(fit.tran.DToL(1.0)));
    }
}

TEST(VectorGraphicZoom, ARectangleAwayFromTheCornerMovesTheOriginLeftAndUp) {
    Fit fit;
    fit.graphic.SetZoomByPixs(1);
    fit.graphic.SetZoomAllMargin(0);
    fit.Add(0, 0, 200, 200);
    fit.graphic.ZoomAll(CRect(10, 20, 110, 120));
    EXPECT_EQ(2.0f, fit.tran.GetScale());
    EXPECT_EQ(-20.0, fit.tran.GetOriginX());
    EXPECT_EQ(40.0, fit.tran.GetOriginY());
    EXPECT_EQ(100, fit.tran.GethScreen());
}

TEST(VectorGraphicZoom, TheTwoFormsRoundTheirMarginsAtDifferentPlaces) {
    // Both: 10 units on 30 free pixels, five pixels of margin. By pixels the product is taken in single precision.
    Fit pixels;
    pixels.graphic.SetZoomByPixs(1);
    pixels.graphic.SetZoomAllMargin(10);
    pixels.Add(0, 0, 10, 0);
    pixels.graphic.ZoomAll(CRect(0, 0, 40, 300));
    EXPECT_EQ(0.3333333432674408, pixels.tran.GetScale());
    EXPECT_EQ(-1.6666667461395264, pixels.tran.GetOriginX());
    Fit percent;
    percent.Add(0, 0, 10, 0);
    percent.graphic.ZoomAll(CRect(0, 0, 40, 300)); // 15 percent are 6 pixels, raised to 10.
    EXPECT_EQ(0.3333333432674408, percent.tran.GetScale());
    EXPECT_EQ(-1.666666716337204, percent.tran.GetOriginX());
}
