// The demo's main window: new, open, save, and the questions around them.
// Layer 13: demo.
#include "HostFrame.h"

#include "DemoIds.h"
#include "HostText.h"

#include <afxdlgs.h>

#include <shellapi.h>

#include <algorithm>

namespace {

const wchar_t Extension[] = L"nrv";

// Why a file cannot be read, in the user's words.
CString DescribeCause(const CFileException& error) {
    switch (error.m_cause) {
    case CFileException::fileNotFound:
        return LoadText(IDS_NOT_FOUND);
    case CFileException::badPath:
        return LoadText(IDS_BAD_PATH);
    case CFileException::accessDenied:
        return LoadText(IDS_NO_ACCESS);
    case CFileException::sharingViolation:
    case CFileException::lockViolation:
        return LoadText(IDS_IN_USE);
    default: {
        CString text;
        text.Format(LoadText(IDS_READ_FAILED), static_cast<long>(error.m_lOsError));
        return text;
    }
    }
}

} // namespace

CString CHostFrame::GetShownName() {
    if (m_path.IsEmpty()) {
        return LoadText(IDS_UNTITLED);
    }
    const int slash = std::max(m_path.ReverseFind(L'\\'), m_path.ReverseFind(L'/'));
    return m_path.Mid(slash + 1);
}

void CHostFrame::ForgetDrawing() {
    m_view.BreakOff(); // first: a running command may hold objects of the drawing
    m_drawn.clear();
    m_drawsSection = false;
    m_view.EmptyProperties();
    m_view.GetDocument()->Reset();
    m_view.GetDocument()->SetPathName(L"", FALSE);
    m_view.GetDocument()->SetModifiedFlag(FALSE);
    m_path.Empty();
}

bool CHostFrame::OpenFile(const CString& path) {
    // Opened first, so that a file that cannot be read leaves the present drawing alone.
    CFile file;
    CFileException error;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite, &error)) {
        AfxMessageBox(CString(LoadText(IDS_CANNOT_OPEN)) + path + L"\n\n" + DescribeCause(error),
                      MB_OK | MB_ICONWARNING);
        return false;
    }
    const bool empty = file.GetLength() == 0;
    file.Close();
    if (empty) {
        AfxMessageBox(CString(LoadText(IDS_CANNOT_OPEN)) + path + L"\n\n" + LoadText(IDS_EMPTY_FILE),
                      MB_OK | MB_ICONWARNING);
        return false;
    }

    ForgetDrawing();
    const int messages = m_messages;
    CGraphicDocument* document = m_view.GetDocument();
    const bool loaded = document->OnOpenDocument(path) != 0 && m_messages == messages;
    if (loaded) {
        m_path = path;
        document->SetPathName(path, FALSE);
        document->SetModifiedFlag(FALSE);
        m_recent.Add(path);
    } else {
        // The library has shown a message and kept what it could read. The name is not kept, so that saving this part
        // does not overwrite the file by itself.
        const bool some = document->GetDrawableObjs()->GetSize() > 0;
        document->SetPathName(L"", FALSE);
        document->SetModifiedFlag(some);
        m_view.RestartHistory();
        AfxMessageBox(CString(LoadText(IDS_DAMAGED)) + path + L"\n\n" +
                          (some ? LoadText(IDS_LOADED_SOME) : LoadText(IDS_LOADED_NONE)),
                      MB_OK | MB_ICONWARNING);
    }
    ShowLoaded();
    return loaded;
}

void CHostFrame::ShowLoaded() {
    m_view.SetClassic(m_view.IsClassic());
    if (m_view.GetDocument()->GetDrawableObjs()->IsEmpty()) {
        m_view.ResetMapping();
    } else {
        m_view.ZoomAll();
    }
}

void CHostFrame::OnRecent(UINT id) {
    const size_t index = id - ID_HOST_RECENT_FIRST;
    if (index >= m_recent.Get().size() || !MayDiscard()) {
        return;
    }
    const CString path = m_recent.Get()[index];
    if (!OpenFile(path) && ::GetFileAttributesW(path) == INVALID_FILE_ATTRIBUTES) {
        m_recent.Remove(path);
    }
}

void CHostFrame::OnExample(UINT id) {
    if (!MayDiscard()) {
        return;
    }
    ForgetDrawing();
    if (id == ID_HOST_EXAMPLE_SECTION) {
        OpenSection();
        return;
    }
    const LPCTSTR number = MAKEINTRESOURCEW(IDR_EXAMPLE_FIRST + (id - ID_HOST_EXAMPLE_FIRST));
    const HINSTANCE module = AfxGetInstanceHandle();
    const HRSRC found = ::FindResourceW(module, number, RT_RCDATA);
    // The bytes of a resource are read only, and a load only reads.
    auto* bytes = static_cast<unsigned char*>(::LockResource(::LoadResource(module, found)));
    m_view.LoadFile(bytes, ::SizeofResource(module, found));
    m_view.GetDocument()->SetModifiedFlag(FALSE);
    ShowLoaded();
}

void CHostFrame::OnDropFiles(HDROP drop) {
    const UINT length = ::DragQueryFileW(drop, 0, nullptr, 0);
    CString path;
    ::DragQueryFileW(drop, 0, path.GetBuffer(static_cast<int>(length)), length + 1);
    path.ReleaseBuffer();
    ::DragFinish(drop);
    SetForegroundWindow(); // The drag has left the keyboard focus with another program.
    if (!path.IsEmpty() && MayDiscard()) {
        OpenFile(path);
    }
}

bool CHostFrame::OfferRecovery() {
    for (const CString& path : CRecoveryCopy::FindLeft()) {
        const bool wanted = AfxMessageBox(LoadText(IDS_RECOVER), MB_YESNO | MB_ICONQUESTION) == IDYES;
        if (wanted) {
            // It has no file of its own, and is not saved yet.
            const bool whole = OpenFile(path);
            m_recent.Remove(path);
            if (!whole && m_view.GetDocument()->GetDrawableObjs()->IsEmpty()) {
                continue; // It stays, and is offered again.
            }
            m_path.Empty();
            m_view.GetDocument()->SetPathName(L"", FALSE);
            m_view.GetDocument()->SetModifiedFlag(TRUE);
            m_view.RestartHistory(); // No undo leads to a saved state.
            m_recovery.Keep(*m_view.GetDocument());
        }
        ::DeleteFileW(path);
        if (wanted) {
            return true; // Any further one is offered at the next start.
        }
    }
    return false;
}

bool CHostFrame::Save() {
    if (m_path.IsEmpty()) {
        return SaveAs();
    }
    // Reports its own failures, and leaves the old file alone then.
    return m_view.GetDocument()->DoSave(m_path, TRUE) != 0;
}

bool CHostFrame::SaveAs() {
    CFileDialog dialog(FALSE, Extension, m_path.IsEmpty() ? LoadText(IDS_NEW_FILE) : static_cast<LPCTSTR>(m_path),
                       OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST, LoadText(IDS_FILTER), this);
    if (dialog.DoModal() != IDOK) {
        return false;
    }
    const CString path = dialog.GetPathName();
    if (!m_view.GetDocument()->DoSave(path, TRUE)) {
        return false;
    }
    m_path = path;
    m_recent.Add(path);
    m_view.GetDocument()->SetModifiedFlag(FALSE);
    return true;
}

// Whether the present drawing may be discarded: it is saved, or the user does not need it.
bool CHostFrame::MayDiscard() {
    if (!m_view.GetDocument()->IsModified()) {
        return true;
    }
    CString question;
    question.Format(LoadText(IDS_SAVE_CHANGES), static_cast<LPCTSTR>(GetShownName()));
    switch (AfxMessageBox(question, MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES:
        return Save();
    case IDNO:
        return true;
    default:
        return false;
    }
}

void CHostFrame::OnFileNew() {
    if (MayDiscard()) {
        ForgetDrawing();
        ShowLoaded();
    }
}

void CHostFrame::OnFileOpen() {
    if (!MayDiscard()) {
        return;
    }
    CFileDialog dialog(TRUE, Extension, nullptr, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, LoadText(IDS_FILTER), this);
    if (dialog.DoModal() == IDOK) {
        OpenFile(dialog.GetPathName());
    }
}

void CHostFrame::OnFileSave() {
    Save();
}

void CHostFrame::OnFileSaveAs() {
    SaveAs();
}

void CHostFrame::OnFileExit() {
    PostMessage(WM_CLOSE);
}

void CHostFrame::OnClose() {
    m_section.SettleEdit(); // its hooks must not run while the windows are destroyed
    if (MayDiscard()) {
        m_view.GetManager()->Cancel();
        DestroyWindow();
    }
}

void CHostFrame::OnDestroy() {
    CWnd::OnDestroy();
    AfxPostQuitMessage(0);
}
