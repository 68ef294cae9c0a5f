#include "CommandOperationTrans.h"

#include "Document.h"
#include "EditingOptions.h"
#include "VectorGraphic.h"

#include <algorithm>
#include <memory>
#include <vector>

IMPLEMENT_DYNAMIC(CCommandOperationTrans, CCommandOperation)
IMPLEMENT_DYNAMIC(CCommandOperationTranslation, CCommandOperationTrans)
IMPLEMENT_DYNAMIC(CCommandOperationRotation, CCommandOperationTrans)
IMPLEMENT_DYNAMIC(CCommandOperationMirroring, CCommandOperationTrans)
IMPLEMENT_DYNAMIC(CCommandOperationCopy, CCommandOperationTrans)

CCommandOperationTrans::CCommandOperationTrans(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                               CGraphicDocument* document)
    : COperationOf(wnd, graphic, tran, document) {
    m_Objects.Copy(*graphic->GetDocument()->GetSelectedDrawableObjs());
    for (INT_PTR i = 0; i < m_Objects.GetSize(); ++i) {
        Hold(m_Objects[i]);
    }
}

// ---- Events --------------------------------------------------------------------------------------------------------

CCommandOperation::ResultState CCommandOperationTrans::OnLButtonDown(unsigned int, CGePoint2d point) {
    if (m_Step == 0) {
        m_BasePoint = point;
        m_Memory.Store(m_Objects, Options().modifiedByChange);
        m_Step = 1;
        return RS_Capture;
    }
    DoTransPreview(point);
    const CKxAliveToken running(m_Alive);
    const int answer = AfxMessageBox(L"是否保留原对象?", MB_YESNO, 0);
    if (!GoesOn(running)) {
        // While the question was open, a host has started another command, or freed the objects.
        return RS_Continue;
    }
    if (Options().previewsReturn) {
        DoTransPreview(point); // A paint during the question has moved the preview to the last mouse position.
    }
    NoteMove();
    if (answer == IDYES) {
        KeepOriginals();
    }
    RequestRedraw();
    return RS_Done;
}

CCommandOperation::ResultState CCommandOperationTrans::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    CCommandOperation::OnMouseMove(nFlags, point);
    if (m_Step == 1 && !m_Objects.IsEmpty()) {
        DoTransPreview(point);
    }
    return RS_Continue;
}

void CCommandOperationTrans::Cancel() {
    if (m_Step == 1 && Options().modifiedByChange) {
        m_Memory.Restore(m_Objects);
        RequestRedraw();
    }
}

void CCommandOperationTrans::PreRedraw() {
    if (m_PreviewDrawn != 0 && Options().previewsReturn) {
        InvertObjects();
        m_PreviewDrawn = 0;
        m_Memory.Restore(m_Objects);
    }
}

// Compatibility 19: the right button before the base point raises an exception.
CCommandOperation::ResultState CCommandOperationTrans::OnRButtonDown(unsigned int, CGePoint2d) {
    if (m_Step == 0 && Options().transformsEndEarly) {
        return RS_Done;
    }
    // Before the base point the memory is empty, and with a selection reading it raises CArchiveException: nothing here
    // catches that, and the tool stays the running one.
    m_Memory.Restore(m_Objects);
    RequestRedraw();
    return RS_Done;
}

// ---- Moving the objects --------------------------------------------------------------------------------------------

void CCommandOperationTrans::DoTransPreview(CGePoint2d point) {
    if (m_PreviewDrawn != 0) {
        InvertObjects();
    }
    CObjectMemoryReader reader(m_Memory);
    CGeMatrix2d matrix;
    GetTransMatrix(matrix, point);
    for (INT_PTR i = 0; i < m_Objects.GetSize(); ++i) {
        reader.Read(m_Objects[i]);
        m_Objects[i]->transformBy(matrix);
    }
    ErasShirrLine();
    DrawShirrLine(m_BasePoint, point);
    InvertObjects();
    m_PreviewDrawn = 1;
}

void CCommandOperationTrans::InvertObjects() {
    CViewDC dc(m_pWnd);
    for (INT_PTR i = 0; i < m_Objects.GetSize(); ++i) {
        InvertObject(&dc, m_Objects[i]);
    }
}

int CCommandOperationTrans::OnGetGripPoint(CDrawable* object, int, CGePoint2d) {
    if (m_Step == 0 || !Options().noSelfSnap) {
        return 1;
    }
    CDrawable* const* objects = m_Objects.GetData();
    return std::find(objects, objects + m_Objects.GetSize(), object) == objects + m_Objects.GetSize();
}

void CCommandOperationTrans::NoteMove() {
    if (Options().modifiedByChange && !m_Memory.IsEqualTo(m_Objects)) {
        NoteChange();
    }
}

void CCommandOperationTrans::KeepOriginals() {
    // Compatibility 101: copies have the number of their originals and are not registered.
    // The existing objects are at their new place, and new objects take the old one.
    if (!m_Objects.IsEmpty()) {
        NoteChange();
    }
    std::vector<std::unique_ptr<CDrawable>> originals;
    originals.reserve(static_cast<size_t>(m_Objects.GetSize()));
    for (INT_PTR i = 0; i < m_Objects.GetSize(); ++i) {
        originals.emplace_back(static_cast<CDrawable*>(m_Objects[i]->GetRuntimeClass()->CreateObject()));
        m_Objects[i]->SetDrawState(CDrawable::Normal);
    }
    CObjectMemoryReader reader(m_Memory);
    for (std::unique_ptr<CDrawable>& original : originals) {
        if (original == nullptr) {
            // A kind of a host that its class record cannot create gets no copy. Where the next object begins in the
            // memory is then unknown, so the others get none either.
            break;
        }
        reader.Read(original.get());
        m_pDocument->AddDrawAobject(original.get());
        original.release()->SetDrawState(CDrawable::Normal);
    }
    m_pDocument->RemoveAllSelected();
}

// ---- The matrices --------------------------------------------------------------------------------------------------

void CCommandOperationTranslation::GetTransMatrix(CGeMatrix2d& out, CGePoint2d point) {
    out = CGeMatrix2d::translation(point - m_BasePoint);
}

void CCommandOperationRotation::GetTransMatrix(CGeMatrix2d& out, CGePoint2d point) {
    const CGeVector2d v = point - m_BasePoint;
    const bool downwards = CGeVector2d(1.0, 0.0).CrossProduct(v) < 0.0;
    const double turn = downwards ? -(kHalfTurn - (v * -1.0).angle()) : v.angle();
    out = CGeMatrix2d::rotation(turn, m_BasePoint);
}

void CCommandOperationMirroring::GetTransMatrix(CGeMatrix2d& out, CGePoint2d point) {
    out = CGeMatrix2d::mirroring(m_BasePoint, point);
}

void CCommandOperationCopy::GetTransMatrix(CGeMatrix2d& out, CGePoint2d point) {
    out = CGeMatrix2d::translation(point - m_BasePoint);
}

CCommandOperation::ResultState CCommandOperationCopy::OnLButtonDown(unsigned int nFlags, CGePoint2d point) {
    if (m_Step == 0) {
        return CCommandOperationTrans::OnLButtonDown(nFlags, point);
    }
    DoTransPreview(point);
    NoteMove();
    KeepOriginals();
    RequestRedraw();
    return RS_Done;
}
