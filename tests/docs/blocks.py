"""Fenced blocks and command lines in code marks, as they stand in Markdown files."""

import dataclasses
import pathlib
import re
import subprocess

FENCE = re.compile(r"^(?P<indent> *)(?P<fence>`{3,}|~{3,})(?P<info>.*)$")
SPAN = re.compile(r"(?<!`)`([^`\n]+)`(?!`)")
COMMAND = re.compile(r"Window\.[A-Za-z.]+ ")


@dataclasses.dataclass
class Block:
    """A fenced block. The first word behind the fence is its kind, the others are marks such as `file=form.txt`."""
    path: str
    line: int
    info: str
    text: str

    @property
    def kind(self):
        return self.info.split()[0] if self.info.split() else ""

    @property
    def marks(self):
        return self.info.split()[1:]

    def value_of(self, name):
        return next((mark[len(name) + 1:] for mark in self.marks if mark.startswith(name + "=")), None)

    @property
    def place(self):
        return f"{self.path}:{self.line}"


def blocks_of(path, text):
    """The blocks of a file, in order. One that is never closed goes to the end of the file, as readers show it."""
    blocks, opened, lines = [], None, []
    for number, line in enumerate(text.splitlines(), 1):
        found = FENCE.match(line)
        if opened is None:
            if found:
                opened, begin, lines = found, number, []
        elif found and found["fence"].startswith(opened["fence"]) and not found["info"].strip():
            blocks.append(Block(path, begin, opened["info"].strip(), "".join(lines)))
            opened = None
        else:
            lines.append(line.removeprefix(opened["indent"]) + "\n")
    if opened is not None:
        blocks.append(Block(path, begin, opened["info"].strip(), "".join(lines)))
    return blocks


def outside_fences(text):
    """Numbers and lines of all that stands in no block."""
    fence = None
    for number, line in enumerate(text.splitlines(), 1):
        found = FENCE.match(line)
        if found:
            fence = None if fence and found["fence"].startswith(fence) else fence or found["fence"]
        elif not fence:
            yield number, line


def command_spans(path, text):
    """Command lines within sentences and tables, as blocks of one line. A name without arguments is only a name."""
    return [Block(path, number, "dialwright", span.replace("\\|", "|") + "\n")
            for number, line in outside_fences(text) for span in SPAN.findall(line) if COMMAND.match(span)]


def markdown_files(root):
    """Those that git knows or would know."""
    listed = subprocess.run(["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard", "--",
                             "*.md"], capture_output=True, check=True).stdout.decode().split("\0")
    return sorted(name for name in set(listed) if name and (pathlib.Path(root) / name).is_file())
