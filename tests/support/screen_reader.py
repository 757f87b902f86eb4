"""What a screen reader sees of a program's windows: Debian's at-spi2-core and gir1.2-atspi-2.0."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

State = Atspi.StateType


class Control:
    """A control as it is at this moment."""

    def __init__(self, accessible, path):
        self.accessible = accessible
        self.path = path
        self.role = accessible.get_role_name()
        self.name = accessible.get_name()
        states = accessible.get_state_set()
        self.is_showing = states.contains(State.SHOWING)
        self.is_focused = states.contains(State.FOCUSED)
        # A frame around what scrolls hands the focus on to that.
        self.takes_focus = (states.contains(State.FOCUSABLE) and states.contains(State.SENSITIVE)
                            and self.role != "scroll pane")
        place = accessible.get_extents(Atspi.CoordType.SCREEN)
        self.left, self.top, self.width, self.height = place.x, place.y, place.width, place.height

    def __repr__(self):
        return f"{self.role} “{self.name}” at {self.left},{self.top}"

    def mnemonic(self):
        actions = self.accessible.get_action_iface()
        return actions.get_key_binding(0) if actions and actions.get_n_actions() else ""


class ScreenReader:
    def __init__(self, program):
        """`program`: its name on the accessibility bus."""
        Atspi.init()
        self.name = program

    def application(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(index)
            if child is not None and child.get_name() == self.name:
                child.set_cache_mask(Atspi.Cache.NONE)
                return child
        return None

    def windows(self):
        """The titles of the windows that can be seen."""
        return [control.name for control in self._below(self.application(), (), 1)]

    def controls(self, title):
        """All that can be seen in the window of that title, from the top of its tree."""
        try:
            return list(self._below(self.application(), (), None, title))
        except GLib.Error:  # something went while it was looked at
            return self.controls(title)

    def focused(self, title):
        return next((each for each in self.controls(title) if each.is_focused), None)

    def _below(self, parent, path, depth, title=None):
        for index in range(parent.get_child_count()):
            accessible = parent.get_child_at_index(index)
            if accessible is None:
                continue
            control = Control(accessible, (*path, index))
            if not control.is_showing or (title is not None and control.name != title):
                continue
            yield control
            if depth is None:
                yield from self._below(accessible, control.path, None)
