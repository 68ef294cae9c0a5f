#!/usr/bin/env python3
"""Each public and each protected member of the public headers has a comment: Doxygen finds none without. These are the headers
of the library and of the helper libraries that a host may include, and that of the C interface.

reference.py [TREE]
"""
import os
import re
import subprocess
import sys

import common
import layers

SETTINGS = """
INPUT = {headers}
INPUT_FILTER = "python3 -B {filter}"
GENERATE_HTML = NO
GENERATE_XML = YES
GENERATE_LATEX = NO
QUIET = YES
MACRO_EXPANSION = YES
EXPAND_ONLY_PREDEF = YES
PREDEFINED = {marks}
"""
C_HEADER = ("capi/include", "nrview.h")


def marks():
    """What cmake/Doxyfile.in has Doxygen pass over."""
    return re.search(r"^PREDEFINED = (.*)$", common.text_of(common.root_of([]), "cmake", "Doxyfile.in"), re.M).group(1)


def headers_of(root):
    found = sorted(layers.public_headers(root, layers.index_of(root, layers.LIBRARY)))
    found += [("kx", name) for name in common.files_of(root, "kx") if name.endswith(".h")]
    return [path for path in (os.path.join(root, *header) for header in [*found, C_HEADER]) if os.path.exists(path)]


def problems_of(root):
    settings = SETTINGS.format(headers=" ".join(headers_of(root)), marks=marks(),
                               filter=os.path.join(common.root_of([]), "cmake", "doxygen_filter.py"))
    # It makes a folder for its output where it runs, even when there is none.
    done = subprocess.run(["doxygen", "-"], input=settings, cwd=os.environ["NR_OUT"], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        yield f"doxygen ends with {done.returncode}: {done.stderr}"
    # The lines are those of the filtered header, which has more of them.
    yield from sorted({re.sub(r"^.*/(\w+\.h):\d+: warning: ", r"\1: ", line) for line in done.stderr.splitlines()})


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
