#!/usr/bin/env python3
"""Each check passes on a small sound tree, and fails on that tree with one thing broken, for the right reason."""
import os
import subprocess
import sys
import tempfile

import house

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = house.root_of([])
UNIT = "// What it is for.\n// Layer: {layer}.\n{rest}"
MAP = """# The map
## `afx/`: the ground
| Unit | Purpose |
|---|---|
| `ground` | Stands. |
## `Source/`: the library
| Room | Is |
|---|---|
| low | first |
| painter | in between |
| high | second |

| Unit | Room | Also includes | Purpose |
|---|---|---|---|
| `Low` | low | | Stands low. |
| `High` | high | | Stands high. |
## `render/`: pictures
| Unit | Purpose |
|---|---|
| `Shot` | Paints. |
## `demo/`: a host
| Unit | Purpose |
|---|---|
| `main` | Runs. |
"""
SOUND = {
    "ARCHITECTURE.md": MAP,
    "README.md": "See [the map](ARCHITECTURE.md) and `Source/Low.h`.\n",
    "CONTRIBUTING.md": "x\n",
    "LICENSE": "x\n",
    "CHANGELOG.md": "- a change\n",
    "afx/CMakeLists.txt": "",
    "afx/ground.h": UNIT.format(layer="afx", rest=""),
    "Source/CMakeLists.txt": "Low.cpp High.cpp\n",
    "Source/Low.h": UNIT.format(layer="low", rest='#include "ground.h"\n'),
    "Source/Low.cpp": '#include "Low.h"\n',
    "Source/High.h": UNIT.format(layer="high", rest='#include "Low.h"\nclass NRVECTORVIEW_API High {};\n'),
    "Source/High.cpp": '#include "High.h"\n',
    "render/CMakeLists.txt": "Shot.cpp\n",
    "render/Shot.cpp": UNIT.format(layer="render", rest='#include "Low.h"\n'),
    "demo/CMakeLists.txt": "main.cpp\n",
    "demo/main.cpp": UNIT.format(layer="demo", rest='#include "High.h"\n'),
}

# check, file, its broken text (None: the file is gone), words that the complaint must hold
BROKEN = [
    ("map.py", "Source/New.h", UNIT.format(layer="low", rest=""), "Source/New is missing"),
    ("map.py", "Source/High.cpp Source/High.h", None, "Source/High is gone"),
    ("map.py", "Source/Low.h", UNIT.format(layer="high", rest=""), "its head says 'high'"),
    ("map.py", "Source/Low.h", "class Low;\n", "say no purpose"),
    ("map.py", "ARCHITECTURE.md", MAP.replace("| low | | Stands low. |", "| low | | |"), "Low has no purpose"),
    ("map.py", "ARCHITECTURE.md", MAP.replace("| low | |", "| cellar | |"), "in no room"),
    ("map.py", "ARCHITECTURE.md", MAP.replace("## `demo/`", "## demo"), "no heading for demo/"),
    ("layers.py", "Source/Low.h", '#include "High.h"\n', "low stands above high"),
    ("layers.py", "Source/Low.cpp", '#include "High.h"\n', "low stands above high"),
    ("layers.py", "afx/ground.h", '#include "Low.h"\n', "stands below afx/"),
    ("layers.py", "afx/ground.h", '#include "../Source/Low.h"\n', "stands below afx/"),
    ("layers.py", "Source/Low.h", '#include "Low.h"\n', "in a circle"),
    ("layers.py", "Source/High.h", "class High {};\n", "no public header"),
    ("layers.py", "render/Shot.cpp", '#include "High.h"\n', "stands below the painter"),
    ("layers.py", "ARCHITECTURE.md", MAP.replace("| low | | ", "| low | `High` | "), "needs no leave"),
    ("sources.py", "Source/CMakeLists.txt", "Low.cpp # High.cpp\n", "High.cpp: stands in no"),
    ("sources.py", "Source/CMakeLists.txt", "Low.cpp TooHigh.cpp\n", "High.cpp: stands in no"),
    ("sources.py", "Source/Low.cpp", "\tint x;\n", "has a tab"),
    ("sources.py", "Source/Low.cpp", "int x;", "no end"),
    ("sources.py", "Source/Low.cpp", b"// \xd6\xd0\n", "not UTF-8"),
    ("docs.py", "CHANGELOG.md", "# nothing\n", "names no change"),
    ("docs.py", "LICENSE", None, "LICENSE is missing"),
    ("docs.py", "README.md", "[x](docs/none.md)\n", "docs/none.md leads nowhere"),
    ("docs.py", "README.md", "`Source/None.h`\n", "no Source/None.h"),
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
    write(tree, ".clang-format", house.text_of(ROOT, ".clang-format"))


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
    house.report(list(tree_problems(SCRATCH)) + list(import_problems(SCRATCH)) + list(tally_problems(SCRATCH)))
