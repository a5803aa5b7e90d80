#!/usr/bin/env python3
"""Whether a build works at all: the library comes and goes, every command does what it says, and the trace of a script is
read back. The first two are looked at by dialwright-verify.exe, from a process of its own."""

import argparse
import contextlib
import json
import os
import pathlib
import subprocess
import sys
import tempfile

COMMANDS = 27
TIME_LIMIT_S = 100
DIALOG = "#32770"


class Build:
    def __init__(self, options, folder):
        self.runner = options.runner
        self.bin = options.bin
        self.folder = pathlib.Path(folder)

    def run(self, program, *arguments):
        """Its exit code and what it printed; by way of a file, as whatever Wine starts would hold a pipe open."""
        with open(self.folder / "output", "w+b") as output:
            ended = subprocess.run([self.runner, str(self.bin / program), *arguments], cwd=self.folder,
                                   stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                                   timeout=TIME_LIMIT_S, check=False)
            output.seek(0)
            return ended.returncode, output.read().decode("utf-8", errors="replace")

    def check(self, name):
        """The steps of a check of dialwright-verify.exe's, which all passed."""
        code, said = self.run("dialwright-verify.exe", "--quick", "--only", name, "--json", "report.json")
        assert code == 0, f"dialwright-verify ended with {code} and said {said}"
        report = json.loads((self.folder / "report.json").read_text(encoding="utf-8"))
        check, = report["runs"][0]["checks"]
        assert check["result"] == "passed", json.dumps(check, indent=1)
        return check["steps"]

    @contextlib.contextmanager
    def window(self, title):
        program = [self.runner, str(self.bin / "practice_target.exe"), "--commands", "--title", title]
        process = subprocess.Popen(program, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        try:
            while not process.stdout.readline().startswith(b"ready "):
                assert process.poll() is None, "the practice target has ended"
            yield
        finally:
            process.stdin.close()
            process.stdout.close()
            process.wait(TIME_LIMIT_S)


def loads_and_frees(build):
    assert build.check("load"), "nothing was loaded"


def carries_out_every_command(build):
    done = {step["name"] for step in build.check("commands") if step["result"] == "passed"}
    assert len(done) == 2 * COMMANDS, f"of each command with and without expressions, {len(done)} were carried out"


def leaves_a_trace(build):
    title = f"Smoke {os.getpid()}"
    script = [f'Window.SetText {DIALOG} "{title}" 12 "hunter22 あ" 30000', f'Window.ClearText {DIALOG} "{title}" 15 30000',
              f'Window.ClickButton {DIALOG} "{title}" 4711 1000']
    (build.folder / "script.txt").write_text("\n".join(script) + "\n", encoding="utf-8")
    with build.window(title):
        code, said = build.run("dialwright.exe", "run", "--work-folder", "work", "script.txt")
    assert code == 1 and "control_not_found" in said, f"run ended with {code} and said {said}"
    code, rows = build.run("dialwright.exe", "trace", "show", "work/1/logs/trace", "--commands")
    shown = [row for row in rows.splitlines() if "Window." in row and "error: " not in row]
    results = [(word, name) for row, name in zip(shown, ("SetText", "ClearText", "ClickButton"))
               for word in ("ok", "failed") if f" {word} " in row and f"Window.{name} " in row]
    assert code == 0 and results == [("ok", "SetText"), ("ok", "ClearText"), ("failed", "ClickButton")], rows
    assert len(shown) == 3 and "Null button handle" in rows and "hunter22" not in rows, rows


CASES = {
    "LoadsAndFreesTheLibrary": loads_and_frees,
    "CarriesOutEveryCommand": carries_out_every_command,
    "LeavesATraceThatCanBeReadBack": leaves_a_trace,
}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("case", choices=CASES)
    parser.add_argument("--runner", required=True, help="what starts a Windows program here")
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the build's programs are")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        CASES[options.case](Build(options, folder))
    return 0


if __name__ == "__main__":
    sys.exit(main())
