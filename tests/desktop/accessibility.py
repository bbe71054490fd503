"""The program as a screen reader sees it: its tree over AT-SPI, read afresh at every look."""

import functools

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

import processes  # noqa: E402

Role = Atspi.Role
State = Atspi.StateType


def _answer(question, *arguments):
    """What an object answers; None when it went before it was asked."""
    try:
        return question(*arguments)
    except GLib.Error:
        return None


class Node:
    """One accessible object; what was read of it once stays."""

    def __init__(self, accessible, parent=None):
        self._accessible = accessible
        self.parent = parent

    def __repr__(self):
        names = sorted(state.value_nick for state in self.states)
        return f"{self.role.value_nick} {self.name!r} ({self.description}) {' '.join(names)}"

    @functools.cached_property
    def role(self):
        return self._accessible.get_role()

    @functools.cached_property
    def name(self):
        return self._accessible.get_name() or ""

    @functools.cached_property
    def description(self):
        return self._accessible.get_description() or ""

    @functools.cached_property
    def states(self):
        return set(self._accessible.get_state_set().get_states())

    def children(self):
        """The children that are still there when they are looked at."""
        for index in range(_answer(self._accessible.get_child_count) or 0):
            child = _answer(self._accessible.get_child_at_index, index)
            node = Node(child, self) if child is not None else None
            if node is not None and _answer(lambda node=node: node.states) is not None:
                yield node

    def below(self):
        """Every shown object below this one, in order."""
        for child in self.children():
            if State.SHOWING in child.states and State.VISIBLE in child.states:
                yield child
                yield from child.below()

    def is_readable(self):
        """Whether it is still there; then its role and name are known."""
        return _answer(lambda: (self.role, self.name)) is not None

    def is_(self, state):
        return state in self.states

    def actions(self):
        return [Atspi.Action.get_action_name(self._accessible, index) for index in range(self._accessible.get_n_actions())]

    def do(self, action):
        index = self.actions().index(action)
        if not self._accessible.do_action(index):
            raise AssertionError(f"{self}: refused {action}")

    def value(self):
        """The value and its limits, None where Qt offers none for the role."""
        if "Value" not in self._accessible.get_interfaces():
            return None
        interface = self._accessible
        return interface.get_current_value(), interface.get_minimum_value(), interface.get_maximum_value()

    def take_focus(self):
        if not self._accessible.grab_focus():
            raise AssertionError(f"{self}: does not take the focus")


class Tree:
    """The tree of a running program."""

    def __init__(self, pid):
        self._pid = pid
        self._program = None
        self._desktop = Atspi.get_desktop(0)
        self._desktop.set_cache_mask(Atspi.Cache.NONE)
        # The library gives up after 0.8 s, which a busy machine needs.
        Atspi.set_timeout(int(processes.PATIENCE * 1000), int(processes.PATIENCE * 1000))

    def applications(self):
        """Every program on the accessibility bus."""
        found = [_answer(self._desktop.get_child_at_index, index) for index in range(self._desktop.get_child_count())]
        return [program for program in found if program is not None]

    def _application(self):
        return next((program for program in self.applications() if _answer(program.get_process_id) == self._pid), None)

    def root(self):
        if self._program is None:
            self._program = processes.wait_for("the program on the accessibility bus", self._application)
        return Node(self._program)

    def shown(self):
        """Every shown object."""
        return [node for node in self.root().below() if node.is_readable()]

    def find_all(self, role, name=None):
        return [node for node in self._shown_as(role) if name in (None, node.name)]

    def find(self, role, name):
        """The shown object of that role whose name is, or begins with, the given one."""
        return processes.wait_for(f"{role.value_nick} {name!r}", lambda: next(
            (node for node in self._shown_as(role) if node.name.startswith(name)), None))

    def _shown_as(self, role):
        """One after the other: each question is a message to the program and back."""
        for node in self.root().below():
            if _answer(lambda node=node: node.role) == role and node.is_readable():
                yield node

    def focused(self):
        """The innermost object that has the keyboard, None on its way from one to another."""
        found = [node for node in self.root().below() if State.FOCUSED in node.states]
        return found[-1] if found and found[-1].is_readable() else None


class Listener:
    """What the program tells a screen reader by itself, from its creation on: where the keyboard is, and what appeared
    to be read out, each as (role, name)."""

    # Qt 6.8 and later tell readers what is to be read out, as an event; before that an object appears.
    _KINDS = ("object:state-changed:focused", "object:state-changed:showing", "object:announcement")
    _READ_OUT = {Role.NOTIFICATION, Role.ALERT}

    def __init__(self):
        self.moves = 0
        self.forget()
        self._listener = Atspi.EventListener.new(self._hear)
        for kind in self._KINDS:
            self._listener.register(kind)

    def forget(self):
        """Before another program, or another start of it."""
        self.focus = None
        self.told = []

    def _hear(self, event):
        if event.type.startswith("object:announcement"):
            self.told.append((Role.NOTIFICATION, event.any_data))
            return
        if not event.detail1:
            return
        heard = _answer(lambda: (event.source.get_role(), event.source.get_name() or ""))
        if heard is None:
            return
        if event.type.endswith("focused"):
            self.focus = heard
            self.moves += 1
        elif heard[0] in self._READ_OUT and heard[1]:
            self.told.append(heard)

    def heard(self, beginning, role=Role.NOTIFICATION):
        """The first of that role that begins so, None when there was none."""
        return next((told for told in self.told if told[0] == role and told[1].startswith(beginning)), None)
