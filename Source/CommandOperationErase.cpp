#include "CommandOperationErase.h"

#include "Document.h"

IMPLEMENT_DYNAMIC(CCommandOperationErase, CCommandOperation)

void CCommandOperationErase::Execute() {
    const CLifeWatch watch(this);
    if (AfxMessageBox(L"是否确认删除选中的对象", MB_YESNO, 0) == IDNO || watch.IsGone()) {
        return;
    }
    m_pDocument->DeleteAllSelectedObject();
    RequestRedraw();
}
