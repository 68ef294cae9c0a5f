#!/usr/bin/env python3
"""Which lines of Source/ ran: coverage.py BUILD, the folder of a build with --coverage whose programs have run.

Prints each source's share, every block of lines that did not run and is not in tools/uncovered.txt, and the whole. Ends
with 1 below the least share, when a block is not in the list, or the list has one that ran. Blocks of one source that
begin alike are listed as often as there are.
"""
import collections
import json
import os
import subprocess
import sys

GCOV = "x86_64-w64-mingw32-gcov-posix"
LEAST = 97.0
TOP = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")


def counts_of(build):
    """For each file of Source/: the counts of its lines, the largest where several units have the line."""
    counts = {}
    for folder, _, names in os.walk(os.path.join(os.path.abspath(build), "Source")):
        for name in sorted(names):
            # A unit without counts was not loaded by any program: none of its lines ran.
            if not name.endswith(".gcno"):
                continue
            listing = subprocess.run([GCOV, "--json-format", "--stdout", os.path.join(folder, name)], check=True,
                                     capture_output=True, text=True, cwd=build).stdout
            for line in listing.splitlines():
                for file in json.loads(line)["files"]:
                    source = file["file"]
                    if "/Source/" not in "/" + source:
                        continue
                    for each in file["lines"]:
                        lines = counts.setdefault(os.path.basename(source), {})
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


def listed():
    """How often the list has each (source, text of the block's first line)."""
    with open(os.path.join(TOP, "tools", "uncovered.txt"), encoding="utf-8") as file:
        lines = [line.rstrip("\n") for line in file]
    return collections.Counter(tuple(line.split(": ", 1)) for line in lines if line and not line.startswith(("#", " ")))


def main(build):
    counts = counts_of(build)
    every = run = 0
    missed = collections.defaultdict(list)
    for name in sorted(counts):
        lines = counts[name]
        ran = sum(1 for count in lines.values() if count)
        every += len(lines)
        run += ran
        print(f"{name:40} {100 * ran / len(lines):6.1f} % of {len(lines)}")
        with open(os.path.join(TOP, "Source", name), encoding="utf-8") as file:
            text = file.read().splitlines()
        for first, last in blocks_of(lines):
            missed[name, text[first - 1].strip()].append(f"{first}-{last}")
    known = listed()
    wrong = [key for key in sorted(missed.keys() | known.keys()) if len(missed[key]) != known[key]]
    for name, text in wrong:
        print(f"listed {known[name, text]} times, did not run in {missed[name, text]}: {name}: {text}")
    share = 100 * run / every if every else 0.0
    print(f"{share:.2f} % of {every} lines of Source/ ran, {sum(known.values())} blocks are listed")
    if share < LEAST:
        print(f"{LEAST} % are the least")
    return 1 if share < LEAST or wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
