#include "Geometry2d.h"

#include "Truncate.h"

#include <cmath>

namespace {

CGeMatrix2d FromRows(double m00, double m01, double m02, double m10, double m11, double m12) {
    CGeMatrix2d result;
    result.m[0][0] = m00;
    result.m[0][1] = m01;
    result.m[0][2] = m02;
    result.m[1][0] = m10;
    result.m[1][1] = m11;
    result.m[1][2] = m12;
    return result;
}

} // namespace

// ---- CGePoint2d ----------------------------------------------------------------------------------------------------

CGePoint2d CGePoint2d::operator+(const CGeVector2d& v) const {
    return CGePoint2d(x + v.x, y + v.y);
}

CGePoint2d CGePoint2d::operator-(const CGeVector2d& v) const {
    return CGePoint2d(x - v.x, y - v.y);
}

CGeVector2d CGePoint2d::operator-(const CGePoint2d& from) const {
    return CGeVector2d(x - from.x, y - from.y);
}

int CGePoint2d::operator==(const CGePoint2d& other) const {
    return std::fabs(x - other.x) < kSameCoordinate && std::fabs(y - other.y) < kSameCoordinate;
}

double CGePoint2d::distance(CGePoint2d other) const {
    const double dx = std::fabs(x - other.x);
    const double dy = std::fabs(y - other.y);
    return std::sqrt(dx * dx + dy * dy);
}

CGePoint2d& CGePoint2d::transformBy(const CGeMatrix2d& matrix) {
    const double newX = matrix.m[0][0] * x + matrix.m[0][1] * y + matrix.m[0][2];
    const double newY = matrix.m[1][0] * x + matrix.m[1][1] * y + matrix.m[1][2];
    x = newX;
    y = newY;
    return *this;
}

// ---- CGeVector2d ---------------------------------------------------------------------------------------------------

CGeVector2d::CGeVector2d(const CPoint& a, const CPoint& b) : x(WrapSubtract(b.x, a.x)), y(WrapSubtract(b.y, a.y)) {}

int CGeVector2d::operator==(const CGeVector2d& other) const {
    return std::fabs(x - other.x) < kSameCoordinate && std::fabs(y - other.y) < kSameCoordinate;
}

CGeVector2d CGeVector2d::normal() const {
    const double size = length();
    return CGeVector2d(x / size, y / size);
}

double CGeVector2d::length() const {
    return std::sqrt(x * x + y * y);
}

CGeVector2d CGeVector2d::rotateBy(double a) const {
    const double c = std::cos(a);
    const double s = std::sin(a);
    return CGeVector2d(x * c - y * s, x * s + y * c);
}

double CGeVector2d::angle() const {
    const CGeVector2d xAxis(1.0, 0.0);
    const double a = std::acos(xAxis.dotProduct(normal()));
    // Which side of the axis is asked of the vector itself, not of its unit vector.
    return 0.0 > xAxis.CrossProduct(*this) ? kFullTurn - a : a;
}

// ---- CGeMatrix2d ---------------------------------------------------------------------------------------------------

CGeMatrix2d CGeMatrix2d::operator*(const CGeMatrix2d& b) const {
    CGeMatrix2d product;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            product.m[i][j] = m[i][0] * b.m[0][j] + m[i][1] * b.m[1][j] + m[i][2] * b.m[2][j];
        }
    }
    return product;
}

CGeMatrix2d CGeMatrix2d::translation(const CGeVector2d& v) {
    return FromRows(1.0, 0.0, v.x, 0.0, 1.0, v.y);
}

CGeMatrix2d CGeMatrix2d::rotation(double a, CGePoint2d c) {
    const double cosA = std::cos(a);
    const double sinA = std::sin(a);
    return FromRows(cosA, -sinA, -cosA * c.x + sinA * c.y + c.x, sinA, cosA, -sinA * c.x - cosA * c.y + c.y);
}

CGeMatrix2d CGeMatrix2d::scaling(double s, CGePoint2d c) {
    return FromRows(s, 0.0, -s * c.x + c.x, 0.0, s, -s * c.y + c.y);
}

CGeMatrix2d CGeMatrix2d::mirroring(const CGePoint2d& p1, const CGePoint2d& p2) {
    CGeVector2d v = p2 - p1;
    double a = 0.0;
    if (CGeVector2d(1.0, 0.0).CrossProduct(v) < 0.0) {
        v = v * -1.0;
        a = v.angle() + kHalfTurn;
    } else {
        a = v.angle();
    }
    const double c = std::cos(2.0 * a);
    const double s = std::sin(2.0 * a);
    return FromRows(c, s, c * -p1.x + s * -p1.y + p1.x, s, -c, s * -p1.x + -c * -p1.y + p1.y);
}
