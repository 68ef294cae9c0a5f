// CCommandOperationOffset: moves a two-vertex polyline sideways and leaves a copy where it was.
// Layer 9: command operations.
#pragma once

#include "ObjectMemory.h"
#include "PlainOperation.h"

class CPLine;

// The offset is defined for a polyline of two vertices. For every other object the clicks have the same
// effect with a distance of zero: copy and object lie at one place.
//
// | m_pObject | event        | action                                                     | result     |
// |-----------|--------------|------------------------------------------------------------|------------|
// | null      | move         | marker                                                     | RS_Continue|
// | null      | left button  | picks the undermost object hit that is not selected        | RS_Capture |
// | set       | move         | marker; edit box and band; none while a distance is typed  | RS_Continue|
// | set       | left button  | copy; the object moved to the side and as far as the click | RS_Done    |
// | set       | Execute      | copy; the object moved by the typed distance               | ended      |
// | any       | right button | nothing selected any more                                  | RS_Done    |
class CCommandOperationOffset : public COperationOf<CCommandOperation> {
    DECLARE_DYNAMIC(CCommandOperationOffset)
public:
    using COperationOf::COperationOf;

    void Execute() override;
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;
    void PreRedraw() override {}

protected:
    // The sideways move that the point asks for; `out` is unchanged where no offset is defined.
    virtual void GetOffsetMatrix(CGeMatrix2d& out, CGePoint2d point);
    virtual void DoOffsetPreview(CGePoint2d point);

private:
    void Pick(const CGePoint2d& point);
    // A new object of the same class takes the former place, at the very bottom; nothing is selected any more.
    void KeepFormerState();
    // The picked object where it is a polyline of two vertices, else null.
    CPLine* TwoVertexPolyline();
    // `distance` drawing units across the polyline, to the side of the point.
    static CGeVector2d Sideways(CPLine* line, const CGePoint2d& point, double distance);

    CGePoint2d m_PickPoint;
    CGePoint2d m_CursorPoint;       // Of the last move.
    CGeVector2d m_MoveVector;       // Cursor minus pick point; only the edit box follows it.
    CDrawable* m_pObject = nullptr; // Borrowed; null until picked.
    CObjectMemory m_Memory;         // The object as it was when picked.
    int m_PreviewDrawn = 0;         // Stays 0: this command shows no inverted object.
};
