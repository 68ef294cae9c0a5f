#!/usr/bin/env python3
"""A plate with holes and slots from the first click to its recovery: drawn, dimensioned, moved, mirrored, undone to
nothing and repeated, saved, changed, killed and recovered. In Chinese at 100 percent and in English at 200; with
arguments such as "en 100" in that way alone. Each step leaves a picture."""
import glob
import os
import sys

import drawing
import host
from part import Check, Hand

STEPS = 13  # Commands of the story: each is one step of the history.


class Story:
    def __init__(self, out, language, percent):
        class Scaled(host.Demo):
            LANGUAGE = ("--lang", language, "--scale", str(percent))
        self.kind, self.out, self.name, self.shots = Scaled, out, f"{language}{percent}", 0
        self.path = os.path.join(out, f"plate-{self.name}.nrv")

    def attach(self, demo):
        self.demo = demo
        self.view = demo.find_view(demo.settled())
        self.hand = Hand(demo, self.view)

    def shot(self, what):
        """A picture of the window under the step's number and name; gives the pixels of the view."""
        self.shots += 1
        picture = self.demo.settled()
        picture.save(os.path.join(self.out, f"{self.name}-{self.shots:02}-{what}.png"))
        return picture.part(*self.view)

    def aside(self):
        """The pointer where it is over nothing."""
        self.hand.move(30, 560)

    def clicks(self, letter, *points, menu="d"):
        self.hand.command(menu, letter)
        for x, y in points:
            self.hand.click(x, y)

    def draw(self):
        hand = self.hand
        self.clicks("r", (100, 120))
        hand.move(460, 340)
        hand.move(500, 380)
        self.shot("plate-begun")
        hand.click(500, 380)
        for x in (160, 440):
            self.clicks("c", (x, 170))
            hand.move(x + 15, 170)
            if x == 160:
                self.shot("hole-begun")
            hand.click(x + 20, 170)
        # A slot: two lines, and an arc at either end of them.
        for y in (280, 320):
            self.clicks("l", (220, y), (380, y))
        self.clicks("a", (220, 280), (200, 300))
        hand.move(222, 322)
        self.shot("slot-begun")
        hand.click(220, 320)
        self.clicks("a", (380, 280), (400, 300), (380, 320))
        self.aside()
        self.shot("slot")
        # Another slot 80 above it.
        for x, y in ((300, 280), (300, 320), (206, 286), (394, 286)):
            hand.click(x, y)
        self.clicks("c", (600, 340), menu="e")
        hand.move(600, 280)
        self.shot("copy-begun")
        hand.click(600, 260)
        self.demo.key("alt+e", "d")
        self.aside()
        self.shot("drawn")

    def dimension(self):
        self.clicks("d", (100, 380), (500, 380))
        self.hand.move(310, 440)
        self.shot("dimension-begun")
        self.hand.click(300, 440)
        self.clicks("d", (100, 120), (100, 380), (40, 250))
        self.aside()
        self.shot("dimensioned")

    def transform(self, letter, points, answer, what):
        """All objects; the question whether the originals stay is answered by a key."""
        self.demo.key("ctrl+a")
        self.hand.command("e", letter)
        self.hand.click(*points[0])
        self.hand.move(points[1][0] + 7, points[1][1] - 9)
        self.shot(what + "-begun")
        before = self.demo.windows()
        self.hand.click(*points[1])
        self.demo.dialog(before)
        self.shot(what + "-question")
        self.hand.answer(answer, before)
        self.demo.key("alt+e", "d")
        self.aside()
        return self.shot(what)

    def travel(self, empty, whole):
        """Back to nothing and on again, by the keys."""
        for _ in range(STEPS):
            self.demo.key("ctrl+z")
        host.expect(self.shot("undone") == empty, "the undo does not lead to the empty drawing")
        host.expect("*" not in self.demo.title(), "an empty drawing is marked as changed")
        self.demo.key("ctrl+z")
        host.expect(self.demo.settled().part(*self.view) == empty, "one undo too many does something")
        for _ in range(STEPS):
            self.demo.key("ctrl+y")
        again = self.shot("repeated")
        found = host.differing(again, whole)
        host.expect(found == 0, f"{found} pixels differ after all steps were repeated")

    def save(self):
        title = f"{os.path.basename(self.path)} -"
        self.demo.key("ctrl+s")
        host.wait_for("the mark to go after saving", lambda: self.demo.title().startswith(title))
        self.shot("saved")
        with open(self.path, "rb") as file:
            return drawing.read_drawing(file.read())["objects"]

    def edit(self):
        """All but the recovery; the program is killed with one line that is not saved."""
        for name in glob.glob(os.path.join(self.out, "recovery-*")):
            os.remove(name)
        with open(self.path, "wb") as file:
            file.write(drawing.empty_drawing(600))
        with self.kind(self.out, host.windows_path(self.path)) as demo:
            self.attach(demo)
            self.aside()
            empty = self.shot("empty")
            self.draw()
            self.dimension()
            self.transform("t", ((560, 560), (600, 540)), "n", "moved")
            whole = self.transform("m", ((620, 60), (620, 200)), "y", "mirrored")
            self.travel(empty, whole)
            saved = self.save()
            self.clicks("l", (140, 500), (1060, 500))
            self.aside()
            self.shot("changed")
            host.wait_for("a recovery copy", lambda: any(
                len(drawing.read_drawing(open(copy, "rb").read())["objects"]) == len(saved) + 1
                for copy in glob.glob(os.path.join(self.out, "recovery-*.nrv"))))
        return saved

    def recover(self):
        with self.kind(self.out) as demo:
            self.demo = demo
            self.view = (0, 0, 1, 1)
            self.shot("killed")
            demo.key("y")
            host.wait_for("the recovered drawing", lambda: any(
                " * - " in host.xdo("getwindowname", window)[1] for window in demo.windows()))
            demo.window = host.wait_for("the main window", demo.find_window)
            demo.place()
            self.shot("recovered")
            recovered = self.path.replace("plate-", "recovered-")
            before = demo.windows()
            demo.key("ctrl+s")
            dialog = demo.dialog(before)
            demo.settled()
            demo.type(host.windows_path(recovered))
            demo.key("Return")
            demo.gone(dialog)
            host.wait_for("the name in the title", lambda: demo.title().startswith(os.path.basename(recovered)))
        with open(recovered, "rb") as file:
            return drawing.read_drawing(file.read())["objects"]

    def compare(self, objects):
        """Against the figures of the story: the move is by (40, -20) pixels, the mirror's axis is at x = 620."""
        check = Check({"objects": objects}, self.view[3])
        kinds = [thing["class"] for thing in objects]
        host.expect({kind: kinds.count(kind) for kind in set(kinds)} ==
                    {"CLine": 16, "CCircle": 4, "CArc": 8, "CKXVectorLabel": 4}, f"{kinds}")

        def places(kind, key):
            return sorted([round(x), round(self.view[3] - y)] for thing in check.of(kind, kinds.count(kind))
                          for x, y in ([thing[key]] if key == "center" else thing[key]))
        # Centres at 160 and 440, moved to 200 and 480; 1240 less that on the other side.
        host.expect(places("CCircle", "center") == [[200, 150], [480, 150], [760, 150], [1040, 150]],
                    f"holes at {places('CCircle', 'center')}")
        host.expect(places("CArc", "center") == sorted([x, y] for x in (260, 420, 820, 980) for y in (200, 280)),
                    f"ends of slots at {places('CArc', 'center')}")
        for circle in check.of("CCircle", 4) + check.of("CArc", 8):
            check.number("radius", circle["radius"], 20)
        corners = [[x, y] for x in (140, 540, 700, 1100) for y in (100, 360)]
        slots = [[x, y] for x in (260, 420, 820, 980) for y in (180, 220, 260, 300)]
        host.expect(places("CLine", "points") == sorted(corners * 2 + slots), f"lines at {places('CLine', 'points')}")
        figures = sorted(label["figure"] for label in check.of("CKXVectorLabel", 4))
        host.expect(figures == ["260", "260", "400", "400"], f"the dimensions say {figures}")


def main(out):
    ways = [tuple(sys.argv[1:3])] if len(sys.argv) > 2 else [("zh", 100), ("en", 200)]
    for language, percent in ways:
        story = Story(out, language, percent)
        saved = story.edit()
        story.compare(saved)
        view = story.view
        recovered = story.recover()
        story.view = view
        lines = [thing for thing in recovered if thing["class"] == "CLine"]
        story.compare([thing for thing in recovered if thing is not lines[-1]])
        host.expect([round(x) for x, _ in lines[-1]["points"]] == [140, 1060], f"the line {lines[-1]['points']}")


if __name__ == "__main__":
    host.run(main)
