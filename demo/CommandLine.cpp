#include "CommandLine.h"

#include <shellapi.h>

#include <functional>

namespace {

// Calls with each option and its value, or with an empty name and a file.
void ForEachArgument(const std::function<void(const CString& option, const CString& value)>& call) {
    int count = 0;
    wchar_t** arguments = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    for (int i = 1; arguments != nullptr && i < count; ++i) {
        const CString argument = arguments[i];
        if (argument.Left(2) == L"--") {
            ++i;
            call(argument, i < count ? arguments[i] : L"");
        } else {
            call(CString(), argument);
        }
    }
    ::LocalFree(arguments);
}

CString Find(const CString& wanted) {
    CString found;
    ForEachArgument([&](const CString& option, const CString& value) {
        if (found.IsEmpty() && option == wanted) {
            found = value;
        }
    });
    return found;
}

} // namespace

CString FindOption(const wchar_t* name) {
    return Find(name);
}

CString FindFile() {
    return Find(CString());
}
