#include "OperationCreateLabel.h"

#include "Document.h"
#include "EditingOptions.h"
#include "MemoryInfo.h"
#include "VectorGraphic.h"
#include "VectorLabel.h"

#include <cmath>

IMPLEMENT_DYNAMIC(COperationCreateLabel, COperationCreateObjAb)

namespace {

constexpr double kQuarterTurn = 1.5707963267948966;

} // namespace

// ---- Events --------------------------------------------------------------------------------------------------------

void COperationCreateLabel::Cancel() {
    DiscardCurrentObject();
}

CCommandOperation::ResultState COperationCreateLabel::OnLButtonDown(unsigned int, CGePoint2d point) {
    if (m_ClickCount == 0) {
        m_FirstPoint = point;
        auto* label = new CKXVectorLabel;
        m_pCurrentObject = label;
        label->SetTextShow(1);
        KX_ADD_MEMORY(label);
        OnCreateObject(label);
        label->SetLeftLabel(point, point);
        label->SetRightLabel(point, point);
        label->SetDrawState(CDrawable::Dragging);
        AddCurrentObjectToDocument();
        m_LastPoint = point;
        ++m_ClickCount;
        return RS_Continue;
    }
    if (m_ClickCount == 1) {
        m_SecondPoint = point;
        Label()->SetRightLabel(point, point);
        DrawLabel();
        m_ObjectDrawn = 1;
        m_LastPoint = point;
        ++m_ClickCount;
        return RS_Continue;
    }
    ErasShirrLine();
    m_pDocument->AddDrawAobject(m_pCurrentObject);
    m_pCurrentObject->SetDrawState(CDrawable::Normal);
    NoteChange();
    SetHeight(point);
    RequestRedraw();
    RemoveCurrentObjectAtDocument();
    return RS_Done;
}

CCommandOperation::ResultState COperationCreateLabel::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    if (m_ClickCount == 1) {
        ErasShirrLine();
        DrawShirrLine(m_FirstPoint, point);
    } else if (m_ClickCount >= 2) {
        ErasShirrLine();
        CViewDC dc(m_pWnd);
        if (m_ObjectDrawn != 0 || !Options().previewsReturn) {
            m_pGraphic->OnDraw(&dc, m_pCurrentObject);
        }
        SetHeight(point);
        m_pGraphic->OnDraw(&dc, m_pCurrentObject);
        m_ObjectDrawn = 1;
    }
    COperationCreateObjAb::OnMouseMove(nFlags, point);
    return RS_Continue;
}

CCommandOperation::ResultState COperationCreateLabel::OnRButtonDown(unsigned int, CGePoint2d) {
    Cancel();
    RequestRedraw();
    return RS_Cancelled;
}

// ---- The label -----------------------------------------------------------------------------------------------------

void COperationCreateLabel::ErasShirrLine() {
    COperationCreateObjAb::ErasShirrLine();
}

void COperationCreateLabel::OnCreateObject(CDrawable* object) {
    if (object != nullptr) {
        object->SetPenColor(m_LabelColor);
    }
}

CKXVectorLabel* COperationCreateLabel::Label() {
    return static_cast<CKXVectorLabel*>(m_pCurrentObject);
}

void COperationCreateLabel::PreRedraw() {
    COperationCreateObjAb::PreRedraw();
    if (m_ObjectDrawn != 0 && Options().previewsReturn) {
        DrawLabel();
        m_ObjectDrawn = 0;
    }
}

int COperationCreateLabel::OnGetGripPoint(CDrawable* object, int, CGePoint2d) {
    return object != m_pCurrentObject || !Options().noSelfSnap;
}

void COperationCreateLabel::DrawLabel() {
    CViewDC dc(m_pWnd);
    m_pGraphic->OnDraw(&dc, m_pCurrentObject);
}

void COperationCreateLabel::SetHeight(const CGePoint2d& point) {
    const CGeVector2d u = m_FirstPoint - m_SecondPoint;
    const CGeVector2d w = point - m_SecondPoint;
    const double a1 = u.angle();
    const double a2 = w.angle();
    // With the two directions on either side of the zero direction the difference exceeds the half turn: the sine is
    // negative and r points to the other side, and the two signs cancel out.
    const bool clockwise = a1 > a2;
    const CGeVector2d r = u.rotateBy(clockwise ? -kQuarterTurn : kQuarterTurn);
    const double t = clockwise ? a1 - a2 : a2 - a1;
    // Right after the second click the pointer is on the second point itself, which lies on the measured line: the
    // vector to it has no angle.
    const double distance = m_SecondPoint.distance(point);
    const double h = distance > 0.0 ? std::sin(t) * distance : 0.0;
    Label()->SetLeftLabel(m_FirstPoint, m_FirstPoint + r.normal() * h);
    Label()->SetRightLabel(m_SecondPoint, m_SecondPoint + r.normal() * h);
}
