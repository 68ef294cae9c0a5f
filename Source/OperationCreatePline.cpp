#include "OperationCreatePline.h"

#include "Document.h"
#include "EditingOptions.h"
#include "MemoryInfo.h"
#include "PLine.h"

IMPLEMENT_DYNAMIC(COperationCreatePline, COperationCreateObjAb)

COperationCreatePline::~COperationCreatePline() {
    m_Points.RemoveAll();
}

// ---- Events --------------------------------------------------------------------------------------------------------

void COperationCreatePline::Execute() {
    m_InEdit = 0;
    if (m_pCurrentObject == nullptr) {
        // There is no vertex yet to measure from.
        return;
    }
    // Before the first move, and with the cursor on the last vertex, there is no direction: the new one lies on it.
    const CGeVector2d direction = m_MoveVector.length() > 0.0 ? m_MoveVector.normal() : CGeVector2d();
    const CGePoint2d p = m_PrevPoint + direction * static_cast<double>(TypedDistance());
    AddVertex(p);
    m_PrevPoint = p;
    if (PlaceEditBox(m_PrevPoint, p, m_MoveVector)) {
        // Added to the document at once, and still being built: the next vertices are added to the same object.
        KeepPolyline();
    }
}

// Compatibility 15: a polyline that is broken off stays in the drawing.
void COperationCreatePline::Cancel() {
    try {
        ErasShirrLine();
    } catch (...) {
        // Otherwise neither the tool nor the document would free the polyline.
        KeepPolyline();
        throw;
    }
    if (IsBrokenOff() && Options().modifiedByChange && !m_InDocument) {
        DiscardCurrentObject();
        RequestRedraw();
        return;
    }
    KeepPolyline();
}

CCommandOperation::ResultState COperationCreatePline::OnLButtonDown(unsigned int, CGePoint2d point) {
    m_InEdit = 0;
    if (m_ClickCount == 0) {
        StartPolyline();
    } else if (IsOrthoOn()) {
        OrthoStep(m_PrevPoint, point);
    }
    m_LastPoint = point;
    ++m_ClickCount;
    CCommandOperation::RefreshGrip();
    m_PrevPoint = point;
    AddVertex(point);
    RequestRedraw();
    return RS_Continue;
}

CCommandOperation::ResultState COperationCreatePline::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    if (m_InEdit != 0) {
        // A length is being typed.
        return RS_Continue;
    }
    if (m_ClickCount > 0 && IsOrthoOn()) {
        OrthoStep(m_PrevPoint, point);
    }
    COperationCreateObjAb::OnMouseMove(nFlags, point);
    ErasShirrLine();
    if (m_ClickCount < 1) {
        DrawShirrLine(point, point);
        return RS_Continue;
    }
    m_MoveVector = point - m_PrevPoint;
    if (PlaceEditBox(m_PrevPoint, point, m_MoveVector)) {
        DrawShirrLine(m_PrevPoint, point);
    }
    return RS_Continue;
}

CCommandOperation::ResultState COperationCreatePline::OnRButtonDown(unsigned int, CGePoint2d) {
    ErasShirrLine();
    KeepPolyline();
    return RS_Done;
}

// ---- The polyline --------------------------------------------------------------------------------------------------

CPLine* COperationCreatePline::Polyline() {
    return static_cast<CPLine*>(m_pCurrentObject);
}

void COperationCreatePline::StartPolyline() {
    m_pCurrentObject = new CPLine;
    KX_ADD_MEMORY(m_pCurrentObject);
    OnCreateObject(m_pCurrentObject);
    if (m_pDocument->GetFGColorIndex() == kColorWhite) {
        m_pCurrentObject->SetPenColor(RGB(m_Color >> 16 & 0xFF, m_Color >> 8 & 0xFF, m_Color & 0xFF));
    }
    AddCurrentObjectToDocument();
}

void COperationCreatePline::AddVertex(CGePoint2d point) {
    TrackGripPoint(point);
    Polyline()->AddPoint(point);
    m_Points.Add(point);
}

// Compatibility 115: a finished polyline is put at the bottom of the drawing order.
void COperationCreatePline::KeepPolyline() {
    if (m_pCurrentObject != nullptr) {
        m_InDocument = true;
        NoteChange();
    }
    if (m_AddFront != 0) {
        m_pDocument->AddDrawAobjectFront(m_pCurrentObject);
    } else {
        m_pDocument->AddDrawAobject(m_pCurrentObject);
    }
    RemoveCurrentObjectAtDocument();
    RequestRedraw();
}
