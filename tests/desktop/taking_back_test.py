"""A clean of everything in a demonstration home that is killed in its middle, and taken back through the window by the
keyboard alone: the home is what it was, byte for byte, with modes and times.

VELLMOOR_SEEDS=FIRST-LAST tries those moments instead of the few that a language has here."""

import os
import pathlib
import random
import select
import signal
import socket
import sys
import time
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "faults"))

import desktop_test  # noqa: E402
import disk  # noqa: E402
import processes  # noqa: E402
import put_back  # noqa: E402
import system  # noqa: E402
from accessibility import Listener, Role  # noqa: E402
from keys import Keys  # noqa: E402
from texts import beginning  # noqa: E402
from window import Window  # noqa: E402

MAKE_HOME = pathlib.Path(__file__).resolve().parents[2] / "scripts/make-demo-home.sh"
FAULTS = os.environ.get("VELLMOOR_FAULTS_LIBRARY", "")
SEEDS = os.environ.get("VELLMOOR_SEEDS", "")
TRASH = b".local/share/Trash"
OWN = {b".local/state/vellmoor", b".config/Vellmoor"}  # its journal, its settings
MOVES = 40  # fewer than the clean of that home makes
SECONDS_A_SEED = 60


class Moment:
    """Where the clean ends: at one of its moves, before it or a little later, whatever it then does."""

    def __init__(self, seed):
        chosen = random.Random(seed)
        self._move = chosen.randint(2, MOVES)
        self._wait = chosen.choice((0.0, chosen.uniform(0, 0.004)))
        self._ours, self._theirs = socket.socketpair()

    def __str__(self):
        return f"killed at move {self._move}, {1000 * self._wait:.1f} ms later"

    def faults(self):
        return f"calls=noreplace from=start at={self._move} do=ask ask={self._theirs.fileno()}"

    def streams(self):
        return {"pass_fds": (self._theirs.fileno(),)}

    def strike(self, process):
        self._theirs.close()
        processes.wait_for("the clean to come to that move", lambda: select.select([self._ours], [], [], 0)[0])
        if self._wait:
            self._ours.send(b"g")
            time.sleep(self._wait)
        process.kill()
        process.wait(processes.PATIENCE)
        self._ours.close()


class TakingBackTest(desktop_test.DesktopTest):
    over_test_system = True

    def make_system(self):
        # Memory does not come back out of a Trash.
        return system.System(self.session.folder / "system", **{
            "MemAvailable": 2 * system.GIB, "Buffers": 0, "Cached": 0, "Active(file)": 0, "Inactive(file)": 0,
            "KReclaimable": 0, "SReclaimable": 0})

    def test_in_english_the_home_is_as_it_was(self):
        self.check(self.seeds(1, 3), "en")

    def test_in_chinese_the_home_is_as_it_was(self):
        self.check(self.seeds(4, 5), "zh")

    @staticmethod
    def seeds(first, last):
        if SEEDS:
            first, last = map(int, SEEDS.split("-"))
        return range(first, last + 1)

    def check(self, seeds, language):
        signal.alarm(desktop_test.LIMIT + len(seeds) * SECONDS_A_SEED)
        self.listener = Listener()
        self.keys = Keys(self.session, self.listener)
        first = self.program
        self.cut_off = 0
        for seed in seeds:
            with self.subTest(seed=seed, language=language):
                moment = Moment(seed)
                home = self.session.folder / f"home{seed}"
                self.journey(first, moment, home, language)
                self.session.remove(home)
                if SEEDS:
                    print(f"seed {seed} ({language}): {moment}, the home is as it was", flush=True)
        self.assertGreater(self.cut_off, 0, "no clean was cut off")

    def journey(self, first, moment, home, language):
        processes.run([str(MAKE_HOME), str(home)])
        settings = home / ".config/Vellmoor/Vellmoor.conf"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text(f"[General]\nvmLanguage={language}\n", encoding="utf-8")
        before = disk.snapshot(home)
        self.program = first.in_home(home)
        self.program.set_environment(LD_PRELOAD=FAULTS, VELLMOOR_FAULTS=moment.faults())
        self.clean_everything(moment, language)
        self.assertEqual(self.program.complaints(), [])
        between = disk.snapshot(home)
        self.program = first.in_home(home)
        self.put_everything_back(language)
        self.compare(before, between, disk.snapshot(home))
        self.assertEqual(self.program.complaints(), [])

    def start(self, language, **streams):
        self.listener.forget()
        self.program.start(is_readable=False, **streams)
        self.wait_for("the views", lambda: self.listener.focus)
        self.window = Window(self.program.pid, language)

    def clean_everything(self, moment, language):
        self.start(language, **moment.streams())
        clean = self.window.text("清理")
        self.keys.press("F5")
        self.wait_for_words("扫描完成，发现 %@ 可清理空间")
        self.keys.go("shift+Tab", Role.PUSH_BUTTON, clean)
        self.keys.press("Return")
        self.keys.wait_at(Role.LIST_ITEM)
        few = self.chosen_paths()
        self.keys.press("ctrl+a")
        self.wait_for("everything to be ticked", lambda: self.chosen_paths() not in (few, ""))
        self.keys.go("Tab", Role.PUSH_BUTTON, clean)
        self.keys.press("Return")
        self.keys.wait_at(Role.PUSH_BUTTON, self.window.text("取消"))
        self.keys.move("Tab")
        self.assertTrue(self.keys.is_at(Role.PUSH_BUTTON, clean))
        self.keys.press("Return")
        moment.strike(self.program.process)

    def chosen_paths(self):
        start = beginning("已选择 %d 个路径，预计释放 %@", self.window.language)
        return next((node.name for dialog in self.window.tree.find_all(Role.DIALOG) for node in dialog.below()
                     if node.role == Role.LABEL and node.name.startswith(start)), "")

    def put_everything_back(self, language):
        self.start(language)
        self.keys.press("ctrl+8")
        row, buttons = self.wait_for("the history", self.first_of_history)
        back = self.window.text("放回")
        was_cut_off = self.window.text("未完成") in row  # or the kill came when everything had moved
        self.cut_off += was_cut_off
        for offered in (self.window.text("完成清理"), back) if was_cut_off else (back,):
            self.assertTrue([name for name in buttons if name.startswith(offered)], f"{offered} is not among {buttons}")
        self.keys.go("shift+Tab", Role.LIST_ITEM, row)
        self.keys.choose(back)
        self.wait_for_words("已放回 %d 项（%@）。")
        self.assertFalse(self.window.has_dialog(), "something stayed in the Trash")
        self.wait_for("nothing more to put back", lambda: not [
            name for name in (self.first_of_history() or ("", []))[1] if name.startswith(back)])  # a whole clean leaves the list
        self.keys.press("ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)

    def first_of_history(self):
        """The name of its first row and what its buttons are called; None while there is none."""
        lists = self.window.tree.find_all(Role.LIST, self.window.text("历史记录"))
        rows = [node for shown in lists for node in shown.below() if node.role == Role.LIST_ITEM]
        if not rows:
            return None
        return rows[0].name, [node.name for node in rows[0].below() if node.role == Role.PUSH_BUTTON]

    def wait_for_words(self, key):
        start = beginning(key, self.window.language)
        self.wait_for(f"{start!r} to be told", lambda: self.listener.heard(start))

    def compare(self, before, between, after):
        taken = {path for path in before.nodes if path not in between.nodes
                 and (path.rpartition(b"/")[0] in between.nodes or b"/" not in path)}
        problems, moved = put_back.compare(before, between, after, taken, {TRASH}, OWN)
        self.assertEqual(problems, [])
        self.assertGreater(moved, 0, "nothing had moved")


if __name__ == "__main__":
    unittest.main()
