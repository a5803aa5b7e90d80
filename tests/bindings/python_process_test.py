#!/usr/bin/env python3
"""The Python binding on real programs: error files of a real host, and scripts carried out by dialwright.exe.

Loading the DLL into Python wants Python for Windows, and is not tested.
"""

import contextlib
import itertools
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "bindings" / "python"))
sys.dont_write_bytecode = True

import dialwright  # noqa: E402
from dialwright import library  # noqa: E402
from dialwright.error_log import ErrorLog  # noqa: E402

RUNNER = os.environ["DIALWRIGHT_RUNNER"]
PROGRAMS = pathlib.Path(os.environ["DIALWRIGHT_PROGRAMS"])
TOOL = [RUNNER, str(PROGRAMS / "dialwright.exe")]
DIALOG = "#32770"
OF_A_HOST = re.compile(rb"\] \[(\d+):(\d+)\] \[Dialwright")


@contextlib.contextmanager
def practice_window(title):
    program = [RUNNER, str(PROGRAMS / "practice_target.exe"), "--commands", "--title", title]
    process = subprocess.Popen(program, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    try:
        while not process.stdout.readline().startswith(b"ready "):
            assert process.poll() is None, "the practice target has ended"
        yield process
    finally:
        process.stdin.close()
        process.stdout.close()
        process.wait(30)


def run_host(folder, line):
    """A host of the library that carries out one line and ends. Its process and thread, as its trace has them."""
    host = folder / "run_script.exe"
    if not host.exists():
        shutil.copy(PROGRAMS / "run_script.exe", host)
        shutil.copy(PROGRAMS / "Dialwright.dll", folder)
    (folder / "script.txt").write_text(line, encoding="utf-8")
    subprocess.run([RUNNER, str(host), str(folder / "script.txt")], stdin=subprocess.DEVNULL,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=60, check=False)
    traces = [path for path in (folder / "logs" / "trace").iterdir() if not path.name.endswith("_error.log")]
    process, thread = OF_A_HOST.findall(b"".join(path.read_bytes() for path in traces))[-1]
    return host, int(process), int(thread)


class ErrorFiles(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)

    def test_only_what_this_process_and_thread_added_is_told(self):
        host, first, thread = run_host(self.folder, dialwright.command("Window.Close", "No", "日本 😀", timeout_ms=20))
        told = ErrorLog(host, first).lines_since({}, thread)
        self.assertRegex(told[0], r"^Window::Window: Window search failed after \d+ms$")
        self.assertTrue(told[-1].endswith('Invalid command: Window.Close "No" "日本 😀" 20'), told[-1])
        self.assertEqual(ErrorLog(host, first).lines_since({}, thread + 1), [])
        mark = ErrorLog(host, first).mark()
        _, second, thread = run_host(self.folder, dialwright.command("Window.Close", "No", "second", timeout_ms=20))
        told = ErrorLog(host, second).lines_since(mark, thread)
        self.assertEqual((len(told), '"second"' in told[-1]), (3, True))
        self.assertEqual(ErrorLog(host, first).lines_since(mark, thread), [])

    def test_a_host_without_files_has_no_lines(self):
        log = ErrorLog(self.folder / "none.exe", 1)
        self.assertEqual((log.mark(), log.lines_since({}, 1)), ({}, []))

    def test_files_of_other_hosts_are_not_read(self):
        _, process, thread = run_host(self.folder, dialwright.command("Window.Close", "No", "x", timeout_ms=20))
        self.assertEqual(ErrorLog(self.folder / "script.exe", process).lines_since({}, thread), [])

    def test_a_file_that_was_begun_anew_is_read_from_its_start(self):
        trace = self.folder / "logs" / "trace"
        trace.mkdir(parents=True)
        file = trace / "x.exe_1_Dialwright_2_error.log"
        prefix = "[2025-09-08 14:05:23.1234567 UTC+02:00] [7:9] [Dialwright  43   error] "
        file.write_bytes(f"{prefix}F: an old and long message\r\n{prefix}F: another\r\n".encode())
        log = ErrorLog(self.folder / "X.exe", 7)
        mark = log.mark()
        file.write_bytes(f"{prefix}F: new\n{' ' * 80}goes on\r\n".encode())
        self.assertEqual(log.lines_since(mark, 9), ["F: new\ngoes on"])


class Loading(unittest.TestCase):
    def test_the_library_is_the_one_for_the_processor(self):
        for platform, folder in (("win-amd64", "win-x64"), ("win-arm64", "win-arm64")):
            path = library.library_path(platform=platform)
            self.assertEqual(path.parts[-3:], ("native", folder, "Dialwright.dll"))
            self.assertTrue(path.is_absolute())

    def test_other_processors_are_refused_in_words(self):
        with self.assertRaisesRegex(OSError, "64-bit Windows, x64 and ARM64; this Python is for win32"):
            library.library_path(platform="win32")

    def test_elsewhere_than_on_windows_it_says_so(self):
        with self.assertRaisesRegex(OSError, "Python for Windows only"):
            library.load("Dialwright.dll")

    def test_a_zero_character_is_refused_as_the_library_would_stop_there(self):
        with self.assertRaisesRegex(ValueError, "zero character"):
            library._text("Window.Close c t\0")


class Running(unittest.TestCase):
    def test_it_tells_how_each_line_went(self):
        with practice_window("Python 😀"):
            lines = [dialwright.command("Window.SetText", DIALOG, "Python 😀", 12, "日本 😀", timeout_ms=5000),
                     dialwright.command("Window.SetCheckbox", DIALOG, "Python 😀", 31, True, timeout_ms=5000)]
            rows = dialwright.run(lines, TOOL)
        self.assertEqual([(row["line"], row["status"]) for row in rows], [(1, "ok"), (2, "ok")])

    def test_it_says_why_a_line_failed(self):
        with practice_window("Python fails"):
            missing = dialwright.command("Window.SetText", DIALOG, "Python fails", 999, "hunter22", timeout_ms=1000)
            said = r'^control_not_found: .*\(line 1: .*"\*{5}" 1000\)'
            with self.assertRaisesRegex(dialwright.LineFailed, said) as raised:
                dialwright.run([missing, missing], TOOL)
        self.assertIn("IDs that exist", raised.exception.suggestion)
        self.assertEqual(raised.exception.report["skipped"], 1)
        self.assertNotIn("hunter22", str(raised.exception.report))

    def test_secrets_come_from_a_file_and_from_variables(self):
        with practice_window("Python secrets") as practice, tempfile.TemporaryDirectory() as folder:
            secret_file = pathlib.Path(folder) / "secrets.txt"
            secret_file.write_text("PASSWORD=馬QX\n", encoding="utf-8")
            texts = [dialwright.secret("PASSWORD"), dialwright.environment("PIN_OF_TEST")]
            lines = [dialwright.command("Window.SetText", DIALOG, "Python secrets", 12, text) for text in texts]
            rows = dialwright.run(lines, TOOL, secret_file=secret_file, variables={"PIN_OF_TEST": "4711 Z"})
            practice.stdin.write(b"mark typed\n")
            practice.stdin.flush()
            said = list(itertools.takewhile(lambda said: not said.startswith(b"mark typed"), practice.stdout))
        typed = re.findall(r"sent 12 WM_CHAR U\+(\w+)", b"".join(said).decode())
        self.assertEqual("".join(chr(int(code, 16)) for code in typed), "馬QX4711 Z")
        self.assertNotRegex(str(rows), "QX|4711")

    def test_a_script_that_the_check_refuses_is_not_begun(self):
        with self.assertRaisesRegex(dialwright.RunError, "DW102") as raised:
            dialwright.run("Window.Clsoe c t 5", TOOL)
        self.assertEqual((type(raised.exception), raised.exception.exit_code), (dialwright.RunError, 2))

    def test_a_program_that_cannot_be_launched_is_an_error_though_no_line_has_failed(self):
        with self.assertRaisesRegex(dialwright.RunError, "launch_failed") as raised:
            dialwright.run("Window.Close c t 5", TOOL, options=["--launch", "no-such-program.exe"])
        self.assertEqual((type(raised.exception), raised.exception.exit_code), (dialwright.RunError, 3))

    def test_the_example_fills_in_a_form_and_shows_a_reason(self):
        example = ROOT / "examples" / "python" / "fill_form.py"
        ended = subprocess.run([sys.executable, "-B", str(example), str(PROGRAMS), RUNNER], stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, timeout=60, check=True)
        said = ended.stdout.decode()
        self.assertRegex(said, r"^control_not_found: .*\n    IDs that exist")
        self.assertRegex(said, r"\nok Window\.Close ")


if __name__ == "__main__":
    unittest.main()
