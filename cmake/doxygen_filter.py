#!/usr/bin/env python3
"""doxygen_filter.py HEADER: the header with its comments in the form that Doxygen reads.

A comment counts for all declarations after it, up to the next one or an empty line, but for those with a comment at their end,
for overrides, which have that of their base, and for what is only deleted or freed. The comment at the head of a header is
that of the file, and of the class that it names first.
"""
import re
import sys

# A declaration that a comment before the one above it does not count for.
OWN = re.compile(r"\boverride\b|= delete;|^(virtual )?~|^using |^DECLARE_|\S\s*(//|/\*)")
CLASS = re.compile(r"(?:class|struct) (?:NRVECTORVIEW_API )?(\w+)\b[^;]*$")


def split_head(text):
    """The lines of the head without their marks, and the other lines."""
    if text.startswith("/*"):
        head, _, rest = text[2:].partition("*/")
        return [re.sub(r"^ \* ?", "", line) for line in head.split("\n")], rest.split("\n")
    lines = text.split("\n")
    count = next(i for i, line in enumerate(lines) if not line.startswith("//"))
    return [line[2:].strip() for line in lines[:count]], lines[count:]


def translated(text):
    head, lines = split_head(text)
    out = ["/** @file\n" + "\n".join(head) + "\n*/"]
    group, inside, fresh, begun, depth = [], False, False, False, 0
    for line in lines:
        stripped = line.strip()
        if inside or stripped.startswith(("//", "/*")):
            if not inside and not fresh:
                group = []
            if stripped.startswith(("/* ---", "// ---")):
                out.append(line)
                group, fresh = [], False
                continue
            inside = (inside or stripped.startswith("/*")) and "*/" not in stripped
            group.append(re.sub(r"^(\s*)(//|/\*)(?![/*])", lambda m: m.group(1) + ("///" if m.group(2) == "//" else "/**"), line))
            fresh = True
            out.append(group[-1])
            continue
        if not stripped or re.match(r"(public|protected|private):", stripped) or re.match(r"}|#(?!define)", stripped):
            group, begun, depth = [], False, 0
        elif group and not fresh and not begun and not OWN.search(stripped):
            out.extend(group)
        named = CLASS.match(line)
        if named and not fresh and head and head[0].startswith(named.group(1) + ": "):
            out.append("/** " + " ".join(head).split(". Layer ")[0] + ". */")
        fresh = False
        code = re.sub(r"//.*|/\*.*?\*/", "", stripped).strip()
        depth += code.count("(") - code.count(")")
        begun = bool(code) and code[0] != "#" and (depth > 0 or not code.endswith((";", "}", ",", "{")))
        if code.endswith("{"):
            group = []
        out.append(re.sub(r"(\S\s*)(//|/\*)(?![/*<])", lambda m: m.group(1) + ("///<" if m.group(2) == "//" else "/**<"), line, count=1))
    return "\n".join(out)


if __name__ == "__main__":
    with open(sys.argv[1], encoding="utf-8") as file:
        sys.stdout.write(translated(file.read()))
