// CCommandOperationRTPAN: pans the view with the left button until the right one.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

// Works in client pixels, because the drawing point under a pixel changes with the pan itself. The end of the command
// leaves the view where it is.
//
// | event                     | action                     | result      |
// |---------------------------|----------------------------|-------------|
// | left button               | the place to pan from      | RS_Continue |
// | move, left button held    | the origin moves; repaint  | RS_Continue |
// | move, without it          | -                          | RS_Continue |
// | right button              | -                          | RS_Done     |
class CCommandOperationRTPAN : public CPlainOperation {
    DECLARE_DYNAMIC(CCommandOperationRTPAN)
public:
    using CPlainOperation::CPlainOperation;
    ~CCommandOperationRTPAN() override;

    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Done; }
    ResultState OnMouseMoveForL(unsigned int nFlags, CPoint point) override;
    ResultState OnButtonDownForL(unsigned int nFlags, CPoint point) override;
    ResultState OnSetCursor(CWnd* wnd, unsigned int nHitTest, unsigned int message) override;

private:
    HCURSOR m_hPanCursor = nullptr; // Loaded when first needed.
    CGePoint2d m_DownPoint;         // The last position of the pan, in client pixels.
};
