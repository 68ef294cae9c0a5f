// CDialog_TextEdit: the modal dialog that asks for the content of a new text.
// Layer 9: command operations.
#pragma once

#include <afxwin.h>

class CDialog_TextEdit : public CDialog {
    DECLARE_DYNAMIC(CDialog_TextEdit)
public:
    explicit CDialog_TextEdit(CWnd* parent);

    BOOL OnInitDialog() override;

    CString m_EditText; // Follows the typing.

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    afx_msg void OnChangeText();
    DECLARE_MESSAGE_MAP()
};
