#!/usr/bin/env python3
"""Lets mermaid itself, in a browser, read every diagram of our Markdown files.

Exit codes: 0 all can be drawn, 1 not so, 77 mermaid or the browser is not there.
"""

import argparse
import os
import pathlib
import sys
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service

from blocks import Block, blocks_of, markdown_files

SKIPPED = 77
MODULES = "DIALWRIGHT_DOCS_MODULES"
CHROMIUM = "/usr/bin/chromium"
DRAW = """
const [text, done] = arguments;
mermaid.render("drawn", text).then(drawn => done(drawn.svg.startsWith("<svg") ? "" : "nothing was drawn"),
                                   fault => done(String(fault.message || fault)));
"""


def start_browser():
    options = Options()
    options.binary_location = CHROMIUM
    for argument in ("--headless=new", "--disable-dev-shm-usage", "--allow-file-access-from-files"):
        options.add_argument(argument)
    if os.geteuid() == 0:
        options.add_argument("--no-sandbox")
    return webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))


class Painter:
    """A page with mermaid on it."""

    def __init__(self, modules, folder):
        script = pathlib.Path(modules) / "mermaid" / "dist" / "mermaid.min.js"
        page = pathlib.Path(folder) / "page.html"
        page.write_text(f"<!doctype html><script src='{script.as_uri()}'></script>", encoding="utf-8")
        self.browser = start_browser()
        self.browser.set_script_timeout(30)
        self.browser.get(page.as_uri())
        self.browser.execute_script("mermaid.initialize({startOnLoad: false, suppressErrorRendering: true});")

    def fault_of(self, diagram):
        return self.browser.execute_async_script(DRAW, diagram)

    def faults_of(self, blocks):
        found = ((block.place, self.fault_of(block.text)) for block in blocks)
        return [f"{place}: {fault}" for place, fault in found if fault]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", type=pathlib.Path, required=True)
    root = parser.parse_args().root
    modules = os.environ.get(MODULES)
    if not modules or not pathlib.Path(CHROMIUM).exists():
        print(f"skipped: {MODULES} does not say where mermaid is, or there is no {CHROMIUM}")
        return SKIPPED
    blocks = [block for path in markdown_files(root)
              for block in blocks_of(path, (root / path).read_text(encoding="utf-8")) if block.kind == "mermaid"]
    with tempfile.TemporaryDirectory() as folder:
        painter = Painter(modules, folder)
        try:
            bad = painter.faults_of([Block("made up", 1, "mermaid", "flowchart LR\n  a -- b ]\n")])
            assert bad, "mermaid takes a broken diagram, so this check proves nothing"
            faults = painter.faults_of(blocks)
        finally:
            painter.browser.quit()
    for fault in faults:
        print(fault)
    print(f"{len(blocks)} diagrams, {len(faults)} faults")
    return 1 if faults or not blocks else 0


if __name__ == "__main__":
    sys.exit(main())
