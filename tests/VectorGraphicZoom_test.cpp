// Fitting a drawing into a rectangle. Figures worked out by hand.

#include "Arc.h"
#include "CenterPoint.h"
#include "Document.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "TextParm.h"
#include "VectorGraphic.h"
#include "VectorLabel.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

namespace {

struct Fit {
    Fit() { graphic.SetVectorViewCoordTran(&tran); }
    void Add(double x1, double y1, double x2, double y2) {
        graphic.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, static_cast<float>(x1), static_cast<float>(y1),
                                       static_cast<float>(x2), static_cast<float>(y2));
    }
    void AddExact(double x1, double y1, double x2, double y2) {
        auto* line = new CLine;
        KX_ADD_MEMORY(line);
        line->SetStartPoint(CGePoint2d(x1, y1));
        line->SetEndPoint(CGePoint2d(x2, y2));
        graphic.GetDocument()->AddDrawAobject(line);
    }
    // 200 by 200 pixels without a margin.
    void FitSquare() {
        graphic.SetZoomByPixs(1);
        graphic.SetZoomAllMargin(0);
        graphic.ZoomAll(CRect(0, 0, 200, 200));
    }
    void ExpectMapping(float scale, double originX, double originY) {
        EXPECT_EQ(scale, tran.GetScale());
        EXPECT_EQ(originX, tran.GetOriginX());
        EXPECT_EQ(originY, tran.GetOriginY());
    }
    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
};

// One object of each kind with an extent, built from a number that is not finite.
struct BadKind {
    const char* name;
    std::function<CDrawable*(double)> make;
};

const BadKind kBadKinds[] = {
    {"line from it",
     [](double bad) {
         auto* line = new CLine;
         line->SetStartPoint(CGePoint2d(bad, 50));
         line->SetEndPoint(CGePoint2d(50, 50));
         return line;
     }},
    {"line to it",
     [](double bad) {
         auto* line = new CLine;
         line->SetStartPoint(CGePoint2d(50, 50));
         line->SetEndPoint(CGePoint2d(50, bad));
         return line;
     }},
    {"polyline from it",
     [](double bad) {
         auto* line = new CPLine;
         line->AddPoint(CGePoint2d(bad, 50));
         line->AddPoint(CGePoint2d(50, 50));
         return line;
     }},
    {"polyline to it",
     [](double bad) {
         auto* line = new CPLine;
         line->AddPoint(CGePoint2d(50, 50));
         line->AddPoint(CGePoint2d(50, bad));
         return line;
     }},
    {"bulge",
     [](double bad) {
         auto* line = new CPLine;
         line->AddPoint(CGePoint2d(50, 50), bad);
         line->AddPoint(CGePoint2d(60, 50));
         return line;
     }},
    {"circle around it",
     [](double bad) {
         auto* circle = new CCircle(Gdiplus::PointF(50, 50), 5);
         circle->SetCenter(CGePoint2d(50, bad));
         return circle;
     }},
    {"radius",
     [](double bad) {
         auto* circle = new CCircle(Gdiplus::PointF(50, 50), 5);
         circle->setRadius(bad);
         return circle;
     }},
    {"arc around it",
     [](double bad) {
         auto* arc = new CArc(Gdiplus::PointF(50, 50), 5, 0, 1);
         arc->SetCenter(CGePoint2d(bad, 50));
         return arc;
     }},
    {"start of an arc",
     [](double bad) {
         auto* arc = new CArc(Gdiplus::PointF(50, 50), 5, 0, 1);
         arc->SetStartAngle(bad);
         return arc;
     }},
    {"end of an arc",
     [](double bad) {
         auto* arc = new CArc(Gdiplus::PointF(50, 50), 5, 0, 1);
         arc->SetEndAngle(bad);
         return arc;
     }},
    {"centre mark",
     [](double bad) {
         auto* mark = new CCenterPoint(Gdiplus::PointF(50, 50));
         mark->SetCenter(CGePoint2d(bad, bad));
         return mark;
     }},
    {"text",
     [](double bad) {
         auto* text = new CText;
         text->SetPos(CGePoint2d(bad, 60));
         return text;
     }},
    {"width of a parameter",
     [](double bad) {
         auto* text = new CTextParm;
         text->SetPos(CGePoint2d(50, 60));
         text->SetTextWide(static_cast<float>(bad));
         return text;
     }},
    {"label without direction",
     [](double bad) {
         auto* label = new CKXVectorLabel;
         label->SetLeftLabel(CGePoint2d(50, 50), CGePoint2d(bad, bad));
         label->SetRightLabel(CGePoint2d(60, 50), CGePoint2d(bad, bad));
         return label;
     }},
    {"tick size",
     [](double bad) {
         auto* label = new CKXVectorLabel;
         label->SetLeftLabel(CGePoint2d(50, 50), CGePoint2d(50, 60));
         label->SetRightLabel(CGePoint2d(60, 50), CGePoint2d(60, 60));
         label->SetLabelLength(bad);
         return label;
     }},
};

constexpr float kInfinite = std::numeric_limits<float>::infinity();

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
    // 1100 pixels of it are 1294.11767578125 as a float, so that the rest is 147.05...; 37.5 pixels in double.
    EXPECT_EQ(-147.058837890625, fit.tran.GetOriginX());
    EXPECT_EQ(-44.117648899555206, fit.tran.GetOriginY());
}

TEST(VectorGraphicZoom, ByPercentTheWidthLimitsATallWindow) {
    Fit fit;
    fit.Add(10, 20, 110, 30);
    fit.graphic.ZoomAll(CRect(0, 0, 200, 200));
    // Margins 30: 100/170 against 10/170.
    EXPECT_EQ(0.588235319f, fit.tran.GetScale());
    // 15 pixels in double; 200 pixels, 117.64706420898438 as a float, less 10, by 2.
    EXPECT_EQ(1.1764702200889587, fit.tran.GetOriginX());
    EXPECT_EQ(-33.82353210449219, fit.tran.GetOriginY());
}

TEST(VectorGraphicZoom, AMarginIsNeverLessThanTenPixels) {
    Fit fit;
    fit.Add(0, 0, 80, 80);
    fit.graphic.ZoomAll(CRect(0, 0, 50, 50));
    EXPECT_EQ(2.0f, fit.tran.GetScale()); // 80 / (50 - 10), and not / (50 - 7.5).
    EXPECT_EQ(-10.0, fit.tran.GetOriginX());
    EXPECT_EQ(-10.0, fit.tran.GetOriginY());
}

TEST(VectorGraphicZoom, EachAxisHasALeastMarginOfItsOwn) {
    // 15 percent of 50 are 7.5, raised to 10; of 200 they are 30 and stay.
    Fit narrow;
    narrow.Add(0, 0, 80, 80);
    narrow.graphic.ZoomAll(CRect(0, 0, 50, 200));
    EXPECT_EQ(2.0f, narrow.tran.GetScale());
    EXPECT_EQ(-10.0, narrow.tran.GetOriginX());
    EXPECT_EQ(-160.0, narrow.tran.GetOriginY()); // (400 - 80) / 2
    Fit flat;
    flat.Add(0, 0, 80, 80);
    flat.graphic.ZoomAll(CRect(0, 0, 200, 50));
    EXPECT_EQ(2.0f, flat.tran.GetScale());
    EXPECT_EQ(-160.0, flat.tran.GetOriginX());
    EXPECT_EQ(-10.0, flat.tran.GetOriginY());
    Fit tall; // The wide margin limits: 85 / (200 - 30).
    tall.Add(0, 0, 2, 85);
    tall.graphic.ZoomAll(CRect(0, 0, 50, 200));
    EXPECT_EQ(0.5f, tall.tran.GetScale());
    EXPECT_EQ(-11.5, tall.tran.GetOriginX()); // (25 - 2) / 2
    EXPECT_EQ(-7.5, tall.tran.GetOriginY());
}

TEST(VectorGraphicZoom, AMarginOfExactlyTenPixelsStays) {
    Fit fit;
    fit.graphic.SetZoomAllMargin(20);
    fit.Add(0, 0, 80, 80);
    fit.graphic.ZoomAll(CRect(0, 0, 50, 50));
    EXPECT_EQ(2.0f, fit.tran.GetScale());
    fit.graphic.SetZoomAllMargin(60);
    fit.graphic.ZoomAll(CRect(0, 0, 50, 50));
    EXPECT_EQ(4.0f, fit.tran.GetScale()); // 80 / (50 - 30)
}

TEST(VectorGraphicZoom, TheExtentIsRoundedToAFloatFirst) {
    // The extent 16777217 is the float 16777216. Over 10 free pixels that is 1677721.625, and 1677721.75 unrounded.
    Fit pixels;
    pixels.graphic.SetZoomByPixs(1);
    pixels.graphic.SetZoomAllMargin(10);
    pixels.AddExact(0, 0, 16777217.0, 0);
    pixels.graphic.ZoomAll(CRect(0, 0, 20, 20));
    EXPECT_EQ(1677721.625f, pixels.tran.GetScale());
    Fit tall;
    tall.graphic.SetZoomByPixs(1);
    tall.graphic.SetZoomAllMargin(10);
    tall.AddExact(0, 0, 0, 16777217.0);
    tall.graphic.ZoomAll(CRect(0, 0, 20, 20));
    EXPECT_EQ(1677721.625f, tall.tran.GetScale());
    // By percent, with 90.9 free pixels: 184567.828125, and 184567.84375 unrounded.
    Fit percent;
    percent.graphic.SetZoomAllMargin(10);
    percent.AddExact(0, 0, 16777217.0, 0);
    percent.graphic.ZoomAll(CRect(0, 0, 101, 101));
    EXPECT_EQ(184567.828125f, percent.tran.GetScale());
    EXPECT_EQ(-932067.53203125, percent.tran.GetOriginX());
    Fit tallPercent;
    tallPercent.graphic.SetZoomAllMargin(10);
    tallPercent.AddExact(0, 0, 0, 16777217.0);
    tallPercent.graphic.ZoomAll(CRect(0, 0, 101, 101));
    EXPECT_EQ(184567.828125f, tallPercent.tran.GetScale());
    EXPECT_EQ(-932067.53203125, tallPercent.tran.GetOriginY());
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

TEST(VectorGraphicZoom, WithEqualRatiosTheHeightBranchIsTakenByPercentToo) {
    // 10 units on 30 free pixels both ways. The axis that is centred is computed from 40 pixels as a float,
    // 13.333333969116211; the other one is 5 pixels in double.
    Fit fit;
    fit.Add(0, 0, 10, 10);
    fit.graphic.ZoomAll(CRect(0, 0, 40, 40));
    EXPECT_EQ(-1.6666669845581055, fit.tran.GetOriginX());
    EXPECT_EQ(-1.666666716337204, fit.tran.GetOriginY());
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

TEST(VectorGraphicZoom, ByPixelsAnOddMarginLeavesTheSmallerHalfOnTheLeft) {
    Fit fit;
    fit.graphic.SetZoomByPixs(1); // The margin of a new painter is 15.
    fit.Add(0, 0, 200, 50);
    fit.graphic.ZoomAll(CRect(0, 0, 115, 115));
    EXPECT_EQ(2.0f, fit.tran.GetScale()); // 200 / (115 - 15), against 50 / 100.
    EXPECT_EQ(-14.0, fit.tran.GetOriginX()) << "seven pixels of two units, not seven and a half";
    EXPECT_EQ(-90.0, fit.tran.GetOriginY()); // (230 - 50) / 2
}

TEST(VectorGraphicZoom, ByPixelsAWindowAsWideAsTheMarginGivesAnInfiniteRatioByWidth) {
    Fit fit;
    fit.graphic.SetZoomByPixs(1);
    fit.Add(0, 0, 100, 10);
    fit.graphic.ZoomAll(CRect(0, 0, 15, 115));
    EXPECT_EQ(kInfinite, fit.tran.GetScale());
    EXPECT_EQ(15, fit.tran.GetScreenSize().cx);
    EXPECT_EQ(-kInfinite, fit.tran.GetOriginX());
    EXPECT_EQ(-kInfinite, fit.tran.GetOriginY());
}

TEST(VectorGraphicZoom, ByPixelsAWindowAsHighAsTheMarginGivesAnInfiniteRatioByHeight) {
    Fit fit;
    fit.graphic.SetZoomByPixs(1);
    fit.Add(0, 0, 100, 10);
    fit.graphic.ZoomAll(CRect(0, 0, 115, 15));
    EXPECT_EQ(kInfinite, fit.tran.GetScale());
    EXPECT_EQ(15, fit.tran.GethScreen());
    EXPECT_EQ(-kInfinite, fit.tran.GetOriginX());
    EXPECT_EQ(-kInfinite, fit.tran.GetOriginY());
}

TEST(VectorGraphicZoom, ByPixelsARatioThatIsNoNumberTakesTheHeightBranchAndIsNotStored) {
    // An upright line in a window as wide as the margin: 0 / 0 by width, 100 / 100 by height.
    Fit upright;
    upright.graphic.SetZoomByPixs(1);
    upright.Add(7, 0, 7, 100);
    upright.graphic.ZoomAll(CRect(0, 0, 15, 115));
    EXPECT_EQ(1.0f, upright.tran.GetScale());
    EXPECT_EQ(-0.5, upright.tran.GetOriginX()); // 7 - 15 / 2
    EXPECT_EQ(-7.0, upright.tran.GetOriginY());
    // A lying one in a window as high as the margin: 100 / 100 by width, 0 / 0 by height, which is taken.
    Fit lying;
    lying.tran.SetScale(3.0f);
    lying.graphic.SetZoomByPixs(1);
    lying.Add(0, 7, 100, 7);
    lying.graphic.ZoomAll(CRect(0, 0, 115, 15));
    lying.ExpectMapping(3.0f, 0.0, 0.0);
    // A point in a window of the margin.
    Fit point;
    point.tran.SetScale(3.0f);
    point.graphic.SetZoomByPixs(1);
    point.Add(7, 9, 7, 9);
    point.graphic.ZoomAll(CRect(0, 0, 15, 15));
    point.ExpectMapping(3.0f, 0.0, 0.0);
    EXPECT_EQ(15, point.tran.GethScreen()) << "the size is stored nevertheless";
    // No margin, and a window without an area: the scale would be infinite, half of no margin of it not-a-number.
    Fit minimized;
    minimized.tran.SetScale(3.0f);
    minimized.graphic.SetZoomByPixs(1);
    minimized.graphic.SetZoomAllMargin(0);
    minimized.Add(0, 0, 100, 10);
    minimized.graphic.ZoomAll(CRect(0, 0, 0, 0));
    minimized.ExpectMapping(3.0f, 0.0, 0.0);
}

TEST(VectorGraphicZoom, ByPercentAWindowOfTenPixelsKeepsScaleAndOrigin) {
    // The least margin takes all of it: 100 / 0.
    Fit fit;
    fit.tran.SetScale(3.0f);
    fit.Add(0, 0, 100, 10);
    fit.graphic.ZoomAll(CRect(0, 0, 10, 200));
    fit.ExpectMapping(3.0f, 0.0, 0.0);
    EXPECT_EQ(CSize(10, 200), fit.tran.GetScreenSize());
}

TEST(VectorGraphicZoom, ALabelWithoutADirectionIsFittedByThePointsThatItHas) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Fit fit;
    auto* label = new CKXVectorLabel; // Its ticks are 3 units large.
    KX_ADD_MEMORY(label);
    label->SetLeftLabel(CGePoint2d(3, 3), CGePoint2d(nan, nan));
    label->SetRightLabel(CGePoint2d(97, 97), CGePoint2d(nan, nan));
    fit.graphic.GetDocument()->AddDrawAobject(label);
    fit.FitSquare();
    fit.ExpectMapping(0.5f, 0.0, 0.0); // From (0, 0) to (100, 100) on 200 pixels.
}

TEST(VectorGraphicZoom, AnExtentThatIsNotFiniteCountsAsNone) {
    // Beside each such object a line from (10, 20) to (110, 120), around whatever is finite of it: 100 units on 200
    // pixels, from the line's start.
    for (const BadKind& kind : kBadKinds) {
        for (double bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity()}) {
            for (bool first : {true, false}) {
                SCOPED_TRACE(testing::Message() << kind.name << " " << bad << (first ? " first" : " last"));
                Fit fit;
                CDrawable* object = kind.make(bad);
                KX_ADD_MEMORY(object);
                if (first) {
                    fit.graphic.GetDocument()->AddDrawAobject(object);
                }
                fit.AddExact(10, 20, 110, 120);
                if (!first) {
                    fit.graphic.GetDocument()->AddDrawAobject(object);
                }
                fit.FitSquare();
                fit.ExpectMapping(0.5f, 10.0, 20.0);
            }
        }
    }
}

TEST(VectorGraphicZoom, AFitThatWouldNotBeFiniteKeepsScaleAndOrigin) {
    struct {
        double x1, y1, x2, y2;
    } const lines[] = {
        {-1e308, 0, 1e308, 1}, // The width is beyond all doubles.
        {0, -1e308, 1, 1e308}, // The height is.
        {0, 0, 1e300, 1},      // The width is beyond all floats.
        {0, 0, 1, 1e300},      // The height is.
    };
    for (int byPixels : {0, 1}) {
        for (const auto& line : lines) {
            SCOPED_TRACE(testing::Message() << byPixels << " " << line.x2 << " " << line.y2);
            Fit fit;
            fit.tran.SetScale(3.0f);
            fit.tran.SetOriginX(5.0);
            fit.tran.SetOriginY(-6.0);
            fit.graphic.SetZoomByPixs(byPixels);
            fit.AddExact(line.x1, line.y1, line.x2, line.y2);
            fit.graphic.ZoomAll(CRect(0, 0, 640, 480));
            fit.ExpectMapping(3.0f, 5.0, -6.0);
            EXPECT_EQ(CSize(640, 480), fit.tran.GetScreenSize());
        }
    }
}

TEST(VectorGraphicZoom, AHugeMarginWrapsAndStaysDefined) {
    // By percent 200 * 21474857 is 2^32 + 4104, so that 41.04 pixels are left of it; 100 * 21474857 is negative and is
    // raised to 10. 100 / (200 - 41.04) by width.
    Fit percent;
    percent.graphic.SetZoomAllMargin(21474857);
    percent.Add(0, 0, 100, 10);
    percent.graphic.ZoomAll(CRect(0, 0, 200, 100));
    EXPECT_EQ(0.6290890574455261, percent.tran.GetScale());
    EXPECT_EQ(-12.908907458782195, percent.tran.GetOriginX());
    EXPECT_EQ(-26.454452514648438, percent.tran.GetOriginY());
    // By pixels 100 + 2^31 wraps to -2147483548, -2147483520 as a float; of the two negative ratios that of the height
    // is nearer to zero, and so the larger one. Half the margin is -2^30 pixels.
    Fit pixels;
    pixels.graphic.SetZoomByPixs(1);
    pixels.graphic.SetZoomAllMargin(INT_MIN);
    pixels.Add(0, 0, 1024, 128);
    pixels.graphic.ZoomAll(CRect(0, 0, 100, 100));
    EXPECT_EQ(-5.960465188081798e-08, pixels.tran.GetScale()); // 128 / -2147483520 as a float.
    EXPECT_EQ(512.0000029802327, pixels.tran.GetOriginX());
    EXPECT_EQ(-64.00000762939453, pixels.tran.GetOriginY());
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

TEST(VectorGraphicZoom, ARectangleAwayFromTheCornerMovesTheOriginByPercentToo) {
    // Margins 30 and 15: 340 / 170 = 2 by width.
    Fit exact;
    exact.Add(0, 0, 340, 100);
    exact.graphic.ZoomAll(CRect(10, 20, 210, 120));
    EXPECT_EQ(2.0f, exact.tran.GetScale());
    EXPECT_EQ(-50.0, exact.tran.GetOriginX()); // -15 * 2 - 10 * 2
    EXPECT_EQ(-10.0, exact.tran.GetOriginY()); // -(200 - 100) / 2 + 20 * 2
    EXPECT_EQ(CSize(200, 100), exact.tran.GetScreenSize());
    Fit rounded; // 100 / 170
    rounded.Add(0, 0, 100, 10);
    rounded.graphic.ZoomAll(CRect(10, 20, 210, 120));
    EXPECT_EQ(-14.705883085727692, rounded.tran.GetOriginX());
    EXPECT_EQ(-12.647059440612793, rounded.tran.GetOriginY());
    Fit negative;
    negative.Add(0, 0, 340, 100);
    negative.graphic.ZoomAll(CRect(-10, -20, 190, 80));
    EXPECT_EQ(-10.0, negative.tran.GetOriginX());
    EXPECT_EQ(-90.0, negative.tran.GetOriginY());
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
