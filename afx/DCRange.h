// Strokes that reach far beyond a device, or are wider than one: what GDI would take seconds for, or not survive, is
// drawn by the part that a device can show. Known to device contexts and pens only.
// Layer 1: afx.
#pragma once

#include "DCSpace.h"

#include <climits>

// Wider pens, in device units, are filled row by row: a curve of such a pen takes GDI a second.
constexpr int kAfxWidestPen = 1000;

// A pen's width within 16 bits. What fits no integer came here as the lowest one: that gives GDI's thinnest pen.
inline int AfxPenWidth(int width) {
    if (!AfxIsFar(width)) {
        return width;
    }
    return width > 0 ? 0x7FFF : width == INT_MIN ? 0 : -0x7FFF;
}

// The pen that was made last and isn't wide, so that the usual one, made and selected at once, need not be asked. A
// handle may have been freed and made anew by other code: its strokes are then left to GDI, which can take seconds.
void AfxNoteNarrowPen(HGDIOBJ pen);
HGDIOBJ AfxLatestNarrowPen();

// Whether the selected pen is wider than the widest that GDI draws well.
bool AfxIsPenWide(HDC dc);

// As ::LineTo, ::Arc and ::Ellipse, with the same current position afterwards. A figure within the device's reach and
// anything in a path is left to GDI, as it was given. What reaches further is drawn by its part within reach, curves in
// chords that leave them by a quarter of a device unit at most; in an old-style metafile by what its 16 bits can hold.
BOOL AfxLineToFar(HDC dc, int x, int y);
BOOL AfxArcFar(HDC dc, int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
BOOL AfxEllipseFar(HDC dc, int x1, int y1, int x2, int y2);

// An old-style metafile can't be asked for its current position: each move on a context that isn't plain is noted here.
void AfxNoteMove(HDC dc, int x, int y);
