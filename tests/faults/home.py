"""A throw-away home from a seed, with everything in it that has ever hurt a cleaner.

All paths are bytes, relative to the area of the run: "home", the folders "precious" and "root" beside it. A home also says
what a scan may offer (`offers`: nothing else may ever be ticked) and what cannot be moved (`hindered`)."""

import os
import stat

import trashes

DATA = b"home/.local/share"
TRASH = DATA + b"/Trash"
BASES = (b"home/.cache", b"home/.config", DATA, b"home/.local/state", b"home/Documents", b"home/Downloads")

NAMES = (b"plain", b"two words", b"a.tar.gz", b".hidden", "Müll".encode(), "垃圾".encode(), b"100%", b"%41%2F", b"-rf",
         b"new\nline", b"tab\there", b"quote'\"", b"\xff\xfe", b"half\xe5\x9e", b"back\\slash", b"x.trashinfo", b"star*?[",
         b"trailing ", b"$HOME", b"a;b&c", b"e\xcc\x81", b"\x01\x7f")
NEVER_CACHES = (b"rclone", b"keyring-Z", b"borg", b"zsh", b"evolution", b"keepassxc", b"obexd", b"ibus")
CACHES = (b"thumbnails", b"spotify", b"fontconfig", b"mesa_shader_cache")


class Home:
    def __init__(self, area, rng):
        self.area = os.fsencode(area)
        self.rng = rng
        self.offers = set()
        self.hindered = set()
        self.trashes = []  # where something may go, and be removed from
        self.aliases = {}  # folders that the user reaches by a link, and what they really are
        self._number = 0

    # What it is made of

    def path(self, relative):
        return self.area + b"/" + relative

    def chance(self, probability):
        return self.rng.random() < probability

    def name(self, ending=b"", limit=255):
        """A name that no other call answers, however it is written down: the number in it sees to that."""
        self._number += 1
        number = b"%d" % self._number
        if self.chance(0.1):
            size = self.rng.choice((limit, limit - 1, 246, 245, 244, 240, 239, 200))
            filler = self.rng.choice((b"n", "ü".encode(), "圾".encode()))
            body = filler * (min(size, limit) // len(filler))
            return body[:min(size, limit) - len(number) - len(ending)] + number + ending
        if self.chance(0.45):
            return b"item" + number + ending
        base = self.rng.choice(NAMES)
        stem, dot, last = base.rpartition(b".")
        return (stem + number + dot + last if stem else base + number) + ending

    def folder(self, relative, mode=0o755):
        os.makedirs(self.path(relative), exist_ok=True)
        if mode != 0o755:
            os.chmod(self.path(relative), mode)
        return relative

    def file(self, relative, data=None, days=1, mode=0o644):
        path = self.path(relative)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        if data is None:
            data = self.rng.randbytes(self.rng.randrange(2500))
        with open(path, "wb") as out:
            out.write(data)
        then = os.stat(path).st_mtime - days * 86400
        os.utime(path, (then, then))
        if mode != 0o644:
            os.chmod(path, mode)
        return relative

    def link(self, relative, target):
        os.makedirs(os.path.dirname(self.path(relative)), exist_ok=True)
        os.symlink(target, self.path(relative))
        return relative

    def _strange(self, relative):
        """Something that is neither a file nor a folder of the ordinary kind."""
        kind = self.rng.randrange(9)
        path = self.path(relative)
        if kind == 0:
            os.mkfifo(path)
        elif kind == 1:
            os.mknod(path, stat.S_IFSOCK | 0o600)
        elif kind == 2:
            with open(path, "wb") as out:
                out.truncate(self.rng.choice((1 << 20, 1 << 33)))
                out.write(b"start")
        elif kind == 3:
            try:
                os.link(self.path(b"home/Documents/thesis.odt"), path)
            except OSError:  # another disk
                self.file(relative)
        elif kind == 4:
            self.file(relative, mode=self.rng.choice((0o400, 0o000)))
        else:
            self.link(relative, self.rng.choice((
                self.path(b"precious"), self.path(b"precious/letter.txt"), b"nowhere", os.path.basename(relative), b"..",
                self.path(b"home/Documents"), b"/", self.path(b"precious/album"))))
        return relative

    def _deep(self, relative):
        depth = self.rng.choice((5, 12, 40, 200))
        self.folder(relative + b"/d" * depth)
        self.file(relative + b"/d" * depth + b"/bottom")

    def tree(self, relative, size=6, level=0):
        """A folder with a little of everything."""
        self.folder(relative)
        for _ in range(self.rng.randrange(size)):
            child = relative + b"/" + self.name()
            choice = self.rng.random()
            if choice < 0.22 and level < 3:
                self.tree(child, size, level + 1)
            elif choice < 0.26:
                self._deep(child)
            elif choice < 0.45:
                self._strange(child)
            else:
                self.file(child)
        if level and self.chance(0.15):
            os.chmod(self.path(relative), self.rng.choice((0o555, 0o500, 0o000, 0o1777)))
        return relative

    def thing(self, relative):
        """A file, a tree or a strange thing."""
        choice = self.rng.random()
        if choice < 0.55:
            return self.tree(relative)
        if choice < 0.85:
            return self.file(relative)
        return self._strange(relative)

    def real(self, relative):
        """The path without the user's own links."""
        for link, folder in self.aliases.items():
            if relative.startswith(link + b"/"):
                return folder + relative[len(link):]
        return relative

    def offer(self, relative):
        self.offers.add(relative)
        return relative

    def _close_some(self, relative):
        """Sometimes a folder that its owner may not write: it cannot change its parent."""
        path = self.path(relative)
        if self.chance(0.06) and stat.S_ISDIR(os.lstat(path).st_mode):
            os.chmod(path, self.rng.choice((0o555, 0o500, 0o000)))
            self.hindered.add(relative)

    # What lies in it

    def build(self, module):
        for base in BASES:
            self.folder(base)
        self.folder(b"root")
        self.folder(b"aside")
        self._precious()
        self._documents()
        parts = {"systemJunk": (self._caches, self._logs, self._developer, self._downloads, self._flatpak),
                 "privacy": (self._chromium, self._firefox), "trash": (), "largeFiles": (self._large,),
                 "appUninstaller": (self._applications,),
                 "smartScan": (self._caches, self._logs, self._downloads, self._chromium),
                 "everything": (self._caches, self._logs, self._developer, self._downloads, self._flatpak, self._chromium,
                                self._firefox, self._large, self._applications)}
        for part in parts[module]:
            part()
        self._trash(fullness=9 if module in ("trash", "smartScan", "everything") else 3)

    def _precious(self):
        """Outside the home: what links lead to. Shaped like what a cleaner looks for."""
        self.file(b"precious/letter.txt", b"Dear all,\n")
        self.file(b"precious/album/one.jpg")
        self.file(b"precious/album/two.jpg")
        self.file(b"precious/Trash/files/item1", b"in somebody else's Trash")
        self.file(b"precious/Trash/info/item1.trashinfo", trashes.written(b"/precious/item1"))
        self.file(b"precious/Trash/directorysizes", b"4096 1700000000 item1\n")
        self.folder(b"precious/Trash/files/folder")
        self.file(b"precious/Trash/files/folder/kept", b"kept")

    def _documents(self):
        self.file(b"home/Documents/thesis.odt", b"years of work" * 40)
        self.file(b"home/Documents/" + self.name())
        self.file(b"home/.ssh/id_ed25519", b"secret", mode=0o600)
        self.file(b"home/.config/user.conf")
        self.file(DATA + b"/keyrings/login.keyring", b"locked", mode=0o600)

    def _caches(self):
        for name in self.rng.sample(NEVER_CACHES, 3):
            self.tree(b"home/.cache/" + name, 3)
        names = self.rng.sample(CACHES, 2) + [self.name() for _ in range(self.rng.randrange(1, 7))]
        for name in names:
            path = self.thing(b"home/.cache/" + name)
            is_link = os.path.islink(self.path(path))
            if not name.startswith(b".") and not is_link:
                self.offer(path)
                self._close_some(path)

    def _logs(self):
        for path in (b"home/.xsession-errors", DATA + b"/xorg/Xorg.0.log", b"home/.local/state/app/session.log",
                     b"home/.local/state/app/old/session.log.1", b"home/hs_err_pid77.log"):
            if self.chance(0.6):
                self.offer(self.file(path))
        if self.chance(0.5):
            self.folder(b"home/.config/Slack/GPUCache")
            self.offer(self.tree(b"home/.config/Slack/logs", 4))
        self.file(b"home/.config/hexchat/logs/chat.log", b"a chat, not a log")
        self.file(b"home/.local/state/weechat/chat.log", b"a chat as well")

    def _developer(self):
        for path in (b"home/.npm/_cacache", b"home/.cargo/registry/cache", b"home/.cargo/registry/src", b"home/.cache/pip",
                     b"home/.gradle/caches"):
            if self.chance(0.4):
                self.offer(self.tree(path, 5))
        if self.chance(0.5):  # Go's modules are read-only
            self.offer(b"home/go/pkg/mod")
            self.tree(b"home/go/pkg/mod/example.org/lib@v1", 5)
            os.chmod(self.path(b"home/go/pkg/mod/example.org/lib@v1"), 0o555)
        self.file(b"home/go/src/own.go", b"package own")
        self.file(b"home/.cargo/credentials.toml", b"token")

    def _downloads(self):
        for ending in self.rng.sample((b".deb", b".iso", b".zip", b".AppImage", b".rpm"), 3):
            self.offer(self.file(b"home/Downloads/" + self.name(ending).lstrip(b"."), days=30))
        self.file(b"home/Downloads/fresh.zip", days=0)
        self.file(b"home/Downloads/invoice.pdf", days=90)

    def _flatpak(self):
        for identity in self.rng.sample((b"org.gnome.Maps", b"org.example.App", b"com.valvesoftware.Steam"), 2):
            base = b"home/.var/app/" + identity
            self.offer(self.tree(base + b"/cache", 5))
            self.file(base + b"/config/settings")
            self.file(base + b"/data/letters.db")

    def _chromium(self):
        profile = b"home/.config/chromium/Default/"
        for name in (b"Preferences", b"Bookmarks", b"Login Data", b"Extension State/000003.log", b"Favicons"):
            self.file(profile + name)
        self.file(b"home/.config/chromium/Local State")
        for name in (b"History", b"History-journal", b"Cookies", b"Cookies-journal"):
            self.offer(self.file(profile + name))
        for name in (b"Local Storage", b"Session Storage", b"DownloadMetadata", b"GPUCache"):
            self.offer(self.tree(profile + name, 4))
        self.offer(self.tree(profile + b"IndexedDB/https_example.org_0.indexeddb.leveldb", 4))
        self.tree(profile + b"IndexedDB/chrome-extension_abcdef_0.indexeddb.leveldb", 4)
        self.offer(self.tree(b"home/.cache/chromium/Default/Cache", 5))
        self.offer(self.tree(b"home/.cache/chromium/Default/Code Cache", 3))
        self.offer(b"home/.cache/chromium")  # a row of System Junk

    def _firefox(self):
        profile = b"home/.mozilla/firefox/ab12cd34.default/"
        self.file(b"home/.mozilla/firefox/profiles.ini",
                  b"[Profile0]\nName=default\nIsRelative=1\nPath=ab12cd34.default\nDefault=1\n")
        for name in (b"prefs.js", b"key4.db", b"logins.json", b"places.sqlite", b"favicons.sqlite", b"extensions.json",
                     b"storage/default/moz-extension+++1/idb/a.sqlite", b"storage/permanent/chrome/idb/b.sqlite"):
            self.file(profile + name)
        for name in (b"cookies.sqlite", b"cookies.sqlite-wal", b"downloads.json"):
            self.offer(self.file(profile + name))
        self.offer(self.tree(profile + b"storage/default/https+++example.org", 4))
        self.offer(self.tree(b"home/.cache/mozilla/firefox/ab12cd34.default/cache2", 5))
        self.offer(b"home/.cache/mozilla")

    def _large(self):
        for _ in range(self.rng.randrange(1, 3)):
            self.large(b"home/" + self.rng.choice((b"Videos", b"Documents", b"Downloads")))

    def _applications(self):
        for number in range(self.rng.randrange(1, 3)):
            identity = b"org.example.Tool%d" % number
            body = b"home/Applications/Tool%d-x86_64.AppImage" % number
            self.offer(self.file(body, b"\x7fELF\x02\x01\x01\x00AI\x02" + b"x" * 3000, mode=0o755))
            entry = DATA + b"/applications/" + identity + b".desktop"
            self.offer(self.file(entry, b"[Desktop Entry]\nType=Application\nName=Tool%d\nExec=%s %%U\n"
                                 % (number, self.path(body))))
            for base in (b"home/.config/", b"home/.cache/", DATA + b"/"):
                if self.chance(0.7):
                    self.offer(self.tree(base + identity, 4))
            self.tree(DATA + b"/" + identity + b"more", 3)  # another program's
            self.tree(b"home/.config/example", 3)

    # The Trash

    def _trash(self, fullness):
        state = self.rng.choices(("ordinary", "missing", "link", "files link", "info link", "info closed", "files closed",
                                  "closed", "no info", "no files"), (70, 6, 3, 3, 3, 3, 3, 3, 3, 3))[0]
        self.trash_state = state
        trash = TRASH
        if state == "link":  # the user keeps it elsewhere
            trash = b"elsewhere/Trash"
            self.aliases[TRASH] = trash
            self.link(TRASH, self.path(trash))
        if not state.endswith("s link") and state != "info link":
            self.trashes.append(trashes.Place(trash))
        if state == "missing":
            return
        self.folder(trash, 0o700)
        for part in (b"files", b"info"):
            if state == part.decode() + " link":
                self.link(trash + b"/" + part, self.path(b"precious/Trash/" + part))
            elif state != "no " + part.decode():
                self.folder(trash + b"/" + part, 0o700)
        self._fill_trash(fullness, state, trash)
        for part in (b"files", b"info"):
            if state == part.decode() + " closed":
                os.chmod(self.path(trash + b"/" + part), 0o500)
        if state == "closed":
            os.chmod(self.path(trash), 0o500)

    def disk(self, place, user):
        """What lies on a disk of its own, mounted there: its Trash has one of two forms, or one that is none."""
        self.file(place + b"/movie.mkv")
        self.file(place + b"/holiday/one.jpg")
        top = place + b"/.Trash-%d" % user
        own = place + b"/.Trash/%d" % user
        state = self.rng.choice(("none", "second", "second", "first", "first", "not sticky", "link"))
        if state in ("first", "not sticky"):
            self.folder(own, 0o700)
            os.chmod(self.path(place + b"/.Trash"), 0o1777 if state == "first" else 0o777)
        elif state == "link":
            self.link(place + b"/.Trash", self.path(b"precious"))
        base = self.path(place)
        self.trashes.append(trashes.Place(top, base))
        if state == "first":
            self.trashes.append(trashes.Place(own, base))
        if state in ("second", "first"):
            for part in (b"/files", b"/info"):
                self.folder((top if state == "second" else own) + part, 0o700)
            self._fill_trash(6, "ordinary", top if state == "second" else own)
        if state == "not sticky":
            self.file(own + b"/files/another", b"not a Trash")

    def large(self, place):
        path = place + b"/" + self.name(b".mkv")
        self.file(path, days=40)
        descriptor = os.open(self.path(path), os.O_WRONLY)
        os.posix_fallocate(descriptor, 0, 251 << 20)
        os.close(descriptor)
        self.offer(path)

    def _fill_trash(self, fullness, state, trash):
        sizes = []
        for _ in range(self.rng.randrange(fullness)):
            name = self.name(limit=self.rng.choice((245, 255)))
            if state not in ("files link", "no files"):
                self.thing(trash + b"/files/" + name)
                self.offer(trash + b"/files/" + name)
            if state not in ("info link", "no info") and len(name) <= 245 and self.chance(0.85):
                self.file(trash + b"/info/" + name + b".trashinfo", self._note(name))
            if self.chance(0.5):
                sizes.append(self._size_line(name))
        if state not in ("info link", "no info") and self.chance(0.3):
            self.file(trash + b"/info/orphan.trashinfo", trashes.written(b"/home/x/orphan"))
        self._sizes(sizes, trash)

    def _note(self, name):
        choice = self.rng.random()
        if choice < 0.8:
            return trashes.written(self.path(b"home/Documents/" + name))
        return b"" if choice < 0.87 else self.rng.randbytes(60) if choice < 0.93 else b"[Trash Info]\nPath=relative/x\n"

    def _size_line(self, name):
        quoted = trashes.written(name).split(b"Path=")[1].split(b"\n")[0]
        stamp = self.rng.choice((b"1700000000", b"1700000000123"))  # seconds, or KDE's milliseconds
        return b"%d %s %s" % (self.rng.randrange(1 << 30), stamp, quoted)

    def _sizes(self, lines, trash):
        path = trash + b"/directorysizes"
        choice = self.rng.random()
        if choice < 0.35 or not lines:
            return
        if choice < 0.42:
            self.link(path, self.path(b"precious/Trash/directorysizes"))
        elif choice < 0.46:
            self.folder(path)
        elif choice < 0.5:
            os.mkfifo(self.path(path))
        else:
            garbage = [b"not a line", b"", b"12 x y"] if self.chance(0.2) else []
            end = b"" if self.chance(0.2) else b"\n"
            self.file(path, b"\n".join(lines + [b"4096 1700000000 of%20something%20else"] + garbage) + end)
