#!/usr/bin/env python3
"""Writes the golden streams of empty drawings and of lines, field by field, without the library.

The files are written once and kept; run this only to review them or to add one. See README.md beside it."""
import struct
from pathlib import Path

HERE = Path(__file__).resolve().parent


def header(count, *, version=1, back=0, back_index=7, scale=1.0, x=0.0, y=0.0, height=0):
    return struct.pack("<iIhfddii", version, back, back_index, scale, x, y, height, count)


def text(value):
    units = value.encode("utf-16-le")
    return b"\xff\xfe\xff" + bytes([len(units) // 2]) + units


def ansi(value):
    raw = value.encode("gbk")
    return bytes([len(raw)]) + raw


def class_record(name, schema):
    return struct.pack("<HHH", 0xFFFF, schema, len(name)) + name.encode("ascii")


def base(schema, *, version=7, index=-2, color=0x00302010, wide=2.0, kind=1, state=2, show=1, select=0):
    out = b""
    if schema == 5:
        out += struct.pack("<ii", 5, version)
    else:
        version = 5
    out += struct.pack("<hIhfhfhiii", index, color, -1, wide, kind, 1.5, 3, 42, 0, state)
    if version == 7:
        out += struct.pack("<ii", show, select)
    elif version != 5:
        out += struct.pack("<i", show)
    return out


def line(schema, *, lock=1, name="参数", info="info", points=(1.5, -2.25, 1e9, 0.1), string=text, **kind):
    out = base(schema, **kind)
    if schema == 5:
        out += struct.pack("<i", 5)
    if schema in (1, 2, 3, 5):
        out += struct.pack("<4d", *points)
    if schema in (2, 3, 5):
        out += string(name) + string(info)
    if schema in (3, 5):
        out += struct.pack("<i", lock)
    return out


def main():
    files = {"empty.nrv": header(0)}
    for schema in range(0, 7):
        files[f"line_schema{schema}.nrv"] = header(1, height=600) + class_record("CLine", schema) + line(schema)
    for version in (5, 6, 8):
        files[f"line_base{version}.nrv"] = (
            header(1) + class_record("CLine", 5) + line(5, version=version, show=0))
    files["line_onebyte.nrv"] = header(1) + class_record("CLine", 3) + line(3, string=ansi)
    # Two lines: the second brings the index of the class that the first one named, 1, with the class bit.
    files["lines_two.nrv"] = (header(2, scale=0.5, x=-10.0, y=20.5, height=400) + class_record("CLine", 5) + line(5)
                              + struct.pack("<H", 0x8001) + line(5, points=(0.0, 0.0, 3.0, 4.0), state=0))
    for name, data in files.items():
        (HERE / name).write_bytes(data)
        print(name, len(data))


if __name__ == "__main__":
    main()
