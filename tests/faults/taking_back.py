"""The way back: a home of everything, all of it ticked and cleaned, the clean killed somewhere, the program started again
and all put back: the home is what it was, but for what lay in a Trash and was to go for good.

    taking_back.py --cleaner PROGRAM --faults LIBRARY [--runs N] [--seed FIRST]

Prints the seeds whose home was not the same. Exits with 1 if there is one."""

import argparse
import os
import random
import signal
import subprocess
import sys
import tempfile

import campaign
import disk
import plans
import put_back
import runner
from home import Home

OWN_STATE = b"home/.local/state/vellmoor"


class Journey(runner.Run):
    """One seed: what is cleaned, and where the clean ends."""

    def __init__(self, machine, seed):
        super().__init__(machine, seed, module="smartScan")
        self.rng = random.Random(seed)
        self.was_killed = False
        self.moved = 0

    def _run(self):
        home = Home(self.area, self.rng)
        with runner.as_user(self.machine):
            home.build("everything")
        before = disk.snapshot(self.area)
        ticked, _ = self._scan(before, home, False)
        if ticked is None:
            return
        plan = self._end_of(ticked)
        self.result.plan = plan.what
        ended = self._clean(plan)
        self.was_killed = ended.status == -signal.SIGKILL
        if not self.was_killed and ended.status != 0:
            self.result.problems.append(f"the clean ended with {ended.status}: {ended.errors[-200:]}")
        between = disk.snapshot(self.area)
        self._put_back()
        self._compare(home, before, between, disk.snapshot(self.area), {target.path for target in ticked})

    def _end_of(self, ticked):
        """Mostly at an item, and at any change of the disk; one in ten comes to its end."""
        choice = self.rng.random()
        if choice < 0.1:
            return plans.Plan("none")
        calls, most = ("rename", len(ticked)) if choice < 0.55 else (plans.CHANGES, 5 * len(ticked))
        number = self.rng.randint(1, max(most, 1))
        return plans.Plan("kill", f"calls={calls} at={number} do=kill", what=f"killed at {calls[:6]} {number} of {len(ticked)} targets")

    def _put_back(self):
        process = subprocess.run(self._arguments("put-back")[:-1], env=self._environment(), stdin=subprocess.DEVNULL, cwd="/",
                                 capture_output=True, timeout=runner.PATIENCE, check=False,
                                 **({"user": runner.USER, "group": runner.USER, "extra_groups": []} if self.machine.is_root else {}))
        if process.returncode != 0:
            self.result.problems.append(f"putting back ended with {process.returncode}: {process.stderr[-300:]!r}")

    def _compare(self, home, before, between, after, ticked):
        trashes = {place.top for place in home.trashes} | {b"home/.local/share/Trash"}
        problems, moved = put_back.compare(before, between, after, ticked, trashes, {OWN_STATE})
        self.result.problems += problems
        self.moved += moved


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cleaner", required=True)
    parser.add_argument("--faults", required=True)
    parser.add_argument("--runs", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    arguments = parser.parse_args()
    os.umask(0o022)
    failed, killed, moved = [], 0, 0
    with tempfile.TemporaryDirectory(prefix="vellmoor-faults-") as folder:
        machine = campaign.machine_here(arguments.cleaner.split(), arguments.faults, folder, 0)
        for seed in range(arguments.seed, arguments.seed + arguments.runs):
            journey = Journey(machine, seed)
            result = journey.run()
            killed += journey.was_killed
            moved += journey.moved
            if result.problems:
                failed.append(seed)
                print(f"seed {seed} ({result.plan}):", *result.problems[:8], sep="\n    ")
                sys.stdout.flush()
    print(f"{arguments.runs} homes, {killed} killed in the middle, {moved} things away in between; {len(failed)} not the same")
    if failed:
        print("again: --seed", *failed[:20], "--runs 1")
    # A campaign in which nothing moves or nothing is killed shows nothing.
    return 1 if failed or moved == 0 or (arguments.runs >= 20 and killed == 0) else 0


if __name__ == "__main__":
    sys.exit(main())
