#include "Dialog_TextEdit.h"

#include "VectorViewApi.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CDialog_TextEdit, CDialog)

BEGIN_MESSAGE_MAP(CDialog_TextEdit, CDialog)
    ON_EN_CHANGE(IDC_TEXT_CONTENT, &CDialog_TextEdit::OnChangeText)
END_MESSAGE_MAP()

CDialog_TextEdit::CDialog_TextEdit(CWnd* parent) {
    // The template is taken from the library's own module. A search by number through the chain of modules could find a
    // dialog of the host that has this number too.
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
