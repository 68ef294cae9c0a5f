#include "DCRange.h"

#include "afx.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// What is drawn does not depend on the clip box: under inversion a second drawing must meet the first exactly.
constexpr double kLow = -0x8000;
constexpr double kHigh = 0x7FFF;
constexpr double kTwoPi = 6.283185307179586;

bool IsInside(double x, double y) {
    return x >= kLow && x <= kHigh && y >= kLow && y <= kHigh;
}

// --- lines

// Narrows [from, to], the part of a line that is left, to where start + t * way is at or above 0.
void Narrow(double start, double way, double& from, double& to) {
    if (way > 0)
        from = std::max(from, -start / way);
    else if (way < 0)
        to = std::min(to, -start / way);
    else if (start < 0)
        to = -1;
}

// --- ellipses

struct EllipseShape {
    // GDI leaves the right and the bottom edge of the box out.
    EllipseShape(int x1, int y1, int x2, int y2)
        : cx((static_cast<double>(x1) + x2 - 1) / 2), cy((static_cast<double>(y1) + y2 - 1) / 2),
          rx(std::max(0.0, (std::fabs(static_cast<double>(x2) - x1) - 1) / 2)),
          ry(std::max(0.0, (std::fabs(static_cast<double>(y2) - y1) - 1) / 2)) {}
    double X(double t) const { return cx + rx * std::cos(t); }
    double Y(double t) const { return cy - ry * std::sin(t); }
    // The parameter on the radial line through a point; anticlockwise as seen.
    double At(int x, int y) const {
        const double w = rx > 0 ? (x - cx) / rx : 0.0;
        const double h = ry > 0 ? (cy - y) / ry : 0.0;
        return std::atan2(h, w);
    }

    double cx, cy, rx, ry;
};

// The parameters in ]from, to[ at which the ellipse crosses an edge of the 16-bit square, and both ends, in order.
std::vector<double> Crossings(const EllipseShape& e, double from, double to) {
    std::vector<double> result = {from, to};
    const auto add = [&](double t) {
        t = from + std::fmod(std::fmod(t - from, kTwoPi) + kTwoPi, kTwoPi);
        if (t > from && t < to)
            result.push_back(t);
    };
    for (const double edge : {kLow, kHigh}) {
        const double c = e.rx > 0 ? (edge - e.cx) / e.rx : 2.0;
        if (c >= -1 && c <= 1) {
            add(std::acos(c));
            add(-std::acos(c));
        }
        const double s = e.ry > 0 ? (e.cy - edge) / e.ry : 2.0;
        if (s >= -1 && s <= 1) {
            add(std::asin(s));
            add(kTwoPi / 2 - std::asin(s));
        }
    }
    std::sort(result.begin(), result.end());
    return result;
}

BOOL Stroke(HDC dc, const EllipseShape& e, double from, double to) {
    // The height of an arc of angle a over its chord is r (1 - cos(a / 2)).
    const double step = std::sqrt(2.0 / std::max(1.0, std::max(e.rx, e.ry)));
    const std::vector<double> ends = Crossings(e, from, to);
    BOOL done = TRUE;
    std::vector<POINT> points;
    for (size_t i = 0; i + 1 < ends.size(); ++i) {
        const double a = ends[i];
        const double b = ends[i + 1];
        if (!IsInside(e.X((a + b) / 2), e.Y((a + b) / 2)))
            continue;
        const int chords = 1 + static_cast<int>(std::min(100000.0, (b - a) / step));
        points.clear();
        for (int k = 0; k <= chords; ++k) {
            const double t = a + (b - a) * k / chords;
            points.push_back(
                {std::lround(std::clamp(e.X(t), kLow, kHigh)), std::lround(std::clamp(e.Y(t), kLow, kHigh))});
        }
        done = ::Polyline(dc, points.data(), static_cast<int>(points.size())) && done;
    }
    return done;
}

// Row by row through the clip box, with the current brush.
void Fill(HDC dc, const EllipseShape& e) {
    RECT clip = {};
    LOGBRUSH brush = {};
    if (::GetObject(::GetCurrentObject(dc, OBJ_BRUSH), sizeof(brush), &brush) == 0 || brush.lbStyle == BS_NULL ||
        e.ry <= 0 || ::GetClipBox(dc, &clip) <= NULLREGION)
        return;
    const DWORD operation = ::GetROP2(dc) == R2_NOT ? DSTINVERT : PATCOPY;
    const double top = std::max({static_cast<double>(clip.top), e.cy - e.ry, kLow});
    const double bottom = std::min({static_cast<double>(clip.bottom), e.cy + e.ry + 1, kHigh});
    for (int y = static_cast<int>(top); y < bottom; ++y) {
        const double h = (y - e.cy) / e.ry;
        const double half = e.rx * std::sqrt(std::max(0.0, 1 - h * h));
        const double left = std::max(e.cx - half, static_cast<double>(clip.left));
        const double right = std::min(e.cx + half + 1, static_cast<double>(clip.right));
        if (right > left)
            ::PatBlt(dc, static_cast<int>(left), y, static_cast<int>(right) - static_cast<int>(left), 1, operation);
    }
}

} // namespace

BOOL AfxLineToFar(HDC dc, int x, int y) {
    POINT start = {};
    if (!::GetCurrentPositionEx(dc, &start))
        return FALSE;
    const double wayX = static_cast<double>(x) - start.x;
    const double wayY = static_cast<double>(y) - start.y;
    double from = 0;
    double to = 1;
    Narrow(start.x - kLow, wayX, from, to);
    Narrow(kHigh - start.x, -wayX, from, to);
    Narrow(start.y - kLow, wayY, from, to);
    Narrow(kHigh - start.y, -wayY, from, to);
    BOOL done = TRUE;
    if (from <= to) {
        const auto at = [](LONG origin, double way, double t) {
            return static_cast<int>(std::lround(std::clamp(static_cast<double>(origin) + way * t, kLow, kHigh)));
        };
        ::MoveToEx(dc, at(start.x, wayX, from), at(start.y, wayY, from), nullptr);
        done = ::LineTo(dc, at(start.x, wayX, to), at(start.y, wayY, to));
    }
    return ::MoveToEx(dc, x, y, nullptr) && done;
}

BOOL AfxArcFar(HDC dc, int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    const EllipseShape e(x1, y1, x2, y2);
    double from = e.At(x3, y3);
    double to = e.At(x4, y4);
    if (::GetArcDirection(dc) == AD_CLOCKWISE)
        std::swap(from, to);
    if (to <= from) // equal ends are the full ellipse
        to += kTwoPi;
    return Stroke(dc, e, from, to);
}

BOOL AfxEllipseFar(HDC dc, int x1, int y1, int x2, int y2) {
    const EllipseShape e(x1, y1, x2, y2);
    Fill(dc, e);
    return Stroke(dc, e, 0, kTwoPi);
}
