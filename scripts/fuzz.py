#!/usr/bin/env python3
"""Runs the fuzz targets in turns and adds up what they did. ./dev fuzz builds them first and calls this.

Totals, the growing corpora and the inputs that broke something are kept in the state folder, so that a run goes on
where the last one was left. Exit codes: 0 nothing found, 1 something found, 2 wrong usage.
"""

import argparse
import pathlib
import signal
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from fuzzing import corpus, report, targets  # noqa: E402  (beside this script)
from fuzzing.totals import Totals  # noqa: E402

DEFAULT_MINUTES = 5.0


def arguments():
    root = pathlib.Path(__file__).resolve().parent.parent
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--minutes", type=float, help=f"so long at most ({DEFAULT_MINUTES:g} where nothing is said)")
    parser.add_argument("--executions", type=int, help="run until so many were executed, over all runs")
    parser.add_argument("--jobs", type=int, choices=(1, 2), default=1, help="targets at a time")
    parser.add_argument("--slice", type=int, default=60, help="seconds of a turn")
    parser.add_argument("--rounds", type=int, help="so many turns of each target, in place of a time")
    parser.add_argument("--only", action="append", help="this target alone; may be given several times")
    parser.add_argument("--json", action="store_true", help="the totals as JSON")
    parser.add_argument("--table", action="store_true", help="the totals as Markdown; runs nothing")
    parser.add_argument("--keep-corpus", action="store_true", help="afterwards, put what reaches new code into --house")
    parser.add_argument("--state", type=pathlib.Path, required=True, help="the folder of totals, corpora and findings")
    parser.add_argument("--programs", type=pathlib.Path, default=root / "build/fuzz/bin", help="the native targets")
    parser.add_argument("--exports", type=pathlib.Path, default=root / "build/x64-release/bin/fuzz_exports.exe")
    parser.add_argument("--house", type=pathlib.Path, default=root / "fuzz", help="where corpora and targets.json are")
    read = parser.parse_args()
    if read.minutes is None and read.executions is None and read.rounds is None:
        read.minutes = DEFAULT_MINUTES
    return read


class Run:
    """Turns of the targets, the one furthest behind its share first."""

    def __init__(self, options, all_targets, totals):
        self.options = options
        self.totals = totals
        self.waiting = list(all_targets)
        self.turns = {target.name: 0 for target in all_targets}
        self.running = []
        self.found = []
        self.stopped = False
        self.end = time.monotonic() + options.minutes * 60 if options.minutes is not None else None

    def stop(self, *_):
        self.stopped = True
        for turn in self.running:
            turn.interrupt()

    def is_over(self):
        options = self.options
        return (self.stopped or not self.waiting
                or (self.end is not None and time.monotonic() >= self.end)
                or (options.executions is not None and self.totals.executions() >= options.executions)
                or (options.rounds is not None and min(self.turns[t.name] for t in self.waiting) >= options.rounds))

    def start_one(self):
        if self.options.rounds is not None:
            target = min(self.waiting, key=lambda t: self.turns[t.name])
        else:
            target = min(self.waiting, key=lambda t: (self.totals.seconds(t.name) / t.share, t.name))
        seconds = self.options.slice
        if self.end is not None:
            seconds = max(1, min(seconds, round(self.end - time.monotonic())))
        self.waiting.remove(target)
        self.turns[target.name] += 1
        self.running.append(target.start(seconds))

    def take_ended(self):
        for turn in [t for t in self.running if t.has_ended()]:
            self.running.remove(turn)
            outcome = turn.outcome()
            self.totals.add(outcome)
            print(report.line_of(outcome), file=sys.stderr, flush=True)
            if outcome.finding is None:
                self.waiting.append(turn.target)
            else:
                # It would be found again and again: out for the rest of this run.
                self.found.append(outcome.finding)

    def go(self):
        while self.running or not self.is_over():
            while len(self.running) < self.options.jobs and not self.is_over():
                self.start_one()
            time.sleep(0.1)
            self.take_ended()


def main():
    options = arguments()
    totals = Totals(options.state / "totals.json")
    all_targets = targets.all_of(options)
    if options.table:
        print(report.markdown(all_targets, totals), end="")
        return 0
    chosen = [t for t in all_targets if not t.is_hidden] if not options.only else []
    for name in options.only or []:
        named = [t for t in all_targets if t.name == name]
        if not named:
            names = ", ".join(t.name for t in all_targets)
            print(f"fuzz: there is no target {name}; there are {names}", file=sys.stderr)
            return 2
        chosen += named
    missing = [t.program for t in chosen if not t.program.exists()]
    if missing:
        print(f"fuzz: {missing[0]} is not built; ./dev fuzz builds it", file=sys.stderr)
        return 2
    run = Run(options, chosen, totals)
    for wanted in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(wanted, run.stop)
    run.go()
    if options.keep_corpus:
        corpus.keep([t for t in chosen if t.is_native])
    print(report.json_text(totals) if options.json else report.table(all_targets, totals), end="")
    for finding in run.found:
        print(f"\nFOUND by {finding['target']}: {finding['what']}", file=sys.stderr)
        print(f"  input:  {finding['input']}\n  replay: {finding['replay']}", file=sys.stderr)
    return 1 if run.found else 0


if __name__ == "__main__":
    sys.exit(main())
