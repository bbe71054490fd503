"""The program's window, worked through the accessibility bus."""

import re

import accessibility
import processes
from accessibility import Role, State
from texts import beginning, text

# In the order of the sidebar.
MODULES = {"smartScan": "智能扫描", "systemJunk": "系统垃圾", "largeFiles": "大文件", "privacy": "隐私保护",
           "appUninstaller": "应用卸载", "performance": "启动项管理", "memoryOptimization": "内存优化",
           "trash": "废纸篓"}


class Window:
    def __init__(self, pid, language="en"):
        self.tree = accessibility.Tree(pid)
        self.language = language

    def text(self, key):
        return text(key, self.language)

    def find(self, role, key):
        return self.tree.find(role, self.text(key))

    def button(self, key):
        """The button whose name is exactly that."""
        wanted = self.text(key)
        return processes.wait_for(f"the button {wanted!r}",
                                  lambda: next(iter(self.tree.find_all(Role.PUSH_BUTTON, wanted)), None))

    def press(self, key):
        self.button(key).do("Press")

    def show(self, module):
        self.find(Role.PAGE_TAB, MODULES[module]).do("Press")
        processes.wait_for(f"the page of {module}", lambda: self.shows(module))

    def shows(self, module):
        title = self.text(MODULES[module])
        return (State.SELECTED in self.find(Role.PAGE_TAB, MODULES[module]).states
                and self.tree.find_all(Role.HEADING, title))

    def scan(self):
        """Scans the shown module to the end."""
        starts = (self.text("开始扫描"), self.text("扫描此模块"))
        processes.wait_for(f"one of {starts}", lambda: self._buttons(starts))[0].do("Press")
        self.wait_for_result()

    def wait_for_result(self):
        found = (beginning("发现 %@ 可安全处理项目", self.language), self.text("未发现可处理项目"))
        counted = (self.text("1 个启动项"), re.escape(self.text("%d 个启动项")).replace("%d", r"\d+"))
        processes.wait_for("the end of the scan", lambda: not self._buttons([self.text("取消扫描")]) and [
            node for node in self.tree.shown() if node.role in (Role.HEADING, Role.LABEL)
            and (node.name.startswith(found) or any(re.fullmatch(text, node.name) for text in counted))])

    def _buttons(self, names):
        return [node for node in self.tree.find_all(Role.PUSH_BUTTON) if node.name in names]

    def switch_language(self):
        self.tree.find(Role.PUSH_BUTTON, "中文" if self.language == "en" else "English").do("Press")
        self.language = "zh" if self.language == "en" else "en"
        self.find(Role.PAGE_TAB, MODULES["smartScan"])

    def press_in_dialog(self, key):
        """The button of that name in the open dialog; the page behind it may have one, too."""
        wanted = self.text(key)

        def buttons():
            dialogs = self.tree.find_all(Role.DIALOG)[-1:]  # a question may stand over a sheet
            return [node for dialog in dialogs for node in dialog.below()
                    if node.role == Role.PUSH_BUTTON and node.name == wanted]

        (button,) = processes.wait_for(f"the dialog's button {wanted!r}", buttons)
        button.do("Press")

    def gauge_value(self):
        """Of the page's ring: its value, the least and the most."""
        return processes.wait_for("a ring", lambda: self.tree.find_all(Role.PROGRESS_BAR))[0].value()

    def dialog(self, key):
        return self.find(Role.DIALOG, key)

    def ask_clean(self):
        """Goes over the sheet of paths to the question before a clean, which it answers."""
        self.press("清理")
        self.dialog("清理前详情")
        self.press_in_dialog("清理")
        return self.dialog("确认清理选中项目？")

    def has_dialog(self):
        return bool(self.tree.find_all(Role.DIALOG))
