/* What the C samples share: the drawing of a rectangle with its width, its height and its area, through the C
 * interface, and the answers to the events of its view. Prints what happens, a line each. */
#ifndef FIGURE_H
#define FIGURE_H

#include <nrview.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <wchar.h>

static NrvId outline, width, height, area;

static void check(NrvResult result, const char* call) {
    if (result != NRV_OK) {
        wchar_t text[200] = L"";
        uint32_t length;
        NrvErrorText(result, text, 200, &length);
        printf("%s: %ls\n", call, text);
        exit(1);
    }
}
#define CHECK(call) check(call, #call)

static double value_of(NrvHandle handle, NrvId id) {
    wchar_t text[64];
    uint32_t length;
    CHECK(NrvGetString(handle, id, NRV_STRING_TEXT, text, 64, &length));
    return wcstod(text, NULL);
}

static void place(NrvHandle view, NrvId id, double x, double y) {
    NrvPoint point = {x, y};
    CHECK(NrvSetPoints(view, id, &point, 1));
}

/* Outline, places and area from width and height. */
static void follow(NrvHandle view) {
    const double w = value_of(view, width), h = value_of(view, height);
    const NrvPoint corners[4] = {{0, 0}, {w, 0}, {w, h}, {0, h}};
    wchar_t text[64];
    CHECK(NrvSetPoints(view, outline, corners, 4));
    place(view, width, w / 2, -10);
    place(view, height, w + 10, h / 2);
    place(view, area, w / 2, h / 2);
    swprintf(text, 64, L"%g", w * h);
    CHECK(NrvSetString(view, area, NRV_STRING_TEXT, text));
}

/* The drawing in a new view, with the edit box open over the width. */
static void begin(NrvHandle view) {
    const NrvPoint corners[4] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    CHECK(NrvAddPolyline(view, corners, NULL, 4, 1, NRV_RGB(255, 255, 255), &outline));
    CHECK(NrvAddParm(view, 0, 0, L"300", L"width", 20, NRV_RGB(255, 255, 0), &width));
    CHECK(NrvAddParm(view, 0, 0, L"200", L"height", 20, NRV_RGB(255, 255, 0), &height));
    CHECK(NrvAddParm(view, 0, 0, L"", L"area", 20, NRV_RGB(0, 200, 0), &area));
    CHECK(NrvSetInt(view, area, NRV_INT_PARM_BOX, 0)); /* a result: no edit box */
    follow(view);
    CHECK(NrvSetStrictRefusal(view, 1));
    CHECK(NrvZoomExtents(view));
}

/* Stores the drawing in a buffer and reads it into a drawing without a window. */
static void store_and_read(NrvHandle view) {
    uint32_t size = 0;
    void* bytes;
    NrvHandle copy;
    NrvId id;
    CHECK(NrvSaveBuffer(view, NULL, 0, &size));
    bytes = malloc(size);
    CHECK(NrvSaveBuffer(view, bytes, size, &size));
    CHECK(NrvCreateDrawing(&copy));
    CHECK(NrvLoadBuffer(copy, bytes, size, NULL));
    CHECK(NrvFindParm(copy, L"area", &id));
    printf("width %g, height %g, area %g; read back from %u bytes: area %g\n", value_of(view, width),
           value_of(view, height), value_of(view, area), (unsigned)size, value_of(copy, id));
    CHECK(NrvFreeDrawing(copy));
    free(bytes);
}

/* What the parent does with WM_NOTIFY. */
static void on_event(NrvEvent* event) {
    if (event->header.code == NRV_N_EDIT_ACCEPT) {
        wchar_t* end;
        if (!(wcstod(event->text, &end) > 0) || *end != 0) {
            printf("refused: %ls of %s\n", event->text, event->id == width ? "width" : "height");
            event->answer = 0;
        }
    } else if (event->header.code == NRV_N_EDIT_STORED && wcscmp(event->text, event->old_text) != 0) {
        follow(event->source);
        CHECK(NrvZoomExtents(event->source));
        store_and_read(event->source);
    }
}

#endif
