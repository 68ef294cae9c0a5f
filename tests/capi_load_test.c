// The C interface: loading and saving, what is told of a damaged stream, the modified flag, painting, threads.

#include "support/CHost.h"

#include <stdlib.h>
#include <string.h>

static unsigned char g_stream[65536];

// A drawing of five lines and a parameter.
static NrvHandle Sample(void) {
    NrvHandle drawing = NULL;
    EXPECT_INT(NRV_OK, NrvCreateDrawing(&drawing));
    for (int i = 0; i < 5; ++i) {
        EXPECT_INT(NRV_OK, NrvAddLine(drawing, i, 0, i, 10, 0xFF0000, NULL));
    }
    EXPECT_INT(NRV_OK, NrvAddParm(drawing, 0, 0, L"42", L"answer", 20, 0, NULL));
    return drawing;
}

static uint32_t SampleStream(void) {
    NrvHandle drawing = Sample();
    uint32_t size = 0;
    EXPECT_INT(NRV_OK, NrvSaveBuffer(drawing, g_stream, sizeof g_stream, &size));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
    return size;
}

static const wchar_t* LastMessage(NrvHandle handle) {
    static wchar_t text[256];
    uint32_t length = 0;
    EXPECT_INT(NRV_OK, NrvGetLastMessage(handle, text, 256, &length));
    EXPECT_INT(wcslen(text), length);
    return text;
}

C_TEST(CapiLoad, ADrawingComesBackWholeFromABuffer) {
    NrvHandle drawing = Sample();
    NrvHandle copy = NULL;
    NrvLoad load = {sizeof load, -1, 0};
    uint32_t size = 0;
    uint32_t again = 0;
    wchar_t text[16];
    uint32_t length = 0;
    REQUIRE(NrvCreateDrawing(&copy) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSaveBuffer(drawing, NULL, 0, &size));
    EXPECT(size > 100 && size < sizeof g_stream);
    memset(g_stream, 0xEE, sizeof g_stream);
    EXPECT_INT(NRV_E_BUFFER, NrvSaveBuffer(drawing, g_stream, size - 1, &again));
    EXPECT_INT(size, again);
    EXPECT_INT(0xEE, g_stream[0]); // Nothing was written.
    EXPECT_INT(NRV_OK, NrvSaveBuffer(drawing, g_stream, size, &again));
    EXPECT_INT(0xEE, g_stream[size]);
    EXPECT_INT(NRV_OK, NrvLoadBuffer(copy, g_stream, size, &load));
    EXPECT_INT(NRV_LOAD_WHOLE, load.outcome);
    EXPECT_INT(6, load.objects);
    EXPECT_TEXT(L"", LastMessage(copy));
    EXPECT_INT(NRV_OK, NrvGetParmValue(copy, L"answer", text, 16, &length));
    EXPECT_TEXT(L"42", text);
    EXPECT_INT(NRV_OK, NrvLoadBuffer(copy, g_stream, size, NULL));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(copy));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

// A cut stream is never taken for a good one, and a box never comes.
C_TEST(CapiLoad, EachCutOfAStreamIsReportedAsPartlyReadOrRefused) {
    const uint32_t size = SampleStream();
    NrvHandle drawing = NULL;
    int parts = 0;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    for (uint32_t cut = 1; cut < size; ++cut) {
        NrvLoad load = {sizeof load, -1, 99};
        const NrvResult result = NrvLoadBuffer(drawing, g_stream, cut, &load);
        uint32_t count = 0;
        EXPECT_INT(NRV_OK, NrvGetObjects(drawing, NRV_LIST_DRAWING, NULL, 0, &count));
        EXPECT_INT(count, load.objects);
        EXPECT(count < 6);
        EXPECT_INT(count != 0 ? NRV_E_PARTLY : NRV_E_REFUSED, result);
        EXPECT_INT(count != 0 ? NRV_LOAD_PARTLY : NRV_LOAD_REFUSED, load.outcome);
        EXPECT(LastMessage(drawing)[0] != 0);
        parts += count != 0;
    }
    EXPECT(parts > 100);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiLoad, AStreamOfAnotherVersionIsRefusedWithItsMessage) {
    const uint32_t size = SampleStream();
    NrvHandle drawing = Sample();
    NrvLoad load = {sizeof load, -1, 99};
    g_stream[0] = 2;
    EXPECT_INT(NRV_E_REFUSED, NrvLoadBuffer(drawing, g_stream, size, &load));
    EXPECT_INT(NRV_LOAD_REFUSED, load.outcome);
    EXPECT_INT(0, load.objects);
    EXPECT_TEXT(L"\x6587\x4EF6\x683C\x5F0F\x9519\x8BEF!", LastMessage(drawing));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiLoad, TheIdsOfTheFormerDrawingAreStale) {
    const uint32_t size = SampleStream();
    NrvHandle drawing = NULL;
    NrvId id = 0;
    int32_t kind = 0;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    REQUIRE(NrvAddLine(drawing, 0, 0, 1, 1, 0, &id) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvLoadBuffer(drawing, g_stream, size, NULL));
    EXPECT_INT(NRV_E_OBJECT, NrvGetKind(drawing, id, &kind));
    REQUIRE(NrvGetObject(drawing, NRV_LIST_DRAWING, 0, &id) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvClear(drawing));
    EXPECT_INT(NRV_E_OBJECT, NrvGetKind(drawing, id, &kind));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiLoad, AFileIsWrittenAndReadAndAMissingOneChangesNothing) {
    wchar_t folder[MAX_PATH];
    wchar_t path[MAX_PATH];
    NrvHandle drawing = Sample();
    NrvLoad load = {sizeof load, -1, 0};
    uint32_t count = 0;
    REQUIRE(GetTempPathW(MAX_PATH, folder) != 0 && GetTempFileNameW(folder, L"nrv", 0, path) != 0);
    EXPECT_INT(NRV_OK, NrvSaveFile(drawing, path));
    EXPECT_INT(NRV_OK, NrvClear(drawing));
    EXPECT_INT(NRV_OK, NrvLoadFile(drawing, path, &load));
    EXPECT_INT(NRV_LOAD_WHOLE, load.outcome);
    EXPECT_INT(6, load.objects);
    EXPECT(DeleteFileW(path));
    EXPECT_INT(NRV_E_FILE, NrvLoadFile(drawing, path, &load));
    EXPECT_INT(NRV_OK, NrvGetObjects(drawing, NRV_LIST_DRAWING, NULL, 0, &count));
    EXPECT_INT(6, count);
    // An empty file is none.
    CloseHandle(CreateFileW(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL));
    EXPECT_INT(NRV_E_FILE, NrvLoadFile(drawing, path, NULL));
    EXPECT(DeleteFileW(path));
    // A folder can be neither.
    EXPECT_INT(NRV_E_FILE, NrvLoadFile(drawing, folder, NULL));
    EXPECT_INT(NRV_E_FILE, NrvSaveFile(drawing, folder));
    EXPECT(LastMessage(drawing)[0] != 0);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiLoad, TheModifiedFlagFollowsChangesLoadsAndSaves) {
    NrvHandle drawing = NULL;
    int32_t modified = -1;
    uint32_t size = 0;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvGetModified(drawing, &modified));
    EXPECT_INT(0, modified);
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 0, 0, 1, 1, 0, NULL));
    EXPECT_INT(NRV_OK, NrvGetModified(drawing, &modified));
    EXPECT_INT(1, modified);
    EXPECT_INT(NRV_OK, NrvSaveBuffer(drawing, NULL, 0, &size));
    EXPECT_INT(NRV_OK, NrvGetModified(drawing, &modified));
    EXPECT_INT(1, modified); // Only the size was asked for.
    EXPECT_INT(NRV_OK, NrvSaveBuffer(drawing, g_stream, sizeof g_stream, &size));
    EXPECT_INT(NRV_OK, NrvGetModified(drawing, &modified));
    EXPECT_INT(0, modified);
    EXPECT_INT(NRV_OK, NrvSetModified(drawing, 1));
    EXPECT_INT(NRV_OK, NrvLoadBuffer(drawing, g_stream, size, NULL));
    EXPECT_INT(NRV_OK, NrvGetModified(drawing, &modified));
    EXPECT_INT(0, modified);
    EXPECT_INT(NRV_OK, NrvClear(drawing));
    EXPECT_INT(NRV_OK, NrvGetModified(drawing, &modified));
    EXPECT_INT(1, modified);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

// ---- Painting ----

C_TEST(CapiLoad, ADrawingPaintsIntoAContextOfTheCaller) {
    NrvHandle drawing = NULL;
    NrvMapping mapping = {sizeof mapping, 50, 1.0, 0.0, 0.0};
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 5, 20, 45, 20, 0xFF0000, NULL));
    EXPECT_INT(NRV_OK, NrvSetMapping(drawing, &mapping));
    const HDC dc = CreateCompatibleDC(NULL);
    BITMAPINFO info;
    void* bits = NULL;
    memset(&info, 0, sizeof info);
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = 50;
    info.bmiHeader.biHeight = -50;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, NULL, 0);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    PatBlt(dc, 0, 0, 50, 50, WHITENESS);
    EXPECT_INT(NRV_OK, NrvPaint(drawing, dc));
    EXPECT_INT(RGB(255, 0, 0), GetPixel(dc, 25, 30)); // y is upwards: row 50 - 20.
    EXPECT_INT(RGB(255, 255, 255), GetPixel(dc, 25, 20));
    EXPECT_INT(NRV_E_ARGUMENT, NrvPaint(drawing, bitmap));
    EXPECT(SelectObject(dc, before) == bitmap);
    DeleteObject(bitmap);
    DeleteDC(dc);
    EXPECT_INT(NRV_E_ARGUMENT, NrvPaint(drawing, dc)); // One that has ended.
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiLoad, TheMappingConvertsBothWaysAndFits) {
    NrvHandle drawing = NULL;
    NrvMapping mapping = {sizeof mapping, 200, 0.5, 10.0, 20.0};
    double a = 0;
    double b = 0;
    NrvId line = 0;
    NrvId hit = 99;
    int32_t segment = 99;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    EXPECT_INT(NRV_OK, NrvSetMapping(drawing, &mapping));
    EXPECT_INT(NRV_OK, NrvToPixels(drawing, 30, 40, &a, &b));
    EXPECT_NEAR_TO(40, a, 1e-6);  // (30 - 10) / 0.5
    EXPECT_NEAR_TO(160, b, 1e-6); // 200 - (40 - 20) / 0.5
    EXPECT_INT(NRV_OK, NrvToDrawing(drawing, 40, 160, &a, &b));
    EXPECT_NEAR_TO(30, a, 1e-6);
    EXPECT_NEAR_TO(40, b, 1e-6);
    mapping.scale = 0;
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetMapping(drawing, &mapping));
    mapping.scale = 1;
    mapping.height = -1;
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetMapping(drawing, &mapping));
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 0, 0, 100, 50, 0, &line));
    EXPECT_INT(NRV_OK, NrvSetZoomMargin(drawing, 10, 1));
    EXPECT_INT(NRV_OK, NrvZoomInto(drawing, 0, 0, 220, 120));
    EXPECT_INT(NRV_OK, NrvGetMapping(drawing, &mapping));
    EXPECT_NEAR_TO(0.476190, mapping.scale, 1e-6); // 100 units on 220 - 10 pixels; the height fits.
    EXPECT_INT(120, mapping.height);
    EXPECT_INT(NRV_OK, NrvToPixels(drawing, 50, 25, &a, &b));
    EXPECT_NEAR_TO(110, a, 0.6); // The middle of the line is in the middle.
    EXPECT_NEAR_TO(60, b, 0.6);
    EXPECT_INT(NRV_OK, NrvHitTest(drawing, 110, 60, &hit, &segment));
    EXPECT(hit == line);
    EXPECT_INT(-1, segment);
    EXPECT_INT(NRV_OK, NrvHitTest(drawing, 110, 80, &hit, NULL));
    EXPECT(hit == 0);
    EXPECT_INT(NRV_OK, NrvSetInt(drawing, line, NRV_INT_SELECTABLE, 0));
    EXPECT_INT(NRV_OK, NrvHitTest(drawing, 110, 60, &hit, NULL));
    EXPECT(hit == 0); // A click would not take it.
    EXPECT_INT(NRV_E_ARGUMENT, NrvZoomInto(drawing, 0, 0, 0, 100));
    EXPECT_INT(NRV_E_ARGUMENT, NrvZoomInto(drawing, INT32_MIN, 0, INT32_MAX, 100));
    EXPECT_INT(NRV_E_ARGUMENT, NrvSetZoomMargin(drawing, -1, 0));
    // As wide as the margin: there is no scale for it, and the mapping stays.
    EXPECT_INT(NRV_E_ARGUMENT, NrvZoomInto(drawing, 0, 0, 10, 2000));
    EXPECT_INT(NRV_OK, NrvGetMapping(drawing, &mapping));
    EXPECT_NEAR_TO(0.476190, mapping.scale, 1e-6);
    EXPECT_INT(120, mapping.height);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

// ---- Threads ----

enum { THREADS = 4, ROUNDS = 40 };

static DWORD WINAPI Work(LPVOID number) {
    const double own = (double)(intptr_t)number;
    int failed = 0;
    unsigned char* stream = (unsigned char*)malloc(65536);
    const HDC dc = CreateCompatibleDC(NULL);
    for (int round = 0; round < ROUNDS; ++round) {
        NrvHandle drawing = NULL;
        NrvHandle copy = NULL;
        uint32_t size = 0;
        uint32_t count = 0;
        NrvRect extents = {0, 0, 0, 0};
        NrvPoint ring[6];
        failed += NrvCreateDrawing(&drawing) != NRV_OK || NrvCreateDrawing(&copy) != NRV_OK;
        for (int i = 0; i < 25; ++i) {
            for (int k = 0; k < 6; ++k) {
                ring[k].x = own * 1000 + k;
                ring[k].y = i;
            }
            failed += NrvAddPolyline(drawing, ring, NULL, 6, 1, 0xFF, NULL) != NRV_OK;
            failed += NrvAddText(drawing, own * 1000, 0, L"thread", 0, 10, 0xFF, NULL) != NRV_OK;
        }
        failed += NrvPaint(drawing, dc) != NRV_OK;
        failed += NrvSaveBuffer(drawing, stream, 65536, &size) != NRV_OK;
        failed += NrvLoadBuffer(copy, stream, size, NULL) != NRV_OK;
        failed += NrvGetObjects(copy, NRV_LIST_DRAWING, NULL, 0, &count) != NRV_OK || count != 50;
        failed += NrvGetExtents(copy, 0, &extents) != NRV_OK || extents.left != own * 1000;
        failed += NrvFreeDrawing(drawing) != NRV_OK || NrvFreeDrawing(copy) != NRV_OK;
    }
    DeleteDC(dc);
    free(stream);
    return (DWORD)failed;
}

C_TEST(CapiLoad, SeveralThreadsHaveDrawingsOfTheirOwn) {
    HANDLE threads[THREADS];
    for (int i = 0; i < THREADS; ++i) {
        threads[i] = CreateThread(NULL, 0, Work, (LPVOID)(intptr_t)(i + 1), 0, NULL);
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

static void UseAndFree(void* drawing) {
    uint32_t count = 0;
    EXPECT_INT(NRV_OK, NrvAddLine(drawing, 0, 0, 1, 1, 0, NULL));
    EXPECT_INT(NRV_OK, NrvGetObjects(drawing, NRV_LIST_DRAWING, NULL, 0, &count));
    EXPECT_INT(7, count);
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiLoad, ADrawingGoesFromOneThreadToAnother) {
    NrvHandle drawing = Sample();
    int32_t kind = 0;
    CHostRunOnThread(UseAndFree, drawing);
    EXPECT_INT(NRV_E_HANDLE, NrvGetHandleKind(drawing, &kind));
}

static DWORD WINAPI WindowThread(LPVOID failed) {
    CHost host;
    NrvId line = 0;
    int bad = !CHostOpen(&host, NRV_VIEW_CLASS);
    bad += NrvAddLine(host.view, 0, 0, 10, 10, 0, &line) != NRV_OK;
    bad += NrvZoomExtents(host.view) != NRV_OK;
    UpdateWindow(host.view);
    DestroyWindow(host.parent);
    *(int*)failed = bad + (NrvZoomExtents(host.view) != NRV_E_HANDLE);
    return 0;
}

// One after another: the record of events is one.
C_TEST(CapiLoad, EachThreadMayHaveItsOwnWindows) {
    for (int i = 0; i < 3; ++i) {
        int failed = 99;
        const HANDLE thread = CreateThread(NULL, 0, WindowThread, &failed, 0, NULL);
        REQUIRE(thread != NULL);
        EXPECT_INT(WAIT_OBJECT_0, WaitForSingleObject(thread, INFINITE));
        CloseHandle(thread);
        EXPECT_INT(0, failed);
    }
}

// A view of its own in each of several threads at once: commands by clicks, pictures, events.
static void NRV_CALL CountEvent(NrvEvent* event, void* user) {
    if (event->header.code == NRV_N_COMMAND_ENDED && event->reason == NRV_END_DONE) {
        ++*(int*)user;
    }
}

static void ClickOnce(HWND view, int x, int y) {
    SendMessageW(view, WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
    SendMessageW(view, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageW(view, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

static DWORD WINAPI DrawOnThread(LPVOID number) {
    const int own = (int)(intptr_t)number;
    int failed = 0;
    int done = 0;
    const HWND view = CreateWindowExW(0, NRV_VIEW_CLASS, L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, NULL, NULL,
                                      GetModuleHandleW(NULL), NULL);
    failed += view == NULL || NrvSetCallback(view, CountEvent, &done) != NRV_OK;
    failed += NrvSetSnapMode(view, 0) != NRV_OK;
    for (int round = 0; round < 20; ++round) {
        NrvId id = 0;
        NrvPoint points[2] = {{0, 0}};
        uint32_t count = 0;
        failed += NrvDoCommand(view, L"line") != NRV_OK;
        ClickOnce(view, 20 * own, 10 * (round + 1));
        ClickOnce(view, 20 * own + 100, 10 * (round + 1));
        UpdateWindow(view);
        failed += NrvGetObject(view, NRV_LIST_DRAWING, (uint32_t)round, &id) != NRV_OK;
        failed += NrvGetPoints(view, id, points, 2, &count) != NRV_OK || points[0].x != 20 * own;
        failed += NrvRender(view, NULL, NRV_FORMAT_SVG, NULL, 0, &count, NULL) != NRV_OK;
        MSG message;
        while (PeekMessageW(&message, NULL, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }
    failed += done != 20;
    failed += !DestroyWindow(view);
    return (DWORD)failed;
}

C_TEST(CapiLoad, SeveralThreadsHaveWindowsAtOnce) {
    HANDLE threads[3];
    for (int i = 0; i < 3; ++i) {
        threads[i] = CreateThread(NULL, 0, DrawOnThread, (LPVOID)(intptr_t)(i + 1), 0, NULL);
        REQUIRE(threads[i] != NULL);
    }
    EXPECT_INT(WAIT_OBJECT_0, WaitForMultipleObjects(3, threads, TRUE, INFINITE));
    for (int i = 0; i < 3; ++i) {
        DWORD failed = 99;
        EXPECT(GetExitCodeThread(threads[i], &failed));
        EXPECT_INT(0, failed);
        CloseHandle(threads[i]);
    }
}

static void TranslateThere(void* window) {
    MSG message = {0};
    int32_t translated = 9;
    message.hwnd = (HWND)window;
    message.message = WM_KEYDOWN;
    message.wParam = VK_RETURN;
    EXPECT_INT(NRV_E_THREAD, NrvTranslateMessage(&message, &translated));
    EXPECT_INT(0, translated);
}

C_TEST(CapiLoad, AMessageIsTranslatedOnItsWindowsThreadOnly) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    CHostRunOnThread(TranslateThere, host.view);
    CHostClose(&host);
}
