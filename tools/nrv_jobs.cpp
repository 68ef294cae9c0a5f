// nrv: several processes at once, and the progress line. Layer 14: tools.

#include "nrv_commands.h"

#include "nrv_text.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr size_t kLargestBatch = 16;

// Quotes the argument so that the C runtime splits the command line as it was.
void AppendArgument(std::wstring& line, const CString& argument) {
    line += L" \"";
    int slashes = 0;
    for (int i = 0; i < argument.GetLength(); ++i) {
        const wchar_t c = argument[i];
        if (c == L'\\') {
            ++slashes;
            continue;
        }
        line.append(static_cast<size_t>(c == L'"' ? 2 * slashes + 1 : slashes), L'\\');
        slashes = 0;
        line += c;
    }
    line.append(static_cast<size_t>(2 * slashes), L'\\');
    line += L'"';
}

// A file that lasts as long as its handle.
HANDLE TemporaryFile() {
    wchar_t folder[MAX_PATH] = {};
    wchar_t path[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, folder);
    ::GetTempFileNameW(folder, L"nrv", 0, path);
    SECURITY_ATTRIBUTES inherit = {sizeof(inherit), nullptr, TRUE};
    return ::CreateFileW(path, GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE, &inherit,
                         CREATE_ALWAYS, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

std::string TextOf(HANDLE file) {
    std::string text;
    ::SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    char block[1 << 16];
    DWORD got = 0;
    while (::ReadFile(file, block, sizeof(block), &got, nullptr) && got > 0) {
        text.append(block, got);
    }
    return text;
}

struct Batch {
    size_t begin = 0;
    size_t end = 0;
    HANDLE process = nullptr;
    HANDLE out = INVALID_HANDLE_VALUE;
    HANDLE err = INVALID_HANDLE_VALUE;
    bool done = false;
};

bool Start(Batch& batch, const std::wstring& common, const NrvOptions& options) {
    wchar_t self[32768] = {};
    ::GetModuleFileNameW(nullptr, self, 32767);
    std::wstring line;
    AppendArgument(line, self);
    line += common;
    line += L" --";
    for (size_t i = batch.begin; i < batch.end; ++i) {
        AppendArgument(line, options.files[i]);
    }
    batch.out = TemporaryFile();
    batch.err = TemporaryFile();
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = batch.out;
    startup.hStdError = batch.err;
    PROCESS_INFORMATION process = {};
    if (batch.out == INVALID_HANDLE_VALUE || batch.err == INVALID_HANDLE_VALUE ||
        !::CreateProcessW(nullptr, line.data() + 1, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
        return false;
    }
    ::CloseHandle(process.hThread);
    batch.process = process.hProcess;
    return true;
}

// Prints what the process wrote, and gives its exit code.
int Finish(Batch& batch, CNrvPrinter& printer) {
    DWORD code = kNrvFailed;
    if (batch.process != nullptr) {
        ::GetExitCodeProcess(batch.process, &code);
        ::CloseHandle(batch.process);
        printer.Part(TextOf(batch.out));
        const std::string said = TextOf(batch.err);
        std::fwrite(said.data(), 1, said.size(), stderr);
    }
    for (HANDLE file : {batch.out, batch.err}) {
        if (file != INVALID_HANDLE_VALUE) {
            ::CloseHandle(file);
        }
    }
    return code <= kNrvUnreadable ? static_cast<int>(code) : static_cast<int>(kNrvFailed);
}

} // namespace

int NrvRunJobs(const NrvOptions& options, CNrvPrinter& printer) {
    // The options, which each process gets before its own files.
    std::wstring common;
    AppendArgument(common, options.command);
    common += L" --part";
    common += options.withFile ? L" --with-file" : L"";
    for (const CString& argument : options.switches) {
        AppendArgument(common, argument);
    }
    const size_t count = options.files.size();
    const size_t jobs = static_cast<size_t>(options.jobs);
    const size_t size = std::clamp<size_t>(count / (jobs * 4), 1, kLargestBatch);
    std::vector<Batch> batches;
    for (size_t begin = 0; begin < count; begin += size) {
        batches.emplace_back();
        batches.back().begin = begin;
        batches.back().end = std::min(count, begin + size);
    }
    int code = kNrvDone;
    size_t started = 0;
    for (size_t next = 0; next < batches.size(); ++next) {
        // At most `jobs` processes run at once, counted from the one whose output is printed next.
        for (; started < batches.size() && started < next + jobs; ++started) {
            if (!Start(batches[started], common, options)) {
                NrvText::Complain(options.files[batches[started].begin], L"no process can be started");
            }
        }
        NrvProgress(batches[next].begin, count, options.files[batches[next].begin]);
        if (batches[next].process != nullptr) {
            ::WaitForSingleObject(batches[next].process, INFINITE);
        }
        NrvProgress(0, 0, CString());
        code = std::max(code, Finish(batches[next], printer));
    }
    return code;
}

void NrvProgress(size_t done, size_t all, const CString& name) {
    static const bool terminal = [] {
        DWORD mode = 0;
        return ::GetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), &mode) != FALSE;
    }();
    static bool shown = false;
    if (!terminal || (name.IsEmpty() && !shown) || (!name.IsEmpty() && all < 2)) {
        return;
    }
    std::string line = "\r\x1b[K";
    if (!name.IsEmpty()) {
        line += std::to_string(done + 1) + " of " + std::to_string(all) + " ";
        NrvText::AppendLine(line, name.GetLength() > 50 ? L"..." + name.Right(47) : name);
    }
    shown = !name.IsEmpty();
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}
