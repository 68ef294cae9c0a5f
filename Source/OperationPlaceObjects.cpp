#include "OperationPlaceObjects.h"

#include "EditingOptions.h"
#include "MemoryInfo.h"
#include "ObjectStream.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

IMPLEMENT_DYNAMIC(COperationPlaceObjects, CCommandOperation)

COperationPlaceObjects* COperationPlaceObjects::Make(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                                     CGraphicDocument* document, const void* bytes, size_t length) {
    std::unique_ptr<COperationPlaceObjects> tool(new COperationPlaceObjects(wnd, graphic, tran, document));
    if (bytes == nullptr || length == 0) {
        return nullptr;
    }
    tool->m_Bytes.SetSize(static_cast<INT_PTR>(length));
    std::memcpy(tool->m_Bytes.GetData(), bytes, length);
    if (!tool->Load()) {
        return nullptr;
    }
    KX_ADD_MEMORY(tool.get());
    return tool.release();
}

COperationPlaceObjects::~COperationPlaceObjects() {
    Free();
}

// ---- Events --------------------------------------------------------------------------------------------------------

void COperationPlaceObjects::Cancel() {
    RequestRedraw(); // The repaint erases the preview.
}

CCommandOperation::ResultState COperationPlaceObjects::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    CCommandOperation::OnMouseMove(nFlags, point);
    if (m_Drawn) {
        InvertObjects();
    }
    const CGeMatrix2d matrix = CGeMatrix2d::translation(point - m_At);
    for (INT_PTR i = 0; i < m_Objects.GetSize(); ++i) {
        m_Objects[i]->transformBy(matrix);
    }
    m_At = point;
    InvertObjects();
    m_Drawn = true;
    return RS_Continue;
}

CCommandOperation::ResultState COperationPlaceObjects::OnLButtonDown(unsigned int, CGePoint2d point) {
    // Loaded again from the stream, so that they are moved only once, however often the preview was moved.
    Free();
    if (!Load()) {
        return RS_Cancelled;
    }
    const CGeMatrix2d matrix = CGeMatrix2d::translation(point - m_At);
    m_pDocument->RemoveAllSelected();
    while (!m_Objects.IsEmpty()) {
        CDrawable* object = m_Objects[0];
        object->transformBy(matrix);
        m_pDocument->AddDrawAobject(object);
        m_Objects.RemoveAt(0); // From now on the drawing owns it.
        if (object->isCanSelect() != 0) {
            m_pDocument->AddSelected(object);
        }
    }
    m_pDocument->SetModifiedFlag(TRUE);
    RequestRedraw();
    return RS_Done;
}

CCommandOperation::ResultState COperationPlaceObjects::OnRButtonDown(unsigned int, CGePoint2d) {
    RequestRedraw();
    return RS_Cancelled;
}

void COperationPlaceObjects::PreRedraw() {
    if (m_Drawn && Options().previewsReturn) {
        InvertObjects(); // Erased here, because it may reach beyond the part that is repainted.
    }
    m_Drawn = false; // The repaint wipes the preview.
}

// ---- The objects ---------------------------------------------------------------------------------------------------

bool COperationPlaceObjects::Load() {
    if (!CObjectStream::Load(m_Bytes.GetData(), static_cast<size_t>(m_Bytes.GetSize()), m_Objects)) {
        return false;
    }
    m_At = Corner();
    return true;
}

void COperationPlaceObjects::Free() {
    for (INT_PTR i = 0; i < m_Objects.GetSize(); ++i) {
        KX_REMOVE_MEMORY(m_Objects[i]);
        delete m_Objects[i];
    }
    m_Objects.RemoveAll();
}

CGePoint2d COperationPlaceObjects::Corner() {
    CGePoint2d corner;
    bool found = false;
    for (INT_PTR i = 0; i < m_Objects.GetSize(); ++i) {
        CGePoint2d min;
        CGePoint2d max;
        try {
            if (m_Objects[i]->GetRect(m_pCoordTran, min, max) == 0) {
                continue;
            }
        } catch (CException* e) {
            e->Delete(); // A polyline without vertices.
            continue;
        }
        const CGePoint2d least(std::min(min.x, max.x), std::min(min.y, max.y));
        if (!std::isfinite(least.x) || !std::isfinite(least.y)) {
            continue;
        }
        corner = found ? CGePoint2d(std::min(corner.x, least.x), std::min(corner.y, least.y)) : least;
        found = true;
    }
    return corner;
}

void COperationPlaceObjects::InvertObjects() {
    CViewDC dc(m_pWnd);
    for (INT_PTR i = 0; i < m_Objects.GetSize(); ++i) {
        InvertObject(&dc, m_Objects[i]);
    }
}
