"""The rows of the table, and the goal of each."""

import dataclasses


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
