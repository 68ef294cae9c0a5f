// The language of the user interface, for as long as it exists. Layer 16: tests.
#pragma once

#include <windows.h>

// Windows takes string resources by the thread's interface language; Wine has one interface language a prefix, and
// uses the thread's locale.
class UiLanguage {
public:
    explicit UiLanguage(LANGID language) : m_language(::GetThreadUILanguage()), m_locale(::GetThreadLocale()) {
        ::SetThreadUILanguage(language);
        ::SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
    }
    ~UiLanguage() {
        ::SetThreadUILanguage(m_language);
        ::SetThreadLocale(m_locale);
    }
    UiLanguage(const UiLanguage&) = delete;
    UiLanguage& operator=(const UiLanguage&) = delete;

    static constexpr LANGID kChinese = MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED);
    static constexpr LANGID kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);

private:
    const LANGID m_language;
    const LCID m_locale;
};
