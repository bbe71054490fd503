#!/usr/bin/env python3
"""Counts the lines that only a Mac builds and says how many of them never run on Linux: those of files that no test
program here is built of. Lines of code only, without blank ones and comments. More than a fifth is a fault.
usage: lines_run.py ROOT MAC-DATABASE LINUX-DATABASE"""
import json
import pathlib
import re
import sys

MOST = 0.20


def files_in(database, root):
    for entry in json.loads(pathlib.Path(database).read_text(encoding="utf-8")):
        file = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if file.is_relative_to(root / "src"):
            yield file


def lines_of(file):
    text = re.sub(r'//[^\n]*|/\*.*?\*/', "", file.read_text(encoding="utf-8"), flags=re.S)
    return sum(1 for line in text.split("\n") if line.strip())


def main():
    if len(sys.argv) != 4:
        raise SystemExit(__doc__)
    root = pathlib.Path(sys.argv[1]).resolve()
    native = {file for file in files_in(sys.argv[2], root) if "macos" in file.parts}
    # Objective-C++ stands in a header, too; it is used by the files that run, or by none.
    run = native & set(files_in(sys.argv[3], root))
    header = root / "src/platform/macos/values/FoundationValues.h"
    if any(header.name in file.read_text(encoding="utf-8") for file in run):
        run.add(header)
    native.add(header)
    total, never = sum(map(lines_of, native)), sum(map(lines_of, native - run))
    for file in sorted(native - run):
        print(f"  never run here: {file.relative_to(root)}, {lines_of(file)} lines")
    share = never / total if total else 1
    print(f"{never} of {total} lines that only a Mac builds never run here ({share:.0%}); at most {MOST:.0%} may")
    raise SystemExit(share > MOST)


main()
