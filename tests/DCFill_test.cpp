// Pens wider than a device: their strokes cover what GDI's cover, once, and take milliseconds.

#include "support/PixelCompare.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

int Different(const Picture& a, const Picture& b) {
    const std::vector<DWORD> p = a.dc.Pixels();
    const std::vector<DWORD> q = b.dc.Pixels();
    int count = 0;
    for (size_t i = 0; i < p.size(); ++i) {
        count += p[i] != q[i];
    }
    return count;
}

} // namespace

TEST(DCFill, ALineOfAGiantPenCoversWhatGdisLineCovers) {
    // Width 3000: the edge runs through the picture, which has 200 by 150 pixels.
    const int lines[][4] = {{-5000, -1400, 5000, -1400}, {1580, -9000, 1580, 9000}, {-1000, -1000, 900, -1130},
                            {-900, -1000, -900, -1000},  {2000, -900, 9000, 4000},  {1000, 1000, 1600, 1500}};
    for (const auto& line : lines) {
        Picture layer;
        Picture bare;
        layer.Ink(PS_SOLID, 3000);
        bare.Ink(PS_SOLID, 3000);
        layer.dc.MoveTo(line[0], line[1]);
        layer.dc.LineTo(line[2], line[3]);
        ::MoveToEx(bare.dc.m_hDC, line[0], line[1], nullptr);
        ::LineTo(bare.dc.m_hDC, line[2], line[3]);
        EXPECT_EQ(0, FarFromEachOther(layer, bare)) << line[0] << "," << line[1];
        EXPECT_LE(Different(layer, bare), 350) << line[0] << "," << line[1] << ": an edge, one pixel off";
    }
}

TEST(DCFill, AnUprightLineOfAGiantPenHasExactlyItsWidth) {
    Picture picture(200, 40);
    picture.Ink(PS_SOLID, 1500);
    picture.dc.MoveTo(800, -3000);
    picture.dc.LineTo(800, 3000);
    // From 800 - 750 on, its left edge included: columns 50 to 199 of each row.
    EXPECT_EQ(150 * 40, picture.Inked());
    EXPECT_EQ(0xFFFFFFu, picture.dc.Pixel(49, 20));
    EXPECT_EQ(0x302010u, picture.dc.Pixel(50, 20));
}

TEST(DCFill, AnArcOfAGiantPenCoversWhatGdisArcCovers) {
    // The upper left halves of circles. The outer edges are at row 50 (radius 2400 around (100, 2450)) and at row 90
    // (radius 1500 around (100, 1590)), the inner one of the third at column 145 (radius 1655 around (1800, 75)).
    const int boxes[][4] = {{-1500, 850, 1700, 4050}, {-600, 890, 800, 2290}, {-655, -2380, 4255, 2530}};
    for (const auto& box : boxes) {
        Picture layer;
        Picture bare;
        layer.Ink(PS_SOLID, 1600);
        bare.Ink(PS_SOLID, 1600);
        layer.dc.Arc(box[0], box[1], box[2], box[3], box[2], box[1], box[0], box[3]);
        ::Arc(bare.dc.m_hDC, box[0], box[1], box[2], box[3], box[2], box[1], box[0], box[3]);
        EXPECT_GT(bare.Inked(), 0) << box[0];
        EXPECT_LT(layer.Inked(), 200 * 150) << box[0];
        EXPECT_LE(FarFromEachOther(layer, bare), 10) << box[0];
        EXPECT_LE(Different(layer, bare), 700) << box[0];
    }
}

TEST(DCFill, AGiantStrokeInvertsEachPixelOnceAndASecondOneTakesItOff) {
    Picture picture;
    picture.Ink(PS_SOLID, 1600);
    picture.dc.SelectStockObject(NULL_BRUSH);
    const std::vector<DWORD> before = picture.dc.Pixels();
    picture.dc.SetROP2(R2_NOT);
    // A circle of radius 100, of which all of the picture is under the pen many times over.
    const auto circle = [&] { picture.dc.Arc(0, 0, 200, 200, 200, 100, 200, 100); };
    const auto line = [&] {
        picture.dc.MoveTo(-2000, -700);
        picture.dc.LineTo(4000, -700);
    };
    circle();
    EXPECT_EQ(200 * 150, picture.Inked());
    // Rows 0 to 99, 800 below the line, turn white again.
    line();
    EXPECT_EQ(200 * 50, picture.Inked());
    circle();
    EXPECT_EQ(200 * 100, picture.Inked());
    line();
    EXPECT_TRUE(before == picture.dc.Pixels());
}

TEST(DCFill, AGiantStrokeStaysWithinTheClipRegion) {
    Picture picture;
    picture.Ink(PS_SOLID, 5000);
    CRgn region;
    CRgn hole;
    region.CreateRectRgn(10, 10, 60, 60);
    hole.CreateRectRgn(20, 20, 30, 30);
    region.CombineRgn(&region, &hole, RGN_DIFF);
    picture.dc.SelectClipRgn(&region);
    picture.dc.MoveTo(0, 0);
    picture.dc.LineTo(300, 200);
    EXPECT_EQ(50 * 50 - 10 * 10, picture.Inked());
    CRgn nothing;
    nothing.CreateRectRgn(0, 0, 0, 0);
    picture.dc.SelectClipRgn(&nothing);
    EXPECT_TRUE(picture.dc.LineTo(0, 0));
    EXPECT_EQ(50 * 50 - 10 * 10, picture.Inked());
}

TEST(DCFill, APenThatTheMappingMakesGiantIsDrawnAsSuch) {
    Picture picture;
    picture.Ink(PS_SOLID, 20);
    picture.dc.SetMapMode(MM_ANISOTROPIC);
    picture.dc.SetWindowExt(1, 1);
    picture.dc.SetViewportExt(100, -100);
    // 2000 pixels wide along the row 1100: down from row 100.
    picture.dc.MoveTo(-100, -11);
    picture.dc.LineTo(100, -11);
    EXPECT_EQ(200 * 50, picture.Inked());
    EXPECT_EQ(0xFFFFFFu, picture.dc.Pixel(100, 99));
    EXPECT_EQ(0x302010u, picture.dc.Pixel(100, 100));
}

TEST(DCFill, GiantPensAreDrawnQuickly) {
    Picture picture(800, 600);
    picture.dc.SelectStockObject(NULL_BRUSH);
    for (const int width : {10000, 30000, 100000, 1000000000}) {
        picture.Ink(PS_SOLID, width);
        const ULONGLONG begin = ::GetTickCount64();
        for (int i = 0; i < 10; ++i) {
            picture.dc.MoveTo(10, 10);
            picture.dc.LineTo(700, 500 + i);
            picture.dc.Arc(100, 100, 400, 400 + i, 400, 250, 100, 200);
            picture.dc.Arc(-20000, -20000, 20400, 20400 + i, 400, 250, 100, 200);
            picture.dc.Ellipse(-2000000000, -2000000000, 2000000000, 2000000000 - i);
        }
        const ULONGLONG time = ::GetTickCount64() - begin;
        RecordProperty("width_" + std::to_string(width) + "_milliseconds", std::to_string(time));
        EXPECT_LT(time, 10000u) << width << ": bare GDI takes seconds for each of the twenty arcs";
    }
}
