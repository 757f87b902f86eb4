"""A desktop's tray on a session bus of its own: shows nothing, but takes icons and uses their menus.

Needs Debian's python3-gi.
"""

import os
import threading

from gi.repository import Gio, GLib

WATCHER = "org.kde.StatusNotifierWatcher"
INTERFACE = f"""<node><interface name="{WATCHER}">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
</interface></node>"""
PROPERTIES = {"IsStatusNotifierHostRegistered": GLib.Variant("b", True),
              "ProtocolVersion": GLib.Variant("i", 0)}
PATIENCE = 5000  # milliseconds for an answer


class TrayHost:
    """Takes one icon at a time. The bus is the session's for every process started after this."""

    def __init__(self):
        self.daemon = Gio.TestDBus.new(Gio.TestDBusFlags.NONE)
        self.daemon.up()
        address = self.daemon.get_bus_address()
        # It takes the display away from this process, and tells only the C library of the bus.
        os.environ.update(DISPLAY=os.environ["DISPLAY"], DBUS_SESSION_BUS_ADDRESS=address)
        self.item = None
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.bus.register_object(
            "/StatusNotifierWatcher", Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0],
            self._take_icon, lambda *words: PROPERTIES[words[-1]], None)
        self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "RequestName", GLib.Variant("(su)", (WATCHER, 0)), None,
                           Gio.DBusCallFlags.NONE, PATIENCE, None)
        self.loop = GLib.MainLoop()
        self.thread = threading.Thread(target=self.loop.run)
        self.thread.start()

    def end(self):
        """As if the desktop's tray had crashed."""
        self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "ReleaseName", GLib.Variant("(s)", (WATCHER,)), None,
                           Gio.DBusCallFlags.NONE, PATIENCE, None)

    def close(self):
        self.loop.quit()
        self.thread.join()
        self.bus.close_sync(None)
        self.daemon.down()

    def _take_icon(self, bus, sender, path, interface, method, arguments, invocation):
        self.item = (sender, arguments.unpack()[0])
        invocation.return_value(None)

    def _call(self, path, interface, method, arguments):
        return self.bus.call_sync(self.item[0], path, interface, method, arguments, None,
                                  Gio.DBusCallFlags.NONE, PATIENCE, None).unpack()

    def _property(self, name):
        return self._call(self.item[1], "org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", ("org.kde.StatusNotifierItem", name)))[0]

    def _menu(self, method, arguments):
        return self._call(self._property("Menu"), "com.canonical.dbusmenu", method, arguments)

    def shows_icon(self):
        return self.item is not None and self._property("Status") == "Active"

    def entries(self):
        """What the icon's menu offers, without the keys in brackets: labels and numbers."""
        layout = self._menu("GetLayout", GLib.Variant("(iias)", (0, -1, [])))[1]
        return {entry[1]["label"].replace("_", "").split("(")[0]: entry[0]
                for entry in layout[2] if "label" in entry[1]}

    def choose(self, label):
        self._menu("Event", GLib.Variant(
            "(isvu)", (self.entries()[label], "clicked", GLib.Variant("s", ""), 0)))
