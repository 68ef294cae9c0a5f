// The thread's message loop and the application. Included by afxwin.h.
// Classes: CWinThread, CWinApp.
// Layer 1: afx.
#pragma once

#include "afxwnd_.h"

class NRAFX_API CWinThread : public CCmdTarget {
    DECLARE_DYNAMIC(CWinThread)
public:
    CWinThread();
    virtual ~CWinThread();

    CWnd* m_pMainWnd; // its end ends the loop; not owned
    HANDLE m_hThread;
    DWORD m_nThreadID;

    virtual BOOL InitInstance();
    virtual int Run(); // until WM_QUIT; gives ExitInstance's result
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    virtual BOOL PumpMessage(); // waits for one message and handles it; FALSE for WM_QUIT
    virtual BOOL OnIdle(LONG lCount);
    virtual BOOL IsIdleMessage(MSG* pMsg);
    virtual int ExitInstance();
    // Called with what a message handler has thrown; gives the message's result.
    virtual LRESULT ProcessWndProcException(CException* e, const MSG* pMsg);
    virtual CWnd* GetMainWnd();
    BOOL PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam);

protected:
    MSG m_msgCur;
    CPoint m_ptCursorLast; // for IsIdleMessage: mouse moves to the same place change nothing
    UINT m_nMsgLast;
};

class NRAFX_API CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)
public:
    explicit CWinApp(LPCTSTR lpszAppName = nullptr); // one object a program
    virtual ~CWinApp();

    HINSTANCE m_hInstance;
    LPTSTR m_lpCmdLine; // without the program's name
    int m_nCmdShow;
    LPCTSTR m_pszAppName;
    LPCTSTR m_pszExeName;

    virtual BOOL InitApplication();
    BOOL InitInstance() override;
    int Run() override;
    BOOL OnIdle(LONG lCount) override;
    int ExitInstance() override;
    LRESULT ProcessWndProcException(CException* e, const MSG* pMsg) override;

    virtual int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt);
    virtual void DoWaitCursor(int nCode); // 1 begins, 0 restores, -1 ends
    // Asks for a file name; FALSE when cancelled.
    BOOL DoPromptFileName(CString& fileName, UINT nIDSTitle, DWORD lFlags, BOOL bOpenFileDialog);

    HCURSOR LoadCursor(LPCTSTR lpszResourceName) const;
    HCURSOR LoadCursor(UINT nIDResource) const;
    HCURSOR LoadStandardCursor(LPCTSTR lpszCursorName) const;
    HICON LoadIcon(LPCTSTR lpszResourceName) const;
    HICON LoadIcon(UINT nIDResource) const;
    HICON LoadStandardIcon(LPCTSTR lpszIconName) const;

private:
    int m_nWaitCursorCount;
    HCURSOR m_hcurWaitCursorRestore;
    TCHAR m_szExeName[MAX_PATH];
};

// Gives the layer the arguments of WinMain. A null command line is taken from the process.
NRAFX_API BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine, int nCmdShow);
// The body of a host's WinMain: AfxWinInit, InitApplication, InitInstance, Run.
NRAFX_API int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine, int nCmdShow);
NRAFX_API void AFXAPI AfxWinTerm();

// One step of the message loop, with or without an application object.
NRAFX_API BOOL AFXAPI AfxPumpMessage();
// TRUE when the message was used up: the windows from its own up to the main window are asked.
NRAFX_API BOOL AFXAPI AfxPreTranslateMessage(MSG* pMsg);
NRAFX_API void AFXAPI AfxPostQuitMessage(int nExitCode);
