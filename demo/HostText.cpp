#include "HostText.h"

#include "CommandLine.h"

#include <map>
#include <string>

namespace {

const LANGID Chinese = MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED);
const LANGID English = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);

LANGID FindLanguage() {
    const CString wanted = FindOption(L"--lang");
    const bool chinese =
        wanted.IsEmpty() ? PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_CHINESE : wanted == L"zh";
    return chinese ? Chinese : English;
}

LANGID Language() {
    static const LANGID language = FindLanguage();
    return language;
}

// Sixteen strings are one resource: the length of each, then its characters.
std::wstring Find(UINT id) {
    const HINSTANCE module = ::GetModuleHandleW(nullptr);
    const HRSRC block = ::FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(id / 16 + 1), Language());
    if (block == nullptr) {
        return std::wstring();
    }
    const auto* at = static_cast<const wchar_t*>(::LockResource(::LoadResource(module, block)));
    for (UINT i = 0; i < id % 16; ++i) {
        at += 1 + *at;
    }
    return std::wstring(at + 1, *at);
}

} // namespace

const wchar_t* LoadText(UINT id) {
    static std::map<UINT, std::wstring> texts;
    auto found = texts.find(id);
    if (found == texts.end()) {
        found = texts.emplace(id, Find(id)).first;
    }
    return found->second.c_str();
}

CString LoadTextLine(UINT id, int line) {
    const std::wstring text = LoadText(id);
    size_t begin = 0;
    for (; line > 0; --line) {
        const size_t end = text.find(L'\n', begin);
        if (end == std::wstring::npos) {
            return CString();
        }
        begin = end + 1;
    }
    return text.substr(begin, text.find(L'\n', begin) - begin).c_str();
}

bool IsChinese() {
    return Language() == Chinese;
}

void SetThreadLanguage() {
    ::SetThreadUILanguage(Language());
    ::SetThreadLocale(MAKELCID(Language(), SORT_DEFAULT));
}
