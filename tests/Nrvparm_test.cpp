// The program nrvparm, run as a script runs it: output, messages and exit codes.

#include "support/BoxAnswer.h"

#include <TextParm.h>
#include <vectorview.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

struct Outcome {
    DWORD code = 0;
    std::string out;
    std::string err;
};

std::wstring Beside(const wchar_t* name) {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder = path;
    return folder.substr(0, folder.find_last_of(L'\\') + 1) + name;
}

std::string Slurp(const std::wstring& path) {
    std::string text;
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                0, nullptr);
    char block[4096];
    DWORD got = 0;
    while (::ReadFile(file, block, sizeof(block), &got, nullptr) && got > 0) {
        text.append(block, got);
    }
    ::CloseHandle(file);
    return text;
}

// A folder that is removed with the test.
struct Nrvparm : testing::Test {
    std::wstring folder;

    void SetUp() override {
        wchar_t temp[MAX_PATH] = {};
        ::GetTempPathW(MAX_PATH, temp);
        folder = std::wstring(temp) + L"nrvparm" + std::to_wstring(::GetCurrentProcessId()) + L"_" +
                 std::to_wstring(::GetTickCount());
        ASSERT_TRUE(::CreateDirectoryW(folder.c_str(), nullptr));
        folder += L"\\";
    }
    void TearDown() override {
        WIN32_FIND_DATAW found;
        HANDLE find = ::FindFirstFileW((folder + L"*").c_str(), &found);
        if (find != INVALID_HANDLE_VALUE) {
            do {
                ::DeleteFileW((folder + found.cFileName).c_str());
            } while (::FindNextFileW(find, &found));
            ::FindClose(find);
        }
        ::RemoveDirectoryW(folder.c_str());
    }

    void Save(const wchar_t* name, CVectorView& view) {
        CMemFile file;
        ASSERT_EQ(1, view.GetDocument()->StoreToMemFile(&file));
        std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
        file.SeekToBegin();
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
        SaveBytes(name, bytes);
    }
    void SaveBytes(const wchar_t* name, const std::vector<BYTE>& bytes) {
        HANDLE file = ::CreateFileW((folder + name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, file);
        DWORD done = 0;
        ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
        ::CloseHandle(file);
    }
    // In the folder, so that file names need no path. `input` is given as the standard input.
    Outcome Start(const std::wstring& arguments, const wchar_t* input = nullptr) {
        SECURITY_ATTRIBUTES inherit = {sizeof(inherit), nullptr, TRUE};
        const std::wstring outPath = folder + L"out";
        const std::wstring errPath = folder + L"err";
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput =
            ::CreateFileW(outPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS, 0, nullptr);
        startup.hStdError =
            ::CreateFileW(errPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS, 0, nullptr);
        startup.hStdInput = ::CreateFileW(input != nullptr ? (folder + input).c_str() : L"NUL", GENERIC_READ,
                                          FILE_SHARE_READ, &inherit, OPEN_EXISTING, 0, nullptr);
        std::wstring command = L"\"" + Beside(L"nrvparm.exe") + L"\" " + arguments;
        PROCESS_INFORMATION process = {};
        Outcome run;
        const BOOL started = ::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                              folder.c_str(), &startup, &process);
        EXPECT_TRUE(started) << "nrvparm.exe lies beside this program";
        if (started) {
            EXPECT_EQ(WAIT_OBJECT_0, ::WaitForSingleObject(process.hProcess, 60000));
            ::GetExitCodeProcess(process.hProcess, &run.code);
            ::CloseHandle(process.hThread);
            ::CloseHandle(process.hProcess);
        }
        ::CloseHandle(startup.hStdOutput);
        ::CloseHandle(startup.hStdError);
        ::CloseHandle(startup.hStdInput);
        run.out = Slurp(outPath);
        run.err = Slurp(errPath);
        return run;
    }
};

CTextParm* AddParm(CVectorView& view, const wchar_t* name, const wchar_t* text, double x, double y) {
    return static_cast<CTextParm*>(
        view.AddParmText(CGePoint2d(x, y), text, name, 0, Gdiplus::Color(0xFFFFFFFF), 20.0, 0));
}

TEST_F(Nrvparm, PrintsANameAndATextOnEachLine) {
    CVectorView view;
    AddParm(view, L"高度", L"300", 0, 0);
    view.AddText(CGePoint2d(), L"no parameter", 0, Gdiplus::Color(0xFFFFFFFF), 0);
    AddParm(view, L"\xD840\xDC0B", L"", 0, 0);
    AddParm(view, L"", L"x", 0, 0);
    Save(L"a.nrv", view);
    const Outcome run = Start(L"a.nrv");
    EXPECT_EQ("高度\t300\n𠀋\t\n\tx\n", run.out);
    EXPECT_EQ("", run.err);
    EXPECT_EQ(0u, run.code);
}

TEST_F(Nrvparm, NamesTheFileWhenThereAreSeveral) {
    CVectorView a;
    AddParm(a, L"A", L"1", 0, 0);
    Save(L"图.nrv", a);
    CVectorView b;
    AddParm(b, L"B", L"2", 0, 0);
    Save(L"b.nrv", b);
    const Outcome run = Start(L"图.nrv b.nrv");
    EXPECT_EQ("图.nrv\tA\t1\nb.nrv\tB\t2\n", run.out);
    EXPECT_EQ(0u, run.code);
}

TEST_F(Nrvparm, KeepsEachParameterOnItsLine) {
    CVectorView view;
    AddParm(view, L"a\tb", L"1\n2\r\\ \x1b\x7f", 0, 0);
    AddParm(view, L"half", L"\xD840|\xDC0B", 0, 0);
    Save(L"a.nrv", view);
    EXPECT_EQ("a\\tb\t1\\n2\\r\\\\ \\x1b\\x7f\nhalf\t\xEF\xBF\xBD|\xEF\xBF\xBD\n", Start(L"a.nrv").out);
}

TEST_F(Nrvparm, PrintsJson) {
    CVectorView view;
    CTextParm* parm = AddParm(view, L"W\"\\", L"12\n", -1.5, 1e21);
    parm->SetParmDes(L"宽度||mm||4");
    parm->SetParmType(4);
    parm->SetParmRegularExp(L"^\\d+$");
    AddParm(view, L"H", L"7", 0.1, 100);
    Save(L"a.nrv", view);
    const Outcome run = Start(L"--json a.nrv");
    EXPECT_EQ("[\n"
              R"({"file": "a.nrv", "name": "W\"\\", "text": "12\u000a", "type": 4, "expression": "^\\d+$", )"
              R"("description": "宽度||mm||4", "position": [-1.5, 1e+21]},)"
              "\n"
              R"({"file": "a.nrv", "name": "H", "text": "7", "type": 2, )"
              R"("expression": "^((\\d\\.?\\d*)|([1-9]\\d*\\.?\\d*))$", "description": "", "position": [0.1, 100]})"
              "\n]\n",
              run.out);
    EXPECT_EQ(0u, run.code);
}

TEST_F(Nrvparm, JsonHasNoWordForWhatIsNoNumber) {
    CVectorView view;
    AddParm(view, L"N", L"1", std::nan(""), HUGE_VAL);
    Save(L"a.nrv", view);
    EXPECT_NE(std::string::npos, Start(L"--json a.nrv").out.find("\"position\": [null, null]}"));
}

TEST_F(Nrvparm, ADrawingWithoutParametersPrintsNothing) {
    CVectorView view;
    Save(L"a.nrv", view);
    Outcome run = Start(L"a.nrv");
    EXPECT_EQ("", run.out);
    EXPECT_EQ(0u, run.code);
    run = Start(L"--json a.nrv");
    EXPECT_EQ("[\n]\n", run.out);
    EXPECT_EQ(0u, run.code);
}

TEST_F(Nrvparm, ABadFileIsNamedAndTheOthersArePrinted) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    Save(L"good.nrv", view);
    SaveBytes(L"two.nrv", {2, 0, 0, 0});
    SaveBytes(L"short.nrv", {1, 0});
    SaveBytes(L"empty.nrv", {});
    const Outcome run = Start(L"missing.nrv two.nrv short.nrv empty.nrv good.nrv");
    EXPECT_EQ("good.nrv\tA\t1\n", run.out);
    EXPECT_EQ(0u, run.err.find("nrvparm: missing.nrv: cannot open: "));
    EXPECT_NE(std::string::npos, run.err.find("\nnrvparm: two.nrv: not a drawing of a known version\n"));
    EXPECT_NE(std::string::npos, run.err.find("\nnrvparm: short.nrv: not a drawing of a known version\n"));
    EXPECT_NE(std::string::npos, run.err.find("\nnrvparm: empty.nrv: not a drawing: the file is empty\n"));
    EXPECT_EQ(1u, run.code);
}

TEST_F(Nrvparm, ADamagedFileIsPrintedUpToTheDamage) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    AddParm(view, L"B", L"1", 0, 0);
    CMemFile file;
    view.GetDocument()->StoreToMemFile(&file);
    std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()) - 10);
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    SaveBytes(L"cut.nrv", bytes);
    const Outcome run = Start(L"cut.nrv");
    EXPECT_EQ("A\t1\n", run.out);
    EXPECT_EQ("nrvparm: cut.nrv: damaged: only its beginning could be read\n", run.err);
    EXPECT_EQ(1u, run.code);
}

TEST_F(Nrvparm, ReadsTheStandardInput) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    Save(L"a.nrv", view);
    const Outcome run = Start(L"-", L"a.nrv");
    EXPECT_EQ("A\t1\n", run.out);
    EXPECT_EQ(0u, run.code);
}

TEST_F(Nrvparm, ExplainsItself) {
    const Outcome run = Start(L"--help");
    EXPECT_EQ(0u, run.out.find("Usage: nrvparm [--json] FILE..."));
    EXPECT_NE(std::string::npos, run.out.find("Exit status: 0"));
    EXPECT_EQ(std::string::npos, run.out.find('\r'));
    EXPECT_EQ(0u, run.code);
    EXPECT_EQ("nrvparm 1.0.0\n", Start(L"--version").out);
}

TEST_F(Nrvparm, ACommandLineItDoesNotUnderstandIsTwo) {
    Outcome run = Start(L"");
    EXPECT_EQ(2u, run.code);
    EXPECT_EQ("nrvparm: no file given\nTry \"nrvparm --help\".\n", run.err);
    run = Start(L"--xml a.nrv");
    EXPECT_EQ(2u, run.code);
    EXPECT_EQ("nrvparm: unknown option --xml\nTry \"nrvparm --help\".\n", run.err);
    EXPECT_EQ("", run.out);
}

TEST_F(Nrvparm, AfterTwoDashesEverythingIsAFile) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    Save(L"--json", view);
    EXPECT_EQ("A\t1\n", Start(L"-- --json").out);
}

TEST_F(Nrvparm, ReadsHundredsOfFilesInOneRun) {
    CVectorView view;
    for (int i = 0; i < 20; ++i) {
        AddParm(view, L"A", L"1", i, i);
    }
    Save(L"a", view);
    std::wstring arguments;
    for (int i = 0; i < 500; ++i) {
        arguments += L"a ";
    }
    const Outcome run = Start(arguments);
    EXPECT_EQ(0u, run.code);
    EXPECT_EQ("", run.err);
    size_t lines = 0;
    for (const char c : run.out) {
        lines += c == '\n';
    }
    EXPECT_EQ(500u * 20u, lines);
}

} // namespace
