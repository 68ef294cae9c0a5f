#!/usr/bin/env python3
"""Every source is built, is UTF-8 without tabs or a mark in front, and is no larger than CONTRIBUTING.md says."""
import fnmatch
import os
import re
import sys

import common

FOLDERS = ("afx", "kx", "Source", "render", "capi", "demo", "tools", "bench", "tests", "tests/support")


def limits_of(root):
    """The most lines of a header and of a source, as CONTRIBUTING.md gives them."""
    match = re.search(r"below (\d+) lines,\s+sources below (\d+)", common.text_of(root, "CONTRIBUTING.md"))
    return (int(match.group(1)), int(match.group(2))) if match else None


def patterns_of(root, folder):
    """The sources that a folder's CMakeLists.txt takes in, as names or patterns."""
    scripts = ["tests/CMakeLists.txt", "cmake/NrTests.cmake", "cmake/NrTargets.cmake"] if folder == "tests/support" else [
        f"{folder}/CMakeLists.txt"]
    text = "\n".join(common.text_of(root, script) for script in scripts if os.path.exists(os.path.join(root, script)))
    return re.findall(r"(?<![\w.*])([\w*.]+\.cpp)(?![\w.])", re.sub(r"#.*", "", text))


def problems_of(root):
    limits = limits_of(root)
    if limits is None:
        yield "CONTRIBUTING.md no longer says how many lines a header and a source may have"
    for folder in FOLDERS:
        patterns = patterns_of(root, folder)
        for name in common.files_of(root, folder):
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
            if name.endswith(".cpp") and not any(fnmatch.fnmatchcase(name, pattern) for pattern in patterns):
                yield f"{path}: no CMakeLists.txt takes it in, so nothing builds it"
            if text.startswith("\ufeff"):
                yield f"{path}: begins with a byte order mark"
            if "\t" in text:
                yield f"{path}: has a tab"
            if "\r" in text:
                yield f"{path}: has carriage returns"
            if text and not text.endswith("\n"):
                yield f"{path}: its last line has no end"
            large = limits and text.count("\n") >= limits[name.endswith(".cpp")]
            if large:
                yield f"{path}: has {text.count(chr(10))} lines; split it by family (below {limits[name.endswith('.cpp')]})"


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
