#!/usr/bin/env python3
"""NRVectorView.dll exports every operation that its public headers declare, under the names of their classes. What the
DLLs below it export is what tests/data/exports/ lists, so that no change of the binary interface goes unnoticed.

exports.py [TREE [BIN]]: BIN, the folder of the DLLs, defaults to $NR_BUILD/bin.
exports.py --write [TREE [BIN]] writes the lists anew. A line less breaks hosts that were built before.
"""
import os
import re
import subprocess
import sys

import common

LISTED = ("nrafx", "nrkx")
# Nested helpers are indented, and no part of the interface.
CLASS = re.compile(r"^class\s+NRVECTORVIEW_API\s+(\w+)[^;{]*\{", re.M)
# What hosts embed and fill a drawing with: a header that lost its mark would otherwise not be missed.
EXPORTED = """CVectorView CVectorViewParm CVectorGraphic CGraphicDocument CGePoint2d CGeVector2d CGeMatrix2d CVectorViewCoordTran
CDrawable CLine CPLine CCircle CArc CCenterPoint CCombRect CText CTextParm CKXVectorLabel CDraw_Common CTextFormator
CGraphColorInfo CDrawingRender CDrawingClipboard CObjectStream COperationPlaceObjects CVecotrVeiwParmOpr CCommand CCommandOperation CCommandOperationManager COperationCreateObjAb""".split()


def without_comments(text):
    return re.sub(r'//[^\n]*|/\*.*?\*/', "", text, flags=re.S)


def body_at(text, start):
    """The text between the brace that opens at start - 1 and its partner, inner braces emptied."""
    depth, out = 1, []
    for char in text[start:]:
        if char == "{":
            depth += 1
        elif char == "}":
            depth -= 1
            if depth == 0:
                break
            if depth == 1:
                out.append(";")
        elif depth == 1:
            out.append(char)
    return "".join(out)


def operations_of(body):
    for statement in body.split(";"):
        statement = re.sub(r"\b(public|protected|private)\s*:(?!:)", " ", statement)
        statement = re.sub(r"\bDECLARE_\w+\([^)]*\)|\bDECLARE_\w+\(\)", " ", statement).strip()
        if re.search(r"=\s*(0|default|delete)\s*$", statement) or statement.startswith(("using", "friend", "enum", "template")):
            continue
        match = re.search(r"(~?\w+)\s*\(", statement)
        if match and not re.search(r"\boperator\b", statement) and "=" not in statement[:match.start()]:
            yield match.group(1)


def declared(root):
    """The classes of the public headers, each with its operations."""
    classes = {}
    for folder in ("Source", "render"):
        for name in common.files_of(root, folder):
            if not name.endswith(".h"):
                continue
            text = without_comments(common.text_of(root, folder, name))
            for match in CLASS.finditer(text):
                classes[match.group(1)] = sorted(set(operations_of(body_at(text, match.end()))))
    return classes


def mangled(owner, name):
    if name == owner:
        tail = "C[12]"
    elif name.startswith("~"):
        tail = "D[012]"
    else:
        tail = f"{len(name)}{name}"
    return re.compile(rf"_ZNK?{len(owner)}{owner}{tail}")


def exported_by(dll):
    """The names in the DLL's table, in order."""
    listing = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", dll], check=True, capture_output=True, text=True).stdout
    table = listing[listing.index("[Ordinal/Name Pointer] Table"):]
    return sorted(set(re.findall(r"^\s*\[ *\d+\](?: \+base\[ *\d+\])?\s+(?:[0-9a-f]+ )?(\S+)$", table, re.M)))


def list_of(root, name):
    return os.path.join(root, "tests", "data", "exports", name + ".txt")


def changes_of(root, folder):
    for name in LISTED:
        listed = set(common.text_of(list_of(root, name)).split())
        there = set(exported_by(os.path.join(folder, name + ".dll")))
        yield from (f"{name}.dll no longer exports {gone}: hosts that use it do not start" for gone in sorted(listed - there))
        yield from (f"{name}.dll exports {new}, which is not listed (exports.py --write)" for new in sorted(there - listed))


def write_lists(root, folder):
    for name in LISTED:
        with open(list_of(root, name), "w", encoding="ascii") as file:
            file.write("".join(line + "\n" for line in exported_by(os.path.join(folder, name + ".dll"))))


def problems_of(root, folder):
    exports = "\n".join(exported_by(os.path.join(folder, "NRVectorView.dll")))
    classes = declared(root)
    for owner in EXPORTED:
        if owner not in classes:
            yield f"{owner} is exported by no public header"
    for owner, operations in classes.items():
        if not mangled(owner, owner).search(exports) and f"_ZTV{len(owner)}{owner}" not in exports and not operations:
            yield f"{owner}: nothing of it is exported"
        for name in operations:
            if not mangled(owner, name).search(exports):
                yield f"{owner}::{name} is not exported"


if __name__ == "__main__":
    arguments = [argument for argument in sys.argv if argument != "--write"]
    tree = common.root_of(arguments)
    bin_folder = arguments[2] if len(arguments) > 2 else os.path.join(os.environ["NR_BUILD"], "bin")
    if len(arguments) < len(sys.argv):
        write_lists(tree, bin_folder)
    else:
        common.report(list(problems_of(tree, bin_folder)) + list(changes_of(tree, bin_folder)))
