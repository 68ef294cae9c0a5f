// The C interface: parts of a drawing as streams, and the clipboard.

#include "support/CHost.h"

#include <math.h>
#include <string.h>

static unsigned char g_bytes[65536];

static uint32_t Count(NrvHandle handle) {
    uint32_t count = 99;
    EXPECT_INT(NRV_OK, NrvGetObjects(handle, NRV_LIST_DRAWING, NULL, 0, &count));
    return count;
}

// The first point of the object at an index.
static NrvPoint First(NrvHandle handle, uint32_t index) {
    NrvPoint points[4] = {{-1, -1}};
    NrvId id = 0;
    uint32_t count = 0;
    EXPECT_INT(NRV_OK, NrvGetObject(handle, NRV_LIST_DRAWING, index, &id));
    EXPECT_INT(NRV_OK, NrvGetPoints(handle, id, points, 4, &count));
    return points[0];
}

// Three lines that begin at (10, 0), (20, 0) and (30, 0).
static void Fill(NrvHandle handle, NrvId* ids) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_INT(NRV_OK, NrvAddLine(handle, 10 * (i + 1), 0, 10 * (i + 1), 50, 0xFFFFFF, &ids[i]));
    }
}

C_TEST(CapiClipboard, SomeObjectsAreAStreamThatLoadsAndIsInserted) {
    NrvHandle from = NULL;
    NrvHandle to = NULL;
    NrvId ids[3] = {0};
    NrvId net = 0;
    uint32_t size = 0;
    uint32_t asked = 0;
    uint32_t count = 99;
    int32_t modified = -1;
    REQUIRE(NrvCreateDrawing(&from) == NRV_OK && NrvCreateDrawing(&to) == NRV_OK);
    Fill(from, ids);
    EXPECT_INT(NRV_OK, NrvAddNetLine(from, 0, 0, 1, 1, 0, &net));
    EXPECT_INT(NRV_OK, NrvSetSelection(from, ids, 3));
    const NrvId two[2] = {ids[2], ids[0]};
    EXPECT_INT(NRV_OK, NrvSaveObjects(from, two, 2, NULL, 0, &asked));
    EXPECT_INT(NRV_E_BUFFER, NrvSaveObjects(from, two, 2, g_bytes, asked - 1, &size));
    EXPECT_INT(NRV_OK, NrvSaveObjects(from, two, 2, g_bytes, sizeof g_bytes, &size));
    EXPECT_INT(asked, size);
    EXPECT_INT(NRV_OK, NrvGetModified(from, &modified));
    EXPECT_INT(1, modified); // The drawing itself is not saved.
    EXPECT_INT(NRV_OK, NrvGetObjects(from, NRV_LIST_SELECTED, NULL, 0, &count));
    EXPECT_INT(3, count);
    const NrvId bad[2] = {ids[0], ids[2] + 1000};
    const NrvId nets[2] = {ids[0], net};
    EXPECT_INT(NRV_E_OBJECT, NrvSaveObjects(from, bad, 2, g_bytes, sizeof g_bytes, &asked));
    EXPECT_INT(NRV_E_KIND, NrvSaveObjects(from, nets, 2, g_bytes, sizeof g_bytes, &asked));

    EXPECT_INT(NRV_OK, NrvLoadBuffer(to, g_bytes, size, NULL));
    EXPECT_INT(2, Count(to));
    EXPECT_NEAR_TO(10, First(to, 0).x, 0); // In drawing order.
    EXPECT_NEAR_TO(30, First(to, 1).x, 0);
    EXPECT_INT(NRV_OK, NrvSetHistory(to, 1));
    EXPECT_INT(NRV_OK, NrvInsertBuffer(to, g_bytes, size, 100, -5, &count));
    EXPECT_INT(2, count);
    EXPECT_INT(4, Count(to));
    EXPECT_NEAR_TO(110, First(to, 2).x, 0);
    EXPECT_NEAR_TO(-5, First(to, 2).y, 0);
    EXPECT_NEAR_TO(130, First(to, 3).x, 0);
    EXPECT_INT(NRV_OK, NrvGetStepCount(to, 0, &count));
    EXPECT_INT(1, count); // All of them together.
    EXPECT_INT(NRV_OK, NrvUndo(to));
    EXPECT_INT(2, Count(to));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(from));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(to));
}

C_TEST(CapiClipboard, APartOfAStreamIsNotInserted) {
    NrvHandle drawing = NULL;
    NrvId ids[3] = {0};
    uint32_t size = 0;
    uint32_t count = 99;
    REQUIRE(NrvCreateDrawing(&drawing) == NRV_OK);
    Fill(drawing, ids);
    EXPECT_INT(NRV_OK, NrvSaveBuffer(drawing, g_bytes, sizeof g_bytes, &size));
    for (uint32_t cut = 1; cut < size; ++cut) {
        EXPECT_INT(NRV_E_REFUSED, NrvInsertBuffer(drawing, g_bytes, cut, 0, 0, &count));
    }
    EXPECT_INT(99, count);
    EXPECT_INT(3, Count(drawing));
    EXPECT_INT(NRV_E_ARGUMENT, NrvInsertBuffer(drawing, g_bytes, size, HUGE_VAL, 0, NULL));
    EXPECT_INT(NRV_OK, NrvInsertBuffer(drawing, g_bytes, size, 0, 0, NULL));
    EXPECT_INT(6, Count(drawing));
    EXPECT_INT(NRV_OK, NrvFreeDrawing(drawing));
}

C_TEST(CapiClipboard, InsertedObjectsAreToldAndHaveIds) {
    CHost host;
    NrvId ids[3] = {0};
    uint32_t size = 0;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    Fill(host.view, ids);
    EXPECT_INT(NRV_OK, NrvSaveBuffer(host.view, g_bytes, sizeof g_bytes, &size));
    EXPECT_INT(NRV_OK, NrvDoCommand(host.view, L"line"));
    CHostTakeLog();
    EXPECT_INT(NRV_OK, NrvInsertBuffer(host.view, g_bytes, size, 100, 0, NULL));
    EXPECT_TEXT(L"changing added 0; changed added 3; ", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvCancelCommand(host.view));
    EXPECT_TEXT(L"ended line cancelled; ", CHostTakeLog()); // They are not the command's.
    EXPECT_NEAR_TO(130, First(host.view, 5).x, 0);
    CHostClose(&host);
}

C_TEST(CapiClipboard, CopiedObjectsArePlacedByAClick) {
    CHost host;
    NrvId ids[3] = {0};
    int32_t can = -1;
    uint32_t count = 99;
    wchar_t word[16];
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    Fill(host.view, ids);
    EXPECT_INT(NRV_OK, NrvCopyObjects(host.view, &ids[1], 2));
    EXPECT_INT(NRV_OK, NrvCanPaste(&can));
    EXPECT_INT(1, can);
    CHostTakeLog();
    EXPECT_INT(NRV_OK, NrvPaste(host.view));
    EXPECT_TEXT(L"begun paste; changing command paste; ", CHostTakeLog());
    EXPECT_INT(NRV_OK, NrvGetRunningCommand(host.view, word, 16, &count));
    EXPECT_TEXT(L"paste", word);
    EXPECT(GetFocus() == host.view);
    CHostMove(&host, 200, 100);
    CHostClick(&host, 200, 100); // (200, 200) in the drawing.
    EXPECT_TEXT(L"changed added 2; ended paste done; selection 2; ", CHostTakeLog());
    EXPECT_INT(5, Count(host.view));
    EXPECT_NEAR_TO(200, First(host.view, 3).x, 1e-9);
    EXPECT_NEAR_TO(200, First(host.view, 3).y, 1e-9);
    EXPECT_NEAR_TO(210, First(host.view, 4).x, 1e-9);
    // Broken off it adds nothing.
    EXPECT_INT(NRV_OK, NrvPaste(host.view));
    CHostMove(&host, 100, 100);
    EXPECT_INT(NRV_OK, NrvCancelCommand(host.view));
    EXPECT(wcsstr(CHostTakeLog(), L"ended paste cancelled; ") != NULL);
    EXPECT_INT(5, Count(host.view));
    CHostClose(&host);
}

C_TEST(CapiClipboard, ACopiedPictureIsAMetafileAndAPng) {
    CHost host;
    NrvId ids[3] = {0};
    NrvPicture picture = {0};
    int32_t can = -1;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    Fill(host.view, ids);
    EXPECT_INT(NRV_OK, NrvCopyObjects(host.view, ids, 3));
    picture.size = sizeof picture;
    EXPECT_INT(NRV_OK, NrvGetDefaultPicture(&picture));
    picture.width = 120;
    picture.height = 90;
    EXPECT_INT(NRV_OK, NrvCopyPicture(host.view, &picture));
    EXPECT_INT(NRV_OK, NrvCanPaste(&can));
    EXPECT_INT(0, can);
    EXPECT_INT(NRV_E_STATE, NrvPaste(host.view));
    REQUIRE(OpenClipboard(host.parent));
    ENHMETAHEADER header = {0};
    EXPECT(GetEnhMetaFileHeader((HENHMETAFILE)GetClipboardData(CF_ENHMETAFILE), sizeof header, &header) != 0);
    const HANDLE png = GetClipboardData(RegisterClipboardFormatW(L"PNG"));
    const unsigned char* file = png != NULL ? GlobalLock(png) : NULL;
    if (EXPECT(file != NULL)) {
        EXPECT_INT(120, file[19]);
        EXPECT_INT(90, file[23]);
        GlobalUnlock(png);
    }
    // While another window has it open.
    EXPECT_INT(NRV_E_SYSTEM, NrvCopyObjects(host.view, ids, 3));
    EXPECT_INT(NRV_E_SYSTEM, NrvCopyPicture(host.view, NULL));
    CloseClipboard();
    picture.width = -1;
    EXPECT_INT(NRV_E_ARGUMENT, NrvCopyPicture(host.view, &picture));
    picture.size = 4;
    EXPECT_INT(NRV_E_RECORD, NrvCopyPicture(host.view, &picture));
    EXPECT_INT(NRV_E_ARGUMENT, NrvCopyObjects(host.view, NULL, 0));
    CHostClose(&host);
}

C_TEST(CapiClipboard, WhatIsNoStreamIsNotPasted) {
    CHost host;
    REQUIRE(CHostOpen(&host, NRV_VIEW_CLASS));
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 16);
    REQUIRE(OpenClipboard(host.parent) && EmptyClipboard());
    EXPECT(SetClipboardData(RegisterClipboardFormatW(L"NRVectorView Objects"), memory) != NULL);
    CloseClipboard();
    EXPECT_INT(NRV_E_REFUSED, NrvPaste(host.view));
    EXPECT_INT(0, Count(host.view));
    CHostClose(&host);
}
