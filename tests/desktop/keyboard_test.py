"""Where the keyboard goes, as a screen reader is told."""

import unittest

from accessibility import Role, State
from desktop_test import DesktopTest
from window import MODULES, Window

STOPS = 120  # more than any page has
OPERATED = {Role.PUSH_BUTTON, Role.CHECK_BOX, Role.RADIO_BUTTON, Role.COMBO_BOX, Role.PAGE_TAB}


class KeyboardTest(DesktopTest):
    over_test_system = True

    def open(self, module):
        self.home.fill()
        self.program.start()
        self.window = Window(self.program.pid)
        self.window.show(module)
        self.window.scan()
        self.first = self.window.find(Role.PAGE_TAB, MODULES["smartScan"])
        self.first.take_focus()
        self.wait_for("the focus", lambda: self.focus() == (Role.PAGE_TAB, self.first.name))

    def focus(self):
        """Role and name of what has the keyboard, None on the way."""
        node = self.window.tree.focused()
        return (node.role, node.name) if node else None

    def press(self, key):
        """Presses a key that moves the keyboard; where it went."""
        before = self.focus()
        self.session.run("xdotool", "key", key)
        return self.wait_for(f"{key} to move on from {before}",
                             lambda: next(iter({self.focus()} - {before, None}), None))

    def round(self):
        """Every stop of the Tab key, once around the page."""
        stops = [self.focus()]
        while len(stops) < STOPS:
            stop = self.press("Tab")
            if stop == stops[0]:
                return stops
            stops.append(stop)
        raise AssertionError(f"the Tab key does not come round: {stops}")

    def test_the_tab_key_comes_by_everything_from_the_sidebar_to_the_main_action(self):
        self.open("smartScan")
        stops = self.round()
        landmarks = [(Role.PAGE_TAB, "智能扫描"), (Role.PAGE_TAB, "废纸篓"), (Role.PUSH_BUTTON, "刷新扫描结果"),
                     (Role.PUSH_BUTTON, "打开用户目录"), (Role.PUSH_BUTTON, "开始扫描"), (Role.RADIO_BUTTON, "全部"),
                     (Role.PUSH_BUTTON, "查看全部"), (Role.PUSH_BUTTON, "预览项目"), (Role.PUSH_BUTTON, "清理")]
        places = [stops.index((role, self.window.text(key))) for role, key in landmarks]
        self.assertEqual(places, sorted(places))
        rows = [place for place, (role, _) in enumerate(stops) if role in (Role.LIST_ITEM, Role.CHECK_BOX)]
        self.assertGreater(min(rows), places[5], "the list follows its filter")
        self.assertLess(max(rows), places[6], "and stands before the narrow column")

    def test_the_tab_key_comes_by_every_control_outside_of_rows(self):
        self.open("largeFiles")
        shown = {(node.role, node.name) for node in self.window.tree.shown()
                 if node.role in OPERATED and node.is_(State.FOCUSABLE) and node.parent.role != Role.LIST_ITEM}
        self.assertEqual(shown - set(self.round()), set())

    def test_shift_and_tab_go_the_same_way_back(self):
        self.open("trash")
        there = self.round()
        back = [self.press("shift+Tab") for _ in there]
        self.assertEqual(back, there[::-1])

    def test_after_a_clean_a_control_has_the_keyboard(self):
        self.open("systemJunk")
        self.window.find(Role.PUSH_BUTTON, "清理").take_focus()
        self.session.run("xdotool", "key", "Return")
        self.window.dialog("清理前详情")
        self.window.press_in_dialog("清理")
        self.window.dialog("确认清理选中项目？")
        self.window.press_in_dialog("清理")
        self.window.dialog("清理完成")
        self.session.run("xdotool", "key", "Escape")
        self.wait_for("the sheet to close", lambda: not self.window.has_dialog())
        clean = self.window.button("清理")
        self.wait_for("nothing to be ticked any more", lambda: not clean.is_(State.ENABLED))
        self.wait_for(f"a control to have the keyboard, not {self.focus()}",
                      lambda: (self.focus() or (None,))[0] in OPERATED | {Role.LIST_ITEM})

    def test_the_arrow_keys_move_in_a_list_and_space_ticks(self):
        self.open("systemJunk")
        self.window.find(Role.LIST, "推荐清理").take_focus()
        self.wait_for("the first row", lambda: (self.focus() or (None,))[0] == Role.LIST_ITEM)
        names = [self.focus()[1], self.press("Down")[1], self.press("Down")[1]]
        self.assertEqual([name.split(" ")[0] for name in names], ["User", "System", "Developer"])
        self.session.run("xdotool", "key", "space")
        self.wait_for("the tick", lambda: self.window.find(Role.CHECK_BOX, "开发缓存").is_(State.CHECKED))
        self.session.run("xdotool", "key", "Right")
        self.window.tree.find(Role.LIST_ITEM, "_cacache")
        self.assertTrue(self.press("Down")[1].startswith("_cacache"))
        self.assertTrue(self.press("Up")[1].startswith("Developer"))


if __name__ == "__main__":
    unittest.main()
