#!/usr/bin/env python3
"""The comfort of the demo: previews that are seen and the classic way, the figure beside the band, the prompt of each step,
select all, the menu under the mouse, recent files, examples, and a drawing that survives a kill."""
import glob
import os

import drawing
import host
from part import Hand

STATUS = 20  # pixels of the status bar, from the bottom of the window


def status(demo):
    """The left part of the status bar, which holds the prompt."""
    picture = demo.settled()
    return picture.part(4, picture.height - STATUS, 500, STATUS - 4)


def ink(picture, left, top, width, height):
    """Pixels of a rectangle that are not black."""
    return sum(value != host.BLACK for value in picture.part(left, top, width, height))


def draw_polyline(demo, hand):
    """Three vertices; the prompt moves on with the first click."""
    ready = status(demo)
    hand.command("d", "p")
    first = status(demo)
    hand.click(100, 100)
    hand.move(200, 140)
    second = status(demo)
    host.expect(first != ready and second != first, "the prompt does not follow the steps")
    # The figure is a light box 20 pixels right of and below the mouse.
    shown = demo.settled()
    host.expect(ink(shown, hand.left + 225, hand.top + 162, 90, 12) > 500, "no figure beside the band")
    hand.click(300, 100)
    hand.click(300, 200)
    hand.click(500, 300, 3)
    hand.move(500, 320)
    host.expect(ink(demo.settled(), hand.left + 505, hand.top + 342, 110, 18) == 0, "the figure stays")


def preview_of_move(demo, hand):
    """How much of the moved polyline's upper side is seen while it is moved by (0, 200)."""
    hand.command("e", "t")
    hand.click(600, 100)
    hand.move(600, 290)
    hand.move(600, 300)
    shown = demo.settled()
    seen = ink(shown, hand.left + 120, hand.top + 299, 160, 3)
    demo.key("Escape")
    demo.settled()
    return seen


def check_options(demo, hand):
    hand.click(200, 100)
    demo.settled()
    host.expect(preview_of_move(demo, hand) > 150, "the moved polyline is not seen")
    demo.key("alt+v", "c")
    demo.settled()
    host.expect(preview_of_move(demo, hand) < 20, "the classic way shows a moved polyline")
    demo.key("alt+v", "c")
    demo.settled()
    host.expect(preview_of_move(demo, hand) > 150, "the options do not come back")


def check_menu_under_mouse(demo, hand):
    """Over an object it has the commands of objects: the copy's mnemonic starts a copy."""
    demo.key("alt+e", "d")
    demo.settled()
    before = demo.windows()
    hand.click(200, 100, 3)
    menu = demo.dialog(before)
    demo.settled()
    demo.key("c")
    demo.gone(menu)
    hand.click(600, 100)
    hand.click(600, 300)
    demo.settled()
    # The same by the keyboard.
    hand.move(200, 100)
    before = demo.windows()
    demo.key("shift+F10")
    menu = demo.dialog(before)
    demo.key("Escape")
    demo.gone(menu)


def answer(demo, key, action):
    before = demo.windows()
    action()
    dialog = demo.dialog(before)
    demo.settled()
    demo.key(key)
    demo.gone(dialog)


def objects_of(path):
    with open(path, "rb") as file:
        return drawing.read_drawing(file.read())["objects"]


def edit(out, path):
    with host.Demo(out, host.windows_path(path)) as demo:
        hand = Hand(demo, demo.find_view(demo.settled()))
        draw_polyline(demo, hand)
        check_options(demo, hand)
        host.expect("*" in demo.title(), "the polyline has not marked the drawing")
        check_menu_under_mouse(demo, hand)
        demo.key("ctrl+s")
        host.wait_for("the mark to go", lambda: demo.title().startswith("comfort.nrv -"))
        kinds = [thing["class"] for thing in objects_of(path)]
        host.expect(kinds == ["CPLine", "CPLine"], f"{kinds} instead of a polyline and its copy")
        # A command left by Escape changes nothing.
        hand.command("d", "l")
        hand.click(100, 400)
        hand.move(200, 420)
        demo.key("Escape")
        demo.settled()
        host.expect("*" not in demo.title(), "a line left by Escape marks the drawing")

        # An example, and back by the recent files.
        picture = demo.settled()
        demo.key("alt+f", "e", "b")
        host.wait_for("an example without a name", lambda: demo.title().startswith("未命名 -"))
        host.expect(demo.settled().changed(picture) > 2000, "no example is to be seen")
        demo.key("alt+f", "r", "Return")
        host.wait_for("the recent file", lambda: demo.title().startswith("comfort.nrv -"))
        demo.settled()

        # Nothing is selected, so the key erases nothing and asks nothing; then all.
        before = demo.windows()
        demo.key("Delete")
        demo.settled()
        host.expect(demo.windows() == before, "the key asks with nothing selected")
        demo.key("ctrl+a")
        demo.settled()
        answer(demo, "y", lambda: demo.key("Delete"))
        host.wait_for("the mark of the erasing", lambda: "*" in demo.title())

        hand.command("d", "r")
        hand.click(100, 100)
        hand.click(300, 220)
        host.wait_for("a recovery copy of the rectangle", lambda: any(
            len(objects_of(copy)) == 4 for copy in glob.glob(os.path.join(out, "recovery-*.nrv"))))
    # The program was killed here, with an unsaved rectangle.


def recover(out, path):
    with host.Demo(out) as demo:
        demo.settled()
        demo.key("y")
        host.wait_for("the recovered drawing", lambda: any(
            "未命名 *" in host.xdo("getwindowname", window)[1] for window in demo.windows()))
        demo.window = host.wait_for("the main window", demo.find_window)
        demo.place()
        demo.settled()
        host.expect(not os.path.exists(path), "the file is there before it was saved")
        before = demo.windows()
        demo.key("ctrl+s")
        dialog = demo.dialog(before)
        demo.settled()
        demo.type(host.windows_path(path))
        demo.key("Return")
        demo.gone(dialog)
        host.wait_for("the name in the title", lambda: demo.title().startswith("recovered.nrv -"))
        kinds = [thing["class"] for thing in objects_of(path)]
        host.expect(kinds == ["CLine"] * 4, f"recovered {kinds}")
        host.wait_for("the copy to go", lambda: not glob.glob(os.path.join(out, "recovery-*.nrv")))


def refuse_unreadable(out):
    """A copy that can't be read stays until it is declined."""
    path = os.path.join(out, "recovery-1.nrv")
    with open(path, "wb") as file:
        file.write(b"no drawing")
    with host.Demo(out) as demo:
        demo.settled()
        before = demo.windows()
        demo.key("y")
        for _ in range(2):  # What the library says, and what the demo does.
            host.wait_for("another box", lambda: demo.windows() - before)
            box = (demo.windows() - before).pop()
            demo.settled()
            demo.key("Return")
            demo.gone(box)
        demo.settled()
        host.expect(os.path.exists(path), "the copy is gone")
    with host.Demo(out) as demo:
        demo.settled()
        demo.key("n")
        host.wait_for("the copy to go", lambda: not os.path.exists(path))


def main(out):
    for name in glob.glob(os.path.join(out, "*.nrv")) + glob.glob(os.path.join(out, "demo.ini")):
        os.remove(name)
    path = os.path.join(out, "comfort.nrv")
    with open(path, "wb") as file:
        file.write(drawing.empty_drawing(600))
    edit(out, path)
    recover(out, os.path.join(out, "recovered.nrv"))
    refuse_unreadable(out)


if __name__ == "__main__":
    host.run(main)
