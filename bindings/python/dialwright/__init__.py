"""Dialwright for Python 3.8 and later: `command` writes a line, `execute` or `run` carries it out."""

from .library import DialwrightError, execute, execute_script, launch, load, validate, validate_script
from .line import Secret, command, environment, literal, mask, secret
from .runner import LineFailed, RunError, run

__all__ = [
    "DialwrightError",
    "LineFailed",
    "RunError",
    "Secret",
    "command",
    "environment",
    "execute",
    "execute_script",
    "launch",
    "literal",
    "load",
    "mask",
    "run",
    "secret",
    "validate",
    "validate_script",
]
