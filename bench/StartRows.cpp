// From the start of the demo to its empty drawing on the screen. Layer 15: bench.
#include "BenchTools.h"
#include "Rows.h"

#include <afxwin.h>

namespace bench {

namespace {

struct Search {
    DWORD process;
    HWND window;
};

BOOL CALLBACK Find(HWND window, LPARAM parameter) {
    auto* search = reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process != search->process || !::IsWindowVisible(window) || ::GetWindow(window, GW_OWNER) != nullptr) {
        return TRUE;
    }
    search->window = window;
    return FALSE;
}

// Milliseconds until the program shows its window and waits for input; 0 when it does not start.
double StartTime(LPCWSTR name) {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    CString program(path);
    program = program.Left(program.ReverseFind(L'\\') + 1) + name;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    const double begin = Milliseconds();
    if (!::CreateProcessW(program, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        return 0.0;
    }
    Search search = {process.dwProcessId, nullptr};
    while (search.window == nullptr && Milliseconds() - begin < 20000.0) {
        ::EnumWindows(Find, reinterpret_cast<LPARAM>(&search));
        ::Sleep(1);
    }
    ::WaitForInputIdle(process.hProcess, 20000);
    const double time = Milliseconds() - begin;
    ::PostMessageW(search.window, WM_CLOSE, 0, 0);
    if (::WaitForSingleObject(process.hProcess, 20000) != WAIT_OBJECT_0) {
        ::TerminateProcess(process.hProcess, 1);
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return time;
}

} // namespace

void StartRows(std::vector<Row>& rows) {
    const char* name = "demo, start to its empty drawing (limit: minimal host)";
    if (!IsWanted(name)) {
        return;
    }
    const Comparison times = Compare(
        5, [] { return StartTime(L"nrvv_demo.exe"); }, [] { return StartTime(L"minimal_host.exe"); });
    rows.push_back({name, 1, times.library, times.limit, 0.0, 230.0, false});
}

} // namespace bench
