"""What the window asks of the desktop around it, by the first way that works."""

import unittest

from accessibility import Role
from desktop_test import DesktopTest
from file_manager import FileManager
from window import Window


class DesktopActionsTest(DesktopTest):
    over_test_system = True

    def open(self, **environment):
        self.program.set_environment(**environment)
        self.program.start()
        self.window = Window(self.program.pid)

    def records(self, file, *lines):
        """That the recorded command was started with these arguments, a line each time."""
        self.wait_for(f"{file.name}", lambda: file.exists() and file.read_text(encoding="utf-8").endswith("\n"))
        self.assertEqual(file.read_text(encoding="utf-8").splitlines(), list(lines))

    def open_page_of_scanned(self, module):
        self.home.fill()
        self.open()
        self.window.show(module)
        self.window.scan()

    def press_reveal(self):
        self.window.find(Role.PUSH_BUTTON, "在 Finder 中显示").do("Press")

    def test_a_file_is_shown_by_the_running_file_manager(self):
        files = FileManager(self.session)
        self.open_page_of_scanned("largeFiles")
        self.press_reveal()
        movie = self.home.path("Videos/Holiday.mkv")
        self.assertEqual(files.wait_for_call(), ("ShowItems", [movie.as_uri()], ""))

    def test_a_login_item_is_shown_by_the_running_file_manager(self):
        files = FileManager(self.session)
        self.open_page_of_scanned("performance")
        self.window.tree.find(Role.PUSH_BUTTON, self.window.text("在 Finder 中显示") + " Redshift").do("Press")
        entry = self.home.path(".config/autostart/redshift.desktop")
        self.assertEqual(files.wait_for_call(), ("ShowItems", [entry.as_uri()], ""))

    def test_a_name_that_is_no_text_is_shown_byte_by_byte(self):
        files = FileManager(self.session)
        self.home.blob(b"Videos/caf\xe9 100%.mkv", 251 << 20)
        self.open()
        self.window.show("largeFiles")
        self.window.scan()
        self.press_reveal()
        self.assertEqual(files.wait_for_call(),
                         ("ShowItems", [self.home.path("Videos").as_uri() + "/caf%E9%20100%25.mkv"], ""))

    def test_without_a_file_manager_on_the_bus_the_folder_is_opened(self):
        folders = self.session.application("org.example.Files", takes="inode/directory")
        self.open_page_of_scanned("largeFiles")
        self.press_reveal()
        self.records(folders, str(self.home.path("Videos")))

    def test_a_file_manager_that_refuses_is_like_none(self):
        FileManager(self.session, refuses=("ShowItems",))
        folders = self.session.application("org.example.Files", takes="inode/directory")
        self.open_page_of_scanned("largeFiles")
        self.press_reveal()
        self.records(folders, str(self.home.path("Videos")))

    def test_the_home_folder_is_opened(self):
        folders = self.session.application("org.example.Files", takes="inode/directory")
        self.open()
        self.window.press("打开用户目录")
        self.records(folders, str(self.home.path("")))

    def clean_the_trash(self):
        """Up to the sheet that offers to open the Trash."""
        self.home.fill()
        self.open()
        self.window.show("trash")
        self.window.scan()
        self.window.ask_clean()
        self.window.press_in_dialog("清理")
        self.window.dialog("清理完成")

    # What a window needs so that it may come to the front: when the user pressed the key.

    def press_by_key(self, node):
        node.take_focus()
        self.wait_for("the keyboard", lambda: (focused := self.window.tree.focused()) and focused.name == node.name)
        self.session.run("xdotool", "key", "Return")

    def test_what_is_started_may_come_to_the_front(self):
        folders = self.session.application("org.example.Files", takes="inode/directory")
        self.open()
        self.press_by_key(self.window.button("打开用户目录"))
        self.records(folders, str(self.home.path("")))
        environment = folders.with_name(folders.name + ".environment").read_text(encoding="utf-8")
        for name in ("DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"):
            self.assertRegex(environment, name + r"='?\w+-\d+-\d+_TIME[1-9]\d*")

    def test_a_file_manager_that_runs_may_come_to_the_front(self):
        files = FileManager(self.session)
        self.open_page_of_scanned("largeFiles")
        self.press_by_key(self.window.tree.find(Role.LIST_ITEM, "Holiday.mkv"))
        self.assertRegex(files.wait_for_call()[2], r"^vellmoor-\d+-\d+_TIME[1-9]\d*$")

    def test_the_trash_is_opened_by_what_takes_its_address(self):
        trash = self.session.application("org.example.Trash", takes="x-scheme-handler/trash")
        self.clean_the_trash()
        self.window.press("打开废纸篓")
        self.records(trash, "trash:///")

    def test_the_trash_is_else_opened_by_the_file_manager_on_the_bus(self):
        files = FileManager(self.session)
        self.clean_the_trash()
        self.window.press("打开废纸篓")
        self.assertEqual(files.wait_for_call(), ("ShowFolders", ["trash:///"], ""))

    def test_the_trash_is_else_opened_as_a_folder(self):
        folders = self.session.application("org.example.Files", takes="inode/directory")
        self.clean_the_trash()
        self.window.press("打开废纸篓")
        self.records(folders, str(self.home.path(".local/share/Trash/files")))

    def test_the_desktops_own_system_monitor_is_started(self):
        other = self.session.application("org.gnome.SystemMonitor")
        own = self.session.application("xfce4-taskmanager")
        self.open(XDG_CURRENT_DESKTOP="XFCE")
        self.window.show("memoryOptimization")
        self.window.press("活动监视器")
        self.records(own, "")
        self.assertFalse(other.exists())

    def test_another_system_monitor_does_as_well(self):
        monitor = self.session.application("net.nokyan.Resources")
        self.open(XDG_CURRENT_DESKTOP="XFCE")
        self.window.show("memoryOptimization")
        self.window.press("活动监视器")
        self.records(monitor, "")

    def test_the_desktops_settings_of_login_items_are_opened(self):
        settings = self.session.command("systemsettings")
        self.open(XDG_CURRENT_DESKTOP="KDE")
        self.window.show("performance")
        self.window.press("系统登录项")
        self.records(settings, "kcm_autostart")

    def test_without_such_settings_the_folder_of_login_items_is_opened(self):
        folders = self.session.application("org.example.Files", takes="inode/directory")
        self.home.fill()
        self.open(XDG_CURRENT_DESKTOP="GNOME")
        self.window.show("performance")
        self.window.press("系统登录项")
        self.records(folders, str(self.home.path(".config/autostart")))

    def test_on_a_desktop_without_anything_each_action_does_nothing(self):
        self.open_page_of_scanned("largeFiles")
        self.press_reveal()
        self.window.press("打开用户目录")
        self.window.show("memoryOptimization")
        self.window.press("活动监视器")
        self.window.show("performance")
        self.window.press("系统登录项")
        self.window.show("smartScan")
        self.assertTrue(self.program.is_running())


if __name__ == "__main__":
    unittest.main()
