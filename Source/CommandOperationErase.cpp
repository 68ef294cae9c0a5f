#include "CommandOperationErase.h"

#include "Document.h"

IMPLEMENT_DYNAMIC(CCommandOperationErase, CCommandOperation)

void CCommandOperationErase::Execute() {
    const CKxAliveToken engine = EngineAlive();
    if (AfxMessageBox(L"是否确认删除选中的对象", MB_YESNO, 0) == IDNO || !GoesOn(engine)) {
        return;
    }
    m_pDocument->DeleteAllSelectedObject();
    RequestRedraw();
}
