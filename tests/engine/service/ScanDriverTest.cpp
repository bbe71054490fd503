#include "service/ScanDriver.h"

#include "EngineHome.h"
#include "Host.h"
#include "found/ScanSnapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using test::EngineHome;
using test::System;
using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pointwise;

class ScanDriver : public ::testing::TestWithParam<System> {
protected:
    EngineHome home{GetParam()};
    std::vector<ScanProgressUpdate> updates;

    ScanSnapshot run(CleanerModule module) {
        EngineContext context = home.context();
        return scan(context, module, [this](const ScanProgressUpdate& update) { updates.push_back(update); });
    }
    std::vector<double> fractions() const {
        std::vector<double> out;
        for (const ScanProgressUpdate& update : updates) {
            out.push_back(update.fraction);
        }
        return out;
    }
    std::vector<std::string> stages() const {
        std::vector<std::string> out;
        for (const ScanProgressUpdate& update : updates) {
            out.push_back(update.stage);
        }
        return out;
    }
};

INSTANTIATE_TEST_SUITE_P(, ScanDriver, ::testing::ValuesIn(test::hostedSystems()),
                         [](const auto& run) { return run.param == System::Mac ? "Mac" : "Linux"; });

TEST_P(ScanDriver, ASmartScanRunsEveryStageInOrder) {
    EXPECT_THAT(scanStages(CleanerModule::smartScan),
                ElementsAre(CleanerModule::systemJunk, CleanerModule::largeFiles, CleanerModule::privacy,
                            CleanerModule::appUninstaller, CleanerModule::performance,
                            CleanerModule::memoryOptimization, CleanerModule::trash));
    run(CleanerModule::smartScan);
    EXPECT_THAT(stages(),
                ElementsAre("Reading system status...", "Scanning system junk...", "System junk scanned",
                            "Finding large files...", "Large files scanned", "Checking privacy traces...",
                            "Privacy scanned", "Analyzing app leftovers...", "App leftovers scanned",
                            "Checking performance items...", "Performance items scanned", "Reading memory status...",
                            "Memory status read", "Reading trash...", "Trash scanned", "Compiling scan results...",
                            "Scan results compiled", "Checking permissions..."));
    const std::vector<double> expected{0.01,    0,       1 / 9.0, 1 / 9.0, 2 / 9.0, 2 / 9.0, 3 / 9.0, 3 / 9.0, 4 / 9.0,
                                       4 / 9.0, 5 / 9.0, 5 / 9.0, 6 / 9.0, 6 / 9.0, 7 / 9.0, 7 / 9.0, 8 / 9.0, 8 / 9.0};
    EXPECT_THAT(fractions(), Pointwise(DoubleNear(1e-9), expected));
}

TEST_P(ScanDriver, ASingleScanReportsItsThirds) {
    EXPECT_THAT(scanStages(CleanerModule::trash), ElementsAre(CleanerModule::trash));
    run(CleanerModule::trash);
    const std::vector<double> expected{0.01, 0, 1 / 3.0, 1 / 3.0, 2 / 3.0, 2 / 3.0};
    EXPECT_THAT(fractions(), Pointwise(DoubleNear(1e-9), expected));
}

TEST_P(ScanDriver, ItemsComeInStageOrder) {
    home.file(GetParam() == System::Mac ? "Library/Caches/a" : ".cache/thumbnails/a");
    home.file(GetParam() == System::Mac ? ".Trash/a" : ".local/share/Trash/files/a");
    const ScanSnapshot snapshot = run(CleanerModule::smartScan);
    ASSERT_FALSE(snapshot.cleanupItems.empty());
    EXPECT_EQ(snapshot.cleanupItems.front().module, CleanerModule::systemJunk);
    EXPECT_EQ(snapshot.cleanupItems.back().module, CleanerModule::trash);
    for (std::size_t i = 1; i < snapshot.cleanupItems.size(); ++i) {
        EXPECT_LE(snapshot.cleanupItems[i - 1].module, snapshot.cleanupItems[i].module);
    }
}

TEST_P(ScanDriver, CancellingBeforeTheFirstStageRaises) {
    home.token.cancel();
    EXPECT_THROW(run(CleanerModule::smartScan), ScanCancelled);
    EXPECT_THAT(stages(), ElementsAre("Reading system status..."));
}

TEST_P(ScanDriver, CancellingDuringAStageRaisesBeforeTheNext) {
    EngineContext context = home.context();
    const auto cancelAtTrash = [this](const ScanProgressUpdate& update) {
        updates.push_back(update);
        if (update.stage == "Reading trash...") {
            home.token.cancel();
        }
    };
    EXPECT_THROW(scan(context, CleanerModule::trash, cancelAtTrash), ScanCancelled);
    EXPECT_EQ(stages().back(), "Trash scanned");
}

TEST_P(ScanDriver, TheCountersCountEveryEntryOfTheirFolders) {
    const bool mac = GetParam() == System::Mac;
    const Path startup = mac ? "Library/LaunchAgents" : ".config/autostart";
    const Path background = mac ? "Library/Application Scripts" : ".config/systemd/user";
    home.file(startup / "a.plist");
    home.file(startup / ".hidden");
    home.file(background / "one");
    const ScanSnapshot snapshot = run(CleanerModule::trash);
    EXPECT_EQ(snapshot.startupCount, 2);
    EXPECT_EQ(snapshot.backgroundCount, 1);
}

TEST_P(ScanDriver, MissingFoldersCountZero) {
    const ScanSnapshot snapshot = run(CleanerModule::trash);
    EXPECT_EQ(snapshot.startupCount, 0);
    EXPECT_EQ(snapshot.backgroundCount, 0);
    EXPECT_EQ(snapshot.privacyCount, 0);
}

/// The bytes in the disk bar's part that could be cleaned.
std::string cleanablePart(const ScanSnapshot& snapshot) {
    return snapshot.storageSegments.at(1).value;
}

TEST_P(ScanDriver, ASmartScanCountsEachPathOnceOnLinuxAndAsSpecifiedOnMacOS) {
    const bool mac = GetParam() == System::Mac;
    home.file("Downloads/a.zip", std::int64_t{300} << 20, test::days(9)); // a leftover, and a large file
    const ScanSnapshot snapshot = run(CleanerModule::smartScan);
    EXPECT_EQ(countedOnce(snapshot.cleanupItems).size(), snapshot.cleanupItems.size() - (mac ? 0 : 1));
    if (!mac) {
        EXPECT_EQ(cleanablePart(snapshot), "314.6 MB");
    }
}

TEST_P(ScanDriver, ASingleScanMarksNothing) {
    home.file("Downloads/a.zip", std::int64_t{300} << 20, test::days(9));
    for (const CleanerModule module : {CleanerModule::systemJunk, CleanerModule::largeFiles}) {
        for (const CleanupItem& item : run(module).cleanupItems) {
            for (const CleanupTarget& target : item.targets) {
                EXPECT_FALSE(target.isCovered);
            }
        }
    }
}

TEST_P(ScanDriver, TheDiskBarHasThreeSegments) {
    home.platform.diskCapacity = Capacity{.totalBytes = 1'000'000'000'000, .availableBytes = 400'000'000'000};
    const EngineContext context = home.context();
    const DiskSnapshot disk = diskSnapshot(context, 100'000'000'000);
    ASSERT_EQ(disk.segments.size(), 3U);
    EXPECT_EQ(disk.summary, "600 GB / 1 TB used");
    EXPECT_EQ(disk.segments[0].label, "Used");
    EXPECT_EQ(disk.segments[0].value, "500 GB");
    EXPECT_DOUBLE_EQ(disk.segments[0].fraction, 0.5);
    EXPECT_EQ(disk.segments[0].color, Tint::cyan);
    EXPECT_EQ(disk.segments[1].label, "Cleanable");
    EXPECT_EQ(disk.segments[1].value, "100 GB");
    EXPECT_DOUBLE_EQ(disk.segments[1].fraction, 0.1);
    EXPECT_EQ(disk.segments[1].color, Tint::green);
    EXPECT_EQ(disk.segments[2].label, "Available");
    EXPECT_EQ(disk.segments[2].value, "400 GB");
    EXPECT_DOUBLE_EQ(disk.segments[2].fraction, 0.4);
    EXPECT_EQ(disk.segments[2].color, Tint::gray);
}

TEST_P(ScanDriver, MoreCleanableThanUsedLeavesASliverOfUsed) {
    home.platform.diskCapacity = Capacity{.totalBytes = 1'000'000'000, .availableBytes = 900'000'000};
    const EngineContext context = home.context();
    const DiskSnapshot disk = diskSnapshot(context, 500'000'000);
    ASSERT_EQ(disk.segments.size(), 3U);
    EXPECT_DOUBLE_EQ(disk.segments[0].fraction, 0.015);
    EXPECT_EQ(disk.segments[0].value, "0 KB");
    EXPECT_EQ(disk.segments[1].value, "100 MB");
}

TEST_P(ScanDriver, AnUnreadableCapacityHasNoSegments) {
    home.platform.diskCapacity.reset();
    const EngineContext context = home.context();
    const DiskSnapshot disk = diskSnapshot(context, 5);
    EXPECT_THAT(disk.segments, IsEmpty());
    EXPECT_EQ(disk.summary, "Unable to read disk capacity");
}

TEST_P(ScanDriver, ADiskOfZeroBytesHasZeroFractions) {
    home.platform.diskCapacity = Capacity{.totalBytes = 0, .availableBytes = 0};
    const EngineContext context = home.context();
    for (const StorageSegment& segment : diskSnapshot(context, 0).segments) {
        EXPECT_DOUBLE_EQ(segment.fraction, 0);
    }
}

} // namespace
} // namespace vellmoor
