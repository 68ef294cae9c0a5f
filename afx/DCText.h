// Texts larger than the device draws well, drawn from the outlines of their characters. Known to device contexts only.
// Layer 1: afx.
#pragma once

#include "DCSpace.h"

// Taller or wider characters, in device units, are drawn from their outlines: GDI makes a bitmap of each, seen or not.
constexpr int kAfxTallestText = 1000;

// Whether the selected font may have characters of that size. Cheap: it asks for nothing but its description.
bool AfxIsFontLarge(HDC dc);

// Whether AfxTextOutFar is to draw a text in the selected font. In metafiles, in paths and in fonts without outlines
// GDI draws all texts, and on printers those up to 16 bits.
bool AfxIsTextFar(HDC dc, UINT options, LPCWSTR text, UINT count);

// As ::ExtTextOut. Each character is where GDI puts it, in the order of the text; only what is within the clip box is
// computed, and the edges are not smoothed.
BOOL AfxTextOutFar(HDC dc, int x, int y, UINT options, LPCRECT rect, LPCWSTR text, UINT count, const int* widths);
