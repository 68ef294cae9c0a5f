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

// On first need.
void LoadOnce(HCURSOR& cursor, UINT id) {
    if (cursor == nullptr) {
        cursor = ::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(id));
    }
}

void GiveBack(HCURSOR& cursor) {
    if (cursor != nullptr) {
        ::DestroyCursor(cursor);
        cursor = nullptr;
    }
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

// ---- Adding --------------------------------------------------------------------------------------------------------

CCommandOperation_PLine_AddPoint::CCommandOperation_PLine_AddPoint(CWnd* wnd, CVectorGraphic* graphic,
                                                                   CVectorViewCoordTran* tran,
                                                                   CGraphicDocument* document)
    : CCommandOperation(wnd, graphic, tran, document) {
    m_hCursor = nullptr; // The base has loaded a shared one, which needs no DestroyCursor.
}

CCommandOperation_PLine_AddPoint::~CCommandOperation_PLine_AddPoint() {
    GiveBack(m_hCursor);
}

CCommandOperation::ResultState CCommandOperation_PLine_AddPoint::OnLButtonDown(unsigned int, CGePoint2d point) {
    if (CPLine* line = AsPolyline(FirstHit(point, RUNTIME_CLASS(CPLine)))) {
        line->InsertPoint(line->GetSelSelLine() + 1, point);
        NoteChange();
    }
    RequestRedraw();
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperation_PLine_AddPoint::OnSetCursor(CWnd* wnd, unsigned int nHitTest,
                                                                             unsigned int message) {
    LoadOnce(m_hCursor, IDC_CURSOR_ADD_POINT);
    return CCommandOperation::OnSetCursor(wnd, nHitTest, message);
}

// ---- Removing ------------------------------------------------------------------------------------------------------

CCommandOperation_PLine_RemovePoint::CCommandOperation_PLine_RemovePoint(CWnd* wnd, CVectorGraphic* graphic,
                                                                         CVectorViewCoordTran* tran,
                                                                         CGraphicDocument* document)
    : CCommandOperation(wnd, graphic, tran, document) {
    m_hCursor = nullptr;
}

CCommandOperation_PLine_RemovePoint::~CCommandOperation_PLine_RemovePoint() {
    GiveBack(m_hCursor);
}

CCommandOperation::ResultState CCommandOperation_PLine_RemovePoint::OnLButtonDown(unsigned int, CGePoint2d point) {
    CPLine* line = AsPolyline(FirstHit(point, RUNTIME_CLASS(CPLine)));
    if (line != nullptr && line->GetVertexCount() > kLeastVertices) {
        line->RemovePoint(NearestVertex(*line->GetPointList(), point));
        NoteChange();
    }
    RequestRedraw();
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperation_PLine_RemovePoint::OnSetCursor(CWnd* wnd, unsigned int nHitTest,
                                                                                unsigned int message) {
    LoadOnce(m_hCursor, IDC_CURSOR_REMOVE_POINT);
    return CCommandOperation::OnSetCursor(wnd, nHitTest, message);
}
