#!/usr/bin/env python3
"""The documents at the root exist, say something, and their links, the paths and the names in them lead somewhere. The C++
lines of the README are those of the program that it shows."""
import os
import re
import sys

import common

REQUIRED = ("README.md", "ARCHITECTURE.md", "CONTRIBUTING.md", "CHANGELOG.md", "LICENSE")
LINK = re.compile(r"\]\(([^)#\s]+)(?:#[^)]*)?\)")
# A name in backticks that looks like a file of the tree: it has a folder of ours in front and no wildcard.
PATH = re.compile(r"`((?:afx|kx|Source|render|capi|resources|demo|tests|bench|tools|docs|samples|cmake|\.ci)/[A-Za-z0-9_./-]*)`")

FOLDERS = ("afx", "docs", "docs/images", "samples", "samples/hosts", "tests/data", "tests/e2e")
# Where names come from that a document may use, beside the folders of the map.
MORE_WORDS = ("capi/include", "cmake", "samples/hosts/cpp", "samples/hosts/c", "tests", "tests/checks", "tests/e2e", "tests/support")
SPAN = re.compile(r"`([^`\n]+)`")
BLOCK = re.compile(r"^```(?:c|cpp|text)\n(.*?)^```", re.S | re.M)
FENCED = re.compile(r"^```\w*\n.*?^```", re.S | re.M)
# What can only be a name of ours, wherever it is.
OURS = re.compile(r"\b(?:C[A-Z]+[a-z]\w*|Nrv[A-Z]\w*|NRV_\w+|NRAFX_\w+|kV[a-z]+[A-Z]\w*|Afx[A-Z]\w*)\b")
MADE = re.compile(r"\b(?:class|struct) (\w+)")


def dead_links(root, name):
    """What is wrong with the links of one document, which is named by its path below root."""
    for target in LINK.findall(common.text_of(root, name)):
        if "://" not in target and not os.path.exists(os.path.join(root, os.path.dirname(name), target)):
            yield f"{name}: the link to {target} leads nowhere"


def words_of(root):
    """Every word of the sources, and the names of their files without the endings."""
    words = set()
    for folder in set(common.read_map(root).folders) | set(MORE_WORDS):
        top = os.path.join(root, folder)
        for name in os.listdir(top) if os.path.isdir(top) else ():
            if os.path.isfile(os.path.join(top, name)) and not name.endswith((".md", ".ico", ".cur")):
                words.add(name.partition(".")[0])
                words.update(re.findall(r"\w+", common.text_of(top, name)))
    for name in ("CMakePresets.json", "run", "test"):
        if os.path.exists(os.path.join(root, name)):
            words.update(re.findall(r"\w+", common.text_of(root, name)))
    return words


def unknown_names(text, words):
    """Names of the text that are no word of the sources. A name alone in backticks has to be one, whatever it looks like."""
    made = set(MADE.findall(text))
    fenceless = BLOCK.sub("", text)
    names = {part for span in SPAN.findall(fenceless) if re.fullmatch(r"[A-Za-z_]\w*(::~?\w+)*", span)
             for part in re.findall(r"\w+", span)}
    for code in SPAN.findall(fenceless) + BLOCK.findall(text):
        names.update(OURS.findall(re.sub(r"\w+\.\.\.", "", code)))
    return sorted(names - words - made)


def readme_problems(root, name):
    """The first C++ block has lines of the smallest host alone, in its order."""
    match = re.search(r"```cpp\n(.*?)```", common.text_of(root, name), re.S)
    program = os.path.join(root, "demo", "MinimalHost.cpp")
    lines = iter([line.strip() for line in common.text_of(program).splitlines()] if os.path.exists(program) else [])
    for line in match.group(1).splitlines() if match else ():
        if line.strip() not in lines:
            yield f"{name}: the smallest host has no such line there: {line.strip()}"
            return


def translation_problems(root):
    """A page in Chinese has the code of the English one."""
    for name in ("README.md", "docs/embedding.md"):
        other = name.replace(".md", ".zh-CN.md")
        if os.path.exists(os.path.join(root, other)):
            ours, theirs = (FENCED.findall(common.text_of(root, page)) for page in (name, other))
            if ours != theirs:
                yield f"{other}: its code is not that of {name}"


def command_problems(root):
    """docs/commands.md has a heading for each command word, and no others. A section has the prompts of the demo."""
    table, words = os.path.join(root, "Source", "CommandWords.cpp"), ()
    if os.path.exists(table):
        words = set(re.findall(r'^    \{L"(\w+)", L"[^"]*", L"[^"]*", New', common.text_of(table), re.M))
        headings = re.findall(r'^### "(\w+)"', common.text_of(root, "docs", "commands.md"), re.M)
        for word in sorted(words ^ set(headings)):
            yield f"docs/commands.md: the command {word} {'is missing' if word in words else 'does not exist'}"
    texts = os.path.join(root, "demo", "demo_en.rc")
    if words and os.path.exists(texts):
        sections = dict(re.findall(r'^### "(\w+)"\n(.*?)(?=^#|\Z)', common.text_of(root, "docs", "commands.md"), re.S | re.M))
        for row in re.findall(r'ID_HOST_COMMAND_FIRST \+ \d+, "(.*?)"', common.text_of(texts)):
            word, _, *prompts = row.split("\\n")
            for prompt in prompts:
                if f'"{prompt}"' not in " ".join(sections.get(word, "").split()):
                    yield f"docs/commands.md: {word} lacks the prompt {prompt}"


def problems_of(root):
    yield from translation_problems(root)
    yield from command_problems(root)
    for name in REQUIRED:
        path = os.path.join(root, name)
        if not os.path.exists(path) or not common.text_of(path).strip():
            yield f"{name} is missing or empty"
    if os.path.exists(os.path.join(root, "CHANGELOG.md")):
        if not re.search(r"^- ", common.text_of(root, "CHANGELOG.md"), re.M):
            yield "CHANGELOG.md names no change"
    documents = [name for name in os.listdir(root) if name.endswith(".md")]
    words = words_of(root)
    for folder in FOLDERS:
        if os.path.isdir(os.path.join(root, folder)):
            documents += [f"{folder}/{name}" for name in os.listdir(os.path.join(root, folder)) if name.endswith(".md")]
    for name in sorted(documents):
        text = common.text_of(root, name)
        yield from dead_links(root, name)
        if name not in ("ARCHITECTURE.md", "afx/README.md"):  # map.py looks at the one, the other tells what is missing
            yield from (f"{name}: there is no {unknown}" for unknown in unknown_names(text, words))
        if name.startswith("README"):
            yield from readme_problems(root, name)
        for target in PATH.findall(text):
            if not os.path.exists(os.path.join(root, target)):
                yield f"{name}: there is no {target}"


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
