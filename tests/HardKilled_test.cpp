// A program that is ended in the middle of a save leaves the old drawing or the new one, and nothing in between.

#include "Document.h"
#include "support/ImportPatch.h"
#include "support/TemporaryPath.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

constexpr DWORD kEnded = 99;      // Exit code of a child that was ended at its call.
constexpr int kFewLines = 60;     // Some 4 kB: two calls of writing.
constexpr int kManyLines = 60000; // Some 4 MB: a thousand calls of writing.
constexpr LPCWSTR kPath = L"NR_SAVE_TO";
constexpr LPCWSTR kEndAt = L"NR_END_AT";
constexpr LPCWSTR kLines = L"NR_SAVE_LINES";
constexpr LPCWSTR kEveryPoint = L"NR_EVERY_POINT"; // Set: the long form, for a run by hand.

// ---- The child: counts what the system's file functions ask of the kernel, and ends before the nth
// -------------------

LONG g_seen;
LONG g_endAt; // 0: never

using KernelCall = ULONG_PTR(WINAPI*)(ULONG_PTR, ULONG_PTR, ULONG_PTR, ULONG_PTR, ULONG_PTR, ULONG_PTR, ULONG_PTR,
                                      ULONG_PTR, ULONG_PTR, ULONG_PTR, ULONG_PTR);
constexpr const char* kCalls[] = {"NtCreateFile",         "NtOpenFile",         "NtWriteFile",
                                  "NtSetInformationFile", "NtFlushBuffersFile", "NtClose"};
KernelCall g_kernel[std::size(kCalls)];

// None of these has more than eleven arguments; passing on more than a function has is harmless in this calling
// convention.
template <size_t Index>
ULONG_PTR WINAPI Counted(ULONG_PTR a, ULONG_PTR b, ULONG_PTR c, ULONG_PTR d, ULONG_PTR e, ULONG_PTR f, ULONG_PTR g,
                         ULONG_PTR h, ULONG_PTR i, ULONG_PTR j, ULONG_PTR k) {
    if (++g_seen == g_endAt) {
        ::TerminateProcess(::GetCurrentProcess(), kEnded);
    }
    return g_kernel[Index](a, b, c, d, e, f, g, h, i, j, k);
}

template <size_t... Index>
int Watch(ImportPatch& patch, std::index_sequence<Index...>) {
    const HMODULE kernel = ::GetModuleHandleW(L"ntdll.dll");
    ((g_kernel[Index] = reinterpret_cast<KernelCall>(reinterpret_cast<void*>(::GetProcAddress(kernel, kCalls[Index])))),
     ...);
    return (patch.Replace(kCalls[Index], &Counted<Index>) + ...);
}

CString Variable(LPCWSTR name) {
    wchar_t text[MAX_PATH] = {};
    ::GetEnvironmentVariableW(name, text, MAX_PATH);
    return text;
}

void Fill(CGraphicDocument& document, int lines) {
    for (int i = 0; i < lines; ++i) {
        document.AddLine(0, 0, 0, 0, 0, 0, static_cast<float>(i), 0, 0, 1);
    }
}

// ---- The parent ----------------------------------------------------------------------------------------------------

// Runs the child, which saves `lines` lines to the path, until its nth call. Its exit code.
DWORD RunChild(const TemporaryPath& path, int lines, int endAt) {
    wchar_t program[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    CString command;
    command.Format(L"\"%s\" --gtest_filter=HardKilled.DISABLED_TheChild --gtest_also_run_disabled_tests", program);
    CString number;
    number.Format(L"%d", endAt);
    ::SetEnvironmentVariableW(kPath, path);
    ::SetEnvironmentVariableW(kEndAt, number);
    number.Format(L"%d", lines);
    ::SetEnvironmentVariableW(kLines, number);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES; // Nothing of the child's is shown.
    PROCESS_INFORMATION child = {};
    if (!::CreateProcessW(nullptr, command.GetBuffer(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &child)) {
        return 0;
    }
    ::WaitForSingleObject(child.hProcess, 60000);
    DWORD code = 0;
    ::GetExitCodeProcess(child.hProcess, &code);
    ::CloseHandle(child.hThread);
    ::CloseHandle(child.hProcess);
    return code;
}

// Takes away what ended children have left in the temporary folder.
int RemoveFilesInTheMaking() {
    wchar_t folder[MAX_PATH] = {};
    ::GetTempPath(MAX_PATH, folder);
    int count = 0;
    WIN32_FIND_DATA found = {};
    const HANDLE search = ::FindFirstFile(CString(folder) + L"NRV*.tmp", &found);
    while (search != INVALID_HANDLE_VALUE) {
        count += ::DeleteFile(CString(folder) + found.cFileName) ? 1 : 0;
        if (!::FindNextFile(search, &found)) {
            ::FindClose(search);
            break;
        }
    }
    return count;
}

} // namespace

TEST(HardKilled, DISABLED_TheChild) {
    const CString path = Variable(kPath);
    if (path.IsEmpty()) {
        return;
    }
    LoneDocument lone;
    Fill(lone.document, _wtoi(Variable(kLines)));
    g_endAt = _wtoi(Variable(kEndAt));
    int places = 0;
    BOOL saved = FALSE;
    {
        ImportPatch patch(L"kernelbase.dll");
        places = Watch(patch, std::make_index_sequence<std::size(kCalls)>());
        saved = lone.document.OnSaveDocument(path);
    }
    // The number of calls is the answer. Two processes at once must not mix their output: it is the exit code.
    ::TerminateProcess(::GetCurrentProcess(), saved && places >= 4 ? 1000 + static_cast<DWORD>(g_seen) : 1);
}

TEST(HardKilled, AProgramEndedAtAnyPointOfASaveLeavesTheOldDrawingOrTheNewOne) {
    const bool everyPoint = !Variable(kEveryPoint).IsEmpty();
    const int lines = everyPoint ? kManyLines : kFewLines;
    const Bytes old = ReadTestData("lines_two.nrv");
    Bytes bytes;
    {
        LoneDocument lone;
        Fill(lone.document, lines);
        bytes = lone.Store();
        ASSERT_EQ(-1, lone.LoadRaw(bytes));
        ASSERT_EQ(lines, lone.Objects().GetSize()) << "the new drawing can be loaded";
    }
    const TemporaryPath path;
    path.Write(old);
    RemoveFilesInTheMaking();
    const DWORD whole = RunChild(path, lines, 0);
    ASSERT_LT(1000u, whole) << "the save itself";
    ASSERT_EQ(bytes, path.Read());
    const int calls = static_cast<int>(whole) - 1000;
    EXPECT_LT(everyPoint ? 1000 : 8, calls);
    int ended = 0;
    int kept = 0;
    for (int n = 1; n <= calls; ++n) {
        SCOPED_TRACE(n);
        path.Write(old);
        ended += RunChild(path, lines, n) == kEnded ? 1 : 0;
        ASSERT_TRUE(path.Exists()) << "no drawing at all";
        const Bytes left = path.Read();
        kept += left == old ? 1 : 0;
        EXPECT_TRUE(left == old || left == bytes) << left.size() << " bytes";
    }
    EXPECT_EQ(calls, ended);
    EXPECT_LT(0, kept);
    const int beside = RemoveFilesInTheMaking();
    std::printf("ended at %d points: %d times the old drawing, %d times the new one; %d unfinished files beside it\n",
                ended, kept, ended - kept, beside);
}
