#!/usr/bin/env python3
"""The resource scripts of two languages have the same items, and the texts of the demo are in them.

- Strings: in both scripts, with as many lines, and with the same placeholders, menu keys and number of mnemonics. That of
  a menu item of the demo also says what the item does.
- Dialogs: in both, with the same controls.
- No source of the demo has a Chinese text of its own, the name of a font aside.
"""
import os
import re
import sys

import common

PAIRS = (("demo", "demo_zh.rc", "demo_en.rc"), ("afx", "nrafx_zh.rc", "nrafx.rc"))
STRING = re.compile(r'^\s+((?:ID|AFX_ID)\w+(?:\s*\+\s*\d+)?),?\s+"((?:[^"]|"")*)"\s*$', re.M)
DIALOG = re.compile(r"^(\w+)\s+DIALOGEX.*?^END", re.M | re.S)
CONTROL = re.compile(r'^\s+(?:[LCR]TEXT|EDITTEXT|COMBOBOX|AUTOCHECKBOX|CONTROL|DEFPUSHBUTTON|PUSHBUTTON)\b(?:\s+"[^"]*",)?\s*(-?\w+)', re.M)
PLACE = re.compile(r"%[-+0-9.]*l?[a-zA-Z]|%\d")
CHINESE = re.compile(r'L"([^"]*[\u4e00-\u9fff][^"]*)"')
FONT = "宋体"


def strings_of(text):
    return {name: {"lines": value.count("\\n") + 1, "placeholders": sorted(PLACE.findall(value)),
                   "keys": re.findall(r"\\t([^\\]*)", value), "mnemonics": len(re.findall("&(?!&)", value)),
                   "pieces": value.count("|") + 1}
            for name, value in STRING.findall(text)}


def dialogs_of(text):
    return {match.group(1): CONTROL.findall(match.group(0)) for match in DIALOG.finditer(text)}


def compare(folder, names, first, second):
    for item in sorted(set(first) | set(second)):
        if item not in first or item not in second:
            yield f"{folder}/{names[item in first]}: {item} is missing"
        elif first[item] != second[item]:
            yield f"{folder}: {item} differs in form: {first[item]} and {second[item]}"


def problems_of(root):
    for folder, *names in PAIRS:
        if not all(os.path.exists(os.path.join(root, folder, name)) for name in names):
            if folder == "demo":
                yield "demo/ has no texts in two languages"
            continue
        texts = [common.text_of(root, folder, name) for name in names]
        strings = [strings_of(text) for text in texts]
        if not strings[0]:
            yield f"{folder}/{names[0]} has no string"
        yield from compare(folder, names, *strings)
        yield from compare(folder, names, *map(dialogs_of, texts))
        for item, form in strings[0].items():
            if item.startswith(("ID_HOST_", "ID_FILE_", "ID_EDIT_", "ID_APP_")) and form["lines"] < 2:
                yield f"{folder}/{names[0]}: {item} does not say what it does"
    for name in common.files_of(root, "demo"):
        if name.endswith(".cpp"):
            for text in CHINESE.findall(common.text_of(root, "demo", name)):
                if text != FONT:
                    yield f"demo/{name}: the text {text} belongs in the resource scripts"


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
