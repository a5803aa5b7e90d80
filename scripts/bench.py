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
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

from bench_tool import measure_tool

ROOT = pathlib.Path(__file__).resolve().parent.parent
TIME_LIMIT_S = 120
# The library sleeps that long when it is freed, by design.
SLEEP_MS = 100

TRACE_LINE = re.compile(
    rb"^\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{6,7} UTC[+-]\d\d:\d\d\] \[\d+:\d+\] \[Dialwright  40    info\] "
    rb"Window\.SetText: control \d{6} of \"Sign in\" has its new text, 3 of 5000 ms are used up\r$", re.MULTILINE)
MESSAGE = re.compile(
    rb"Window::SetText: control \d{6} of \"Sign in\" has its new text, 3 of 5000 ms are used up\r$", re.MULTILINE)
UNKNOWN_COMMAND = re.compile(rb"^\S+ Unknown command: Window\.Polish\r?$", re.MULTILINE)


class Void(Exception):
    """A run whose figures count for nothing."""


@dataclasses.dataclass(frozen=True)
class Sizes:
    lines: int
    messages: int
    script_lines: int
    controls: int
    checked_lines: int
    runs: int


FULL = Sizes(lines=400_000, messages=100_000, script_lines=1000, controls=1000, checked_lines=100_000, runs=9)
QUICK = Sizes(lines=4_000, messages=2_000, script_lines=100, controls=50, checked_lines=1000, runs=1)
LOGGED_LINES = 1000


@dataclasses.dataclass(frozen=True)
class Goal:
    """A bound of the ratio to the peer, or of our own figure."""

    of_ratio: bool
    at_least: bool
    bound: float

    def is_met(self, ours, ratio):
        value = ratio if self.of_ratio else ours
        return value >= self.bound if self.at_least else value <= self.bound

    def __str__(self):
        return f"{'at least' if self.at_least else 'at most'} {self.bound:g}{' times' if self.of_ratio else ''}"


@dataclasses.dataclass(frozen=True)
class Row:
    key: str
    title: str
    unit: str
    peer: str | None = None
    goal: Goal | None = None


FASTER = Goal(of_ratio=True, at_least=True, bound=1.5)
NEAR_THE_FLOOR = Goal(of_ratio=True, at_least=False, bound=2.5)
QUICK_LOAD = Goal(of_ratio=False, at_least=False, bound=5)
SMALL = Goal(of_ratio=False, at_least=False, bound=1024)
HARDLY_FELT = Goal(of_ratio=False, at_least=False, bound=1)
AT_ONCE = Goal(of_ratio=False, at_least=False, bound=1000)
PATIENCE = Goal(of_ratio=False, at_least=False, bound=8)

ROWS = [
    Row("lines_1", "TraceLine to file, 1 thread", "lines/s", "spdlog", FASTER),
    Row("lines_2", "TraceLine to file, 2 threads", "lines/s", "spdlog", FASTER),
    Row("lines_4", "TraceLine to file, 4 threads", "lines/s", "spdlog"),
    Row("lines_8", "TraceLine to file, 8 threads", "lines/s", "spdlog"),
    Row("call_p50", "one TraceLine, p50", "µs", "spdlog"),
    Row("call_p99", "one TraceLine, p99", "µs", "spdlog"),
    Row("call_p999", "one TraceLine, p99.9", "µs", "spdlog"),
    Row("log_trace", "one TraceLog to file, trace running", "µs", "WriteFile", NEAR_THE_FLOOR),
    Row("log_no_trace", "one TraceLog to file, trace stopped", "µs", "WriteFile"),
    Row("load_warm", "load, and free a moment later", "ms", None, QUICK_LOAD),
    Row("load_at_once", "load, and free at once", "ms", None, QUICK_LOAD),
    Row("load_cold", "load in a bare host, and free", "ms"),
    Row("memory", "memory kept after 1,000 lines", "KiB", "a thread", SMALL),
    Row("run_adds", "what dialwright run adds to a line", "ms", None, HARDLY_FELT),
    Row("inspect", "dialwright inspect of 1,000 controls", "ms", None, AT_ONCE),
    Row("check", "dialwright check of 100,000 lines", "s", None, PATIENCE),
]


class Programs:
    """Runs the benchmark programs, each time in a folder that is new and gone afterwards."""

    def __init__(self, programs, work):
        self.programs = programs
        self.work = work
        self.before = [] if os.name == "nt" else [str(ROOT / "scripts" / "wine-run")]

    def run(self, name, *options, check):
        """The last JSON line that the program prints. `check` gets it, the folder and all that was printed."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.work))
        try:
            for file in (f"{name}.exe", "Dialwright.dll"):
                shutil.copy(self.programs / file, folder)
            command = [*self.before, str(folder / f"{name}.exe"), *options]
            if name != "bench_library":
                command += ["--folder", self.windows_path(folder)]
            output = self.output_of(command, folder)
            printed = [l for l in output.splitlines() if l.startswith(b"{")]
            if not printed:
                raise Void(f"{' '.join(command)} printed no figures")
            figures = json.loads(printed[-1])
            check(figures, folder, output)
            return figures
        finally:
            shutil.rmtree(folder, ignore_errors=True)

    @staticmethod
    def windows_path(folder):
        return f"{folder}\\" if os.name == "nt" else "Z:" + str(folder).replace("/", "\\") + "\\"

    @staticmethod
    def output_of(command, folder):
        # Into files: Wine's services may inherit what the first program has, and would hold a pipe open.
        with open(folder / "printed", "wb") as printed, open(folder / "complaints", "wb") as complaints:
            try:
                code = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=printed,
                                      stderr=complaints, timeout=TIME_LIMIT_S, check=False).returncode
            except subprocess.TimeoutExpired:
                raise Void(f"{' '.join(command)} ran for more than {TIME_LIMIT_S} s") from None
        if code != 0:
            said = (folder / "complaints").read_text(errors="replace")[-500:]
            raise Void(f"{' '.join(command)} ended with {code}: {said}")
        return (folder / "printed").read_bytes()


def require_count(what, found, wanted):
    if found != wanted:
        raise Void(f"{found} {what} where {wanted} were written")


def check_lines(file, own_lines):
    """The file holds each line whole, and beside them so many lines of the logger's own."""

    def check(figures, folder, _output):
        text = (folder / file).read_bytes()
        require_count(f"lines in {file}", sum(1 for _ in TRACE_LINE.finditer(text)), figures["written"])
        require_count(f"ends of line in {file}", text.count(b"\n"), figures["written"] + own_lines)

    return check


def check_messages(trace_file):
    def check(figures, folder, _output):
        for file in ["output.txt"] + ([trace_file] if trace_file else []):
            found = sum(1 for _ in MESSAGE.finditer((folder / file).read_bytes()))
            require_count(f"messages in {file}", found, figures["written"])

    return check


def check_nothing(_figures, _folder, _output):
    pass


def check_logged(_figures, _folder, output):
    require_count("lines logged", sum(1 for _ in UNKNOWN_COMMAND.finditer(output)), LOGGED_LINES)


# The trace begins with a line of its own and ends with one.
OURS = ("bench_trace_line", check_lines("trace_1.log", 2))
PEER = ("bench_peer_line", check_lines("peer.log", 0))


def measure_lines(programs, sizes, threads):
    def rate(writer):
        name, check = writer
        figures = programs.run(name, "--measure", "throughput", "--threads", str(threads), "--lines",
                               str(sizes.lines), check=check)
        return figures["lines"] / figures["seconds"]

    yield f"lines_{threads}", "ours", rate(OURS)
    yield f"lines_{threads}", "peer", rate(PEER)


def measure_calls(programs, sizes):
    for side, (name, check) in (("ours", OURS), ("peer", PEER)):
        figures = programs.run(name, "--measure", "calls", "--threads", "1", "--lines", str(sizes.lines), check=check)
        for key in ("p50", "p99", "p999"):
            yield f"call_{key}", side, figures[key] / 1000


def measure_messages(programs, sizes):
    def microseconds(way, trace_file=None):
        figures = programs.run("bench_trace_log", "--way", way, "--messages", str(sizes.messages),
                               check=check_messages(trace_file))
        return figures["seconds"] * 1e6 / figures["messages"]

    for key, way, file in (("log_trace", "trace", "trace_1.log"), ("log_no_trace", "no-trace", None)):
        yield key, "ours", microseconds(way, file)
        yield key, "peer", microseconds("bare")


def measure_library(programs, _sizes):
    for kind in ("warm", "at_once", "cold"):
        figures = programs.run("bench_library", "--measure", kind.replace("_", "-"), "--times", "1",
                               check=check_nothing)
        yield f"load_{kind}", "ours", figures["load_ms"] + figures["free_ms"] - SLEEP_MS
    for side, what, check in (("ours", "memory", check_logged), ("peer", "thread", check_nothing)):
        figures = programs.run("bench_library", "--measure", what, "--times", str(LOGGED_LINES), check=check)
        yield "memory", side, figures["bytes"] / 1024


def measure_all(programs, sizes):
    """(row, side) -> the figures of all runs."""
    figures = collections.defaultdict(list)
    for run in range(sizes.runs):
        print(f"   run {run + 1} of {sizes.runs}", file=sys.stderr, flush=True)
        for results in (*(measure_lines(programs, sizes, threads) for threads in (1, 2, 4, 8)),
                        measure_calls(programs, sizes), measure_messages(programs, sizes),
                        measure_library(programs, sizes),
                        measure_tool(programs.programs, programs.before, programs.work, sizes)):
            for key, side, value in results:
                figures[key, side].append(value)
    return figures


def summary(values):
    return {"median": statistics.median(values), "lowest": min(values), "highest": max(values)} if values else None


def evaluate(row, figures):
    ours, peer = summary(figures[row.key, "ours"]), summary(figures[row.key, "peer"])
    ratio = ours["median"] / peer["median"] if peer else None
    return {"row": row.key, "title": row.title, "unit": row.unit, "ours": ours, "peer": peer, "peer_name": row.peer,
            "ratio": ratio, "goal": str(row.goal) if row.goal else None,
            "met": row.goal.is_met(ours["median"], ratio) if row.goal else None}


def show_number(value):
    return f"{value:,.0f}" if abs(value) >= 1000 else f"{value:.3g}"


def show_figure(figure):
    if figure is None:
        return "–"
    return f"{show_number(figure['median'])} ({show_number(figure['lowest'])}..{show_number(figure['highest'])})"


def print_table(results):
    table = [["figure", "unit", "ours", "against", "its figure", "ratio", "goal", "met"]]
    for result in results:
        met = {None: "–", True: "yes", False: "MISSED"}[result["met"]]
        ratio = f"{result['ratio']:.2f}" if result["ratio"] is not None else "–"
        table.append([result["title"], result["unit"], show_figure(result["ours"]), result["peer_name"] or "–",
                      show_figure(result["peer"]), ratio, result["goal"] or "–", met])
    widths = [max(len(line[column]) for line in table) for column in range(len(table[0]))]
    for number, line in enumerate(table):
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(line, widths)) + " |")
        if number == 0:
            print("|" + "|".join("-" * (width + 2) for width in widths) + "|")


def positive(text):
    number = int(text)
    if number <= 0:
        raise argparse.ArgumentTypeError("a number above zero")
    return number


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--runs", type=positive, help=f"runs for each figure ({FULL.runs}; {QUICK.runs} when quick)")
    parser.add_argument("--quick", action="store_true", help="a short run, whose figures say little")
    parser.add_argument("--json", action="store_true", help="JSON in place of the table")
    parser.add_argument("--programs", type=pathlib.Path, default=ROOT / "build" / "x64-release" / "bin",
                        help="the folder of the benchmark programs")
    options = parser.parse_args()
    sizes = QUICK if options.quick else FULL
    sizes = dataclasses.replace(sizes, runs=options.runs or sizes.runs)
    try:
        # Beside the programs: on the disk of the build, whichever that is.
        with tempfile.TemporaryDirectory(prefix="bench-", dir=options.programs.resolve().parent) as work:
            figures = measure_all(Programs(options.programs.resolve(), pathlib.Path(work)), sizes)
    except (Void, OSError) as fault:
        print(f"bench: void: {fault}", file=sys.stderr)
        return 1
    results = [evaluate(row, figures) for row in ROWS]
    if options.json:
        print(json.dumps({"runs": sizes.runs, "quick": options.quick, "rows": results}, indent=2))
    else:
        print_table(results)
    return 0


if __name__ == "__main__":
    sys.exit(main())
