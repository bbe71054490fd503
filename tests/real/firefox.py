"""Firefox by Marionette, on a profile that it made itself in a throw-away home."""

import json
import os
import pathlib
import socket
import subprocess
import time

PREFERENCES = """user_pref("marionette.port", {port});
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("app.update.enabled", false);
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
"""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Firefox:
    """A running browser; `with` ends it."""

    def __init__(self, home):
        self.home = pathlib.Path(home)
        environment = {name: value for name, value in os.environ.items() if not name.startswith("XDG_")}
        environment.update(HOME=str(home), MOZ_HEADLESS="1")
        self._log = open(self.home / "firefox.log", "ab")
        if not self.profiles():
            subprocess.run(["firefox-esr", "--headless", "-CreateProfile", "default"], env=environment, check=True,
                           stdout=self._log, stderr=self._log)
        self.profile = self.profiles()[0]
        port = free_port()
        (self.profile / "user.js").write_text(PREFERENCES.format(port=port))
        self._process = subprocess.Popen(["firefox-esr", "--headless", "--marionette",
                                          "-remote-allow-system-access", "-P", "default"],
                                         env=environment, stdout=self._log, stderr=self._log)
        self._number = 0
        self._socket = self._connect(port)
        self._read()  # its greeting
        self.call("WebDriver:NewSession", {})

    def profiles(self):
        roots = [self.home / ".mozilla/firefox", self.home / ".config/mozilla/firefox"]
        return [child for root in roots for child in root.glob("*.default*") if child.is_dir()]

    def _connect(self, port):
        for _ in range(300):
            try:
                return socket.create_connection(("127.0.0.1", port), timeout=60)
            except OSError:
                if self._process.poll() is not None:
                    raise RuntimeError("Firefox has ended") from None
                time.sleep(0.2)
        raise RuntimeError("Firefox does not answer")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.call("Marionette:Quit", {"flags": ["eForceQuit"]})
        self._process.wait(60)
        self._socket.close()
        self._log.close()

    def _read(self):
        text = b""
        while b":" not in text:
            part = self._socket.recv(1)
            if not part:
                raise EOFError("Firefox has ended")
            text += part
        length = int(text[:-1])
        body = b""
        while len(body) < length:
            body += self._socket.recv(length - len(body))
        return json.loads(body)

    def call(self, command, parameters):
        self._number += 1
        text = json.dumps([0, self._number, command, parameters]).encode()
        self._socket.sendall(b"%d:%s" % (len(text), text))
        _, _, error, result = self._read()
        if error:
            raise RuntimeError(f"{command}: {error['error']}: {error['message']}")
        return result

    def open(self, url):
        self.call("Marionette:SetContext", {"value": "content"})
        self.call("WebDriver:Navigate", {"url": url})

    def run(self, script, chrome=False):
        """An asynchronous function body; in the page, or in the browser itself."""
        self.call("Marionette:SetContext", {"value": "chrome" if chrome else "content"})
        wrapped = ("const done = arguments[0]; (async () => {" + script +
                   "})().then(v => done({v: v ?? null}), e => done({e: String(e)}))")
        answer = self.call("WebDriver:ExecuteAsyncScript", {"script": wrapped, "args": []})["value"]
        if "e" in answer:
            raise RuntimeError(answer["e"])
        return answer["v"]
