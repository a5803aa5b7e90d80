#!/usr/bin/env python3
"""Plants one fault at a time into a copy of the sources and watches the tests turn red.

A fault that no test sees ends in exit code 1, as does one that does not compile. What has been tried is kept, so that
a run that was interrupted goes on where it was; when the sources have changed it begins anew.
"""

import argparse
import json
import pathlib
import re
import sys
import time

import mutations
import tree
from programs import PROGRAMS, Programs

MUTATIONS = "mutation/mutations.toml"


def say(text):
    print(text, file=sys.stderr, flush=True)


class Results:
    """What has been tried on one state of the sources, kept in a file."""

    def __init__(self, path, state):
        self.path = path
        self.kept = {"state": state, "tried": {}}
        if path.exists():
            earlier = json.loads(path.read_text(encoding="utf-8"))
            if earlier["state"] == state:
                self.kept = earlier
            else:
                say("The sources have changed since the last run: beginning anew.")

    @property
    def tried(self):
        return self.kept["tried"]

    def note(self, mutation, verdict, seconds):
        self.tried[mutation.key] = {"what": mutation.what, "file": mutation.file, "verdict": verdict,
                                    "seconds": round(seconds, 1)}
        self.path.write_text(json.dumps(self.kept, indent=1, ensure_ascii=False) + "\n", encoding="utf-8")


def is_killed(verdict):
    return verdict.startswith("red: ")


def try_one(mutation, copy, programs):
    """What became of it: "red: " and the test, "survived" or "does not compile"."""
    with copy.mutated(mutation):
        if not copy.build(PROGRAMS):
            return "does not compile"
        first_red = programs.first_red(mutation.first)
        return f"red: {first_red}" if first_red else "survived"


def make_sure_it_is_green(copy, programs):
    say("== Building and testing the sources as they are")
    if not copy.build(PROGRAMS):
        sys.exit(f"mutate: the sources do not build; see {copy.log}")
    first_red = programs.first_red(PROGRAMS[0])
    if first_red:
        sys.exit(f"mutate: {first_red} is red without any fault")


def run(chosen, results, copy, programs):
    for number, mutation in enumerate(chosen, 1):
        if mutation.key in results.tried:
            continue
        started = time.monotonic()
        verdict = try_one(mutation, copy, programs)
        results.note(mutation, verdict, time.monotonic() - started)
        say(f"{number}/{len(chosen)} {time.monotonic() - started:.0f} s  {mutation.what}: {verdict}")


def markdown(chosen, results):
    yield "| fault | file | found by |"
    yield "|---|---|---|"
    for mutation in chosen:
        verdict = results.tried.get(mutation.key, {}).get("verdict", "not tried")
        found = f"`{verdict.removeprefix('red: ')}`" if is_killed(verdict) else verdict.upper()
        yield f"| {mutation.what} | {mutation.file} | {found} |"


def options():
    parser = argparse.ArgumentParser(prog="./dev mutate", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", metavar="REGEX", default="", help="only faults whose file or sentence matches")
    parser.add_argument("--again", action="store_true", help="try the chosen ones although they have been tried")
    form = parser.add_mutually_exclusive_group()
    form.add_argument("--json", action="store_true", help="the results as JSON")
    form.add_argument("--check", action="store_true", help="only check that every fault can be planted")
    parser.add_argument("--root", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--work", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    return parser.parse_args()


def main():
    args = options()
    every = mutations.load(args.root / MUTATIONS)
    faults = [f for m in every for f in m.faults(args.root, PROGRAMS)]
    if len({m.key for m in every}) != len(every):
        faults.append("two faults are the same")
    if faults:
        sys.exit("\n".join(f"mutate: {f}" for f in faults))
    if args.check:
        print(f"{len(every)} faults can be planted")
        return 0
    chosen = [m for m in every if re.search(args.only, f"{m.file} {m.what}")]
    if not chosen:
        sys.exit(f"mutate: no fault matches {args.only}")
    copy = tree.Copy(args.root, args.work)
    results = Results(args.work / "results.json", copy.refresh())
    if args.again:
        for mutation in chosen:
            results.tried.pop(mutation.key, None)
    if any(m.key not in results.tried for m in chosen):
        with Programs(copy) as programs:
            make_sure_it_is_green(copy, programs)
            run(chosen, results, copy, programs)
    if args.json:
        print(json.dumps([results.tried[m.key] for m in chosen], indent=1, ensure_ascii=False))
    else:
        print("\n".join(markdown(chosen, results)))
    missed = [m for m in chosen if not is_killed(results.tried[m.key]["verdict"])]
    say(f"{len(chosen) - len(missed)} of {len(chosen)} faults turned a test red.")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
