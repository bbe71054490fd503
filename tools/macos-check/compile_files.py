#!/usr/bin/env python3
"""Compiles files as the configured build would, two at a time, and shows what the compiler says.
usage: compile_files.py BUILD-FOLDER FILE..."""
import concurrent.futures
import json
import os
import re
import subprocess
import sys


def main():
    if len(sys.argv) < 3:
        raise SystemExit(__doc__)
    build, files = sys.argv[1], [os.path.realpath(file) for file in sys.argv[2:]]
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as database:
        entries = {os.path.realpath(entry["file"]): entry for entry in json.load(database)}
    strangers = [file for file in files if file not in entries]
    if strangers:
        raise SystemExit("\n".join(f"{file}: a Mac does not compile this" for file in strangers))

    def compile_one(file):
        # What is compiled here is not what the build keeps, so it is not written over.
        command = entries[file]["command"].replace(".o -c ", ".o.alone -c ").replace(".o.text ", ".o.alone.text ")
        # CMake 3.31 names the precompiled headers, too, which only the whole build makes.
        command = re.sub(r"-Xclang -include-pch -Xclang \S+ ", "", command)
        return subprocess.run(command, shell=True, cwd=entries[file]["directory"], capture_output=True, text=True)

    failed = False
    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
        for result in pool.map(compile_one, files):
            sys.stdout.write(result.stdout + result.stderr)
            failed |= result.returncode != 0
    raise SystemExit(failed)


main()
