// COperationCreateRectangle: four lines by two corners. A rectangle is not a kind of object.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

class CLine;

// | m_ClickCount | event        | action                                             | result       |
// |--------------|--------------|----------------------------------------------------|--------------|
// | 0            | move         | marker; a band of no length (assistant lines)      | RS_Continue  |
// | 0            | left button  | first corner; the four sides are made              | RS_Continue  |
// | 1            | move         | marker; band along the diagonal; sides by inversion| RS_Continue  |
// | 1            | left button  | the sides are added                                | RS_Done      |
// | any          | right button | sides off; the diagonal stays on the window        | RS_Cancelled |
class COperationCreateRectangle : public COperationOf<COperationCreateObjAb> {
    DECLARE_DYNAMIC(COperationCreateRectangle)
public:
    using COperationOf::COperationOf;

    void Execute() override {}
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;
    // Erases the sides and not the band, which the next band or the next repaint removes.
    void ErasShirrLine() override;

private:
    static constexpr int kSides = 4;

    void MakeSides();
    void SetSides(const CGePoint2d& corner);
    void InvertSides();
    // The four sides as one stroke, a pixel wide at every zoom.
    void InvertOutline(CDC* dc);

    CGePoint2d m_FirstCorner;
    CLine* m_Lines[kSides] = {}; // From the first click on; owned until they are given to the document.
    int m_PreviewDrawn = 0;      // The four sides are drawn inverted on the window.
};
