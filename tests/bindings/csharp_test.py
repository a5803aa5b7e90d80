#!/usr/bin/env python3
"""Compiles the C# binding with Mono, in the language and with the warnings that PowerShell 5.1 has, and tests it.

The calls of the library want .NET on Windows and are compiled only; the part for .NET 8 not even that.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
RUNNER = os.environ["DIALWRIGHT_RUNNER"]
PROGRAMS = pathlib.Path(os.environ["DIALWRIGHT_PROGRAMS"])
SKIPPED = 77
OF_A_HOST = re.compile(rb"\] \[(\d+):(\d+)\] \[Dialwright")


def compile_sources(output, sources, *options):
    subprocess.run(["mcs", "-langversion:5", "-warn:4", "-warnaserror", f"-out:{output}", *options,
                    *map(str, sources)], check=True)


def powershell_sources():
    """What the module of PowerShell compiles by itself, without the reader of JSON."""
    module = (ROOT / "bindings" / "powershell" / "Dialwright" / "Dialwright.psm1").read_text(encoding="utf-8")
    return re.findall(r"\w+\.cs", re.search(r"^\$sources = (.*)$", module, re.MULTILINE).group(1))


def real_host(folder):
    """A host that has failed at one line; its program, process and thread."""
    for name in ("run_script.exe", "Dialwright.dll"):
        shutil.copy(PROGRAMS / name, folder)
    script = folder / "script.txt"
    script.write_text('Window.Close "No" "日本 😀" 20', encoding="utf-8")
    subprocess.run([RUNNER, str(folder / "run_script.exe"), str(script)], stdin=subprocess.DEVNULL,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=60, check=False)
    errors, = (folder / "logs" / "trace").glob("*_error.log")
    return [str(folder / "run_script.exe"), *map(bytes.decode, OF_A_HOST.search(errors.read_bytes()).groups())]


def main():
    if not shutil.which("mcs") or not shutil.which("mono"):
        print("skipped: Mono is not installed (mono-mcs, mono-runtime)")
        return SKIPPED
    binding = ROOT / "bindings" / "csharp"
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        compile_sources(folder / "powershell.dll", [binding / name for name in powershell_sources()], "-target:library")
        compile_sources(folder / "example.exe", [*binding.glob("*.cs"), *(ROOT / "examples" / "csharp").glob("*.cs")],
                        "-r:System.Runtime.Serialization.dll")
        tests = folder / "tests.exe"
        compile_sources(tests, [*binding.glob("*.cs"), *(HERE / "csharp").glob("*.cs")],
                        "-r:System.Runtime.Serialization.dll", "-r:System.Xml.dll")
        tool = [RUNNER, str(PROGRAMS / "dialwright.exe")]
        return subprocess.run(["mono", str(tests), str(HERE / "lines.json"), *real_host(folder), *tool],
                              timeout=60, check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
