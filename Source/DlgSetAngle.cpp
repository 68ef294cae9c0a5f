#include "DlgSetAngle.h"

#include "resource.h"

IMPLEMENT_DYNAMIC(CDlgSetAngle, CDialog)

BEGIN_MESSAGE_MAP(CDlgSetAngle, CDialog)
END_MESSAGE_MAP()

CDlgSetAngle::CDlgSetAngle(CWnd* parent) : CDialog(IDD_SET_ANGLE, parent) {}

void CDlgSetAngle::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_ANGLE, m_dAngle);
}
