"""Links to headings, within a file and in another: each must lead to a heading that is there."""

import posixpath
import re

from blocks import outside_fences

LINK = re.compile(r"\]\((?!https?:)([^)#]*)#([^)]+)\)")
HEADING = re.compile(r"^#+ (.*)$")


def anchors_of(text):
    """As the usual readers of Markdown make them: small letters, blanks to hyphens, signs left out."""
    headings = (HEADING.match(line) for _, line in outside_fences(text))
    return {re.sub(r"[^\w\- ]", "", heading[1].lower()).replace(" ", "-") for heading in headings if heading}


def check_anchors(documents):
    """A file that is not there is the business of another check."""
    anchors = {path: anchors_of(text) for path, text in documents.items()}
    faults = []
    for path, text in documents.items():
        for number, line in outside_fences(text):
            for target, anchor in LINK.findall(line):
                leads_to = posixpath.normpath(posixpath.join(posixpath.dirname(path), target)) if target else path
                if leads_to in anchors and anchor not in anchors[leads_to]:
                    faults.append(f"{path}:{number}: {leads_to} has no heading #{anchor}")
    return faults
