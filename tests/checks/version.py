#!/usr/bin/env python3
"""The version is that of the project in CMakeLists.txt: in the resources of the DLLs and of the demo, in the headers, in the
newest heading of CHANGELOG.md.

version.py [TREE [BIN]]: BIN, the folder of the programs, defaults to $NR_BUILD/bin.
"""
import os
import re
import struct
import sys

import common

BUILT = ("NRVectorView.dll", "nrafx.dll", "nrkx.dll", "nrvv_demo.exe")
SIGNATURE = struct.pack("<I", 0xFEEF04BD)  # of a VS_FIXEDFILEINFO


def stated_by(path):
    """The file versions that a module's resources tell, as (major, minor, patch)."""
    with open(path, "rb") as file:
        data = file.read()
    found = []
    at = data.find(SIGNATURE)
    while at >= 0:
        structure, high, low = struct.unpack_from("<III", data, at + 4)
        if structure == 0x10000:
            found.append((high >> 16, high & 0xFFFF, low >> 16))
        at = data.find(SIGNATURE, at + 1)
    return found


def problems_of(root, folder):
    match = re.search(r"project\(NRVectorView VERSION (\d+)\.(\d+)\.(\d+)", common.text_of(root, "CMakeLists.txt"))
    version = tuple(map(int, match.groups()))
    for name in BUILT:
        if stated_by(os.path.join(folder, name)) != [version]:
            yield f"{name}: its resources tell {stated_by(os.path.join(folder, name))}"
    layer = int(re.search(r"#define NRAFX_VERSION (0x\w+)", common.text_of(root, "afx", "afxapi.h")).group(1), 0)
    if layer != version[0] << 16 | version[1] << 8 | version[2]:
        yield f"afx/afxapi.h: NRAFX_VERSION is {layer:#08x}"
    c_header = re.findall(r"#define NRV_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)",
                          common.text_of(root, "capi", "include", "nrview.h"))
    if tuple(map(int, c_header)) != version:
        yield f"capi/include/nrview.h: {'.'.join(c_header)}"
    heading = re.search(r"^## (\S+?),", common.text_of(root, "CHANGELOG.md"), re.M)
    if heading.group(1) != ".".join(map(str, version)):
        yield f"CHANGELOG.md begins with {heading.group(1)}"


if __name__ == "__main__":
    BIN = sys.argv[2] if len(sys.argv) > 2 else os.path.join(os.environ["NR_BUILD"], "bin")
    common.report(list(problems_of(common.root_of(sys.argv), BIN)))
