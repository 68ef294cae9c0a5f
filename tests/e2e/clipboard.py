#!/usr/bin/env python3
"""Two running programs: what is copied in one is placed by a click in the other. And the print preview, which shows
the drawing on a sheet: fitted, and at the scale that is typed."""
import os

import drawing
import host


class Other(host.Demo):
    """A second program beside the first."""

    def __init__(self, first, *arguments):
        self.first = first
        super().__init__(first.out, *arguments)

    def find_window(self):
        found = host.xdo("search", "--onlyvisible", "--name", self.TITLE)[1].split()
        return next((window for window in found if window != self.first.window), None)


def save(demo, path):
    """Saves the drawing under a name for the first time."""
    before = demo.windows()
    demo.key("ctrl+s")
    dialog = demo.dialog(before)
    demo.settled()
    demo.type(host.windows_path(path))
    demo.key("Return")
    demo.gone(dialog)
    host.wait_for("the title to say that all is saved", lambda: demo.title().startswith(os.path.basename(path)))
    with open(path, "rb") as file:
        return drawing.read_drawing(file.read())["objects"]


def empty_view(demo):
    demo.settled()
    demo.key("F6", "ctrl+n")
    demo.key("alt+v", "p")
    return demo.find_view(demo.settled())


def preview(demo, out):
    before = demo.windows()
    demo.key("alt+f", "v")
    dialog = demo.dialog(before)
    sheet = demo.settled()
    sheet.save(os.path.join(out, "preview.png"))
    # Black ink on white paper, which the black view around it has not; at 1:10 a third of the ink or less.
    paper = demo.width // 2 - 100, demo.height // 2 - 100, 200, 230
    fitted = sheet.part(*paper)
    host.expect(fitted.count(host.WHITE) > 40000 and fitted.count(host.BLACK) > 150, "no black line on white paper")
    demo.type("1:10")
    host.wait_for("a smaller picture", lambda: demo.grab().part(*paper).count(host.BLACK) < fitted.count(host.BLACK) / 3)
    host.expect(demo.settled().part(*paper).count(host.BLACK) > 10, "no picture at 1:10")
    demo.key("Escape")
    demo.gone(dialog)


def main(out):
    with host.Demo(out) as demo:
        left, top, width, height = empty_view(demo)
        demo.key("alt+d", "l")
        demo.click(left + 120, top + height - 90)
        demo.click(left + 420, top + 140)
        demo.move(left + 30, top + 30)
        host.wait_for("the mark of a change in the title", lambda: "*" in demo.title())
        # Selected by a click on its middle, and copied.
        demo.click(left + 270, top + (140 + height - 90) // 2)
        demo.move(left + 30, top + 30)
        demo.settled()
        demo.key("ctrl+c")
        original = save(demo, os.path.join(out, "first.nrv"))
        with Other(demo) as other:
            left, top, width, height = empty_view(other)
            other.key("ctrl+v")
            other.move(left + 200, top + 300)
            host.expect(other.settled().part(left, top, width, height).count(host.WHITE) > 200, "no preview at the mouse")
            other.click(left + 200, top + 300)
            other.move(left + 30, top + 30)
            host.wait_for("the mark of a change in the title", lambda: "*" in other.title())
            preview(other, out)
            copy = save(other, os.path.join(out, "second.nrv"))
    host.expect(len(original) == len(copy) == 1, f"{len(original)} and {len(copy)} objects")
    (x1, y1), (x2, y2) = original[0]["points"]
    expected = [[200.0, height - 300.0], [200.0 + x2 - x1, height - 300.0 + y2 - y1]]
    host.expect(copy[0]["points"] == expected, f"{copy[0]['points']} instead of {expected}")
    for key in original[0]:
        host.expect(key in ("points", "state") or original[0][key] == copy[0][key], f"{key} differs: {copy[0]}")


if __name__ == "__main__":
    host.run(main)
