// CCommandOperationErase: takes the selected objects out of the drawing, after a question. Acts at once.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

class CCommandOperationErase : public CPlainOperation {
    DECLARE_DYNAMIC(CCommandOperationErase)
public:
    using CPlainOperation::CPlainOperation;

    // Asks also when nothing is selected. The objects stay allocated and registered with the leak tracer until the
    // process ends, or until the document's history frees them: a running command may still use one of them.
    void Execute() override;
};
