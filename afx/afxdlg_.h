// Dialogs and the exchange of values between members and controls. Included by afxwin.h.
// Classes: CDataExchange, CDialog.
// Layer 1: afx.
#pragma once

#include "afxwnd_.h"

// One exchange between a window's members and its controls; made by CWnd::UpdateData.
class NRAFX_API CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    BOOL m_bSaveAndValidate; // TRUE: controls to members
    CWnd* m_pDlgWnd;

    HWND PrepareCtrl(int nIDC);     // throws when there is no such control
    HWND PrepareEditCtrl(int nIDC); // for Fail: this text gets the selection
    [[noreturn]] void Fail();       // puts the focus back to the control and throws CUserException

    HWND m_hWndLastControl;
    BOOL m_bEditLastControl;
    int m_nIDLastControl;
};

// Members to and from the text of a control. A text that is no finite decimal number in the range of the member's type
// brings a message and Fail, and leaves the member as it was; blanks around the number are allowed.
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, short& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, LONGLONG& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, ULONGLONG& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, float& value);
NRAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, double& value);
NRAFX_API void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value); // 0, 1 or 2
NRAFX_API void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value); // index in the group, -1 for none
NRAFX_API void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
NRAFX_API void AFXAPI DDX_LBString(CDataExchange* pDX, int nIDC, CString& value);
NRAFX_API void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
NRAFX_API void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value);
NRAFX_API void AFXAPI DDX_Scroll(CDataExchange* pDX, int nIDC, int& value);
// Subclasses the control by the member on the first exchange.
NRAFX_API void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);

// Checks of the member just taken over; both limits are allowed values. A refusal brings a message and Fail.
NRAFX_API void AFXAPI DDV_MinMaxByte(CDataExchange* pDX, BYTE value, BYTE minVal, BYTE maxVal);
NRAFX_API void AFXAPI DDV_MinMaxShort(CDataExchange* pDX, short value, short minVal, short maxVal);
NRAFX_API void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);
NRAFX_API void AFXAPI DDV_MinMaxLong(CDataExchange* pDX, long value, long minVal, long maxVal);
NRAFX_API void AFXAPI DDV_MinMaxUInt(CDataExchange* pDX, UINT value, UINT minVal, UINT maxVal);
NRAFX_API void AFXAPI DDV_MinMaxDWord(CDataExchange* pDX, DWORD value, DWORD minVal, DWORD maxVal);
NRAFX_API void AFXAPI DDV_MinMaxFloat(CDataExchange* pDX, const float& value, float minVal, float maxVal);
NRAFX_API void AFXAPI DDV_MinMaxDouble(CDataExchange* pDX, const double& value, double minVal, double maxVal);
// Refuses texts longer than nChars; filling the control limits its length instead.
NRAFX_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);

class NRAFX_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog(); // for modeless dialogs and InitModalIndirect
    explicit CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual ~CDialog();

    // Modeless. FALSE when the template is missing or the dialog could not be made.
    virtual BOOL Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr,
                                void* lpDialogInit = nullptr);
    // Modal. The argument of EndDialog; -1 when the template is missing or the dialog could not be made, IDABORT when
    // it was destroyed without EndDialog, for example with its owner.
    virtual INT_PTR DoModal();
    BOOL InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr);

    void EndDialog(int nResult);
    void GotoDlgCtrl(CWnd* pWndCtrl);
    void NextDlgCtrl() const;
    void PrevDlgCtrl() const;
    void SetDefID(UINT nID);
    DWORD GetDefID() const;
    void MapDialogRect(LPRECT lpRect) const;

    virtual BOOL OnInitDialog(); // fills the controls; TRUE lets Windows set the focus
    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

protected:
    using CWnd::Create;
    virtual void OnOK();
    virtual void OnCancel();
    virtual void PreInitDialog();
    afx_msg LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    BOOL CreateDlgIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst);

    UINT m_nIDHelp;
    LPCTSTR m_lpszTemplateName;        // a name or MAKEINTRESOURCE
    LPCDLGTEMPLATE m_lpDialogTemplate; // for indirect dialogs; borrowed
    CWnd* m_pParentWnd;
    DECLARE_MESSAGE_MAP()
};
