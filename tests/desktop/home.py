"""A small home with something for every module."""

import os
import pathlib
import stat

MIB = 1 << 20
# What the files below are called: names that are the same in every language.
NAMES = ("player", "thumbnails", "Holiday.mkv", "Tool-x86_64.AppImage", "Tool", "Old Updater", "Redshift", "note.txt",
         "_cacache", "session.log", "editor.deb", "Firefox", "cookies.sqlite", "places.sqlite")


class Home:
    def __init__(self, folder):
        self._folder = pathlib.Path(folder)

    def path(self, relative):
        return self._folder / os.fsdecode(relative)

    def blob(self, relative, size, days_old=20):
        """A file that really takes that many bytes."""
        path = self.path(relative)
        path.parent.mkdir(parents=True, exist_ok=True)
        with open(path, "wb") as file:
            os.posix_fallocate(file.fileno(), 0, size)
        self._age(path, days_old)
        return path

    def text(self, relative, contents):
        path = self.path(relative)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(contents, encoding="utf-8")
        return path

    @staticmethod
    def _age(path, days):
        then = path.stat().st_mtime - days * 86400
        os.utime(path, (then, then))

    def many_files(self, relative, folders, files):
        """Empty files, so that looking at them takes a while."""
        for number in range(folders):
            folder = self.path(relative) / str(number)
            folder.mkdir(parents=True)
            for name in range(files):
                (folder / str(name)).touch()

    def fill(self):
        self.blob(".cache/player/data", 2 * MIB)
        self.blob(".cache/thumbnails/large/a.png", MIB)
        self.blob(".local/state/app/session.log", 70_000)
        self.blob(".npm/_cacache/content", MIB)
        self.blob("Downloads/editor.deb", MIB, 40)
        self.blob("Videos/Holiday.mkv", 251 * MIB, 60)
        self._browser()
        self._application()
        self._startup()
        self._trash()

    def _browser(self):
        profile = ".mozilla/firefox/ab12cd34.default-release"
        self.text(".mozilla/firefox/profiles.ini",
                  "[Profile0]\nName=default-release\nIsRelative=1\nPath=ab12cd34.default-release\nDefault=1\n")
        self.text(f"{profile}/prefs.js", 'user_pref("a", 1);\n')
        self.blob(f"{profile}/places.sqlite", 90_000, 1)
        self.blob(f"{profile}/cookies.sqlite", 50_000, 1)

    def _application(self):
        tool = self.text("Applications/Tool-x86_64.AppImage", "")
        tool.write_bytes(b"\x7fELF\x02\x01\x01\x00AI\x02" + b"x" * MIB)
        tool.chmod(tool.stat().st_mode | stat.S_IXUSR)
        self.text(".local/share/applications/org.example.Tool.desktop",
                  f"[Desktop Entry]\nType=Application\nName=Tool\nExec={tool} %U\nIcon=tool\n")

    def _startup(self):
        entry = "[Desktop Entry]\nType=Application\nName={name}\nExec={command}\n"
        self.text(".config/autostart/redshift.desktop", entry.format(name="Redshift", command="redshift"))
        self.text(".config/autostart.disabled/updater.desktop",
                  entry.format(name="Old Updater", command="/opt/old/updater"))

    def _trash(self):
        self.blob(".local/share/Trash/files/note.txt", 60_000)
        self.text(".local/share/Trash/info/note.txt.trashinfo",
                  "[Trash Info]\nPath=note.txt\nDeletionDate=2024-05-01T12:00:00\n")
