#!/usr/bin/env python3
"""Each check passes on a small sound tree, and fails on that tree with one thing broken, for the right reason."""
import os
import subprocess
import sys
import tempfile

import common

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = common.root_of([])
UNIT = "// What it is for.\n// Layer {layer}.\n{rest}"
MAP = """# The map
| Layer | Folder | Is |
|---|---|---|
| 1 afx | `afx/` | the ground |
| 2 low | `Source/` | first |
| 3 high | `Source/` | second |
| 4 render | `render/` | pictures |
| 5 demo | `demo/` | a host |

| Where is | Unit | Look at |
|---|---|---|
| the class | `High` | `NRVECTORVIEW_API` |
## `afx/`: the ground
| Unit | Purpose |
|---|---|
| `ground` | What it is for. |
## `Source/`: the library
| Unit | Layer | Also includes | Purpose |
|---|---|---|---|
| `Low` | 2 low | | What it is for. |
| `High` | 3 high | | What it is for. |
## `render/`: pictures
| Unit | Purpose |
|---|---|
| `Shot` | What it is for. |
## `demo/`: a host
| Unit | Purpose |
|---|---|
| `main` | What it is for. |
"""
ODD = "# Odd\n| 1 | `Low` | It is. | It is not. | `Low.Holds` |\n"
RC = 'STRINGTABLE\nBEGIN\n    ID_FILE_NEW, "&New\\tCtrl+N\\nBegins"\n    IDS_A, "%s"\nEND\nIDD_A DIALOGEX 0\nBEGIN\n    LTEXT "a", IDC_A, 1\nEND\n'
SOUND = {
    "ARCHITECTURE.md": MAP,
    "README.md": "See [the map](ARCHITECTURE.md) and `Source/Low.h`.\n",
    "CONTRIBUTING.md": "Headers stay below 20 lines,\nsources below 80.\n",
    "LICENSE": "x\n",
    "CHANGELOG.md": "- a change\n",
    "docs/compatibility.md": ODD,
    "afx/CMakeLists.txt": "",
    "afx/ground.h": UNIT.format(layer="1: afx", rest=""),
    "Source/CMakeLists.txt": "file(GLOB sources L*.cpp) High.cpp\n",
    "Source/Low.h": UNIT.format(layer="2: low", rest='#include "ground.h"\n'),
    "Source/Low.cpp": '#include "Low.h"\n// Compatibility 1: it is.\n',
    "Source/High.h": UNIT.format(layer="3: high", rest='#include "Low.h"\n// A class.\nclass NRVECTORVIEW_API High {};\n'),
    "Source/High.cpp": '#include "High.h"\n',
    "render/CMakeLists.txt": "Shot.cpp\n",
    "render/Shot.h": UNIT.format(layer="4: render", rest="// A class.\nclass NRVECTORVIEW_API Shot {};\n"),
    "render/Shot.cpp": '#include "Shot.h"\n#include "High.h"\n',
    "demo/CMakeLists.txt": "main.cpp\n",
    "demo/demo_zh.rc": RC,
    "demo/demo_en.rc": RC,
    "demo/main.cpp": UNIT.format(layer="5: demo", rest='#include "High.h"\n#include "Shot.h"\n'),
    "tests/CMakeLists.txt": "*_test.cpp\n",
    "tests/Low_test.cpp": "TEST(Low, Holds) {}\n",
}

# check, file, its broken text (None: the file is removed), words that the complaint must contain
BROKEN = [
    ("map.py", "Source/New.h", UNIT.format(layer="2: low", rest=""), "Source/New is missing"),
    ("map.py", "Source/High.cpp Source/High.h", None, "there is no Source/High"),
    ("map.py", "Source/Low.h", UNIT.format(layer="3: high", rest=""), "its head says 'Layer 3: high.'"),
    ("map.py", "Source/Low.h", "class Low;\n", "give no purpose"),
    ("map.py", "Source/Low.h", SOUND["Source/Low.h"].replace("What", "Why"), "not have the purpose that its head gives"),
    ("map.py", "Source/Low.cpp", UNIT.format(layer="2: low", rest=""), "repeats that of the unit's header"),
    ("map.py", "afx/ground.h", UNIT.format(layer="1: afx", rest="class CGround {\n"), "doesn't list its classes"),
    ("map.py", "ARCHITECTURE.md", MAP.replace("| 2 low | |", "| cellar | |"), "in no layer"),
    ("map.py", "ARCHITECTURE.md", MAP.replace("| 1 afx |", "| 6 afx |"), "not numbered from 1"),
    ("map.py", "ARCHITECTURE.md", MAP.replace("class | `High`", "class | `Low`"), "is in none of the units"),
    ("map.py", "ARCHITECTURE.md", MAP + "`CNone::Go`\n", "there is no CNone::Go"),
    ("layers.py", "Source/Low.h", '#include "High.h"\n', "layer 2 includes layer 3"),
    ("layers.py", "Source/Low.cpp", '#include "High.h"\n', "layer 2 includes layer 3"),
    ("layers.py", "afx/ground.h", '#include "../Source/Low.h"\n', "layer 1 includes layer 2"),
    ("layers.py", "Source/Low.h", '#include "Low.h"\n', "in a circle"),
    ("layers.py", "Source/High.h", "class High {};\n", "no public header"),
    ("layers.py", "render/Shot.h", UNIT.format(layer="4: render", rest="class Shot {};\n"), "no public header"),
    ("layers.py", "Source/High.h", '#include "Shot.h"\n', "layer 3 includes layer 4"),
    ("layers.py", "ARCHITECTURE.md", MAP.replace("| 2 low | | ", "| 2 low | `High` | "), "need not list"),
    ("sources.py", "Source/CMakeLists.txt", "L*.cpp # High.cpp\n", "High.cpp: no CMakeLists.txt"),
    ("sources.py", "Source/CMakeLists.txt", "L*.cpp TooHigh.cpp\n", "High.cpp: no CMakeLists.txt"),
    ("sources.py", "Source/Low.cpp", "\tint x;\n", "has a tab"),
    ("sources.py", "Source/Low.cpp", "int x;", "no end"),
    ("sources.py", "Source/Low.cpp", b"// \xd6\xd0\n", "not UTF-8"),
    ("sources.py", "Source/Low.cpp", "\n" * 80, "has 80 lines"),
    ("sources.py", "Source/Low.h", "\n" * 20, "has 20 lines"),
    ("compatibility.py", "Source/Low.cpp", "// Compatibility 2: it is.\n", "has no entry 2"),
    ("compatibility.py", "Source/Low.cpp", "\n", "nothing in the code points to entry 1"),
    ("compatibility.py", "tests/Low_test.cpp", "\n", "there is no test Low.Holds"),
    ("docs.py", "CHANGELOG.md", "# nothing\n", "names no change"),
    ("docs.py", "LICENSE", None, "LICENSE is missing"),
    ("docs.py", "README.md", "[x](docs/none.md)\n", "docs/none.md leads nowhere"),
    ("docs.py", "README.md", "`Source/None.h`\n", "no Source/None.h"),
    ("docs.py", "README.md", "`CNone`\n", "there is no CNone"),
    ("docs.py", "README.md", "```cpp\nint x;\n```\n", "smallest host has no such line"),
    ("reference.py", "Source/High.h", "// A class.\nclass NRVECTORVIEW_API High {};\nint Go();\n", "Go() (function) of file High.h is not"),
    ("reference.py", "Source/High.h", "// A class.\nclass NRVECTORVIEW_API High {\npublic:\n    int Go(); // Goes.\n    int m_N;\n};\n",
     "m_N (variable) of class High is not"),
    ("resources.py", "demo/demo_en.rc", RC.replace("IDS_A", "IDS_B"), "IDS_A is missing"),
    ("resources.py", "demo/demo_en.rc", RC.replace("%s", "%d"), "IDS_A differs in form"),
    ("resources.py", "demo/demo_en.rc", RC.replace("IDC_A", "IDC_B"), "IDD_A differs in form"),
    ("resources.py", "demo/demo_zh.rc demo/demo_en.rc", RC.replace("\\nBegins", ""), "does not say what it does"),
    ("resources.py", "Source/Low.cpp", 'void A() {\n    AfxMessageBox(L"中文");\n}\n', "does not translate 中文"),
    ("resources.py", "demo/main.cpp", UNIT.format(layer="5: demo", rest='const wchar_t a[] = L"中文";\n'), "中文 belongs"),
    ("format.sh", "Source/Low.cpp", "int   x ;\n", "Low.cpp"),
]


def write(tree, path, text):
    full = os.path.join(tree, path)
    os.makedirs(os.path.dirname(full), exist_ok=True)
    with open(full, "wb") as file:
        file.write(text if isinstance(text, bytes) else text.encode("utf-8"))


def plant(tree):
    for path, text in SOUND.items():
        write(tree, path, text)
    write(tree, ".clang-format", common.text_of(ROOT, ".clang-format"))


def run(check, *arguments):
    done = subprocess.run([os.path.join(HERE, check), *arguments], capture_output=True, text=True, check=False)
    return done.returncode, done.stdout + done.stderr


def tree_problems(scratch):
    for check in sorted({case[0] for case in BROKEN}):
        with tempfile.TemporaryDirectory(dir=scratch) as tree:
            plant(tree)
            code, said = run(check, tree)
            if code != 0:
                yield f"{check} fails on a sound tree: {said}"
    for check, paths, text, words in BROKEN:
        with tempfile.TemporaryDirectory(dir=scratch) as tree:
            plant(tree)
            for path in paths.split():
                if text is None:
                    os.remove(os.path.join(tree, path))
                else:
                    write(tree, path, text)
            code, said = run(check, tree)
            if code == 0 or words not in said:
                yield f"{check} with {paths} broken: code {code}, expected {words!r}, said {said!r}"


def import_problems(scratch):
    with tempfile.TemporaryDirectory(dir=scratch) as tree:
        source = os.path.join(tree, "a.c")
        write(tree, "a.c", "int WSACleanup(void); int main(void) { return NET; }\n")
        for net, code_wanted in (("0", 0), ("WSACleanup()", 1)):
            folder = os.path.join(tree, "bin" + str(code_wanted))
            os.mkdir(folder)
            subprocess.run(["x86_64-w64-mingw32-gcc-posix", "-static", f"-DNET={net}", source, "-o",
                            os.path.join(folder, "a.exe"), "-lws2_32"], check=True)
            code, said = run("imports.py", tree, folder)
            if code != code_wanted or (code and "ws2_32" not in said):
                yield f"imports.py: code {code} for {net}: {said}"
        # One of the project's DLLs, by its name, with the static runtime's sine.
        os.rename(os.path.join(tree, "bin0", "a.exe"), os.path.join(tree, "bin0", "nrafx.dll"))
        code, said = run("imports.py", tree, os.path.join(tree, "bin0"))
        if code != 1 or "mathematics of its own" not in said:
            yield f"imports.py: code {code} for a DLL with mathematics of its own: {said}"


def name_problems(scratch):
    lists = {"capi/include/nrview.h": "NRV_API NrvResult NRV_CALL NrvOne(int a);\n",
             "capi/nrview.def": "LIBRARY x\nEXPORTS\n    NrvOne\n",
             "Source/exported_names.txt": "_ZOne\n",
             "tests/capi_a_test.c": "NrvOne(1);\n"}
    with tempfile.TemporaryDirectory(dir=scratch) as tree:
        write(tree, "a.c", "__declspec(dllexport) int NrvOne(int a) { return a; }\n"
                           "__declspec(dllexport) int _ZOne(void) { return 0; }\n")
        library = os.path.join(tree, "a.dll")
        subprocess.run(["x86_64-w64-mingw32-gcc-posix", "-shared", os.path.join(tree, "a.c"), "-o", library], check=True)
        for path, text, words in ((None, "", ""),
                                  ("capi/include/nrview.h", "NRV_API NrvResult NRV_CALL NrvTwo(int a);\n", "NrvTwo is in nrview.h"),
                                  ("capi/nrview.def", "EXPORTS\n", "NrvOne is in a.dll and not in capi/nrview.def"),
                                  ("Source/exported_names.txt", "_ZOne\n_ZTwo\n", "_ZTwo is in Source/exported_names.txt"),
                                  ("tests/capi_a_test.c", "NrvOne;\n", "NrvOne is called by no test")):
            for name, sound in lists.items():
                write(tree, name, text if name == path else sound)
            code, said = run("names.py", tree, library)
            if (code == 0) != (path is None) or words not in said:
                yield f"names.py with {path} broken: code {code}, expected {words!r}, said {said!r}"


def tally_problems(scratch):
    sys.path.insert(0, os.path.join(ROOT, "tests", "support"))
    import tally

    junit = '<testsuite><testcase name="t.A" status="{}"/></testsuite>'
    case = '<testcase classname="A" name="x" status="run" result="completed">{}</testcase>'
    sound = "<testsuites><testsuite>" + case.format("") + "</testsuite></testsuites>"
    for what, record, own, wanted in (
            ("a pass", junit.format("run"), sound, (1, 0)),
            ("a failure", junit.format("fail"), sound.replace(case.format(""), case.format("<failure/>")), (0, 1)),
            ("a crash", junit.format("fail"), None, (0, 1)),
            ("a bad end", junit.format("fail"), sound, (1, 1)),
            ("a torn file", junit.format("run"), sound[:40], (0, 1)),
            ("a skip", junit.format("run"), sound.replace("completed", "skipped"), (0, 0)),
            ("an empty file", junit.format("run"), "<testsuites/>", (0, 1)),
            ("no record", None, sound, (0, 1))):
        with tempfile.TemporaryDirectory(dir=scratch) as tree:
            if record is not None:
                write(tree, "ctest.junit", record)
            if own is not None:
                write(tree, "t.A.xml", own)
            passed, _, failed = tally.tally(tree)
            if (passed, len(failed)) != wanted:
                yield f"tally of {what}: {passed} passed, failed {failed}"


if __name__ == "__main__":
    SCRATCH = os.environ.get("NR_BUILD")
    common.report(list(tree_problems(SCRATCH)) + list(import_problems(SCRATCH)) + list(name_problems(SCRATCH)) +
                  list(tally_problems(SCRATCH)))
