#!/usr/bin/env python3
"""Undo and redo by keys, menu and toolbar: each brings the very picture back, and the title's mark follows the saved state."""
import os

import drawing
import host
from part import Hand

DARK_BLUE = host.pixel(16, 32, 64)


def marked(demo, wanted):
    host.wait_for("the mark of a change" if wanted else "the mark to go", lambda: ("*" in demo.title()) == wanted)


class Sheet:
    """The drawing view, of which pictures are compared."""

    def __init__(self, demo):
        self.demo = demo
        self.view = demo.find_view(demo.settled())
        self.hand = Hand(demo, self.view)

    def picture(self):
        return self.demo.settled().part(*self.view)

    def expect(self, wanted, what):
        found = host.differing(self.picture(), wanted)
        host.expect(found == 0, f"{what}: {found} pixels differ")


def keys(demo, sheet):
    """A rectangle and a grip edit; gives the picture of the rectangle."""
    empty = sheet.picture()
    sheet.hand.command("d", "r")
    sheet.hand.click(100, 100)
    sheet.hand.click(300, 220)
    sheet.hand.move(600, 500)
    marked(demo, True)
    drawn = sheet.picture()
    demo.key("ctrl+z")
    marked(demo, False)
    sheet.expect(empty, "the rectangle taken back")
    demo.key("ctrl+y")
    marked(demo, True)
    sheet.expect(drawn, "the rectangle repeated")

    sheet.hand.click(200, 100)
    sheet.hand.move(600, 500)
    selected = sheet.picture()
    host.expect(host.differing(selected, drawn) > 20, "no grips of the upper side")
    sheet.hand.click(300, 100)
    sheet.hand.click(360, 60)
    sheet.hand.move(600, 500)
    moved = sheet.picture()
    host.expect(host.differing(moved, selected) > 40, "the grip has not moved the side")
    demo.key("ctrl+z")
    sheet.expect(selected, "the grip taken back")
    demo.key("ctrl+shift+z")
    sheet.expect(moved, "the grip repeated")
    demo.key("ctrl+z")
    sheet.expect(selected, "the grip taken back again")
    return empty


def menu_and_toolbar(demo, sheet, empty):
    demo.key("alt+v", "b", "Down", "Return")
    demo.settled()
    corner = (sheet.hand.left + 3, sheet.hand.top + 3)
    host.expect(demo.settled().at(*corner) == DARK_BLUE, "the background is not dark blue")
    demo.key("alt+e", "u")
    host.expect(demo.settled().at(*corner) == host.BLACK, "the background does not come back")
    # The second and third button, 23 pixels wide each, 24 above the panes.
    row = sheet.hand.top - 14
    demo.click(34, row)
    sheet.hand.move(600, 500)
    sheet.expect(empty, "the rectangle taken back by the button")
    marked(demo, False)
    demo.key("alt+e", "y")
    marked(demo, True)
    demo.key("ctrl+z")
    marked(demo, False)
    demo.click(57, row)
    marked(demo, True)


def classic_way(demo, sheet):
    """Moving the view is no change, also where every command marks the drawing; what it ends may be one."""
    demo.key("alt+v", "c")
    sheet.hand.command("e", "v")
    sheet.hand.click(600, 500, 3)
    marked(demo, False)
    demo.key("ctrl+z")
    marked(demo, True)
    demo.key("ctrl+y")
    marked(demo, False)
    # A polyline that is saved before its third vertex, and ended by moving the view.
    sheet.hand.command("d", "p")
    sheet.hand.click(500, 100)
    sheet.hand.click(600, 100)
    demo.key("alt+f", "s")
    marked(demo, False)
    sheet.hand.click(600, 200)
    sheet.hand.command("e", "v")
    marked(demo, True)
    sheet.hand.click(650, 500, 3)
    demo.key("ctrl+z")
    demo.key("ctrl+s")
    marked(demo, False)
    demo.key("alt+v", "c")
    demo.settled()


def main(out):
    path = os.path.join(out, "undo.nrv")
    with open(path, "wb") as file:
        file.write(drawing.empty_drawing(600))
    with host.Demo(out, host.windows_path(path)) as demo:
        sheet = Sheet(demo)
        empty = keys(demo, sheet)
        menu_and_toolbar(demo, sheet, empty)
        # Saved: now the way back is a change, and the way on again none.
        demo.key("ctrl+s")
        marked(demo, False)
        with open(path, "rb") as file:
            kinds = [thing["class"] for thing in drawing.read_drawing(file.read())["objects"]]
        host.expect(kinds == ["CLine"] * 4, f"saved {kinds}")
        demo.key("ctrl+z")
        marked(demo, True)
        demo.key("ctrl+y")
        marked(demo, False)
        classic_way(demo, sheet)
        # A drawing that is made from parameters is no step.
        demo.key("alt+f", "e", "s")
        host.wait_for("the section", lambda: demo.title().startswith("未命名 -"))
        section = demo.settled()
        demo.key("F6", "ctrl+z")
        demo.key("F6")
        host.expect(demo.settled().changed(section) < 2000, "the section is taken back")


if __name__ == "__main__":
    host.run(main)
