#include "FileDialogAnswer.h"

#include "BoxAnswer.h"

#include <algorithm>

namespace {

constexpr int kNameBox = 0x47c;
constexpr int kFilterBox = 0x470;
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

namespace {

std::string Entries(HWND combo) {
    std::string lines;
    const auto count = static_cast<int>(::SendMessage(combo, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        wchar_t entry[200] = {};
        if (::SendMessage(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(i), 0) < 200) {
            ::SendMessage(combo, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(entry));
        }
        lines += Utf8(entry) + "\n";
    }
    return lines;
}

} // namespace

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
        // A timer message is handled after the posted answer. A disabled dialog is showing a box of its own.
        if (::IsWindowEnabled(dialog) && m_cancelled != dialog) {
            ++m_refused;
            m_cancelled = dialog;
            ::PostMessage(dialog, WM_COMMAND, IDCANCEL, 0);
        }
        return;
    }
    m_answered.push_back(dialog);
    wchar_t title[200] = {};
    wchar_t name[MAX_PATH] = {};
    ::GetWindowText(dialog, title, 200);
    ::GetDlgItemText(dialog, kNameBox, name, MAX_PATH);
    m_seen.push_back(Utf8(title) + "|" + Utf8(name));
    m_filters.push_back(Entries(::GetDlgItem(dialog, kFilterBox)));
    if (!m_path.IsEmpty()) {
        ::SetDlgItemText(dialog, kNameBox, m_path);
    }
    ::PostMessage(dialog, WM_COMMAND, m_path.IsEmpty() ? IDCANCEL : IDOK, 0);
}
