// A Linux home with junk, and its processes.
#pragma once

#include "EngineHome.h"
#include "junk/JunkRows.h"
#include "junk/SystemJunk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::test {

class LinuxJunk : public ::testing::Test {
protected:
    EngineHome home{System::Linux};

    std::vector<CleanupItem> scan() {
        EngineContext context = home.context();
        return systemJunkItems(context);
    }
    /// Target paths of a row, relative to the home.
    std::vector<std::string> targets(std::string_view title) {
        const auto items = scan();
        std::vector<std::string> out;
        if (const CleanupItem* item = row(items, title)) {
            for (const CleanupTarget& target : item->targets) {
                out.push_back(target.url.path().lexically_relative(home.home).string());
            }
        }
        return out;
    }
    /// Lets a process of the user run that counts under this executable.
    void run(const Path& executable, int pid = 4242) {
        const Path proc = Path("/proc") / std::to_string(pid);
        home.text(proc / "comm", executable.filename().string() + "\n");
        home.text(proc / "cgroup", "0::/user.slice/user-1000.slice/session-2.scope\n");
        home.text(proc / "stat", std::to_string(pid) + " (x) S 1 1 1 0 -1 0 0 0 0 0 0 0 0 0 20 0 1 0 1 0 0\n");
        home.text(proc / "statm", "10 10 10 0 0 0 0\n");
        home.link(executable, proc / "exe");
    }
    void runUnit(const std::string& unit, int pid = 4343) {
        run("/usr/bin/thing", pid);
        home.text(Path("/proc") / std::to_string(pid) / "cgroup",
                  "0::/user.slice/user-1000.slice/user@1000.service/app.slice/" + unit + "\n");
    }
};

} // namespace vellmoor::test
