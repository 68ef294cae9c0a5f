#include "CommandOperationManagerViewParm.h"

IMPLEMENT_DYNAMIC(CCommandOperationManager_ViewParm, CCommandOperationManager)
IMPLEMENT_DYNAMIC(CCommandOperationInplaceEdit_ViewParms, CCommandOperation)

CCommandOperation::ResultState CCommandOperationManager_ViewParm::OnDefaultLButtonDown(unsigned int, CGePoint2d) {
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager_ViewParm::OnDefaultSetCursor(CWnd* wnd, unsigned int nHitTest,
                                                                                     unsigned int message) {
    return CCommandOperationManager::OnDefaultSetCursor(wnd, nHitTest, message);
}

CCommandOperation::ResultState CCommandOperationInplaceEdit_ViewParms::OnCancel() {
    Cancel();
    return RS_Cancelled;
}
