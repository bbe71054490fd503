// Listings that fail on the way or make no sense: what can be read is visited, and what is missing is said.
#include "DarwinSystem.h"
#include "Recorder.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <set>
#include <span>
#include <string>
#include <string_view>

namespace vellmoor::walk::test {
namespace {

using ::testing::IsEmpty;
using ::testing::IsSubsetOf;
using vellmoor::test::DarwinSystem;
using vellmoor::test::DarwinTraits;
using vellmoor::test::TemporaryFolder;

/// A folder of 100 files of which only some batches can be read, beside a healthy one.
class BrokenFolder : public ::testing::TestWithParam<bool> {
protected:
    BrokenFolder() {
        for (int i = 0; i < 100; ++i) {
            home_.file("broken/" + std::to_string(i));
            inBroken_.insert("broken/" + std::to_string(i));
        }
        home_.file("healthy/file");
        traits_.batchBytes = 600;
    }
    Outcome walkAll() {
        const DarwinSystem darwin(traits_);
        Options options;
        options.wantsNames = GetParam();
        return walk(home_.path(), options, recorder_);
    }
    void failAfter(unsigned batchesBefore, int error) {
        traits_.failure = [=](const std::string& folder, unsigned batches) {
            return folder.ends_with("/broken") && batches >= batchesBefore ? error : 0;
        };
    }
    // The files of the broken folder that were visited.
    std::set<std::string> found() {
        std::set<std::string> files = recorder_.files();
        EXPECT_EQ(files.erase("healthy/file"), 1U);
        EXPECT_THAT(files, IsSubsetOf(inBroken_));
        return files;
    }

    TemporaryFolder home_;
    std::set<std::string> inBroken_;
    DarwinTraits traits_;
    Recorder recorder_{home_.path()};
};
INSTANTIATE_TEST_SUITE_P(Names, BrokenFolder, ::testing::Bool(),
                         [](const auto& test) { return test.param ? "ReadWhole" : "ReadInBatches"; });

TEST_P(BrokenFolder, AnErrorOnTheWayIsSaidAndWhatCameBeforeIsVisited) {
    failAfter(3, EIO);
    EXPECT_EQ(walkAll(), Outcome::Incomplete);
    EXPECT_FALSE(found().empty());
    EXPECT_LT(found().size(), 100U);
}

TEST_P(BrokenFolder, AnErrorAtTheStartIsAnUnreadableFolder) {
    failAfter(0, EPERM);
    EXPECT_EQ(walkAll(), Outcome::Complete);
    EXPECT_THAT(found(), IsEmpty());
}

TEST_P(BrokenFolder, AFolderThatIsDeletedMeanwhileHasEndedInOrder) {
    failAfter(3, ENOENT);
    EXPECT_EQ(walkAll(), Outcome::Complete);
    EXPECT_FALSE(found().empty());
}

TEST_P(BrokenFolder, ALengthThatMakesNoSenseCostsTheRestOfItsBatchOnly) {
    unsigned damaged = 0;
    traits_.damage = [&](std::span<char> batch, int& records) {
        if (records > 2 && damaged == 0) {
            ++damaged;
            std::uint32_t first = 0;
            std::memcpy(&first, batch.data(), sizeof first);
            std::memset(batch.data() + first, 0xff, sizeof first);
        }
    };
    EXPECT_EQ(walkAll(), Outcome::Incomplete);
    EXPECT_EQ(damaged, 1U);
    EXPECT_GE(found().size(), 90U);
    EXPECT_LT(found().size(), 100U);
}

TEST_P(BrokenFolder, ABatchThatIsShorterThanItsNumberOfRecordsIsRead) {
    unsigned damaged = 0;
    traits_.damage = [&](std::span<char> batch, int& records) {
        if (records > 2 && damaged == 0) {
            ++damaged;
            records = 1'000'000;
            std::memset(batch.data() + batch.size(), 0, 24); // the stand-in is given 64 KiB
        }
    };
    EXPECT_EQ(walkAll(), Outcome::Incomplete);
    EXPECT_EQ(found(), inBroken_);
}

TEST_P(BrokenFolder, ARecordWithoutAUsableNameCostsItselfOnly) {
    traits_.damage = [](std::span<char> batch, int&) {
        const std::string_view name("77\0", 3);
        const auto at = std::ranges::search(batch, name);
        if (!at.empty()) {
            at[0] = '/';
        }
    };
    EXPECT_EQ(walkAll(), Outcome::Incomplete);
    inBroken_.erase("broken/77");
    EXPECT_EQ(found(), inBroken_);
}

} // namespace
} // namespace vellmoor::walk::test
