"""A desktop that breaks around the program."""

import unittest

from accessibility import Role
from desktop_test import DesktopTest
from window import Window


class HardshipTest(DesktopTest):
    def test_without_a_session_bus_the_window_opens_and_closing_it_ends_the_program(self):
        self.program.set_environment(DBUS_SESSION_BUS_ADDRESS=f"unix:path={self.session.folder}/no bus")
        self.program.start(is_readable=False)
        self.program.close_window()
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_the_session_bus_going_away_does_not_take_the_window_with_it(self):
        self.program.start()
        self.session.stop_bus()
        self.session.run("xdotool", "key", "ctrl+r")
        self.wait_for("the window", self.program.shown_windows)
        self.session.run("xdotool", "key", "ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_the_screen_reader_going_away_does_not_take_the_window_with_it(self):
        self.program.start()
        self.assertTrue(Window(self.program.pid).tree.find_all(Role.PAGE_TAB))
        self.session.stop_accessibility()
        self.session.run("xdotool", "key", "ctrl+r")
        self.session.run("xdotool", "key", "ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_a_setting_that_cannot_be_kept_counts_for_this_start(self):
        self.home.fill()
        self.home.text(".config/Vellmoor", "a file where the folder of the settings should be")
        self.program.start()
        window = Window(self.program.pid)
        window.switch_language()
        window.scan()

    def test_leaving_right_after_a_scan_began_ends_the_program_in_order(self):
        self.home.many_files("Documents/many", folders=300, files=100)
        self.program.start()
        window = Window(self.program.pid)
        window.press("开始扫描")
        self.session.run("xdotool", "key", "ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)


if __name__ == "__main__":
    unittest.main()
