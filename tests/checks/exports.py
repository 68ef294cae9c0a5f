#!/usr/bin/env python3
"""NRVectorView.dll exports every operation that its public headers declare, under the names of their classes.

exports.py [TREE [DLL]]: DLL defaults to $NR_BUILD/bin/NRVectorView.dll.
"""
import os
import re
import subprocess
import sys

import common

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


def problems_of(root, dll):
    listing = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", dll], check=True, capture_output=True, text=True)
    exports = "\n".join(re.findall(r"\b_Z\w+", listing.stdout))
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
    tree = common.root_of(sys.argv)
    dll = sys.argv[2] if len(sys.argv) > 2 else os.path.join(os.environ["NR_BUILD"], "bin", "NRVectorView.dll")
    common.report(list(problems_of(tree, dll)))
