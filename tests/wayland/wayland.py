"""A Wayland desktop of its own: sway without a screen or any device, its one output in memory."""

import json
import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "desktop"))

import processes  # noqa: E402
import program  # noqa: E402
import session  # noqa: E402

TOKEN_PROGRAM = os.environ.get("VELLMOOR_WAYLAND_TOKEN", "")
CONFIGURATION = """
xwayland disable
output HEADLESS-1 mode 1400x1000 scale {scale}
default_border none
focus_on_window_activation {activation}
focus_follows_mouse no
"""


class WaylandSession(session.Session):
    tools = ("sway", "swaymsg", "wtype", "wl-copy", "wl-paste", "grim", "dbus-daemon")

    def __init__(self, scale=1, activation="focus"):
        super().__init__()
        self._configuration = CONFIGURATION.format(scale=scale, activation=activation)

    def _start_desktop(self):
        self._start_bus()
        run = self.folder / "run"
        (run / "sway.conf").write_text(self._configuration, encoding="utf-8")
        self.environment.update(WLR_BACKENDS="headless", WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1", QT_QPA_PLATFORM="wayland")
        self._start_in_background("sway", "sway", "--config", str(run / "sway.conf"))
        self.environment["SWAYSOCK"] = str(processes.wait_for("sway", lambda: next(iter(run.glob("sway-ipc.*.sock")), None), 20))
        display = processes.wait_for("the display", lambda: [file for file in run.glob("wayland-*") if file.suffix != ".lock"])
        self.environment["WAYLAND_DISPLAY"] = display[0].name
        processes.wait_for("the output", lambda: self.ask("get_outputs"))
        # A keyboard that stays: a seat without one gives the focus to nobody, and whoever types takes a moment to be heard.
        self._start_in_background("keyboard", "wtype", "-s", str(10**8))

    def ask(self, what):
        return json.loads(self.run("swaymsg", "--raw", "--type", what))

    def tell(self, command):
        self.run("swaymsg", command)

    def nodes(self):
        """Every window, in sway's words."""
        def below(node):
            for child in node["nodes"] + node["floating_nodes"]:
                if child.get("pid") and child["type"] in ("con", "floating_con"):
                    yield child
                yield from below(child)

        return list(below(self.ask("get_tree")))

    def token(self):
        """What a panel hands to the program that it starts."""
        return self.run(TOKEN_PROGRAM).strip()

    def type(self, *words):
        self.run("wtype", "-s", "200", *words, "-s", "200")

    def tray_icon(self):
        return 0

    def picture(self, file):
        self.run("grim", str(file))
        return file


class WaylandProgram(program.Program):
    """The program in such a session; its window is sway's node."""

    def wait_for_window(self):
        processes.wait_for("the window", self.node)
        processes.wait_for("the window to be active", self.is_active)

    def node(self):
        if self.process.poll() is not None:
            raise AssertionError(f"ended with {self.process.returncode}: {self._session.log('program')}")
        return next((node for node in self._session.nodes() if node["pid"] == self.pid), None)

    def is_active(self):
        node = self.node()
        return node is not None and node["focused"]
