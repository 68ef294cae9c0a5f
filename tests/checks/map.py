#!/usr/bin/env python3
"""Every unit stands in ARCHITECTURE.md, every name there exists, and each head agrees with it.

map.py [TREE] checks; map.py --write adds rows for the units that are missing, from their own heads, and takes out those
of units that are gone.
"""
import os
import re
import sys

import house

FOLDERS = ("afx", "kx", "Source", "render", "demo", "tools", "bench")
SENTENCE = re.compile(r"(?<=\.) .*")
LAYER = re.compile(r"\bLayer: ([^.;(]+)")


def head_of(root, folder, names):
    """(purpose, layer) as the unit's header says it, or its only file; None for what is missing."""
    main = next((name for name in names if name.endswith(".h")), names[0])
    head = []
    for line in house.text_of(root, folder, main).splitlines():
        match = re.match(r"(?://|#|\"\"\") ?([^!].*)", line)
        if match:
            head.append(match.group(1).rstrip('"'))
        elif head or not line.startswith("#!"):
            break
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


def write_rows(root):
    folders = house.read_map(root)
    path = os.path.join(root, "ARCHITECTURE.md")
    lines = house.text_of(path).splitlines()
    folder = None
    written = []
    for number, line in enumerate(lines):
        match = house.HEADING.match(line)
        if match:
            folder = folders[match.group(1)]
            units = house.units_of(root, folder.name)
        elif line.startswith("## "):
            folder = None
        row = re.match(r"\| `([^`]+)` \|", line)
        if folder and row and row.group(1) in folder.rows and row.group(1) not in units:
            continue
        written.append(line)
        # The last row of the table, or its ruler when it has no row yet: here the missing ones come in.
        ends = number + 1 == len(lines) or not lines[number + 1].startswith("|")
        if folder and folder.name in FOLDERS and line.startswith("|") and ends and table_of(lines, number) == "Unit":
            for unit in sorted(units.keys() - folder.rows.keys(), key=str.lower):
                purpose, layer = head_of(root, folder.name, units[unit])
                room = f" {layer or '?'} | |" if folder.rooms else ""
                written.append(f"| `{unit}` |{room} {re.sub(SENTENCE, '', purpose or '')} |")
    if folders:
        written = in_order(written, folders)
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(written) + "\n")


def table_of(lines, number):
    """The first column's title of the table that a line stands in."""
    while lines[number - 1].startswith("|"):
        number -= 1
    return house.cells_of(lines[number])[0]


def in_order(lines, folders):
    """Rows of units by room, then by name; all else stays."""
    result, block, rooms = [], [], []

    def flush():
        block.sort(key=lambda row: (rooms.index(house.cells_of(row)[1]) if house.cells_of(row)[1] in rooms else 99,
                                    row.lower()))
        result.extend(block)
        block.clear()

    for line in lines:
        match = house.HEADING.match(line)
        if match:
            rooms = folders[match.group(1)].rooms
        if re.match(r"\| `", line):
            block.append(line)
        else:
            flush()
            result.append(line)
    flush()
    return result


if __name__ == "__main__":
    if sys.argv[1:2] == ["--write"]:
        write_rows(house.root_of([]))
    else:
        house.report(list(problems_of(house.root_of(sys.argv))))
