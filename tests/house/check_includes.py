#!/usr/bin/env python3
"""Checks that the include lines of src/ run only the allowed ways, and that windows.h has one door."""

import pathlib
import re
import sys

# Each folder may include from itself and from these.
ALLOWED = {
    "api": {"script", "launch", "trace", "platform", "language"},
    "script": {"window", "trace", "platform", "language"},
    "launch": {"trace", "platform"},
    "window": {"trace", "platform", "language"},
    "trace": {"platform"},
    "platform": set(),
    "language": set(),
}
WINDOWS_DOOR = "platform/windows.h"
QUOTED = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)
ANGLED = re.compile(r"^\s*#\s*include\s*<([^>]+)>", re.MULTILINE)


def faults_of(path, text):
    """The faults of one source, given its path relative to src/."""
    folder = path.split("/")[0]
    if folder not in ALLOWED:
        return [f"{path}: the folder {folder} is not in the plan of the house"]
    faults = []
    for included in QUOTED.findall(text):
        target = included.split("/")[0]
        if target == "dialwright":  # the public header
            target_allowed = folder == "api"
        else:
            target_allowed = target == folder or target in ALLOWED[folder]
        if not target_allowed:
            faults.append(f"{path}: must not include {included}")
    angled = ANGLED.findall(text)
    if any(name.lower() == "windows.h" for name in angled) and path != WINDOWS_DOOR:
        faults.append(f"{path}: includes <windows.h> past {WINDOWS_DOOR}")
    if folder == "language":
        # The headers of the standard library have no ending.
        faults += [f"{path}: must not include <{name}>" for name in angled if "." in name or "/" in name]
    return faults


def self_test():
    assert faults_of("script/a.cpp", '#include "window/window.h"\n') == []
    assert faults_of("window/a.cpp", '#include "script/retry.h"\n') != []
    assert faults_of("trace/a.cpp", '#include "window/window.h"\n') != []
    assert faults_of("language/a.cpp", '#include "platform/windows.h"\n') != []
    assert faults_of("language/a.cpp", "#include <windows.h>\n") != []
    assert faults_of("language/a.cpp", "#include <winuser.h>\n") != []
    assert faults_of("language/a.cpp", "#include <cwchar>\n") == []
    assert faults_of("window/a.cpp", "#include <Windows.h>\n") != []
    assert faults_of("elsewhere/a.cpp", "") != []


def main():
    if sys.argv[1:] == ["--self-test"]:
        self_test()
        return 0
    source = pathlib.Path(sys.argv[1])
    files = sorted(p for p in source.rglob("*") if p.suffix in {".h", ".cpp"})
    faults = [f for p in files for f in faults_of(p.relative_to(source).as_posix(), p.read_text(encoding="utf-8"))]
    for fault in faults:
        print(fault)
    print(f"{len(files)} files, {len(faults)} faults")
    return 1 if faults or not files else 0


if __name__ == "__main__":
    sys.exit(main())
