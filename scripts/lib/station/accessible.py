"""The launcher's controls as an assistive tool sees them: found by role and name, pressed, typed into and read.

A control may go away between two looks at it. Whatever is asked of one that is gone answers as if there were nothing: no
children, no text, not showing.
"""

import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

STATES = Atspi.StateType


class Timeout(AssertionError):
    """What was waited for did not come."""


def wait_until(look, what, seconds=10.0, every=0.05):
    """The first answer of look() that counts as true. `what` is words, or a function that gives them when time is up."""
    end = time.monotonic() + seconds
    while True:
        trouble = ""
        try:
            answer = look()
            if answer:
                return answer
        except (AssertionError, OSError) as error:
            trouble = f" ({error})"
        if time.monotonic() > end:
            raise Timeout(f"not within {seconds:g} s: {what() if callable(what) else what}{trouble}")
        time.sleep(every)


def _asked(method, *arguments, default=None):
    """The answer of an accessibility call, or the default where the control is gone or has no such side."""
    try:
        answer = method(*arguments)
    except GLib.Error:
        return default
    return default if answer is None else answer


class Control:
    """One control, or a window, or the program as a whole."""

    def __init__(self, node):
        self._node = node

    def __repr__(self):
        return f"{self.role} \"{self.name}\""

    @property
    def node(self):
        # What the library remembers of a control may be old: nobody here dispatches the bus's signals.
        _asked(self._node.clear_cache)
        return self._node

    @property
    def name(self):
        return _asked(self.node.get_name, default="")

    @property
    def role(self):
        return _asked(self.node.get_role_name, default="")

    @property
    def description(self):
        return _asked(self.node.get_description, default="")

    @property
    def label(self):
        """What an assistive tool says of it first: the label beside it, or its own name, which of a drop-down is what is
        chosen."""
        for relation in _asked(self.node.get_relation_set, default=[]):
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                return Control(relation.get_target(0)).name
        return self.name

    @property
    def children(self):
        count = _asked(self.node.get_child_count, default=0)
        found = (_asked(self.node.get_child_at_index, index) for index in range(count))
        return [Control(child) for child in found if child is not None]

    def has(self, state):
        states = _asked(self.node.get_state_set)
        return states is not None and states.contains(state)

    @property
    def showing(self):
        return self.has(STATES.SHOWING)

    @property
    def sensitive(self):
        return self.has(STATES.SENSITIVE)

    @property
    def checked(self):
        return self.has(STATES.CHECKED)

    @property
    def text(self):
        """What stands in a text field, a log pane or a label."""
        return _asked(Atspi.Text.get_text, self.node, 0, -1, default="") if self._offers("Text") else self.name

    def _offers(self, interface):
        return interface in _asked(self.node.get_interfaces, default=[])

    def walk(self, only_showing=False):
        """This control and everything inside it, top to bottom."""
        yield self
        for child in self.children:
            if not only_showing or child.showing:
                yield from child.walk(only_showing)

    def find_all(self, role=None, name=None, where=None, only_showing=False):
        """name is the whole name; where is a further question to the control."""
        return [each for each in self.walk(only_showing)
                if (role is None or each.role == role) and (name is None or each.name == name)
                and (where is None or where(each))]

    def find(self, role=None, name=None, where=None, seconds=10.0):
        """The first that fits; waits for it."""
        def look():
            found = self.find_all(role, name, where)
            return found[0] if found else None
        return wait_until(look, f"a {role or 'control'} named \"{name}\" in {self!r}", seconds)

    def press(self):
        """Clicks a button, toggles a check box, opens a combo box."""
        assert self.sensitive, f"{self!r} cannot be pressed: it is insensitive"
        assert self._offers("Action") and _asked(Atspi.Action.do_action, self.node, 0), f"{self!r} cannot be pressed"

    def type(self, text):
        """Replaces what stands in a text field."""
        assert self._offers("EditableText") and _asked(Atspi.EditableText.set_text_contents, self.node, text), \
            f"{self!r} takes no text"

    def set_value(self, number):
        """Moves a slider."""
        assert self._offers("Value") and _asked(Atspi.Value.set_current_value, self.node, number), f"{self!r} has no value"

    @property
    def value(self):
        """Where a slider stands."""
        return _asked(Atspi.Value.get_current_value, self.node)

    def select(self, index):
        """Chooses the page of a notebook or the row of a list."""
        assert self._offers("Selection") and _asked(Atspi.Selection.select_child, self.node, index), \
            f"{self!r} has no entry {index} to choose"

    @property
    def selected_index(self):
        for index, child in enumerate(self.children):
            if child.has(STATES.SELECTED):
                return index
        return None


def program(process_id):
    """The program with that process id as the accessibility bus knows it, or None while it is not there."""
    desktop = Atspi.get_desktop(0)
    for index in range(_asked(desktop.get_child_count, default=0)):
        node = _asked(desktop.get_child_at_index, index)
        if node is not None and _asked(node.get_process_id, default=0) == process_id:
            return Control(node)
    return None
