#!/usr/bin/env python3
"""Carries out what a page of the docs shows, in its order, on a practice window.

A block with the mark `file=NAME` is written to that file. The commands of a `sh` block, and those of a workflow, are run;
they must end with 0, or with one of the codes of a mark such as `exit=1`. What they print must be the `text output` block that follows, figures
apart. In place of the practice window's title stands one of this run's own.
"""

import argparse
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

from blocks import blocks_of
from documented_commands import commands_of, workflow_commands

TITLE = "Dialwright practice"
OWN_TITLE = f"Guide {os.getpid()}"
TIME_LIMIT = 60
# Times, and what else differs from run to run.
FIGURES = [(re.compile(r"\d+(\.\d+)? m?s\b"), "N ms"), (re.compile(r"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{7}"), "TIME"),
           (re.compile(r"  \d+:\d+  "), "  ID  "), (re.compile(r"attempts \d+"), "attempts N"), (re.compile(r" +"), " ")]


def comparable(text):
    for pattern, name in FIGURES:
        text = pattern.sub(name, text)
    return [line.strip() for line in text.replace(OWN_TITLE, TITLE).splitlines() if line.strip()]


def words_of(command):
    """As a shell splits them, but for backslashes, which are part of paths here."""
    splitter = shlex.shlex(command, posix=True, punctuation_chars=False)
    splitter.whitespace_split = True
    splitter.escape = splitter.commenters = ""
    words = list(splitter)
    return (words[:-2], words[-1]) if words[-2:-1] == [">"] else (words, None)


class Run:
    def __init__(self, options, folder):
        self.folder = pathlib.Path(folder)
        self.start = [options.runner, options.tool]
        self.count = 0
        self.output = ""

    def command(self, text, codes):
        words, target = words_of(text.replace(TITLE, OWN_TITLE))
        assert words[0] == "dialwright", f"this runs only dialwright: {text}"
        # By way of a file: whatever Wine starts along with the program would hold a pipe open.
        with open(self.folder / (target or "output"), "w+b") as output:
            ended = subprocess.run([*self.start, *words[1:]], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=output,
                                   stderr=subprocess.STDOUT, timeout=TIME_LIMIT, check=False)
            output.seek(0)
            printed = output.read().decode()
        assert str(ended.returncode) in codes, f"{text}\nended with {ended.returncode}:\n{printed}"
        self.count += 1
        self.output += "" if target else printed

    def block(self, block):
        name = block.value_of("file")
        if name:
            (self.folder / name).write_text(block.text.replace(TITLE, OWN_TITLE), encoding="utf-8")
        elif block.kind == "sh":
            self.output = ""
            for text in commands_of(block):
                self.command(text, (block.value_of("exit") or "0").split(","))
        elif block.kind == "yaml":
            for part in workflow_commands(block):
                for text in commands_of(part):
                    self.command(text, "0")
        elif block.info == "text output":
            assert comparable(block.text) == comparable(self.output), (
                f"{block.place}: it is not what was printed:\n{self.output}")


def start_window(runner, tool, folder):
    program = pathlib.Path(tool).parent / "practice_target.exe"
    process = subprocess.Popen([runner, str(program), "--commands", "--title", OWN_TITLE], stdin=subprocess.PIPE,
                               stdout=open(pathlib.Path(folder) / "window", "wb"), stderr=subprocess.DEVNULL)
    return process


def wait_for_window(run):
    """Until the window is there; every look is a program of its own, and so takes its time."""
    for _ in range(100):
        ended = subprocess.run([*run.start, "match", "--unique", "#32770", OWN_TITLE], stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=TIME_LIMIT, check=False)
        if ended.returncode == 0:
            return
    raise AssertionError("the practice window does not come up")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", required=True)
    parser.add_argument("--tool", required=True)
    parser.add_argument("--page", type=pathlib.Path, required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        run = Run(options, folder)
        window = start_window(options.runner, options.tool, folder)
        try:
            wait_for_window(run)
            for block in blocks_of(options.page.name, options.page.read_text(encoding="utf-8")):
                run.block(block)
        except AssertionError as fault:
            print(fault)
            return 1
        finally:
            window.stdin.close()
            window.wait(30)
    print(f"{run.count} commands")
    return 0 if run.count else 1


if __name__ == "__main__":
    sys.exit(main())
