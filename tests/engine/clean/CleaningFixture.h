// What the tests of a clean share.
#pragma once

#include "EngineHome.h"
#include "FileContent.h"
#include "clean/Cleaning.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace vellmoor::test {

inline CleanupTarget tickedTarget(const Path& path, std::int64_t bytes = 100) {
    CleanupTarget target;
    target.url = path;
    target.name = path.filename();
    target.bytes = bytes;
    target.files = 1;
    target.isSelected = true;
    return target;
}

inline CleanupItem tickedRow(const std::vector<Path>& paths, CleanerModule module = CleanerModule::systemJunk) {
    CleanupItem item;
    item.module = module;
    item.risk = CleanupRisk::safe;
    item.isCleanable = true;
    item.isSelected = true;
    for (const Path& path : paths) {
        item.targets.edit().push_back(tickedTarget(path));
    }
    return item;
}

/// The same with what is there now as what the scan saw.
inline CleanupItem shownRow(const EngineHome& home, const std::vector<Path>& paths,
                            CleanerModule module = CleanerModule::largeFiles) {
    CleanupItem item = tickedRow(paths, module);
    for (CleanupTarget& target : item.targets.edit()) {
        target.identity = home.platform.identity(target.url);
    }
    return item;
}

inline CleanupReport clean(const EngineHome& home, const std::vector<CleanupItem>& items) {
    EngineContext context = home.context();
    return vellmoor::clean(context, items, std::chrono::milliseconds(0));
}

inline CleanupReport clean(const EngineHome& home, const std::vector<Path>& paths) {
    return clean(home, std::vector<CleanupItem>{tickedRow(paths)});
}

using test::contentOf;

inline std::vector<Path> changedPaths(const EngineHome& home, Operation operation) {
    std::vector<Path> paths;
    for (const Change& change : home.platform.changes()) {
        if (change.operation == operation) {
            paths.push_back(change.path);
        }
    }
    return paths;
}

/// Rules that hold on both systems.
class Cleaning : public ::testing::TestWithParam<System> {
protected:
    EngineHome home{GetParam()};
    const TrashFolder trash = home.platform.homeTrash();
    const bool isMac = GetParam() == System::Mac;

    Path trashed(const std::string& name) const { return trash.contents / name; }
    void expectRemovedForGood(const Path& path) const {
        EXPECT_FALSE(home.has(path));
        EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), ::testing::ElementsAre(path));
        EXPECT_THAT(changedPaths(home, Operation::MoveToTrash), ::testing::IsEmpty());
    }
};

inline std::string systemName(const ::testing::TestParamInfo<System>& instance) {
    return instance.param == System::Mac ? "Mac" : "Linux";
}

} // namespace vellmoor::test
