"""A screen reader that is switched on when the program runs already, and one that was there long before the views."""

import os
import select
import socket
import unittest

from gi.repository import Gio, GLib

import processes
from accessibility import Listener, Role
from desktop_test import DesktopTest
from texts import text
from window import MODULES, Window

LATE_IMPORT = os.environ.get("VELLMOOR_LATE_IMPORT_LIBRARY", "")
A_WHILE = 3  # seconds, in which a desktop gives a new window the keyboard


class LateReaderTest(DesktopTest):
    over_test_system = True

    def test_it_finds_every_name_all_the_same(self):
        self.program.set_environment(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="")
        self.program.start(is_readable=False)
        self.switch_on()
        self.find_every_name()

    def test_one_that_waits_for_the_views_finds_every_name_and_hears_the_focus(self):
        listener = Listener()
        ours, theirs = socket.socketpair()
        self.program.set_environment(LD_PRELOAD=LATE_IMPORT, VELLMOOR_LATE_IMPORT=str(theirs.fileno()))
        self.program.begin(pass_fds=(theirs.fileno(),))
        self.wait_for("the views to be looked for", lambda: select.select([ours], [], [], 0)[0])
        processes.pass_time(A_WHILE)
        self.assertIsNone(listener.focus)
        ours.send(b"g")
        self.program.wait_for_window()
        self.wait_for("the focus to be told", lambda: listener.focus == (Role.PAGE_TAB, text(MODULES["smartScan"], "en")))
        self.find_every_name()

    def find_every_name(self):
        window = Window(self.program.pid)
        for module in MODULES.values():
            window.find(Role.PAGE_TAB, module)
        window.show("systemJunk")

    def switch_on(self):
        """As a desktop's settings do."""
        bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
        for name in ("IsEnabled", "ScreenReaderEnabled"):
            bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
                          GLib.Variant("(ssv)", ("org.a11y.Status", name, GLib.Variant("b", True))), None,
                          Gio.DBusCallFlags.NONE, -1, None)


if __name__ == "__main__":
    unittest.main()
