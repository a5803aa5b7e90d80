"""What each kind of block must be. A checker takes all blocks of its kind and returns what is wrong with them."""

import ast
import json
import pathlib
import subprocess
import tomllib
import xml.etree.ElementTree

import yaml

TIME_LIMIT = 100
# Not the library's, and every documented script has it.
COMMENTS = "DW390"


class Tools:
    """The programs that check, and a folder for what they read."""

    def __init__(self, options, folder):
        self.root = options.root
        self.dialwright = [options.runner, options.tool]
        self.c = options.c
        self.cpp = options.cpp
        self.node = options.node
        self.folder = pathlib.Path(folder)

    def write(self, name, text):
        path = self.folder / name
        path.write_text(text, encoding="utf-8")
        return str(path)

    def run(self, *command):
        return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              timeout=TIME_LIMIT, check=False)


def _each(check):
    """A checker of one text makes one of all blocks: it returns nothing, or throws."""
    def check_all(blocks, _tools):
        faults = []
        for block in blocks:
            try:
                check(block.text)
            except Exception as fault:  # whatever a parser throws is what is wrong
                faults.append(f"{block.place}: no {block.kind}: {str(fault).splitlines()[0]}")
        return faults
    return check_all


def check_scripts(blocks, tools):
    """All in one start of dialwright check. A finding must be a mark of its block, and each mark be found."""
    if not blocks:
        return []
    names = [tools.write(f"block{index}.txt", block.text) for index, block in enumerate(blocks)]
    ended = tools.run(*tools.dialwright, "check", "--disable", COMMENTS, "--format", "json", *names)
    if ended.returncode not in (0, 1):
        return [f"dialwright check ended with {ended.returncode}: {ended.stderr.decode()}"]
    faults = []
    for block, file in zip(blocks, json.loads(ended.stdout)["files"], strict=True):
        found = {finding["code"]: finding["text"] for finding in file["findings"]}
        expected = {mark for mark in block.marks if mark.startswith("DW")}
        faults += [f"{block.place}: {code} {text}" for code, text in found.items() if code not in expected]
        faults += [f"{block.place}: {code} is not found here" for code in sorted(expected - found.keys())]
    return faults


FRAGMENT = {
    "c": "#include <dialwright/dialwright.h>\n#include <stdio.h>\n#include <windows.h>\nvoid fragment(void) {{\n{}\n}}\n",
    "cpp": "#include <dialwright/dialwright.h>\n#include <string>\n#include <thread>\n#include <windows.h>\n"
           "void Fragment() {{\n{}\n}}\n",
}


def check_compiled(blocks, tools):
    """With the build's own compiler, and not linked. What includes nothing is the body of a function."""
    faults = []
    for index, block in enumerate(blocks):
        text = block.text if "#include" in block.text else FRAGMENT[block.kind].format(block.text)
        name = tools.write(f"block{index}.{block.kind}", text)
        compiler, standard = (tools.c, "c11") if block.kind == "c" else (tools.cpp, "c++20")
        ended = tools.run(compiler, "-c", "-o", name + ".obj", f"-std={standard}", "-Wall", "-Wextra", "-Werror",
                          "-Wno-unused-variable", f"-I{tools.root / 'include'}", name)
        if ended.returncode != 0:
            errors = [line for line in ended.stderr.decode().splitlines() if "error:" in line]
            faults.append(f"{block.place}: does not compile: {errors[0] if errors else ended.stderr.decode()}")
    return faults


def check_javascript(blocks, tools):
    """As modules, which may import and await everywhere; what a module may not write, nobody should."""
    faults = []
    for index, block in enumerate(blocks):
        ended = tools.run(tools.node, "--check", tools.write(f"block{index}.mjs", block.text))
        if ended.returncode != 0:
            errors = [line for line in ended.stderr.decode().splitlines() if "Error" in line]
            faults.append(f"{block.place}: no JavaScript: {errors[0] if errors else ended.stderr.decode()}")
    return faults


def check_outputs(blocks, tools):
    """`output of dialwright NAME` must name a subcommand that there is. Other text is only text."""
    faults = []
    for block in blocks:
        words = block.marks[:4]
        if words[:3] != ["output", "of", "dialwright"]:
            continue
        # Its help, and not that of the whole program.
        usage = f"Usage: dialwright {' '.join(words[3:])} ".encode()
        if len(words) < 4 or usage not in tools.run(*tools.dialwright, words[3], "--help").stdout:
            faults.append(f"{block.place}: dialwright has no subcommand {' '.join(words[3:])}")
    return faults


def _secrets(text):
    wrong = [line for line in text.splitlines() if line.strip() and not line.startswith("#") and "=" not in line]
    if wrong:
        raise ValueError(f"'{wrong[0]}' is not NAME=VALUE")


CHECKERS = {
    "dialwright": check_scripts,
    "practice.txt": check_scripts,
    "secrets.txt": _each(_secrets),
    "c": check_compiled,
    "cpp": check_compiled,
    "json": _each(json.loads),
    "yaml": _each(yaml.safe_load),
    "toml": _each(tomllib.loads),
    "xml": _each(xml.etree.ElementTree.fromstring),
    "python": _each(ast.parse),
    "js": check_javascript,
    "text": check_outputs,
}
