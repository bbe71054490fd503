"""Whether a report tells what the disk shows: a part of the checker (checker.py)."""

import collections
import os

from disk import lossy


class ReportPromises:
    def _report(self):
        report = self.case.report
        unique = {target.path: target for target in reversed(self.case.ticked)}.values()  # two rows may name one path
        removed = [target for target in unique if self._state.get(target.path) in ("trash", "gone")
                   and not (self._trash_of(target.path) and self._state[target.path] == "trash")]
        if self.case.early:
            return
        attempted = report.get("attemptedCount")
        if attempted != len(self.case.ticked):
            self.problem(f"the report says {attempted} attempted of {len(self.case.ticked)} ticked")
        if report.get("freedBytes") != sum(target.bytes for target in self.case.ticked):
            self.problem(f"the report's estimate is {report.get('freedBytes')}")
        if self.case.blind:
            return
        self._removed_count(report, removed)
        self._failures(report)
        self._outcomes(report)
        if report.get("processedBytes") is not None and not self._other_hand():
            processed = sum(target.bytes for target in removed)
            if report["processedBytes"] != processed:
                self.problem(f"the report says {report['processedBytes']} bytes processed of {processed}")

    def _other_hand(self):
        deed = self.case.deed
        return bool(deed.moved or deed.gone or deed.made)

    def _removed_count(self, report, removed):
        count = report.get("removedCount")
        least = len(removed)
        most = least
        if self._other_hand():  # something of the same kind may have gone in the target's place, or it went by itself
            most += 1
            least -= sum(1 for target in removed if self.case.deed.is_gone(target.path))
        inside = sum(1 for state in self._state.values() if state == "inside")
        if not least <= count <= most:
            self.problem(f"the report says {count} removed of {least} (and {inside} inside others)")

    def _failures(self, report):
        failed = report.get("failedCount", 0) - self.case.other_failures
        kept = report.get("keptCount") or 0
        lines = report.get("failures", [])
        if report.get("failedCount", 0) > 0 and not lines:
            self.problem("failures without a line")
        still = sum(1 for state in self._state.values() if state in ("place", "partial", "expunged"))
        still += sum(1 for path, state in self._state.items() if state == "trash" and self._trash_of(path))
        if self._other_hand():
            return
        given_up = any("disk is full" in line or "Read-only" in line or "No space" in line for line in lines)
        if failed + kept > still:
            self.problem(f"the report says {failed} failed and {kept} kept of {still}")
        if failed + kept < still and not given_up and not self.case.ended:
            self.problem(f"{still} targets stayed, the report tells of {failed + kept}")


    def _outcomes(self, report):
        """What is said of each target, beside what the disk says and beside the sums."""
        outcomes = report.get("outcomes")
        if not outcomes:
            return
        fates = collections.Counter(outcome["fate"] for outcome in outcomes)
        sums = (fates["trashed"] + fates["removed"], fates["failed"] + self.case.other_failures, fates["kept"], len(outcomes))
        said = tuple(report[key] for key in ("removedCount", "failedCount", "keptCount", "attemptedCount"))
        if sums != said:
            self.problem(f"the report's sums are {said}, those of its outcomes {sums}")
        if self._other_hand():
            return
        targets = {lossy(self.case.absolute(path)): path for path in self._targets}
        allowed = {"trashed": ("trash",), "removed": ("gone",), "vanished": ("gone", "trash", "inside"),
                   "kept": ("place",), "failed": ("place",), "untried": ("place", "inside")}
        for outcome in outcomes:
            path = targets.get(self._said(outcome["path"]))
            if path is None:
                self.problem(f"an outcome of something that was not ticked ({outcome['path']!r})")
            elif self._state.get(path) not in allowed[outcome["fate"]]:
                self.problem(f"said to be {outcome['fate']}, but its state is {self._state.get(path)}", path)
            elif outcome["fate"] == "trashed" and lossy(self.case.absolute(self._root_of[path])) != self._said(outcome["place"]):
                self.problem(f"said to lie in {outcome['place']!r}", path)


    def _said(self, url):
        """A path of the report, as the checker writes it."""
        area = self.case.absolute(b"")
        path = os.fsencode(url)
        return lossy(area + self.case.real(path[len(area):])) if path.startswith(area) else lossy(path)
