#!/usr/bin/env python3
"""Every source is listed in its folder's CMakeLists.txt, is UTF-8 without tabs or a mark in front, and isn't a giant."""
import os
import re
import sys

import house

FOLDERS = ("afx", "kx", "Source", "render", "demo", "tools", "bench", "tests", "tests/support")
LARGE = 900


def problems_of(root):
    for folder in FOLDERS:
        build = os.path.join(root, folder if folder != "tests/support" else "tests", "CMakeLists.txt")
        listed = house.text_of(build) if os.path.exists(build) else ""
        listed = re.sub(r"#.*", "", listed)
        for script in ("NrTests.cmake", "NrTargets.cmake"):
            if folder == "tests/support" and os.path.exists(os.path.join(root, "cmake", script)):
                listed += house.text_of(root, "cmake", script)
        for name in house.files_of(root, folder):
            path = f"{folder}/{name}"
            with open(os.path.join(root, path), "rb") as file:
                data = file.read()
            try:
                text = data.decode("utf-8")
            except UnicodeDecodeError as error:
                yield f"{path}: not UTF-8 at byte {error.start}"
                continue
            if not name.endswith((".h", ".cpp")):
                continue
            if name.endswith(".cpp") and not re.search(r"(?<![\w.])" + re.escape(name) + r"(?![\w.])", listed):
                yield f"{path}: stands in no CMakeLists.txt, so nothing builds it"
            if text.startswith("\ufeff"):
                yield f"{path}: begins with a byte order mark"
            if "\t" in text:
                yield f"{path}: has a tab"
            if "\r" in text:
                yield f"{path}: has carriage returns"
            if text and not text.endswith("\n"):
                yield f"{path}: its last line has no end"
            if text.count("\n") > LARGE:
                print(f"warning: {path} has {text.count(chr(10))} lines; split it by family")


if __name__ == "__main__":
    house.report(list(problems_of(house.root_of(sys.argv))))
