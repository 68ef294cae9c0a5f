// Figures of any size, filled row by row within the clip box: strokes of giant pens and outlines of giant texts.
// Known to device contexts only.
// Layer 1: afx.
#pragma once

#include "DCSpace.h"

#include <climits>
#include <vector>

// A set of pixels within a rectangle, in device units. A pixel belongs to a figure when its own point (x, y), whole
// numbers, lies inside, the left and upper edge included. No figure costs more than the rows and columns of the
// rectangle, whatever its size. All coordinates must be finite.
class AfxFill {
public:
    explicit AfxFill(const RECT& clip);

    // Adds what a round pen of that diameter covers on its straight way from a to b.
    void AddStroke(const AfxPoint& a, const AfxPoint& b, double diameter);
    // The sides of an outline, in order. EndOutline fills what has a winding number other than 0; each contour in it
    // has to be closed.
    void AddLine(const AfxPoint& a, const AfxPoint& b);
    void AddCurve(const AfxPoint& a, const AfxPoint& b, const AfxPoint& c, const AfxPoint& d); // a cubic one
    void EndOutline();

    // Paints the set in one colour on a context in device units, each pixel once. Leaves the set empty.
    BOOL Paint(HDC dc, COLORREF color, DWORD operation);

private:
    struct Span {
        bool operator==(const Span& other) const { return left == other.left && right == other.right; }
        int left, right;
    };
    struct RowSpan {
        int y;
        Span span;
    };
    struct Crossing {
        int y;
        double x;
        int way; // 1 downwards, -1 upwards
    };
    static constexpr Span kNoSpan = {INT_MAX, INT_MIN};
    void AddSpan(int y, double left, double right);
    // The first row at or below y, within the rectangle's rows and one beyond.
    int RowFrom(double y) const;
    void AddCurve(const AfxPoint& a, const AfxPoint& b, const AfxPoint& c, const AfxPoint& d, int depth);

    RECT m_clip;
    std::vector<Span> m_latest; // of each row, so that a stroke's chords don't add the same pixels again and again
    std::vector<RowSpan> m_spans;
    std::vector<Crossing> m_crossings;
};

// The raster operation that does with a brush what the context's mode does with a pen.
DWORD AfxBrushOperation(int rop2);
