#include "BoxAnswer.h"

#include <algorithm>

namespace {

constexpr int kMessageTextId = 0xffff;

std::string ToUtf8(const wchar_t* text, int length) {
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text, length, result.data(), size, nullptr, nullptr);
    return result;
}

} // namespace

BoxAnswer* BoxAnswer::s_current = nullptr;

std::string Utf8(const CString& text) {
    return ToUtf8(text, text.GetLength());
}

BoxAnswer::BoxAnswer(std::vector<int> answers) : m_answers(std::move(answers)) {
    s_current = this;
    m_hook = ::SetWindowsHookEx(WH_CBT, Hook, nullptr, ::GetCurrentThreadId());
}

BoxAnswer::~BoxAnswer() {
    ::UnhookWindowsHookEx(m_hook);
    s_current = nullptr;
}

LRESULT CALLBACK BoxAnswer::Hook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE && s_current != nullptr) {
        s_current->Answer(reinterpret_cast<HWND>(wParam));
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

void BoxAnswer::Answer(HWND box) {
    wchar_t className[16] = {};
    ::GetClassName(box, className, 16);
    const HWND message = ::GetDlgItem(box, kMessageTextId);
    if (std::wstring(className) != L"#32770" || message == nullptr ||
        std::find(m_seen.begin(), m_seen.end(), box) != m_seen.end()) {
        return;
    }
    m_seen.push_back(box);
    wchar_t text[1024] = {};
    const int length = ::GetWindowText(message, text, 1024);
    // Without a CString, because a test may be refusing its memory.
    m_texts.push_back(ToUtf8(text, length));
    int answer = 0;
    if (!m_answers.empty()) {
        answer = m_answers[std::min(m_next++, m_answers.size() - 1)];
    } else {
        answer = static_cast<int>(LOWORD(::SendMessage(box, DM_GETDEFID, 0, 0)));
    }
    ::PostMessage(box, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED), 0);
}
