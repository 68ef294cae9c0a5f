"""Reads stored drawings for the end-to-end tests, independently of the library: drawing.py FILE prints one as JSON.

Knows what the library writes today, the newest form of each class, and refuses everything else.
"""
import json
import struct
import sys


class Reader:
    def __init__(self, data):
        self.data = data
        self.at = 0

    def take(self, form):
        values = struct.unpack_from("<" + form, self.data, self.at)
        self.at += struct.calcsize("<" + form)
        return values if len(values) > 1 else values[0]

    def text(self):
        if self.data[self.at:self.at + 3] != b"\xff\xfe\xff":
            raise ValueError(f"no wide text at {self.at}")
        self.at += 3
        length = self.take("B")
        if length == 0xFF:
            length = self.take("H")
            if length >= 0xFFFE:
                raise ValueError("a text of more than 65533 units")
        raw = self.data[self.at:self.at + 2 * length]
        self.at += 2 * length
        return raw.decode("utf-16-le")

    def version(self, expected, what):
        found = self.take("i")
        if found != expected:
            raise ValueError(f"{what}: version {found} instead of {expected}")


def read_base(reader, fields):
    reader.version(5, "the root's word")
    reader.version(7, "CDrawable")
    names = "color_index color brush width line_type scale layer number deleted state shown selectable".split()
    fields.update(zip(names, reader.take("hIhfhfhiiiii")))


def read_line(reader, fields):
    reader.version(5, "CLine")
    fields["points"] = [list(reader.take("dd")), list(reader.take("dd"))]
    fields["name"], fields["message"] = reader.text(), reader.text()
    fields["lock"] = reader.take("i")


def read_pline(reader, fields):
    reader.version(5, "CPLine")
    count, fields["lock"], _, fields["closed"] = reader.take("iiii")
    fields["name"], fields["message"] = reader.text(), reader.text()
    fields["points"], fields["bulges"] = [], []
    for _ in range(count):
        x, y, bulge = reader.take("ddd")
        fields["points"].append([x, y])
        fields["bulges"].append(bulge)
        reader.text(), reader.text()


def read_circle(reader, fields):
    reader.version(5, "CCircle")
    x, y, fields["radius"], fields["fill"] = reader.take("dddi")
    fields["center"] = [x, y]
    fields["name"], fields["message"] = reader.text(), reader.text()
    fields["lock"] = reader.take("i")


def read_arc(reader, fields):
    read_circle(reader, fields)
    reader.version(5, "CArc")
    fields["start"], fields["end"] = reader.take("dd")


def read_text(reader, fields):
    reader.version(6, "CText")
    fields["text"], fields["face"] = reader.text(), reader.text()
    x, y, fields["height"], fields["wide"], _, _, _, fields["angle"] = reader.take("ddffffff")
    fields["at"] = [x, y]


def read_parm(reader, fields):
    read_text(reader, fields)
    reader.version(6, "CTextParm")
    fields["parm"] = reader.text()
    fields["type"] = reader.take("h")
    for name in ("expression", "value", "description", "link"):
        fields[name] = reader.text()
    fields["edit_box"] = reader.take("i")
    fields["message"] = reader.text()


def read_label(reader, fields):
    reader.version(6, "CKXVectorLabel")
    fields["left"] = [list(reader.take("dd")), list(reader.take("dd"))]
    fields["right"] = [list(reader.take("dd")), list(reader.take("dd"))]
    fields["tick"], _, _ = reader.take("ddd")
    fields["hole"], fields["lock"], fields["figure_shown"] = reader.take("?ii")
    figure = {}
    read_base(reader, figure)
    read_text(reader, figure)
    fields["figure"] = figure["text"]


BODIES = {"CLine": read_line, "CPLine": read_pline, "CCircle": read_circle, "CArc": read_arc, "CText": read_text,
          "CTextParm": read_parm, "CKXVectorLabel": read_label}


def read_drawing(data):
    """The header's fields and, under "objects", a dictionary for each object, in drawing order."""
    reader = Reader(data)
    reader.version(1, "the drawing")
    names = "background background_index scale origin_x origin_y screen_height count".split()
    drawing = dict(zip(names, reader.take("Ihfddii")))
    drawing["objects"] = []
    classes = {}
    index = 1
    for _ in range(drawing["count"]):
        tag = reader.take("H")
        if tag == 0xFFFF:
            schema, length = reader.take("HH")
            kind = reader.data[reader.at:reader.at + length].decode("ascii")
            reader.at += length
            if schema != 5:
                raise ValueError(f"{kind}: schema {schema}")
            classes[index] = kind
            index += 1
        elif tag & 0x8000:
            kind = classes[tag & 0x7FFF]
        else:
            raise ValueError(f"a reference to object {tag}")
        index += 1
        fields = {"class": kind}
        read_base(reader, fields)
        BODIES[kind](reader, fields)
        drawing["objects"].append(fields)
    if reader.at != len(data):
        raise ValueError(f"{len(data) - reader.at} bytes after the last object")
    return drawing


def empty_drawing(height):
    """A drawing without objects at scale 1, the origin in the lower left corner of a view `height` pixels high."""
    return struct.pack("<iIhfddii", 1, 0, 7, 1.0, 0.0, 0.0, height, 0)


if __name__ == "__main__":
    with open(sys.argv[1], "rb") as file:
        print(json.dumps(read_drawing(file.read()), ensure_ascii=False, indent=1))
