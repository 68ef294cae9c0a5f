// The true-scale drawing of a welded I-section, made with the adding operations of the view.
// Layer 13: demo.
#pragma once

#include <vectorview.h>

#include <vector>

#include "WeldedSection.h"

// Adds the section, its dimensions and its figures in millimetres, the centre of the section at the origin, and gives
// back the new objects. They belong to the view's document. Does not repaint.
std::vector<CDrawable*> DrawSection(CVectorView& view, const WeldedSection& section, const CString& name);

// An object of the drawing, which may have been freed meanwhile.
struct DrawnObject {
    CDrawable* object;
    CKxAliveToken alive;
};

// Takes those of `objects` that the drawing still holds out of it and frees them. No command may be running.
void RemoveObjects(CVectorView& view, const std::vector<DrawnObject>& objects);

// A length as a draughtsman writes it: at most two decimals, no zeros after them.
CString FormatLength(double value);

// A dimension from a to b, `offset` away from them on their left-hand side; `size` of its ticks in drawing units, half
// `gap` open in the middle, closed for 0.
CDrawable* AddDimension(CVectorView& view, CGePoint2d a, CGePoint2d b, double offset, double size, double gap,
                        const Gdiplus::Color& color);

// A text without the opaque background that the adding operations give it.
CDrawable* AddPlainText(CVectorView& view, CGePoint2d topLeft, const CString& text, const Gdiplus::Color& color,
                        double height);
