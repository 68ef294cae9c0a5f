// CCommandOperationErase: takes the selected objects out of the drawing, after a question. Acts at once.
// Layer 9: command operations.
#pragma once

#include "CommandOperation.h"

class CCommandOperationErase : public CCommandOperation {
    DECLARE_DYNAMIC(CCommandOperationErase)
public:
    using CCommandOperation::CCommandOperation;

    // Asks also when nothing is selected. The objects stay allocated and registered with the leak tracer until the
    // process ends, or until the document's history frees them: a running command may still use one of them.
    void Execute() override;
    ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseMove(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnKeyDown(unsigned int, unsigned int, unsigned int) override { return RS_Continue; }
    void PreRedraw() override {}
};
