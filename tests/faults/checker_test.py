"""The checker, checked: an honest cleaner passes, and one that breaks a promise is caught. VELLMOOR_PROBE names the
probe, VELLMOOR_FAULTS_LIBRARY the library that is preloaded."""

import multiprocessing
import os
import tempfile
import unittest

import campaign
import false_cleaner
import plans
import runner

HERE = os.path.dirname(os.path.abspath(__file__))
SEEDS = range(1, 7)
MORE_SEEDS = range(1, 25)  # until the sin shows
NOTHING = staticmethod(lambda targets, home: plans.Plan("none"))

# What the checker has to say of each sin, and where the sin shows.
CAUGHT = {
    "Deletes": ("systemJunk", "lost"),
    "MovesWithoutNote": ("systemJunk", "in a Trash without a note"),
    "WritesEmptyNotes": ("systemJunk", "a note that nobody can read"),
    "NamesAnotherPlace": ("systemJunk", "a note that names another place"),
    "WritesAnotherTime": ("systemJunk", "a note with another time"),
    "LeavesNotesOfFailures": ("systemJunk", "left behind"),
    "LeavesTemporaryFiles": ("systemJunk", "left behind"),
    "MovesHalf": ("systemJunk", "lost"),
    "CutsFiles": ("systemJunk", "a ticked file is not what it was"),
    "CopiesInstead": ("systemJunk", "lost"),
    "ChangesRights": ("systemJunk", "the mode of an unticked file was changed"),
    "OpensTheTrash": ("systemJunk", "the mode of an unticked file was changed"),
    "FollowsLinks": ("trash", "gone from the precious folder"),
    "EmptiesTheWholeTrash": ("systemJunk", "an unticked file is not where it was"),
    "KeepsNotes": ("trash", "the note of an item that is gone remains"),
    "ForgetsNotesOfOthers": ("trash", "an unticked file is not where it was"),
    "ForgetsAllSizes": ("trash", "directorysizes lost a line of another item"),
    "KeepsSizes": ("trash", "directorysizes keeps the line of an item that is gone"),
    "LeftoversFirst": ("appUninstaller", "a leftover went, its application stayed"),
    "CountsTooMuch": ("systemJunk", "removed of"),
    "HidesFailures": ("systemJunk", "targets stayed, the report tells of"),
    "BoastsOfBytes": ("systemJunk", "bytes processed of"),
    "ForgetsSomebody": ("systemJunk", "attempted of"),
    "Crashes": ("systemJunk", "it ended by signal 6"),
}


def _run_all(cleaner, module, choose, text, sender):
    """The runs of one cleaner, in a process whose mounts are its own, until one says the text. What was said, by seed."""
    with tempfile.TemporaryDirectory(prefix="vellmoor-faults-") as folder:
        campaign.readable(os.path.join(HERE, "trashes.py"), folder)  # the false cleaner uses it
        machine = campaign.machine_here(cleaner, os.environ["VELLMOOR_FAULTS_LIBRARY"], folder, 0)
        said = []
        for seed in SEEDS if text is None else MORE_SEEDS:
            said.append((seed, runner.Run(machine, seed, module, choose).run().problems))
            if text is not None and any(text in problem for problem in said[-1][1]):
                break
        sender.send(said)


def problems_of(sin, module, choose=NOTHING, text=None):
    receiver, sender = multiprocessing.Pipe(False)
    cleaner = ["/usr/bin/python3", "-B", os.path.join(HERE, "false_cleaner.py"), sin, os.environ["VELLMOOR_PROBE"]]
    process = multiprocessing.Process(target=_run_all, args=(cleaner, module, choose, text, sender))
    process.start()
    sender.close()
    try:
        return receiver.recv()
    finally:
        process.join()


def _stranger(kind):
    """A plan: the first target is replaced before the cleaner's own first call that changes something."""
    def choose(targets, home):
        if not targets:
            return plans.Plan("none")
        attack = plans.Attack(home.area, kind, targets[0].path, b"aside/thing")
        return plans.Plan("turn", "calls=rename,open,mkdir,unlink,chmod from=change at=1 do=ask ask=%d", turn=attack)
    return choose


class TheChecker(unittest.TestCase):
    def test_has_nothing_to_say_of_an_honest_cleaner(self):
        for module in ("systemJunk", "trash", "privacy", "appUninstaller"):
            for seed, problems in problems_of("Honest", module):
                expected = [problem for problem in problems if "offered, though" not in problem]
                self.assertEqual(expected, [], f"{module}, seed {seed}")

    def test_knows_a_sin_for_every_false_cleaner(self):
        self.assertEqual(set(CAUGHT) | {"Honest", "TakesTheStranger"}, set(false_cleaner.SINS))

    def test_sees_a_strangers_file_that_was_deleted_from_the_trash(self):
        self.assert_caught("TakesTheStranger", "trash", "somebody else's file is lost", _stranger("file"))

    def test_sees_a_strangers_link_that_went_instead_of_the_target(self):
        self.assert_caught("TakesTheStranger", "trash", "somebody else's file is lost", _stranger("link"))

    def assert_caught(self, sin, module, text, choose=NOTHING):
        said = [problem for _, problems in problems_of(sin, module, choose, text) for problem in problems]
        self.assertTrue(any(text in problem for problem in said), said)


def _add(sin, module, text):
    def test(self):
        self.assert_caught(sin, module, text)
    words = "".join(" " + letter.lower() if letter.isupper() else letter for letter in sin).strip().replace(" ", "_")
    setattr(TheChecker, f"test_catches_one_that_{words}", test)


for _sin, (_module, _text) in CAUGHT.items():
    _add(_sin, _module, _text)

if __name__ == "__main__":
    unittest.main()
