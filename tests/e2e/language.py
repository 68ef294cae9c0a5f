#!/usr/bin/env python3
"""The demo in English and in Chinese: titles, messages and menus follow the command line, and the same keys work."""
import os

import drawing
import host


class English(host.Demo):
    LANGUAGE = ("--lang", "en")


def visit(kind, out, path, untitled, box):
    """A line by the menu's mnemonics, and the question of a drawing that is not saved; gives the picture at first."""
    with kind(out, host.windows_path(path)) as demo:
        first = demo.settled()
        left, top, _, _ = demo.find_view(first)
        demo.key("alt+d", "l")
        demo.settled()
        demo.click(left + 100, top + 100)
        demo.click(left + 300, top + 200)
        host.wait_for("the mark of the line", lambda: "*" in demo.title())
        before = demo.windows()
        demo.key("ctrl+n")
        question = demo.dialog(before)
        name = host.xdo("getwindowname", question)[1].strip()
        host.expect(name == box, f"the question is titled {name}")
        demo.settled()
        demo.key("n")
        demo.gone(question)
        host.wait_for("a drawing without a name", lambda: demo.title() == f"{untitled} - {box}")
        return first


def main(out):
    path = os.path.join(out, "empty.nrv")
    with open(path, "wb") as file:
        file.write(drawing.empty_drawing(600))
    chinese = visit(host.Demo, out, path, "未命名", "NRVectorView 演示")
    english = visit(English, out, path, "Untitled", "NRVectorView demo")
    # The menu bar is in the rows above the toolbar.
    bars = [picture.part(0, 0, 500, 60) for picture in (chinese, english)]
    host.expect(host.differing(*bars) > 200, "the menu bars are alike")


if __name__ == "__main__":
    host.run(main)
