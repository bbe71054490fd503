#!/usr/bin/env python3
"""Counts the single tests of ctest's last run, since one test of ctest's may be a whole class of them: names those that
were passed over, with the reason, and closes with "N passed, N failed, N skipped". Fails when one failed or none ran.
usage: count-tests.py BUILD"""
import pathlib
import re
import sys

ENTRY = re.compile(r"^\d+/\d+ Testing: (?P<name>.*?)\n(?P<text>.*?)^Test (?P<end>Pass|Fail)", re.M | re.S)
RAN = re.compile(r"^\[==========\] (\d+) tests? from \d+ test (?:suites?|cases?) ran", re.M)
FAILED = re.compile(r"^\[  FAILED  \] (\d+) tests?, listed below", re.M)
UNITTEST = re.compile(r"^Ran (\d+) tests? in ", re.M)


def counts(entry):
    """(passed, failed, skipped) of one of ctest's tests."""
    text, passed = entry["text"], entry["end"] == "Pass"
    ran = [int(number) for number in RAN.findall(text)] or [int(number) for number in UNITTEST.findall(text)]
    if not ran:
        return (1, 0, 0) if passed else (0, 1, 0)
    failed = sum(int(number) for number in FAILED.findall(text))
    skipped = len(re.findall(r"^\[  SKIPPED \] \S+\.\S+ \(", text, re.M))
    if not passed:
        failed = max(failed, 1)  # one that ended before it could count, too
    return max(sum(ran) - failed - skipped, 0), failed, skipped


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    log = pathlib.Path(sys.argv[1]) / "Testing/Temporary/LastTest.log"
    entries = list(ENTRY.finditer(log.read_text(encoding="utf-8", errors="replace")))
    total = [sum(numbers) for numbers in zip(*map(counts, entries))] or [0, 0, 0]
    for entry in entries:
        for test in re.finditer(r"^\[ RUN      \] (\S+)\n((?:(?!\[ RUN).*\n)*?)\[  SKIPPED \] \1 \(", entry["text"], re.M):
            reason = " ".join(line for line in test[2].splitlines() if not re.match(r".*: Skipped$", line)).strip()
            print(f"passed over: {test[1]}: {reason or 'without a reason'}")
    print(f"{total[0]} passed, {total[1]} failed, {total[2]} skipped")
    raise SystemExit(0 if total[1] == 0 and total[0] > 0 else 1)


if __name__ == "__main__":
    main()
