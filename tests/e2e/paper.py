#!/usr/bin/env python3
"""Printing: the demo prints on a PostScript printer of the system that writes into a file, and Ghostscript, which knows
nothing of the library, draws the sheet. Fitted, and at 1:1, where a millimetre of the drawing is one on paper."""
import contextlib
import os
import struct
import subprocess

import host
import pictures
from make_line_streams import class_record, header, text

PRINTER = "Sheet"
PORT = "FILE:"                    # Wine asks for no name: it is a file in the program's folder.
DOTS = 300                        # per inch, of the pictures of the sheets
MILLIMETRE = DOTS / 25.4
SHEET = 297, 210                  # of A4 across, in millimetres
FREE = 14 / 72 * 25.4             # what the printer leaves free on each side
SIZE = 150, 100                   # of the drawing


def white_drawing():
    """Two edges and a circle in white, which only shows on paper in black, and a text."""
    def line(x, y):
        return pictures.base(0, 0) + struct.pack("<i4d", 5, 0, 0, x, y) + text("") * 2 + struct.pack("<i", 0)
    circle = pictures.base(0, 0) + struct.pack("<idddi", 5, 75, 50, 20, 0) + text("") * 2 + struct.pack("<i", 0)
    words = (pictures.base(0, 0) + struct.pack("<i", 6) + text("Width 310") + text("宋体")
             + struct.pack("<ddffffff", 20, 90, 10, 10, 0, 0, 0, 0))
    return (header(4) + class_record("CLine", 5) + line(SIZE[0], 0) + struct.pack("<H", 0x8001) + line(0, SIZE[1])
            + class_record("CCircle", 5) + circle + class_record("CText", 5) + words)


@contextlib.contextmanager
def printer():
    """A printer of the system while the block runs."""
    def tool(*arguments):
        program = os.path.join(os.environ["NR_BUILD"], "bin", "sheetprinter.exe")
        done = subprocess.run([os.environ["NR_WITH_WINE"], program, *arguments], stdin=subprocess.DEVNULL, timeout=60, check=False)
        host.expect(done.returncode == 0, f"sheetprinter {arguments[0]}: exit code {done.returncode}")
    ppd = os.path.join(pictures.ROOT, "tests", "data", "sheet.ppd")
    tool("add", PRINTER, host.windows_path(ppd), PORT)
    try:
        yield
    finally:
        tool("remove", PRINTER)


def print_to(demo, path, before):
    """Answers the printer's dialog, which is not among the windows `before`, and waits for the printed file."""
    dialog = demo.dialog(before)
    demo.settled()
    demo.key("Return")
    demo.gone(dialog)

    def whole():
        if not os.path.exists(PORT):
            return False
        with open(PORT, "rb") as file:
            return file.read()[-20:].rstrip().endswith(b"%%EOF")
    host.wait_for("the end of the printed file", whole)
    os.rename(PORT, path)


class Sheet:
    """What Ghostscript draws of a printed file, the long side across, in millimetres from the lower left corner."""

    def __init__(self, path):
        subprocess.run(["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", f"-r{DOTS}", "-sDEVICE=pgmraw",
                        f"-sOutputFile={path}-%d.pgm", path], timeout=100, check=True)
        pages = [name for name in os.listdir(os.path.dirname(path)) if name.startswith(os.path.basename(path) + "-")]
        host.expect(pages == [os.path.basename(path) + "-1.pgm"], f"pages {pages} instead of one")
        done = subprocess.run(["convert", f"{path}-1.pgm", "-rotate", "90<", "-depth", "8", "gray:-"], capture_output=True,
                              timeout=100, check=True)
        self.width, self.height = (round(side * MILLIMETRE) for side in SHEET)
        size = len(done.stdout)
        host.expect(abs(size - self.width * self.height) < 3 * (self.width + self.height), f"{size} dots")
        self.width = next(w for w in range(self.width - 2, self.width + 3) if size % w == 0)
        self.rows = [done.stdout[at:at + self.width] for at in range(0, size, self.width)]

    def box(self):
        """(left, bottom, right, top) of what is printed."""
        inked = [i for i, row in enumerate(self.rows) if min(row) < 128]
        columns = [x for x in range(self.width) if any(self.rows[i][x] < 128 for i in inked)]
        return (columns[0] / MILLIMETRE, (len(self.rows) - inked[-1] - 1) / MILLIMETRE,
                (columns[-1] + 1) / MILLIMETRE, (len(self.rows) - inked[0]) / MILLIMETRE)

    def ink(self, left, bottom, right, top):
        """How many dots of a rectangle are printed."""
        rows = self.rows[len(self.rows) - round(top * MILLIMETRE):len(self.rows) - round(bottom * MILLIMETRE)]
        return sum(sum(dot < 128 for dot in row[round(left * MILLIMETRE):round(right * MILLIMETRE)]) for row in rows)


def near(found, expected, what):
    host.expect(all(abs(a - b) < 0.3 for a, b in zip(found, expected)),
                f"{what}: {[round(value, 2) for value in found]} mm instead of {[round(value, 2) for value in expected]}")


def compare(sheet, scale):
    """The drawing is in the middle of the sheet at `scale`, its parts are at their places, and all of it is black."""
    left, bottom = ((SHEET[i] - SIZE[i] * scale) / 2 for i in range(2))
    near(sheet.box(), (left, bottom, left + SIZE[0] * scale, bottom + SIZE[1] * scale), "the drawing")

    def ink(x1, y1, x2, y2):
        return sheet.ink(left + x1 * scale, bottom + y1 * scale, left + x2 * scale, bottom + y2 * scale)
    # A quarter of a millimetre are three dots; the lower edge from 10 to 20 mm.
    dots = ink(10, -2, 20, 2) / (10 * scale * MILLIMETRE)
    host.expect(2 <= dots <= 4, f"a line of {dots:.1f} dots")
    host.expect(ink(54, 49, 56, 51) > 0 and ink(57, 49, 93, 51) == 0, "no circle of a radius of 20 around (75, 50)")
    host.expect(ink(20, 80, 60, 90) > 100, "no text")


def main(out):
    path = os.path.join(out, "white.nrv")
    with open(path, "wb") as file:
        file.write(white_drawing())
    fitted, exact = os.path.join(out, "fitted.ps"), os.path.join(out, "exact.ps")
    os.chdir(out)
    with printer(), host.Demo(out, host.windows_path(path)) as demo:
        demo.settled()

        def press(key):
            before = demo.windows()
            demo.key(key)
            return before
        print_to(demo, fitted, press("ctrl+p"))
        demo.key("alt+f")
        preview = demo.dialog(press("v"))
        demo.settled().save(os.path.join(out, "preview.png"))
        demo.type("1:1")
        demo.settled()
        print_to(demo, exact, press("Return"))
        demo.gone(preview)
    # Two percent of the printable width are left free, and the width is what is full first.
    compare(Sheet(fitted), (SHEET[0] - 2 * FREE) * 0.98 / SIZE[0])
    compare(Sheet(exact), 1.0)


if __name__ == "__main__":
    host.run(main)
