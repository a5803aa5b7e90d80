#!/usr/bin/env python3
"""A full disk behind standard output is told, and is no success."""

import argparse
import subprocess
import sys


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--runner", required=True)
    parser.add_argument("--tool", required=True)
    options = parser.parse_args()
    with open("/dev/full", "wb") as full:
        ended = subprocess.run([options.runner, options.tool, "windows"], stdin=subprocess.DEVNULL, stdout=full,
                               stderr=subprocess.PIPE, timeout=60, check=False)
    assert ended.returncode == 3, ended
    assert b"standard output cannot be written" in ended.stderr, ended
    return 0


if __name__ == "__main__":
    sys.exit(main())
