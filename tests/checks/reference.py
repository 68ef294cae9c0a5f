#!/usr/bin/env python3
"""Each function, constant, record and field of the C interface has a comment: Doxygen finds none without.

reference.py [TREE]
"""
import os
import re
import subprocess
import sys

import common

SETTINGS = """
INPUT = {root}/capi/include/nrview.h
INPUT_FILTER = "python3 -B {root}/cmake/doxygen_filter.py"
GENERATE_HTML = NO
GENERATE_XML = YES
GENERATE_LATEX = NO
QUIET = YES
MACRO_EXPANSION = YES
EXPAND_ONLY_PREDEF = YES
PREDEFINED = NRV_CALL=
"""


def problems_of(root):
    # It makes a folder for its output where it runs, even when there is none.
    done = subprocess.run(["doxygen", "-"], input=SETTINGS.format(root=root), cwd=os.environ["NR_OUT"], capture_output=True,
                          text=True, check=False)
    if done.returncode != 0:
        yield f"doxygen ends with {done.returncode}: {done.stderr}"
    for line in done.stderr.splitlines():
        yield re.sub(r"^.*?(nrview\.h:\d+): warning: ", r"\1: ", line)


if __name__ == "__main__":
    common.report(list(problems_of(common.root_of(sys.argv))))
