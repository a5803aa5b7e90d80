#!/usr/bin/env python3
"""Checks a release DLL from its file: machine, exports, imports, hardening flags, version, and what lies beside it."""

import pathlib
import re
import sys

import pefile

MACHINES = {"x64": "IMAGE_FILE_MACHINE_AMD64", "arm64": "IMAGE_FILE_MACHINE_ARM64"}
EXPORTS = {1: "ValidateCommand", 2: "ValidateScript", 3: "ExecuteCommand", 4: "ExecuteScript", 5: "ProgramLaunch"}
# The universal C runtime is part of Windows 10 and later.
SYSTEM_LIBRARY = re.compile(r"(api-ms-win-crt-[a-z]+-l1-1-0|ntdll|kernel32|user32|advapi32|dbghelp)\.dll", re.IGNORECASE)
HARDENING = ["DYNAMIC_BASE", "HIGH_ENTROPY_VA", "NX_COMPAT"]


def version_strings(library):
    strings = {}
    for info in getattr(library, "FileInfo", [[]])[0]:
        for table in getattr(info, "StringTable", []):
            strings.update({k.decode(): v.decode() for k, v in table.entries.items()})
    return strings


def faults_of(architecture, path):
    library = pefile.PE(str(path))
    machine = pefile.MACHINE_TYPE[library.FILE_HEADER.Machine]
    if machine != MACHINES[architecture]:
        yield f"machine is {machine}"
    exports = {e.ordinal: e.name.decode() for e in library.DIRECTORY_ENTRY_EXPORT.symbols}
    if exports != EXPORTS:
        yield f"exports are {exports}"
    imported = [entry.dll.decode() for entry in library.DIRECTORY_ENTRY_IMPORT]
    for name in imported:
        if not SYSTEM_LIBRARY.fullmatch(name):
            yield f"imports {name}, which is not part of the system"
    for flag in HARDENING:
        if not getattr(library.OPTIONAL_HEADER, f"IMAGE_DLLCHARACTERISTICS_{flag}"):
            yield f"lacks {flag}"
    strings = version_strings(library)
    if strings.get("OriginalFilename") != "Dialwright.dll" or not re.fullmatch(
        r"\d+\.\d+\.\d+", strings.get("ProductVersion", "")
    ):
        yield f"version resource is {strings}"
    if not path.with_suffix(".pdb").is_file():
        yield "has no symbols beside it"


def main():
    architecture, path = sys.argv[1], pathlib.Path(sys.argv[2])
    if not path.is_file():
        print(f"{path} is not built; run cmake --build --preset arm64-release")
        return 1
    faults = list(faults_of(architecture, path))
    for fault in faults:
        print(f"{path.name} for {architecture}: {fault}")
    print(f"{path.stat().st_size} bytes, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
