// Points, vectors and matrices of the drawing plane, in drawing units with y upwards (or pixels, where stated).
// Layer 4: geometry.
#pragma once

#include "GdiplusValues.h"
#include "VectorViewApi.h"

class CGeMatrix2d;
class CGeVector2d;

// The full and the half turn, in radians, with the digits that stored drawings were made with: not the nearest doubles.
inline constexpr double kFullTurn = 6.283185307;
inline constexpr double kHalfTurn = 3.1415926535;

// Below this difference, strictly, two coordinates are the same.
inline constexpr double kSameCoordinate = 1e-15;

// A point, with the kind of snap that it was found by.
class NRVECTORVIEW_API CGePoint2d {
public:
    CGePoint2d() = default;
    // An ordinary point (`type` 1).
    CGePoint2d(double px, double py) : x(px), y(py) {}
    CGePoint2d(CPoint pixel) : x(pixel.x), y(pixel.y) {}
    CGePoint2d(Gdiplus::PointF point) : x(point.X), y(point.Y) {}
    // With the `type` of the other.
    CGePoint2d(const CGePoint2d&) = default;
    CGePoint2d& operator=(const CGePoint2d&) = default;

    // `type` stays.
    void SetPoint(double px, double py) {
        x = px;
        y = py;
    }
    // See `type`.
    int GetType() const { return type; }
    void SetType(int kind) { type = kind; }

    // The point moved by v, or back by it.
    CGePoint2d operator+(const CGeVector2d& v) const;
    CGePoint2d operator-(const CGeVector2d& v) const;
    // The vector from `from` to this point.
    CGeVector2d operator-(const CGePoint2d& from) const;
    // Nonzero when both differences are strictly below 1e-15; `type` plays no part.
    int operator==(const CGePoint2d& other) const;
    double distance(CGePoint2d other) const; // Never negative.
    // In place; `type` stays.
    CGePoint2d& transformBy(const CGeMatrix2d& m);

    double x = 0.0; // To the right.
    double y = 0.0; // Upwards, or downwards in pixels.
    // The snap kind of the point: 1 ordinary, 4 segment midpoint, 8 foot of a perpendicular. Copying keeps it, every
    // arithmetic result is an ordinary point again. It chooses the shape of the snap marker and nothing else.
    int type = 1;
};

// A direction with a length.
class NRVECTORVIEW_API CGeVector2d {
public:
    CGeVector2d() = default;
    // Its components.
    CGeVector2d(double vx, double vy) : x(vx), y(vy) {}
    // Both from a to b.
    CGeVector2d(const CGePoint2d& a, const CGePoint2d& b) : x(b.x - a.x), y(b.y - a.y) {}
    CGeVector2d(const CPoint& a, const CPoint& b);
    // Copies both components.
    CGeVector2d(const CGeVector2d&) = default;
    CGeVector2d& operator=(const CGeVector2d&) = default;
    virtual ~CGeVector2d() = default;

    // By components.
    CGeVector2d operator*(double factor) const { return CGeVector2d(x * factor, y * factor); }
    CGeVector2d operator+(const CGeVector2d& v) const { return CGeVector2d(x + v.x, y + v.y); }
    int operator==(const CGeVector2d& other) const; // Nonzero when both differences are strictly below 1e-15.
    // Flips both signs, also that of a zero.
    CGeVector2d negate() const { return CGeVector2d(-x, -y); }
    // A quarter turn anticlockwise.
    CGeVector2d perpVector() const { return CGeVector2d(-y, x); }
    // The unit vector; the zero vector gives not-a-number components, which callers handle.
    CGeVector2d normal() const;
    double length() const; // Never negative.
    // The scalar product; and the third component of the vector product, positive when v is on the left.
    double dotProduct(const CGeVector2d& v) const { return x * v.x + y * v.y; }
    double CrossProduct(const CGeVector2d& v) const { return x * v.y - y * v.x; }
    // A new vector, turned anticlockwise by `a` radians.
    CGeVector2d rotateBy(double a) const;
    // Direction in radians, 0 to 6.283185307; not-a-number for the zero vector.
    double angle() const;

    double x = 0.0; // To the right.
    double y = 0.0; // Upwards.
};

// Acts on columns (x, y, 1). The third row is multiplied like the others and never read for a point.
class NRVECTORVIEW_API CGeMatrix2d {
public:
    CGeMatrix2d() = default;
    // Copies all elements.
    CGeMatrix2d(const CGeMatrix2d&) = default;
    CGeMatrix2d& operator=(const CGeMatrix2d&) = default;
    virtual ~CGeMatrix2d() = default;

    // Applied to a point: first b, then this.
    CGeMatrix2d operator*(const CGeMatrix2d& b) const;

    // Moves by v.
    static CGeMatrix2d translation(const CGeVector2d& v);
    // Anticlockwise by `a` radians about c.
    static CGeMatrix2d rotation(double a, CGePoint2d c);
    static CGeMatrix2d scaling(double s, CGePoint2d c); // By the factor s in all directions; c stays.
    // Reflection in the line through p1 and p2; all not-a-number when they are one point.
    static CGeMatrix2d mirroring(const CGePoint2d& p1, const CGePoint2d& p2);

    // Rows of columns; the unit matrix at first.
    double m[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
};
