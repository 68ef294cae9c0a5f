#include "OperationCreateArc.h"

#include "Arc.h"
#include "Document.h"
#include "MemoryInfo.h"

IMPLEMENT_DYNAMIC(COperationCreateArc, COperationCreateCircle)

CCommandOperation::ResultState COperationCreateArc::OnLButtonDown(unsigned int, CGePoint2d point) {
    if (m_ClickCount == 0) {
        m_CenterPoint = point;
        auto* arc = new CArc;
        KX_ADD_MEMORY(arc);
        OnCreateObject(arc);
        arc->SetCenter(point);
        Show(arc);
        m_ArcPoints[0] = point;
        m_LastPoint = point;
        ++m_ClickCount;
        return RS_Continue;
    }
    if (m_ClickCount == 1) {
        m_ArcPoints[1] = point;
        m_LastPoint = point;
        ++m_ClickCount;
        return RS_Continue;
    }
    ErasShirrLine();
    KeepCurrentObject();
    // Compatibility 18: three points on a line make an arc.
    // The third point ends the command too: the arc keeps the values of the last good move or, without one, its first
    // ones.
    BendTo(point);
    RequestRedraw();
    RemoveCurrentObjectAtDocument();
    return RS_Done;
}

CCommandOperation::ResultState COperationCreateArc::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the circle's own preview is left out.
    COperationCreateObjAb::OnMouseMove(nFlags, point);
    ErasShirrLine();
    switch (m_ClickCount) {
    case 0:
        DrawShirrLine(point, point);
        break;
    case 1:
        // Compatibility 105: the band between the first two clicks of an arc is not visible.
        // The band from the first point is drawn and erased at once, so that only assistant lines are visible. The
        // sequence of drawing calls is part of the required behaviour.
        DrawShirrLine(m_CenterPoint, point);
        ErasShirrLine();
        DrawShirrLine(point, point);
        break;
    default:
        if (!(m_ArcPoints[1] == m_ArcPoints[0]) && BendTo(point)) {
            InvertCurrentObject();
            m_ObjectDrawn = 1;
        }
        break;
    }
    return RS_Continue;
}

bool COperationCreateArc::BendTo(const CGePoint2d& third) {
    if (CArc::Calarc(m_ArcPoints[0], m_ArcPoints[1], third, &m_ArcCenterX, &m_ArcCenterY, &m_ArcRadius,
                     &m_ArcStartAngle, &m_ArcEndAngle) != 1) {
        return false;
    }
    auto* arc = static_cast<CArc*>(m_pCurrentObject);
    arc->SetStartAngle(m_ArcStartAngle);
    arc->SetEndAngle(m_ArcEndAngle);
    arc->SetCenter(CGePoint2d(m_ArcCenterX, m_ArcCenterY));
    arc->setRadius(m_ArcRadius);
    return true;
}
