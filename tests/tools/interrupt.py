#!/usr/bin/env python3
"""Presses Ctrl-C on a program that follows a trace: it ends with 130, and has shown all that there was.

Wine makes a Ctrl-C event of the signal; without a console no Windows program can send one to another.
"""

import argparse
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

PATIENCE_SECONDS = 30


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", required=True)
    parser.add_argument("--tool", required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        trace = pathlib.Path(folder) / "x_1.log"
        trace.write_bytes(b"[1:1] first\r\n[1:1] torn")
        output = pathlib.Path(folder) / "output"
        with output.open("wb") as stream:
            process = subprocess.Popen([options.runner, options.tool, "trace", "follow", str(trace)],
                                       stdin=subprocess.DEVNULL, stdout=stream, stderr=subprocess.STDOUT)
        deadline = time.monotonic() + PATIENCE_SECONDS
        while b"first" not in output.read_bytes() and time.monotonic() < deadline:
            time.sleep(0.05)  # between two looks at the condition
        process.send_signal(signal.SIGINT)
        try:
            code = process.wait(PATIENCE_SECONDS)
        except subprocess.TimeoutExpired:
            process.kill()
            sys.exit("it goes on after Ctrl-C")
        shown = output.read_bytes()
    assert code == 130, f"it ended with {code} and said {shown!r}"
    assert shown == b"[1:1] first\n[1:1] torn\n", shown


if __name__ == "__main__":
    main()
