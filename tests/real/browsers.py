#!/usr/bin/env python3
"""Real browsers on profiles that they made themselves: what a clean of everything ticked takes from them, what it leaves,
and what comes back from the Trash. Not part of the gate. Usage: tests/real/browsers.py PROBE [chromium|firefox|parts]...

`parts` shows why some folders of Chromium's are not offered: what is lost when each is removed by hand."""

import configparser
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import keeping_site as site  # noqa: E402
from chromium import Chromium  # noqa: E402
from firefox import Firefox  # noqa: E402

failures = []


def expect(what, seen, wanted):
    good = seen == wanted
    print(f"  {'ok  ' if good else 'LOST'} {what}: {seen}" + ("" if good else f", expected {wanted}"))
    if not good:
        failures.append(what)


def files_below(folder):
    """Path and digest of every file, and the text of every link."""
    found = {}
    for directory, _, names in os.walk(folder):
        for name in names:
            path = pathlib.Path(directory, name)
            key = str(path.relative_to(folder))
            found[key] = os.readlink(path) if path.is_symlink() else hashlib.sha256(path.read_bytes()).hexdigest()
    return found


def probe(program, home, *words):
    environment = {name: value for name, value in os.environ.items() if not name.startswith("XDG_")}
    answer = subprocess.run([program, "--language", "en", "--home", str(home), *words], env=environment,
                            capture_output=True, text=True)
    if answer.returncode not in (0, 1):
        raise RuntimeError(answer.stderr)
    return json.loads(answer.stdout)


def restore(home):
    """Puts everything in the Trash back where its note says, as a file manager does."""
    trash = home / ".local/share/Trash"
    places = {}
    for note in (trash / "info").glob("*.trashinfo"):
        parser = configparser.RawConfigParser()
        parser.read(note)
        places[note] = pathlib.Path(urllib.parse.unquote(parser["Trash Info"]["Path"]))
    for note, place in sorted(places.items(), key=lambda pair: pair[1]):  # a folder before what lay in it
        item = trash / "files" / note.name.removesuffix(".trashinfo")
        if place.exists():  # the browser has made a new one meanwhile
            shutil.rmtree(place) if place.is_dir() else place.unlink()
        place.parent.mkdir(parents=True, exist_ok=True)
        item.rename(place)
        note.unlink()


def wait_for_the_end():
    """A browser's helpers end after it; in a process namespace of our own they are ours to collect."""
    deadline = time.monotonic() + 20
    while time.monotonic() < deadline:
        try:
            if os.waitpid(-1, os.WNOHANG)[0] == 0:
                time.sleep(0.1)
        except ChildProcessError:
            return


def clean_all(program, home):
    """Cleans Privacy and System Junk with everything ticked; checks that only targets went, and that they come back."""
    wait_for_the_end()
    before = files_below(home)
    targets = []
    for module in ("privacy", "systemJunk"):
        for row in probe(program, home, "scan", module)["cleanupItems"]:
            print(f"  {row['title']}: {len(row['targets'])} paths, {row['description']}")
            if row["isCleanable"]:
                targets += [target["url"].removeprefix("file://") for target in row["targets"]]
        report = probe(program, home, "clean", module, "--select", "all")
        expect(f"failures of {module}", report["report"]["failures"] if "report" in report else report["failures"], [])
    inside = tuple(str(pathlib.Path(urllib.parse.unquote(path)).relative_to(home)) for path in targets)
    after = {path: digest for path, digest in files_below(home).items()
             if not path.startswith((".local/share/Trash/", ".local/state/vellmoor/"))}
    astray = [path for path, digest in before.items()
              if after.get(path) != digest and not any(path == one or path.startswith(one + "/") for one in inside)]
    expect("files changed outside the ticked paths", astray, [])
    kept = shutil.copytree(home, str(home) + ".restored", symlinks=True)
    for note in (pathlib.Path(kept) / ".local/share/Trash/info").glob("*.trashinfo"):
        note.write_text(note.read_text().replace(urllib.parse.quote(str(home)), urllib.parse.quote(str(kept))))
    restore(pathlib.Path(kept))
    restored = files_below(pathlib.Path(kept))
    expect("files not restored byte for byte", [path for path in before if restored.get(path) != before[path]], [])
    shutil.rmtree(kept)


GONE = {"cookie": None, "local": None, "database": None}


def chromium_site(browser, address, script):
    return browser.run(browser.page(address), "(async () => {" + script + "})()")


def try_chromium(program, home, address):
    print("Chromium")
    with Chromium(home) as browser:
        page = browser.page(address)
        browser.run(page, "(async () => {" + site.WRITE + "})()")
        browser.ask_extension(page, "write")
        kept = browser.ask_extension(page, "read")
        expect("the extension keeps", kept, {"setting": "stored", "database": "in the database", "cache": "cached",
                                             "bucket": "in a bucket", "bookmarks": 1, "popups": "allow"})
    clean_all(program, home)
    with Chromium(home) as browser:
        page = browser.page(address)
        expect("the extension still keeps", browser.ask_extension(page, "read"), kept)
        seen = browser.run(page, "(async () => {" + site.READ + "})()")
        expect("the site has lost", {key: seen[key] for key in GONE}, GONE)


def try_chromium_parts(_, home, address):
    print("Parts of a Chromium profile, each removed by hand")
    with Chromium(home) as browser:
        page = browser.page(address)
        browser.run(page, "(async () => {" + site.WRITE + "})()")
        browser.ask_extension(page, "write")
        profile = browser.profile
    kept = shutil.copytree(home, str(home) + ".kept", symlinks=True)
    for part in (None, "Service Worker/ScriptCache", "Service Worker/CacheStorage", "WebStorage", "Sessions"):
        shutil.rmtree(home)
        shutil.copytree(kept, home, symlinks=True)
        if part:
            shutil.rmtree(profile / part)
        with Chromium(home) as browser:
            page = browser.page(address)
            print(f"  without {part}: the extension has {browser.ask_extension(page, 'read')}")
            print(f"    the site has {browser.run(page, '(async () => {' + site.READ + '})()')}")
    shutil.rmtree(kept)


FIREFOX_WRITE = """
await PlacesUtils.bookmarks.insert({parentGuid: PlacesUtils.bookmarks.menuGuid, title: "Keep this page",
                                    url: "https://bookmark.example/"});
const login = Cc["@mozilla.org/login-manager/loginInfo;1"].createInstance(Ci.nsILoginInfo);
login.init("https://login.example", "https://login.example", null, "user", "secret", "", "");
await Services.logins.addLoginAsync(login);
Services.prefs.setIntPref("browser.startup.page", 3);
const principal = Services.scriptSecurityManager.createContentPrincipal(Services.io.newURI("https://popups.example"), {});
Services.perms.addFromPrincipal(principal, "popup", Services.perms.ALLOW_ACTION);
"""

FIREFOX_READ = """
const principal = Services.scriptSecurityManager.createContentPrincipal(Services.io.newURI("https://popups.example"), {});
return {bookmarks: (await PlacesUtils.bookmarks.search("Keep this page")).length,
        logins: (await Services.logins.getAllLogins()).map(l => l.password),
        page: Services.prefs.getIntPref("browser.startup.page"),
        popup: Services.perms.testPermissionFromPrincipal(principal, "popup")};
"""


def try_firefox(program, home, address):
    print("Firefox")
    with Firefox(home) as browser:
        browser.open(address)
        browser.run(site.WRITE)
        browser.run(FIREFOX_WRITE, chrome=True)
        kept = browser.run(FIREFOX_READ, chrome=True)
        expect("the profile keeps", kept, {"bookmarks": 1, "logins": ["secret"], "page": 3, "popup": 1})
        profile = browser.profile
    data = profile / "storage/default/moz-extension+++00000000-0000-4000-8000-000000000001/idb/kept.sqlite"
    data.parent.mkdir(parents=True)
    data.write_text("data of an extension")
    clean_all(program, home)
    expect("the data of an extension", data.read_text() if data.exists() else None, "data of an extension")
    with Firefox(home) as browser:
        expect("the profile still keeps", browser.run(FIREFOX_READ, chrome=True), kept)
        browser.open(address)
        seen = browser.run(site.READ)
        expect("the site has lost", {key: seen[key] for key in GONE}, GONE)


def enter_own_processes(words):
    """Starts again where no process of anybody else is seen: a browser that another session runs is none of ours."""
    mark = "VELLMOOR_OWN_PROCESSES"
    if not os.environ.get(mark):
        os.environ[mark] = "1"
        as_root = [] if os.geteuid() == 0 else ["--map-root-user"]
        os.execvp("unshare", ["unshare", *as_root, "--pid", "--fork", "--mount-proc", sys.executable, __file__, *words])


def main(words):
    enter_own_processes(words)
    program = words[0]
    wanted = words[1:] or ["chromium", "firefox", "parts"]
    tries = {"chromium": try_chromium, "firefox": try_firefox, "parts": try_chromium_parts}
    needs = {"chromium": "chromium", "firefox": "firefox-esr", "parts": "chromium"}
    missing = [name for name in wanted if not shutil.which(needs[name])]
    for name in missing:
        print(f"passed over: {name}, since {needs[name]} is not here")
    if missing == wanted:
        return 77
    address = site.serve()
    for name in [one for one in wanted if one not in missing]:
        with tempfile.TemporaryDirectory(prefix="vellmoor-real-") as folder:
            home = pathlib.Path(folder).resolve() / "home"
            home.mkdir()
            tries[name](program, home, address)
    print(f"{len(failures)} lost: {', '.join(failures)}" if failures else "nothing lost that should stay")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
