"""Counts one CTest run by single tests: tally.py RESULTS prints "passed N" and a line "failed NAME" for each failure.

RESULTS holds ctest.junit, CTest's own record, and one GoogleTest file for each entry that came to its end. An entry
without its file has crashed; an entry that failed although its file is clean has failed after its tests (in a
destructor at exit, or by its exit code). Both count as one failure.
"""
import os
import sys
import xml.etree.ElementTree as ElementTree


def tally(results):
    """Returns (number passed, number skipped, names failed)."""
    passed, skipped, failed = 0, 0, []
    record = os.path.join(results, "ctest.junit")
    if not os.path.exists(record):
        return 0, 0, ["CTest left no record"]
    for entry in ElementTree.parse(record).getroot().iter("testcase"):
        name = entry.get("name")
        own = os.path.join(results, name.replace("/", "-") + ".xml")
        broken = []
        count = 0
        try:
            cases = list(ElementTree.parse(own).getroot().iter("testcase"))
        except (OSError, ElementTree.ParseError):
            failed.append(name + " (ended before its tests did)")
            continue
        for case in cases:
            if case.get("status") != "run":
                continue
            if case.get("result") == "skipped":
                skipped += 1
            elif case.find("failure") is not None:
                broken.append(case.get("classname") + "." + case.get("name"))
            else:
                count += 1
        if entry.get("status") != "run" and not broken:
            broken.append(name + " (failed outside its tests)")
        if not cases:
            broken.append(name + " (no test in it)")
        passed += count
        failed += broken
    return passed, skipped, failed


def main():
    passed, skipped, failed = tally(sys.argv[1])
    if skipped:
        print("skipped:", skipped)
    for name in failed:
        print("failed", name)
    print("passed", passed)


if __name__ == "__main__":
    main()
