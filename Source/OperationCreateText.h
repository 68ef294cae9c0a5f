// COperationCreateText: a text by one click and a dialog.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

class CText;

// | event        | action                                                      | result       |
// |--------------|-------------------------------------------------------------|--------------|
// | move         | marker                                                      | RS_Continue  |
// | left button  | the dialog; cancelled, the tool waits for another click     | RS_Continue  |
// |              | confirmed, the text is added at the click                   | RS_Done      |
// | right button | -                                                           | RS_Cancelled |
class COperationCreateText : public COperationOf<COperationCreateObjAb> {
    DECLARE_DYNAMIC(COperationCreateText)
public:
    using COperationOf::COperationOf;

    void Execute() override {}
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;

protected:
    // The caller owns it; registered and level.
    virtual CText* CreateTextObject();
};
