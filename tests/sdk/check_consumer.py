#!/usr/bin/env python3
"""Builds a project of its own against an SDK: for x64 it drives Wine's Notepad, for ARM64 it links.

The SDK is moved to a folder with blanks and other letters first, as users unpack it anywhere. What the vcpkg port lays
out is linked, too.
"""

import argparse
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "scripts/package"))
import contents  # noqa: E402

MACHINES = {"x64": 0x8664, "arm64": 0xAA64}
BYTE_ORDER_MARK = b"\xef\xbb\xbf"
TEXT = "Typed by a consumer: Grüße, 日本語"
PATIENCE_SECONDS = 60


def run(*command, **options):
    outcome = subprocess.run([str(part) for part in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, text=True, check=False, timeout=300, **options)
    return outcome.returncode, outcome.stdout


def configure(project, package, build, toolchain):
    return run("cmake", "-G", "Ninja", "-S", project, "-B", build, f"-DCMAKE_TOOLCHAIN_FILE={toolchain}",
               f"-DDialwright_DIR={package}", "-DCMAKE_BUILD_TYPE=Release")


def build_consumer(project, package, build, toolchains, architecture):
    for code, said in (configure(project, package, build, toolchains / f"zig-{architecture}.cmake"),
                       run("cmake", "--build", build)):
        if code != 0:
            sys.exit(f"{architecture}: {said}")
    for name in ("run_script.exe", "Dialwright.dll"):
        data = (build / name).read_bytes()
        machine = struct.unpack_from("<H", data, struct.unpack_from("<I", data, 60)[0] + 4)[0]
        assert machine == MACHINES[architecture], f"{name} of {architecture} is for machine {machine:#x}"
    return build


def link_against_the_port(sdk, work, toolchains, architecture):
    tree = work / f"vcpkg {architecture}"
    code, said = run("cmake", f"-DCURRENT_PACKAGES_DIR={tree}", f"-DVCPKG_TARGET_ARCHITECTURE={architecture}",
                     "-P", sdk / "packaging/vcpkg/dialwright/portfile.cmake")
    assert code == 0, said
    for name in ("debug/bin/Dialwright.dll", "debug/lib/Dialwright.lib", "bin/Dialwright.pdb", "share/dialwright/copyright",
                 "share/dialwright/usage", "tools/dialwright/dialwright.exe"):
        assert (tree / name).is_file(), f"the port lays out no {name}"
    build_consumer(sdk / "examples/cmake", tree / "share/dialwright", work / f"port {architecture}", toolchains,
                   architecture)


def drive_notepad(build, runner, work):
    """The consumer types, closes and answers the question; the file on the disk is the proof."""
    title = f"consumer {os.getpid()}"
    text_file = work / f"{title}.txt"
    text_file.write_bytes(BYTE_ORDER_MARK)
    script = work / "script.txt"
    window = f'Notepad ".*{title}.*"'
    script.write_text(f'Window.SetText.Path {window} 1 "{TEXT}" 30000\nWindow.Close {window} 30000\n'
                      "Window.ClickButton #32770 Notepad 6 30000\n", encoding="utf-8")
    with (work / "notepad.out").open("wb") as output:
        notepad = subprocess.Popen([runner, "notepad", f"Z:{text_file}".replace("/", "\\")], stdin=subprocess.DEVNULL,
                                   stdout=output, stderr=output)
        with (work / "script.out").open("wb") as said:
            done = subprocess.run([runner, str(build / "run_script.exe"), str(script)], stdin=subprocess.DEVNULL,
                                  stdout=said, stderr=said, check=False, timeout=PATIENCE_SECONDS * 2)
        try:
            notepad.wait(PATIENCE_SECONDS if done.returncode == 0 else 0.1)
        except subprocess.TimeoutExpired:
            notepad.kill()
    said = (work / "script.out").read_text(encoding="utf-8", errors="replace")
    assert done.returncode == 0, f"run_script ended with {done.returncode}:\n{said}"
    deadline = time.monotonic() + PATIENCE_SECONDS
    while text_file.read_bytes() == BYTE_ORDER_MARK and time.monotonic() < deadline:
        time.sleep(0.05)  # between two looks at the condition
    assert text_file.read_bytes() == BYTE_ORDER_MARK + TEXT.encode(), text_file.read_bytes()


def refuse_other_architectures(sdk, work, toolchains):
    toolchain = work / "x86.cmake"
    toolchain.write_text(f'include("{toolchains}/zig-x64.cmake")\nset(CMAKE_SYSTEM_PROCESSOR X86)\n', encoding="utf-8")
    code, said = configure(sdk / "examples/cmake", sdk / "lib/cmake/Dialwright", work / "x86", toolchain)
    assert code != 0 and "has no Dialwright for 'x86'" in " ".join(said.split()), said


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", required=True, type=pathlib.Path)
    source = parser.add_mutually_exclusive_group(required=True)
    source.add_argument("--sdk", type=pathlib.Path, help="an unpacked SDK; it is copied, not changed")
    source.add_argument("--builds", nargs=2, type=pathlib.Path, help="the release builds to make an SDK of")
    options = parser.parse_args()
    toolchains = options.root / "cmake/toolchains"
    with tempfile.TemporaryDirectory(prefix="sdk ü ") as folder:
        work = pathlib.Path(folder)
        sdk = work / "the sdk"
        if options.sdk:
            shutil.copytree(options.sdk, sdk)
        else:
            contents.stage_sdk(options.root, options.builds, sdk)
        built = {name: build_consumer(sdk / "examples/cmake", sdk / "lib/cmake/Dialwright", work / name, toolchains, name)
                 for name in contents.ARCHITECTURES}
        for architecture in contents.ARCHITECTURES:
            link_against_the_port(sdk, work, toolchains, architecture)
        refuse_other_architectures(sdk, work, toolchains)
        drive_notepad(built["x64"], str(options.root / "scripts/wine-run"), work)
    print("The consumer links for ARM64, and for x64 it drove Notepad.")


if __name__ == "__main__":
    main()
