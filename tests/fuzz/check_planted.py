#!/usr/bin/env python3
"""Fuzzes a target with a fault that is planted in it, and one without: the first must be found, reported and kept, and
its input must break the target again."""

import json
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile


def fuzz(house, state, target, *options):
    return subprocess.run([sys.executable, house / "scripts/fuzz.py", "--state", state, "--only", target, *options],
                          capture_output=True, text=True, check=False)


def faults_of_a_finding(house, state):
    result = fuzz(house, state, "planted", "--rounds", "1", "--slice", "90")
    if result.returncode != 1:
        yield f"a run with a finding ended with {result.returncode}: {result.stderr}"
        return
    kept = json.loads((state / "totals.json").read_text(encoding="utf-8"))
    if kept["findings"] != 1 or "nobody says boom" not in kept["targets"]["planted"]["findings"][0]["what"]:
        yield f"the totals do not hold the finding: {kept}"
    replay = re.search(r"replay: (.+)", result.stderr)
    if replay is None:
        yield f"no word on how to replay it: {result.stderr}"
        return
    command = shlex.split(replay.group(1))
    if pathlib.Path(command[-1]).read_bytes() != b"boom":
        yield "the input that is named is not the one that breaks it"
    if "nobody says boom" not in subprocess.run(command, capture_output=True, text=True, check=False).stderr:
        yield "the input does not break it again"


def faults_of_none(house, state):
    totals = []
    for _ in range(2):
        result = fuzz(house, state, "data_dump", "--rounds", "1", "--slice", "1", "--json")
        if result.returncode != 0:
            yield f"a run without a finding ended with {result.returncode}: {result.stderr}"
            return
        totals.append(json.loads(result.stdout))
    if not 0 < totals[0]["executions"] < totals[1]["executions"]:
        yield f"two runs are not added up: {totals}"
    table = fuzz(house, state, "data_dump", "--table").stdout
    if f"| all | | | {totals[1]['executions']:,} |" not in table:
        yield f"the table does not hold the sum: {table}"


def faults_of_usage(house, state):
    for options in (["--rounds", "x"], ["--only", "no-such-target"], ["--jobs", "3"]):
        result = fuzz(house, state, "data_dump", *options)
        if result.returncode != 2:
            yield f"{options} ended with {result.returncode}"


def main():
    house = pathlib.Path(sys.argv[1])
    faults = []
    for check in (faults_of_a_finding, faults_of_none, faults_of_usage):
        with tempfile.TemporaryDirectory() as state:
            faults += check(house, pathlib.Path(state))
    for fault in faults:
        print(fault)
    print(f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
