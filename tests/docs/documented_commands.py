"""Which test runs the shell commands that the docs show.

A file documented_commands.txt has sections, and below each its commands:

    [test Suite.Name]                         this test runs them as they stand
    [like Suite.Name]                         it runs the same with windows and files of its own
    [test Suite.Name: all of docs/guide.md]   it runs whatever that file shows
    [dev build]                               ./dev build runs them
    [not run: why]                            nobody runs them here
"""

import collections
import re
import subprocess

import yaml

from blocks import Block

LIST = "documented_commands.txt"
SECTION = re.compile(r"\[(?P<how>test|like|dev|not run:) (?P<what>[^\]:]+)(?:: all of (?P<path>[^\]]+))?\]$")
CPP_TEST = re.compile(r"^TEST(?:_F|_P)?\((\w+), (\w+)\)", re.MULTILINE)
CMAKE_TEST = re.compile(r"\b[A-Z]\w+\.[A-Z]\w+\b")
HOUSE_TEST = re.compile(r"\bhouse_test\((\w+)")


def commands_of(block):
    """The commands of a shell block: a line each, without prompts, comments and what only joins lines."""
    lines = (line.strip().removeprefix("$ ") for line in block.text.replace("\\\n", " ").splitlines())
    return [" ".join(line.split()) for line in lines if line and not line.startswith("#")]


def workflow_commands(block):
    """What a workflow's steps run are commands as much as those of a shell block."""
    try:
        jobs = yaml.safe_load(block.text).get("jobs", {}).values()
        runs = [step["run"] for job in jobs for step in job.get("steps", []) if "run" in step]
    except (yaml.YAMLError, AttributeError):
        return []
    return [Block(block.path, block.line, "sh", run) for run in runs]


def _files(root, *patterns):
    listed = subprocess.run(["git", "-C", str(root), "ls-files", "--cached", "--others", "--exclude-standard", "--",
                             *patterns], capture_output=True, text=True, check=True).stdout.split()
    return [root / name for name in sorted(set(listed)) if (root / name).is_file()]


def known_tests(root):
    names = set()
    for path in _files(root, "*.cpp", "*CMakeLists.txt"):
        text = path.read_text(encoding="utf-8")
        if path.suffix == ".cpp":
            names |= {f"{suite}.{name}" for suite, name in CPP_TEST.findall(text)}
        else:
            names |= set(CMAKE_TEST.findall(text)) | {f"House.{name}" for name in HOUSE_TEST.findall(text)}
    return names


def _read_lists(root):
    """Pairs of a section's match and its commands, and what cannot be read."""
    sections, faults = [], []
    for path in _files(root, f"*{LIST}"):
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            line = line.strip()
            if not line or line.startswith("#"):
                continue
            found = SECTION.match(line)
            if found:
                sections.append((found, []))
            elif line.startswith("[") or not sections:
                faults.append(f"{path.relative_to(root)}:{number}: no section: {line}")
            else:
                sections[-1][1].append(line)
    return sections, faults


def _check_section(section, tests, dev_commands):
    if section["how"] in ("test", "like") and section["what"] not in tests:
        return [f"{LIST}: there is no test {section['what']}"]
    if section["how"] == "dev" and section["what"] not in dev_commands:
        return [f"{LIST}: there is no ./dev {section['what']}"]
    return []


def check_commands(blocks, root):
    sections, faults = _read_lists(root)
    tests = known_tests(root)
    usage = subprocess.run([str(root / "dev"), "--help"], capture_output=True, text=True, check=True).stdout
    dev_commands = set(re.findall(r"^  ([a-z]+) ", usage, re.MULTILINE))
    shown = collections.defaultdict(list)
    for block in blocks:
        for command in commands_of(block):
            shown[command].append(block)
    whole_files = {section["path"] for section, _ in sections if section["path"]}
    listed = {command for _, commands in sections for command in commands}
    for section, commands in sections:
        faults += _check_section(section, tests, dev_commands)
        faults += [f"{LIST}: nothing shows: {command}" for command in commands if command not in shown]
    faults += [f"{LIST}: no commands in {path}" for path in whole_files - {block.path for block in blocks}]
    for command, its_blocks in shown.items():
        faults += [f"{block.place}: no test is known to run: {command}" for block in its_blocks
                   if command not in listed and block.path not in whole_files]
    return faults
