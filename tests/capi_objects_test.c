// The C interface: adding objects, their ids, points, numbers, strings, order, rows, layers.

#include "support/CHost.h"

#include <string.h>

static NrvHandle g_drawing;

static int Begin(void) {
    return EXPECT_INT(NRV_OK, NrvCreateDrawing(&g_drawing));
}

static void End(void) {
    EXPECT_INT(NRV_OK, NrvFreeDrawing(g_drawing));
    g_drawing = NULL;
}

static uint32_t Count(int32_t list) {
    uint32_t count = 0;
    EXPECT_INT(NRV_OK, NrvGetObjects(g_drawing, list, NULL, 0, &count));
    return count;
}

static int32_t Int(NrvId id, int32_t what) {
    int32_t value = -12345;
    EXPECT_INT(NRV_OK, NrvGetInt(g_drawing, id, what, &value));
    return value;
}

static double Double(NrvId id, int32_t what) {
    double value = -12345;
    EXPECT_INT(NRV_OK, NrvGetDouble(g_drawing, id, what, &value));
    return value;
}

static int32_t Kind(NrvId id) {
    int32_t kind = 0;
    EXPECT_INT(NRV_OK, NrvGetKind(g_drawing, id, &kind));
    return kind;
}

static void ExpectPoints(NrvId id, const NrvPoint* expected, uint32_t count) {
    NrvPoint points[8];
    uint32_t got = 0;
    memset(points, 0, sizeof points);
    EXPECT_INT(NRV_OK, NrvGetPoints(g_drawing, id, points, 8, &got));
    EXPECT_INT(count, got);
    for (uint32_t i = 0; i < count && i < got; ++i) {
        EXPECT_NEAR_TO(expected[i].x, points[i].x, 1e-9);
        EXPECT_NEAR_TO(expected[i].y, points[i].y, 1e-9);
    }
}

// ---- Adding ----

C_TEST(CapiObjects, ALineHasItsEndsItsColourAndTheDefaults) {
    NrvId id = 0;
    const NrvPoint ends[2] = {{1.5, -2}, {30, 40}};
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddLine(g_drawing, 1.5, -2, 30, 40, NRV_RGB(0x12, 0x34, 0x56), &id));
    EXPECT(id != 0);
    EXPECT_INT(NRV_KIND_LINE, Kind(id));
    ExpectPoints(id, ends, 2);
    EXPECT_INT(0x123456, Int(id, NRV_INT_COLOR));
    EXPECT_INT(-2, Int(id, NRV_INT_COLOR_INDEX));
    EXPECT_INT(-1, Int(id, NRV_INT_LINE_TYPE));
    EXPECT_INT(0, Int(id, NRV_INT_LAYER));
    EXPECT_INT(1, Int(id, NRV_INT_VISIBLE));
    EXPECT_INT(1, Int(id, NRV_INT_SELECTABLE));
    EXPECT_INT(0, Int(id, NRV_INT_SELECTED));
    EXPECT_INT(0, Int(id, NRV_INT_WIDTH_LOCKED));
    EXPECT_NEAR_TO(-1.0, Double(id, NRV_DOUBLE_LINE_WIDTH), 0);
    EXPECT_INT(NRV_OK, NrvAddLine(g_drawing, 0, 0, 1, 1, 0, NULL));
    EXPECT_INT(2, Count(NRV_LIST_DRAWING));
    End();
}

C_TEST(CapiObjects, ANetLineIsInTheNetAlone) {
    NrvId id = 0;
    NrvRect extents;
    uint32_t index = 0;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddNetLine(g_drawing, 0, 0, 10, 10, 0xFF0000, &id));
    EXPECT_INT(0, Count(NRV_LIST_DRAWING));
    EXPECT_INT(1, Count(NRV_LIST_NET));
    EXPECT_INT(NRV_KIND_POLYLINE, Kind(id));
    EXPECT_INT(NRV_E_STATE, NrvGetExtents(g_drawing, 0, &extents));
    EXPECT_INT(NRV_E_KIND, NrvGetOrder(g_drawing, id, &index));
    EXPECT_INT(NRV_E_KIND, NrvSetOrder(g_drawing, id, 0));
    EXPECT_INT(NRV_E_KIND, NrvSetInt(g_drawing, id, NRV_INT_SELECTED, 1));
    EXPECT_INT(NRV_E_KIND, NrvSetSelection(g_drawing, &id, 1));
    EXPECT_INT(NRV_OK, NrvRemove(g_drawing, id));
    EXPECT_INT(0, Count(NRV_LIST_NET));
    End();
}

C_TEST(CapiObjects, ACircleHasCentreRadiusAndFilling) {
    NrvId id = 0;
    const NrvPoint center = {3, 4};
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddCircle(g_drawing, 3, 4, 0.1, 0x00FF00, &id));
    EXPECT_INT(NRV_KIND_CIRCLE, Kind(id));
    ExpectPoints(id, &center, 1);
    EXPECT_NEAR_TO(0.1, Double(id, NRV_DOUBLE_RADIUS), 0); // In double precision.
    EXPECT_INT(0, Int(id, NRV_INT_FILLED));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, id, NRV_INT_FILLED, 1));
    EXPECT_INT(1, Int(id, NRV_INT_FILLED));
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_RADIUS, 7.5));
    EXPECT_NEAR_TO(7.5, Double(id, NRV_DOUBLE_RADIUS), 0);
    EXPECT_INT(0x00FF00, Int(id, NRV_INT_COLOR));
    End();
}

C_TEST(CapiObjects, AnArcIsMadeByItsAnglesOrByThreePoints) {
    NrvId id = 0;
    int32_t value = 0;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddArc(g_drawing, 1, 2, 5, 0.5, 1.5, 0, &id));
    EXPECT_INT(NRV_KIND_ARC, Kind(id));
    EXPECT_NEAR_TO(0.5, Double(id, NRV_DOUBLE_START_ANGLE), 0);
    EXPECT_NEAR_TO(1.5, Double(id, NRV_DOUBLE_END_ANGLE), 0);
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_START_ANGLE, 0.25));
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_END_ANGLE, 3.25));
    EXPECT_NEAR_TO(0.25, Double(id, NRV_DOUBLE_START_ANGLE), 0);
    EXPECT_NEAR_TO(3.25, Double(id, NRV_DOUBLE_END_ANGLE), 0);
    EXPECT_INT(NRV_E_KIND, NrvGetInt(g_drawing, id, NRV_INT_FILLED, &value));
    // The upper half of the circle around (10, 10) with radius 5.
    EXPECT_INT(NRV_OK, NrvAddArc3(g_drawing, 15, 10, 10, 15, 5, 10, 0, &id));
    EXPECT_NEAR_TO(5.0, Double(id, NRV_DOUBLE_RADIUS), 1e-5);
    EXPECT_NEAR_TO(0.0, Double(id, NRV_DOUBLE_START_ANGLE), 1e-5);
    EXPECT_NEAR_TO(3.14159265, Double(id, NRV_DOUBLE_END_ANGLE), 1e-5);
    EXPECT_INT(NRV_E_ARGUMENT, NrvAddArc3(g_drawing, 0, 0, 1, 1, 2, 2, 0, &id));
    EXPECT_INT(2, Count(NRV_LIST_DRAWING));
    End();
}

C_TEST(CapiObjects, APolylineHasVerticesBulgesAndTagsOfItsSegments) {
    NrvId id = 0;
    const NrvPoint points[3] = {{0, 0}, {10, 0}, {10, 10}};
    const double bulges[3] = {0, 1, -0.5};
    double got[3] = {0};
    wchar_t text[16];
    uint32_t count = 0;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddPolyline(g_drawing, points, bulges, 3, 1, 0, &id));
    EXPECT_INT(NRV_KIND_POLYLINE, Kind(id));
    ExpectPoints(id, points, 3);
    EXPECT_INT(1, Int(id, NRV_INT_CLOSED));
    EXPECT_INT(NRV_OK, NrvGetBulges(g_drawing, id, got, 3, &count));
    EXPECT_INT(3, count);
    EXPECT_NEAR_TO(1.0, got[1], 0);
    EXPECT_NEAR_TO(-0.5, got[2], 0);
    EXPECT_INT(NRV_E_BUFFER, NrvGetBulges(g_drawing, id, got, 2, &count));
    EXPECT_INT(3, count);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetBulges(g_drawing, id, bulges, 2));
    got[0] = 0.75;
    EXPECT_INT(NRV_OK, NrvSetBulges(g_drawing, id, got, 3));
    memset(got, 0, sizeof got);
    EXPECT_INT(NRV_OK, NrvGetBulges(g_drawing, id, got, 3, &count));
    EXPECT_NEAR_TO(0.75, got[0], 0);
    EXPECT_INT(NRV_OK, NrvSetSegmentString(g_drawing, id, 1, NRV_STRING_NAME, L"width"));
    EXPECT_INT(NRV_OK, NrvSetSegmentString(g_drawing, id, 1, NRV_STRING_MESSAGE, L"tag"));
    EXPECT_INT(NRV_OK, NrvGetSegmentString(g_drawing, id, 1, NRV_STRING_NAME, text, 16, &count));
    EXPECT_TEXT(L"width", text);
    EXPECT_INT(NRV_OK, NrvGetSegmentString(g_drawing, id, 1, NRV_STRING_MESSAGE, text, 16, &count));
    EXPECT_TEXT(L"tag", text);
    EXPECT_INT(NRV_OK, NrvGetSegmentString(g_drawing, id, 0, NRV_STRING_NAME, text, 16, &count));
    EXPECT_TEXT(L"", text);
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetSegmentString(g_drawing, id, 3, NRV_STRING_NAME, text, 16, &count));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetSegmentString(g_drawing, id, 3, NRV_STRING_NAME, L""));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetSegmentString(g_drawing, id, 0, NRV_STRING_LINK, text, 16, &count));
    End();
}

C_TEST(CapiObjects, APolylineTakesAnyNumberOfPoints) {
    NrvId id = 0;
    const NrvPoint points[4] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const NrvPoint moved[2] = {{1, 1}, {2, 2}};
    const double bulges[2] = {1, 0.5};
    double got[4] = {9, 9, 9, 9};
    uint32_t count = 0;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddPolyline(g_drawing, points, bulges, 2, 0, 0, &id));
    EXPECT_INT(0, Int(id, NRV_INT_CLOSED));
    EXPECT_INT(NRV_OK, NrvSetPoints(g_drawing, id, points, 4));
    ExpectPoints(id, points, 4);
    EXPECT_INT(NRV_OK, NrvGetBulges(g_drawing, id, got, 4, &count));
    EXPECT_NEAR_TO(1.0, got[0], 0);
    EXPECT_NEAR_TO(0.0, got[3], 0);
    EXPECT_INT(NRV_OK, NrvSetPoints(g_drawing, id, moved, 2));
    ExpectPoints(id, moved, 2);
    EXPECT_INT(NRV_OK, NrvAddPolyline(g_drawing, points, NULL, 4, 0, 0, &id));
    EXPECT_INT(NRV_OK, NrvGetBulges(g_drawing, id, got, 4, &count));
    EXPECT_NEAR_TO(0.0, got[0], 0);
    End();
}

C_TEST(CapiObjects, ATextHasItsPlaceHeightAndAngle) {
    NrvId id = 0;
    const NrvPoint corner = {5, 6};
    wchar_t text[8];
    uint32_t length = 0;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddText(g_drawing, 5, 6, L"\x4E2D text", 30, 12.5, 0xABCDEF, &id));
    EXPECT_INT(NRV_KIND_TEXT, Kind(id));
    ExpectPoints(id, &corner, 1);
    EXPECT_TEXT(L"\x4E2D text", CHostString(g_drawing, id, NRV_STRING_TEXT));
    EXPECT_NEAR_TO(12.5, Double(id, NRV_DOUBLE_TEXT_HEIGHT), 0);
    EXPECT_NEAR_TO(30.0, Double(id, NRV_DOUBLE_TEXT_ANGLE), 0);
    EXPECT_NEAR_TO(0.0, Double(id, NRV_DOUBLE_TEXT_RATIO), 0);
    EXPECT_INT(0xABCDEF, Int(id, NRV_INT_COLOR));
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_TEXT_ANGLE, -45));
    EXPECT_NEAR_TO(-45.0, Double(id, NRV_DOUBLE_TEXT_ANGLE), 0);
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_TEXT_WIDTH, 60));
    EXPECT_NEAR_TO(60.0, Double(id, NRV_DOUBLE_TEXT_WIDTH), 0);
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_TEXT_RATIO, 0.5));
    EXPECT_NEAR_TO(0.5, Double(id, NRV_DOUBLE_TEXT_RATIO), 0);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetDouble(g_drawing, id, NRV_DOUBLE_TEXT_HEIGHT, 0));
    EXPECT_INT(NRV_E_KIND, NrvGetString(g_drawing, id, NRV_STRING_NAME, text, 8, &length));
    EXPECT_INT(NRV_E_BUFFER, NrvGetString(g_drawing, id, NRV_STRING_TEXT, text, 6, &length));
    EXPECT_INT(6, length);
    EXPECT_INT(NRV_OK, NrvAddText(g_drawing, 0, 0, L"", 0, 0, 0, &id));
    EXPECT_NEAR_TO(20.0, Double(id, NRV_DOUBLE_TEXT_HEIGHT), 0);
    EXPECT_INT(NRV_E_ARGUMENT, NrvAddText(g_drawing, 0, 0, L"", 0, -1, 0, &id));
    End();
}

C_TEST(CapiObjects, AParameterHasItsNameAndWhatAHostGivesIt) {
    NrvId id = 0;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddParm(g_drawing, 5, 6, L"120", L"width", 20, 0, &id));
    EXPECT_INT(NRV_KIND_PARM, Kind(id));
    EXPECT_TEXT(L"120", CHostString(g_drawing, id, NRV_STRING_TEXT));
    EXPECT_TEXT(L"width", CHostString(g_drawing, id, NRV_STRING_NAME));
    EXPECT_TEXT(L"^((\\d\\.?\\d*)|([1-9]\\d*\\.?\\d*))$", CHostString(g_drawing, id, NRV_STRING_EXPRESSION));
    EXPECT_INT(2, Int(id, NRV_INT_PARM_TYPE));
    EXPECT_INT(1, Int(id, NRV_INT_PARM_BOX));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, id, NRV_INT_PARM_TYPE, 4));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, id, NRV_INT_PARM_BOX, 0));
    EXPECT_INT(4, Int(id, NRV_INT_PARM_TYPE));
    EXPECT_INT(0, Int(id, NRV_INT_PARM_BOX));
    const int32_t strings[] = {NRV_STRING_TEXT,        NRV_STRING_NAME,       NRV_STRING_MESSAGE,
                               NRV_STRING_DESCRIPTION, NRV_STRING_EXPRESSION, NRV_STRING_LINK};
    const wchar_t* const values[] = {L"t", L"n", L"m", L"d", L"e", L"l"};
    for (int i = 0; i < 6; ++i) {
        EXPECT_INT(NRV_OK, NrvSetString(g_drawing, id, strings[i], values[i]));
    }
    for (int i = 0; i < 6; ++i) {
        EXPECT_TEXT(values[i], CHostString(g_drawing, id, strings[i]));
    }
    End();
}

C_TEST(CapiObjects, ALabelAMarkAndAFrameHaveTheirPoints) {
    NrvId id = 0;
    const NrvPoint four[4] = {{0, 0}, {0, 10}, {20, 0}, {20, 10}};
    const NrvPoint center = {7, 8};
    const NrvPoint corners[2] = {{1, 2}, {3, 4}};
    NrvRect extents;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddLabel(g_drawing, four, 0x4CB122, &id));
    EXPECT_INT(NRV_KIND_LABEL, Kind(id));
    ExpectPoints(id, four, 4);
    EXPECT_INT(1, Int(id, NRV_INT_FIGURE));
    EXPECT_INT(0x4CB122, Int(id, NRV_INT_COLOR));
    EXPECT_NEAR_TO(3.0, Double(id, NRV_DOUBLE_TICK_SIZE), 0);
    EXPECT_NEAR_TO(1.0, Double(id, NRV_DOUBLE_TICK_WIDTH), 0);
    EXPECT_NEAR_TO(3.0, Double(id, NRV_DOUBLE_GAP), 0);
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_TICK_SIZE, 4));
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_TICK_WIDTH, 2));
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_GAP, 6));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, id, NRV_INT_FIGURE, 0));
    EXPECT_NEAR_TO(4.0, Double(id, NRV_DOUBLE_TICK_SIZE), 0);
    EXPECT_NEAR_TO(2.0, Double(id, NRV_DOUBLE_TICK_WIDTH), 0);
    EXPECT_NEAR_TO(6.0, Double(id, NRV_DOUBLE_GAP), 0);
    EXPECT_INT(0, Int(id, NRV_INT_FIGURE));
    EXPECT_INT(NRV_OK, NrvAddCenterPoint(g_drawing, 7, 8, 0, &id));
    EXPECT_INT(NRV_KIND_CENTER_POINT, Kind(id));
    ExpectPoints(id, &center, 1);
    EXPECT_INT(NRV_OK, NrvAddFrame(g_drawing, 1, 2, 3, 4, L"group", 0, &id));
    EXPECT_INT(NRV_KIND_FRAME, Kind(id));
    ExpectPoints(id, corners, 2);
    EXPECT_TEXT(L"group", CHostString(g_drawing, id, NRV_STRING_NAME));
    EXPECT_INT(NRV_E_STATE, NrvGetExtents(g_drawing, id, &extents));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetPoints(g_drawing, id, four, 3));
    EXPECT_INT(NRV_OK, NrvSetPoints(g_drawing, id, four, 2));
    ExpectPoints(id, four, 2);
    End();
}

// ---- Attributes ----

C_TEST(CapiObjects, AttributesAreSetWithinTheirRanges) {
    NrvId id = 0;
    int32_t value = 0;
    double number = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddLine(g_drawing, 0, 0, 1, 1, 0, &id) == NRV_OK);
    const struct {
        int32_t what, good, bad;
    } rows[] = {
        {NRV_INT_COLOR_INDEX, 140, 141}, {NRV_INT_COLOR_INDEX, -1, -3}, {NRV_INT_LINE_TYPE, 4, 5},
        {NRV_INT_LINE_TYPE, -1, -2},     {NRV_INT_LAYER, 32767, 32768}, {NRV_INT_LAYER, 0, -1},
        {NRV_INT_VISIBLE, 0, 2},         {NRV_INT_SELECTABLE, 0, -1},   {NRV_INT_SELECTED, 1, 2},
        {NRV_INT_WIDTH_LOCKED, 1, 2},
    };
    for (size_t i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
        EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, id, rows[i].what, rows[i].good));
        EXPECT_INT(NRV_E_ARGUMENT, NrvSetInt(g_drawing, id, rows[i].what, rows[i].bad));
        EXPECT_INT(rows[i].good, Int(id, rows[i].what));
    }
    EXPECT_INT(1, Count(NRV_LIST_SELECTED));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, id, NRV_INT_SELECTED, 0));
    EXPECT_INT(0, Count(NRV_LIST_SELECTED));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, id, NRV_INT_COLOR, 0x7F112233));
    EXPECT_INT(0x112233, Int(id, NRV_INT_COLOR));
    EXPECT_INT(-2, Int(id, NRV_INT_COLOR_INDEX));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, id, NRV_INT_COLOR_INDEX, 137));
    EXPECT_INT(0xFFFFFF, Int(id, NRV_INT_COLOR));
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, id, NRV_DOUBLE_LINE_WIDTH, 2.5));
    EXPECT_NEAR_TO(2.5, Double(id, NRV_DOUBLE_LINE_WIDTH), 0);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetDouble(g_drawing, id, NRV_DOUBLE_LINE_WIDTH, -2));
    EXPECT_INT(NRV_E_KIND, NrvGetInt(g_drawing, id, NRV_INT_CLOSED, &value));
    EXPECT_INT(NRV_E_KIND, NrvSetInt(g_drawing, id, NRV_INT_PARM_TYPE, 1));
    EXPECT_INT(NRV_E_KIND, NrvGetDouble(g_drawing, id, NRV_DOUBLE_RADIUS, &number));
    EXPECT_INT(NRV_E_KIND, NrvSetString(g_drawing, id, NRV_STRING_TEXT, L""));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetInt(g_drawing, id, 99, &value));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetDouble(g_drawing, id, 0, 1));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetString(g_drawing, id, 0, L""));
    EXPECT_INT(NRV_OK, NrvSetString(g_drawing, id, NRV_STRING_NAME, L"side"));
    EXPECT_TEXT(L"side", CHostString(g_drawing, id, NRV_STRING_NAME));
    EXPECT_INT(NRV_OK, NrvSetString(g_drawing, id, NRV_STRING_MESSAGE, L"note"));
    EXPECT_TEXT(L"note", CHostString(g_drawing, id, NRV_STRING_MESSAGE));
    End();
}

C_TEST(CapiObjects, TheKindHasAWordForTheUser) {
    NrvId id = 0;
    wchar_t text[16];
    uint32_t length = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddCircle(g_drawing, 0, 0, 1, 0, &id) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetKindName(g_drawing, id, text, 16, &length));
    EXPECT_INT(wcslen(text), length);
    EXPECT(length >= 1 && text[0] >= 0x4E00);
    End();
}

// ---- Ids, lists, order ----

C_TEST(CapiObjects, AnIdStaysThatOfItsObject) {
    NrvId ids[3] = {0};
    NrvId again[3] = {0};
    NrvId one = 0;
    uint32_t count = 0;
    REQUIRE(Begin());
    for (int i = 0; i < 3; ++i) {
        REQUIRE(NrvAddLine(g_drawing, i, 0, i, 10, 0, &ids[i]) == NRV_OK);
    }
    EXPECT(ids[0] != ids[1] && ids[1] != ids[2] && ids[0] != ids[2]);
    EXPECT_INT(NRV_OK, NrvGetObjects(g_drawing, NRV_LIST_DRAWING, again, 3, &count));
    EXPECT_INT(3, count);
    EXPECT(memcmp(ids, again, sizeof ids) == 0);
    EXPECT_INT(NRV_E_BUFFER, NrvGetObjects(g_drawing, NRV_LIST_DRAWING, again, 2, &count));
    EXPECT_INT(NRV_OK, NrvGetObject(g_drawing, NRV_LIST_DRAWING, 2, &one));
    EXPECT(one == ids[2]);
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetObject(g_drawing, NRV_LIST_DRAWING, 3, &one));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetObject(g_drawing, 3, 0, &one));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetObjects(g_drawing, -1, again, 3, &count));
    EXPECT_INT(NRV_OK, NrvRemove(g_drawing, ids[1]));
    EXPECT_INT(NRV_OK, NrvGetObjects(g_drawing, NRV_LIST_DRAWING, again, 3, &count));
    EXPECT_INT(2, count);
    EXPECT(again[0] == ids[0] && again[1] == ids[2]);
    End();
}

C_TEST(CapiObjects, ManyObjectsComeAndGoAndNoIdComesTwice) {
    enum { MANY = 3000 };
    static NrvId ids[MANY];
    NrvId last = 0;
    int32_t kind = 0;
    REQUIRE(Begin());
    for (int i = 0; i < MANY; ++i) {
        NrvId id = 0;
        EXPECT_INT(NRV_OK, NrvAddLine(g_drawing, i, 0, i, 10, 0, &id));
        EXPECT(id > last);
        last = id;
        ids[i] = id;
        if (i >= 10) {
            EXPECT_INT(NRV_OK, NrvRemove(g_drawing, ids[i - 10]));
        }
    }
    EXPECT_INT(10, Count(NRV_LIST_DRAWING));
    for (int i = 0; i < MANY; ++i) {
        EXPECT_INT(i < MANY - 10 ? NRV_E_OBJECT : NRV_OK, NrvGetKind(g_drawing, ids[i], &kind));
    }
    End();
}

C_TEST(CapiObjects, TheOrderIsReadAndChanged) {
    NrvId ids[3] = {0};
    uint32_t index = 9;
    REQUIRE(Begin());
    for (int i = 0; i < 3; ++i) {
        REQUIRE(NrvAddLine(g_drawing, i, 0, i, 10, 0, &ids[i]) == NRV_OK);
    }
    EXPECT_INT(NRV_OK, NrvSetOrder(g_drawing, ids[0], 1));
    EXPECT_INT(NRV_OK, NrvGetOrder(g_drawing, ids[0], &index));
    EXPECT_INT(1, index);
    EXPECT_INT(NRV_OK, NrvGetOrder(g_drawing, ids[1], &index));
    EXPECT_INT(0, index);
    EXPECT_INT(NRV_OK, NrvSetOrder(g_drawing, ids[0], UINT32_MAX));
    EXPECT_INT(NRV_OK, NrvGetOrder(g_drawing, ids[0], &index));
    EXPECT_INT(2, index);
    EXPECT_INT(NRV_OK, NrvSetOrder(g_drawing, ids[0], 0));
    EXPECT_INT(NRV_OK, NrvGetOrder(g_drawing, ids[0], &index));
    EXPECT_INT(0, index);
    EXPECT_INT(3, Count(NRV_LIST_DRAWING));
    End();
}

C_TEST(CapiObjects, TheSelectionIsExactlyWhatIsGiven) {
    NrvId ids[3] = {0};
    NrvId selected[3] = {0};
    uint32_t count = 0;
    REQUIRE(Begin());
    for (int i = 0; i < 3; ++i) {
        REQUIRE(NrvAddLine(g_drawing, i, 0, i, 10, 0, &ids[i]) == NRV_OK);
    }
    EXPECT_INT(NRV_OK, NrvSetSelection(g_drawing, ids, 2));
    const NrvId swapped[2] = {ids[2], ids[0]};
    EXPECT_INT(NRV_OK, NrvSetSelection(g_drawing, swapped, 2));
    EXPECT_INT(NRV_OK, NrvGetObjects(g_drawing, NRV_LIST_SELECTED, selected, 3, &count));
    EXPECT_INT(2, count);
    EXPECT(selected[0] == ids[2] && selected[1] == ids[0]);
    EXPECT_INT(0, Int(ids[1], NRV_INT_SELECTED));
    const NrvId bad[2] = {ids[1], 12345678};
    EXPECT_INT(NRV_E_OBJECT, NrvSetSelection(g_drawing, bad, 2));
    EXPECT_INT(2, Count(NRV_LIST_SELECTED)); // As before.
    EXPECT_INT(NRV_OK, NrvRemove(g_drawing, ids[0]));
    EXPECT_INT(1, Count(NRV_LIST_SELECTED));
    EXPECT_INT(NRV_OK, NrvSetSelection(g_drawing, NULL, 0));
    EXPECT_INT(0, Count(NRV_LIST_SELECTED));
    End();
}

// ---- Geometry ----

C_TEST(CapiObjects, ExtentsAreThoseOfAnObjectOrOfAll) {
    NrvId id = 0;
    NrvRect r = {0};
    REQUIRE(Begin());
    EXPECT_INT(NRV_E_STATE, NrvGetExtents(g_drawing, 0, &r));
    REQUIRE(NrvAddLine(g_drawing, 10, 20, -5, 8, 0, &id) == NRV_OK);
    REQUIRE(NrvAddCircle(g_drawing, 100, 0, 25, 0, NULL) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetExtents(g_drawing, id, &r));
    EXPECT_NEAR_TO(-5, r.left, 1e-9);
    EXPECT_NEAR_TO(8, r.bottom, 1e-9);
    EXPECT_NEAR_TO(10, r.right, 1e-9);
    EXPECT_NEAR_TO(20, r.top, 1e-9);
    EXPECT_INT(NRV_OK, NrvGetExtents(g_drawing, 0, &r));
    EXPECT_NEAR_TO(-5, r.left, 1e-9);
    EXPECT_NEAR_TO(-25, r.bottom, 1e-9);
    EXPECT_NEAR_TO(125, r.right, 1e-9);
    EXPECT_NEAR_TO(25, r.top, 1e-9);
    End();
}

C_TEST(CapiObjects, ATransformationMovesOneObjectOrAll) {
    NrvId first = 0;
    NrvId second = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddLine(g_drawing, 1, 0, 2, 0, 0, &first) == NRV_OK);
    REQUIRE(NrvAddLine(g_drawing, 3, 0, 4, 0, 0, &second) == NRV_OK);
    const double quarter[6] = {0, -1, 0, 1, 0, 0};
    const NrvPoint turned[2] = {{0, 1}, {0, 2}};
    const NrvPoint same[2] = {{3, 0}, {4, 0}};
    EXPECT_INT(NRV_OK, NrvTransform(g_drawing, first, quarter));
    ExpectPoints(first, turned, 2);
    ExpectPoints(second, same, 2);
    const double shift[6] = {1, 0, 10, 0, 1, -5};
    const NrvPoint shifted[2] = {{10, -4}, {10, -3}};
    const NrvPoint moved[2] = {{13, -5}, {14, -5}};
    EXPECT_INT(NRV_OK, NrvTransform(g_drawing, 0, shift));
    ExpectPoints(first, shifted, 2);
    ExpectPoints(second, moved, 2);
    End();
}

C_TEST(CapiObjects, GripsAreToldAndMoved) {
    NrvId id = 0;
    NrvPoint grips[8] = {{0, 0}};
    uint32_t count = 0;
    const NrvPoint moved[2] = {{0, 0}, {12, 3}};
    REQUIRE(Begin());
    REQUIRE(NrvAddLine(g_drawing, 0, 0, 10, 0, 0, &id) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetGrips(g_drawing, id, grips, 8, &count));
    EXPECT_INT(3, count); // Start, middle, end.
    EXPECT_NEAR_TO(5, grips[1].x, 1e-9);
    EXPECT_INT(NRV_OK, NrvMoveGrip(g_drawing, id, 2, 2, 3));
    ExpectPoints(id, moved, 2);
    EXPECT_INT(NRV_E_ARGUMENT, NrvMoveGrip(g_drawing, id, 3, 1, 1));
    EXPECT_INT(NRV_E_BUFFER, NrvGetGrips(g_drawing, id, grips, 2, &count));
    End();
}

// ---- Parameters, rows, layers ----

C_TEST(CapiObjects, ParametersAreFoundByNameAndByIndex) {
    NrvId a = 0;
    NrvId b = 0;
    NrvId found = 0;
    uint32_t count = 0;
    wchar_t text[16];
    uint32_t length = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddParm(g_drawing, 0, 0, L"10", L"A", 20, 0, &a) == NRV_OK);
    REQUIRE(NrvAddLine(g_drawing, 0, 0, 1, 1, 0, NULL) == NRV_OK);
    REQUIRE(NrvAddParm(g_drawing, 0, 0, L"20", L"B", 20, 0, &b) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetParmCount(g_drawing, &count));
    EXPECT_INT(2, count);
    EXPECT_INT(NRV_OK, NrvGetParm(g_drawing, 1, &found));
    EXPECT(found == b);
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetParm(g_drawing, 2, &found));
    EXPECT_INT(NRV_OK, NrvFindParm(g_drawing, L"A", &found));
    EXPECT(found == a);
    EXPECT_INT(NRV_E_WORD, NrvFindParm(g_drawing, L"a", &found));
    EXPECT_INT(NRV_OK, NrvSetParmValue(g_drawing, L"B", L"25.5"));
    EXPECT_INT(NRV_OK, NrvGetParmValue(g_drawing, L"B", text, 16, &length));
    EXPECT_TEXT(L"25.5", text);
    EXPECT_TEXT(L"25.5", CHostString(g_drawing, b, NRV_STRING_TEXT));
    EXPECT_TEXT(L"10", CHostString(g_drawing, a, NRV_STRING_TEXT));
    EXPECT_INT(NRV_E_WORD, NrvSetParmValue(g_drawing, L"C", L"1"));
    EXPECT_INT(NRV_E_WORD, NrvGetParmValue(g_drawing, L"", text, 16, &length));
    EXPECT_INT(NRV_E_BUFFER, NrvGetParmValue(g_drawing, L"B", text, 4, &length));
    EXPECT_INT(4, length);
    End();
}

C_TEST(CapiObjects, TheNumberDisplayDecidesWhatIsShown) {
    NrvId parm = 0;
    NrvId line = 0;
    int32_t show = -1;
    wchar_t text[16];
    uint32_t length = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddParm(g_drawing, 0, 0, L"12.345", L"a", 20, 0, &parm) == NRV_OK);
    REQUIRE(NrvAddLine(g_drawing, 0, 0, 1, 1, 0, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetShowDecimals(g_drawing, &show));
    EXPECT_INT(1, show);
    EXPECT_INT(NRV_OK, NrvGetShownText(g_drawing, parm, text, 16, &length));
    EXPECT_TEXT(L"12.345", text);
    EXPECT_INT(NRV_OK, NrvSetShowDecimals(g_drawing, 0));
    EXPECT_INT(NRV_OK, NrvGetShowDecimals(g_drawing, &show));
    EXPECT_INT(0, show);
    EXPECT_INT(NRV_OK, NrvGetShownText(g_drawing, parm, text, 16, &length));
    EXPECT_TEXT(L"12.3", text);
    EXPECT_TEXT(L"12.345", CHostString(g_drawing, parm, NRV_STRING_TEXT));
    EXPECT_INT(NRV_E_KIND, NrvGetShownText(g_drawing, line, text, 16, &length));
    End();
}

C_TEST(CapiObjects, RowsAreReadAndWrittenAsText) {
    NrvId id = 0;
    uint32_t rows = 0;
    int32_t type = 0;
    wchar_t text[32];
    uint32_t length = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddLine(g_drawing, 1, 2, 3, 4, 0, &id) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetRowCount(g_drawing, id, &rows));
    EXPECT(rows >= 4);
    // The first row of each kind is the colour index, the second the line width.
    EXPECT_INT(NRV_OK, NrvGetRow(g_drawing, id, 0, NRV_ROW_KEY, text, 32, &length));
    EXPECT_TEXT(L"color", text);
    EXPECT_INT(NRV_OK, NrvGetRow(g_drawing, id, 0, NRV_ROW_LABEL, text, 32, &length));
    EXPECT_TEXT(L"\x989C\x8272", text);
    EXPECT_INT(NRV_OK, NrvGetRow(g_drawing, id, 0, NRV_ROW_DESCRIPTION, text, 32, &length));
    EXPECT_INT(7, length);
    EXPECT_INT(NRV_OK, NrvGetRowType(g_drawing, id, 0, &type));
    EXPECT_INT(2, type); // VT_I2
    EXPECT_INT(NRV_OK, NrvGetRow(g_drawing, id, 0, NRV_ROW_VALUE, text, 32, &length));
    EXPECT_TEXT(L"-2", text);
    EXPECT_INT(NRV_OK, NrvSetRow(g_drawing, id, 0, L"7"));
    EXPECT_INT(7, Int(id, NRV_INT_COLOR_INDEX));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetRow(g_drawing, id, 0, L"7 apples"));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetRow(g_drawing, id, 0, L"70000"));
    EXPECT_INT(7, Int(id, NRV_INT_COLOR_INDEX));
    EXPECT_INT(NRV_OK, NrvGetRowType(g_drawing, id, 1, &type));
    EXPECT_INT(4, type); // VT_R4
    EXPECT_INT(NRV_OK, NrvSetRow(g_drawing, id, 1, L"2.5"));
    EXPECT_NEAR_TO(2.5, Double(id, NRV_DOUBLE_LINE_WIDTH), 0);
    EXPECT_INT(NRV_OK, NrvGetRow(g_drawing, id, 1, NRV_ROW_VALUE, text, 32, &length));
    EXPECT_TEXT(L"2.5", text);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetRow(g_drawing, id, 1, L"nan"));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetRow(g_drawing, id, rows, NRV_ROW_KEY, text, 32, &length));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetRow(g_drawing, id, 0, 5, text, 32, &length));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetRowType(g_drawing, id, UINT32_MAX, &type));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetRow(g_drawing, id, rows, L"1"));
    End();
}

C_TEST(CapiObjects, LayersAreAddedReadAndWritten) {
    NrvLayer layer = {0};
    uint32_t count = 0;
    uint32_t index = 0;
    REQUIRE(Begin());
    layer.size = sizeof layer;
    EXPECT_INT(NRV_OK, NrvGetLayerCount(g_drawing, &count));
    EXPECT_INT(1, count);
    EXPECT_INT(NRV_OK, NrvGetLayer(g_drawing, 0, &layer));
    EXPECT_TEXT(L"Layer 0", layer.name);
    EXPECT_INT(137, layer.color_index);
    EXPECT_NEAR_TO(1.0, layer.line_width, 0);
    EXPECT_INT(NRV_OK, NrvAddLayer(g_drawing, L"\x8F74\x7EBF", &index));
    EXPECT_INT(1, index);
    EXPECT_INT(NRV_OK, NrvGetLayer(g_drawing, 1, &layer));
    EXPECT_TEXT(L"\x8F74\x7EBF", layer.name);
    layer.color_index = -2;
    layer.color = 0x102030;
    layer.line_type = 2;
    layer.line_width = 1.5;
    layer.state = 9;
    wcscpy(layer.name, L"twenty letters exact");
    EXPECT_INT(NRV_OK, NrvSetLayer(g_drawing, 1, &layer));
    NrvLayer got = {0};
    got.size = sizeof got;
    EXPECT_INT(NRV_OK, NrvGetLayer(g_drawing, 1, &got));
    EXPECT(memcmp(&layer, &got, sizeof got) == 0);
    wcscpy(layer.name, L"twenty-one letters ..");
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetLayer(g_drawing, 1, &layer));
    wcscpy(layer.name, L"x");
    layer.color_index = 141;
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetLayer(g_drawing, 1, &layer));
    layer.color_index = 0;
    layer.line_width = -1;
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetLayer(g_drawing, 1, &layer));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetLayer(g_drawing, 2, &layer));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetLayer(g_drawing, 2, &layer));
    EXPECT_INT(NRV_E_ARGUMENT, NrvAddLayer(g_drawing, L"twenty-one letters ..", NULL));
    for (count = 2; count < 101; ++count) {
        EXPECT_INT(NRV_OK, NrvAddLayer(g_drawing, L"more", NULL));
    }
    EXPECT_INT(NRV_E_STATE, NrvAddLayer(g_drawing, L"one too many", NULL));
    End();
}

C_TEST(CapiObjects, BackgroundAndPenIndexAreSet) {
    uint32_t color = 1;
    int32_t index = 0;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvGetBackground(g_drawing, &color));
    EXPECT_INT(0, color);
    EXPECT_INT(NRV_OK, NrvSetBackground(g_drawing, 0x102030));
    EXPECT_INT(NRV_OK, NrvGetBackground(g_drawing, &color));
    EXPECT_INT(0x102030, color);
    EXPECT_INT(NRV_OK, NrvGetPenIndex(g_drawing, &index));
    EXPECT_INT(137, index);
    EXPECT_INT(NRV_OK, NrvSetPenIndex(g_drawing, 7));
    EXPECT_INT(NRV_OK, NrvGetPenIndex(g_drawing, &index));
    EXPECT_INT(7, index);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetPenIndex(g_drawing, 141));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetPenIndex(g_drawing, -2));
    End();
}

C_TEST(CapiObjects, TheBackgroundHasAnIndexAndTheTableItsColours) {
    uint32_t color = 1;
    int32_t index = 0;
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvGetTableColor(137, &color));
    EXPECT_INT(0xFFFFFF, color);
    EXPECT_INT(NRV_OK, NrvSetBackgroundIndex(g_drawing, 137));
    EXPECT_INT(NRV_OK, NrvGetBackground(g_drawing, &color));
    EXPECT_INT(0xFFFFFF, color);
    EXPECT_INT(NRV_OK, NrvGetBackgroundIndex(g_drawing, &index));
    EXPECT_INT(137, index);
    EXPECT_INT(NRV_OK, NrvSetBackground(g_drawing, 0x102030));
    EXPECT_INT(NRV_OK, NrvGetBackgroundIndex(g_drawing, &index));
    EXPECT_INT(-2, index);
    EXPECT_INT(NRV_OK, NrvSetBackgroundIndex(g_drawing, 0));
    EXPECT_INT(NRV_OK, NrvSetBackgroundIndex(g_drawing, -2));
    EXPECT_INT(NRV_OK, NrvGetBackground(g_drawing, &color));
    EXPECT_INT(0x102030, color); // Hidden by the index, not lost.
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetBackgroundIndex(g_drawing, -1));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetBackgroundIndex(g_drawing, 141));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetTableColor(141, &color));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetTableColor(-1, &color));
    End();
}

C_TEST(CapiObjects, WhatIsKeptForTheHostComesBackFromAStream) {
    static unsigned char bytes[4096];
    uint32_t size = 0;
    NrvId text = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddText(g_drawing, 0, 0, L"text", 0, 10, 0, &text) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, text, NRV_INT_BRUSH, -7));
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, text, NRV_DOUBLE_SCALE, 2.5));
    EXPECT_INT(NRV_OK, NrvSetDouble(g_drawing, text, NRV_DOUBLE_TEXT_OFFSET, -0.5));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, text, NRV_INT_INVERTED, 1));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, text, NRV_INT_TEXT_COLOR, 0x0000FF));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, text, NRV_INT_TEXT_OPAQUE, 1));
    EXPECT_INT(0x0000FF, Int(text, NRV_INT_TEXT_COLOR));
    EXPECT_INT(1, Int(text, NRV_INT_TEXT_OPAQUE));
    EXPECT_INT(NRV_OK, NrvSaveBuffer(g_drawing, bytes, sizeof bytes, &size));
    EXPECT_INT(NRV_OK, NrvLoadBuffer(g_drawing, bytes, size, NULL));
    REQUIRE(NrvGetObject(g_drawing, NRV_LIST_DRAWING, 0, &text) == NRV_OK);
    EXPECT_INT(-7, Int(text, NRV_INT_BRUSH));
    EXPECT_NEAR_TO(2.5, Double(text, NRV_DOUBLE_SCALE), 0);
    EXPECT_NEAR_TO(-0.5, Double(text, NRV_DOUBLE_TEXT_OFFSET), 0);
    EXPECT_INT(1, Int(text, NRV_INT_INVERTED));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, text, NRV_INT_INVERTED, 0));
    EXPECT_INT(0, Int(text, NRV_INT_INVERTED));
    EXPECT_INT(0, Int(text, NRV_INT_TEXT_OPAQUE)); // Not stored.
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetInt(g_drawing, text, NRV_INT_TEXT_OPAQUE, 2));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetInt(g_drawing, text, NRV_INT_BRUSH, 40000));
    EXPECT_INT(NRV_E_KIND, NrvSetInt(g_drawing, text, NRV_INT_GAP, 0));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, text, NRV_INT_SELECTED, 1));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, text, NRV_INT_INVERTED, 0)); // It is not.
    EXPECT_INT(1, Count(NRV_LIST_SELECTED));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, text, NRV_INT_INVERTED, 1));
    EXPECT_INT(0, Count(NRV_LIST_SELECTED));
    EXPECT_INT(0, Int(text, NRV_INT_SELECTED));
    End();
}

C_TEST(CapiObjects, TheNumberOfAnObjectIsReadFromItsStream) {
    unsigned char bytes[1024];
    unsigned char changed[1024];
    uint32_t size = 0;
    int found = 0;
    NrvId id = 0;
    REQUIRE(NrvCreateDrawing(&g_drawing) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvAddLine(g_drawing, 1, 2, 3, 4, 0, &id));
    EXPECT_INT(0, Int(id, NRV_INT_NUMBER));
    EXPECT_INT(NRV_E_KIND, NrvSetInt(g_drawing, id, NRV_INT_NUMBER, 1));
    REQUIRE(NrvSaveBuffer(g_drawing, bytes, sizeof bytes, &size) == NRV_OK);
    // The number is four bytes at one place of the stream; behind the header of 38 bytes any place is tried.
    for (uint32_t at = 38; at + 4 <= size; ++at) {
        memcpy(changed, bytes, size);
        memcpy(changed + at, "\x7B\x01\xC8\x01", 4);
        if (NrvLoadBuffer(g_drawing, changed, size, NULL) == NRV_OK &&
            NrvGetObject(g_drawing, NRV_LIST_DRAWING, 0, &id) == NRV_OK) {
            found += Int(id, NRV_INT_NUMBER) == 0x01C8017B;
        }
    }
    EXPECT_INT(1, found);
    End();
}

C_TEST(CapiObjects, ALabelHasAGapOrNone) {
    const NrvPoint four[4] = {{0, 0}, {0, 10}, {20, 0}, {20, 10}};
    NrvId label = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddLabel(g_drawing, four, 0, &label) == NRV_OK);
    EXPECT_INT(1, Int(label, NRV_INT_GAP));
    EXPECT_INT(NRV_OK, NrvSetInt(g_drawing, label, NRV_INT_GAP, 0));
    EXPECT_INT(0, Int(label, NRV_INT_GAP));
    End();
}

C_TEST(CapiObjects, VerticesComeAndGoWithTheTagsAndBulgesOfTheirSegments) {
    const NrvPoint three[3] = {{0, 0}, {10, 0}, {10, 10}};
    const double bulges[3] = {0.5, 0, 0};
    const NrvPoint four[4] = {{0, 0}, {5, -3}, {10, 0}, {10, 10}};
    const NrvPoint left[3] = {{5, -3}, {10, 0}, {10, 10}};
    const NrvPoint five[4] = {{5, -3}, {10, 0}, {10, 10}, {7, 7}};
    double got[5] = {0};
    uint32_t count = 0;
    wchar_t text[16];
    NrvId id = 0;
    NrvId line = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddPolyline(g_drawing, three, bulges, 3, 0, 0xFF0000, &id) == NRV_OK);
    REQUIRE(NrvAddLine(g_drawing, 0, 0, 1, 1, 0, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetSegmentString(g_drawing, id, 1, NRV_STRING_NAME, L"side"));
    EXPECT_INT(NRV_OK, NrvInsertVertex(g_drawing, id, 1, 5, -3));
    ExpectPoints(id, four, 4);
    EXPECT_INT(NRV_OK, NrvGetBulges(g_drawing, id, got, 5, &count));
    EXPECT_NEAR_TO(0.5, got[0], 0);
    EXPECT_NEAR_TO(0.5, got[1], 0); // Of the segment that was divided.
    EXPECT_INT(NRV_OK, NrvGetSegmentString(g_drawing, id, 2, NRV_STRING_NAME, text, 16, &count));
    EXPECT_TEXT(L"side", text);
    EXPECT_INT(NRV_OK, NrvRemoveVertex(g_drawing, id, 0));
    ExpectPoints(id, left, 3);
    EXPECT_INT(NRV_OK, NrvInsertVertex(g_drawing, id, 3, 7, 7));
    ExpectPoints(id, five, 4);
    EXPECT_INT(NRV_E_ARGUMENT, NrvInsertVertex(g_drawing, id, 5, 0, 0));
    EXPECT_INT(NRV_E_ARGUMENT, NrvRemoveVertex(g_drawing, id, 4));
    for (int i = 0; i < 3; ++i) {
        EXPECT_INT(NRV_OK, NrvRemoveVertex(g_drawing, id, 0));
    }
    EXPECT_INT(NRV_E_ARGUMENT, NrvRemoveVertex(g_drawing, id, 0)); // The last one stays.
    EXPECT_INT(NRV_E_KIND, NrvInsertVertex(g_drawing, line, 0, 0, 0));
    EXPECT_INT(NRV_E_KIND, NrvRemoveVertex(g_drawing, line, 0));
    EXPECT_INT(NRV_E_KIND, NrvSetSegmentColor(g_drawing, line, 0, 1, 0));
    EXPECT_INT(NRV_E_KIND, NrvSetSnapPoints(g_drawing, line, NULL, 0));
    End();
}

C_TEST(CapiObjects, ASegmentHasAColourOfItsOwn) {
    const NrvPoint three[3] = {{10, 50}, {50, 50}, {90, 50}};
    static uint32_t pixels[100 * 100];
    NrvPicture p = {.size = sizeof p};
    NrvId id = 0;
    uint32_t size = 0;
    REQUIRE(Begin());
    REQUIRE(NrvAddPolyline(g_drawing, three, NULL, 3, 0, 0xFF0000, &id) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetDefaultPicture(&p));
    p.show = NRV_SHOW_WINDOW;
    p.width = p.height = 100;
    p.window.right = p.window.top = 100;
    EXPECT_INT(NRV_OK, NrvSetSegmentColor(g_drawing, id, 1, 1, 0x00FF00));
    EXPECT_INT(NRV_OK, NrvRender(g_drawing, &p, NRV_FORMAT_PIXELS, pixels, sizeof pixels, &size, NULL));
    EXPECT_INT(0xFFFF0000, pixels[50 * 100 + 30]);
    EXPECT_INT(0xFF00FF00, pixels[50 * 100 + 70]);
    EXPECT_INT(NRV_OK, NrvSetSegmentColor(g_drawing, id, 1, 0, 0));
    EXPECT_INT(NRV_OK, NrvRender(g_drawing, &p, NRV_FORMAT_PIXELS, pixels, sizeof pixels, &size, NULL));
    EXPECT_INT(0xFFFF0000, pixels[50 * 100 + 70]);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetSegmentColor(g_drawing, id, 3, 1, 0));
    End();
}

C_TEST(CapiObjects, DistancesAndFeetAreMeasured) {
    NrvId line = 0;
    NrvId circle = 0;
    double distance = -1;
    NrvPoint feet[2] = {{0, 0}};
    uint32_t count = 99;
    REQUIRE(Begin());
    REQUIRE(NrvAddLine(g_drawing, 0, 0, 10, 0, 0, &line) == NRV_OK);
    REQUIRE(NrvAddCircle(g_drawing, 0, 0, 5, 0, &circle) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetDistance(g_drawing, line, 4, 3, &distance));
    EXPECT_NEAR_TO(3, distance, 1e-6);
    EXPECT_INT(NRV_OK, NrvGetDistance(g_drawing, line, 13, 4, &distance));
    EXPECT_NEAR_TO(5, distance, 1e-6); // From the end.
    EXPECT_INT(NRV_OK, NrvGetDistance(g_drawing, circle, 0, 8, &distance));
    EXPECT_NEAR_TO(3, distance, 1e-6);
    EXPECT_INT(NRV_OK, NrvGetFeet(g_drawing, line, 14, 3, feet, 2, &count));
    EXPECT_INT(1, count);
    EXPECT_NEAR_TO(14, feet[0].x, 1e-9); // Beyond the end.
    EXPECT_NEAR_TO(0, feet[0].y, 1e-9);
    EXPECT_INT(NRV_OK, NrvGetFeet(g_drawing, circle, 14, 3, feet, 2, &count));
    EXPECT_INT(0, count);
    End();
}

C_TEST(CapiObjects, LayersAreRemovedAndAddedAnew) {
    uint32_t count = 9;
    uint32_t index = 9;
    NrvLayer layer = {.size = sizeof layer};
    REQUIRE(Begin());
    EXPECT_INT(NRV_OK, NrvAddLayer(g_drawing, L"more", NULL));
    EXPECT_INT(NRV_OK, NrvAddLine(g_drawing, 0, 0, 1, 1, 0, NULL));
    EXPECT_INT(NRV_OK, NrvRemoveLayers(g_drawing));
    EXPECT_INT(NRV_OK, NrvGetLayerCount(g_drawing, &count));
    EXPECT_INT(0, count);
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetLayer(g_drawing, 0, &layer));
    EXPECT_INT(NRV_OK, NrvRender(g_drawing, NULL, NRV_FORMAT_SVG, NULL, 0, &count, NULL));
    EXPECT_INT(NRV_OK, NrvAddLayer(g_drawing, L"first", &index));
    EXPECT_INT(0, index);
    End();
}
