#!/usr/bin/env python3
"""The smallest host of the README, compiled by the README's own command: its window shows the line that it added, and
two clicks of the user draw another."""
import os
import re
import subprocess

import host

RED = host.pixel(255, 0, 0)


class MinimalHost(host.Demo):
    PROGRAM = "minimal.exe"
    LANGUAGE = ()
    TITLE = "^A part$"


def command_of(readme):
    """The one shell block that compiles, as a stranger would copy it."""
    blocks = [block for block in re.findall(r"```sh\n(.*?)```", readme, re.S) if "MinimalHost.cpp" in block]
    host.expect(len(blocks) == 1, f"{len(blocks)} commands in the README compile the smallest host")
    return blocks[0]


def main(out):
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    build = os.path.relpath(os.environ["NR_BUILD"], root)
    with open(os.path.join(root, "README.md"), encoding="utf-8") as file:
        command = command_of(file.read()).replace("build/release", build)
    program = os.path.join(os.environ["NR_BUILD"], "bin", MinimalHost.PROGRAM)
    if os.path.exists(program):
        os.remove(program)
    compiled = subprocess.run(["sh", "-e", "-c", command], cwd=root, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, timeout=120)
    host.expect(compiled.returncode == 0 and os.path.exists(program), "the README's command fails:\n" + compiled.stdout)

    with MinimalHost(out) as demo:
        demo.move(demo.x + 5, demo.y + 5)
        shown = demo.settled()
        red = sum(row.count(RED) for row in map(shown.row, range(shown.height)))
        host.expect(red > 300, f"{red} pixels of the added line")
        left, top = demo.x + demo.width // 2, demo.y + demo.height // 4
        demo.click(left, top)
        demo.click(left + 200, top + 40)
        demo.move(demo.x + 5, demo.y + 5)
        drawn = host.wait_for("the user's line", lambda: demo.settled().changed(shown))
        host.expect(drawn > 150, f"{drawn} pixels of the user's line")


if __name__ == "__main__":
    host.run(main)
