#include "CommandOperationRTPAN.h"

#include "resource.h"

IMPLEMENT_DYNAMIC(CCommandOperationRTPAN, CCommandOperation)

CCommandOperationRTPAN::~CCommandOperationRTPAN() {
    if (m_hPanCursor != nullptr) {
        ::DestroyCursor(m_hPanCursor);
    }
}

CCommandOperation::ResultState CCommandOperationRTPAN::OnMouseMoveForL(unsigned int nFlags, CPoint point) {
    if ((nFlags & MK_LBUTTON) == 0) {
        return RS_Continue;
    }
    const CGePoint2d pixel(point);
    const CGeVector2d d = pixel - m_DownPoint;
    m_pCoordTran->Pan(d);
    m_DownPoint = pixel;
    RequestRedraw();
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationRTPAN::OnButtonDownForL(unsigned int, CPoint point) {
    m_DownPoint = CGePoint2d(point);
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationRTPAN::OnSetCursor(CWnd*, unsigned int, unsigned int) {
    if (m_hPanCursor == nullptr) {
        m_hPanCursor = ::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(IDC_CURSOR_PAN));
    }
    if (m_hPanCursor == nullptr) {
        return RS_Continue;
    }
    ::SetCursor(m_hPanCursor);
    return RS_Done;
}
