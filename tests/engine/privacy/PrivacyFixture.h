// What the privacy tests share: looking rows up, making files, running browsers.
#pragma once

#include "EngineHome.h"
#include "privacy/Privacy.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::test {

inline std::vector<CleanupItem> privacyRows(const EngineHome& home) {
    EngineContext context = home.context();
    return privacyItems(context);
}

inline std::vector<std::string> titles(const std::vector<CleanupItem>& rows) {
    std::vector<std::string> out;
    for (const CleanupItem& row : rows) {
        out.push_back(row.title);
    }
    return out;
}

/// The row of that title; nothing when there is none.
inline std::optional<CleanupItem> findRow(const std::vector<CleanupItem>& rows, std::string_view title) {
    const auto found = std::ranges::find(rows, title, &CleanupItem::title);
    return found == rows.end() ? std::nullopt : std::optional(*found);
}

/// The row of that title; a test without it ends here.
inline CleanupItem rowOf(const std::vector<CleanupItem>& rows, std::string_view title) {
    const std::optional<CleanupItem> found = findRow(rows, title);
    if (!found) {
        throw std::runtime_error("no row " + std::string(title));
    }
    return *found;
}

/// The targets' paths, relative to the home folder.
inline std::vector<std::string> targetPaths(const EngineHome& home, const std::optional<CleanupItem>& row) {
    std::vector<std::string> out;
    if (row) {
        for (const CleanupTarget& target : row->targets) {
            out.push_back(target.url.path().lexically_relative(home.home).string());
        }
    }
    return out;
}

/// The targets of the row of that title.
inline std::vector<std::string> targetsOf(const EngineHome& home, std::string_view title) {
    return targetPaths(home, findRow(privacyRows(home), title));
}

inline void makeFiles(const EngineHome& home, const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        home.file(path);
    }
}

/// Each of `names` below `folder`.
inline std::vector<std::string> below(const std::string& folder, const std::vector<std::string>& names) {
    std::vector<std::string> out;
    for (const std::string& name : names) {
        out.push_back(folder + "/" + name);
    }
    return out;
}

/// macOS: what the process listing prints.
inline void listProcesses(EngineHome& home, const std::string& commands) {
    home.platform.tools[home.place("/bin/ps")] = [commands](const std::vector<std::string>&) {
        return CommandResult{0, commands, ""};
    };
}

/// Linux: a process of the user.
inline void runProcess(const EngineHome& home, int pid, const std::string& exe,
                       const std::string& unit = "session-2.scope") {
    const Path folder = "/proc/" + std::to_string(pid);
    home.text(folder / "cgroup", "0::/user.slice/user-1000.slice/user@1000.service/app.slice/" + unit + "\n");
    home.text(folder / "comm", "Isolated Web Co\n");
    home.text(folder / "stat", std::to_string(pid) + " (Isolated Web Co) S 1 1 1 0 -1 4194304 0 0 0 0");
    home.text(folder / "environ", "");
    home.link(exe, folder / "exe");
}

} // namespace vellmoor::test
