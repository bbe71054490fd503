"""Processes that end with the test, however it ends, and waiting with a limit."""

import ctypes
import os
import signal
import subprocess
import time

import gi

gi.require_version("GLib", "2.0")
from gi.repository import GLib  # noqa: E402

PATIENCE = 90.0  # seconds; the machine may be busy and the program be built with sanitizers

_PR_SET_PDEATHSIG = 1
_PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None, use_errno=True)
_started = []


def wait_for(what, condition, patience=PATIENCE):
    """What the condition answers once it is true; an AssertionError naming `what` when it never is."""
    context = GLib.MainContext.default()
    deadline = time.monotonic() + patience
    while True:
        while context.iteration(False):
            pass
        asked = time.monotonic()
        answer = condition()
        if answer:
            return answer
        now = time.monotonic()
        if now > deadline:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(max(0.03, now - asked))  # who asks for long must not keep the program from its work


def pass_time(seconds):
    """Lets what was told be heard for that long."""
    deadline = time.monotonic() + seconds
    context = GLib.MainContext.default()
    while (left := deadline - time.monotonic()) > 0:
        while context.iteration(False):
            pass
        time.sleep(min(left, 0.01))


def adopt_orphans():
    """Daemons that leave their parent become this process's children, so that it can end them."""
    if _libc.prctl(_PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) != 0:
        raise OSError(ctypes.get_errno(), "prctl")


def start(arguments, environment, **streams):
    """A process that the kernel ends when this one dies."""

    def die_with_parent():
        _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)

    process = subprocess.Popen(arguments, env=environment, preexec_fn=die_with_parent, **streams)
    _started.append(process)
    return process


def _children(pid):
    try:
        with open(f"/proc/{pid}/task/{pid}/children", encoding="ascii") as file:
            return [int(child) for child in file.read().split()]
    except (FileNotFoundError, ProcessLookupError):
        return []


def descendants(pid):
    found = []
    for child in _children(pid):
        found += [child, *descendants(child)]
    return found


def end_descendants():
    """Ends every process that this one started, directly or not, and waits until all are gone."""
    deadline = time.monotonic() + 5.0
    while remaining := descendants(os.getpid()):
        late = time.monotonic() > deadline
        for pid in remaining:
            try:
                os.kill(pid, signal.SIGKILL if late else signal.SIGTERM)
            except ProcessLookupError:
                pass  # it ended meanwhile
        _reap()
        time.sleep(0.02)
    for process in _started:
        process.poll()
    _started.clear()


def _reap():
    try:
        while os.waitpid(-1, os.WNOHANG)[0] != 0:
            pass
    except ChildProcessError:
        pass  # no child is left


def run(arguments, environment=None):
    """The output of a short command; an error when it fails."""
    done = subprocess.run(arguments, env=environment, capture_output=True, text=True, timeout=PATIENCE, check=False)
    if done.returncode != 0:
        raise AssertionError(f"{arguments}: {done.returncode} {done.stderr.strip()}")
    return done.stdout
