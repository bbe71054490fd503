"""A desktop of its own: display, window manager, session bus, accessibility bus and tray, all below one temporary
folder. Nothing of the machine's own session is used."""

import contextlib
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile

import processes

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={run}/bus</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{run}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
# What the system's cache of fonts lacks is kept outside the home, in which only the program changes something.
FONTS = """<fontconfig>
  <cachedir>{cache}</cachedir>
  <include ignore_missing="yes">/etc/fonts/fonts.conf</include>
</fontconfig>
"""
ACCESSIBILITY_SERVICE = pathlib.Path("/usr/share/dbus-1/services/org.a11y.Bus.service")
TOOLS = ("Xvfb", "openbox", "trayer", "xdotool", "xwininfo", "xprop", "xev", "dbus-daemon")


class Session:
    """Starts in `with`, ends with everything that was started in it."""

    _used = False
    tools = TOOLS

    def __init__(self, tray=False):
        self._wants_tray = tray
        self.folder = None

    def __enter__(self):
        if Session._used:
            raise AssertionError("one test a process: the accessibility library is bound to its first bus (use ctest)")
        Session._used = True
        missing = [tool for tool in self.tools if shutil.which(tool, path=os.defpath) is None]
        if missing:
            raise AssertionError(f"missing: {' '.join(missing)} (scripts/setup.sh installs them)")
        processes.adopt_orphans()
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vellmoor-desktop-"))
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        processes.end_descendants()
        self.remove(self.folder)

    @staticmethod
    def remove(folder):
        """With everything below it, read-only folders, too."""
        processes.run(["chmod", "-R", "u+rwX", str(folder)])
        shutil.rmtree(folder)

    def _start(self):
        for name in ("home", "run", "run/services", "commands", "data/applications", "logs"):
            (self.folder / name).mkdir(mode=0o700, parents=True)
        (self.folder / "fonts.conf").write_text(FONTS.format(cache=self.folder / "fonts"), encoding="utf-8")
        self.home = self.folder / "home"
        self.commands = self.folder / "commands"
        self.applications = self.folder / "data/applications"
        self.environment = {
            "PATH": os.defpath,
            "FONTCONFIG_FILE": str(self.folder / "fonts.conf"),
            "HOME": str(self.home),
            "LC_ALL": "C.UTF-8",
            "TMPDIR": str(self.folder),
            "XDG_RUNTIME_DIR": str(self.folder / "run"),
            "XDG_CONFIG_HOME": str(self.home / ".config"),
            "XDG_CACHE_HOME": str(self.home / ".cache"),
            "XDG_DATA_HOME": str(self.home / ".local/share"),
            "XDG_STATE_HOME": str(self.home / ".local/state"),
        }
        self._start_desktop()
        # What this process itself looks at is this session, too.
        os.environ.clear()
        os.environ.update(self.environment)

    def _start_desktop(self):
        self._start_display()
        self._start_bus()
        self._start_in_background("window manager", "openbox", "--sm-disable")
        self._keep_window_manager_awake()
        processes.wait_for("the window manager", lambda: "window id" in self.property("_NET_SUPPORTING_WM_CHECK"))
        if self._wants_tray:
            self.start_tray()

    def _keep_window_manager_awake(self):
        """Openbox now and then sleeps on what it has read already, until something else happens; on a desktop that is
        soon, here it may be never."""
        wake = "xprop -root -f _VELLMOOR_TEST_WAKE 32c -set _VELLMOOR_TEST_WAKE 1"
        self._start_in_background("waker", "sh", "-c", f"while {wake}; do sleep 1; done")

    def _start_display(self):
        reader, writer = os.pipe()
        # "-r": on a busy machine a key would be down long enough to be repeated.
        self._start_in_background("display", "Xvfb", "-displayfd", str(writer), "-screen", "0", "1400x1000x24",
                                  "-nolisten", "tcp", "-noreset", "-r", pass_fds=(writer,))
        os.close(writer)
        with os.fdopen(reader, encoding="ascii") as pipe:
            number = pipe.readline().strip()
        if not number:
            raise AssertionError("Xvfb found no display: " + self.log("display"))
        self.environment["DISPLAY"] = f":{number}"

    def _start_bus(self):
        run = self.folder / "run"
        # Only what is put here can be started by the bus, whatever is installed on the machine. The line for systemd
        # goes, since the bus itself has to start the service.
        lines = ACCESSIBILITY_SERVICE.read_text(encoding="utf-8").splitlines()
        service = [line for line in lines if not line.startswith("SystemdService")]
        (run / "services" / ACCESSIBILITY_SERVICE.name).write_text("\n".join(service) + "\n", encoding="utf-8")
        (run / "bus.conf").write_text(BUS_CONFIGURATION.format(run=run), encoding="utf-8")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={run}/bus"
        self.bus = self._start_in_background("bus", "dbus-daemon", f"--config-file={run}/bus.conf", "--nofork")
        processes.wait_for("the session bus", (run / "bus").exists)

    def stop_bus(self):
        self.bus.kill()
        self.bus.wait(processes.PATIENCE)

    def stop_accessibility(self):
        """Ends the bus that screen readers use, its registry with it."""
        ended = 0
        for pid in processes.descendants(os.getpid()):
            # Some end by themselves meanwhile, when the one that started them has gone.
            with contextlib.suppress(FileNotFoundError, ProcessLookupError):
                if "at-spi" in pathlib.Path(f"/proc/{pid}/cmdline").read_text(encoding="utf-8", errors="replace"):
                    os.kill(pid, signal.SIGKILL)
                    ended += 1
        if not ended:
            raise AssertionError("no accessibility bus runs")

    def start_tray(self):
        self.tray = self._start_in_background("tray", "trayer", "--edge", "top", "--align", "right", "--width", "200",
                                              "--widthtype", "pixel", "--height", "32", "--SetDockType", "true")
        processes.wait_for("the tray", self._tray_panel)

    def _start_in_background(self, name, *arguments, **more):
        with open(self.folder / "logs" / name, "wb") as log:
            return processes.start(arguments, self.environment, stdout=log, stderr=log, **more)

    def log(self, name):
        return (self.folder / "logs" / name).read_text(encoding="utf-8", errors="replace")

    def run(self, *arguments):
        return processes.run(arguments, self.environment)

    def property(self, name):
        """A property of the root window, as xprop prints it."""
        return self.run("xprop", "-root", name)

    def stop_tray(self):
        self.tray.terminate()
        self.tray.wait(processes.PATIENCE)

    def _tree(self, *window):
        """The windows below one, line by line; None when one of them went while they were listed."""
        done = subprocess.run(["xwininfo", *window, "-tree"], env=self.environment, text=True, capture_output=True,
                              timeout=processes.PATIENCE, check=False)
        return done.stdout.splitlines() if done.returncode == 0 else None

    def _tray_panel(self):
        """The tray's window, empty without one."""
        listing = processes.wait_for("a list of all windows", lambda: self._tree("-root"))
        return next((line.split()[0] for line in listing if '("panel" "trayer")' in line), "")

    def tray_icon(self):
        """The window of the status item inside the tray, 0 while there is none."""
        listing = None
        while listing is None:
            panel = self._tray_panel()
            listing = self._tree("-id", panel) if panel else []
        found = [line.split()[0] for line in listing if '"vellmoor"' in line.lower()]
        return int(found[-1], 16) if found else 0

    def place(self, window):
        """Left, top, width and height of a window on the screen."""
        lines = self.run("xwininfo", "-id", str(window)).splitlines()
        facts = dict(line.strip().split(":", 1) for line in lines if ":" in line and "id:" not in line)
        names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(facts[name]) for name in names)

    def active_window(self):
        shown = self.property("_NET_ACTIVE_WINDOW").split()[-1]
        return int(shown, 16) if shown.startswith("0x") else 0

    def start_other_window(self):
        """A window of another program, over the middle of the screen; its identifier."""
        self._start_in_background("other window", "xev", "-name", "Other", "-geometry", "900x700+200+100")
        return processes.wait_for("the other window", lambda: self.windows("--name", "^Other$"))[0]

    def windows(self, *criteria):
        """The shown windows that xdotool finds."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", *criteria], env=self.environment, text=True,
                               capture_output=True, timeout=processes.PATIENCE, check=False)
        return [int(window) for window in found.stdout.split()]

    def command(self, name, status=0):
        """Puts a command on the program's PATH that writes its arguments, a line each time; where it writes them. Its environment
        stands in the file of that name and ".environment"."""
        record = self.folder / "run" / f"{name}.arguments"
        script = self.commands / name
        script.write_text(f"#!/bin/sh\nexport -p >'{record}.environment'\nprintf '%s\\n' \"$*\" >>'{record}'\nexit {status}\n",
                          encoding="utf-8")
        script.chmod(0o755)
        return record

    def application(self, identifier, *, takes=""):
        """Installs an application whose command is recorded as in `command`; it takes files of the MIME type."""
        record = self.command(identifier)
        (self.applications / f"{identifier}.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName={identifier}\nExec={self.commands / identifier} %u\n"
            f"MimeType={takes};\n", encoding="utf-8")
        if takes:
            with open(self.applications / "mimeapps.list", "a", encoding="utf-8") as defaults:
                defaults.write(f"[Default Applications]\n{takes}={identifier}.desktop\n")
        return record
