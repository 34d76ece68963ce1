#!/usr/bin/env python3
"""Prints what the program peers measured as a Markdown table: in each row and for each n the best of the others, and us.

usage: table.py [--least] [FILE]   (the standard input without a file)

With --least, by everybody's quickest round and not the median: where other programs disturb for whole seconds.
"""

import csv
import sys
from collections import defaultdict

# Whose answers differ more often than this does not answer the same question.
AGREEMENT = 0.95


def duration(nanoseconds):
    """Three digits with a unit: 1.23 us."""
    for unit, factor in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if nanoseconds >= factor:
            return f"{nanoseconds / factor:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def read(lines, column):
    """The measurements by row and n, in the order of the file."""
    measured = defaultdict(list)
    for line in csv.DictReader(lines):
        measured[line["row"], int(line["n"])].append(
            (float(line[column]), line["contestant"], float(line["agreement"])))
    return measured


def main():
    files = [argument for argument in sys.argv[1:] if argument != "--least"]
    with open(files[0], encoding="utf-8") if files else sys.stdin as lines:
        measured = read(lines, "least" if "--least" in sys.argv else "nanoseconds")
    print("| question | n | best of the others | theirs | ours | ours / theirs |")
    print("|---|--:|---|--:|--:|--:|")
    differing = []
    ratios = []
    for (row, n), results in measured.items():
        ours = next((time for time, name, _ in results if name == "ours"), None)
        others = [(time, name) for time, name, agreement in results
                  if name != "ours" and (agreement >= AGREEMENT or agreement < 0.0)]
        differing += [f"{row}, n = {n}: {name} ({agreement:.0%} the same)" for _, name, agreement in results
                      if 0.0 <= agreement < AGREEMENT]
        best = min(others, default=None)
        ratio = ours / best[0] if ours and best else None
        if ratio:
            ratios.append(ratio)
        print(f"| {row} | {n:,} | {best[1] if best else '-'} | {duration(best[0]) if best else '-'} "
              f"| {duration(ours) if ours else 'too slow'} | {f'{ratio:.2f}' if ratio else '-'} |")
    if ratios:
        print(f"\nBelow 1 in {sum(ratio < 1.0 for ratio in ratios)} of {len(ratios)}.")
    if differing:
        print("\nNot counted, since their answers differ:\n")
        for line in differing:
            print(f"- {line}")


if __name__ == "__main__":
    main()
