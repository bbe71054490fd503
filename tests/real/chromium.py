"""Chromium by its debugging pipe, on a profile in a throw-away home, with the extension of this folder."""

import json
import os
import pathlib
import subprocess
import time

EXTENSION = pathlib.Path(__file__).parent / "extension"
FLAGS = ["--headless=new", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
         "--disable-component-update", "--disable-sync", "--remote-debugging-pipe", "--no-sandbox",
         "--disable-features=DisableLoadExtensionCommandLineSwitch"]


class Chromium:
    """A running browser; `with` ends it."""

    def __init__(self, home):
        self.home = pathlib.Path(home)
        to_browser, self._out = os.pipe()
        self._in, from_browser = os.pipe()
        environment = {name: value for name, value in os.environ.items() if not name.startswith("XDG_")}
        environment["HOME"] = str(home)

        def give_pipes():
            # The browser reads from 3 and writes to 4; the ends may have these very numbers.
            spare = [os.dup(to_browser), os.dup(from_browser)]
            os.dup2(spare[0], 3, inheritable=True)
            os.dup2(spare[1], 4, inheritable=True)

        self._log = open(self.home / "chromium.log", "ab")
        self._process = subprocess.Popen(
            ["chromium", *FLAGS, f"--user-data-dir={self.home}/.config/chromium", f"--load-extension={EXTENSION}",
             "about:blank"],
            env=environment, preexec_fn=give_pipes, close_fds=False, stdout=self._log, stderr=self._log)
        os.close(to_browser)
        os.close(from_browser)
        self._rest = b""
        self._number = 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self.call("Browser.close")
        except EOFError:
            pass  # it closes the pipe as its answer
        self._process.wait(30)
        os.close(self._out)
        os.close(self._in)
        self._log.close()

    def call(self, method, parameters=None, session=None):
        self._number += 1
        message = {"id": self._number, "method": method, "params": parameters or {}}
        if session:
            message["sessionId"] = session
        os.write(self._out, json.dumps(message).encode() + b"\0")
        while True:
            while b"\0" not in self._rest:
                part = os.read(self._in, 65536)
                if not part:
                    raise EOFError("the browser has ended")
                self._rest += part
            text, self._rest = self._rest.split(b"\0", 1)
            answer = json.loads(text)
            if answer.get("id") == self._number:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]

    def page(self, url):
        target = self.call("Target.createTarget", {"url": url})["targetId"]
        session = self.call("Target.attachToTarget", {"targetId": target, "flatten": True})["sessionId"]
        for _ in range(100):
            try:
                if self.run(session, "document.readyState + ' ' + location.href") == f"complete {url}":
                    break
            except RuntimeError:
                pass  # the page before it was just taken down
            time.sleep(0.1)
        return session

    def run(self, session, script):
        answer = self.call("Runtime.evaluate",
                           {"expression": script, "awaitPromise": True, "returnByValue": True}, session)
        if "exceptionDetails" in answer:
            raise RuntimeError(answer["exceptionDetails"]["exception"].get("description"))
        return answer["result"].get("value")

    def ask_extension(self, session, question):
        return self.run(session, """new Promise((done) => {
            window.addEventListener("message", ({data}) => data.answer !== undefined && done(data.answer));
            window.postMessage({ask: %s}, "*");
            setTimeout(() => done("no answer"), 10000); })""" % json.dumps(question))

    @property
    def profile(self):
        return self.home / ".config/chromium/Default"
