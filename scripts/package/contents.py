"""What stands where in the SDK, and what a runtime package is made of."""

import pathlib
import shutil
import subprocess

ARCHITECTURES = ("x64", "arm64")
PROGRAMS = ("Dialwright.dll", "dialwright.exe", "dialwright-host.exe", "dialwright-verify.exe",
            "dialwright-verify-plain.exe", "practice_target.exe")

# (in the repository, in the SDK); folders come with all that git knows in them.
SDK_FILES = (
    ("sdk/README.md", "README.md"),
    ("sdk/verify.cmd", "verify.cmd"),
    ("sdk/nuget", "packaging/nuget"),
    ("sdk/vcpkg", "packaging/vcpkg"),
    ("CHANGELOG.md", "CHANGELOG.md"),
    ("CONTRIBUTING.md", "CONTRIBUTING.md"),
    ("SECURITY.md", "SECURITY.md"),
    ("bindings", "bindings"),
    ("docs", "docs"),
    ("editors", "editors"),
    ("examples", "examples"),
)
# Belongs to the system's own build.
LEFT_OUT = ("examples/CMakeLists.txt",)
RUNTIME_FILES = (("sdk/runtime/README.md", "README.md"),)


def known_files(root, folder):
    """The files that git knows or would know; all files where there is no git."""
    if not (root / ".git").exists():
        return sorted(path.relative_to(root).as_posix() for path in (root / folder).rglob("*") if path.is_file())
    listed = subprocess.run(["git", "-C", str(root), "ls-files", "--cached", "--others", "--exclude-standard", "--", folder],
                            capture_output=True, text=True, check=True).stdout.splitlines()
    return sorted(name for name in set(listed) if (root / name).is_file())


def copy(source, target):
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(source, target)


def stage_files(root, target, pairs):
    for source, place in pairs:
        for name in known_files(root, source):
            if name not in LEFT_OUT:
                copy(root / name, target / (place + name[len(source):]))


def install(builds, target):
    """What the builds install: programs, symbols, libraries, headers, the CMake package."""
    for build in builds:
        subprocess.run(["cmake", "--install", str(build), "--prefix", str(target)], stdout=subprocess.DEVNULL, check=True)


def stage_sdk(root, builds, target):
    install(builds, target)
    stage_files(root, target, SDK_FILES)


def stage_runtime(root, sdk, architecture, target):
    stage_files(root, target, RUNTIME_FILES)
    for name in PROGRAMS:
        copy(sdk / "bin" / architecture / name, target / name)


def sha256_sums(folder, sha256):
    paths = sorted(path.relative_to(folder).as_posix() for path in pathlib.Path(folder).rglob("*") if path.is_file())
    return "".join(f"{sha256(folder / path)}  {path}\n" for path in paths)
