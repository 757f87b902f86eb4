"""A desktop's tray on a session bus of its own: shows nothing, but takes icons and uses their menus.

Needs Debian's python3-gi.
"""

import os
import threading

from gi.repository import Gio, GLib

WATCHER = """<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
<signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
</interface></node>"""
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
PATIENCE = 5000  # milliseconds for an answer


class TrayHost:
    """Takes one icon at a time. The bus is the session's for every process started after this."""

    def __init__(self):
        self.daemon = Gio.TestDBus.new(Gio.TestDBusFlags.NONE)
        self.daemon.up()
        # It takes the display away from this process, and tells only the C library of the bus.
        os.environ.update(DISPLAY=os.environ["DISPLAY"],
                          DBUS_SESSION_BUS_ADDRESS=self.daemon.get_bus_address())
        self.item = None
        self.bus = Gio.DBusConnection.new_for_address_sync(
            self.daemon.get_bus_address(),
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        interface = Gio.DBusNodeInfo.new_for_xml(WATCHER).interfaces[0]
        self.bus.register_object("/StatusNotifierWatcher", interface, self._on_call,
                                 self._on_get, None)
        self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "RequestName", GLib.Variant("(su)", ("org.kde.StatusNotifierWatcher", 0)),
                           None, Gio.DBusCallFlags.NONE, PATIENCE, None)
        self.loop = GLib.MainLoop()
        self.thread = threading.Thread(target=self.loop.run)
        self.thread.start()

    def close(self):
        self.loop.quit()
        self.thread.join()
        self.bus.close_sync(None)
        self.daemon.down()

    def _on_call(self, bus, sender, path, interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            self.item = (sender, arguments.unpack()[0])
        invocation.return_value(None)

    def _on_get(self, bus, sender, path, interface, name):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", []),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]

    def _call(self, path, interface, method, arguments):
        return self.bus.call_sync(self.item[0], path, interface, method, arguments, None,
                                  Gio.DBusCallFlags.NONE, PATIENCE, None).unpack()

    def _property(self, name):
        return self._call(self.item[1], "org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", (ITEM, name)))[0]

    def shows_icon(self):
        return self.item is not None and self._property("Status") == "Active"

    def _entries(self):
        layout = self._call(self._property("Menu"), MENU, "GetLayout",
                            GLib.Variant("(iias)", (0, -1, [])))[1]
        return {entry[1]["label"].replace("_", ""): entry[0]
                for entry in layout[2] if "label" in entry[1]}

    def labels(self):
        """What the icon's menu offers, without the keys in brackets."""
        return [label.split("(")[0] for label in self._entries()]

    def choose(self, label):
        number = next(n for text, n in self._entries().items() if text.split("(")[0] == label)
        self._call(self._property("Menu"), MENU, "Event",
                   GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("s", ""), 0)))
