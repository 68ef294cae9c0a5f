// Answers the file dialogs that open on this thread while it exists: with a path, or by cancelling. The interface is
// Chinese for that time.
// Layer 16: tests.
#pragma once

#include "UiLanguage.h"

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
    // Of each dialog: the kinds of files it offers, one line each.
    const std::vector<std::string>& Filters() const { return m_filters; }
    // How many dialogs did not take the path and stayed open; these are cancelled.
    int Refused() const { return m_refused; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
    void Answer(HWND dialog);

    const UiLanguage m_language{UiLanguage::kChinese};
    CString m_path;
    UINT_PTR m_timer;
    std::vector<HWND> m_answered;
    std::vector<std::string> m_seen;
    std::vector<std::string> m_filters;
    int m_refused = 0;
    HWND m_cancelled = nullptr; // The last refused one.
    static FileDialogAnswer* s_current;
};
