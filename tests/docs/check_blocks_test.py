#!/usr/bin/env python3
"""What check_blocks.py finds and what it lets pass, on papers made up for it. Takes its options."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

from blocks import blocks_of
from check_blocks import check_documents, read_options
from checkers import Tools

options = None
GOOD_AND_BAD = {
    "dialwright": ("# a comment\nWindow.Close Notepad x 5000", "Window.Clsoe Notepad x 5000"),
    "practice.txt": ("Window.SetText c t 1 ${secret:PIN} 5000", "Window.SetText c t x ${secret:PIN} 5000"),
    "secrets.txt": ("PIN=1", "PIN"),
    "c": ("int done = ExecuteCommand(L\"\");", "int done = ExecuteCommand();"),
    "cpp": ("#include <string>\nstd::string text;", "std::thread worker([] { ExecuteScript(L\"\") });"),
    "json": ('{"schema": 1}', '{"schema": 1,}'),
    "yaml": ("a: [1]", "a: [1"),
    "toml": ("a = 1", "a = "),
    "xml": ("<a/>", "<a>"),
    "python": ("a = 1", "a = "),
    "js": ("import a from 'a';\nawait a();", "let a = ;"),
    "text": ("anything", "```"),
}


def page(info, text):
    return f"# Title\n\n````{info}\n{text}\n````\n"


class BlockCheck(unittest.TestCase):
    def setUp(self):
        self.folder = self.enterContext(tempfile.TemporaryDirectory())
        self.root = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        subprocess.run(["git", "init", "-q", str(self.root)], check=True)
        self.put("dev", "#!/bin/sh\necho '  build  builds'\n").chmod(0o755)
        self.put("documented_commands.txt", "[test Made.Up]\nlisted\n[like Made.Too: all of guide.md]\n")
        self.put("CMakeLists.txt", "add_test(NAME Made.Up)\n")
        self.put("c.cpp", "TEST(Made, Too) {\n")
        (self.root / "include").symlink_to(options.root / "include")

    def put(self, name, text):
        (self.root / name).write_text(text, encoding="utf-8")
        return self.root / name

    def faults(self, documents):
        """Of these and of two that use what the list of commands has."""
        tools = Tools(options, self.folder)
        tools.root = self.root
        used = {"used.md": page("sh", "$ listed"), "guide.md": page("sh", "anything at all")}
        return check_documents(used | documents, tools)[0]

    def faults_of(self, info, text, path="docs/x.md"):
        return self.faults({path: page(info, text)})

    def test_a_good_block_passes_and_a_bad_one_does_not(self):
        for kind, (good, bad) in GOOD_AND_BAD.items():
            with self.subTest(kind):
                self.assertEqual(self.faults_of(kind, good), [])
                if kind != "text":
                    found = self.faults_of(kind, bad)
                    self.assertEqual(len(found), 1, found)
                    self.assertTrue(found[0].startswith("docs/x.md:3: "), found)

    def test_a_block_must_say_what_it_is(self):
        self.assertIn("does not say", self.faults_of("", "x")[0])
        self.assertIn("nobody checks blocks of cobol", self.faults_of("cobol", "x")[0])
        self.assertIn("is empty", self.faults_of("text", "")[0])

    def test_languages_without_a_checker_stand_where_others_test_them(self):
        self.assertIn("checked only in", self.faults_of("rust", "fn main() {}")[0])
        self.assertEqual(self.faults_of("rust", "fn main() {}", "bindings/rust/README.md"), [])

    def test_lines_that_are_wrong_on_purpose_say_how(self):
        self.assertEqual(self.faults_of("dialwright DW102", "Window.Clsoe Notepad x 5000"), [])
        self.assertEqual(len(self.faults_of("dialwright DW102 DW103", "Window.Clsoe Notepad x 5000")), 1)
        self.assertEqual(len(self.faults_of("dialwright", "Window.Close Notepad x 0")), 1)

    def test_command_lines_in_sentences_are_checked(self):
        self.assertEqual(self.faults({"x.md": "a `Window.Close Notepad x 5000` b `Window.Close`\n"}), [])
        self.assertEqual(len(self.faults({"x.md": "| `Window.Close Notepad` |\n"})), 1)

    def test_a_shell_command_must_be_listed(self):
        self.assertEqual(self.faults_of("sh", "# why\n$ listed"), [])
        self.assertIn("no test is known to run: unlisted", self.faults_of("sh", "listed\nunlisted")[0])
        workflow = "jobs: {a: {steps: [{run: unlisted}, {uses: x}]}}"
        self.assertIn("no test is known to run: unlisted", self.faults_of("yaml", workflow)[0])

    def test_the_list_holds_only_what_is_shown_and_tests_that_are_there(self):
        self.put("documented_commands.txt", "[test Made.Up]\nlisted\n[like Made.Too: all of guide.md]\nnowhere\n"
                                            "[test Made.Not]\n[dev fly]\n[not run: why]\n[like Made.Too: all of other.md]\n[so]\n")
        found = "\n".join(self.faults({}))
        for fault in ("nothing shows: nowhere", "no test Made.Not", "no ./dev fly", "no commands in other.md", "no section"):
            self.assertIn(fault, found)
        self.assertEqual(len(found.splitlines()), 5, found)

    def test_outputs_name_a_subcommand(self):
        self.assertEqual(self.faults_of("text output of dialwright run", "x"), [])
        self.assertIn("no subcommand ruin", self.faults_of("text output of dialwright ruin", "x")[0])

    def test_links_lead_to_headings(self):
        text = "# The `first` one: x.y!\n[a](#the-first-one-xy) [b](../b.md#b)\n```text\n# no heading\n```\n"
        self.assertEqual(self.faults({"docs/x.md": text, "b.md": "## B\n"}), [])
        self.assertEqual(len(self.faults({"docs/x.md": text + "[c](#no-heading) [d](../b.md#c)\n", "b.md": "## B\n"})), 2)

    def test_fences_end_where_readers_end_them(self):
        text = "````text\n```\ninner\n```\n````\n~~~sh\na\n```\n~~~\n  ```c file=x.c\n  b\n"
        self.assertEqual([(block.info, block.text) for block in blocks_of("x", text)],
                         [("text", "```\ninner\n```\n"), ("sh", "a\n```\n"), ("c file=x.c", "b\n")])


if __name__ == "__main__":
    options = read_options()
    unittest.main(argv=sys.argv[:1])
