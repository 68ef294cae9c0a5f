#include "CombRect.h"

#include "DrawStrokes.h"

IMPLEMENT_SERIAL(CCombRect, CDrawable, VERSIONABLE_SCHEMA | 5)

namespace {

constexpr int kFrameWidth = 1; // Pixels, at every zoom.

} // namespace

// ---- Geometry and queries ------------------------------------------------------------------------------------------

void CCombRect::GetPoint(CGePoint2d& a, CGePoint2d& b) {
    a = m_Corner1;
    b = m_Corner2;
}

// ---- Editing -------------------------------------------------------------------------------------------------------

void CCombRect::SetPoint(const CGePoint2d& a, const CGePoint2d& b) {
    m_Corner1 = a;
    m_Corner2 = b;
}

void CCombRect::transformBy(CArray<CDrawable*, CDrawable*&>*& list, CGePoint2d from, CGePoint2d to) {
    if (list == nullptr) {
        return;
    }
    for (INT_PTR i = 0; i < list->GetSize(); ++i) {
        if (CDrawable* obj = list->GetAt(i)) {
            obj->transformBy(CGeMatrix2d::translation(to - from));
        }
    }
}

void CCombRect::ExchangeState(CStateExchange& exchange) {
    CDrawable::ExchangeState(exchange);
    exchange.Level<CCombRect>();
    exchange.Text(m_strVectorId);
    exchange.Text(m_strCombText);
    exchange.Point(m_Corner1);
    exchange.Point(m_Corner2);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

// Compatibility 47: a frame paints when hidden, deleted or dragged.
void CCombRect::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    // Compatibility 49: a failed frame reports the name of the line's `Draw`.
    DrawInFrame(pDC, pGeom, L"CLine::Draw", L"2", [&](LPCTSTR& stage) {
        stage = L"1";
        pDC->SetBkMode(TRANSPARENT);
        CPen pen(InnerGetLineType(pGeom), kFrameWidth, InnerGetPenColor(pGeom));
        CScopedPen selected(pDC, &pen);
        const CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
        float x1 = 0.0f;
        float y1 = 0.0f;
        float x2 = 0.0f;
        float y2 = 0.0f;
        tran->DPToLP(m_Corner1.x, m_Corner1.y, &x1, &y1);
        tran->DPToLP(m_Corner2.x, m_Corner2.y, &x2, &y2);
        const int left = PixelOf(x1);
        const int top = PixelOf(y1);
        const int right = PixelOf(x2);
        const int bottom = PixelOf(y2);
        pDC->MoveTo(left, top);
        pDC->LineTo(right, top);
        pDC->LineTo(right, bottom);
        pDC->LineTo(left, bottom);
        pDC->LineTo(left, top);
        selected.Restore();
        return true;
    });
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

// The frame has no version word of its own. Only the current schema has this level: an older stream holds nothing here.
void CCombRect::Serialize(CArchive& ar) {
    CDrawable::Serialize(ar);
    if (ar.IsStoring()) {
        ar << m_strVectorId << m_strCombText << m_Corner1.x << m_Corner1.y << m_Corner2.x << m_Corner2.y;
    } else if (IsCurrentForm(ar)) {
        ar >> m_strVectorId >> m_strCombText >> m_Corner1.x >> m_Corner1.y >> m_Corner2.x >> m_Corner2.y;
    }
}
