#!/usr/bin/env python3
"""Takes a picture of the preview of each command, for docs/commands.md, and of an undo and a sheet of paper, for the README.
Layer 13: demo.

./run sets its environment: DISPLAY, NR_WITH_WINE, NR_DEMO, NR_OUT. Prints the path of each picture, a line each. Those
in docs/images/ are copies.
"""
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "tests", "e2e"))
import host  # noqa: E402

LEFT, TOP, WIDTH, HEIGHT = 40, 60, 480, 280  # the part of the view that a picture shows, in pixels
ELSEWHERE = (700, 500)


class Studio:
    def __init__(self, demo, out):
        self.demo, self.out = demo, out
        demo.settled()
        demo.key("F6", "ctrl+n")
        demo.key("alt+v", "p")
        self.left, self.top = demo.find_view(demo.settled())[:2]

    def command(self, menu, letter):
        self.demo.key(f"alt+{menu}", letter)
        self.demo.settled()

    def click(self, *places):
        for x, y in places:
            self.demo.click(self.left + x, self.top + y)
            self.demo.settled()

    def end(self):
        self.demo.click(self.left + ELSEWHERE[0], self.top + ELSEWHERE[1], 3)
        self.demo.settled()

    def pline(self, *places):
        """Draws a polyline."""
        self.command("d", "p")
        self.click(*places)
        self.end()

    def hook(self):
        """Draws two lines and selects both."""
        for ends in (((90, 290), (150, 130)), ((150, 130), (260, 180))):
            self.command("d", "l")
            self.click(*ends)
        self.click((120, 210), (205, 155))

    def picture(self, name, x, y):
        """Takes a picture with the pointer at a place, moved in two steps, because a preview shows the last move."""
        self.demo.step(self.left + x - 9, self.top + y - 6)
        self.demo.step(self.left + x, self.top + y)
        self.save("command-" + name, self.demo.x + self.left + LEFT, self.demo.y + self.top + TOP, WIDTH, HEIGHT)

    def save(self, name, *place):
        self.demo.settled()
        path = os.path.join(self.out, f"{name}.png")
        host.grab(*place).save(path)
        print(path, flush=True)

    def dialog(self, name, before, key="Escape"):
        """Takes a picture of the dialog that opens; then the key ends it."""
        window = self.demo.dialog(before)
        self.demo.settled()
        lines = host.xdo("getwindowgeometry", "--shell", window)[1].split()
        place = {key: int(value) for key, value in (line.split("=") for line in lines)}
        self.save(name, place["X"] - 4, place["Y"] - 4, place["WIDTH"] + 8, place["HEIGHT"] + 8)
        self.demo.key(key)
        self.demo.gone(window)

    def clear(self):
        """Empties the drawing; the question about a changed one is answered No."""
        self.demo.key("Escape")
        self.demo.settled()
        changed = "*" in self.demo.title()
        before = self.demo.windows()
        self.demo.key("ctrl+n")
        if changed:
            window = self.demo.dialog(before)
            self.demo.settled()
            self.demo.key("n")
            self.demo.gone(window)
        self.demo.settled()


def creating(studio):
    """Name, mnemonic in the menu, clicks, the place of the pointer."""
    for name, letter, clicks, place in (
            ("line", "l", [(90, 300)], (440, 130)),
            ("pline", "p", [(80, 290), (190, 130), (320, 260)], (450, 120)),
            ("pline_bound", "b", [(80, 290), (190, 130), (320, 260)], (450, 120)),
            ("rect", "r", [(110, 110)], (430, 290)),
            ("circle", "c", [(270, 200)], (360, 150)),
            ("arc", "a", [(110, 270), (250, 110)], (440, 250)),
            ("DrawLabel", "d", [(120, 280), (430, 280)], (280, 190)),
            ("DrawLabel_Green", "g", [(120, 280), (430, 280)], (280, 190))):
        studio.command("d", letter)
        studio.click(*clicks)
        studio.picture(name, *place)
        studio.end()
        studio.clear()
    for name, letter in (("text", "t"), ("textparm", "m")):
        studio.command("d", letter)
        before = studio.demo.windows()
        studio.click((200, 200))
        studio.dialog("command-" + name, before)
        studio.clear()


def editing(studio):
    for name, letter, base, place in (
            ("translation", "t", (90, 290), (210, 250)),
            ("copy", "c", (90, 290), (210, 250)),
            ("rotation", "r", (90, 290), (330, 240)),
            ("mirroring", "m", (270, 100), (280, 310))):
        studio.hook()
        studio.command("e", letter)
        studio.click(base)
        studio.picture(name, *place)
        studio.end()
        studio.clear()

    studio.pline((100, 270), (450, 240))
    studio.command("e", "o")
    studio.click((275, 255))
    studio.picture("offset", 290, 150)
    studio.end()
    studio.clear()

    for name, letter, place in (("PLine_AddPoint", "i", (210, 210)), ("PLine_RemovePoint", "k", (155, 140))):
        studio.pline((90, 290), (150, 130), (260, 280), (360, 140), (450, 290))
        studio.click((120, 210))
        studio.command("e", letter)
        studio.click(place)
        studio.picture(name, *ELSEWHERE)
        studio.end()
        studio.clear()

    studio.hook()
    studio.click((260, 180))  # takes a grip
    studio.picture("grip", 400, 120)
    studio.end()
    before = studio.demo.windows()
    studio.demo.key("Delete")
    studio.dialog("command-erase", before, "n")

    # Over the rest of the view, which the next drawing does not use.
    studio.command("e", "v")
    host.xdo("mousemove", "--sync", studio.demo.x + studio.left + 90, studio.demo.y + studio.top + 290)
    host.xdo("mousedown", 1)
    studio.picture("viewmove", 250, 260)
    host.xdo("mouseup", 1)
    studio.end()
    studio.clear()

    studio.command("d", "t")
    before = studio.demo.windows()
    studio.click((200, 200))
    window = studio.demo.dialog(before)
    studio.demo.type("A1")
    studio.demo.key("Return")
    studio.demo.gone(window)
    studio.end()
    studio.click((208, 210))
    before = studio.demo.windows()
    studio.demo.key("alt+e", "x")
    studio.dialog("command-rotatetext", before)
    studio.clear()


def beside(studio):
    """The menu item that names the step to take back; and an example on paper."""
    studio.command("d", "r")
    studio.click((110, 110), (430, 290))
    studio.demo.key("alt+e")
    studio.save("undo", studio.demo.x, studio.demo.y, WIDTH, HEIGHT)
    studio.demo.key("Escape", "Escape")
    studio.clear()
    studio.demo.key("alt+f", "e", "b")
    before = studio.demo.windows()
    studio.demo.settled()
    studio.demo.key("alt+f", "v")
    studio.dialog("print-preview", before)


def main(out):
    os.environ["NR_BUILD"] = os.path.dirname(os.path.dirname(os.environ["NR_DEMO"]))
    with host.Demo(out) as demo:
        studio = Studio(demo, out)
        creating(studio)
        editing(studio)
        beside(studio)


if __name__ == "__main__":
    host.run(main)
