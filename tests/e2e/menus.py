#!/usr/bin/env python3
"""Every menu item that no other script chooses does what it says: it is chosen by its mnemonics and its effect is looked for.
All items tell in the status bar what they do, and those that can't do anything are disabled."""
import os
import time

import drawing
import host
from part import Hand

YELLOW = host.pixel(255, 255, 0)
BLUE = host.pixel(0, 0, 255)  # Of grips.
DARK_BLUE = host.pixel(16, 32, 64)
DARK_GREY = host.pixel(48, 48, 48)
# The mnemonic of each menu, its items without those that open another menu, and how many different texts they have:
# commands that begin alike, and the kinds of snap, share theirs.
TEXTS = (("f", 9, (6, 7), 7), ("v", 7, (1,), 6), ("d", 10, (), 7), ("e", 18, (), 17), ("s", 5, (), 2), ("h", 1, (), 1))


def dialog_by(demo, *keys):
    """Chooses what opens a dialog, and gives that."""
    before = demo.windows()
    demo.key(*keys)
    dialog = demo.dialog(before)
    demo.settled()
    return dialog


def status(demo):
    """The prompt's place in the status bar, once it has stood still for a moment."""
    def grab():
        return host.grab(demo.x + 4, demo.y + demo.height - 20, 300, 16)
    kept = grab()
    still = 0
    while still < 3:
        time.sleep(0.03)
        now = grab()
        still = still + 1 if now.data == kept.data else 0
        kept = now
    return kept


def tell(demo):
    """Walks through all menus: what the status bar says of each item."""
    for menu, count, submenus, different in TEXTS:
        demo.key(f"alt+{menu}")
        demo.settled()
        texts = []
        for i in range(count):
            if i > 0:
                demo.key("Down")
            shown = status(demo)
            if i not in submenus:
                host.expect(shown.data.count(shown.at(0, 0)) < 300 * 16 - 40, f"item {i} of {menu} says nothing")
                texts.append(bytes(shown.data))
        demo.key("Escape", "Escape")
        demo.settled()
        host.expect(len(set(texts)) == different, f"{len(set(texts))} texts in the menu {menu} instead of {different}")


def refuse(demo):
    """In an empty drawing the mnemonics of disabled items close the menu, and that is all."""
    before = demo.windows()
    ready = demo.settled()
    prompt = status(demo)
    for menu, letters in (("e", "uytcrmoikxejgadb"), ("f", "vp"), ("v", "adn")):
        for letter in letters:
            demo.key(f"alt+{menu}", letter)
            host.expect(status(demo).data == prompt.data and demo.windows() == before,
                        f"{letter} of the menu {menu} does something in an empty drawing")
    host.expect(demo.settled().changed(ready) == 0, "the window has changed")


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
    # The snap kinds are at the right of the status bar.
    shown = demo.settled()
    modes = (shown.width - 150, shown.height - 18, 120, 14)
    told = {bytes(shown.part(*modes))}
    for i in range(4):
        demo.key("alt+s", *["Down"] * i, "Return")
        told.add(bytes(demo.settled().part(*modes)))
        demo.key("alt+s", *["Down"] * i, "Return")
        host.expect(demo.settled().part(*modes) == shown.part(*modes), f"the kind {i} of snap does not come back")
    host.expect(len(told) == 5, "a kind of snap that is off is still told")


def choose_background(demo, item):
    demo.key("alt+v", "b", *["Down"] * item, "Return")
    return demo.settled()


def backgrounds(demo, hand):
    """Lines are seen on each: white ones on dark backgrounds, black ones on the white one. A dimension too, which takes no
    colour from the drawing."""
    place = hand.left + 100, hand.top + 500, 200, 1  # The locked line.
    hand.move(700, 450)
    black = demo.settled()
    host.expect(black.part(*place).count(host.WHITE) > 190, "no white line on black")
    for item, color, line in ((1, DARK_BLUE, host.WHITE), (2, DARK_GREY, host.WHITE), (3, host.WHITE, host.BLACK)):
        shown = choose_background(demo, item)
        host.expect(shown.at(hand.left + 3, hand.top + 3) == color, f"the background {item} is not to be seen")
        host.expect(shown.part(*place).count(line) > 190, f"the line is not to be seen on the background {item}")
    hand.command("d", "d")
    for x, y in ((560, 560), (760, 560), (760, 600)):
        hand.click(x, y)
    hand.command("d", "l")
    hand.click(560, 520)
    hand.click(760, 520)
    hand.move(700, 450)
    shown = demo.settled()
    for what, y in (("dimension", 600), ("line", 520)):
        found = shown.part(hand.left + 570, hand.top + y, 180, 1).count(host.BLACK)
        host.expect(found > 150, f"a new {what} is not to be seen on white: {found}")
    # The lines come back with the background, and what was drawn since with the undo.
    choose_background(demo, 0)
    shown = demo.settled()
    host.expect(shown.part(hand.left + 570, hand.top + 600, 180, 1).count(host.WHITE) > 150, "no white dimension on black")
    demo.key("ctrl+z", "ctrl+z", "ctrl+z", "ctrl+z")
    host.expect(demo.settled().at(hand.left + 3, hand.top + 3) == DARK_GREY, "the undo does not lead to the dark grey")
    hand.command("d", "l")
    hand.click(560, 520)
    hand.click(760, 520)
    hand.move(700, 450)
    host.expect(demo.settled().part(hand.left + 570, hand.top + 520, 180, 1).count(host.WHITE) > 170,
                "a new line is not to be seen after the undo")
    demo.key("ctrl+z", "ctrl+z", "ctrl+z")
    demo.settled()


def clipboard(demo, hand):
    """Copied, placed by a click, taken back; all by the menus."""
    demo.settled()
    demo.key("alt+e", "a")
    host.expect(BLUE in demo.settled().part(hand.left + 95, hand.top + 495, 11, 11), "the locked line has no grip")
    demo.key("alt+e", "j")
    demo.key("alt+e", "d")
    before = demo.settled()
    demo.key("alt+e", "p")
    hand.move(300, 580)
    hand.click(310, 580)
    hand.move(700, 450)
    host.expect(demo.settled().changed(before) > 400, "no objects are placed")
    demo.key("alt+e", "u")
    host.expect(demo.settled().part(*hand.view) == before.part(*hand.view), "the paste is not taken back")
    demo.key("alt+e", "g")
    demo.settled()
    hand.click(200, 500)
    hand.command("e", "c")
    hand.click(600, 450)
    hand.click(600, 470)
    hand.move(700, 450)
    host.expect(demo.settled().part(hand.left + 110, hand.top + 520, 80, 1).count(host.WHITE) > 70, "no copy of the line")
    demo.key("alt+e", "u")
    demo.key("x")  # Any key deselects.
    printing = dialog_by(demo, "alt+f", "p")  # Without a printer it says so.
    demo.key("Escape")
    demo.gone(printing)


def examples(demo, hand):
    """By the menu, and by the strip over an empty drawing, one click each."""
    for letter in "btp":
        empty = demo.settled()
        demo.key("alt+f", "e", letter)
        host.expect(demo.settled().changed(empty) > 2000, f"no example by {letter}")
        demo.key("ctrl+n")
    seen = set()
    for x in (70, 120, 190):
        empty = demo.settled()
        hand.click(x, 18)
        shown = demo.settled()
        host.expect(shown.changed(empty) > 2000, f"no example at {x} in the strip")
        seen.add(bytes(shown.data))
        demo.key("ctrl+n")
    host.expect(len(seen) == 3, "the strip opens one example twice")
    demo.settled()


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
        refuse(demo)
        draw(demo, hand)
        edit(demo, hand)
        backgrounds(demo, hand)
        clipboard(demo, hand)
        tell(demo)
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
        examples(demo, hand)
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
