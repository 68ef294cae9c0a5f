// Answers the file dialogs that open on this thread while it lives. Layer: tests.

#include "FileDialogAnswer.h"

#include "BoxAnswer.h"

#include <algorithm>

namespace {

constexpr int kNameBox = 0x47c;
constexpr UINT kPollMilliseconds = 20;

} // namespace

FileDialogAnswer* FileDialogAnswer::s_current = nullptr;

FileDialogAnswer::FileDialogAnswer(CString path)
    : m_path(path), m_timer(::SetTimer(nullptr, 0, kPollMilliseconds, OnTimer)) {
    s_current = this;
}

FileDialogAnswer::~FileDialogAnswer() {
    ::KillTimer(nullptr, m_timer);
    s_current = nullptr;
}

void CALLBACK FileDialogAnswer::OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    HWND window = nullptr;
    while ((window = ::FindWindowEx(nullptr, window, L"#32770", nullptr)) != nullptr) {
        if (s_current != nullptr && ::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId() &&
            ::GetDlgItem(window, kNameBox) != nullptr) {
            s_current->Answer(window);
        }
    }
}

void FileDialogAnswer::Answer(HWND dialog) {
    if (std::find(m_answered.begin(), m_answered.end(), dialog) != m_answered.end()) {
        return;
    }
    m_answered.push_back(dialog);
    wchar_t title[200] = {};
    wchar_t name[MAX_PATH] = {};
    ::GetWindowText(dialog, title, 200);
    ::GetDlgItemText(dialog, kNameBox, name, MAX_PATH);
    m_seen.push_back(Utf8(title) + "|" + Utf8(name));
    if (!m_path.IsEmpty()) {
        ::SetDlgItemText(dialog, kNameBox, m_path);
    }
    ::PostMessage(dialog, WM_COMMAND, m_path.IsEmpty() ? IDCANCEL : IDOK, 0);
}
