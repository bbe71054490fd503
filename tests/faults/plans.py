"""What happens to a clean: a call fails, the program is killed there, or somebody else has a turn."""

import errno
import math
import os
import shutil
from dataclasses import dataclass, field

import checker
import disk
from home import BASES, TRASH

ERRORS = ("EACCES", "EPERM", "ENOSPC", "EROFS", "EIO", "EXDEV", "EINTR", "EMFILE", "ENOMEM", "EBUSY", "ENOENT")
# The classes of the preloaded library: how many such calls a clean of one of these homes may make, and how often each is tried.
CALLS = {"rename": (20, 3), "noreplace": (20, 3), "unlink": (40, 3), "open": (50, 4), "mkdir": (5, 2), "write": (25, 3),
         "fsync": (6, 2), "stat": (100, 4), "list": (25, 2), "chmod": (4, 1), "close": (50, 2), "link": (3, 0.2),
         "truncate": (3, 0.2), "time": (3, 0.2)}
CHANGES = "rename,unlink,open,mkdir,write,fsync,link,chmod,truncate"
# A call that says "not there" of something that is there makes every program say so, too.
BLINDING = {"unlink", "stat", "list", "open", "rename", "noreplace"}


@dataclass
class Plan:
    kind: str  # none, fail, kill, term, turn, storm, full
    text: str = ""  # for the preloaded library
    turn: object = None  # an Attack
    blind: bool = False
    cannot_tidy: bool = False
    early: bool = False  # it may happen while the program still looks what there is
    what: str = "nothing"


def _how_far(rng, most):
    return max(1, int(math.exp(rng.uniform(0, math.log(most)))))


def _failing(rng):
    calls = rng.choices(list(CALLS), [weight for _, weight in CALLS.values()])[0]
    error = rng.choice(ERRORS)
    deed = str(getattr(errno, error))
    times = rng.choice(("1", "1", "1", "2", "always" if error != "EINTR" else "3"))  # a signal comes now and then only
    if calls == "noreplace" and rng.random() < 0.5:
        error, deed, times = "EINVAL", str(errno.EINVAL), "always"
    if calls == "write" and rng.random() < 0.3:
        error, deed = "half", "short"
    start = "start" if rng.random() < 0.1 else "change"
    number = _how_far(rng, CALLS[calls][0])
    return Plan("fail", f"calls={calls} from={start} at={number} times={times} do={deed}",
                blind=error == "ENOENT" and calls in BLINDING,
                cannot_tidy=calls in ("unlink", "chmod") or error == "ENOENT" or (calls == "open" and times == "always"), early=start == "start",
                what=f"{error} from {calls} number {number} ({times})")


def choose(rng, targets, homes):
    """A plan for a clean of these targets; `homes` makes what an attack needs."""
    choice = rng.random()
    if choice < 0.1:
        return Plan("none")
    if choice < 0.5:
        return _failing(rng)
    if choice < 0.72:
        number = _how_far(rng, 400)
        return Plan("kill", f"calls={CHANGES} at={number} do=kill", what=f"killed at change {number}")
    if choice < 0.75:
        number = _how_far(rng, 400)
        return Plan("term", f"calls={CHANGES} at={number} do=term", what=f"ended at change {number}")
    if choice < 0.8:
        return Plan("full", what="a full disk")
    attack = Attack.choose(rng, targets, homes)
    if attack is None:
        return Plan("none")
    if choice > 0.95 and attack.can_storm:
        return Plan("storm", f"calls={CHANGES} at=1 do=ask ask=%d", turn=attack, what=f"storm of {attack.what}")
    number = _how_far(rng, 250)
    calls = ",".join(CALLS) if rng.random() < 0.7 else rng.choice(sorted(CALLS))
    return Plan("turn", f"calls={calls} at={number} do=ask ask=%d", turn=attack,
                what=f"{attack.what} at {calls.split(',')[0]} number {number}")


@dataclass
class Attack:
    """Somebody replaces a path during the clean. What was there is moved aside, or deleted."""
    area: bytes
    kind: str  # link, file, folder, vanish
    path: bytes
    aside: bytes
    leads_to: bytes = b""
    done: bool = False
    waits: bool = False  # until the program has opened it: before that a link is one that the user has set
    deed: checker.Deed = field(default_factory=checker.Deed)

    @property
    def what(self):
        return f"{self.kind} in place of {os.fsdecode(self.path)!r}"

    @property
    def can_storm(self):
        return self.kind != "vanish"

    @staticmethod
    def choose(rng, targets, homes):
        if not targets:
            return None
        target = rng.choice(targets).path
        area = homes.area
        choice = rng.random()
        trash_parts = [path for path in (TRASH, TRASH + b"/files", TRASH + b"/info")
                       if os.path.isdir(area + b"/" + path) and not os.path.islink(area + b"/" + path)]
        if choice < 0.2 and trash_parts:
            path = homes.real(rng.choice(trash_parts))
        elif choice < 0.4:
            path = os.path.dirname(target)
        elif choice < 0.55:
            path = _inside(rng, homes, target)
        else:
            path = target
        if path in (b"home", b"") or not os.path.lexists(area + b"/" + path):
            path = target
        kinds = ("link", "link", "link", "file", "folder", "vanish") if path == target else ("link",)
        attack = Attack(area, rng.choice(kinds), path, b"aside/thing", waits=path in {homes.real(anchor) for anchor in (TRASH, *BASES)})
        attack._prepare(rng, homes)
        return attack

    def _prepare(self, rng, homes):
        """The folder that a link leads to has the names that the program looks for."""
        if self.kind != "link":
            return
        twin = b"precious/twin"
        self.leads_to = rng.choice((twin, b"precious/letter.txt")) if rng.random() < 0.3 else twin
        here = self.area + b"/" + self.path
        homes.folder(twin)
        for name in _names(here)[:8]:
            if os.path.isdir(here + b"/" + name) and not os.path.islink(here + b"/" + name):
                homes.folder(twin + b"/" + name)
                for inner in _names(here + b"/" + name)[:4]:
                    homes.file(twin + b"/" + name + b"/" + inner, b"precious inner")
            else:
                homes.file(twin + b"/" + name, b"precious twin")

    def act(self, program):
        """The deed, once. It fails where the user's rights forbid it; then nothing happened."""
        path = self.area + b"/" + self.path
        if self.waits and not disk.is_open(program, path):
            return
        try:
            if self.kind == "vanish":
                self._vanish(path)
                return
            if os.path.lexists(path):
                os.rename(path, self.area + b"/" + self.aside)
                self.deed.moved = (self.path, self.aside)
            self._put(path)
            self._remember(self.path)
        except OSError:
            pass  # another disk, or no right: what is there is not the attacker's
        self.done = True

    def _vanish(self, path):
        if disk.mounts_below(path):
            return  # what is mounted there would vanish, too
        self.done = True
        self.deed.gone = self.path
        if os.path.isdir(path) and not os.path.islink(path):
            shutil.rmtree(path, ignore_errors=True)
        elif os.path.lexists(path):
            os.unlink(path)

    def _put(self, path):
        if self.kind == "link":
            os.symlink(self.area + b"/" + self.leads_to, path)
        elif self.kind == "file":
            with open(path, "wb") as out:
                out.write(b"a stranger's own file")
        else:
            os.mkdir(path)
            with open(path + b"/own", "wb") as out:
                out.write(b"a stranger's own file")

    def _remember(self, path):
        top = self.area + b"/" + path
        if not os.path.lexists(top):
            return
        for relative, node in disk.everything(top).items():
            self.deed.made[path + b"/" + relative if relative else path] = node

    def leave(self):
        """Takes away the links that lead elsewhere."""
        for path in (self.path, self.aside):
            place = self.area + b"/" + path
            if self.kind == "link" and self.deed.made and os.path.islink(place) \
                    and os.readlink(place) == self.area + b"/" + self.leads_to:
                os.unlink(place)

    # Over and over, while the program runs

    def ready_storm(self):
        """Puts the stranger beside the target; both change places from then on."""
        self._put(self.area + b"/" + self.aside)
        self._remember(self.aside)

    def storm(self, program):
        if self.waits and not self.done and not disk.is_open(program, self.area + b"/" + self.path):
            return
        try:
            disk.exchange(self.area + b"/" + self.path, self.area + b"/" + self.aside)
            self.done = True
            self.deed.moved = (self.path, self.aside)
            self.deed.swaps = True
        except OSError:
            pass  # the target is elsewhere just now


def _names(folder):
    """What lies in a folder that the user may list, sorted; nothing for anything else."""
    if os.path.islink(folder):
        return []
    try:
        return sorted(os.listdir(folder))
    except (NotADirectoryError, PermissionError):
        return []


def _inside(rng, homes, target):
    """A folder inside the target; there is none inside a link, though os.walk would go where it leads."""
    found = []
    top = homes.area + b"/" + target
    for folder, folders, _ in os.walk(top) if not os.path.islink(top) else ():
        found += [os.path.join(folder, name) for name in folders if not os.path.islink(os.path.join(folder, name))]
    return rng.choice(sorted(found))[len(homes.area) + 1:] if found else target
