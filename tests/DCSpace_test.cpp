// What is far is measured on the device: under every mapping, on metafiles and in paths a stroke is what bare GDI makes
// of it.

#include "support/PixelCompare.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace {

struct Mapping {
    const char* name;
    std::function<void(HDC)> set;
};

void Scale(HDC dc, int units, int pixels) {
    ::SetMapMode(dc, MM_ANISOTROPIC);
    ::SetWindowExtEx(dc, units, units, nullptr);
    ::SetViewportExtEx(dc, pixels, pixels, nullptr);
}

void World(HDC dc, float m11, float m12, float m21, float m22, float dx, float dy) {
    const XFORM form = {m11, m12, m21, m22, dx, dy};
    ::SetGraphicsMode(dc, GM_ADVANCED);
    ASSERT_TRUE(::SetWorldTransform(dc, &form));
}

int Played(HMETAFILE file) {
    Picture picture;
    ::PlayMetaFile(picture.dc.m_hDC, file);
    ::DeleteMetaFile(file);
    return picture.Inked();
}

int Played(HENHMETAFILE file) {
    // At its own size and place: the frame in hundredths of a millimetre is the header's bounds in pixels.
    ENHMETAHEADER header = {};
    ::GetEnhMetaFileHeader(file, sizeof(header), &header);
    const RECT bounds = {header.rclBounds.left, header.rclBounds.top, header.rclBounds.right, header.rclBounds.bottom};
    Picture picture;
    ::PlayEnhMetaFile(picture.dc.m_hDC, file, &bounds);
    ::DeleteEnhMetaFile(file);
    return picture.Inked();
}

std::vector<POINT> PathOf(HDC dc, std::vector<BYTE>& types) {
    const int count = ::GetPath(dc, nullptr, nullptr, 0);
    std::vector<POINT> points(static_cast<size_t>(std::max(count, 0)));
    types.resize(points.size());
    ::GetPath(dc, points.data(), types.data(), count);
    return points;
}

} // namespace

TEST(DCSpace, ALineUnderAMovedOriginIsDrawnAsByGdi) {
    const Mapping mappings[] = {{"window origin", [](HDC dc) { ::SetWindowOrgEx(dc, 40000, 0, nullptr); }},
                                {"viewport origin", [](HDC dc) { ::SetViewportOrgEx(dc, -40000, 0, nullptr); }},
                                {"world transform", [](HDC dc) { World(dc, 1, 0, 0, 1, -40000, 0); }}};
    for (const Mapping& mapping : mappings) {
        Picture picture;
        picture.Ink(PS_SOLID, 1);
        mapping.set(picture.dc.m_hDC);
        picture.dc.MoveTo(40010, 100);
        picture.dc.LineTo(40150, 100);
        EXPECT_EQ(140, picture.Inked()) << mapping.name;
        EXPECT_EQ(0x302010u, picture.dc.Pixel(10, 100)) << mapping.name;
        EXPECT_EQ(0x302010u, picture.dc.Pixel(149, 100)) << mapping.name;
        EXPECT_EQ(CPoint(40150, 100), picture.dc.GetCurrentPosition()) << mapping.name;
    }
}

TEST(DCSpace, AScaledLineIsAsLongAsItsPixels) {
    Picture picture;
    picture.Ink(PS_SOLID, 0);
    Scale(picture.dc.m_hDC, 500, 1);
    picture.dc.MoveTo(1000, 50000);   // pixel 2
    picture.dc.LineTo(100000, 50000); // pixel 200
    EXPECT_EQ(198, picture.Inked());
}

TEST(DCSpace, AFigureThatTheDeviceShowsIsTheOneOfGdiUnderEveryMapping) {
    // An A3 page in hundredths of a millimetre, 42000 by 29700, on 200 by 142 pixels; upright and mirrored.
    const Mapping mappings[] = {{"page", [](HDC dc) { Scale(dc, 210, 1); }},
                                {"page upside down",
                                 [](HDC dc) {
                                     ::SetMapMode(dc, MM_ANISOTROPIC);
                                     ::SetWindowExtEx(dc, 210, 210, nullptr);
                                     ::SetViewportExtEx(dc, 1, -1, nullptr);
                                     ::SetViewportOrgEx(dc, 0, 149, nullptr);
                                 }},
                                {"mirrored",
                                 [](HDC dc) {
                                     ::SetMapMode(dc, MM_ANISOTROPIC);
                                     ::SetWindowExtEx(dc, -210, 210, nullptr);
                                     ::SetViewportExtEx(dc, 1, 1, nullptr);
                                     ::SetViewportOrgEx(dc, 199, 0, nullptr);
                                 }},
                                {"turned", [](HDC dc) { World(dc, 0.004f, 0.001f, -0.001f, 0.004f, 30, 5); }}};
    for (const Mapping& mapping : mappings) {
        Picture layer;
        Picture bare;
        for (Picture* picture : {&layer, &bare}) {
            picture->Ink(PS_SOLID, 400);
            picture->dc.SelectStockObject(NULL_BRUSH);
            mapping.set(picture->dc.m_hDC);
        }
        layer.dc.MoveTo(100, 29000);
        layer.dc.LineTo(41900, 33000);
        layer.dc.Arc(2000, 2000, 40000, 28000, 40000, 2000, 2000, 20000);
        layer.dc.Ellipse(36000, 100, 42000, 29000);
        ::MoveToEx(bare.dc.m_hDC, 100, 29000, nullptr);
        ::LineTo(bare.dc.m_hDC, 41900, 33000);
        ::Arc(bare.dc.m_hDC, 2000, 2000, 40000, 28000, 40000, 2000, 2000, 20000);
        ::Ellipse(bare.dc.m_hDC, 36000, 100, 42000, 29000);
        EXPECT_GT(layer.Inked(), 100) << mapping.name;
        EXPECT_TRUE(layer.dc.Pixels() == bare.dc.Pixels()) << mapping.name;
    }
}

TEST(DCSpace, AFigureFarOnTheDeviceRunsWhereGdiDrawsIt) {
    const Mapping mappings[] = {{"window origin",
                                 [](HDC dc) {
                                     Scale(dc, 1, 100);
                                     ::SetViewportOrgEx(dc, 30, -7, nullptr);
                                 }},
                                {"many pixels a unit", [](HDC dc) { Scale(dc, 1, 100); }},
                                {"many pixels a unit, upside down",
                                 [](HDC dc) {
                                     Scale(dc, 1, 100);
                                     ::SetViewportExtEx(dc, 100, -100, nullptr);
                                     ::SetViewportOrgEx(dc, 0, 150, nullptr);
                                 }},
                                {"many pixels a unit, clockwise", [](HDC dc) {
                                     Scale(dc, 1, 100);
                                     ::SetArcDirection(dc, AD_CLOCKWISE);
                                 }}};
    for (const Mapping& mapping : mappings) {
        for (int figure = 0; figure < 4; ++figure) {
            Picture layer;
            Picture bare;
            for (Picture* picture : {&layer, &bare}) {
                picture->Ink(PS_SOLID, 0);
                picture->dc.SelectStockObject(NULL_BRUSH);
                mapping.set(picture->dc.m_hDC);
            }
            // Coordinates of 400 are 40,000 pixels away.
            switch (figure) {
            case 0:
                layer.dc.MoveTo(-400, -400);
                layer.dc.LineTo(400, 401);
                ::MoveToEx(bare.dc.m_hDC, -400, -400, nullptr);
                ::LineTo(bare.dc.m_hDC, 400, 401);
                break;
            case 1:
                layer.dc.Arc(1, -400, 800, 400, 400, -800, 0, 1200);
                ::Arc(bare.dc.m_hDC, 1, -400, 800, 400, 400, -800, 0, 1200);
                break;
            case 2:
                layer.dc.Arc(1, -400, 800, 400, 0, 1200, 400, -800);
                ::Arc(bare.dc.m_hDC, 1, -400, 800, 400, 0, 1200, 400, -800);
                break;
            default:
                layer.dc.Ellipse(-800, -799, 800, 1);
                ::Ellipse(bare.dc.m_hDC, -800, -799, 800, 1);
                break;
            }
            EXPECT_NEAR(bare.Inked(), layer.Inked(), 4) << mapping.name << " " << figure;
            EXPECT_EQ(0, FarFromEachOther(layer, bare)) << mapping.name << " " << figure;
        }
    }
}

TEST(DCSpace, AFarFigureIsTurnedAndMirroredByTheWorldTransform) {
    for (const float sign : {1.0f, -1.0f}) {
        // x' = 90 x - 30 sign y + 20, y' = 30 x + 90 sign y + 10
        const auto set = [sign](HDC dc) { World(dc, 90, 30, -30 * sign, 90 * sign, 20, 10); };
        for (int figure = 0; figure < 3; ++figure) {
            Picture layer;
            Picture chords;
            layer.Ink(PS_SOLID, 0);
            chords.Ink(PS_SOLID, 0);
            layer.dc.SelectStockObject(NULL_BRUSH);
            set(layer.dc.m_hDC);
            // A circle of radius 400 around (400, 0): all of it, its half above the line through the centre, and the
            // half below it. Anticlockwise in logical units with y downwards.
            double from = 0;
            double to = 2 * 3.14159265358979;
            if (figure == 0) {
                layer.dc.Ellipse(0, -400, 800, 400);
            } else if (figure == 1) {
                layer.dc.Arc(0, -400, 800, 400, 1400, -1000, -600, 1000);
                from = to / 8;
                to = from + to / 2;
            } else {
                layer.dc.Arc(0, -400, 800, 400, -600, 1000, 1400, -1000);
                from = to * 5 / 8;
                to = from + to / 2;
            }
            for (int i = 0; i <= 20000; ++i) {
                const double t = from + (to - from) * i / 20000;
                const double x = 400 + 400 * std::cos(t);
                const double y = -400 * std::sin(t) * static_cast<double>(sign);
                const int px = static_cast<int>(std::lround(90 * x - 30 * y + 20));
                const int py = static_cast<int>(std::lround(30 * x + 90 * y + 10));
                i == 0 ? ::MoveToEx(chords.dc.m_hDC, px, py, nullptr) : ::LineTo(chords.dc.m_hDC, px, py);
            }
            // The first half alone passes through the picture. Where it leaves it a neighbour may be outside.
            EXPECT_EQ(figure == 2, chords.Inked() == 0) << figure;
            EXPECT_NEAR(chords.Inked(), layer.Inked(), 8) << sign << " " << figure;
            EXPECT_LE(FarFromEachOther(layer, chords), 2) << sign << " " << figure;
        }
        Picture line;
        Picture bare;
        for (Picture* picture : {&line, &bare}) {
            picture->Ink(PS_SOLID, 0);
            set(picture->dc.m_hDC);
        }
        line.dc.MoveTo(-400, -400);
        line.dc.LineTo(400, 401);
        ::MoveToEx(bare.dc.m_hDC, -400, -400, nullptr);
        ::LineTo(bare.dc.m_hDC, 400, 401);
        EXPECT_EQ(0, FarFromEachOther(line, bare)) << sign;
    }
}

TEST(DCSpace, APenKeepsItsWidthOnTheDeviceWhenOnlyAPartOfItsLineIsDrawn) {
    Picture layer;
    Picture bare;
    for (Picture* picture : {&layer, &bare}) {
        picture->Ink(PS_SOLID, 3);
        Scale(picture->dc.m_hDC, 1, 10);
    }
    // Row 70, thirty pixels wide, and a hundred thousand pixels long.
    layer.dc.MoveTo(-5000, 7);
    layer.dc.LineTo(5000, 7);
    ::MoveToEx(bare.dc.m_hDC, -5000, 7, nullptr);
    ::LineTo(bare.dc.m_hDC, 5000, 7);
    EXPECT_EQ(30 * 200, bare.Inked());
    EXPECT_TRUE(layer.dc.Pixels() == bare.dc.Pixels());
    LOGPEN pen = {};
    layer.dc.GetCurrentPen()->GetLogPen(&pen);
    EXPECT_EQ(3, pen.lopnWidth.x) << "the pen itself is selected again";
    EXPECT_EQ(MM_ANISOTROPIC, layer.dc.GetMapMode());
    EXPECT_EQ(CPoint(5000, 7), layer.dc.GetCurrentPosition());
}

TEST(DCSpace, APictureLargerThanSixteenBitsIsDrawnToItsEnd) {
    Picture picture(40000, 3);
    picture.Ink(PS_SOLID, 1);
    picture.dc.MoveTo(33000, 1);
    picture.dc.LineTo(50000, 1);
    EXPECT_EQ(7000, picture.Inked());
}

TEST(DCSpace, MetafilesRecordTheCallsAsTheyAreGiven) {
    for (const int from : {10, 40010}) {
        CMetaFileDC enhanced;
        enhanced.CreateEnhanced(nullptr, nullptr, nullptr, nullptr);
        enhanced.SetWindowOrg(from - 10, 0);
        enhanced.MoveTo(from, 100);
        enhanced.LineTo(from + 140, 100);
        EXPECT_EQ(140, Played(enhanced.CloseEnhanced())) << from;
        CMetaFileDC old;
        old.Create();
        old.SetWindowOrg(from - 10, 0);
        old.MoveTo(from, 100);
        old.LineTo(from + 140, 100);
        EXPECT_EQ(140, Played(old.Close())) << from;
    }
    // A long line is one record, not a part of it between two moves.
    CMetaFileDC layer;
    layer.CreateEnhanced(nullptr, nullptr, nullptr, nullptr);
    layer.MoveTo(-100000, 50);
    layer.LineTo(100000, 50);
    layer.Arc(-100000, -100000, 100000, 100000, 0, 5, 7, 9);
    const HDC bare = ::CreateEnhMetaFile(nullptr, nullptr, nullptr, nullptr);
    ::MoveToEx(bare, -100000, 50, nullptr);
    ::LineTo(bare, 100000, 50);
    ::Arc(bare, -100000, -100000, 100000, 100000, 0, 5, 7, 9);
    const HENHMETAFILE files[] = {layer.CloseEnhanced(), ::CloseEnhMetaFile(bare)};
    ENHMETAHEADER headers[2] = {};
    for (int i = 0; i < 2; ++i) {
        ::GetEnhMetaFileHeader(files[i], sizeof(headers[i]), &headers[i]);
        ::DeleteEnhMetaFile(files[i]);
    }
    EXPECT_EQ(headers[1].nRecords, headers[0].nRecords);
}

TEST(DCSpace, WhatAnOldMetafileCannotHoldIsRecordedByThePartThatItCan) {
    CMetaFileDC old;
    old.Create();
    old.MoveTo(50, -1000000);
    old.LineTo(50, 1000000); // 65536 * 15 + 16960 would come back as 16960
    old.MoveTo(0, 40);
    old.LineTo(40000, 40); // as -25536
    // The column of 150 and the row of 200 pixels have one in common.
    EXPECT_EQ(349, Played(old.Close()));
}

TEST(DCSpace, InAPathNoFigureIsSplit) {
    for (const bool byLayer : {true, false}) {
        Picture layer;
        Picture bare;
        byLayer ? layer.dc.BeginPath() : ::BeginPath(layer.dc.m_hDC);
        layer.dc.MoveTo(10, 10);
        layer.dc.LineTo(100000, 10);
        layer.dc.LineTo(100000, 100000);
        layer.dc.LineTo(20, 30);
        layer.dc.Arc(-50000, -50000, 50000, 50000, 10, 10, 20, 50);
        layer.dc.EndPath();
        ::BeginPath(bare.dc.m_hDC);
        ::MoveToEx(bare.dc.m_hDC, 10, 10, nullptr);
        ::LineTo(bare.dc.m_hDC, 100000, 10);
        ::LineTo(bare.dc.m_hDC, 100000, 100000);
        ::LineTo(bare.dc.m_hDC, 20, 30);
        ::Arc(bare.dc.m_hDC, -50000, -50000, 50000, 50000, 10, 10, 20, 50);
        ::EndPath(bare.dc.m_hDC);
        std::vector<BYTE> types[2];
        const std::vector<POINT> paths[2] = {PathOf(layer.dc.m_hDC, types[0]), PathOf(bare.dc.m_hDC, types[1])};
        ASSERT_GT(paths[1].size(), 4u);
        ASSERT_EQ(paths[1].size(), paths[0].size());
        EXPECT_EQ(types[1], types[0]);
        for (size_t i = 0; i < paths[0].size(); ++i) {
            EXPECT_EQ(CPoint(paths[1][i]), CPoint(paths[0][i])) << i;
        }
    }
}

TEST(DCSpace, AFarStrokeLeavesSelectionsMappingAndClipAsTheyWere) {
    Picture picture;
    picture.Ink(PS_DOT, 2);
    Scale(picture.dc.m_hDC, 1, 100);
    const HGDIOBJ pen = ::GetCurrentObject(picture.dc.m_hDC, OBJ_PEN);
    ::IntersectClipRect(picture.dc.m_hDC, 0, 0, 1, 1);
    for (int i = 0; i < 3000; ++i) {
        picture.dc.MoveTo(-5000, 0);
        picture.dc.LineTo(5000, 1);
    }
    EXPECT_EQ(pen, ::GetCurrentObject(picture.dc.m_hDC, OBJ_PEN));
    EXPECT_EQ(1, ::SaveDC(picture.dc.m_hDC)) << "nothing saved is left over";
    RECT box = {};
    ::GetClipBox(picture.dc.m_hDC, &box);
    EXPECT_EQ(1, box.right);
    EXPECT_EQ(1, box.bottom);
}
