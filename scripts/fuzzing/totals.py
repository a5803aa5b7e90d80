"""The sums over all runs, in one JSON file."""

import json
import os


class Totals:
    def __init__(self, path):
        self.path = path
        self.targets = json.loads(path.read_text(encoding="utf-8"))["targets"] if path.exists() else {}

    def of(self, name):
        return self.targets.get(name, {"executions": 0, "seconds": 0, "findings": []})

    def seconds(self, name):
        return self.of(name)["seconds"]

    def executions(self):
        return sum(target["executions"] for target in self.targets.values())

    def add(self, outcome):
        """Written at once and whole, so that a run may be ended at any time."""
        target = self.of(outcome.target)
        target["executions"] += outcome.executions
        target["seconds"] = round(target["seconds"] + outcome.seconds, 1)
        if outcome.finding is not None:
            target["findings"].append(outcome.finding)
        self.targets[outcome.target] = target
        self.path.parent.mkdir(parents=True, exist_ok=True)
        new = self.path.with_suffix(".new")
        new.write_text(json.dumps(self.as_json(), indent=1) + "\n", encoding="utf-8")
        os.replace(new, self.path)

    def as_json(self):
        return {"executions": self.executions(),
                "seconds": round(sum(target["seconds"] for target in self.targets.values()), 1),
                "findings": sum(len(target["findings"]) for target in self.targets.values()),
                "targets": dict(sorted(self.targets.items()))}
