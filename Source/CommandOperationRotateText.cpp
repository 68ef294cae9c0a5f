#include "CommandOperationRotateText.h"

#include "DlgSetAngle.h"
#include "Document.h"
#include "Text.h"

IMPLEMENT_DYNAMIC(CCommandOperationRotateText, CCommandOperation)

void CCommandOperationRotateText::Execute() {
    CDlgSetAngle dialog(nullptr);
    const CKxAliveToken engine = EngineAlive();
    if (dialog.DoModal() != IDOK || !GoesOn(engine)) {
        return;
    }
    const CDrawableArray& selected = *m_pDocument->GetSelectedDrawableObjs();
    for (INT_PTR i = 0; i < selected.GetSize(); ++i) {
        if (CText* text = DYNAMIC_DOWNCAST(CText, selected.GetAt(i))) {
            text->SetAngle(static_cast<float>(dialog.m_dAngle));
            NoteChange();
        }
    }
    RequestRedraw();
}
