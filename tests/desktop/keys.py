"""Hands on the keyboard alone: each key is sent to the window that has it, and what a screen reader is told says where
the keyboard went."""

import processes
from accessibility import Role

STOPS = 120  # more than any page has
QUIET = 0.06  # seconds: a list hands the keyboard on to its row


class Keys:
    def __init__(self, session, listener):
        self._session = session
        self._listener = listener
        self._session.run("xdotool", "mousemove", "0", "0")  # or a menu that opens below it marks what it points to

    def press(self, *keys):
        self._session.run("xdotool", "key", *keys)

    def is_at(self, role, name):
        """Buttons are known by their whole name, rows by its beginning."""
        if self._listener.focus is None or self._listener.focus[0] != role:
            return False
        focused = self._listener.focus[1]
        return focused == name if role in (Role.PUSH_BUTTON, Role.MENU_ITEM) else focused.startswith(name)

    def wait_at(self, role, name=""):
        processes.wait_for(f"the keyboard at {role.value_nick} {name!r}, not {self._listener.focus}",
                           lambda: self.is_at(role, name))

    def move(self, key):
        """Presses a key that moves the keyboard, and waits until it has moved."""
        moves = self._listener.moves
        self.press(key)
        processes.wait_for(f"{key} to move on from {self._listener.focus}", lambda: self._listener.moves > moves)
        processes.pass_time(QUIET)

    def go(self, key, role, name):
        """Presses it until the keyboard is there."""
        passed = []
        while not self.is_at(role, name):
            passed.append(self._listener.focus)
            if len(passed) > STOPS:
                raise AssertionError(f"{key} does not come by {role.value_nick} {name!r}: {passed}")
            self.move(key)

    def choose(self, name):
        """Opens the menu of the row that has the keyboard and takes a command."""
        self.press("Menu")
        self.go("Down", Role.MENU_ITEM, name)
        self.press("Return")
