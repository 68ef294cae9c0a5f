// COperationCreateTextParm: a parameter text by one click and a dialog.
// Layer 9: command operations.
#pragma once

#include "OperationCreateText.h"

class COperationCreateTextParm : public COperationCreateText {
    DECLARE_DYNAMIC(COperationCreateTextParm)
public:
    using COperationCreateText::COperationCreateText;

protected:
    CText* CreateTextObject() override;
};
