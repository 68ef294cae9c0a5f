// Answers message boxes while it exists, and keeps their texts. For tests on a thread with a display.
// Layer 16: tests.
#pragma once

#include <afxwin.h>

#include <string>
#include <vector>

// One at a time. Each box is answered as soon as it shows: by the answers given, in order, then by the last of them.
// Without answers: the box's default button.
class BoxAnswer {
public:
    explicit BoxAnswer(std::vector<int> answers = {});
    ~BoxAnswer();
    BoxAnswer(const BoxAnswer&) = delete;
    BoxAnswer& operator=(const BoxAnswer&) = delete;

    // The texts of the boxes, in UTF-8, in order.
    const std::vector<std::string>& Texts() const { return m_texts; }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    void Answer(HWND box);

    std::vector<int> m_answers;
    size_t m_next = 0;
    std::vector<HWND> m_seen;
    std::vector<std::string> m_texts;
    HHOOK m_hook = nullptr;
    static BoxAnswer* s_current;
};

// UTF-16 to UTF-8, for readable comparisons.
std::string Utf8(const CString& text);
