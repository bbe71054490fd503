"""The built program in a session: its process, its window, what it printed."""

import os

import accessibility
import processes

BINARY = os.environ.get("VELLMOOR_BINARY", "")
BINARY_OVER_TEST_SYSTEM = os.environ.get("VELLMOOR_OVER_TEST_SYSTEM", "")
EXPECTED_LINES = ("vellmoor: running as root; it cleans root's own home, not that of another user",
                  # Qt's, when a busy machine's accessibility registry takes its time over a key.
                  "QSpiApplication::keyEventError",
                  # Qt's since 6.8, when what is asked about has just gone.
                  "qt.accessibility.atspi: Could not find accessible on path")


class Program:
    def __init__(self, session, system=None, **environment):
        """Over that system; None: as it is installed, over this machine's."""
        self._binary = BINARY if system is None else BINARY_OVER_TEST_SYSTEM
        if not os.access(self._binary, os.X_OK):
            raise AssertionError(f"not a program: {self._binary!r} (ctest names it)")
        self._session = session
        self._system = system
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
        if system is not None:
            self._environment["VELLMOOR_TEST_SYSTEM"] = str(system.folder)
        self._environment.update(environment)
        self.process = None
        self.window = 0

    def set_environment(self, **environment):
        self._environment.update(environment)

    @property
    def pid(self):
        return self.process.pid

    def start(self, is_readable=True, arguments=(), **streams):
        """Starts it and waits for its window and, unless a test makes it unreadable, for what is in it."""
        self.begin(*arguments, **streams)
        self.wait_for_window()
        if is_readable:
            tree = accessibility.Tree(self.pid)
            processes.wait_for("the page", lambda: tree.find_all(accessibility.Role.HEADING))
        return self

    def begin(self, *arguments, **streams):
        """Starts it and waits for nothing."""
        self.process = self._start("program", *arguments, **streams)

    def wait_for_window(self):
        """Until its window is shown and has the keyboard."""
        self.window = processes.wait_for("the window", self._find_window)
        processes.wait_for("the window to be active", self.is_active)

    def in_home(self, home):
        """Another start in the same session, with that home."""
        return type(self)(self._session, self._system, HOME=str(home), XDG_CONFIG_HOME="", XDG_CACHE_HOME="", XDG_DATA_HOME="",
                       XDG_STATE_HOME="")

    def _start(self, log, *arguments, **streams):
        with open(self._session.folder / "logs" / log, "wb") as output:
            return processes.start([self._binary, *arguments], self._environment, stdout=output, stderr=output, **streams)

    def start_again(self, *arguments):
        """The exit status of a second start, and what it printed."""
        second = self._start("second start", *arguments)
        return second.wait(processes.PATIENCE), self._unexpected("second start")

    def _find_window(self):
        if self.process.poll() is not None:
            raise AssertionError(f"ended with {self.process.returncode}: {self._session.log('program')}")
        named = set(self._session.windows("--name", "^Vellmoor$"))
        return next(iter(named & self.shown_windows()), 0)

    def all_windows(self):
        """Its shown windows, the status item among them."""
        return set(self._session.windows("--all", "--pid", str(self.pid), "--name", ""))

    def shown_windows(self):
        """Its shown windows but the status item."""
        return self.all_windows() - {self._session.tray_icon()}

    def is_active(self):
        return self._session.active_window() == self.window

    def is_above(self, other):
        shown = self._session.property("_NET_CLIENT_LIST_STACKING").replace(",", "").split()
        stack = [int(window, 16) for window in shown if window.startswith("0x")]
        return stack.index(self.window) > stack.index(other)

    def close_window(self):
        """As a user closes it: with the window manager's key, and again when nothing happens. A window manager that is
        busy loses a key now and then."""
        for _ in range(3):
            processes.wait_for("the window to be active", self.is_active)
            self._session.run("xdotool", "key", "alt+F4")
            try:
                return processes.wait_for("the window to go", lambda: not self.shown_windows(), 20)
            except AssertionError:
                if not self.is_running():
                    raise
        raise AssertionError(f"the window stays: {self._session.property('_NET_CLIENT_LIST')}, {self.shown_windows()}, "
                             f"status item {self._session.tray_icon()}")

    def is_running(self):
        return self.process.poll() is None

    def wait_for_end(self):
        """The exit status."""
        return self.process.wait(processes.PATIENCE)

    def complaints(self):
        """What the program printed and should not have."""
        return self._unexpected("program")

    def _unexpected(self, log):
        return [line for line in self._session.log(log).splitlines() if line and not line.startswith(EXPECTED_LINES)]
