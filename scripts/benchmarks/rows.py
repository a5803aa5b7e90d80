"""The rows of the table, and the goal of each."""

import dataclasses


@dataclasses.dataclass(frozen=True)
class Goal:
    """A bound of the ratio to the peer, or of our own figure. `or_more_by` is a difference that is as good."""

    of_ratio: bool
    at_least: bool
    bound: float
    or_more_by: float | None = None

    def is_met(self, ours, peer, ratio):
        """`ratio` is its lowest likely value where the row has an interval."""
        if self.or_more_by is not None and ours - peer <= self.or_more_by:
            return True
        value = ratio if self.of_ratio else ours
        return value >= self.bound if self.at_least else value <= self.bound

    def __str__(self):
        text = f"{'at least' if self.at_least else 'at most'} {self.bound:g}{' times' if self.of_ratio else ''}"
        return text if self.or_more_by is None else f"{text}, or {self.or_more_by:g} more"


@dataclasses.dataclass(frozen=True)
class Row:
    key: str
    title: str
    unit: str
    peer: str | None = None
    goal: Goal | None = None
    # Each run gives many pairs: the ratio has an interval, and a goal is missed only when all of it lies beyond.
    in_pairs: bool = False


def at_most(bound):
    return Goal(of_ratio=False, at_least=False, bound=bound)


def at_most_times(bound, or_more_by=None):
    return Goal(of_ratio=True, at_least=False, bound=bound, or_more_by=or_more_by)


FASTER = Goal(of_ratio=True, at_least=True, bound=1.5)
HARDLY_MORE = at_most_times(1.15, or_more_by=120)

ROWS = [
    Row("command_click", "ExecuteCommand: click by ID", "µs", "bare calls", HARDLY_MORE),
    Row("command_clear", "ExecuteCommand: clear by ID", "µs", "bare calls", HARDLY_MORE),
    Row("command_select", "ExecuteCommand: select by ID", "µs", "bare calls", HARDLY_MORE),
    Row("command_check", "ExecuteCommand: check by ID", "µs", "bare calls", HARDLY_MORE),
    Row("typing", "ExecuteCommand: type 1,000 characters", "ms", "bare messages", at_most_times(1.05), in_pairs=True),
    Row("search_literal", "window search, 300 windows, literal", "ms", "bare calls", at_most_times(1.2)),
    Row("search_regex", "window search, 300 windows, pattern", "ms", "bare calls", at_most_times(2)),
    Row("position_flat", "position lookup, 1,000 siblings", "ms", "bare calls", at_most_times(2)),
    Row("position_deep", "position lookup, chain 10 deep", "ms", "bare calls", at_most_times(2)),
    Row("id_flat", "ID lookup, 1,000 siblings", "ms"),
    Row("path_flat", "path lookup, 1,000 siblings", "ms"),
    Row("path_deep", "path lookup, chain 10 deep", "µs"),
    Row("script", "ValidateScript of 10,000 lines", "ms", "its tokens", at_most_times(1.5)),
    Row("tokens", "tokens of 10,000 lines", "ms", "plain loop"),
    Row("refused", "ValidateCommand, line refused", "µs"),
    Row("refused_table", "- of it the command table", "µs"),
    Row("refused_tokens", "- of it the tokens", "µs"),
    Row("refused_compile", "- of those compiling", "µs"),
    Row("refused_log", "- of it the error line", "µs"),
    Row("lines_1", "TraceLine to file, 1 thread", "lines/s", "spdlog", FASTER),
    Row("lines_2", "TraceLine to file, 2 threads", "lines/s", "spdlog", FASTER),
    Row("lines_4", "TraceLine to file, 4 threads", "lines/s", "spdlog"),
    Row("lines_8", "TraceLine to file, 8 threads", "lines/s", "spdlog"),
    Row("call_p50", "one TraceLine, p50", "µs", "spdlog"),
    Row("call_p99", "one TraceLine, p99", "µs", "spdlog"),
    Row("call_p999", "one TraceLine, p99.9", "µs", "spdlog"),
    Row("log_trace", "one TraceLog to file, trace running", "µs", "WriteFile", at_most_times(2.5)),
    Row("log_no_trace", "one TraceLog to file, trace stopped", "µs", "WriteFile"),
    Row("load_warm", "load, and free a moment later", "ms", None, at_most(5)),
    Row("load_at_once", "load, and free at once", "ms", None, at_most(5)),
    Row("load_cold", "load in a bare host, and free", "ms"),
    Row("memory", "memory kept after 1,000 lines", "KiB", "a thread", at_most(1024)),
    Row("run_adds", "what dialwright run adds to a line", "ms", None, at_most(1)),
    Row("inspect", "dialwright inspect of 1,000 controls", "ms", None, at_most(1000)),
    Row("check", "dialwright check of 100,000 lines", "s", None, at_most(8)),
]
