"""Command lines of Dialwright: written from values, and with their typed text hidden."""

import re

DEFAULT_TIMEOUT_MS = 10000
MASK = "*****"

# How many arguments stand behind class and title.
COMMANDS = {
    "Window.SetText": 2,
    "Window.SetText.Path": 2,
    "Window.SetText.Position": 3,
    "Window.ClickButton": 1,
    "Window.ClickButton.Path": 1,
    "Window.ClickButton.Position": 2,
    "Window.SelectDropdown.Value": 2,
    "Window.SelectDropdown.Index": 2,
    "Window.SelectDropdown.ByPath.Value": 2,
    "Window.SelectDropdown.ByPath.Index": 2,
    "Window.SelectDropdown.ByPosition.Value": 3,
    "Window.SelectDropdown.ByPosition.Index": 3,
    "Window.ClearText": 1,
    "Window.ClearText.Path": 1,
    "Window.ClearText.Position": 2,
    "Window.Move": 2,
    "Window.BringToFront": 0,
    "Window.Minimize": 0,
    "Window.Maximize": 0,
    "Window.Restore": 0,
    "Window.Close": 0,
    "Window.SelectRadio": 1,
    "Window.SelectRadio.ByPath": 1,
    "Window.SelectRadio.ByPosition": 2,
    "Window.SetCheckbox": 2,
    "Window.SetCheckbox.ByPath": 2,
    "Window.SetCheckbox.ByPosition": 3,
}

_SUFFIX = ".NonRegex"
_TEXT_COMMAND = "Window.SetText"
# As the library reads a line: what is white space to it is ASCII.
_TOKEN = re.compile(r'"((?:[^"\\]|\\[^\r\n\u2028\u2029])*)"|([^ \t\n\v\f\r]+)')
_SPECIAL = re.compile(r"[\\^$.|?*+()\[\]{}]")
_REFERENCE = re.compile(r"\$\{(?:env|secret):|\$\$\{", re.IGNORECASE)
_SECRET_NAME = re.compile(r"[A-Za-z0-9_]+", re.ASCII)
_HALF_CHARACTER = re.compile("[\ud800-\udfff]")


class Secret:
    """A text that `dialwright run` fills in; make it with `secret` or `environment`."""

    def __init__(self, kind, name):
        if not isinstance(name, str) or not _SECRET_NAME.fullmatch(name):
            raise ValueError(f"{name!r} is no name of a secret: letters, digits and _")
        self.reference = f"${{{kind}:{name}}}"


def secret(name):
    """The text that the runner's secret file has under this name."""
    return Secret("secret", name)


def environment(name):
    """The text that the runner finds in its environment under this name."""
    return Secret("env", name)


def literal(text):
    """An expression for class or title that matches this very text, whatever its case; any text for an empty one."""
    return _SPECIAL.sub(r"\\\g<0>", text) or ".*"


def command(name, window_class, title, *arguments, timeout_ms=DEFAULT_TIMEOUT_MS, non_regex=False):
    """The line of a command. Raises ValueError for what cannot be written.

    An argument is a text, a whole number, True or False for a check box, a sequence of whole numbers for a rectangle,
    position or size, or a Secret for a text. Class and title are expressions, see `literal`; with `non_regex` they are
    compared literally.
    """
    name += _SUFFIX if non_regex else ""
    base = _without_suffix(name)
    if base not in COMMANDS:
        raise ValueError(f"no command has this name: {name}")
    if len(arguments) != COMMANDS[base]:
        raise ValueError(f"{base} takes {COMMANDS[base]} arguments behind class and title, not {len(arguments)}")
    tokens = [_quoted("the class", window_class), _quoted("the title", title)]
    for position, argument in enumerate(arguments, 1):
        takes_text = base.startswith(_TEXT_COMMAND) and position == len(arguments)
        tokens.append(_token(f"argument {position}", argument, takes_text))
    return " ".join([name, *tokens, _timeout(timeout_ms)])


def mask(script):
    """The same lines with ***** for typed texts, and for all that stands in a line that is no valid command."""
    return "\n".join(_mask_line(line) for line in script.split("\n"))


def hide_texts(script, messages):
    """The messages with ***** wherever they hold a typed text of the script; one below four characters stays."""
    texts = [form for line in script.split("\n") for form in _hidden_forms(line) if len(form) >= 4]
    hidden = []
    for message in messages:
        for text in sorted(texts, key=len, reverse=True):
            message = message.replace(text, MASK)
        hidden.append(message)
    return hidden


def _without_suffix(name):
    return name[: -len(_SUFFIX)] if name.endswith(_SUFFIX) else name


def _timeout(milliseconds):
    fits = isinstance(milliseconds, int) and not isinstance(milliseconds, bool)
    if not fits or not (milliseconds == -1 or 1 <= milliseconds <= 2147483647):
        raise ValueError("the timeout must be -1 or 1 to 2147483647 milliseconds")
    return str(milliseconds)


def _token(what, argument, takes_text):
    if isinstance(argument, Secret):
        if not takes_text:
            raise ValueError(f"{what}: a secret can only be the text of a Window.SetText command")
        return argument.reference
    if isinstance(argument, int):
        return str(int(argument))
    if isinstance(argument, (list, tuple)):
        return _numbers(what, argument)
    if takes_text and isinstance(argument, str) and _REFERENCE.search(argument):
        raise ValueError(f"{what} would be a reference to the runner")
    return _quoted(what, argument)


def _numbers(what, numbers):
    if not numbers:
        raise ValueError(f"{what} is empty")
    if any(not isinstance(number, int) for number in numbers):
        raise ValueError(f"{what} is neither a text nor a whole number, nor a list of whole numbers")
    return ",".join(str(int(number)) for number in numbers)


def _quoted(what, text):
    if not isinstance(text, str):
        raise ValueError(f"{what} is neither a text nor a whole number")
    if not text:
        raise ValueError(f"{what} is empty")
    if "\0" in text:
        raise ValueError(f"{what} holds a zero character")
    if "\n" in text or "\r" in text:
        raise ValueError(f"{what} holds a line break")
    if _HALF_CHARACTER.search(text):
        raise ValueError(f"{what} holds half a character")
    escaped = text.replace("\\", "\\\\").replace('"', '\\"')
    return f'"{escaped}"'


def _tokens(line):
    """Each token with its place in the line."""
    found = []
    for match in _TOKEN.finditer(line):
        inside = match.group(1)
        text = match.group(2) if inside is None else re.sub(r'\\(["\\])', r"\1", inside)
        found.append((text, match.span()))
    return found


def _hidden_tokens(line):
    tokens = _tokens(line)
    if not tokens:
        return []
    base = _without_suffix(tokens[0][0])
    count = COMMANDS.get(base)
    behind_title = len(tokens) - 3
    if count is None or behind_title not in (count, count + 1):
        return tokens[1:]
    return [tokens[2 + count]] if base.startswith(_TEXT_COMMAND) else []


def _hidden_forms(line):
    """The texts themselves, and as they are written between quotes."""
    for text, (start, end) in _hidden_tokens(line):
        yield text
        yield line[start:end].strip('"')


def _mask_line(line):
    for _, (start, end) in reversed(_hidden_tokens(line)):
        line = f'{line[:start]}"{MASK}"{line[end:]}'
    return line
