// CDocument: opening, saving so that a good file is never lost, titles, messages about failures.
// Layer 1: afx.
#include "ThreadState.h"

#include <memory>
#include <new>
#include <vector>

IMPLEMENT_DYNAMIC(CDocument, CCmdTarget)

BEGIN_MESSAGE_MAP(CDocument, CCmdTarget)
    ON_COMMAND(ID_FILE_CLOSE, &CDocument::OnFileClose)
    ON_COMMAND(ID_FILE_SAVE, &CDocument::OnFileSave)
    ON_COMMAND(ID_FILE_SAVE_AS, &CDocument::OnFileSaveAs)
END_MESSAGE_MAP()

namespace {

// A file that is written beside the target under another name. Close puts it in the target's place; Abort, or the end
// of the object without Close, leaves the target as it was.
class CReplacingFile : public CFile {
public:
    ~CReplacingFile() override { CReplacingFile::Abort(); }

    BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr) override {
        m_strTarget = AfxGetFullPath(lpszFileName);
        const DWORD attributes = ::GetFileAttributes(m_strTarget);
        if (attributes != INVALID_FILE_ATTRIBUTES) {
            // Replacing would bypass the protection of the file, and programs that have it open.
            if ((attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
                return Refuse(pError, ERROR_ACCESS_DENIED);
            }
            const HANDLE probe = ::CreateFile(m_strTarget, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
            if (probe == INVALID_HANDLE_VALUE) {
                return Refuse(pError, ::GetLastError());
            }
            ::CloseHandle(probe);
        }
        const CString folder = m_strTarget.Left(m_strTarget.ReverseFind(_T('\\')) + 1);
        if (::GetTempFileName(folder, _T("NRV"), 0, m_szTemporary) == 0) {
            const DWORD code = ::GetLastError();
            m_szTemporary[0] = _T('\0'); // no file was made, whatever name was tried
            return Refuse(pError, code);
        }
        if (!CFile::Open(m_szTemporary, nOpenFlags, pError)) {
            Forget();
            if (pError != nullptr) {
                pError->m_strFileName = m_strTarget;
            }
            return FALSE;
        }
        return TRUE;
    }

    void Close() override {
        if (m_hFile == CFile::hFileNull) {
            return;
        }
        // All of it must be on the disk before the old file is replaced.
        Flush();
        const DWORD attributes = TakeOver();
        CFile::Close();
        if (attributes != 0) {
            ::SetFileAttributes(m_szTemporary, attributes);
        }
        // One step of the file system. ReplaceFile takes two, and a program that ends between them leaves no drawing.
        if (!::MoveFileEx(m_szTemporary, m_strTarget, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
            const auto error = static_cast<LONG>(::GetLastError());
            Forget();
            CFileException::ThrowOsError(error, m_strTarget);
        }
        m_szTemporary[0] = _T('\0');
    }

    void Abort() noexcept override {
        CFile::Abort();
        Forget();
    }

private:
    // Gives the new file what the old one has besides its bytes: who may read and write it, and when it was made. What
    // can't be given is left as it is. Returns the attributes, which the new file gets once it is closed; 0 without an
    // old file.
    DWORD TakeOver() {
        WIN32_FILE_ATTRIBUTE_DATA old = {};
        if (!::GetFileAttributesEx(m_strTarget, GetFileExInfoStandard, &old)) {
            return 0;
        }
        ::SetFileTime(m_hFile, &old.ftCreationTime, nullptr, nullptr);
        DWORD size = 0;
        ::GetFileSecurity(m_strTarget, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
        std::vector<BYTE> access(size);
        if (size != 0 && ::GetFileSecurity(m_strTarget, DACL_SECURITY_INFORMATION, access.data(), size, &size)) {
            ::SetFileSecurity(m_szTemporary, DACL_SECURITY_INFORMATION, access.data());
        }
        return old.dwFileAttributes;
    }
    BOOL Refuse(CFileException* pError, DWORD code) {
        if (pError != nullptr) {
            pError->m_lOsError = static_cast<LONG>(code);
            pError->m_cause = CFileException::OsErrorToException(static_cast<LONG>(code));
            pError->m_strFileName = m_strTarget;
        }
        return FALSE;
    }
    void Forget() {
        if (m_szTemporary[0] != _T('\0')) {
            ::DeleteFile(m_szTemporary);
        }
        m_szTemporary[0] = _T('\0');
    }

    CString m_strTarget;
    TCHAR m_szTemporary[MAX_PATH] = {}; // empty: there is none. No CString: keeping the name can't fail.
};

// Shows why a load or save failed: the exception that is being handled, when it is one of the layer's or a lack of
// memory. Any other is passed on to the caller.
void ReportFailure(CDocument& document, LPCTSTR lpszPathName, BOOL bSaving, UINT nIDPDefault) {
    CMemoryException shortage(FALSE);
    try {
        try {
            throw;
        } catch (CException* e) {
            const auto remove = [](CException* p) { p->Delete(); };
            const std::unique_ptr<CException, decltype(remove)> held(e, remove);
            document.ReportSaveLoadException(lpszPathName, e, bSaving, nIDPDefault);
        } catch (const std::bad_alloc&) {
            document.ReportSaveLoadException(lpszPathName, &shortage, bSaving, nIDPDefault);
        }
    } catch (CMemoryException* e) {
        // Not even the message could be made: the text of the exception itself needs no memory.
        e->Delete();
        shortage.ReportError(MB_ICONEXCLAMATION);
    }
}

CString LastPart(const CString& path) {
    const int slash = path.ReverseFind(_T('\\'));
    const int other = path.ReverseFind(_T('/'));
    return path.Mid((slash > other ? slash : other) + 1);
}

} // namespace

// --- construction and attributes ---------------------------------------------------------------------------------

CDocument::CDocument() : m_bAutoDelete(TRUE), m_bModified(FALSE) {}

CDocument::~CDocument() = default;

void CDocument::SetTitle(LPCTSTR lpszTitle) {
    m_strTitle = lpszTitle;
}

void CDocument::SetPathName(LPCTSTR lpszPathName, BOOL) {
    m_strPathName = AfxGetFullPath(lpszPathName);
    SetTitle(LastPart(m_strPathName));
}

// --- loading -----------------------------------------------------------------------------------------------------

BOOL CDocument::OnNewDocument() {
    DeleteContents();
    m_strPathName.Empty();
    SetModifiedFlag(FALSE);
    return TRUE;
}

BOOL CDocument::OnOpenDocument(LPCTSTR lpszPathName) {
    CFile* file = nullptr;
    try {
        CFileException error(CFileException::none);
        error.m_bAutoDelete = FALSE;
        file = GetFile(lpszPathName, CFile::modeRead | CFile::shareDenyWrite, &error);
        if (file == nullptr) {
            ReportSaveLoadException(lpszPathName, &error, FALSE, AFX_IDP_FAILED_TO_OPEN_DOC);
            return FALSE;
        }
        DeleteContents();
        SetModifiedFlag(TRUE); // until all is loaded
        CArchive archive(file, CArchive::load | CArchive::bNoFlushOnDelete);
        archive.m_pDocument = this;
        archive.m_bForceFlat = FALSE;
        CWaitCursor wait;
        if (file->GetLength() != 0) {
            Serialize(archive);
        }
        archive.Close();
        ReleaseFile(file, FALSE);
    } catch (...) {
        if (file != nullptr) {
            ReleaseFile(file, TRUE);
            DeleteContents();
        }
        ReportFailure(*this, lpszPathName, FALSE, AFX_IDP_FAILED_TO_OPEN_DOC);
        return FALSE;
    }
    SetModifiedFlag(FALSE);
    return TRUE;
}

// --- saving ------------------------------------------------------------------------------------------------------

BOOL CDocument::OnSaveDocument(LPCTSTR lpszPathName) {
    CFile* file = nullptr;
    bool whole = false;
    try {
        CFileException error(CFileException::none);
        error.m_bAutoDelete = FALSE;
        file = GetFile(lpszPathName, CFile::modeCreate | CFile::modeReadWrite | CFile::shareExclusive, &error);
        if (file == nullptr) {
            ReportSaveLoadException(lpszPathName, &error, TRUE, AFX_IDP_INVALID_FILENAME);
            return FALSE;
        }
        CArchive archive(file, CArchive::store | CArchive::bNoFlushOnDelete);
        archive.m_pDocument = this;
        archive.m_bForceFlat = FALSE;
        CWaitCursor wait;
        Serialize(archive);
        // A Serialize that has swallowed its own error ends the archive: what was written so far is no good file.
        whole = archive.GetFile() != nullptr;
        if (whole) {
            archive.Close();
        }
        ReleaseFile(file, !whole);
    } catch (...) {
        if (file != nullptr) {
            ReleaseFile(file, TRUE);
        }
        ReportFailure(*this, lpszPathName, TRUE, AFX_IDP_FAILED_TO_SAVE_DOC);
        return FALSE;
    }
    if (whole) {
        SetModifiedFlag(FALSE);
    }
    return whole;
}

CFile* CDocument::GetFile(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError) {
    const bool writes = (nOpenFlags & (CFile::modeWrite | CFile::modeReadWrite)) != 0;
    std::unique_ptr<CFile> file(writes && (nOpenFlags & CFile::modeCreate) != 0 ? new CReplacingFile : new CFile);
    return file->Open(lpszFileName, nOpenFlags, pError) ? file.release() : nullptr;
}

void CDocument::ReleaseFile(CFile* pFile, BOOL bAbort) {
    if (bAbort) {
        pFile->Abort();
    } else {
        pFile->Close();
    }
    delete pFile;
}

void CDocument::OnCloseDocument() {
    DeleteContents();
    if (m_bAutoDelete) {
        delete this;
    }
}

void CDocument::DeleteContents() {}

BOOL CDocument::SaveModified() {
    if (!IsModified()) {
        return TRUE;
    }
    CString name = m_strPathName.IsEmpty() ? m_strTitle : LastPart(m_strPathName);
    if (name.IsEmpty()) {
        name.LoadString(AFX_IDS_UNTITLED);
    }
    CString prompt;
    AfxFormatString1(prompt, AFX_IDP_ASK_TO_SAVE, name);
    switch (AfxMessageBox(prompt, MB_YESNOCANCEL, AFX_IDP_ASK_TO_SAVE)) {
    case IDCANCEL:
        return FALSE;
    case IDYES:
        return DoFileSave();
    default:
        return TRUE;
    }
}

// --- the file commands -------------------------------------------------------------------------------------------

BOOL CDocument::DoSave(LPCTSTR lpszPathName, BOOL bReplace) {
    CString name(lpszPathName != nullptr ? lpszPathName : _T(""));
    if (name.IsEmpty()) {
        name = m_strPathName;
        if (bReplace && name.IsEmpty()) {
            name = m_strTitle;
            // The first character that the file dialog would refuse ends the proposed name.
            const int bad = name.FindOneOf(_T(" #%;/\\"));
            if (bad != -1) {
                name = name.Left(bad);
            }
        }
        CWinApp* app = AfxGetApp();
        if (app == nullptr || !app->DoPromptFileName(name, bReplace ? AFX_IDS_SAVEFILE : AFX_IDS_SAVEFILECOPY,
                                                     OFN_HIDEREADONLY | OFN_PATHMUSTEXIST, FALSE)) {
            return FALSE;
        }
    }
    CWaitCursor wait;
    if (!OnSaveDocument(name)) {
        return FALSE; // nothing to clean up: only whole files take their place
    }
    if (bReplace) {
        SetPathName(name);
    }
    return TRUE;
}

BOOL CDocument::DoFileSave() {
    const DWORD attributes = ::GetFileAttributes(m_strPathName);
    // Read-only, or not there at all (then every bit is set): under another name.
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return DoSave(nullptr);
    }
    return DoSave(m_strPathName);
}

void CDocument::OnFileClose() {
    if (SaveModified()) {
        OnCloseDocument();
    }
}

void CDocument::OnFileSave() {
    DoFileSave();
}

void CDocument::OnFileSaveAs() {
    DoSave(nullptr);
}

// --- messages ----------------------------------------------------------------------------------------------------

void CDocument::ReportSaveLoadException(LPCTSTR lpszPathName, CException* e, BOOL bSaving, UINT nIDPDefault) {
    UINT id = nIDPDefault;
    if (e != nullptr) {
        if (e->IsKindOf(RUNTIME_CLASS(CUserException))) {
            return;
        }
        if (e->IsKindOf(RUNTIME_CLASS(CArchiveException))) {
            switch (static_cast<CArchiveException*>(e)->m_cause) {
            case CArchiveException::badSchema:
            case CArchiveException::badClass:
            case CArchiveException::badIndex:
            case CArchiveException::endOfFile:
                id = AFX_IDP_FAILED_INVALID_FORMAT;
                break;
            default:
                break;
            }
        } else if (e->IsKindOf(RUNTIME_CLASS(CFileException))) {
            switch (static_cast<CFileException*>(e)->m_cause) {
            case CFileException::fileNotFound:
            case CFileException::badPath:
                id = AFX_IDP_FAILED_INVALID_PATH;
                break;
            case CFileException::diskFull:
            case CFileException::directoryFull:
                id = AFX_IDP_FAILED_DISK_FULL;
                break;
            case CFileException::accessDenied:
            case CFileException::sharingViolation:
            case CFileException::lockViolation:
                id = bSaving ? AFX_IDP_FAILED_ACCESS_WRITE : AFX_IDP_FAILED_ACCESS_READ;
                break;
            case CFileException::hardIO:
            case CFileException::badSeek:
                id = bSaving ? AFX_IDP_FAILED_IO_ERROR_WRITE : AFX_IDP_FAILED_IO_ERROR_READ;
                break;
            default:
                break;
            }
        }
    }
    CString prompt;
    AfxFormatString1(prompt, id, lpszPathName);
    AfxMessageBox(prompt, MB_ICONEXCLAMATION);
}
