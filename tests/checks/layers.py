#!/usr/bin/env python3
"""No include points upwards in the order of layers that ARCHITECTURE.md gives.

- A file includes its own layer and those below it, with lower numbers. A source (never a header) may include what its
  row lists under "Also includes"; an entry that it doesn't need is reported too.
- demo/ includes of Source/ and render/ only the public headers: those with an exported class, what these include, and the
  numbers of the resources.
- No header includes itself by way of others.
"""
import os
import sys

import common

EXPORTED = "NRVECTORVIEW_API "
LIBRARY = ("Source", "render")


def index_of(root, folders):
    """Where each header is found: (folder, file name) by file name."""
    index = {}
    for folder in folders:
        for name in common.files_of(root, folder):
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
    """The headers of the library, (folder, file name), that a host may include."""
    waiting = [(folder, name) for folder in LIBRARY for name in common.files_of(root, folder) if name.endswith(".h") and
               (name == "resource.h" or EXPORTED in common.text_of(root, folder, name))]
    public = set()
    while waiting:
        header = waiting.pop()
        if header not in public:
            public.add(header)
            for _, text in common.includes_of(root, *header):
                target = resolve(index, root, header[0], text)
                if target and target[0] in LIBRARY:
                    waiting.append(target)
    return public


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
    tree = common.read_map(root)
    index = index_of(root, list(tree.folders))
    public = public_headers(root, index)
    graph = {}
    for name, folder in tree.folders.items():
        used = set()
        for file in common.files_of(root, name):
            if not file.endswith((".h", ".cpp")):
                continue
            unit = os.path.splitext(file)[0]
            own = folder.layer_of(unit)
            for number, text in common.includes_of(root, name, file):
                target = resolve(index, root, name, text)
                if target is None:
                    continue
                where = f"{name}/{file}:{number}: includes {target[0]}/{target[1]}"
                if file.endswith(".h") and target[1].endswith(".h"):
                    graph.setdefault((name, file), set()).add(target)
                other_unit = os.path.splitext(target[1])[0]
                other = tree.folders[target[0]].layer_of(other_unit) if target[0] in tree.folders else None
                if name == "demo" and target[0] in LIBRARY and target not in public:
                    yield f"{where}, which is no public header"
                if own is None or other is None or other <= own:
                    continue  # a unit without a layer in the map is reported by the map's own check
                if file.endswith(".cpp") and unit in folder.rows and other_unit in folder.rows[unit].also:
                    used.add((unit, other_unit))
                else:
                    yield f"{where}: layer {own} includes layer {other}, which is above it"
        for unit, row in folder.rows.items():
            for other in row.also:
                if (unit, other) not in used:
                    yield f"ARCHITECTURE.md: {name}/{unit} need not list {other}"
    for ring in circles(graph):
        yield f"headers in a circle: {ring}"


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
