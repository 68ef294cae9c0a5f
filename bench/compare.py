"""Compares the ratios of a run with the stored ones: compare.py BASELINE RUN. Fails when one grew by more than a fifth."""
import json
import sys

LEAST_RATIO = 1.0  # A row below its limit may vary as it likes as long as it stays below.
GROWTH = 1.2


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        baseline = json.load(file)
    with open(sys.argv[2], encoding="utf-8") as file:
        run = json.load(file)
    worse = [
        f"{name}: ratio {run[name]['ratio']:.3f}, stored {row['ratio']:.3f}"
        for name, row in baseline.items()
        if name in run and run[name]["ratio"] > GROWTH * max(row["ratio"], LEAST_RATIO)
    ]
    for line in worse:
        print("slower:", line)
    print(f"{len(run)} rows, {len(worse)} slower than stored")
    return 1 if worse else 0


sys.exit(main())
