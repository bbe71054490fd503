"""One run: a home, a clean with something in its way, what the disk says then, and a second clean that nothing disturbs."""

import contextlib
import json
import os
import random
import select
import shutil
import signal
import socket
import subprocess
import time
from dataclasses import dataclass, field

import checker
import disk
import plans
import trashes
from home import TRASH, Home

USER = 20001  # whom root cleans as: rights mean nothing to root itself
PATIENCE = 300.0  # seconds: a loaded machine is slow
MODULES = (("systemJunk", 32), ("trash", 32), ("smartScan", 12), ("privacy", 10), ("appUninstaller", 10), ("largeFiles", 4))
ZONES = ("UTC", "Asia/Shanghai", "America/St_Johns")


@dataclass
class Machine:
    """What this machine lets the campaign do, and where its programs are."""
    cleaner: list
    faults: str
    area: bytes
    is_root: bool
    has_mounts: bool
    has_disks: bool


@dataclass
class Result:
    seed: int
    module: str
    plan: str
    kind: str
    happened: bool = False
    problems: list = field(default_factory=list)
    passed_over: list = field(default_factory=list)


@dataclass
class Ended:
    status: int
    output: str
    errors: str
    log: str
    is_late: bool


@contextlib.contextmanager
def as_user(machine):
    """Makes files as the user would whose home it is."""
    if not machine.is_root:
        yield
        return
    os.setegid(USER)
    os.seteuid(USER)
    try:
        yield
    finally:
        os.seteuid(0)
        os.setegid(0)


class Run:
    """What the seed says; tests name the module and the plan (a function of the targets and the home) themselves."""

    def __init__(self, machine, seed, module=None, choose=None):
        self.machine = machine
        self.rng = random.Random(seed)
        self.area = machine.area
        self._choose = choose or (lambda targets, home: plans.choose(self.rng, targets, home))
        chosen = self.rng.choices([name for name, _ in MODULES], [weight for _, weight in MODULES])[0]
        module = module or chosen
        self.result = Result(seed, module, "", "")
        self.zone = self.rng.choice(ZONES)

    def run(self):
        self._fresh_area()
        try:
            self._run()
        finally:
            self._leave()
        return self.result

    # The area

    def _fresh_area(self):
        """Mostly in memory; on the temporary folder's own disk where that is to be tried, or nothing may be mounted."""
        self.is_mounted = self.machine.has_mounts and self.rng.random() < 0.85
        os.makedirs(self.area, exist_ok=True)
        if self.is_mounted:
            disk.mount("tmpfs", self.area, "tmpfs", 0, "size=2g,mode=755")
        if self.machine.is_root:
            os.chown(self.area, USER, USER)

    def _leave(self):
        if self.machine.has_mounts:
            for place in reversed(disk.mounts_below(self.area)):
                disk.unmount(place)
        if not self.is_mounted:
            _remove(self.area)

    def _make_full(self):
        """Leaves the disk a few pages, or a few names."""
        status = os.statvfs(self.area)
        used = (status.f_blocks - status.f_bfree) * status.f_frsize
        names = status.f_files - status.f_ffree
        if self.rng.random() < 0.6:
            options = f"size={used + self.rng.randrange(8) * 4096 or 4096}"
        else:
            options = f"size=2g,nr_inodes={names + self.rng.randrange(12)}"
        disk.mount("tmpfs", self.area, "tmpfs", disk.MS_REMOUNT, options)

    # The run itself

    def _run(self):
        home = Home(self.area, self.rng)
        with as_user(self.machine):
            home.build(self.result.module)
        self._mount_disk(home)
        self._mount_below(home)
        tree = disk.snapshot(self.area)
        ticked, others = self._scan(tree, home, True)
        if ticked is None:
            return
        with as_user(self.machine):
            plan = self._choose(ticked, home)
            if plan.kind == "storm":
                plan.turn.ready_storm()
        if plan.kind == "full" and not self.is_mounted:
            if not self.machine.has_mounts:
                self.result.passed_over.append("a full disk (nothing may be mounted)")
            plan = plans.Plan("none")
        self.result.plan, self.result.kind = plan.what, plan.kind
        before = disk.snapshot(self.area)
        if plan.kind == "storm":
            before = disk.Tree({path: node for path, node in before.nodes.items() if path not in plan.turn.deed.made})
        if plan.kind == "full":
            self._make_full()
        started = time.time()
        ended = self._clean(plan)
        after = disk.snapshot(self.area)
        case = self._case(home, plan, ended, before, after, ticked, others, started)
        debris = self._judge("first", case, ended)
        if case.cannot_tidy and not case.ended:
            debris = set()  # nobody could have done better
        self._second(home, plan, case, after, debris)

    def _judge(self, which, case, ended):
        examined = checker.Checker(case)
        problems = examined.run()
        if ended.is_late:
            problems.append("it did not end")
        elif ended.status < 0 and not case.ended:
            problems.append(f"it ended by signal {-ended.status}: {ended.errors[-200:]}")
        elif ended.status != 0 and not case.ended and not (case.disturbed and ended.errors):
            problems.append(f"it ended with {ended.status}: {ended.errors[-200:]}")
        self.result.problems += [f"{which} clean: {problem}" for problem in problems]
        return examined.debris

    def _case(self, home, plan, ended, before, after, ticked, others, started):
        self.result.happened = bool(ended.log) or bool(plan.turn and plan.turn.done) or plan.kind in ("none", "full")
        os.environ["TZ"] = self.zone
        time.tzset()
        killed = ended.status in (-signal.SIGKILL, -signal.SIGTERM) and ("kill" in ended.log or "term" in ended.log)
        return checker.Case(
            area=os.path.realpath(self.area), before=before, after=after, ticked=ticked, trashes=home.trashes, real=home.real,
            deed=plan.turn.deed if plan.turn else checker.Deed(), disturbed=self.result.happened and plan.kind != "none",
            ended=killed or "term" in ended.log, report=checker.read_report(ended.output) if ended.status == 0 else None,
            started=started, hindered=home.hindered, blind=plan.blind, early=plan.early, cannot_tidy=plan.cannot_tidy, other_failures=others)

    def _second(self, home, plan, first, before, debris):
        """Nothing is in its way now: it puts right what the first left, and comes to its end."""
        if plan.kind == "full":
            disk.mount("tmpfs", self.area, "tmpfs", disk.MS_REMOUNT, "size=2g,nr_inodes=1000000")
        if plan.turn is not None:
            plan.turn.leave()
            before = disk.snapshot(self.area)
        # Where an attacker took an unusable Trash away, a new one is made.
        usual = trashes.Place(home.real(TRASH))
        usable = first.trashes if usual in first.trashes or usual.top in before.nodes else [*first.trashes, usual]
        ticked, others = self._scan(before, home, False)
        if ticked is None:
            return
        started = time.time()
        ended = self._clean(plans.Plan("none"))
        after = disk.snapshot(self.area)
        case = checker.Case(
            area=first.area, before=before, after=after, ticked=ticked, trashes=usable, real=home.real, debris=debris,
            report=checker.read_report(ended.output), started=started, hindered=home.hindered, other_failures=others)
        self._judge("second", case, ended)
        if case.report is None:
            self.result.problems.append("second clean: no report")
        self._finished(home, first, {target.path for target in ticked}, after)

    def _finished(self, home, first, second, after):
        """Whatever nothing stood in the way of has gone by now."""
        if home.trash_state.endswith("link") or first.deed.made or first.deed.moved:
            return
        for target in first.ticked:
            was, now = first.before.nodes[target.path], after.nodes.get(target.path)
            is_hindered = any(disk.at_or_below(hindered, target.path) for hindered in home.hindered)
            if now is not None and now.same_thing(was) and not is_hindered and target.path in second:
                self.result.problems.append(f"second clean: it did not finish: {target.path!r}")

    # Mounts

    def _mount_disk(self, home):
        """A disk with a Trash of its own, where the user's videos lie."""
        if self.result.module not in ("trash", "smartScan", "largeFiles") or self.rng.random() > 0.2:
            return
        if not self.machine.has_disks:
            self.result.passed_over.append("a Trash on another disk (no loop device, or nothing may be mounted)")
            return
        place = self.area + b"/home/Videos"
        os.makedirs(place, exist_ok=True)
        if os.listdir(place):
            return
        mount_image(self.area + b".disk", place)
        with as_user(self.machine):
            home.disk(b"home/Videos", USER)
            if self.result.module == "largeFiles":
                home.large(b"home/Videos")

    def _mount_below(self, home):
        """A disk below a folder that is offered: it must neither go along nor be emptied."""
        if self.rng.random() > 0.12:
            return
        if not self.machine.has_mounts:
            self.result.passed_over.append("a mount below a target (nothing may be mounted)")
            return
        offered = sorted(path for path in home.offers if os.path.isdir(self.area + b"/" + path)
                         and not os.path.islink(self.area + b"/" + path))
        if not offered:
            return
        target = self.rng.choice(offered)
        place = self.area + b"/" + target + b"/mounted"
        os.mkdir(place)
        if self.rng.random() < 0.5:
            disk.mount(self.area + b"/precious/album", place, None, disk.MS_BIND)
        else:
            disk.mount("tmpfs", place, "tmpfs", 0, "size=1m")
            with open(place + b"/data", "wb") as out:
                out.write(b"on another disk")
        home.hindered.add(target)

    # The program

    def _environment(self):
        return {"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", "HOME": "/nonexistent", "TZ": self.zone}

    def _arguments(self, command):
        area = os.fsdecode(self.area)
        return [*self.machine.cleaner, "--layout", "linux", "--home", area + "/home", "--root", area + "/root", "--language",
                "en", command, self.result.module]

    def _start(self, arguments, **more):
        identity = {"user": USER, "group": USER, "extra_groups": []} if self.machine.is_root else {}
        return subprocess.Popen(arguments, stdin=subprocess.DEVNULL, cwd="/", **identity, **more)

    def _scan(self, tree, home, is_first):
        """What "--select all" will tick, and how many rows besides are no files; the same scan, asked on its own."""
        process = self._start(self._arguments("scan"), env=self._environment(), stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE)
        output, errors = process.communicate(timeout=PATIENCE)
        if process.returncode != 0:
            self.result.problems.append(f"the scan ended with {process.returncode}: {errors[-200:]!r}")
            return None, 0
        names = {disk.lossy(path): path for path in tree.nodes}
        names |= {disk.lossy(link + path[len(folder):]): path for path in tree.nodes for link, folder in home.aliases.items()
                  if disk.below(path, folder)}
        prefix = os.fsdecode(self.area) + "/"
        ticked, others = [], 0
        for row, item in enumerate(json.loads(output)["cleanupItems"]):
            if not item["isCleanable"]:
                continue
            if item["module"] == "memoryOptimization":
                others += 1
                continue
            body = (item.get("appInfo") or {}).get("appPath")
            for target in item["targets"]:
                if not target["url"].startswith(prefix):
                    continue  # the machine's own; the probe does not clean it
                path = names.get(disk.lossy(target["url"][len(prefix):]))
                if path is None:
                    self.result.problems.append(f"a target that is not there: {target['url']!r}")
                    continue
                ticked.append(checker.Target(path, target["bytes"], row, body == target["url"]))
        if is_first:
            self.result.problems += [f"offered, though it is not to be: {target.path!r}" for target in ticked
                                     if target.path not in home.offers]
        return ticked, others

    def _clean(self, plan):
        ours, theirs = socket.socketpair()
        log = os.memfd_create("log", 0)
        output = os.memfd_create("output", 0)
        errors = os.memfd_create("errors", 0)
        environment = self._environment()
        if plan.text:
            text = plan.text % theirs.fileno() if plan.turn else plan.text
            environment |= {"LD_PRELOAD": self.machine.faults, "VELLMOOR_FAULTS": f"log={log}\n{text}"}
        process = self._start(self._arguments("clean") + ["--select", "all"], env=environment, stdout=output, stderr=errors,
                              pass_fds=(theirs.fileno(), log))
        theirs.close()
        is_late = self._attend(process, plan, ours)
        ours.close()
        texts = [_drain(descriptor) for descriptor in (output, errors, log)]
        return Ended(process.returncode, texts[0], texts[1], texts[2], is_late)

    def _attend(self, process, plan, channel):
        """Waits for the end, and takes the turns that the library offers. True when it had to be stopped."""
        deadline = time.monotonic() + PATIENCE
        end = os.pidfd_open(process.pid)
        waiting = [end, channel]
        while time.monotonic() < deadline:
            ready, _, _ = select.select(waiting, [], [], deadline - time.monotonic())
            if channel in ready:
                if channel.recv(1):
                    self._take_turn(plan, process.pid, channel, end, deadline)
                else:
                    waiting = [end]
            if end in ready:
                break
        is_late = not select.select([end], [], [], 0)[0]
        os.close(end)
        if is_late:
            process.kill()
        process.wait()
        return is_late


    def _take_turn(self, plan, program, channel, end, deadline):
        with as_user(self.machine):
            if plan.kind == "turn":
                plan.turn.act(program)
                channel.send(b"g")
                return
            channel.send(b"g")
            with _all_processors():
                while not select.select([end], [], [], 0)[0] and time.monotonic() < deadline:
                    plan.turn.storm(program)


@contextlib.contextmanager
def _all_processors():
    """Whoever attacks must not wait for the processor that the program uses."""
    own = os.sched_getaffinity(0)
    os.sched_setaffinity(0, range(os.cpu_count()))
    try:
        yield
    finally:
        os.sched_setaffinity(0, own)


def mount_image(image, place):
    """Mounts a new ext4 file system in a file; OSError where that is not to be had."""
    with open(image, "wb") as out:
        out.truncate(400 << 20)
    for words in (["mkfs.ext4", "-q", "-F", "-m", "0", image], ["mount", "-o", "loop", image, place]):
        done = subprocess.run(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              env={"PATH": "/usr/sbin:/sbin:/usr/bin:/bin"})
        if done.returncode != 0:
            raise OSError(f"{words[0]} failed")
    os.unlink(image)  # it lives as long as it is mounted
    os.chown(place, USER, USER)


def _drain(descriptor):
    with os.fdopen(descriptor, "rb") as file:
        file.seek(0)
        return file.read().decode(errors="replace")


def _remove(area):
    for folder, folders, _ in os.walk(area):
        for name in folders:
            path = os.path.join(folder, name)
            if not os.path.islink(path):
                os.chmod(path, 0o700)
    shutil.rmtree(area)
