// The C interface: undo and redo.

#include "support/CHost.h"

#include <string.h>

static uint32_t Count(NrvHandle handle) {
    uint32_t count = 99;
    EXPECT_INT(NRV_OK, NrvGetObjects(handle, NRV_LIST_DRAWING, NULL, 0, &count));
    return count;
}

static uint32_t Steps(NrvHandle handle, int32_t redo) {
    uint32_t count = 99;
    EXPECT_INT(NRV_OK, NrvGetStepCount(handle, redo, &count));
    return count;
}

static const wchar_t* Name(NrvHandle handle, int32_t redo, int32_t english) {
    static wchar_t name[32];
    uint32_t length = 0;
    EXPECT_INT(NRV_OK, NrvGetStepName(handle, redo, english, name, 32, &length));
    return name;
}

static int32_t IsModified(NrvHandle handle) {
    int32_t modified = 99;
    EXPECT_INT(NRV_OK, NrvGetModified(handle, &modified));
    return modified;
}

static void DrawLine(CHost* host) {
    EXPECT_INT(NRV_OK, NrvDoCommand(host->view, L"line"));
    CHostMove(host, 50, 50);
    CHostClick(host, 50, 50);
    CHostMove(host, 150, 90);
    CHostClick(host, 150, 90);
}

C_TEST(CapiHistory, NothingIsRecordedUntilItIsSwitchedOn) {
    NrvHandle drawing = NULL;
    int32_t on = 99;
    uint32_t n = 0;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetHistory(drawing, &on));
    EXPECT_INT(0, on);
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetHistory(drawing, NULL));
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 0, 0, 1, 1, 0, NULL));
    EXPECT_INT(NRV_E_STATE, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvSetHistory(drawing, 1));
    EXPECT_INT(NRV_OK, NrvGetHistory(drawing, &on));
    EXPECT_INT(1, on);
    // What was there before is no step.
    EXPECT_INT(NRV_E_STATE, NrvUndo(drawing));
    EXPECT_INT(1, Count(drawing));
    EXPECT_INT(0, Steps(drawing, 0));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetStepCount(drawing, 0, NULL));
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetStepName(drawing, 0, 0, NULL, 0, NULL));
    EXPECT_TEXT(L"", Name(drawing, 0, 0));
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 0, 0, 2, 2, 0, NULL));
    EXPECT_INT(1, Steps(drawing, 0));
    EXPECT_INT(NRV_OK, NrvSetHistory(drawing, 0));
    EXPECT_INT(NRV_OK, NrvSetHistory(drawing, 1));
    EXPECT_INT(0, Steps(drawing, 0));
    EXPECT_INT(2, Count(drawing));
    EXPECT_INT(NRV_OK, NrvGetStepName(drawing, 0, 0, NULL, 0, &n));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiHistory, ACommandIsAStepWithItsNameAndTheHostIsToldWhatComesAndGoes) {
    CHost host;
    NrvId line = 0;
    NrvId again = 0;
    int32_t kind = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvSetHistory(host.view, 1));
    DrawLine(&host);
    REQUIRE(Count(host.view) == 1);
    EXPECT_INT(NRV_OK, NrvGetObject(host.view, NRV_LIST_DRAWING, 0, &line));
    EXPECT_INT(1, Steps(host.view, 0));
    EXPECT_TEXT(L"\x76F4\x7EBF", Name(host.view, 0, 0)); // Line.
    EXPECT_TEXT(L"Line", Name(host.view, 0, 1));
    EXPECT_INT(1, IsModified(host.view));
    CHostTakeLog();
    EXPECT_INT(NRV_OK, NrvUndo(host.view));
    EXPECT_TEXT(L"changing history 0; steps undone; changed removed 1; changed history 0; ", CHostTakeLog());
    EXPECT_INT(0, Count(host.view));
    EXPECT_INT(NRV_E_OBJECT, NrvGetKind(host.view, line, &kind));
    EXPECT_INT(0, IsModified(host.view));
    EXPECT_INT(0, Steps(host.view, 0));
    EXPECT_INT(1, Steps(host.view, 1));
    EXPECT_TEXT(L"Line", Name(host.view, 1, 1));
    EXPECT_INT(NRV_OK, NrvRedo(host.view));
    EXPECT_TEXT(L"changing history 0; steps redone; changed added 1; changed history 0; ", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvGetObject(host.view, NRV_LIST_DRAWING, 0, &again));
    EXPECT(line == again);
    EXPECT_INT(NRV_E_STATE, NrvRedo(host.view));
    EXPECT_INT(NRV_OK, NrvUndo(host.view));
    EXPECT_INT(NRV_E_STATE, NrvUndo(host.view));
    CHostClose(&host);
}

C_TEST(CapiHistory, WhatTheHostChangesBetweenBeginAndEndIsOneStep) {
    NrvHandle drawing = NULL;
    NrvId lines[2] = {0, 0};
    NrvId ids[4] = {0};
    NrvPoint points[2] = {{0, 0}, {0, 0}};
    const NrvPoint moved[2] = {{5, 6}, {7, 8}};
    uint32_t count = 0;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetHistory(drawing, 1));
    EXPECT_INT(NRV_OK, NrvBeginStep(drawing, L"\x4E24\x6761", L"Two lines"));
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 1, 2, 3, 4, 0, &lines[0]));
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 10, 20, 30, 40, 0, &lines[1]));
    EXPECT_INT(NRV_E_STATE, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvEndStep(drawing));
    EXPECT_INT(NRV_OK, NrvBeginStep(drawing, NULL, L"Tidy"));
    EXPECT_INT(NRV_OK, NrvSetPoints(drawing, lines[0], moved, 2));
    EXPECT_INT(NRV_OK, NrvRemove(drawing, lines[1]));
    EXPECT_INT(NRV_OK, NrvEndStep(drawing));
    // Nothing is changed: no step.
    EXPECT_INT(NRV_OK, NrvBeginStep(drawing, NULL, L"Nothing"));
    EXPECT_INT(NRV_OK, NrvEndStep(drawing));
    EXPECT_INT(NRV_OK, NrvEndStep(drawing));
    EXPECT_INT(2, Steps(drawing, 0));
    EXPECT_TEXT(L"Tidy", Name(drawing, 0, 1));
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvGetObjects(drawing, NRV_LIST_DRAWING, ids, 4, &count));
    EXPECT_INT(2, count);
    EXPECT(ids[0] == lines[0] && ids[1] == lines[1]);
    EXPECT_INT(NRV_OK, NrvGetPoints(drawing, lines[0], points, 2, &count));
    EXPECT_NEAR_TO(1, points[0].x, 0);
    EXPECT_NEAR_TO(4, points[1].y, 0);
    EXPECT_TEXT(L"\x4E24\x6761", Name(drawing, 0, 0));
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(0, Count(drawing));
    EXPECT_INT(NRV_OK, NrvRedo(drawing));
    EXPECT_INT(NRV_OK, NrvRedo(drawing));
    EXPECT_INT(1, Count(drawing));
    EXPECT_INT(NRV_OK, NrvGetPoints(drawing, lines[0], points, 2, &count));
    EXPECT_NEAR_TO(5, points[0].x, 0);
    EXPECT_NEAR_TO(8, points[1].y, 0);
    // Outside of both it is a step of its own.
    EXPECT_INT(NRV_OK, NrvSetBackground(drawing, 0x123456));
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(1, Count(drawing));
    EXPECT_INT(NRV_OK, NrvGetBackground(drawing, &count));
    EXPECT(count != 0x123456);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiHistory, ARunningCommandIsBrokenOffFirst) {
    CHost host;
    wchar_t word[32];
    uint32_t length = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvSetHistory(host.view, 1));
    DrawLine(&host);
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"circle"));
    CHostMove(&host, 200, 200);
    CHostClick(&host, 200, 200);
    CHostTakeLog();
    EXPECT_INT(NRV_OK, NrvUndo(host.view));
    EXPECT(wcsstr(CHostTakeLog(), L"ended circle cancelled; ") != NULL);
    EXPECT_INT(NRV_OK, NrvGetRunningCommand(host.view, word, 32, &length));
    EXPECT_TEXT(L"", word);
    EXPECT_INT(0, Count(host.view));
    CHostClose(&host);
}

static NrvResult g_inEvent;

static void UndoWhileStored(NrvEvent* event) {
    if (event->header.code == NRV_N_EDIT_STORED) {
        g_inEvent = NrvUndo((NrvHandle)event->header.window);
    }
}

C_TEST(CapiHistory, AnEditOfAParameterIsAStepAndCannotBeTakenBackWithinItsEvents) {
    CHost host;
    NrvId parm = 0;
    REQUIRE(CHostOpen(&host, NRV_PARM_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvAddParm(host.view, 50, 100, L"12", L"a", 20, 0, &parm));
    EXPECT_INT(NRV_OK, NrvSetHistory(host.view, 1));
    CHostSetHandler(UndoWhileStored);
    g_inEvent = NRV_OK;
    EXPECT_INT(NRV_OK, NrvBeginEdit(host.view, parm));
    EXPECT_INT(NRV_OK, NrvSetEditText(host.view, L"34"));
    EXPECT_INT(NRV_OK, NrvEndEdit(host.view));
    EXPECT_INT(NRV_E_STATE, g_inEvent);
    CHostSetHandler(NULL);
    EXPECT_TEXT(L"34", CHostString(host.view, parm, NRV_STRING_TEXT));
    EXPECT_INT(1, Steps(host.view, 0));
    EXPECT_TEXT(L"Edit parameter", Name(host.view, 0, 1));
    EXPECT_INT(NRV_OK, NrvUndo(host.view));
    EXPECT_TEXT(L"12", CHostString(host.view, parm, NRV_STRING_TEXT));
    EXPECT_INT(NRV_OK, NrvRedo(host.view));
    EXPECT_TEXT(L"34", CHostString(host.view, parm, NRV_STRING_TEXT));
    CHostClose(&host);
}

C_TEST(CapiHistory, ARemovedObjectIsFreedOnceWhetherAStepHasItOrNot) {
    NrvHandle drawing = NULL;
    NrvId id = 0;
    const int before = CTestRegistered();
    for (int group = 0; group < 2; ++group) {
        REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
        const int empty = CTestRegistered();
        EXPECT_INT(NRV_OK, NrvSetHistory(drawing, 1));
        if (group != 0) {
            EXPECT_INT(NRV_OK, NrvBeginStep(drawing, NULL, NULL));
        }
        EXPECT_INT(NRV_OK, NrvAddLine(drawing, 0, 0, 1, 1, 0, &id));
        EXPECT_INT(NRV_OK, NrvRemove(drawing, id));
        if (group != 0) {
            EXPECT_INT(empty, CTestRegistered());
            EXPECT_INT(NRV_OK, NrvEndStep(drawing));
        }
        EXPECT_INT(NRV_OK, NrvSetHistory(drawing, 0));
        EXPECT_INT(empty, CTestRegistered());
        EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
    }
    EXPECT_INT(before, CTestRegistered());
}

C_TEST(CapiHistory, EachObjectThatIsAddedIsAStepWhateverItsKind) {
    NrvHandle drawing = NULL;
    const NrvPoint four[4] = {{0, 0}, {0, 10}, {20, 0}, {20, 10}};
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetHistory(drawing, 1));
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 0, 0, 1, 1, 0, NULL));
    EXPECT_INT(NRV_OK, NrvAddCircle(drawing, 0, 0, 5, 0, NULL));
    EXPECT_INT(NRV_OK, NrvAddLabel(drawing, four, 0, NULL));
    EXPECT_INT(NRV_OK, NrvAddFrame(drawing, 0, 0, 1, 1, L"f", 0, NULL));
    EXPECT_INT(4, Steps(drawing, 0));
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(3, Count(drawing));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiHistory, EachCallThatChangesSomethingIsAStep) {
    NrvHandle drawing = NULL;
    NrvId line = 0;
    NrvId circle = 0;
    NrvId again = 0;
    NrvLayer layer = {0};
    const NrvPoint moved[2] = {{5, 6}, {7, 8}};
    const double matrix[6] = {1, 0, 100, 0, 1, 0};
    NrvPoint points[2] = {{0, 0}, {0, 0}};
    uint32_t count = 0;
    uint32_t color = 0;
    int32_t number = 0;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetHistory(drawing, 1));
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 1, 2, 3, 4, 0, &line));
    EXPECT_INT(NRV_OK, NrvAddCircle(drawing, 0, 0, 5, 0, &circle));
    EXPECT_INT(2, Steps(drawing, 0));
    EXPECT_INT(NRV_OK, NrvSetPoints(drawing, line, moved, 2));
    EXPECT_INT(3, Steps(drawing, 0));
    EXPECT_TEXT(L"Change object", Name(drawing, 0, 1));
    EXPECT_INT(NRV_OK, NrvSetInt(drawing, circle, NRV_INT_FILLED, 1));
    EXPECT_INT(4, Steps(drawing, 0));
    EXPECT_INT(NRV_OK, NrvSetInt(drawing, circle, NRV_INT_FILLED, 1)); // It is so already.
    EXPECT_INT(NRV_OK, NrvSetSelection(drawing, &line, 1));            // No part of the drawing.
    EXPECT_INT(4, Steps(drawing, 0));
    EXPECT_INT(NRV_OK, NrvSetOrder(drawing, circle, 0));
    EXPECT_INT(5, Steps(drawing, 0));
    EXPECT_TEXT(L"Change order", Name(drawing, 0, 1));
    EXPECT_INT(NRV_OK, NrvSetBackground(drawing, 0x123456));
    EXPECT_INT(6, Steps(drawing, 0));
    EXPECT_TEXT(L"Change background", Name(drawing, 0, 1));
    layer.size = sizeof layer;
    EXPECT_INT(NRV_OK, NrvGetLayer(drawing, 0, &layer));
    layer.line_width = 3;
    EXPECT_INT(NRV_OK, NrvSetLayer(drawing, 0, &layer));
    EXPECT_INT(7, Steps(drawing, 0));
    EXPECT_TEXT(L"Change layers", Name(drawing, 0, 1));
    EXPECT_INT(NRV_OK, NrvTransform(drawing, 0, matrix));
    EXPECT_INT(8, Steps(drawing, 0));
    EXPECT_INT(NRV_OK, NrvRemove(drawing, line));
    EXPECT_INT(9, Steps(drawing, 0));
    EXPECT_TEXT(L"Remove object", Name(drawing, 0, 1));
    EXPECT_TEXT(L"\x5220\x9664\x5BF9\x8C61", Name(drawing, 0, 0));
    // Each is taken back alone, the last one first.
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvGetObject(drawing, NRV_LIST_DRAWING, 1, &again));
    EXPECT(again == line);
    EXPECT_INT(NRV_OK, NrvGetPoints(drawing, line, points, 2, &count));
    EXPECT_NEAR_TO(105, points[0].x, 0);
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvGetPoints(drawing, line, points, 2, &count));
    EXPECT_NEAR_TO(5, points[0].x, 0);
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvGetLayer(drawing, 0, &layer));
    EXPECT(layer.line_width != 3);
    EXPECT_INT(NRV_OK, NrvGetBackground(drawing, &color));
    EXPECT_INT(0x123456, color);
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvGetBackground(drawing, &color));
    EXPECT(color != 0x123456);
    EXPECT_INT(NRV_OK, NrvGetOrder(drawing, circle, &count));
    EXPECT_INT(0, count);
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvGetOrder(drawing, circle, &count));
    EXPECT_INT(1, count);
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvGetInt(drawing, circle, NRV_INT_FILLED, &number));
    EXPECT_INT(0, number);
    EXPECT_INT(NRV_OK, NrvUndo(drawing));
    EXPECT_INT(NRV_OK, NrvGetPoints(drawing, line, points, 2, &count));
    EXPECT_NEAR_TO(1, points[0].x, 0);
    EXPECT_INT(2, Steps(drawing, 0));
    EXPECT_INT(7, Steps(drawing, 1));
    EXPECT_INT(NRV_OK, NrvRedo(drawing));
    EXPECT_INT(NRV_OK, NrvGetPoints(drawing, line, points, 2, &count));
    EXPECT_NEAR_TO(5, points[0].x, 0);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiHistory, WhatIsChangedWhileACommandRunsIsPartOfItsStep) {
    CHost host;
    NrvId first = 0;
    int32_t color = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvAddLine(host.view, 10, 10, 20, 10, 0x112233, &first));
    EXPECT_INT(NRV_OK, NrvSetHistory(host.view, 1));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    CHostMove(&host, 50, 50);
    CHostClick(&host, 50, 50);
    EXPECT_INT(NRV_OK, NrvSetInt(host.view, first, NRV_INT_COLOR, 0x445566));
    EXPECT_INT(0, Steps(host.view, 0));
    CHostMove(&host, 150, 90);
    CHostClick(&host, 150, 90);
    EXPECT_INT(1, Steps(host.view, 0));
    EXPECT_INT(NRV_OK, NrvUndo(host.view));
    EXPECT_INT(1, Count(host.view));
    EXPECT_INT(NRV_OK, NrvGetInt(host.view, first, NRV_INT_COLOR, &color));
    EXPECT_INT(0x112233, color);
    CHostClose(&host);
}

static NrvId g_area;

static void ComputeArea(NrvEvent* event) {
    if (event->header.code == NRV_N_EDIT_STORED) {
        NrvSetString((NrvHandle)event->header.window, g_area, NRV_STRING_TEXT, L"68");
    }
}

C_TEST(CapiHistory, WhatIsChangedInAnEventOfAnEditIsPartOfItsStep) {
    CHost host;
    NrvId parm = 0;
    REQUIRE(CHostOpen(&host, NRV_PARM_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvAddParm(host.view, 50, 100, L"12", L"a", 20, 0, &parm));
    EXPECT_INT(NRV_OK, NrvAddParm(host.view, 50, 200, L"24", L"area", 20, 0, &g_area));
    EXPECT_INT(NRV_OK, NrvSetHistory(host.view, 1));
    CHostSetHandler(ComputeArea);
    EXPECT_INT(NRV_OK, NrvBeginEdit(host.view, parm));
    EXPECT_INT(NRV_OK, NrvSetEditText(host.view, L"34"));
    EXPECT_INT(NRV_OK, NrvEndEdit(host.view));
    CHostSetHandler(NULL);
    EXPECT_TEXT(L"68", CHostString(host.view, g_area, NRV_STRING_TEXT));
    EXPECT_INT(1, Steps(host.view, 0));
    EXPECT_TEXT(L"Edit parameter", Name(host.view, 0, 1));
    EXPECT_INT(NRV_OK, NrvUndo(host.view));
    EXPECT_TEXT(L"12", CHostString(host.view, parm, NRV_STRING_TEXT));
    EXPECT_TEXT(L"24", CHostString(host.view, g_area, NRV_STRING_TEXT));
    CHostClose(&host);
}

static uint32_t g_stepsInEvent;

static void CountInEvent(NrvEvent* event) {
    if (event->header.code == NRV_N_STEPS) {
        g_stepsInEvent = Steps((NrvHandle)event->header.window, 0);
    }
}

C_TEST(CapiHistory, AHostIsToldWhatHappensToTheSteps) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvAddLine(host.view, 0, 0, 1, 1, 0, NULL));
    EXPECT_TEXT(L"changing added 0; changed added 1; ", CHostTakeLog()); // Off: nothing is told.
    EXPECT_INT(NRV_OK, NrvSetHistory(host.view, 1));
    EXPECT_INT(NRV_OK, NrvSetStepLimits(host.view, 1u << 20, 2));
    CHostTakeLog();
    CHostSetHandler(CountInEvent);
    EXPECT_INT(NRV_OK, NrvAddLine(host.view, 0, 0, 2, 2, 0, NULL));
    EXPECT_TEXT(L"changing added 0; steps new; changed added 1; ", CHostTakeLog());
    EXPECT_INT(1, g_stepsInEvent);
    EXPECT_INT(NRV_OK, NrvSetBackground(host.view, 0x123456));
    EXPECT_TEXT(L"changing background 0; steps new; changed background 0; ", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvSetBackground(host.view, 0x654321));
    EXPECT_TEXT(L"changing background 0; steps new; steps forgotten; changed background 0; ", CHostTakeLog());
    EXPECT_INT(2, g_stepsInEvent);
    EXPECT_INT(NRV_OK, NrvSetModified(host.view, 0));
    EXPECT_TEXT(L"steps saved; ", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvClear(host.view));
    EXPECT(wcsstr(CHostTakeLog(), L"steps forgotten; ") != NULL);
    EXPECT_INT(0, g_stepsInEvent);
    CHostClose(&host);
}

C_TEST(CapiHistory, BeyondItsLimitsTheOldestStepsAreForgotten) {
    NrvHandle drawing = NULL;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    EXPECT_INT(NRV_E_STATE, NrvSetStepLimits(drawing, 1000, 1)); // Off.
    EXPECT_INT(NRV_OK, NrvSetHistory(drawing, 1));
    EXPECT_INT(NRV_OK, NrvSetStepLimits(drawing, 1u << 20, 2));
    for (int i = 0; i < 5; ++i) {
        EXPECT_INT(NRV_OK, NrvAddLine(drawing, i, 0, i, 1, 0, NULL));
    }
    EXPECT_INT(2, Steps(drawing, 0));
    EXPECT_INT(NRV_OK, NrvSetStepLimits(drawing, 1, 100)); // The newest one is kept whatever its size.
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 9, 0, 9, 1, 0, NULL));
    EXPECT_INT(1, Steps(drawing, 0));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetStepLimits(drawing, 1000, 0));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetStepLimits(drawing, 1000, UINT32_MAX));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}
