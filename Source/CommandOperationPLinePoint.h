// The commands that add vertices to polylines and remove them, a click each, until the right button.
// Layer 9: command operations.
#pragma once

#include "CommandOperation.h"

// Both show no snap marker and a cursor of their own.
//
// | event        | action                                                       | result      |
// |--------------|--------------------------------------------------------------|-------------|
// | move         | -                                                            | RS_Continue |
// | left button  | one vertex more or less on the polyline hit; always repaint  | RS_Continue |
// | right button | -                                                            | RS_Done     |
class CCommandOperation_PLine_AddPoint : public CCommandOperation {
    DECLARE_DYNAMIC(CCommandOperation_PLine_AddPoint)
public:
    CCommandOperation_PLine_AddPoint(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                     CGraphicDocument* document);
    ~CCommandOperation_PLine_AddPoint() override;

    void Execute() override {}
    // The click becomes a vertex after the start of the segment hit.
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseMove(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Done; }
    ResultState OnKeyDown(unsigned int, unsigned int, unsigned int) override { return RS_Continue; }
    void PreRedraw() override {}
    ResultState OnSetCursor(CWnd* wnd, unsigned int nHitTest, unsigned int message) override;
};

class CCommandOperation_PLine_RemovePoint : public CCommandOperation {
    DECLARE_DYNAMIC(CCommandOperation_PLine_RemovePoint)
public:
    CCommandOperation_PLine_RemovePoint(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                        CGraphicDocument* document);
    ~CCommandOperation_PLine_RemovePoint() override;

    void Execute() override {}
    // Removes the vertex nearest to the click, as long as three remain. Raises the invalid-argument exception when all
    // of them are a million units away or more.
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseMove(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Done; }
    ResultState OnKeyDown(unsigned int, unsigned int, unsigned int) override { return RS_Continue; }
    void PreRedraw() override {}
    ResultState OnSetCursor(CWnd* wnd, unsigned int nHitTest, unsigned int message) override;
};
