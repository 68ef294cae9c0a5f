#include "CommandSelectGripPoint.h"

#include "Document.h"
#include "EditingOptions.h"

IMPLEMENT_DYNAMIC(CCommandSelectGripPoint, CCommandOperation)

// ---- Events --------------------------------------------------------------------------------------------------------

// Compatibility 113: a typed distance ignores the ortho lock.
void CCommandSelectGripPoint::Execute() {
    if (m_pObject != nullptr) {
        // Before the first move, and with the cursor on the grip itself, there is no direction: the grip stays.
        const CGeVector2d direction = m_MoveVector.length() > 0.0 ? m_MoveVector.normal() : CGeVector2d();
        const CGePoint2d target = m_GripPoint + direction * static_cast<double>(TypedDistance());
        m_Memory.Restore(m_pObject);
        MoveGrip(target - m_GripPoint);
    }
    EndRunningOperation();
}

void CCommandSelectGripPoint::Cancel() {
    m_pDocument->RemoveAllSelected();
    RequestRedraw();
}

CCommandOperation::ResultState CCommandSelectGripPoint::OnLButtonDown(unsigned int, CGePoint2d point) {
    m_InEdit = 0;
    if (m_pObject == nullptr) {
        return TakeGrip(point);
    }
    if (IsOrthoOn()) {
        OrthoStep(m_GripPoint, point);
    }
    m_Memory.Restore(m_pObject);
    MoveGrip(point - m_GripPoint);
    RequestRedraw();
    return RS_Done;
}

CCommandOperation::ResultState CCommandSelectGripPoint::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    if (m_InEdit != 0) {
        // A distance is being typed.
        return RS_Continue;
    }
    CCommandOperation::OnMouseMove(nFlags, point);
    if (m_pObject == nullptr) {
        return RS_Continue;
    }
    if (IsOrthoOn()) {
        OrthoStep(m_GripPoint, point);
    }
    if (m_PreviewDrawn != 0) {
        CViewDC dc(m_pWnd);
        InvertObject(&dc, m_pObject);
        m_PreviewDrawn = 0;
    }
    m_MoveVector = point - m_GripPoint;
    CViewDC dc(m_pWnd);
    ErasShirrLine();
    if (!PlaceEditBox(m_GripPoint, point, m_MoveVector)) {
        return RS_Continue;
    }
    DrawShirrLine(m_GripPoint, point);
    InvertObject(&dc, m_pObject);
    m_PreviewDrawn = 1;
    return RS_Continue;
}

void CCommandSelectGripPoint::PreRedraw() {
    if (m_PreviewDrawn != 0 && Options().previewsReturn) {
        CViewDC dc(m_pWnd);
        InvertObject(&dc, m_pObject);
        m_PreviewDrawn = 0;
    }
}

CCommandOperation::ResultState CCommandSelectGripPoint::OnRButtonDown(unsigned int, CGePoint2d) {
    if (m_pObject != nullptr) {
        m_Memory.Restore(m_pObject);
    }
    RequestRedraw();
    return RS_Done;
}

int CCommandSelectGripPoint::OnGetGripPoint(CDrawable* object, int gripIndex, CGePoint2d) {
    // Compatibility 100: the veto of a taken grip may meet another grip.
    // `gripIndex` counts the grips of the search's mask, m_GripIndex those of mask 5.
    return object == m_pObject && gripIndex == m_GripIndex ? 0 : 1;
}

// ---- The grip ------------------------------------------------------------------------------------------------------

CCommandOperation::ResultState CCommandSelectGripPoint::TakeGrip(const CGePoint2d& point) {
    const int aperture = ApertureUnits(kPickAperture);
    const CDrawableArray& selected = *m_pDocument->GetSelectedDrawableObjs();
    CGePointArray grips;
    for (INT_PTR i = 0; i < selected.GetSize(); ++i) {
        CDrawable* object = selected.GetAt(i);
        ClearScratch(grips);
        // The same grips as are painted, whatever the snap mode.
        object->getGripPoints(grips, kGripPainted);
        for (INT_PTR g = 0; g < grips.GetSize(); ++g) {
            if (!IsWithin(grips[g], point, aperture)) {
                continue;
            }
            m_pObject = object;
            Hold(object);
            m_GripIndex = static_cast<int>(g);
            m_GripPoint = grips[g];
            m_Memory.Store(m_pObject, Options().modifiedByChange);
            m_LastPoint = m_GripPoint;
            return RS_Capture;
        }
    }
    return RS_Continue;
}

void CCommandSelectGripPoint::MoveGrip(const CGeVector2d& v) {
    CIndexArray indices;
    indices.Add(m_GripIndex);
    m_pObject->moveGripPointsAt(indices, v);
    if (Options().modifiedByChange) {
        CDrawableArray moved;
        moved.Add(m_pObject);
        if (!m_Memory.IsEqualTo(moved)) {
            NoteChange();
        }
    }
}
