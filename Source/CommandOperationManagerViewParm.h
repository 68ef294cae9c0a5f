// The engine of the parameter view, which picks nothing, and its one minimal operation.
// Layer 10: manager.
#pragma once

#include "CommandOperationManager.h"
#include "PlainOperation.h"

// Words work as in the base; a click with no tool running does nothing.
class CCommandOperationManager_ViewParm : public CCommandOperationManager {
    DECLARE_DYNAMIC(CCommandOperationManager_ViewParm)
public:
    using CCommandOperationManager::CCommandOperationManager;

    ResultState OnDefaultLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnDefaultSetCursor(CWnd* wnd, unsigned int nHitTest, unsigned int message) override;
};

// Becomes the running tool on its first press and does nothing more. It has no word; derived views may install it.
class CCommandOperationInplaceEdit_ViewParms : public CPlainOperation {
    DECLARE_DYNAMIC(CCommandOperationInplaceEdit_ViewParms)
public:
    using CPlainOperation::CPlainOperation;

    void Cancel() override {}
    ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Capture; }
    ResultState OnCancel() override;
};
