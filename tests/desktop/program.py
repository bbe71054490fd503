"""The built program in a session: its process, its window, what it printed."""

import os
import subprocess

import processes

BINARY = os.environ.get("VELLMOOR_BINARY", "")
EXPECTED_LINES = ("vellmoor: running as root; it cleans root's own home, not that of another user",)


class Program:
    def __init__(self, session, **environment):
        if not os.access(BINARY, os.X_OK):
            raise AssertionError(f"VELLMOOR_BINARY does not name a program: {BINARY!r}")
        self._session = session
        self._environment = dict(session.environment)
        self._environment.update({
            # Only what a test puts there can be started.
            "PATH": str(session.commands),
            "XDG_DATA_DIRS": str(session.folder / "data"),
            "XDG_CONFIG_DIRS": str(session.folder / "config"),
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            # Qt keeps what it allocated once.
            "ASAN_OPTIONS": "detect_leaks=0",
            "UBSAN_OPTIONS": "print_stacktrace=1:halt_on_error=1",
        })
        self._environment.update(environment)
        self.process = None
        self.window = 0

    @property
    def pid(self):
        return self.process.pid

    def start(self):
        """Starts it and waits for its window; answers itself."""
        self.process = self._start("program")
        self.window = processes.wait_for("the window", self._find_window)
        processes.wait_for("the window to be active", self.is_active)
        return self

    def _start(self, log):
        with open(self._session.folder / "logs" / log, "wb") as output:
            return processes.start([BINARY], self._environment, stdout=output, stderr=output)

    def start_again(self):
        """The exit status of a second start, and what it printed."""
        second = self._start("second start")
        return second.wait(processes.PATIENCE), self._unexpected("second start")

    def _find_window(self):
        if self.process.poll() is not None:
            raise AssertionError(f"ended with {self.process.returncode}: {self._session.log('program')}")
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Vellmoor$"], capture_output=True,
                               env=self._session.environment, text=True, timeout=processes.PATIENCE, check=False)
        return int(found.stdout.split()[0]) if found.stdout else 0

    def is_mapped(self):
        return "Map State: IsViewable" in self._session.run("xwininfo", "-id", str(self.window))

    def is_active(self):
        return f"{self.window:#x}" in self._session.property("_NET_ACTIVE_WINDOW")

    def is_on_top(self):
        stack = self._session.property("_NET_CLIENT_LIST_STACKING").split()
        return int(stack[-1], 16) == self.window

    def close_window(self):
        """As a user closes it: with the window manager's key."""
        processes.wait_for("the window to be active", self.is_active)
        self._session.run("xdotool", "key", "alt+F4")

    def is_running(self):
        return self.process.poll() is None

    def wait_for_end(self):
        """The exit status."""
        return self.process.wait(processes.PATIENCE)

    def complaints(self):
        """What the program printed and should not have."""
        return self._unexpected("program")

    def _unexpected(self, log):
        return [line for line in self._session.log(log).splitlines() if line and line not in EXPECTED_LINES]
