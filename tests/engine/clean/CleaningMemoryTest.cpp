#include "clean/CleaningFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using namespace std::chrono_literals;
/// The memory row, over scripted tools of macOS.
class MemoryCleaning : public ::testing::Test {
protected:
    MemoryCleaning() {
        home.platform.tools[home.root / "usr/sbin/sysctl"] = [](const auto&) {
            return CommandResult{0, "17179869184\n", ""};
        };
        home.platform.tools[home.root / "usr/bin/vm_stat"] = [this](const auto&) {
            return CommandResult{0,
                                 "Mach Virtual Memory Statistics: (page size of 16384 bytes)\nPages free: " +
                                     std::to_string(freePages) + ".\n",
                                 ""};
        };
    }
    void scriptPurge(CommandResult result) {
        home.platform.tools[home.root / "usr/sbin/purge"] = [this, result](const auto&) {
            freePages += 1000;
            return result;
        };
    }
    static CleanupItem memoryRow() {
        CleanupItem item = tickedRow({"/dev/null"}, CleanerModule::memoryOptimization);
        item.targets.edit().front().bytes = 5000;
        return item;
    }

    EngineHome home{System::Mac};
    int freePages = 1000;
};

TEST_F(MemoryCleaning, ASuccessCountsAndCarriesTheFiguresBeforeAndAfter) {
    scriptPurge({0, "", ""});
    const CleanupReport report = clean(home, std::vector{memoryRow()});
    EXPECT_EQ(report.attemptedCount, 1);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_EQ(report.freedBytes, 5000);
    ASSERT_TRUE(report.memoryBefore && report.memoryAfter);
    EXPECT_EQ(report.memoryBefore->freeBytes, 1000 * 16384);
    EXPECT_EQ(report.memoryAfter->freeBytes, 2000 * 16384);
}

TEST_F(MemoryCleaning, ASuccessWaitsForTheSystemToSettle) {
    scriptPurge({0, "", ""});
    EngineContext context = home.context();
    const auto start = std::chrono::steady_clock::now();
    vellmoor::clean(context, {memoryRow()}, 30ms);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 30ms);
}

TEST_F(MemoryCleaning, AFailureShowsItsMessageAndDoesNotWait) {
    scriptPurge({1, "purge is broken", ""});
    EngineContext context = home.context();
    const CleanupReport report = vellmoor::clean(context, {memoryRow()}, 24h);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_THAT(report.failures, ElementsAre("purge is broken"));
    EXPECT_TRUE(report.memoryBefore && report.memoryAfter);
}

TEST_F(MemoryCleaning, ThePlaceholderIsNeverMovedOrRemoved) {
    scriptPurge({0, "", ""});
    clean(home, std::vector{memoryRow()});
    EXPECT_THAT(home.platform.changes(), IsEmpty());
}

TEST_F(MemoryCleaning, FilesAreCleanedBesideIt) {
    scriptPurge({1, "purge is broken", ""});
    const Path file = home.file("Stuff/a");
    const CleanupReport report = clean(home, std::vector{memoryRow(), tickedRow({file})});
    EXPECT_EQ(report.attemptedCount, 2);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_FALSE(home.has(file));
}

TEST_F(MemoryCleaning, WithoutAMemoryRowThereAreNoMemoryFigures) {
    const CleanupReport report = clean(home, {home.file("Stuff/a")});
    EXPECT_FALSE(report.memoryBefore);
    EXPECT_FALSE(report.memoryAfter);
}

} // namespace
} // namespace vellmoor::test
