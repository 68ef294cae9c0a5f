// nrv: lists, checks, changes and renders stored drawings, for scripts. Needs no display and shows no window.
// Layer 14: tools; includes the library's public headers only.

#include "nrv_commands.h"

#include "nrv_text.h"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cwchar>
#include <cwctype>
#include <new>

// Keeps the C runtime from expanding the arguments: in the name of an output a star has a meaning of its own.
extern "C" {
extern int _dowildcard;
int _dowildcard = 0;
}

namespace {

constexpr char kHelp[] = R"(Usage: nrv info|list|params|check [--json] [-j N] FILE...
       nrv set FILE NAME=VALUE... -o OUT
       nrv render FILE... -o OUT.png|.emf|.svg [OPTIONS]
       nrv --help | --version

  info    what is in a drawing: objects by kind, extents, layers, schemas, damage
  list    every object, one on each line: index, class, layer, properties as KEY=VALUE
  params  the parameters, one on each line, in drawing order: name, tab, text; also as --csv
  set     sets the text of every parameter of that name and saves to OUT, which may be FILE; a damaged drawing, or one
          without such a parameter, is not saved
  render  a picture of each file; with several files OUT holds a *, for which each file's name is put
  check   says whether each file is whole and how much of it is lost

A FILE of "-" is the standard input, an OUT of "-" the standard output; a FILE with * or ? is replaced by the files it finds.
Output is UTF-8. On plain lines with more than one FILE the file's name and a tab come first; within a field a tab is
written \t, a line feed \n, a carriage return \r, any other control character \xNN, and a backslash \\.

  --json     one JSON array with an object on each line; of params: file, name, text, type, expression, description,
             position; of list: properties as [key, label, value]
  --csv      of params: a table with a heading
  -j N       N processes at once
  --         what follows are files, also where it begins with a dash
  --help     this text
  --version  the version

Options of render:
  -o OUT             where to; its extension says which form
  --format FORM      png, emf or svg, where the extension doesn't say it
  --size WxH         pixels; 0 for one of them takes it from the drawing's proportion (default 1024x768)
  --scale UNITS      drawing units per pixel; the picture is as large as the drawing then, or with --size as well, the
                     drawing is in the middle of a picture of that size
  --margin N|N%      around the drawing (default 15%)
  --window X1,Y1,X2,Y2
                     this rectangle of the drawing, in drawing units, in place of all of it
  --view             as it was saved: its own scale and origin
  --background COLOR #rrggbb, black, white, or none for a transparent picture (default: the drawing's own)
  --black            black on white
  --mono             the same in two colours, without smoothing
  --line-width F     times the width of every line, at most 1000
  --least-width N    pixels that every line is wide at least
  --hide-decimals    numbers of parameters as a parameter view shows them

Exit status of check: 0 when every file is whole, 1 when a part of one is lost, 2 when one is unreadable. Of the others:
0 when all went well; 1 when a file could not be read or written, is no drawing or is damaged (what could be read of it
is printed or rendered all the same, and so are the other files). 2 for a command line that is not understood.

Examples:
  nrv params --json frame.nrv
  nrv set frame.nrv height=320 width=80 -o frame.nrv
  nrv render -j 4 drawings/*.nrv -o pictures/*.png --size 800x0 --background none
  nrv render plan.nrv -o - --format svg --black | gzip > plan.svgz
  nrv check archive/*.nrv || echo "look at the errors"
)";

constexpr char kVersion[] = "nrv 1.0.0\n";
constexpr int kMostJobs = 60;

int Usage(const CString& problem) {
    NrvText::Complain(CString(), problem);
    std::fputs("Try \"nrv --help\".\n", stderr);
    return kNrvBadUsage;
}

// Appends the files that the pattern finds, in the order of the system. A name without a star or a question mark, and a
// pattern that finds nothing, is appended unchanged.
void AppendFiles(std::vector<CString>& files, const CString& pattern) {
    WIN32_FIND_DATAW found = {};
    const HANDLE find = pattern.FindOneOf(L"*?") >= 0 ? ::FindFirstFileW(pattern, &found) : INVALID_HANDLE_VALUE;
    if (find == INVALID_HANDLE_VALUE) {
        files.push_back(pattern);
        return;
    }
    const CString folder = pattern.Left(std::max(pattern.ReverseFind(L'/'), pattern.ReverseFind(L'\\')) + 1);
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            files.push_back(folder + found.cFileName);
        }
    } while (::FindNextFileW(find, &found));
    ::FindClose(find);
}

// Reads all of the text as one number.
bool NumberOf(const CString& text, double& number) {
    wchar_t* end = nullptr;
    number = std::wcstod(text, &end);
    return !text.IsEmpty() && *end == L'\0' && std::isfinite(number);
}

// Reads `count` numbers with that character between them.
bool NumbersOf(CString text, wchar_t between, double* numbers, int count) {
    for (int i = 0; i < count; ++i) {
        const int at = i + 1 < count ? text.Find(between) : text.GetLength();
        if (at < 0 || !NumberOf(text.Left(at), numbers[i])) {
            return false;
        }
        text = text.Mid(at + 1);
    }
    return true;
}

bool WholeOf(const CString& text, int low, int high, int& number) {
    double value = 0.0;
    if (!NumberOf(text, value) || value != std::floor(value) || value < low || value > high) {
        return false;
    }
    number = static_cast<int>(value);
    return true;
}

bool ColorOf(const CString& text, COLORREF& color) {
    if (text == L"black" || text == L"white") {
        color = text == L"black" ? RGB(0, 0, 0) : RGB(255, 255, 255);
        return true;
    }
    wchar_t* end = nullptr;
    if (text.GetLength() != 7 || text[0] != L'#' || !std::iswxdigit(static_cast<wint_t>(text[1]))) {
        return false;
    }
    const unsigned long value = std::wcstoul(static_cast<LPCTSTR>(text) + 1, &end, 16);
    color = RGB((value >> 16) & 0xFF, (value >> 8) & 0xFF, value & 0xFF);
    return *end == L'\0';
}

// One option of render with its value. False when the value is not understood.
bool TakePictureOption(NrvOptions& options, const CString& name, const CString& value) {
    CRenderOptions& picture = options.picture;
    double numbers[4] = {};
    if (name == L"--size") {
        const int x = value.Find(L'x');
        int width = 0;
        int height = 0;
        if (x < 0 || !WholeOf(value.Left(x), 0, 32767, width) || !WholeOf(value.Mid(x + 1), 0, 32767, height)) {
            return false;
        }
        picture.size.SetSize(width, height);
        picture.keepSize = width > 0 && height > 0;
        return width > 0 || height > 0;
    }
    if (name == L"--scale") {
        return NumberOf(value, picture.scale) && picture.scale > 0.0;
    }
    if (name == L"--line-width") {
        return NumberOf(value, picture.lineWidthScale) && picture.lineWidthScale > 0.0 &&
               picture.lineWidthScale <= 1000.0;
    }
    if (name == L"--least-width") {
        return WholeOf(value, 1, 1000, picture.leastLineWidth);
    }
    if (name == L"--margin") {
        picture.marginInPixels = value.Right(1) != L"%";
        return picture.marginInPixels ? WholeOf(value, 0, 32767, picture.margin)
                                      : WholeOf(value.Left(value.GetLength() - 1), 0, 99, picture.margin);
    }
    if (name == L"--window") {
        picture.place = CRenderOptions::Window;
        if (!NumbersOf(value, L',', numbers, 4)) {
            return false;
        }
        picture.windowMin = CGePoint2d(std::min(numbers[0], numbers[2]), std::min(numbers[1], numbers[3]));
        picture.windowMax = CGePoint2d(std::max(numbers[0], numbers[2]), std::max(numbers[1], numbers[3]));
        return true;
    }
    if (name == L"--background") {
        picture.transparent = value == L"none";
        picture.ownBackground = !picture.transparent;
        return picture.transparent || ColorOf(value, picture.background);
    }
    options.pictureKind = value; // --format
    return value == L"png" || value == L"emf" || value == L"svg";
}

bool TakePictureFlag(NrvOptions& options, const CString& name) {
    if (name == L"--view") {
        options.picture.place = CRenderOptions::AsStored;
    } else if (name == L"--black") {
        options.picture.colors = CRenderOptions::BlackOnWhite;
    } else if (name == L"--mono") {
        options.picture.colors = CRenderOptions::Monochrome;
    } else if (name == L"--hide-decimals") {
        options.picture.showDecimals = false;
    } else {
        return false;
    }
    return true;
}

bool HasValue(const CString& name, bool render) {
    static const LPCTSTR kNames[] = {L"--size",   L"--scale",  L"--line-width", L"--least-width",
                                     L"--margin", L"--window", L"--background", L"--format"};
    return render &&
           std::any_of(std::begin(kNames), std::end(kNames), [&name](LPCTSTR known) { return name == known; });
}

// An output name that two files have in common, so that one would overwrite the other; empty where there is none.
CString DoubledOutput(const NrvOptions& options) {
    std::vector<CString> outputs;
    for (const CString& file : options.files) {
        outputs.push_back(NrvOutputOf(options, file));
        outputs.back().MakeLower();
    }
    const auto less = [](const CString& a, const CString& b) { return a.Compare(b) < 0; };
    std::sort(outputs.begin(), outputs.end(), less);
    const auto found = std::adjacent_find(outputs.begin(), outputs.end());
    return found != outputs.end() ? *found : CString();
}

// Runs the command for one file. A lack of memory is a failure of that file only.
int Run(NrvCommand run, const NrvOptions& options, const CString& file, CNrvPrinter& printer) {
    try {
        return run(options, file, printer);
    } catch (CMemoryException* e) {
        e->Delete();
    } catch (const std::bad_alloc&) {
    }
    NrvText::Complain(file, L"not enough memory");
    return kNrvFailed;
}

// Evaluates the arguments after the command; `problem` stays empty when all of them are understood.
void Parse(const std::vector<CString>& arguments, NrvOptions& options, CString& problem) {
    const bool render = options.command == L"render";
    const bool set = options.command == L"set";
    bool named = true;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const CString& argument = arguments[i];
        const bool last = i + 1 == arguments.size();
        const size_t first = i;
        if (!named || argument == L"-" || argument.Left(1) != L"-") {
            const int equals = argument.Find(L'=');
            if (set && !options.files.empty() && equals > 0) {
                options.values.emplace_back(argument.Left(equals), argument.Mid(equals + 1));
            } else {
                AppendFiles(options.files, argument);
            }
            continue;
        } else if (argument == L"--") {
            named = false;
        } else if (argument == L"--json" && !render && !set) {
            options.format = NrvFormat::Json;
        } else if (argument == L"--csv" && options.command == L"params") {
            options.format = NrvFormat::Csv;
        } else if (argument == L"--part") {
            options.part = true;
        } else if (argument == L"--with-file") {
            options.withFile = true;
        } else if (render && TakePictureFlag(options, argument)) {
            // Taken.
        } else if ((argument == L"-o" && (render || set)) || argument == L"-j" || HasValue(argument, render)) {
            if (last) {
                problem = argument + L" needs a value";
                return;
            }
            const CString& value = arguments[++i];
            if (argument == L"-o") {
                options.output = value;
            } else if (argument == L"-j" ? !WholeOf(value, 1, kMostJobs, options.jobs)
                                         : !TakePictureOption(options, argument, value)) {
                problem = argument + L": not understood: " + value;
                return;
            }
        } else {
            problem = L"unknown option " + argument;
            return;
        }
        if (argument != L"--" && argument != L"-j") {
            options.switches.insert(options.switches.end(), arguments.begin() + static_cast<ptrdiff_t>(first),
                                    arguments.begin() + static_cast<ptrdiff_t>(i) + 1);
        }
    }
    if (options.files.empty()) {
        problem = L"no file given";
    } else if ((render || set) && options.output.IsEmpty()) {
        problem = L"no output given: -o OUT";
    } else if (set && (options.files.size() > 1 || options.values.empty())) {
        problem = L"set takes one file and one NAME=VALUE or more";
    } else if (render && options.files.size() > 1 && options.output.Find(L'*') < 0 && !options.part) {
        problem = L"with several files the output needs a *";
    } else if (render && options.files.size() > 1 && !options.part && !DoubledOutput(options).IsEmpty()) {
        problem = L"two files have one output: " + DoubledOutput(options);
    } else if (render && options.pictureKind.IsEmpty()) {
        CString kind = options.output.Mid(options.output.ReverseFind(L'.') + 1);
        kind.MakeLower();
        if (options.output.ReverseFind(L'.') < 0 || (kind != L"png" && kind != L"emf" && kind != L"svg")) {
            problem = L"the output ends in none of .png, .emf, .svg; or say it by --format";
        }
        options.pictureKind = kind;
    }
}

} // namespace

NrvCommand NrvCommandOf(const CString& word) {
    static const struct {
        LPCTSTR word;
        NrvCommand run;
    } kCommands[] = {{L"info", NrvInfo},   {L"list", NrvList}, {L"params", NrvParams},
                     {L"check", NrvCheck}, {L"set", NrvSet},   {L"render", NrvRender}};
    for (const auto& row : kCommands) {
        if (word == row.word) {
            return row.run;
        }
    }
    return nullptr;
}

// ---- Printing ------------------------------------------------------------------------------------------------------

void CNrvPrinter::Write(const std::string& text) {
    m_Failed = std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || m_Failed;
}

void CNrvPrinter::Begin() {
    if (m_Options.part) {
        return;
    }
    if (m_Options.format == NrvFormat::Json) {
        Write("[");
    } else if (m_Options.format == NrvFormat::Csv) {
        Write("file,name,text,type,expression,description,x,y\n");
    }
}

void CNrvPrinter::Row(const std::string& row) {
    if (m_Options.format == NrvFormat::Json) {
        Write(m_First ? "\n" : ",\n");
    }
    m_First = false;
    Write(row);
}

void CNrvPrinter::Part(const std::string& rows) {
    if (rows.empty()) {
        return;
    }
    if (m_Options.format == NrvFormat::Json && !m_First) {
        Write(",");
    }
    m_First = false;
    Write(rows);
}

void CNrvPrinter::End() {
    if (m_Options.format == NrvFormat::Json && !m_Options.part) {
        Write("\n]\n");
    }
    m_Failed = std::fflush(stdout) != 0 || m_Failed;
}

int wmain(int argc, wchar_t** argv) {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<CString> arguments(argv + std::min(argc, 1), argv + argc);
    if (arguments.empty()) {
        return Usage(L"no command given");
    }
    for (const CString& argument : arguments) {
        if (argument == L"--") {
            break;
        }
        if (argument == L"--help" || argument == L"-h" || argument == L"--version") {
            std::fputs(argument == L"--version" ? kVersion : kHelp, stdout);
            return kNrvDone;
        }
    }
    NrvOptions options;
    options.command = arguments.front();
    arguments.erase(arguments.begin());
    const NrvCommand run = NrvCommandOf(options.command);
    if (run == nullptr) {
        return Usage(L"unknown command " + options.command);
    }
    CString problem;
    Parse(arguments, options, problem);
    if (!problem.IsEmpty()) {
        return Usage(problem);
    }
    options.withFile = options.withFile || options.files.size() > 1;
    CNrvPrinter printer(options);
    int code = kNrvDone;
    // Only this process can read the standard input.
    const bool piped = std::find(options.files.begin(), options.files.end(), L"-") != options.files.end();
    if (options.jobs > 1 && options.files.size() > 1 && !piped) {
        printer.Begin();
        code = NrvRunJobs(options, printer);
    } else {
        // Pictures and drawings may be written to the standard output, which then contains nothing else.
        const bool prints = options.output.IsEmpty();
        if (prints) {
            printer.Begin();
        }
        for (size_t i = 0; i < options.files.size(); ++i) {
            NrvProgress(i, options.files.size(), options.part ? CString() : options.files[i]);
            code = std::max(code, Run(run, options, options.files[i], printer));
        }
        NrvProgress(0, 0, CString());
        if (!prints) {
            return code;
        }
    }
    printer.End();
    if (printer.Failed()) {
        NrvText::Complain(L"standard output", L"cannot write");
        code = std::max(code, static_cast<int>(kNrvFailed));
    }
    return code;
}
