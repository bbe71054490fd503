"""A cleaner that breaks one promise on purpose, to see whether the checker notices:

    false_cleaner.py SIN PROBE [the probe's own words]

With the sin "none" it is an honest one, as plain as can be. It understands what the campaign calls: `scan MODULE`, which it
leaves to the probe, and `clean MODULE --select all`, which it does itself from what the probe's scan says."""

import json
import os
import shutil
import stat
import subprocess
import sys
import time

import trashes


def files_below(path):
    """Everything below that is no folder. A link has nothing below it: os.walk would go where it leads, out of the home."""
    if os.path.islink(path):
        return []
    return [os.path.join(folder, name) for folder, _, names in os.walk(path) for name in names]


class Honest:
    """Trash 1.0 by the book, for a home that nobody else touches."""

    def __init__(self, home):
        self.home = home
        self.trash = home + b"/.local/share/Trash"
        self.report = {"attemptedCount": 0, "removedCount": 0, "failedCount": 0, "keptCount": 0, "freedBytes": 0,
                       "processedBytes": 0, "failures": [], "notes": []}
        self.gone = []

    def clean(self, rows):
        for row in rows:
            body_stays = False
            for target in self.ordered(row):
                self.report["attemptedCount"] += 1
                self.report["freedBytes"] += target["bytes"]
                path = target["path"]
                if not os.path.lexists(path):
                    continue
                try:
                    if body_stays:
                        raise PermissionError("the application stayed")
                    self.one(path)
                    self.report["removedCount"] += 1
                    self.report["processedBytes"] += target["bytes"]
                except OSError as error:
                    body_stays = body_stays or target["is_body"]
                    self.report["failedCount"] += 1
                    self.report["failures"].append(f"{os.path.basename(path)!r}: {error}")
        self.forget_sizes()

    def ordered(self, row):
        return sorted(row, key=lambda target: not target["is_body"])

    def one(self, path):
        if os.path.dirname(path) == self.trash + b"/files":
            self.remove(path)
        else:
            self.move(path)

    # Out of the Trash

    def remove(self, path):
        self.check_mounts(path)
        with self.opened(self.trash + b"/files"):
            self.open_up(path)
            self.delete(path)
        self.gone.append(os.path.basename(path))
        self.remove_note(os.path.basename(path))

    def check_mounts(self, path):
        if os.path.islink(path):
            return
        device = os.lstat(path).st_dev
        for folder, folders, _ in os.walk(path):
            for name in folders:
                if os.lstat(folder + b"/" + name).st_dev != device:
                    raise PermissionError("holds a mounted disk")
        with open("/proc/self/mountinfo", "rb") as mounts:
            if any(line.split()[4].startswith(path + b"/") for line in mounts):
                raise PermissionError("holds a mounted disk")

    def open_up(self, path):
        """Gives the user all rights on the folders of the tree, from the top down."""
        if stat.S_ISDIR(os.lstat(path).st_mode):
            os.chmod(path, 0o700)
            for entry in os.scandir(path):
                if entry.is_dir(follow_symlinks=False):
                    self.open_up(entry.path)

    def delete(self, path):
        if stat.S_ISDIR(os.lstat(path).st_mode):
            shutil.rmtree(path)
        else:
            os.unlink(path)

    def remove_note(self, name):
        note = self.trash + b"/info/" + name + b".trashinfo"
        if len(name) <= 245 and os.path.lexists(note):
            with self.opened(self.trash + b"/info"):
                os.unlink(note)

    def opened(self, folder):
        return _Opened(folder)

    def forget_sizes(self):
        path = self.trash + b"/directorysizes"
        if not self.gone or not os.path.lexists(path) or not stat.S_ISREG(os.lstat(path).st_mode):
            return
        with open(path, "rb") as sizes:
            old = sizes.read()
        new = b"".join(line for line in old.splitlines(True) if self.keeps(line))
        if new != old:
            with self.opened(self.trash):
                with open(path + b".made", "wb") as sizes:
                    sizes.write(new)
                os.rename(path + b".made", path)

    def keeps(self, line):
        return trashes.size_name(line.rstrip(b"\n")) not in self.gone

    # Into the Trash

    def move(self, path):
        self.check_mounts(path)
        self.make_trash()
        name = self.free_name(os.path.basename(path))
        note = self.trash + b"/info/" + name + b".trashinfo"
        with self.opened(self.trash + b"/info"), self.opened(self.trash + b"/files"):
            self.write_note(note, path)
            try:
                self.rename(path, self.trash + b"/files/" + name)
            except OSError:
                os.unlink(note)
                raise

    def make_trash(self):
        for part in (b"", b"/files", b"/info"):
            if os.path.islink(self.trash + part):
                raise PermissionError("the Trash is a link")
            with self.opened(self.trash) if part else self.opened(self.home):
                os.makedirs(self.trash + part, 0o700, exist_ok=True)

    def free_name(self, name):
        number, name = 1, name[:240].decode(errors="ignore").encode() if len(name) > 240 else name
        taken = name
        while os.path.lexists(self.trash + b"/files/" + taken) or \
                os.path.lexists(self.trash + b"/info/" + taken + b".trashinfo"):
            number += 1
            taken = name + b".%d" % number
        return taken

    def note_text(self, path):
        return trashes.written(path, time.strftime("%Y-%m-%dT%H:%M:%S"))

    def write_note(self, note, path):
        descriptor = os.open(note, os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o600)
        os.write(descriptor, self.note_text(path))
        os.close(descriptor)

    def rename(self, path, place):
        os.rename(path, place)


class _Opened:
    """A folder with a mode that lets its owner write, put back afterwards."""

    def __init__(self, folder):
        self.folder = folder
        self.mode = None

    def __enter__(self):
        if os.path.isdir(self.folder):
            self.mode = stat.S_IMODE(os.stat(self.folder).st_mode)
            if self.mode & 0o700 != 0o700:
                os.chmod(self.folder, self.mode | 0o700)

    def __exit__(self, *_):
        if self.mode is not None and self.mode & 0o700 != 0o700:
            os.chmod(self.folder, self.mode)


class Deletes(Honest):
    def move(self, path):
        self.open_up(path)
        self.delete(path)


class MovesWithoutNote(Honest):
    def write_note(self, note, path):
        with open(note, "wb"):
            pass

    def rename(self, path, place):
        super().rename(path, place)
        os.unlink(self.trash + b"/info/" + os.path.basename(place) + b".trashinfo")


class WritesEmptyNotes(Honest):
    def note_text(self, path):
        return b""


class NamesAnotherPlace(Honest):
    def note_text(self, path):
        return trashes.written(path + b"x", time.strftime("%Y-%m-%dT%H:%M:%S"))


class WritesAnotherTime(Honest):
    def note_text(self, path):
        return trashes.written(path, "2001-01-01T00:00:00")


class LeavesNotesOfFailures(Honest):
    def move(self, path):
        self.make_trash()
        self.write_note(self.trash + b"/info/never-moved.%d.trashinfo" % self.report["attemptedCount"], path)
        super().move(path)


class LeavesTemporaryFiles(Honest):
    def forget_sizes(self):
        super().forget_sizes()
        with open(self.home + b"/.cache/.work", "wb") as out:
            out.write(b"forgotten")


class MovesHalf(Honest):
    def rename(self, path, place):
        super().rename(path, place)
        if os.path.isdir(place) and not os.path.islink(place):
            self.open_up(place)
            for entry in os.scandir(place):
                self.delete(entry.path)
                return


class CutsFiles(Honest):
    def rename(self, path, place):
        for file in files_below(path) or [path]:
            if stat.S_ISREG(os.lstat(file).st_mode) and os.access(file, os.W_OK):
                os.truncate(file, os.path.getsize(file) // 2)
        super().rename(path, place)


class CopiesInstead(Honest):
    def rename(self, path, place):
        if stat.S_ISREG(os.lstat(path).st_mode):
            shutil.copy2(path, place)
            os.unlink(path)
        else:
            super().rename(path, place)


class ChangesRights(Honest):
    def move(self, path):
        parent = os.path.dirname(path)
        os.chmod(parent, 0o777)
        super().move(path)


class OpensTheTrash(Honest):
    def move(self, path):
        super().move(path)
        os.chmod(self.trash + b"/info", 0o755)


class FollowsLinks(Honest):
    def delete(self, path):
        precious = os.path.dirname(self.home) + b"/precious/"
        for place in files_below(path):
            if os.path.islink(place) and os.path.isfile(place) and os.path.realpath(place).startswith(precious):
                os.unlink(os.path.realpath(place))
        super().delete(path)


class EmptiesTheWholeTrash(Honest):
    def forget_sizes(self):
        super().forget_sizes()
        for part in (b"/files", b"/info"):
            for entry in os.scandir(self.trash + part):
                self.open_up(entry.path)
                self.delete(entry.path)


class KeepsNotes(Honest):
    def remove_note(self, name):
        pass


class ForgetsNotesOfOthers(Honest):
    def remove_note(self, name):
        super().remove_note(name)
        orphan = self.trash + b"/info/orphan.trashinfo"
        if os.path.lexists(orphan):
            os.unlink(orphan)


class ForgetsAllSizes(Honest):
    def keeps(self, line):
        return False


class KeepsSizes(Honest):
    def keeps(self, line):
        return True


class LeftoversFirst(Honest):
    """Takes the leftovers of an application that stays."""

    def one(self, path):
        if path.endswith(b".AppImage"):
            raise PermissionError("busy")
        super().one(path)

    def ordered(self, row):
        return super().ordered(row)[::-1]


class CountsTooMuch(Honest):
    def clean(self, rows):
        super().clean(rows)
        self.report["removedCount"] += 1


class HidesFailures(Honest):
    def clean(self, rows):
        super().clean(rows)
        self.report["failedCount"] = 0
        self.report["failures"] = []


class BoastsOfBytes(Honest):
    def clean(self, rows):
        super().clean(rows)
        self.report["processedBytes"] += 4096


class ForgetsSomebody(Honest):
    def clean(self, rows):
        super().clean(rows)
        self.report["attemptedCount"] -= 1


class TakesTheStranger(Honest):
    """Removes whatever has the name now."""


class Crashes(Honest):
    def forget_sizes(self):
        os.abort()


SINS = {name: value for name, value in globals().items() if isinstance(value, type) and issubclass(value, Honest)}


def _rows(probe, words):
    scanned = subprocess.run([probe, *words[:-4], "scan", words[-3]], stdout=subprocess.PIPE, check=True).stdout
    rows = []
    for item in json.loads(scanned)["cleanupItems"]:
        if item["isCleanable"] and item["module"] != "memoryOptimization":
            body = (item.get("appInfo") or {}).get("appPath")
            rows.append([{"path": _real(target["url"]), "bytes": target["bytes"], "is_body": target["url"] == body}
                         for target in item["targets"]])
    return rows


def _real(url):
    """The path that lost its stranger bytes on its way through JSON."""
    folder, _, name = url.rpartition("/")
    for entry in os.listdir(os.fsencode(folder)):
        if entry.decode(errors="replace").replace("\ufffd", "") == name.replace("\ufffd", ""):
            return os.fsencode(folder) + b"/" + entry
    return os.fsencode(url)


def main():
    sin, probe, words = sys.argv[1], sys.argv[2], sys.argv[3:]
    if "clean" not in words:
        os.execv(probe, [probe, *words])
    cleaner = SINS[sin](os.fsencode(words[words.index("--home") + 1]))
    cleaner.clean(_rows(probe, words))
    print(json.dumps(cleaner.report))


if __name__ == "__main__":
    main()
