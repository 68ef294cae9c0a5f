// CCommandSelectGripPoint: moves one grip of one selected object. Layer: command operations.

#include "CommandSelectGripPoint.h"

#include "Document.h"

IMPLEMENT_DYNAMIC(CCommandSelectGripPoint, CCommandOperation)

namespace {

constexpr UINT kMemoryGrow = 1024;
constexpr UINT kArchiveBuffer = 4096;

} // namespace

CCommandSelectGripPoint::CCommandSelectGripPoint(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                                 CGraphicDocument* document)
    : CCommandOperation(wnd, graphic, tran, document), m_Memory(kMemoryGrow) {}

// ---- Events --------------------------------------------------------------------------------------------------------

void CCommandSelectGripPoint::Execute() {
    if (m_pObject != nullptr) {
        const CGePoint2d target = m_GripPoint + m_MoveVector.normal() * static_cast<double>(TypedDistance());
        Restore();
        MoveGrip(target - m_GripPoint);
    }
    // The window is taken first: the next call deletes this tool.
    CWnd* wnd = m_pWnd;
    EndRunningOperation();
    RequestRedrawOf(wnd);
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
    Restore();
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
        CClientDC dc(m_pWnd);
        InvertObject(&dc, m_pObject);
    }
    m_MoveVector = point - m_GripPoint;
    CClientDC dc(m_pWnd);
    ErasShirrLine();
    PlaceEditBox(m_GripPoint, point, m_MoveVector);
    DrawShirrLine(m_GripPoint, point);
    InvertObject(&dc, m_pObject);
    m_PreviewDrawn = 1;
    return RS_Continue;
}

CCommandOperation::ResultState CCommandSelectGripPoint::OnRButtonDown(unsigned int, CGePoint2d) {
    Restore();
    RequestRedraw();
    return RS_Done;
}

int CCommandSelectGripPoint::OnGetGripPoint(CDrawable* object, int gripIndex, CGePoint2d) {
    // The index counts in the search's own mask. Under another mask than 5 it may mean another grip; so be it.
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
            m_GripIndex = static_cast<int>(g);
            m_GripPoint = grips[g];
            CArchive ar(&m_Memory, CArchive::store, kArchiveBuffer);
            m_pObject->Serialize(ar);
            ar.Close();
            m_LastPoint = m_GripPoint;
            return RS_Capture;
        }
    }
    return RS_Continue;
}

void CCommandSelectGripPoint::Restore() {
    if (m_pObject == nullptr) {
        return;
    }
    m_Memory.Seek(0, CFile::begin);
    CArchive ar(&m_Memory, CArchive::load, kArchiveBuffer);
    m_pObject->Serialize(ar);
}

void CCommandSelectGripPoint::MoveGrip(const CGeVector2d& v) {
    CIndexArray indices;
    indices.Add(m_GripIndex);
    m_pObject->moveGripPointsAt(indices, v);
}
