#!/usr/bin/env python3
"""Has dialwright.exe write a JUnit report and validates it with the schema that its readers use."""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

from lxml import etree

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SKIPPED = 77
TIME_LIMIT_S = 60

# A control character, a character that XML does not have, bytes that are no text, and what XML and GitHub keep for
# themselves.
NASTY = (b'Window.Minimize.NonRegex NoSuchClass "<a & b> \x07 \xef\xbf\xbe \xff ]]> \' %" 100\n'
         b'Window.SetText NoSuchClass none 1 "typed text" 100\n')


class Program:
    def __init__(self, runner, path, folder):
        self.command = [*runner, str(path)]
        self.folder = folder

    def output(self, *arguments):
        """What it prints; into a file, as Wine's services may hold a pipe open."""
        with tempfile.TemporaryFile() as printed:
            subprocess.run([*self.command, *arguments], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=printed,
                           stderr=subprocess.DEVNULL, timeout=TIME_LIMIT_S, check=False)
            printed.seek(0)
            return printed.read()


def check_junit(program, schemas):
    schema = etree.XMLSchema(etree.parse(str(schemas / "junit-10.xsd")))
    program.output("run", "--json", "--junit", "report.xml", "nasty.txt")
    report = etree.parse(str(pathlib.Path(program.folder) / "report.xml"))
    schema.assertValid(report)
    suite = report.getroot()[0]
    assert (suite.get("tests"), suite.get("failures"), suite.get("skipped")) == ("2", "1", "1"), dict(suite.attrib)
    assert suite[0][0].get("type") == "window_not_found"
    assert b"typed text" not in etree.tostring(report)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--runner", action="append", default=[], help="what starts a Windows program here")
    parser.add_argument("--tool", type=pathlib.Path, required=True)
    options = parser.parse_args()
    schemas = pathlib.Path(os.environ.get("DIALWRIGHT_SCHEMAS", ROOT.parent / "shared" / "schemas"))
    if not schemas.is_dir():
        print(f"skipped: the schema is not in {schemas}; DIALWRIGHT_SCHEMAS can name its folder")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        (pathlib.Path(folder) / "nasty.txt").write_bytes(NASTY)
        check_junit(Program(options.runner, options.tool.resolve(), folder), schemas)
    return 0


if __name__ == "__main__":
    sys.exit(main())
