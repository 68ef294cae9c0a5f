#include "CombRect.h"

#include "GdiScope.h"

IMPLEMENT_SERIAL(CCombRect, CDrawable, VERSIONABLE_SCHEMA | 5)

namespace {

constexpr int kFrameWidth = 1; // Pixels, at every zoom.

// A corner in pixels. The mapping's doubles are floats once more before they are rounded.
void CornerPixels(const CVectorViewCoordTran& tran, const CGePoint2d& corner, int& x, int& y) {
    double wideX = 0.0;
    double wideY = 0.0;
    tran.DPToLP_Double(corner.x, corner.y, &wideX, &wideY);
    x = CSerialable::GetNear(static_cast<double>(static_cast<float>(wideX)), 0);
    y = CSerialable::GetNear(static_cast<double>(static_cast<float>(wideY)), 0);
}

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

// ---- Painting ------------------------------------------------------------------------------------------------------

// Neither visibility nor state is asked: a frame is always there, in its own line type.
void CCombRect::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    LPCTSTR step = L"0";
    try {
        step = L"1";
        pDC->SetBkMode(TRANSPARENT);
        CPen pen(InnerGetLineType(pGeom), kFrameWidth, InnerGetPenColor(pGeom));
        CScopedPen selected(pDC, &pen);
        const CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
        int x1 = 0;
        int y1 = 0;
        int x2 = 0;
        int y2 = 0;
        CornerPixels(*tran, m_Corner1, x1, y1);
        CornerPixels(*tran, m_Corner2, x2, y2);
        pDC->MoveTo(x1, y1);
        pDC->LineTo(x2, y1);
        pDC->LineTo(x2, y2);
        pDC->LineTo(x1, y2);
        pDC->LineTo(x1, y1);
        selected.Restore();
        step = L"2";
        CDrawable::Draw(pDC, pGeom);
    } catch (CException* e) {
        e->Delete();
        // The line's name: the frame's message has always borne it.
        ReportDrawFailure(L"CLine::Draw", step);
    } catch (...) {
        ReportDrawFailure(L"CLine::Draw", step);
    }
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

// There is no version word of its own, and the form is as old as the current schema: an older one holds nothing here.
void CCombRect::Serialize(CArchive& ar) {
    CDrawable::Serialize(ar);
    if (ar.IsStoring()) {
        ar << m_strVectorId << m_strCombText << m_Corner1.x << m_Corner1.y << m_Corner2.x << m_Corner2.y;
    } else if (IsCurrentForm(ar)) {
        ar >> m_strVectorId >> m_strCombText >> m_Corner1.x >> m_Corner1.y >> m_Corner2.x >> m_Corner2.y;
    }
}
