#include "CommandOperationPLinePoint.h"

#include "Document.h"
#include "PLine.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CCommandOperation_PLine_AddPoint, CCommandOperation)
IMPLEMENT_DYNAMIC(CCommandOperation_PLine_RemovePoint, CCommandOperation)

namespace {

constexpr int kLeastVertices = 3;
constexpr double kFarthest = 1000000.0; // Drawing units; a vertex at this distance is not looked at.

// The polyline, if the object is one.
CPLine* AsPolyline(CDrawable* object) {
    return DYNAMIC_DOWNCAST(CPLine, object);
}

// The vertex nearest to the point, of several the first; -1 when all are too far.
int NearestVertex(const CGePointArray& vertices, const CGePoint2d& point) {
    double best = kFarthest;
    int index = -1;
    for (INT_PTR i = 0; i < vertices.GetSize(); ++i) {
        const double d = vertices.GetAt(i).distance(point);
        if (d < best) {
            best = d;
            index = static_cast<int>(i);
        }
    }
    return index;
}

} // namespace

CCommandOperation_PLine_Point::CCommandOperation_PLine_Point(CWnd* wnd, CVectorGraphic* graphic,
                                                             CVectorViewCoordTran* tran, CGraphicDocument* document,
                                                             UINT cursor)
    : CPlainOperation(wnd, graphic, tran, document), m_Cursor(cursor) {
    m_hCursor = nullptr; // The base has loaded a shared cursor, which needs no DestroyCursor.
}

CCommandOperation::ResultState CCommandOperation_PLine_Point::OnSetCursor(CWnd* wnd, unsigned int nHitTest,
                                                                          unsigned int message) {
    if (m_hCursor == nullptr) {
        m_hCursor = ::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(m_Cursor));
    }
    return CCommandOperation::OnSetCursor(wnd, nHitTest, message);
}

// ---- Adding --------------------------------------------------------------------------------------------------------

CCommandOperation_PLine_AddPoint::CCommandOperation_PLine_AddPoint(CWnd* wnd, CVectorGraphic* graphic,
                                                                   CVectorViewCoordTran* tran,
                                                                   CGraphicDocument* document)
    : CCommandOperation_PLine_Point(wnd, graphic, tran, document, IDC_CURSOR_ADD_POINT) {}

CCommandOperation::ResultState CCommandOperation_PLine_AddPoint::OnLButtonDown(unsigned int, CGePoint2d point) {
    if (CPLine* line = AsPolyline(FirstHit(point, RUNTIME_CLASS(CPLine)))) {
        line->InsertPoint(line->GetSelSelLine() + 1, point);
        NoteChange();
    }
    RequestRedraw();
    return RS_Continue;
}

// ---- Removing ------------------------------------------------------------------------------------------------------

CCommandOperation_PLine_RemovePoint::CCommandOperation_PLine_RemovePoint(CWnd* wnd, CVectorGraphic* graphic,
                                                                         CVectorViewCoordTran* tran,
                                                                         CGraphicDocument* document)
    : CCommandOperation_PLine_Point(wnd, graphic, tran, document, IDC_CURSOR_REMOVE_POINT) {}

CCommandOperation::ResultState CCommandOperation_PLine_RemovePoint::OnLButtonDown(unsigned int, CGePoint2d point) {
    CPLine* line = AsPolyline(FirstHit(point, RUNTIME_CLASS(CPLine)));
    if (line != nullptr && line->GetVertexCount() > kLeastVertices) {
        line->RemovePoint(NearestVertex(*line->GetPointList(), point));
        NoteChange();
    }
    RequestRedraw();
    return RS_Continue;
}
