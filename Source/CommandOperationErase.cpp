#include "CommandOperationErase.h"

#include "Document.h"

IMPLEMENT_DYNAMIC(CCommandOperationErase, CCommandOperation)

void CCommandOperationErase::Execute() {
    const CKxAliveToken engine = EngineAlive();
    // Compatibility 23: the question comes also with nothing selected.
    if (AfxMessageBox(L"是否确认删除选中的对象", MB_YESNO, 0) == IDNO || !GoesOn(engine)) {
        return;
    }
    // Compatibility 22: erased objects stay allocated.
    if (!m_pDocument->GetSelectedDrawableObjs()->IsEmpty()) {
        NoteChange();
    }
    m_pDocument->DeleteAllSelectedObject();
    RequestRedraw();
}
