"""What must hold after a clean, whatever happened during it. The checker knows the disk before and after, what was ticked,
what an attacker did, and the report; it answers one line for each promise that was broken."""

import collections
import json
import os
from dataclasses import dataclass, field

import trashes
from disk import Tree, at_or_below, below
from home import TRASH
from report_promises import ReportPromises
from trash_promises import TrashPromises

OWN_STATE = (b"vellmoor", b"Vellmoor", b"org.vellmoor")


@dataclass
class Target:
    path: bytes
    bytes: int
    row: int
    is_body: bool = False  # of an application


@dataclass
class Deed:
    """What somebody else did during the clean."""
    moved: tuple = None  # (from, to)
    made: dict = field(default_factory=dict)  # what was put somewhere, by path
    gone: bytes = None  # what was deleted
    swaps: bool = False  # what was moved and what was made change places again and again

    def places(self, path):
        if self.moved and at_or_below(path, self.moved[0]):
            return {path, self.moved[1] + path[len(self.moved[0]):]}
        return {path}

    def places_of_made(self, path):
        if self.swaps and at_or_below(path, self.moved[1]):
            return {path, self.moved[0] + path[len(self.moved[1]):]}
        return {path}

    def is_gone(self, path):
        return self.gone is not None and at_or_below(path, self.gone)


@dataclass
class Case:
    area: bytes
    before: Tree
    after: Tree
    ticked: list
    trashes: list  # of trashes.Place
    real: object  # the path without the user's own links
    precious: tuple = (b"precious",)
    deed: Deed = field(default_factory=Deed)
    disturbed: bool = False  # a fault happened, or somebody else acted
    ended: bool = False  # by a signal that was sent to it
    report: dict = None
    debris: set = field(default_factory=set)  # what a killed clean left to the next one
    started: float = 0
    hindered: set = field(default_factory=set)
    blind: bool = False  # a call lied that something is gone: then the report may, too
    cannot_tidy: bool = False  # what it made it could not remove
    early: bool = False  # what happened may have changed what was ticked
    other_failures: int = 0  # lines about rows that are no files

    def absolute(self, path):
        return self.area + b"/" + path


class Checker(TrashPromises, ReportPromises):
    def __init__(self, case):
        self.case = case
        self.problems = []
        self.debris = set()
        self._root_of = {}  # where each target lies now
        self._state = {}  # "place", "trash", "expunged", "gone", "partial"
        self._explained = set()
        self._where = {}
        self._names_before = collections.Counter((node.device, node.inode) for node in case.before.nodes.values())
        self._made_places = {place for path in case.deed.made for place in case.deed.places_of_made(path)}
        for path, node in case.after.nodes.items():
            self._where.setdefault((node.device, node.inode, node.kind), []).append(path)

    def problem(self, text, path=None):
        self.problems.append(text if path is None else f"{text}: {os.fsdecode(path)!r}")

    def run(self):
        self._locate_targets()
        self._follow_every_node()
        self._notes()
        self._sizes()
        self._left_behind()
        self._bodies_first()
        if self.case.report is not None:
            self._report()
        return self.problems

    # Where the targets are

    def _homes(self, path):
        return self.case.deed.places(path)

    def _trash_of(self, path):
        """The Trash whose contents the path lies in."""
        for trash in self.case.trashes:
            if below(path, trash.files):
                return trash
        return None

    def _locate_targets(self):
        self._targets = {target.path: target for target in self.case.ticked}
        for path in self._targets:
            if path not in self.case.before.nodes:
                self.problem("a ticked target was never there", path)
            else:
                self._root_of[path], self._state[path] = self._state_of(path)

    def _found(self, path):
        """Where the very thing is now that lay at the path. A number is given anew on some disks, hence the comparison."""
        node = self.case.before.nodes[path]
        for place in self._where.get((node.device, node.inode, node.kind), []):
            now = self.case.after.nodes[place]
            if place != path and place in self.case.before.nodes and self.case.before.nodes[place].same_thing(node):
                continue  # another hard link
            if place == path or now.data == node.data and (now.modified == node.modified or self._has_the_same(path, place)):
                yield place

    def _has_links(self, path):
        node = self.case.before.nodes[path]
        return self._names_before[node.device, node.inode] > 1

    def _has_the_same(self, path, place):
        """Whether two folders have anything in common: their time changes with what somebody puts there."""
        deed = self.case.deed
        if deed.moved and below(deed.moved[0], path) or deed.gone and below(deed.gone, path):
            return True  # what they had in common is elsewhere now
        names = self.case.before.children(path)
        return any(place + b"/" + name in self.case.after.nodes and self.case.before.nodes[path + b"/" + name].same_thing(
            self.case.after.nodes[place + b"/" + name]) for name in names)

    def _state_of(self, path):
        found = list(self._found(path))
        homes = self._homes(path)
        for place in found:
            if place in homes:
                return place, "place"
        in_trash = [place for place in found if self._trash_folder_of(place) is not None]
        for place in in_trash:  # of hard links the one whose note says so
            if self._named_by_note(place) in {self.case.absolute(home) for home in homes}:
                return place, "trash"
        if in_trash and not self._has_links(path):
            return in_trash[0], "trash"
        for outer in self._outer_targets(path):
            root = self._root_of[outer] if outer in self._root_of else self._state_of(outer)[0]
            if root is not None and root + path[len(outer):] in found:
                return root + path[len(outer):], "inside"
        for place in found:
            if self._is_near_trash(place) and not any(below(place, trash.files) for trash in self.case.trashes):
                return place, "expunged"  # out of the user's sight, on its way out or back
        return None, "gone"

    def _trash_folder_of(self, place):
        """The Trash in whose `files` something lies directly."""
        parent = place.rpartition(b"/")[0]
        return next((trash for trash in self.case.trashes if parent in self._homes(trash.files)), None)

    def _in_trash_with(self, place):
        """What lies directly in a Trash and is `place` or holds it."""
        while place and self._trash_folder_of(place) is None:
            place = place.rpartition(b"/")[0]
        return place or None

    def _note_at(self, place):
        """The path of the note of what lies in a Trash, wherever its folder is now; None without one."""
        trash = self._trash_folder_of(place)
        notes = [info + b"/" + place.rpartition(b"/")[2] + b".trashinfo" for info in self._homes(trash.info)]
        return next((note for note in notes if note in self.case.after.nodes
                     and self.case.after.nodes[note].kind == "file"), None)

    def _named_by_note(self, place):
        note = self._note_at(place)
        read = trashes.note(self.case.after.nodes[note].data) if note else None
        base = self._trash_folder_of(place).base
        return None if read is None else base + b"/" + read.path if base else read.path

    def _outer_targets(self, path):
        """The other targets that hold it, the nearest first."""
        outer = []
        parent = path.rpartition(b"/")[0]
        while parent:
            if parent in self._targets and parent in self.case.before.nodes:
                outer.append(parent)
            parent = parent.rpartition(b"/")[0]
        return outer

    # Every node that was there

    def _follow_every_node(self):
        for path, node in self.case.before.nodes.items():
            if any(at_or_below(path, precious) for precious in self.case.precious):
                self._precious_node(path, node)
                continue
            holders = self._outer_targets(path)
            if path in self._targets:
                holders.insert(0, path)
            if holders:
                self._ticked_node(path, node, holders)
            elif self._is_book_keeping(path):
                self._explained.update(place for place in self._homes(path) if place in self.case.after.nodes
                                       and self.case.after.nodes[place].same_thing(node))
            else:
                self._kept_node(path, node)
        for path in self.case.after.nodes:
            if path not in self.case.before.nodes and any(at_or_below(path, p) for p in self.case.precious):
                self.problem("something new in the precious folder", path)

    def _precious_node(self, path, node):
        now = self.case.after.nodes.get(path)
        if now is None:
            self.problem("gone from the precious folder", path)
        elif now != node:
            self.problem("changed in the precious folder", path)

    def _ticked_node(self, path, node, holders):
        places = set(self._homes(path)) if self.case.deed.moved else set()
        for holder in holders:
            root = self._root_of.get(holder)
            if root is not None:
                places.add(root + path[len(holder):])
        here = [place for place in places if place in self.case.after.nodes
                and self.case.after.nodes[place].same_thing(node)]
        self._explained.update(here)
        in_trash = any(self._trash_of(holder) for holder in holders)
        if here:
            now = self.case.after.nodes[here[0]]
            if not now.same_content(node) or (now.mode != node.mode and not in_trash):
                self.problem("a ticked file is not what it was", path)
            if len(here) > 1 and not self.case.deed.moved:
                self.problem("a ticked file lies in two places", path)
            return
        if in_trash or self.case.deed.is_gone(path):
            if self._state[holders[0]] != "gone" and not self._may_be_partial(holders[0]):
                self.problem("a part of an item in the Trash is gone", path)
            return
        self.problem("lost", path)

    def _may_be_partial(self, target):
        return self.case.disturbed or self.case.ended or target in self.case.hindered

    def _is_book_keeping(self, path):
        """Notes of ticked items, lists of sizes and our own state have rules of their own."""
        for trash in self.case.trashes:
            if path == trash.top + b"/directorysizes":
                return True
            if at_or_below(path, trash.top + b"/expunged") and path not in self.case.debris:
                return True
            if below(path, trash.info):
                name = path[len(trash.info) + 1:]
                if name.endswith(b".trashinfo") and trash.files + b"/" + name[:-10] in self._targets:
                    return True
        if path in self.case.debris:
            self._put_back(path)
            return True
        return self._is_own_state(path)

    def _put_back(self, path):
        """What a killed clean was about to remove may lie in the Trash again, where the user sees it."""
        node = self.case.before.nodes[path]
        for place in self._where.get((node.device, node.inode, node.kind), []):
            if any(below(place, trash.files) for trash in self.case.trashes):
                self._explained.add(place)

    @staticmethod
    def _is_own_state(path):
        return any(part in OWN_STATE for part in path.split(b"/"))

    def _kept_node(self, path, node):
        if self.case.deed.is_gone(path):
            return
        for place in self._homes(path):
            now = self.case.after.nodes.get(place)
            if now is None or not now.same_thing(node):
                continue
            self._explained.add(place)
            if not now.same_content(node):
                self.problem("an unticked file was changed", path)
            elif now.mode != node.mode and not (
                    (self.case.ended or self.case.cannot_tidy) and self._is_trash_folder(path)):
                self.problem(f"the mode of an unticked file was changed to {now.mode:o}", path)
            elif now.modified != node.modified and node.kind != "folder":
                self.problem("an unticked file was touched", path)
            return
        self.problem("an unticked file is not where it was", path)

    def _is_trash_folder(self, path):
        return any(path in (trash.top, trash.files, trash.info) for trash in self.case.trashes)

    # What is new

    def _left_behind(self):
        for path, stranger in self.case.deed.made.items():
            self._stranger(path, stranger)
        for path, node in self.case.after.nodes.items():
            old = self.case.before.nodes.get(path)
            if self.case.ended and self._is_private(path):
                self.debris.add(path)
                continue
            if old is not None and (old.same_thing(node) or path in self._explained):
                continue
            if path in self._explained or any(at_or_below(path, p) for p in self.case.precious):
                continue
            if self._is_expected(path, node):
                continue
            if (self.case.ended or self.case.cannot_tidy) and (self._is_near_trash(path) or self._is_own_state(path)):
                self.debris.add(path)
            else:
                self.problem("left behind", path)
        for path in self.case.debris & self.case.after.nodes.keys() if self.case.ticked else ():
            if path not in self._explained:
                self.problem("what a killed clean left is still there after the next", path)

    def _is_private(self, path):
        """Where things are on their way out, or back."""
        return any(below(path, trash.top + b"/expunged") or path.startswith(trash.top + b"/.") for trash in self.case.trashes)

    def _is_near_trash(self, path):
        return any(below(path, trash.top) or path in self._homes(trash.files) for trash in self.case.trashes)

    def _is_expected(self, path, node):
        if path in self._made_places:
            return True
        if self._is_own_state(path):
            return not self._looks_temporary(path)
        if node.kind != "folder":
            return False
        if path in (self.case.real(TRASH + part) for part in (b"", b"/files", b"/info")):
            return True  # it is made wherever it is missing, also where it was unusable when the campaign looked
        for trash in self.case.trashes:
            parts = (trash.top, trash.files, trash.info, trash.top + b"/expunged")
            if any(path in self._homes(part) or below(part, path) for part in parts):
                return True
        return False

    @staticmethod
    def _looks_temporary(path):
        name = path.rpartition(b"/")[2]
        return name.endswith((b".tmp", b".new", b"~")) or name.startswith(b".")

    def _stranger(self, path, stranger):
        """What somebody put there during the clean was not shown, and is kept."""
        for place in self.case.deed.places_of_made(path):
            now = self.case.after.nodes.get(place)
            if now is not None and now.same_thing(stranger) and now.same_content(stranger):
                return
        for place in self._where.get((stranger.device, stranger.inode, stranger.kind), []):
            if self._trash_folder_of(place) is not None and self._note_at(place) is not None:
                self._explained.update((place, self._note_at(place)))
                return  # of the same kind as what was shown, or it could not go back: restorable
            whole = self._in_trash_with(place)
            if whole is not None and self._note_at(whole) is not None:
                self._explained.add(place)
                return  # inside what took a cache's place before its turn: restorable
            if self.case.ended and self._is_near_trash(place):
                return
            if any(at_or_below(place, root) for root in self._root_of.values() if root):
                self._explained.add(place)
                return  # it lies inside a target, which moved as a whole
            self.problem(f"somebody else's file was moved to {os.fsdecode(place)!r}", path)
            return
        if not any(below(place, target) and self._trash_of(target) for target in self._targets
                   for place in self.case.deed.places_of_made(path)):
            self.problem("somebody else's file is lost", path)

    def _bodies_first(self):
        rows = {}
        for target in self.case.ticked:
            rows.setdefault(target.row, []).append(target)
        for row in rows.values():
            bodies = [target for target in row if target.is_body]
            if not bodies or self.case.deed.moved or self.case.deed.gone:
                continue
            if any(self._state.get(target.path) == "place" for target in bodies):
                for target in row:
                    if self._state.get(target.path) == "trash":
                        self.problem("a leftover went, its application stayed", target.path)


def read_report(text):
    """The report that the probe printed; None when it is not whole."""
    try:
        return json.loads(text)
    except ValueError:
        return None
