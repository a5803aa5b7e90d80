"""The corpora: one text file a target in the repository, an input a line; folders of files in the state folder."""

import hashlib
import shutil
import subprocess
import sys

# All files together stay below half a megabyte.
MOST_BYTES_OF_A_TARGET = 16_000


def line_of(data):
    """As Python writes bytes; an editor must not take a blank from the end."""
    line = data.decode("latin-1").encode("unicode_escape").decode("ascii")
    return line[:-1] + "\\x20" if line.endswith(" ") else line


def read(path):
    if not path.exists():
        return []
    lines = path.read_text(encoding="ascii").splitlines()
    return [line.encode("ascii").decode("unicode_escape").encode("latin-1") for line in lines]


def unpack(path, folder):
    """The inputs of the repository's file as files, as the fuzzer wants them."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for data in read(path):
        (folder / hashlib.sha1(data).hexdigest()).write_bytes(data)
    return folder


def keep(targets):
    """Puts what both corpora reach, by as few and as short inputs as it takes, into the repository."""
    for target in targets:
        merged = target.state / "merged" / target.name
        shutil.rmtree(merged, ignore_errors=True)
        merged.mkdir(parents=True)
        command = [target.program, "-merge=1", f"-max_len={target.most}", merged, target.seeds(), target.grown()]
        subprocess.run([str(part) for part in command], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                       check=True, timeout=900)
        lines, used = [], 0
        for data in sorted(filter(None, (file.read_bytes() for file in merged.iterdir())), key=lambda d: (len(d), d)):
            line = line_of(data)
            used += len(line) + 1
            if used > MOST_BYTES_OF_A_TARGET:
                break
            lines.append(line)
        target.corpus.write_text("".join(line + "\n" for line in lines), encoding="ascii")
        print(f"{target.name}: {len(lines)} inputs kept", file=sys.stderr)
