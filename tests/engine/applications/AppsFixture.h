// What the tests of the uninstaller share.
#pragma once

#include "EngineHome.h"
#include "applications/AppUninstaller.h"
#include "desktop/AppNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vellmoor::test {

inline std::vector<CleanupItem> applications(const EngineHome& home) {
    EngineContext context = home.context();
    return applicationItems(context);
}

inline std::vector<std::string> titles(const std::vector<CleanupItem>& items) {
    std::vector<std::string> all;
    for (const CleanupItem& item : items) {
        all.push_back(item.title);
    }
    return all;
}

inline std::vector<std::string> titles(const EngineHome& home) {
    return titles(applications(home));
}

/// The row of that title; an empty one, and a failure, when there is none.
inline CleanupItem application(const EngineHome& home, const std::string& title) {
    for (const CleanupItem& item : applications(home)) {
        if (item.title == title) {
            return item;
        }
    }
    ADD_FAILURE() << "no row " << title;
    return {};
}

/// The targets behind the application itself, relative to the home folder.
inline std::vector<std::string> leftovers(const EngineHome& home, const std::string& title) {
    std::vector<std::string> paths;
    const CleanupItem row = application(home, title);
    for (std::size_t i = 1; i < row.targets.size(); ++i) {
        paths.push_back(row.targets[i].url.path().lexically_relative(home.home).string());
    }
    return paths;
}

inline std::string bundleList(const std::string& keys) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + keys + "</dict></plist>\n";
}

inline std::string stringKey(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
}

/// A bundle with that identifier and a program of `bytes`; answers its path.
inline Path bundle(const EngineHome& home, const Path& path, const std::string& identifier, std::int64_t bytes = 4096) {
    home.text(path / "Contents/Info.plist", bundleList(stringKey("CFBundleIdentifier", identifier)));
    home.file(path / "Contents/MacOS/program", bytes);
    return home.place(path);
}

/// An executable file that begins as ELF files do.
inline Path elf(const EngineHome& home, const Path& path) {
    return home.script(path, "\x7F"
                             "ELF\x02\x01\x01");
}

inline Path desktopFile(const EngineHome& home, const Path& path, const std::string& keys) {
    return home.text(path, "[Desktop Entry]\nType=Application\n" + keys);
}

/// A Flatpak of the user as `flatpak install --user` lays it out, with its exported entry.
inline Path flatpak(const EngineHome& home, const std::string& id, const std::string& name, std::int64_t bytes = 4096) {
    const Path body = Path(".local/share/flatpak/app") / id;
    home.file(body / "x86_64/stable/0123abcd/files/bin/program", bytes);
    home.link("0123abcd", body / "x86_64/stable/active");
    home.link("x86_64/stable", body / "current");
    desktopFile(home, Path(".local/share/flatpak/exports/share/applications") / (id + ".desktop"),
                "Name=" + name + "\nExec=/usr/bin/flatpak run --branch=stable " + id + " %U\n");
    return home.place(body);
}

/// Makes the flatpak program answer so to every call.
inline Path flatpakProgram(EngineHome& home, const CommandResult& answer = {0, "", ""}) {
    const Path tool = home.place("/usr/bin/flatpak");
    home.platform.tools[tool] = [answer](const std::vector<std::string>&) { return answer; };
    return tool;
}

/// A process of the user as /proc shows it.
inline void process(const EngineHome& home, int pid, const std::string& program, const std::string& environment = "",
                    const std::string& group = "") {
    const Path folder = Path("/proc") / std::to_string(pid);
    const std::string user = std::to_string(home.platform.user);
    home.text(folder / "status", "Name:\tx\nPPid:\t1\nUid:\t" + user + "\t" + user + "\t" + user + "\t" + user + "\n");
    home.text(folder / "comm", "x\n");
    home.text(folder / "cgroup", "0::" + group + "\n");
    home.text(folder / "environ", environment);
    home.link(program, folder / "exe");
}

} // namespace vellmoor::test
