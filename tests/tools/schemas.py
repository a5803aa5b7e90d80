#!/usr/bin/env python3
"""Validates what dialwright.exe really prints: its JSON against docs/schemas, its SARIF against the official schema.

The official schema is not ours to keep: it is looked for in the folder that DIALWRIGHT_SCHEMAS names, or in
shared/schemas beside the repository. Exit codes: 0 valid, 1 not so, 77 there is no official schema.
"""

import argparse
import contextlib
import copy
import json
import os
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

SKIPPED = 77
SARIF_SCHEMA = "sarif-schema-2.1.0.json"
TITLE = f"Schemas {os.getpid()}"
PREFIX = "[2025-09-08 14:05:23.{:07} UTC+02:00] [7:9] [Dialwright  {} {:>7}] "
SCRIPT = "# why\nWindow.Clsoe c t\nWindow.SetText c t 1 4711\n"


def line(number, source, level, message):
    return PREFIX.format(number, source, level) + message + "\r\n"


# A line of the logger's own, two commands, the line of a rotation, and a torn one.
TRACE = (line(0, 1359, "info", "(Time Zone: X) (y, 1s) 2025-09-08 14:05:23.000 type: 0x10f size: 512 memory: 0x0")
         + "(Time Zone: X) (y, 1s) log rotated at 2025-09-08 14:05:23.000 type: 0x10f size: 512 memory: 0x1\r\n"
         + line(1, 40, "info", "DialogScriptManager::ExecuteScript: Executing command: Window.Close c t")
         + line(2, 43, "error", "DialogScriptManager::ExecuteScript: Invalid command: Window.Close c t")
         + line(3, 40, "info", "Window::Window: Initializing window search:\n" + 80 * " " + "Class:    c")
         + line(4, 43, "error", "Window::Window: Window search failed after 10ms")
         + "hunter22 torn")


class Tool:
    def __init__(self, runner, path, folder):
        self.start = [runner, path]
        self.folder = pathlib.Path(folder)

    def path(self, name):
        return str(self.folder / name)

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8", newline="")
        return self.path(name)

    def output(self, *arguments):
        ended = subprocess.run([*self.start, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.PIPE, timeout=60, check=False)
        assert ended.returncode in (0, 1, 3), f"{arguments} ended with {ended.returncode}: {ended.stderr!r}"
        return json.loads(ended.stdout)


@contextlib.contextmanager
def practice_window(runner, tool):
    """A window with controls, in a process of its own."""
    program = pathlib.Path(tool).parent / "practice_target.exe"
    process = subprocess.Popen([runner, str(program), "--commands", "--title", TITLE], stdin=subprocess.PIPE,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    while not process.stdout.readline().startswith(b"ready "):
        assert process.poll() is None, "the practice target has ended"
    try:
        yield
    finally:
        process.stdin.close()
        process.stdout.close()
        process.wait(30)


def real_outputs(tool):
    """The name of a schema, and what is printed for it."""
    script = tool.write("script.txt", SCRIPT)
    trace = tool.write("x_1.log", TRACE)
    secrets = tool.write("secrets.txt", "PIN=hunter22\n")
    yield "windows", tool.output("windows", "--json")
    yield "match", tool.output("match", "--json", "#32770", TITLE)
    yield "inspect", tool.output("inspect", "--json", "#32770", TITLE)
    yield "check", tool.output("check", "--format", "json", script)
    yield "run", tool.output("run", "--json", "-c", "Window.Close NoSuchClass none 50")
    yield "trace-show", tool.output("trace", "show", "--json", trace)
    yield "trace-commands", tool.output("trace", "show", "--commands", "--json", trace)
    yield "trace-audit", tool.output("trace", "audit", "--json", "--secret-file", secrets, trace)
    yield "doctor", tool.output("doctor", "--json", "--target", "#32770", TITLE)
    yield "doctor", tool.output("doctor", "--json", "--library", tool.path("nowhere.dll"))


def spoilt(document):
    """The document with one mistake, in every place where there are members: one is missing, or one is too much."""
    def places(value):
        if isinstance(value, dict):
            yield value
        for member in value.values() if isinstance(value, dict) else value if isinstance(value, list) else ():
            yield from places(member)

    for index in range(len(list(places(document)))):
        copied = copy.deepcopy(document)
        list(places(copied))[index]["unknown"] = 1
        yield copied
    for name in document:
        copied = copy.deepcopy(document)
        del copied[name]
        yield copied


def check_own(tool, folder):
    seen = set()
    for name, document in real_outputs(tool):
        path = folder / f"{name}.schema.json"
        schema = json.loads(path.read_text(encoding="utf-8"))
        jsonschema.Draft7Validator.check_schema(schema)
        validator = jsonschema.Draft7Validator(schema, resolver=jsonschema.RefResolver(path.as_uri(), schema))
        validator.validate(document)
        lists = [member for member in document.values() if isinstance(member, list)]
        assert all(lists), f"{name} holds an empty list, which proves nothing"
        passed = [d for d in spoilt(document) if validator.is_valid(d)]
        assert not passed, f"the schema of {name} lets a mistake pass: {json.dumps(passed[0])[:2000]}"
        seen.add(path.name)
    # What dialwright-verify writes is validated by its own test.
    others = {"parts.schema.json", "verify.schema.json"}
    unused = {path.name for path in folder.glob("*.schema.json")} - seen - others
    assert not unused, f"no output is validated against {unused}"


def check_sarif(tool, root):
    folders = [os.environ.get("DIALWRIGHT_SCHEMAS"), root.parent / "shared" / "schemas"]
    paths = [pathlib.Path(folder) / SARIF_SCHEMA for folder in folders if folder]
    path = next((p for p in paths if p.is_file()), None)
    if path is None:
        print(f"skipped: there is no {SARIF_SCHEMA}; DIALWRIGHT_SCHEMAS can name its folder")
        sys.exit(SKIPPED)
    validator = jsonschema.Draft4Validator(json.loads(path.read_text(encoding="utf-8")))
    document = tool.output("check", "--format", "sarif", tool.write("script.txt", SCRIPT))
    assert document["runs"][0]["results"], "no finding, which proves nothing"
    validator.validate(document)
    document["runs"][0]["results"][0]["level"] = "loud"
    assert not validator.is_valid(document), "the schema lets a mistake pass"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("case", choices=("own", "sarif"))
    parser.add_argument("--runner", required=True)
    parser.add_argument("--tool", required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        tool = Tool(options.runner, options.tool, folder)
        if options.case == "sarif":
            check_sarif(tool, options.root)
            return
        with practice_window(options.runner, options.tool):
            check_own(tool, options.root / "docs" / "schemas")


if __name__ == "__main__":
    main()
