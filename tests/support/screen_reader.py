"""What a screen reader sees of a program's windows, by the messages of the accessibility bus.

Debian's library for them answers from a cache that lags behind, and hangs without one; so its
interfaces are called here as they are. Needs python3-gi and at-spi2-core.
"""

from gi.repository import Gio, GLib

FOCUSABLE, FOCUSED, SENSITIVE, SHOWING = 11, 12, 24, 25  # states, by their bits
SCREEN = 0  # places are asked for in the screen's coordinates
PATIENCE = 10_000  # milliseconds for an answer
ATTEMPTS = 20
ROOT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
NOBODY = "/org/a11y/atspi/null"


def call(bus, address, interface, method, arguments=None):
    return bus.call_sync(*address, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                         PATIENCE, None).unpack()[0]


class Control:
    """A control as it is at this moment."""

    def __init__(self, bus, address):
        self.bus, self.address = bus, address
        self.role = self.ask("Accessible", "GetRoleName")
        self.name = self.property("Name")
        low, high = self.ask("Accessible", "GetState")
        states = {bit for bit in range(64) if (high << 32 | low) >> bit & 1}
        self.is_showing, self.is_focused = SHOWING in states, FOCUSED in states
        # A frame around what scrolls hands the focus on to that.
        self.takes_focus = {FOCUSABLE, SENSITIVE} <= states and self.role != "scroll pane"
        if self.is_showing and self.role != "application":
            self.left, self.top, self.width, self.height = self.ask(
                "Component", "GetExtents", GLib.Variant("(u)", (SCREEN,)))

    def __repr__(self):
        return f"{self.role} “{self.name}” at {self.left},{self.top}"

    def ask(self, interface, method, arguments=None):
        return call(self.bus, self.address, f"org.a11y.atspi.{interface}", method, arguments)

    def property(self, name):
        return call(self.bus, self.address, "org.freedesktop.DBus.Properties", "Get",
                    GLib.Variant("(ss)", ("org.a11y.atspi.Accessible", name)))

    def children(self):
        return [Control(self.bus, each) for each in self.ask("Accessible", "GetChildren")
                if each[1] != NOBODY]

    def and_below(self):
        """It and all that can be seen of what it holds."""
        yield self
        for child in self.children():
            if child.is_showing:
                yield from child.and_below()

    def mnemonic(self):
        """The first of its keys; the others are the whole ways through menus."""
        if "org.a11y.atspi.Action" not in self.ask("Accessible", "GetInterfaces"):
            return ""
        keys = self.ask("Action", "GetKeyBinding", GLib.Variant("(i)", (0,)))
        return keys.split(";")[0].lower()


class ScreenReader:
    def __init__(self, program):
        """`program`: its name on the accessibility bus."""
        session = Gio.bus_get_sync(Gio.BusType.SESSION, None)
        where = call(session, ("org.a11y.Bus", "/org/a11y/bus"), "org.a11y.Bus", "GetAddress")
        self.bus = Gio.DBusConnection.new_for_address_sync(
            where, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.program = program

    def windows(self):
        """The titles of the windows that can be seen."""
        return [each.name for each in self._look(lambda window: [window])]

    def controls(self, title):
        """All that can be seen in the window of that title, from the top of its tree."""
        return self._look(lambda window: window.and_below() if window.name == title else [])

    def focused(self, title):
        return next((each for each in self.controls(title) if each.is_focused), None)

    def _look(self, seen_of):
        """What `seen_of` tells of every window, once nothing ends meanwhile."""
        for _ in range(ATTEMPTS):
            try:
                return [each for program in Control(self.bus, ROOT).children()
                        if program.name == self.program
                        for window in program.children() if window.is_showing
                        for each in seen_of(window)]
            except GLib.Error as error:
                last = error
        raise last
