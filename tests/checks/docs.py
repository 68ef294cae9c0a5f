#!/usr/bin/env python3
"""The documents at the root exist, say something, and their links and the paths they name lead somewhere."""
import os
import re
import sys

import common

REQUIRED = ("README.md", "ARCHITECTURE.md", "CONTRIBUTING.md", "CHANGELOG.md", "LICENSE")
LINK = re.compile(r"\]\(([^)#\s]+)(?:#[^)]*)?\)")
# A name in backticks that looks like a file of the tree: it has a folder of ours in front and no wildcard.
PATH = re.compile(r"`((?:afx|kx|Source|capi|resources|demo|tests|bench|tools|docs|samples|cmake|\.ci)/[A-Za-z0-9_./-]*)`")


def problems_of(root):
    for name in REQUIRED:
        path = os.path.join(root, name)
        if not os.path.exists(path) or not common.text_of(path).strip():
            yield f"{name} is missing or empty"
    if os.path.exists(os.path.join(root, "CHANGELOG.md")):
        if not re.search(r"^- ", common.text_of(root, "CHANGELOG.md"), re.M):
            yield "CHANGELOG.md names no change"
    documents = [name for name in os.listdir(root) if name.endswith(".md")]
    for folder in ("afx", "docs", "samples", "tests/data", "tests/e2e"):
        if os.path.isdir(os.path.join(root, folder)):
            documents += [f"{folder}/{name}" for name in os.listdir(os.path.join(root, folder)) if name.endswith(".md")]
    for name in sorted(documents):
        text = common.text_of(root, name)
        for target in LINK.findall(text):
            if "://" not in target and not os.path.exists(os.path.join(root, os.path.dirname(name), target)):
                yield f"{name}: the link to {target} leads nowhere"
        for target in PATH.findall(text):
            if not os.path.exists(os.path.join(root, target)):
                yield f"{name}: there is no {target}"


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
