#!/usr/bin/env python3
"""The package as a stranger gets it: the zip is made and unpacked elsewhere, its links and headers are looked at, the
samples are built against it alone by the commands of their page, and each is used: the width is typed, a negative height is
refused, the area follows, and what was stored is read back."""
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
import imports  # noqa: E402
import layers  # noqa: E402

# The samples that show a window here, by program.
SAMPLES = ("rectangle_cpp",)


def run(command, folder, seconds=240):
    done = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, timeout=seconds)
    host.expect(done.returncode == 0, f"{' '.join(command)} fails:\n{done.stdout}")
    return done.stdout


def unpack(out):
    """The folder that the zip holds."""
    build = os.environ["NR_BUILD"]
    run(["cpack", "--config", os.path.join(build, "CPackConfig.cmake"), "-B", out], build)
    zips = [name for name in os.listdir(out) if name.endswith(".zip")]
    host.expect(len(zips) == 1, f"zips: {zips}")
    with zipfile.ZipFile(os.path.join(out, zips[0])) as package:
        package.extractall(os.path.join(out, "unpacked"))
    return os.path.join(out, "unpacked", zips[0][:-len(".zip")])


def look(package):
    """What is there, and what is not."""
    for name in ("LICENSE", "README.md", "bin/NRVectorView.dll", "bin/nrafx.dll", "bin/nrkx.dll",
                 "lib/libNRVectorView.dll.a", "cmake/NRVectorViewConfig.cmake", "include/nrafx/afxwin.h",
                 "include/nrkx/KxAlive.h", "samples/truss.nrv", "doc/nrafx/README.md"):
        host.expect(os.path.exists(os.path.join(package, name)), f"{name} is missing")
    there = {name for name in os.listdir(os.path.join(package, "include", "NRVectorView")) if name != "nrview.h"}
    public = layers.public_headers(ROOT, layers.index_of(ROOT, ["Source", "render"]))
    host.expect(there >= public, f"public headers are missing: {sorted(public - there)}")
    internal = [name for name in there - public if not os.path.exists(os.path.join(ROOT, "render", name))]
    host.expect(not internal, f"internal headers are there: {internal}")
    dead = [problem for folder, _, names in os.walk(package) for name in names if name.endswith(".md")
            for problem in docs.dead_links(package, os.path.relpath(os.path.join(folder, name), package))]
    host.expect(not dead, "\n".join(dead))
    needs = list(imports.problems_of(os.path.join(package, "bin")))
    host.expect(not needs, "\n".join(needs))


def build_samples(package, out):
    """By the commands of the samples' page, for somebody on another system than Windows."""
    with open(os.path.join(package, "samples", "hosts", "README.md"), encoding="utf-8") as file:
        blocks = [block for block in re.findall(r"```sh\n(.*?)```", file.read(), re.S) if "CMAKE_SYSTEM_NAME" in block]
    host.expect(len(blocks) == 1, f"{len(blocks)} blocks of commands build the samples")
    samples = os.path.join(out, "samples")
    shutil.copytree(os.path.join(package, "samples", "hosts"), samples)
    run(["sh", "-e", "-c", blocks[0].replace("FOLDER_OF_THE_PACKAGE", package)], samples)
    return os.path.join(samples, "build")


class Sample(host.Demo):
    TITLE = "^Rectangle$"

    def lines(self, count):
        """The lines that the program has printed, once there are so many of them."""
        def read():
            with open(os.path.join(self.out, "demo.log"), encoding="utf-8", errors="replace") as file:
                lines = file.read().splitlines()
            return lines if len(lines) >= count else None
        return host.wait_for(f"line {count} of the sample", read)


def use(program, out):
    """A box is open over the width at the start: 500 is taken over and Return goes on to the height, -5 is refused there
    and kept in the box, and Escape puts the old height back."""
    os.makedirs(out)
    Sample.PROGRAM = program
    with Sample(out) as sample:
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


def main(out):
    package = unpack(out)
    look(package)
    build = build_samples(package, out)
    for name in SAMPLES:
        use(os.path.join(build, name + ".exe"), os.path.join(out, name))


if __name__ == "__main__":
    host.run(main)
