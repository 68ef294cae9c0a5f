#include "Dialog_TextEdit.h"

#include "VectorViewApi.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CDialog_TextEdit, CDialog)

BEGIN_MESSAGE_MAP(CDialog_TextEdit, CDialog)
    ON_EN_CHANGE(IDC_TEXT_CONTENT, &CDialog_TextEdit::OnChangeText)
END_MESSAGE_MAP()

CDialog_TextEdit::CDialog_TextEdit(CWnd* parent) {
    // By the library's own module, and not by number through the chain of modules: a host may have a dialog of this
    // number too, and would see its own.
    HINSTANCE module = VectorViewModule();
    HRSRC found = ::FindResource(module, MAKEINTRESOURCE(IDD_TEXT_EDIT), RT_DIALOG);
    HGLOBAL loaded = found != nullptr ? ::LoadResource(module, found) : nullptr;
    if (loaded != nullptr) {
        InitModalIndirect(static_cast<LPCDLGTEMPLATE>(::LockResource(loaded)), parent);
    }
}

BOOL CDialog_TextEdit::OnInitDialog() {
    CDialog::OnInitDialog();
    return TRUE;
}

void CDialog_TextEdit::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_TEXT_CONTENT, m_EditText);
}

void CDialog_TextEdit::OnChangeText() {
    UpdateData(TRUE);
}
