#!/usr/bin/env python3
"""Checks programs of ours from their files: none has the library linked, whose trace a second host would spoil, and each
has the manifest."""

import pathlib
import sys

import pefile

MANIFEST = [b"<activeCodePage", b"UTF-8", b"PerMonitorV2, PerMonitor", b"longPathAware", b'level="asInvoker"']


def faults_of(path):
    program = pefile.PE(str(path))
    imported = [entry.dll.decode() for entry in program.DIRECTORY_ENTRY_IMPORT]
    if any(name.lower() == "dialwright.dll" for name in imported):
        yield "loads Dialwright.dll at its start"
    image = path.read_bytes()
    for part in MANIFEST:
        if part not in image:
            yield f"has no {part.decode()} in its manifest"


def main():
    faults = [f"{path}: {fault}" for path in sys.argv[1:] for fault in faults_of(pathlib.Path(path))]
    for fault in faults:
        print(fault)
    print(f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
