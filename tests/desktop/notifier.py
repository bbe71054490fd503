"""The newer kind of tray, which speaks over the session bus: its watcher, and a host that works the item.
https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem/"""

import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

import processes  # noqa: E402

WATCHER = """<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>"""
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"


class Notifier:
    """Comes with its creation; `item` is the bus name of the program's item, empty until there is one. It answers on a
    thread of its own, since the program waits for it while the test waits for the program."""

    def __init__(self, session, has_host=True):
        self.item = ""
        self._has_host = has_host
        self._owned = False
        self._address = session.environment["DBUS_SESSION_BUS_ADDRESS"]
        self._bus = self._connect()
        threading.Thread(target=self._answer, daemon=True).start()
        processes.wait_for("the watcher's name", lambda: self._owned)

    def _connect(self):
        kind = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        bus = Gio.DBusConnection.new_for_address_sync(self._address, kind, None, None)
        bus.set_exit_on_close(False)
        return bus

    def _answer(self):
        context = GLib.MainContext()
        context.push_thread_default()
        self._served = bus = self._connect()
        interface = Gio.DBusNodeInfo.new_for_xml(WATCHER).interfaces[0]
        bus.register_object("/StatusNotifierWatcher", interface, self._called, self._asked, None)
        Gio.bus_own_name_on_connection(bus, interface.name, Gio.BusNameOwnerFlags.NONE, self._got_name, None)
        GLib.MainLoop(context).run()

    def _got_name(self, *_):
        self._owned = True

    def _called(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            name = arguments.unpack()[0]
            self.item = sender if name.startswith("/") else name
        invocation.return_value(None)

    def _asked(self, _bus, _sender, _path, _interface, name):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", [self.item] if self.item else []),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", self._has_host),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]

    def bring_host(self):
        """The panel that shows the items comes after its watcher."""
        self._has_host = True
        self._served.emit_signal(None, "/StatusNotifierWatcher", "org.kde.StatusNotifierWatcher",
                                 "StatusNotifierHostRegistered", None)

    def wait_for_item(self):
        processes.wait_for("the status item", lambda: self.item)

    def _call(self, path, interface, method, arguments=None):
        return self._bus.call_sync(self.item, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                                   int(processes.PATIENCE * 1000), None).unpack()

    def property(self, name):
        return self._call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", (ITEM, name)))[0]

    def activate(self):
        """As a left click does."""
        self._call("/StatusNotifierItem", ITEM, "Activate", GLib.Variant("(ii)", (0, 0)))

    def menu(self):
        """The menu's lines by their titles, separators left out."""
        path = self.property("Menu")
        self._call(path, MENU, "AboutToShow", GLib.Variant("(i)", (0,)))
        layout = self._call(path, MENU, "GetLayout", GLib.Variant("(iias)", (0, -1, [])))[1]
        lines = [(identifier, facts) for identifier, facts, _ in layout[2]]
        return {facts["label"]: identifier for identifier, facts in lines if facts.get("type") != "separator"}

    def choose(self, title):
        self._call(self.property("Menu"), MENU, "Event",
                   GLib.Variant("(isvu)", (self.menu()[title], "clicked", GLib.Variant("s", ""), 0)))
