#include "CommandOperationOffset.h"

#include "Document.h"
#include "PLine.h"

#include <memory>

IMPLEMENT_DYNAMIC(CCommandOperationOffset, CCommandOperation)

// ---- Events --------------------------------------------------------------------------------------------------------

void CCommandOperationOffset::Execute() {
    if (CPLine* line = TwoVertexPolyline()) {
        const CGeVector2d v = Sideways(line, m_CursorPoint, static_cast<double>(TypedDistance()));
        KeepFormerState();
        m_pObject->transformBy(CGeMatrix2d::translation(v));
    }
    EndRunningOperation();
}

void CCommandOperationOffset::Cancel() {
    m_pDocument->RemoveAllSelected();
    RequestRedraw();
}

CCommandOperation::ResultState CCommandOperationOffset::OnLButtonDown(unsigned int, CGePoint2d point) {
    m_InEdit = 0;
    if (m_pObject == nullptr) {
        // A click that hits nothing does not end the tool: the next one picks again.
        Pick(point);
        m_PickPoint = point;
        return RS_Capture;
    }
    KeepFormerState();
    CGeMatrix2d matrix;
    GetOffsetMatrix(matrix, point);
    m_pObject->transformBy(matrix);
    m_pDocument->RemoveSelected(m_pObject);
    RequestRedraw();
    return RS_Done;
}

CCommandOperation::ResultState CCommandOperationOffset::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    if (m_InEdit != 0) {
        // A distance is being typed.
        return RS_Continue;
    }
    CCommandOperation::OnMouseMove(nFlags, point);
    if (m_pObject != nullptr) {
        m_CursorPoint = point;
        m_MoveVector = point - m_PickPoint;
        DoOffsetPreview(point);
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationOffset::OnRButtonDown(unsigned int, CGePoint2d) {
    m_pDocument->RemoveAllSelected();
    RequestRedraw();
    return RS_Done;
}

// ---- Picking and copying -------------------------------------------------------------------------------------------

void CCommandOperationOffset::Pick(const CGePoint2d& point) {
    const CDrawableArray& objects = *m_pDocument->GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CDrawable* object = objects.GetAt(i);
        if (object->isCanSelect() == 0 || !IsHit(object, point) || m_pDocument->IsSelected(object) != 0) {
            continue;
        }
        m_pObject = object;
        Hold(object);
        object->SetDrawState(CDrawable::Selected);
        RequestRedraw();
        m_pDocument->AddSelected(object);
        m_Memory.Store(object);
        return;
    }
}

void CCommandOperationOffset::KeepFormerState() {
    // Compatibility 102: the copy of an offset is not registered.
    // Owned here until the drawing has it, because reading a kind of a host may throw.
    std::unique_ptr<CDrawable> former(static_cast<CDrawable*>(m_pObject->GetRuntimeClass()->CreateObject()));
    if (former == nullptr) {
        return;
    }
    m_Memory.Restore(former.get());
    m_pDocument->AddDrawAobjectFront(former.get());
    NoteChange();
    former.release()->SetDrawState(CDrawable::Normal);
    m_pDocument->RemoveAllSelected();
}

// ---- The offset ----------------------------------------------------------------------------------------------------

CPLine* CCommandOperationOffset::TwoVertexPolyline() {
    CPLine* line = DYNAMIC_DOWNCAST(CPLine, m_pObject);
    // Compatibility 21: only a polyline of two vertices is moved.
    return line != nullptr && line->GetPointList()->GetSize() == 2 ? line : nullptr;
}

CGeVector2d CCommandOperationOffset::Sideways(CPLine* line, const CGePoint2d& point, double distance) {
    const CGeVector2d d = line->GetPointList()->GetAt(1) - line->GetPointList()->GetAt(0);
    const CGeVector2d v = d.perpVector().normal() * distance;
    return line->isLeft(point) != 0 ? v : v.negate();
}

void CCommandOperationOffset::GetOffsetMatrix(CGeMatrix2d& out, CGePoint2d point) {
    if (CPLine* line = TwoVertexPolyline()) {
        out = CGeMatrix2d::translation(Sideways(line, point, line->GetClosestDistance(point)));
    }
}

void CCommandOperationOffset::DoOffsetPreview(CGePoint2d point) {
    // The object is not shown at its new place: the matrix is computed for derived commands that override
    // GetOffsetMatrix, and not used.
    CGeMatrix2d matrix;
    GetOffsetMatrix(matrix, point);
    ErasShirrLine();
    if (PlaceEditBox(m_PickPoint, point, m_MoveVector)) {
        DrawShirrLine(m_PickPoint, point);
    }
}
