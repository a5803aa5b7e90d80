"""Dialwright.dll within this process.

Not run: loading and calling the library wants Python for Windows, which the project's own machine lacks. What is tested
there is all that this rests on: lines, masks, the reading of error files, and the way to the right DLL.
"""

import ctypes
import os
import pathlib
import sys
import sysconfig
import threading

from .error_log import ErrorLog
from .line import hide_texts, mask

_BAD_EXE_FORMAT = 193
_FOLDERS = {"win-amd64": "win-x64", "win-arm64": "win-arm64"}
_lock = threading.Lock()
_loaded = None


class DialwrightError(Exception):
    """A call of the library has failed.

    command  the line or script, with its typed texts hidden; of a launch the program alone
    lines    what the library wrote into its error file meanwhile; empty where that cannot be read
    """

    def __init__(self, command, lines):
        super().__init__("\n    ".join([f"failed: {command}", *lines]))
        self.command = command
        self.lines = lines


def load(path=None):
    """Loads the library, at the first call only, and keeps it. Every function here does so by itself.

    Without a path: the one that DIALWRIGHT_LIBRARY names, or native/win-x64 or native/win-arm64 beside this file.
    """
    global _loaded
    with _lock:
        if _loaded is None:
            _loaded = _open(library_path(path))
        return _loaded


def library_path(path=None, platform=None):
    """The full path of the DLL that `load` takes."""
    named = path or os.environ.get("DIALWRIGHT_LIBRARY")
    if named:
        return pathlib.Path(named).resolve()
    platform = platform or sysconfig.get_platform()
    if platform not in _FOLDERS:
        raise OSError(f"Dialwright is for 64-bit Windows, x64 and ARM64; this Python is for {platform}")
    return pathlib.Path(__file__).resolve().parent / "native" / _FOLDERS[platform] / "Dialwright.dll"


def validate(line):
    """Whether the shape of a line is right. Touches no window."""
    return load().ValidateCommand(_text(line)) == 1


def validate_script(script):
    """Whether the shape of every line is right. Touches no window."""
    return load().ValidateScript(_text(script)) == 1


def execute(line):
    """Carries out one line. Blocks this thread until it is done; raises DialwrightError where it fails."""
    _call(mask(line), line, lambda library: library.ExecuteCommand(_text(line)))


def execute_script(script):
    """Carries out a script up to the first line that fails; raises DialwrightError there."""
    _call(mask(script), script, lambda library: library.ExecuteScript(_text(script)))


def launch(program, arguments=""):
    """Starts a program, without waiting for it. Its process ID."""
    process = ctypes.c_ulong()
    _call(program, "", lambda library: library.ProgramLaunch(_text(program), _text(arguments), ctypes.byref(process)))
    return process.value


def _text(text):
    if "\0" in text:
        raise ValueError("the text holds a zero character, at which the library stops reading")
    return text


def _call(command, script, function):
    library = load()
    log = ErrorLog(_host(), os.getpid())
    before = log.mark()
    if function(library) != 1:
        raise DialwrightError(command, hide_texts(script, log.lines_since(before, threading.get_native_id())))


def _host():
    """The program that the library writes beside: in a virtual environment not the one that was typed."""
    path = ctypes.create_unicode_buffer(32768)
    ctypes.windll.kernel32.GetModuleFileNameW(None, path, len(path))
    return path.value


def _open(path):
    if sys.platform != "win32":
        raise OSError("Dialwright.dll is loaded by Python for Windows only; elsewhere see dialwright.runner")
    try:
        library = ctypes.CDLL(str(path))
    except OSError as error:
        if getattr(error, "winerror", 0) == _BAD_EXE_FORMAT:
            raise OSError(f"{path} is for another processor than this Python, {sysconfig.get_platform()}") from error
        raise
    text = ctypes.c_wchar_p
    for name in ("ValidateCommand", "ValidateScript", "ExecuteCommand", "ExecuteScript"):
        getattr(library, name).argtypes = [text]
    library.ProgramLaunch.argtypes = [text, text, ctypes.POINTER(ctypes.c_ulong)]
    return library
