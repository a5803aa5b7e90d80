#!/usr/bin/env python3
"""Runs the benchmarks and prints their table.

Each figure is the median of several runs, with the lowest and the highest. What is compared runs in turns (ours, the
peer's, ours, ...), each time in a new process and a new folder. What the programs have written is counted: a run that
has lost or spoilt a line is void and ends the whole. A goal that is missed does not.
"""

import argparse
import collections
import dataclasses
import json
import math
import pathlib
import sys
import tempfile

from benchmarks.commands import measure_commands, measure_parts, measure_script
from benchmarks.growth import measure_growth, print_growth
from benchmarks.programs import ROOT, Programs, Void
from benchmarks.rows import ROWS
from benchmarks.table import evaluate, print_table
from benchmarks.tool import measure_tool
from benchmarks.trace import measure_calls, measure_library, measure_lines, measure_messages


@dataclasses.dataclass(frozen=True)
class Sizes:
    runs: int
    lines: int
    messages: int
    script_lines: int
    controls: int
    checked_lines: int
    command_pairs: int
    characters: int
    windows: int
    children: int
    depth: int
    part_pairs: int
    script_pairs: int
    validated_lines: int
    refusals: int

    @property
    def typing_pairs(self):
        """Of each run: at least 15 in all."""
        return math.ceil(15 / self.runs)


FULL = Sizes(runs=9, lines=400_000, messages=100_000, script_lines=1000, controls=1000, checked_lines=100_000,
             command_pairs=100, characters=1000, windows=300, children=1000, depth=10, part_pairs=5,
             script_pairs=2, validated_lines=10_000, refusals=5000)
QUICK = Sizes(runs=1, lines=4_000, messages=2_000, script_lines=100, controls=50, checked_lines=1000, command_pairs=5,
              characters=50, windows=20, children=50, depth=5, part_pairs=2, script_pairs=2,
              validated_lines=200, refusals=50)


GROWTH_RUNS = 3


def measure_all(programs, sizes):
    """(row, side) -> the figures of all runs."""
    figures = collections.defaultdict(list)
    for run in range(sizes.runs):
        print(f"   run {run + 1} of {sizes.runs}", file=sys.stderr, flush=True)
        for results in (measure_commands(programs, sizes), measure_parts(programs, sizes),
                        measure_script(programs, sizes),
                        *(measure_lines(programs, sizes, threads) for threads in (1, 2, 4, 8)),
                        measure_calls(programs, sizes), measure_messages(programs, sizes),
                        measure_library(programs, sizes),
                        measure_tool(programs.programs, programs.before, programs.work, sizes)):
            for key, side, value in results:
                figures[key, side].append(value)
    return figures


def positive(text):
    number = int(text)
    if number <= 0:
        raise argparse.ArgumentTypeError("a number above zero")
    return number


def read_options():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--runs", type=positive, help=f"runs for each figure ({FULL.runs}; {QUICK.runs} when quick)")
    parser.add_argument("--quick", action="store_true", help="a short run, whose figures say little")
    parser.add_argument("--json", action="store_true", help="JSON in place of the table")
    parser.add_argument("--growth", action="store_true",
                        help=f"how cost grows with the work, as tables and plots ({GROWTH_RUNS} runs for each figure)")
    parser.add_argument("--images", type=pathlib.Path, default=ROOT / "docs" / "images",
                        help="the folder of the plots")
    parser.add_argument("--programs", type=pathlib.Path, default=ROOT / "build" / "x64-release" / "bin",
                        help="the folder of the benchmark programs")
    return parser.parse_args()


def run_growth(programs, options):
    # Only here: nobody else needs what draws.
    from benchmarks.plot import draw_growth

    measured = measure_growth(programs, options.runs or (1 if options.quick else GROWTH_RUNS), options.quick)
    draw_growth(measured, options.images)
    if options.json:
        print(json.dumps(measured, indent=2))
    else:
        print_growth(measured)


def run_table(programs, options):
    sizes = QUICK if options.quick else FULL
    sizes = dataclasses.replace(sizes, runs=options.runs or sizes.runs)
    figures = measure_all(programs, sizes)
    results = [evaluate(row, figures) for row in ROWS]
    if options.json:
        print(json.dumps({"runs": sizes.runs, "quick": options.quick, "rows": results}, indent=2))
    else:
        print_table(results)


def main():
    options = read_options()
    try:
        # Beside the programs: on the disk of the build, whichever that is.
        with tempfile.TemporaryDirectory(prefix="bench-", dir=options.programs.resolve().parent) as work:
            programs = Programs(options.programs.resolve(), pathlib.Path(work))
            (run_growth if options.growth else run_table)(programs, options)
    except (Void, OSError) as fault:
        print(f"bench: void: {fault}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
