"""The TextMate grammar: each kind of argument in its place, and what the library or dialwright refuses as invalid.

There is a rule for each sequence of kinds that the table of commands has. The grammar is never stricter than
`dialwright check` and `run` are, but for a quote that is not closed; it cannot see that arguments are missing, that an
expression is faulty, or that a number has more than 32 bits.
"""

import grammar_parts

TOKEN = grammar_parts.TOKEN

# A kind of argument in the table: its scope, and the rule that reads it.
KINDS = {
    "control ID": ("constant.numeric.id", "integer"),
    "path": ("constant.numeric.path", "path"),
    "rectangle": ("constant.numeric.rectangle", "rectangle"),
    "tolerance": ("constant.numeric.tolerance", "natural"),
    "position": ("constant.numeric.position", "pair"),
    "size": ("constant.numeric.size", "pair"),
    "text": ("string.text", "text"),
    "item text": ("string.item", "literal"),
    "index": ("constant.numeric.index", "natural"),
    "state": ("constant.numeric.state", "state"),
    "timeout": ("constant.numeric.timeout", "integer"),
}

# How names begin, by family; what is left is about windows.
FAMILIES = {
    "text": "(?:SetText|ClearText)",
    "button": "ClickButton",
    "dropdown": "SelectDropdown",
    "radio": "SelectRadio",
    "checkbox": "SetCheckbox",
    "window": "",
}


def scoped(name, rule):
    return {"name": f"{name}.dialwright", "patterns": [{"include": f"#{rule}"}]}


def arguments(kinds):
    """All that stands behind class and title. A line that ends early is coloured as far as it goes."""
    captures = {str(at): scoped(*KINDS[kind]) for at, kind in enumerate(kinds, 1)}
    # Dropdowns, and they alone, let further numbers pass.
    if kinds[0] == "rectangle" and {"item text", "index"} & set(kinds):
        captures["1"] = scoped(KINDS["rectangle"][0], "long-rectangle")
    captures[str(len(kinds) + 1)] = {"name": "invalid.illegal.surplus.dialwright"}
    further = rf"(?:\s*({TOKEN}))?" * (len(kinds) - 1)
    return {"match": rf"({TOKEN}){further}(?:\s*(\S.*))?", "captures": captures}


def command(names, kinds):
    choice = "|".join(name.removeprefix("Window.").replace(".", r"\.") for name in names)
    return {
        "begin": rf'^(?=\s*"?Window\.(?:{choice})(?:\.NonRegex)?(?:[\s"]|$))',
        "end": "$",
        "patterns": [{"include": "#head"}, arguments((*kinds, "timeout"))],
    }


def head(non_regex, criterion):
    """Name, class and title. A name may stand in quotes."""
    quotes = grammar_parts.QUOTES
    parts = [(r'("?)', quotes["begin"]), (r"(Window\.[A-Za-z.]+)", {"patterns": [{"include": "#name"}]})]
    if non_regex:
        parts.append((r"(\.NonRegex)", {"name": "storage.modifier.non-regex.dialwright"}))
    parts += [(r'(\1)(?:(?<=")|(?!\S))', quotes["end"]),
              (rf"(?:\s*({TOKEN}))?", scoped("string.class", criterion)),
              (rf"(?:\s*({TOKEN}))?", scoped("string.title", criterion))]
    return {"match": r"^\s*" + "".join(expression for expression, _ in parts),
            "captures": {str(at): capture for at, (_, capture) in enumerate(parts, 1)}}


def family(name, beginning):
    return {"name": f"support.function.{name}.dialwright", "match": rf"Window\.{beginning}[A-Za-z.]*"}


def grammar(commands):
    sequences = {}
    for name, kinds, _ in commands:
        sequences.setdefault(kinds, []).append(name)
    rules = {"command-" + ("-".join(kinds) or "window").replace(" ", "-").lower(): command(names, kinds)
             for kinds, names in sequences.items()}
    return {
        "comment": "Written by editors/generate.py; change that, not this.",
        "name": "Dialwright",
        "scopeName": "source.dialwright",
        "fileTypes": ["dialwright"],
        "patterns": [{"include": f"#{rule}"} for rule in ("comment", *rules, "unknown-command")],
        "repository": {
            **rules,
            # A name that begins like a known one and has a quote stuck to it comes to the last of these.
            "head": {"patterns": [head(True, "literal"), head(False, "expression"), {"include": "#unknown-command"}]},
            "name": {"patterns": [family(*pair) for pair in FAMILIES.items()]},
            **grammar_parts.RULES,
        },
    }
