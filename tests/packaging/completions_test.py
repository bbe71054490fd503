#!/usr/bin/env python3
"""The completions of bash, zsh and fish know the options and words that the program's own --help names, and no others.
usage: completions_test.py PROGRAM..."""
import os
import pathlib
import re
import subprocess
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDER = ROOT / "packaging/completions"
PROGRAMS = [pathlib.Path(word) for word in sys.argv[1:]]
MODULES = re.findall(r'^    \{"(\w+)", "[^"]+", "[^"]+"\},$', (ROOT / "src/model/found/CleanerModule.cpp").read_text(encoding="utf-8"), re.M)


def help_of(program):
    return subprocess.run([program, "--help"], env={**os.environ, "LC_ALL": "C.UTF-8"}, capture_output=True, text=True, timeout=60,
                          check=True).stdout


def options_in(text):
    return set(re.findall(r"(?<![\w-])--[a-z][a-z-]*", text))


class Completions(unittest.TestCase):
    def each(self):
        """Of each file its name, what its program's help says, and its text without descriptions."""
        self.assertTrue(PROGRAMS, "no program is named")
        for program in PROGRAMS:
            name = program.name
            told = help_of(program)
            for file in (f"{name}.bash", f"_{name}", f"{name}.fish"):
                text = (FOLDER / file).read_text(encoding="utf-8")
                if file.endswith(".fish"):
                    text = re.sub(r" -d '[^']*'", "", text)
                    text = re.sub(r"(?<!set) -l ([a-z-]+)", r" --\1", text)
                yield file, told, re.sub(r"\[[^]]*\]", "", text)

    def test_they_know_the_options_of_the_help_and_no_others(self):
        for file, told, known in self.each():
            self.assertEqual(options_in(known), options_in(told), file)

    def test_they_know_every_module(self):
        self.assertEqual(len(MODULES), 8)
        for file, told, known in self.each():
            for module in MODULES:
                self.assertIn(module, told)
                self.assertRegex(known, rf"\b{module}\b", file)

    def test_they_know_the_commands(self):
        for file, told, known in self.each():
            for command in re.findall(r"^  ([a-z][a-z-]*)\b", told, re.M):
                self.assertRegex(known, rf"(?<![\w-]){command}(?![\w-])", file)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
