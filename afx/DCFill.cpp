#include "DCFill.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFlat = 0.4; // device units between a curve's control points and its chord, too few to be seen
constexpr int kDeepest = 48;  // halvings of a curve; each quarters the distance to its chord

// A brush of one colour, selected until it is destroyed.
class SolidBrush {
public:
    SolidBrush(HDC dc, COLORREF color)
        : m_dc(dc), m_brush(::CreateSolidBrush(color)),
          m_old(m_brush != nullptr ? ::SelectObject(dc, m_brush) : nullptr) {}
    ~SolidBrush() {
        if (m_old != nullptr) {
            ::SelectObject(m_dc, m_old);
        }
        if (m_brush != nullptr) {
            ::DeleteObject(m_brush);
        }
    }
    SolidBrush(const SolidBrush&) = delete;
    SolidBrush& operator=(const SolidBrush&) = delete;
    bool IsReady() const { return m_old != nullptr; }

private:
    HDC m_dc;
    HBRUSH m_brush;
    HGDIOBJ m_old;
};

} // namespace

AfxFill::AfxFill(const RECT& clip) : m_clip(clip) {
    m_clip.right = std::max(m_clip.left, m_clip.right);
    m_clip.bottom = std::max(m_clip.top, m_clip.bottom);
    m_latest.assign(static_cast<size_t>(m_clip.bottom - m_clip.top), kNoSpan);
}

int AfxFill::RowFrom(double y) const {
    return static_cast<int>(
        std::clamp(std::ceil(y), static_cast<double>(m_clip.top), static_cast<double>(m_clip.bottom)));
}

void AfxFill::AddSpan(int y, double left, double right) {
    const auto column = [this](double x) {
        return static_cast<int>(
            std::clamp(std::ceil(x), static_cast<double>(m_clip.left), static_cast<double>(m_clip.right)));
    };
    const Span span = {column(left), column(right)};
    if (span.left >= span.right) {
        return;
    }
    Span& latest = m_latest[static_cast<size_t>(y - m_clip.top)];
    if (latest.left > span.left || latest.right < span.right) {
        latest = span;
        m_spans.push_back({y, span});
    }
}

// --- strokes -----------------------------------------------------------------------------------------------------

void AfxFill::AddStroke(const AfxPoint& a, const AfxPoint& b, double diameter) {
    const double r = diameter / 2;
    if (std::max(a.x, b.x) + r < m_clip.left || std::min(a.x, b.x) - r > m_clip.right) {
        return;
    }
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const double acrossX = length > 0 ? (a.y - b.y) / length * r : 0;
    const double acrossY = length > 0 ? (b.x - a.x) / length * r : 0;
    const AfxPoint corners[4] = {{a.x + acrossX, a.y + acrossY},
                                 {b.x + acrossX, b.y + acrossY},
                                 {b.x - acrossX, b.y - acrossY},
                                 {a.x - acrossX, a.y - acrossY}};
    const int last = RowFrom(std::max(a.y, b.y) + r);
    for (int y = RowFrom(std::min(a.y, b.y) - r); y < last; ++y) {
        // The stroke is convex: on each row it is one span, between the outermost points of its discs and its body.
        double left = HUGE_VAL;
        double right = -HUGE_VAL;
        const auto reach = [&](double x, double half) {
            left = std::min(left, x - half);
            right = std::max(right, x + half);
        };
        for (const AfxPoint& end : {a, b}) {
            const double h = y - end.y;
            if (h >= -r && h < r) {
                reach(end.x, std::sqrt(std::max(0.0, r * r - h * h)));
            }
        }
        for (int i = 0; i < 4; ++i) {
            const AfxPoint& from = corners[i];
            const AfxPoint& to = corners[(i + 1) % 4];
            if ((from.y <= y) != (to.y <= y)) {
                reach(from.x + (to.x - from.x) * ((y - from.y) / (to.y - from.y)), 0);
            }
        }
        AddSpan(y, left, right);
    }
}

// --- outlines ----------------------------------------------------------------------------------------------------

void AfxFill::AddLine(const AfxPoint& a, const AfxPoint& b) {
    const bool down = a.y < b.y;
    const AfxPoint& upper = down ? a : b;
    const AfxPoint& lower = down ? b : a;
    const int first = RowFrom(upper.y);
    const int last = RowFrom(lower.y);
    if (first >= last) {
        return;
    }
    const double slope = (lower.x - upper.x) / (lower.y - upper.y);
    for (int y = first; y < last; ++y) {
        m_crossings.push_back({y, upper.x + slope * (y - upper.y), down ? 1 : -1});
    }
}

void AfxFill::AddCurve(const AfxPoint& a, const AfxPoint& b, const AfxPoint& c, const AfxPoint& d) {
    AddCurve(a, b, c, d, 0);
}

void AfxFill::AddCurve(const AfxPoint& a, const AfxPoint& b, const AfxPoint& c, const AfxPoint& d, int depth) {
    // Outside the rectangle only the rows between the ends count, for which the chord gives the same result as the
    // curve.
    const auto beyond = [&](double AfxPoint::*axis, double low, double high) {
        return std::max({a.*axis, b.*axis, c.*axis, d.*axis}) < low ||
               std::min({a.*axis, b.*axis, c.*axis, d.*axis}) > high;
    };
    const double bend = std::max({std::fabs(a.x - 2 * b.x + c.x), std::fabs(a.y - 2 * b.y + c.y),
                                  std::fabs(b.x - 2 * c.x + d.x), std::fabs(b.y - 2 * c.y + d.y)});
    if (bend < kFlat || depth == kDeepest || beyond(&AfxPoint::x, m_clip.left, m_clip.right) ||
        beyond(&AfxPoint::y, m_clip.top, m_clip.bottom)) {
        AddLine(a, d);
        return;
    }
    const auto middle = [](const AfxPoint& p, const AfxPoint& q) { return AfxPoint{(p.x + q.x) / 2, (p.y + q.y) / 2}; };
    const AfxPoint ab = middle(a, b);
    const AfxPoint bc = middle(b, c);
    const AfxPoint cd = middle(c, d);
    const AfxPoint abc = middle(ab, bc);
    const AfxPoint bcd = middle(bc, cd);
    const AfxPoint m = middle(abc, bcd);
    AddCurve(a, ab, abc, m, depth + 1);
    AddCurve(m, bcd, cd, d, depth + 1);
}

void AfxFill::EndOutline() {
    std::sort(m_crossings.begin(), m_crossings.end(),
              [](const Crossing& p, const Crossing& q) { return p.y != q.y ? p.y < q.y : p.x < q.x; });
    // The outline is closed: after the last crossing of each row the number is 0 again.
    int winding = 0;
    double left = 0;
    for (const Crossing& crossing : m_crossings) {
        if (winding == 0) {
            left = crossing.x;
        }
        winding += crossing.way;
        if (winding == 0) {
            AddSpan(crossing.y, left, crossing.x);
        }
    }
    m_crossings.clear();
}

// --- painting ----------------------------------------------------------------------------------------------------

BOOL AfxFill::Paint(HDC dc, COLORREF color, DWORD operation) {
    const SolidBrush brush(dc, color);
    BOOL done = brush.IsReady();
    std::vector<Span> block; // the spans of the rows from blockTop on, all alike
    int blockTop = 0;
    const auto flush = [&](int bottom) {
        for (const Span& span : block) {
            done = ::PatBlt(dc, span.left, blockTop, span.right - span.left, bottom - blockTop, operation) && done;
        }
    };
    std::sort(m_spans.begin(), m_spans.end(),
              [](const RowSpan& p, const RowSpan& q) { return p.y != q.y ? p.y < q.y : p.span.left < q.span.left; });
    std::vector<Span> merged;
    auto next = m_spans.begin();
    for (int y = static_cast<int>(m_clip.top); y < m_clip.bottom; ++y) {
        merged.clear();
        for (; next != m_spans.end() && next->y == y; ++next) {
            if (!merged.empty() && next->span.left <= merged.back().right) {
                merged.back().right = std::max(merged.back().right, next->span.right);
            } else {
                merged.push_back(next->span);
            }
        }
        if (merged == block) {
            continue;
        }
        flush(y);
        block.swap(merged);
        blockTop = y;
    }
    flush(static_cast<int>(m_clip.bottom));
    m_spans.clear();
    std::fill(m_latest.begin(), m_latest.end(), kNoSpan);
    return done;
}

DWORD AfxBrushOperation(int rop2) {
    // In the order of the modes from R2_BLACK (1) to R2_WHITE (16). The upper words are the documented numbers of the
    // operations on brush and destination; the lower words are their codes for drivers.
    static const DWORD operations[] = {BLACKNESS, 0x000500A9, 0x000A0329, 0x000F0001, 0x00500325, DSTINVERT,
                                       PATINVERT, 0x005F00E9, 0x00A000C9, 0x00A50065, 0x00AA0029, 0x00AF0229,
                                       PATCOPY,   0x00F50225, 0x00FA0089, WHITENESS};
    return rop2 >= R2_BLACK && rop2 <= R2_WHITE ? operations[rop2 - 1] : PATCOPY;
}
