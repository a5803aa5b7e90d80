#!/usr/bin/env python3
"""Checks every fenced block and every command line of our Markdown files: each must be what its first word says. Links
to headings must lead to one.

    dialwright          dialwright check finds nothing in it but the codes that stand behind the word
    c, cpp              the build's compiler takes it; without an #include it is the body of a function
    json yaml toml xml  it can be parsed
    python, js          it can be compiled
    sh                  each command is in a documented_commands.txt, which names the test that runs it
    text                is only shown; "text output of dialwright run" must name a subcommand
    mermaid             diagrams.py parses it
    others              may stand where those who own the folder test them

Exit codes: 0 sound, 1 not so.
"""

import argparse
import collections
import pathlib
import sys
import tempfile

from anchors import check_anchors
from blocks import blocks_of, command_spans, markdown_files
from checkers import CHECKERS, Tools
from documented_commands import check_commands, workflow_commands

ELSEWHERE = {"mermaid", "sh"}
# Folders of packages and examples, whose own tests run what their papers show.
OWNED = ("bindings/", "editors/", "examples/", "packaging/")
THEIR_KINDS = {"cmake", "csharp", "go", "ini", "lua", "powershell", "rust", "vim"}


def check_kind(block):
    known = CHECKERS.keys() | ELSEWHERE | THEIR_KINDS
    if not block.kind:
        return [f"{block.place}: the block does not say what it is"]
    if block.kind not in known:
        return [f"{block.place}: nobody checks blocks of {block.kind}"]
    if block.kind in THEIR_KINDS and not block.path.startswith(OWNED):
        return [f"{block.place}: {block.kind} is checked only in {', '.join(OWNED)}"]
    return [] if block.text.strip() else [f"{block.place}: the block is empty"]


def check_documents(documents, tools):
    """Faults, and how many blocks of each kind there were."""
    blocks = [block for path, text in documents.items() for block in blocks_of(path, text)]
    faults = [fault for block in blocks for fault in check_kind(block)]
    counts = collections.Counter(block.kind for block in blocks)
    spans = [block for path, text in documents.items() for block in command_spans(path, text)]
    counts["command lines in sentences"] = len(spans)
    by_checker = collections.defaultdict(list)
    for block in blocks + spans:
        if block.kind in CHECKERS:
            by_checker[CHECKERS[block.kind]].append(block)
    for check, its_blocks in by_checker.items():
        faults += check(its_blocks, tools)
    shell = [block for block in blocks if block.kind == "sh"]
    shell += [command for block in blocks if block.kind == "yaml" for command in workflow_commands(block)]
    return faults + check_commands(shell, tools.root) + check_anchors(documents), counts


def read_options(arguments=None):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", type=pathlib.Path, required=True, help="the repository")
    parser.add_argument("--runner", required=True, help="what starts Windows programs")
    parser.add_argument("--tool", required=True, help="dialwright.exe")
    parser.add_argument("--c", required=True, help="the C compiler")
    parser.add_argument("--cpp", required=True, help="the C++ compiler")
    parser.add_argument("--node", default="node", help="Node.js")
    return parser.parse_args(arguments)


def main():
    options = read_options()
    documents = {path: (options.root / path).read_text(encoding="utf-8") for path in markdown_files(options.root)}
    with tempfile.TemporaryDirectory() as folder:
        faults, counts = check_documents(documents, Tools(options, folder))
    for fault in faults:
        print(fault)
    print(f"{len(documents)} documents, {len(faults)} faults; "
          + ", ".join(f"{count} {kind}" for kind, count in sorted(counts.items())))
    return 1 if faults or not documents else 0


if __name__ == "__main__":
    sys.exit(main())
