"""What must hold of notes and of directorysizes: a part of the checker (checker.py)."""

import time

import trashes
from disk import at_or_below

SECTOR = 512


class TrashPromises:
    def _notes(self):
        for path, state in self._state.items():
            trash = self._trash_of(path)
            if trash is not None:
                self._note_of_trashed(path, state, trash)
                if state == "trash" or state == "expunged" and not self.case.disturbed:
                    self.problem("an item of the Trash was left under another name", path)
            elif state == "trash":
                self._note_of_moved(path, self._root_of[path])
            elif state == "gone" and not self.case.deed.is_gone(path):
                self.problem("not in its place and in no Trash", path)
            elif state == "expunged":
                self.problem("a file that was no Trash's lies in expunged", path)

    def _note_of_trashed(self, path, state, trash):
        note = trash.info + b"/" + path[len(trash.files) + 1:] + b".trashinfo"
        was = self.case.before.nodes.get(note)
        if was is None or b"/" in path[len(trash.files) + 1:]:
            return
        now = [self.case.after.nodes[place] for place in self._homes(note) if place in self.case.after.nodes]
        if state == "gone":
            if now and not (self.case.disturbed or self.case.ended):
                self.problem("the note of an item that is gone remains", path)
        elif not any(node.same_thing(was) and node.same_content(was) for node in now):
            self.problem("the note of an item that is still in the Trash is gone", path)

    def _note_of_moved(self, path, root):
        self._explained.add(root)
        place = self._note_at(root)
        if place is None:
            self.problem("in a Trash without a note", path)
            return
        self._explained.add(place)
        node = self.case.after.nodes[place]
        note = trashes.note(node.data)
        if note is None:
            self.problem(f"a note that nobody can read ({node.data[:60]!r})", path)
            return
        if self._named_by_note(root) not in {self.case.absolute(home) for home in self._homes(path)}:
            self.problem(f"a note that names another place ({note.path!r})", path)
        when = time.mktime(time.strptime(note.date, "%Y-%m-%dT%H:%M:%S"))
        if not self.case.disturbed and abs(when - self.case.started) > 120:
            self.problem(f"a note with another time ({note.date})", path)
        if node.mode & 0o077:
            self.problem("a note that others may read", path)

    def _sizes(self):
        for trash in self.case.trashes:
            path = trash.top + b"/directorysizes"
            was = self.case.before.nodes.get(path)
            if was is not None and was.kind != "file":
                now = [self.case.after.nodes.get(place) for place in self._homes(path)]
                if not any(node is not None and node.same_thing(was) and node.data == was.data for node in now):
                    self.problem("a directorysizes that is no file was touched", path)
                self._explained.update(self._homes(path))
                continue
            if self.case.deed.moved and at_or_below(path, self.case.deed.moved[0]):
                self._explained.update(self._homes(path))
                continue
            self._judge_sizes(trash, path, was, self.case.after.nodes.get(path))

    def _judge_sizes(self, trash, path, was, now):
        if now is None:
            if was is not None:
                self.problem("directorysizes is gone", path)
            return
        self._explained.add(path)
        old = was.data.splitlines() if was is not None else []
        new = now.data.splitlines()
        removed = {target[len(trash.files) + 1:] for target, state in self._state.items()
                   if self._trash_of(target) is trash and state == "gone"}
        for line in old:
            if line not in new and trashes.size_name(line) not in removed:
                self.problem(f"directorysizes lost a line of another item ({line[:60]!r})", path)
        if not (self.case.disturbed or self.case.ended):
            for line in new:
                if trashes.size_name(line) in removed:
                    self.problem(f"directorysizes keeps the line of an item that is gone ({line[:60]!r})", path)
        for line in new:
            if line not in old:
                self._judge_new_size(trash, line)

    def _judge_new_size(self, trash, line):
        name = trashes.size_name(line)
        place = trash.files + b"/" + (name or b"")
        top = self.case.after.nodes.get(place)
        note = self.case.after.nodes.get(trash.info + b"/" + (name or b"") + b".trashinfo")
        if name is None or top is None or top.kind != "folder" or note is None:
            self.problem(f"directorysizes has a line for something that is no folder in the Trash ({line[:60]!r})")
            return
        if self.case.disturbed:
            return
        size, stamp, _ = line.split(b" ", 2)
        seen = {(node.device, node.inode): node.blocks for node in self.case.after.subtree(place).values()}
        if int(size) != sum(seen.values()) * SECTOR:
            self.problem(f"directorysizes says {size.decode()} bytes of {sum(seen.values()) * SECTOR}", place)
        if int(stamp) != note.modified // 1_000_000_000:
            self.problem("directorysizes has another time than the note", place)
