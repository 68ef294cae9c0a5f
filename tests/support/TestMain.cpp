// main() of every test program: a run of no test fails, and a fault ends the process with its address and no dialog.
// With NR_FILLED_HEAP set the whole run is on a heap that shows use after free. Layer 16: tests.

#include "FaultNote.h"
#include "FilledHeap.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <memory>

namespace {

constexpr UINT kExitFault = 70;
constexpr int kExitNoTests = 71;

// GoogleTest can be asked for the running test only while it runs tests: not from a destructor at exit.
bool g_testing = false;

// Ends the line of a fault with the name of the running test, and ends the process.
[[noreturn]] void EndWithNote() {
    const testing::TestInfo* const test = g_testing ? testing::UnitTest::GetInstance()->current_test_info() : nullptr;
    if (test) {
        std::fprintf(stderr, ", in %s.%s %s", test->test_suite_name(), test->name(), g_faultNote);
    }
    std::fprintf(stderr, "\n");
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), kExitFault);
    __builtin_unreachable();
}

// Prints module and offset, so that `x86_64-w64-mingw32-addr2line -e <module> <offset + image base>` finds the line.
LONG WINAPI OnFault(EXCEPTION_POINTERS* fault) {
    static bool again = false;
    if (again) { // a fault in here
        TerminateProcess(GetCurrentProcess(), kExitFault);
    }
    again = true;
    const EXCEPTION_RECORD& record = *fault->ExceptionRecord;
    HMODULE module = nullptr;
    char path[MAX_PATH] = "?";
    if (GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           static_cast<const char*>(record.ExceptionAddress), &module)) {
        GetModuleFileNameA(module, path, MAX_PATH);
    }
    const auto offset = reinterpret_cast<ULONG_PTR>(record.ExceptionAddress) - reinterpret_cast<ULONG_PTR>(module);
    std::fprintf(stderr, "FAULT %08lx at %p (%s+0x%llx)", record.ExceptionCode, record.ExceptionAddress, path,
                 static_cast<unsigned long long>(offset));
    if (record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && record.NumberParameters >= 2) {
        std::fprintf(stderr, ", %s %p", record.ExceptionInformation[0] == 1 ? "writing" : "reading",
                     reinterpret_cast<void*>(record.ExceptionInformation[1]));
    }
    EndWithNote();
}

// Called by abort(), in whatever module: an uncaught exception, or a failed check of the runtime.
[[noreturn]] void OnAbort(int) {
    std::fprintf(stderr, "ABORT");
    EndWithNote();
}

} // namespace

int main(int argc, char** argv) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(OnFault);
    std::signal(SIGABRT, OnAbort);
    testing::InitGoogleTest(&argc, argv);
    const std::unique_ptr<FilledHeap> heap(GetEnvironmentVariableW(L"NR_FILLED_HEAP", nullptr, 0) != 0 ? new FilledHeap
                                                                                                       : nullptr);
    g_testing = true;
    const int result = RUN_ALL_TESTS();
    g_testing = false;
    if (!GTEST_FLAG_GET(list_tests) && testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::fprintf(stderr, "no test ran\n");
        return kExitNoTests;
    }
    return result;
}
