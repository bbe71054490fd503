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
    limit = LIMIT
    tray = False
    over_test_system = False  # for what this machine's memory, processes and programs would change

    def setUp(self):
        signal.signal(signal.SIGALRM, self._give_up)
        signal.alarm(self.limit)
        self.session = self.enterContext(self.make_session())
        self.home = home.Home(self.session.home)
        self.program = self.make_program(self.make_system() if self.over_test_system else None)

    def make_session(self):
        return session.Session(tray=self.tray)

    def make_system(self):
        return system.System(self.session.folder / "system")

    def make_program(self, chosen_system):
        return program.Program(self.session, chosen_system)

    def tearDown(self):
        if self.program.process is not None:
            self.assertEqual(self.program.complaints(), [], "the program printed")

    @staticmethod
    def _give_up(*_):
        raise TimeoutError("not done in time")

    def wait_for(self, what, condition):
        try:
            return processes.wait_for(what, condition)
        except AssertionError as error:
            if self.program.process is None or self.program.is_running():
                raise
            raise AssertionError(f"{error}; the program ended with {self.program.process.returncode}:\n"
                                 + self.session.log("program")) from error
