#!/usr/bin/env python3
"""The Python binding writes the lines of lines.json, and that file knows the library's commands."""

import json
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "bindings" / "python"))
sys.dont_write_bytecode = True

from dialwright import line  # noqa: E402

TABLE = json.loads((ROOT / "tests" / "bindings" / "lines.json").read_text(encoding="utf-8"))


def argument(value):
    if not isinstance(value, dict):
        return value
    (kind, name), = value.items()
    return {"secret": line.secret, "environment": line.environment}[kind](name)


def write(case):
    options = {python: case[name] for name, python in (("timeoutMs", "timeout_ms"), ("nonRegex", "non_regex"))
               if name in case}
    return line.command(case["command"], case["class"], case["title"], *map(argument, case["arguments"]), **options)


class Lines(unittest.TestCase):
    def test_the_table_has_the_librarys_commands(self):
        source = (ROOT / "src" / "language" / "commands.cpp").read_text(encoding="utf-8")
        rows = re.findall(r'Command\(L"([^"]+)", \{([^}]*)\}\)', source)
        self.assertEqual(TABLE["commands"], {name: len(re.findall(r"\w+", kinds)) for name, kinds in rows})

    def test_the_binding_has_the_tables_commands(self):
        self.assertEqual(line.COMMANDS, TABLE["commands"])

    def test_each_line_is_written_as_it_should_be(self):
        for case in TABLE["lines"]:
            with self.subTest(case["name"]):
                if "line" in case:
                    self.assertEqual(write(case), case["line"])
                else:
                    with self.assertRaisesRegex(ValueError, re.escape(case["refused"])):
                        write(case)

    def test_patterns_match_one_text(self):
        for case in TABLE["patterns"]:
            self.assertEqual(line.literal(case["text"]), case["pattern"])

    def test_masks_hide_what_was_typed(self):
        for case in TABLE["masked"]:
            self.assertEqual(line.mask(case["line"]), case["masked"])

    def test_messages_lose_what_was_typed(self):
        script = 'Window.Close c t 5\n Window.SetText c t 1 "a \\"quoted\\" word" 5\nWindow.SetText c t 1 abc 5'
        messages = ['Invalid: a "quoted" word', 'as written: a \\"quoted\\" word', "abc"]
        self.assertEqual(line.hide_texts(script, messages), ["Invalid: *****", "as written: *****", "abc"])


if __name__ == "__main__":
    unittest.main()
