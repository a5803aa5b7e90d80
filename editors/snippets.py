"""Snippets, one for each command: a tab stop for each argument, with a value that makes a whole line of it."""

# Parts of an argument, each a tab stop, and what stands around them.
STOPS = {
    "control ID": "{1001}",
    "path": "{2.1}",
    "rectangle": "{16},{178},{91},{201}",
    "tolerance": "{8}",
    "position": "{100},{80}",
    "size": "{520},{360}",
    "text": '"{text}"',
    "item text": '"{item}"',
    "index": "{0}",
    "state": "{1|0}",
}
BEFORE = ('"{#32770}"', '"{Title}"')
TIMEOUT = "{5000}"


def body(name, kinds):
    parts = [*BEFORE, *(STOPS[kind] for kind in kinds), TIMEOUT]
    pieces = " ".join((name, *parts)).split("{")
    text = pieces[0]
    for number, piece in enumerate(pieces[1:], 1):
        default, behind = piece.split("}")
        choices = default.split("|")
        inside = f":{default}" if len(choices) == 1 else f"|{','.join(choices)}|"
        text += f"${{{number}{inside}}}{behind}"
    return text


def description(action):
    return action.replace("**", "").removesuffix(" (see below)")


def snippets(commands):
    return {name: {"prefix": name, "body": body(name, kinds), "description": description(action)}
            for name, kinds, action in commands}
