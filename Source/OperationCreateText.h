// COperationCreateText: a text by one click and a dialog.
// Layer 9: command operations.
#pragma once

#include "OperationCreateObjAb.h"

class CText;

// | event        | action                                                      | result       |
// |--------------|-------------------------------------------------------------|--------------|
// | move         | marker                                                      | RS_Continue  |
// | left button  | the dialog; cancelled, the tool waits for another click     | RS_Continue  |
// |              | confirmed, the text is added at the click                   | RS_Done      |
// | right button | -                                                           | RS_Cancelled |
class COperationCreateText : public COperationCreateObjAb {
    DECLARE_DYNAMIC(COperationCreateText)
public:
    using COperationCreateObjAb::COperationCreateObjAb;

    void Execute() override {}
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;

protected:
    // The caller owns it; registered and level.
    virtual CText* CreateTextObject();
};
