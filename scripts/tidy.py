#!/usr/bin/env python3
"""Runs clang-tidy-19 on the sources that changed since they were last clean.

What counts as changed is a hash over the file, the headers of ours that it reaches, its flags, the configuration and
the compiler; clean hashes are kept as empty files in the stamps folder. clang-tidy cannot ask zig for its flags, so
they are taken from what zig itself passes on ("zig c++ -###"), with clang 19's own headers in place of zig's.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

QUOTED = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def command_lines(build):
    """(source, flags) of every C++ source of ours in the build."""
    for entry in json.loads((build / "compile_commands.json").read_text()):
        words = shlex.split(entry["command"])
        flags = [w for w in words if w.startswith(("-D", "-I", "-std="))]
        for system in (i for i, w in enumerate(words) if w == "-isystem"):
            flags += ["-isystem", words[system + 1]]
        yield pathlib.Path(entry["file"]), flags


def system_flags(zig):
    """The include folders and definitions that zig adds by itself for a Windows target."""
    passed_on = subprocess.run(
        [zig, "c++", "-target", "x86_64-windows-gnu", "-###", "-c", "-x", "c++", os.devnull],
        capture_output=True, text=True, check=False).stderr
    line = next((l for l in passed_on.splitlines() if "-isystem" in l), None)
    if line is None:
        sys.exit(f"tidy: zig does not tell its flags; it says: {passed_on}")
    words = shlex.split(line)
    flags = ["--target=x86_64-w64-windows-gnu", "-nostdinc", "-nostdinc++"]
    for i, word in enumerate(words):
        if word == "-isystem" and not words[i + 1].endswith("lib/include"):
            flags += ["-isystem", words[i + 1]]
        elif word == "-D":
            flags.append("-D" + words[i + 1])
        elif word.startswith("-D") and len(word) > 2:
            flags.append(word)
    return flags + ["-isystem", "/usr/lib/llvm-19/lib/clang/19/include"]


def reached(source, roots, seen):
    """The source and all headers of ours that it includes."""
    if source in seen:
        return
    seen.add(source)
    for name in QUOTED.findall(source.read_text(encoding="utf-8")):
        for root in [source.parent, *roots]:
            if (root / name).is_file():
                reached((root / name).resolve(), roots, seen)
                break


def digest_of(source, flags, root, salt):
    files = set()
    reached(source, [root / "src", root / "include", root / "tests"], files)
    digest = hashlib.sha256(salt)
    digest.update(" ".join(flags).replace(str(root), "").encode())
    for path in sorted(files):
        digest.update(str(path.relative_to(root)).encode() + b"\0" + path.read_bytes())
    return digest.hexdigest()


def run_tidy(source, flags, root):
    result = subprocess.run(
        ["clang-tidy-19", "--quiet", f"--config-file={root / '.clang-tidy'}", str(source), "--", *flags],
        capture_output=True, text=True, check=False)
    return result.returncode == 0, result.stdout + (result.stderr if result.returncode else "")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--stamps", type=pathlib.Path, required=True)
    parser.add_argument("--all", action="store_true", help="also what is clean already")
    options = parser.parse_args()

    zig = str(pathlib.Path(os.environ["DIALWRIGHT_ZIG_DIR"]) / "zig")
    system = system_flags(zig)
    version = subprocess.run(["clang-tidy-19", "--version"], capture_output=True, check=True).stdout
    salt = (options.root / ".clang-tidy").read_bytes() + "\n".join(system).encode() + version
    options.stamps.mkdir(parents=True, exist_ok=True)
    work = []
    for source, flags in command_lines(options.build):
        if not source.is_relative_to(options.root) or source.is_relative_to(options.build):
            continue
        if source.suffix != ".cpp":
            continue
        stamp = options.stamps / digest_of(source, flags, options.root, salt)
        if options.all or not stamp.exists():
            work.append((source, flags + system, stamp))
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = {pool.submit(run_tidy, s, f, options.root): (s, stamp) for s, f, stamp in work}
        for done, job in enumerate(concurrent.futures.as_completed(jobs), 1):
            source, stamp = jobs[job]
            clean, output = job.result()
            print(f"[{done}/{len(work)}] {source.relative_to(options.root)}{'' if clean else ': FAILED'}", flush=True)
            if clean:
                stamp.touch()
            else:
                failed += 1
                print(output, flush=True)
    print(f"{len(work)} files checked, {failed} with findings")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
