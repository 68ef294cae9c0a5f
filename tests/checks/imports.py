#!/usr/bin/env python3
"""Every DLL and program needs only the project's own DLLs of the layers below it, and DLLs that come with Windows. The
project's DLLs take their mathematics from the system's C runtime.

imports.py [TREE [BIN]]: BIN defaults to $NR_BUILD/bin.
"""
import os
import re
import subprocess
import sys

import common

SYSTEM = frozenset(name + ".dll" for name in (
    "advapi32", "comctl32", "comdlg32", "gdi32", "imm32", "kernel32", "msimg32", "msvcrt", "ole32", "oleaut32",
    "rpcrt4", "shell32", "shlwapi", "user32", "uuid", "uxtheme", "version", "winmm")) | {"winspool.drv"}
# What each DLL of the project may need of the others.
OWN = {"nrafx.dll": (), "nrkx.dll": ("nrafx.dll",), "nrvectorview.dll": ("nrafx.dll", "nrkx.dll"),
       "nrvectorviewopen.dll": ("nrafx.dll", "nrkx.dll")}
# The C runtime, and what afx/SystemMath.cpp takes from it.
RUNTIME = ("msvcrt.dll", "api-ms-win-crt-math-l1-1-0.dll")
MATHEMATICS = frozenset("sin cos atan2 exp log pow fmod sqrt".split())


def imports_of(path):
    """The names of the DLLs in the module's table of imports, each with the set of functions taken from it."""
    listing = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", path], check=True, capture_output=True, text=True)
    tables = re.split(r"^\s*DLL Name: (\S+)", listing.stdout, flags=re.M)[1:]
    return {name.lower(): set(re.findall(r"^\s+[0-9a-f]+\s+\d+\s+(\S+)$", table, re.M))
            for name, table in zip(tables[::2], tables[1::2])}


def problems_of(folder):
    modules = [name for name in sorted(os.listdir(folder)) if name.lower().endswith((".dll", ".exe"))]
    if not modules:
        yield f"nothing is built in {os.path.basename(os.path.dirname(folder))}"
    for name in modules:
        needed = imports_of(os.path.join(folder, name))
        if not needed:
            yield f"{name}: no imports at all were found"
        mathematics = set().union(*(needed.get(runtime, ()) for runtime in RUNTIME))
        if name.lower() in OWN and not MATHEMATICS <= mathematics:
            yield f"{name}: has mathematics of its own: {' '.join(sorted(MATHEMATICS - mathematics))}"
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
