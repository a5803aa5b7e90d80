"""Scripts carried out by dialwright.exe, in another process.

It says why a line failed, and survives targets that hang.
"""

import json
import os
import subprocess


class RunError(Exception):
    """`dialwright run` did not do what it should. `exit_code` and `report` (or None) are its own."""

    def __init__(self, message, exit_code, report=None):
        super().__init__(message)
        self.exit_code = exit_code
        self.report = report


class LineFailed(RunError):
    """A line failed. `code` stays the same from version to version, see docs/tool.md."""

    def __init__(self, row, exit_code, report):
        super().__init__(f"{row['code']}: {row['reason']} (line {row['line']}: {row['text']})", exit_code, report)
        self.row = row
        self.code = row["code"]
        self.reason = row["reason"]
        self.suggestion = row["suggestion"]


def run(lines, tool="dialwright.exe", secret_file=None, variables=None, options=()):
    """Carries out lines, or a whole script, and gives a row for each: a dict with line, text, status, milliseconds …

    tool         the path of dialwright.exe, or a list that begins a command line
    secret_file  with lines NAME=VALUE, for texts made by `secret`
    variables    added to the environment of dialwright.exe, for texts made by `environment`
    options      more options of `dialwright run`, such as ["--line-timeout", "5000"]

    Raises LineFailed for the first line that failed, and RunError where nothing was carried out.
    """
    script = lines if isinstance(lines, str) else "\n".join(lines)
    start = [tool] if isinstance(tool, (str, os.PathLike)) else list(tool)
    secrets = ["--secret-file", str(secret_file)] if secret_file else []
    ended = subprocess.run(
        [*start, "run", "--json", *secrets, *options, "-"],
        input=script.encode("utf-8"),
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        env={**os.environ, **(variables or {})},
        check=False,
    )
    return _rows(ended.returncode, ended.stdout, ended.stderr.decode("utf-8", "replace").strip())


def _rows(exit_code, output, said):
    try:
        report = json.loads(output)
    except ValueError:
        raise RunError(said or f"dialwright run ended with {exit_code}", exit_code) from None
    rows = [row for file in report["files"] for row in file["lines"]]
    for row in rows:
        if row["status"] == "failed":
            raise LineFailed(row, exit_code, report)
    if exit_code != 0:
        raise RunError(said or f"dialwright run ended with {exit_code}", exit_code, report)
    return rows
