#!/usr/bin/env python3
"""Writes the golden streams of polylines, circles, arcs, centre marks and frames, field by field, without the library.

The files are written once and kept; run this only to review them or to add one. See README.md beside it."""
import struct
from pathlib import Path

from make_line_streams import base, class_record, header, text

HERE = Path(__file__).resolve().parent

# x, y, bulge, name, message
VERTICES = ((1.5, -2.25, 0.5, "甲", "first"), (1e9, 0.1, -1.0, "", ""), (-3.0, 4.0, 0.0005, "c", "末"))


def word(schema):
    return struct.pack("<i", 5) if schema == 5 else b""


def pline(schema, *, vertices=VERTICES, count=None, closed=1, lock=2, reserved=77, name="参数", info="info"):
    known = 2 <= schema <= 5
    out = base(schema) + word(schema) + struct.pack("<i", len(vertices) if count is None else count)
    if known:
        out += struct.pack("<i", lock)
    out += struct.pack("<ii", reserved, closed)
    if known and schema >= 3:
        out += text(name) + text(info)
    for x, y, bulge, part, message in vertices:
        out += struct.pack("<dd", x, y)
        if known and schema >= 3:
            out += struct.pack("<d", bulge)
        if known and schema >= 4:
            out += text(part) + text(message)
    return out


def circle(schema, *, mark=False, x=1.5, y=-2.25, radius=0.1, fill=1, name="参数", info="info", lock=3):
    out = base(schema) + word(schema) + struct.pack("<dddi", x, y, radius, fill)
    if mark or schema != 1:
        out += text(name) + text(info)
    if mark or schema not in (1, 2):
        out += struct.pack("<i", lock)
    return out


def arc(schema, start=5.5, end=0.7853981633974483):
    return circle(schema, fill=0) + word(schema) + struct.pack("<dd", start, end)


def combrect(schema):
    out = base(schema)
    if schema == 5:
        out += text("组7") + text("second") + struct.pack("<dddd", 60.0, -80.5, 1e9, 0.1)
    return out


KINDS = {
    "pline": ("CPLine", pline),
    "circle": ("CCircle", circle),
    "centerpoint": ("CCenterPoint", lambda schema: circle(schema, mark=True)),
    "arc": ("CArc", arc),
    "combrect": ("CCombRect", combrect),
}


def main():
    files = {}
    for stem, (name, body) in KINDS.items():
        for schema in range(0, 7):
            files[f"{stem}_schema{schema}.nrv"] = header(1, height=600) + class_record(name, schema) + body(schema)
    # A count below zero: no vertices follow.
    files["pline_negative.nrv"] = header(1) + class_record("CPLine", 5) + pline(5, vertices=(), count=-3)
    # A count that the stream does not hold: four vertices are there.
    files["pline_beyond.nrv"] = (header(1) + class_record("CPLine", 5)
                                 + pline(5, vertices=VERTICES + ((0.0, 0.0, 0.0, "", ""),), count=0x7FFFFFFF))
    # One of each kind, and a second polyline: it brings the index of the class that the first object named.
    everything = header(6, scale=0.5, x=-10.0, y=20.5, height=400)
    for name, body in KINDS.values():
        everything += class_record(name, 5) + body(5)
    files["curves.nrv"] = everything + struct.pack("<H", 0x8001) + pline(5, closed=0)
    for name, data in files.items():
        (HERE / name).write_bytes(data)
        print(name, len(data))


if __name__ == "__main__":
    main()
