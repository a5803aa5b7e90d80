#!/usr/bin/env python3
"""Starts the practice target, fills in its form, and shows why a line fails.

python fill_form.py FOLDER [RUNNER]     where dialwright.exe and practice_target.exe are; RUNNER runs them elsewhere
"""

import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "bindings" / "python"))

import dialwright  # noqa: E402

DIALOG = "#32770"
TITLE = "Form (Python)"


def main(folder, *runner):
    folder = pathlib.Path(folder).resolve()
    tool = [*runner, str(folder / "dialwright.exe")]
    title = dialwright.literal(TITLE)
    form = [
        dialwright.command("Window.SetText", DIALOG, title, 12, "Ada Lovelace", timeout_ms=5000),
        dialwright.command("Window.SetText", DIALOG, title, 14, dialwright.environment("FORM_PASSWORD")),
        dialwright.command("Window.SetCheckbox", DIALOG, TITLE, 31, True, timeout_ms=5000, non_regex=True),
        dialwright.command("Window.ClickButton", DIALOG, title, 4711, timeout_ms=1000),
    ]
    target = [*runner, str(folder / "practice_target.exe"), "--title", TITLE]
    subprocess.Popen(target, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        dialwright.run(form, tool, variables={"FORM_PASSWORD": "correct horse"})
    except dialwright.LineFailed as failure:
        print(failure, failure.suggestion, sep="\n    ")
    for row in dialwright.run([dialwright.command("Window.Close", DIALOG, title)], tool):
        print(row["status"], row["text"])


if __name__ == "__main__":
    main(*sys.argv[1:])
