"""What the checks share: the map in ARCHITECTURE.md, the units that exist, and who includes whom.

The map is read as it is written for people:
  - the table whose first column is "Layer" lists the layers with their numbers, 1 at the bottom, and their folders;
  - a heading such as "## `kx/`: ..." opens a folder's section;
  - a table whose first column is "Unit" lists the folder's units; its columns "Layer" and "Also includes" are optional;
  - the table whose first column is "Where is" names units and what to look at in them.
A unit is a header and a source of one name, or one of the two alone; in tools/ and demo/ also a script.
"""
import os
import re
import sys

HEADING = re.compile(r"^##\s+`([A-Za-z]+)/`")
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]')
SUFFIXES = (".h", ".cpp", ".sh", ".py")


class Row:
    def __init__(self, unit, cells):
        self.unit = unit
        self.layer = cells.get("Layer", "")
        self.also = re.findall(r"`([^`]+)`", cells.get("Also includes", ""))
        self.purpose = cells.get("Purpose", "")


class Folder:
    def __init__(self, name):
        self.name = name
        self.layers = []  # as "5 drawables"
        self.rows = {}
        self.twice = []

    def layer_of(self, unit):
        """The number of a unit's layer; None when the map does not tell."""
        row = self.rows.get(unit)
        layer = row.layer if row and row.layer else self.layers[0] if len(self.layers) == 1 else ""
        return int(layer.split()[0]) if layer in self.layers else None


class Map:
    def __init__(self):
        self.folders = {}
        self.layers = []  # all, as "5 drawables"
        self.where = []   # (question, names in backticks) of each row


def root_of(arguments):
    """The tree to check: the first argument, else the one that this file is in."""
    if len(arguments) > 1:
        return os.path.abspath(arguments[1])
    return os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def cells_of(line):
    return [cell.strip() for cell in line.strip().strip("|").split("|")]


def read_map(root):
    result = Map()
    folder = head = None
    for line in text_of(root, "ARCHITECTURE.md").splitlines():
        if line.startswith("## "):
            match = HEADING.match(line)
            folder = result.folders.setdefault(match.group(1), Folder(match.group(1))) if match else None
        if not line.startswith("|"):
            head = None
            continue
        cells = cells_of(line)
        if head is None:
            head = cells
        elif not set(line.strip()) <= set("|-: "):
            name = cells[0].strip("`")
            if head[0] == "Layer":
                owner = cells[1].strip("`/")
                result.folders.setdefault(owner, Folder(owner)).layers.append(name)
                result.layers.append(name)
            elif head[0] == "Where is":
                result.where.append((name, re.findall(r"`([^`]+)`", line)))
            elif head[0] == "Unit" and folder is not None:
                if name in folder.rows:
                    folder.twice.append(name)
                folder.rows[name] = Row(name, dict(zip(head, cells)))
    return result


def files_of(root, folder):
    """The sources, headers and scripts right inside a folder."""
    top = os.path.join(root, folder)
    if not os.path.isdir(top):
        return []
    return sorted(name for name in os.listdir(top) if name.endswith(SUFFIXES) and os.path.isfile(os.path.join(top, name)))


def units_of(root, folder):
    """Unit names with their files, the header first."""
    units = {}
    for name in sorted(files_of(root, folder), key=lambda name: not name.endswith(".h")):
        units.setdefault(os.path.splitext(name)[0], []).append(name)
    return units


def text_of(*path):
    with open(os.path.join(*path), encoding="utf-8") as file:
        return file.read()


def includes_of(root, folder, name):
    """(line number, included text) of each include."""
    found = []
    for number, line in enumerate(text_of(root, folder, name).splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            found.append((number, match.group(1)))
    return found


def report(problems):
    """Ends the check: prints what is wrong, and says so by the exit code."""
    for problem in problems:
        print(problem)
    sys.exit(1 if problems else 0)
