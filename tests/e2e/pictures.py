#!/usr/bin/env python3
"""The pictures that `nrv render` makes, held against a program that knows nothing of the library: rsvg-convert draws the
SVG, and its ink lies within one pixel of the PNG's. The samples, 300 random drawings of every kind without text, and
texts, whose boxes overlap. And 100,000 objects are written in less than two seconds."""
import json
import math
import os
import random
import re
import resource
import struct
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tests", "data"))
from make_line_streams import class_record, header, text  # noqa: E402

WIDTH, HEIGHT = 240, 180
DRAWINGS = 300
MANY = 100000
# A pixel of the SVG counts as inked where at least half of it is covered, and as touched from an eighth on.
INKED, TOUCHED = 128, 224


def nrv(*arguments):
    environment = dict(os.environ, NR_DISPLAY="none")
    done = subprocess.run([os.environ["NR_WITH_WINE"], os.path.join(os.environ["NR_BUILD"], "bin", "nrv.exe"), *arguments],
                          env=environment, capture_output=True, text=True, timeout=200, check=False)
    if done.returncode != 0 or done.stderr:
        sys.exit(f"nrv {' '.join(arguments[:3])}: exit code {done.returncode}, {done.stderr[:2000]}")
    return done.stdout


# ---- drawings, written without the library -------------------------------------------------------------------------

def base(wide, kind):
    return struct.pack("<ii", 5, 7) + struct.pack("<hIhfhfhiii", -2, 0xFFFFFF, -1, wide, kind, 1.0, 0, 0, 0, 2) + struct.pack("<ii", 1, 1)


def line(dice, point):
    return "CLine", struct.pack("<i", 5) + struct.pack("<4d", *point(), *point()) + text("") * 2 + struct.pack("<i", 0)


def round_body(dice, point, radius):
    return struct.pack("<iddd", 5, *point(), radius) + struct.pack("<i", dice.random() < 0.3) + text("") * 2 + struct.pack("<i", 0)


def circle(dice, point):
    return "CCircle", round_body(dice, point, dice.uniform(5, 60))


def mark(dice, point):
    return "CCenterPoint", round_body(dice, point, dice.uniform(5, 60))


def arc(dice, point):
    start = dice.uniform(0, 2 * math.pi)
    end = (start + dice.uniform(0.3, 2 * math.pi - 0.3)) % (2 * math.pi)
    return "CArc", round_body(dice, point, dice.uniform(20, 90)) + struct.pack("<idd", 5, start, end)


def pline(dice, point):
    count = dice.randint(2, 6)
    body = struct.pack("<iiiii", 5, count, 0, 0, dice.random() < 0.5) + text("") * 2
    for _ in range(count):
        bulge = dice.choice((0.0, 0.0, dice.uniform(-1.5, 1.5)))
        body += struct.pack("<dd", *point()) + struct.pack("<d", bulge) + text("") * 2
    return "CPLine", body


def frame(dice, point):
    return "CCombRect", text("") * 2 + struct.pack("<dddd", *point(), *point())


def label(dice, point):
    a, c = point(), point()
    up = dice.uniform(-30, 30), dice.uniform(10, 40)
    points = (*a, a[0] + up[0], a[1] + up[1], *c, c[0] + up[0], c[1] + up[1])
    figure = base(0.0, 0) + struct.pack("<i", 6) + text("") * 2 + struct.pack("<ddffffff", 0, 0, 20, 20, 0, 0, 0, 0)
    return "CKXVectorLabel", (struct.pack("<i", 6) + struct.pack("<8d", *points) + struct.pack("<ddd", 6.0, 3.0, 8.0)
                              + struct.pack("<bii", dice.random() < 0.5, 1, 0) + figure)


def random_drawing(seed):
    dice = random.Random(seed)

    def point():
        return dice.uniform(0, WIDTH), dice.uniform(0, HEIGHT)

    count = dice.randint(1, 8)
    out = header(count)
    for _ in range(count):
        make = dice.choice((line, circle, mark, arc, pline, frame, label))
        name, body = make(dice, point)
        # Along curves a pattern's phase is the device's own; straight strokes have every style.
        kind = dice.choice((0, 0, 0, 1, 2, 3, 4)) if make in (line,) else 0
        out += class_record(name, 5) + base(dice.choice((0.0, 1.0, 2.4, 3.0, 5.7)), kind) + body
    return out


def text_drawing(words, height, angle):
    body = (struct.pack("<i", 6) + text(words) + text("宋体")
            + struct.pack("<ddffffff", WIDTH / 2, HEIGHT / 2, height, height, 0, 0, 0, angle))
    return header(1) + class_record("CText", 5) + base(0, 0) + body


# ---- pictures as rows of bits --------------------------------------------------------------------------------------

def pixels_of(paths, width, height):
    """The grey values of pictures of one size, white the background."""
    done = subprocess.run(["convert", *paths, "-background", "white", "-alpha", "remove", "-colorspace", "Gray", "-depth", "8",
                           "gray:-"], capture_output=True, timeout=200, check=True)
    size = width * height
    if len(done.stdout) != size * len(paths):
        sys.exit(f"{len(done.stdout)} pixels of {len(paths)} pictures of {width}x{height}")
    return [done.stdout[i:i + size] for i in range(0, len(done.stdout), size)]


def bits(grey, width, limit):
    """A row as a number, bit x set where the pixel is darker than the limit."""
    table = bytes(ord("1") if value < limit else ord("0") for value in range(256))
    marks = grey.translate(table)
    return [int(marks[at:at + width][::-1], 2) for at in range(0, len(marks), width)]


def grown(rows):
    """Every pixel with its eight neighbours."""
    wide = [row | row << 1 | row >> 1 for row in rows]
    return [wide[max(i - 1, 0)] | row | wide[min(i + 1, len(wide) - 1)] for i, row in enumerate(wide)]


def count(rows):
    return sum(bin(row).count("1") for row in rows)


def beyond(rows, near):
    """The pixels of `rows` that `near` has not, but for those at the picture's edge, where the other's may be outside."""
    width = max(row.bit_length() for row in rows)
    inner = ((1 << max(width - 4, 0)) - 1) << 2
    return [row & ~other & inner if 2 <= i < len(rows) - 2 else 0 for i, (row, other) in enumerate(zip(rows, near))]


def box_of(rows):
    ys = [y for y, row in enumerate(rows) if row]
    if not ys:
        return None
    union = 0
    for row in rows:
        union |= row
    return (union & -union).bit_length() - 1, ys[0], union.bit_length() - 1, ys[-1]


def overlap(a, b):
    wide = min(a[2], b[2]) - max(a[0], b[0]) + 1
    high = min(a[3], b[3]) - max(a[1], b[1]) + 1
    area = [(box[2] - box[0] + 1) * (box[3] - box[1] + 1) for box in (a, b)]
    common = max(wide, 0) * max(high, 0)
    return common / (area[0] + area[1] - common)


def draw_svg(paths):
    for path in paths:
        subprocess.run(["rsvg-convert", "-o", path + ".png", path], timeout=100, check=True)
    return [path + ".png" for path in paths]


# ---- the comparisons -----------------------------------------------------------------------------------------------

def both(out, pattern, names, *options):
    """PNG and drawn SVG of the drawings of those names, which are all that the pattern finds, as paths."""
    for form in ("png", "svg"):
        nrv("render", os.path.join(out, pattern), "-o", os.path.join(out, "*." + form), "--black", *options)
    return ([os.path.join(out, name + ".png") for name in names],
            draw_svg([os.path.join(out, name + ".svg") for name in names]))


def alone(painted, drawn, width):
    """How many inked pixels of either picture have no ink of the other within one pixel, within two, within three; and
    how many inked pixels the PNG has."""
    near_ours = ours = bits(painted, width, 128)
    near_drawn = bits(drawn, width, TOUCHED)
    inked = bits(drawn, width, INKED)
    found = []
    for _ in range(3):
        near_ours, near_drawn = grown(near_ours), grown(near_drawn)
        found.append(count(beyond(ours, near_drawn)) + count(beyond(inked, near_ours)))
    return found, count(ours)


def random_drawings(out):
    names = [f"random{seed:03}" for seed in range(DRAWINGS)]
    for seed, name in enumerate(names):
        with open(os.path.join(out, name + ".nrv"), "wb") as file:
            file.write(random_drawing(seed))
    pngs, svgs = both(out, "random*.nrv", names, "--size", f"{WIDTH}x{HEIGHT}", "--window", f"0,0,{WIDTH},{HEIGHT}")
    bad, total, sums = [], 0, [0, 0, 0]
    for name, painted, drawn in zip(names, pixels_of(pngs, WIDTH, HEIGHT), pixels_of(svgs, WIDTH, HEIGHT)):
        found, ink = alone(painted, drawn, WIDTH)
        total += ink
        sums = [a + b for a, b in zip(sums, found)]
        if found[2]:
            bad.append(f"{name}: {found} pixels alone within one, two and three pixels, of {ink}")
    if sums[0] > 0.001 * total or sums[1] > 0.0001 * total:
        bad.append(f"{sums[0]} pixels alone of {total}")
    print(f"{len(names)} random drawings with {total} inked pixels; alone within one, two and three pixels: {sums}")
    return bad


def samples(out):
    bad = []
    folder = os.path.join(ROOT, "samples")
    for name in sorted(file[:-4] for file in os.listdir(folder) if file.endswith(".nrv")):
        with open(os.path.join(folder, name + ".nrv"), "rb") as source, open(os.path.join(out, name + ".nrv"), "wb") as file:
            file.write(source.read())
        width, height = 1000, 700
        pngs, svgs = both(out, name + ".nrv", [name], "--size", f"{width}x{height}")
        with open(os.path.join(out, name + ".svg"), encoding="utf-8") as file:
            svg = file.read()
        # Texts are in other fonts there: they are compared by their boxes. Without them:
        bare = os.path.join(out, name + "_bare.svg")
        texts = re.findall(r"<text.*?</text>\n", svg)
        with open(bare, "w", encoding="utf-8") as file:
            file.write(re.sub(r"<text.*?</text>\n", "", svg))
        painted, drawn, strokes = (pixels_of([path], width, height)[0] for path in (*pngs, *svgs, *draw_svg([bare])))
        ours = bits(painted, width, 128)
        missing = beyond(ours, grown(bits(drawn, width, TOUCHED)))
        added = beyond(bits(strokes, width, INKED), grown(ours))
        scale = float(re.search(r'viewBox="\S+ \S+ (\S+) ', svg).group(1)) / width
        left, top = map(float, re.search(r'viewBox="(\S+) (\S+) ', svg).groups())
        for element in texts:
            missing = beyond(missing, text_mask(element, scale, left, top, height))
        print(f"{name}: {count(ours)} inked pixels, {len(texts)} texts, {count(missing)} pixels of the PNG and {count(added)} "
              "of the SVG alone within one pixel")
        # Patterns along a circle and the ticks of labels: docs/exports.md.
        if count(missing) + count(added) > 0.02 * count(ours):
            bad.append(name)
    return bad


def text_mask(element, scale, left, top, height):
    """The pixels around a text: its line, as far as its characters can reach at a full square each."""
    x, y = map(float, re.search(r"translate\((\S+) (\S+)\)", element).groups())
    turn = re.search(r"rotate\((\S+)\)", element)
    angle = math.radians(float(turn.group(1))) if turn else 0.0
    size = float(re.search(r'font-size="(\S+)"', element).group(1)) * 1.4
    length = size * max(1, len(re.search(r">(.*)</text>", element).group(1)))
    corners = []
    for along, across in ((0, 0), (length, 0), (length, size), (0, size)):
        corners.append(((x + along * math.cos(angle) - across * math.sin(angle) - left) / scale,
                        (y + along * math.sin(angle) + across * math.cos(angle) - top) / scale))
    rows = []
    for row in range(height):
        cut = []
        for (x1, y1), (x2, y2) in zip(corners, corners[1:] + corners[:1]):
            if (y1 <= row) != (y2 <= row):
                cut.append(x1 + (row - y1) * (x2 - x1) / (y2 - y1))
        if not cut:
            rows.append(0)
            continue
        first, last = max(0, int(min(cut)) - 2), max(0, int(max(cut)) + 3)
        rows.append(((1 << max(last - first, 0)) - 1) << first)
    return grown(rows)


def texts(out):
    dice = random.Random(3)
    names = []
    for words in ("Width 310", "截面高度", "R12.5", "梁 A-7"):
        for angle in (0.0, 30.9, 90.0, 200.0):
            name = f"text{len(names):02}"
            names.append(name)
            with open(os.path.join(out, name + ".nrv"), "wb") as file:
                file.write(text_drawing(words, dice.uniform(10, 24), angle))
    pngs, svgs = both(out, "text??.nrv", names, "--size", f"{WIDTH}x{HEIGHT}", "--window", f"0,0,{WIDTH},{HEIGHT}")
    bad, least = [], 1.0
    for name, painted, drawn in zip(names, pixels_of(pngs, WIDTH, HEIGHT), pixels_of(svgs, WIDTH, HEIGHT)):
        boxes = [box_of(bits(grey, WIDTH, TOUCHED)) for grey in (painted, drawn)]
        if None in boxes:
            bad.append(f"{name}: no text at all")
            continue
        share = overlap(*boxes)
        least = min(least, share)
        if share < 0.5:
            bad.append(f"{name}: the boxes {boxes[0]} and {boxes[1]} share {share:.2f}")
    print(f"{len(names)} texts, whose boxes share {least:.2f} of their union at least")
    return bad


def many_objects(out):
    """A hundred thousand objects of the five commonest kinds, loaded and written."""
    dice = random.Random(5)
    parts, numbers, number = [header(MANY)], {}, 1

    def point():
        return dice.uniform(0, 5000), dice.uniform(0, 5000)

    for _ in range(MANY):
        name, body = dice.choice((line, line, circle, arc, pline, frame))(dice, point)
        if name not in numbers:
            parts.append(class_record(name, 5))
            numbers[name] = number
            number += 1
        else:
            parts.append(struct.pack("<H", 0x8000 | numbers[name]))
        number += 1
        parts.append(base(dice.choice((0.0, 1.0, 2.4)), 0) + body)
    path = os.path.join(out, "many.nrv")
    with open(path, "wb") as file:
        file.write(b"".join(parts))
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    nrv("render", path, "-o", os.path.join(out, "many.svg"))
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    seconds = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    with open(os.path.join(out, "many.svg"), encoding="utf-8") as file:
        written = len(re.findall("<(?:path|circle) ", file.read()))
    print(f"{MANY} objects as {written} elements in {seconds:.2f} s of processor time")
    return [] if seconds < 2.0 and written >= MANY else ["too slow, or not all of them"]


def main(out):
    bad = samples(out) + random_drawings(out) + texts(out) + many_objects(out)
    # What the list says of the samples is JSON.
    for entry in json.loads(nrv("list", "--json", os.path.join(ROOT, "samples", "texts.nrv"))):
        if not entry["kind"].startswith("C"):
            bad.append(f"a kind named {entry['kind']}")
    print("\n".join(bad))
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(os.environ["NR_OUT"]))
