"""What every test here shares: a session, a home, the program, and that it printed nothing."""

import signal
import unittest

import home
import processes
import program
import session
import system

LIMIT = 240  # seconds; ctest waits longer, so that everything is put away


class DesktopTest(unittest.TestCase):
    tray = False
    over_test_system = False  # for what this machine's memory, processes and programs would change

    def setUp(self):
        signal.signal(signal.SIGALRM, self._give_up)
        signal.alarm(LIMIT)
        self.session = self.enterContext(session.Session(tray=self.tray))
        self.home = home.Home(self.session.home)
        chosen = system.System(self.session.folder / "system") if self.over_test_system else None
        self.program = program.Program(self.session, chosen)

    def tearDown(self):
        if self.program.process is not None:
            self.assertEqual(self.program.complaints(), [], "the program printed")

    @staticmethod
    def _give_up(*_):
        raise TimeoutError(f"not done after {LIMIT} seconds")

    def wait_for(self, what, condition):
        try:
            return processes.wait_for(what, condition)
        except AssertionError as error:
            if self.program.process is None or self.program.is_running():
                raise
            raise AssertionError(f"{error}; the program ended with {self.program.process.returncode}:\n"
                                 + self.session.log("program")) from error
