#!/usr/bin/env python3
"""Runs an example in a folder of its own: it fills in the form, and tells why a line fails, or, where no trace file can
be made, that it fails."""

import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile

FILLED = "the form is filled in"
FAILED = "failed: Window.ClickButton"
WHY = "Window::ClickHelper: ClickHelper - Null button handle"
TIME_LIMIT_S = 60


def run(options, folder):
    """What it says on standard error. Both outputs go into files, as Wine's services may hold a pipe open."""
    program = options.program
    for path in (program, program.with_name("Dialwright.dll"), program.with_name("practice_target.exe")):
        shutil.copy(path, folder)
    with tempfile.TemporaryFile() as said:
        ended = subprocess.run([*options.runner, str(folder / program.name)], cwd=folder, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=said, timeout=TIME_LIMIT_S, check=False)
        said.seek(0)
        text = said.read().decode()
    assert ended.returncode == 0, (ended.returncode, text)
    return text


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--runner", action="append", default=[], help="what starts a Windows program here")
    parser.add_argument("program", type=pathlib.Path)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        said = run(options, pathlib.Path(folder))
        assert FILLED in said and FAILED in said, said
        assert WHY in said, said
    with tempfile.TemporaryDirectory() as folder:
        # A file where the folder of the traces should be.
        pathlib.Path(folder, "logs").write_text("")
        said = run(options, pathlib.Path(folder))
        assert FILLED in said and FAILED in said, said
        assert WHY not in said, said
    return 0


if __name__ == "__main__":
    sys.exit(main())
