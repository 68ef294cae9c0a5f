#!/usr/bin/env python3
"""The resource scripts of two languages have the same items, and the texts of the demo are in them.

- Strings: in both scripts, with as many lines, and with the same placeholders, menu keys and number of mnemonics. That of
  a menu item of the demo also says what the item does.
- Dialogs: in both, with the same controls.
- No source of the demo has a Chinese text of its own, the name of a font aside.
- What the library shows to a user of the demo (labels of property rows, words for kinds, its dialogs, its menu, its whole
  messages) is among the texts that the demo translates.
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
TRANSLATED = re.compile(r'^\s+IDS_LIBRARY_FIRST[^"]*"(.*?)\\n', re.M)
SHOWN = (re.compile(r'PropertyRows::Add\w*\(list, L"[^"]*", L"([^"]*)"'), re.compile(r'::GetName\(\)[^{]*\{\s*return L"([^"]*)";'),
         re.compile(r'AfxMessageBox\(L"([^"]*)"[,)]'))
SHOWN_RESOURCES = re.compile(r'^\s*(?:CAPTION|DEFPUSHBUTTON|PUSHBUTTON|MENUITEM) "([^"]*)"', re.M)


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


def untranslated_in(root):
    known = set(TRANSLATED.findall(common.text_of(root, "demo", "demo_en.rc")))
    if os.path.exists(os.path.join(root, "resources", "NRVectorView.rc")):
        for text in SHOWN_RESOURCES.findall(common.text_of(root, "resources", "NRVectorView.rc")):
            if text not in known:
                yield f"demo/demo_en.rc does not translate {text} of resources/NRVectorView.rc"
    for name in common.files_of(root, "Source"):
        if name.endswith(".cpp"):
            for pattern in SHOWN:
                for text in pattern.findall(common.text_of(root, "Source", name)):
                    if text not in known:
                        yield f"demo/demo_en.rc does not translate {text} of Source/{name}"


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
    yield from untranslated_in(root)
    for name in common.files_of(root, "demo"):
        if name.endswith(".cpp"):
            for text in CHINESE.findall(common.text_of(root, "demo", name)):
                if text != FONT:
                    yield f"demo/{name}: the text {text} belongs in the resource scripts"


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
