#!/usr/bin/env python3
"""A small part drawn by hand, with nearly every kind of tool: clicks, typed lengths, questions answered, a text in
Chinese. It is saved, and what the file holds is compared with what was drawn."""
import math
import os

import drawing
import host

TEXT = "底板 A1"


class Hand:
    """The pointer over the drawing view, in pixels from its upper left corner."""

    def __init__(self, demo, view):
        self.demo = demo
        self.view = view
        self.left, self.top = view[:2]

    def move(self, x, y):
        self.demo.move(self.left + x, self.top + y)

    def finish(self, x, y):
        """The last click of a circle or arc. The point snaps to the grips of the very object that is being drawn, so
        it comes from farther away than a snap reaches, in one move."""
        self.demo.step(self.left + x - 15, self.top + y - 15)
        self.demo.step(self.left + x, self.top + y)
        self.demo.press()

    def click(self, x, y, button=1):
        self.demo.click(self.left + x, self.top + y, button)

    def command(self, menu, letter):
        """Starts a command by the mnemonics of the menu bar."""
        self.demo.key(f"alt+{menu}", letter)
        self.demo.settled()

    def answer(self, key, before):
        """Answers the question that comes up with a key."""
        dialog = self.demo.dialog(before)
        self.demo.settled()
        self.demo.key(key)
        self.demo.gone(dialog)


def draw(demo, hand):
    hand.command("d", "r")
    hand.click(100, 100)
    hand.click(300, 220)

    hand.command("d", "c")
    hand.click(420, 160)
    hand.finish(470, 160)

    hand.command("d", "a")
    hand.click(560, 200)
    hand.click(610, 130)
    hand.finish(660, 200)

    # The third vertex by its distance, towards the pointer.
    hand.command("d", "p")
    hand.click(100, 400)
    hand.click(250, 380)
    hand.move(400, 380)
    demo.settled()
    demo.type("120")
    demo.key("Return")
    demo.settled()
    hand.click(600, 500, 3)

    # The circle 80 to the right and 40 down; the original stays.
    hand.click(420, 110)
    demo.settled()
    hand.command("e", "t")
    before = demo.windows()
    hand.click(480, 300)
    hand.click(560, 340)
    hand.answer("y", before)

    # The polyline by a quarter turn; the original goes.
    hand.click(290, 380)
    demo.settled()
    hand.command("e", "r")
    before = demo.windows()
    hand.click(200, 500)
    hand.click(200, 420)
    hand.answer("n", before)
    demo.key("alt+e", "d")

    # A line of its own kind beside another one, at a typed distance.
    hand.command("d", "p")
    hand.click(620, 420)
    hand.click(860, 420)
    hand.click(940, 500, 3)
    hand.command("e", "o")
    hand.click(700, 420)
    hand.move(700, 380)
    demo.settled()
    demo.type("35")
    demo.key("Return")
    demo.settled()

    hand.command("d", "d")
    hand.click(620, 520)
    hand.click(820, 520)
    hand.click(700, 570)

    hand.command("d", "t")
    before = demo.windows()
    hand.click(900, 120)
    dialog = demo.dialog(before)
    demo.settled()
    demo.type(TEXT)
    demo.settled()
    demo.key("Tab", "Return")
    demo.gone(dialog)


class Check:
    def __init__(self, stored, height):
        self.objects = stored["objects"]
        self.height = height

    def of(self, kind, count):
        found = [thing for thing in self.objects if thing["class"] == kind]
        host.expect(len(found) == count, f"{len(found)} of {kind} instead of {count}: {found}")
        return found

    def points(self, what, found, *pixels):
        """Points of the file against pixels of the view, whose scale is 1."""
        host.expect(len(found) == len(pixels), f"{what}: {found}")
        for (x, y), (px, py) in zip(found, pixels):
            host.expect(abs(x - px) < 1e-4 and abs(y - (self.height - py)) < 1e-4,
                        f"{what}: ({x}, {y}) instead of ({px}, {self.height - py})")

    def number(self, what, found, wanted):
        host.expect(abs(found - wanted) < 1e-4, f"{what}: {found} instead of {wanted}")


def compare(stored, height):
    check = Check(stored, height)
    host.expect(len(stored["objects"]) == 12, f"{len(stored['objects'])} objects")

    sides = check.of("CLine", 4)
    corners = [(100, 100), (300, 100), (300, 220), (100, 220), (100, 100)]
    for i, side in enumerate(sides):
        check.points(f"side {i}", side["points"], corners[i], corners[i + 1])

    moved, kept = check.of("CCircle", 2)
    check.points("the moved circle", [moved["center"]], (500, 200))
    check.points("the circle that stayed", [kept["center"]], (420, 160))
    for circle in (moved, kept):
        check.number("radius", circle["radius"], 50)
        host.expect(circle["state"] == 2, "a circle is still selected")

    # The centre is as far from (560, 200) as from (610, 130): 50^2 + (200 - c)^2 = (c - 130)^2, so c = 1280 / 7.
    arc = check.of("CArc", 1)[0]
    check.points("the arc's centre", [arc["center"]], (610, 1280 / 7))
    check.number("the arc's radius", arc["radius"], 1280 / 7 - 130)
    # Anticlockwise from the right end over the top to the left one.
    slope = math.atan2(200 - 1280 / 7, 50)
    check.number("the arc's start", arc["start"], 2 * math.pi - slope)
    check.number("the arc's end", arc["end"], math.pi + slope)

    # Polylines go to the bottom of the drawing, the last one first, and so does the copy that an offset leaves.
    former, line, turned = check.of("CPLine", 3)
    check.points("the line before its offset", former["points"], (620, 420), (860, 420))
    check.points("the line that an offset left", line["points"], (620, 385), (860, 385))
    # A quarter turn about (200, 500): what lay right of it comes to lie above it.
    check.points("the turned polyline", turned["points"], (100, 600), (80, 450), (80, 330))
    host.expect(all(bulge == 0 for thing in (former, turned, line) for bulge in thing["bulges"]), "a bulge")

    label = check.of("CKXVectorLabel", 1)[0]
    check.points("the label's left line", label["left"], (620, 520), (620, 570))
    check.points("the label's right line", label["right"], (820, 520), (820, 570))
    host.expect(label["figure_shown"] == 1 and label["figure"] == "200", f"the label's figure: {label['figure']}")

    text = check.of("CText", 1)[0]
    host.expect(text["text"] == TEXT, f"the text “{text['text']}” instead of “{TEXT}”")
    check.points("the text", [text["at"]], (900, 120))


def main(out):
    path = os.path.join(out, "part.nrv")
    with open(path, "wb") as file:
        file.write(drawing.empty_drawing(600))
    with host.keys_for(TEXT), host.Demo(out, host.windows_path(path)) as demo:
        view = demo.find_view(demo.settled())
        hand = Hand(demo, view)
        draw(demo, hand)
        demo.settled()
        host.wait_for("the mark of a change in the title", lambda: "*" in demo.title())
        demo.key("alt+f", "s")
        host.wait_for("the mark to go after saving", lambda: demo.title().startswith("part.nrv -"))
        demo.grab().save(os.path.join(out, "part.png"))
    with open(path, "rb") as file:
        compare(drawing.read_drawing(file.read()), view[3])


if __name__ == "__main__":
    host.run(main)
