// The C interface: the drawing view in a host's window: commands, keys, events, selection, life.

#include "support/CHost.h"

#include <string.h>

static uint32_t Count(CHost* host, int32_t list) {
    uint32_t count = 99;
    EXPECT_INT(NRV_OK, NrvGetObjects(host->view, list, NULL, 0, &count));
    return count;
}

static const wchar_t* Running(CHost* host) {
    static wchar_t word[32];
    uint32_t length = 0;
    EXPECT_INT(NRV_OK, NrvGetRunningCommand(host->view, word, 32, &length));
    return word;
}

static void ExpectLine(CHost* host, NrvId id, double x1, double y1, double x2, double y2) {
    NrvPoint points[2] = {{0, 0}, {0, 0}};
    uint32_t count = 0;
    EXPECT_INT(NRV_OK, NrvGetPoints(host->view, id, points, 2, &count));
    EXPECT_INT(2, count);
    EXPECT_NEAR_TO(x1, points[0].x, 1e-6);
    EXPECT_NEAR_TO(y1, points[0].y, 1e-6);
    EXPECT_NEAR_TO(x2, points[1].x, 1e-6);
    EXPECT_NEAR_TO(y2, points[1].y, 1e-6);
}

static NrvId Only(CHost* host) {
    NrvId id = 0;
    EXPECT_INT(1, Count(host, NRV_LIST_DRAWING));
    EXPECT_INT(NRV_OK, NrvGetObject(host->view, NRV_LIST_DRAWING, 0, &id));
    return id;
}

C_TEST(CapiView, ANewViewHasOneUnitAPixelAndItsOriginAtTheLowerLeft) {
    CHost host;
    NrvMapping mapping = {sizeof mapping, 0, 0, 1, 1};
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvGetMapping(host.view, &mapping));
    EXPECT_INT(300, mapping.height);
    EXPECT_NEAR_TO(1, mapping.scale, 0);
    EXPECT_NEAR_TO(0, mapping.origin_x, 0);
    EXPECT_NEAR_TO(0, mapping.origin_y, 0);
    CHostClose(&host);
}

C_TEST(CapiView, AnAddedObjectIsPainted) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvAddLine(host.view, 50, 100, 150, 100, 0x00FF00, NULL));
    UpdateWindow(host.view);
    const HDC dc = GetDC(host.view);
    EXPECT_INT(RGB(0, 255, 0), GetPixel(dc, 100, 200));
    EXPECT_INT(RGB(0, 0, 0), GetPixel(dc, 100, 190));
    EXPECT_INT(NRV_OK, NrvSetBackground(host.view, 0x0000FF));
    UpdateWindow(host.view);
    EXPECT_INT(RGB(0, 0, 255), GetPixel(dc, 100, 190));
    ReleaseDC(host.view, dc);
    CHostClose(&host);
}

// ---- Commands ----

C_TEST(CapiView, TheCommandsAreListed) {
    uint32_t count = 0;
    wchar_t text[64];
    uint32_t length = 0;
    EXPECT_INT(NRV_OK, NrvGetCommandCount(&count));
    EXPECT_INT(20, count);
    EXPECT_INT(NRV_OK, NrvGetCommand(0, NRV_COMMAND_WORD, text, 64, &length));
    EXPECT_TEXT(L"line", text);
    EXPECT_INT(NRV_OK, NrvGetCommand(0, NRV_COMMAND_CAPTION, text, 64, &length));
    EXPECT(length > 0);
    EXPECT_INT(NRV_OK, NrvGetCommand(0, NRV_COMMAND_HINT, text, 64, &length));
    EXPECT(length > 0);
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetCommand(20, NRV_COMMAND_WORD, text, 64, &length));
    EXPECT_INT(NRV_OK, NrvGetCommand(0, NRV_COMMAND_CHINESE, text, 64, &length));
    EXPECT(length > 0 && text[0] >= 0x4E00);
    EXPECT_INT(NRV_OK, NrvGetCommand(0, NRV_COMMAND_ENGLISH, text, 64, &length));
    EXPECT(length > 0 && text[0] < 128);
    EXPECT_INT(NRV_E_ARGUMENT, NrvGetCommand(0, 6, text, 64, &length));
    EXPECT_INT(NRV_E_BUFFER, NrvGetCommand(0, NRV_COMMAND_WORD, text, 4, &length));
}

C_TEST(CapiView, ALineIsDrawnByTwoClicksAndTold) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    EXPECT_TEXT(L"line", Running(&host));
    EXPECT(GetFocus() == host.view);
    EXPECT_TEXT(L"begun line; changing command line; ", CHostTakeLog());
    CHostClick(&host, 50, 100);
    CHostMove(&host, 150, 100);
    EXPECT_TEXT(L"", CHostTakeLog());
    CHostClick(&host, 150, 100);
    EXPECT_TEXT(L"changed added 1; ended line done; ", CHostTakeLog());
    EXPECT_TEXT(L"", Running(&host));
    ExpectLine(&host, Only(&host), 50, 200, 150, 200);
    CHostClose(&host);
}

C_TEST(CapiView, AnUnknownWordIsRefusedAndAnotherBreaksTheRunningOneOff) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    EXPECT_INT(NRV_E_WORD, NrvDoCommand(host.view, L"Line"));
    EXPECT_TEXT(L"line", Running(&host));
    CHostTakeLog();
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"circle"));
    EXPECT_TEXT(L"circle", Running(&host));
    EXPECT_TEXT(L"ended line cancelled; begun circle; changing command circle; ", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvCancelCommand(host.view));
    EXPECT_TEXT(L"ended circle cancelled; ", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvCancelCommand(host.view)); // None runs.
    EXPECT_TEXT(L"", CHostTakeLog());
    CHostClose(&host);
}

C_TEST(CapiView, WhatIsMovedAndBrokenOffGoesBack) {
    CHost host;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 50, 150, 50, 0xFFFFFF, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &line, 1));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"translation"));
    CHostClick(&host, 200, 100);
    CHostMove(&host, 220, 90);
    ExpectLine(&host, line, 70, 60, 170, 60);
    CHostTakeLog();
    EXPECT_INT(NRV_OK, NrvCancelCommand(host.view));
    ExpectLine(&host, line, 50, 50, 150, 50);
    EXPECT_TEXT(L"ended translation cancelled; ", CHostTakeLog());
    // Before the base point there is nothing to put back.
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"translation"));
    CHostTakeLog();
    PostMessageW(host.view, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 10));
    CHostPump();
    EXPECT_TEXT(L"ended translation cancelled; ", CHostTakeLog());
    ExpectLine(&host, line, 50, 50, 150, 50);
    CHostClose(&host);
}

static int g_answer;

static void AnswerMessage(NrvEvent* event) {
    if (event->header.code == NRV_N_MESSAGE) {
        EXPECT_INT(0, event->answer);
        event->answer = g_answer;
    }
}

C_TEST(CapiView, ATranslationTellsWhatItMoved) {
    CHost host;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 50, 150, 50, 0xFFFFFF, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &line, 1));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"translation"));
    CHostSetHandler(AnswerMessage);
    g_answer = IDNO; // The originals are not kept.
    CHostClick(&host, 200, 100);
    CHostMove(&host, 220, 90);
    CHostTakeLog();
    CHostClick(&host, 220, 90);
    EXPECT_TEXT(L"message \x662F\x5426\x4FDD\x7559\x539F\x5BF9\x8C61?; changed modified 1; ended translation done; ",
                CHostTakeLog());
    ExpectLine(&host, line, 70, 60, 170, 60);
    CHostClose(&host);
}

C_TEST(CapiView, EraseAsksTheHostAndTellsWhatIsGone) {
    CHost host;
    NrvId lines[2] = {0};
    int32_t kind = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 50, 150, 50, 0, &lines[0]) == NRV_OK);
    REQUIRE(NrvAddLine(host.view, 50, 90, 150, 90, 0, &lines[1]) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetSelection(host.view, lines, 1));
    CHostTakeLog();
    CHostSetHandler(AnswerMessage);
    g_answer = IDNO;
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"erase"));
    EXPECT_INT(2, Count(&host, NRV_LIST_DRAWING));
    EXPECT(wcsstr(CHostTakeLog(), L"ended erase cancelled; ") != NULL);
    g_answer = IDYES;
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"erase"));
    EXPECT_TEXT(L"begun erase; changing command erase; message "
                L"\x662F\x5426\x786E\x8BA4\x5220\x9664\x9009\x4E2D\x7684\x5BF9\x8C61; changed removed 1; ended erase "
                L"done; selection 0; ",
                CHostTakeLog());
    EXPECT_INT(NRV_E_OBJECT, NrvGetKind(host.view, lines[0], &kind));
    EXPECT_INT(NRV_OK, NrvGetKind(host.view, lines[1], &kind));
    CHostClose(&host);
}

C_TEST(CapiView, SilentMessagesAnswerNoAndAreKept) {
    CHost host;
    NrvId line = 0;
    int32_t mode = -1;
    wchar_t text[64];
    uint32_t length = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 50, 150, 50, 0, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &line, 1));
    EXPECT_INT(NRV_OK, NrvGetMessages(host.view, &mode));
    EXPECT_INT(NRV_MESSAGES_BOX, mode);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetMessages(host.view, 2));
    EXPECT_INT(NRV_OK, NrvSetMessages(host.view, NRV_MESSAGES_SILENT));
    EXPECT_INT(NRV_OK, NrvGetMessages(host.view, &mode));
    EXPECT_INT(NRV_MESSAGES_SILENT, mode);
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"erase"));
    EXPECT_INT(1, Count(&host, NRV_LIST_DRAWING));
    EXPECT_INT(NRV_OK, NrvGetLastMessage(host.view, text, 64, &length));
    EXPECT_TEXT(L"\x662F\x5426\x786E\x8BA4\x5220\x9664\x9009\x4E2D\x7684\x5BF9\x8C61", text);
    CHostClose(&host);
}

// Answers the box with Yes as soon as it is active.
static HHOOK g_hook;
static int g_boxes;

static LRESULT CALLBACK OnBox(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE) {
        wchar_t name[16] = L"";
        GetClassNameW((HWND)wParam, name, 16);
        if (wcscmp(name, L"#32770") == 0) {
            ++g_boxes;
            PostMessageW((HWND)wParam, WM_COMMAND, IDYES, 0);
        }
    }
    return CallNextHookEx(g_hook, code, wParam, lParam);
}

C_TEST(CapiView, AMessageThatNobodyAnswersIsShownInABox) {
    CHost host;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 50, 150, 50, 0, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &line, 1));
    g_boxes = 0;
    g_hook = SetWindowsHookExW(WH_CBT, OnBox, NULL, GetCurrentThreadId());
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"erase"));
    UnhookWindowsHookEx(g_hook);
    EXPECT_INT(1, g_boxes);
    EXPECT_INT(0, Count(&host, NRV_LIST_DRAWING));
    CHostClose(&host);
}

// ---- Keys ----

// A line from (50, 200), 70 units to the right, by its typed length; `pump` is the host's loop.
static void TypeDistance(void (*pump)(void)) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"pline"));
    CHostClick(&host, 50, 100);
    CHostMove(&host, 150, 100);
    const HWND box = CHostBox(&host);
    REQUIRE(box != NULL);
    EXPECT(GetFocus() == box);
    CHostType(L"70");
    CHostPostKey(VK_RETURN);
    pump();
    CHostTakeLog();
    PostMessageW(host.view, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(200, 200));
    CHostPump();
    EXPECT_TEXT(L"changed added 1; ended pline done; ", CHostTakeLog());
    ExpectLine(&host, Only(&host), 50, 200, 120, 200);
    CHostClose(&host);
}

static void PumpAsDialog(void) {
    CHostPumpDialog(GetActiveWindow());
}

C_TEST(CapiView, ATypedDistanceIsTakenInALoopThatKnowsNothing) {
    TypeDistance(CHostPump);
}

C_TEST(CapiView, ATypedDistanceIsTakenInALoopOfADialog) {
    TypeDistance(PumpAsDialog);
}

C_TEST(CapiView, ATypedDistanceIsTakenInALoopThatTranslates) {
    TypeDistance(CHostPumpTranslated);
}

C_TEST(CapiView, ADistanceIsEnteredByTheHost) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_E_STATE, NrvEnterDistance(host.view, 5));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"pline"));
    EXPECT_INT(NRV_E_STATE, NrvEnterDistance(host.view, 5)); // No point yet.
    CHostClick(&host, 50, 100);
    CHostMove(&host, 50, 20); // Upwards.
    EXPECT_INT(NRV_OK, NrvEnterDistance(host.view, 40));
    EXPECT_INT(NRV_OK, NrvCancelCommand(host.view));
    ExpectLine(&host, Only(&host), 50, 200, 50, 240);
    CHostClose(&host);
}

static void EscapeFromBox(void (*pump)(void)) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    CHostTakeLog();
    CHostPostKey(VK_ESCAPE); // To the view.
    pump();
    EXPECT_TEXT(L"ended line cancelled; ", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"pline"));
    CHostClick(&host, 50, 100);
    CHostMove(&host, 150, 100);
    REQUIRE(CHostBox(&host) != NULL);
    CHostTakeLog();
    CHostPostKey(VK_ESCAPE); // To the box.
    pump();
    EXPECT(wcsstr(CHostTakeLog(), L"ended pline cancelled; ") != NULL);
    EXPECT_TEXT(L"", Running(&host));
    EXPECT(IsWindow(host.parent));
    EXPECT(GetFocus() == host.view);
    CHostClose(&host);
}

C_TEST(CapiView, EscapeBreaksOffInALoopThatKnowsNothing) {
    EscapeFromBox(CHostPump);
}

C_TEST(CapiView, EscapeBreaksOffInALoopOfADialog) {
    EscapeFromBox(PumpAsDialog);
}

C_TEST(CapiView, EscapeBreaksOffInALoopThatTranslates) {
    EscapeFromBox(CHostPumpTranslated);
}

C_TEST(CapiView, TabLeavesTheViewInADialogWhenNothingRuns) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    SetFocus(host.view);
    CHostPostKey(VK_TAB);
    CHostPumpDialog(host.parent);
    EXPECT(GetFocus() == host.other);
    CHostClose(&host);
}

C_TEST(CapiView, TranslatingLeavesMessagesOfOthersAlone) {
    CHost host;
    MSG message = {0};
    int32_t translated = 9;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    message.hwnd = host.other;
    message.message = WM_KEYDOWN;
    message.wParam = VK_RETURN;
    EXPECT_INT(NRV_OK, NrvTranslateMessage(&message, &translated));
    EXPECT_INT(0, translated);
    message.hwnd = NULL;
    EXPECT_INT(NRV_OK, NrvTranslateMessage(&message, &translated));
    EXPECT_INT(0, translated);
    CHostClose(&host);
}

// ---- Modes ----

C_TEST(CapiView, TheOrthoLockMakesSegmentsHorizontal) {
    CHost host;
    int32_t ortho = -1;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvGetOrtho(host.view, &ortho));
    EXPECT_INT(0, ortho);
    EXPECT_INT(NRV_OK, NrvSetOrtho(host.view, 1));
    EXPECT_INT(NRV_OK, NrvGetOrtho(host.view, &ortho));
    EXPECT_INT(1, ortho);
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    CHostClick(&host, 50, 100);
    CHostClick(&host, 150, 120);
    ExpectLine(&host, Only(&host), 50, 200, 150, 200);
    CHostClose(&host);
}

C_TEST(CapiView, WithoutSnapAClickIsTakenAsItIs) {
    CHost host;
    int32_t mode = -1;
    NrvId id = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    // Polylines are the kind whose grips the mode chooses.
    const NrvPoint ends[2] = {{50, 200}, {60, 290}};
    REQUIRE(NrvAddPolyline(host.view, ends, NULL, 2, 0, 0, NULL) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetSnapMode(host.view, &mode));
    EXPECT_INT(15, mode);
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    CHostClick(&host, 53, 102); // Near the lower vertex.
    CHostClick(&host, 200, 102);
    REQUIRE(NrvGetObject(host.view, NRV_LIST_DRAWING, 1, &id) == NRV_OK);
    ExpectLine(&host, id, 50, 200, 200, 198);
    EXPECT_INT(NRV_OK, NrvRemove(host.view, id));
    EXPECT_INT(NRV_OK, NrvSetSnapMode(host.view, 0));
    EXPECT_INT(NRV_OK, NrvGetSnapMode(host.view, &mode));
    EXPECT_INT(0, mode);
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    CHostClick(&host, 53, 102);
    CHostClick(&host, 200, 150);
    REQUIRE(NrvGetObject(host.view, NRV_LIST_DRAWING, 1, &id) == NRV_OK);
    ExpectLine(&host, id, 53, 198, 200, 150);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetSnapMode(host.view, 16));
    CHostClose(&host);
}

// ---- Events ----

C_TEST(CapiView, AClickTellsWhatItHitAndWhatIsSelected) {
    CHost host;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 200, 150, 200, 0, &line) == NRV_OK);
    EXPECT_TEXT(L"changing added 0; changed added 1; ", CHostTakeLog());
    CHostClick(&host, 80, 100);
    EXPECT_TEXT(L"click line -1; selection 1; ", CHostTakeLog());
    CHostClick(&host, 300, 250);
    EXPECT_TEXT(L"click none -1; ", CHostTakeLog());
    SendMessageW(host.view, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(80, 100));
    EXPECT_TEXT(L"double line; ", CHostTakeLog());
    SendMessageW(host.view, WM_KEYDOWN, 'A', 1);
    EXPECT_TEXT(L"selection 0; ", CHostTakeLog());
    CHostClose(&host);
}

C_TEST(CapiView, AGripThatIsTakenIsACommand) {
    CHost host;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 200, 150, 200, 0, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &line, 1));
    CHostTakeLog();
    CHostClick(&host, 150, 100);
    EXPECT_TEXT(L"grip", Running(&host));
    EXPECT_TEXT(L"begun grip; changing command grip; click line -1; ", CHostTakeLog());
    CHostMove(&host, 170, 80);
    CHostTakeLog();
    int32_t modified = -1;
    EXPECT_INT(NRV_OK, NrvSetModified(host.view, 0));
    CHostClick(&host, 170, 80);
    EXPECT_TEXT(L"changed modified 1; ended grip done; ", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvGetModified(host.view, &modified));
    EXPECT_INT(1, modified);
    ExpectLine(&host, line, 50, 200, 170, 220);
    CHostClose(&host);
}

static NrvEvent g_seen[64];
static int g_seenCount;

static void NRV_CALL Collect(NrvEvent* event, void* user) {
    EXPECT(user == g_seen);
    if (g_seenCount < 64) {
        g_seen[g_seenCount++] = *event;
    }
}

C_TEST(CapiView, ACallbackGetsTheSameEventsAndTheirFields) {
    CHost host;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 200, 150, 200, 0, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetCallback(host.view, Collect, g_seen));
    g_seenCount = 0;
    CHostMove(&host, 80, 100);
    CHostClick(&host, 80, 100);
    REQUIRE(g_seenCount == 3); // Cursor, click, selection.
    EXPECT_INT(NRV_N_CURSOR, g_seen[0].header.code);
    EXPECT_NEAR_TO(80, g_seen[0].x, 0);
    EXPECT_NEAR_TO(200, g_seen[0].y, 0);
    EXPECT_INT(80, g_seen[0].px);
    EXPECT_INT(100, g_seen[0].py);
    EXPECT_INT(NRV_N_CLICK, g_seen[1].header.code);
    EXPECT(g_seen[1].header.window == host.view && g_seen[1].source == host.view);
    EXPECT_INT(7, g_seen[1].header.identity);
    EXPECT_INT(sizeof(NrvEvent), g_seen[1].size);
    EXPECT(g_seen[1].id == line);
    EXPECT_INT(NRV_KIND_LINE, g_seen[1].kind);
    EXPECT_INT(1, g_seen[1].answer);
    EXPECT_INT(NRV_N_SELECTION, g_seen[2].header.code);
    EXPECT_INT(1, g_seen[2].count);
    EXPECT_INT(NRV_OK, NrvSetCallback(host.view, NULL, NULL));
    g_seenCount = 0;
    CHostClick(&host, 300, 250);
    EXPECT_INT(0, g_seenCount);
    CHostClose(&host);
}

C_TEST(CapiView, TheMaskLeavesEventsOutAndHoverIsAskedFor) {
    CHost host;
    uint32_t mask = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 200, 150, 200, 0, NULL) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetEventMask(host.view, &mask));
    EXPECT(!(mask & NRV_EVENT_BIT(NRV_N_HOVER)));
    EXPECT(mask & NRV_EVENT_BIT(NRV_N_CLICK));
    CHostTakeLog();
    CHostMove(&host, 80, 100);
    EXPECT_TEXT(L"", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvSetEventMask(host.view, NRV_EVENT_BIT(NRV_N_HOVER)));
    CHostMove(&host, 81, 100);
    CHostMove(&host, 82, 100);
    CHostMove(&host, 300, 200);
    CHostMove(&host, 301, 200);
    EXPECT_TEXT(L"hover line; hover none; ", CHostTakeLog());
    CHostClick(&host, 80, 100);
    EXPECT_TEXT(L"", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvSetEventMask(host.view, 0));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    CHostClick(&host, 10, 10);
    CHostClick(&host, 20, 20);
    EXPECT_TEXT(L"", CHostTakeLog());
    EXPECT_INT(2, Count(&host, NRV_LIST_DRAWING));
    CHostClose(&host);
}

C_TEST(CapiView, ChangesByTheHostAreToldOnceAlsoWhileACommandRuns) {
    CHost host;
    NrvId line = 0;
    NrvId other = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 200, 150, 200, 0, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    CHostTakeLog();
    EXPECT_INT(NRV_OK, NrvAddLine(host.view, 0, 0, 1, 1, 0, &other));
    EXPECT_INT(NRV_OK, NrvSetInt(host.view, line, NRV_INT_LAYER, 3));
    EXPECT_INT(NRV_OK, NrvRemove(host.view, other));
    EXPECT_INT(NRV_OK, NrvSetOrder(host.view, line, 0));
    EXPECT_INT(NRV_OK, NrvAddLayer(host.view, L"x", NULL));
    EXPECT_INT(NRV_OK, NrvSetBackground(host.view, 1));
    EXPECT_TEXT(L"changing added 0; changed added 1; changing modified 1; changed modified 1; changing removed 1; "
                L"changed removed 1; changing order 1; changed order 1; changing layers 0; changed layers 0; "
                L"changing background 0; changed background 0; ",
                CHostTakeLog());
    CHostClick(&host, 10, 10);
    CHostClick(&host, 20, 20);
    EXPECT_TEXT(L"changed added 1; ended line done; ", CHostTakeLog()); // The command's line alone.
    EXPECT_INT(NRV_OK, NrvClear(host.view));
    EXPECT_TEXT(L"changing cleared 0; changed cleared 0; ", CHostTakeLog());
    CHostClose(&host);
}

C_TEST(CapiView, ACommandWhoseObjectsAreFreedIsLost) {
    CHost host;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 50, 150, 50, 0xFFFFFF, &line) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetSelection(host.view, &line, 1));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"translation"));
    CHostClick(&host, 200, 100);
    EXPECT_INT(NRV_OK, NrvRemove(host.view, line));
    CHostTakeLog();
    CHostMove(&host, 220, 90);
    EXPECT_TEXT(L"ended translation lost; ", CHostTakeLog());
    EXPECT_INT(0, Count(&host, NRV_LIST_DRAWING));
    CHostClose(&host);
}

// ---- A handler that calls back, and one that ends the view ----

static void DrawAnother(NrvEvent* event) {
    if (event->header.code == NRV_N_COMMAND_ENDED && wcscmp(event->text, L"line") == 0) {
        EXPECT_INT(NRV_OK, NrvAddCircle(event->source, 10, 10, 5, 0, NULL));
        EXPECT_INT(NRV_OK, NrvDoCommand(event->source, L"circle"));
    }
}

C_TEST(CapiView, AHandlerMayAddAndStartTheNextCommand) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    CHostSetHandler(DrawAnother);
    CHostClick(&host, 10, 10);
    CHostTakeLog();
    CHostClick(&host, 90, 90);
    EXPECT_TEXT(L"changed added 1; ended line done; changing added 0; changed added 1; begun circle; changing command "
                L"circle; ",
                CHostTakeLog());
    EXPECT_INT(2, Count(&host, NRV_LIST_DRAWING));
    EXPECT_TEXT(L"circle", Running(&host));
    CHostClose(&host);
}

static uint32_t g_endAt;

static void DestroyView(NrvEvent* event) {
    if (event->header.code == NRV_N_MESSAGE) {
        event->answer = IDYES;
    }
    if (event->header.code == g_endAt) {
        EXPECT(DestroyWindow((HWND)event->header.window));
        int32_t kind = 0;
        EXPECT_INT(NRV_E_HANDLE, NrvGetHandleKind(event->source, &kind));
    }
}

// Each event in turn destroys the view, with a command that has just begun, is running, or has ended.
C_TEST(CapiView, AHandlerMayDestroyTheViewAtAnyEvent) {
    const uint32_t codes[] = {NRV_N_CLICK,    NRV_N_CURSOR,  NRV_N_SELECTION, NRV_N_COMMAND_BEGUN, NRV_N_COMMAND_ENDED,
                              NRV_N_CHANGING, NRV_N_CHANGED, NRV_N_MESSAGE,   NRV_N_DOUBLE_CLICK,  NRV_N_HOVER};
    for (size_t i = 0; i < sizeof codes / sizeof codes[0]; ++i) {
        CHost host;
        NrvId line = 0;
        REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
        REQUIRE(NrvAddLine(host.view, 50, 50, 150, 50, 0, &line) == NRV_OK);
        EXPECT_INT(NRV_OK, NrvSetEventMask(host.view, UINT32_MAX));
        CHostSetHandler(DestroyView);
        g_endAt = codes[i];
        const HWND view = host.view;
        PostMessageW(view, WM_MOUSEMOVE, 0, MAKELPARAM(80, 250));
        PostMessageW(view, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(80, 250));
        PostMessageW(view, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(80, 250));
        CHostPump();
        if (IsWindow(view)) {
            NrvSetMessages(view, NRV_MESSAGES_SILENT);
            const NrvResult result = NrvDoCommand(view, L"erase");
            EXPECT(result == NRV_OK || result == NRV_E_ENDED);
        }
        EXPECT(!IsWindow(view));
        CHostClose(&host);
    }
}

C_TEST(CapiView, ACallWhoseHandlerEndsTheViewSaysSo) {
    CHost host;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 50, 150, 50, 0, &line) == NRV_OK);
    CHostSetHandler(DestroyView);
    g_endAt = NRV_N_CHANGING;
    EXPECT_INT(NRV_E_ENDED, NrvSetInt(host.view, line, NRV_INT_LAYER, 1));
    EXPECT_INT(NRV_E_HANDLE, NrvSetInt(host.view, line, NRV_INT_LAYER, 1));
    CHostClose(&host);
}

static void NRV_CALL FreeDrawing(NrvEvent* event, void* user) {
    (void)user;
    EXPECT(event->header.window == NULL);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(event->source));
}

C_TEST(CapiView, AHandlerMayFreeTheDrawingOfTheCall) {
    NrvHandle drawing = NULL;
    NrvId id = 77;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetCallback(drawing, FreeDrawing, NULL));
    EXPECT_INT(NRV_E_ENDED, NrvAddLine(drawing, 0, 0, 1, 1, 0, &id));
    EXPECT(id == 77);
    EXPECT_INT(NRV_E_HANDLE, NrvAddLine(drawing, 0, 0, 1, 1, 0, &id));
}

static void RemoveFirst(NrvEvent* event) {
    if (event->header.code == NRV_N_CHANGING && event->count == 1) {
        const NrvId id = event->ids[0];
        CHostSetHandler(NULL);
        EXPECT_INT(NRV_OK, NrvRemove(event->source, id));
    }
}

C_TEST(CapiView, AnObjectThatAHandlerRemovesBeforeItsChangeIsNotTouched) {
    CHost host;
    NrvId line = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddLine(host.view, 50, 50, 150, 50, 0, &line) == NRV_OK);
    CHostSetHandler(RemoveFirst);
    EXPECT_INT(NRV_E_OBJECT, NrvSetInt(host.view, line, NRV_INT_LAYER, 1));
    EXPECT_INT(0, Count(&host, NRV_LIST_DRAWING));
    CHostClose(&host);
}

static void RemoveLayers(NrvEvent* event) {
    if (event->header.code == NRV_N_CHANGING) {
        CHostSetHandler(NULL);
        EXPECT_INT(NRV_OK, NrvRemoveLayers(event->source));
    }
}

C_TEST(CapiView, ALayerThatAHandlerRemovesBeforeItsChangeIsNotTouched) {
    CHost host;
    NrvLayer layer = {0};
    uint32_t count = 99;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    layer.size = sizeof layer;
    REQUIRE(NrvGetLayer(host.view, 0, &layer) == NRV_OK);
    CHostSetHandler(RemoveLayers);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetLayer(host.view, 0, &layer));
    EXPECT_INT(NRV_OK, NrvGetLayerCount(host.view, &count));
    EXPECT_INT(0, count);
    CHostClose(&host);
}

static void RemoveVertex(NrvEvent* event) {
    if (event->header.code == NRV_N_CHANGING && event->count == 1) {
        const NrvId id = event->ids[0];
        CHostSetHandler(NULL);
        EXPECT_INT(NRV_OK, NrvRemoveVertex(event->source, id, 0));
    }
}

C_TEST(CapiView, APolylineThatAHandlerShortensBeforeItsChangeIsAskedOnceMore) {
    CHost host;
    NrvId pline = 0;
    const NrvPoint points[3] = {{0, 0}, {100, 0}, {100, 100}};
    const double bulges[3] = {0.5, 0.25, 0};
    double got[3] = {9, 9, 9};
    uint32_t count = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    REQUIRE(NrvAddPolyline(host.view, points, NULL, 3, 0, 0, &pline) == NRV_OK);
    CHostSetHandler(RemoveVertex);
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetBulges(host.view, pline, bulges, 3));
    EXPECT_INT(NRV_OK, NrvGetBulges(host.view, pline, got, 3, &count));
    EXPECT_INT(2, count);
    EXPECT_NEAR_TO(0, got[0], 0);
    CHostSetHandler(RemoveVertex); // Its grips are vertex, midpoint, vertex now, and one afterwards.
    EXPECT_INT(NRV_E_ARGUMENT, NrvMoveGrip(host.view, pline, 2, 1, 1));
    CHostClose(&host);
}

// ---- The classes ----

C_TEST(CapiView, AViewIsAControlOfADialogTemplate) {
    struct {
        DLGTEMPLATE dialog;
        WORD menu, class, title;
        DLGITEMTEMPLATE item;
        WCHAR itemClass[13];
        WORD itemTitle, extra;
    } template;
    memset(&template, 0, sizeof template);

    template.dialog.style = WS_POPUP | WS_VISIBLE;
    template.dialog.cdit = 1;
    template.dialog.cx = 200;
    template.dialog.cy = 100;
    template.item.style = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    template.item.cx = 200;
    template.item.cy = 100;
    template.item.id = 42;
    wcscpy(template.itemClass, NRV_VIEW_CLASS);
    REQUIRE(NrvInitialize() == NRV_OK);
    const HWND dialog = CreateDialogIndirectParamW(GetModuleHandleW(NULL), &template.dialog, NULL, NULL, 0);
    REQUIRE(dialog != NULL);
    const HWND view = GetDlgItem(dialog, 42);
    int32_t kind = 0;
    EXPECT_INT(NRV_OK, NrvGetHandleKind(view, &kind));
    EXPECT_INT(NRV_HANDLE_VIEW, kind);
    EXPECT_INT(NRV_OK, NrvAddLine(view, 0, 0, 100, 100, 0xFFFFFF, NULL));
    EXPECT_INT(NRV_OK, NrvZoomExtents(view));
    DestroyWindow(dialog);
    EXPECT_INT(NRV_E_HANDLE, NrvGetHandleKind(view, &kind));
}

static WNDPROC g_original;

static LRESULT CALLBACK SuperProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(g_original, window, message, wParam, lParam);
}

// As frameworks do that make a class of their own from the one they are given.
C_TEST(CapiView, AClassMadeFromOurClassWorksAsWell) {
    WNDCLASSEXW wc = {0};
    CHost host;
    int32_t kind = 0;
    wc.cbSize = sizeof wc;
    REQUIRE(NrvInitialize() == NRV_OK);
    REQUIRE(GetClassInfoExW(NULL, NRV_PARM_VIEW_CLASS, &wc));
    g_original = wc.lpfnWndProc;
    wc.lpfnWndProc = SuperProc;
    wc.lpszClassName = L"Framework.NRVectorParmView";
    wc.hInstance = GetModuleHandleW(NULL);
    wc.style &= ~(UINT)CS_GLOBALCLASS;
    RegisterClassExW(&wc);
    REQUIRE(CHostOpen(&host, L"Framework.NRVectorParmView"));
    EXPECT_INT(NRV_OK, NrvGetHandleKind(host.view, &kind));
    EXPECT_INT(NRV_HANDLE_PARM_VIEW, kind);
    EXPECT_INT(NRV_OK, NrvAddParm(host.view, 10, 100, L"1", L"a", 20, 0, NULL));
    CHostClose(&host);
    UnregisterClassW(L"Framework.NRVectorParmView", GetModuleHandleW(NULL));
}

C_TEST(CapiView, SeveralViewsAreIndependent) {
    CHost first;
    CHost second;
    NrvId id = 0;
    int32_t kind = 0;
    REQUIRE(CHostOpen(&first, NRV_VIEW_CLASS));
    REQUIRE(CHostOpen(&second, NRV_VIEW_CLASS));
    EXPECT_INT(NRV_OK, NrvAddLine(first.view, 0, 0, 1, 1, 0, &id));
    EXPECT_INT(NRV_E_OBJECT, NrvGetKind(second.view, id, &kind));
    EXPECT_INT(0, Count(&second, NRV_LIST_DRAWING));
    EXPECT_INT(NRV_OK, NrvDoCommand(first.view, L"line"));
    EXPECT_TEXT(L"", Running(&second));
    CHostClose(&first);
    EXPECT_INT(NRV_OK, NrvAddLine(second.view, 0, 0, 1, 1, 0, NULL));
    CHostClose(&second);
}
