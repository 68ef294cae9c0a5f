"""What the checks share: the map in ARCHITECTURE.md, the units that exist, and who includes whom.

The map is read as it is written for people:
  - a heading such as "## `kx/`: ..." opens a folder; the folders' order is the order of the layers;
  - a table whose first column is "Unit" lists the folder's units; its columns "Room" and "Also includes" are optional;
  - a table whose first column is "Room" lists the folder's rooms, lowest first.
A unit is a header and a source of one name, or one of the two alone; in tools/ and demo/ also a script.
"""
import os
import re
import sys

HEADING = re.compile(r"^##\s+`([A-Za-z]+)/`")
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]')
SUFFIXES = (".h", ".cpp", ".sh", ".py")
SKIPPED = ("__pycache__",)


class Row:
    def __init__(self, unit, cells):
        self.unit = unit
        self.room = cells.get("Room", "")
        self.also = re.findall(r"`([^`]+)`", cells.get("Also includes", ""))
        self.purpose = cells.get("Purpose", "")


class Folder:
    def __init__(self, name):
        self.name = name
        self.rooms = []
        self.rows = {}
        self.twice = []


def root_of(arguments):
    """The tree to check: the first argument, else the one that this file stands in."""
    if len(arguments) > 1:
        return os.path.abspath(arguments[1])
    return os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def cells_of(line):
    return [cell.strip() for cell in line.strip().strip("|").split("|")]


def read_map(root):
    """Returns the folders of ARCHITECTURE.md in their order, by name."""
    folders = {}
    folder = head = None
    with open(os.path.join(root, "ARCHITECTURE.md"), encoding="utf-8") as file:
        for line in file:
            if line.startswith("## "):
                match = HEADING.match(line)
                folder = folders.setdefault(match.group(1), Folder(match.group(1))) if match else None
                head = None
            elif not line.startswith("|"):
                head = None
            elif folder is not None:
                cells = cells_of(line)
                if head is None:
                    head = cells
                elif not set(line.strip()) <= set("|-: "):
                    name = cells[0].strip("`")
                    if head[0] == "Unit":
                        if name in folder.rows:
                            folder.twice.append(name)
                        folder.rows[name] = Row(name, dict(zip(head, cells)))
                    elif head[0] == "Room":
                        folder.rooms.append(name)
    return folders


def files_of(root, folder):
    """The sources, headers and scripts right inside a folder."""
    top = os.path.join(root, folder)
    if not os.path.isdir(top):
        return []
    return sorted(name for name in os.listdir(top) if name.endswith(SUFFIXES) and os.path.isfile(os.path.join(top, name)))


def units_of(root, folder):
    """Unit names with their files."""
    units = {}
    for name in files_of(root, folder):
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
