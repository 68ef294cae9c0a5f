// CSvgWriter: the elements of an SVG file.

#include <DrawingRender.h>

#include <Arc.h>
#include <CenterPoint.h>
#include <CombRect.h>
#include <Document.h>
#include <Line.h>
#include <PLine.h>
#include <TextParm.h>
#include <VectorLabel.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

// A drawing, and its picture of 100 by 100 pixels from (0, 0) to (200, 200): 2 units per pixel.
struct SvgWriter : testing::Test {
    void SetUp() override {
        graphic.SetVectorViewCoordTran(&tran);
        options.size = CSize(100, 100);
        options.place = CRenderOptions::Window;
        options.windowMax = CGePoint2d(200, 200);
    }
    template <class Kind>
    Kind* Add(Kind* object) {
        object->SetPenColor(RGB(255, 128, 0));
        object->SetLineWide(0);
        graphic.GetDocument()->AddDrawAobject(object);
        return object;
    }
    CLine* Line(double x1, double y1, double x2, double y2) {
        auto* line = new CLine;
        line->SetStartPoint(CGePoint2d(x1, y1));
        line->SetEndPoint(CGePoint2d(x2, y2));
        return Add(line);
    }
    std::string Whole() {
        CByteArray file;
        CDrawingRender render(graphic.GetDocument(), options);
        EXPECT_EQ(RenderStatus::Done, render.Svg(file));
        leftOut = render.LeftOut();
        return std::string(reinterpret_cast<const char*>(file.GetData()), static_cast<size_t>(file.GetSize()));
    }
    // The elements of the objects, without what is around them.
    std::string Objects() {
        const std::string whole = Whole();
        const size_t begin = whole.find("</title>\n");
        const size_t end = whole.rfind("</g>\n</g>\n");
        return begin == std::string::npos || end == std::string::npos ? whole
                                                                      : whole.substr(begin + 9, end - begin - 9);
    }

    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
    CRenderOptions options;
    int leftOut = 0;
};

const std::string kHair = " stroke=\"#ff8000\" stroke-width=\"2\" class=\"px1s0\"";
// A pixel is 2 units. Rounded coordinates: the middle of the pixel, half a pixel on.
const std::string kRounded = kHair + " transform=\"translate(1 1)\"";
// The box of a circle: half a pixel back by truncation, and a quarter since it ends before its last row and column.
const std::string kRound = kHair + " transform=\"translate(-0.5 -0.5)\"";

TEST_F(SvgWriter, AFileHasItsSizeItsWindowAndItsBackground) {
    Line(1, 2, 3, 4);
    graphic.GetDocument()->SetBKColor(RGB(16, 32, 255));
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100\" height=\"100\" viewBox=\"0 -200 200 200\" "
              "xml:space=\"preserve\">\n"
              "<rect x=\"0\" y=\"-200\" width=\"200\" height=\"200\" fill=\"#1020ff\"/>\n"
              "<g fill=\"none\" stroke-linejoin=\"round\">\n"
              "<g id=\"layer0\"><title>Layer 0</title>\n"
              "<path d=\"M1 -2L3 -4\"" +
                  kRounded +
                  "/>\n"
                  "</g>\n</g>\n<style>@supports (vector-effect: non-scaling-stroke) {\n"
                  ".px1s0 { vector-effect: non-scaling-stroke; stroke-width: 1px; }\n}</style>\n</svg>\n",
              Whole());
    options.transparent = true;
    EXPECT_EQ(std::string::npos, Whole().find("<rect"));
}

TEST_F(SvgWriter, NumbersAreExact) {
    Line(0.1, 1e-300, 1e21, -123456789.125);
    EXPECT_EQ("<path d=\"M0.1 -1e-300L1e+21 123456789.125\"" + kRounded + "/>\n", Objects());
}

TEST_F(SvgWriter, WidthsFollowTheDrawingOrStayPixels) {
    // 7 units are 3.5 pixels, of which 3 are drawn: 6 units.
    Line(0, 0, 1, 1)->SetLineWide(7);
    EXPECT_EQ("<path d=\"M0 0L1 -1\" stroke=\"#ff8000\" stroke-width=\"6\" stroke-linecap=\"round\" "
              "transform=\"translate(1 1)\"/>\n",
              Objects());
    graphic.GetDocument()->Reset();
    CLine* locked = Line(0, 0, 1, 1);
    locked->SetLineWide(7);
    locked->SetLockMode(1);
    EXPECT_EQ("<path d=\"M0 0L1 -1\" stroke=\"#ff8000\" stroke-width=\"14\" stroke-linecap=\"round\" "
              "class=\"px7s0\" transform=\"translate(1 1)\"/>\n",
              Objects());
    options.lineWidthScale = 2.0;
    EXPECT_NE(std::string::npos, Objects().find("stroke-width=\"28\""));
}

TEST_F(SvgWriter, AStrokeOfAnEvenNumberOfPixelsIsOnItsCoordinates) {
    // Two pixels are those on either side of a whole coordinate. Only what is truncated is half a pixel back then.
    Line(0, 0, 1, 1)->SetLineWide(4);
    EXPECT_EQ("<path d=\"M0 0L1 -1\" stroke=\"#ff8000\" stroke-width=\"4\" stroke-linecap=\"round\"/>\n", Objects());
    graphic.GetDocument()->Reset();
    Add(new CCircle(Gdiplus::PointF(10, 20), 5, 0))->SetLineWide(4);
    EXPECT_NE(std::string::npos, Objects().find("transform=\"translate(-1.5 -1.5)\"/>")) << Objects();
}

TEST_F(SvgWriter, DashesAreAsLongAsGdiStepsThem) {
    Line(0, 0, 100, 0)->SetLineType(PS_DASHDOT);
    Line(0, 0, 30, 40)->SetLineType(PS_DOT); // A step of one pixel along y is 50 / 40 of it along the line.
    const std::string text = Objects();
    EXPECT_NE(std::string::npos, text.find("stroke-dasharray=\"18 12 6 12\"")) << text;
    EXPECT_NE(std::string::npos, text.find("stroke-dasharray=\"7.5 7.5\"")) << text;
}

TEST_F(SvgWriter, AWidenedPatternGrowsWithItsLine) {
    Line(0, 0, 100, 0)->SetLineType(PS_DASHDOT);
    options.lineWidthScale = 2.0; // 2 pixels, 4 units: lengths of 9, 6, 3 and 6 widths.
    const std::string text = Objects();
    EXPECT_NE(std::string::npos, text.find("stroke-width=\"4\" stroke-dasharray=\"36 24 12 24\"")) << text;
}

TEST_F(SvgWriter, AWideLineIsSolidAsGdiDrawsIt) {
    CLine* line = Line(0, 0, 100, 0);
    line->SetLineType(PS_DASH);
    line->SetLineWide(4);
    EXPECT_EQ(std::string::npos, Objects().find("dash"));
}

TEST_F(SvgWriter, AnEmptyPenDrawsNoStroke) {
    Line(0, 0, 100, 0)->SetLineType(PS_NULL);
    EXPECT_EQ("<path d=\"M0 0L100 0\"/>\n", Objects());
}

TEST_F(SvgWriter, AFilledCircleIsWhiteInside) {
    Add(new CCircle(Gdiplus::PointF(10, 20), 5, 1));
    EXPECT_EQ("<circle cx=\"10\" cy=\"-20\" r=\"5\"" + kRound + " fill=\"#ffffff\"/>\n", Objects());
}

TEST_F(SvgWriter, AnArcRunsAnticlockwise) {
    Add(new CArc(Gdiplus::PointF(10, 20), 5, 0, 0))->SetEndAngle(3.0 * 1.5707963267948966);
    const std::string text = Objects();
    // Three quarters: the large way round, from the right to the bottom.
    EXPECT_EQ(0u, text.find("<path d=\"M15 -20A5 5 0 1 0 9.9999999")) << text;
    EXPECT_NE(std::string::npos, text.find(" -15\"")) << text;
}

TEST_F(SvgWriter, AnArcWithEqualEndsIsTheCircle) {
    Add(new CArc(Gdiplus::PointF(10, 20), 5, 0, 0));
    EXPECT_EQ("<circle cx=\"10\" cy=\"-20\" r=\"5\"" + kRound + "/>\n", Objects());
}

TEST_F(SvgWriter, APolylinesBulgesAreArcs) {
    auto* line = Add(new CPLine);
    line->AddPoint(CGePoint2d(0, 0), 1.0);  // A half circle to the right of the way, that is below.
    line->AddPoint(CGePoint2d(2, 0), -0.5); // To the left: radius 2 * (1 + 0.25) / (4 * 0.5) = 1.25.
    line->AddPoint(CGePoint2d(4, 0), 0.0);
    line->SetClose(1);
    EXPECT_EQ("<path d=\"M0 0A1 1 0 0 0 2 0A1.25 1.25 0 0 1 4 0L0 0\"" + kHair +
                  " transform=\"translate(0.5 0.5)\"/>\n",
              Objects());
}

TEST_F(SvgWriter, ASegmentsOwnColourBeginsAPath) {
    auto* line = Add(new CPLine);
    for (const double x : {0.0, 1.0, 2.0, 3.0}) {
        line->AddPoint(CGePoint2d(x, 0));
    }
    line->SetSLPenColor(1, RGB(0, 0, 255));
    const std::string text = Objects();
    EXPECT_EQ("<path d=\"M0 0L1 0\"" + kRounded + "/>\n" +
                  "<path d=\"M1 0L2 0\" stroke=\"#0000ff\" stroke-width=\"2\" class=\"px1s0\" "
                  "transform=\"translate(1 1)\"/>\n" +
                  "<path d=\"M2 0L3 0\"" + kRounded + "/>\n",
              text);
}

TEST_F(SvgWriter, ACentreMarkIsACrossWithACircleOfHalfItsSize) {
    Add(new CCenterPoint(Gdiplus::PointF(100, 50)));
    EXPECT_EQ("<path d=\"M100 -120L100 20\"" + kHair + "/>\n<path d=\"M30 -50L170 -50\"" + kHair +
                  "/>\n<circle cx=\"100\" cy=\"-50\" r=\"35\"" + kRound + "/>\n",
              Objects());
}

TEST_F(SvgWriter, AHiddenFrameIsShownAndAHiddenLineIsNot) {
    Line(0, 0, 1, 1)->SetIsShow(0);
    auto* frame = Add(new CCombRect);
    frame->SetPoint(CGePoint2d(1, 2), CGePoint2d(3, 5));
    frame->SetIsShow(0);
    EXPECT_EQ("<path d=\"M1 -2L3 -2L3 -5L1 -5Z\"" + kRounded + "/>\n", Objects());
    EXPECT_EQ(0, leftOut);
}

TEST_F(SvgWriter, ALabelHasTicksLinesAndItsFigure) {
    auto* label = Add(new CKXVectorLabel);
    label->SetLeftLabel(CGePoint2d(0, 0), CGePoint2d(0, 10));
    label->SetRightLabel(CGePoint2d(100, 0), CGePoint2d(100, 10));
    label->SetLabelLength(2);
    label->SetLabelWidth(0);
    label->SetTextHoleWidth(20);
    label->SetTextShow(1);
    const std::string text = Objects();
    // From (0, 0) upwards to 2.5 ticks beyond the dimension line, which has a gap from 30 to 70.
    EXPECT_NE(std::string::npos, text.find("<path d=\"M0 0L0 -15\"")) << text;
    EXPECT_NE(std::string::npos, text.find("<path d=\"M0 -10L30 -10\"")) << text;
    EXPECT_NE(std::string::npos, text.find("<path d=\"M70 -10L100 -10\"")) << text;
    EXPECT_NE(std::string::npos, text.find("<path d=\"M100 0L100 -15\"")) << text;
    // A tick from (-2, 8) to (2, 12).
    EXPECT_NE(std::string::npos, text.find("<path d=\"M2 -12L2 -12L-2 -8L-2 -8Z\" fill=\"#ffffff\" ")) << text;
    // The figure 100: above the line by 100, left of the middle by one step of 40.
    EXPECT_NE(std::string::npos, text.find("transform=\"translate(10 -110)\"")) << text;
    EXPECT_NE(std::string::npos, text.find(">100</text>")) << text;
}

TEST_F(SvgWriter, ATextIsATextAtItsPlaceAndAngle) {
    auto* text = Add(new CText);
    text->SetText(L"a <b> & \"c\"");
    text->SetPos(CGePoint2d(10, 20));
    text->SetAngle(45.9f);
    const std::string written = Objects();
    EXPECT_EQ(0u, written.find("<text transform=\"translate(10 -20) rotate(-45)\" y=\"")) << written;
    EXPECT_NE(std::string::npos, written.find(" font-family=\"'宋体', sans-serif\" fill=\"#ff8000\">"
                                              "a &lt;b&gt; &amp; &quot;c&quot;</text>\n"))
        << written;
    // The baseline and the size of the em lie within the cell of 20 units.
    const double baseline = std::stod(written.substr(written.find(" y=\"") + 4));
    const double size = std::stod(written.substr(written.find("font-size=\"") + 11));
    EXPECT_GT(baseline, 10.0);
    EXPECT_LT(baseline, 20.0);
    EXPECT_GT(size, 10.0);
    EXPECT_LE(size, 20.0);
}

TEST_F(SvgWriter, TextsThatXmlCannotHoldAreReplaced) {
    auto* text = Add(new CText);
    text->SetText(L"a\x01\xD800\xDC00|\xDC00\n\xFFFF|\xD840\xDC0B");
    EXPECT_NE(std::string::npos, Objects().find(">a\xEF\xBF\xBD𐀀|\xEF\xBF\xBD \xEF\xBF\xBD|𠀋</text>")) << Objects();
}

TEST_F(SvgWriter, AParameterIsShownAsThePainterShowsIt) {
    auto* text = Add(new CTextParm);
    text->SetText(L"12.04");
    EXPECT_NE(std::string::npos, Objects().find(">12.04</text>"));
    options.showDecimals = false;
    EXPECT_NE(std::string::npos, Objects().find(">12.0</text>"));
    text->SetTextRatio(1.0f);
    EXPECT_NE(std::string::npos, Objects().find(" scale("));
}

TEST_F(SvgWriter, ATextOnABackgroundHasItsBox) {
    auto* text = Add(new CText);
    text->SetText(L"x");
    text->SetBKMode(OPAQUE);
    text->SetBKColor(RGB(1, 2, 3));
    const std::string written = Objects();
    EXPECT_EQ(0u, written.find("<g transform=\"translate(0 0)\"><rect width=\"")) << written;
    EXPECT_NE(std::string::npos, written.find(" height=\"20\" fill=\"#010203\"/><text y=\"")) << written;
}

TEST_F(SvgWriter, BlackOnWhiteIsBlack) {
    Line(0, 0, 1, 1);
    options.colors = CRenderOptions::BlackOnWhite;
    const std::string text = Whole();
    EXPECT_NE(std::string::npos, text.find("fill=\"#ffffff\"/>"));
    EXPECT_NE(std::string::npos, text.find("stroke=\"#000000\""));
    EXPECT_EQ(std::string::npos, text.find("#ff8000"));
}

TEST_F(SvgWriter, AGroupBeginsWheneverTheLayerChanges) {
    Line(0, 0, 1, 1);
    Line(0, 0, 2, 2)->SetLayer(3);
    Line(0, 0, 3, 3);
    std::string text = Whole();
    EXPECT_NE(std::string::npos, text.find("<g id=\"layer0\"><title>Layer 0</title>\n"));
    EXPECT_NE(std::string::npos, text.find("<g id=\"layer3\"><title>Layer 3</title>\n"));
    EXPECT_NE(std::string::npos, text.find("<g id=\"layer0-2\"><title>Layer 0</title>\n"));
    auto* net = new CLine;
    graphic.GetDocument()->AddNetobject(net);
    text = Whole();
    EXPECT_LT(text.find("<g id=\"net0\">"), text.find("<g id=\"layer0\">"));
}

TEST_F(SvgWriter, ObjectsWithNumbersThatAreNotFiniteAreLeftOutAndCounted) {
    Line(0, std::nan(""), 1, 1);
    Line(0, 0, 1, HUGE_VAL);
    Add(new CCircle(Gdiplus::PointF(0, 0), 5, 0))->setRadius(-HUGE_VAL);
    Add(new CCircle(Gdiplus::PointF(0, 0), 5, 0))->SetDrawState(CDrawable::Dragging);
    CLine* broken = Line(0, 0, 1, 1);
    broken->SetPenColorIndex(-1);
    broken->SetLayer(-1); // Painting it fails.
    Add(new CText)->SetText(L"kept");
    const std::string text = Whole();
    EXPECT_EQ(5, leftOut);
    EXPECT_EQ(std::string::npos, text.find("<path"));
    EXPECT_EQ(std::string::npos, text.find("nan"));
    EXPECT_EQ(std::string::npos, text.find("inf"));
    EXPECT_NE(std::string::npos, text.find("kept"));
}

TEST_F(SvgWriter, ALineThatIsDrawnByInversionHasTheColourThatTheBackgroundTurnsInto) {
    Line(0, 0, 1, 1)->SetDrawState(CDrawable::Dragging);
    options.ownBackground = true;
    options.background = RGB(0x10, 0x20, 0x30);
    EXPECT_NE(std::string::npos, Objects().find("stroke=\"#efdfcf\""));
    EXPECT_EQ(0, leftOut);
    options.colors = CRenderOptions::BlackOnWhite;
    options.ownBackground = false;
    EXPECT_NE(std::string::npos, Objects().find("stroke=\"#000000\""));
}

TEST_F(SvgWriter, AKindOfAHostIsWrittenAsWhatItDerivesFrom) {
    class CHostLine : public CLine {};
    auto* line = Add(new CHostLine);
    line->SetEndPoint(CGePoint2d(1, 1));
    EXPECT_EQ("<path d=\"M0 0L1 -1\"" + kRounded + "/>\n", Objects());
    Add(new CDrawable);
    Objects();
    EXPECT_EQ(1, leftOut);
}

} // namespace
