// The C interface: pictures of a drawing, in each form and with each option.

#include "support/CHost.h"

#include <math.h>
#include <stdlib.h>
#include <string.h>

enum { SIDE = 100 };

// 0xAARRGGBB
static const uint32_t RED = 0xFFFF0000;
static const uint32_t GREEN = 0xFF00FF00;
static const uint32_t BLACK = 0xFF000000;
static const uint32_t WHITE = 0xFFFFFFFF;

static NrvHandle g_drawing;
static unsigned char g_bytes[1 << 20];
static uint32_t g_pixels[400 * 300];

static int Begin(void) {
    return EXPECT_INT(NRV_OK, NrvCreateDrawing(&g_drawing));
}

static void End(void) {
    EXPECT_INT(NRV_OK, NrvFreeDrawing(g_drawing));
    g_drawing = NULL;
}

static NrvPicture Default(void) {
    NrvPicture picture;
    memset(&picture, 0xEE, sizeof picture);
    picture.size = sizeof picture;
    EXPECT_INT(NRV_OK, NrvGetDefaultPicture(&picture));
    return picture;
}

// One pixel for one unit: the square from (0, 0) to (100, 100).
static NrvPicture Hundred(void) {
    NrvPicture picture = Default();
    picture.show = NRV_SHOW_WINDOW;
    picture.width = SIDE;
    picture.height = SIDE;
    picture.window.right = SIDE;
    picture.window.top = SIDE;
    return picture;
}

static NrvResult Shoot(NrvHandle handle, const NrvPicture* picture) {
    uint32_t size = 0;
    return NrvRender(handle, picture, NRV_FORMAT_PIXELS, g_pixels, sizeof g_pixels, &size, NULL);
}

static uint32_t At(int x, int y) {
    return g_pixels[y * SIDE + x];
}

static int CountOf(uint32_t color) {
    int count = 0;
    for (int i = 0; i < SIDE * SIDE; ++i) {
        count += g_pixels[i] == color;
    }
    return count;
}

static NrvId Line(double x1, double y1, double x2, double y2, uint32_t color) {
    NrvId id = 0;
    EXPECT_INT(NRV_OK, NrvAddLine(g_drawing, x1, y1, x2, y2, color, &id));
    return id;
}

// The picture of a format in g_bytes; its length.
static uint32_t Bytes(const NrvPicture* picture, int32_t format) {
    uint32_t size = 0;
    memset(g_bytes, 0, sizeof g_bytes);
    EXPECT_INT(NRV_OK, NrvRender(g_drawing, picture, format, g_bytes, sizeof g_bytes - 1, &size, NULL));
    return size;
}

static uint32_t BigEndian(const unsigned char* at) {
    return (uint32_t)at[0] << 24 | (uint32_t)at[1] << 16 | (uint32_t)at[2] << 8 | at[3];
}

// ---- What is shown ----

C_TEST(CapiPicture, TheDefaultIsTheWholeDrawingAsStored) {
    const NrvPicture p = Default();
    EXPECT_INT(sizeof p, p.size);
    EXPECT_INT(NRV_SHOW_FIT, p.show);
    EXPECT_INT(1024, p.width);
    EXPECT_INT(768, p.height);
    EXPECT_NEAR_TO(0, p.scale, 0);
    EXPECT_INT(0, p.keep_size);
    EXPECT_INT(15, p.margin);
    EXPECT_INT(0, p.margin_in_pixels);
    EXPECT_INT(NRV_COLORS_STORED, p.colors);
    EXPECT_INT(NRV_GROUND_DRAWING, p.ground);
    EXPECT_INT(0xFFFFFF, p.ground_color);
    EXPECT_NEAR_TO(1, p.line_width_scale, 0);
    EXPECT_INT(1, p.least_line_width);
    EXPECT_INT(0, p.selected_only);
    EXPECT_INT(1, p.net);
    EXPECT_INT(0, p.grips);
    EXPECT_INT(-1, p.decimals);
    EXPECT_INT(0, p.reserved);
}

C_TEST(CapiPicture, AWindowIsShownWithItsLowerLeftCornerBelowTheLastRow) {
    const NrvPicture picture = Hundred();
    REQUIRE(Begin());
    Line(10, 50, 90, 50, 0xFF0000);
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &picture));
    EXPECT_INT(80, CountOf(RED)); // GDI leaves the last pixel of a line out.
    EXPECT_INT(RED, At(10, 50));  // Row 100 - 50.
    EXPECT_INT(RED, At(89, 50));
    EXPECT_INT(BLACK, At(90, 50));
    EXPECT_INT(SIDE * SIDE - 80, CountOf(BLACK));
    End();
}

C_TEST(CapiPicture, TheSizeAndTheMappingAreMeasured) {
    NrvPicture p = Default();
    NrvPictureResult r;
    memset(&r, 0xEE, sizeof r);
    r.size = sizeof r;
    REQUIRE(Begin());
    Line(0, 0, 200, 50, 0xFF0000);
    p.width = 800;
    p.height = 0; // As the drawing: 200 by 50.
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_INT(800, r.width);
    EXPECT_INT(200, r.height);
    EXPECT_INT(0, r.left_out);
    EXPECT_INT(sizeof r, r.size);
    p.width = 0;
    p.height = 100;
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_INT(400, r.width);
    p.scale = 0.5; // 400 by 100 pixels, and 20 of margin.
    p.margin = 20;
    p.margin_in_pixels = 1;
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_INT(420, r.width);
    EXPECT_INT(120, r.height);
    EXPECT_NEAR_TO(0.5, r.scale, 0);
    EXPECT_NEAR_TO(-5, r.origin_x, 0); // 10 pixels.
    EXPECT_NEAR_TO(-5, r.origin_y, 0);
    p.keep_size = 1; // In the middle of the given size: 100 units wide, 25 high, the middle at (100, 25).
    p.width = 1000;
    p.height = 300;
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_INT(1000, r.width);
    EXPECT_INT(300, r.height);
    EXPECT_NEAR_TO(-150, r.origin_x, 0); // 100 - 500 * 0.5
    EXPECT_NEAR_TO(-50, r.origin_y, 0);  // 25 - 150 * 0.5
    p.scale = 0;
    p.width = 220;
    p.height = 300;
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_NEAR_TO(1, r.scale, 0); // 200 units on 220 - 20 pixels.
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, NULL, &r));
    EXPECT_INT(1024, r.width);
    EXPECT_INT(768, r.height);
    End();
}

C_TEST(CapiPicture, AMarginInPercentIsThatOfTheZoom) {
    NrvPicture p = Default();
    NrvPictureResult r = {sizeof r, 0, 0, 0, 0, 0, 0};
    REQUIRE(Begin());
    Line(0, 0, 1000, 500, 0xFF0000);
    p.width = 1100;
    p.height = 500; // 15 percent of it are 75 pixels: 500 units on 425.
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_NEAR_TO(1.1764706, r.scale, 1e-6);
    End();
}

// Every pixel of the window.
C_TEST(CapiPicture, AViewIsRenderedAsItsWindowShowsIt) {
    CHost host;
    NrvPicture p = Default();
    NrvPoint bow[3] = {{20, 20}, {120, 40}, {180, 250}};
    const double bulges[3] = {0.5, 0, -0.3};
    int different = 0;
    int inked = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvSetBackground(host.view, 0x102030));
    EXPECT_INT(NRV_OK, NrvAddNetLine(host.view, 0, 100, 400, 100, 0x404040, NULL));
    EXPECT_INT(NRV_OK, NrvAddPolyline(host.view, bow, bulges, 3, 1, 0xFFFF00, NULL));
    EXPECT_INT(NRV_OK, NrvAddCircle(host.view, 300, 150, 60, 0x00FF00, NULL));
    EXPECT_INT(NRV_OK, NrvAddText(host.view, 200, 280, L"Text", 30, 24, 0xFFFFFF, NULL));
    UpdateWindow(host.view);
    p.show = NRV_SHOW_MAPPING;
    p.width = 400;
    p.height = 300;
    EXPECT_INT(NRV_OK, Shoot(host.view, &p));
    const HDC dc = GetDC(host.view);
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 400; ++x) {
            const COLORREF seen = GetPixel(dc, x, y);
            different +=
                g_pixels[y * 400 + x] != NRV_RGB(GetRValue(seen), GetGValue(seen), GetBValue(seen)) + 0xFF000000u;
            inked += seen != RGB(0x10, 0x20, 0x30);
        }
    }
    ReleaseDC(host.view, dc);
    EXPECT_INT(0, different);
    EXPECT(inked > 1000);
    CHostClose(&host);
}

// ---- Colours, widths, parts ----

C_TEST(CapiPicture, TheBackgroundIsTheDrawingsAnotherOneOrNone) {
    NrvPicture p = Hundred();
    REQUIRE(Begin());
    Line(10, 50, 90, 50, 0xFF0000);
    EXPECT_INT(NRV_OK, NrvSetBackground(g_drawing, 0x00FF00));
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT_INT(GREEN, At(5, 5));
    p.ground = NRV_GROUND_COLOR;
    p.ground_color = 0x010203;
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT_INT(0xFF010203, At(5, 5));
    p.ground = NRV_GROUND_NONE;
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT_INT(0, At(5, 5));
    EXPECT_INT(RED, At(20, 50));
    EXPECT_INT(80, CountOf(RED));
    End();
}

C_TEST(CapiPicture, BlackOnWhiteShowsEveryStrokeBlack) {
    NrvPicture p = Hundred();
    REQUIRE(Begin());
    Line(10, 50, 90, 50, 0xFFFFFF);
    p.colors = NRV_COLORS_BLACK;
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT_INT(80, CountOf(BLACK));
    EXPECT_INT(SIDE * SIDE - 80, CountOf(WHITE));
    // Monochrome is one bit a pixel in a PNG, black on white 24.
    Bytes(&p, NRV_FORMAT_PNG);
    EXPECT_INT(8, g_bytes[24]);
    EXPECT_INT(2, g_bytes[25]); // Colours without alpha.
    p.colors = NRV_COLORS_MONOCHROME;
    Bytes(&p, NRV_FORMAT_PNG);
    EXPECT_INT(1, g_bytes[24]);
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT_INT(80, CountOf(BLACK));
    p.colors = NRV_COLORS_STORED;
    p.ground = NRV_GROUND_NONE;
    Bytes(&p, NRV_FORMAT_PNG);
    EXPECT_INT(8, g_bytes[24]);
    EXPECT_INT(6, g_bytes[25]); // With alpha.
    End();
}

C_TEST(CapiPicture, WidthsAreMultipliedAndThinLinesWidened) {
    NrvPicture p = Hundred();
    NrvId id = 0;
    REQUIRE(Begin());
    id = Line(10, 50, 90, 50, 0xFF0000);
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_LINE_WIDTH, 2));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, id, NRV_INT_WIDTH_LOCKED, 1));
    for (int wide = 2; wide <= 6; wide += 2) {
        int rows = 0;
        p.line_width_scale = wide / 2.0;
        EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
        for (int y = 0; y < SIDE; ++y) {
            rows += At(50, y) == RED;
        }
        EXPECT_INT(wide, rows);
    }
    p.line_width_scale = 1;
    p.least_line_width = 9;
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    int rows = 0;
    for (int y = 0; y < SIDE; ++y) {
        rows += At(50, y) == RED;
    }
    EXPECT_INT(9, rows);
    End();
}

C_TEST(CapiPicture, WhatIsSelectedAloneTheNetAndTheGripsAreChosen) {
    NrvPicture p = Hundred();
    NrvId lower = 0;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddNetLine(g_drawing, 0, 90, 100, 90, 0x0000FF, NULL));
    lower = Line(10, 20, 90, 20, 0xFF0000);
    Line(10, 60, 90, 60, 0x00FF00);
    EXPECT_INT(NRV_OK, NrvSetSelection(g_drawing, &lower, 1));
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT_INT(80, CountOf(RED)); // A line, not dotted, without grips.
    EXPECT_INT(80, CountOf(GREEN));
    EXPECT_INT(100, CountOf(0xFF0000FF));
    p.net = 0;
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT_INT(0, CountOf(0xFF0000FF));
    EXPECT_INT(80, CountOf(GREEN));
    p.net = 1;
    p.selected_only = 1;
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT_INT(80, CountOf(RED));
    EXPECT_INT(0, CountOf(GREEN));
    EXPECT_INT(0, CountOf(0xFF0000FF));
    p.grips = 1;
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT(CountOf(RED) < 70); // Dotted.
    EXPECT(SIDE * SIDE - CountOf(RED) - CountOf(BLACK) > 20);
    // The fit is that of the selected part.
    p = Default();
    p.selected_only = 1;
    p.scale = 1;
    p.margin = 0;
    NrvPictureResult r = {sizeof r, 0, 0, 0, 0, 0, 0};
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_INT(80, r.width);
    EXPECT_INT(1, r.height);
    End();
}

C_TEST(CapiPicture, NumbersAreShownAsTheDrawingShowsThemOrAsAskedFor) {
    NrvPicture p = Hundred();
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddParm(g_drawing, 10, 90, L"1.25", L"a", 20, 0xFFFFFF, NULL));
    Bytes(&p, NRV_FORMAT_SVG);
    EXPECT(strstr((const char*)g_bytes, ">1.25<") != NULL);
    p.decimals = 0;
    Bytes(&p, NRV_FORMAT_SVG);
    EXPECT(strstr((const char*)g_bytes, ">1.3<") != NULL);
    p.decimals = -1;
    EXPECT_INT(NRV_OK, NrvSetShowDecimals(g_drawing, 0));
    Bytes(&p, NRV_FORMAT_SVG);
    EXPECT(strstr((const char*)g_bytes, ">1.3<") != NULL);
    p.decimals = 1;
    Bytes(&p, NRV_FORMAT_SVG);
    EXPECT(strstr((const char*)g_bytes, ">1.25<") != NULL);
    End();
}

// ---- Forms, buffers, files ----

C_TEST(CapiPicture, APngAnEmfAndAnSvgHaveTheFormOfTheirName) {
    const NrvPicture p = Hundred();
    ENHMETAHEADER header;
    REQUIRE(Begin());
    Line(10, 50, 90, 50, 0xFF0000);
    EXPECT_INT(NRV_OK, NrvAddText(g_drawing, 10, 90, L"W\x00E9", 0, 20, 0xFFFFFF, NULL));
    EXPECT(Bytes(&p, NRV_FORMAT_PNG) > 60);
    EXPECT(memcmp(g_bytes, "\x89PNG\r\n\x1a\n", 8) == 0);
    EXPECT_INT(SIDE, BigEndian(g_bytes + 16));
    EXPECT_INT(SIDE, BigEndian(g_bytes + 20));
    const uint32_t size = Bytes(&p, NRV_FORMAT_EMF);
    const HENHMETAFILE metafile = SetEnhMetaFileBits(size, g_bytes);
    REQUIRE(metafile != NULL);
    EXPECT_INT(sizeof header, GetEnhMetaFileHeader(metafile, sizeof header, &header));
    EXPECT_INT(size, header.nBytes);
    EXPECT_INT(0, header.rclBounds.left); // The background is painted too.
    EXPECT_NEAR_TO(99, header.rclBounds.right, 1);
    DeleteEnhMetaFile(metafile);
    Bytes(&p, NRV_FORMAT_SVG);
    EXPECT(strncmp((const char*)g_bytes, "<?xml", 5) == 0 || strncmp((const char*)g_bytes, "<svg", 4) == 0);
    EXPECT(strstr((const char*)g_bytes, "W\xC3\xA9") != NULL); // UTF-8.
    EXPECT_INT(SIDE * SIDE * 4, Bytes(&p, NRV_FORMAT_PIXELS));
    EXPECT_INT(0xFF, g_bytes[3]);
    End();
}

C_TEST(CapiPicture, TheLengthIsToldAndATooSmallBufferIsLeftAlone) {
    const NrvPicture p = Hundred();
    REQUIRE(Begin());
    Line(10, 50, 90, 50, 0xFF0000);
    for (int32_t format = NRV_FORMAT_PNG; format <= NRV_FORMAT_PIXELS; ++format) {
        uint32_t asked = 0;
        uint32_t size = 0;
        NrvPictureResult r = {sizeof r, 0, 0, 0, 0, 0, 0};
        EXPECT_INT(NRV_OK, NrvRender(g_drawing, &p, format, NULL, 0, &asked, &r));
        EXPECT(asked > 50);
        EXPECT_INT(SIDE, r.width);
        EXPECT_NEAR_TO(1, r.scale, 0);
        memset(g_bytes, 0xEE, sizeof g_bytes);
        EXPECT_INT(NRV_E_BUFFER, NrvRender(g_drawing, &p, format, g_bytes, asked - 1, &size, NULL));
        EXPECT_INT(asked, size);
        EXPECT_INT(0xEE, g_bytes[0]);
        EXPECT_INT(NRV_OK, NrvRender(g_drawing, &p, format, g_bytes, asked, &size, NULL));
        EXPECT_INT(asked, size);
        EXPECT(g_bytes[0] != 0xEE);
        EXPECT_INT(0xEE, g_bytes[asked]);
    }
    End();
}

C_TEST(CapiPicture, AFileHasTheBytesOfTheBufferAndReplacesAnOlderOne) {
    const NrvPicture p = Hundred();
    wchar_t folder[MAX_PATH];
    wchar_t path[MAX_PATH];
    static unsigned char read[1 << 16];
    REQUIRE(Begin());
    REQUIRE(GetTempPathW(MAX_PATH, folder) != 0 && GetTempFileNameW(folder, L"nrv", 0, path) != 0);
    Line(10, 50, 90, 50, 0xFF0000);
    for (int32_t format = NRV_FORMAT_PNG; format <= NRV_FORMAT_PIXELS; ++format) {
        NrvPictureResult r = {sizeof r, 0, 0, 9, 0, 0, 0};
        DWORD length = 0;
        EXPECT_INT(NRV_OK, NrvRenderFile(g_drawing, &p, format, path, &r));
        EXPECT_INT(0, r.left_out);
        const uint32_t size = Bytes(&p, format);
        const HANDLE file = CreateFileW(path, GENERIC_READ, 0, NULL, OPEN_EXISTING, 0, NULL);
        REQUIRE(file != INVALID_HANDLE_VALUE);
        EXPECT(ReadFile(file, read, sizeof read, &length, NULL));
        CloseHandle(file);
        EXPECT_INT(size, length);
        EXPECT(memcmp(read, g_bytes, size) == 0);
    }
    EXPECT(DeleteFileW(path));
    // A folder is no file, and nothing is left beside it.
    EXPECT(CreateDirectoryW(path, NULL));
    EXPECT_INT(NRV_E_FILE, NrvRenderFile(g_drawing, &p, NRV_FORMAT_PNG, path, NULL));
    EXPECT(RemoveDirectoryW(path));
    wcscat(path, L"*");
    WIN32_FIND_DATAW found;
    EXPECT(FindFirstFileW(path, &found) == INVALID_HANDLE_VALUE);
    wcscpy(wcsrchr(path, L'*'), L"\\none\\a.png");
    EXPECT_INT(NRV_E_FILE, NrvRenderFile(g_drawing, &p, NRV_FORMAT_PNG, path, NULL));
    End();
}

C_TEST(CapiPicture, APictureIsPaintedOntoAContextOfTheCaller) {
    NrvPicture p = Hundred();
    BITMAPINFO info;
    void* bits = NULL;
    NrvPictureResult r = {sizeof r, 0, 0, 9, 0, 0, 0};
    REQUIRE(Begin());
    Line(10, 50, 90, 50, 0xFF0000);
    memset(&info, 0, sizeof info);
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = 200;
    info.bmiHeader.biHeight = -200;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const HDC dc = CreateCompatibleDC(NULL);
    const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, NULL, 0);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    PatBlt(dc, 0, 0, 200, 200, WHITENESS);
    p.ground = NRV_GROUND_COLOR;
    p.ground_color = 0x0000FF;
    EXPECT_INT(NRV_OK, NrvPaintPicture(g_drawing, &p, dc, &r));
    EXPECT_INT(SIDE, r.height);
    EXPECT_INT(0, r.left_out);
    EXPECT_INT(RGB(255, 0, 0), GetPixel(dc, 20, 50));
    EXPECT_INT(RGB(0, 0, 255), GetPixel(dc, 99, 99));
    EXPECT_INT(RGB(255, 255, 255), GetPixel(dc, 100, 99));
    EXPECT_INT(NRV_E_ARGUMENT, NrvPaintPicture(g_drawing, &p, NULL, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvPaintPicture(g_drawing, &p, bitmap, NULL));
    SelectObject(dc, before);
    DeleteObject(bitmap);
    DeleteDC(dc);
    End();
}

C_TEST(CapiPicture, APaperPictureIsBlackToScaleAndCentred) {
    NrvPicture p = {0};
    NrvPictureResult r = {sizeof r, 0, 0, 0, 0, 0, 0};
    REQUIRE(Begin());
    Line(0, 0, 100, 50, 0xFF0000);
    p.size = sizeof p;
    EXPECT_INT(NRV_OK, NrvGetPaperPicture(&p, 2540, 1270, 254, 2));
    EXPECT_INT(NRV_COLORS_BLACK, p.colors);
    EXPECT_INT(3, p.least_line_width); // 0.25 mm at 10 dots a millimetre, rounded.
    EXPECT_INT(1, p.keep_size);
    EXPECT_NEAR_TO(0.2, p.scale, 1e-12); // 2 units a millimetre.
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_INT(2540, r.width);
    EXPECT_INT(1270, r.height);
    EXPECT_NEAR_TO(-204, r.origin_x, 1e-4); // 50 - 1270 * 0.2
    EXPECT_NEAR_TO(-102, r.origin_y, 1e-4); // 25 - 635 * 0.2
    EXPECT_INT(NRV_OK, NrvGetPaperPicture(&p, 2540, 1270, 254, 0));
    EXPECT_NEAR_TO(0, p.scale, 0);
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetPaperPicture(&p, 0, 1270, 254, 0));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetPaperPicture(&p, 2540, -1, 254, 0));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetPaperPicture(&p, 2540, 1270, 0, 0));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetPaperPicture(&p, 2540, 1270, HUGE_VAL, 0));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetPaperPicture(&p, 2540, 1270, 254, -1));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetPaperPicture(NULL, 2540, 1270, 254, 0));
    p.size = sizeof p - 1;
    EXPECT_INT(NRV_E_RECORD, NrvGetPaperPicture(&p, 2540, 1270, 254, 0));
    End();
}

// ---- What is refused, and what stays ----

C_TEST(CapiPicture, NumbersOutOfRangeAreRefused) {
    NrvPictureResult r = {sizeof r, 7, 7, 7, 0, 0, 0};
    uint32_t size = 77;
    REQUIRE(Begin());
    Line(0, 0, 200, 50, 0xFF0000);
    for (int i = 0; i < 24; ++i) {
        NrvPicture p = Default();
        switch (i) {
        case 0:
            p.width = -1;
            break;
        case 1:
            p.height = 32768;
            break;
        case 2:
            p.width = p.height = 32767;
            break; // More than 2^27 pixels.
        case 3:
            p.width = p.height = 0;
            break;
        case 4:
            p.scale = -1;
            break;
        case 5:
            p.scale = HUGE_VAL;
            break;
        case 6:
            p.scale = NAN;
            break;
        case 7:
            p.show = 3;
            break;
        case 8:
            p.show = -1;
            break;
        case 9:
            p.colors = 3;
            break;
        case 10:
            p.ground = 3;
            break;
        case 11:
            p.ground = -1;
            break;
        case 12:
            p.line_width_scale = 0;
            break;
        case 13:
            p.line_width_scale = 1001;
            break;
        case 14:
            p.line_width_scale = NAN;
            break;
        case 15:
            p.least_line_width = 0;
            break;
        case 16:
            p.least_line_width = 1001;
            break;
        case 17:
            p.margin = -1;
            break;
        case 18:
            p.margin = 100;
            break;
        case 19:
            p.decimals = 2;
            break;
        case 20:
            p.show = NRV_SHOW_WINDOW;
            break; // An empty rectangle.
        case 21:
            p.show = NRV_SHOW_MAPPING;
            p.scale = 1;
            break;
        case 22:
            p.colors = -1;
            break;
        default:
            p.decimals = -2;
            break;
        }
        EXPECT_INT(NRV_E_ARGUMENT, NrvRender(g_drawing, &p, NRV_FORMAT_PNG, g_bytes, sizeof g_bytes, &size, &r));
        EXPECT_INT(NRV_E_ARGUMENT, NrvMeasurePicture(g_drawing, &p, &r));
        EXPECT_INT(7, r.width);
        EXPECT_INT(77, size);
    }
    EXPECT_INT(NRV_E_ARGUMENT, NrvRender(g_drawing, NULL, 0, g_bytes, sizeof g_bytes, &size, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvRender(g_drawing, NULL, 5, g_bytes, sizeof g_bytes, &size, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvRender(g_drawing, NULL, NRV_FORMAT_PNG, g_bytes, sizeof g_bytes, NULL, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvRender(g_drawing, NULL, NRV_FORMAT_PNG, NULL, 1, &size, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvRenderFile(g_drawing, NULL, 0, L"none.png", NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvRenderFile(g_drawing, NULL, NRV_FORMAT_PNG, NULL, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvRenderFile(g_drawing, NULL, NRV_FORMAT_PNG, L"", NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvMeasurePicture(g_drawing, NULL, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetDefaultPicture(NULL));
    End();
}

C_TEST(CapiPicture, RecordsOfOtherVersionsAreReadAndWrittenAsFarAsTheyGo) {
    NrvPicture p = Default();
    NrvPictureResult r = {sizeof r - 1, 7, 7, 7, 0, 0, 0};
    uint32_t size = 0;
    struct {
        NrvPicture picture;
        double later;
    } larger;
    REQUIRE(Begin());
    p.size = sizeof p - 1;
    EXPECT_INT(NRV_E_RECORD, NrvGetDefaultPicture(&p));
    EXPECT_INT(NRV_E_RECORD, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_INT(NRV_E_RECORD, NrvRender(g_drawing, &p, NRV_FORMAT_PNG, NULL, 0, &size, NULL));
    EXPECT_INT(NRV_E_RECORD, NrvRenderFile(g_drawing, &p, NRV_FORMAT_PNG, L"none.png", NULL));
    p.size = sizeof p;
    EXPECT_INT(NRV_E_RECORD, NrvMeasurePicture(g_drawing, &p, &r));
    EXPECT_INT(NRV_E_RECORD, NrvRender(g_drawing, &p, NRV_FORMAT_PNG, NULL, 0, &size, &r));
    EXPECT_INT(7, r.width);
    memset(&larger, 0, sizeof larger);
    larger.later = 5;
    larger.picture.size = sizeof larger;
    EXPECT_INT(NRV_OK, NrvGetDefaultPicture(&larger.picture));
    EXPECT_INT(sizeof larger, larger.picture.size);
    EXPECT_INT(1024, larger.picture.width);
    EXPECT_NEAR_TO(5, larger.later, 0);
    r.size = sizeof r;
    EXPECT_INT(NRV_OK, NrvMeasurePicture(g_drawing, &larger.picture, &r));
    EXPECT_INT(1024, r.width);
    End();
}

C_TEST(CapiPicture, TheDrawingIsAsBefore) {
    CHost host;
    NrvPicture p = Default();
    NrvMapping before = {sizeof before, 0, 0, 0, 0};
    NrvMapping after = {sizeof after, 0, 0, 0, 0};
    NrvId line = 0;
    int32_t number = -1;
    uint32_t size = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvAddLine(host.view, 10, 10, 300, 200, 0xFFFFFF, &line));
    EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &line, 1));
    EXPECT_INT(NRV_OK, NrvSetModified(host.view, 0));
    EXPECT_INT(NRV_OK, NrvGetMapping(host.view, &before));
    UpdateWindow(host.view);
    CHostTakeLog();
    for (int32_t format = NRV_FORMAT_PNG; format <= NRV_FORMAT_PIXELS; ++format) {
        p.colors = format % 3;
        EXPECT_INT(NRV_OK, NrvRender(host.view, &p, format, NULL, 0, &size, NULL));
    }
    EXPECT_TEXT(L"", CHostTakeLog());
    EXPECT_INT(0, GetUpdateRect(host.view, NULL, FALSE));
    EXPECT_INT(NRV_OK, NrvGetMapping(host.view, &after));
    EXPECT(memcmp(&before, &after, sizeof before) == 0);
    EXPECT_INT(NRV_OK, NrvGetModified(host.view, &number));
    EXPECT_INT(0, number);
    EXPECT_INT(NRV_OK, NrvGetInt(host.view, line, NRV_INT_SELECTED, &number));
    EXPECT_INT(1, number);
    CHostClose(&host);
}

C_TEST(CapiPicture, AnEmptyDrawingIsItsBackground) {
    NrvPicture p = Default();
    REQUIRE(Begin());
    p.width = p.height = SIDE;
    EXPECT_INT(NRV_OK, NrvSetBackground(g_drawing, 0x00FF00));
    EXPECT_INT(NRV_OK, Shoot(g_drawing, &p));
    EXPECT_INT(SIDE * SIDE, CountOf(GREEN));
    EXPECT(Bytes(&p, NRV_FORMAT_SVG) > 50);
    End();
}

// ---- What can't be painted ----

static int g_messages;

static void NRV_CALL ClearAtMessage(NrvEvent* event, void* user) {
    (void)user;
    if (event->header.code == NRV_N_MESSAGE) {
        EXPECT(event->text[0] != 0);
        ++g_messages;
        EXPECT_INT(NRV_OK, NrvClear(event->source));
    }
}

// Two lines, the first of a layer below 0, which only a damaged stream can hold: painting it fails. The number of the
// layer is 75 bytes from the begin: 38 of the head, 11 of the class record, 26 of the fields before it.
static void LoadBroken(void) {
    uint32_t size = 0;
    Line(10, 20, 90, 20, 0xFF0000);
    EXPECT_INT(NRV_OK, NrvSaveBuffer(g_drawing, g_bytes, sizeof g_bytes, &size));
    g_bytes[75] = g_bytes[76] = 0xFF;
    EXPECT_INT(NRV_OK, NrvLoadBuffer(g_drawing, g_bytes, size, NULL));
    Line(10, 60, 90, 60, 0x00FF00);
}

C_TEST(CapiPicture, AnObjectThatFailsIsToldAndTheOthersArePainted) {
    NrvPicture p = Hundred();
    NrvPictureResult r = {sizeof r, 0, 0, 0, 0, 0, 0};
    uint32_t size = 0;
    wchar_t text[128];
    REQUIRE(Begin());
    LoadBroken();
    for (int32_t format = NRV_FORMAT_PNG; format <= NRV_FORMAT_PIXELS; ++format) {
        for (p.ground = NRV_GROUND_DRAWING; p.ground <= NRV_GROUND_NONE; p.ground += NRV_GROUND_NONE) {
            r.left_out = 0;
            EXPECT_INT(NRV_E_PAINT, NrvRender(g_drawing, &p, format, g_bytes, sizeof g_bytes, &size, &r));
            EXPECT_INT(1, r.left_out);
            EXPECT(size > 50);
        }
    }
    EXPECT_INT(NRV_OK, NrvGetLastMessage(g_drawing, text, 128, &size));
    EXPECT(size > 0);
    p.ground = NRV_GROUND_DRAWING;
    EXPECT_INT(NRV_E_PAINT, Shoot(g_drawing, &p));
    EXPECT_INT(80, CountOf(GREEN));
    EXPECT_INT(0, CountOf(RED));
    const HDC dc = CreateCompatibleDC(NULL);
    EXPECT_INT(NRV_E_PAINT, NrvPaint(g_drawing, dc));
    DeleteDC(dc);
    End();
}

// The message comes when the picture is complete, so that a handler may free what has been painted.
C_TEST(CapiPicture, AHandlerOfItsMessageMayClearTheDrawing) {
    const NrvPicture p = Hundred();
    uint32_t count = 9;
    REQUIRE(Begin());
    LoadBroken();
    g_messages = 0;
    EXPECT_INT(NRV_OK, NrvSetCallback(g_drawing, ClearAtMessage, NULL));
    EXPECT_INT(NRV_E_PAINT, Shoot(g_drawing, &p));
    EXPECT_INT(1, g_messages);
    EXPECT_INT(80, CountOf(GREEN)); // Painted before it was cleared.
    EXPECT_INT(NRV_OK, NrvGetObjects(g_drawing, NRV_LIST_DRAWING, NULL, 0, &count));
    EXPECT_INT(0, count);
    End();
}

// ---- Threads ----

enum { THREADS = 4, ROUNDS = 15 };

static DWORD WINAPI RenderWork(LPVOID number) {
    const int own = (int)(intptr_t)number;
    int failed = 0;
    uint32_t* pixels = (uint32_t*)malloc(SIDE * SIDE * 4);
    unsigned char* bytes = (unsigned char*)malloc(65536);
    NrvPicture p = Hundred();
    for (int round = 0; round < ROUNDS; ++round) {
        NrvHandle drawing = NULL;
        uint32_t size = 0;
        int red = 0;
        failed += NrvCreateDrawing(&drawing) != NRV_OK;
        failed += NrvAddLine(drawing, 10, 10 * own, 90, 10 * own, 0xFF0000, NULL) != NRV_OK;
        failed += NrvAddText(drawing, 10, 99, L"text", 0, 20, 0x00FF00, NULL) != NRV_OK;
        failed += NrvRender(drawing, &p, NRV_FORMAT_PIXELS, pixels, SIDE * SIDE * 4, &size, NULL) != NRV_OK;
        for (int x = 0; x < SIDE; ++x) {
            red += pixels[(SIDE - 10 * own) * SIDE + x] == RED;
        }
        failed += red != 80;
        failed += NrvRender(drawing, &p, NRV_FORMAT_PNG, bytes, 65536, &size, NULL) != NRV_OK;
        failed += NrvRender(drawing, &p, NRV_FORMAT_EMF, bytes, 65536, &size, NULL) != NRV_OK;
        failed += NrvRender(drawing, &p, NRV_FORMAT_SVG, bytes, 65536, &size, NULL) != NRV_OK;
        failed += NrvFreeDrawing(drawing) != NRV_OK;
    }
    free(pixels);
    free(bytes);
    return (DWORD)failed;
}

C_TEST(CapiPicture, SeveralThreadsRenderTheirOwnDrawings) {
    HANDLE threads[THREADS];
    for (int i = 0; i < THREADS; ++i) {
        threads[i] = CreateThread(NULL, 0, RenderWork, (LPVOID)(intptr_t)(i + 1), 0, NULL);
        REQUIRE(threads[i] != NULL);
    }
    EXPECT_INT(WAIT_OBJECT_0, WaitForMultipleObjects(THREADS, threads, TRUE, INFINITE));
    for (int i = 0; i < THREADS; ++i) {
        DWORD failed = 99;
        EXPECT(GetExitCodeThread(threads[i], &failed));
        EXPECT_INT(0, failed);
        CloseHandle(threads[i]);
    }
}
