"""Runs the benchmark programs."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
TIME_LIMIT_S = 300


class Void(Exception):
    """A run whose figures count for nothing."""


class Programs:
    """Runs the benchmark programs, each time in a folder that is new and gone afterwards."""

    def __init__(self, programs, work):
        self.programs = programs
        self.work = work
        self.before = [] if os.name == "nt" else [str(ROOT / "scripts" / "wine-run")]

    def run(self, name, *options, check):
        """The last JSON line that the program prints. `check` gets it, the folder and all that was printed."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.work))
        try:
            for file in (f"{name}.exe", "bench_target.exe", "Dialwright.dll"):
                shutil.copy(self.programs / file, folder)
            command = [*self.before, str(folder / f"{name}.exe"), *options]
            if name != "bench_library":
                command += ["--folder", self.windows_path(folder)]
            output = self.output_of(command, folder)
            printed = [l for l in output.splitlines() if l.startswith(b"{")]
            if not printed:
                raise Void(f"{' '.join(command)} printed no figures")
            figures = json.loads(printed[-1])
            check(figures, folder, output)
            return figures
        finally:
            shutil.rmtree(folder, ignore_errors=True)

    @staticmethod
    def windows_path(folder):
        return f"{folder}\\" if os.name == "nt" else "Z:" + str(folder).replace("/", "\\") + "\\"

    @staticmethod
    def output_of(command, folder):
        # Into files: Wine's services may inherit what the first program has, and would hold a pipe open.
        with open(folder / "printed", "wb") as printed, open(folder / "complaints", "wb") as complaints:
            try:
                code = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=printed,
                                      stderr=complaints, timeout=TIME_LIMIT_S, check=False).returncode
            except subprocess.TimeoutExpired:
                raise Void(f"{' '.join(command)} ran for more than {TIME_LIMIT_S} s") from None
        if code != 0:
            said = (folder / "complaints").read_text(errors="replace")[-500:]
            raise Void(f"{' '.join(command)} ended with {code}: {said}")
        return (folder / "printed").read_bytes()


def require_count(what, found, wanted):
    if found != wanted:
        raise Void(f"{found} {what} where {wanted} were written")


def check_nothing(_figures, _folder, _output):
    pass
