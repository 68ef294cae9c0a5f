// CCommandSelectGripPoint: moves one grip of one selected object, by click, move and click, or by a typed distance.
// Layer 9: command operations.
#pragma once

#include "ObjectMemory.h"
#include "PlainOperation.h"

// Click, move, click: nothing happens on a release. The object itself stays as it is until the finishing click; what
// moves is the band, the edit box and the marker, and the object is drawn inverted at its unchanged place.
//
// | m_pObject | event        | action                                                     | result                    |
// |-----------|--------------|------------------------------------------------------------|---------------------------|
// | null      | left button  | takes the grip, stores the object                          | RS_Capture or RS_Continue |
// | set       | move         | marker; ortho; edit box, band, object inverted             | RS_Continue               |
// | set       | move, typing | none                                                       | RS_Continue               |
// | set       | left button  | ortho; the object as stored, its grip moved to the click   | RS_Done                   |
// | set       | right button | the object as stored                                       | RS_Done                   |
// | set       | Execute      | the object as stored, its grip moved by the typed distance | ended                     |
// | set       | Cancel       | nothing selected any more; the object stays as it is       | ended                     |
class CCommandSelectGripPoint : public COperationOf<CCommandOperation> {
    DECLARE_DYNAMIC(CCommandSelectGripPoint)
public:
    using COperationOf::COperationOf;

    // Confirms the typed distance in the direction of the last mouse move, without the ortho lock. Ends the tool.
    void Execute() override;
    // When another tool takes over: clears the selection and leaves the object as it is.
    void Cancel() override;
    // Takes a grip (RS_Capture, or RS_Continue when none is there), then drops it (RS_Done).
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    // Restores the object.
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;
    void PreRedraw() override;

protected:
    // A grip does not snap to itself.
    int OnGetGripPoint(CDrawable* object, int gripIndex, CGePoint2d point) override;

private:
    ResultState TakeGrip(const CGePoint2d& point);
    void MoveGrip(const CGeVector2d& v);

    CGePoint2d m_GripPoint; // The grip taken, as the object reported it.
    CGeVector2d m_MoveVector;
    int m_GripIndex = -1;           // In the object's getGripPoints under mask 5.
    CDrawable* m_pObject = nullptr; // Borrowed; null until a grip was taken.
    CObjectMemory m_Memory;         // The object as it was at the first click.
    int m_PreviewDrawn = 0;
};
