#!/usr/bin/env python3
"""Every menu item that no other script chooses does what it says: it is chosen by its mnemonics and its effect is looked for."""
import os

import drawing
import host
from part import Hand

YELLOW = host.pixel(255, 255, 0)
DARK_BLUE = host.pixel(16, 32, 64)


def dialog_by(demo, *keys):
    """Chooses what opens a dialog, and gives that."""
    before = demo.windows()
    demo.key(*keys)
    dialog = demo.dialog(before)
    demo.settled()
    return dialog


def draw(demo, hand):
    hand.command("d", "b")
    for x, y in ((100, 100), (300, 100), (300, 200), (150, 200)):
        hand.click(x, y)
    hand.click(600, 500, 3)
    shown = demo.settled()
    host.expect(shown.at(hand.left + 200, hand.top + 100) == YELLOW, "the boundary is not yellow")

    hand.command("d", "g")
    hand.click(100, 300)
    hand.click(300, 300)
    hand.click(200, 350)

    hand.command("d", "m")
    before = demo.windows()
    hand.click(500, 100)
    dialog = demo.dialog(before)
    demo.settled()
    demo.type("125")
    demo.key("Tab", "Return")
    demo.gone(dialog)
    demo.settled()
    hand.click(512, 108)
    dialog = dialog_by(demo, "alt+e", "x")
    demo.type("30")
    demo.key("Return")
    demo.gone(dialog)
    demo.key("alt+e", "d")
    demo.settled()


def edit(demo, hand):
    # Mirrored about x = 400; the original stays.
    hand.click(200, 100)
    demo.settled()
    hand.command("e", "m")
    before = demo.windows()
    hand.click(400, 50)
    hand.click(400, 250)
    hand.answer("y", before)
    # A vertex more, one less.
    hand.command("e", "i")
    hand.click(200, 200)
    hand.click(600, 500, 3)
    hand.command("e", "k")
    hand.click(500, 100)
    hand.click(600, 500, 3)
    # Horizontal by the lock, whatever the second click.
    hand.command("s", "o")
    hand.command("d", "l")
    hand.click(100, 500)
    hand.click(300, 520)
    hand.command("s", "o")
    # Broken off by the menu.
    hand.command("d", "l")
    hand.click(700, 500)
    hand.move(800, 560)
    hand.command("e", "b")
    hand.click(850, 600)
    # The picture by 40 to the right and back.
    hand.command("e", "v")
    for begin, end in ((700, 740), (740, 700)):
        demo.move(hand.left + begin, hand.top + 500)
        host.xdo("mousedown", 1)
        demo.move(hand.left + end, hand.top + 500)
        host.xdo("mouseup", 1)
    hand.click(600, 500, 3)
    demo.settled()


def look(demo, hand):
    about = dialog_by(demo, "alt+h", "a")
    demo.key("Return")
    demo.gone(about)
    properties = dialog_by(demo, "alt+v", "r")
    hand.click(600, 500)  # The keyboard is in the new window.
    demo.key("alt+v", "r")
    demo.gone(properties)
    demo.settled()
    before = demo.settled()
    demo.key("alt+v", "a")
    host.expect(demo.settled().changed(before) > 200, "the fit changes nothing")
    demo.key("alt+v", "b", "Down", "Return")
    shown = demo.settled()
    host.expect(shown.at(hand.left + 3, hand.top + 3) == DARK_BLUE, "the background is not dark blue")
    # The snap kinds are at the right of the status bar.
    modes = (shown.width - 160, shown.height - 18, 130, 14)
    demo.key("alt+s", "Return")
    host.expect(demo.settled().part(*modes) != shown.part(*modes), "the snap to ends is still told")
    demo.key("alt+s", "Return")
    host.expect(demo.settled().part(*modes) == shown.part(*modes), "the snap to ends does not come back")


def compare(path, height):
    kinds = {}
    for thing in drawing.read_drawing(open(path, "rb").read())["objects"]:
        kinds.setdefault(thing["class"], []).append(thing)
    host.expect({kind: len(found) for kind, found in kinds.items()} ==
                {"CPLine": 2, "CKXVectorLabel": 1, "CTextParm": 1, "CLine": 1}, f"{kinds.keys()}")
    line = kinds["CLine"][0]["points"]
    host.expect(line == [[100.0, height - 500.0], [300.0, height - 500.0]], f"the locked line: {line}")
    host.expect(kinds["CTextParm"][0]["angle"] == 30.0, f"the angle {kinds['CTextParm'][0]['angle']}")
    plines = sorted([[x, height - y] for x, y in pline["points"]] for pline in kinds["CPLine"])
    # The first one has got (200, 200) between its last two; the mirrored one has lost (500, 100).
    wanted = [[[100, 100], [300, 100], [300, 200], [200, 200], [150, 200]], [[700, 100], [500, 200], [650, 200]]]
    host.expect(all(abs(a - b) < 1e-4 for one, other in zip(plines, wanted) for p, q in zip(one, other)
                    for a, b in zip(p, q)) and list(map(len, plines)) == [5, 3], f"the polylines: {plines}")


def main(out):
    path, saved = (os.path.join(out, name) for name in ("empty.nrv", "saved.nrv"))
    for name in (path, saved):
        if os.path.exists(name):
            os.remove(name)
    with open(path, "wb") as file:
        file.write(drawing.empty_drawing(600))
    with host.Demo(out, host.windows_path(path)) as demo:
        view = demo.find_view(demo.settled())
        hand = Hand(demo, view)
        draw(demo, hand)
        edit(demo, hand)
        look(demo, hand)
        for keys, name, wait in ((("alt+f", "a"), saved, "saved.nrv -"), (("alt+f", "o"), path, "empty.nrv -"),
                                 (("alt+f", "o"), saved, "saved.nrv -")):
            dialog = dialog_by(demo, *keys)
            demo.type(host.windows_path(name))
            demo.key("Return")
            demo.gone(dialog)
            host.wait_for(f"the title {wait}", lambda: demo.title().startswith(wait))
        compare(saved, view[3])
        demo.key("alt+f", "n")
        host.wait_for("an empty drawing", lambda: demo.title().startswith("未命名 -"))
        empty = demo.settled()
        demo.key("alt+f", "e", "s")
        host.expect(demo.settled().changed(empty) > 5000, "no section is to be seen")
        # In the parameters' box letters are typed text: the key goes to the drawing, the item back.
        for keys in (("F6",), ("alt+v", "d"), ("alt+v", "n"), ("F6",), ("alt+v", "p")):
            demo.key(*keys)
            demo.settled()
        # The section was drawn anew, so that there is a question.
        demo.key("alt+f", "x")
        demo.settled()
        demo.key("n")
        host.wait_for("the end of the program", lambda: demo.process.poll() is not None)


if __name__ == "__main__":
    host.run(main)
