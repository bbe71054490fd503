"""The status item in the trays of today's desktops."""

import unittest

from desktop_test import DesktopTest
from notifier import Notifier
from texts import text
from window import Window


class NotifierTest(DesktopTest):
    def open(self):
        self.notifier = Notifier(self.session)
        self.program.start()
        self.notifier.wait_for_item()

    def test_the_item_has_a_picture_and_its_name(self):
        self.open()
        self.assertEqual(self.notifier.property("ToolTip")[2], "Vellmoor")
        self.assertTrue(self.notifier.property("IconPixmap") or self.notifier.property("IconName"))

    def test_closing_the_window_keeps_the_program_and_activating_the_item_brings_it_back(self):
        self.open()
        self.program.close_window()
        self.assertTrue(self.program.is_running())
        self.notifier.activate()
        self.program.wait_for_window()

    def test_the_menu_speaks_the_language_of_the_window(self):
        self.open()
        self.assertEqual(list(self.notifier.menu()), [text("打开 Vellmoor", "en"), text("退出", "en")])
        Window(self.program.pid).switch_language()
        self.assertEqual(list(self.notifier.menu()), [text("打开 Vellmoor", "zh"), text("退出", "zh")])

    def test_the_menu_opens_the_window_and_ends_the_program(self):
        self.open()
        self.program.close_window()
        self.notifier.choose(text("打开 Vellmoor", "en"))
        self.program.wait_for_window()
        self.notifier.choose(text("退出", "en"))
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_a_tray_that_comes_later_gets_the_item(self):
        self.program.start()
        self.notifier = Notifier(self.session)
        self.notifier.wait_for_item()
        self.program.close_window()
        self.assertTrue(self.program.is_running())
        self.notifier.activate()
        self.program.wait_for_window()


    def test_a_panel_that_comes_after_its_watcher_gets_the_item(self):
        self.notifier = Notifier(self.session, has_host=False)
        self.program.start()
        self.assertEqual(self.notifier.item, "")
        self.notifier.bring_host()
        self.notifier.wait_for_item()


if __name__ == "__main__":
    unittest.main()
