// nrvparm: prints the parameters of stored drawings, for scripts. Needs no display and shows no window.
// Layer 13: tools; includes the library's public headers only.

#include <TextParm.h>
#include <VectorViewParm.h>

#include <fcntl.h>
#include <io.h>

#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace {

enum Exit { kAllRead = 0, kSomeFailed = 1, kBadUsage = 2 };

constexpr char kHelp[] =
    R"(Usage: nrvparm [--json] FILE...
       nrvparm --help | --version

Prints the parameters of stored drawings to the standard output, in UTF-8, one parameter on each line, in drawing
order. A FILE of "-" is the standard input.

Without an option a line holds the parameter's name and its text, with a tab between them; with more than one FILE the
name of the file and a tab come first. Within a field a tab is written \t, a line feed \n, a carriage return \r, any
other control character \xNN, and a backslash \\.

  --json     one JSON array; each parameter is an object on a line of its own, with these members:
               file         as it was given
               name         the key by which a host finds the parameter
               text         the value that is shown and edited
               type         its category, a number; 4 can't be edited
               expression   the regular expression that a host checks new values with
               description  what the tooltip shows, before any "||"
               position     [x, y], the top left corner of the text in drawing units
  --         what follows are files, also where it begins with a dash
  --help     this text
  --version  the version

Exit status: 0 when every file was read; 1 when one could not be opened, is no drawing or is damaged (what could be read
of it is printed, and so are the other files); 2 for a command line that is not understood.
)";

constexpr char kVersion[] = "nrvparm 1.0.0\n";

// The texts of the library's message boxes are kept for the standard error instead.
class CParmApp : public CWinApp {
public:
    int DoMessageBox(LPCTSTR prompt, UINT, UINT) override {
        m_Said = prompt;
        return IDOK;
    }
    CString TakeSaid() {
        CString said = m_Said;
        m_Said.Empty();
        return said;
    }

private:
    CString m_Said;
};

CParmApp g_App;

// ---- Text ----------------------------------------------------------------------------------------------------------

void AppendUtf8(std::string& out, unsigned code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

bool IsHighSurrogate(wchar_t c) {
    return c >= 0xD800 && c < 0xDC00;
}

bool IsLowSurrogate(wchar_t c) {
    return c >= 0xDC00 && c < 0xE000;
}

// Gives each character of the text, as its number, to `take`; half a surrogate pair becomes U+FFFD.
template <class Take>
void ForEachCharacter(const CString& text, Take take) {
    for (int i = 0; i < text.GetLength(); ++i) {
        const wchar_t c = text[i];
        if (IsHighSurrogate(c) && i + 1 < text.GetLength() && IsLowSurrogate(text[i + 1])) {
            ++i;
            take(0x10000u + ((static_cast<unsigned>(c) - 0xD800u) << 10) + (static_cast<unsigned>(text[i]) - 0xDC00u));
        } else if (IsHighSurrogate(c) || IsLowSurrogate(c)) {
            take(0xFFFDu);
        } else {
            take(static_cast<unsigned>(c));
        }
    }
}

void AppendHex(std::string& out, unsigned code, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        out += "0123456789abcdef"[(code >> shift) & 0xF];
    }
}

// A field of a plain line.
void AppendField(std::string& out, const CString& text) {
    ForEachCharacter(text, [&out](unsigned c) {
        switch (c) {
        case '\\':
            out += "\\\\";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            if (c < 0x20 || c == 0x7F) {
                out += "\\x";
                AppendHex(out, c, 2);
            } else {
                AppendUtf8(out, c);
            }
        }
    });
}

void AppendJson(std::string& out, const CString& text) {
    out += '"';
    ForEachCharacter(text, [&out](unsigned c) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20) {
            out += "\\u";
            AppendHex(out, c, 4);
        } else {
            AppendUtf8(out, c);
        }
    });
    out += '"';
}

void AppendJson(std::string& out, double number) {
    if (!std::isfinite(number)) {
        out += "null"; // JSON has no representation for it.
        return;
    }
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof(digits), number);
    out.append(digits, end.ptr);
}

void Complain(const CString& file, const CString& reason) {
    std::string line = "nrvparm: ";
    AppendField(line, file);
    line += ": ";
    AppendField(line, reason);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

// ---- Reading -------------------------------------------------------------------------------------------------------

CString SystemText(DWORD error) {
    wchar_t text[512] = {};
    ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                     MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), text, 511, nullptr);
    CString result = text;
    result.TrimRight(L" \r\n.");
    if (result.IsEmpty()) {
        result.Format(L"error %u", error);
    }
    return result;
}

// All of an open file or pipe; false, and the reason, on failure.
bool ReadAll(HANDLE handle, std::vector<unsigned char>& bytes, CString& reason) {
    constexpr DWORD kChunk = 1u << 16;
    bytes.clear();
    for (;;) {
        const size_t had = bytes.size();
        if (had > UINT_MAX - kChunk) {
            reason = L"too large";
            return false;
        }
        bytes.resize(had + kChunk);
        DWORD got = 0;
        const BOOL read = ::ReadFile(handle, bytes.data() + had, kChunk, &got, nullptr);
        const DWORD error = read ? ERROR_SUCCESS : ::GetLastError();
        bytes.resize(had + (read ? got : 0));
        if (!read && error != ERROR_BROKEN_PIPE && error != ERROR_HANDLE_EOF) {
            reason = L"cannot read: " + SystemText(error);
            return false;
        }
        if (!read || got == 0) {
            return true;
        }
    }
}

bool ReadFileOf(const CString& name, std::vector<unsigned char>& bytes, CString& reason) {
    if (name == L"-") {
        return ReadAll(::GetStdHandle(STD_INPUT_HANDLE), bytes, reason);
    }
    HANDLE handle = ::CreateFileW(name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        reason = L"cannot open: " + SystemText(::GetLastError());
        return false;
    }
    const bool done = ReadAll(handle, bytes, reason);
    ::CloseHandle(handle);
    return done;
}

// ---- Printing ------------------------------------------------------------------------------------------------------

struct Printer {
    bool json = false;
    bool withFile = false;
    bool first = true;
    bool failed = false;

    void Write(const std::string& text) {
        failed = failed || std::fwrite(text.data(), 1, text.size(), stdout) != text.size();
    }
    void Begin() {
        if (json) {
            Write("[");
        }
    }
    void Print(const CString& file, CTextParm* parm) {
        std::string line;
        if (json) {
            line += first ? "\n" : ",\n";
            line += "{\"file\": ";
            AppendJson(line, file);
            line += ", \"name\": ";
            AppendJson(line, parm->GetParmName());
            line += ", \"text\": ";
            AppendJson(line, parm->GetText());
            line += ", \"type\": " + std::to_string(parm->GetParmType());
            line += ", \"expression\": ";
            AppendJson(line, parm->GetParmRegularExp());
            line += ", \"description\": ";
            AppendJson(line, parm->GetParmDes());
            const CGePoint2d pos = parm->GetPos();
            line += ", \"position\": [";
            AppendJson(line, pos.x);
            line += ", ";
            AppendJson(line, pos.y);
            line += "]}";
        } else {
            if (withFile) {
                AppendField(line, file);
                line += '\t';
            }
            AppendField(line, parm->GetParmName());
            line += '\t';
            AppendField(line, parm->GetText());
            line += '\n';
        }
        first = false;
        Write(line);
    }
    void End() {
        if (json) {
            Write("\n]\n");
        }
        failed = std::fflush(stdout) != 0 || failed;
    }
};

// False when anything went wrong with the file; what could be read of it is printed.
bool PrintFile(CVectorViewParm& view, Printer& printer, const CString& file) {
    std::vector<unsigned char> bytes;
    CString reason;
    if (!ReadFileOf(file, bytes, reason)) {
        Complain(file, reason);
        return false;
    }
    if (bytes.empty()) {
        Complain(file, L"not a drawing: the file is empty");
        return false;
    }
    view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size()));
    const CString said = g_App.TakeSaid();
    CDrawableArray* objs = view.GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        if (auto* parm = DYNAMIC_DOWNCAST(CTextParm, objs->GetAt(i))) {
            printer.Print(file, parm);
        }
    }
    view.GetDocument()->Reset();
    if (said.IsEmpty()) {
        return true;
    }
    int version = 0;
    if (bytes.size() >= sizeof(version)) {
        memcpy(&version, bytes.data(), sizeof(version));
    }
    Complain(file, version != kDocumentVersion ? CString(L"not a drawing of a known version")
                                               : CString(L"damaged: only its beginning could be read"));
    return false;
}

int Usage(const CString& problem) {
    std::string text = "nrvparm: ";
    AppendField(text, problem);
    text += "\nTry \"nrvparm --help\".\n";
    std::fwrite(text.data(), 1, text.size(), stderr);
    return kBadUsage;
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    Printer printer;
    std::vector<CString> files;
    bool options = true;
    for (int i = 1; i < argc; ++i) {
        const CString argument = argv[i];
        if (!options || argument == L"-" || argument.Left(1) != L"-") {
            files.push_back(argument);
        } else if (argument == L"--") {
            options = false;
        } else if (argument == L"--json") {
            printer.json = true;
        } else if (argument == L"--help" || argument == L"-h") {
            printer.Write(kHelp);
            return kAllRead;
        } else if (argument == L"--version") {
            printer.Write(kVersion);
            return kAllRead;
        } else {
            return Usage(L"unknown option " + argument);
        }
    }
    if (files.empty()) {
        return Usage(L"no file given");
    }
    printer.withFile = files.size() > 1;
    bool allRead = true;
    printer.Begin();
    {
        CVectorViewParm view;
        for (const CString& file : files) {
            allRead = PrintFile(view, printer, file) && allRead;
        }
    }
    printer.End();
    if (printer.failed) {
        Complain(L"standard output", L"cannot write");
    }
    return allRead && !printer.failed ? kAllRead : kSomeFailed;
}
