#!/usr/bin/env python3
"""Every unit is in ARCHITECTURE.md with the purpose and the layer that its head gives, and every name there exists.

map.py [TREE] checks.
map.py --write [TREE] writes the rows of the units from their heads, and into the heads the numbers of their layers, and
in afx/ the classes that a header declares; the source of a unit with a header loses its own head.
"""
import os
import re
import sys
import textwrap

import common

FOLDERS = ("afx", "kx", "Source", "render", "capi", "demo", "tools", "bench")
HEADS = FOLDERS + ("tests", "tests/support")
LAYER = re.compile(r"\bLayer(?: \d+)?: ([^.;(,]*[^.;(, ])")
CLASS = re.compile(r"^(?:class|struct) (?:NRAFX_API )?(C[A-Z]\w*)\b[^;{]*\{", re.M)
NAME = re.compile(r"`((?:[A-Za-z_]\w*::)*[A-Za-z_]\w*)`")


def head_lines(text):
    """How many lines of the text its head takes: the comment that it begins with."""
    lines = text.splitlines()
    number = next((i for i, line in enumerate(lines) if not re.match(r'//|#[ !]|"""', line)), len(lines))
    return lines[:number]


def head_of(text):
    """(purpose, layer) as the head of a file says it; None for what is missing. The purpose is its first sentence."""
    words = " ".join(re.sub(r'^(//|#|""") ?|"""$', "", line) for line in head_lines(text) if not line.startswith("#!"))
    match = LAYER.search(words)
    purpose = re.sub(r"(?<=\.) .*", "", words[:match.start()] if match else words).strip()
    return purpose or None, match.group(1) if match else None


def with_classes(head, text):
    """The head of a header in afx/, with the sentence that lists the classes which the text declares."""
    words = re.sub(r"\n// ?", " ", head).removeprefix("// ")
    layer = LAYER.search(words).start()
    names = list(dict.fromkeys(CLASS.findall(text)))
    parts = [re.sub(r" ?\bClasses: [^.]*\.", "", words[:layer]).strip()]
    parts += ["Classes: " + ", ".join(names) + "."] if names else []
    return "\n".join(line for part in parts + [words[layer:]] for line in
                     textwrap.wrap(part, 120, initial_indent="// ", subsequent_indent="// "))


def layer_named(tree, folder, name):
    """The layer of that name in a folder as the map writes it, or None."""
    layers = tree.folders[folder].layers if folder in tree.folders else []
    return next((layer for layer in layers if layer.partition(" ")[2] == name), None)


def problems_of(root):
    tree = common.read_map(root)
    if [layer.split()[0] for layer in tree.layers] != [str(i + 1) for i in range(len(tree.layers))]:
        yield "ARCHITECTURE.md: the layers are not numbered from 1 upwards"
    for name in FOLDERS:
        units = common.units_of(root, name)
        folder = tree.folders.get(name)
        if folder is None:
            if units:
                yield f"ARCHITECTURE.md has no layer in {name}/"
            continue
        for unit in folder.twice:
            yield f"ARCHITECTURE.md: {name}/{unit} is there twice"
        for unit in sorted(units.keys() - folder.rows.keys()):
            yield f"ARCHITECTURE.md: {name}/{unit} is missing"
        for unit in sorted(folder.rows.keys() - units.keys()):
            yield f"ARCHITECTURE.md: there is no {name}/{unit}"
        for unit in sorted(units.keys() & folder.rows.keys()):
            row = folder.rows[unit]
            if len(folder.layers) > 1 and row.layer not in folder.layers:
                yield f"ARCHITECTURE.md: {name}/{unit} is in no layer of the list: {row.layer!r}"
            purpose = head_of(common.text_of(root, name, units[unit][0]))[0]
            if not purpose:
                yield f"{name}/{unit}: its first lines give no purpose"
            elif row.purpose != purpose:
                yield f"ARCHITECTURE.md: {name}/{unit} does not have the purpose that its head gives (map.py --write)"
    yield from head_problems(root, tree)
    yield from name_problems(root, tree)


def head_problems(root, tree):
    for path, text in sources_of(root):
        folder, file = path.split("/")[0], os.path.basename(path)
        said = re.search(r"\bLayer[^\n]*", "\n".join(head_lines(text)))
        if folder == "tests" and not said:
            continue  # there is one layer of tests
        if file.endswith(".cpp") and os.path.exists(os.path.join(root, path[:-4] + ".h")):
            if said:
                yield f"{path}: its head repeats that of the unit's header (map.py --write)"
            continue
        head = "\n".join(head_lines(text))
        if re.match(r"afx/[a-z].*\.h$", path) and LAYER.search(head) and with_classes(head, text) != head:
            yield f"{path}: its head doesn't list its classes (map.py --write)"
        row = tree.folders[folder].rows.get(file.rpartition(".")[0]) if folder in tree.folders else None
        layers = [row.layer] if row and row.layer else tree.folders[folder].layers if folder in tree.folders else []
        match = said and re.match(r"Layer (\d+): ([^.;(,]*[^.;(, ])", said.group(0))
        if not match or f"{match.group(1)} {match.group(2)}" not in layers:
            yield f"{path}: its head says {said.group(0) if said else 'no layer'!r}, the map says {' or '.join(layers)!r}"


def sources_of(root):
    """(path, text) of every header and source."""
    for folder in HEADS:
        for file in common.files_of(root, folder):
            if file.endswith((".h", ".cpp")):
                yield f"{folder}/{file}", common.text_of(root, folder, file)


def name_problems(root, tree):
    """Names in backticks: each is a unit, or a word of the sources; in the table of places a word of the row's unit."""
    units = {unit: [f"{name}/{file}" for file in files] for name in FOLDERS for unit, files in
             common.units_of(root, name).items()}
    words = {path: set(re.findall(r"\w+", text)) for path, text in sources_of(root)}
    everywhere = set().union(*words.values()) if words else set()
    for number, line in enumerate(common.text_of(root, "ARCHITECTURE.md").splitlines(), 1):
        for name in NAME.findall(line):
            if name not in units and not set(name.split("::")) <= everywhere:
                yield f"ARCHITECTURE.md:{number}: there is no {name}"
    for question, names in tree.where:
        own = set().union(*(words.get(path, set()) for name in names for path in units.get(name, ())))
        if not own:
            yield f"ARCHITECTURE.md: where is {question}: no unit is named"
        for name in names:
            if name not in units and "/" not in name and not set(name.split("::")) <= own:
                yield f"ARCHITECTURE.md: where is {question}: {name} is in none of the units named there"


def write_heads(root, tree):
    for path, text in sources_of(root):
        head = "\n".join(head_lines(text))
        if not LAYER.search(head):
            continue
        rest = text[len(head):]
        if path.endswith(".cpp") and os.path.exists(os.path.join(root, path[:-4] + ".h")):
            new = rest.lstrip("\n")
        else:
            new = LAYER.sub(lambda match: "Layer " + (layer_named(tree, path.split("/")[0], match.group(1)) or
                                                      "0 " + match.group(1)).replace(" ", ": ", 1), head) + rest
            if re.match(r"afx/[a-z].*\.h$", path):
                new = with_classes("\n".join(head_lines(new)), text) + rest
        if new != text:
            with open(os.path.join(root, path), "w", encoding="utf-8") as file:
                file.write(new)


def write_rows(root, tree):
    path = os.path.join(root, "ARCHITECTURE.md")
    written, folder, head = [], None, None
    for line in common.text_of(path).splitlines():
        match = common.HEADING.match(line)
        if line.startswith("## "):
            folder = tree.folders[match.group(1)] if match and match.group(1) in FOLDERS else None
        if not line.startswith("|"):
            head = None
        elif head is None:
            head = common.cells_of(line)
        elif set(line.strip()) <= set("|-: ") and folder is not None and head[0] == "Unit":
            written += [line] + rows_of(root, tree, folder, head)
            continue
        elif folder is not None and head[0] == "Unit":
            continue
        written.append(line)
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(written) + "\n")


def rows_of(root, tree, folder, head):
    """A folder's rows by layer, then by name."""
    rows = []
    for unit, files in common.units_of(root, folder.name).items():
        purpose, layer = head_of(common.text_of(root, folder.name, files[0]))
        layer = layer_named(tree, folder.name, layer) or "?"
        also = ", ".join(f"`{name}`" for name in folder.rows[unit].also) if unit in folder.rows else ""
        cells = {"Unit": f"`{unit}`", "Layer": layer, "Also includes": also, "Purpose": purpose or ""}
        order = folder.layers.index(layer) if layer in folder.layers else -1
        rows.append((order, unit.lower(), "| " + " | ".join(cells[title] for title in head) + " |"))
    return [row[2].replace("|  |", "| |") for row in sorted(rows)]


if __name__ == "__main__":
    if sys.argv[1:2] == ["--write"]:
        TREE = common.root_of(sys.argv[1:])
        write_heads(TREE, common.read_map(TREE))
        write_rows(TREE, common.read_map(TREE))
    else:
        common.report(list(problems_of(common.root_of(sys.argv))))
