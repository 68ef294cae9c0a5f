#!/usr/bin/env python3
"""The exported names are those that are written down, so that no change of the interfaces goes unnoticed.

names.py [TREE [DLL]]: DLL defaults to $NR_BUILD/bin/NRVectorView.dll.
  C    capi/nrview.def, the functions that nrview.h declares, and those that the DLL exports are the same, and each is
       called by a test.
  C++  Source/exported_names.txt and the DLL.
names.py --write [TREE [DLL]] writes both lists anew: for a change that is meant, and is to be told in CHANGELOG.md.
"""
import os
import re
import subprocess
import sys

import common

DEF = "capi/nrview.def"
CPP = "Source/exported_names.txt"
DEF_HEAD = "; The exported functions of the C interface (names.py --write).\nLIBRARY NRVectorView\nEXPORTS\n"


def exported(dll):
    """(functions of the C interface, C++ names), each sorted."""
    listing = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", dll], check=True, capture_output=True, text=True).stdout
    # What the DLL imports is listed too, in another table.
    table = listing.partition("[Ordinal/Name Pointer] Table")[2].partition("\n\n")[0]
    names = set(re.findall(r"\b(?:Nrv[A-Z]\w*|_Z\w+)$", table, re.M))
    return sorted(n for n in names if n.startswith("Nrv")), sorted(n for n in names if n.startswith("_Z"))


def declared(root):
    text = common.text_of(root, "capi", "include", "nrview.h")
    return sorted(set(re.findall(r"^NRV_API .*\bNRV_CALL (Nrv\w+)\(", text, re.M)))


def compare(what, expected, found, other):
    for name in sorted(set(expected) - set(found)):
        yield f"{name} is in {what} and not in {other}"
    for name in sorted(set(found) - set(expected)):
        yield f"{name} is in {other} and not in {what}"


def problems_of(root, dll):
    functions, names = exported(dll)
    listed = re.findall(r"^\s+(\w+)$", common.text_of(root, DEF), re.M)
    yield from compare("nrview.h", declared(root), functions, os.path.basename(dll))
    yield from compare(DEF, listed, functions, os.path.basename(dll))
    yield from compare(CPP, common.text_of(root, CPP).split(), names, os.path.basename(dll))
    tests = "\n".join(common.text_of(root, "tests", name) for name in sorted(os.listdir(os.path.join(root, "tests")))
                      if name.startswith("capi_") and name.endswith("_test.c"))
    for name in declared(root):
        if not re.search(rf"\b{name}\(", tests):
            yield f"{name} is called by no test"


def write(root, dll):
    functions, names = exported(dll)
    for path, text in ((DEF, DEF_HEAD + "".join(f"    {name}\n" for name in functions)), (CPP, "\n".join(names) + "\n")):
        with open(os.path.join(root, path), "w", encoding="utf-8") as file:
            file.write(text)


if __name__ == "__main__":
    arguments = [argument for argument in sys.argv if argument != "--write"]
    tree = common.root_of(arguments)
    library = arguments[2] if len(arguments) > 2 else os.path.join(os.environ["NR_BUILD"], "bin", "NRVectorView.dll")
    if "--write" in sys.argv:
        write(tree, library)
    else:
        common.report(list(problems_of(tree, library)))
