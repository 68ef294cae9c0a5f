#!/usr/bin/env python3
"""Lists the inline operations of exported classes for the linker: the compiler leaves them out of the DLL's table.

inline_exports.py NM OBJECT HEADERS OUT: OBJECT holds every inline function of the public headers (see InlineExports.cpp),
HEADERS is their folder, OUT the module definition file to write.
"""
import os
import re
import subprocess
import sys

CLASS = re.compile(r"class\s+NRVECTORVIEW_API\s+(\w+)")


def main(nm, obj, headers, out):
    classes = set()
    for name in os.listdir(headers):
        if name.endswith(".h"):
            with open(os.path.join(headers, name), encoding="utf-8") as file:
                classes.update(CLASS.findall(file.read()))
    owner = re.compile(r"_ZNK?(?:%s)(?=\D|\d)" % "|".join(sorted(f"{len(name)}{name}" for name in classes)))
    listing = subprocess.run([nm, "--defined-only", obj], check=True, capture_output=True, text=True).stdout
    # Functions alone; the vtables and class records carry their mark already.
    # With 32 bits the compiler puts one more underscore in front, which module definition files leave out.
    symbols = [line.split() for line in listing.replace(" __Z", " _Z").splitlines()]
    names = sorted({symbol[2] for symbol in symbols if len(symbol) == 3 and symbol[1] in "TW" and owner.match(symbol[2])})
    if not names:
        sys.exit("no inline operation was found")
    text = "EXPORTS\n" + "".join(f"  {name}\n" for name in names)
    try:
        with open(out, encoding="ascii") as file:
            if file.read() == text:
                os.utime(out)
                return
    except FileNotFoundError:
        pass
    with open(out, "w", encoding="ascii") as file:
        file.write(text)


if __name__ == "__main__":
    main(*sys.argv[1:])
