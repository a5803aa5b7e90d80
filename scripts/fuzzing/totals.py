"""The sums over all runs, in one JSON file."""

import fcntl
import json
import os


class Totals:
    def __init__(self, path):
        self.path = path
        self.targets = {}
        self.read()

    def read(self):
        if self.path.exists():
            self.targets = json.loads(self.path.read_text(encoding="utf-8"))["targets"]

    def of(self, name):
        return self.targets.get(name, {"executions": 0, "seconds": 0, "findings": []})

    def seconds(self, name):
        return self.of(name)["seconds"]

    def executions(self):
        return sum(target["executions"] for target in self.targets.values())

    def add(self, outcome):
        """Written at once and whole, so that a run may be ended at any time; another run may be adding, too."""
        self.path.parent.mkdir(parents=True, exist_ok=True)
        with self.path.with_suffix(".lock").open("w", encoding="utf-8") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            self.read()
            self.add_to_ours(outcome)
            new = self.path.with_suffix(".new")
            new.write_text(json.dumps(self.as_json(), indent=1) + "\n", encoding="utf-8")
            os.replace(new, self.path)

    def add_to_ours(self, outcome):
        target = self.of(outcome.target)
        target["executions"] += outcome.executions
        target["seconds"] = round(target["seconds"] + outcome.seconds, 1)
        if outcome.finding is not None:
            target["findings"].append(outcome.finding)
        self.targets[outcome.target] = target

    def as_json(self):
        return {"executions": self.executions(),
                "seconds": round(sum(target["seconds"] for target in self.targets.values()), 1),
                "findings": sum(len(target["findings"]) for target in self.targets.values()),
                "targets": dict(sorted(self.targets.items()))}
