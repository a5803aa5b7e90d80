"""A copy of the sources with a build of its own, in which faults are planted."""

import contextlib
import hashlib
import shutil
import subprocess

PRESET = "x64-release"
BUILD_LIMIT_S = 1800


class Copy:
    def __init__(self, root, work):
        self.root = root
        self.folder = work / "tree"
        self.log = work / "build.log"
        self.build_folder = self.folder / "build" / PRESET
        self.bin = self.build_folder / "bin"
        self.wine_run = self.folder / "scripts" / "wine-run"

    def refresh(self):
        """Makes the copy equal to the sources and returns a hash over them. Untouched files keep their times, so that
        they are not built again."""
        listed = subprocess.run(["git", "-C", self.root, "ls-files", "-z", "--cached", "--others",
                                 "--exclude-standard"], capture_output=True, check=True).stdout
        names = sorted(n for n in listed.decode().split("\0") if n and (self.root / n).is_file())
        state = hashlib.sha256()
        for name in names:
            content = (self.root / name).read_bytes()
            if name.startswith(("src/", "tests/", "include/")):
                state.update(name.encode() + b"\0" + content)
            target = self.folder / name
            if target.is_file() and target.read_bytes() == content:
                continue
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(self.root / name, target)
            target.touch()
        return state.hexdigest()

    @contextlib.contextmanager
    def mutated(self, mutation):
        path = self.folder / "src" / mutation.file
        whole = path.read_text(encoding="utf-8")
        path.write_text(mutation.apply(whole), encoding="utf-8")
        try:
            yield
        finally:
            path.write_text(whole, encoding="utf-8")

    def build(self, targets):
        """Whether it builds; what the tools say is in the log."""
        with self.log.open("wb") as log:
            def succeeds(*command):
                return subprocess.run(command, cwd=self.folder, stdin=subprocess.DEVNULL, stdout=log,
                                      stderr=subprocess.STDOUT, timeout=BUILD_LIMIT_S, check=False).returncode == 0

            configured = (self.build_folder / "build.ninja").exists() or succeeds("cmake", "--preset", PRESET)
            return configured and succeeds("cmake", "--build", self.build_folder, "--target", *targets)
