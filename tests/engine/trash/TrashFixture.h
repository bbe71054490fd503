// What the tests of the Trash scanner share.
#pragma once

#include "EngineHome.h"
#include "trash/Trash.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vellmoor::test {

inline std::vector<CleanupItem> trashRows(const EngineHome& home) {
    EngineContext context = home.context();
    return trashItems(context);
}

inline std::vector<TrashSource> sources(const EngineHome& home) {
    return trashSources(home.context());
}

inline std::vector<Path> sourceUrls(const EngineHome& home) {
    std::vector<Path> all;
    for (const TrashSource& source : sources(home)) {
        all.push_back(source.url);
    }
    return all;
}

inline std::vector<std::string> rowTitles(const std::vector<CleanupItem>& items) {
    std::vector<std::string> all;
    for (const CleanupItem& item : items) {
        all.push_back(item.title);
    }
    return all;
}

inline std::vector<std::string> targetNames(const CleanupItem& item) {
    std::vector<std::string> all;
    for (const CleanupTarget& target : item.targets) {
        all.push_back(target.name);
    }
    return all;
}

inline void expectAccessLimited(const CleanupItem& row, const Path& folder) {
    EXPECT_EQ(row.module, CleanerModule::trash);
    EXPECT_EQ(row.bytes, 0);
    EXPECT_EQ(row.files, 0);
    EXPECT_EQ(row.symbol, "lock.trianglebadge.exclamationmark");
    EXPECT_EQ(row.tint, Tint::orange);
    EXPECT_EQ(row.risk, CleanupRisk::previewOnly);
    EXPECT_FALSE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
    EXPECT_FALSE(row.appInfo);
    ASSERT_THAT(row.targets, ::testing::SizeIs(1));
    const CleanupTarget& target = row.targets.front();
    EXPECT_EQ(target.url, folder);
    EXPECT_EQ(target.name, folder.filename());
    EXPECT_EQ(target.location, folder.parent_path());
    EXPECT_EQ(target.bytes, 0);
    EXPECT_EQ(target.files, 0);
    EXPECT_EQ(target.modified, "Access limited");
    EXPECT_FALSE(target.modifiedAt);
    EXPECT_EQ(target.symbol, "lock");
    EXPECT_FALSE(target.isSelected);
}

} // namespace vellmoor::test
