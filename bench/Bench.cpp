// Measures the library beside the limits of the same work, in one process: nrvv_bench [--objects N]... [--json FILE]
// [--only TEXT].... Exit code 2 when the pictures differ, 1 when the command line or the file is bad.
// TEXT: a part of a row's name; only such rows are measured.
// Layer 15: bench.
#include "Rows.h"

#include <afxwin.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

CWinApp theApp;

} // namespace

int wmain(int count, wchar_t** arguments) {
    std::vector<int> sizes;
    const wchar_t* json = nullptr;
    for (int i = 1; i < count; ++i) {
        const std::wstring option = arguments[i];
        if (i + 1 == count) {
            std::fwprintf(stderr, L"nrvv_bench: %ls has no value\n", arguments[i]);
            return 1;
        }
        if (option == L"--objects") {
            sizes.push_back(_wtoi(arguments[++i]));
        } else if (option == L"--json") {
            json = arguments[++i];
        } else if (option == L"--only") {
            bench::OnlyRowsWith(CStringA(arguments[++i]).GetString());
        } else {
            std::fwprintf(stderr, L"nrvv_bench: %ls is no option\n", arguments[i]);
            return 1;
        }
    }
    if (sizes.empty()) {
        sizes = {1000, 10000, 100000, 1000000};
    }
    AfxWinInit(::GetModuleHandle(nullptr), nullptr, ::GetCommandLine(), SW_SHOW);
    std::vector<bench::Row> rows;
    bool same = true;
    for (const int size : sizes) {
        same = bench::PaintRows(rows, size) && same;
        bench::DataRows(rows, size);
        bench::EditRows(rows, size);
    }
    bench::StartRows(rows);
    bench::Print(rows);
    if (json != nullptr && !bench::WriteJson(rows, json)) {
        std::fwprintf(stderr, L"nrvv_bench: %ls can't be written\n", json);
        return 1;
    }
    return same ? 0 : 2;
}
