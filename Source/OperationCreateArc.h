// COperationCreateArc: an arc through three points, shown by inversion while the third is sought.
// Layer 9: command operations.
#pragma once

#include "OperationCreateCircle.h"

class CArc;

// | m_ClickCount | event        | action                                              | result       |
// |--------------|--------------|-----------------------------------------------------|--------------|
// | 0            | move         | marker; a band of no length (assistant lines)       | RS_Continue  |
// | 0            | left button  | first point; the arc is made and shown              | RS_Continue  |
// | 1            | move         | marker; a band drawn and taken off; one of no length| RS_Continue  |
// | 1            | left button  | second point                                        | RS_Continue  |
// | 2            | move         | marker; the arc, where there is one, by inversion   | RS_Continue  |
// | 2            | left button  | third point; the arc is added in any case           | RS_Done      |
// | 0            | right button | -                                                   | RS_Cancelled |
// | 1, 2         | right button | the arc is freed; its outline stays on the window   | RS_Cancelled |
class COperationCreateArc : public COperationCreateCircle {
    DECLARE_DYNAMIC(COperationCreateArc)
public:
    using COperationCreateCircle::COperationCreateCircle;

    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;

private:
    // Gives the arc through the two clicks and the point to the object. False, with the object unchanged, where the
    // three lie on a line.
    bool BendTo(const CGePoint2d& third);

    CGePoint2d m_ArcPoints[2];
    double m_ArcCenterX = 0.0; // The last result of the construction; radians.
    double m_ArcCenterY = 0.0;
    double m_ArcRadius = 0.0;
    double m_ArcStartAngle = 0.0;
    double m_ArcEndAngle = 0.0;
};
