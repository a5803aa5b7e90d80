"""The fuzz targets: native ones under libFuzzer, and the driver of the exports under Wine."""

import dataclasses
import json
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import time

from . import corpus

EXPORTS = "exports"
EXECUTED = re.compile(rb"stat::number_of_executed_units:\s+(\d+)")
WHAT = re.compile(r"does not hold: .*|runtime error: .*|SUMMARY: .*|ERROR: libFuzzer: .*")
# libFuzzer's own code for a run that was interrupted.
INTERRUPTED = 72
GRACE_SECONDS = 90
# The sanitizer remembers less of what was allocated where, which makes it faster by half. A replay has all of it.
SPARING = {"ASAN_OPTIONS": "malloc_context_size=2:quarantine_size_mb=16"}


@dataclasses.dataclass
class Outcome:
    target: str
    executions: int
    seconds: float
    finding: dict = None


class Turn:
    """One target while it runs."""

    def __init__(self, target, command, seconds, log, replay):
        self.target = target
        self.log = log
        self.replay = replay
        self.begin = time.monotonic()
        self.limit = self.begin + seconds + GRACE_SECONDS
        self.interrupted = False
        with log.open("wb") as output:
            # A group of its own, as Ctrl-C leaves it to us to end it; but no session, to which the system would give
            # as much time as to all of somebody else's.
            self.process = subprocess.Popen([str(part) for part in command], stdin=subprocess.DEVNULL, stdout=output,
                                            stderr=output, env={**SPARING, **os.environ}, process_group=0)

    def interrupt(self):
        self.interrupted = True
        self.process.send_signal(signal.SIGINT)

    def has_ended(self):
        if self.process.poll() is None and time.monotonic() > self.limit:
            self.process.kill()
            self.process.wait()
        return self.process.poll() is not None

    def outcome(self):
        said = self.log.read_bytes()
        executed = EXECUTED.findall(said)
        outcome = Outcome(self.target.name, int(executed[-1]) if executed else 0, time.monotonic() - self.begin)
        self.target.clean_up()
        code = self.process.returncode
        if code != 0 and not (self.interrupted and (code == INTERRUPTED or code < 0 or self.target.name == EXPORTS)):
            text = said.decode("utf-8", "replace")
            what = WHAT.search(text)
            found, replay = self.replay()
            outcome.finding = {"target": self.target.name, "input": str(found), "replay": replay,
                               "what": what.group(0).strip()[:300] if what else f"ended with {code}; see {self.log}"}
        return outcome


class Native:
    is_native = True

    def __init__(self, name, facts, options):
        self.name = name
        self.share = facts.get("share", 1)
        self.most = facts.get("most", 64)
        self.what = facts.get("what", "")
        self.holds = facts.get("holds", "")
        self.is_hidden = facts.get("hidden", False)
        self.dictionary = facts.get("dictionary")
        self.state = options.state
        self.house = options.house
        self.corpus = options.house / "corpus" / f"{name}.txt"
        self.program = options.programs / f"fuzz_{name}"

    def seeds(self):
        return corpus.unpack(self.corpus, self.state / "seeds" / self.name)

    def grown(self):
        folder = self.state / "corpus" / self.name
        folder.mkdir(parents=True, exist_ok=True)
        return folder

    def start(self, seconds):
        findings = self.state / "findings"
        findings.mkdir(parents=True, exist_ok=True)
        before = set(findings.iterdir())
        command = [self.program, self.grown(), self.seeds(), f"-max_total_time={seconds}", f"-max_len={self.most}",
                   "-print_final_stats=1", "-timeout=20", "-rss_limit_mb=2048",
                   f"-artifact_prefix={findings}/{self.name}-"]
        if self.dictionary:
            command.append(f"-dict={self.house}/dictionaries/{self.dictionary}.dict")

        def replay():
            mine = [f for f in set(findings.iterdir()) - before if f.name.startswith(self.name + "-")]
            found = max(mine, key=lambda file: file.stat().st_mtime, default=self.state / f"{self.name}.log")
            return found, f"{self.program} {found}"

        return Turn(self, command, seconds, self.state / f"{self.name}.log", replay)

    def clean_up(self):
        pass


class Exports:
    name = EXPORTS
    is_native = False
    is_hidden = False
    what = "the DLL as a host loads it, under Wine: lines, scripts, programs"
    holds = "lives on; results are 0 or 1 and right; `ValidateCommand` and `ValidateScript` agree"

    def __init__(self, options):
        self.share = 4
        self.state = options.state
        self.program = options.exports
        self.folder = options.state / "exports"
        self.runner = pathlib.Path(__file__).resolve().parent.parent / "wine-run"

    def start(self, seconds):
        # The library writes its trace beside the host.
        self.folder.mkdir(parents=True, exist_ok=True)
        for file in (self.program, self.program.with_name("Dialwright.dll")):
            shutil.copy2(file, self.folder)
        seed = random.SystemRandom().randrange(1, 2**32)
        log = self.state / f"{self.name}.log"
        command = [self.runner, self.folder / self.program.name, "--seed", seed, "--seconds", seconds]

        def replay():
            executed = EXECUTED.findall(log.read_bytes())
            until = f"--executions {int(executed[-1])}" if executed else f"--seconds {seconds + 60}"
            return f"the seed {seed}", f"{self.runner} {self.program} --seed {seed} {until}"

        return Turn(self, command, seconds, log, replay)

    def clean_up(self):
        shutil.rmtree(self.folder / "logs", ignore_errors=True)


def all_of(options):
    facts = json.loads((options.house / "targets.json").read_text(encoding="utf-8"))
    facts["planted"] = {"hidden": True}
    native = [Native(name, facts[name], options) for name in facts]
    return [*native, Exports(options)]
