"""A screen reader that is switched on when the program runs already."""

import unittest

from gi.repository import Gio, GLib

from accessibility import Role
from desktop_test import DesktopTest
from window import MODULES, Window


class LateReaderTest(DesktopTest):
    over_test_system = True

    def test_it_finds_every_name_all_the_same(self):
        self.program.set_environment(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="")
        self.program.start(is_readable=False)
        self.switch_on()
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
