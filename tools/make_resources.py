#!/usr/bin/env python3
"""Draws the cursors and icons: the library's go to resources/, the demo's to demo/, as .cur and .ico files.

Usage: make_resources.py [FOLDER]   (default: the folder above this program's one)

Every picture is a short list of shapes on a small canvas, so that it can be changed here and written anew; the files
are committed because the build uses them and should not need Python. The same shapes give the same bytes.
"""

import math
import os
import struct
import sys

SUBSAMPLES = 8  # per pixel and direction

BLACK = (0, 0, 0)
WHITE = (255, 255, 255)
BLUE = (33, 92, 168)
SKY = (188, 214, 243)
ORANGE = (230, 126, 20)
RED = (205, 45, 45)
GREEN = (34, 140, 70)
GREY = (118, 126, 138)
SILVER = (206, 211, 218)
SKIN = (255, 226, 190)


# ---- Shapes: functions from a point to "inside"


def capsule(x0, y0, x1, y1, radius):
    """A stroke with round ends."""
    dx, dy = x1 - x0, y1 - y0
    length = dx * dx + dy * dy

    def inside(x, y):
        t = 0.0 if length == 0 else max(0.0, min(1.0, ((x - x0) * dx + (y - y0) * dy) / length))
        return math.hypot(x - x0 - t * dx, y - y0 - t * dy) <= radius

    return inside


def box(x0, y0, x1, y1):
    return lambda x, y: x0 <= x < x1 and y0 <= y < y1


def frame(x0, y0, x1, y1, width):
    return lambda x, y: (x0 <= x < x1 and y0 <= y < y1
                         and not (x0 + width <= x < x1 - width and y0 + width <= y < y1 - width))


def disc(cx, cy, radius):
    return lambda x, y: math.hypot(x - cx, y - cy) <= radius


def arc(cx, cy, radius, start, end, width):
    """A stroke along a circle, from start to end in degrees, counter-clockwise as seen (y grows downwards)."""
    span = (end - start) % 360 or 360

    def inside(x, y):
        if abs(math.hypot(x - cx, y - cy) - radius) > width / 2:
            return False
        return (math.degrees(math.atan2(cy - y, x - cx)) - start) % 360 <= span

    return inside


def polygon(*corners):
    def inside(x, y):
        result = False
        for (ax, ay), (bx, by) in zip(corners, corners[1:] + corners[:1]):
            if (ay > y) != (by > y) and x < ax + (y - ay) * (bx - ax) / (by - ay):
                result = not result
        return result

    return inside


def union(*shapes):
    return lambda x, y: any(shape(x, y) for shape in shapes)


def without(shape, hole):
    return lambda x, y: shape(x, y) and not hole(x, y)


def path(width, *points):
    return union(*[capsule(*a, *b, width / 2) for a, b in zip(points, points[1:])])


# ---- Canvas


class Canvas:
    def __init__(self, size, smooth):
        self.size = size
        self.smooth = smooth
        self.pixels = [[(0, 0, 0, 0.0)] * size for _ in range(size)]

    def fill(self, shape, colour):
        for y in range(self.size):
            for x in range(self.size):
                hits = sum(shape(x + (i + 0.5) / SUBSAMPLES, y + (j + 0.5) / SUBSAMPLES)
                           for i in range(SUBSAMPLES) for j in range(SUBSAMPLES))
                cover = hits / (SUBSAMPLES * SUBSAMPLES)
                if not self.smooth:
                    cover = 1.0 if cover >= 0.5 else 0.0
                if cover > 0:
                    self.pixels[y][x] = self.over(self.pixels[y][x], colour, cover)
        return self

    @staticmethod
    def over(below, colour, cover):
        alpha = cover + below[3] * (1 - cover)
        mixed = [(c * cover + b * below[3] * (1 - cover)) / alpha for c, b in zip(colour, below[:3])]
        return (*mixed, alpha)

    def outline(self, colour):
        """Rings what has been drawn so far with one pixel, so that it shows on any background."""
        solid = [[p[3] > 0 for p in row] for row in self.pixels]
        for y in range(self.size):
            for x in range(self.size):
                if solid[y][x]:
                    continue
                near = [(x + i, y + j) for i in (-1, 0, 1) for j in (-1, 0, 1)]
                if any(0 <= a < self.size and 0 <= b < self.size and solid[b][a] for a, b in near):
                    self.pixels[y][x] = (*colour, 1.0)
        return self

    def rgba(self, x, y):
        r, g, b, a = self.pixels[y][x]
        return tuple(int(c + 0.5) for c in (r, g, b, a * 255))


# ---- Files


def mask_rows(canvas):
    rows = b""
    for y in reversed(range(canvas.size)):
        bits = 0
        for x in range(canvas.size):
            bits = bits << 1 | (canvas.rgba(x, y)[3] < 128)
        row = bits.to_bytes(canvas.size // 8, "big")
        rows += row + bytes(-len(row) % 4)
    return rows


def image_32(canvas):
    """True colour with alpha; the mask is for systems without alpha."""
    size = canvas.size
    data = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    for y in reversed(range(size)):
        for x in range(size):
            r, g, b, a = canvas.rgba(x, y)
            data += struct.pack("BBBB", b, g, r, a)
    return data + mask_rows(canvas)


def image_16_colours(canvas):
    """Four bits a pixel with a palette: every system draws such a cursor, without alpha."""
    size = canvas.size
    palette = [BLACK]
    rows = b""
    for y in reversed(range(size)):
        row = []
        for x in range(size):
            r, g, b, a = canvas.rgba(x, y)
            colour = (r, g, b) if a >= 128 else BLACK
            if colour not in palette:
                palette.append(colour)
            row.append(palette.index(colour))
        rows += bytes(row[i] << 4 | row[i + 1] for i in range(0, size, 2))
    assert len(palette) <= 16
    palette += [BLACK] * (16 - len(palette))
    data = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 4, 0, 0, 0, 0, 16, 0)
    data += b"".join(struct.pack("BBBB", b, g, r, 0) for r, g, b in palette)
    return data + rows + mask_rows(canvas)


def write_cursor(folder, number, canvas, hot_x, hot_y):
    image = image_16_colours(canvas)
    head = struct.pack("<HHH", 0, 2, 1)
    entry = struct.pack("<BBBBHHII", canvas.size, canvas.size, 16, 0, hot_x, hot_y, len(image), 22)
    with open(os.path.join(folder, f"cursor_{number}.cur"), "wb") as file:
        file.write(head + entry + image)


def write_icon(path, *canvases):
    """One picture for each canvas; the system takes the size that it needs."""
    images = [image_32(canvas) for canvas in canvases]
    data = struct.pack("<HHH", 0, 1, len(images))
    offset = len(data) + 16 * len(images)
    for canvas, image in zip(canvases, images):
        data += struct.pack("<BBBBHHII", canvas.size, canvas.size, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    with open(path, "wb") as file:
        file.write(data + b"".join(images))


# ---- Cursors, 32 by 32. White with a black ring shows on the dark drawing and on a light one.


def cross_hair(canvas, arm=11, gap=4, pick=3):
    """Four arms about pixel (15, 15), open in the middle, with the square in which an object is picked."""
    c = 15
    for shape in (box(c - arm, c, c - gap, c + 1), box(c + gap + 1, c, c + arm + 1, c + 1),
                  box(c, c - arm, c + 1, c - gap), box(c, c + gap + 1, c + 1, c + arm + 1)):
        canvas.fill(shape, WHITE)
    if pick:
        canvas.fill(frame(c - pick, c - pick, c + pick + 1, c + pick + 1, 1), WHITE)
    return canvas.outline(BLACK)


def hand(canvas, spread):
    """The open hand of the pan (spread) or the closed one. Each finger is ringed before the palm joins them."""
    top = [9, 6, 7, 10] if spread else [13, 12, 12, 13]
    for x, y in zip((11.5, 15.5, 19.5, 23.5), top):
        canvas.fill(capsule(x, y, x, 20, 2.3), BLACK)
        canvas.fill(capsule(x, y, x, 20, 1.4), WHITE)
    thumb = (6.5, 15.5) if spread else (8.5, 17.5)
    canvas.fill(capsule(*thumb, 12.5, 22.5, 2.6), BLACK)
    palm = polygon((9.5, 16.5), (25.5, 16.5), (25.5, 20), (22.5, 26.5), (13.5, 26.5), (9.5, 21.5))
    ring = polygon((9, 16), (26, 16), (26, 20.5), (23.5, 27.5), (12.5, 27.5), (8.5, 22))
    canvas.fill(ring, BLACK)
    canvas.fill(capsule(*thumb, 12.5, 22.5, 1.6), WHITE)
    canvas.fill(palm, WHITE)
    for x, y in zip((11.5, 15.5, 19.5, 23.5), top):
        canvas.fill(capsule(x, y, x, 20, 1.4), WHITE)
    for x in (13, 17, 21):
        canvas.fill(box(x, 15, x + 1, 19), BLACK)
    canvas.fill(box(13, 27, 23, 28), BLACK)
    return canvas


def magnifier(canvas, sign):
    canvas.fill(disc(12.5, 12.5, 8.6), BLACK)
    canvas.fill(disc(12.5, 12.5, 7.5), WHITE)
    canvas.fill(capsule(19.5, 19.5, 26.5, 26.5, 2.6), BLACK)
    canvas.fill(disc(12.5, 12.5, 6.3), SKY)
    canvas.fill(capsule(20.5, 20.5, 26.2, 26.2, 1.2), ORANGE)
    if sign in "+-":
        canvas.fill(box(9, 12, 16, 13), BLACK)
    if sign == "+":
        canvas.fill(box(12, 9, 13, 16), BLACK)
    return canvas


def sign_mark(canvas, plus, colour):
    """A plus or minus at the lower right of the cross-hair."""
    canvas.fill(box(19, 19, 30, 30), BLACK)
    canvas.fill(box(20, 20, 29, 29), WHITE)
    canvas.fill(box(21, 24, 28, 25), colour)
    canvas.fill(box(21, 23, 28, 26), colour)
    if plus:
        canvas.fill(box(23, 21, 26, 28), colour)
    return canvas


def move_arrows(canvas):
    for shape in (box(15, 6, 16, 25), box(6, 15, 25, 16),
                  polygon((15.5, 2), (20, 7.5), (11, 7.5)), polygon((15.5, 29), (20, 23.5), (11, 23.5)),
                  polygon((2, 15.5), (7.5, 20), (7.5, 11)), polygon((29, 15.5), (23.5, 20), (23.5, 11))):
        canvas.fill(shape, WHITE)
    return canvas.outline(BLACK)


def point_target(canvas):
    canvas.fill(arc(15.5, 15.5, 5, 0, 360, 1.4), WHITE)
    for shape in (box(15, 5, 16, 10), box(15, 21, 16, 26), box(5, 15, 10, 16), box(21, 15, 26, 16), box(15, 15, 16, 16)):
        canvas.fill(shape, WHITE)
    return canvas.outline(BLACK)


def cursors():
    new = lambda: Canvas(32, smooth=False)
    yield 131, cross_hair(new()), 15, 15
    yield 142, cross_hair(new(), arm=9, gap=2, pick=0), 15, 15
    yield 1014, magnifier(new(), " "), 12, 12
    yield 1016, magnifier(new(), "+"), 12, 12
    yield 1017, magnifier(new(), "-"), 12, 12
    yield 1478, hand(new(), spread=False), 16, 16
    yield 1479, hand(new(), spread=True), 16, 16
    yield 1480, move_arrows(new()), 15, 15
    yield 7001, sign_mark(cross_hair(new()), True, GREEN), 15, 15
    yield 7002, sign_mark(cross_hair(new()), False, RED), 15, 15


# ---- Icons, 16 by 16: geometry in blue, what a command does with it in orange, its points as small squares


def grips(canvas, *points, colour=ORANGE):
    for x, y in points:
        canvas.fill(box(x - 1, y - 1, x + 2, y + 2), colour)
    return canvas


def icon_line(c):
    c.fill(path(1.5, (2.5, 13.5), (13.5, 2.5)), BLUE)
    return grips(c, (2, 13), (13, 2))


def icon_pline(c):
    c.fill(path(1.5, (2.5, 13.5), (2.5, 6.5), (6, 3)), BLUE)
    c.fill(arc(9.5, 6.5, 4.5, -45, 135, 1.5), BLUE)
    c.fill(path(1.5, (12.7, 9.7), (9.5, 13.5)), BLUE)
    return grips(c, (2, 13), (2, 6), (12, 9))


def icon_rect(c):
    c.fill(box(2, 4, 14, 12), SKY)
    c.fill(frame(2, 4, 14, 12, 1), BLUE)
    return grips(c, (2, 11), (13, 4))


def icon_circle(c):
    c.fill(arc(8, 8, 5.8, 0, 360, 1.5), BLUE)
    c.fill(box(7, 7, 9, 9), ORANGE)
    return c


def icon_arc(c):
    c.fill(arc(8, 11.5, 6.5, 0, 180, 1.5), BLUE)
    return grips(c, (1, 11), (14, 11), (7, 4))


def letter_a(c, left, colour):
    x = left
    c.fill(path(1.7, (x + 1, 13), (x + 4.5, 3), (x + 8, 13)), colour)
    c.fill(box(x + 2.5, 9, x + 6.5, 10.2), colour)
    return c


def icon_text(c):
    letter_a(c, 3.5, BLUE)
    c.fill(box(3, 13, 6, 14), BLUE)
    c.fill(box(10, 13, 13, 14), BLUE)
    return c


def icon_textparm(c):
    c.fill(frame(1, 2, 15, 14, 1), GREY)
    c.fill(box(2, 3, 14, 13), WHITE)
    c.fill(path(1.5, (3.5, 6), (7, 10.8)), BLUE)
    c.fill(path(1.5, (7, 6), (3.5, 10.8)), BLUE)
    c.fill(box(9, 6, 13, 7.3), ORANGE)
    c.fill(box(9, 9, 13, 10.3), ORANGE)
    return c


def icon_label(c):
    c.fill(box(2, 4, 3, 14), GREY)
    c.fill(box(13, 4, 14, 14), GREY)
    c.fill(box(3, 9, 13, 10), BLUE)
    c.fill(polygon((3, 9.5), (6, 7), (6, 12)), BLUE)
    c.fill(polygon((13, 9.5), (10, 7), (10, 12)), BLUE)
    c.fill(path(1.2, (6.2, 3), (7.4, 2), (7.4, 6)), ORANGE)
    c.fill(path(1.2, (9.2, 2.6), (10.8, 2.2), (10.6, 3.6), (9.2, 5.6), (11, 5.6)), ORANGE)
    return c


def icon_rotation(c):
    c.fill(arc(8, 9, 5.2, 70, 380, 1.7), BLUE)
    c.fill(polygon((6.9, 0.9), (12.4, 4), (7.4, 7)), BLUE)
    c.fill(box(7, 8, 9, 10), ORANGE)
    return c


def icon_translation(c):
    c.fill(frame(1, 8, 8, 15, 1), GREY)
    c.fill(box(8, 1, 15, 8), SKY)
    c.fill(frame(8, 1, 15, 8, 1), BLUE)
    c.fill(path(1.5, (4.5, 11.5), (9.5, 6.5)), ORANGE)
    c.fill(polygon((12.2, 3.8), (11.4, 8.6), (7.4, 4.6)), ORANGE)
    return c


def icon_mirroring(c):
    c.fill(polygon((0.5, 14), (6, 14), (6, 2)), BLUE)
    c.fill(polygon((15.5, 14), (10, 14), (10, 2)), BLUE)
    c.fill(polygon((11, 13), (13.9, 13), (11, 6.5)), SKY)
    for y in (1, 4, 7, 10, 13):
        c.fill(box(7, y, 9, y + 2), ORANGE)
    return c


def icon_copy(c):
    c.fill(frame(1, 1, 10, 10, 1), GREY)
    c.fill(box(2, 2, 9, 9), WHITE)
    c.fill(frame(6, 6, 15, 15, 1), BLUE)
    c.fill(box(7, 7, 14, 14), SKY)
    c.fill(box(10, 8, 11, 13), ORANGE)
    c.fill(box(8, 10, 13, 11), ORANGE)
    return c


def icon_erase(c):
    c.fill(polygon((6.5, 13), (1.5, 9.5), (8.5, 2.2), (14, 6.2)), BLUE)
    c.fill(polygon((6.2, 11.8), (2.9, 9.4), (5.4, 6.7), (9, 9.3)), SKY)
    c.fill(box(5, 13, 15, 14), RED)
    return c


def icon_offset(c):
    c.fill(path(1.5, (2.5, 14), (2.5, 8)), BLUE)
    c.fill(arc(8.5, 8, 6, 90, 180, 1.5), BLUE)
    c.fill(path(1.5, (8.5, 2), (14, 2)), BLUE)
    c.fill(path(1.5, (7.5, 14), (7.5, 9.5)), ORANGE)
    c.fill(arc(9.5, 9.5, 2, 90, 180, 1.5), ORANGE)
    c.fill(path(1.5, (9.5, 7.5), (14, 7.5)), ORANGE)
    return c


def icon_viewmove(c):
    edge = 0.9
    fingers = [(4.4, 5.0), (7.0, 2.8), (9.6, 3.4), (12.1, 5.4)]
    for x, y in fingers:
        c.fill(capsule(x, y, x, 10, 1.05 + edge), BLUE)
    c.fill(capsule(2.4, 9.2, 5.5, 12.5, 1.0 + edge), BLUE)
    c.fill(polygon((3.2, 9), (13.9, 9), (13.4, 12.2), (11.8, 15.4), (5.8, 15.4), (3.4, 12.6)), BLUE)
    c.fill(capsule(2.4, 9.2, 5.5, 12.5, 0.9), SKIN)
    c.fill(polygon((4.3, 9), (12.9, 9), (12.4, 12), (11.1, 14.5), (6.3, 14.5), (4.5, 12)), SKIN)
    for x, y in fingers:
        c.fill(capsule(x, y, x, 10.5, 0.85), SKIN)
    return c


def icon_zoomall(c):
    for x, sx in ((1, 1), (15, -1)):
        for y, sy in ((1, 1), (15, -1)):
            c.fill(box(min(x, x + 4 * sx), min(y, y + sy), max(x, x + 4 * sx), max(y, y + sy)), GREY)
            c.fill(box(min(x, x + sx), min(y, y + 4 * sy), max(x, x + sx), max(y, y + 4 * sy)), GREY)
    c.fill(path(2.2, (9.4, 9.4), (12.2, 12.2)), ORANGE)
    c.fill(disc(7.2, 7.2, 3.9), BLUE)
    c.fill(disc(7.2, 7.2, 2.7), SKY)
    return c


def icon_undo(c, way=1):
    """An arrow back, to the left; with `way` -1 on, to the right."""
    def at(x, y):
        return 8 + (x - 8) * way, y

    c.fill(path(1.8, at(5, 5.5), at(9, 5.5)), BLUE)
    c.fill(arc(*at(9, 9), 3.5, -90 if way > 0 else 90, 90 if way > 0 else 270, 1.8), BLUE)
    c.fill(path(1.8, at(9, 12.5), at(5.5, 12.5)), BLUE)
    c.fill(polygon(at(1, 5.5), at(6.2, 1.6), at(6.2, 9.4)), ORANGE)
    return c


ICONS = {
    "line": icon_line,
    "pline": icon_pline,
    "rect": icon_rect,
    "circle": icon_circle,
    "arc": icon_arc,
    "text": icon_text,
    "textparm": icon_textparm,
    "label": icon_label,
    "rotation": icon_rotation,
    "translation": icon_translation,
    "mirroring": icon_mirroring,
    "copy": icon_copy,
    "erase": icon_erase,
    "offset": icon_offset,
    "viewmove": icon_viewmove,
    "zoomall": icon_zoomall,
}


def demo_icon(size):
    """The demo's own icon: a dark sheet with a part drawn on it, in units of a 32nd of its side."""
    u = size / 32
    c = Canvas(size, smooth=True)
    sheet = union(box(4 * u, 2 * u, 28 * u, 30 * u), box(2 * u, 4 * u, 30 * u, 28 * u), disc(4 * u, 4 * u, 2 * u),
                  disc(28 * u, 4 * u, 2 * u), disc(4 * u, 28 * u, 2 * u), disc(28 * u, 28 * u, 2 * u))
    c.fill(sheet, (28, 44, 72))
    width = max(1.2, 2 * u)
    c.fill(path(width, (7 * u, 24 * u), (25 * u, 24 * u), (25 * u, 17 * u)), WHITE)
    c.fill(path(width, (7 * u, 24 * u), (7 * u, 17 * u)), WHITE)
    c.fill(arc(16 * u, 17 * u, 9 * u, 0, 180, width), WHITE)
    c.fill(arc(16 * u, 17 * u, 4 * u, 0, 360, width), (255, 176, 60))
    for x, y in ((7, 24), (25, 24)):
        c.fill(box((x - 2) * u, (y - 2) * u, (x + 2) * u, (y + 2) * u), (90, 160, 255))
    return c


def main():
    if len(sys.argv) > 2 or "-h" in sys.argv or "--help" in sys.argv:
        print(__doc__.strip())
        return 0 if len(sys.argv) == 2 else 2
    here = os.path.dirname(os.path.abspath(__file__))
    top = sys.argv[1] if len(sys.argv) == 2 else os.path.join(here, "..")
    folder = os.path.join(top, "resources")
    for number, canvas, hot_x, hot_y in cursors():
        write_cursor(folder, number, canvas, hot_x, hot_y)
    for word, draw in ICONS.items():
        write_icon(os.path.join(folder, f"ICON_16_{word}.ico"), draw(Canvas(16, smooth=True)))
    for name, way in (("undo", 1), ("redo", -1)):
        write_icon(os.path.join(top, "demo", f"{name}.ico"), icon_undo(Canvas(16, smooth=True), way))
    write_icon(os.path.join(top, "demo", "demo.ico"), *[demo_icon(size) for size in (16, 32, 48)])
    return 0


if __name__ == "__main__":
    sys.exit(main())
