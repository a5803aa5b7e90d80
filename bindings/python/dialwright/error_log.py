"""What the library wrote into its error file while a call ran."""

import pathlib
import re

_RECORD = re.compile(r"\[[^\]]*\] \[(\d+):(\d+)\] \[Dialwright +\d+ +error\] (.*)", re.DOTALL)
_CONTINUED = " " * 80


class ErrorLog:
    """The error files of one host, whose program lies in `host`, and of one of its processes."""

    def __init__(self, host, process):
        host = pathlib.Path(host)
        self._folder = host.parent / "logs" / "trace"
        # The number between the host's name and ours is the session.
        self._name = re.compile(re.escape(host.name) + r"_\d+_Dialwright_[12]_error\.log", re.IGNORECASE)
        self._process = process

    def mark(self):
        """How far the files go now; for `lines_since`."""
        sizes = {}
        for path in self._files():
            try:
                sizes[path] = path.stat().st_size
            except OSError:
                continue
        return sizes

    def lines_since(self, mark, thread):
        """The messages that this thread has added. Empty where nothing can be read."""
        found = []
        for path in self._files():
            found += self._messages(_read_from(path, mark.get(path, 0)), thread)
        return found

    def _files(self):
        try:
            return sorted(path for path in self._folder.iterdir() if self._name.fullmatch(path.name))
        except OSError:
            return []

    def _messages(self, content, thread):
        records = []
        for piece in content.decode("utf-8", "replace").split("\r\n"):
            if piece.startswith(_CONTINUED) and records:
                records[-1] += "\n" + piece
            else:
                records.append(piece)
        matches = filter(None, map(_RECORD.fullmatch, records))
        own = (str(self._process), str(thread))
        return [match.group(3).replace("\n" + _CONTINUED, "\n") for match in matches if match.group(1, 2) == own]


def _read_from(path, offset):
    try:
        with path.open("rb") as stream:
            # A file that became shorter was begun anew.
            stream.seek(offset if offset <= stream.seek(0, 2) else 0)
            return stream.read()
    except OSError:
        return b""
