#!/usr/bin/env python3
"""The parameter view by the keyboard alone: walking, typing, refusals, Escape, changing panes; then the drawing that
followed the values is saved and compared, with figures worked out by hand."""
import array
import os

import drawing
import host

BACK = host.pixel(20, 28, 40)       # of the parameter view
REFUSED = host.pixel(255, 205, 60)  # balloon and frame of a refused value
FOCUS = host.pixel(90, 170, 250)    # frame of the value where the keyboard is
RUN = array.array("I", [host.WHITE] * 12)


def near(at, place):
    """Whether a box found at `at` is at `place`: where its white begins depends on the value that is selected."""
    return at is not None and abs(at[0] - place[0]) < 40 and abs(at[1] - place[1]) < 4


def elsewhere(at, *places):
    return at is not None and not any(near(at, place) for place in places)


class Pane:
    """The parameter view in the window: the rectangle of its background."""

    def __init__(self, demo):
        self.demo = demo
        picture = demo.settled()
        columns = [x for x, value in enumerate(picture.row(picture.height // 2)) if value == BACK]
        host.expect(len(columns) > 200, "the parameter view is not to be seen")
        self.left, self.right = columns[0], columns[-1] + 1
        rows = [y for y in range(picture.height) if picture.at(self.left + 2, y) == BACK]
        self.top, self.bottom = rows[0], rows[-1] + 1

    def box(self, picture=None):
        """Where the white of the edit box begins, the only wide white thing; None when there is none."""
        picture = picture or self.demo.grab()
        for y in range(self.top, self.bottom):
            row = picture.row(y, self.left, self.right)
            if row.count(host.WHITE) >= len(RUN):
                for x in range(len(row) - len(RUN)):
                    if row[x] == host.WHITE and row[x:x + len(RUN)] == RUN:
                        return x, y
        return None

    def count(self, color, picture=None):
        picture = picture or self.demo.grab()
        return picture.part(self.left, self.top, self.right - self.left, self.bottom - self.top).count(color)

    def wait_box(self, test, what):
        """Waits until the box is where `test` says; its place once the picture no longer changes."""
        host.wait_for(what, lambda: test(self.box()))
        place = self.box(self.demo.settled())
        host.expect(test(place), f"{what}: it is at {place}")
        return place

    def drawing_of(self, picture):
        """The pixels right of the pane, without the examples above and the status bar below: what the other view shows."""
        left = self.right + 20
        return picture.part(left, self.top + 45, picture.width - left - 10, self.bottom - self.top - 50)


def main(out):
    path = os.path.join(out, "section.nrv")
    if os.path.exists(path):
        os.remove(path)
    with host.Demo(out) as demo:
        pane = Pane(demo)
        height = pane.wait_box(lambda at: at is not None, "a box over the first value")
        first = pane.drawing_of(demo.settled())

        # Return takes over and goes on; the other view follows.
        demo.type("500")
        demo.key("Return")
        width = pane.wait_box(lambda at: elsewhere(at, height), "the box to go on to the width")
        second = pane.drawing_of(demo.settled())
        host.expect(second != first, "the drawing does not follow the height")

        # Tab goes on, Shift+Tab back.
        demo.key("Tab")
        web = pane.wait_box(lambda at: elsewhere(at, height, width), "the box to go on to the web")
        demo.key("shift+Tab")
        pane.wait_box(lambda at: near(at, width), "the box to go back to the width")
        demo.key("Tab")
        pane.wait_box(lambda at: near(at, web), "the box to go on to the web again")
        host.expect(pane.count(REFUSED) == 0, "something is refused already")

        # No section: the reason shows, the box stays, and so it does at a second try and for another pane.
        demo.type("300")
        demo.key("Return")
        host.wait_for("the reason for the refusal", lambda: pane.count(REFUSED) > 500)
        for key in ("Tab", "F6"):
            demo.key(key)
            picture = demo.settled()
            host.expect(pane.box(picture) is not None and pane.count(REFUSED, picture) > 500, f"{key} gets out")
        host.expect(pane.drawing_of(demo.settled()) == second, "the drawing follows a refused value")

        # Escape restores and closes; the keyboard stays at the value.
        demo.key("Escape")
        host.wait_for("the box to close", lambda: pane.box() is None)
        picture = demo.settled()
        host.expect(pane.count(REFUSED, picture) == 0, "the reason stays")
        host.expect(pane.count(FOCUS, picture) > 60, "no frame shows where the keyboard is")
        host.expect(pane.drawing_of(picture) == second, "Escape changes the drawing")

        # A letter is no number; after it a value typed right away opens the box by itself.
        demo.type("abc")
        demo.key("Return")
        host.wait_for("the refusal of a word", lambda: pane.count(REFUSED) > 500)
        demo.key("Escape")
        host.wait_for("the box to close again", lambda: pane.box() is None)
        demo.type("10")
        demo.key("Return")
        flange = pane.wait_box(lambda at: elsewhere(at, height, width, web), "the box to go on to the flange")

        # To the drawing and back.
        demo.key("F6")
        host.wait_for("the box to close for the other pane", lambda: pane.box() is None)
        picture = demo.settled()
        host.expect(pane.count(FOCUS, picture) == 0, "the left pane still claims the keyboard")
        demo.key("F6")
        pane.wait_box(lambda at: near(at, flange), "the box to come back to the flange")

        # The weld stays; the length takes a sign by its expression, but none by its sense.
        demo.key("Tab")
        weld = pane.wait_box(lambda at: elsewhere(at, flange), "the box over the weld")
        demo.key("Tab")
        length = pane.wait_box(lambda at: elsewhere(at, weld), "the box over the length")
        demo.type("-5")
        demo.key("Return")
        host.wait_for("the refusal of a negative length", lambda: pane.count(REFUSED) > 500)
        demo.type("12000.")
        demo.key("Return")
        name = pane.wait_box(lambda at: elsewhere(at, length), "the box over the name")
        host.expect(pane.count(REFUSED) == 0, "a good length is refused")
        demo.type("B-7")
        demo.key("Return")
        pane.wait_box(lambda at: near(at, height), "the walk to begin again at the height")
        host.expect(name[1] < height[1], "the name is above the height")

        before = demo.windows()
        demo.key("ctrl+s")
        dialog = demo.dialog(before)
        demo.settled()
        demo.type(host.windows_path(path))
        demo.key("Return")
        demo.gone(dialog)
        host.wait_for("the title to say that all is saved", lambda: demo.title().startswith("section.nrv -"))

    with open(path, "rb") as file:
        objects = drawing.read_drawing(file.read())["objects"]
    texts = [thing["text"] for thing in objects if thing["class"] == "CText"]
    # A  = 2 x 200 x 12 + 476 x 10 + 4 x 18 = 9632 mm2
    # Ix = (200 x 500^3 - 190 x 476^3) / 12 + 4 (36 + 18 x 236^2) = 379715802.7 mm4
    # Iy = (24 x 200^3 + 476 x 10^3) / 12 + 4 (36 + 18 x 7^2) = 16043338.7 mm4
    # 0.009632 m2 x 7850 = 75.6112 kg/m, 12 m of it 907.33 kg
    for wanted in ("500", "200", "t = 10", "t = 12", "B-7  焊接工字钢 500×200×10×12，L = 12000", "A = 96.32 cm²",
                   "Ix = 37971.6 cm⁴，Iy = 1604.3 cm⁴", "75.61 kg/m，共 907.3 kg"):
        host.expect(wanted in texts, f"no text “{wanted}” among {texts}")
    outlines = [sorted(map(tuple, thing["points"])) for thing in objects if thing["class"] == "CPLine"]
    for low, high in ((238.0, 250.0), (-250.0, -238.0)):
        flange = sorted((x, y) for x in (-100.0, 100.0) for y in (low, high))
        host.expect(flange in outlines, f"no flange {flange} among {outlines}")
    weld = sorted([(5.0, 238.0), (11.0, 238.0), (5.0, 232.0)])
    host.expect(weld in outlines, f"no weld {weld} among {outlines}")
    webs = [thing["points"] for thing in objects if thing["class"] == "CLine"]
    for x in (-5.0, 5.0):
        host.expect([[x, -238.0], [x, 238.0]] in webs, f"no side of the web at {x}")


if __name__ == "__main__":
    host.run(main)
