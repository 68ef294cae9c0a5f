#!/usr/bin/env python3
"""docs/stream.md describes the stored form: by its tables alone the samples and the newest golden streams are read to their last
byte, and each row of its worked example is in the file that it names."""
import glob
import os
import re
import struct
import sys

import common

NUMBERS = {"int16": "<h", "uint16": "<H", "int32": "<i", "uint32": "<I", "float": "<f", "double": "<d", "byte": "<B"}
HEADING = re.compile(r"### `(\w+)`(?:, after `(\w+)`)?$")
ROW = re.compile(r"\s*(\d+)  ((?:[0-9A-F]{2} )+) *(\w+) +(\S+)")


class Wrong(Exception):
    pass


class Reader:
    def __init__(self, data, classes):
        self.data, self.at, self.classes = data, 0, classes

    def bytes(self, count):
        if self.at + count > len(self.data):
            raise Wrong(f"ends within a field at {self.at}")
        self.at += count
        return self.data[self.at - count:self.at]

    def value(self, kind):
        if kind in NUMBERS:
            return struct.unpack(NUMBERS[kind], self.bytes(struct.calcsize(NUMBERS[kind])))[0]
        if kind == "string":
            if self.bytes(3) != b"\xff\xfe\xff":
                raise Wrong(f"no string at {self.at - 3}")
            length = self.value("byte")
            return self.bytes(2 * (length if length < 255 else self.value("uint16"))).decode("utf-16-le")
        if kind in self.classes:
            return self.object(kind)
        raise Wrong(f"no type {kind}")

    def fields(self, rows, into):
        for name, kind, meaning in rows:
            into[name] = self.value(kind)
            # The version that the page gives is the one that is written.
            if name == "version" and into[name] != int(re.match(r"\d+", meaning).group()):
                raise Wrong(f"version {into[name]} at {self.at - 4}, the page says {meaning}")

    def object(self, name):
        base, rows, repeated = self.classes[name]
        into = self.object(base) if base else {}
        self.fields(rows, into)
        for _ in range(max(into["count"], 0) if repeated else 0):
            self.fields(repeated, {})
        return into


def tables_of(text):
    """(the rows of the frame, the classes: name to (base, rows, repeated rows))"""
    frame, classes, into, here = [], {}, None, None
    for line in text.splitlines():
        match = HEADING.match(line)
        if match:
            here = classes[match.group(1)] = [match.group(2), [], []]
            into = here[1]
        elif line.startswith("## "):
            into = frame if line == "## The frame" else None
        elif line.startswith("Then `count` times") and here:
            into = here[2]
        elif line.startswith("|") and into is not None:
            cells = common.cells_of(line)
            if cells[0] != "Field" and not set(cells[0]) <= set("-"):
                into.append((cells[0], cells[1].strip("`"), cells[2]))
    return frame, classes


def read(data, frame, classes):
    """Reads all of a stream, and gives the classes of its objects."""
    reader, head, known, number, kinds = Reader(data, classes), {}, {}, 1, []
    reader.fields(frame, head)
    for _ in range(head["objects"]):
        tag = reader.value("uint16")
        if tag == 0xFFFF:
            schema, length = reader.value("uint16"), reader.value("uint16")
            if schema != 5:
                raise Wrong(f"schema {schema}")
            known[0x8000 + number] = reader.bytes(length).decode("ascii")
            tag, number = 0x8000 + number, number + 1
        number += 1
        if known.get(tag) not in classes:
            raise Wrong(f"tag {tag:04x} at {reader.at}")
        reader.object(known[tag])
        kinds.append(known[tag])
    if reader.at != len(data):
        raise Wrong(f"continues after {reader.at}")
    return kinds


def example_problems(root, text):
    match = re.search(r"`(tests/data/\w+\.nrv)`: offset.*?```text\n(.*?)```", text, re.S)
    if not match:
        yield "docs/stream.md has no worked example"
        return
    with open(os.path.join(root, match.group(1)), "rb") as file:
        data = file.read()
    at = 0
    for line in match.group(2).splitlines():
        row = ROW.match(line)
        if not row:
            yield f"docs/stream.md: no row of the example: {line}"
            return
        raw = bytes.fromhex(row.group(2))
        if int(row.group(1)) != at or data[at:at + len(raw)] != raw:
            yield f"docs/stream.md: the file has other bytes at {at} than: {line}"
        value = raw.decode() if row.group(3) == "ascii" else Reader(raw, {}).value(row.group(3))
        if str(value) != row.group(4):
            yield f"docs/stream.md: these bytes are {value}: {line}"
        at += len(raw)
    if at != len(data):
        yield f"docs/stream.md: the example ends at {at}, its file at {len(data)}"


def problems_of(root):
    text = common.text_of(root, "docs", "stream.md")
    yield from example_problems(root, text)
    frame, classes = tables_of(text)
    files = glob.glob(os.path.join(root, "samples", "*.nrv"))
    files += [os.path.join(root, "tests", "data", name) for name in
              ("empty.nrv", "lines_two.nrv", "curves.nrv", "texts_mixed.nrv", "combrect_schema5.nrv")]
    found = set()
    for path in files:
        with open(path, "rb") as file:
            try:
                found.update(read(file.read(), frame, classes))
            except Wrong as error:
                yield f"by docs/stream.md {os.path.relpath(path, root)} {error}"
    for name in sorted(set(classes) - {"CSerialable", "CDrawable"} - found):
        yield f"docs/stream.md: no stream was read that holds a {name}"


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
