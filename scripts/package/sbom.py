"""The bill of materials of a package, in SPDX 2.3: what is in it, and what is linked into its programs."""

import hashlib
import pathlib
import time
import uuid

# name, SPDX licence expression, what it is in, as far as it came with the compiler.
OF_THE_COMPILER = (
    ("libc++", "Apache-2.0 WITH LLVM-exception"),
    ("libc++abi", "Apache-2.0 WITH LLVM-exception"),
    ("libunwind", "Apache-2.0 WITH LLVM-exception"),
    ("compiler-rt", "Apache-2.0 WITH LLVM-exception"),
    ("mingw-w64-crt", "ZPL-2.1"),
)
OF_DEBIAN = (("CLI11", "BSD-3-Clause", "dialwright.exe"), ("nlohmann-json", "MIT", "the programs"))


def hashes(path):
    data = path.read_bytes()
    return [{"algorithm": name.upper(), "checksumValue": hashlib.new(name, data).hexdigest()}
            for name in ("sha1", "sha256")]


def package(name, version, licence, comment):
    return {"SPDXID": f"SPDXRef-{name.replace('+', 'p')}", "name": name, "versionInfo": version,
            "downloadLocation": "NOASSERTION", "filesAnalyzed": False, "licenseConcluded": licence,
            "licenseDeclared": licence, "copyrightText": "NOASSERTION", "comment": comment}


def verification_code(files):
    """As the standard has it: the SHA-1 of the files' sorted SHA-1s."""
    joined = "".join(sorted(entry["checksums"][0]["checksumValue"] for entry in files))
    return hashlib.sha1(joined.encode()).hexdigest()


def bill_of_materials(folder, version, commit, built, library_versions):
    """What SPDX tools read, as a dictionary; `built` in seconds since 1970."""
    paths = sorted(path for path in pathlib.Path(folder).rglob("*") if path.is_file())
    files = [{"SPDXID": f"SPDXRef-File-{number}", "fileName": f"./{path.relative_to(folder).as_posix()}",
              "checksums": hashes(path), "licenseConcluded": "NOASSERTION", "copyrightText": "NOASSERTION"}
             for number, path in enumerate(paths, 1)]
    own = package("Dialwright", version, "NOASSERTION", f"commit {commit}; no licence has been chosen yet by the owner")
    own["filesAnalyzed"] = True
    own["packageVerificationCode"] = {"packageVerificationCodeValue": verification_code(files)}
    linked = [package(name, f"as in zig {library_versions['zig']}", licence, "linked into the DLL and the programs")
              for name, licence in OF_THE_COMPILER]
    linked += [package(name, library_versions[name], licence, f"compiled into {place}")
               for name, licence, place in OF_DEBIAN]
    relations = [("SPDXRef-DOCUMENT", "DESCRIBES", own["SPDXID"])]
    relations += [(own["SPDXID"], "CONTAINS", entry["SPDXID"]) for entry in files]
    relations += [(own["SPDXID"], "STATIC_LINK", entry["SPDXID"]) for entry in linked]
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"{pathlib.Path(folder).name}",
        "documentNamespace": f"urn:uuid:{uuid.uuid5(uuid.NAMESPACE_OID, f'{folder.name} {commit}')}",
        "creationInfo": {"created": time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(built)),
                         "creators": ["Organization: The Dialwright developers", "Tool: dev package"]},
        "packages": [own, *linked],
        "files": files,
        "relationships": [{"spdxElementId": a, "relationshipType": kind, "relatedSpdxElement": b}
                          for a, kind, b in relations],
    }
