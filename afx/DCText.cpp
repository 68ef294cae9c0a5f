#include "DCText.h"

#include "DCFill.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <vector>

namespace {

constexpr double kDegreesToRadians = 3.14159265358979323846 / 180;
constexpr double kLargestFont = 65535;  // in device units for an em; GDI draws a larger one in the smallest size
constexpr double kWidestFont = 65535;   // an average width beyond which GDI's own sums overflow
constexpr double kLargestFitted = 8000; // for an em; outlines have 16 bits, and no pixel of more is seen to be fitted
constexpr double kFurthest = 1e15;      // device units; beyond, no row of a device is exact

double Round(double value) {
    return std::floor(value + 0.5);
}

bool SelectedFont(HDC dc, LOGFONTW& font) {
    return ::GetObjectW(::GetCurrentObject(dc, OBJ_FONT), sizeof(font), &font) != 0;
}

double AverageWidth(HDC dc) {
    TEXTMETRICW metrics = {};
    return ::GetTextMetricsW(dc, &metrics) ? std::fabs(static_cast<double>(metrics.tmAveCharWidth)) : 0.0;
}

// Whether the selected face lacks a character of the text. GDI takes it from another face, and gives it the width that
// was asked for also where the selected face is too narrow for that width and keeps its own.
bool HasLinked(HDC dc, UINT options, LPCWSTR text, UINT count) {
    if (text == nullptr || (options & ETO_GLYPH_INDEX) != 0) {
        return false;
    }
    std::vector<WORD> glyphs(count);
    return ::GetGlyphIndicesW(dc, text, static_cast<int>(count), glyphs.data(), GGI_MARK_NONEXISTING_GLYPHS) !=
               GDI_ERROR &&
           std::find(glyphs.begin(), glyphs.end(), WORD(0xFFFF)) != glyphs.end();
}

// The font upright in a context of its own, where a logical unit is a unit of the font: at first one of its design.
class DesignFont {
public:
    DesignFont(HDC dc, const LOGFONTW& font) : m_dc(::CreateCompatibleDC(dc)), m_logical(font) {
        if (m_dc != nullptr && Read(dc)) {
            m_ready = Make(static_cast<int>(Metrics().otmEMSquare));
        }
    }
    ~DesignFont() {
        Free();
        if (m_dc != nullptr) {
            ::DeleteDC(m_dc);
        }
    }
    DesignFont(const DesignFont&) = delete;
    DesignFont& operator=(const DesignFont&) = delete;

    // With an em of that many units, which are the device's pixels: the outlines are then fitted to them as the device
    // fits its own characters.
    void Fit(int em) { m_ready = m_isFitted = Make(em); }
    bool IsReady() const { return m_ready; }
    bool IsFitted() const { return m_isFitted; }
    int Em() const { return m_em; }
    HDC Context() const { return m_dc; }
    const OUTLINETEXTMETRICW& Metrics() const { return *reinterpret_cast<const OUTLINETEXTMETRICW*>(m_metrics.data()); }
    const TEXTMETRICW& Sizes() const { return Metrics().otmTextMetrics; }

private:
    bool Make(int em) {
        Free();
        m_em = em;
        m_logical.lfHeight = -em;
        m_logical.lfWidth = m_logical.lfEscapement = m_logical.lfOrientation = 0;
        m_font = em > 0 ? ::CreateFontIndirectW(&m_logical) : nullptr;
        m_old = m_font != nullptr ? ::SelectObject(m_dc, m_font) : nullptr;
        return m_old != nullptr && Read(m_dc);
    }
    void Free() {
        if (m_old != nullptr) {
            ::SelectObject(m_dc, m_old);
        }
        if (m_font != nullptr) {
            ::DeleteObject(m_font);
        }
        m_old = nullptr;
        m_font = nullptr;
    }
    // With the names that follow the record.
    bool Read(HDC dc) {
        const UINT size = ::GetOutlineTextMetricsW(dc, 0, nullptr);
        m_metrics.assign(std::max<size_t>(size, sizeof(OUTLINETEXTMETRICW)), 0);
        return size != 0 &&
               ::GetOutlineTextMetricsW(dc, size, reinterpret_cast<OUTLINETEXTMETRICW*>(m_metrics.data())) != 0;
    }

    HDC m_dc;
    LOGFONTW m_logical;
    int m_em = 0;
    HFONT m_font = nullptr;
    HGDIOBJ m_old = nullptr;
    std::vector<BYTE> m_metrics;
    bool m_ready = false;
    bool m_isFitted = false;
};

// Where each character of a text is drawn, in device units.
class Layout {
public:
    Layout(HDC dc, const AfxDeviceMap& map, const LOGFONTW& font, DesignFont& design)
        : m_dc(dc), m_map(map), m_design(design) {
        const double turn = static_cast<double>(font.lfEscapement % 3600) / 10 * kDegreesToRadians;
        // In the compatible mode a text is upright on the device and turned there, and its sizes are whole pixels; in
        // the advanced mode it goes through the mapping like anything else.
        m_along = {std::cos(turn), -std::sin(turn)};
        m_down = {std::sin(turn), std::cos(turn)};
        double unitX = map.ScaleX();
        double unitY = map.ScaleY();
        if (map.advanced) {
            m_along = map.Way(m_along.x, m_along.y);
            m_down = map.Way(m_down.x, m_down.y);
            unitX = unitY = 1;
        }
        m_unitX = unitX;
        m_unitY = unitY;
        SetSizes(font);
    }

    // Positions of the characters from the first one's, in the direction of the line; one more for the end.
    void Place(LPCWSTR text, UINT count, UINT options, const int* widths) {
        m_starts.assign(1, 0.0);
        m_sinks.assign(1, 0.0);
        std::vector<int> ends(count);
        SIZE whole = {};
        if (widths == nullptr) {
            const HDC measured = m_isMeasured ? m_dc : m_design.Context();
            if ((options & ETO_GLYPH_INDEX) != 0) {
                ::GetTextExtentExPointI(measured, reinterpret_cast<LPWORD>(const_cast<LPWSTR>(text)),
                                        static_cast<int>(count), 0, nullptr, ends.data(), &whole);
            } else {
                ::GetTextExtentExPointW(measured, text, static_cast<int>(count), 0, nullptr, ends.data(), &whole);
            }
        }
        const double extra = ::GetTextCharacterExtra(m_dc) * m_unitX;
        double at = 0;
        double sink = 0;
        for (UINT i = 0; i < count; ++i) {
            if (widths != nullptr && (options & ETO_PDY) != 0) {
                at += widths[2 * i] * m_unitX;
                sink -= widths[2 * i + 1] * m_unitY;
            } else if (widths != nullptr) {
                at += widths[i] * m_unitX;
            } else if (m_isMeasured) {
                at = ends[i];
            } else {
                at += Whole((ends[i] - (i > 0 ? ends[i - 1] : 0)) * m_wide) + extra;
            }
            m_starts.push_back(at);
            m_sinks.push_back(sink);
        }
    }

    // The start of the base line, from the point that the text was given.
    void Align(const AfxPoint& reference, UINT align) {
        AfxPoint back = {};
        const AfxPoint whole = Cut({m_along.x * Width(), m_along.y * Width()});
        if ((align & TA_CENTER) == TA_CENTER) {
            back = Cut({whole.x / 2, whole.y / 2});
        } else if ((align & TA_RIGHT) == TA_RIGHT) {
            back = whole;
        }
        double down = Ascent();
        if ((align & TA_BASELINE) == TA_BASELINE) {
            down = 0;
        } else if ((align & TA_BOTTOM) == TA_BOTTOM) {
            down = -Descent();
        }
        m_base = {Whole(reference.x) - back.x, Whole(reference.y) - back.y};
        m_base = Cut(Off(0, down));
    }

    double Width() const { return m_starts.back(); }
    double Ascent() const { return Whole(m_design.Sizes().tmAscent * m_tall); }
    double Descent() const { return Whole(m_design.Sizes().tmDescent * m_tall); }
    AfxPoint Origin(UINT i) const {
        const AfxPoint p = Off(m_starts[i], m_sinks[i]);
        const AfxPoint way = Cut({p.x - m_base.x, p.y - m_base.y});
        return {m_base.x + way.x, m_base.y + way.y};
    }
    // The point `along` the line and `down` from its base, in the units of widths and heights.
    AfxPoint Off(double along, double down) const {
        return {m_base.x + m_along.x * along + m_down.x * down, m_base.y + m_along.y * along + m_down.y * down};
    }
    // Of a character at `origin`, the point (x, y) of its design, y up.
    AfxPoint Of(const AfxPoint& origin, double x, double y) const {
        const double along = x * m_wide;
        const double down = -y * m_tall;
        // Pixels lie around their points, so the outline moves by half of one.
        return {origin.x + m_along.x * along + m_down.x * down - 0.5,
                origin.y + m_along.y * along + m_down.y * down - 0.5};
    }
    double DesignDown(double y) const { return -y * m_tall; }

private:
    void SetSizes(const LOGFONTW& font) {
        const double line = std::max<LONG>(1, m_design.Sizes().tmAscent + m_design.Sizes().tmDescent);
        TEXTMETRICW own = {};
        ::GetTextMetricsW(m_dc, &own);
        // A height of the line counts as it is asked for, one of the characters (negative) as that of the em.
        double height = std::fabs(static_cast<double>(font.lfHeight)) * m_unitY;
        if (font.lfHeight >= 0) {
            const double asked = Whole(font.lfHeight > 0 ? height : own.tmHeight * m_unitY);
            const double em = m_design.Em();
            height = Whole(asked * em / line);
            // An em whose line comes out higher than asked is too large.
            height -= Whole(height * line / em) > asked ? 1 : 0;
        }
        height = std::max(1.0, Whole(height));
        if (!m_map.advanced && height <= kLargestFitted) {
            m_design.Fit(static_cast<int>(height));
        }
        m_tall = m_wide = height / m_design.Em();
        const double asked = std::fabs(static_cast<double>(font.lfWidth));
        const bool isReal = height <= kLargestFont;
        // GDI doesn't take every width, and says so by the width of the font that it made.
        const bool isTaken = !isReal || std::fabs(static_cast<double>(own.tmAveCharWidth)) == asked;
        if (font.lfWidth != 0 && isTaken) {
            m_wide *= asked * m_unitX / std::max(1.0, Whole(m_design.Sizes().tmAveCharWidth * m_tall));
        }
        m_isMeasured =
            isReal && (font.lfWidth == 0 || isTaken) && asked <= kWidestFont && m_unitX == 1 && !m_map.advanced;
    }
    double Whole(double value) const { return m_map.advanced ? value : Round(value); }
    // Positions relative to the reference point lose their fractions.
    AfxPoint Cut(const AfxPoint& p) const { return m_map.advanced ? p : AfxPoint{std::trunc(p.x), std::trunc(p.y)}; }

    HDC m_dc;
    const AfxDeviceMap& m_map;
    DesignFont& m_design;
    AfxPoint m_along = {}; // device units of one unit along the line
    AfxPoint m_down = {};  // and of one down from it
    double m_unitX = 1;    // such units in a logical unit
    double m_unitY = 1;
    double m_wide = 0; // such units in a unit of the design
    double m_tall = 0;
    bool m_isMeasured = false; // GDI's own positions are used
    AfxPoint m_base = {};
    std::vector<double> m_starts;
    std::vector<double> m_sinks;
};

bool IsNear(const AfxPoint& p) {
    return std::fabs(p.x) < kFurthest && std::fabs(p.y) < kFurthest;
}

// Whether the parallelogram between four points may meet the rectangle.
bool Meets(const AfxPoint (&corners)[4], const RECT& clip) {
    const auto outside = [&](double AfxPoint::*axis, double low, double high) {
        return std::all_of(std::begin(corners), std::end(corners), [&](const AfxPoint& p) { return p.*axis < low; }) ||
               std::all_of(std::begin(corners), std::end(corners), [&](const AfxPoint& p) { return p.*axis > high; });
    };
    return !outside(&AfxPoint::x, clip.left - 1.0, clip.right + 1.0) &&
           !outside(&AfxPoint::y, clip.top - 1.0, clip.bottom + 1.0);
}

void AddQuad(AfxFill& fill, const AfxPoint (&corners)[4]) {
    if (!std::all_of(std::begin(corners), std::end(corners), IsNear)) {
        return;
    }
    for (int i = 0; i < 4; ++i) {
        fill.AddLine(corners[i], corners[(i + 1) % 4]);
    }
    fill.EndOutline();
}

// A bar along the whole line, from one depth below the base to another.
void AddBar(AfxFill& fill, const Layout& layout, double from, double to) {
    AfxPoint corners[4] = {layout.Off(0, from), layout.Off(layout.Width(), from), layout.Off(layout.Width(), to),
                           layout.Off(0, to)};
    for (AfxPoint& corner : corners) {
        corner.x -= 0.5, corner.y -= 0.5;
    }
    AddQuad(fill, corners);
}

double ValueOf(const FIXED& value) {
    return value.value + value.fract / 65536.0;
}

// The contours of one character. Each is a chain of lines and curves in the documented form of GetGlyphOutline.
void AddContours(AfxFill& fill, const std::vector<BYTE>& data, size_t size, const Layout& layout,
                 const AfxPoint& origin) {
    const auto at = [&](const POINTFX& p) { return layout.Of(origin, ValueOf(p.x), ValueOf(p.y)); };
    const auto between = [](const AfxPoint& p, const AfxPoint& q, double t) {
        return AfxPoint{p.x + (q.x - p.x) * t, p.y + (q.y - p.y) * t};
    };
    for (size_t begin = 0; begin + sizeof(TTPOLYGONHEADER) <= size;) {
        const auto& header = *reinterpret_cast<const TTPOLYGONHEADER*>(data.data() + begin);
        const size_t end = std::min(size, begin + std::max<size_t>(header.cb, sizeof(header)));
        const AfxPoint start = at(header.pfxStart);
        AfxPoint pen = start;
        for (size_t next = begin + sizeof(header); next + offsetof(TTPOLYCURVE, apfx) <= end;) {
            const auto& curve = *reinterpret_cast<const TTPOLYCURVE*>(data.data() + next);
            const size_t points = curve.cpfx;
            next += offsetof(TTPOLYCURVE, apfx) + points * sizeof(POINTFX);
            if (next > end) {
                break;
            }
            if (curve.wType == TT_PRIM_QSPLINE) {
                for (size_t i = 0; i + 1 < points; ++i) {
                    const AfxPoint control = at(curve.apfx[i]);
                    const AfxPoint last = at(curve.apfx[i + 1]);
                    // Between two controls the curve passes midway; the last point is on it.
                    const AfxPoint to = i + 2 == points ? last : between(control, last, 0.5);
                    fill.AddCurve(pen, between(pen, control, 2.0 / 3), between(to, control, 2.0 / 3), to);
                    pen = to;
                }
            } else if (curve.wType == TT_PRIM_CSPLINE) {
                for (size_t i = 0; i + 2 < points; i += 3) {
                    const AfxPoint to = at(curve.apfx[i + 2]);
                    fill.AddCurve(pen, at(curve.apfx[i]), at(curve.apfx[i + 1]), to);
                    pen = to;
                }
            } else {
                for (size_t i = 0; i < points; ++i) {
                    const AfxPoint to = at(curve.apfx[i]);
                    fill.AddLine(pen, to);
                    pen = to;
                }
            }
        }
        fill.AddLine(pen, start);
        begin = end;
    }
    fill.EndOutline();
}

void AddCharacters(AfxFill& fill, const RECT& clip, const DesignFont& design, const Layout& layout, LPCWSTR text,
                   UINT count, UINT options) {
    const UINT format = GGO_NATIVE | (design.IsFitted() ? 0u : GGO_UNHINTED) |
                        ((options & ETO_GLYPH_INDEX) != 0 ? GGO_GLYPH_INDEX : 0u);
    const MAT2 same = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    const double em = design.Em();
    std::vector<BYTE> data;
    for (UINT i = 0; i < count; ++i) {
        const AfxPoint origin = layout.Origin(i);
        // No character reaches further from its origin than this, in ems.
        const AfxPoint corners[4] = {layout.Of(origin, -em, -em), layout.Of(origin, 3 * em, -em),
                                     layout.Of(origin, 3 * em, 2 * em), layout.Of(origin, -em, 2 * em)};
        if (!std::all_of(std::begin(corners), std::end(corners), IsNear) || !Meets(corners, clip)) {
            continue;
        }
        GLYPHMETRICS metrics = {};
        const DWORD size = ::GetGlyphOutlineW(design.Context(), text[i], format, &metrics, 0, nullptr, &same);
        if (size == GDI_ERROR || size == 0) {
            continue;
        }
        data.resize(size);
        if (::GetGlyphOutlineW(design.Context(), text[i], format, &metrics, size, data.data(), &same) != GDI_ERROR) {
            AddContours(fill, data, size, layout, origin);
        }
    }
}

} // namespace

bool AfxIsFontLarge(HDC dc) {
    LOGFONTW font = {};
    const auto isUsual = [](LONG size) { return size >= -kAfxTallestText && size <= kAfxTallestText; };
    return SelectedFont(dc, font) && !(isUsual(font.lfHeight) && isUsual(font.lfWidth) && AfxIsPlainMapping(dc));
}

bool AfxIsTextFar(HDC dc, UINT options, LPCWSTR text, UINT count) {
    LOGFONTW font = {};
    if (!AfxIsFontLarge(dc) || !SelectedFont(dc, font)) {
        return false;
    }
    const DWORD type = ::GetObjectType(dc);
    if (type == OBJ_METADC || type == OBJ_ENHMETADC) {
        return false;
    }
    const AfxDeviceMap map(dc);
    const auto isLarger = [&](double limit) {
        return std::fabs(static_cast<double>(font.lfHeight)) * map.ScaleY() > limit ||
               (std::fabs(static_cast<double>(font.lfWidth)) * map.ScaleX() > limit &&
                (AverageWidth(dc) * map.ScaleX() > limit || HasLinked(dc, options, text, count)));
    };
    return isLarger(kAfxTallestText) && (::GetDeviceCaps(dc, TECHNOLOGY) != DT_RASPRINTER || isLarger(0x7FFF)) &&
           ::GetOutlineTextMetricsW(dc, 0, nullptr) != 0 && !AfxIsInPath(dc);
}

BOOL AfxTextOutFar(HDC dc, int x, int y, UINT options, LPCRECT rect, LPCWSTR text, UINT count, const int* widths) {
    LOGFONTW font = {};
    SelectedFont(dc, font);
    DesignFont design(dc, font);
    if (!design.IsReady()) {
        return FALSE;
    }
    if (rect != nullptr && (options & ETO_OPAQUE) != 0) {
        ::ExtTextOutW(dc, 0, 0, ETO_OPAQUE, rect, nullptr, 0, nullptr);
    }
    if (text == nullptr || count == 0) {
        return TRUE;
    }
    const AfxDeviceMap map(dc);
    const UINT align = ::GetTextAlign(dc);
    POINT start = {x, y};
    if ((align & TA_UPDATECP) != 0) {
        ::GetCurrentPositionEx(dc, &start);
    }
    Layout layout(dc, map, font, design);
    if (!design.IsReady()) {
        return FALSE;
    }
    layout.Place(text, count, options, widths);
    const AfxPoint reference = map.Of(start.x, start.y);
    layout.Align(reference, align);
    BOOL done = TRUE;
    {
        const AfxDeviceUnits units(dc, map, false);
        RECT clip = {};
        const bool isSeen = ::GetClipBox(dc, &clip) > NULLREGION;
        if (rect != nullptr && (options & ETO_CLIPPED) != 0) {
            const AfxPoint a = map.Of(rect->left, rect->top);
            const AfxPoint b = map.Of(rect->right, rect->bottom);
            const auto edge = [](double value) { return static_cast<LONG>(std::clamp(Round(value), -1e9, 1e9)); };
            const RECT box = {edge(std::min(a.x, b.x)), edge(std::min(a.y, b.y)), edge(std::max(a.x, b.x)),
                              edge(std::max(a.y, b.y))};
            const RECT seen = clip;
            if (!::IntersectRect(&clip, &seen, &box)) {
                clip = {};
            }
        }
        if (isSeen && clip.left < clip.right && clip.top < clip.bottom) {
            AfxFill fill(clip);
            if (::GetBkMode(dc) == OPAQUE) {
                AddBar(fill, layout, -layout.Ascent(), layout.Descent());
                done = fill.Paint(dc, ::GetBkColor(dc), PATCOPY);
            }
            AddCharacters(fill, clip, design, layout, text, count, options);
            const OUTLINETEXTMETRICW& metrics = design.Metrics();
            const auto bar = [&](int position, double size) {
                const double top = layout.DesignDown(position);
                AddBar(fill, layout, top, top - layout.DesignDown(size));
            };
            if (font.lfUnderline != 0) {
                bar(metrics.otmsUnderscorePosition, metrics.otmsUnderscoreSize);
            }
            if (font.lfStrikeOut != 0) {
                bar(static_cast<int>(metrics.otmsStrikeoutPosition), metrics.otmsStrikeoutSize);
            }
            done = fill.Paint(dc, ::GetTextColor(dc), PATCOPY) && done;
        }
    }
    if ((align & TA_UPDATECP) != 0 && (align & TA_CENTER) != TA_CENTER) {
        const double way = (align & TA_RIGHT) == TA_RIGHT ? -layout.Width() : layout.Width();
        layout.Align(reference, TA_BASELINE);
        const AfxPoint end = layout.Off(way, 0);
        POINT to = {static_cast<LONG>(std::clamp(Round(end.x), -2e9, 2e9)),
                    static_cast<LONG>(std::clamp(Round(end.y), -2e9, 2e9))};
        ::DPtoLP(dc, &to, 1);
        ::MoveToEx(dc, static_cast<int>(to.x), static_cast<int>(to.y), nullptr);
    }
    return done;
}
