// Where the ink of texts and labels is on a picture, and what the faces show.

#include "support/BoxAnswer.h"
#include "support/TextObjects.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr int kSize = 1200;
constexpr int kTolerance = 2;

// The insertion point in the middle of a picture; the ink's box around it.
CRect InkAround(CDrawable& object, Scene& scene, double x, double y) {
    Canvas canvas(kSize, kSize);
    scene.tran.SethScreen(kSize);
    object.Draw(&canvas.DC(), &scene.geometry);
    int px = 0;
    int py = 0;
    scene.tran.DPToLP(x, y, &px, &py);
    CRect ink = canvas.Ink();
    ink.OffsetRect(-px, -py);
    return ink;
}

void ExpectNear(const CRect& expected, const CRect& actual) {
    EXPECT_NEAR(expected.left, actual.left, kTolerance);
    EXPECT_NEAR(expected.top, actual.top, kTolerance);
    EXPECT_NEAR(expected.right, actual.right, kTolerance);
    EXPECT_NEAR(expected.bottom, actual.bottom, kTolerance);
}

// All pixels of one character in a face.
std::vector<COLORREF> Glyph(LPCWSTR face, wchar_t c) {
    Scene scene;
    scene.tran.SethScreen(60);
    Canvas canvas(60, 60);
    OpenText text;
    text.SetPenColor(0);
    text.SetPos(CGePoint2d(5, 55));
    text.SetTextHeight(40.0f);
    text.SetText(CString(c));
    text.m_fontFaceName = face;
    text.Draw(&canvas.DC(), &scene.geometry);
    std::vector<COLORREF> pixels;
    for (int i = 0; i < 60 * 60; ++i) {
        pixels.push_back(canvas.At(i % 60, i / 60));
    }
    return pixels;
}

} // namespace

TEST(TextPixels, TheInkLiesInTheCellBelowAndRightOfTheInsertionPointAtEveryZoom) {
    Scene scene;
    OpenText text;
    text.SetPenColor(0);
    text.SetTextHeight(40.0f);
    text.SetText(L"中文字");
    for (float scale : {0.25f, 0.5f, 1.0f, 2.0f}) {
        scene.Zoom(scale);
        const double middle = kSize / 2 * static_cast<double>(scale);
        text.SetPos(CGePoint2d(middle, middle));
        const CRect ink = InkAround(text, scene, middle, middle);
        const int cell = static_cast<int>(40.0f / scale);
        EXPECT_GE(ink.left, -kTolerance) << scale;
        EXPECT_GE(ink.top, -kTolerance) << scale;
        EXPECT_LE(ink.bottom, cell + kTolerance) << scale;
        // Three Chinese characters are about three times as wide as high, and fill most of their squares.
        EXPECT_GT(ink.Height(), cell * 6 / 10) << scale;
        EXPECT_NEAR(3 * ink.Height(), ink.Width(), cell / 2) << scale;
    }
}

TEST(TextPixels, TheInkScalesWithTheHeight) {
    Scene scene;
    OpenText text;
    text.SetPenColor(0);
    text.SetPos(CGePoint2d(600, 600));
    text.SetText(L"国");
    text.SetTextHeight(200.0f);
    const CRect large = InkAround(text, scene, 600, 600);
    text.SetTextHeight(50.0f);
    const CRect small = InkAround(text, scene, 600, 600);
    ExpectNear(CRect(large.left / 4, large.top / 4, large.right / 4, large.bottom / 4), small);
}

TEST(TextPixels, TheInkTurnsAboutTheInsertionPoint) {
    Scene scene;
    OpenText text;
    text.SetPenColor(0);
    text.SetPos(CGePoint2d(600, 600));
    text.SetTextHeight(60.0f);
    text.SetText(L"转动7");
    const CRect upright = InkAround(text, scene, 600, 600);
    ASSERT_GT(upright.Width(), upright.Height());
    // A quarter turn anticlockwise takes right to up, and down to right.
    text.SetAngle(90.0f);
    ExpectNear(CRect(upright.top, -upright.right, upright.bottom, -upright.left), InkAround(text, scene, 600, 600));
    text.SetAngle(180.0f);
    ExpectNear(CRect(-upright.right, -upright.bottom, -upright.left, -upright.top), InkAround(text, scene, 600, 600));
    text.SetAngle(-90.0f);
    ExpectNear(CRect(-upright.bottom, upright.left, -upright.top, upright.right), InkAround(text, scene, 600, 600));
    // At 45 degrees the far end of the run is as far up as it is to the right.
    text.SetText(L"一一一一一一一一");
    text.SetAngle(45.0f);
    const CRect slanted = InkAround(text, scene, 600, 600);
    EXPECT_NEAR(slanted.right, -slanted.top, 60) << "the run's thickness apart";
    EXPECT_GT(slanted.right, 200);
}

TEST(TextPixels, ATextOfOnePixelLeavesSomethingOrNothingAndDoesNotSpread) {
    Scene scene;
    OpenText text;
    text.SetPenColor(0);
    text.SetTextHeight(0.001f);
    text.SetPos(CGePoint2d(600, 600));
    text.SetText(L"abc中");
    const CRect ink = InkAround(text, scene, 600, 600);
    EXPECT_LE(ink.Height(), 3);
    EXPECT_LE(ink.Width(), 12);
}

TEST(TextPixels, TheTextHasItsColour) {
    Scene scene;
    Canvas canvas;
    OpenText text;
    text.SetPos(CGePoint2d(100, 500));
    text.SetTextHeight(100.0f);
    text.SetText(L"田");
    text.SetPenColor(RGB(200, 0, 50));
    text.Draw(&canvas.DC(), &scene.geometry);
    EXPECT_GT(canvas.Count(RGB(200, 0, 50)), 500);
}

TEST(TextPixels, AnOpaqueTextCoversItsGround) {
    Scene scene;
    Canvas canvas(800, 600, RGB(0, 0, 0));
    OpenText text;
    text.SetPos(CGePoint2d(100, 500));
    text.SetTextHeight(50.0f);
    text.SetText(L"ground");
    text.SetBKMode(OPAQUE);
    text.SetBKColor(RGB(0, 100, 0));
    text.SetPenColor(RGB(255, 255, 255));
    text.Draw(&canvas.DC(), &scene.geometry);
    EXPECT_EQ(RGB(0, 100, 0), canvas.At(101, 101));
    EXPECT_EQ(RGB(0, 0, 0), canvas.At(98, 101));
    OpenParm parm;
    parm.SetPos(CGePoint2d(100, 300));
    parm.SetTextHeight(50.0f);
    parm.SetText(L"ground");
    parm.SetBKMode(OPAQUE);
    parm.SetBKColor(RGB(0, 100, 0));
    parm.Draw(&canvas.DC(), &scene.geometry);
    EXPECT_EQ(RGB(0, 0, 0), canvas.At(101, 301)) << "a parameter never";
}

TEST(TextPixels, ADraggedTextIsErasedByASecondDrawing) {
    Scene scene;
    Canvas canvas(800, 600, RGB(30, 60, 90));
    OpenText text;
    text.SetPos(CGePoint2d(100, 300));
    text.SetTextWide(400.0f);
    text.SetDrawState(CDrawable::Dragging);
    text.Draw(&canvas.DC(), &scene.geometry);
    const CRect ink = canvas.Ink();
    EXPECT_EQ(CRect(100, 300, ink.right, 301), ink);
    EXPECT_NEAR(500, ink.right, 8) << "dots";
    EXPECT_EQ(RGB(225, 195, 165), canvas.At(100, 300));
    text.Draw(&canvas.DC(), &scene.geometry);
    EXPECT_TRUE(canvas.Ink().IsRectEmpty());
}

TEST(TextPixels, ChineseShowsAsChineseInTheDefaultFaceAndInOthers) {
    // A face without a character shows the same box for each.
    for (LPCWSTR face : {L"宋体", L"SimSun", L"Arial", L"黑体", L"no such face"}) {
        const std::vector<COLORREF> first = Glyph(face, L'中');
        EXPECT_FALSE(first == Glyph(face, L'文')) << Utf8(face);
        EXPECT_FALSE(first == Glyph(face, 0xE123)) << Utf8(face) << ": a private character that no face has";
        EXPECT_FALSE(first == std::vector<COLORREF>(60 * 60, RGB(255, 255, 255))) << Utf8(face);
    }
}

// ---- Labels --------------------------------------------------------------------------------------------------------

TEST(VectorLabelPixels, TheDimensionLineHasItsGapWhereTheSizeSays) {
    for (float scale : {0.5f, 1.0f, 2.0f}) {
        Scene scene;
        scene.Zoom(scale);
        Canvas canvas(800, 600, RGB(0, 0, 0));
        OpenLabel label;
        const auto at = [&](double pixel) { return pixel * static_cast<double>(scale); };
        // Pixels A (100, 500), B (100, 400), C (500, 500), D (500, 400); the gap from 260 to 340.
        label.SetLeftLabel(CGePoint2d(at(100), at(100)), CGePoint2d(at(100), at(200)));
        label.SetRightLabel(CGePoint2d(at(500), at(100)), CGePoint2d(at(500), at(200)));
        label.SetLabelLength(at(8));
        label.SetLabelWidth(at(3));
        label.SetTextHoleWidth(at(40));
        label.SetPenColor(RGB(0, 0, 255));
        label.Draw(&canvas.DC(), &scene.geometry);
        for (int x : {130, 200, 258, 342, 470}) {
            EXPECT_EQ(RGB(0, 0, 255), canvas.At(x, 400)) << scale << " " << x;
        }
        for (int x : {262, 300, 338, 530}) {
            EXPECT_EQ(RGB(0, 0, 0), canvas.At(x, 400)) << scale << " " << x;
        }
        // The extension lines, 20 pixels beyond the dimension line and no further.
        EXPECT_EQ(RGB(0, 0, 255), canvas.At(100, 490));
        EXPECT_EQ(RGB(0, 0, 255), canvas.At(500, 382));
        EXPECT_EQ(RGB(0, 0, 0), canvas.At(500, 377));
        // The ticks, 8 out along the diagonal from below left to above right: blue at the edge, white inside.
        for (int x : {100, 500}) {
            EXPECT_EQ(RGB(255, 255, 255), canvas.At(x - 5, 405)) << scale;
            EXPECT_EQ(RGB(255, 255, 255), canvas.At(x + 5, 395)) << scale;
            EXPECT_EQ(RGB(0, 0, 0), canvas.At(x - 11, 411)) << scale;
            EXPECT_EQ(RGB(0, 0, 0), canvas.At(x - 5, 395)) << scale << ": not across";
        }
        EXPECT_GT(canvas.Count(RGB(255, 255, 255)), 30);
    }
}

TEST(VectorLabelPixels, TheFigureIsAboveTheLineOrBesideIt) {
    Scene scene;
    OpenLabel label;
    label.SetTextShow(1);
    label.SetPenColor(RGB(0, 0, 255));
    // Right of an upright dimension line whose extension lines point to the right: 100 units on, and from above down.
    label.SetLeftLabel(CGePoint2d(100, 500), CGePoint2d(200, 500));
    label.SetRightLabel(CGePoint2d(100, 100), CGePoint2d(200, 100));
    Canvas canvas;
    label.Draw(&canvas.DC(), &scene.geometry);
    // The figure "400" begins at the pixel (300, 260), runs downwards, and its cell of 100 is to the left of that.
    int inside = 0;
    int outside = 0;
    for (int y = 0; y < 600; ++y) {
        for (int x = 215; x < 800; ++x) { // Right of the strokes.
            const bool blue = canvas.At(x, y) != RGB(255, 255, 255);
            if (x < 302 && y >= 258 && y < 258 + 3 * 75) {
                inside += blue;
            } else {
                outside += blue;
            }
        }
    }
    EXPECT_GT(inside, 500);
    EXPECT_EQ(0, outside);
}
