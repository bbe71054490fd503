"""A second start brings the first one's window to the front."""

import unittest

from accessibility import Role
from desktop_test import DesktopTest
from window import Window


class SingleInstanceTest(DesktopTest):
    tray = True

    def test_a_second_start_raises_the_covered_window_and_ends(self):
        self.program.start()
        other = self.session.start_other_window()
        self.wait_for("the other window", lambda: self.session.active_window() == other)
        self.assertEqual(self.program.start_again(), (0, []))
        self.wait_for("the window to be active", self.program.is_active)
        self.assertEqual(len(self.program.shown_windows()), 1)

    def test_a_second_start_brings_back_the_window_that_was_closed_to_the_tray(self):
        self.program.start()
        self.wait_for("the status item", self.session.tray_icon)
        self.program.close_window()
        self.assertEqual(self.program.start_again(), (0, []))
        self.program.wait_for_window()
        self.assertTrue(self.program.is_running())

    def test_another_home_has_a_window_of_its_own(self):
        self.program.start()
        (self.session.folder / "other home").mkdir()
        other = self.program.in_home(self.session.folder / "other home").start()
        self.assertTrue(other.is_running())
        self.assertTrue(self.program.is_running())
        self.assertNotEqual(other.window, self.program.window)

    def test_the_language_is_kept_until_the_next_start(self):
        self.program.start()
        Window(self.program.pid).switch_language()
        self.session.run("xdotool", "key", "ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)
        self.program.start()
        Window(self.program.pid, "zh").find(Role.PAGE_TAB, "废纸篓")

    def test_after_the_first_ended_a_start_opens_a_window_again(self):
        self.program.start()
        self.session.run("xdotool", "key", "ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)
        self.program.start()


if __name__ == "__main__":
    unittest.main()
