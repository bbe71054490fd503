"""Every job of the window as somebody does it who hears what others see: by the actions, states and values of the tree,
and by what is told without being asked for."""

import os
import shutil
import signal
import unittest

import processes
from accessibility import Listener, Role, State
from desktop_test import DesktopTest
from keys import Keys
from texts import beginning
from window import MODULES, Window


class JourneyTest(DesktopTest):
    over_test_system = True
    limit = 540  # hundreds of questions over three processes: a machine with other work takes its time for each

    def test_every_job_is_done_by_ear_in_english(self):
        self.go_through("en")

    def test_every_job_is_done_by_ear_in_chinese(self):
        self.go_through("zh")

    def go_through(self, language):
        self.home.fill()
        self.home.text(".config/Vellmoor/Vellmoor.conf", f"[General]\nvmLanguage={language}\n")
        self.listener = Listener()
        self.keys = Keys(self.session, self.listener)
        self.sleeper = self.start_sleeper()
        self.program.start()
        # Only what is in sight is read: a large window shows all of a page.
        self.session.run("xdotool", "windowsize", "--sync", str(self.program.window), "1380", "960")
        self.window = Window(self.program.pid, language)
        self.tree = self.window.tree
        self.scan_everything()
        self.choose_large_files()
        self.window.show("systemJunk")
        self.look_at_every_path()
        self.clean_and_put_back()
        self.switch_a_login_item()
        self.quit_an_application()
        self.take_back_from_the_history()
        self.keep_and_offer_again()

    # Ears

    def hear(self, key, role=Role.NOTIFICATION):
        """That it is told; each text is heard once."""
        start = beginning(key, self.window.language)
        found = self.wait_for(f"{start!r} to be told", lambda: self.listener.heard(start, role))
        self.listener.told.remove(found)

    def row(self, start):
        return self.tree.find(Role.LIST_ITEM, start)

    def wait_for_state(self, look, state, expected=True):
        self.wait_for(f"{state.value_nick} {expected}", lambda: look().is_(state) == expected)

    # Jobs

    def start_sleeper(self):
        """An application that runs: nothing else is seen of this machine's processes."""
        program = self.home.path(".local/opt/sleeper/sleeper")
        program.parent.mkdir(parents=True)
        shutil.copy("/usr/bin/sleep", program)
        self.home.text(".local/share/applications/org.example.Sleeper.desktop",
                       f"[Desktop Entry]\nType=Application\nName=Sleeper\nExec={program} 3600\n")
        sleeper = processes.start([str(program), "3600"], self.session.environment)
        os.symlink(f"/proc/{sleeper.pid}", self.session.folder / f"system/proc/{sleeper.pid}")
        return sleeper

    def scan_everything(self):
        clean = self.window.button("清理")
        self.assertFalse(clean.is_(State.ENABLED))
        self.window.press("开始扫描")
        self.window.wait_for_result()
        start = beginning("正在扫描 %@", self.window.language) + self.window.text(MODULES["smartScan"])
        self.wait_for("its start", lambda: self.listener.told and self.listener.told[0] == (Role.NOTIFICATION, start))
        self.wait_for(f"a quarter, not {self.listener.told}", lambda: any(
            name.startswith(start) and name.endswith("%") for _, name in self.listener.told))
        self.hear("扫描完成，发现 %@ 可清理空间")
        self.wait_for_state(lambda: self.window.button("清理"), State.ENABLED)
        value, least, most = self.window.gauge_value()
        self.assertTrue(least == 0 <= value <= most == 1)

    def look_at_every_path(self):
        self.window.press("预览项目")
        self.window.dialog("清理前详情")
        self.wait_for_state(lambda: self.tree.find(Role.CHECK_BOX, "player"), State.CHECKED)
        self.tree.find(Role.CHECK_BOX, "player").do("Toggle")
        self.wait_for_state(lambda: self.tree.find(Role.CHECK_BOX, "player"), State.CHECKED, False)
        self.window.press_in_dialog("完成")
        self.wait_for("the sheet to close", lambda: not self.window.has_dialog())

    def choose_large_files(self):
        self.window.show("largeFiles")
        kind = self.window.text("种类") + " "
        box = self.tree.find(Role.COMBO_BOX, kind + self.window.text("全部"))
        self.assertTrue(box.is_(State.EXPANDABLE))
        box.do("Press")
        self.wait_for_state(lambda: self.tree.find(Role.COMBO_BOX, kind), State.EXPANDED)
        self.window.find(Role.LIST_ITEM, "视频").do("Press")
        self.tree.find(Role.COMBO_BOX, kind + self.window.text("视频"))
        self.row("Holiday.mkv")
        self.window.press("全选当前筛选")
        self.wait_for_state(lambda: self.tree.find(Role.CHECK_BOX, "Holiday.mkv"), State.CHECKED)
        self.window.press("取消当前筛选")
        self.wait_for_state(lambda: self.tree.find(Role.CHECK_BOX, "Holiday.mkv"), State.CHECKED, False)

    def clean_and_put_back(self):
        name = self.window.text("用户缓存")
        row = self.row(name)
        self.assertTrue(row.is_(State.EXPANDABLE) and not row.is_(State.EXPANDED))
        row.do("Press")
        self.wait_for_state(lambda: self.row(name), State.EXPANDED)
        self.clean()
        self.hear("已处理 %d 项，预计释放 %@。")
        self.assertFalse(self.home.path(".cache/thumbnails").exists())
        self.assertTrue(self.home.path(".cache/player/data").exists(), "it was unticked in the sheet")
        self.window.press_in_dialog("放回")
        self.wait_for("it to be back", self.home.path(".cache/thumbnails/large/a.png").exists)
        self.hear("已放回 %d 项（%@）。")
        self.wait_for("the sheet to close", lambda: not self.window.has_dialog())

    def clean(self):
        self.window.ask_clean()
        self.wait_for("the keyboard on the answer that changes nothing",
                      lambda: self.keys.is_at(Role.PUSH_BUTTON, self.window.text("取消")))
        self.window.press_in_dialog("清理")
        self.hear("正在清理选中项目...")
        self.window.dialog("清理完成")

    def switch_a_login_item(self):
        self.window.show("performance")
        self.window.scan()
        self.tree.find(Role.PUSH_BUTTON, self.window.text("禁用") + " Redshift").do("Press")
        self.tree.find(Role.DIALOG, beginning("禁用 %@？", self.window.language))
        self.window.press_in_dialog("禁用")
        self.hear("已禁用 %@ 的开机自启动。")
        self.assertFalse(self.home.path(".config/autostart/redshift.desktop").exists())
        self.row("Redshift " + self.window.text("已禁用"))
        # One that fails is an alert, until it is dismissed.
        self.home.path(".config/autostart.disabled/updater.desktop").unlink()
        self.tree.find(Role.PUSH_BUTTON, self.window.text("恢复") + " Old Updater").do("Press")
        self.tree.find(Role.DIALOG, beginning("恢复 %@？", self.window.language))
        self.window.press_in_dialog("恢复")
        self.hear("未找到已禁用配置：%@。", Role.ALERT)
        self.hear("未找到已禁用配置：%@。")
        (alert,) = self.wait_for("the alert", lambda: self.tree.find_all(Role.ALERT))
        next(node for node in alert.below() if node.role == Role.PUSH_BUTTON).do("Press")
        self.wait_for("it to be gone", lambda: not self.tree.find_all(Role.ALERT))

    def quit_an_application(self):
        self.window.show("memoryOptimization")
        self.window.scan()
        value, least, most = self.window.gauge_value()
        self.assertTrue(least == 0 < value <= most == 1)
        self.row("Sleeper ")
        self.tree.find(Role.PUSH_BUTTON, self.window.text("退出应用") + " Sleeper").do("Press")
        self.wait_for("the question", self.window.has_dialog)
        self.window.press_in_dialog("退出应用")
        self.window.find(Role.PUSH_BUTTON, "结束")  # it has no window that could be asked
        self.assertIsNone(self.sleeper.poll())
        self.window.press_in_dialog("结束")
        self.assertEqual(self.sleeper.wait(processes.PATIENCE), -signal.SIGTERM)
        self.hear("已请求退出 %@，稍后刷新内存状态。")

    def take_back_from_the_history(self):
        self.window.show("systemJunk")
        self.window.scan()
        caches = self.window.text("用户缓存")
        self.tree.find(Role.CHECK_BOX, caches).do("Press")  # it came back unticked
        self.wait_for_state(lambda: self.tree.find(Role.CHECK_BOX, caches), State.CHECKED)
        self.clean()
        self.window.press_in_dialog("完成")
        self.window.show("trash")
        title = self.window.text(MODULES["systemJunk"])
        clean = self.wait_for("the clean in the history", lambda: next(
            (row for row in self.history() if row.name.startswith(title)), None))
        self.assertIn(self.window.text("在废纸篓中 %@").split("%@")[0], clean.name)
        clean.do("Press")
        self.wait_for_state(lambda: self.row(clean.name), State.EXPANDED)
        self.wait_for_state(lambda: self.history_box("thumbnails"), State.CHECKED)
        self.history_box("thumbnails").do("Press")
        self.wait_for_state(lambda: self.history_box("thumbnails"), State.CHECKED, False)
        self.tree.find(Role.PUSH_BUTTON, self.window.text("放回") + " session.log").do("Press")
        self.wait_for("it to be back", self.home.path(".local/state/app/session.log").exists)
        self.hear("已放回 %d 项（%@）。")
        self.assertFalse(self.home.path(".cache/thumbnails").exists(), "its tick was taken away")
        self.tree.find(Role.PUSH_BUTTON, self.window.text("放回") + " thumbnails").do("Press")
        self.wait_for("it to be back", self.home.path(".cache/thumbnails").exists)
        self.tree.find(Role.PUSH_BUTTON, self.window.text("放回") + " Redshift").do("Press")
        self.wait_for("the login item", self.home.path(".config/autostart/redshift.desktop").exists)

    def history(self):
        title = self.window.text("历史记录")
        return self.wait_for("the history", lambda: [
            node for shown in self.tree.find_all(Role.LIST, title) for node in shown.below() if node.role == Role.LIST_ITEM])

    def history_box(self, name):
        return self.wait_for(name, lambda: [node for row in self.history() for node in row.below()
                                            if node.role == Role.CHECK_BOX and node.name == name])[0]

    def keep_and_offer_again(self):
        self.window.show("systemJunk")
        self.window.scan()
        name = self.window.text("用户缓存")
        if not self.row(name).is_(State.EXPANDED):
            self.row(name).do("Press")
        self.row("thumbnails").take_focus()
        self.keys.wait_at(Role.LIST_ITEM, "thumbnails")
        self.keys.choose(self.window.text("保留"))
        self.hear("已保留，不再提供。")
        self.wait_for("it to leave the list", lambda: not [
            node for node in self.tree.find_all(Role.LIST_ITEM) if node.name.startswith("thumbnails")])
        self.window.press("保留的项目")
        self.window.dialog("保留的项目")
        self.row("thumbnails")
        self.tree.find(Role.PUSH_BUTTON, self.window.text("重新提供") + " thumbnails").do("Press")
        self.hear("下次扫描会重新提供 %@。")
        self.wait_for("the list to be empty", lambda: not [
            node for node in self.tree.find_all(Role.LIST_ITEM) if node.name.startswith("thumbnails")])
        self.window.press_in_dialog("完成")
        self.wait_for("the sheet to close", lambda: not self.window.has_dialog())
        self.keys.press("F5")
        self.row("thumbnails")


if __name__ == "__main__":
    unittest.main()
