"""The freedesktop.org Trash as others read it: notes, names, sizes. Nothing here is shared with the program."""

import re
import time
import urllib.parse
from typing import NamedTuple

NOTE = re.compile(rb"\[Trash Info\]\nPath=([^\n]+)\nDeletionDate=(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d)\n")
PLAIN = re.compile(rb"(?:[A-Za-z0-9_.!~*'()/-]|%[0-9A-Fa-f]{2})*")


class Place(NamedTuple):
    """One Trash. The notes of a disk's Trash are relative to the `base` of the disk."""
    top: bytes
    base: bytes = b""

    @property
    def files(self):
        return self.top + b"/files"

    @property
    def info(self):
        return self.top + b"/info"


class Note(NamedTuple):
    path: bytes
    date: str


def note(text):
    """What a note says; None when it is not as the specification wants it."""
    match = NOTE.match(text)
    if not match or not PLAIN.fullmatch(match[1]):
        return None
    try:
        time.strptime(match[2].decode(), "%Y-%m-%dT%H:%M:%S")
    except ValueError:
        return None
    return Note(urllib.parse.unquote_to_bytes(match[1]), match[2].decode())


def written(path, date="2024-05-01T12:00:00"):
    """A note as a file manager writes it."""
    return (b"[Trash Info]\nPath=" + urllib.parse.quote(path, safe="/!~*'()").encode() + b"\nDeletionDate="
            + date.encode() + b"\n")


def size_name(line):
    """Which item a line of directorysizes is about; None for a line of another kind."""
    parts = line.split(b" ", 2)
    if len(parts) != 3 or not parts[0].isdigit() or not parts[1].isdigit():
        return None
    return urllib.parse.unquote_to_bytes(parts[2])
