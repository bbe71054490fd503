"""A file manager on the session bus that only writes down what it is asked for."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

import processes  # noqa: E402

# https://www.freedesktop.org/wiki/Specifications/file-manager-interface/
INTERFACE = """<node><interface name="org.freedesktop.FileManager1">
  <method name="ShowFolders"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
  <method name="ShowItems"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
  <method name="ShowItemProperties"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
</interface></node>"""


class FileManager:
    """Answers while something waits with `processes.wait_for`. `refuses` names methods that it answers with an error."""

    def __init__(self, session, refuses=()):
        self.calls = []
        self._refuses = refuses
        self._bus = Gio.DBusConnection.new_for_address_sync(
            session.environment["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self._bus.set_exit_on_close(False)
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        self._bus.register_object("/org/freedesktop/FileManager1", interface, self._called, None, None)
        self._owned = False
        Gio.bus_own_name_on_connection(self._bus, interface.name, Gio.BusNameOwnerFlags.NONE, self._got_name, None)
        processes.wait_for("the file manager's name", lambda: self._owned)

    def _got_name(self, *_):
        self._owned = True

    def _called(self, _bus, _sender, _path, _interface, method, arguments, invocation):
        addresses, startup = arguments.unpack()
        self.calls.append((method, addresses, startup))
        if method in self._refuses:
            invocation.return_dbus_error("org.freedesktop.DBus.Error.NotSupported", "not here")
        else:
            invocation.return_value(GLib.Variant("()"))

    def wait_for_call(self):
        """The only call so far: method, addresses, startup identifier."""
        processes.wait_for("a call", lambda: self.calls)
        (call,) = self.calls
        return call
