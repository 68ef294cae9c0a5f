// CDlgSetAngle: the modal dialog that asks for an angle.
// Layer 9: command operations.
#pragma once

#include <afxwin.h>

// The library has no template for it: a host that offers "rotatetext" supplies number 134 with an edit box 1002, IDOK
// and IDCANCEL; without one DoModal gives -1.
class CDlgSetAngle : public CDialog {
    DECLARE_DYNAMIC(CDlgSetAngle)
public:
    explicit CDlgSetAngle(CWnd* parent);

    double m_dAngle = 0.0; // Degrees, as typed.

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    DECLARE_MESSAGE_MAP()
};
