"""What dialwright.exe costs: a line of run, a look at a large window, a check of a long script."""

import contextlib
import json
import os
import pathlib
import subprocess
import tempfile
import time

TIME_LIMIT_S = 120


class Tool:
    def __init__(self, programs, before):
        self.programs = programs
        self.before = before

    def seconds(self, *options):
        """How long it ran, and what it printed. Into a file, as Wine's services may hold a pipe open."""
        with tempfile.TemporaryFile() as printed:
            begin = time.perf_counter()
            code = subprocess.run([*self.before, str(self.programs / "dialwright.exe"), *options],
                                  stdin=subprocess.DEVNULL, stdout=printed, stderr=subprocess.DEVNULL,
                                  timeout=TIME_LIMIT_S, check=False).returncode
            seconds = time.perf_counter() - begin
            if code != 0:
                raise OSError(f"dialwright {' '.join(options)} ended with {code}")
            printed.seek(0)
            return seconds, printed.read()

    @contextlib.contextmanager
    def target(self, title, commands=()):
        """A window to work on; it has carried the commands out."""
        process = subprocess.Popen([*self.before, str(self.programs / "practice_target.exe"), "--class", "BenchTarget",
                                    "--title", title, "--commands"], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        try:
            for command in (*commands, "mark done"):
                process.stdin.write(command + "\n")
            process.stdin.flush()
            while (line := process.stdout.readline()) and line.strip() != "mark done":
                pass
            yield
        finally:
            process.stdin.close()
            process.wait(TIME_LIMIT_S)


def write_script(folder, line, count):
    path = pathlib.Path(folder) / f"{count}.txt"
    path.write_text((line + "\n") * count)
    return str(path)


def milliseconds_run_adds(tool, folder, lines):
    """The whole of a run, less its start and less what the library's calls took, by the line."""
    title = f"Bench {os.getpid()}"
    with tool.target(title):
        line = f'Window.SetCheckbox BenchTarget "{title}" 31 1 5000'
        first, _ = tool.seconds("run", "--json", write_script(folder, line, 1))
        whole, printed = tool.seconds("run", "--json", write_script(folder, line, lines))
    calls = sum(row["milliseconds"] for row in json.loads(printed)["files"][0]["lines"])
    return ((whole - first) * 1000 - calls) / lines


def milliseconds_of_inspect(tool, controls):
    title = f"Bench many {os.getpid()}"
    create = [f"create static {20000 + number} {number % 30 * 20},{number // 30 * 12},18,10 0 text {number}"
              for number in range(controls)]
    with tool.target(title, create):
        seconds, printed = tool.seconds("inspect", "--json", "BenchTarget", title)
    found = len(json.loads(printed)["controls"])
    if found < controls:
        raise OSError(f"inspect has seen {found} of {controls} controls")
    return seconds * 1000


def measure_tool(programs, before, folder, sizes):
    tool = Tool(programs, before)
    yield "run_adds", "ours", milliseconds_run_adds(tool, folder, sizes.script_lines)
    yield "inspect", "ours", milliseconds_of_inspect(tool, sizes.controls)
    line = 'Window.SetText "#32770" "Sign in" 1001 "Ada Lovelace" 5000'
    seconds, _ = tool.seconds("check", write_script(folder, line, sizes.checked_lines))
    yield "check", "ours", seconds
