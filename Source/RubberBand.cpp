// CCommandOperationManager: the rubber band, tracked grips and assistant lines, all drawn by inversion.
// Layer 10: manager.

#include "CommandOperationManager.h"

#include "GdiScope.h"

namespace {

constexpr COLORREF kBandColor = 0xFFFFFF;

// Where an axis-parallel line leaves the window: at `size` when it runs from `from` towards higher pixels, else at 0.
int EdgeBeyond(int from, int to, int size) {
    return from <= to ? size : 0;
}

} // namespace

CRect CCommandOperationManager::ClientRect() const {
    CRect rect(0, 0, 0, 0);
    if (m_pWnd->GetSafeHwnd() != nullptr) {
        m_pWnd->GetClientRect(&rect);
    }
    return rect;
}

// ---- The rubber band -----------------------------------------------------------------------------------------------

void CCommandOperationManager::DrawShirrLine(CPoint p1, CPoint p2, int erasing) {
    ErasShirrLine();
    m_ShirrStart = p1;
    m_ShirrEnd = p2;
    const bool sameX = p1.x == p2.x;
    const bool sameY = p1.y == p2.y;
    // An axis-parallel band is dotted and extended to the edge of the window, like a tracking line. A band of no length
    // keeps the pen style of the one before it.
    if (!sameX && !sameY) {
        m_ShirrPenStyle = PS_SOLID;
    } else if (sameY && !sameX) {
        m_ShirrEnd.x = EdgeBeyond(p1.x, p2.x, ClientRect().Width());
        m_ShirrPenStyle = PS_DOT;
    } else if (sameX && !sameY) {
        m_ShirrEnd.y = EdgeBeyond(p1.y, p2.y, ClientRect().Height());
        m_ShirrPenStyle = PS_DOT;
    }
    CViewDC dc(m_pWnd);
    dc.SetBkMode(TRANSPARENT);
    {
        CPen pen(m_ShirrPenStyle, 0, kBandColor);
        CScopedPen selected(&dc, &pen);
        dc.SetROP2(R2_NOT);
        dc.MoveTo(m_ShirrStart);
        dc.LineTo(m_ShirrEnd);
    }
    m_ShirrDrawn = 1;
    if (erasing == 0) {
        DrawAssistantLine(&dc, p2);
    } else {
        ErasDrawAssistantLine(&dc);
    }
}

void CCommandOperationManager::ErasShirrLine() {
    if (m_ShirrDrawn != 0) {
        // Cleared first, because DrawShirrLine calls ErasShirrLine, which must find nothing to erase.
        m_ShirrDrawn = 0;
        DrawShirrLine(m_ShirrStart, m_ShirrEnd, 1);
        m_ShirrDrawn = 0;
    }
}

// ---- Tracked grips -------------------------------------------------------------------------------------------------

void CCommandOperationManager::AddGripPoint(CGePoint2d point) {
    for (INT_PTR i = 0; i < m_GripPoints.GetSize(); ++i) {
        if (m_GripPoints[i] == point) {
            return;
        }
    }
    m_GripPoints.Add(point);
}

int CCommandOperationManager::GetInTrackGripPoint(CPoint cursor, CGePoint2d& point) {
    int taken = 0;
    for (INT_PTR i = 0; i < m_GripPoints.GetSize(); ++i) {
        const CGePoint2d& grip = m_GripPoints[i];
        CPoint pixel;
        m_pCoordTran->DPToLP(grip, pixel);
        if (pixel == cursor) {
            point = grip;
            return 1;
        }
        if (pixel.x == cursor.x) {
            point.x = grip.x;
            taken = 1;
        } else if (pixel.y == cursor.y) {
            point.y = grip.y;
            taken = 1;
        }
    }
    return taken;
}

// ---- Assistant lines -----------------------------------------------------------------------------------------------

void CCommandOperationManager::DrawAssistantLine(CDC* dc, CPoint cursor) {
    m_ShirrDrawn = 1;
    m_AssistantPoints.RemoveAll();
    const CRect client = ClientRect();
    for (INT_PTR i = 0; i < m_GripPoints.GetSize(); ++i) {
        CPoint p;
        m_pCoordTran->DPToLP(m_GripPoints[i], p);
        CPoint c = cursor;
        if (p.x == c.x) {
            c.y = EdgeBeyond(p.y, c.y, client.Height());
        } else if (p.y == c.y) {
            c.x = EdgeBeyond(p.x, c.x, client.Width());
        } else {
            continue;
        }
        if (p == m_ShirrStart && c == m_ShirrEnd) {
            // This line is the rubber band itself: a second stroke would erase it.
            continue;
        }
        m_AssistantPoints.Add(p);
        m_AssistantPoints.Add(c);
    }
    if (m_AssistantPoints.IsEmpty()) {
        return;
    }
    CPen pen(PS_DOT, 0, kBandColor);
    CScopedPen selected(dc, &pen);
    for (INT_PTR i = 0; i + 1 < m_AssistantPoints.GetSize(); i += 2) {
        dc->MoveTo(m_AssistantPoints[i]);
        dc->LineTo(m_AssistantPoints[i + 1]);
    }
}

void CCommandOperationManager::ErasDrawAssistantLine(CDC* dc) {
    dc->SetBkMode(TRANSPARENT);
    for (INT_PTR i = 0; i + 1 < m_AssistantPoints.GetSize(); i += 2) {
        CPen pen(PS_DOT, 0, kBandColor);
        CScopedPen selected(dc, &pen);
        dc->MoveTo(m_AssistantPoints[i]);
        dc->LineTo(m_AssistantPoints[i + 1]);
    }
    m_AssistantPoints.RemoveAll();
}
