#!/usr/bin/env python3
"""A line drawn with the pointer, saved under a name typed into the dialog, and loaded again by a new process: the
stored bytes say that line, and the pixels of both views agree."""
import os
import struct

import drawing
import host


def main(out):
    path = os.path.join(out, "line.nrv")
    if os.path.exists(path):
        os.remove(path)
    with host.Demo(out) as demo:
        # From the section of the start to an empty drawing in the whole window.
        demo.settled()
        demo.key("F6", "ctrl+n")
        demo.key("alt+v", "p")
        picture = demo.settled()
        left, top, width, height = demo.find_view(picture)
        host.expect(width > 800 and height > 400, f"a view of {width} by {height}")

        demo.key("alt+d", "l")
        first, second = (120, height - 90), (620, 140)
        demo.click(left + first[0], top + first[1])
        demo.move(left + 300, top + 200)
        band = demo.settled()
        view = (left, top, width, height)
        host.expect(host.differing(band.part(*view), picture.part(*view)) > 150, "no rubber band is to be seen")
        demo.click(left + second[0], top + second[1])
        demo.move(left + 30, top + 30)
        host.wait_for("the mark of a change in the title", lambda: "*" in demo.title())
        demo.key("F4")
        shown = demo.settled()

        before = demo.windows()
        demo.key("ctrl+s")
        dialog = demo.dialog(before)
        demo.settled()
        demo.type(host.windows_path(path))
        demo.key("Return")
        demo.gone(dialog)
        host.wait_for("the title to say that all is saved", lambda: demo.title().startswith("line.nrv -"))

    with open(path, "rb") as file:
        data = file.read()
    stored = drawing.read_drawing(data)
    host.expect(len(stored["objects"]) == 1, f"{len(stored['objects'])} objects")
    line = stored["objects"][0]
    # At scale 1 a drawing unit is a pixel, and y runs upwards from the lower edge of the view.
    expected = [[float(first[0]), float(height - first[1])], [float(second[0]), float(height - second[1])]]
    host.expect(line["class"] == "CLine" and line["points"] == expected, f"{line['points']} instead of {expected}")
    host.expect((line["color_index"], line["state"], line["shown"]) == (137, 2, 1), f"attributes: {line}")
    # The same in bytes: two doubles for each end, after header, class and base.
    host.expect(struct.pack("<dddd", *expected[0], *expected[1]) in data, "the ends' bytes")

    with host.Demo(out, host.windows_path(path)) as demo:
        demo.move(left + 30, top + 30)
        again = demo.settled()
        host.expect(demo.title().startswith("line.nrv -"), f"the title {demo.title()}")
        differing = host.differing(shown.part(*view), again.part(*view))
        host.expect(differing == 0, f"{differing} pixels differ after loading")
        host.expect(again.part(*view).count(host.WHITE) > 300, "the line is not to be seen")


if __name__ == "__main__":
    host.run(main)
