#!/usr/bin/env python3
"""Writes the golden streams of texts, parameter texts and dimension labels, field by field, without the library.

The files are written once and kept; run this only to review them or to add one. See README.md beside it."""
import struct
from pathlib import Path

HERE = Path(__file__).resolve().parent


def header(count):
    return struct.pack("<iIhfddii", 1, 0, 7, 1.0, 0.0, 0.0, 600, count)


def text(value):
    units = value.encode("utf-16-le")
    return b"\xff\xfe\xff" + bytes([len(units) // 2]) + units


def ansi(value):
    raw = value.encode("gbk")
    return bytes([len(raw)]) + raw


def class_record(name, schema):
    return struct.pack("<HHH", 0xFFFF, schema, len(name)) + name.encode("ascii")


def base(schema):
    """A shown, selectable object in the normal state with the explicit colour 0x00302010, on layer 3."""
    words = struct.pack("<ii", 5, 7) if schema == 5 else b""
    out = words + struct.pack("<hIhfhfhiii", -2, 0x00302010, -1, 2.0, 1, 1.5, 3, 42, 0, 2)
    return out + (struct.pack("<ii", 1, 1) if schema == 5 else b"")


def text_body(schema, *, version=6, string=text, value="文字Ab", face="黑体", height=12.5, wide=80.25):
    out = base(schema)
    if schema == 5:
        out += struct.pack("<i", version)
    out += string(value) + string(face) + struct.pack("<ddff", 10.5, -20.25, height, wide)
    if schema == 5 and version == 6:
        out += struct.pack("<f", 0.75)
    out += struct.pack("<ff", 1.25, 2.5)
    if schema == 5:
        out += struct.pack("<f", 45.5)
    return out


def parm_body(schema, *, version=6, string=text, text_version=6):
    out = text_body(schema, version=text_version, string=string, value="12.5")
    if schema >= 5:
        out += struct.pack("<i", version)
    out += string("参数1") + struct.pack("<h", 4) + string("[0-9]*") + string("默认") + string("说明")
    if schema >= 5 or schema == 2:
        out += string("a=b")
    if schema >= 5 and version != 5:
        out += struct.pack("<i", 0) + string("信息")
    return out


def label_body(schema, *, version=6):
    out = base(schema) + struct.pack("<i", version)
    if version < 5:
        return out
    out += struct.pack("<8d", 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.5, 8.25)
    out += struct.pack("<ddd", 9.0, 0.5, 11.0) + b"\x00" + struct.pack("<i", 2)
    if version >= 6:
        out += struct.pack("<i", 1) + text_body(schema, value="5", height=100.0, wide=300.0)
    return out


def main():
    files = {}

    def one(name, record, schema, body):
        files[name + ".nrv"] = header(1) + class_record(record, schema) + body

    for schema in (0, 1, 2, 3, 4, 5, 6):
        one(f"text_schema{schema}", "CText", schema, text_body(schema))
    for version in (5, 7):
        one(f"text_version{version}", "CText", 5, text_body(5, version=version))
    one("text_onebyte", "CText", 2, text_body(2, string=ansi))
    one("text_narrow", "CText", 5, text_body(5, height=50.0, wide=30.0))
    for schema in (1, 2, 3, 4, 5):
        one(f"parm_schema{schema}", "CTextParm", schema, parm_body(schema))
    one("parm_schema6", "CTextParm", 6, parm_body(6))
    one("parm_schema6_version5", "CTextParm", 6, parm_body(6, version=5))
    for version in (5, 9):
        one(f"parm_version{version}", "CTextParm", 5, parm_body(5, version=version))
    one("parm_onebyte", "CTextParm", 2, parm_body(2, string=ansi))
    for version in (4, 5, 6, 7):
        one(f"label_version{version}", "CKXVectorLabel", 5, label_body(5, version=version))
    for schema in (1, 6):
        one(f"label_schema{schema}", "CKXVectorLabel", schema, label_body(schema))
    one("label_schema1_version5", "CKXVectorLabel", 1, label_body(1, version=5))
    one("label_schema1_version4", "CKXVectorLabel", 1, label_body(1, version=4))
    # The three together, each twice: class records first, then the indices 1, 3 and 5 of what they named.
    mixed = b""
    for name, body in (("CText", text_body(5)), ("CTextParm", parm_body(5)), ("CKXVectorLabel", label_body(5))):
        mixed += class_record(name, 5) + body
    for index, body in ((1, text_body(5)), (3, parm_body(5)), (5, label_body(5))):
        mixed += struct.pack("<H", 0x8000 | index) + body
    files["texts_mixed.nrv"] = header(6) + mixed
    for name, data in files.items():
        (HERE / name).write_bytes(data)
        print(name, len(data))


if __name__ == "__main__":
    main()
