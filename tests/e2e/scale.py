#!/usr/bin/env python3
"""Toolbar, grips and the reach of a click follow the scale of the monitor: 100, 150 and 200 percent."""
import os

import drawing
import host
from part import Hand

BLUE = host.pixel(0, 0, 255)


def visit(out, path, percent):
    """The height of what is above the drawing, and the side of a grip; both in pixels."""
    class Scaled(host.Demo):
        LANGUAGE = ("--lang", "zh", "--scale", str(percent))

    with Scaled(out, host.windows_path(path)) as demo:
        view = demo.find_view(demo.settled())
        hand = Hand(demo, view)
        hand.command("d", "l")
        hand.click(100, 100)
        hand.click(400, 300)
        # The line runs through (250, 200).
        hand.click(250, 193)
        hand.move(600, 400)
        shown = demo.settled()
        near = any(value == BLUE for value in shown.part(hand.left + 80, hand.top + 80, 40, 40))
        if not near:
            hand.click(250, 200)
            hand.move(600, 400)
            shown = demo.settled()
        columns = [x for x in range(80, 120)
                   if BLUE in shown.part(hand.left + x, hand.top + 80, 1, 40)]
        host.expect(columns, f"no grip at {percent} %")
        shown.save(os.path.join(out, f"scale{percent}.png"))
        return view[1], columns[-1] - columns[0] + 1, near


def main(out):
    path = os.path.join(out, "empty.nrv")
    with open(path, "wb") as file:
        file.write(drawing.empty_drawing(600))
    found = [visit(out, path, percent) for percent in (100, 150, 200)]
    tops, sides, near = zip(*found)
    host.expect(tops[0] + 5 <= tops[1] and tops[1] + 5 <= tops[2], f"the toolbar does not grow: {tops}")
    host.expect(sides == (7, 9, 13), f"the grips have sides of {sides}")
    # Seven pixels up are 5.8 from the line: within 6 and 8 pixels, and not within 4.
    host.expect(near == (False, True, True), f"a click 5.8 pixels off the line hits: {near}")


if __name__ == "__main__":
    host.run(main)
