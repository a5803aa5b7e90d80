#!/usr/bin/env python3
"""Runs the benchmarks for a moment and checks that the table is whole. Judges no figure."""

import json
import subprocess
import sys

COMMANDS = ["command_click", "command_clear", "command_select", "command_check", "typing"]
PARTS = ["search_literal", "search_regex", "position_flat", "position_deep", "script"]
AGAINST_A_PEER = [*COMMANDS, *PARTS, "tokens", "lines_1", "lines_2", "lines_4", "lines_8", "call_p50", "call_p99",
                  "call_p999", "log_trace", "log_no_trace", "memory"]
ALONE = ["id_flat", "path_flat", "path_deep", "refused", "refused_table", "refused_tokens", "refused_compile", "refused_log", "load_warm",
         "load_at_once", "load_cold", "run_adds", "inspect", "check"]
WITH_A_GOAL = {*COMMANDS, *PARTS, "lines_1", "lines_2", "log_trace", "load_warm", "load_at_once", "memory", "run_adds",
               "inspect", "check"}
WITH_AN_INTERVAL = {"typing"}

# What is left of a difference, which a busy machine makes negative in a short run.
DIFFERENCES = {"run_adds"}


def is_whole(figure, key=None):
    if figure is None or not figure["lowest"] <= figure["median"] <= figure["highest"]:
        return False
    return key in DIFFERENCES or figure["lowest"] > 0


def faults_of(rows):
    for key in AGAINST_A_PEER + ALONE:
        row = rows.pop(key, None)
        if row is None:
            yield f"no row {key}"
            continue
        if not is_whole(row["ours"], key):
            yield f"{key} has no figure of ours"
        if key in AGAINST_A_PEER and not (is_whole(row["peer"]) and row["ratio"]["median"] > 0):
            yield f"{key} has no figure to compare with"
        if (row["interval"] is not None) != (key in WITH_AN_INTERVAL):
            yield f"{key} says the wrong thing of an interval"
        if (row["met"] is not None) != (key in WITH_A_GOAL) or (row["goal"] is not None) != (key in WITH_A_GOAL):
            yield f"{key} says the wrong thing of a goal"
    yield from (f"row {key} is new here" for key in rows)


def main():
    result = subprocess.run([sys.executable, *sys.argv[1:], "--quick", "--json"], stdout=subprocess.PIPE, check=False)
    if result.returncode != 0:
        print(f"the run ended with {result.returncode}")
        return 1
    faults = list(faults_of({row["row"]: row for row in json.loads(result.stdout)["rows"]}))
    for fault in faults:
        print(fault)
    print(f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
