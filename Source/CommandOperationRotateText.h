// CCommandOperationRotateText: gives the selected texts an angle that is entered in a dialog. Acts at once.
// Layer 9: command operations.
#pragma once

#include "CommandOperation.h"

class CCommandOperationRotateText : public CCommandOperation {
    DECLARE_DYNAMIC(CCommandOperationRotateText)
public:
    using CCommandOperation::CCommandOperation;

    // Texts and parameter texts; objects of other kinds stay as they are. Without a template for the dialog nothing
    // happens.
    void Execute() override;
    ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseMove(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnKeyDown(unsigned int, unsigned int, unsigned int) override { return RS_Continue; }
    void PreRedraw() override {}
};
