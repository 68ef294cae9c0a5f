// The functions around windows without a class: handles, window classes, the window procedure, message boxes. Included
// by afxwnd_.h.
// Layer 1: afx.
#pragma once

#include "cstringt.h"

class CWnd;

NRAFX_API HWND AFXAPI AfxGetSafeHwnd(const CWnd* pWnd); // null for null

// Registers a window class with the given style, cursor, brush and icon, once, and gives its name, which stays valid
// only until the next call. Throws a resource exception when Windows refuses.
NRAFX_API LPCTSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor = nullptr,
                                             HBRUSH hbrBackground = nullptr, HICON hIcon = nullptr);
// Registers the class unless it is there already.
NRAFX_API BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass);
// The window procedure that looks up the CWnd and calls it.
NRAFX_API LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);
// Calls pWnd's WindowProc with the message as the current one; what a handler throws stops here.
NRAFX_API LRESULT AFXAPI AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam = 0, LPARAM lParam = 0);

// The button that ended the box. A box without Cancel is not left by Escape or its close button, except that Escape
// presses a lone OK. A box that ends without an answer, because the program quits, its owner is destroyed or it can't
// be made, gives Cancel if it has it, else No, else Abort; with OK alone 0 when it could not be made.
NRAFX_API int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
NRAFX_API int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = static_cast<UINT>(-1));
// Put texts in the place of %1 and %2.
NRAFX_API void AFXAPI AfxFormatString1(CString& rString, UINT nIDS, LPCTSTR lpsz1);
NRAFX_API void AFXAPI AfxFormatString2(CString& rString, UINT nIDS, LPCTSTR lpsz1, LPCTSTR lpsz2);
