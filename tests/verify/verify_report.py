#!/usr/bin/env python3
"""Unpacks this build as the SDK's archive would be, runs its verify.cmd, breaks things, and reads what the report says.

The folder's name has blanks and foreign letters. Everything runs under Wine, so a report must say so.
"""

import argparse
import copy
import json
import os
import pathlib
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import time

import jsonschema

FILES = ("Dialwright.dll", "dialwright.exe", "dialwright-host.exe", "dialwright-verify.exe",
         "dialwright-verify-plain.exe", "practice_target.exe")
CHECKS = ["files", "load", "trace", "commands", "refusals", "scripts", "exit", "dpi", "elevation", "crash", "tool"]
PATIENCE_SECONDS = {"x64": 150, "arm64": 800}
# In what the report calls them, and the number that stands in a program's header.
NAMES = {"x64": ("x64", 0x8664), "arm64": ("ARM64", 0xAA64)}


class Sdk:
    """The unpacked archive, and how it is run."""

    def __init__(self, options, base):
        self.options = options
        self.root = base / "sdk mit Blänk あ & co"
        self.temp = base / "temp"
        self.temp.mkdir(parents=True)
        self.output = base / "output"
        self.own = options.architecture
        self.other, = set(NAMES) - {self.own}
        self.add_programs(self.own)
        shutil.copy(options.root / "sdk" / "verify.cmd", self.root)

    def add_programs(self, architecture):
        folder = self.root / "bin" / architecture
        folder.mkdir(parents=True)
        for name in FILES:
            shutil.copy(self.options.bin / name, folder)

    def file(self, name, architecture=None):
        return self.root / "bin" / (architecture or self.own) / name

    def windows_path(self, path):
        return "Z:" + str(path).replace("/", "\\")

    def run(self, *arguments, report=None, **variables):
        """Runs verify.cmd; returns its exit code, its report and what it said."""
        environment = dict(os.environ, VERIFY=self.windows_path(self.root / "verify.cmd"),
                           VERIFYTEMP=self.windows_path(self.temp), **variables)
        # Wine sets TEMP from its registry, and Wine 10 the machine from what it knows, so both are set behind that.
        # cmd.exe reads no foreign letters from a file, and Wine's makes 1 of every exit code of a "call".
        starter = self.root.parent / "start.cmd"
        starter.write_text('@echo off\r\nset "TEMP=%VERIFYTEMP%"\r\nset "TMP=%VERIFYTEMP%"\r\n'
                           'if not "%MACHINE%"=="" set "PROCESSOR_ARCHITEW6432=%MACHINE%"\r\n'
                           '"%VERIFY%" %*\r\n', encoding="ascii", newline="")
        with self.output.open("wb") as stream:
            ended = subprocess.run([self.options.runner, "cmd", "/c", self.windows_path(starter), *arguments],
                                   stdin=subprocess.DEVNULL, stdout=stream, stderr=subprocess.STDOUT, env=environment,
                                   timeout=PATIENCE_SECONDS[self.own], check=False)
        said = self.output.read_text(encoding="utf-8", errors="replace")
        path = report or self.root / "verify-report.json"
        document = json.loads(path.read_text(encoding="utf-8")) if path.is_file() else None
        return ended.returncode, document, said

    def checks(self, *names, **variables):
        """Runs these checks alone; returns them by name."""
        only = [word for name in names for word in ("--only", name)]
        code, report, said = self.run("--quick", *only, **variables)
        assert report is not None, f"there is no report, and it said {said}"
        found = {check["name"]: check for check in report["runs"][0]["checks"]}
        assert set(found) == set(names), f"{set(found)} in place of {names}"
        assert code == (1 if any(c["result"] == "failed" for c in found.values()) else 0), f"exit code {code}"
        assert not report["summary"]["whole"], "half a report says that it is whole"
        return found


def expect_failed(check, *parts):
    assert check["result"] == "failed", f"{check['name']} has not failed: {json.dumps(check, indent=1)}"
    for part in parts:
        assert part in check["why"], f"{check['name']} says {check['why']!r} and not {part!r}"


def failed_steps(check):
    return {step["name"] for step in check["steps"] if step["result"] == "failed"}


def spoilt(document):
    """The document with one mistake, in every place where there are members: one too much, or one missing."""
    def places(value):
        if isinstance(value, dict):
            yield value
        for member in value.values() if isinstance(value, dict) else value if isinstance(value, list) else ():
            yield from places(member)

    for index, place in enumerate(places(document)):
        copied = copy.deepcopy(document)
        list(places(copied))[index]["unknown"] = 1
        yield copied
        for name in place:
            copied = copy.deepcopy(document)
            del list(places(copied))[index][name]
            yield copied


def check_schema(options, report):
    folder = options.root / "docs" / "schemas"
    path = folder / "verify.schema.json"
    schema = json.loads(path.read_text(encoding="utf-8"))
    jsonschema.Draft7Validator.check_schema(schema)
    validator = jsonschema.Draft7Validator(schema, resolver=jsonschema.RefResolver(path.as_uri(), schema))
    validator.validate(report)
    small = copy.deepcopy(report)
    for run in small["runs"]:
        del run["doctor"]["checks"][1:]
        del run["checks"][1:]
        for check in run["checks"]:
            del check["steps"][1:]
    passed = [document for document in spoilt(small) if validator.is_valid(document)]
    assert not passed, f"the schema lets a mistake pass: {json.dumps(passed[0])[:2000]}"


def processes_of(folder):
    """What still runs of the programs below the folder."""
    for path in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
        try:
            line = path.read_bytes().decode(errors="replace")
        except OSError:
            continue  # it has ended meanwhile
        if folder.name in line and "verify_report.py" not in line:
            yield line


def expect_nothing_left(sdk, before):
    deadline = time.monotonic() + 10
    while list(processes_of(sdk.root)) and time.monotonic() < deadline:
        time.sleep(0.1)  # between two looks at the condition
    assert not list(processes_of(sdk.root)), f"these still run: {list(processes_of(sdk.root))}"
    assert not list(sdk.temp.iterdir()), f"this is left: {list(sdk.temp.iterdir())}"
    added = {path.relative_to(sdk.root) for path in sdk.root.rglob("*")} - before
    assert added == {pathlib.Path("verify-report.json")}, f"this came to the SDK's folder: {added}"


def finds_nothing_wrong(sdk):
    before = {path.relative_to(sdk.root) for path in sdk.root.rglob("*")}
    code, report, said = sdk.run("--quick")
    results = {check["name"]: check["result"] for run in report["runs"] for check in run["checks"]}
    assert code == 0, f"exit code {code}: {said}"
    # Wine keeps no rights apart.
    assert results == dict.fromkeys(CHECKS, "passed") | {"elevation": "skipped"}, said
    check_schema(sdk.options, report)
    run = report["runs"][0]
    assert not run["machine"]["isWindows"] and run["machine"]["wine"], "a report of Wine's says that it is of Windows"
    assert run["platform"].startswith("Wine ") and "nothing of real Windows" in report["summary"]["meaning"]
    assert "on Wine " in said and "10 passed, 0 failed, 1 skipped" in said, said
    commands = next(check for check in run["checks"] if check["name"] == "commands")
    assert len(commands["steps"]) == 2 * 27, "not every command was tried in both forms"
    text = json.dumps(report, ensure_ascii=False)
    for secret in (sdk.root.name, sdk.temp.parent.name, socket.gethostname()):
        assert secret not in text, f"the report holds {secret}"
    user = os.environ.get("USER") or "root"
    assert f"\\{user}" not in text, f"the report holds a path of {user}"
    expect_nothing_left(sdk, before)


def tells_what_is_missing(sdk):
    library, target, tool = (sdk.file(n) for n in ("Dialwright.dll", "practice_target.exe", "dialwright.exe"))
    whole = library.read_bytes()
    library.unlink()
    found = sdk.checks("files", "load", "dpi")
    expect_failed(found["files"], "Dialwright.dll: there is no such file")
    expect_failed(found["load"], "there is no such file: <sdk>\\Dialwright.dll")
    expect_failed(found["dpi"], "there is no such file")
    header = struct.unpack_from("<I", whole, 0x3C)[0]
    (own, _), (other, code) = NAMES[sdk.own], NAMES[sdk.other]
    library.write_bytes(whole[:header + 4] + struct.pack("<H", code) + whole[header + 6:])
    found = sdk.checks("files", "load")
    expect_failed(found["files"], f"0.1.0 {other}, and this program is {own}")
    expect_failed(found["load"], f"this library is for {other}, and this program is {own}")
    library.write_bytes(whole)
    target.unlink()
    expect_failed(sdk.checks("commands")["commands"], "practice_target.exe cannot be started: error 2")
    tool.unlink()
    expect_failed(sdk.checks("tool")["tool"], "dialwright.exe cannot be started")


def tells_what_the_library_does_wrong(sdk):
    shutil.copy(sdk.options.bin / "broken_library.dll", sdk.file("Dialwright.dll"))
    found = sdk.checks("files", "trace", "scripts", "refusals", "exit", "dpi", DIALWRIGHT_BROKEN="idle")
    for check in found.values():
        expect_failed(check)
    assert failed_steps(found["trace"]) >= {"there is a trace beside the host", "foreign letters are UTF-8"}
    assert len(failed_steps(found["refusals"])) == 13, failed_steps(found["refusals"])
    assert len(failed_steps(found["scripts"])) == 5, failed_steps(found["scripts"])
    assert failed_steps(found["exit"]) == {"ExitProcess 1", "return 1"}
    assert "a window is moved to physical pixels" in failed_steps(found["dpi"])
    loading = sdk.checks("load", DIALWRIGHT_BROKEN="leak")["load"]
    assert failed_steps(loading) == {"threads", "handles", "private bytes"}, failed_steps(loading)
    leaving = sdk.checks("exit", DIALWRIGHT_BROKEN="code")["exit"]
    expect_failed(leaving, "ExitProcess 1: exit code 3 in place of 7")
    sdk.file("dialwright.exe").unlink()
    crash = sdk.checks("crash", DIALWRIGHT_BROKEN="filter")["crash"]
    assert failed_steps(crash) == {"a crash keeps the errors before it", "the host's own crash filter stays",
                                   "the lines in a dump of this system are read"}, failed_steps(crash)
    expect_failed(sdk.checks("commands", DIALWRIGHT_BROKEN="crash")["commands"], "its process ended with 0xc0000005",
                  'in "Window.SetText"')


def outlives_what_hangs(sdk):
    before = {path.relative_to(sdk.root) for path in sdk.root.rglob("*")}
    whole = sdk.file("Dialwright.dll").read_bytes()
    shutil.copy(sdk.options.bin / "broken_library.dll", sdk.file("Dialwright.dll"))
    code, report, said = sdk.run("--limit", "5", "--only", "commands", DIALWRIGHT_BROKEN="hang")
    assert code == 1, said
    expect_failed(report["runs"][0]["checks"][0], 'it did not end within 5 s, in "Window.SetText"')
    # A library that says yes and does nothing: what was seen before the limit is in the report.
    code, report, said = sdk.run("--limit", "5", "--only", "commands", DIALWRIGHT_BROKEN="idle")
    check = report["runs"][0]["checks"][0]
    assert len(check["steps"]) > 15 and len(failed_steps(check)) == len(check["steps"]), json.dumps(check, indent=1)
    sdk.file("Dialwright.dll").write_bytes(whole)
    shutil.copy(sdk.options.bin / "hanging_target.exe", sdk.file("practice_target.exe"))
    code, report, said = sdk.run("--limit", "5", "--only", "commands")
    check = report["runs"][0]["checks"][0]
    expect_failed(check, 'it did not end within 5 s, in "Window.SetText"')
    assert any("Window::SetTextHelper" in line for line in check["trace"]), "the trace of the failure is not shown"
    expect_nothing_left(sdk, before)


def puts_its_report_elsewhere(sdk):
    blocked = sdk.root / "verify-report.json"
    blocked.mkdir()
    code, report, said = sdk.run("--quick", "--only", "files", report=sdk.temp / "verify-report.json")
    assert code == 0 and report["summary"]["passed"] == 1, said
    (sdk.temp / "verify-report.json").unlink()
    (sdk.temp / "verify-report.json").mkdir()
    code, _, said = sdk.run("--only", "files")
    assert code == 3 and "cannot be written" in said, f"exit code {code}: {said}"
    assert sdk.run("--only", "nothing")[0] == 2, "a check that there is not"
    sdk.file("dialwright-verify.exe").unlink()
    code, _, said = sdk.run()
    assert code == 3 and "unpack the whole archive" in said, said


def looks_at_both_on_arm64(sdk):
    """Both folders hold programs of one architecture here, as no others run: what counts is which were started."""
    sdk.add_programs(sdk.other)
    code, report, said = sdk.run("--quick", "--only", "files", MACHINE="ARM64")
    assert code == 0 and len(report["runs"]) == 2, said
    check_schema(sdk.options, report)
    sdk.file("practice_target.exe", "x64").unlink()
    code, report, said = sdk.run("--quick", "--only", "files", MACHINE="ARM64")
    results = [run["checks"][0]["result"] for run in report["runs"]]
    assert code == 1 and results == ["passed", "failed"], f"{results}: {said}"
    sdk.file("dialwright-verify.exe", "x64").unlink()
    code, report, said = sdk.run("--quick", "--only", "files", MACHINE="ARM64")
    assert code == 0 and "cannot be started" in report["notes"][0], said


def pauses_only_for_explorer(sdk):
    """Wine does not tell the command line, so it is told by a variable, which counts before the system's own."""
    file = sdk.windows_path(sdk.root / "verify.cmd")
    for line, pauses in ((f'C:\\Windows\\system32\\cmd.exe /c ""{file}" "', True),
                         (f'"C:\\Windows\\system32\\cmd.exe" /c ""{file}""', False),
                         (f'C:\\Windows\\system32\\cmd.exe /c "{file}" --quick', False),
                         ('"C:\\Windows\\system32\\cmd.exe"', False)):
        said = sdk.run("--only", "files", CMDCMDLINE=line)[2]
        assert ("Press any key" in said) == pauses, f"{line}: {said}"


CASES = {
    "FindsNothingWrongWithThisBuild": finds_nothing_wrong,
    "TellsWhatIsMissing": tells_what_is_missing,
    "TellsWhatTheLibraryDoesWrong": tells_what_the_library_does_wrong,
    "OutlivesWhatHangs": outlives_what_hangs,
    "PutsItsReportWhereItCanBeWritten": puts_its_report_elsewhere,
    "LooksAtBothKindsOfProgramsOnArm64": looks_at_both_on_arm64,
    "PausesOnlyForExplorer": pauses_only_for_explorer,
}


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("case", choices=CASES)
    parser.add_argument("--runner", required=True)
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--architecture", choices=NAMES, default="x64")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        CASES[options.case](Sdk(options, pathlib.Path(folder)))
    return 0


if __name__ == "__main__":
    sys.exit(main())
