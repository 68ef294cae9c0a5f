// COperationCreateLabel: a dimension by the two measured ends and the height of its line.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

class CKXVectorLabel;

// | m_ClickCount | event        | action                                             | result       |
// |--------------|--------------|----------------------------------------------------|--------------|
// | 0            | move         | marker, and no band                                | RS_Continue  |
// | 0            | left button  | left end; the label is made and shown              | RS_Continue  |
// | 1            | move         | band from the left end; marker                     | RS_Continue  |
// | 1            | left button  | right end; the label is drawn once                 | RS_Continue  |
// | 2            | move         | band off; label off, its height, label on; marker  | RS_Continue  |
// | 2            | left button  | band off; the label is added with this height      | RS_Done      |
// | any          | right button | the label is freed; repaint                        | RS_Cancelled |
class COperationCreateLabel : public COperationOf<COperationCreateObjAb> {
    DECLARE_DYNAMIC(COperationCreateLabel)
public:
    using COperationOf::COperationOf;

    // COLORREF.
    void SetLabelColor(COLORREF color) { m_LabelColor = color; }

    void Execute() override {}
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;
    void ErasShirrLine() override;
    void PreRedraw() override;

protected:
    // A label has its own colour, whatever the document's foreground.
    void OnCreateObject(CDrawable* object) override;
    int OnGetGripPoint(CDrawable* object, int gripIndex, CGePoint2d point) override;

private:
    CKXVectorLabel* Label();
    void DrawLabel();
    // Moves the dimension line so that it passes through the point, parallel to the measured line.
    void SetHeight(const CGePoint2d& point);

    CGePoint2d m_FirstPoint;  // Left end.
    CGePoint2d m_SecondPoint; // Right end.
    int m_ObjectDrawn = 0;    // The label has been drawn by inversion; asked where previews return.
    COLORREF m_LabelColor = 0xFFFFFF;
};
