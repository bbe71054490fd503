#include "memory/Memory.h"
#include "memory/MemoryFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using test::answering;
using test::appleVmStat;
using test::EngineHome;
using test::Invocation;
using test::linuxMeminfo;
using test::setTool;
using test::System;
using ::testing::SizeIs;

constexpr std::int64_t gibibyte = 1024LL * 1024 * 1024;

// The estimate

TEST(MemoryEstimate, SixteenGibibytesKeepSixteenPercent) {
    EXPECT_EQ(estimatedReleasableMemory(4 * gibibyte, 17179869184), 1546188227);
    EXPECT_EQ(4 * gibibyte - estimatedReleasableMemory(4 * gibibyte, 17179869184), 2748779069);
}

TEST(MemoryEstimate, LessThan512MebibytesCountAsNothing) {
    EXPECT_EQ(3 * gibibyte - 2748779069, 472446403);
    EXPECT_EQ(estimatedReleasableMemory(3 * gibibyte, 17179869184), 0);
}

TEST(MemoryEstimate, Exactly512MebibytesCount) {
    EXPECT_EQ(estimatedReleasableMemory(2748779069 + 536870912, 17179869184), 536870912);
    EXPECT_EQ(estimatedReleasableMemory(2748779069 + 536870911, 17179869184), 0);
}

TEST(MemoryEstimate, SixtyFourGibibytesKeepAtMostSix) {
    EXPECT_EQ(estimatedReleasableMemory(10 * gibibyte, 64 * gibibyte), 10 * gibibyte - 6442450944);
}

TEST(MemoryEstimate, EightGibibytesKeepAtLeastTwo) {
    EXPECT_EQ(estimatedReleasableMemory(4 * gibibyte, 8 * gibibyte), 4 * gibibyte - 2147483648);
}

TEST(MemoryEstimate, ArgumentsBelowOneGiveNothing) {
    EXPECT_EQ(estimatedReleasableMemory(0, 16 * gibibyte), 0);
    EXPECT_EQ(estimatedReleasableMemory(-gibibyte, 16 * gibibyte), 0);
    EXPECT_EQ(estimatedReleasableMemory(INT64_MAX, 0), 0);
    EXPECT_EQ(estimatedReleasableMemory(INT64_MAX, -1), 0);
}

TEST(MemoryEstimate, TheLargestArgumentsDoNotOverflow) {
    EXPECT_EQ(estimatedReleasableMemory(INT64_MAX, INT64_MAX), INT64_MAX - 6442450944);
}

// macOS

class MacMemory : public ::testing::Test {
protected:
    MacMemory() {
        setTool(home, "/usr/sbin/sysctl", answering("17179869184\n"));
        setVmStat(appleVmStat);
    }
    void setVmStat(std::string_view text) { setTool(home, "/usr/bin/vm_stat", answering(std::string(text))); }

    EngineHome home{System::Mac};
};

TEST_F(MacMemory, TheFiguresFollowFromThePageCounts) {
    const MemorySnapshot snapshot = memorySnapshot(home.context());
    EXPECT_EQ(snapshot.totalBytes, 17179869184);
    EXPECT_EQ(snapshot.freeBytes, (32768 + 16384) * 16384LL);
    EXPECT_EQ(snapshot.unusedBytes, snapshot.freeBytes);
    EXPECT_EQ(snapshot.fileCacheBytes(), 0);
    EXPECT_EQ(snapshot.activeBytes, 262144 * 16384LL);
    EXPECT_EQ(snapshot.wiredBytes, 131072 * 16384LL);
    EXPECT_EQ(snapshot.compressedBytes, 98304 * 16384LL);
    EXPECT_EQ(snapshot.cachedBytes, (245760 + 294912 + 8192) * 16384LL);
    EXPECT_EQ(snapshot.reclaimableBytes, 3022583235); // (294912 + 8192) pages + half of the compressed - the reserve
}

TEST_F(MacMemory, TheToolsAreAskedAsTheyStand) {
    (void)memorySnapshot(home.context());
    EXPECT_THAT(home.platform.invocations(),
                ::testing::ElementsAre(Invocation{home.place("/usr/sbin/sysctl"), {"-n", "hw.memsize"}},
                                       Invocation{home.place("/usr/bin/vm_stat"), {}}));
}

TEST_F(MacMemory, WithoutVmStatOnlyTheTotalIsKnown) {
    home.platform.tools.erase(home.place("/usr/bin/vm_stat"));
    EXPECT_EQ(memorySnapshot(home.context()), MemorySnapshot{.totalBytes = 17179869184});
}

TEST_F(MacMemory, AVmStatThatFailsLeavesOnlyTheTotal) {
    setTool(home, "/usr/bin/vm_stat", answering(std::string(appleVmStat), 1));
    EXPECT_EQ(memorySnapshot(home.context()), MemorySnapshot{.totalBytes = 17179869184});
}

TEST_F(MacMemory, AFailedSysctlFallsBackToThePhysicalMemory) {
    home.platform.tools.erase(home.place("/usr/sbin/sysctl"));
    home.platform.physical = 8589934592;
    EXPECT_EQ(systemMemorySize(home.context()), 8589934592);
}

TEST_F(MacMemory, ASysctlTextThatIsNoNumberFallsBack) {
    home.platform.physical = 8589934592;
    for (const char* text : {"", "\n", "16 GB\n", "hw.memsize: 17179869184\n", "99999999999999999999\n"}) {
        setTool(home, "/usr/sbin/sysctl", answering(text));
        EXPECT_EQ(systemMemorySize(home.context()), 8589934592) << text;
    }
}

TEST_F(MacMemory, WhiteSpaceAroundTheInstalledMemoryDoesNotMatter) {
    setTool(home, "/usr/sbin/sysctl", answering(" \r\n 17179869184 \n\n"));
    EXPECT_EQ(systemMemorySize(home.context()), 17179869184);
}

TEST_F(MacMemory, ATotalBelowOneIsTakenAsItStandsAndLeavesTheRestZero) {
    setTool(home, "/usr/sbin/sysctl", answering("0\n"));
    EXPECT_EQ(memorySnapshot(home.context()), MemorySnapshot{});
    setTool(home, "/usr/sbin/sysctl", answering("-5\n"));
    EXPECT_EQ(memorySnapshot(home.context()), MemorySnapshot{.totalBytes = -5});
}

TEST_F(MacMemory, WhatIsReclaimableNeverExceedsWhatIsUsed) {
    setTool(home, "/usr/sbin/sysctl", answering("8589934592\n"));
    setVmStat("(page size of 16384 bytes)\nPages free: 327680.\nFile-backed pages: 2000000.\n");
    // 8 GiB - 5 GiB free = 3 GiB used; 2 GiB of them stay.
    EXPECT_EQ(memorySnapshot(home.context()).reclaimableBytes, gibibyte);
}

TEST_F(MacMemory, MoreFreeThanInstalledLeavesNothingToReclaim) {
    setVmStat("(page size of 16384 bytes)\nPages free: 2000000.\nFile-backed pages: 500000.\n");
    EXPECT_EQ(memorySnapshot(home.context()).reclaimableBytes, 0);
}

TEST_F(MacMemory, TheHalfOfTheCompressedBytesIsTruncated) {
    setVmStat("(page size of 1 bytes)\nFile-backed pages: 4294967296.\nPages occupied by compressor: 3.\n");
    EXPECT_EQ(memorySnapshot(home.context()).reclaimableBytes, 4294967296 + 1 - 2748779069);
}

using MacMemoryDeathTest = MacMemory;

TEST_F(MacMemoryDeathTest, APageCountWhoseBytesOverflowIsFatal) {
    setVmStat("(page size of 16384 bytes)\nPages active: 9223372036854775807.\n");
    EXPECT_DEATH((void)memorySnapshot(home.context()), "overflow");
}

TEST_F(MacMemoryDeathTest, ASumOfPageCountsThatOverflowsIsFatal) {
    setVmStat("(page size of 1 bytes)\nPages free: 9223372036854775807.\nPages speculative: 1.\n");
    EXPECT_DEATH((void)memorySnapshot(home.context()), "overflow");
}

TEST_F(MacMemoryDeathTest, CachedPagesThatOverflowAreFatal) {
    setVmStat("(page size of 1 bytes)\nPages inactive: 9223372036854775807.\nFile-backed pages: 1.\n");
    EXPECT_DEATH((void)memorySnapshot(home.context()), "overflow");
}

TEST_F(MacMemoryDeathTest, ReclaimableBytesThatOverflowAreFatal) {
    setVmStat("(page size of 1 bytes)\nFile-backed pages: 9223372036854775807.\nPages occupied by compressor: 2.\n");
    EXPECT_DEATH((void)memorySnapshot(home.context()), "overflow");
}

// Linux

class LinuxMemory : public ::testing::Test {
protected:
    LinuxMemory() { setMeminfo(linuxMeminfo); }
    void setMeminfo(std::string_view text) { home.text("/proc/meminfo", text); }
    void addZram(std::string_view name, std::string_view mmStat) {
        home.text("/sys/devices/virtual/block/" + std::string(name) + "/mm_stat", mmStat);
        home.link("../devices/virtual/block/" + std::string(name), "/sys/block/" + std::string(name));
    }

    EngineHome home{System::Linux};
};

TEST_F(LinuxMemory, TheFiguresFollowFromMeminfoAndZram) {
    addZram("zram0", "1677721600 402653184 419430400 0 430000000 2048 0 12 3\n");
    const MemorySnapshot snapshot = memorySnapshot(home.context());
    EXPECT_EQ(snapshot.totalBytes, 17179869184);
    EXPECT_EQ(snapshot.freeBytes, 9663676416);
    EXPECT_EQ(snapshot.unusedBytes, 1073741824);
    EXPECT_EQ(snapshot.activeBytes, 6442450944);
    EXPECT_EQ(snapshot.wiredBytes, 465567744);
    EXPECT_EQ(snapshot.compressedBytes, 419430400);
    EXPECT_EQ(snapshot.cachedBytes, 15837691904);
    EXPECT_EQ(snapshot.reclaimableBytes, 5782435267);
    EXPECT_EQ(snapshot.usedBytes(), 7516192768);
    EXPECT_EQ(snapshot.fileCacheBytes(), 8589934592);
    EXPECT_EQ(snapshot.usagePercent(), 44);
    EXPECT_EQ(snapshot.pressureTitle(), "Good");
}

TEST_F(LinuxMemory, NoToolIsAsked) {
    (void)memorySnapshot(home.context());
    EXPECT_THAT(home.platform.invocations(), SizeIs(0));
}

TEST_F(LinuxMemory, FreeIsWhatIsAvailableAsOtherToolsSayIt) {
    setMeminfo("MemTotal: 16777216 kB\nMemFree: 1000000 kB\nMemAvailable: 9000000 kB\n");
    const MemorySnapshot snapshot = memorySnapshot(home.context());
    EXPECT_EQ(snapshot.freeBytes, 9000000LL * 1024);
    EXPECT_EQ(snapshot.unusedBytes, 1000000LL * 1024);
    EXPECT_EQ(snapshot.fileCacheBytes(), 8000000LL * 1024);
}

TEST_F(LinuxMemory, KernelsThatDoNotTellWhatIsAvailableTellWhatIsFree) {
    setMeminfo("MemTotal: 16777216 kB\nMemFree: 1000000 kB\n");
    const MemorySnapshot snapshot = memorySnapshot(home.context());
    EXPECT_EQ(snapshot.freeBytes, 1000000LL * 1024);
    EXPECT_EQ(snapshot.unusedBytes, 1000000LL * 1024);
    EXPECT_EQ(snapshot.fileCacheBytes(), 0);
}

TEST_F(LinuxMemory, WhatIsAvailableDoesNotLimitWhatCanBeDropped) {
    // 3 GiB of 8 are used by programs; 4.5 GiB are file caches, of which 2 GiB stay.
    setMeminfo("MemTotal: 8388608 kB\nMemFree: 524288 kB\nMemAvailable: 5242880 kB\nActive(file): 4718592 kB\n");
    EXPECT_EQ(memorySnapshot(home.context()).reclaimableBytes, 5 * gibibyte / 2);
}

TEST_F(LinuxMemory, WhatIsFilledLimitsWhatCanBeDropped) {
    setMeminfo("MemTotal: 8388608 kB\nMemFree: 5242880 kB\nMemAvailable: 8388608 kB\nActive(file): 8388608 kB\n");
    EXPECT_EQ(memorySnapshot(home.context()).reclaimableBytes, gibibyte);
}

TEST_F(LinuxMemory, AnUnreadableMeminfoLeavesOnlyTheTotal) {
    std::filesystem::remove(home.place("/proc/meminfo"));
    home.platform.physical = 4294967296;
    EXPECT_EQ(memorySnapshot(home.context()), MemorySnapshot{.totalBytes = 4294967296});
}

TEST_F(LinuxMemory, AMissingTotalFallsBackToThePhysicalMemory) {
    setMeminfo("MemFree: 1048576 kB\n");
    home.platform.physical = 4294967296;
    const MemorySnapshot snapshot = memorySnapshot(home.context());
    EXPECT_EQ(snapshot.totalBytes, 4294967296);
    EXPECT_EQ(snapshot.freeBytes, 1073741824);
}

TEST_F(LinuxMemory, OlderKernelsTellSReclaimableOnly) {
    setMeminfo("MemTotal: 16777216 kB\nSReclaimable: 5242880 kB\n");
    EXPECT_EQ(memorySnapshot(home.context()).cachedBytes, 5242880LL * 1024);
}

TEST_F(LinuxMemory, KReclaimableGoesBeforeSReclaimableEvenWhenZero) {
    setMeminfo("MemTotal: 16777216 kB\nSReclaimable: 5242880 kB\nKReclaimable: 0 kB\n");
    EXPECT_EQ(memorySnapshot(home.context()).cachedBytes, 0);
}

TEST_F(LinuxMemory, WiredIsTheSumOfItsSevenLines) {
    setMeminfo("MemTotal: 16777216 kB\nUnevictable: 1 kB\nSUnreclaim: 10 kB\nKernelStack: 100 kB\n"
               "PageTables: 1000 kB\nSecPageTables: 10000 kB\nPercpu: 100000 kB\nHugetlb: 1000000 kB\n");
    EXPECT_EQ(memorySnapshot(home.context()).wiredBytes, 1111111LL * 1024);
}

TEST_F(LinuxMemory, ZswapAndSeveralZramDevicesAreCompressed) {
    setMeminfo("MemTotal: 16777216 kB\nZswap: 100 kB\nZswapped: 900 kB\n");
    addZram("zram0", "1 2 1536 0\n");
    addZram("zram1", "1 2 512 0\n");
    EXPECT_EQ(memorySnapshot(home.context()).compressedBytes, 102 * 1024); // (1536 + 512) / 1024 = 2
}

TEST_F(LinuxMemory, OtherBlockDevicesAndBrokenZramDevicesCountNothing) {
    setMeminfo("MemTotal: 16777216 kB\n");
    addZram("sda", "1 2 4096 0\n");
    addZram("zramble", "1 2 4096 0\n");
    addZram("zram0", "rubbish\n");
    home.link("../devices/virtual/block/zram7", "/sys/block/zram7"); // vanished meanwhile
    EXPECT_EQ(memorySnapshot(home.context()).compressedBytes, 0);
}

TEST_F(LinuxMemory, ALineWithoutANumberCountsZero) {
    setMeminfo("MemTotal: 16777216 kB\nMemFree: kB\nActive: x kB\n");
    EXPECT_EQ(memorySnapshot(home.context()), MemorySnapshot{.totalBytes = 17179869184});
}

using LinuxMemoryDeathTest = LinuxMemory;

TEST_F(LinuxMemoryDeathTest, AFigureThatOverflowsIsFatal) {
    setMeminfo("MemTotal: 16777216 kB\nMemFree: 9223372036854775807 kB\n");
    EXPECT_DEATH((void)memorySnapshot(home.context()), "overflow");
}

TEST_F(LinuxMemoryDeathTest, ATotalThatOverflowsIsFatal) {
    setMeminfo("MemTotal: 9223372036854775807 kB\n");
    EXPECT_DEATH((void)memorySnapshot(home.context()), "overflow");
}

TEST(RealMemory, TheMachineOfTheTestsHasPlausibleFigures) {
    const test::StandInPlatform platform(System::Linux, "/home/nobody", "/");
    const SystemLayout layout = linuxLayout(linuxEnvironmentOf("/home/nobody"), platform.userId(), "/");
    const CancelToken token;
    const MemorySnapshot snapshot = memorySnapshot(EngineContext(platform, layout, token, {}));
    EXPECT_GT(snapshot.totalBytes, 64 * 1024 * 1024);
    EXPECT_GT(snapshot.freeBytes, 0);
    EXPECT_LT(snapshot.freeBytes, snapshot.totalBytes);
    EXPECT_GT(snapshot.activeBytes, 0);
    EXPECT_LT(snapshot.activeBytes, snapshot.totalBytes);
    EXPECT_GT(snapshot.wiredBytes, 0);
    EXPECT_LT(snapshot.wiredBytes, snapshot.totalBytes);
    EXPECT_GE(snapshot.reclaimableBytes, 0);
}

// The row

TEST_F(MacMemory, TheRowOffersWhatIsReclaimable) {
    const std::vector<CleanupItem> items = memoryItems({.totalBytes = 17179869184, .reclaimableBytes = 1546188227});
    ASSERT_THAT(items, SizeIs(1));
    const CleanupItem& row = items[0];
    EXPECT_EQ(row.module, CleanerModule::memoryOptimization);
    EXPECT_EQ(row.title, "Reclaimable Memory");
    EXPECT_EQ(row.description, "Free file caches and ask macOS to manage memory pressure");
    EXPECT_EQ(row.bytes, 1546188227);
    EXPECT_EQ(row.files, 1);
    EXPECT_EQ(row.symbol, "memorychip");
    EXPECT_EQ(row.tint, Tint::mint);
    EXPECT_EQ(row.risk, CleanupRisk::safe);
    EXPECT_TRUE(row.isCleanable);
    EXPECT_TRUE(row.isSelected);
    EXPECT_FALSE(row.appInfo);
}

TEST_F(MacMemory, TheRowsTargetStandsForTheMemory) {
    const CleanupItem row = memoryItems({.totalBytes = 17179869184, .reclaimableBytes = 1546188227}).at(0);
    ASSERT_THAT(row.targets, SizeIs(1));
    const CleanupTarget& target = row.targets[0];
    EXPECT_EQ(target.url, "/dev/null");
    EXPECT_EQ(target.name, "Reclaimable Memory");
    EXPECT_EQ(target.location, "Memory pressure management");
    EXPECT_EQ(target.bytes, 1546188227);
    EXPECT_EQ(target.files, 1);
    EXPECT_EQ(target.modified, "Real-time");
    EXPECT_FALSE(target.modifiedAt);
    EXPECT_EQ(target.symbol, "memorychip");
    EXPECT_TRUE(target.isSelected);
    EXPECT_EQ(row.selectedBytes(), 1546188227);
}

TEST_F(MacMemory, NothingReclaimableGivesARowThatCannotBeCleaned) {
    for (const std::int64_t reclaimable : {std::int64_t{0}, std::int64_t{-1}}) {
        const std::vector<CleanupItem> items = memoryItems({.reclaimableBytes = reclaimable});
        ASSERT_THAT(items, SizeIs(1));
        EXPECT_EQ(items[0].bytes, 0);
        EXPECT_FALSE(items[0].isCleanable);
        EXPECT_FALSE(items[0].isSelected);
        ASSERT_THAT(items[0].targets, SizeIs(1));
        EXPECT_EQ(items[0].targets[0].bytes, 0);
        EXPECT_FALSE(items[0].targets[0].isSelected);
    }
}

TEST_F(MacMemory, EveryRowAndTargetHasItsOwnIdentity) {
    const CleanupItem first = memoryItems({}).at(0);
    const CleanupItem second = memoryItems({}).at(0);
    EXPECT_NE(first.id, second.id);
    EXPECT_NE(first.targets.at(0).id, second.targets.at(0).id);
    EXPECT_NE(first.id, first.targets.at(0).id);
}

TEST_F(LinuxMemory, TheRowNamesTheSystemNotMacOs) {
    EXPECT_EQ(memoryItems({}).at(0).description, "Free file caches and ask the system to manage memory pressure");
}

} // namespace
} // namespace vellmoor
