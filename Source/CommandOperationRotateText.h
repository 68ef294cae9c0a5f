// CCommandOperationRotateText: gives the selected texts an angle that is entered in a dialog. Acts at once.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

class CCommandOperationRotateText : public CPlainOperation {
    DECLARE_DYNAMIC(CCommandOperationRotateText)
public:
    using CPlainOperation::CPlainOperation;

    // Texts and parameter texts; objects of other kinds stay as they are. Without a template for the dialog nothing
    // happens.
    void Execute() override;
};
