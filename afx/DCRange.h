// Figures that reach far beyond a device: what GDI would take seconds for, or not survive, is drawn by the part that a
// device can show. Known to device contexts and pens only.
// Layer 1: afx.
#pragma once

#include "afxapi.h"

#include <climits>

// Beyond 16 bits: no device shows it, and GDI's own limits, which differ from system to system, lie further out. The
// time that GDI takes for a wide or dotted line and for any ellipse grows with its length, seen or not.
inline bool AfxIsFar(int coordinate) {
    return coordinate < -0x8000 || coordinate > 0x7FFF;
}

// A pen's width within 16 bits. What fits no integer came here as the lowest one: that gives GDI's thinnest pen.
inline int AfxPenWidth(int width) {
    if (!AfxIsFar(width))
        return width;
    return width > 0 ? 0x7FFF : width == INT_MIN ? 0 : -0x7FFF;
}

// As ::LineTo, from the current position, with the same current position afterwards.
BOOL AfxLineToFar(HDC dc, int x, int y);
// As ::Arc and ::Ellipse, in chords that leave the curve by a quarter of a pixel at most.
BOOL AfxArcFar(HDC dc, int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
BOOL AfxEllipseFar(HDC dc, int x1, int y1, int x2, int y2);
