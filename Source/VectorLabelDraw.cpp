// CKXVectorLabel: its strokes, computed in pixels, and its figure, placed in drawing units. Layer 5: drawables.

#include "VectorLabel.h"

#include "DrawStrokes.h"
#include "EditingOptions.h"

#include <KxBaseClass.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace {

// The turns of a tick, in radians: 90 and 270 degrees with ten digits, as kHalfTurn has, and not the nearest doubles.
// The pixels of a tick depend on them.
constexpr double kTickQuarterTurn = 1.57079632675;
constexpr double kTickThreeQuarterTurn = 4.71238898025;
constexpr double kDegreesPerRadian = 57.29577951308232;

constexpr double kOvershoot = 2.5; // Of an extension line beyond the dimension line, in tick sizes.

// Compatibility 94: the figure has a fixed size and place.
constexpr float kFigureHeight = 100.0f;
constexpr double kFigureLift = 100.0;
constexpr int kFigureHalfStep = 40; // Half the assumed width of two characters.

// False for the result of `normal` for a vector without length. Strokes that need such a direction are left out.
bool IsDirection(const CGeVector2d& u) {
    return !std::isnan(u.x) && !std::isnan(u.y);
}

// A figure from p to q would be read upside down, or downwards on a vertical line.
bool IsTurnedAway(const CGePoint2d& p, const CGePoint2d& q) {
    const int x = kxcommon::CompareDbl(q.x, p.x);
    return x < 0 || (x == 0 && kxcommon::CompareDbl(q.y, p.y) < 0);
}

// The figure is then beyond the dimension line, on the line otherwise.
bool PointsUp(const CGeVector2d& extensionLine) {
    return kxcommon::CompareDbl(extensionLine.angle(), kHalfTurn) < 0;
}

void MoveTo(CDC* pDC, const CGePoint2d& p) {
    pDC->MoveTo(Truncate(p.x), Truncate(p.y));
}

void LineTo(CDC* pDC, const CGePoint2d& p) {
    pDC->LineTo(Truncate(p.x), Truncate(p.y));
}

POINT TruncatedPoint(const CGePoint2d& p) {
    return {Truncate(p.x), Truncate(p.y)};
}

CGePoint2d Middle(const CGePoint2d& p, const CGePoint2d& q) {
    return CGePoint2d((p.x + q.x) / 2, (p.y + q.y) / 2);
}

// GDI stores a region as a list of scan lines, visible or not: the bar of a tick far larger than any window would take
// seconds and gigabytes. Before it becomes a region, a bar of at least `kTallBar` rows is cut to the rows of the clip
// box, and to those between -kLastRow and kLastRow.
constexpr double kTallBar = 32768.0;
constexpr LONG kLastRow = 65536;

// The part of the convex outline with a y not below `limit` (sign 1), or not above it (sign -1).
void CutRows(std::vector<CGePoint2d>& outline, double limit, double sign) {
    std::vector<CGePoint2d> kept;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const CGePoint2d& p = outline[i];
        const CGePoint2d& next = outline[(i + 1) % outline.size()];
        const double before = (p.y - limit) * sign;
        const double after = (next.y - limit) * sign;
        if (before >= 0.0) {
            kept.push_back(p);
        }
        if ((before < 0.0) != (after < 0.0)) {
            kept.emplace_back(p.x + (next.x - p.x) * (before / (before - after)), limit);
        }
    }
    outline.swap(kept);
}

// The bar between four corners, in pixels.
void MakeBar(CDC* pDC, CRgn& bar, const CGePoint2d (&corners)[4]) {
    const auto rows = std::minmax({corners[0].y, corners[1].y, corners[2].y, corners[3].y});
    if (rows.second - rows.first < kTallBar) {
        const POINT points[4] = {TruncatedPoint(corners[0]), TruncatedPoint(corners[1]), TruncatedPoint(corners[2]),
                                 TruncatedPoint(corners[3])};
        bar.CreatePolygonRgn(points, 4, ALTERNATE);
        return;
    }
    CRect seen;
    pDC->GetClipBox(&seen);
    std::vector<CGePoint2d> outline(corners, corners + 4);
    CutRows(outline, static_cast<double>(std::max(seen.top, -kLastRow)) - 1.0, 1.0);
    CutRows(outline, static_cast<double>(std::min(seen.bottom, kLastRow)) + 1.0, -1.0);
    std::vector<POINT> points;
    points.reserve(outline.size());
    for (const CGePoint2d& corner : outline) {
        points.push_back(TruncatedPoint(corner));
    }
    bar.CreatePolygonRgn(points.data(), static_cast<int>(points.size()), ALTERNATE);
}

} // namespace

// Compatibility 53: a hidden label draws and can't be hit.
// Compatibility 56: a dragged label is masked, not inverted.
// A second drawing with R2_MASKPENNOT does not erase the first one.
void CKXVectorLabel::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    // Compatibility 52: a failed label reports the name of the line's `Draw`.
    DrawInFrame(pDC, pGeom, L"CLine::Draw", L"2", [&](LPCTSTR& stage) {
        if (m_IsDelete != 0) {
            return false;
        }
        const PenLook look = ResolvePen(pGeom, m_LockMode == 1);
        const CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
        CGePoint2d a;
        CGePoint2d b;
        CGePoint2d c;
        CGePoint2d d;
        tran->DPToLP_Double(m_LeftLabelStartPt.x, m_LeftLabelStartPt.y, &a.x, &a.y);
        tran->DPToLP_Double(m_LeftLabelEndPt.x, m_LeftLabelEndPt.y, &b.x, &b.y);
        tran->DPToLP_Double(m_RightLabelStartPt.x, m_RightLabelStartPt.y, &c.x, &c.y);
        tran->DPToLP_Double(m_RightLabelEndPt.x, m_RightLabelEndPt.y, &d.x, &d.y);
        const double len = static_cast<double>(tran->DToL(m_LabelLength));
        const double half = static_cast<double>(tran->DToL(m_LabelWidth)) / 2.0;
        const double hole = static_cast<double>(tran->DToL(m_TextHoleWidth));
        stage = L"1";
        StrokeOutline(pDC, m_DrawState, look, R2_MASKPENNOT, [&] { DoDrawLable(pDC, a, b, c, d, len, half, hole); });
        if (m_DrawState != Selected && m_DrawState != Normal) {
            return true;
        }
        // A figure that fails shows a message box, in which a host may free the label or its view.
        const CKxAliveToken label = GetAlive();
        const CKxAliveToken geometry = pGeom->GetAlive();
        DoDrawText(pDC, pGeom, m_LeftLabelEndPt, m_RightLabelEndPt);
        return label.IsAlive() && geometry.IsAlive();
    });
}

void CKXVectorLabel::DoDrawLable(CDC* pDC, CGePoint2d a, CGePoint2d b, CGePoint2d c, CGePoint2d d, double len,
                                 double half, double hole) {
    // Compatibility 93: both sides take the direction of the left extension line.
    const CGeVector2d u = (b - a).normal();
    const bool directed = IsDirection(u);
    const CGeVector2d ext = u * len * kOvershoot;
    if (directed) {
        DoDrawLable_WidthBian(pDC, u, b, len, half);
        DoDrawLable_WidthBian(pDC, u, d, len, half);
        MoveTo(pDC, a);
        LineTo(pDC, b + ext);
    }
    DoDrawLabel_TextHole(pDC, b, d, hole);
    if (directed) {
        MoveTo(pDC, c);
        LineTo(pDC, d + ext);
    }
}

void CKXVectorLabel::DoDrawLable_WidthBian(CDC* pDC, CGeVector2d u, CGePoint2d p, double len, double half) {
    const CGeVector2d across = u.rotateBy(kTickQuarterTurn).normal() * len;
    const CGePoint2d e1 = p + u * len + across;
    const CGePoint2d e2 = p - u * len - across;
    const CGeVector2d q = (e1 - e2).rotateBy(kTickThreeQuarterTurn).normal() * half;
    if (!IsDirection(q)) {
        return;
    }
    const CGePoint2d q1 = e1 + q;
    const CGePoint2d q2 = e1 - q;
    const CGePoint2d q3 = e2 + q;
    const CGePoint2d q4 = e2 - q;
    MoveTo(pDC, q1);
    LineTo(pDC, q2);
    LineTo(pDC, q4);
    LineTo(pDC, q3);
    LineTo(pDC, q1);
    // Compatibility 55: the inside of a tick is white.
    // Only the outline has the colour of the pen.
    CRgn region;
    MakeBar(pDC, region, {q1, q2, q4, q3});
    CBrush brush(RGB(255, 255, 255));
    pDC->FillRgn(&region, &brush);
}

void CKXVectorLabel::DoDrawLabel_TextHole(CDC* pDC, CGePoint2d p1, CGePoint2d p2, double hole) {
    if (!m_bHasTextHole) {
        MoveTo(pDC, p1);
        LineTo(pDC, p2);
        return;
    }
    const CGePoint2d m = Middle(p1, p2);
    const CGeVector2d v = (p2 - p1).normal() * hole;
    if (!IsDirection(v)) {
        return;
    }
    MoveTo(pDC, p1);
    LineTo(pDC, m - v);
    MoveTo(pDC, m + v);
    LineTo(pDC, p2);
}

void CKXVectorLabel::DoDrawText(CDC* pDC, CDrawGeometry* pGeom, CGePoint2d p, CGePoint2d q) {
    if (m_TextShow == 0) {
        return;
    }
    const CEditingOptions& options = pGeom->GetEditingOptions();
    if (options.textsAsShown) {
        LayOutReadable(p, q, options.figureHeight);
    } else {
        LayOutFigure(p, q, kFigureHeight, PointsUp(m_LeftLabelEndPt - m_LeftLabelStartPt));
    }
    m_LabelText.Draw(pDC, pGeom);
}

void CKXVectorLabel::MergeFigure(float figureHeight, CGePoint2d& min, CGePoint2d& max) {
    if (m_TextShow == 0) {
        return;
    }
    LayOutReadable(m_LeftLabelEndPt, m_RightLabelEndPt, figureHeight);
    CGePoint2d corners[4];
    m_LabelText.GetShownCorners(corners);
    for (const CGePoint2d& corner : corners) {
        // A figure without a direction has no place.
        if (std::isfinite(corner.x) && std::isfinite(corner.y)) {
            min.SetPoint(std::min(min.x, corner.x), std::min(min.y, corner.y));
            max.SetPoint(std::max(max.x, corner.x), std::max(max.y, corner.y));
        }
    }
}

void CKXVectorLabel::LayOutReadable(const CGePoint2d& p, const CGePoint2d& q, float height) {
    const bool away = IsTurnedAway(p, q);
    const CGeVector2d e = m_LeftLabelEndPt - m_LeftLabelStartPt;
    // A figure that reads upwards has its foot on its right.
    const bool vertical = kxcommon::CompareDbl(p.x, q.x) == 0 && kxcommon::CompareDbl(p.y, q.y) != 0;
    LayOutFigure(away ? q : p, away ? p : q, height, vertical ? e.x < 0.0 : PointsUp(e));
}

void CKXVectorLabel::LayOutFigure(const CGePoint2d& p, const CGePoint2d& q, float height, bool lifted) {
    const double size = static_cast<double>(height / kFigureHeight);
    CString figure;
    figure.Format(L"%d", Truncate(p.distance(q) + 0.5));
    CGePoint2d m = Middle(p, q);
    const CGeVector2d v = q - p;
    const CGeVector2d e = m_LeftLabelEndPt - m_LeftLabelStartPt;
    if (lifted) {
        m = m + e.normal() * (kFigureLift * size);
    }
    // Moved back by half the assumed width, 40 units for each two characters, whatever the font measures.
    m = m - v.normal() * (static_cast<double>(figure.GetLength() / 2 * kFigureHalfStep) * size);
    m_LabelText.SetAngle(static_cast<float>(v.angle() * kDegreesPerRadian));
    m_LabelText.SetBKMode(TRANSPARENT);
    m_LabelText.SetText(figure);
    m_LabelText.SetPos(m);
    m_LabelText.SetTextHeight(height);
    // Compatibility 54: the figure has the stored colour.
    m_LabelText.SetPenColor(m_PenColor);
}
