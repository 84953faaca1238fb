"""What a desktop and the network would be to Swabby: a place for its status item, and a model."""

import json
import pathlib
import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

from gi.repository import Gio, GLib

WATCHER = "org.kde.StatusNotifierWatcher"


class StatusPlace:
    """Takes status items on the session bus, and presses them as a panel does."""

    def __init__(self):
        self.items = []
        self._is_ready = threading.Event()
        # Its own loop: whoever waits for Swabby's answer must still be able to answer Swabby.
        threading.Thread(target=self._serve, daemon=True).start()
        if not self._is_ready.wait(10):
            raise AssertionError("no place for a status item on the session bus")

    def press(self):
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        bus.call_sync(self.items[-1], "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
                      GLib.Variant("(ii)", (0, 0)), None, Gio.DBusCallFlags.NONE, 10_000, None)

    def give_up(self):
        """As when the panel ends: what starts from now on finds no place."""
        self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReleaseName",
                            GLib.Variant("(s)", (WATCHER,)), None, Gio.DBusCallFlags.NONE, 10_000, None)

    def _serve(self):
        context = GLib.MainContext()
        context.push_thread_default()
        address = Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION)
        flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
                 | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        bus = self._bus = Gio.DBusConnection.new_for_address_sync(address, flags)
        description = pathlib.Path(__file__).with_name("status_notifier_watcher.xml").read_text(encoding="utf-8")
        interface = Gio.DBusNodeInfo.new_for_xml(description).interfaces[0]
        bus.register_object("/StatusNotifierWatcher", interface, self._take, self._tell, None)
        Gio.bus_own_name_on_connection(bus, WATCHER, Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: self._is_ready.set(), None)
        GLib.MainLoop.new(context, False).run()

    def _take(self, _bus, sender, _path, _interface, method, _arguments, call):
        if method == "RegisterStatusNotifierItem":
            self.items.append(sender)
        call.return_value(None)

    def _tell(self, _bus, _sender, _path, _interface, name):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", self.items),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]


class Model:
    """A language model on the loopback that always blames the same program."""

    def __init__(self, culprit):
        answer = json.dumps({"appToQuit": culprit, "explanation": f"{culprit} is busy."})
        reply = json.dumps({"id": "1", "content": [{"type": "text", "text": answer}]}).encode()

        class Handler(BaseHTTPRequestHandler):
            def do_POST(self):
                self.rfile.read(int(self.headers.get("Content-Length", 0)))
                self.send_response(200)
                self.send_header("Content-Length", str(len(reply)))
                self.end_headers()
                self.wfile.write(reply)

            def log_message(self, *_):
                pass

        server = ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.address = f"http://127.0.0.1:{server.server_port}/"
        threading.Thread(target=server.serve_forever, daemon=True).start()
