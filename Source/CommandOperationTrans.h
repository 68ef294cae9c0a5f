// The transforming commands: translation, rotation, mirroring and copy of what was selected when the word came.
// Layer 9: command operations.
#pragma once

#include "ObjectMemory.h"
#include "PlainOperation.h"

// The objects themselves move: each step reads them back from the restore point and transforms them again, so that
// no error adds up. When another command breaks this one off, they stay where the last move put them.
//
// | m_Step | event        | action                                                   | result      |
// |--------|--------------|----------------------------------------------------------|-------------|
// | 0      | move         | marker                                                   | RS_Continue |
// | 0      | left button  | base point; the objects are stored                       | RS_Capture  |
// | 1      | move         | marker; preview, where something was selected            | RS_Continue |
// | 1      | left button  | preview; keep the originals? (copy: always)              | RS_Done     |
// | any    | right button | the objects as stored; before the base point and with a  | RS_Done     |
// |        |              | selection CArchiveException, and the tool stays          |             |
class CCommandOperationTrans : public COperationOf<CCommandOperation> {
    DECLARE_DYNAMIC(CCommandOperationTrans)
public:
    CCommandOperationTrans(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran, CGraphicDocument* document);

    // Compatibility 20: another command leaves the objects where the last move put them.
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;
    // Where previews are drawn again after a paint: puts the objects back, so that the paint shows them at their old
    // place.
    void PreRedraw() override;

protected:
    int OnGetGripPoint(CDrawable* object, int gripIndex, CGePoint2d point) override;
    // The matrix that the point asks for, in drawing units.
    virtual void GetTransMatrix(CGeMatrix2d& out, CGePoint2d point) = 0;
    // Moves the objects to where the point puts them and shows that by inversion.
    virtual void DoTransPreview(CGePoint2d point);

    // Notes a change, where the objects are not what they were.
    void NoteMove();
    // New objects of the same classes take the old places; the moved ones are no longer selected.
    void KeepOriginals();

    CGePoint2d m_BasePoint;
    CDrawableArray m_Objects; // The selection at construction; borrowed.

private:
    void InvertObjects();

    CObjectMemory m_Memory;
    int m_PreviewDrawn = 0;
};

class CCommandOperationTranslation : public CCommandOperationTrans {
    DECLARE_DYNAMIC(CCommandOperationTranslation)
public:
    using CCommandOperationTrans::CCommandOperationTrans;

protected:
    void GetTransMatrix(CGeMatrix2d& out, CGePoint2d point) override;
};

// Turns the objects by the angle of the band, counted from the x axis.
class CCommandOperationRotation : public CCommandOperationTrans {
    DECLARE_DYNAMIC(CCommandOperationRotation)
public:
    using CCommandOperationTrans::CCommandOperationTrans;

protected:
    void GetTransMatrix(CGeMatrix2d& out, CGePoint2d point) override;
};

// The band is the axis.
class CCommandOperationMirroring : public CCommandOperationTrans {
    DECLARE_DYNAMIC(CCommandOperationMirroring)
public:
    using CCommandOperationTrans::CCommandOperationTrans;

protected:
    void GetTransMatrix(CGeMatrix2d& out, CGePoint2d point) override;
};

// A translation that keeps the originals without asking.
class CCommandOperationCopy : public CCommandOperationTrans {
    DECLARE_DYNAMIC(CCommandOperationCopy)
public:
    using CCommandOperationTrans::CCommandOperationTrans;

    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;

protected:
    void GetTransMatrix(CGeMatrix2d& out, CGePoint2d point) override;
};
