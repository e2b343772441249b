#!/usr/bin/env python3
"""merge_benchmarks.py TARGET SOURCE...: joins the arrays of measurements and prints them as one table."""
import json
import sys
from pathlib import Path


def cell(value):
    return f"{value:,.2f}" if isinstance(value, float) else str(value)


def print_table(rows):
    columns = list(dict.fromkeys(name for row in rows for name in row))
    numeric = {name for name in columns if any(isinstance(row.get(name), (int, float)) for row in rows)}
    table = [columns] + [[cell(row.get(name, "")) for name in columns] for row in rows]
    widths = [max(len(line[i]) for line in table) for i in range(len(columns))]
    for line in table:
        print("  ".join(text.rjust(width) if name in numeric else text.ljust(width)
                        for text, width, name in zip(line, widths, columns)).rstrip())


def main():
    target, *sources = map(Path, sys.argv[1:])
    rows = [row for source in sources for row in json.loads(source.read_text())]
    target.write_text(json.dumps(rows, indent=2) + "\n")
    print_table(rows)


main()
