#include "DCRange.h"

#include "DCFill.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr AfxBox kSixteenBits = {-0x8000, -0x8000, 0x7FFF, 0x7FFF};
constexpr double kTwoPi = 6.283185307179586;

// Where a stroke is drawn: a context, its mapping, its reach, and the width of its pen where that is a wide one.
struct Target {
    explicit Target(HDC context) : dc(context), type(::GetObjectType(context)), map(context) {
        reach = AfxDeviceBox(dc, type);
        // A metafile keeps the pen; the device that plays it draws it as it can.
        const double width = type == OBJ_ENHMETADC ? 0 : AfxPenWidthOnDevice(dc, map);
        if (width > kAfxWidestPen) {
            wide = width;
            reach.Grow(wide);
        }
    }
    bool Shows(const AfxPoint& p) const { return wide == 0 && reach.Contains(p); }

    HDC dc;
    DWORD type;
    AfxDeviceMap map;
    AfxBox reach; // device units
    double wide = 0;
};

bool IsFinite(const AfxPoint& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

int Round(double value, double low, double high) {
    return static_cast<int>(std::lround(std::clamp(value, low, high)));
}

POINT PixelOf(const AfxPoint& p, const AfxBox& box) {
    return {Round(p.x, box.left, box.right), Round(p.y, box.top, box.bottom)};
}

using Curve = std::vector<AfxPoint>; // in device units

// Wide strokes along curves, each pixel once.
BOOL StrokeWide(const Target& target, const std::vector<Curve>& curves) {
    LOGPEN pen = {};
    ::GetObject(::GetCurrentObject(target.dc, OBJ_PEN), sizeof(pen), &pen);
    const AfxDeviceUnits units(target.dc, target.map, false);
    RECT clip = {};
    if (::GetClipBox(target.dc, &clip) <= NULLREGION) {
        return TRUE;
    }
    AfxFill fill(clip);
    for (const Curve& curve : curves) {
        for (size_t i = 0; i + 1 < curve.size(); ++i) {
            fill.AddStroke(curve[i], curve[i + 1], target.wide);
        }
    }
    return fill.Paint(target.dc, pen.lopnColor, AfxBrushOperation(::GetROP2(target.dc)));
}

// --- lines

// Narrows [from, to], the part of a line that is left, to where start + t * way is at or above 0.
void Narrow(double start, double way, double& from, double& to) {
    if (way > 0) {
        from = std::max(from, -start / way);
    } else if (way < 0) {
        to = std::min(to, -start / way);
    } else if (start < 0) {
        to = -1;
    }
}

// Cuts the line from a to b to the box; false when nothing is left.
bool Cut(AfxPoint& a, AfxPoint& b, const AfxBox& box) {
    const AfxPoint start = a;
    const double wayX = b.x - a.x;
    const double wayY = b.y - a.y;
    double from = 0;
    double to = 1;
    Narrow(start.x - box.left, wayX, from, to);
    Narrow(box.right - start.x, -wayX, from, to);
    Narrow(start.y - box.top, wayY, from, to);
    Narrow(box.bottom - start.y, -wayY, from, to);
    a = {start.x + wayX * from, start.y + wayY * from};
    b = {start.x + wayX * to, start.y + wayY * to};
    return from <= to;
}

BOOL Line(HDC dc, const AfxPoint& a, const AfxPoint& b, const AfxBox& box) {
    const POINT from = PixelOf(a, box);
    const POINT to = PixelOf(b, box);
    return ::MoveToEx(dc, static_cast<int>(from.x), static_cast<int>(from.y), nullptr) &&
           ::LineTo(dc, static_cast<int>(to.x), static_cast<int>(to.y));
}

// --- ellipses

// The point at parameter t is centre + cos t * a + sin t * b; anticlockwise as seen where the mapping mirrors nothing.
struct EllipseShape {
    // In logical units: GDI leaves the right and the bottom edge of the box out, but not in the advanced mode.
    EllipseShape(double x1, double y1, double x2, double y2, double edge)
        : centre{(x1 + x2 - edge) / 2, (y1 + y2 - edge) / 2}, a{std::max(0.0, (std::fabs(x2 - x1) - edge) / 2), 0},
          b{0, -std::max(0.0, (std::fabs(y2 - y1) - edge) / 2)} {}
    double X(double t) const { return centre.x + a.x * std::cos(t) + b.x * std::sin(t); }
    double Y(double t) const { return centre.y + a.y * std::cos(t) + b.y * std::sin(t); }
    // The parameter on the radial line through a point, of a shape that isn't turned.
    double At(double x, double y) const {
        const double w = a.x > 0 ? (x - centre.x) / a.x : 0.0;
        const double h = b.y < 0 ? (centre.y - y) / -b.y : 0.0;
        return std::atan2(h, w);
    }
    double Longest() const { return std::max(std::hypot(a.x, a.y), std::hypot(b.x, b.y)); }

    AfxPoint centre, a, b;
};

// Of an arc or an ellipse as it was given: its shape in device units, and its parameters.
struct ArcShape {
    ArcShape(const Target& target, int x1, int y1, int x2, int y2)
        : map(target.map), inDevice(!map.advanced), logical(Logical(x1, y1, x2, y2)), shape(logical) {
        if (!inDevice) {
            shape.centre = map.Of(logical.centre.x, logical.centre.y);
            shape.a = map.Way(logical.a.x, logical.a.y);
            shape.b = map.Way(logical.b.x, logical.b.y);
        }
    }
    // The corners in pixels, as GDI maps them; in the advanced mode GDI turns the whole figure instead.
    EllipseShape Logical(int x1, int y1, int x2, int y2) const {
        if (!inDevice) {
            return EllipseShape(x1, y1, x2, y2, 0);
        }
        const AfxPoint p = map.Of(x1, y1);
        const AfxPoint q = map.Of(x2, y2);
        return EllipseShape(std::floor(p.x + 0.5), std::floor(p.y + 0.5), std::floor(q.x + 0.5), std::floor(q.y + 0.5),
                            1);
    }
    double At(int x, int y) const {
        if (!inDevice) {
            return logical.At(x, y);
        }
        const AfxPoint p = map.Of(x, y);
        return logical.At(p.x, p.y);
    }

    const AfxDeviceMap& map;
    bool inDevice;
    EllipseShape logical;
    EllipseShape shape;
};

// The parameters in ]from, to[ at which the ellipse crosses an edge of the box, and both ends, in order.
std::vector<double> Crossings(const EllipseShape& e, double from, double to, const AfxBox& box) {
    std::vector<double> result = {from, to};
    const auto add = [&](double t) {
        t = from + std::fmod(std::fmod(t - from, kTwoPi) + kTwoPi, kTwoPi);
        if (t > from && t < to) {
            result.push_back(t);
        }
    };
    // a cos t + b sin t is c where t lies an arc cosine off the direction of (a, b).
    const auto meet = [&](double a, double b, double c) {
        const double r = std::hypot(a, b);
        if (r > 0 && std::fabs(c) <= r) {
            add(std::atan2(b, a) + std::acos(c / r));
            add(std::atan2(b, a) - std::acos(c / r));
        }
    };
    for (const double edge : {box.left, box.right}) {
        meet(e.a.x, e.b.x, edge - e.centre.x);
    }
    for (const double edge : {box.top, box.bottom}) {
        meet(e.a.y, e.b.y, edge - e.centre.y);
    }
    std::sort(result.begin(), result.end());
    return result;
}

// The parts of the ellipse within the box, in chords.
std::vector<Curve> Within(const AfxBox& box, const EllipseShape& e, double from, double to) {
    // The height of an arc of angle a over its chord is r (1 - cos(a / 2)).
    const double step = std::sqrt(2.0 / std::max(1.0, e.Longest()));
    const std::vector<double> ends = Crossings(e, from, to, box);
    std::vector<Curve> curves;
    for (size_t i = 0; i + 1 < ends.size(); ++i) {
        const double a = ends[i];
        const double b = ends[i + 1];
        if (!box.Contains({e.X((a + b) / 2), e.Y((a + b) / 2)})) {
            continue;
        }
        const int chords = 1 + static_cast<int>(std::min(100000.0, (b - a) / step));
        Curve curve;
        for (int k = 0; k <= chords; ++k) {
            const double t = a + (b - a) * k / chords;
            curve.push_back({e.X(t), e.Y(t)});
        }
        curves.push_back(std::move(curve));
    }
    return curves;
}

BOOL Polylines(HDC dc, const std::vector<Curve>& curves, const AfxBox& box) {
    BOOL done = TRUE;
    std::vector<POINT> points;
    for (const Curve& curve : curves) {
        points.clear();
        for (const AfxPoint& p : curve) {
            points.push_back(PixelOf(p, box));
        }
        done = ::Polyline(dc, points.data(), static_cast<int>(points.size())) && done;
    }
    return done;
}

BOOL Stroke(const Target& target, const EllipseShape& e, double from, double to) {
    const std::vector<Curve> curves = Within(target.reach, e, from, to);
    if (target.wide != 0) {
        return StrokeWide(target, curves);
    }
    std::optional<AfxDeviceUnits> units;
    if (!target.map.IsIdentity()) {
        units.emplace(target.dc, target.map, true);
    }
    return Polylines(target.dc, curves, target.reach);
}

// Row by row through the clip box, with the current brush.
void Fill(const Target& target, const EllipseShape& e) {
    LOGBRUSH brush = {};
    const double height = std::hypot(e.a.y, e.b.y);
    if (::GetObject(::GetCurrentObject(target.dc, OBJ_BRUSH), sizeof(brush), &brush) == 0 || brush.lbStyle == BS_NULL ||
        height <= 0) {
        return;
    }
    std::optional<AfxDeviceUnits> units;
    if (!target.map.IsIdentity()) {
        units.emplace(target.dc, target.map, false);
    }
    RECT clip = {};
    if (::GetClipBox(target.dc, &clip) <= NULLREGION) {
        return;
    }
    const DWORD operation = AfxBrushOperation(::GetROP2(target.dc));
    const AfxBox& box = target.reach;
    const double width = std::fabs(e.a.x * (e.b.y / height) - e.b.x * (e.a.y / height));
    const double lean = (e.a.x * e.a.y + e.b.x * e.b.y) / height;
    const double top = std::max({static_cast<double>(clip.top), e.centre.y - height, box.top});
    const double bottom = std::min({static_cast<double>(clip.bottom), e.centre.y + height + 1, box.bottom});
    if (top >= bottom) {
        return;
    }
    for (int y = static_cast<int>(top); y < bottom; ++y) {
        const double h = (y - e.centre.y) / height;
        const double middle = e.centre.x + lean * h;
        const double half = width * std::sqrt(std::max(0.0, 1 - h * h));
        const double left = std::max(middle - half, static_cast<double>(clip.left));
        const double right = std::min(middle + half + 1, static_cast<double>(clip.right));
        if (right > left) {
            ::PatBlt(target.dc, static_cast<int>(left), y, static_cast<int>(right) - static_cast<int>(left), 1,
                     operation);
        }
    }
}

// The part of an arc between two directions, against the clock unless the mode says otherwise.
void Sweep(HDC dc, bool advanced, double& from, double& to) {
    if (!advanced && ::GetArcDirection(dc) == AD_CLOCKWISE) {
        std::swap(from, to);
    }
    if (to <= from) {
        // equal ends are the full ellipse
        to += kTwoPi;
    }
}

// --- old-style metafiles

// Its records keep 16 bits of each coordinate and of the origin that they are counted from: coordinates that all differ
// by the same multiple of 65536 from signed 16-bit numbers are still drawn at the right place.
bool FitsRecord(std::initializer_list<int> coordinates) {
    const auto turn = [](int value) { return (static_cast<long long>(value) + 0x8000) >> 16; };
    const auto all = std::minmax_element(coordinates.begin(), coordinates.end());
    return turn(*all.first) == turn(*all.second) && turn(*all.first) >= -1 && turn(*all.first) <= 1;
}

// The current position of the metafile that was drawn on last in this thread.
struct RecordedMove {
    HDC dc;
    int x, y;
};
thread_local RecordedMove t_move;

BOOL RecordLine(HDC dc, int x, int y) {
    const RecordedMove start = t_move;
    AfxNoteMove(dc, x, y);
    if (start.dc != dc || (FitsRecord({start.x, x}) && FitsRecord({start.y, y}))) {
        return ::LineTo(dc, x, y);
    }
    AfxPoint a = {static_cast<double>(start.x), static_cast<double>(start.y)};
    AfxPoint b = {static_cast<double>(x), static_cast<double>(y)};
    const BOOL done = !Cut(a, b, kSixteenBits) || Line(dc, a, b, kSixteenBits);
    return ::MoveToEx(dc, x, y, nullptr) && done;
}

// GDI draws nothing of such an arc or ellipse, whatever the pen.
bool IsFlat(int x1, int y1, int x2, int y2) {
    return x1 == x2 || y1 == y2;
}

std::atomic<HGDIOBJ> s_narrowPen;

} // namespace

void AfxNoteMove(HDC dc, int x, int y) {
    t_move = {dc, x, y};
}

void AfxNoteNarrowPen(HGDIOBJ pen) {
    s_narrowPen.store(pen, std::memory_order_relaxed);
}

HGDIOBJ AfxLatestNarrowPen() {
    return s_narrowPen.load(std::memory_order_relaxed);
}

bool AfxIsPenWide(HDC dc) {
    return AfxPenWidthOnDevice(dc, AfxDeviceMap(dc)) > kAfxWidestPen;
}

BOOL AfxLineToFar(HDC dc, int x, int y) {
    if (::GetObjectType(dc) == OBJ_METADC) {
        return RecordLine(dc, x, y);
    }
    POINT from = {};
    if (!::GetCurrentPositionEx(dc, &from)) {
        return FALSE;
    }
    const Target target(dc);
    AfxPoint a = target.map.Of(from.x, from.y);
    AfxPoint b = target.map.Of(x, y);
    if ((target.Shows(a) && target.Shows(b)) || !IsFinite(a) || !IsFinite(b) || AfxIsInPath(dc)) {
        return ::LineTo(dc, x, y);
    }
    BOOL done = TRUE;
    if (target.wide != 0) {
        done = StrokeWide(target, {{a, b}});
    } else if (Cut(a, b, target.reach)) {
        std::optional<AfxDeviceUnits> units;
        if (!target.map.IsIdentity()) {
            units.emplace(dc, target.map, true);
        }
        done = Line(dc, a, b, target.reach);
    }
    return ::MoveToEx(dc, x, y, nullptr) && done;
}

BOOL AfxArcFar(HDC dc, int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    if (::GetObjectType(dc) == OBJ_METADC) {
        if (FitsRecord({x1, x2, x3, x4}) && FitsRecord({y1, y2, y3, y4})) {
            return ::Arc(dc, x1, y1, x2, y2, x3, y3, x4, y4);
        }
        const EllipseShape e(x1, y1, x2, y2, 1);
        double from = e.At(x3, y3);
        double to = e.At(x4, y4);
        Sweep(dc, false, from, to);
        return Polylines(dc, Within(kSixteenBits, e, from, to), kSixteenBits);
    }
    const Target target(dc);
    const AfxPoint corners[] = {target.map.Of(x1, y1), target.map.Of(x2, y1), target.map.Of(x1, y2),
                                target.map.Of(x2, y2)};
    const auto shows = [&](const AfxPoint& p) { return target.Shows(p); };
    if (IsFlat(x1, y1, x2, y2) || std::all_of(std::begin(corners), std::end(corners), shows) ||
        !std::all_of(std::begin(corners), std::end(corners), IsFinite) || AfxIsInPath(dc)) {
        return ::Arc(dc, x1, y1, x2, y2, x3, y3, x4, y4);
    }
    const ArcShape arc(target, x1, y1, x2, y2);
    double from = arc.At(x3, y3);
    double to = arc.At(x4, y4);
    Sweep(dc, target.map.advanced, from, to);
    return Stroke(target, arc.shape, from, to);
}

BOOL AfxEllipseFar(HDC dc, int x1, int y1, int x2, int y2) {
    if (::GetObjectType(dc) == OBJ_METADC) {
        if (FitsRecord({x1, x2}) && FitsRecord({y1, y2})) {
            return ::Ellipse(dc, x1, y1, x2, y2);
        }
        return Polylines(dc, Within(kSixteenBits, EllipseShape(x1, y1, x2, y2, 1), 0, kTwoPi), kSixteenBits);
    }
    const Target target(dc);
    const AfxPoint corners[] = {target.map.Of(x1, y1), target.map.Of(x2, y1), target.map.Of(x1, y2),
                                target.map.Of(x2, y2)};
    const auto shows = [&](const AfxPoint& p) { return target.Shows(p); };
    if (IsFlat(x1, y1, x2, y2) || std::all_of(std::begin(corners), std::end(corners), shows) ||
        !std::all_of(std::begin(corners), std::end(corners), IsFinite) || AfxIsInPath(dc)) {
        return ::Ellipse(dc, x1, y1, x2, y2);
    }
    const ArcShape ellipse(target, x1, y1, x2, y2);
    Fill(target, ellipse.shape);
    return Stroke(target, ellipse.shape, 0, kTwoPi);
}
