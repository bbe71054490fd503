"""The campaign: many runs (runner.py), each from a seed, on all processors.

    campaign.py --cleaner PROGRAM --faults LIBRARY [--runs N] [--seed FIRST] [--jobs J] [--keep-going]

Prints the seeds that broke a promise with what was broken, and what the machine did not let it try. Exits with 1 if a
promise was broken. The same seed does the same again (but for storms, which the scheduler has a part in)."""

import argparse
import collections
import multiprocessing
import os
import re
import shutil
import sys
import tempfile
import time

import disk
import runner


def machine_here(cleaner, faults, folder, number):
    """This machine, with an area of the given number below the folder. The calling process gets mounts of its own."""
    area = os.fsencode(folder) + b"/%d" % number
    is_root = os.geteuid() == 0
    has_mounts = has_disks = False
    if is_root:
        try:
            disk.own_mounts()
            os.makedirs(area, exist_ok=True)
            disk.mount("tmpfs", area, "tmpfs", 0, "size=1m")
            disk.unmount(area)
            has_mounts = True
        except OSError:
            pass  # a container without the right to mount; the summary says so
        has_disks = has_mounts and _has_disks(area)
        os.chmod(folder, 0o755)
    return runner.Machine([readable(word, folder) for word in cleaner], readable(faults, folder), area, is_root, has_mounts,
                          has_disks)


def _has_disks(area):
    try:
        runner.mount_image(area + b".disk", area)
    except OSError:
        return False
    disk.unmount(area)
    return True


def readable(program, folder):
    """A copy for the user that root cleans as, who may not be able to enter the folder of the build."""
    copy = os.path.join(folder, os.path.basename(program))
    if not os.path.isfile(program) or program.startswith("/usr/"):
        return program
    if not os.path.exists(copy):
        shutil.copy(program, copy + f".{os.getpid()}")
        os.rename(copy + f".{os.getpid()}", copy)
    os.chmod(copy, 0o755)
    return copy


def _work(arguments, folder, number, seeds, results):
    os.sched_setaffinity(0, [sorted(os.sched_getaffinity(0))[number % len(os.sched_getaffinity(0))]])
    os.umask(0o022)
    machine = machine_here(arguments.cleaner.split(), arguments.faults, folder, number)
    for seed in iter(seeds.get, None):
        try:
            results.put(runner.Run(machine, seed).run())
        except Exception as error:  # a fault of the campaign itself is a failure, too
            import traceback
            result = runner.Result(seed, "?", "the campaign failed", "broken")
            result.problems.append(f"{error!r}\n{traceback.format_exc()}")
            results.put(result)
    results.put(None)


class Summary:
    def __init__(self):
        self.runs = 0
        self.failed = []
        self.kinds = collections.Counter()
        self.happened = collections.Counter()
        self.passed_over = collections.Counter()
        self.problems = collections.Counter()

    def add(self, result):
        self.runs += 1
        self.kinds[result.kind] += 1
        self.happened[result.kind] += result.happened
        self.passed_over.update(result.passed_over)
        if result.problems:
            self.failed.append(result.seed)
            self.problems.update({_kind_of(problem) for problem in result.problems})

    def print(self, seconds):
        print(f"{self.runs} runs in {seconds:.0f} s, {len(self.failed)} broke a promise")
        for kind, count in sorted(self.kinds.items()):
            print(f"  {kind}: {count}, of which {self.happened[kind]} were met")
        for problem, count in self.problems.most_common():
            print(f"  broken {count} times: {problem}")
        for case, count in sorted(self.passed_over.items()):
            print(f"  passed over {count} times: {case}")
        if self.failed:
            print("again: --seed", *sorted(self.failed)[:20], "--runs 1")


def _kind_of(problem):
    """What was broken, without where."""
    words = problem.removeprefix("first clean: ").removeprefix("second clean: ")
    return re.sub(r"[0-9]+", "N", re.split(r": b?['\"/]| \(", words)[0])


def _show(result):
    print(f"seed {result.seed} ({result.module}; {result.plan}):")
    for problem in result.problems[:8]:
        print(f"    {problem}")
    if len(result.problems) > 8:
        print(f"    and {len(result.problems) - 8} more")
    sys.stdout.flush()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cleaner", required=True)
    parser.add_argument("--faults", required=True)
    parser.add_argument("--runs", type=int, default=1000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=len(os.sched_getaffinity(0)))
    parser.add_argument("--keep-going", action="store_true", help="do not stop after 20 broken promises")
    arguments = parser.parse_args()
    started = time.monotonic()
    summary = Summary()
    seeds, results = multiprocessing.SimpleQueue(), multiprocessing.SimpleQueue()
    with tempfile.TemporaryDirectory(prefix="vellmoor-faults-") as folder:
        workers = [multiprocessing.Process(target=_work, args=(arguments, folder, number, seeds, results), daemon=True)
                   for number in range(arguments.jobs)]
        for worker in workers:
            worker.start()
        next_seed, last = arguments.seed, arguments.seed + arguments.runs
        for _ in range(arguments.jobs * 2):
            seeds.put(next_seed if next_seed < last else None)
            next_seed += 1
        left = arguments.jobs
        while left:
            result = results.get()
            if result is None:
                left -= 1
                continue
            summary.add(result)
            if result.problems:
                _show(result)
            gives_up = len(summary.failed) >= 20 and not arguments.keep_going
            seeds.put(next_seed if next_seed < last and not gives_up else None)
            next_seed += 1
        for worker in workers:
            worker.join()
    summary.print(time.monotonic() - started)
    return 1 if summary.failed or summary.runs == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
