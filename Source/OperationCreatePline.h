// COperationCreatePline: a polyline of straight segments, vertex by vertex, by clicks or typed lengths.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

class CPLine;

// m_ClickCount counts the clicked vertices.
//
// | m_ClickCount | event        | action                                                      | result      |
// |--------------|--------------|-------------------------------------------------------------|-------------|
// | 0            | move         | marker; a band of no length (assistant lines)               | RS_Continue |
// | 0            | left button  | the polyline is made and shown; its first vertex            | RS_Continue |
// | 1 and more   | move         | ortho; marker; edit box; band; none while typing            | RS_Continue |
// | 1 and more   | left button  | ortho; marker off; one more vertex                          | RS_Continue |
// | 1 and more   | Execute      | one more vertex by the typed length; added to the document  | stays       |
// | any          | right button | band off; what there is is added to the document            | RS_Done     |
// | any          | Cancel       | the same: another command does not throw the polyline away  | ended       |
class COperationCreatePline : public COperationOf<COperationCreateObjAb> {
    DECLARE_DYNAMIC(COperationCreatePline)
public:
    using COperationOf::COperationOf;
    ~COperationCreatePline() override;

    // The colour of a new polyline as 0xAARRGGBB, where the document's foreground is the default white.
    void SetColor(DWORD argb) { m_Color = argb; }

    void Execute() override;
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;

private:
    void StartPolyline();
    void AddVertex(CGePoint2d point);
    // Adds the polyline, if there is one, to the document, clears the current slot and repaints.
    void KeepPolyline();
    CPLine* Polyline();

    CGePointArray m_Points; // The vertices given so far; written only.
    CGePoint2d m_PrevPoint;
    CGeVector2d m_MoveVector; // Cursor minus last vertex, for a typed length.
    DWORD m_Color = 0xFFFFFFFF;
    bool m_InDocument = false; // A typed length has added it.
    int m_AddFront = 1;        // Nonzero: the finished polyline is put at the bottom of the drawing order.
};
