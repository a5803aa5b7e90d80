#!/usr/bin/env python3
"""On a terminal dialwright.exe shows what it waits for; elsewhere it writes no control character."""

import argparse
import os
import pathlib
import pty
import re
import subprocess
import sys

TIME_LIMIT_S = 60
WAITS = ["run", "-c", "Window.Close NoSuchClass none 1500"]


def seen_on_terminal(command):
    ours, theirs = pty.openpty()
    process = subprocess.Popen(command, stdin=theirs, stdout=theirs, stderr=theirs)
    os.close(theirs)
    seen = b""
    try:
        while chunk := os.read(ours, 4096):
            seen += chunk
    except OSError:  # the other side has gone
        pass
    process.wait(TIME_LIMIT_S)
    os.close(ours)
    return seen


def seen_in_file(command, path):
    with open(path, "wb") as file:
        subprocess.run(command, stdin=subprocess.DEVNULL, stdout=file, stderr=file, timeout=TIME_LIMIT_S, check=False)
    return pathlib.Path(path).read_bytes()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--runner", required=True)
    parser.add_argument("--tool", required=True)
    options = parser.parse_args()
    program = options.tool
    command = [options.runner, program, *WAITS]
    on_terminal = re.sub(rb"\x1b\[[0-9?]*[A-Za-z]", b"", seen_on_terminal(command))
    in_file = seen_in_file(command, program + ".progress.txt")
    os.remove(program + ".progress.txt")
    if b"window_not_found" not in on_terminal or b"<command>:1  Window.Close" not in on_terminal:
        print("the terminal shows no progress:", on_terminal)
        return 1
    if b"window_not_found" not in in_file or b"\x1b" in in_file or b"<command>:1  Window.Close" in in_file:
        print("what goes to a file is not plain:", in_file)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
