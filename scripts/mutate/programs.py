"""The test programs that are asked, under Wine."""

import re
import subprocess
import time

# In this order, behind the one that a fault names: the quick ones first.
PROGRAMS = ["language_tests", "trace_unit_tests", "core_tests", "out_of_memory_tests", "foreground_tests", "dll_tests",
            "fault_tests", "trace_tests"]
TIME_LIMIT_S = 300
FAILED = re.compile(rb"\[  FAILED  \] ([\w/]+\.[\w/]+)")
RUNNING = re.compile(rb"\[ RUN      \] ([\w/]+\.[\w/]+)")


class Programs:
    """Runs test programs, each fault's in a Wine that was started for it: a program that was ended leaves its windows."""

    def __init__(self, copy):
        self.copy = copy
        self.said = copy.bin / "mutate.out"

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._server("-k")

    def first_red(self, first):
        """The first test that fails, or None. A program that crashes or hangs is red by the test that ran."""
        self._start_wine()
        for program in [first, *(p for p in PROGRAMS if p != first)]:
            red = self._red_of(program)
            if red:
                return red
        return None

    def _red_of(self, program):
        with self.said.open("wb") as said:
            test = subprocess.Popen([self.copy.wine_run, f"{program}.exe", "--gtest_fail_fast", "--gtest_color=no"],
                                    cwd=self.copy.bin, stdin=subprocess.DEVNULL, stdout=said, stderr=said)
            try:
                code = test.wait(TIME_LIMIT_S)
            except subprocess.TimeoutExpired:
                test.kill()
                test.wait()
                return f"{self._last_begun(program)}, past the time limit"
        if code == 0:
            return None
        failed = FAILED.search(self.said.read_bytes())
        return failed[1].decode() if failed else f"{self._last_begun(program)}, which ended its program"

    def _last_begun(self, program):
        found = RUNNING.findall(self.said.read_bytes())
        return found[-1].decode() if found else program

    def _server(self, option):
        subprocess.run([self.copy.wine_run, "--server", option], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=False)

    def _start_wine(self):
        """With one window that stays, as a desktop ends with its last window."""
        self._server("-k")
        self._server("-p")
        keeper = self.copy.bin / "desktop.out"
        with keeper.open("wb") as said:
            subprocess.run([self.copy.wine_run, "wineboot"], stdin=subprocess.DEVNULL, stdout=said, stderr=said,
                           check=True)
            subprocess.Popen([self.copy.wine_run, "practice_target.exe", "--hidden", "--title", "Keeps the desktop up"],
                             cwd=self.copy.bin, stdin=subprocess.DEVNULL, stdout=said, stderr=said)
        deadline = time.monotonic() + 60
        while b"ready" not in keeper.read_bytes():
            if time.monotonic() > deadline:
                raise TimeoutError("no window comes up under Wine")
            time.sleep(0.1)
