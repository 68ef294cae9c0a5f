// Does something with each message box as soon as it shows. Layer 16: tests.
#pragma once

#include <windows.h>

#include <functional>
#include <set>

// One at a time, on the thread that made it.
class OnBox {
public:
    explicit OnBox(std::function<void(HWND)> action) : m_action(std::move(action)) {
        s_current = this;
        m_hook = ::SetWindowsHookEx(WH_CBT, Hook, nullptr, ::GetCurrentThreadId());
    }
    ~OnBox() {
        ::UnhookWindowsHookEx(m_hook);
        s_current = nullptr;
    }
    OnBox(const OnBox&) = delete;
    OnBox& operator=(const OnBox&) = delete;

    size_t Seen() const { return m_seen.size(); }

    // Tries everything that leaves a box without one of its buttons, and then presses the button.
    static void TryToLeave(HWND box, int button) {
        ::PostMessage(box, WM_KEYDOWN, VK_ESCAPE, 1);
        ::PostMessage(box, WM_CLOSE, 0, 0);
        ::PostMessage(box, WM_SYSCOMMAND, SC_CLOSE, 0);
        ::PostMessage(box, WM_COMMAND, IDCANCEL, 0);
        ::PostMessage(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
    }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam) {
        const HWND box = reinterpret_cast<HWND>(wParam);
        // Only a message box has a text with this number.
        if (code == HCBT_ACTIVATE && s_current != nullptr && ::GetDlgItem(box, 0xffff) != nullptr &&
            s_current->m_seen.insert(box).second) {
            s_current->m_action(box);
        }
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }

    std::function<void(HWND)> m_action;
    std::set<HWND> m_seen;
    HHOOK m_hook = nullptr;
    inline static OnBox* s_current = nullptr;
};
