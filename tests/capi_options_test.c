// The C interface: each editing option, off and on, by what the user sees of it.

#include "support/CHost.h"

#include <math.h>
#include <string.h>

static NrvEditingOptions g_options;

// A view with what is in g_options; it has no size otherwise set.
static int Open(CHost* host) {
    const int opened = EXPECT(CHostOpen(host, NRV_VIEW_CLASS));
    if (opened) {
        EXPECT_INT(NRV_OK, NrvSetEditingOptions(host->view, &g_options));
    }
    return opened;
}

static void Classic(void) {
    memset(&g_options, 0, sizeof g_options);
    g_options.size = sizeof g_options;
    g_options.figure_height = 100;
    g_options.pixel_scale = 1;
}

static COLORREF PixelAt(CHost* host, int x, int y) {
    const HDC dc = GetDC(host->view);
    const COLORREF color = GetPixel(dc, x, y);
    ReleaseDC(host->view, dc);
    return color;
}

static NrvId At(CHost* host, uint32_t index) {
    NrvId id = 0;
    EXPECT_INT(NRV_OK, NrvGetObject(host->view, NRV_LIST_DRAWING, index, &id));
    return id;
}

static NrvId Line(CHost* host, double x1, double y1, double x2, double y2) {
    NrvId id = 0;
    EXPECT_INT(NRV_OK, NrvAddLine(host->view, x1, y1, x2, y2, 0xFFFFFF, &id));
    return id;
}

static void RightButton(CHost* host, int x, int y) {
    PostMessageW(host->view, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(x, y));
    CHostPump();
}

C_TEST(CapiOptions, AreClassicAtFirstAndComeBackAsTheyAreSet) {
    NrvHandle drawing = NULL;
    NrvEditingOptions got;
    uint32_t size = 0;
    static unsigned char bytes[4096];
    Classic();
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    memset(&got, 0xEE, sizeof got);
    got.size = sizeof got;
    EXPECT_INT(NRV_OK, NrvGetEditingOptions(drawing, &got));
    EXPECT(memcmp(&got, &g_options, sizeof got) == 0);
    int32_t* const switches = &g_options.strokes_once;
    for (int i = 0; i < 8; ++i) {
        Classic();
        switches[i] = 1;
        EXPECT_INT(NRV_OK, NrvSetEditingOptions(drawing, &g_options));
        EXPECT_INT(NRV_OK, NrvGetEditingOptions(drawing, &got));
        EXPECT(memcmp(&got, &g_options, sizeof got) == 0);
    }
    g_options.figure_height = 2.5;
    g_options.pixel_scale = 1.5;
    EXPECT_INT(NRV_OK, NrvSetEditingOptions(drawing, &g_options));
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 0, 0, 1, 1, 0, NULL));
    EXPECT_INT(NRV_OK, NrvSaveBuffer(drawing, bytes, sizeof bytes, &size));
    EXPECT_INT(NRV_OK, NrvLoadBuffer(drawing, bytes, size, NULL));
    EXPECT_INT(NRV_OK, NrvClear(drawing));
    EXPECT_INT(NRV_OK, NrvGetEditingOptions(drawing, &got));
    EXPECT(memcmp(&got, &g_options, sizeof got) == 0); // A load and a clear leave them.
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiOptions, NumbersThatAreNotAboveZeroAreRefused) {
    NrvHandle drawing = NULL;
    NrvEditingOptions got = {.size = sizeof got};
    const double bad[] = {0, -1, HUGE_VAL, NAN, 1e300, 1e-300};
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    for (size_t i = 0; i < sizeof bad / sizeof bad[0]; ++i) {
        Classic();
        g_options.strokes_once = 1;
        g_options.figure_height = bad[i];
        EXPECT_INT(NRV_E_ARGUMENT, NrvSetEditingOptions(drawing, &g_options));
        g_options.figure_height = 1;
        g_options.pixel_scale = bad[i];
        EXPECT_INT(NRV_E_ARGUMENT, NrvSetEditingOptions(drawing, &g_options));
    }
    g_options.size = sizeof g_options - 1;
    EXPECT_INT(NRV_E_RECORD, NrvSetEditingOptions(drawing, &g_options));
    EXPECT_INT(NRV_E_RECORD, NrvGetEditingOptions(drawing, &g_options));
    EXPECT_INT(NRV_OK, NrvGetEditingOptions(drawing, &got));
    EXPECT_INT(0, got.strokes_once);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiOptions, AMovedPolylineIsSeenWithStrokesOnce) {
    const NrvPoint points[3] = {{20, 100}, {120, 100}, {120, 150}};
    for (int on = 0; on < 2; ++on) {
        CHost host;
        NrvId id = 0;
        Classic();
        g_options.strokes_once = on;
        REQUIRE(Open(&host));
        REQUIRE(NrvAddPolyline(host.view, points, NULL, 3, 0, 0xFFFFFF, &id) == NRV_OK);
        EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &id, 1));
        UpdateWindow(host.view);
        EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"translation"));
        CHostClick(&host, 20, 280);
        CHostMove(&host, 100, 215); // By (80, 65): the lower side runs from (100, 165) to (200, 165).
        EXPECT_INT(on ? 0xFFFFFF : 0, PixelAt(&host, 130, 135));
        CHostClose(&host);
    }
}

C_TEST(CapiOptions, AMovedLineOffersItselfNoSnapPointsWithNoSelfSnap) {
    for (int on = 0; on < 2; ++on) {
        CHost host;
        NrvId id = 0;
        NrvPoint points[2] = {{0, 0}};
        uint32_t count = 0;
        Classic();
        g_options.no_self_snap = on;
        REQUIRE(Open(&host));
        id = Line(&host, 100, 100, 200, 100);
        EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &id, 1));
        EXPECT_INT(NRV_OK, NrvSetMessages(host.view, NRV_MESSAGES_SILENT)); // "Keep the originals?" No.
        EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"translation"));
        CHostClick(&host, 20, 280);
        CHostMove(&host, 70, 230); // By (50, 50): its start is at (150, 150).
        CHostClick(&host, 153, 148);
        EXPECT_INT(NRV_OK, NrvGetPoints(host.view, id, points, 2, &count));
        EXPECT_NEAR_TO(on ? 233 : 230, points[0].x, 1e-6); // By (133, 132), or by (130, 130) to its own start.
        EXPECT_NEAR_TO(on ? 232 : 230, points[0].y, 1e-6);
        CHostClose(&host);
    }
}

C_TEST(CapiOptions, ABandComesBackAfterAPaintWithPreviewsReturn) {
    for (int on = 0; on < 2; ++on) {
        CHost host;
        Classic();
        g_options.previews_return = on;
        REQUIRE(Open(&host));
        Line(&host, 10, 10, 390, 10);
        UpdateWindow(host.view);
        EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
        CHostClick(&host, 100, 200);
        CHostMove(&host, 200, 150);
        EXPECT_INT(0xFFFFFF, PixelAt(&host, 150, 175)); // The middle of the band.
        InvalidateRect(host.view, NULL, TRUE);
        UpdateWindow(host.view);
        EXPECT_INT(on ? 0xFFFFFF : 0, PixelAt(&host, 150, 175));
        CHostClose(&host);
    }
}

C_TEST(CapiOptions, TheEndOfACommandAsksForARepaintWithRepaintsAtEnd) {
    for (int on = 0; on < 2; ++on) {
        CHost host;
        Classic();
        g_options.repaints_at_end = on;
        REQUIRE(Open(&host));
        EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
        CHostClick(&host, 20, 200);
        CHostMove(&host, 120, 180);
        ValidateRect(host.view, NULL);
        EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line")); // Takes the place of the other one.
        EXPECT_INT(on, GetUpdateRect(host.view, NULL, FALSE) != 0);
        CHostClose(&host);
    }
}

C_TEST(CapiOptions, ACommandThatChangesNothingMarksNothingWithModifiedByChange) {
    for (int on = 0; on < 2; ++on) {
        CHost host;
        int32_t modified = -1;
        Classic();
        g_options.modified_by_change = on;
        REQUIRE(Open(&host));
        Line(&host, 10, 10, 390, 10);
        EXPECT_INT(NRV_OK, NrvSetModified(host.view, 0));
        EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
        EXPECT_INT(NRV_OK, NrvCancelCommand(host.view));
        EXPECT_INT(NRV_OK, NrvGetModified(host.view, &modified));
        EXPECT_INT(on ? 0 : 1, modified);
        // A grip that is put back where it was.
        EXPECT_INT(NRV_OK, NrvSetModified(host.view, 0));
        const NrvId id = At(&host, 0);
        EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &id, 1));
        CHostClick(&host, 10, 290);
        CHostClick(&host, 10, 290);
        EXPECT_INT(NRV_OK, NrvGetModified(host.view, &modified));
        EXPECT_INT(on ? 0 : 1, modified);
        EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
        CHostClick(&host, 20, 200);
        CHostClick(&host, 90, 200);
        EXPECT_INT(NRV_OK, NrvGetModified(host.view, &modified));
        EXPECT_INT(1, modified);
        CHostClose(&host);
    }
}

C_TEST(CapiOptions, TheFigureOfALabelCountsWithTextsAsShown) {
    const NrvPoint four[4] = {{0, 0}, {0, 10}, {100, 0}, {100, 10}};
    NrvHandle drawing = NULL;
    NrvRect r = {0};
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    Classic();
    EXPECT_INT(NRV_OK, NrvAddLabel(drawing, four, 0, NULL));
    EXPECT_INT(NRV_OK, NrvGetExtents(drawing, 0, &r));
    const double without = r.top - r.bottom;
    EXPECT_NEAR_TO(16, without, 1e-6); // 10, and 3 of the tick on each side.
    g_options.texts_as_shown = 1;
    g_options.figure_height = 40;
    EXPECT_INT(NRV_OK, NrvSetEditingOptions(drawing, &g_options));
    EXPECT_INT(NRV_OK, NrvGetExtents(drawing, 0, &r));
    EXPECT(r.top - r.bottom > 30);
    const double smaller = r.top - r.bottom;
    g_options.figure_height = 80;
    EXPECT_INT(NRV_OK, NrvSetEditingOptions(drawing, &g_options));
    EXPECT_INT(NRV_OK, NrvGetExtents(drawing, 0, &r));
    EXPECT(r.top - r.bottom > smaller + 15);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiOptions, TheSidesOfARectangleAreOrdinaryLinesWithCleanRectangle) {
    for (int on = 0; on < 2; ++on) {
        CHost host;
        int32_t inverted = -1;
        Classic();
        g_options.clean_rectangle = on;
        REQUIRE(Open(&host));
        EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"rect"));
        CHostClick(&host, 50, 200);
        CHostMove(&host, 150, 100);
        CHostClick(&host, 150, 100);
        EXPECT_INT(NRV_OK, NrvGetInt(host.view, At(&host, 3), NRV_INT_INVERTED, &inverted));
        EXPECT_INT(on ? 0 : 1, inverted);
        CHostClose(&host);
    }
}

// In a window of this interface with and without the switch.
C_TEST(CapiOptions, TheRightButtonBeforeTheBasePointEndsATransformation) {
    for (int on = 0; on < 2; ++on) {
        CHost host;
        NrvId id = 0;
        Classic();
        g_options.transforms_end_early = on;
        REQUIRE(Open(&host));
        id = Line(&host, 50, 50, 150, 50);
        EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &id, 1));
        EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"rotation"));
        CHostTakeLog();
        RightButton(&host, 10, 10);
        EXPECT_TEXT(L"ended rotation cancelled; ", CHostTakeLog());
        CHostClose(&host);
    }
}

C_TEST(CapiOptions, ThePixelScaleWidensThePicks) {
    for (int on = 0; on < 2; ++on) {
        CHost host;
        NrvId hit = 0;
        Classic();
        g_options.pixel_scale = on ? 2 : 1;
        REQUIRE(Open(&host));
        const NrvId line = Line(&host, 50, 200, 150, 200);
        EXPECT_INT(NRV_OK,
                   NrvHitTest(host.view, 100, 106, &hit, NULL)); // Six pixels off: 4 at first, 8 with the scale.
        EXPECT(hit == (on ? line : 0));
        CHostTakeLog();
        CHostClick(&host, 100, 106);
        EXPECT_TEXT(on ? L"click line -1; selection 1; " : L"click none -1; ", CHostTakeLog());
        CHostClose(&host);
    }
}

// ---- What else a window can do ----

static int g_paints;

static void PaintMore(NrvEvent* event) {
    if (event->header.code == NRV_N_PAINT) {
        ++g_paints;
        EXPECT(event->hdc != NULL);
        SelectObject((HDC)event->hdc, GetStockObject(WHITE_PEN));
        MoveToEx((HDC)event->hdc, 10, 20, NULL);
        LineTo((HDC)event->hdc, 60, 20);
    }
}

C_TEST(CapiOptions, AHandlerPaintsOverTheDrawing) {
    CHost host;
    uint32_t mask = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvGetEventMask(host.view, &mask));
    EXPECT(!(mask & NRV_EVENT_BIT(NRV_N_PAINT))); // It is asked for.
    EXPECT_INT(NRV_OK, NrvSetEventMask(host.view, mask | NRV_EVENT_BIT(NRV_N_PAINT)));
    CHostSetHandler(PaintMore);
    g_paints = 0;
    InvalidateRect(host.view, NULL, TRUE);
    UpdateWindow(host.view);
    EXPECT_INT(1, g_paints);
    EXPECT_INT(0xFFFFFF, PixelAt(&host, 30, 20));
    // Also when a part alone is painted.
    const RECT part = {20, 10, 40, 30};
    InvalidateRect(host.view, &part, TRUE);
    UpdateWindow(host.view);
    EXPECT_INT(2, g_paints);
    EXPECT_INT(0xFFFFFF, PixelAt(&host, 30, 20));
    CHostClose(&host);
}

static void DestroyAtPaint(NrvEvent* event) {
    if (event->header.code == NRV_N_PAINT) {
        ++g_paints;
        EXPECT(DestroyWindow((HWND)event->header.window));
    }
}

C_TEST(CapiOptions, AHandlerMayDestroyTheViewThatIsPainted) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvSetEventMask(host.view, UINT32_MAX));
    CHostSetHandler(DestroyAtPaint);
    g_paints = 0;
    const HWND view = host.view;
    InvalidateRect(view, NULL, TRUE);
    UpdateWindow(view);
    EXPECT_INT(1, g_paints);
    EXPECT(!IsWindow(view));
    CHostClose(&host);
}

C_TEST(CapiOptions, ASnapIsFoundAsACommandFindsIt) {
    CHost host;
    NrvId id = 0;
    double x = -1;
    double y = -1;
    int32_t kind = -1;
    const NrvPoint ends[2] = {{100, 100}, {200, 100}};
    const NrvPoint extra = {300, 200};
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddPolyline(host.view, ends, NULL, 2, 0, 0xFFFFFF, &id) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSnap(host.view, 103, 198, &x, &y, &kind));
    EXPECT_INT(1, kind);
    EXPECT_NEAR_TO(100, x, 0);
    EXPECT_NEAR_TO(200, y, 0); // Row 300 - 100.
    EXPECT_INT(NRV_OK, NrvSnap(host.view, 152, 201, &x, &y, &kind));
    EXPECT_INT(4, kind); // The middle.
    EXPECT_NEAR_TO(150, x, 0);
    EXPECT_INT(NRV_OK, NrvSnap(host.view, 303, 102, &x, &y, &kind));
    EXPECT_INT(0, kind);
    EXPECT_NEAR_TO(150, x, 0); // Not written.
    EXPECT_INT(NRV_OK, NrvSetSnapPoints(host.view, id, &extra, 1));
    EXPECT_INT(NRV_OK, NrvSnap(host.view, 303, 102, &x, &y, &kind));
    EXPECT_INT(2, kind);
    EXPECT_NEAR_TO(300, x, 0);
    EXPECT_NEAR_TO(100, y, 0);
    EXPECT_INT(NRV_OK, NrvSetSnapPoints(host.view, id, NULL, 0));
    EXPECT_INT(NRV_OK, NrvSnap(host.view, 303, 102, &x, &y, &kind));
    EXPECT_INT(0, kind);
    CHostClose(&host);
}

C_TEST(CapiOptions, ACurvedSegmentIsFoundUnderAPixel) {
    CHost host;
    NrvId curve = 0;
    NrvId hit = 99;
    int32_t segment = 99;
    const NrvPoint points[3] = {{50, 100}, {100, 100}, {200, 100}};
    const double bulges[3] = {0, 1, 0}; // The second segment is a half circle, with its top at (150, 50).
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddPolyline(host.view, points, bulges, 3, 0, 0xFFFFFF, &curve) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvHitCurve(host.view, 150, 249, &hit, &segment));
    EXPECT(hit == curve);
    EXPECT_INT(1, segment);
    EXPECT_INT(NRV_OK, NrvHitCurve(host.view, 70, 200, &hit, &segment)); // The straight one.
    EXPECT(hit == 0);
    EXPECT_INT(-1, segment);
    CHostClose(&host);
}
