// The commands that add vertices to polylines and remove them, a click each, until the right button.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

// Both show no snap marker and a cursor of their own.
//
// | event        | action                                                       | result      |
// |--------------|--------------------------------------------------------------|-------------|
// | move         | -                                                            | RS_Continue |
// | left button  | one vertex more or less on the polyline hit; always repaint  | RS_Continue |
// | right button | -                                                            | RS_Done     |
class CCommandOperation_PLine_Point : public CPlainOperation {
public:
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Done; }
    ResultState OnSetCursor(CWnd* wnd, unsigned int nHitTest, unsigned int message) override;

protected:
    // `cursor` is the number of its resource.
    CCommandOperation_PLine_Point(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                  CGraphicDocument* document, UINT cursor);

private:
    UINT m_Cursor;
};

class CCommandOperation_PLine_AddPoint : public CCommandOperation_PLine_Point {
    DECLARE_DYNAMIC(CCommandOperation_PLine_AddPoint)
public:
    CCommandOperation_PLine_AddPoint(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                     CGraphicDocument* document);

    // The click becomes a vertex after the start of the segment hit.
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
};

class CCommandOperation_PLine_RemovePoint : public CCommandOperation_PLine_Point {
    DECLARE_DYNAMIC(CCommandOperation_PLine_RemovePoint)
public:
    CCommandOperation_PLine_RemovePoint(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                        CGraphicDocument* document);

    // Removes the vertex nearest to the click, as long as three remain. Raises the invalid-argument exception when all
    // of them are a million units away or more.
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
};
