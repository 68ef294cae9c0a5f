// The common dialogs of Windows: the file dialog.
// Classes: CCommonDialog, CFileDialog.
// Layer 1: afx.
#pragma once

#include "afxwin.h"
#include <commdlg.h>

class NRAFX_API CCommonDialog : public CDialog {
    DECLARE_DYNAMIC(CCommonDialog)
public:
    explicit CCommonDialog(CWnd* pParentWnd) : CDialog() { m_pParentWnd = pParentWnd; }

protected:
    void OnOK() override { Default(); }
    void OnCancel() override { Default(); }
};

class NRAFX_API CFileDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CFileDialog)
public:
    // lpszFilter: pairs of a name and a pattern, each ended by '|', with a second '|' at the end. dwSize and
    // bVistaStyle choose among looks of the dialog on later Windows; this layer shows one look whatever their values
    // are.
    explicit CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt = nullptr, LPCTSTR lpszFileName = nullptr,
                         DWORD dwFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCTSTR lpszFilter = nullptr,
                         CWnd* pParentWnd = nullptr, DWORD dwSize = 0, BOOL bVistaStyle = TRUE);
    virtual ~CFileDialog();

    OPENFILENAME m_ofn; // may be changed before DoModal
    OPENFILENAME& GetOFN() { return m_ofn; }
    const OPENFILENAME& GetOFN() const { return m_ofn; }

    INT_PTR DoModal() override; // IDOK or IDCANCEL

    CString GetPathName() const;  // folder, name and extension
    CString GetFileName() const;  // name and extension
    CString GetFileExt() const;   // without the dot
    CString GetFileTitle() const; // name alone
    CString GetFolderPath() const;
    BOOL GetReadOnlyPref() const;
    POSITION GetStartPosition() const;
    CString GetNextPathName(POSITION& pos) const; // with OFN_ALLOWMULTISELECT

    BOOL m_bOpenFileDialog;

protected:
    virtual BOOL OnFileNameOK() { return FALSE; } // TRUE keeps the dialog open
    virtual void OnInitDone() {}
    virtual void OnFileNameChange() {}
    virtual void OnFolderChange() {}
    virtual void OnTypeChange() {}

    CString m_strFilter;
    TCHAR m_szFileTitle[64];
    TCHAR m_szFileName[MAX_PATH];
    BOOL m_bVistaStyle;

private:
    static UINT_PTR CALLBACK HookProc(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam);
};
