#!/usr/bin/env python3
"""Shows that the macOS check and the tests over the stand-ins find what they are for: errors are planted one by one into
a copy of the checkout, and the check, or the test that is named, must fail and say why. Without them the copy must pass. An
edit whose place is not found exactly once fails.
usage: planted.py [--quick | --tests | --only WORDS]   (--quick: only the plants marked so, without the whole build;
--tests: only those that a test must see; --only: those whose names match a regular expression)"""
import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import tomllib

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent


def copy_checkout(to):
    listed = subprocess.run(["git", "ls-files", "-zco", "--exclude-standard"], cwd=ROOT, check=True, capture_output=True)
    for name in listed.stdout.decode().split("\0"):
        if name and (ROOT / name).is_file():
            (to / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(ROOT / name, to / name)
    # The check asks git which files there are.
    subprocess.run(["git", "init", "-q"], cwd=to, check=True)


def check(copy, *arguments):
    done = subprocess.run([copy / "scripts/check-macos.sh", *arguments], cwd=copy, capture_output=True, text=True, check=False)
    return done.returncode, done.stdout + done.stderr


def run_test(copy, program):
    """Builds a test program in the copy and runs it."""
    environment = {**os.environ, "CCACHE_BASEDIR": str(copy), "CCACHE_NOHASHDIR": "1"}
    build = copy / "build/dev"
    # Without sanitizers, which would only slow it down: the tests themselves must see what was planted.
    configure = ["cmake", "--preset", "dev", "-DVELLMOOR_SANITIZE=", "-DCMAKE_CXX_FLAGS_DEBUG=-O0"]
    steps = [] if (build / "build.ninja").exists() else [configure]
    for step in [*steps, ["cmake", "--build", str(build), "--target", program]]:
        done = subprocess.run(step, cwd=copy, capture_output=True, text=True, check=False, env=environment)
        if done.returncode != 0:
            return done.returncode, done.stdout + done.stderr
    binary = next(path for path in build.glob(f"tests/*/{program}") if path.is_file())
    try:
        # Trees that are slow for their size show no plant that the others do not.
        done = subprocess.run([binary, "--gtest_brief=1", "--gtest_filter=-*HostileTree*"], cwd=copy, capture_output=True,
                              text=True, check=False, timeout=300)
    except subprocess.TimeoutExpired as late:
        return 1, f"{late}"
    return done.returncode, done.stdout + done.stderr


class Plant:
    def __init__(self, table):
        self.name, self.file = table["name"], table["file"]
        self.old, self.new, self.says = table["old"], table["new"], table["says"]
        self.quick = table.get("quick", False)
        self.test = table.get("test")
        # What the check is asked for: sources, "--audit", or "" for the whole build.
        self.ask = table.get("ask", "--audit" if "/decls/" in self.file else self.file)

    @property
    def area(self):
        return str(pathlib.Path(self.file).parent)

    def touches(self):
        return {self.file, self.ask} if self.ask and not self.test else None

    def try_in(self, copy):
        """What is wrong with the check's answer; nothing when it reports this error."""
        file = copy / self.file
        good = file.read_text(encoding="utf-8")
        if good.count(self.old) != 1:
            return f"its place is found {good.count(self.old)} times in {self.file}"
        file.write_text(good.replace(self.old, self.new), encoding="utf-8")
        try:
            if self.test:
                status, said = run_test(copy, self.test)
            else:
                status, said = check(copy, *([self.ask] if self.ask else []))
        finally:
            file.write_text(good, encoding="utf-8")
        if status == 0:
            return "the check does not report it"
        if not re.search(self.says, said):
            return f"the check fails, but does not say /{self.says}/:\n{said}"
        return None


def rounds(plants):
    """Plants that do not stand in each other's way, together; those of the whole build alone."""
    waiting = list(plants)
    while waiting:
        busy, batch = set(), []
        for plant in list(waiting):
            touched = plant.touches()
            if touched is None and batch or touched and busy & touched:
                continue
            batch.append(plant)
            waiting.remove(plant)
            if touched is None:
                break
            # A header, or the declarations, are read by the others, too.
            if not plant.file.endswith((".cpp", ".mm")):
                break
            busy |= touched
        yield batch


def main():
    quick, tests = sys.argv[1:] == ["--quick"], sys.argv[1:] == ["--tests"]
    only = sys.argv[2] if len(sys.argv) == 3 and sys.argv[1] == "--only" else ""
    if sys.argv[1:] and not quick and not tests and not only:
        raise SystemExit(__doc__)
    with open(HERE / "planted.toml", "rb") as file:
        plants = [Plant(table) for table in tomllib.load(file)["plant"]]
    native = {str(path.relative_to(ROOT)) for path in ROOT.glob("src/*/macos/**/*") if path.suffix in (".cpp", ".mm")}
    untried = sorted(native - {plant.file for plant in plants})
    if untried and not quick:
        raise SystemExit("No error is planted in:\n" + "\n".join(untried))
    plants = [plant for plant in plants
              if (plant.quick or not quick) and (plant.test or not tests) and re.search(only, plant.name)]
    wrong = 0
    with tempfile.TemporaryDirectory(prefix="vellmoor-planted-") as folder:
        copy = pathlib.Path(folder)
        copy_checkout(copy)
        sources = sorted({plant.ask for plant in plants if plant.ask and not plant.test and not plant.ask.startswith("--")})
        whole = any(plant.ask == "" and not plant.test for plant in plants)
        for arguments in ([] if tests else [[], sources] if whole else [*([sources] if sources else []), ["--audit"]]):
            status, said = check(copy, *arguments)
            if status != 0:
                raise SystemExit(f"The copy without planted errors does not pass:\n{said}")
        for program in sorted({plant.test for plant in plants if plant.test}):
            status, said = run_test(copy, program)
            if status != 0:
                raise SystemExit(f"{program} fails without planted errors:\n{said}")
        with concurrent.futures.ThreadPoolExecutor(max_workers=2) as pool:
            for batch in rounds(plants):
                for plant, fault in zip(batch, pool.map(lambda plant: plant.try_in(copy), batch)):
                    wrong += fault is not None
                    print(f"{'FAILED' if fault else 'found '}  {plant.area}: {plant.name}" + (f": {fault}" if fault else ""), flush=True)
    print(f"{len(plants) - wrong} of {len(plants)} planted errors are reported; without them the check passes")
    raise SystemExit(wrong > 0 or not plants)


main()
