#include "OperationCreateLine.h"

#include "Document.h"
#include "Line.h"
#include "MemoryInfo.h"

IMPLEMENT_DYNAMIC(COperationCreateLine, COperationCreateObjAb)

void COperationCreateLine::Cancel() {
    DiscardCurrentObject();
}

CCommandOperation::ResultState COperationCreateLine::OnLButtonDown(unsigned int, CGePoint2d point) {
    m_LastPoint = point;
    ++m_ClickCount;
    if (m_ClickCount == 1) {
        m_StartPoint = point;
        TrackGripPoint(m_StartPoint);
        return RS_Continue;
    }
    if (IsOrthoOn()) {
        OrthoStep(m_StartPoint, point);
    }
    CTracedOwner<CLine> line(new CLine);
    KX_ADD_MEMORY(line.get());
    OnCreateObject(line.get());
    line->SetStartPoint(m_StartPoint);
    line->SetEndPoint(point);
    m_pDocument->AddDrawAobject(line.get());
    line.release();
    NoteChange();
    RequestRedraw();
    return RS_Done;
}

CCommandOperation::ResultState COperationCreateLine::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    if (m_ClickCount == 1 && IsOrthoOn()) {
        OrthoStep(m_StartPoint, point);
    }
    MoveMarkerAndTrack(nFlags, point);
    ErasShirrLine();
    DrawShirrLine(m_ClickCount == 0 ? point : m_StartPoint, point);
    return RS_Continue;
}

CCommandOperation::ResultState COperationCreateLine::OnRButtonDown(unsigned int, CGePoint2d) {
    ErasShirrLine();
    m_ClickCount = 0;
    return RS_Cancelled;
}
