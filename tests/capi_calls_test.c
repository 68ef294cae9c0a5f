// The C interface: every function with a wrong handle, a wrong object, a wrong thread, and with null.

#include "support/CHost.h"

#include <math.h>
#include <stdlib.h>
#include <string.h>

// One call of each function that takes a handle, with arguments that are right otherwise.
typedef NrvResult (*Call)(NrvHandle handle, NrvId id);

enum Needs { ANY, WINDOW, PARM_VIEW, DRAWING };

typedef struct Row {
    const char* name;
    Call call;
    int needs;  // Of enum Needs: the handles that it takes.
    int usesId; // 1: an object; 2: one, or 0 for the whole drawing.
} Row;

static int32_t g_int;
static uint32_t g_uint;
static double g_double;
static double g_double2;
static NrvId g_id;
static wchar_t g_text[256];
static NrvPoint g_points[64];
static double g_doubles[64];
static NrvId g_ids[64];
static NrvRect g_rect;
static NrvLoad g_load;
static NrvLayer g_layer;
static NrvMapping g_mapping;
static NrvEditingOptions g_options = {.size = sizeof g_options, .figure_height = 1, .pixel_scale = 1};
static NrvPictureResult g_facts = {sizeof g_facts, 0, 0, 0, 0, 0, 0};
static unsigned char g_bytes[65536];
static const NrvPoint g_four[4] = {{0, 0}, {0, 10}, {20, 0}, {20, 10}};
static const double g_same[6] = {1, 0, 0, 0, 1, 0};

#define CALL(name, expression)                                                                                         \
    static NrvResult Call_##name(NrvHandle h, NrvId id) {                                                              \
        (void)id;                                                                                                      \
        return expression;                                                                                             \
    }

CALL(NrvFreeDrawing, NrvFreeDrawing(h))
CALL(NrvLoadBuffer, NrvLoadBuffer(h, "x", 1, NULL))
CALL(NrvLoadFile, NrvLoadFile(h, L"no such file", NULL))
CALL(NrvSaveBuffer, NrvSaveBuffer(h, g_bytes, sizeof g_bytes, &g_uint))
CALL(NrvSaveFile, NrvSaveFile(h, L"no such folder\\file"))
CALL(NrvClear, NrvClear(h))
CALL(NrvGetModified, NrvGetModified(h, &g_int))
CALL(NrvSetModified, NrvSetModified(h, 0))
CALL(NrvAddLine, NrvAddLine(h, 0, 0, 10, 10, 0xFF, &g_id))
CALL(NrvAddNetLine, NrvAddNetLine(h, 0, 0, 10, 10, 0xFF, &g_id))
CALL(NrvAddCircle, NrvAddCircle(h, 0, 0, 10, 0xFF, &g_id))
CALL(NrvAddArc, NrvAddArc(h, 0, 0, 10, 0, 1, 0xFF, &g_id))
CALL(NrvAddArc3, NrvAddArc3(h, 1, 0, 0, 1, -1, 0, 0xFF, &g_id))
CALL(NrvAddCenterPoint, NrvAddCenterPoint(h, 0, 0, 0xFF, &g_id))
CALL(NrvAddPolyline, NrvAddPolyline(h, g_four, NULL, 4, 1, 0xFF, &g_id))
CALL(NrvAddText, NrvAddText(h, 0, 0, L"text", 0, 10, 0xFF, &g_id))
CALL(NrvAddParm, NrvAddParm(h, 0, 0, L"1", L"a", 10, 0xFF, &g_id))
CALL(NrvAddLabel, NrvAddLabel(h, g_four, 0xFF, &g_id))
CALL(NrvAddFrame, NrvAddFrame(h, 0, 0, 10, 10, L"f", 0xFF, &g_id))
CALL(NrvGetObjects, NrvGetObjects(h, NRV_LIST_DRAWING, g_ids, 64, &g_uint))
CALL(NrvGetObject, NrvGetObject(h, NRV_LIST_DRAWING, 0, &g_id))
CALL(NrvGetKind, NrvGetKind(h, id, &g_int))
CALL(NrvGetKindName, NrvGetKindName(h, id, g_text, 256, &g_uint))
CALL(NrvRemove, NrvRemove(h, id))
CALL(NrvGetOrder, NrvGetOrder(h, id, &g_uint))
CALL(NrvSetOrder, NrvSetOrder(h, id, 0))
CALL(NrvGetPoints, NrvGetPoints(h, id, g_points, 64, &g_uint))
CALL(NrvSetPoints, NrvSetPoints(h, id, g_four, 4))
CALL(NrvGetBulges, NrvGetBulges(h, id, g_doubles, 64, &g_uint))
CALL(NrvSetBulges, NrvSetBulges(h, id, g_same, 4))
CALL(NrvGetInt, NrvGetInt(h, id, NRV_INT_LAYER, &g_int))
CALL(NrvSetInt, NrvSetInt(h, id, NRV_INT_LAYER, 0))
CALL(NrvGetDouble, NrvGetDouble(h, id, NRV_DOUBLE_LINE_WIDTH, &g_double))
CALL(NrvSetDouble, NrvSetDouble(h, id, NRV_DOUBLE_LINE_WIDTH, 1))
CALL(NrvGetString, NrvGetString(h, id, NRV_STRING_NAME, g_text, 256, &g_uint))
CALL(NrvSetString, NrvSetString(h, id, NRV_STRING_NAME, L"n"))
CALL(NrvGetSegmentString, NrvGetSegmentString(h, id, 0, NRV_STRING_NAME, g_text, 256, &g_uint))
CALL(NrvSetSegmentString, NrvSetSegmentString(h, id, 0, NRV_STRING_NAME, L"n"))
CALL(NrvGetExtents, NrvGetExtents(h, id, &g_rect))
CALL(NrvTransform, NrvTransform(h, id, g_same))
CALL(NrvGetGrips, NrvGetGrips(h, id, g_points, 64, &g_uint))
CALL(NrvMoveGrip, NrvMoveGrip(h, id, 0, 1, 1))
CALL(NrvGetParmCount, NrvGetParmCount(h, &g_uint))
CALL(NrvGetParm, NrvGetParm(h, 0, &g_id))
CALL(NrvFindParm, NrvFindParm(h, L"a", &g_id))
CALL(NrvGetParmValue, NrvGetParmValue(h, L"a", g_text, 256, &g_uint))
CALL(NrvSetParmValue, NrvSetParmValue(h, L"a", L"1"))
CALL(NrvGetShownText, NrvGetShownText(h, id, g_text, 256, &g_uint))
CALL(NrvGetRowCount, NrvGetRowCount(h, id, &g_uint))
CALL(NrvGetRowType, NrvGetRowType(h, id, 0, &g_int))
CALL(NrvGetRow, NrvGetRow(h, id, 0, NRV_ROW_KEY, g_text, 256, &g_uint))
CALL(NrvSetRow, NrvSetRow(h, id, 0, L"1"))
CALL(NrvGetLayerCount, NrvGetLayerCount(h, &g_uint))
CALL(NrvAddLayer, NrvAddLayer(h, L"layer", &g_uint))
CALL(NrvGetLayer, NrvGetLayer(h, 0, &g_layer))
CALL(NrvSetLayer, NrvSetLayer(h, 0, &g_layer))
CALL(NrvSetSelection, NrvSetSelection(h, NULL, 0))
CALL(NrvGetHistory, NrvGetHistory(h, &g_int))
CALL(NrvSetHistory, NrvSetHistory(h, 0))
CALL(NrvUndo, NrvUndo(h))
CALL(NrvRedo, NrvRedo(h))
CALL(NrvGetStepCount, NrvGetStepCount(h, 0, &g_uint))
CALL(NrvGetStepName, NrvGetStepName(h, 0, 0, g_text, 256, &g_uint))
CALL(NrvBeginStep, NrvBeginStep(h, NULL, NULL))
CALL(NrvEndStep, NrvEndStep(h))
CALL(NrvDoCommand, NrvDoCommand(h, L"line"))
CALL(NrvGetRunningCommand, NrvGetRunningCommand(h, g_text, 256, &g_uint))
CALL(NrvCancelCommand, NrvCancelCommand(h))
CALL(NrvEnterDistance, NrvEnterDistance(h, 10))
CALL(NrvGetSnapMode, NrvGetSnapMode(h, &g_int))
CALL(NrvSetSnapMode, NrvSetSnapMode(h, 15))
CALL(NrvGetOrtho, NrvGetOrtho(h, &g_int))
CALL(NrvSetOrtho, NrvSetOrtho(h, 0))
CALL(NrvGetMapping, NrvGetMapping(h, &g_mapping))
CALL(NrvSetMapping, NrvSetMapping(h, &g_mapping))
CALL(NrvZoomExtents, NrvZoomExtents(h))
CALL(NrvZoomInto, NrvZoomInto(h, 0, 0, 100, 100))
CALL(NrvSetZoomMargin, NrvSetZoomMargin(h, 15, 0))
CALL(NrvToPixels, NrvToPixels(h, 1, 1, &g_double, &g_double2))
CALL(NrvToDrawing, NrvToDrawing(h, 1, 1, &g_double, &g_double2))
CALL(NrvHitTest, NrvHitTest(h, 1, 1, &g_id, NULL))
CALL(NrvPaint, NrvPaint(h, NULL))
CALL(NrvGetShowDecimals, NrvGetShowDecimals(h, &g_int))
CALL(NrvSetShowDecimals, NrvSetShowDecimals(h, 0))
CALL(NrvGetBackground, NrvGetBackground(h, &g_uint))
CALL(NrvSetBackground, NrvSetBackground(h, 0))
CALL(NrvGetPenIndex, NrvGetPenIndex(h, &g_int))
CALL(NrvSetPenIndex, NrvSetPenIndex(h, 137))
CALL(NrvMeasurePicture, NrvMeasurePicture(h, NULL, &g_facts))
CALL(NrvRender, NrvRender(h, NULL, NRV_FORMAT_SVG, g_bytes, sizeof g_bytes, &g_uint, NULL))
CALL(NrvRenderFile, NrvRenderFile(h, NULL, NRV_FORMAT_SVG, L"no such folder\\file", NULL))
CALL(NrvPaintPicture, NrvPaintPicture(h, NULL, NULL, NULL))
CALL(NrvSaveObjects, NrvSaveObjects(h, &id, 1, g_bytes, sizeof g_bytes, &g_uint))
CALL(NrvInsertBuffer, NrvInsertBuffer(h, "x", 1, 0, 0, &g_uint))
CALL(NrvCopyObjects, NrvCopyObjects(h, &id, 1))
CALL(NrvCopyPicture, NrvCopyPicture(h, NULL))
CALL(NrvPaste, NrvPaste(h))
CALL(NrvGetEditingOptions, NrvGetEditingOptions(h, &g_options))
CALL(NrvSetEditingOptions, NrvSetEditingOptions(h, &g_options))
CALL(NrvInsertVertex, NrvInsertVertex(h, id, 0, 1, 1))
CALL(NrvRemoveVertex, NrvRemoveVertex(h, id, 0))
CALL(NrvSetSegmentColor, NrvSetSegmentColor(h, id, 0, 1, 0xFF))
CALL(NrvSetSnapPoints, NrvSetSnapPoints(h, id, NULL, 0))
CALL(NrvGetDistance, NrvGetDistance(h, id, 1, 1, &g_double))
CALL(NrvGetFeet, NrvGetFeet(h, id, 1, 1, g_points, 64, &g_uint))
CALL(NrvRemoveLayers, NrvRemoveLayers(h))
CALL(NrvSetStepLimits, NrvSetStepLimits(h, 1000, 1))
CALL(NrvSnap, NrvSnap(h, 1, 1, &g_double, &g_double2, &g_int))
CALL(NrvHitCurve, NrvHitCurve(h, 1, 1, &g_id, NULL))
CALL(NrvGetBackgroundIndex, NrvGetBackgroundIndex(h, &g_int))
CALL(NrvSetBackgroundIndex, NrvSetBackgroundIndex(h, 7))
CALL(NrvGetWheel, NrvGetWheel(h, &g_int))
CALL(NrvSetTooltip, NrvSetTooltip(h, NULL))
CALL(NrvBeginEdit, NrvBeginEdit(h, id))
CALL(NrvGetEdit, NrvGetEdit(h, &g_id))
CALL(NrvGetEditText, NrvGetEditText(h, g_text, 256, &g_uint))
CALL(NrvSetEditText, NrvSetEditText(h, L"1"))
CALL(NrvEndEdit, NrvEndEdit(h))
CALL(NrvGetStrictRefusal, NrvGetStrictRefusal(h, &g_int))
CALL(NrvSetStrictRefusal, NrvSetStrictRefusal(h, 0))
CALL(NrvSetWheel, NrvSetWheel(h, 1))
CALL(NrvSetCallback, NrvSetCallback(h, NULL, NULL))
CALL(NrvGetEventMask, NrvGetEventMask(h, &g_uint))
CALL(NrvSetEventMask, NrvSetEventMask(h, 0))
CALL(NrvGetMessages, NrvGetMessages(h, &g_int))
CALL(NrvSetMessages, NrvSetMessages(h, NRV_MESSAGES_SILENT))
CALL(NrvGetLastMessage, NrvGetLastMessage(h, g_text, 256, &g_uint))

#define ROW(name, needs, usesId)                                                                                       \
    { #name, Call_##name, needs, usesId }
static const Row g_rows[] = {
    ROW(NrvFreeDrawing, DRAWING, 0),
    ROW(NrvLoadBuffer, ANY, 0),
    ROW(NrvLoadFile, ANY, 0),
    ROW(NrvSaveBuffer, ANY, 0),
    ROW(NrvSaveFile, ANY, 0),
    ROW(NrvClear, ANY, 0),
    ROW(NrvGetModified, ANY, 0),
    ROW(NrvSetModified, ANY, 0),
    ROW(NrvAddLine, ANY, 0),
    ROW(NrvAddNetLine, ANY, 0),
    ROW(NrvAddCircle, ANY, 0),
    ROW(NrvAddArc, ANY, 0),
    ROW(NrvAddArc3, ANY, 0),
    ROW(NrvAddCenterPoint, ANY, 0),
    ROW(NrvAddPolyline, ANY, 0),
    ROW(NrvAddText, ANY, 0),
    ROW(NrvAddParm, ANY, 0),
    ROW(NrvAddLabel, ANY, 0),
    ROW(NrvAddFrame, ANY, 0),
    ROW(NrvGetObjects, ANY, 0),
    ROW(NrvGetObject, ANY, 0),
    ROW(NrvGetKind, ANY, 1),
    ROW(NrvGetKindName, ANY, 1),
    ROW(NrvRemove, ANY, 1),
    ROW(NrvGetOrder, ANY, 1),
    ROW(NrvSetOrder, ANY, 1),
    ROW(NrvGetPoints, ANY, 1),
    ROW(NrvSetPoints, ANY, 1),
    ROW(NrvGetBulges, ANY, 1),
    ROW(NrvSetBulges, ANY, 1),
    ROW(NrvGetInt, ANY, 1),
    ROW(NrvSetInt, ANY, 1),
    ROW(NrvGetDouble, ANY, 1),
    ROW(NrvSetDouble, ANY, 1),
    ROW(NrvGetString, ANY, 1),
    ROW(NrvSetString, ANY, 1),
    ROW(NrvGetSegmentString, ANY, 1),
    ROW(NrvSetSegmentString, ANY, 1),
    ROW(NrvGetExtents, ANY, 2),
    ROW(NrvTransform, ANY, 2),
    ROW(NrvGetGrips, ANY, 1),
    ROW(NrvMoveGrip, ANY, 1),
    ROW(NrvGetParmCount, ANY, 0),
    ROW(NrvGetParm, ANY, 0),
    ROW(NrvFindParm, ANY, 0),
    ROW(NrvGetParmValue, ANY, 0),
    ROW(NrvSetParmValue, ANY, 0),
    ROW(NrvGetShownText, ANY, 1),
    ROW(NrvGetRowCount, ANY, 1),
    ROW(NrvGetRowType, ANY, 1),
    ROW(NrvGetRow, ANY, 1),
    ROW(NrvSetRow, ANY, 1),
    ROW(NrvGetLayerCount, ANY, 0),
    ROW(NrvAddLayer, ANY, 0),
    ROW(NrvGetLayer, ANY, 0),
    ROW(NrvSetLayer, ANY, 0),
    ROW(NrvSetSelection, ANY, 0),
    ROW(NrvGetHistory, ANY, 0),
    ROW(NrvSetHistory, ANY, 0),
    ROW(NrvUndo, ANY, 0),
    ROW(NrvRedo, ANY, 0),
    ROW(NrvGetStepCount, ANY, 0),
    ROW(NrvGetStepName, ANY, 0),
    ROW(NrvBeginStep, ANY, 0),
    ROW(NrvEndStep, ANY, 0),
    ROW(NrvDoCommand, WINDOW, 0),
    ROW(NrvGetRunningCommand, WINDOW, 0),
    ROW(NrvCancelCommand, WINDOW, 0),
    ROW(NrvEnterDistance, WINDOW, 0),
    ROW(NrvGetSnapMode, WINDOW, 0),
    ROW(NrvSetSnapMode, WINDOW, 0),
    ROW(NrvGetOrtho, WINDOW, 0),
    ROW(NrvSetOrtho, WINDOW, 0),
    ROW(NrvGetMapping, ANY, 0),
    ROW(NrvSetMapping, ANY, 0),
    ROW(NrvZoomExtents, WINDOW, 0),
    ROW(NrvZoomInto, ANY, 0),
    ROW(NrvSetZoomMargin, ANY, 0),
    ROW(NrvToPixels, ANY, 0),
    ROW(NrvToDrawing, ANY, 0),
    ROW(NrvHitTest, ANY, 0),
    ROW(NrvPaint, ANY, 0),
    ROW(NrvGetShowDecimals, ANY, 0),
    ROW(NrvSetShowDecimals, ANY, 0),
    ROW(NrvGetBackground, ANY, 0),
    ROW(NrvSetBackground, ANY, 0),
    ROW(NrvGetPenIndex, ANY, 0),
    ROW(NrvSetPenIndex, ANY, 0),
    ROW(NrvMeasurePicture, ANY, 0),
    ROW(NrvRender, ANY, 0),
    ROW(NrvRenderFile, ANY, 0),
    ROW(NrvPaintPicture, ANY, 0),
    ROW(NrvSaveObjects, ANY, 1),
    ROW(NrvInsertBuffer, ANY, 0),
    ROW(NrvCopyObjects, WINDOW, 1),
    ROW(NrvCopyPicture, WINDOW, 0),
    ROW(NrvPaste, WINDOW, 0),
    ROW(NrvGetEditingOptions, ANY, 0),
    ROW(NrvSetEditingOptions, ANY, 0),
    ROW(NrvInsertVertex, ANY, 1),
    ROW(NrvRemoveVertex, ANY, 1),
    ROW(NrvSetSegmentColor, ANY, 1),
    ROW(NrvSetSnapPoints, ANY, 1),
    ROW(NrvGetDistance, ANY, 1),
    ROW(NrvGetFeet, ANY, 1),
    ROW(NrvRemoveLayers, ANY, 0),
    ROW(NrvSetStepLimits, ANY, 0),
    ROW(NrvSnap, WINDOW, 0),
    ROW(NrvHitCurve, ANY, 0),
    ROW(NrvGetBackgroundIndex, ANY, 0),
    ROW(NrvSetBackgroundIndex, ANY, 0),
    ROW(NrvGetWheel, PARM_VIEW, 0),
    ROW(NrvSetTooltip, PARM_VIEW, 0),
    ROW(NrvBeginEdit, PARM_VIEW, 1),
    ROW(NrvGetEdit, PARM_VIEW, 0),
    ROW(NrvGetEditText, PARM_VIEW, 0),
    ROW(NrvSetEditText, PARM_VIEW, 0),
    ROW(NrvEndEdit, PARM_VIEW, 0),
    ROW(NrvGetStrictRefusal, PARM_VIEW, 0),
    ROW(NrvSetStrictRefusal, PARM_VIEW, 0),
    ROW(NrvSetWheel, PARM_VIEW, 0),
    ROW(NrvSetCallback, ANY, 0),
    ROW(NrvGetEventMask, ANY, 0),
    ROW(NrvSetEventMask, ANY, 0),
    ROW(NrvGetMessages, ANY, 0),
    ROW(NrvSetMessages, ANY, 0),
    ROW(NrvGetLastMessage, ANY, 0),
};
enum { ROWS = sizeof g_rows / sizeof g_rows[0] };

static void ExpectOfRow(const Row* row, NrvResult expected, NrvResult actual) {
    CTestInt(expected, actual, row->name, __FILE__, __LINE__);
}

C_TEST(CapiCalls, AValueThatIsNoHandleIsRefused) {
    CHost host;
    NrvHandle freed = NULL;
    REQUIRE(CHostOpen(&host, NRV_PARM_VIEW_CLASS));
    REQUIRE(NrvCreateDrawing(&freed) == NRV_OK && NrvFreeDrawing(freed) == NRV_OK);
    int stackValue = 0;
    for (int i = 0; i < ROWS; ++i) {
        ExpectOfRow(&g_rows[i], NRV_E_HANDLE, g_rows[i].call(NULL, 1));
        ExpectOfRow(&g_rows[i], NRV_E_HANDLE, g_rows[i].call(freed, 1));
        ExpectOfRow(&g_rows[i], NRV_E_HANDLE, g_rows[i].call(host.parent, 1));
        ExpectOfRow(&g_rows[i], NRV_E_HANDLE, g_rows[i].call(GetDesktopWindow(), 1));
        ExpectOfRow(&g_rows[i], NRV_E_HANDLE, g_rows[i].call(&stackValue, 1));
    }
    const HWND gone = host.view;
    CHostClose(&host);
    for (int i = 0; i < ROWS; ++i) {
        ExpectOfRow(&g_rows[i], NRV_E_HANDLE, g_rows[i].call(gone, 1));
    }
}

C_TEST(CapiCalls, AHandleOfAnotherKindIsRefused) {
    CHost host;
    NrvHandle drawing = NULL;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    for (int i = 0; i < ROWS; ++i) {
        if (g_rows[i].needs == WINDOW || g_rows[i].needs == PARM_VIEW) {
            ExpectOfRow(&g_rows[i], NRV_E_KIND, g_rows[i].call(drawing, 1));
        }
        if (g_rows[i].needs == PARM_VIEW || g_rows[i].needs == DRAWING) {
            ExpectOfRow(&g_rows[i], NRV_E_KIND, g_rows[i].call(host.view, 1));
        }
    }
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
    CHostClose(&host);
}

static void CallAllOnThread(void* window) {
    for (int i = 0; i < ROWS; ++i) {
        if (g_rows[i].needs != DRAWING) {
            ExpectOfRow(&g_rows[i], NRV_E_THREAD, g_rows[i].call(window, 1));
        }
    }
}

C_TEST(CapiCalls, AWindowIsCalledOnItsThreadOnly) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_PARM_VIEW_CLASS));
    CHostRunOnThread(CallAllOnThread, host.view);
    uint32_t count = 99;
    EXPECT_INT(NRV_OK, NrvGetObjects(host.view, NRV_LIST_DRAWING, NULL, 0, &count));
    EXPECT_INT(0, count); // None of the calls did anything.
    CHostClose(&host);
}

static NrvHandle g_busy;

static void CallAllWhileBusy(void* unused) {
    (void)unused;
    for (int i = 0; i < ROWS; ++i) {
        if (g_rows[i].needs == ANY || g_rows[i].needs == DRAWING) {
            ExpectOfRow(&g_rows[i], NRV_E_BUSY, g_rows[i].call(g_busy, 1));
        }
    }
}

static int g_calls;

static void NRV_CALL CallFromThere(NrvEvent* event, void* user) {
    EXPECT(user == &g_calls);
    EXPECT(event->source == g_busy);
    if (++g_calls == 1) {
        CHostRunOnThread(CallAllWhileBusy, NULL);
        // The thread that has it may go on.
        EXPECT_INT(NRV_OK, NrvSetModified(g_busy, 0));
    }
}

C_TEST(CapiCalls, ADrawingIsUsedByOneThreadAtATime) {
    uint32_t count = 0;
    REQUIRE(NrvCreateDrawing(&g_busy) == NRV_OK);
    g_calls = 0;
    EXPECT_INT(NRV_OK, NrvSetCallback(g_busy, CallFromThere, &g_calls));
    EXPECT_INT(NRV_OK, NrvAddLine(g_busy, 0, 0, 1, 1, 0, NULL));
    EXPECT_INT(2, g_calls); // Changing, changed.
    EXPECT_INT(NRV_OK, NrvGetObjects(g_busy, NRV_LIST_DRAWING, NULL, 0, &count));
    EXPECT_INT(1, count);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(g_busy));
}

C_TEST(CapiCalls, AnIdOfNoObjectOfTheDrawingIsRefused) {
    NrvHandle drawing = NULL;
    NrvHandle another = NULL;
    NrvId foreign = 0;
    NrvId stale = 0;
    NrvId kept = 0;
    uint32_t count = 0;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK && NrvCreateDrawing(&another) == NRV_OK);
    REQUIRE(NrvAddPolyline(another, g_four, NULL, 4, 1, 0, &foreign) == NRV_OK);
    REQUIRE(NrvAddPolyline(drawing, g_four, NULL, 4, 1, 0, &stale) == NRV_OK);
    REQUIRE(NrvRemove(drawing, stale) == NRV_OK);
    // Takes the memory of the removed one, more likely than not.
    REQUIRE(NrvAddPolyline(drawing, g_four, NULL, 4, 1, 0, &kept) == NRV_OK);
    for (int i = 0; i < ROWS; ++i) {
        if (g_rows[i].usesId != 0 && g_rows[i].needs == ANY) {
            ExpectOfRow(&g_rows[i], NRV_E_OBJECT, g_rows[i].call(drawing, foreign));
            ExpectOfRow(&g_rows[i], NRV_E_OBJECT, g_rows[i].call(drawing, stale));
            ExpectOfRow(&g_rows[i], NRV_E_OBJECT, g_rows[i].call(drawing, kept + 1000000));
            ExpectOfRow(&g_rows[i], NRV_E_OBJECT, g_rows[i].call(drawing, UINT64_MAX));
        }
        if (g_rows[i].usesId == 1 && g_rows[i].needs == ANY) {
            ExpectOfRow(&g_rows[i], NRV_E_OBJECT, g_rows[i].call(drawing, 0));
        }
    }
    EXPECT_INT(NRV_OK, NrvGetObjects(drawing, NRV_LIST_DRAWING, NULL, 0, &count));
    EXPECT_INT(1, count);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(another));
}

C_TEST(CapiCalls, AnIdOfNoParameterOpensNoEdit) {
    CHost host;
    NrvHandle another = NULL;
    NrvId foreign = 0;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_PARM_VIEW_CLASS));
    REQUIRE(NrvCreateDrawing(&another) == NRV_OK);
    REQUIRE(NrvAddParm(another, 0, 0, L"1", L"a", 20, 0, &foreign) == NRV_OK);
    REQUIRE(NrvAddLine(host.view, 0, 0, 1, 1, 0, &line) == NRV_OK);
    EXPECT_INT(NRV_E_OBJECT, NrvBeginEdit(host.view, foreign));
    EXPECT_INT(NRV_E_OBJECT, NrvBeginEdit(host.view, 0));
    EXPECT_INT(NRV_E_KIND, NrvBeginEdit(host.view, line));
    EXPECT(CHostBox(&host) == NULL);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(another));
    CHostClose(&host);
}

// All with arguments that are right; what each does is in the other tests. None gives an error by its arguments.
C_TEST(CapiCalls, EachCallWorksOnEachKindOfHandleThatItIsFor) {
    CHost view;
    REQUIRE(CHostOpen(&view, NRV_PARM_VIEW_CLASS));
    g_layer.size = sizeof g_layer;
    g_mapping.size = sizeof g_mapping;
    g_load.size = sizeof g_load;
    for (int i = 0; i < ROWS; ++i) {
        NrvHandle drawing = NULL;
        REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
        const NrvHandle handle = g_rows[i].needs == WINDOW || g_rows[i].needs == PARM_VIEW ? view.view : drawing;
        NrvId parm = 0;
        NrvId polyline = 0;
        EXPECT_INT(NRV_OK, NrvSetMessages(handle, NRV_MESSAGES_SILENT));
        EXPECT_INT(NRV_OK, NrvClear(handle));
        EXPECT_INT(NRV_OK, NrvAddParm(handle, 50, 100, L"1", L"a", 20, 0, &parm));
        EXPECT_INT(NRV_OK, NrvAddPolyline(handle, g_four, NULL, 4, 1, 0, &polyline));
        EXPECT_INT(NRV_OK, NrvGetLayer(handle, 0, &g_layer));
        EXPECT_INT(NRV_OK, NrvGetMapping(handle, &g_mapping));
        const int wantsParm =
            strcmp(g_rows[i].name, "NrvBeginEdit") == 0 || strcmp(g_rows[i].name, "NrvGetShownText") == 0;
        const NrvResult result = g_rows[i].call(handle, wantsParm ? parm : polyline);
        NrvResult expected = NRV_OK;
        if (strcmp(g_rows[i].name, "NrvLoadBuffer") == 0 || strcmp(g_rows[i].name, "NrvInsertBuffer") == 0) {
            expected = NRV_E_REFUSED; // One byte is no stream.
        } else if (strcmp(g_rows[i].name, "NrvLoadFile") == 0 || strcmp(g_rows[i].name, "NrvSaveFile") == 0 ||
                   strcmp(g_rows[i].name, "NrvRenderFile") == 0) {
            expected = NRV_E_FILE;
        } else if (strcmp(g_rows[i].name, "NrvPaste") == 0 || strcmp(g_rows[i].name, "NrvEnterDistance") == 0 ||
                   strcmp(g_rows[i].name, "NrvGetEditText") == 0 || strcmp(g_rows[i].name, "NrvSetEditText") == 0) {
            expected = NRV_E_STATE; // Nothing waits for a text.
        } else if (strcmp(g_rows[i].name, "NrvSetStepLimits") == 0 || strcmp(g_rows[i].name, "NrvUndo") == 0 ||
                   strcmp(g_rows[i].name, "NrvRedo") == 0 || strcmp(g_rows[i].name, "NrvGetStepCount") == 0 ||
                   strcmp(g_rows[i].name, "NrvGetStepName") == 0 || strcmp(g_rows[i].name, "NrvBeginStep") == 0 ||
                   strcmp(g_rows[i].name, "NrvEndStep") == 0) {
            expected = NRV_E_STATE; // No steps are recorded at first.
        } else if (strcmp(g_rows[i].name, "NrvPaint") == 0 || strcmp(g_rows[i].name, "NrvPaintPicture") == 0) {
            expected = NRV_E_ARGUMENT; // A null device context.
        }
        ExpectOfRow(&g_rows[i], expected, result);
        if (g_rows[i].needs != DRAWING) {
            EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
        }
    }
    CHostClose(&view);
}

C_TEST(CapiCalls, NullIsRefusedWhereItIsNotAllowed) {
    NrvHandle d = NULL;
    NrvId parm = 0;
    NrvId line = 0;
    uint32_t n = 0;
    double x = 0;
    REQUIRE(NrvCreateDrawing(&d) == NRV_OK);
    REQUIRE(NrvAddParm(d, 0, 0, L"1", L"a", 20, 0, &parm) == NRV_OK);
    REQUIRE(NrvAddPolyline(d, g_four, NULL, 4, 1, 0, &line) == NRV_OK);
    const NrvResult results[] = {
        NrvLoadBuffer(d, NULL, 1, NULL),
        NrvLoadBuffer(d, "x", 0, NULL),
        NrvLoadFile(d, NULL, NULL),
        NrvSaveBuffer(d, g_bytes, 1, NULL),
        NrvSaveBuffer(d, NULL, 1, &n),
        NrvSaveFile(d, NULL),
        NrvSaveFile(d, L""),
        NrvGetModified(d, NULL),
        NrvAddPolyline(d, NULL, NULL, 4, 1, 0, NULL),
        NrvAddPolyline(d, g_four, NULL, 0, 1, 0, NULL),
        NrvAddText(d, 0, 0, NULL, 0, 0, 0, NULL),
        NrvAddParm(d, 0, 0, NULL, L"a", 0, 0, NULL),
        NrvAddParm(d, 0, 0, L"1", NULL, 0, 0, NULL),
        NrvAddLabel(d, NULL, 0, NULL),
        NrvAddFrame(d, 0, 0, 1, 1, NULL, 0, NULL),
        NrvGetObjects(d, NRV_LIST_DRAWING, NULL, 0, NULL),
        NrvGetObjects(d, NRV_LIST_DRAWING, NULL, 1, &n),
        NrvGetObject(d, NRV_LIST_DRAWING, 0, NULL),
        NrvGetKind(d, line, NULL),
        NrvGetKindName(d, line, g_text, 256, NULL),
        NrvGetOrder(d, line, NULL),
        NrvGetPoints(d, line, g_points, 64, NULL),
        NrvSetPoints(d, line, NULL, 4),
        NrvSetPoints(d, line, g_four, 0),
        NrvGetBulges(d, line, g_doubles, 64, NULL),
        NrvSetBulges(d, line, NULL, 4),
        NrvGetInt(d, line, NRV_INT_LAYER, NULL),
        NrvGetDouble(d, line, NRV_DOUBLE_LINE_WIDTH, NULL),
        NrvGetString(d, line, NRV_STRING_NAME, g_text, 256, NULL),
        NrvSetString(d, line, NRV_STRING_NAME, NULL),
        NrvGetSegmentString(d, line, 0, NRV_STRING_NAME, g_text, 256, NULL),
        NrvSetSegmentString(d, line, 0, NRV_STRING_NAME, NULL),
        NrvGetExtents(d, line, NULL),
        NrvGetExtents(d, 0, NULL),
        NrvTransform(d, line, NULL),
        NrvTransform(d, 0, NULL),
        NrvGetGrips(d, line, g_points, 64, NULL),
        NrvGetParmCount(d, NULL),
        NrvGetParm(d, 0, NULL),
        NrvFindParm(d, NULL, &g_id),
        NrvFindParm(d, L"a", NULL),
        NrvGetParmValue(d, NULL, g_text, 256, &n),
        NrvGetParmValue(d, L"a", g_text, 256, NULL),
        NrvSetParmValue(d, NULL, L"1"),
        NrvSetParmValue(d, L"a", NULL),
        NrvGetShownText(d, parm, g_text, 256, NULL),
        NrvGetRowCount(d, line, NULL),
        NrvGetRowType(d, line, 0, NULL),
        NrvGetRow(d, line, 0, NRV_ROW_KEY, g_text, 256, NULL),
        NrvSetRow(d, line, 0, NULL),
        NrvGetLayerCount(d, NULL),
        NrvAddLayer(d, NULL, NULL),
        NrvGetLayer(d, 0, NULL),
        NrvSetLayer(d, 0, NULL),
        NrvSetSelection(d, NULL, 1),
        NrvGetCommandCount(NULL),
        NrvGetCommand(0, NRV_COMMAND_WORD, g_text, 256, NULL),
        NrvGetMapping(d, NULL),
        NrvSetMapping(d, NULL),
        NrvToPixels(d, 0, 0, NULL, &x),
        NrvToPixels(d, 0, 0, &x, NULL),
        NrvToDrawing(d, 0, 0, NULL, &x),
        NrvToDrawing(d, 0, 0, &x, NULL),
        NrvHitTest(d, 0, 0, NULL, NULL),
        NrvPaint(d, NULL),
        NrvSaveObjects(d, NULL, 1, NULL, 0, &n),
        NrvSaveObjects(d, &line, 0, NULL, 0, &n),
        NrvSaveObjects(d, &line, 1, g_bytes, 1, NULL),
        NrvSaveObjects(d, &line, 1, NULL, 1, &n),
        NrvInsertBuffer(d, NULL, 1, 0, 0, NULL),
        NrvInsertBuffer(d, "x", 0, 0, 0, NULL),
        NrvCanPaste(NULL),
        NrvGetEditingOptions(d, NULL),
        NrvSetEditingOptions(d, NULL),
        NrvSetSnapPoints(d, line, NULL, 1),
        NrvGetDistance(d, line, 0, 0, NULL),
        NrvGetFeet(d, line, 0, 0, g_points, 64, NULL),
        NrvHitCurve(d, 0, 0, NULL, NULL),
        NrvGetBackgroundIndex(d, NULL),
        NrvGetTableColor(0, NULL),
        NrvGetShowDecimals(d, NULL),
        NrvGetBackground(d, NULL),
        NrvGetPenIndex(d, NULL),
        NrvGetEventMask(d, NULL),
        NrvGetMessages(d, NULL),
        NrvGetLastMessage(d, g_text, 256, NULL),
        NrvTranslateMessage(NULL, &g_int),
        NrvTranslateMessage(&x, NULL),
    };
    for (size_t i = 0; i < sizeof results / sizeof results[0]; ++i) {
        char name[32];
        wsprintfA(name, "null call %d", (int)i);
        CTestInt(NRV_E_ARGUMENT, results[i], name, __FILE__, __LINE__);
    }
    EXPECT_INT(NRV_OK, NrvGetObjects(d, NRV_LIST_DRAWING, NULL, 0, &n));
    EXPECT_INT(2, n);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(d));
}

C_TEST(CapiCalls, NullIsRefusedByTheFunctionsOfWindows) {
    CHost host;
    uint32_t n = 0;
    REQUIRE(CHostOpen(&host, NRV_PARM_VIEW_CLASS));
    EXPECT_INT(NRV_E_ARGUMENT, NrvDoCommand(host.view, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetRunningCommand(host.view, g_text, 256, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetSnapMode(host.view, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetOrtho(host.view, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetEdit(host.view, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetEditText(host.view, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetStrictRefusal(host.view, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetWheel(host.view, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSnap(host.view, 0, 0, NULL, &g_double, &g_int));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSnap(host.view, 0, 0, &g_double, NULL, &g_int));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSnap(host.view, 0, 0, &g_double, &g_double, NULL));
    EXPECT_INT(NRV_E_STATE, NrvGetEditText(host.view, g_text, 256, &n));
    CHostClose(&host);
}

C_TEST(CapiCalls, NumbersThatAreNotFiniteAreRefused) {
    NrvHandle d = NULL;
    NrvId line = 0;
    uint32_t count = 0;
    const double inf = HUGE_VAL;
    const double nan = inf - inf;
    const double bad[2] = {inf, nan};
    const NrvPoint badPoint = {0, nan};
    double x = 0;
    double y = 0;
    REQUIRE(NrvCreateDrawing(&d) == NRV_OK);
    REQUIRE(NrvAddPolyline(d, g_four, NULL, 1, 0, 0, &line) == NRV_OK);
    for (int i = 0; i < 2; ++i) {
        const double matrix[6] = {1, 0, bad[i], 0, 1, 0};
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddLine(d, bad[i], 0, 0, 0, 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddNetLine(d, 0, bad[i], 0, 0, 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddCircle(d, 0, 0, bad[i], 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddArc(d, 0, 0, 1, bad[i], 0, 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddArc3(d, 0, 0, bad[i], 1, 2, 0, 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddCenterPoint(d, 0, bad[i], 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddPolyline(d, g_four, &bad[i], 1, 0, 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddText(d, 0, 0, L"", bad[i], 0, 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddParm(d, 0, 0, L"", L"", bad[i], 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvAddFrame(d, 0, 0, bad[i], 0, L"", 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvSetBulges(d, line, &bad[i], 1));
        EXPECT_INT(NRV_E_ARGUMENT, NrvSetDouble(d, line, NRV_DOUBLE_LINE_WIDTH, bad[i]));
        EXPECT_INT(NRV_E_ARGUMENT, NrvTransform(d, line, matrix));
        EXPECT_INT(NRV_E_ARGUMENT, NrvMoveGrip(d, line, 0, bad[i], 0));
        EXPECT_INT(NRV_E_ARGUMENT, NrvInsertVertex(d, line, 0, bad[i], 0));
        EXPECT_INT(NRV_E_ARGUMENT, NrvGetDistance(d, line, 0, bad[i], &x));
        EXPECT_INT(NRV_E_ARGUMENT, NrvGetFeet(d, line, bad[i], 0, g_points, 64, &count));
        EXPECT_INT(NRV_E_ARGUMENT, NrvInsertBuffer(d, "x", 1, bad[i], 0, NULL));
        EXPECT_INT(NRV_E_ARGUMENT, NrvToPixels(d, bad[i], 0, &x, &y));
        EXPECT_INT(NRV_E_ARGUMENT, NrvToDrawing(d, bad[i], 0, &x, &y));
    }
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetPoints(d, line, &badPoint, 1));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetSnapPoints(d, line, &badPoint, 1));
    EXPECT_INT(NRV_E_ARGUMENT, NrvAddArc(d, 0, 0, 1e300, 0, 1, 0, NULL)); // Beyond single precision.
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetDouble(d, line, NRV_DOUBLE_LINE_WIDTH, 1e300));
    EXPECT_INT(NRV_OK, NrvGetObjects(d, NRV_LIST_DRAWING, NULL, 0, &count));
    EXPECT_INT(1, count);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(d));
}

C_TEST(CapiCalls, ARecordThatIsTooSmallIsRefused) {
    NrvHandle d = NULL;
    NrvLoad load = {sizeof load - 1, 77, 77};
    NrvLayer layer = {0};
    NrvMapping mapping = {0};
    REQUIRE(NrvCreateDrawing(&d) == NRV_OK);
    EXPECT_INT(NRV_E_RECORD, NrvLoadBuffer(d, "x", 1, &load));
    EXPECT_INT(NRV_E_RECORD, NrvLoadFile(d, L"no such file", &load));
    EXPECT_INT(77, load.outcome);
    EXPECT_INT(NRV_E_RECORD, NrvGetLayer(d, 0, &layer));
    EXPECT_INT(NRV_E_RECORD, NrvSetLayer(d, 0, &layer));
    EXPECT_INT(NRV_E_RECORD, NrvGetMapping(d, &mapping));
    mapping.size = sizeof mapping - 1;
    EXPECT_INT(NRV_E_RECORD, NrvSetMapping(d, &mapping));
    // One of a later version is larger.
    struct {
        NrvMapping mapping;
        double later;
    } larger = {{sizeof larger, 0, 0, 0, 0}, 5.0};
    EXPECT_INT(NRV_OK, NrvGetMapping(d, &larger.mapping));
    EXPECT_NEAR_TO(1.0, larger.mapping.scale, 0);
    EXPECT_NEAR_TO(5.0, larger.later, 0);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(d));
}
