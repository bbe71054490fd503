"""The program as a desktop knows it: by its desktop file, whose name is that of a service on the session bus. With
VELLMOOR_PREFIX=/usr the files are those that are installed below it; else those of the sources, for the built program."""

import os
import pathlib
import unittest

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

import processes  # noqa: E402
import program  # noqa: E402
from accessibility import Role  # noqa: E402
from desktop_test import DesktopTest  # noqa: E402
from window import Window  # noqa: E402

NAME = "org.vellmoor.Vellmoor"
SOURCES = pathlib.Path(__file__).resolve().parents[2] / "packaging/linux"
PREFIX = os.environ.get("VELLMOOR_PREFIX", "")


class InstalledTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.home.fill()

    # The desktop's part

    def install(self):
        """The desktop file, and the service that the bus starts for it."""
        services = self.session.folder / "run/services"
        if PREFIX:
            desktop_file = pathlib.Path(PREFIX, "share/applications", f"{NAME}.desktop")
            service = pathlib.Path(PREFIX, "share/dbus-1/services", f"{NAME}.service").read_text(encoding="utf-8")
        else:
            desktop_file = self.session.applications / f"{NAME}.desktop"
            entry = (SOURCES / desktop_file.name).read_text(encoding="utf-8")
            desktop_file.write_text(entry.replace("Exec=vellmoor", f"Exec={program.BINARY}"), encoding="utf-8")
            service = (SOURCES / f"{NAME}.service.in").read_text(encoding="utf-8")
            service = service.replace("@CMAKE_INSTALL_FULL_BINDIR@/vellmoor", program.BINARY)
        (services / f"{NAME}.service").write_text(service, encoding="utf-8")
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        # What a session hands to the programs that its bus starts.
        self.ask_bus("UpdateActivationEnvironment", GLib.Variant("(a{ss})", ({
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "ASAN_OPTIONS": "detect_leaks=0"},)))
        self.ask_bus("ReloadConfig")
        self.entry = Gio.DesktopAppInfo.new_from_filename(str(desktop_file))
        self.assertIsNotNone(self.entry, f"{desktop_file} is no application")

    def ask_bus(self, method, arguments=None):
        return self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                                  arguments, None, Gio.DBusCallFlags.NONE, int(processes.PATIENCE * 1000), None)

    def pid(self):
        """Of the program that holds the name, 0 while none does."""
        name = GLib.Variant("(s)", (NAME,))
        if not self.ask_bus("NameHasOwner", name).unpack()[0]:
            return 0
        return self.ask_bus("GetConnectionUnixProcessID", name).unpack()[0]

    def wait_for_started(self):
        pid = self.wait_for("the program on the bus", self.pid)
        self.window = Window(pid)
        return pid

    def press_in(self, title, key):
        """A button of the dialog of that title; others may be open below it."""
        dialog = self.window.dialog(title)
        wanted = self.window.text(key)
        (button,) = [node for node in dialog.below() if node.role == Role.PUSH_BUTTON and node.name == wanted]
        button.do("Press")

    # The tests

    def test_the_menu_starts_it_through_the_bus(self):
        self.install()
        self.entry.launch([], None)
        pid = self.wait_for_started()
        self.window.find(Role.PAGE_TAB, "智能扫描")
        command = pathlib.Path(f"/proc/{pid}/cmdline").read_bytes()
        self.assertIn(b"--gapplication-service", command)
        self.entry.launch([], None)
        self.wait_for("the one that runs to be asked", lambda: self.pid() == pid)

    def test_an_action_of_the_menu_asks_and_does_not_act(self):
        self.install()
        self.assertEqual(self.entry.list_actions(), ["scan", "empty-trash"])
        note = self.home.path(".local/share/Trash/files/note.txt")
        self.entry.launch_action("empty-trash", None)
        self.wait_for_started()
        self.press_in("清理前详情", "取消")
        self.wait_for("the paths to go", lambda: not self.window.has_dialog())
        self.assertTrue(note.exists())
        self.entry.launch_action("empty-trash", None)
        self.press_in("清理前详情", "清理")
        self.window.dialog("确认清理选中项目？")
        self.assertTrue(note.exists())
        self.press_in("确认清理选中项目？", "清理")
        self.window.dialog("清理完成")
        self.assertFalse(note.exists())

    def test_an_action_of_the_menu_scans(self):
        self.install()
        self.entry.launch_action("scan", None)
        self.wait_for_started()
        self.window.wait_for_result()
        self.assertTrue(self.window.shows("smartScan"))

    def test_the_bus_can_end_it_without_ever_showing_a_window(self):
        self.install()
        self.bus.call_sync(NAME, "/org/vellmoor/Vellmoor", "org.freedesktop.Application", "ActivateAction",
                           GLib.Variant("(sava{sv})", ("quit", [], {})), None, Gio.DBusCallFlags.NONE,
                           int(processes.PATIENCE * 1000), None)
        self.wait_for("the end", lambda: not self.pid())

    def test_a_clean_moves_what_is_ticked_and_leaves_the_rest(self):
        self.program.start()
        self.window = Window(self.program.pid)
        self.window.show("systemJunk")
        self.window.scan()
        self.window.press("清理")
        self.press_in("清理前详情", "清理")
        self.press_in("确认清理选中项目？", "清理")
        self.window.dialog("清理完成")
        self.assertFalse(self.home.path(".cache/player/data").exists())
        self.assertTrue(self.home.path(".local/share/Trash/files/player").exists())
        self.assertTrue(self.home.path(".npm/_cacache/content").exists(), "developer caches are not ticked by themselves")
        self.assertTrue(self.home.path("Videos/Holiday.mkv").exists())

    def test_a_module_is_opened_by_the_command_line_here_and_in_the_running_window(self):
        self.program.start(arguments=["--module", "trash"])
        self.window = Window(self.program.pid)
        self.wait_for("the Trash", lambda: self.window.shows("trash"))
        self.assertEqual(self.program.start_again("--module=privacy"), (0, []))
        self.wait_for("the other page", lambda: self.window.shows("privacy"))

    def test_without_a_display_help_version_and_faults_are_told(self):
        self.program.set_environment(DISPLAY="", WAYLAND_DISPLAY="")
        status, lines = self.program.start_again("--version")
        self.assertEqual(status, 0)
        self.assertRegex("\n".join(lines), r"^vellmoor \d+\.\d+\.\d+$")
        status, lines = self.program.start_again("--help")
        self.assertEqual((status, lines[0]), (0, "Usage: vellmoor [OPTION]..."))
        status, lines = self.program.start_again("--modul")
        self.assertEqual((status, lines), (2, ["vellmoor: unknown option '--modul' (see vellmoor --help)"]))


if __name__ == "__main__":
    unittest.main()
