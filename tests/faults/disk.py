"""What lies on the disk, read once and compared later; and the few calls of Linux that Python lacks."""

import ctypes
import hashlib
import os
import re
import stat
from typing import NamedTuple

KINDS = {stat.S_IFREG: "file", stat.S_IFDIR: "folder", stat.S_IFLNK: "link", stat.S_IFIFO: "fifo",
         stat.S_IFSOCK: "socket", stat.S_IFCHR: "device", stat.S_IFBLK: "device"}
READ_WHOLE = 1 << 16
PIECE = 1 << 20

_libc = ctypes.CDLL(None, use_errno=True)


def lossy(path):
    """How a path looks when it went through JSON: bytes that are no UTF-8 are one mark, however many they were."""
    text = path if isinstance(path, str) else path.decode(errors="replace")
    return re.sub("\ufffd+", "\ufffd", text)


class Node(NamedTuple):
    kind: str
    mode: int
    owner: int
    data: bytes  # contents of a file (a digest of a long one), target of a link
    device: int
    inode: int
    modified: int
    blocks: int

    def same_thing(self, other):
        return (self.device, self.inode, self.kind) == (other.device, other.inode, other.kind)

    def same_content(self, other):
        """Whether the user would see no difference; a folder's time changes with what lies in it."""
        return (self.kind, self.data, self.owner) == (other.kind, other.data, other.owner)


def _contents(descriptor, size):
    if size <= READ_WHOLE:
        return os.read(descriptor, READ_WHOLE)
    digest = hashlib.sha1(str(size).encode())
    position = 0
    while True:  # the holes of a sparse file are not read
        try:
            position = os.lseek(descriptor, position, os.SEEK_DATA)
        except OSError:
            return digest.digest()
        position -= position % PIECE
        # A hole that somebody has read counts as data, though nothing but zeros is in it.
        if piece := os.pread(descriptor, PIECE, position).rstrip(b"\0"):
            digest.update(b"%d:" % position + piece)
        position += PIECE


def _open(name, flags, parent, status):
    """Opens what lies at the name, lending the owner a right that the file itself withholds (root needs none)."""
    try:
        return os.open(name, flags | os.O_NOFOLLOW | os.O_NONBLOCK, dir_fd=parent)
    except PermissionError:
        os.chmod(name, stat.S_IMODE(status.st_mode) | 0o700, dir_fd=parent)
        try:
            return os.open(name, flags | os.O_NOFOLLOW | os.O_NONBLOCK, dir_fd=parent)
        finally:
            os.chmod(name, stat.S_IMODE(status.st_mode), dir_fd=parent)


def _file(name, parent, status):
    descriptor = _open(name, os.O_RDONLY, parent, status)
    try:
        return _contents(descriptor, status.st_size)
    finally:
        os.close(descriptor)


def _read(name, parent, path, found):
    status = os.stat(name, dir_fd=parent, follow_symlinks=False)
    kind = KINDS[stat.S_IFMT(status.st_mode)]
    data = b""
    if kind == "file":
        data = _file(name, parent, status)
    elif kind == "link":
        data = os.readlink(name, dir_fd=parent)
    found[path] = Node(kind, stat.S_IMODE(status.st_mode), status.st_uid, data, status.st_dev, status.st_ino,
                       status.st_mtime_ns, status.st_blocks)
    if kind != "folder":
        return
    descriptor = _open(name, os.O_RDONLY | os.O_DIRECTORY, parent, status)
    try:
        names = [os.fsencode(child) for child in os.listdir(descriptor)]
        restricted = status.st_mode & 0o500 != 0o500 and os.geteuid() != 0
        if restricted:
            os.chmod(descriptor, status.st_mode & 0o7777 | 0o700)
        try:
            for child in names:
                _read(child, descriptor, path + b"/" + child if path else child, found)
        finally:
            if restricted:
                os.chmod(descriptor, status.st_mode & 0o7777)
    finally:
        os.close(descriptor)


def everything(top):
    """What lies at the path and below it, by the path relative to it ("" is the thing itself)."""
    found = {}
    _read(os.fsencode(top), None, b"", found)
    return found


def snapshot(folder):
    """Everything below the folder."""
    found = everything(folder)
    del found[b""]
    return Tree(found)


def below(path, folder):
    return path.startswith(folder + b"/")


def at_or_below(path, folder):
    return path == folder or path.startswith(folder + b"/")


class Tree:
    """A snapshot, sorted so that the part below a folder is found at once."""

    def __init__(self, nodes):
        self.nodes = nodes
        self._children = {}
        for path in nodes:
            parent, _, name = path.rpartition(b"/")
            self._children.setdefault(parent, []).append(name)

    def children(self, folder):
        return self._children.get(folder, [])

    def subtree(self, top):
        """What lies at the path and below it, by paths relative to it ("" is the thing itself)."""
        found = {}
        pending = [b""]
        while pending:
            relative = pending.pop()
            path = top + relative
            if path in self.nodes:
                found[relative] = self.nodes[path]
            pending.extend(relative + b"/" + name for name in self.children(path))
        return found


def check(result):
    if result != 0:
        error = ctypes.get_errno()
        raise OSError(error, os.strerror(error))


def mounts_below(folder):
    """Mount points below the folder, the innermost last."""
    with open("/proc/self/mountinfo", "rb") as mounts:
        points = [line.split()[4].decode("unicode_escape").encode("latin-1") for line in mounts]
    return sorted(point for point in points if at_or_below(point, folder))


CLONE_NEWNS = 0x00020000
MS_RDONLY, MS_REMOUNT, MS_BIND, MS_REC, MS_PRIVATE = 1, 32, 4096, 0x4000, 0x40000
MNT_DETACH = 2
RENAME_EXCHANGE = 2
AT_FDCWD = -100


def own_mounts():
    """Gives this process mounts of its own; OSError where the machine does not allow it."""
    check(_libc.unshare(CLONE_NEWNS))
    check(_libc.mount(b"none", b"/", None, MS_REC | MS_PRIVATE, None))


def mount(source, target, kind, flags=0, options=""):
    check(_libc.mount(os.fsencode(source), os.fsencode(target), kind.encode() if kind else None, flags,
                      options.encode()))


def unmount(target):
    check(_libc.umount2(os.fsencode(target), MNT_DETACH))


def is_open(process, path):
    """Whether the process has opened that folder."""
    links = f"/proc/{process}/fd"
    try:
        return any(_link(f"{links}/{number}") == path for number in os.listdir(links))
    except OSError:
        return False  # it has ended


def _link(path):
    try:
        return os.fsencode(os.readlink(path))
    except OSError:
        return b""  # closed meanwhile


def exchange(first, second):
    check(_libc.renameat2(AT_FDCWD, os.fsencode(first), AT_FDCWD, os.fsencode(second), RENAME_EXCHANGE))
