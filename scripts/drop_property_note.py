#!/usr/bin/env python3
"""Takes the entry of the GNU property note out of a 64-bit ELF program.

patchelf of Debian 12 moves the note and leaves the entry where it was; the emulator refuses to start such a program.
"""

import pathlib
import struct
import sys

PT_NULL = 0
PT_GNU_PROPERTY = 0x6474E553


def main():
    if len(sys.argv) != 2 or sys.argv[1] == "--help":
        print("usage: drop_property_note.py PROGRAM", file=sys.stderr)
        return 0 if sys.argv[1:] == ["--help"] else 2
    path = pathlib.Path(sys.argv[1])
    program = bytearray(path.read_bytes())
    table, = struct.unpack_from("<Q", program, 32)
    size, count = struct.unpack_from("<HH", program, 54)
    for entry in range(table, table + size * count, size):
        if struct.unpack_from("<I", program, entry) == (PT_GNU_PROPERTY,):
            struct.pack_into("<I", program, entry, PT_NULL)
    path.write_bytes(program)
    return 0


if __name__ == "__main__":
    sys.exit(main())
