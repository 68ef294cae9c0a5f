#!/usr/bin/env python3
"""Every unit stands in ARCHITECTURE.md, every name there exists, and each head agrees with it.

map.py [TREE] checks; map.py --rows prints table rows for the units that are missing, from their own heads.
"""
import re
import sys

import house

FOLDERS = ("afx", "kx", "Source", "demo", "tools", "bench")
LAYER = re.compile(r"\bLayer: ([^.;(]+)")


def head_of(root, folder, names):
    """(purpose, layer) as the unit's header says it, or its only file; None for what is missing."""
    main = next((name for name in names if name.endswith(".h")), names[0])
    head = []
    for line in house.text_of(root, folder, main).splitlines():
        if not line.startswith("// "):
            break
        head.append(line[3:])
    text = " ".join(head)
    match = LAYER.search(text)
    if not match:
        return text or None, None
    return text[:match.start()].strip() or None, match.group(1).strip()


def problems_of(root):
    folders = house.read_map(root)
    for name in FOLDERS:
        units = house.units_of(root, name)
        folder = folders.get(name)
        if folder is None:
            if units:
                yield f"ARCHITECTURE.md has no heading for {name}/"
            continue
        for unit in folder.twice:
            yield f"ARCHITECTURE.md: {name}/{unit} stands there twice"
        for unit in sorted(units.keys() - folder.rows.keys()):
            yield f"ARCHITECTURE.md: {name}/{unit} is missing"
        for unit in sorted(folder.rows.keys() - units.keys()):
            yield f"ARCHITECTURE.md: {name}/{unit} is gone"
        for unit in sorted(units.keys() & folder.rows.keys()):
            row = folder.rows[unit]
            if not row.purpose:
                yield f"ARCHITECTURE.md: {name}/{unit} has no purpose"
            if folder.rooms and row.room not in folder.rooms:
                yield f"ARCHITECTURE.md: {name}/{unit} stands in no room of the list: {row.room!r}"
            if not any(file.endswith((".h", ".cpp")) for file in units[unit]):
                continue
            purpose, layer = head_of(root, name, units[unit])
            if not purpose or not layer:
                yield f"{name}/{unit}: its first lines say no purpose and no \"Layer: ...\""
            elif folder.rooms and layer != row.room:
                yield f"{name}/{unit}: its head says {layer!r}, ARCHITECTURE.md says {row.room!r}"


def print_rows(root):
    folders = house.read_map(root)
    for name in FOLDERS:
        folder = folders.get(name) or house.Folder(name)
        for unit, names in house.units_of(root, name).items():
            if unit not in folder.rows:
                purpose, layer = head_of(root, name, names)
                room = f" {layer or '?'} | |" if folder.rooms else ""
                print(f"{name}: | `{unit}` |{room} {purpose or '?'} |")


if __name__ == "__main__":
    if sys.argv[1:2] == ["--rows"]:
        print_rows(house.root_of([]))
    else:
        house.report(list(problems_of(house.root_of(sys.argv))))
