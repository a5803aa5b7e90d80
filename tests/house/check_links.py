#!/usr/bin/env python3
"""Checks that every relative link of our Markdown files leads to a file, and every ./dev command named there exists."""

import pathlib
import re
import subprocess
import sys

LINK = re.compile(r"\]\((?!https?:|#)([^)#]+)")
DEV_COMMAND = re.compile(r"\./dev ([a-z]+)")


def main():
    root = pathlib.Path(sys.argv[1])
    usage = subprocess.run([str(root / "dev"), "--help"], capture_output=True, text=True, check=True).stdout
    known = set(re.findall(r"^  ([a-z]+) ", usage, re.MULTILINE))
    # Those of sdk/ lead to where things are in a package, whose own test follows them.
    elsewhere = {"build", "node_modules", "dist", "sdk"}
    files = [p for p in root.rglob("*.md") if not elsewhere & set(p.relative_to(root).parts)]
    faults = []
    for path in files:
        text = path.read_text(encoding="utf-8")
        faults += [f"{path.name}: no file {t}" for t in LINK.findall(text) if not (path.parent / t).exists()]
        faults += [f"{path.name}: no command {c}" for c in DEV_COMMAND.findall(text) if c not in known]
    for fault in faults:
        print(fault)
    print(f"{len(files)} documents, {len(faults)} faults")
    return 1 if faults or not files or not known else 0


if __name__ == "__main__":
    sys.exit(main())
