"""What a screen reader finds, and what it can do."""

import unittest

import accessibility
import home
import texts
from accessibility import Listener, Role, State
from desktop_test import DesktopTest
from window import MODULES, Window

CONTROLS = {Role.PUSH_BUTTON, Role.CHECK_BOX, Role.RADIO_BUTTON, Role.PAGE_TAB, Role.COMBO_BOX, Role.LIST_ITEM,
            Role.PROGRESS_BAR, Role.LIST, Role.DIALOG}
PRESSED = {Role.PUSH_BUTTON, Role.CHECK_BOX, Role.RADIO_BUTTON, Role.PAGE_TAB, Role.COMBO_BOX}
READ = {Role.HEADING, Role.LABEL}
NEUTRAL = {word for name in home.NAMES for word in texts.words(name)} | {
    "Vellmoor", "English", "KB", "MB", "GB", "TB", "Firefox", "Cookie", "redshift", "opt", "old", "updater"}
# What each page must have besides the frame around it: roles and the keys of their names.
EXPECTED = {
    "smartScan": [(Role.PROGRESS_BAR, None), (Role.PUSH_BUTTON, "开始扫描"), (Role.LIST, "推荐清理"),
                  (Role.RADIO_BUTTON, "推荐"), (Role.CHECK_BOX, "用户缓存"), (Role.LIST_ITEM, "用户缓存"),
                  (Role.PUSH_BUTTON, "查看全部"), (Role.LABEL, "磁盘状态")],
    "systemJunk": [(Role.LIST, "推荐清理"), (Role.CHECK_BOX, "开发缓存"), (Role.RADIO_BUTTON, "全部")],
    "largeFiles": [(Role.LIST, "大文件"), (Role.COMBO_BOX, "种类"), (Role.COMBO_BOX, "修改时间"),
                   (Role.PUSH_BUTTON, "全选当前筛选"), (Role.PUSH_BUTTON, "取消当前筛选"),
                   (Role.PUSH_BUTTON, "在 Finder 中显示"), (Role.CHECK_BOX, None)],
    "privacy": [(Role.LIST, "推荐清理"), (Role.CHECK_BOX, None), (Role.LIST_ITEM, None)],
    "appUninstaller": [(Role.LIST, "应用"), (Role.CHECK_BOX, None), (Role.RADIO_BUTTON, "已选择")],
    "performance": [(Role.LIST, "启动项"), (Role.PUSH_BUTTON, "禁用"), (Role.PUSH_BUTTON, "恢复"),
                    (Role.PUSH_BUTTON, "刷新启动项"), (Role.PUSH_BUTTON, "系统登录项")],
    "memoryOptimization": [(Role.PROGRESS_BAR, None), (Role.PUSH_BUTTON, "刷新内存状态"),
                           (Role.PUSH_BUTTON, "活动监视器"), (Role.CHECK_BOX, None), (Role.LABEL, "可用")],
    "trash": [(Role.LIST, "推荐清理"), (Role.CHECK_BOX, "用户废纸篓")],
}


class AccessibilityTest(DesktopTest):
    over_test_system = True

    def open(self):
        self.home.fill()
        self.program.start()
        self.window = Window(self.program.pid)
        self.tree = self.window.tree

    def test_every_control_of_every_page_is_named_in_english(self):
        self.open()
        self.check_every_page()

    def test_every_control_of_every_page_is_named_in_chinese(self):
        self.open()
        self.window.switch_language()
        self.check_every_page()

    def check_every_page(self):
        # Only what is in sight is read: a large window shows all of a page.
        self.session.run("xdotool", "windowsize", "--sync", str(self.program.window), "1380", "960")
        self.window.show("smartScan")
        self.window.scan()
        for module in MODULES:
            self.window.show(module)
            nodes = self.tree.shown()
            with self.subTest(module=module):
                self.check_expected(module, nodes)
                for node in nodes:
                    self.check_node(node)
                self.check_choices(nodes)

    def check_expected(self, module, nodes):
        for role, key in EXPECTED[module]:
            name = self.window.text(key) if key else ""
            found = [node for node in nodes if node.role == role and node.name.startswith(name)]
            self.assertTrue(found, f"{role.value_nick} {name!r} is missing")

    def check_node(self, node):
        if node.role in CONTROLS | READ:
            self.assertEqual(node.name, node.name.strip())
            self.assertNotEqual(node.name, "", f"{node} has no name")
        if self.window.language == "en":
            self.assertFalse(texts.is_chinese(node.name) and node.name != "中文", node)
            self.assertFalse(texts.is_chinese(node.description), node)
        elif not texts.is_chinese(node.name):
            self.assertLessEqual(texts.words(node.name), NEUTRAL, node)
        if node.role in PRESSED:
            self.assertIn("Press", node.actions(), node)
        if node.role == Role.PROGRESS_BAR:
            self.assertRegex(node.name, r"\d|" + self.window.text("等待扫描"), "the share is in the name")
            value, least, most = node.value() or (0, 0, 1)
            self.assertTrue(least == 0 <= value <= most == 1, node)

    def check_choices(self, nodes):
        """One tab is selected and, where there are radio buttons, one of them is checked."""
        self.assertEqual(len([node for node in nodes if node.role == Role.PAGE_TAB and node.is_(State.SELECTED)]), 1)
        radios = [node for node in nodes if node.role == Role.RADIO_BUTTON]
        if radios:
            self.assertEqual(len([node for node in radios if node.is_(State.CHECKED)]), 1)

    # Once nothing had a name when the screen reader was there before the window.
    def test_a_screen_reader_that_is_there_first_finds_every_name(self):
        self.assertEqual(accessibility.Tree(0).applications(), [])
        self.open()
        self.window.scan()
        for node in self.tree.shown():
            self.check_node(node)

    def test_a_scan_is_started_by_an_action_and_its_result_read_back(self):
        self.open()
        self.window.show("systemJunk")
        self.assertEqual(self.tree.find_all(Role.LIST_ITEM), [])
        self.window.press("扫描此模块")
        caches = self.window.find(Role.LIST_ITEM, "用户缓存")
        self.assertIn("3.1 MB", caches.name)
        self.assertIn(self.window.text("安全"), caches.name)
        self.wait_for("the result", lambda: [label for label in self.tree.find_all(Role.LABEL) if label.name.startswith(
            texts.beginning("发现 %@ 可安全处理项目", "en"))])

    def test_a_tick_follows_its_action(self):
        self.open()
        self.window.show("systemJunk")
        self.window.scan()
        before = self.selected()
        tick = self.window.find(Role.CHECK_BOX, "开发缓存")
        self.assertFalse(tick.is_(State.CHECKED))
        tick.do("Toggle")
        self.wait_for("the tick", lambda: self.is_checked("开发缓存"))
        self.assertTrue(self.window.find(Role.LIST_ITEM, "开发缓存").is_(State.CHECKED))
        self.wait_for("the sum", lambda: self.selected() != before)
        self.window.find(Role.CHECK_BOX, "开发缓存").do("Press")
        self.wait_for("the tick to go", lambda: not self.is_checked("开发缓存"))
        self.wait_for("the old sum", lambda: self.selected() == before)

    def test_a_box_that_starts_ticked_is_told_when_it_is_not_any_more(self):
        self.open()
        self.window.show("systemJunk")
        self.window.scan()
        self.assertTrue(self.is_checked("用户缓存"))
        self.window.find(Role.CHECK_BOX, "用户缓存").do("Press")
        self.wait_for("the tick to go", lambda: not self.is_checked("用户缓存"))
        self.assertFalse(self.window.find(Role.LIST_ITEM, "用户缓存").is_(State.CHECKED))

    def test_a_category_says_whether_it_is_unfolded(self):
        self.open()
        self.window.show("systemJunk")
        self.window.scan()
        row = self.window.find(Role.LIST_ITEM, "用户缓存")
        self.assertTrue(row.is_(State.EXPANDABLE))
        self.assertFalse(row.is_(State.EXPANDED))
        row.do("Press")
        self.wait_for("the paths", lambda: self.window.find(Role.LIST_ITEM, "用户缓存").is_(State.EXPANDED))
        self.tree.find(Role.LIST_ITEM, "player")

    def test_the_rings_have_values(self):
        self.open()
        self.window.show("memoryOptimization")
        self.window.scan()
        value, least, most = self.window.gauge_value()
        self.assertTrue(least == 0 < value <= most == 1, value)

    def test_a_scan_is_announced(self):
        listener = Listener()
        self.open()
        self.window.show("systemJunk")
        self.window.press("扫描此模块")
        self.wait_for("the announcement", lambda: listener.heard(texts.beginning("扫描完成，发现 %@ 可清理空间", "en")))

    def is_checked(self, key):
        return self.window.find(Role.CHECK_BOX, key).is_(State.CHECKED)

    def selected(self):
        start = texts.beginning("当前选择 %@", self.window.language)
        return [label.name for label in self.tree.find_all(Role.LABEL) if label.name.startswith(start)][-1]

    def test_a_button_that_is_of_no_use_yet_takes_neither_keyboard_nor_action(self):
        self.open()
        self.window.show("systemJunk")
        for key in ("清理", "预览项目"):
            button = self.window.button(key)
            self.assertFalse(button.is_(State.FOCUSABLE) or button.is_(State.ENABLED), button)
            button.do("Press")
        self.assertFalse(self.window.has_dialog())
        self.window.scan()
        for key in ("清理", "预览项目"):
            self.wait_for("the button", lambda key=key: self.window.button(key).is_(State.FOCUSABLE))
            self.assertTrue(self.window.button(key).is_(State.ENABLED))

    def test_what_cannot_be_cleaned_cannot_be_ticked_by_an_action(self):
        self.open()
        self.window.show("privacy")
        self.window.scan()
        self.assertEqual(self.tree.find_all(Role.CHECK_BOX, self.name_of_history()), [])
        self.window.press("预览项目")
        self.window.dialog("清理前详情")
        path = self.tree.find(Role.CHECK_BOX, "places.sqlite")
        self.assertFalse(path.is_(State.FOCUSABLE))
        path.do("Toggle")
        self.tree.find(Role.CHECK_BOX, "cookies.sqlite").do("Toggle")
        self.wait_for("the other tick", lambda: self.tree.find(Role.CHECK_BOX, "cookies.sqlite").is_(State.CHECKED))
        self.assertFalse(self.tree.find(Role.CHECK_BOX, "places.sqlite").is_(State.CHECKED))

    def name_of_history(self):
        return self.tree.find(Role.LIST_ITEM, "Firefox").name.split(" 90 KB")[0]

    def test_the_sheet_of_every_path_opens_and_closes(self):
        self.open()
        self.window.show("systemJunk")
        self.window.scan()
        self.assertFalse(self.window.has_dialog())
        self.window.press("预览项目")
        sheet = self.window.dialog("清理前详情")
        inside = list(sheet.below())
        self.assertIn("player", [node.name for node in inside if node.role == Role.CHECK_BOX])
        self.assertIn(self.window.text("清理项目"), [node.name for node in inside if node.role == Role.LIST])
        for node in inside:
            self.check_node(node)
        self.window.press("完成")
        self.wait_for("the sheet to close", lambda: not self.window.has_dialog())
        self.window.press("预览项目")
        self.window.dialog("清理前详情")
        self.session.run("xdotool", "key", "Escape")
        self.wait_for("the sheet to close", lambda: not self.window.has_dialog())

    def test_the_confirmation_has_its_title_and_the_keyboard_is_on_cancel(self):
        self.open()
        self.window.show("systemJunk")
        self.window.scan()
        question = self.window.ask_clean()
        buttons = [node.name for node in question.below() if node.role == Role.PUSH_BUTTON]
        self.assertEqual(buttons, [self.window.text("取消"), self.window.text("清理")])
        self.wait_for("the focus on Cancel", lambda: self.tree.focused().name == self.window.text("取消"))
        self.window.press("取消")
        self.wait_for("the question to go", lambda: len(self.tree.find_all(Role.DIALOG)) == 1)
        self.window.press_in_dialog("取消")
        self.wait_for("the sheet to go", lambda: not self.window.has_dialog())
        self.assertTrue(self.home.path(".cache/player/data").exists())

    def test_a_choice_is_made_by_actions(self):
        self.open()
        self.window.show("largeFiles")
        self.window.scan()
        kind = self.window.text("种类") + " "
        self.tree.find(Role.COMBO_BOX, kind + self.window.text("全部")).do("Press")
        self.window.find(Role.LIST_ITEM, "视频").do("Press")
        self.tree.find(Role.COMBO_BOX, kind + self.window.text("视频"))
        self.window.show("systemJunk")
        self.window.find(Role.RADIO_BUTTON, "已选择").do("Press")
        self.wait_for("the choice", lambda: self.window.find(Role.RADIO_BUTTON, "已选择").is_(State.CHECKED))
        self.assertFalse(self.window.find(Role.RADIO_BUTTON, "全部").is_(State.CHECKED))

    def test_switching_the_language_renames_what_is_shown(self):
        self.open()
        self.window.show("systemJunk")
        self.window.scan()
        self.window.switch_language()
        self.window.find(Role.HEADING, "系统垃圾")
        self.window.find(Role.PUSH_BUTTON, "扫描此模块")
        for node in self.tree.shown():
            self.check_node(node)
        self.window.switch_language()
        self.window.find(Role.PUSH_BUTTON, "扫描此模块")


if __name__ == "__main__":
    unittest.main()
