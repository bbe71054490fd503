"""The window on Wayland: who it is, its keys, its menus, a second start, the clipboard, and two scales."""

import os
import pathlib
import struct
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "desktop"))

import processes  # noqa: E402
import wayland  # noqa: E402
from accessibility import Role, State  # noqa: E402
from desktop_test import DesktopTest  # noqa: E402
from window import Window  # noqa: E402


class WaylandTest(DesktopTest):
    scale = 1
    activation = "focus"
    over_test_system = False

    def make_session(self):
        return wayland.WaylandSession(self.scale, self.activation)

    def make_program(self, chosen_system):
        return wayland.WaylandProgram(self.session, chosen_system)

    def open(self, *arguments):
        self.home.fill()
        self.program.start(arguments=arguments)
        self.window = Window(self.program.pid)

    def focused_name(self):
        node = self.window.tree.focused()
        return node.name if node else ""

    def test_the_windows_name_is_that_of_the_desktop_file(self):
        self.open()
        self.assertEqual(self.program.node()["app_id"], "org.vellmoor.Vellmoor")
        self.assertEqual(self.program.node()["name"], "Vellmoor")

    def test_the_keyboard_goes_through_the_modules_and_scans(self):
        self.open()
        self.session.type("-M", "ctrl", "-k", "2", "-m", "ctrl")
        self.wait_for("the second page", lambda: self.window.shows("systemJunk"))
        self.session.type("-k", "F5")
        self.window.wait_for_result()
        self.session.type("-M", "ctrl", "-k", "8", "-m", "ctrl")
        self.wait_for("the last page", lambda: self.window.shows("trash"))
        self.session.type("-M", "ctrl", "-k", "q", "-m", "ctrl")
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_a_menu_opens_by_its_key_and_closes_by_escape(self):
        self.open("--module", "systemJunk")
        self.window.scan()
        self.window.find(Role.LIST_ITEM, "用户缓存").take_focus()
        self.wait_for("the row to have the keyboard", lambda: self.focused_name().startswith(self.window.text("用户缓存")))
        self.session.type("-k", "Down")
        self.wait_for("the next row", lambda: self.focused_name().startswith(self.window.text("系统日志")))
        self.session.type("-k", "Menu")
        menus = (Role.POPUP_MENU, Role.MENU, Role.MENU_ITEM)
        self.wait_for("the menu", lambda: [node for node in self.window.tree.shown() if node.role in menus])
        self.session.type("-k", "Escape")
        self.wait_for("its end", lambda: not [node for node in self.window.tree.shown() if node.role in menus])

    def test_the_combo_box_offers_its_choices(self):
        self.open("--module", "largeFiles")
        self.window.scan()
        self.window.find(Role.COMBO_BOX, "全部").do("Press")
        self.window.find(Role.LIST_ITEM, "视频").do("Press")
        self.window.find(Role.COMBO_BOX, "视频")

    def test_a_second_start_raises_the_window_by_its_token(self):
        self.open()
        (self.session.folder / "other home").mkdir()
        other = self.program.in_home(self.session.folder / "other home").start()
        self.assertFalse(self.program.is_active())
        self.program.set_environment(XDG_ACTIVATION_TOKEN=self.session.token())
        self.assertEqual(self.program.start_again("--module", "trash"), (0, []))
        self.wait_for("the window to be active", self.program.is_active)
        self.wait_for("the page", lambda: self.window.shows("trash"))
        self.assertEqual(len(self.session.nodes()), 2)
        self.assertTrue(other.is_running())

    def test_text_goes_into_the_clipboard_and_out_of_it(self):
        self.open("--module", "systemJunk")
        self.window.scan()
        self.session.type("-M", "ctrl", "-k", "f", "-m", "ctrl")
        self.wait_for("the search field", lambda: (node := self.window.tree.focused()) and State.EDITABLE in node.states)
        self.session.type("thumb")
        self.session.type("-M", "ctrl", "-k", "a", "-k", "c", "-m", "ctrl")
        self.wait_for("the text in the clipboard", lambda: self.clipboard() == "thumb")
        with open(os.devnull, "wb") as nothing:
            processes.start(["wl-copy", "--foreground", "player"], self.session.environment, stdout=nothing, stderr=nothing)
        self.wait_for("the other text in the clipboard", lambda: self.clipboard() == "player")
        self.session.type("-M", "ctrl", "-k", "a", "-k", "v", "-k", "a", "-k", "x", "-m", "ctrl")
        self.wait_for("the text back in the clipboard", lambda: self.clipboard() == "player")

    def clipboard(self):
        done = subprocess.run(["wl-paste", "--no-newline"], env=self.session.environment, text=True, capture_output=True,
                              timeout=processes.PATIENCE, check=False)
        return done.stdout

    def test_a_question_is_answered_by_the_keyboard(self):
        self.open("--empty-trash")
        self.window.dialog("清理前详情")
        self.session.type("-k", "Escape")
        self.wait_for("the question to go", lambda: not self.window.has_dialog())
        self.assertTrue(self.home.path(".local/share/Trash/files/note.txt").exists())

    def check_scaled(self, factor):
        """The window fills the output, its texts are drawn at full size, and nothing of the page lies outside."""
        self.open()
        rect = self.program.node()["rect"]
        picture = self.session.picture(self.session.folder / "picture.png")
        width, height = struct.unpack(">II", picture.read_bytes()[16:24])
        self.assertEqual((width, height), (1400, 1000), "the output's own pixels")
        self.assertEqual((rect["width"], rect["height"]), (1400 // self.scale, 1000 // self.scale))
        self.window.find(Role.PAGE_TAB, "废纸篓")
        self.window.scan()
        clean = self.window.button("清理")
        box = clean._accessible.get_extents(1)  # within the window
        self.assertLessEqual(box.x + box.width, rect["width"] / factor + 1)
        self.assertLessEqual(box.y + box.height, rect["height"] / factor + 1)


class DoubleScaleTest(WaylandTest):
    scale = 2

    def test_at_scale_2_everything_that_is_needed_is_inside(self):
        self.check_scaled(1)


class FactorTest(WaylandTest):
    def make_program(self, chosen_system):
        program = super().make_program(chosen_system)
        program.set_environment(QT_SCALE_FACTOR="1.5")
        return program

    def test_at_factor_1_5_everything_that_is_needed_is_inside(self):
        self.check_scaled(1.5)


if __name__ == "__main__":
    unittest.main()
