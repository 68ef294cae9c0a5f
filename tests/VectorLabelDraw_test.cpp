// What CKXVectorLabel draws: strokes in pixels, ticks filled white, the gap, the figure, and each state's modes.

#include "support/BoxAnswer.h"
#include "support/RecordingDC.h"
#include "support/TextObjects.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

using Calls = std::vector<std::string>;

// Pixels (x, 600 - y) on a picture of 800 by 600.
struct Stage : Scene {
    Calls Draw(CDrawable& object) {
        dc.Clear();
        object.Draw(&dc, &geometry);
        return dc.Calls();
    }
    RecordingDC dc{800, 600};
};

// A = (100, 500), B = (100, 400), C = (300, 500) and D = (300, 400) in pixels; ticks of 10 and 4, a gap of 40.
OpenLabel& Place(OpenLabel& label) {
    label.SetLeftLabel(CGePoint2d(100, 100), CGePoint2d(100, 200));
    label.SetRightLabel(CGePoint2d(300, 100), CGePoint2d(300, 200));
    label.SetLabelLength(10.0);
    label.SetLabelWidth(4.0);
    label.SetTextHoleWidth(20.0);
    return label;
}

// The region between four pixels, by the plain call. Which scan lines of a corner belong to it is the device's matter.
struct Bar {
    Bar(POINT a, POINT b, POINT c, POINT d) {
        const POINT points[4] = {a, b, c, d};
        region = ::CreatePolygonRgn(points, 4, ALTERNATE);
    }
    ~Bar() { ::DeleteObject(region); }
    Bar(const Bar&) = delete;
    Bar& operator=(const Bar&) = delete;
    std::string FillCall() const {
        RECT box = {};
        EXPECT_EQ(COMPLEXREGION, ::GetRgnBox(region, &box));
        return "FillRgn(region [" + std::to_string(box.left) + "," + std::to_string(box.top) + "," +
               std::to_string(box.right) + "," + std::to_string(box.bottom) + "],brush style=0 color=0x00FFFFFF)";
    }
    HRGN region;
};

// The strokes of that label. The direction is (0, -1) in pixels. The tick around B runs from (90, 410) to (110, 390);
// its bar is 1.414 wide on either side, in both coordinates.
const Calls& Strokes() {
    static const Calls strokes = {"MoveTo(108,388)", "LineTo(111,391)", "LineTo(91,411)", "LineTo(88,408)",
                                  "LineTo(108,388)", Bar({108, 388}, {111, 391}, {91, 411}, {88, 408}).FillCall(),
                                  "MoveTo(308,388)", "LineTo(311,391)", "LineTo(291,411)", "LineTo(288,408)",
                                  "LineTo(308,388)", Bar({308, 388}, {311, 391}, {291, 411}, {288, 408}).FillCall(),
                                  // Two and a half ticks beyond the dimension line.
                                  "MoveTo(100,500)", "LineTo(100,375)", "MoveTo(100,400)", "LineTo(180,400)",
                                  "MoveTo(220,400)", "LineTo(300,400)", "MoveTo(300,500)", "LineTo(300,375)"};
    return strokes;
}

Calls Sequence(const Calls& before, const Calls& strokes, const Calls& after) {
    Calls all = before;
    all.insert(all.end(), strokes.begin(), strokes.end());
    all.insert(all.end(), after.begin(), after.end());
    return all;
}

bool Has(const Calls& calls, const std::string& begin) {
    for (const std::string& call : calls) {
        if (call.compare(0, begin.size(), begin) == 0) {
            return true;
        }
    }
    return false;
}

std::string First(const Calls& calls, const std::string& begin) {
    for (const std::string& call : calls) {
        if (call.compare(0, begin.size(), begin) == 0) {
            return call;
        }
    }
    return "none";
}

// The figure's calls, from the first of its font on.
struct Figure {
    std::string font;
    std::string color;
    std::string text;
};

Figure FigureOf(const Calls& calls) {
    return {First(calls, "SelectObject(font height"), First(calls, "SetTextColor"), First(calls, "TextOut")};
}

} // namespace

// ---- States --------------------------------------------------------------------------------------------------------

TEST(VectorLabelDraw, ANormalLabelIsTicksExtensionLinesAndADimensionLineWithAGap) {
    Stage stage;
    OpenLabel label;
    EXPECT_TRUE(SameCalls(Sequence({"SetBkMode(1)", "SelectObject(pen style=0 width=1 color=0x00FFFFFF)"}, Strokes(),
                                   {"SelectObject(pen default)"}),
                          stage.Draw(Place(label))));
    EXPECT_EQ(TRANSPARENT, stage.dc.GetBkMode()) << "left so";
}

TEST(VectorLabelDraw, ASelectedLabelIsDottedWithTwoGrips) {
    Stage stage;
    OpenLabel label;
    Place(label).SetSelected(1);
    EXPECT_TRUE(SameCalls(Sequence({"SetBkMode(1)", "SelectObject(pen style=2 width=1 color=0x00FFFFFF)"}, Strokes(),
                                   {"SelectObject(pen default)", "SelectObject(pen style=0 width=0 color=0x00FF0000)",
                                    "SelectStockObject(5)", "Rectangle(97,397,104,404)", "Rectangle(297,397,304,404)",
                                    "SelectObject(brush default)", "SelectObject(pen default)"}),
                          stage.Draw(label)));
}

TEST(VectorLabelDraw, ADraggedLabelMasksThePenInsteadOfInvertingAndRestoresItsModes) {
    Stage stage;
    OpenLabel label;
    Place(label).SetDrawState(CDrawable::Dragging);
    label.SetTextShow(1);
    label.SetLineType(1);
    EXPECT_TRUE(SameCalls(Sequence({"SetBkMode(1)", "SelectObject(pen style=0 width=1 color=0x00FFFFFF)", "SetROP2(5)"},
                                   Strokes(), {"SelectObject(pen default)", "SetROP2(13)", "SetBkMode(2)"}),
                          stage.Draw(label)))
        << "no figure, and the ticks are filled like the others";
}

TEST(VectorLabelDraw, AnUnknownStateDrawsNothing) {
    Stage stage;
    OpenLabel label;
    Place(label).SetDrawState(static_cast<enum CDrawable::DrawState>(3));
    EXPECT_TRUE(stage.Draw(label).empty());
}

TEST(VectorLabelDraw, AHiddenLabelStillDrawsAndAnErasedOneDoesNot) {
    Stage stage;
    OpenLabel label;
    Place(label).SetIsShow(0);
    EXPECT_EQ(Strokes().size() + 3, stage.Draw(label).size());
    EXPECT_EQ(1000.0f, label.HitTest(label.GetLeftLabelStartPt())) << "and can't be hit";
    label.m_IsDelete = 1;
    EXPECT_TRUE(stage.Draw(label).empty());
}

TEST(VectorLabelDraw, ThePenIsTheLabelsOwn) {
    Stage stage;
    OpenLabel label;
    Place(label).SetPenColor(0x00123456);
    label.SetLineType(1);
    label.SetLineWide(3);
    EXPECT_EQ("SelectObject(pen style=1 width=3 color=0x00123456)", stage.Draw(label)[1]);
}

TEST(VectorLabelDraw, OnlyLockModeOneKeepsTheWidthInPixels) {
    Stage stage;
    OpenLabel label;
    Place(label).SetLineWide(3);
    stage.Zoom(0.25f);
    EXPECT_EQ("SelectObject(pen style=0 width=3 color=0x00FFFFFF)", stage.Draw(label)[1]);
    for (int mode : {0, 2, -1}) {
        label.SetLockMode(mode);
        EXPECT_EQ("SelectObject(pen style=0 width=12 color=0x00FFFFFF)", stage.Draw(label)[1]) << mode;
    }
    stage.Zoom(10.0f); // 0.3 pixels, raised to 1.
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00FFFFFF)", stage.Draw(label)[1]);
}

// ---- Strokes -------------------------------------------------------------------------------------------------------

TEST(VectorLabelDraw, WithoutAGapTheDimensionLineIsOneStroke) {
    Stage stage;
    OpenLabel label;
    Place(label).SetHasTextHole(false);
    const Calls calls = stage.Draw(label);
    ASSERT_EQ(Strokes().size() + 3 - 2, calls.size());
    EXPECT_EQ("MoveTo(100,400)", calls[16]);
    EXPECT_EQ("LineTo(300,400)", calls[17]);
}

TEST(VectorLabelDraw, BothSidesTakeTheDirectionOfTheLeftExtensionLine) {
    Stage stage;
    OpenLabel label;
    Place(label).SetRightLabel(CGePoint2d(400, 200), CGePoint2d(300, 200)); // The right one points to the left.
    const Calls calls = stage.Draw(label);
    EXPECT_EQ("MoveTo(400,400)", calls[20]);
    EXPECT_EQ("LineTo(300,375)", calls[21]) << "its overshoot is upwards nevertheless";
    EXPECT_EQ("MoveTo(308,388)", calls[8]);
}

TEST(VectorLabelDraw, SizesInUnitsScaleWithTheZoom) {
    Stage stage;
    OpenLabel label;
    Place(label).SetLabelWidth(2.0);
    stage.Zoom(0.5f); // B is (200, 200), the tick 20, its half width 2, half the gap 40.
    const Calls calls = stage.Draw(label);
    EXPECT_EQ("MoveTo(218,178)", calls[2]) << "(220, 180) and 1.414 back in both";
    EXPECT_EQ("MoveTo(200,400)", calls[14]);
    EXPECT_EQ("LineTo(200,150)", calls[15]);
    EXPECT_EQ("LineTo(360,200)", calls[17]);
    EXPECT_EQ("MoveTo(440,200)", calls[18]);
}

TEST(VectorLabelDraw, ASlantedLabelKeepsItsFractionsUntilTheLastMoment) {
    Stage stage;
    OpenLabel label;
    // Pixels: A (10.5, 599.75), B (40.5, 559.75), length 50, direction (0.6, -0.8).
    label.SetLeftLabel(CGePoint2d(10.5, 0.25), CGePoint2d(40.5, 40.25));
    label.SetRightLabel(CGePoint2d(110.5, 0.25), CGePoint2d(140.5, 40.25));
    label.SetLabelLength(10.0);
    label.SetLabelWidth(2.0);
    label.SetTextHoleWidth(7.6);
    const Calls calls = stage.Draw(label);
    // Across: (0.8, 0.6) by 10. The tick ends at B + (6 + 8, -8 + 6) = (54.5, 557.75) and (26.5, 561.75); a step
    // sideways is (-4, -28) / 28.28, so -0.141 and -0.990.
    const Calls expected = {"MoveTo(54,556)", "LineTo(54,558)", "LineTo(26,562)", "LineTo(26,560)", "LineTo(54,556)"};
    EXPECT_TRUE(SameCalls(expected, Calls(calls.begin() + 2, calls.begin() + 7)));
    EXPECT_EQ("MoveTo(10,599)", calls[14]);
    EXPECT_EQ("LineTo(55,539)", calls[15]) << "25 on: (55.5, 539.75)";
    EXPECT_EQ("MoveTo(40,559)", calls[16]);
    EXPECT_EQ("LineTo(82,559)", calls[17]) << "90.5 - 7.6 is 82.9";
    EXPECT_EQ("MoveTo(98,559)", calls[18]) << "98.1";
}

TEST(VectorLabelDraw, AnExtensionLineWithoutLengthLeavesOnlyTheDimensionLine) {
    Stage stage;
    OpenLabel label;
    Place(label).SetLeftLabel(CGePoint2d(100, 200), CGePoint2d(100, 200));
    const Calls expected = {"SetBkMode(1)",
                            "SelectObject(pen style=0 width=1 color=0x00FFFFFF)",
                            "MoveTo(100,400)",
                            "LineTo(180,400)",
                            "MoveTo(220,400)",
                            "LineTo(300,400)",
                            "SelectObject(pen default)"};
    EXPECT_TRUE(SameCalls(expected, stage.Draw(label)));
}

TEST(VectorLabelDraw, EqualEndsLeaveOutTheHalfLinesOfAGapAndNothingElse) {
    Stage stage;
    OpenLabel label;
    Place(label).SetRightLabel(CGePoint2d(300, 100), CGePoint2d(100, 200));
    Calls calls = stage.Draw(label);
    EXPECT_EQ(Strokes().size() + 3 - 4, calls.size());
    EXPECT_EQ("LineTo(100,375)", calls[15]);
    EXPECT_EQ("MoveTo(300,500)", calls[16]);
    label.SetHasTextHole(false);
    calls = stage.Draw(label);
    EXPECT_EQ("MoveTo(100,400)", calls[16]);
    EXPECT_EQ("LineTo(100,400)", calls[17]);
}

TEST(VectorLabelDraw, TicksWithoutSizeAreLeftOut) {
    Stage stage;
    OpenLabel label;
    Place(label).SetLabelLength(0.0);
    const Calls calls = stage.Draw(label);
    EXPECT_FALSE(Has(calls, "FillRgn"));
    EXPECT_TRUE(Has(calls, "LineTo(100,400)")) << "the extension line ends on the dimension line";
    EXPECT_EQ(Strokes().size() + 3 - 12, calls.size());
}

TEST(VectorLabelDraw, BoundlessSizesAndPlacesDoNoHarm) {
    Stage stage;
    OpenLabel label;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const DWORD start = ::GetTickCount();
    for (double value : {nan, infinity, -infinity, 1e300, -1e300, 1e9, 3e7, -5.0}) {
        Place(label).SetLabelLength(value);
        label.SetTextShow(1);
        stage.Draw(label);
        Place(label).SetLabelWidth(value);
        stage.Draw(label);
        Place(label).SetTextHoleWidth(value);
        stage.Draw(label);
        Place(label).SetLeftLabelStartPt(CGePoint2d(value, 0));
        stage.Draw(label);
        Place(label).SetLeftLabelEntPt(CGePoint2d(value, value));
        stage.Draw(label);
        label.SetRightLabelEndPt(CGePoint2d(-value, value));
        stage.Draw(label);
    }
    Place(label);
    for (float scale : {0.0f, -1.0f, 1e-30f, 1e30f}) {
        stage.Zoom(scale);
        stage.Draw(label);
    }
    EXPECT_LT(::GetTickCount() - start, 20000u) << "a region of each scan line up to there would take minutes";
}

TEST(VectorLabelDraw, ATickFarLargerThanTheWindowIsFilledWhereItIsVisible) {
    Scene scene;
    OpenLabel label;
    Canvas canvas(200, 200, RGB(0, 0, 0));
    scene.tran.SethScreen(200);
    // The tick runs along the diagonal through (100, 100), a million pixels to either side, 20 to either side wide.
    label.SetLeftLabel(CGePoint2d(100, 0), CGePoint2d(100, 100));
    label.SetRightLabel(CGePoint2d(5000, 0), CGePoint2d(5000, 100));
    label.SetLabelLength(1e6);
    label.SetLabelWidth(40.0);
    label.SetPenColor(RGB(0, 0, 255));
    label.Draw(&canvas.DC(), &scene.geometry);
    EXPECT_EQ(RGB(255, 255, 255), canvas.At(110, 110));
    EXPECT_EQ(RGB(255, 255, 255), canvas.At(20, 180));
    EXPECT_EQ(RGB(255, 255, 255), canvas.At(180, 20));
    EXPECT_EQ(RGB(0, 0, 0), canvas.At(20, 70));
    EXPECT_EQ(RGB(0, 0, 0), canvas.At(180, 130));
}

// ---- The figure ----------------------------------------------------------------------------------------------------

TEST(VectorLabelDraw, TheFigureOfUpwardExtensionLinesIsAHundredUnitsBeyondTheLine) {
    Stage stage;
    OpenLabel label;
    Place(label).SetTextShow(1);
    const Calls calls = stage.Draw(label);
    // The middle (200, 200), lifted by 100, moved back by 40 for three characters: pixel (160, 300).
    EXPECT_TRUE(
        SameCalls(Sequence({"SetBkMode(1)", "SelectObject(pen style=0 width=1 color=0x00FFFFFF)"}, Strokes(),
                           {"SelectObject(pen default)", "SetBkMode(1)", "SetBkColor(0x00FFFFFF)",
                            "SelectObject(font height=100 width=0 escapement=0 weight=400 italic=0 face=\"宋体\")",
                            "SetTextColor(0x00000000)", "TextOut(160,300,\"200\")", "SelectObject(font default)",
                            "SetTextColor(0x00000000)"}),
                  calls));
}

TEST(VectorLabelDraw, TheFigureOfDownwardOrLevelExtensionLinesIsOnTheLine) {
    Stage stage;
    OpenLabel label;
    Place(label).SetTextShow(1);
    label.SetLeftLabelStartPt(CGePoint2d(100, 300)); // 3/2 pi
    EXPECT_EQ("TextOut(160,400,\"200\")", FigureOf(stage.Draw(label)).text);
    label.SetLeftLabelStartPt(CGePoint2d(150, 200)); // Half a turn: the comparison is one of equal angles.
    EXPECT_EQ("TextOut(160,400,\"200\")", FigureOf(stage.Draw(label)).text);
    label.SetLeftLabelStartPt(CGePoint2d(50, 200)); // 0: to the right, so the figure moves on by 100.
    EXPECT_EQ("TextOut(260,400,\"200\")", FigureOf(stage.Draw(label)).text);
    label.SetLeftLabelStartPt(CGePoint2d(100, 200)); // No direction at all.
    EXPECT_EQ("TextOut(160,400,\"200\")", FigureOf(stage.Draw(label)).text);
}

TEST(VectorLabelDraw, TheFigureTurnsWithTheDimensionLine) {
    Stage stage;
    OpenLabel label;
    label.SetTextShow(1);
    // Upwards: extension lines to the left (half a turn, so the figure stays on the line), the line from below up.
    label.SetLeftLabel(CGePoint2d(400, 100), CGePoint2d(300, 100));
    label.SetRightLabel(CGePoint2d(400, 350), CGePoint2d(300, 350));
    Figure figure = FigureOf(stage.Draw(label));
    EXPECT_NE(std::string::npos, figure.font.find("escapement=900 "));
    EXPECT_EQ("TextOut(300,415,\"250\")", figure.text) << "the middle (300, 225), 40 back along the line";
    // From above down.
    label.SetLeftLabel(CGePoint2d(400, 350), CGePoint2d(300, 350));
    label.SetRightLabel(CGePoint2d(400, 100), CGePoint2d(300, 100));
    figure = FigureOf(stage.Draw(label));
    // The full turn has ten digits, so that this angle comes out as 269.99999999 degrees, which as a float is 270.
    EXPECT_NE(std::string::npos, figure.font.find("escapement=2700 ")) << figure.font;
    // From right to left: half a turn.
    label.SetLeftLabel(CGePoint2d(400, 50), CGePoint2d(400, 100));
    label.SetRightLabel(CGePoint2d(150, 50), CGePoint2d(150, 100));
    figure = FigureOf(stage.Draw(label));
    EXPECT_NE(std::string::npos, figure.font.find("escapement=1800 ")) << figure.font;
    EXPECT_EQ("TextOut(315,400,\"250\")", figure.text) << "the middle (275, 100) lifted by 100, 40 back";
}

TEST(VectorLabelDraw, TheFigureIsTheRoundedDistanceWithoutUnitOrDecimals) {
    Stage stage;
    OpenLabel label;
    label.SetTextShow(1);
    const struct {
        double length;
        const char* text;
    } figures[] = {{1234.5, "TextOut(537,500,\"1235\")"}, // 617.25 less 80
                   {1234.4, "TextOut(537,500,\"1234\")"},
                   {99.4, "TextOut(9,500,\"99\")"},  // 49.7 less 40
                   {9.5, "TextOut(-35,500,\"10\")"}, // 4.75 less 40
                   {0.4, "TextOut(0,500,\"0\")"}};   // One character: nothing back
    for (const auto& figure : figures) {
        label.SetLeftLabel(CGePoint2d(0, -10), CGePoint2d(0, 0));
        label.SetRightLabel(CGePoint2d(figure.length, -10), CGePoint2d(figure.length, 0));
        EXPECT_EQ(figure.text, FigureOf(stage.Draw(label)).text);
    }
}

TEST(VectorLabelDraw, TheFigureHasTheStoredColourNotTheResolvedOne) {
    Stage stage;
    OpenLabel label;
    Place(label).SetTextShow(1);
    label.SetPenColor(0x00123456);
    EXPECT_EQ("SetTextColor(0x00123456)", FigureOf(stage.Draw(label)).color);
    label.SetPenColorIndex(-1);
    const Calls calls = stage.Draw(label);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00FFFFFF)", calls[1]) << "the layer's white";
    EXPECT_EQ("SetTextColor(0x00123456)", FigureOf(calls).color);
}

TEST(VectorLabelDraw, TheFigureOfASelectedLabelIsDrawnInItsOwnState) {
    Stage stage;
    OpenLabel label;
    Place(label).SetTextShow(1);
    label.SetSelected(1);
    const Calls calls = stage.Draw(label);
    EXPECT_EQ("TextOut(160,300,\"200\")", FigureOf(calls).text);
    int grips = 0;
    for (const std::string& call : calls) {
        grips += call.compare(0, 9, "Rectangle") == 0;
    }
    EXPECT_EQ(2, grips) << "none for the figure";
}

TEST(VectorLabelDraw, TheFigureAsDrawnCanBeHit) {
    Stage stage;
    OpenLabel label;
    Place(label).SetTextShow(1);
    EXPECT_NE(0.0f, label.HitTest(CGePoint2d(165, 290)));
    stage.Draw(label);
    // From (160, 300), 20 wide: the width of a new text.
    EXPECT_EQ(0.0f, label.HitTest(CGePoint2d(165, 290)));
    EXPECT_NE(0.0f, label.HitTest(CGePoint2d(185, 290)));
}

TEST(VectorLabelDraw, ALabelWithoutDimensionLineHasAnInvisibleFigure) {
    Stage stage;
    OpenLabel label;
    Place(label).SetTextShow(1);
    label.SetRightLabelEndPt(label.GetLeftLabelEntPt());
    EXPECT_EQ("TextOut(-2147483648,-2147483648,\"0\")", FigureOf(stage.Draw(label)).text);
    EXPECT_EQ(0.0f, label.HitTest(CGePoint2d(100, 150))) << "the left extension line";
}

// ---- Filling -------------------------------------------------------------------------------------------------------

TEST(VectorLabelDraw, TheInsideOfATickIsWhiteWhateverThePen) {
    Scene scene;
    OpenLabel label;
    Place(label).SetLabelWidth(12.0);
    label.SetPenColor(RGB(0, 0, 255));
    Canvas canvas(800, 600, RGB(0, 0, 0));
    label.Draw(&canvas.DC(), &scene.geometry);
    EXPECT_EQ(RGB(255, 255, 255), canvas.At(106, 394)) << "on the tick around B, off the lines";
    EXPECT_EQ(RGB(255, 255, 255), canvas.At(294, 406));
    EXPECT_EQ(RGB(0, 0, 0), canvas.At(90, 390)) << "across it";
}

TEST(VectorLabelDraw, AMetafileHoldsTheRegionAndItsBrush) {
    Scene scene;
    OpenLabel label;
    Place(label);
    const HDC file = ::CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    CDC dc;
    ASSERT_TRUE(dc.Attach(file));
    label.Draw(&dc, &scene.geometry);
    dc.Detach();
    const HENHMETAFILE meta = ::CloseEnhMetaFile(file);
    struct Found {
        std::vector<HRGN> regions;
        COLORREF color = 0;
    } found;
    ::EnumEnhMetaFile(
        nullptr, meta,
        [](HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM context) -> int {
            auto* result = reinterpret_cast<Found*>(context);
            if (record->iType == EMR_FILLRGN) {
                const auto* fill = reinterpret_cast<const EMRFILLRGN*>(record);
                result->regions.push_back(
                    ::ExtCreateRegion(nullptr, fill->cbRgnData, reinterpret_cast<const RGNDATA*>(fill->RgnData)));
            } else if (record->iType == EMR_CREATEBRUSHINDIRECT) {
                result->color = reinterpret_cast<const EMRCREATEBRUSHINDIRECT*>(record)->lb.lbColor;
            }
            return 1;
        },
        &found, nullptr);
    ::DeleteEnhMetaFile(meta);
    ASSERT_EQ(2u, found.regions.size());
    const Bar left({108, 388}, {111, 391}, {91, 411}, {88, 408});
    const Bar right({308, 388}, {311, 391}, {291, 411}, {288, 408});
    EXPECT_TRUE(::EqualRgn(left.region, found.regions[0]));
    EXPECT_TRUE(::EqualRgn(right.region, found.regions[1]));
    for (const HRGN region : found.regions) {
        ::DeleteObject(region);
    }
    EXPECT_EQ(RGB(255, 255, 255), found.color);
}

TEST(VectorLabelDraw, PaintsLeakNoPensBrushesAndRegions) {
    Scene scene;
    RecordingDC dc(8, 8);
    dc.SetExecution(false);
    OpenLabel label;
    Place(label);
    for (int i = 0; i < 25000; ++i) { // Five objects each.
        dc.Clear();
        label.Draw(&dc, &scene.geometry);
        if (dc.Calls().size() != Strokes().size() + 3 || dc.Calls()[7] != Strokes()[5]) {
            ADD_FAILURE() << "paint " << i;
            break;
        }
    }
}

// ---- Failures ------------------------------------------------------------------------------------------------------

namespace {

class FailingLabelDC : public RecordingDC {
public:
    explicit FailingLabelDC(bool inGrips) : m_inGrips(inGrips) {}
    BOOL LineTo(int x, int y) override {
        if (!m_inGrips) {
            AfxThrowResourceException();
        }
        return RecordingDC::LineTo(x, y);
    }
    BOOL Rectangle(int, int, int, int) override {
        AfxThrowResourceException();
        return FALSE;
    }

private:
    bool m_inGrips;
};

} // namespace

TEST(DesktopVectorLabelDraw, AFailureIsShownUnderTheNameOfTheLine) {
    Scene scene;
    OpenLabel label;
    Place(label).SetSelected(1);
    {
        BoxAnswer boxes({IDOK});
        FailingLabelDC dc(false);
        const HGDIOBJ pen = ::GetCurrentObject(dc.m_hDC, OBJ_PEN);
        label.Draw(&dc, &scene.geometry);
        ASSERT_EQ(1u, boxes.Texts().size());
        EXPECT_EQ(u8"CLine::Draw出错:step=1", boxes.Texts()[0]);
        EXPECT_EQ(pen, ::GetCurrentObject(dc.m_hDC, OBJ_PEN));
    }
    {
        BoxAnswer boxes({IDOK});
        FailingLabelDC dc(true);
        label.Draw(&dc, &scene.geometry);
        ASSERT_EQ(1u, boxes.Texts().size());
        EXPECT_EQ(u8"CLine::Draw出错:step=2", boxes.Texts()[0]);
    }
    {
        BoxAnswer boxes({IDOK});
        FailingLabelDC dc(false);
        const HGDIOBJ pen = ::GetCurrentObject(dc.m_hDC, OBJ_PEN);
        label.SetDrawState(CDrawable::Dragging);
        label.Draw(&dc, &scene.geometry);
        ASSERT_EQ(1u, boxes.Texts().size());
        EXPECT_EQ(u8"CLine::Draw出错:step=1", boxes.Texts()[0]);
        EXPECT_EQ(pen, ::GetCurrentObject(dc.m_hDC, OBJ_PEN));
        EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
        EXPECT_EQ(OPAQUE, dc.GetBkMode()) << "a dragged label puts all three back";
    }
    BoxAnswer boxes({IDOK});
    RecordingDC dc;
    label.SetLayer(-1);
    label.Draw(&dc, &scene.geometry);
    ASSERT_EQ(1u, boxes.Texts().size());
    EXPECT_EQ(u8"CLine::Draw出错:step=0", boxes.Texts()[0]);
}
