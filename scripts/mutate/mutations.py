"""The list of faults."""

import dataclasses
import hashlib
import tomllib


@dataclasses.dataclass(frozen=True)
class Mutation:
    what: str
    file: str
    find: str
    replace: str
    first: str

    @property
    def key(self):
        return hashlib.sha256("\0".join((self.file, self.find, self.replace)).encode()).hexdigest()[:16]

    def apply(self, text):
        return text.replace(self.find, self.replace)

    def faults(self, root, programs):
        """Why it cannot be planted: sentences, none if it can."""
        path = root / "src" / self.file
        if not path.is_file():
            yield f"{self.what}: there is no src/{self.file}"
            return
        times = path.read_text(encoding="utf-8").count(self.find)
        if times != 1:
            yield f"{self.what}: its text stands {times} times in src/{self.file}, not once"
        if self.find == self.replace:
            yield f"{self.what}: it changes nothing"
        if self.first not in programs:
            yield f"{self.what}: {self.first} is none of {', '.join(programs)}"


def load(path):
    with path.open("rb") as file:
        return [Mutation(**row) for row in tomllib.load(file)["mutation"]]
