// COperationCreateLine: a line by two clicks, with rubber band, snap and ortho lock.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

// | m_ClickCount | event        | action                                          | result       |
// |--------------|--------------|-------------------------------------------------|--------------|
// | 0            | move         | marker; a band of no length (assistant lines)   | RS_Continue  |
// | 0            | left button  | start point                                     | RS_Continue  |
// | 1            | move         | ortho; marker; band from the start              | RS_Continue  |
// | 1            | left button  | ortho; the line is added                        | RS_Done      |
// | any          | right button | band off                                        | RS_Cancelled |
class COperationCreateLine : public COperationOf<COperationCreateObjAb> {
    DECLARE_DYNAMIC(COperationCreateLine)
public:
    using COperationOf::COperationOf;

    void Execute() override {}
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;

private:
    CGePoint2d m_StartPoint;
};
