// CDocument: what a program loads, changes and saves, with its path, title and modified flag. Included by afxwin.h.
// Classes: CDocument.
// Layer 1: afx.
#pragma once

#include "afxtarg_.h"

class NRAFX_API CDocument : public CCmdTarget {
    DECLARE_DYNAMIC(CDocument)
public:
    CDocument();
    virtual ~CDocument();

    // --- attributes
    const CString& GetTitle() const { return m_strTitle; }
    virtual void SetTitle(LPCTSTR lpszTitle);
    const CString& GetPathName() const { return m_strPathName; }
    // Keeps the full path and takes the title from its last part.
    virtual void SetPathName(LPCTSTR lpszPathName, BOOL bAddToMRU = TRUE);
    virtual BOOL IsModified() { return m_bModified; }
    virtual void SetModifiedFlag(BOOL bModified = TRUE) { m_bModified = bModified; }

    // --- life
    virtual BOOL OnNewDocument();
    // Through Serialize. A failure is reported, empties the document and gives FALSE; a foreign exception is passed on
    // after that.
    virtual BOOL OnOpenDocument(LPCTSTR lpszPathName);
    // Saves through Serialize into a temporary file beside the target, which takes the target's place only when all of
    // it is written. Gives FALSE, with the target as it was, when anything failed: also when Serialize ended the
    // archive itself (CArchive::Abort or Close), the way for a Serialize that reports its own errors to refuse the
    // save.
    virtual BOOL OnSaveDocument(LPCTSTR lpszPathName);
    virtual void OnCloseDocument(); // deletes the document if m_bAutoDelete is set
    virtual void DeleteContents();  // empties the document for reuse; nothing here
    virtual BOOL SaveModified();    // asks to save; FALSE: don't go on
    virtual void PreCloseFrame() {}
    // Shows why a load or save failed. For user exceptions that has been shown already.
    virtual void ReportSaveLoadException(LPCTSTR lpszPathName, CException* e, BOOL bSaving, UINT nIDPDefault);

    // The file of a load or save; null, with *pError set, when it can't be opened. For modeWrite or modeReadWrite
    // together with modeCreate it replaces the target when it is closed.
    virtual CFile* GetFile(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError);
    virtual void ReleaseFile(CFile* pFile, BOOL bAbort);

    // --- the work of the file commands. DoSave asks for a name when the path is empty; bReplace makes it the own path.
    virtual BOOL DoSave(LPCTSTR lpszPathName, BOOL bReplace = TRUE);
    virtual BOOL DoFileSave();

    BOOL m_bAutoDelete;

protected:
    afx_msg void OnFileClose();
    afx_msg void OnFileSave();
    afx_msg void OnFileSaveAs();

    CString m_strTitle;
    CString m_strPathName;
    BOOL m_bModified;
    DECLARE_MESSAGE_MAP()
};
