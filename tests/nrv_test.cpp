// The program nrv, run as a script runs it: output, messages and exit codes.

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

// A folder that goes with the test.
struct Nrv : testing::Test {
    std::wstring folder;

    void SetUp() override {
        wchar_t temp[MAX_PATH] = {};
        ::GetTempPathW(MAX_PATH, temp);
        folder = std::wstring(temp) + L"nrvtest" + std::to_wstring(::GetCurrentProcessId()) + L"_" +
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
        std::wstring command = L"\"" + Beside(L"nrv.exe") + L"\" " + arguments;
        PROCESS_INFORMATION process = {};
        Outcome run;
        const BOOL started = ::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                              folder.c_str(), &startup, &process);
        EXPECT_TRUE(started) << "nrv.exe lies beside this program";
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

TEST_F(Nrv, PrintsANameAndATextOnEachLine) {
    CVectorView view;
    AddParm(view, L"高度", L"300", 0, 0);
    view.AddText(CGePoint2d(), L"no parameter", 0, Gdiplus::Color(0xFFFFFFFF), 0);
    AddParm(view, L"\xD840\xDC0B", L"", 0, 0);
    AddParm(view, L"", L"x", 0, 0);
    Save(L"a.nrv", view);
    const Outcome run = Start(L"params a.nrv");
    EXPECT_EQ("高度\t300\n𠀋\t\n\tx\n", run.out);
    EXPECT_EQ("", run.err);
    EXPECT_EQ(0u, run.code);
}

TEST_F(Nrv, NamesTheFileWhenThereAreSeveral) {
    CVectorView a;
    AddParm(a, L"A", L"1", 0, 0);
    Save(L"图.nrv", a);
    CVectorView b;
    AddParm(b, L"B", L"2", 0, 0);
    Save(L"b.nrv", b);
    const Outcome run = Start(L"params 图.nrv b.nrv");
    EXPECT_EQ("图.nrv\tA\t1\nb.nrv\tB\t2\n", run.out);
    EXPECT_EQ(0u, run.code);
}

TEST_F(Nrv, KeepsEachParameterOnItsLine) {
    CVectorView view;
    AddParm(view, L"a\tb", L"1\n2\r\\ \x1b\x7f", 0, 0);
    AddParm(view, L"half", L"\xD840|\xDC0B", 0, 0);
    Save(L"a.nrv", view);
    EXPECT_EQ("a\\tb\t1\\n2\\r\\\\ \\x1b\\x7f\nhalf\t\xEF\xBF\xBD|\xEF\xBF\xBD\n", Start(L"params a.nrv").out);
}

TEST_F(Nrv, PrintsJson) {
    CVectorView view;
    CTextParm* parm = AddParm(view, L"W\"\\", L"12\n", -1.5, 1e21);
    parm->SetParmDes(L"宽度||mm||4");
    parm->SetParmType(4);
    parm->SetParmRegularExp(L"^\\d+$");
    AddParm(view, L"H", L"7", 0.1, 100);
    Save(L"a.nrv", view);
    const Outcome run = Start(L"params --json a.nrv");
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

TEST_F(Nrv, JsonWritesNullForANumberThatIsNotFinite) {
    CVectorView view;
    AddParm(view, L"N", L"1", std::nan(""), HUGE_VAL);
    Save(L"a.nrv", view);
    EXPECT_NE(std::string::npos, Start(L"params --json a.nrv").out.find("\"position\": [null, null]}"));
}

TEST_F(Nrv, ADrawingWithoutParametersPrintsNothing) {
    CVectorView view;
    Save(L"a.nrv", view);
    Outcome run = Start(L"params a.nrv");
    EXPECT_EQ("", run.out);
    EXPECT_EQ(0u, run.code);
    run = Start(L"params --json a.nrv");
    EXPECT_EQ("[\n]\n", run.out);
    EXPECT_EQ(0u, run.code);
}

TEST_F(Nrv, ABadFileIsNamedAndTheOthersArePrinted) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    Save(L"good.nrv", view);
    SaveBytes(L"two.nrv", {2, 0, 0, 0});
    SaveBytes(L"short.nrv", {1, 0});
    SaveBytes(L"empty.nrv", {});
    const Outcome run = Start(L"params missing.nrv two.nrv short.nrv empty.nrv good.nrv");
    EXPECT_EQ("good.nrv\tA\t1\n", run.out);
    EXPECT_EQ(0u, run.err.find("nrv: missing.nrv: cannot open: "));
    EXPECT_NE(std::string::npos, run.err.find("\nnrv: two.nrv: not a drawing of a known version (byte 0)\n"));
    EXPECT_NE(std::string::npos, run.err.find("\nnrv: short.nrv: not a drawing of a known version (byte 0)\n"));
    EXPECT_NE(std::string::npos, run.err.find("\nnrv: empty.nrv: not a drawing: the file is empty\n"));
    EXPECT_EQ(1u, run.code);
}

// The stream of a view.
std::vector<BYTE> StreamOf(CVectorView& view) {
    CMemFile file;
    view.GetDocument()->StoreToMemFile(&file);
    std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

TEST_F(Nrv, AMessageHasThePathAsItIs) {
    const Outcome run = Start(L"check \"" + folder + L"missing.nrv\"");
    EXPECT_EQ("nrv: " + std::string(CStringA(CString(folder.c_str()))) + "missing.nrv: cannot open: File not found\n",
              run.err);
}

TEST_F(Nrv, ADamagedFileIsPrintedUpToTheDamage) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    const size_t end = StreamOf(view).size();
    AddParm(view, L"B", L"1", 0, 0);
    std::vector<BYTE> bytes = StreamOf(view);
    bytes.resize(bytes.size() - 10);
    SaveBytes(L"cut.nrv", bytes);
    const Outcome run = Start(L"params cut.nrv");
    EXPECT_EQ("A\t1\n", run.out);
    EXPECT_EQ("nrv: cut.nrv: damaged at byte " + std::to_string(end) + ": 1 of 2 objects could be read\n", run.err);
    EXPECT_EQ(1u, run.code);
}

TEST_F(Nrv, CheckTellsWholeFromDamagedFromUnreadable) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    AddParm(view, L"B", L"1", 0, 0);
    AddParm(view, L"C", L"1", 0, 0);
    std::vector<BYTE> bytes = StreamOf(view);
    SaveBytes(L"whole", bytes);
    bytes.resize(bytes.size() - 1);
    SaveBytes(L"cut", bytes);
    bytes.resize(37);
    SaveBytes(L"short", bytes);
    bytes[0] = 2;
    SaveBytes(L"other", bytes);
    Outcome run = Start(L"check whole");
    EXPECT_EQ(0u, run.code);
    EXPECT_EQ("whole\twhole\t3 objects\t0 lost\n", run.out);
    EXPECT_EQ("", run.err);
    run = Start(L"check whole cut");
    EXPECT_EQ(1u, run.code);
    EXPECT_EQ("whole\twhole\t3 objects\t0 lost\ncut\tdamaged\t2 objects\t1 lost\n", run.out);
    EXPECT_EQ(0u, run.err.find("nrv: cut: damaged at byte "));
    run = Start(L"check short");
    EXPECT_EQ(2u, run.code);
    EXPECT_EQ("nrv: short: ends at byte 37, within its header of 38 bytes\n", run.err);
    EXPECT_EQ(2u, Start(L"check other cut").code);
    EXPECT_EQ(2u, Start(L"check missing").code);
    EXPECT_EQ("[\n{\"file\": \"whole\", \"state\": \"whole\", \"objects\": 3, \"lost\": 0, \"damage\": null}\n]\n",
              Start(L"check --json whole").out);
}

TEST_F(Nrv, CheckSeesAHeaderThatAnnouncesLessThanNothing) {
    CVectorView view;
    std::vector<BYTE> bytes = StreamOf(view);
    ASSERT_EQ(38u, bytes.size());
    bytes[37] = 0x80;
    SaveBytes(L"minus", bytes);
    const Outcome run = Start(L"check minus");
    EXPECT_EQ(1u, run.code);
    EXPECT_EQ("nrv: minus: damaged at byte 34: it announces -2147483648 objects\n", run.err);
}

TEST_F(Nrv, InfoTellsKindsLayersExtentsAndSchemas) {
    CVectorView view;
    view.AddLine(CGePoint2d(-1, 2), CGePoint2d(30.5, 4), Gdiplus::Color(0xFFFFFFFF), 0);
    view.AddLine(CGePoint2d(0, 0), CGePoint2d(1, 1), Gdiplus::Color(0xFFFFFFFF), 0)->SetLayer(3);
    view.GetVectorViewCoordTran()->SetScale(1.3f);
    Save(L"a.nrv", view);
    Outcome run = Start(L"info a.nrv");
    EXPECT_EQ(0u, run.code);
    EXPECT_EQ(0u, run.out.find("a.nrv\n  state       whole\n  bytes       "));
    EXPECT_NE(std::string::npos, run.out.find("\n  objects     2 of 2\n    CLine           2, schema 5\n"));
    EXPECT_NE(std::string::npos, run.out.find("\n  layers      0: 1, 3: 1\n"));
    EXPECT_NE(std::string::npos, run.out.find("\n  extents     (-1, 0) to (30.5, 4)\n"));
    EXPECT_NE(std::string::npos, run.out.find("\n  background  #000000\n"));
    EXPECT_NE(std::string::npos, run.out.find("\n  view        1.3 units per pixel, ")) << run.out;
    run = Start(L"info --json a.nrv");
    EXPECT_NE(std::string::npos,
              run.out.find(R"("kinds": {"CLine": {"count": 2, "schema": 5}}, "layers": {"0": 1, "3": 1}, )"
                           R"("extents": [-1, 0, 30.5, 4], "background": "#000000")"))
        << run.out;
    EXPECT_EQ(1u, Start(L"info missing.nrv").code);
}

TEST_F(Nrv, ListPrintsEveryObjectWithItsProperties) {
    CVectorView view;
    view.AddLine(CGePoint2d(-1, 2), CGePoint2d(30.5, 4), Gdiplus::Color(255, 0, 0), 0);
    view.AddText(CGePoint2d(0, 0), L"a\tb", 0, Gdiplus::Color(0xFFFFFFFF), 0);
    Save(L"a.nrv", view);
    Outcome run = Start(L"list a.nrv");
    EXPECT_EQ(0u, run.out.find("0\tCLine\t0\t")) << run.out;
    EXPECT_NE(std::string::npos, run.out.find("=30.5\t")) << run.out;
    EXPECT_NE(std::string::npos, run.out.find("\n1\tCText\t0\t")) << run.out;
    EXPECT_NE(std::string::npos, run.out.find("\tm_Text=a\\tb\t")) << run.out;
    run = Start(L"list --json a.nrv");
    EXPECT_NE(std::string::npos,
              run.out.find(R"({"file": "a.nrv", "index": 0, "kind": "CLine", "name": "直线", "layer": 0, )"
                           R"("shown": true, "color": "#ff0000", "extents": [-1, 2, 30.5, 4], )"))
        << run.out;
    EXPECT_NE(std::string::npos, run.out.find(R"(["m_Text", "内容", "a\u0009b"])")) << run.out;
}

TEST_F(Nrv, ANumberOfSinglePrecisionHasItsOwnDigits) {
    CVectorView view;
    CDrawable* text = view.AddText(CGePoint2d(0, 0), L"a", 0, Gdiplus::Color(0xFFFFFFFF), 0);
    static_cast<CText*>(text)->SetTextRatio(0.1f);
    Save(L"a.nrv", view);
    EXPECT_NE(std::string::npos, Start(L"list a.nrv").out.find("=0.1\n")) << Start(L"list a.nrv").out;
    EXPECT_NE(std::string::npos, Start(L"list --json a.nrv").out.find(R"("文字宽高比", 0.1])"));
}

TEST_F(Nrv, PrintsParametersAsCsv) {
    CVectorView view;
    AddParm(view, L"W, \"x\"", L"1\n2", 0.5, -3)->SetParmRegularExp(L"");
    Save(L"a.nrv", view);
    EXPECT_EQ("file,name,text,type,expression,description,x,y\n"
              "a.nrv,\"W, \"\"x\"\"\",\"1\n2\",2,,,0.5,-3\n",
              Start(L"params --csv a.nrv").out);
}

TEST_F(Nrv, SetChangesParametersAndNothingElse) {
    CVectorView view;
    AddParm(view, L"高度", L"300", 0, 0);
    AddParm(view, L"B", L"1", 0, 0);
    AddParm(view, L"高度", L"301", 0, 0);
    Save(L"a.nrv", view);
    Outcome run = Start(L"set a.nrv 高度=32=0 -o b.nrv");
    EXPECT_EQ(0u, run.code) << run.err;
    EXPECT_EQ("高度\t32=0\nB\t1\n高度\t32=0\n", Start(L"params b.nrv").out);
    // The same texts again give the same bytes, in place as well.
    run = Start(L"set b.nrv B=1 -o b.nrv");
    EXPECT_EQ(0u, run.code) << run.err;
    for (const int i : {0, 2}) {
        static_cast<CTextParm*>(view.GetDocument()->GetDrawableObjs()->GetAt(i))->SetText(L"32=0");
    }
    const std::vector<BYTE> bytes = StreamOf(view);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), Slurp(folder + L"b.nrv"));
    run = Start(L"set a.nrv B= -o -");
    EXPECT_EQ(0u, run.code);
    EXPECT_EQ(0, run.out.compare(0, 4, std::string("\1\0\0\0", 4)));
}

TEST_F(Nrv, SetWritesNothingWhenItCannotDoAll) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    std::vector<BYTE> bytes = StreamOf(view);
    SaveBytes(L"a.nrv", bytes);
    bytes.resize(bytes.size() - 1);
    SaveBytes(L"cut.nrv", bytes);
    Outcome run = Start(L"set a.nrv A=2 X=3 -o out.nrv");
    EXPECT_EQ(1u, run.code);
    EXPECT_EQ("nrv: a.nrv: has no parameter named X\n", run.err);
    EXPECT_EQ(1u, Start(L"set cut.nrv A=2 -o out.nrv").code);
    EXPECT_EQ(1u, Start(L"set missing.nrv A=2 -o out.nrv").code);
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesW((folder + L"out.nrv").c_str()));
}

TEST_F(Nrv, RendersInThreeForms) {
    CVectorView view;
    view.AddLine(CGePoint2d(0, 0), CGePoint2d(200, 100), Gdiplus::Color(255, 0, 0), 0);
    Save(L"a.nrv", view);
    Save(L"b.nrv", view);
    Outcome run = Start(L"render a.nrv b.nrv -o *.png --size 60x0 --background none");
    EXPECT_EQ(0u, run.code) << run.err;
    const std::string png = Slurp(folder + L"b.png");
    EXPECT_EQ(0u, png.find("\x89PNG"));
    EXPECT_EQ(std::string("\0\0\0\x3c\0\0\0\x1e\x08\x06", 10), png.substr(16, 10)); // 60 by 30, with alpha
    EXPECT_EQ(png, Slurp(folder + L"a.png"));
    run = Start(L"render a.nrv -o A.EMF");
    EXPECT_EQ(0u, run.code) << run.err;
    EXPECT_EQ(" EMF", Slurp(folder + L"A.EMF").substr(40, 4));
    run = Start(L"render - -o - --format svg --window 0,0,200,100 --size 200x100 --mono", L"a.nrv");
    EXPECT_EQ(0u, run.code) << run.err;
    EXPECT_NE(std::string::npos, run.out.find("viewBox=\"0 -100 200 100\"")) << run.out;
    EXPECT_NE(std::string::npos, run.out.find("stroke=\"#000000\""));
}

TEST_F(Nrv, ADamagedDrawingIsRenderedAsFarAsItGoesAndFails) {
    CVectorView view;
    view.AddLine(CGePoint2d(0, 0), CGePoint2d(200, 100), Gdiplus::Color(255, 0, 0), 0);
    view.AddLine(CGePoint2d(0, 0), CGePoint2d(7, 7), Gdiplus::Color(255, 0, 0), 0);
    std::vector<BYTE> bytes = StreamOf(view);
    bytes.resize(bytes.size() - 1);
    SaveBytes(L"cut.nrv", bytes);
    Outcome run = Start(L"render cut.nrv -o cut.svg");
    EXPECT_EQ(1u, run.code);
    EXPECT_EQ(0u, run.err.find("nrv: cut.nrv: damaged at byte "));
    EXPECT_NE(std::string::npos, Slurp(folder + L"cut.svg").find("M0 0L200 -100"));
    EXPECT_EQ(1u, Start(L"render missing.nrv -o none.svg").code);
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesW((folder + L"none.svg").c_str()));
    EXPECT_EQ(1u, Start(L"render cut.nrv -o no\\such\\folder.svg").code);
}

TEST_F(Nrv, SeveralProcessesPrintAsOne) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    std::wstring files;
    for (int i = 0; i < 7; ++i) {
        const std::wstring name = L"f " + std::to_wstring(i);
        Save(name.c_str(), view);
        files += L" \"" + name + L"\"";
    }
    files += L" missing";
    for (const wchar_t* how : {L"params", L"params --json", L"params --csv", L"check --json", L"info"}) {
        const Outcome one = Start(how + files);
        const Outcome three = Start(std::wstring(how) + L" -j 3" + files);
        EXPECT_EQ(one.out, three.out);
        EXPECT_EQ(one.err, three.err);
        EXPECT_EQ(one.code, three.code);
        EXPECT_NE(0u, one.code);
    }
    const Outcome run = Start(L"render -j 2 -o p*.svg" + files);
    EXPECT_EQ(1u, run.code);
    EXPECT_EQ(0u, Slurp(folder + L"pf 6.svg").find("<?xml"));
}

TEST_F(Nrv, TwoFilesWithOneOutputAreRefused) {
    CVectorView view;
    Save(L"a.nrv", view);
    Save(L"A.old", view);
    for (const wchar_t* jobs : {L"", L" -j 2"}) {
        const Outcome run = Start(std::wstring(L"render a.nrv A.old -o p*.svg") + jobs);
        EXPECT_EQ(2u, run.code);
        EXPECT_NE(std::string::npos, run.err.find("two files have one output: pa.svg")) << run.err;
        EXPECT_EQ(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesW((folder + L"pa.svg").c_str()));
    }
}

TEST_F(Nrv, ReadsTheStandardInput) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    Save(L"a.nrv", view);
    const Outcome run = Start(L"params -", L"a.nrv");
    EXPECT_EQ("A\t1\n", run.out);
    EXPECT_EQ(0u, run.code);
}

TEST_F(Nrv, ExplainsItself) {
    const Outcome run = Start(L"--help");
    EXPECT_EQ(0u, run.out.find("Usage: nrv info|list|params|check [--json] [-j N] FILE...\n"));
    EXPECT_NE(std::string::npos, run.out.find("Exit status of check: 0"));
    EXPECT_EQ(std::string::npos, run.out.find('\r'));
    EXPECT_EQ(0u, run.code);
    EXPECT_EQ("nrv 1.0.0\n", Start(L"--version").out);
}

TEST_F(Nrv, ACommandLineThatItDoesNotUnderstandGivesTheExitCodeTwo) {
    Outcome run = Start(L"");
    EXPECT_EQ(2u, run.code);
    EXPECT_EQ("nrv: no command given\nTry \"nrv --help\".\n", run.err);
    run = Start(L"params");
    EXPECT_EQ(2u, run.code);
    EXPECT_EQ("nrv: no file given\nTry \"nrv --help\".\n", run.err);
    EXPECT_EQ(2u, Start(L"show a.nrv").code);
    EXPECT_EQ(2u, Start(L"params --mono a.nrv").code);
    EXPECT_EQ(2u, Start(L"params -j 0 a.nrv").code);
    EXPECT_EQ(2u, Start(L"params a.nrv -j").code);
    EXPECT_EQ(2u, Start(L"render a.nrv").code);
    EXPECT_EQ(2u, Start(L"render a.nrv -o a.jpg").code);
    for (const wchar_t* wrong : {L"--size 100", L"--size 0x0", L"--size 800.5x600", L"--size 40000x3",
                                 L"--line-width 1001", L"--line-width 0", L"--scale -1", L"--margin 100%"}) {
        run = Start(std::wstring(L"render a.nrv -o a.png ") + wrong);
        EXPECT_EQ(2u, run.code) << CString(wrong);
        EXPECT_NE(std::string::npos, run.err.find(": not understood: ")) << run.err;
    }
    EXPECT_EQ(2u, Start(L"render a.nrv -o a.png --background #12345").code);
    EXPECT_EQ(2u, Start(L"render a.nrv b.nrv -o a.png").code);
    EXPECT_EQ(2u, Start(L"set a.nrv -o b.nrv").code);
    EXPECT_EQ(2u, Start(L"set a.nrv A=1").code);
    run = Start(L"params --xml a.nrv");
    EXPECT_EQ(2u, run.code);
    EXPECT_EQ("nrv: unknown option --xml\nTry \"nrv --help\".\n", run.err);
    EXPECT_EQ("", run.out);
}

TEST_F(Nrv, AfterTwoDashesEverythingIsAFile) {
    CVectorView view;
    AddParm(view, L"A", L"1", 0, 0);
    Save(L"--json", view);
    EXPECT_EQ("A\t1\n", Start(L"params -- --json").out);
}

TEST_F(Nrv, ReadsHundredsOfFilesInOneRun) {
    CVectorView view;
    for (int i = 0; i < 20; ++i) {
        AddParm(view, L"A", L"1", i, i);
    }
    Save(L"a", view);
    std::wstring arguments;
    for (int i = 0; i < 500; ++i) {
        arguments += L"a ";
    }
    const Outcome run = Start(L"params " + arguments);
    EXPECT_EQ(0u, run.code);
    EXPECT_EQ("", run.err);
    size_t lines = 0;
    for (const char c : run.out) {
        lines += c == '\n';
    }
    EXPECT_EQ(500u * 20u, lines);
}

} // namespace
