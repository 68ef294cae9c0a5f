#include "OperationCreateObjAb.h"

#include "Document.h"
#include "GripReach.h"
#include "MemoryInfo.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(COperationCreateObjAb, CCommandOperation)

COperationCreateObjAb::COperationCreateObjAb(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                             CGraphicDocument* document)
    : CCommandOperation(wnd, graphic, tran, document) {
    m_ShirrDrawn = 0;
}

COperationCreateObjAb::~COperationCreateObjAb() {
    if (m_pCurrentObject == nullptr || !IsDocumentWhole() || m_pDocument->GetCurrentObject() != m_pCurrentObject) {
        return;
    }
    // A host may have added it to the drawing.
    const CDrawableArray& objects = *m_pDocument->GetDrawableObjs();
    const auto* end = objects.GetData() + objects.GetSize();
    if (std::find(objects.GetData(), end, m_pCurrentObject) == end) {
        DiscardCurrentObject();
    }
}

// ---- Events --------------------------------------------------------------------------------------------------------

void COperationCreateObjAb::Execute() {}

CCommandOperation::ResultState COperationCreateObjAb::OnLButtonDown(unsigned int, CGePoint2d point) {
    m_LastPoint = point;
    ++m_ClickCount;
    return RS_Continue;
}

CCommandOperation::ResultState COperationCreateObjAb::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    return CCommandOperation::OnMouseMove(nFlags, point);
}

CCommandOperation::ResultState COperationCreateObjAb::OnRButtonDown(unsigned int, CGePoint2d) {
    m_ClickCount = 0;
    return RS_Cancelled;
}

void COperationCreateObjAb::PreRedraw() {
    ErasShirrLine();
}

// ---- The object being built ----------------------------------------------------------------------------------------

int COperationCreateObjAb::AddCurrentObjectToDocument() {
    if (m_pCurrentObject == nullptr) {
        return 0;
    }
    try {
        Hold(m_pCurrentObject);
    } catch (...) {
        // Without memory to watch the object, it is freed, and the next click makes another one.
        DiscardCurrentObject();
        throw;
    }
    m_pDocument->AddCurrentObject(m_pCurrentObject);
    return 1;
}

void COperationCreateObjAb::RemoveCurrentObjectAtDocument() {
    m_pDocument->removeCurrentObject();
}

void COperationCreateObjAb::OnCreateObject(CDrawable* object) {
    if (object != nullptr) {
        object->SetPenColorIndex(m_pDocument->GetFGColorIndex());
    }
}

void COperationCreateObjAb::DiscardCurrentObject() {
    RemoveCurrentObjectAtDocument();
    if (m_pCurrentObject != nullptr) {
        KX_REMOVE_MEMORY(m_pCurrentObject);
        delete m_pCurrentObject;
        m_pCurrentObject = nullptr;
    }
}

// ---- Snap and tracking ---------------------------------------------------------------------------------------------

int COperationCreateObjAb::GetGripPoint(CGePoint2d point, CGePoint2d& result) {
    if (m_SnapEnabled == 0) {
        return 0;
    }
    CDrawableArray objects;
    objects.Copy(*m_pDocument->GetDrawableObjs());
    objects.Append(*m_pDocument->GetNetDrawableObjs());
    if (m_pCurrentObject != nullptr) {
        objects.Add(m_pCurrentObject);
    }
    const int aperture = ApertureUnits(kSnapAperture);
    CGePointArray candidates;
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CDrawable* object = objects[i];
        if (object->GetIsShow() == 0 || AreGripsFar(object, point, aperture)) {
            continue;
        }
        ClearScratch(candidates);
        if ((m_OsnapMode & kOsnapPerpendicular) != 0 && m_ClickCount > 0) {
            object->GetClosetPt(m_LastPoint, candidates);
        }
        object->getGripPoints(candidates, m_OsnapMode);
        if (FindCandidate(object, candidates, point, aperture, result) != 0) {
            return 1;
        }
    }
    return 0;
}

void COperationCreateObjAb::MoveMarkerAndTrack(unsigned int nFlags, const CGePoint2d& point) {
    if (COperationCreateObjAb::OnMouseMove(nFlags, point) == RS_Continue) {
        TrackGripPoint(point);
    }
}
