#!/usr/bin/env python3
"""Writes the table of lines that all bindings share as a test in Rust, whose standard library reads no JSON."""

import json
import pathlib
import sys

HEAD = """// Written from lines.json.
use dialwright::{literal, mask, Argument, Command, COMMANDS};

fn refusal(command: Command) -> String {
    command.line().expect_err("it is refused").to_string()
}
"""


def text(value):
    """A Rust literal."""
    return '"' + "".join(c if c.isalnum() and c.isascii() else f"\\u{{{ord(c):x}}}" for c in value) + '"'


def argument(value):
    """A Rust expression; nothing for what its compiler refuses."""
    if isinstance(value, bool):
        return str(value).lower()
    if isinstance(value, int):
        return str(value)
    if isinstance(value, str):
        return None if any("\ud800" <= c <= "\udfff" for c in value) else text(value)
    if isinstance(value, dict):
        (kind, name), = value.items()
        return f"Argument::{kind.capitalize()}({text(name)}.to_owned())"
    if isinstance(value, list) and all(isinstance(number, int) for number in value):
        return f"&{value}[..]" if value else "Argument::Numbers(vec![])"
    return None


def command(row):
    arguments = [argument(value) for value in row["arguments"]]
    if None in arguments:
        return None
    parts = [f"Command::new({text(row['command'])}, {text(row['class'])}, {text(row['title'])})"]
    parts += [f".argument({each})" for each in arguments]
    parts += [f".timeout_ms({row['timeoutMs']})"] if "timeoutMs" in row else []
    parts += [".non_regex()"] if row.get("nonRegex") else []
    return "".join(parts)


def test(name, lines):
    return "\n".join(["", "#[test]", f"fn {name}() {{", *(f"    {line}" for line in lines), "}", ""])


def main():
    source, target = map(pathlib.Path, sys.argv[1:])
    table = json.loads(source.read_text(encoding="utf-8"))
    rows = [(row, command(row)) for row in table["lines"]]
    written = [f"assert_eq!({made}.line().as_deref(), Ok({text(row['line'])}), {text(row['name'])});"
               for row, made in rows if made and "line" in row]
    refused = [f"assert!(refusal({made}).contains({text(row['refused'])}), {text(row['name'])});"
               for row, made in rows if made and "line" not in row]
    counts = [f"assert!(COMMANDS.contains(&({text(name)}, {count})));" for name, count in table["commands"].items()]
    patterns = [f"assert_eq!(literal({text(row['text'])}), {text(row['pattern'])});" for row in table["patterns"]]
    masks = [f"assert_eq!(mask({text(row['line'])}), {text(row['masked'])});" for row in table["masked"]]
    target.write_text(HEAD + test("lines_are_written_as_in_every_language", written)
                      + test("lines_are_refused_as_in_every_language", refused)
                      + test("the_commands_are_those_of_the_table",
                             [*counts, f"assert_eq!(COMMANDS.len(), {len(counts)});"])
                      + test("a_literal_pattern_is_escaped", patterns) + test("masks_hide_typed_texts", masks))


if __name__ == "__main__":
    main()
