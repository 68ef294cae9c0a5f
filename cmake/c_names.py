#!/usr/bin/env python3
"""Lists the functions of the C interface for import libraries: c_names.py HEADER OUT, the module definition file."""
import re
import sys


def names_of(header):
    with open(header, encoding="utf-8") as file:
        text = re.sub(r"/\*.*?\*/", "", file.read(), flags=re.S)
    return sorted(re.findall(r"NRV_API \w+ NRV_CALL (\w+)\(", text))


if __name__ == "__main__":
    with open(sys.argv[2], "w", encoding="ascii") as out:
        out.write("LIBRARY NRVectorView.dll\nEXPORTS\n" + "".join(f"  {name}\n" for name in names_of(sys.argv[1])))
