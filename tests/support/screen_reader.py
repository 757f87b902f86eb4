"""What a screen reader sees of a program's windows, by the messages of the accessibility bus.

Debian's library for them answers from a cache that lags behind, and comes to a stand without one;
so its interfaces are called here as they are. Needs python3-gi and at-spi2-core.
"""

from gi.repository import Gio, GLib

FOCUSABLE, FOCUSED, SENSITIVE, SHOWING = 11, 12, 24, 25  # states, by their bits
SCREEN = 0  # places are asked for in the screen's coordinates
PATIENCE = 10_000  # milliseconds for an answer
ATTEMPTS = 20

ROOT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
NOBODY = "/org/a11y/atspi/null"


class Control:
    """A control as it is at this moment."""

    def __init__(self, bus, address):
        self.address = address
        self.bus = bus
        self.role = self.ask("Accessible", "GetRoleName")[0]
        self.name = self.property("Name")
        states = self.states()
        self.is_showing = SHOWING in states
        self.is_focused = FOCUSED in states
        # A frame around what scrolls hands the focus on to that.
        self.takes_focus = {FOCUSABLE, SENSITIVE} <= states and self.role != "scroll pane"
        self.left = self.top = self.width = self.height = 0
        if self.is_showing and self.role != "application":
            place = self.ask("Component", "GetExtents", GLib.Variant("(u)", (SCREEN,)))[0]
            self.left, self.top, self.width, self.height = place

    def __repr__(self):
        return f"{self.role} “{self.name}” at {self.left},{self.top}"

    def ask(self, interface, method, arguments=None):
        return call(self.bus, self.address, f"org.a11y.atspi.{interface}", method, arguments)

    def property(self, name):
        arguments = GLib.Variant("(ss)", ("org.a11y.atspi.Accessible", name))
        return call(self.bus, self.address, "org.freedesktop.DBus.Properties", "Get", arguments)[0]

    def states(self):
        low, high = self.ask("Accessible", "GetState")[0]
        return {bit for bit in range(64) if (high << 32 | low) >> bit & 1}

    def children(self):
        return children(self.bus, self.address)

    def description(self):
        return self.property("Description")

    def mnemonic(self):
        """The first of its keys; the others are the whole ways through menus."""
        interfaces = self.ask("Accessible", "GetInterfaces")[0]
        if "org.a11y.atspi.Action" not in interfaces:
            return ""
        keys = self.ask("Action", "GetKeyBinding", GLib.Variant("(i)", (0,)))[0]
        return keys.split(";")[0].lower()


def call(bus, address, interface, method, arguments=None):
    return bus.call_sync(address[0], address[1], interface, method, arguments, None,
                         Gio.DBusCallFlags.NONE, PATIENCE, None).unpack()


def children(bus, address):
    found = call(bus, address, "org.a11y.atspi.Accessible", "GetChildren")[0]
    return [tuple(each) for each in found if each[1] != NOBODY]


def again_if_something_went(look):
    """What `look` returns once nothing ends while it looks."""
    for _ in range(ATTEMPTS):
        try:
            return look()
        except GLib.Error as error:
            last = error
    raise last


class ScreenReader:
    def __init__(self, program):
        """`program`: its name on the accessibility bus."""
        session = Gio.bus_get_sync(Gio.BusType.SESSION, None)
        where = call(session, ("org.a11y.Bus", "/org/a11y/bus"), "org.a11y.Bus", "GetAddress")[0]
        flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
                 | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        self.bus = Gio.DBusConnection.new_for_address_sync(where, flags, None, None)
        self.program = program

    def windows(self):
        """The titles of the windows that can be seen."""
        return again_if_something_went(lambda: [each.name for each in self._windows()])

    def controls(self, title):
        """All that can be seen in the window of that title, from the top of its tree."""
        return again_if_something_went(
            lambda: [each for window in self._windows() if window.name == title
                     for each in self._and_below(window)])

    def focused(self, title):
        return next((each for each in self.controls(title) if each.is_focused), None)

    def _windows(self):
        for address in children(self.bus, ROOT):
            program = Control(self.bus, address)
            if program.name == self.program:
                yield from self._seen(program)

    def _seen(self, parent):
        for address in parent.children():
            control = Control(self.bus, address)
            if control.is_showing:
                yield control

    def _and_below(self, control):
        yield control
        for child in self._seen(control):
            yield from self._and_below(child)
