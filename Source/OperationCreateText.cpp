#include "OperationCreateText.h"

#include "Dialog_TextEdit.h"
#include "Document.h"
#include "MemoryInfo.h"
#include "Text.h"

IMPLEMENT_DYNAMIC(COperationCreateText, COperationCreateObjAb)

void COperationCreateText::Cancel() {
    DiscardCurrentObject();
}

CCommandOperation::ResultState COperationCreateText::OnLButtonDown(unsigned int, CGePoint2d point) {
    m_LastPoint = point;
    ++m_ClickCount;
    const CKxAliveToken running(m_Alive);
    CDialog_TextEdit dialog(nullptr);
    const INT_PTR answer = dialog.DoModal();
    // While the dialog was open, a host may have started another command.
    if (answer != IDOK || !GoesOn(running)) {
        return RS_Continue;
    }
    CTracedOwner<CText> text(CreateTextObject());
    OnCreateObject(text.get());
    text->SetText(dialog.m_EditText);
    text->SetPos(point);
    m_pDocument->AddDrawAobject(text.get());
    text.release();
    NoteChange();
    RequestRedraw();
    return RS_Done;
}

CCommandOperation::ResultState COperationCreateText::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    return COperationCreateObjAb::OnMouseMove(nFlags, point);
}

CCommandOperation::ResultState COperationCreateText::OnRButtonDown(unsigned int, CGePoint2d) {
    m_ClickCount = 0;
    return RS_Cancelled;
}

CText* COperationCreateText::CreateTextObject() {
    auto* text = new CText;
    KX_ADD_MEMORY(text);
    text->SetAngle(0.0f);
    return text;
}
