#!/usr/bin/env python3
"""Prints which lines of Source/ ran: coverage.py BUILD, the folder of a build with --coverage whose programs have run.

Each source's share, the whole, and every block of lines that did not run, with its first line.
"""
import json
import os
import subprocess
import sys

GCOV = "x86_64-w64-mingw32-gcov-posix"


def counts_of(build):
    """For each file of Source/: the counts of its lines, the largest where several modules have the line."""
    counts = {}
    for folder, _, names in os.walk(os.path.join(build, "Source")):
        for name in sorted(names):
            if not name.endswith(".gcda"):
                continue
            listing = subprocess.run([GCOV, "--json-format", "--stdout", os.path.join(folder, name)], check=True,
                                     capture_output=True, text=True, cwd=build).stdout
            for line in listing.splitlines():
                for file in json.loads(line)["files"]:
                    source = file["file"]
                    if "/Source/" not in "/" + source:
                        continue
                    lines = counts.setdefault(os.path.basename(source), {})
                    for each in file["lines"]:
                        number = each["line_number"]
                        lines[number] = max(lines.get(number, 0), each["count"])
    return counts


def blocks_of(lines):
    """The blocks that did not run, as pairs of first and last line; lines without code do not end a block."""
    first = last = None
    for number in sorted(lines):
        if lines[number] == 0:
            first, last = first or number, number
        elif first:
            yield first, last
            first = None
    if first:
        yield first, last


def main(build):
    counts = counts_of(build)
    if not counts:
        sys.exit("no counts: nothing of Source/ has run")
    every = run = 0
    missed = []
    source = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "Source")
    for name in sorted(counts):
        lines = counts[name]
        every += len(lines)
        run += sum(1 for count in lines.values() if count)
        print(f"{name:40} {100 * sum(1 for count in lines.values() if count) / len(lines):6.1f} % of {len(lines)}")
        with open(os.path.join(source, name), encoding="utf-8") as file:
            text = file.read().splitlines()
        missed += [f"{name}:{first}-{last}: {text[first - 1].strip()}" for first, last in blocks_of(lines)]
    print(f"Not run, {len(missed)} blocks:")
    print("\n".join(missed))
    print(f"{100 * run / every:.2f} % of {every} lines of Source/ ran")


if __name__ == "__main__":
    main(sys.argv[1])
