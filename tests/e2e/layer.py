#!/usr/bin/env python3
"""The MFC layer installed alone, and its sample compiled by the command of afx/README.md: two clicks leave two marks, and
they are there again when the program is started anew."""
import os
import re
import subprocess

import host

RED = host.pixel(255, 0, 0)
MARK = 64  # pixels of a mark, 8 by 8


class Points(host.Demo):
    TITLE = "^Points$"
    LANGUAGE = ()


def red_pixels(window):
    shown = window.settled()
    return sum(row.count(RED) for row in map(shown.row, range(shown.height)))


def main(out):
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    sdk = os.path.join(out, "sdk")
    with open(os.path.join(root, "afx", "README.md"), encoding="utf-8") as file:
        command = re.search(r"```sh\n(.*?)```", file.read(), re.S).group(1)
    command = command.replace("build/release", os.environ["NR_BUILD"]).replace("--prefix sdk", f"--prefix {sdk}")
    command = re.sub(r"(?<![\w/])(-I)?sdk/", lambda match: (match.group(1) or "") + sdk + "/", command)
    done = subprocess.run(["sh", "-e", "-c", command], cwd=root, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=120)
    host.expect(done.returncode == 0, "the commands of afx/README.md fail:\n" + done.stdout)
    host.expect(not any(name[0].isupper() for name in os.listdir(os.path.join(sdk, "include", "nrafx"))),
                "an internal header was installed")

    os.chdir(out)  # where the sample keeps its file
    Points.PROGRAM = os.path.join(sdk, "bin", "points.exe")
    with Points(out) as window:
        host.expect(red_pixels(window) == 0, "marks before the first click")
        window.click(100, 100)
        window.click(200, 150)
        host.wait_for("two marks", lambda: red_pixels(window) == 2 * MARK)
        window.key("alt+F4")
        host.wait_for("the end of the program", lambda: window.process.poll() is not None)
    with Points(out) as window:
        host.expect(red_pixels(window) == 2 * MARK, "the marks were not kept")


if __name__ == "__main__":
    host.run(main)
