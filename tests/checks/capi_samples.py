#!/usr/bin/env python3
"""The samples that no compiler here sees declare the C interface as capi/include/nrview.h does: each function with the kinds
of its arguments, each record with its fields and their places, each constant with its number. The samples in C, and the C
blocks of docs/c-interface.md, are compiled against the header alone.

capi_samples.py [TREE]
"""
import ctypes
import importlib.util
import os
import re
import subprocess
import sys

import common

KINDS = {"void": "void", "double": "double", "int32_t": "int32", "uint32_t": "uint32", "uint64_t": "uint64", "uintptr_t": "uint64",
         "NrvId": "uint64", "NrvResult": "int32", "NrvHandle": "pointer", "NrvCallback": "pointer", "str16": "pointer",
         "int": "int32", "uint": "uint32", "ulong": "uint64", "IntPtr": "pointer", "UIntPtr": "uint64", "string": "pointer",
         "StringBuilder": "pointer", "uint8_t": "uint8", "NrvPoint": "NrvPoint", "NrvEventHeader": "NrvEventHeader"}


def kind_of(declaration):
    """double, int32, uint32, uint64 or pointer, of an argument or field as C, C# or a prototype for koffi declares it."""
    if re.search(r"[*\[]|\b(?:out|ref)\b", declaration):
        return "pointer"
    words = [word for word in re.findall(r"\w+", declaration) if word not in ("const", "public")]
    return KINDS.get(words[0], words[0])


def arguments_of(text):
    return [kind_of(argument) for argument in text.split(",") if argument.strip() not in ("", "void")]


def functions_in(text, pattern):
    return {name: (KINDS[result], arguments_of(arguments)) for result, name, arguments in re.findall(pattern, text)}


def fields_in(body, pattern=r"([\w\s*]+?[\s*])(\w+);"):
    return [(name, kind_of(kind)) for kind, name in re.findall(pattern, body)]


class Interface:
    """What a header or a sample declares."""

    def __init__(self, functions, records, constants):
        self.functions, self.records, self.constants = functions, records, constants


def without_comments(text):
    return re.sub(r"/\*.*?\*/|//[^\n]*", " ", text, flags=re.S)


def numbers_in(text):
    return {name: int(number, 0) for name, number in re.findall(r"\b(NRV_[A-Z0-9_]+)\s*=\s*(-?\w+)", text)}


def header(root):
    text = without_comments(common.text_of(root, "capi", "include", "nrview.h"))
    functions = functions_in(text, r"NRV_API (\w+) NRV_CALL (Nrv\w+)\(([^)]*)\)")
    functions.update(functions_in(text, r"typedef (\w+)\(NRV_CALL\* (NrvCallback)\)\(([^)]*)\)"))
    records = {name: fields_in(body) for body, name in re.findall(r"typedef struct \w+ \{(.*?)\}\s*(\w+);", text, re.S)}
    constants = numbers_in(text)
    constants.update(re.findall(r'#define (NRV_\w+_CLASS) L"(\w+)"', text))
    return Interface(functions, records, constants)


def python_kind(kind):
    names = {ctypes.c_double: "double", ctypes.c_int32: "int32", ctypes.c_uint32: "uint32", ctypes.c_uint64: "uint64"}
    return names.get(kind, kind.__name__ if issubclass(kind, ctypes.Structure) else "pointer")


def python_sample(root):
    place = importlib.util.spec_from_file_location("sample", os.path.join(root, "samples", "hosts", "python", "rectangle.py"))
    sample = importlib.util.module_from_spec(place)
    place.loader.exec_module(sample)
    records = {name: [(field, python_kind(kind)) for field, kind in thing._fields_] for name, thing in vars(sample).items()
               if isinstance(thing, type) and issubclass(thing, ctypes.Structure)}
    functions = {name: ("int32", [python_kind(kind) for kind in kinds]) for name, kinds in sample.FUNCTIONS.items()}
    callback = sample.NrvCallback
    functions["NrvCallback"] = ("int32" if callback._restype_ else "void", [python_kind(kind) for kind in callback._argtypes_])
    return Interface(functions, records, {name: value for name, value in vars(sample).items() if name.startswith("NRV_")})


def csharp_sample(root):
    text = without_comments(common.text_of(root, "samples", "hosts", "csharp", "Rectangle.cs"))
    records = {name: fields_in(body, r"public ([\w.]+ )(\w+);") for name, body in
               re.findall(r"public struct (\w+)\s*\{(.*?)\}", text, re.S)}
    constants = numbers_in(text)
    constants["NRV_PARM_VIEW_CLASS"] = re.search(r'ClassName = "(\w+)"', text).group(1)
    return Interface(functions_in(text, r"static extern (\w+) (Nrv\w+)\(([^)]*)\)"), records, constants)


def javascript_sample(root):
    text = without_comments(common.text_of(root, "samples", "hosts", "javascript", "rectangle.js"))
    records = {name: [(field, kind_of(kind)) for field, kind in re.findall(r"(\w+): '?([\w*]+)'?", body)]
               for name, body in re.findall(r"koffi\.struct\('(\w+)', \{(.*?)\}\)", text, re.S)}
    constants = numbers_in(text)
    constants.update(re.findall(r"(NRV_\w+_CLASS) = '(\w+)'", text))
    return Interface(functions_in(text, r"'(\w+) (Nrv\w+)\(([^)]*)\)'"), records, constants)


def differences(name, sample, declared):
    for what, ours, theirs in (("function", sample.functions, declared.functions), ("record", sample.records, declared.records),
                               ("constant", sample.constants, declared.constants)):
        if not ours:
            yield f"{name}: no {what} was found"
        for key, value in ours.items():
            if key not in theirs:
                yield f"{name}: the header has no {what} {key}"
            elif value != theirs[key]:
                yield f"{name}: {what} {key} is {value}, in the header {theirs[key]}"


def used_undeclared(name, text, sample):
    """Functions that are called and not declared."""
    for called in sorted(set(re.findall(r"\b(Nrv[A-Z]\w*)\(", text)) - set(sample.functions)):
        if called not in sample.records:
            yield f"{name}: calls {called}, which it does not declare"


def compiled(root, *arguments, **more):
    """What the C compiler says to a source; nothing when it accepts it."""
    done = subprocess.run(["x86_64-w64-mingw32-gcc-posix", "-std=c11", "-pedantic", "-Wall", "-Wextra", "-Werror", "-DUNICODE",
                           "-D_UNICODE", "-fsyntax-only", "-Icapi/include", *arguments], cwd=root, capture_output=True, text=True,
                          check=False, **more)
    return [done.stderr] if done.returncode != 0 else []


def program_of(page):
    """A source with each C block of a page as the body of a function, after their includes and what the page takes for granted."""
    blocks = re.findall(r"^```c\n(.*?)^```", page, re.S | re.M)
    includes = [line for block in blocks for line in re.findall(r"^#include .*$", block, re.M)]
    bodies = [re.sub(r"^#include .*$", "", block, flags=re.M) for block in blocks]
    return "\n".join([*includes, "extern HWND parent, view;", "extern HINSTANCE instance;", "extern NrvHandle drawing;",
                      "extern NrvId id;", *(f"void block{i}(void) {{\n{body}}}" for i, body in enumerate(bodies, 1))])


def problems_of(root):
    declared = header(root)
    for name, read in (("python/rectangle.py", python_sample), ("csharp/Rectangle.cs", csharp_sample),
                       ("javascript/rectangle.js", javascript_sample)):
        sample = read(root)
        yield from differences(name, sample, declared)
        yield from used_undeclared(name, common.text_of(root, "samples", "hosts", name), sample)
    for name in ("c/rectangle.c", "dialog/rectangle.c"):
        yield from compiled(root, os.path.join("samples/hosts", name))
    page = program_of(common.text_of(root, "docs", "c-interface.md"))
    yield from (f"docs/c-interface.md: {said}" for said in compiled(root, "-Wno-unused", "-xc", "-", input=page))


if __name__ == "__main__":
    sys.dont_write_bytecode = True
    common.report(list(problems_of(common.root_of(sys.argv))))
