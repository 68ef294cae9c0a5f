#include "OperationCreateRectangle.h"

#include "Document.h"
#include "EditingOptions.h"
#include "GdiScope.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "VectorGraphic.h"

IMPLEMENT_DYNAMIC(COperationCreateRectangle, COperationCreateObjAb)

// ---- Events --------------------------------------------------------------------------------------------------------

void COperationCreateRectangle::Cancel() {
    // Compatibility 12: the sides of a rectangle that is broken off stay allocated.
    // They are neither added nor freed, and the leak tracer lists them.
    DiscardCurrentObject();
}

CCommandOperation::ResultState COperationCreateRectangle::OnLButtonDown(unsigned int, CGePoint2d point) {
    if (m_ClickCount == 0) {
        MakeSides();
    }
    m_LastPoint = point;
    ++m_ClickCount;
    if (m_ClickCount == 1) {
        m_FirstCorner = point;
        TrackGripPoint(m_FirstCorner);
        return RS_Continue;
    }
    for (CLine* side : m_Lines) {
        OnCreateObject(side);
    }
    SetSides(point);
    // Compatibility 13: finished sides keep the state Dragging.
    // Nothing sets the sides back to Normal: they are drawn by inversion, with a solid pen, until a selection changes
    // their state. Files store that state too.
    for (CLine* side : m_Lines) {
        if (Options().cleanRectangle) {
            side->SetDrawState(CDrawable::Normal);
        }
        m_pDocument->AddDrawAobject(side);
    }
    NoteChange();
    RequestRedraw();
    return RS_Done;
}

CCommandOperation::ResultState COperationCreateRectangle::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    COperationCreateObjAb::OnMouseMove(nFlags, point);
    ErasShirrLine();
    if (m_ClickCount == 0) {
        DrawShirrLine(point, point);
        return RS_Continue;
    }
    DrawShirrLine(m_FirstCorner, point);
    SetSides(point);
    InvertSides();
    m_PreviewDrawn = 1;
    return RS_Continue;
}

CCommandOperation::ResultState COperationCreateRectangle::OnRButtonDown(unsigned int, CGePoint2d) {
    ErasShirrLine();
    m_ClickCount = 0;
    return RS_Cancelled;
}

// ---- The sides -----------------------------------------------------------------------------------------------------

// Compatibility 14: the diagonal of a broken-off rectangle stays on the window.
void COperationCreateRectangle::ErasShirrLine() {
    // The base's operation, which erases the band along the diagonal, is not called.
    if (m_PreviewDrawn != 0) {
        m_PreviewDrawn = 0;
        InvertSides();
    }
}

void COperationCreateRectangle::MakeSides() {
    CTracedOwner<CLine> sides[kSides]; // All or none, because a missing side could not be moved.
    for (CTracedOwner<CLine>& side : sides) {
        side.reset(new CLine);
        KX_ADD_MEMORY(side.get());
        side->SetDrawState(CDrawable::Dragging);
    }
    for (int i = 0; i < kSides; ++i) {
        m_Lines[i] = sides[i].release();
    }
}

void COperationCreateRectangle::SetSides(const CGePoint2d& corner) {
    const CGePoint2d b(corner.x, m_FirstCorner.y);
    const CGePoint2d a(m_FirstCorner.x, corner.y);
    const CGePoint2d round[kSides + 1] = {m_FirstCorner, b, corner, a, m_FirstCorner};
    for (int i = 0; i < kSides; ++i) {
        m_Lines[i]->SetStartPoint(round[i]);
        m_Lines[i]->SetEndPoint(round[i + 1]);
    }
}

void COperationCreateRectangle::InvertSides() {
    CViewDC dc(m_pWnd);
    if (Options().cleanRectangle) {
        InvertOutline(&dc);
        return;
    }
    for (CLine* side : m_Lines) {
        m_pGraphic->OnDraw(&dc, side);
    }
}

void COperationCreateRectangle::InvertOutline(CDC* dc) {
    CPoint a;
    CPoint b;
    m_pCoordTran->DPToLP(m_FirstCorner, a);
    m_pCoordTran->DPToLP(m_Lines[1]->GetEndPoint(), b);
    CRect rect(a, b);
    rect.NormalizeRect();
    CPen pen(PS_SOLID, 1, RGB(255, 255, 255));
    CScopedPen selectedPen(dc, &pen);
    CScopedStockBrush selectedBrush(dc, NULL_BRUSH);
    CScopedRop raster(dc, R2_NOT);
    dc->Rectangle(rect.left, rect.top, WrapAdd(rect.right, 1), WrapAdd(rect.bottom, 1));
    raster.Restore();
    selectedBrush.Restore();
    selectedPen.Restore();
}
