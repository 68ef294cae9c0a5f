#include "VectorLabel.h"

#include "ObjectSchema.h"

#include <cmath>
#include <initializer_list>

IMPLEMENT_SERIAL(CKXVectorLabel, CDrawable, VERSIONABLE_SCHEMA | 5)

namespace {

// Version 5 ends before the figure; any lower one has no fields at all.
constexpr int kVersionCurrent = 6;
constexpr int kVersionWithoutFigure = 5;

constexpr float kHiddenDistance = 1000.0f;

struct Span {
    double low;
    double high;
};

// The least and the greatest of the values that are numbers; not-a-number when none is. A label whose points coincide
// has no direction, and the ends of its dimension line are then not-a-number.
Span SpanOf(std::initializer_list<double> values) {
    Span span = {NAN, NAN};
    for (const double value : values) {
        if (value < span.low || std::isnan(span.low)) {
            span.low = value;
        }
        if (value >= span.high || std::isnan(span.high)) {
            span.high = value;
        }
    }
    return span;
}

void Store(CArchive& ar, const CGePoint2d& p) {
    ar << p.x << p.y;
}

void Load(CArchive& ar, CGePoint2d& p) {
    ar >> p.x >> p.y;
}

} // namespace

// ---- Geometry and queries ------------------------------------------------------------------------------------------

CString CKXVectorLabel::GetName() {
    return L"标注";
}

// Compatibility 122: a hidden label has an extent.
int CKXVectorLabel::GetRect(CVectorViewCoordTran*, CGePoint2d& min, CGePoint2d& max) {
    const Span x = SpanOf({m_LeftLabelStartPt.x, m_LeftLabelEndPt.x, m_RightLabelStartPt.x, m_RightLabelEndPt.x});
    const Span y = SpanOf({m_LeftLabelStartPt.y, m_LeftLabelEndPt.y, m_RightLabelStartPt.y, m_RightLabelEndPt.y});
    min.SetPoint(x.low - m_LabelLength, y.low - m_LabelLength);
    max.SetPoint(x.high + m_LabelLength, y.high + m_LabelLength);
    return 1;
}

// Compatibility 121: the figure of a label is hit also when it is not shown.
float CKXVectorLabel::HitTest(CGePoint2d p) {
    if (m_IsShow == 0) {
        return kHiddenDistance;
    }
    // The distance to a line without length is not-a-number, which fmin ignores.
    float nearest = NAN;
    for (const float distance :
         {DistanceLine(m_LeftLabelStartPt, m_LeftLabelEndPt, p), DistanceLine(m_LeftLabelEndPt, m_RightLabelEndPt, p),
          DistanceLine(m_RightLabelStartPt, m_RightLabelEndPt, p), m_LabelText.HitTest(p)}) {
        nearest = std::fmin(nearest, std::fabs(distance));
    }
    return std::isnan(nearest) ? kHiddenDistance : nearest;
}

void CKXVectorLabel::getGripPoints(CGePointArray& out, int) {
    out.Add(m_LeftLabelEndPt);
    out.Add(m_RightLabelEndPt);
}

// ---- Editing -------------------------------------------------------------------------------------------------------

void CKXVectorLabel::SetLeftLabel(const CGePoint2d& start, const CGePoint2d& end) {
    m_LeftLabelStartPt = start;
    m_LeftLabelEndPt = end;
}

void CKXVectorLabel::SetRightLabel(const CGePoint2d& start, const CGePoint2d& end) {
    m_RightLabelStartPt = start;
    m_RightLabelEndPt = end;
}

// Compatibility 92: the grips of a label do not move.
void CKXVectorLabel::moveGripPointsAt(const CIndexArray&, const CGeVector2d&) {}

void CKXVectorLabel::transformBy(const CGeMatrix2d& m) {
    m_LeftLabelStartPt.transformBy(m);
    m_LeftLabelEndPt.transformBy(m);
    m_RightLabelStartPt.transformBy(m);
    m_RightLabelEndPt.transformBy(m);
}

void CKXVectorLabel::GetProperty(CDrawableProperty& list) {
    CDrawable::GetProperty(list);
    PropertyRows::AddLong(list, L"m_LockBojZoom", L"是否锁定线宽", m_LockMode);
}

void CKXVectorLabel::SetProperty(CDrawableProperty& list) {
    CDrawable::SetProperty(list);
    PropertyRows::TakeLong(list, L"m_LockBojZoom", m_LockMode);
}

// The figure is set anew by every paint that shows it.
void CKXVectorLabel::ExchangeState(CStateExchange& exchange) {
    CDrawable::ExchangeState(exchange);
    exchange.Point(m_LeftLabelStartPt);
    exchange.Point(m_LeftLabelEndPt);
    exchange.Point(m_RightLabelStartPt);
    exchange.Point(m_RightLabelEndPt);
    exchange.Value(m_LabelLength);
    exchange.Value(m_LabelWidth);
    exchange.Value(m_TextHoleWidth);
    exchange.Value(m_bHasTextHole);
    exchange.Value(m_TextShow);
    exchange.Value(m_LockMode);
    exchange.Derived([&] { m_LabelText.ExchangeState(exchange); });
    float wide = m_LabelText.GetTextWide(); // Stored, and set by no paint; reading a restore point may change it.
    exchange.Value(wide);
    m_LabelText.SetTextWide(wide);
    exchange.Level<CKXVectorLabel>(); // After the figure, which has named its own fields.
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

void CKXVectorLabel::Serialize(CArchive& ar) {
    CDrawable::Serialize(ar);
    if (ar.IsStoring()) {
        ar << kVersionCurrent;
        Store(ar, m_LeftLabelStartPt);
        Store(ar, m_LeftLabelEndPt);
        Store(ar, m_RightLabelStartPt);
        Store(ar, m_RightLabelEndPt);
        ar << m_LabelLength << m_LabelWidth << m_TextHoleWidth << m_bHasTextHole << m_LockMode << m_TextShow;
        m_LabelText.Serialize(ar);
        return;
    }
    // Every schema has the version word. A restore point, read outside ReadObject, is always of the newest form.
    int version = 0;
    ar >> version;
    const bool newest = ObjectSchema(ar) == kNoSchema;
    if (!newest && version < kVersionWithoutFigure) {
        return;
    }
    Load(ar, m_LeftLabelStartPt);
    Load(ar, m_LeftLabelEndPt);
    Load(ar, m_RightLabelStartPt);
    Load(ar, m_RightLabelEndPt);
    ar >> m_LabelLength >> m_LabelWidth >> m_TextHoleWidth >> m_bHasTextHole >> m_LockMode;
    if (newest || version > kVersionWithoutFigure) {
        ar >> m_TextShow;
        m_LabelText.Serialize(ar);
    }
}
