"""How cost grows as the work grows: the same programs at several sizes."""

import collections
import dataclasses
import statistics
import sys

from .commands import run_parts, run_script
from .trace import OURS


@dataclasses.dataclass(frozen=True)
class Curve:
    """A row of what a program reports, ours or that of the floor."""

    row: str
    side: str
    title: str


@dataclasses.dataclass(frozen=True)
class Growth:
    key: str
    title: str
    # What is counted along the bottom, and what the figures are.
    what: str
    unit: str
    sizes: tuple
    curves: tuple
    doubling: bool = False


def both(row, title):
    return Curve(row, "ours", title), Curve(row, "peer", f"{title}: bare")


GROWTHS = (
    Growth("windows", "Window search", "top-level windows", "ms", (50, 100, 200, 400, 800),
           (*both("search_literal", "literal"), *both("search_regex", "pattern"))),
    Growth("children", "Lookup among siblings", "siblings", "ms", (125, 250, 500, 1000, 2000),
           (*both("position_flat", "by position"), Curve("id_flat", "ours", "by ID"),
            Curve("path_flat", "ours", "by path"))),
    Growth("depth", "Lookup in a chain", "depth of the chain", "ms", (4, 6, 8, 10, 12),
           (*both("position_deep", "by position"), Curve("path_deep", "ours", "by path")), doubling=True),
    Growth("script", "ValidateScript", "lines", "ms", (1250, 2500, 5000, 10_000, 20_000),
           (Curve("script", "ours", "all of it"), Curve("script", "peer", "its tokens"))),
    Growth("threads", "Threads that validate 500 lines each", "threads", "ms", (1, 2, 4, 8, 16),
           (Curve("threads", "ours", "until all have done"),)),
    Growth("log", "Trace lines", "lines in the file", "ms", (50_000, 100_000, 200_000, 400_000, 800_000),
           (Curve("log", "ours", "until all are in the file"),)),
)
QUICK_SIZES = (1, 2, 3, 4)


def run_at(programs, key, size, pairs):
    """The figures of one size, in microseconds: row, side, value."""
    shape = {"windows": 1, "children": 1, "depth": 1}
    if key in shape:
        figures = run_parts(programs, pairs, **(shape | {key: size}))
    elif key == "script":
        figures = run_script(programs, "script", size, pairs)
    elif key == "threads":
        figures = run_script(programs, "threads", 500, size)
    else:
        name, check = OURS
        seconds = programs.run(name, "--measure", "throughput", "--threads", "1", "--lines", str(size),
                               check=check)["seconds"]
        figures = {"rows": {"log": {"ours": [seconds * 1e6]}}}
    for row, sides in figures["rows"].items():
        for side, values in sides.items():
            for value in values:
                yield row, side, value


def measure_growth(programs, runs, quick):
    """key -> sizes and, by curve, the median in milliseconds at each."""
    measured = {}
    for growth in GROWTHS:
        sizes = QUICK_SIZES if quick else growth.sizes
        lines = {curve.title: [] for curve in growth.curves}
        for size in sizes:
            print(f"   {growth.what}: {size}", file=sys.stderr, flush=True)
            figures = collections.defaultdict(list)
            for _ in range(runs):
                for row, side, value in run_at(programs, growth.key, size, 1 if quick else 3):
                    figures[row, side].append(value)
            for curve in growth.curves:
                lines[curve.title].append(statistics.median(figures[curve.row, curve.side]) / 1000)
        measured[growth.key] = {"sizes": list(sizes), "curves": lines}
    return measured


def print_growth(measured):
    """A Markdown table for each."""
    for growth in GROWTHS:
        one = measured[growth.key]
        print(f"| {growth.title}, {growth.unit} | " + " | ".join(f"{size:,}" for size in one["sizes"]) + " |")
        print("|---" * (len(one["sizes"]) + 1) + "|")
        for title, values in one["curves"].items():
            print(f"| {title} | " + " | ".join(f"{value:,.0f}" if value >= 1000 else f"{value:.3g}"
                                              for value in values) + " |")
        print()
