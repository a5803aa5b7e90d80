#!/usr/bin/env python3
"""Makes the packages twice out of the builds that are there and looks at the zips: what is in them, and that they are equal."""

import argparse
import hashlib
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
import zipfile

COMMIT = "0123456789abcdef0123456789abcdef01234567"
BUILT = 1_700_000_000
LINK = re.compile(r"\]\((?!https?:|#|mailto:)([^)#]+)")
EXPECTED = """
README.md CHANGELOG.md SECURITY.md SHA256SUMS sbom.spdx.json verify.cmd
include/dialwright/dialwright.h include/dialwright/dialwright_loader.h
lib/Dialwright.def lib/x64/Dialwright.lib lib/arm64/Dialwright.lib lib/x64/libDialwright.dll.a lib/arm64/libDialwright.dll.a
lib/cmake/Dialwright/DialwrightConfig.cmake lib/cmake/Dialwright/DialwrightConfigVersion.cmake
bin/x64/Dialwright.dll bin/x64/dialwright.exe bin/x64/dialwright-host.exe bin/x64/practice_target.exe
bin/arm64/Dialwright.dll bin/arm64/dialwright.exe bin/arm64/dialwright-host.exe bin/arm64/practice_target.exe
bin/x64/dialwright-verify.exe bin/arm64/dialwright-verify.exe bin/arm64/dialwright-verify-plain.exe
symbols/x64/Dialwright.pdb symbols/arm64/Dialwright.pdb symbols/x64/dialwright.exe.pdb symbols/arm64/dialwright.exe.pdb
examples/cmake/CMakeLists.txt examples/c/run_script.c examples/notepad/1-write.txt
bindings/python/dialwright/__init__.py bindings/node/index.js bindings/go/go.mod examples/go/main.go
include/dialwright/dialwright.hpp editors/README.md docs/README.md docs/command_language.md
packaging/nuget/dialwright.nuspec packaging/vcpkg/dialwright/portfile.cmake
""".split()


def make(options, out):
    subprocess.run([sys.executable, str(options.root / "scripts/package"), "--root", str(options.root), "--builds",
                    *map(str, options.builds), "--commit", COMMIT, "--built", str(BUILT), "--out", str(out)],
                   check=True, stdout=subprocess.DEVNULL)
    return {path.name: path for path in out.glob("*.zip")}


def unpack(path, into):
    """The package's folder, after the rules that hold for every zip of ours."""
    with zipfile.ZipFile(path) as archive:
        names = archive.namelist()
        assert {name.split("/")[0] for name in names} == {path.stem}, f"{path.name} has more than one folder at its top"
        folded = [name.lower() for name in names]
        assert len(set(folded)) == len(folded), "two names differ in letters' case alone"
        archive.extractall(into)
    return into / path.stem


def check_sums(folder):
    listed = {}
    for line in (folder / "SHA256SUMS").read_text(encoding="utf-8").splitlines():
        digest, name = line.split("  ", 1)
        listed[name] = digest
    there = {path.relative_to(folder).as_posix(): hashlib.sha256(path.read_bytes()).hexdigest()
             for path in folder.rglob("*") if path.is_file() and path.name != "SHA256SUMS"}
    assert listed == there, f"SHA256SUMS differs in {sorted(set(listed.items()) ^ set(there.items()))}"


def check_bill(folder):
    bill = json.loads((folder / "sbom.spdx.json").read_text(encoding="utf-8"))
    files = {entry["fileName"]: entry["checksums"] for entry in bill["files"]}
    there = {"./" + path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file()}
    assert set(files) == there - {"./SHA256SUMS", "./sbom.spdx.json"}
    for name, checksums in files.items():
        data = (folder / name).read_bytes()
        assert checksums == [{"algorithm": "SHA1", "checksumValue": hashlib.sha1(data).hexdigest()},
                             {"algorithm": "SHA256", "checksumValue": hashlib.sha256(data).hexdigest()}], name
    ids = [entry["SPDXID"] for entry in bill["files"] + bill["packages"]] + ["SPDXRef-DOCUMENT"]
    assert len(ids) == len(set(ids)) and all(re.fullmatch(r"SPDXRef-[A-Za-z0-9.-]+", name) for name in ids)
    for relation in bill["relationships"]:
        assert {relation["spdxElementId"], relation["relatedSpdxElement"]} <= set(ids), relation
    versions = {entry["name"]: entry["versionInfo"] for entry in bill["packages"]}
    assert {"Dialwright", "libc++", "CLI11", "nlohmann-json"} <= set(versions)
    assert all(re.search(r"\d+\.\d+\.\d+", version) for version in versions.values()), versions
    assert COMMIT in bill["packages"][0]["comment"]


def check_links(folder):
    for path in folder.rglob("*.md"):
        for target in LINK.findall(path.read_text(encoding="utf-8")):
            assert (path.parent / target).exists(), f"{path.relative_to(folder)} leads to {target}, which is not there"


def check_versions_agree(folder, version):
    port = json.loads((folder / "packaging/vcpkg/dialwright/vcpkg.json").read_text(encoding="utf-8"))
    assert port["version"] == version
    nuspec = ElementTree.parse(folder / "packaging/nuget/dialwright.nuspec").getroot()
    assert nuspec.find("{*}metadata/{*}version").text == version


def check_nuget(folder):
    """Every file that the package is made of is there, and its targets name only files of the package."""
    home = folder / "packaging/nuget"
    packed = set()
    for entry in ElementTree.parse(home / "dialwright.nuspec").getroot().iterfind("{*}files/{*}file"):
        source, target = entry.get("src").replace("\\", "/"), entry.get("target").replace("\\", "/")
        found = sorted((home / source).parent.glob(pathlib.PurePosixPath(source).name))
        assert found, f"the nuspec names {source}, which is not there"
        packed |= {target if target.endswith(path.name) else f"{target}/{path.name}" for path in found}
    text = (home / "build/native/dialwright.targets").read_text(encoding="utf-8")
    ElementTree.fromstring(text)
    for architecture in ("x64", "arm64"):
        for name in re.findall(r"\$\(MSBuildThisFileDirectory\)([\w\\$().]+)", text):
            name = "build/native/" + name.replace("$(DialwrightArchitecture)", architecture).replace("\\", "/")
            assert name in packed or any(path.startswith(name + "/") for path in packed), f"targets name {name}"


def check_line_ends(folder):
    for path in folder.rglob("*.cmd"):
        data = path.read_bytes()
        assert data.count(b"\n") == data.count(b"\r\n") > 0, f"{path.name} must have the line ends of Windows"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", required=True, type=pathlib.Path)
    parser.add_argument("--builds", required=True, nargs=2, type=pathlib.Path)
    parser.add_argument("--version", required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        first, second = (make(options, pathlib.Path(folder) / name) for name in ("first", "second"))
        expected = {f"dialwright-{options.version}-windows-{kind}.zip" for kind in ("sdk", "x64", "arm64")}
        assert set(first) == expected == set(second), sorted(first)
        for name, path in first.items():
            assert path.read_bytes() == second[name].read_bytes(), f"{name} differs from one run to the next"
            unpacked = unpack(path, pathlib.Path(folder))
            check_sums(unpacked)
            check_bill(unpacked)
            check_links(unpacked)
        sdk = pathlib.Path(folder) / f"dialwright-{options.version}-windows-sdk"
        missing = [name for name in EXPECTED if not (sdk / name).is_file()]
        assert not missing, f"the SDK lacks {missing}"
        check_versions_agree(sdk, options.version)
        check_nuget(sdk)
        check_line_ends(sdk)
    print(f"{len(first)} packages, each as promised and twice the same")


if __name__ == "__main__":
    main()
