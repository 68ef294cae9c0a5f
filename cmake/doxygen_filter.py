#!/usr/bin/env python3
"""doxygen_filter.py HEADER: the header with its comments in the form that Doxygen reads. A comment counts for all declarations
after it, up to the next one or an empty line."""
import re
import sys


def translated(text):
    out, group, inside, fresh, begun = ["/** @file */"], [], False, False, False
    for line in text.split("\n"):
        stripped = line.strip()
        if inside or stripped.startswith(("//", "/*")):
            if not inside and not fresh:
                group = []
            if stripped.startswith("/* ---"):
                out.append(line)
                group, fresh = [], False
                continue
            inside = (inside or stripped.startswith("/*")) and "*/" not in stripped
            group.append(re.sub(r"^(\s*)(//|/\*)(?![/*])", lambda m: m.group(1) + ("///" if m.group(2) == "//" else "/**"), line))
            fresh = True
            out.append(group[-1])
            continue
        if not stripped or re.match(r"(public|protected|private):", stripped) or stripped.startswith(("}", "#")):
            group, begun = [], False
        elif group and not fresh and not begun:
            out.extend(group)
        fresh = False
        code = re.sub(r"//.*|/\*.*?\*/", "", stripped).strip()
        begun = bool(code) and not code.endswith((";", "}", ",", "{"))
        if code.endswith("{"):
            group = []
        out.append(re.sub(r"(\S\s*)(//|/\*)(?![/*<])", lambda m: m.group(1) + ("///<" if m.group(2) == "//" else "/**<"), line, count=1))
    return "\n".join(out)


if __name__ == "__main__":
    with open(sys.argv[1], encoding="utf-8") as file:
        sys.stdout.write(translated(file.read()))
