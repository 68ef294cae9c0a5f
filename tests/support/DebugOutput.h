// Catches what the program writes to the debugger. Layer 16: tests.
#pragma once

#include <windows.h>

#include <string>

// Everything that is written to the debugger while it exists.
class DebugOutput {
public:
    DebugOutput() {
        s_text.clear();
        m_handler = ::AddVectoredExceptionHandler(1, OnException);
    }
    ~DebugOutput() { ::RemoveVectoredExceptionHandler(m_handler); }
    std::wstring Text() const { return s_text; }

private:
    static LONG CALLBACK OnException(EXCEPTION_POINTERS* info) {
        const EXCEPTION_RECORD& record = *info->ExceptionRecord;
        // Windows raises the wide form first, Wine only the narrow one, in its own code page: tests compare ASCII.
        const DWORD wide = 0x4001000A;
        const DWORD narrow = 0x40010006;
        if (record.ExceptionCode == wide && record.NumberParameters >= 2) {
            s_text += std::wstring(reinterpret_cast<const wchar_t*>(record.ExceptionInformation[1]));
            return EXCEPTION_CONTINUE_EXECUTION;
        }
        if (record.ExceptionCode == narrow && record.NumberParameters >= 2) {
            const std::string text = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
            s_text.append(text.begin(), text.end());
            return EXCEPTION_CONTINUE_EXECUTION;
        }
        return EXCEPTION_CONTINUE_SEARCH;
    }
    void* m_handler;
    inline static std::wstring s_text;
};
