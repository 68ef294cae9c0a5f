#!/usr/bin/env python3
"""No include points against the order of layers and rooms that ARCHITECTURE.md gives.

- A folder includes itself and the folders above it. demo/ includes of Source/ only the public headers: those with an
  exported class, what these include, and the numbers of the resources.
- render/ includes of Source/ nothing below the painter's room.
- In a folder with rooms, a file includes its own room and lower ones. A source (never a header) may include what its
  row lists under "Also includes"; an entry that it doesn't need is reported too.
- No header includes itself by way of others.
"""
import os
import sys

import house

EXPORTED = "NRVECTORVIEW_API "


def index_of(root, folders):
    """Where each header is found: (folder, file name) by file name."""
    index = {}
    for folder in folders:
        for name in house.files_of(root, folder):
            if name.endswith(".h"):
                index.setdefault(name, (folder, name))
    return index


def resolve(index, root, folder, text):
    name = os.path.basename(text)
    if "/" in text:
        given = os.path.dirname(text).split("/")[-1]
        if os.path.exists(os.path.join(root, given, name)):
            return given, name
    if os.path.exists(os.path.join(root, folder, name)):
        return folder, name
    return index.get(name)


def public_headers(root, index):
    """The headers of Source/ that a host may include."""
    waiting = [name for name in house.files_of(root, "Source") if name.endswith(".h") and
               (name == "resource.h" or EXPORTED in house.text_of(root, "Source", name))]
    public = set()
    while waiting:
        name = waiting.pop()
        if name not in public:
            public.add(name)
            for _, text in house.includes_of(root, "Source", name):
                target = resolve(index, root, "Source", text)
                if target and target[0] == "Source":
                    waiting.append(target[1])
    return public


def below_painter(source, header):
    """Whether a header of Source/ stands in a room below the painter's."""
    row = source.rows.get(os.path.splitext(header)[0])
    rooms = source.rooms
    return bool(row and "painter" in rooms and row.room in rooms and rooms.index(row.room) > rooms.index("painter"))


def circles(graph):
    """Headers that reach themselves."""
    state = {}
    found = []

    def visit(node, path):
        state[node] = "open"
        for target in graph.get(node, ()):
            if state.get(target) == "open":
                ring = path[path.index(target):] + [target] if target in path else [node, target]
                found.append(" -> ".join("/".join(step) for step in ring))
            elif target not in state:
                visit(target, path + [target])
        state[node] = "closed"

    for node in sorted(graph):
        if node not in state:
            visit(node, [node])
    return found


def problems_of(root):
    folders = house.read_map(root)
    order = list(folders)
    index = index_of(root, order)
    public = public_headers(root, index)
    graph = {}
    for name, folder in folders.items():
        used = set()
        for file in house.files_of(root, name):
            if not file.endswith((".h", ".cpp")):
                continue
            unit = os.path.splitext(file)[0]
            row = folder.rows.get(unit)
            for number, text in house.includes_of(root, name, file):
                target = resolve(index, root, name, text)
                if target is None:
                    continue
                where = f"{name}/{file}:{number}: includes {target[0]}/{target[1]}"
                if file.endswith(".h") and target[1].endswith(".h"):
                    graph.setdefault((name, file), set()).add(target)
                if target[0] not in folders or order.index(target[0]) > order.index(name):
                    yield f"{where}, which stands below {name}/"
                elif name == "demo" and target[0] == "Source" and target[1] not in public:
                    yield f"{where}, which is no public header"
                elif name == "render" and target[0] == "Source" and below_painter(folders["Source"], target[1]):
                    yield f"{where}, which stands below the painter"
                elif target[0] == name and folder.rooms and row:
                    other = folder.rows.get(os.path.splitext(target[1])[0])
                    if other is None or row.room not in folder.rooms or other.room not in folder.rooms:
                        continue  # the map's own check says so
                    if folder.rooms.index(other.room) > folder.rooms.index(row.room):
                        if file.endswith(".cpp") and other.unit in row.also:
                            used.add((unit, other.unit))
                        else:
                            yield f"{where}: {row.room} stands above {other.room}"
        for unit, row in folder.rows.items():
            for other in row.also:
                if (unit, other) not in used:
                    yield f"ARCHITECTURE.md: {name}/{unit} needs no leave to include {other}"
    for ring in circles(graph):
        yield f"headers in a circle: {ring}"


if __name__ == "__main__":
    house.report(list(problems_of(house.root_of(sys.argv))))
