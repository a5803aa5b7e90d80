"""Rules of the grammar that are the same for every command: tokens, values and expressions."""

# As the library parts a line into tokens.
QUOTED = r'"(?:[^"\\]|\\.)*"'
TOKEN = QUOTED + r"|\S+"

QUOTES = {edge: {"name": f"punctuation.definition.string.{edge}.dialwright"} for edge in ("begin", "end")}

COORDINATE = r'\s*[-+]?\d[^,]*?'
SEGMENT = r'\s*\+?0*[1-9][^.]*?'

# A character of an expression behind a backslash, as a token in quotes has it: there two backslashes are one, and a
# single one stands for itself unless a quote or another follows.
ESCAPED_IN_QUOTES = r'(?:\\\\|\\(?!["\\]))(?:\\["\\]|[^"\\]|\\(?!["\\]))'


def rule(name, match, **more):
    return {"name": f"{name}.dialwright", "match": match, **more}


def includes(*names):
    return [{"include": f"#{name}"} for name in names]


def value(expression, captures):
    """A whole token with or without quotes; whatever else stands in its place is invalid."""
    captures = {"1": QUOTES["begin"], **captures, str(len(captures) + 2): QUOTES["end"]}
    return {"patterns": [{"match": rf'("?){expression}(\1)(?!\S)', "captures": captures}, *includes("bad-value")]}


def number(expression):
    ignored = {"name": "invalid.deprecated.ignored.dialwright"}
    return value(rf"(\s*{expression})(.*?)", {"2": {}, "3": ignored})


def numbers(expression):
    return value(f"({expression})", {"2": {"patterns": [rule("punctuation.separator", "[,.]")]}})


def text_token(name, quoted, unquoted):
    """One whole token: what stands in its quotes, or in the run of characters that it is."""
    return [
        *includes("empty"),
        {
            "name": f"{name}.quoted.double.dialwright",
            "begin": f"(?={QUOTED})\"",
            "end": '"',
            "beginCaptures": {"0": QUOTES["begin"]},
            "endCaptures": {"0": QUOTES["end"]},
            "patterns": quoted,
        },
        *includes("open-quote"),
        rule(f"{name}.unquoted", r'[^\s"]\S*', captures={"0": {"patterns": unquoted}}),
    ]


def character_set(escaped, plain):
    return rule("constant.other.character-class.set.regexp", rf"\[(?:{escaped}|{plain})*\]")


def escaped_sign(expression):
    return rule("constant.character.escape.regexp", expression)


PLACEHOLDER = rule(
    "variable.other.placeholder",
    r'("?)(\$\{)(env|secret)(:)(?:[^}"\\]|\\.)+(\})(\1)(?!\S)',
    captures={
        "1": QUOTES["begin"],
        "2": {"name": "punctuation.definition.placeholder.begin.dialwright"},
        "3": {"name": "keyword.other.placeholder.dialwright"},
        "4": {"name": "punctuation.separator.dialwright"},
        "5": {"name": "punctuation.definition.placeholder.end.dialwright"},
        "6": QUOTES["end"],
    })

EXPRESSION_SIGNS = [
    rule("keyword.operator.quantifier.regexp", r"(?:[*+?]|\{\d+(?:,\d*)?\})\??"),
    rule("punctuation.definition.group.regexp", r"\((?:\?[:=!])?|\)"),
    rule("keyword.operator.or.regexp", r"\|"),
    rule("keyword.control.anchor.regexp", r"[$^]"),
    rule("constant.character.character-class.regexp", r"\."),
]

RULES = {
    "comment": rule("comment.line.number-sign", r"^\s*(#).*$",
                    captures={"1": {"name": "punctuation.definition.comment.dialwright"}}),
    "unknown-command": {
        "match": rf"^\s*({TOKEN})(.*)",
        "captures": {"1": {"name": "invalid.illegal.command.dialwright"}, "2": {"patterns": includes("literal")}},
    },
    "integer": number(r"[-+]?\d+"),
    "natural": number(r"\+?\d+"),
    "state": number(r"\+?0*[01](?!\d)"),
    "path": numbers(rf"{SEGMENT}(?:\.{SEGMENT})*\.?"),
    "rectangle": numbers(rf"{COORDINATE}(?:,{COORDINATE}){{3}},?"),
    "long-rectangle": numbers(rf"{COORDINATE}(?:,{COORDINATE}){{3,}},?"),
    "pair": numbers(rf"{COORDINATE},{COORDINATE},?"),
    "bad-value": rule("invalid.illegal.value", ".+"),
    # A typed text may be a placeholder, and is nothing else then. In all others "$${" is a literal "${".
    "text": {"patterns": [PLACEHOLDER, *text_token("string", includes("escape", "doubled-dollar", "bad-placeholder"),
                                                   includes("doubled-dollar", "bad-placeholder"))]},
    "literal": {"patterns": text_token("string", includes("escape", "bad-placeholder"), includes("bad-placeholder"))},
    "expression": {"patterns": text_token(
        "string.regexp",
        [*includes("bad-placeholder"), escaped_sign(ESCAPED_IN_QUOTES), *includes("escape"),
         character_set(rf'{ESCAPED_IN_QUOTES}|\\"', r'[^\]"\\]'), *includes("expression-signs")],
        [*includes("bad-placeholder"), escaped_sign(r"\\."), character_set(r"\\.", r"[^\]\\]"),
         *includes("expression-signs")])},
    "expression-signs": {"patterns": EXPRESSION_SIGNS},
    "empty": rule("invalid.illegal.empty-argument", '""'),
    "open-quote": rule("invalid.illegal.open-quote", r'"\S*'),
    "escape": rule("constant.character.escape", r'\\["\\]'),
    "doubled-dollar": rule("constant.character.escape", r"\$(?=\$\{)"),
    "bad-placeholder": rule("invalid.illegal.placeholder", r'(?i)(?<!\$)\$\{(?:env|secret):[^}\s"]*\}?'),
}
