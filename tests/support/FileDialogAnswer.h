// Answers the file dialogs that open on this thread while it lives: with a path, or by cancelling.
// Layer: tests.
#pragma once

#include <afxwin.h>

#include <string>
#include <vector>

class FileDialogAnswer {
public:
    // An empty path cancels.
    explicit FileDialogAnswer(CString path);
    ~FileDialogAnswer();
    FileDialogAnswer(const FileDialogAnswer&) = delete;
    FileDialogAnswer& operator=(const FileDialogAnswer&) = delete;

    // Of each dialog: its title and the name it proposed, "title|name" in UTF-8.
    const std::vector<std::string>& Seen() const { return m_seen; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
    void Answer(HWND dialog);

    CString m_path;
    UINT_PTR m_timer;
    std::vector<HWND> m_answered;
    std::vector<std::string> m_seen;
    static FileDialogAnswer* s_current;
};
