// A clean leaves what the user keeps, whatever its rows say.
#include "EngineHome.h"
#include "Host.h"
#include "ScopedUnprivileged.h"
#include "clean/CleaningFixture.h"
#include "keep/KeptPaths.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <vector>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class KeptInCleans : public ::testing::TestWithParam<System> {
protected:
    void keepPath(const Path& path) { ASSERT_TRUE(keep(home.platform, home.layout, path)); }
    EngineHome home{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(On, KeptInCleans, ::testing::ValuesIn(test::hostedSystems()), systemName);

TEST_P(KeptInCleans, AKeptPathStaysWhateverTheRowSays) {
    const Path kept = home.file("Stuff/kept");
    const Path other = home.file("Stuff/other");
    const std::vector<CleanupItem> rows{shownRow(home, {kept, other})};
    keepPath(kept);
    const CleanupReport report = clean(home, rows);
    EXPECT_TRUE(home.has(kept));
    EXPECT_FALSE(home.has(other));
    EXPECT_EQ(report.keptCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_THAT(report.notes, ElementsAre("kept: is one of your kept items"));
}

TEST_P(KeptInCleans, WhatLiesBelowAKeptPathStays) {
    const Path file = home.file("Stuff/folder/deep/file");
    keepPath(home.place("Stuff/folder"));
    EXPECT_EQ(clean(home, {file}).keptCount, 1);
    EXPECT_TRUE(home.has(file));
}

TEST_P(KeptInCleans, WhatHoldsAKeptPathStays) {
    const Path kept = home.file("Stuff/folder/deep/kept");
    keepPath(kept);
    const CleanupReport report = clean(home, {home.place("Stuff/folder")});
    EXPECT_EQ(report.keptCount, 1);
    EXPECT_TRUE(home.has(kept));
    EXPECT_THAT(report.notes, ElementsAre("folder: holds something that you keep"));
}

TEST_P(KeptInCleans, AKeptPathIsKnownByAnotherName) {
    const Path kept = home.file("real/kept");
    home.link(home.place("real"), "alias");
    keepPath(home.place("alias/kept"));
    EXPECT_EQ(clean(home, {kept}).keptCount, 1);
    EXPECT_TRUE(home.has(kept));
}

TEST_P(KeptInCleans, WhatIsKeptInTheTrashStays) {
    const Path kept = home.file(home.platform.homeTrash().contents / "kept");
    keepPath(kept);
    EXPECT_EQ(clean(home, {tickedRow({kept}, CleanerModule::trash)}).keptCount, 1);
    EXPECT_TRUE(home.has(kept));
}

TEST_P(KeptInCleans, NothingIsRemovedWhileTheListCannotBeRead) {
    const Path file = home.file("Stuff/file");
    keepPath(home.file("Stuff/kept"));
    const Path list = home.layout.stateFolder / "kept";
    std::filesystem::permissions(list, std::filesystem::perms::none);
    {
        const ScopedUnprivileged asAnybody;
        const CleanupReport report = clean(home, {file});
        EXPECT_EQ(report.failedCount, 1);
        EXPECT_THAT(report.failures, ElementsAre(HasSubstr("the list of kept items cannot be read")));
    }
    EXPECT_TRUE(home.has(file));
}

} // namespace
} // namespace vellmoor::test
