#!/usr/bin/env python3
"""Every DLL and program needs only the project's own DLLs of the layers below it, and DLLs that come with Windows.

imports.py [TREE [BIN]]: BIN defaults to $NR_BUILD/bin.
"""
import os
import re
import subprocess
import sys

import common

SYSTEM = frozenset(name + ".dll" for name in (
    "advapi32", "comctl32", "comdlg32", "gdi32", "imm32", "kernel32", "msimg32", "msvcrt", "ole32", "oleaut32",
    "rpcrt4", "shell32", "shlwapi", "user32", "uuid", "uxtheme", "version", "winmm"))
# What each DLL of the project may need of the others.
OWN = {"nrafx.dll": (), "nrkx.dll": ("nrafx.dll",), "nrvectorview.dll": ("nrafx.dll", "nrkx.dll"),
       "nrvectorviewopen.dll": ("nrafx.dll", "nrkx.dll")}


def imports_of(path):
    listing = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", path], check=True, capture_output=True, text=True)
    return [name.lower() for name in re.findall(r"^\s*DLL Name: (\S+)", listing.stdout, re.M)]


def problems_of(folder):
    modules = [name for name in sorted(os.listdir(folder)) if name.lower().endswith((".dll", ".exe"))]
    if not modules:
        yield f"nothing is built in {os.path.basename(os.path.dirname(folder))}"
    for name in modules:
        needed = imports_of(os.path.join(folder, name))
        if not needed:
            yield f"{name}: no imports at all were found"
        for other in needed:
            if other in OWN:
                if name.lower() in OWN and other not in OWN[name.lower()]:
                    yield f"{name}: needs {other}, which is above it"
            elif other not in SYSTEM:
                yield f"{name}: needs {other}, which neither is the project's nor comes with Windows"


if __name__ == "__main__":
    if len(sys.argv) > 2:
        common.report(list(problems_of(sys.argv[2])))
    common.report(list(problems_of(os.path.join(os.environ["NR_BUILD"], "bin"))))
