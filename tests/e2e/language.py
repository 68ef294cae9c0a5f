#!/usr/bin/env python3
"""The demo in English and in Chinese: titles, messages and menus follow the command line, and the same keys work."""
import os

import drawing
import host


class English(host.Demo):
    LANGUAGE = ("--lang", "en")


def title_of(window):
    return host.xdo("getwindowname", window)[1].strip()


def look_at_library(demo, left, top, text, properties, of_line):
    """The titles of the library's own windows: its text dialog, and the properties of nothing and of a line."""
    before = demo.windows()
    demo.key("alt+d", "t")
    demo.settled()
    demo.click(left + 400, top + 300)
    dialog = demo.dialog(before)
    host.expect(title_of(dialog) == text, f"the text dialog is titled {title_of(dialog)}")
    demo.settled()
    demo.key("Escape")
    demo.gone(dialog)
    demo.key("Escape")
    demo.settled()
    demo.key("alt+v", "r")
    window = demo.dialog(before)
    host.expect(title_of(window) == properties, f"the property window is titled {title_of(window)}")
    demo.click(left + 200, top + 150)
    host.wait_for(f"the properties of a line, titled {of_line}", lambda: title_of(window) == of_line)
    demo.settled()
    demo.grab().save(os.path.join(demo.out, f"properties-{properties}.png"))
    demo.key("alt+v", "r")
    demo.gone(window)


def visit(kind, out, path, untitled, box, *windows):
    """A line by the menu's mnemonics, the library's windows, and the question of a drawing that is not saved; gives the
    picture at first."""
    with kind(out, host.windows_path(path)) as demo:
        first = demo.settled()
        left, top, _, _ = demo.find_view(first)
        demo.key("alt+d", "l")
        demo.settled()
        demo.click(left + 100, top + 100)
        demo.click(left + 300, top + 200)
        host.wait_for("the mark of the line", lambda: "*" in demo.title())
        look_at_library(demo, left, top, *windows)
        before = demo.windows()
        demo.key("ctrl+n")
        question = demo.dialog(before)
        name = title_of(question)
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
    chinese = visit(host.Demo, out, path, "未命名", "NRVectorView 演示", "文字编辑器", "属性", "属性-直线")
    english = visit(English, out, path, "Untitled", "NRVectorView demo", "Text", "Properties", "Properties: Line")
    # The menu bar is in the rows above the toolbar.
    bars = [picture.part(0, 0, 500, 60) for picture in (chinese, english)]
    host.expect(host.differing(*bars) > 200, "the menu bars are alike")


if __name__ == "__main__":
    host.run(main)
