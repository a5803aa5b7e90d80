#!/usr/bin/env python3
"""Lets a host log onto a disk that is full. What a Windows program cannot set up itself is made here, from Linux.

Exit codes: 0 as expected, 1 not so, 77 cannot be set up here (no right to mount).
"""

import argparse
import contextlib
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
HOST_ENDED_WELL = 7
# To its end: a line that was torn off and continued by the next one begins as a whole one does.
WHOLE_LINE = re.compile(rb"\[\d{4}-\d\d-\d\d [^\]]+\] \[\d+:\d+\] \[Dialwright  \d+ [ a-z]{7}\] "
                        rb"(\(Time Zone: [^\]]+ memory: 0x0{16}|\S+: Unknown command: Bogus\.\d+|trace stopped)")


def folder_with_host(programs, parent):
    folder = pathlib.Path(parent) / "host"
    folder.mkdir()
    for name in ("load_host.exe", "Dialwright.dll"):
        shutil.copy(programs / name, folder)
    return folder


class Host:
    """A host that logs one error line for each line of its input."""

    def __init__(self, runner, folder):
        self.process = subprocess.Popen([runner, str(folder / "load_host.exe"), "calls"],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.expect(b"ready")

    def expect(self, word):
        line = self.process.stdout.readline().strip()
        assert line == word, f"the host says {line!r}, not {word!r}"

    def log(self, count):
        for _ in range(count):
            self.process.stdin.write(b"\n")
            self.process.stdin.flush()
            self.expect(b"logged")

    def end(self):
        self.process.stdin.close()
        code = self.process.wait(60)
        assert code == HOST_ENDED_WELL, f"the host ended with {code}"


def trace_names(runner, folder):
    """The names of main and error file, from a run that is not in trouble."""
    host = Host(runner, folder)
    host.log(1)
    host.end()
    names = sorted(path.name for path in (folder / "logs/trace").iterdir())
    assert len(names) == 2, names
    error = next(name for name in names if "_error" in name)
    names.remove(error)
    shutil.rmtree(folder / "logs")
    return names[0], error


def check_whole(path):
    text = path.read_bytes()
    assert text.endswith(b"\r\n"), f"{path.name} ends in {text[-60:]!r}"
    lines = text[:-2].split(b"\r\n")
    broken = [line for line in lines if not WHOLE_LINE.fullmatch(line)]
    assert not broken, f"{path.name} holds {broken[0]!r}"
    return lines


def full_device(runner, programs, parent):
    folder = folder_with_host(programs, parent)
    main, error = trace_names(runner, folder)
    (folder / "logs/trace").mkdir(parents=True)
    (folder / "logs/trace" / main).symlink_to("/dev/full")
    host = Host(runner, folder)
    host.log(2000)
    host.end()
    assert len(check_whole(folder / "logs/trace" / error)) == 2000


@contextlib.contextmanager
def small_disk(path):
    path.mkdir(parents=True)
    mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=256k", "none", str(path)], capture_output=True,
                             check=False)
    if mounted.returncode != 0:
        print(f"cannot mount a disk here: {mounted.stderr.decode().strip()}")
        sys.exit(SKIPPED)
    try:
        yield path
    finally:
        subprocess.run(["umount", "-l", str(path)], check=True)


def full_then_freed(runner, programs, parent):
    folder = folder_with_host(programs, parent)
    main, error = trace_names(runner, folder)
    with small_disk(folder / "logs/trace") as disk:
        filler = disk / "filler"
        filler.write_bytes(b"x" * 100 * 1024)
        host = Host(runner, folder)
        host.log(3000)
        filler.unlink()
        host.log(10)
        host.end()
        errors = check_whole(disk / error)
        mains = check_whole(disk / main)
    assert len(errors) < 3010, "the disk never was full"
    for number in range(3001, 3011):
        assert any(line.endswith(b"Bogus.%d" % number) for line in errors), f"line {number} is lost in {error}"
        assert any(line.endswith(b"Bogus.%d" % number) for line in mains), f"line {number} is lost in {main}"
    assert mains[-1].endswith(b"trace stopped")


CASES = {"full-device": full_device, "full-then-freed": full_then_freed}


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("case", choices=CASES)
    parser.add_argument("--runner", required=True, help="runs a Windows program")
    parser.add_argument("--programs", type=pathlib.Path, required=True, help="where host and library are")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="dialwright-") as parent:
        CASES[options.case](options.runner, options.programs, parent)


if __name__ == "__main__":
    main()
