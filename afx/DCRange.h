// Strokes that reach far beyond a device, or are wider than one: what GDI would take seconds for, or not survive, is
// drawn by the part that a device can show. Known to device contexts and pens only.
// Layer 1: afx.
#pragma once

#include "DCSpace.h"

#include <climits>

// Wider pens, in device units, are filled row by row: a curve of such a pen takes GDI a second.
constexpr int kAfxWidestPen = 1000;

// A pen's width within 16 bits. A width that fits no int has been converted to INT_MIN, which gives GDI's thinnest pen.
inline int AfxPenWidth(int width) {
    if (!AfxIsFar(width)) {
        return width;
    }
    return width > 0 ? 0x7FFF : width == INT_MIN ? 0 : -0x7FFF;
}

// The last pen that was made and isn't wide, so that a pen that is selected right after it was made need not be
// measured. If other code has freed that handle and got it for another pen, its strokes are left to GDI, which can take
// seconds.
void AfxNoteNarrowPen(HGDIOBJ pen);
HGDIOBJ AfxLatestNarrowPen();

// Whether the selected pen is wider than the widest that GDI draws well.
bool AfxIsPenWide(HDC dc);

// As ::LineTo, ::Arc and ::Ellipse, with the same current position afterwards. A figure within the device's reach and
// anything in a path is left to GDI unchanged. Of other figures the part within reach is drawn, curves as chords that
// differ from them by a quarter of a device unit at most; in an old-style metafile the part that its 16 bits can hold.
BOOL AfxLineToFar(HDC dc, int x, int y);
BOOL AfxArcFar(HDC dc, int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
BOOL AfxEllipseFar(HDC dc, int x1, int y1, int x2, int y2);

// An old-style metafile can't be asked for its current position: each move on a context that isn't plain is noted here.
void AfxNoteMove(HDC dc, int x, int y);
