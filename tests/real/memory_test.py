#!/usr/bin/env python3
"""Tries the memory page's rows and its two questions on real programs: Chromium, KeePassXC, Mousepad and Xfce's terminal.

    tests/real/memory_test.py TOOL       TOOL is the built memory_tool

It needs Xvfb, openbox, dbus-run-session, xdotool and those programs; what is missing is named and passed over. As root it
runs everything as a user of its own, in a throw-away home: a program that lets nobody look is then what it is for a user.
"""

import contextlib
import os
import pwd
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

USER = pwd.getpwnam("nobody").pw_uid  # the bus wants a user that exists
failures = []


def check(what, holds, seen=""):
    print(f"{'ok  ' if holds else 'FAIL'}  {what}" + (f"   ({seen})" if seen != "" else ""), flush=True)
    if not holds:
        failures.append(what)


def wait_for(what, condition, seconds=60):
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        found = condition()
        if found:
            return found
        time.sleep(0.2)
    raise TimeoutError(f"{what} did not come in {seconds} s")


def out_of(*words):
    return subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False).stdout


def is_alive(pid):
    try:
        return Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()[0] not in "ZX"
    except OSError:
        return False


class Session:
    """The rows of the memory page and what may be done with them."""

    def __init__(self, tool):
        self.tool = tool

    def rows(self):
        rows = {}
        for line in out_of(self.tool, "list").splitlines():
            name, *pids = line.split("\t")
            rows[name] = [int(pid) for pid in pids]
        return rows

    def row(self, name):
        return wait_for(f"the row of {name}", lambda: self.rows().get(name))

    def deed(self, what, name):
        return out_of(self.tool, what, name).strip()


@contextlib.contextmanager
def running(*words, **options):
    process = subprocess.Popen(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                               **options)
    try:
        yield process
    finally:
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGKILL)
        process.wait()


def window_of(name, **how):
    """The visible window whose class is that."""
    return wait_for(f"a window of {name}", lambda: out_of("xdotool", "search", "--onlyvisible", "--class", name).split(),
                    **how)[-1]


def programs_of(pids):
    return sorted({os.path.basename(Path(f"/proc/{pid}/cmdline").read_bytes().split(b"\0")[0].decode().split(" -")[0])
                   for pid in pids if is_alive(pid)})


def try_mousepad(session):
    """A GTK application with a name on the bus: its own action is asked, and "Save?" is the user's."""
    calls = Path(os.environ["HOME"]) / "calls"
    with running("mousepad") as process, calls.open("w") as out:
        window_of("mousepad")
        pids = session.row("Mousepad")
        check("Mousepad: one row with its process", process.pid in pids, pids)
        monitor = subprocess.Popen(["dbus-monitor", "--session", "interface=org.freedesktop.Application"], stdout=out)
        time.sleep(1)
        outcome = session.deed("quit", "Mousepad")
        check("Mousepad: without unsaved content it quits", outcome == "Requested" and not is_alive(process.pid), outcome)
        monitor.terminate()
        monitor.wait()
        said = calls.read_text()
        check("Mousepad: its own action was activated", "ActivateAction" in said and '"quit"' in said)
    with running("mousepad") as process:
        window = window_of("mousepad")
        out_of("xdotool", "windowfocus", "--sync", window, "type", "--window", window, "not saved yet")
        session.row("Mousepad")
        before = len(out_of("xdotool", "search", "--onlyvisible", "--pid", str(process.pid)).split())
        outcome = session.deed("quit", "Mousepad")
        after = len(out_of("xdotool", "search", "--onlyvisible", "--pid", str(process.pid)).split())
        check("Mousepad: with unsaved content it asks", after > before, f"{before} windows, then {after}")
        check("Mousepad: the answer is that it may be waiting", outcome == "NoResponse", outcome)
        check("Mousepad: it was never signalled", is_alive(process.pid))


def try_keepassxc(session):
    """Lets nobody look into it, and is closed by its window."""
    with running("keepassxc") as process:
        window_of("keepassxc")
        exe = os.access(f"/proc/{process.pid}/exe", os.R_OK)
        pids = session.row("KeePassXC")
        check("KeePassXC: has a row, though nobody may look into it", process.pid in pids and not exe, f"exe readable: {exe}")
        outcome = session.deed("quit", "KeePassXC")
        check("KeePassXC: closes when asked", outcome == "Requested" and not is_alive(process.pid), outcome)


def try_terminal(session):
    """Named by its own entry; its shell and what runs in it are not counted."""
    with running("xfce4-terminal", "--disable-server", "-x", "sh", "-c", "sleep 1000; true") as process:
        window_of("xfce4-terminal")
        sleeper = wait_for("what runs in the terminal", lambda: out_of("pgrep", "-u", str(os.getuid()), "-x", "sleep"))
        pids = session.row("Xfce Terminal")
        check("Xfce Terminal: named by its own entry", "Xfce Terminal Settings" not in session.rows())
        check("Xfce Terminal: neither its shell nor what runs in it is counted", pids == [process.pid],
              f"{pids}, in it {sleeper.split()}")
        outcome = session.deed("quit", "Xfce Terminal")
        check("Xfce Terminal: is asked by its window", outcome in ("Requested", "NoResponse"), outcome)


def try_chromium(session, home):
    """A script that runs a binary elsewhere; its sandboxed processes let nobody look."""
    switches = ["--no-first-run", "--password-store=basic", "--disable-gpu", f"--user-data-dir={home}/chromium"]
    if subprocess.run(["unshare", "--user", "true"], stderr=subprocess.DEVNULL, check=False).returncode != 0:
        switches.append("--no-sandbox")  # this machine lets no user make one
    with running("/usr/bin/chromium", *switches, "about:blank") as process:
        window_of("chromium", seconds=120)
        time.sleep(3)
        pids = session.row("Chromium Web Browser")
        own = [int(pid) for pid in out_of("pgrep", "-u", str(os.getuid()), "-f", "/usr/lib/chromium/chromium").split()]
        closed = sum(not os.access(f"/proc/{pid}/exe", os.R_OK) for pid in pids)
        check("Chromium: one row with all of its processes", sorted(pids) == sorted(filter(is_alive, own)),
              f"{len(pids)} processes, {closed} that let nobody look: {programs_of(pids)}")
        outcome = session.deed("quit", "Chromium Web Browser")
        check("Chromium: closes when asked", outcome == "Requested" and not is_alive(process.pid), outcome)


def try_sleeper(session, home):
    """An ordinary program without window or name on the bus: nothing is sent before the second question."""
    program = home / ".local/opt/sleeper/sleeper"
    program.parent.mkdir(parents=True)
    shutil.copy("/usr/bin/sleep", program)
    entry = home / ".local/share/applications/sleeper.desktop"
    entry.parent.mkdir(parents=True)
    entry.write_text(f"[Desktop Entry]\nType=Application\nName=Sleeper\nExec={program}\n")
    with running(str(program), "1000") as process:
        session.row("Sleeper")
        outcome = session.deed("quit", "Sleeper")
        time.sleep(0.5)
        check("Sleeper: cannot be asked, and is sent nothing", outcome == "CannotAsk" and is_alive(process.pid), outcome)
        outcome = session.deed("end", "Sleeper")
        process.poll()
        check("Sleeper: is ended when the user says so", outcome == "Requested" and not is_alive(process.pid), outcome)


def inside(tool):
    home = Path(os.environ["HOME"])
    session = Session(tool)
    with running("openbox"):
        for program, attempt in (("mousepad", lambda: try_mousepad(session)),
                                 ("keepassxc", lambda: try_keepassxc(session)),
                                 ("xfce4-terminal", lambda: try_terminal(session)),
                                 ("chromium", lambda: try_chromium(session, home)),
                                 ("sleep", lambda: try_sleeper(session, home))):
            if shutil.which(program) is None:
                print(f"passed over: {program} is not installed")
                continue
            try:
                attempt()
            except TimeoutError as late:
                check(f"{program}: {late}", False)
    print(f"{len(failures)} failed")
    return 1 if failures else 0


def outside(tool):
    for program in ("Xvfb", "openbox", "dbus-run-session", "xdotool"):
        if shutil.which(program) is None:
            print(f"passed over: {program} is not installed")
            return 77
    with tempfile.TemporaryDirectory() as folder:
        home = Path(folder) / "home"
        runtime = Path(folder) / "run"
        for path in (home, runtime):
            path.mkdir(mode=0o700)
        copy = Path(folder) / "memory-tool"
        shutil.copy(tool, copy)
        os.chmod(folder, 0o755)
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith(("XDG_", "DBUS_")) and name != "WAYLAND_DISPLAY"}
        environment |= {"HOME": str(home), "XDG_RUNTIME_DIR": str(runtime), "LC_ALL": "C.UTF-8", "NO_AT_BRIDGE": "1"}
        user = []
        if os.getuid() == 0:
            user = ["setpriv", f"--reuid={USER}", f"--regid={USER}", "--clear-groups"]
            for path in (home, runtime):
                os.chown(path, USER, USER)
        reading, writing = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x900x24", "-nolisten", "tcp"],
                                  pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        try:
            environment["DISPLAY"] = ":" + os.read(reading, 16).decode().strip()
            return subprocess.run([*user, "dbus-run-session", "--", "/usr/bin/python3", __file__, "--inside", str(copy)],
                                  env=environment, check=False).returncode
        finally:
            server.terminate()
            server.wait()


if __name__ == "__main__":
    if len(sys.argv) == 3 and sys.argv[1] == "--inside":
        sys.exit(inside(sys.argv[2]))
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(outside(sys.argv[1]))
