#include "OperationCreateCircle.h"

#include "Circle.h"
#include "Document.h"
#include "EditingOptions.h"
#include "MemoryInfo.h"
#include "VectorGraphic.h"

#include <cmath>

IMPLEMENT_DYNAMIC(COperationCreateCircle, COperationCreateObjAb)

namespace {

// Compatibility 103: the radius of a drawn circle has single precision.
double RadiusTo(const CGePoint2d& center, const CGePoint2d& point) {
    const float dx = static_cast<float>(center.x - point.x);
    const float dy = static_cast<float>(center.y - point.y);
    const float squares = dx * dx + dy * dy;
    return std::sqrt(squares);
}

} // namespace

// ---- Events --------------------------------------------------------------------------------------------------------

void COperationCreateCircle::Cancel() {
    // Compatibility 104: an arc that is broken off leaves its pixels.
    // No repaint is requested: band and outline stay on the window until the next one.
    DiscardCurrentObject();
}

// Compatibility 16: the second click does not set the radius.
CCommandOperation::ResultState COperationCreateCircle::OnLButtonDown(unsigned int, CGePoint2d point) {
    if (m_ClickCount == 0) {
        m_CenterPoint = point;
        auto* circle = new CCircle;
        KX_ADD_MEMORY(circle);
        OnCreateObject(circle);
        circle->SetCenter(point);
        Show(circle);
        m_LastPoint = point;
        m_ClickCount = 1;
        return RS_Continue;
    }
    // The radius stays that of the last move, also where this click lies elsewhere.
    ErasShirrLine();
    KeepCurrentObject();
    RequestRedraw();
    RemoveCurrentObjectAtDocument();
    return RS_Done;
}

CCommandOperation::ResultState COperationCreateCircle::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    COperationCreateObjAb::OnMouseMove(nFlags, point);
    ErasShirrLine();
    if (m_ClickCount == 0) {
        DrawShirrLine(point, point);
        return RS_Continue;
    }
    DrawShirrLine(m_CenterPoint, point);
    static_cast<CCircle*>(m_pCurrentObject)->setRadius(RadiusTo(m_CenterPoint, point));
    InvertCurrentObject();
    m_ObjectDrawn = 1;
    return RS_Continue;
}

// Compatibility 17: a circle that is broken off leaves its pixels.
CCommandOperation::ResultState COperationCreateCircle::OnRButtonDown(unsigned int, CGePoint2d) {
    if (m_ClickCount >= 1) {
        Cancel();
    }
    return RS_Cancelled;
}

// ---- The object ----------------------------------------------------------------------------------------------------

void COperationCreateCircle::ErasShirrLine() {
    CCommandOperation::ErasShirrLine();
    if (m_ObjectDrawn != 0) {
        m_ObjectDrawn = 0;
        InvertCurrentObject();
    }
}

void COperationCreateCircle::Show(CDrawable* object) {
    m_pCurrentObject = object;
    object->SetDrawState(CDrawable::Dragging);
    AddCurrentObjectToDocument();
}

void COperationCreateCircle::InvertCurrentObject() {
    if (m_pCurrentObject != nullptr) {
        CViewDC dc(m_pWnd);
        m_pGraphic->OnDraw(&dc, m_pCurrentObject);
    }
}

int COperationCreateCircle::OnGetGripPoint(CDrawable* object, int, CGePoint2d) {
    return object != m_pCurrentObject || !Options().noSelfSnap;
}

void COperationCreateCircle::KeepCurrentObject() {
    NoteChange();
    m_pDocument->AddDrawAobject(m_pCurrentObject);
    m_pCurrentObject->SetDrawState(CDrawable::Normal);
}
