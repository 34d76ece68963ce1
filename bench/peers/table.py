#!/usr/bin/env python3
"""Prints what the program peers measured as a Markdown table: in each row and for each n the best of the others, and us.

usage: table.py [--least] [--ratios] [FILE]   (the standard input without a file)

With --ratios, a line a row. With --least, by everybody's quickest round and not the median: where other programs disturb for whole seconds.
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


class Cell:
    """What was measured in one row for one n."""

    def __init__(self, results):
        self.ours = next((time for time, name, _ in results if name == "ours"), None)
        others = [(time, name) for time, name, agreement in results
                  if name != "ours" and (agreement >= AGREEMENT or agreement < 0.0)]
        self.best, self.name = min(others, default=(None, "-"))
        self.ratio = self.ours / self.best if self.ours and self.best else None
        self.differing = [(name, agreement) for _, name, agreement in results if 0.0 <= agreement < AGREEMENT]


def print_all(cells):
    """A line for each row and n."""
    print("| question | n | best of the others | theirs | ours | ours / theirs |")
    print("|---|--:|---|--:|--:|--:|")
    for (row, n), cell in cells.items():
        print(f"| {row} | {n:,} | {cell.name} | {duration(cell.best) if cell.best else '-'} "
              f"| {duration(cell.ours) if cell.ours else 'too slow'} | {f'{cell.ratio:.2f}' if cell.ratio else '-'} |")


def print_ratios(cells):
    """A line for each row, with the ratios for all n."""
    sizes = sorted({n for _, n in cells})
    print("| question | " + " | ".join(f"{n:,}" for n in sizes) + " | best of the others |")
    print("|---|" + "--:|" * len(sizes) + "---|")
    for row in dict.fromkeys(row for row, _ in cells):
        of_row = [cells.get((row, n)) for n in sizes]
        ratios = " | ".join(f"{cell.ratio:.2f}" if cell and cell.ratio else "-" for cell in of_row)
        names = dict.fromkeys(cell.name.split()[0] for cell in of_row if cell)
        print(f"| {row} | {ratios} | {', '.join(names)} |")


def main():
    options = [argument for argument in sys.argv[1:] if argument.startswith("--")]
    files = [argument for argument in sys.argv[1:] if not argument.startswith("--")]
    with open(files[0], encoding="utf-8") if files else sys.stdin as lines:
        measured = read(lines, "least" if "--least" in options else "nanoseconds")
    cells = {key: Cell(results) for key, results in measured.items()}
    (print_ratios if "--ratios" in options else print_all)(cells)
    ratios = [cell.ratio for cell in cells.values() if cell.ratio]
    if ratios:
        print(f"\nBelow 1 in {sum(ratio < 1.0 for ratio in ratios)} of {len(ratios)}.")
    differing = [f"{row}, n = {n}: {name} ({agreement:.0%} the same)"
                 for (row, n), cell in cells.items() for name, agreement in cell.differing]
    if differing:
        print("\nNot counted, since their answers differ:\n")
        for line in differing:
            print(f"- {line}")


if __name__ == "__main__":
    main()
