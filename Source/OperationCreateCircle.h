// COperationCreateCircle: a circle by centre and radius, shown by inversion while it grows.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

// | m_ClickCount | event        | action                                              | result       |
// |--------------|--------------|-----------------------------------------------------|--------------|
// | 0            | move         | marker; a band of no length (assistant lines)       | RS_Continue  |
// | 0            | left button  | centre; the circle is made and shown                | RS_Continue  |
// | 1            | move         | marker; band; radius; circle by inversion           | RS_Continue  |
// | 1            | left button  | the circle of the last move is added                | RS_Done      |
// | 0            | right button | -                                                   | RS_Cancelled |
// | 1            | right button | the circle is freed; its outline stays on the window| RS_Cancelled |
class COperationCreateCircle : public COperationOf<COperationCreateObjAb> {
    DECLARE_DYNAMIC(COperationCreateCircle)
public:
    using COperationOf::COperationOf;

    void Execute() override {}
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;
    // Takes off the band and the object.
    void ErasShirrLine() override;

protected:
    // Refuses snap points of the object that is being drawn, where the editing options say so.
    int OnGetGripPoint(CDrawable* object, int gripIndex, CGePoint2d point) override;
    // Makes `object` the object being built, in the state Dragging, and shows it.
    void Show(CDrawable* object);
    void InvertCurrentObject();
    // Gives the object to the document, in the state Normal.
    void KeepCurrentObject();

    CGePoint2d m_CenterPoint; // The first click.
    int m_ObjectDrawn = 0;    // The object is drawn inverted on the window.
};
