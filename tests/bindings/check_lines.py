#!/usr/bin/env python3
"""The lines that bindings must write have no fault to `dialwright check`, not even a doubtful one."""

import json
import os
import pathlib
import subprocess
import sys

LINES = json.loads((pathlib.Path(__file__).parent / "lines.json").read_text(encoding="utf-8"))["lines"]
TOOL = [os.environ["DIALWRIGHT_RUNNER"], str(pathlib.Path(os.environ["DIALWRIGHT_PROGRAMS"]) / "dialwright.exe")]


def findings(script):
    ended = subprocess.run([*TOOL, "check", "--format", "json", "-"], input=script.encode(), stdout=subprocess.PIPE,
                           stderr=subprocess.PIPE, timeout=60, check=False)
    assert ended.returncode in (0, 1), f"it ended with {ended.returncode}: {ended.stderr!r}"
    return [finding for file in json.loads(ended.stdout)["files"] for finding in file["findings"]]


def main():
    written = [case for case in LINES if "line" in case]
    found = findings("\n".join(case["line"] for case in written))
    for finding in found:
        print(f"{written[finding['line'] - 1]['name']}: {finding}")
    # The same line without its timeout is doubtful: the checker does look.
    doubtful = findings('Window.SetText "#32770" "t" 12 "4711"')
    return 1 if found or not doubtful else 0


if __name__ == "__main__":
    sys.exit(main())
