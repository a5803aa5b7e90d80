#!/usr/bin/env python3
"""Writes the grammar and the snippets of editors/vscode from the table of commands in docs/command_language.md.

    editors/generate.py           writes them anew
    editors/generate.py --check   exit code 1 when they are not what would be written
"""

import argparse
import json
import pathlib
import re
import sys

from grammar import grammar
from snippets import snippets

HERE = pathlib.Path(__file__).resolve().parent
TABLE = HERE.parent / "docs" / "command_language.md"
ROW = re.compile(r"^\| `(Window\.[A-Za-z.]+)` \| ([^|]+) \| ([^|]+) \|", re.MULTILINE)
LINE_WIDTH = 120


def commands():
    """(name, kinds of its own arguments, what it does), in the order of the table."""
    rows = []
    for name, arguments, action in ROW.findall(TABLE.read_text(encoding="utf-8")):
        kinds = () if arguments == "none" else tuple(arguments.split(", "))
        # A row may lean on the first of its family: "the same", "as `.Value`".
        if action == "the same":
            action = rows[-1][2]
        elif action.startswith("as `"):
            ending = action.split("`")[1]
            action = next(row[2] for row in rows if row[0].endswith(ending))
        rows.append((name, kinds, action))
    return rows


def on_one_line(value):
    if isinstance(value, dict):
        return "{ " + ", ".join(f"{json.dumps(key)}: {on_one_line(member)}" for key, member in value.items()) + " }"
    if isinstance(value, list):
        return "[" + ", ".join(map(on_one_line, value)) + "]"
    return json.dumps(value, ensure_ascii=False)


def pretty(value, indent=""):
    """JSON, on one line where there is room."""
    short = on_one_line(value)
    if not isinstance(value, (dict, list)) or (indent and len(indent + short) <= LINE_WIDTH):
        return short
    inner = indent + "  "
    if isinstance(value, dict):
        members = [f"{inner}{json.dumps(key)}: {pretty(member, inner)}" for key, member in value.items()]
        return "{\n" + ",\n".join(members) + f"\n{indent}}}"
    return "[\n" + ",\n".join(inner + pretty(member, inner) for member in value) + f"\n{indent}]"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true", help="writes nothing, and tells by the exit code")
    check = parser.parse_args().check
    rows = commands()
    files = {HERE / "vscode" / "syntaxes" / "dialwright.tmLanguage.json": grammar(rows),
             HERE / "vscode" / "snippets" / "dialwright.json": snippets(rows)}
    stale = 0
    for path, value in files.items():
        text = pretty(value) + "\n"
        if not check:
            path.write_text(text, encoding="utf-8")
        elif not path.exists() or path.read_text(encoding="utf-8") != text:
            print(f"{path.name} is not what editors/generate.py writes")
            stale += 1
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main())
