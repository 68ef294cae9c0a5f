// COperationPlaceObjects: puts objects that come as a stream, such as from the clipboard, into the drawing by one
// click. Layer 9: command operations.
#pragma once

#include "CommandOperation.h"
#include "Document.h"

// The lower left corner of the objects' extent is placed at the click. Before it, they follow the mouse, drawn by
// inversion.
//
// | event        | action                                                        | result       |
// |--------------|---------------------------------------------------------------|--------------|
// | move         | marker; the objects are shown at the mouse                    | RS_Continue  |
// | left button  | the objects are added on top, and are what is selected        | RS_Done      |
// | right button | nothing is added                                              | RS_Cancelled |
class NRVECTORVIEW_API COperationPlaceObjects : public CCommandOperation {
    DECLARE_DYNAMIC(COperationPlaceObjects)
public:
    // For the engine's SetCommand, which takes it over; registered with the leak tracer. The bytes are copied. Null for
    // a stream that CObjectStream does not load.
    static COperationPlaceObjects* Make(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                        CGraphicDocument* document, const void* bytes, size_t length);
    ~COperationPlaceObjects() override;

    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;
    void PreRedraw() override;

private:
    using CCommandOperation::CCommandOperation;
    // Fills m_Objects from the stream, at their stored place.
    bool Load();
    void Free();
    // The lower left corner of those objects that have a finite extent; the origin where none has.
    CGePoint2d Corner();
    void InvertObjects();

    CByteArray m_Bytes;
    CDrawableArray m_Objects; // Owned, registered, with their corner at m_At.
    CGePoint2d m_At;
    bool m_Drawn = false;
};
