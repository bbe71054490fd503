"""The status item in a tray, and what closing the window means with it and without."""

import signal
import unittest

from desktop_test import DesktopTest
from window import Window


class StatusItemTest(DesktopTest):
    tray = True

    def open(self):
        self.program.start()
        self.icon = self.wait_for("the status item", self.session.tray_icon)

    def click(self, button=1):
        left, top, width, height = self.session.place(self.icon)
        self.session.run("xdotool", "mousemove", str(left + width // 2), str(top + height // 2), "click", str(button))

    def test_a_click_brings_a_covered_window_to_the_front(self):
        self.open()
        other = self.session.start_other_window()
        self.wait_for("the other window", lambda: self.session.active_window() == other)
        self.assertFalse(self.program.is_above(other))
        self.click()
        self.wait_for("the window to be active", self.program.is_active)
        self.wait_for("the window to be on top", lambda: self.program.is_above(other))

    def test_closing_the_window_keeps_the_program_and_a_click_brings_it_back(self):
        self.open()
        self.program.close_window()
        self.assertTrue(self.program.is_running())
        self.click()
        self.program.wait_for_window()
        self.program.close_window()
        self.click()
        self.program.wait_for_window()

    def test_a_click_restores_a_minimised_window(self):
        self.open()
        self.session.run("xdotool", "windowminimize", str(self.program.window))
        self.wait_for("the window to be minimised", lambda: not self.program.shown_windows())
        self.click()
        self.program.wait_for_window()

    def test_the_menu_ends_the_program(self):
        self.open()
        self.program.close_window()
        self.choose_in_menu(last=True)
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_the_menu_opens_the_window(self):
        self.open()
        self.program.close_window()
        self.choose_in_menu(last=False)
        self.program.wait_for_window()

    def choose_in_menu(self, last):
        before = self.program.all_windows()
        self.click(button=3)
        menu = self.wait_for("the menu", lambda: self.program.shown_windows() - before)
        self.assertEqual(len(menu), 1, "the right button shows the menu and nothing else")
        left, top, width, height = self.session.place(menu.pop())
        line = height - 10 if last else 10
        self.session.run("xdotool", "mousemove", str(left + width // 2), str(top + line), "click", "1")

    def test_a_scan_goes_on_when_the_window_is_closed_and_its_results_wait(self):
        self.home.fill()
        self.home.many_files("Documents/many", folders=300, files=100)
        self.open()
        window = Window(self.program.pid)
        window.press("开始扫描")
        self.program.close_window()
        self.click()
        self.program.wait_for_window()
        window.wait_for_result()
        self.assertTrue(self.program.is_running())

    def test_the_tray_going_away_does_not_lose_the_program(self):
        self.open()
        self.program.close_window()
        self.session.stop_tray()
        self.assertEqual(self.program.start_again(), (0, []))
        self.program.wait_for_window()
        self.program.close_window()
        self.assertEqual(self.program.wait_for_end(), 0)


class NoTrayTest(DesktopTest):
    def test_closing_the_window_ends_the_program(self):
        self.program.start()
        self.program.close_window()
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_control_q_ends_the_program(self):
        self.program.start()
        self.session.run("xdotool", "key", "ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_a_tray_that_comes_later_gets_the_status_item(self):
        self.program.start()
        self.assertEqual(self.program.all_windows(), {self.program.window})
        self.session.start_tray()
        self.program.close_window()
        self.wait_for("the status item", self.session.tray_icon)
        self.assertTrue(self.program.is_running())

    def test_the_end_of_the_session_ends_the_program_in_order(self):
        self.program.start()
        self.program.process.send_signal(signal.SIGTERM)
        self.assertEqual(self.program.wait_for_end(), 0)


if __name__ == "__main__":
    unittest.main()
