#!/usr/bin/env python3
"""docs/compatibility.md and the code agree: each `// Compatibility N:` has an entry, each entry a pointer and a test."""
import os
import re
import sys

import common

ENTRY = re.compile(r"^\| (\d+) \|.*\| `([^`]+)` \|$", re.M)
POINTER = re.compile(r"// Compatibility (\d+)\b")
TEST = re.compile(r"^TEST(?:_F|_P)?\((\w+), (\w+)\)", re.M)
OPEN = re.compile(r"^The code of these entries has no pointer yet: ([\d, ]+)", re.M)


def problems_of(root):
    text = common.text_of(root, "docs", "compatibility.md")
    entries = [(int(number), test) for number, test in ENTRY.findall(text)]
    if [number for number, _ in entries] != list(range(1, len(entries) + 1)):
        yield "docs/compatibility.md: the entries are not numbered from 1 upwards"
    match = OPEN.search(text)
    waiting = {int(number) for number in re.findall(r"\d+", match.group(1))} if match else set()
    tests = {".".join(found) for name in common.files_of(root, "tests") if name.endswith(".cpp")
             for found in TEST.findall(common.text_of(root, "tests", name))}
    pointers = {}
    for folder in ("afx", "kx", "Source", "render", "capi", "demo"):
        for name in common.files_of(root, folder):
            for number in POINTER.findall(common.text_of(root, folder, name)):
                pointers.setdefault(int(number), f"{folder}/{name}")
    numbers = {number for number, _ in entries}
    for number, path in sorted(pointers.items()):
        if number not in numbers:
            yield f"{path}: docs/compatibility.md has no entry {number}"
        if number in waiting:
            yield f"docs/compatibility.md: entry {number} has its pointer, in {path}"
    for number, test in entries:
        if number not in pointers and number not in waiting:
            yield f"docs/compatibility.md: nothing in the code points to entry {number}"
        if test not in tests:
            yield f"docs/compatibility.md: entry {number}: there is no test {test}"
    for number in sorted(waiting - numbers):
        yield f"docs/compatibility.md: there is no entry {number}"


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
