"""What the trace costs, and the library as a whole."""

import re

from .programs import check_nothing, require_count

# The library sleeps that long when it is freed, by design.
SLEEP_MS = 100
LOGGED_LINES = 1000

TRACE_LINE = re.compile(
    rb"^\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{6,7} UTC[+-]\d\d:\d\d\] \[\d+:\d+\] \[Dialwright  40    info\] "
    rb"Window\.SetText: control \d{6} of \"Sign in\" has its new text, 3 of 5000 ms are used up\r$", re.MULTILINE)
MESSAGE = re.compile(
    rb"Window::SetText: control \d{6} of \"Sign in\" has its new text, 3 of 5000 ms are used up\r$", re.MULTILINE)
UNKNOWN_COMMAND = re.compile(rb"^\S+ Unknown command: Window\.Polish\r?$", re.MULTILINE)


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
