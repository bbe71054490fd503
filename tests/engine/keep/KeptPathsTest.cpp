#include "keep/KeptPaths.h"

#include "EngineHome.h"
#include "ScopedUnprivileged.h"
#include "disk/OwnFile.h"

#include <gmock/gmock.h>

#include <string>
#include <thread>

namespace vellmoor {
namespace {

using test::EngineHome;
using test::System;
using testing::ElementsAre;
using testing::IsEmpty;

class Keeping : public ::testing::TestWithParam<System> {
protected:
    [[nodiscard]] ListChange keepPath(const Path& path) const { return keep(home_.platform, home_.layout, path); }
    [[nodiscard]] KeptPaths list() const { return KeptPaths::read(home_.platform, home_.layout).value(); }
    [[nodiscard]] bool covers(const Path& path) const { return list().covers(home_.platform, path); }

    EngineHome home_{GetParam()};
};

TEST_P(Keeping, NothingIsKeptAtFirst) {
    EXPECT_THAT(list().paths(), IsEmpty());
    EXPECT_FALSE(covers(home_.file("a")));
}

TEST_P(Keeping, APathAndAllBelowItAreKeptAndNothingBesideIt) {
    home_.file("cache/one/deep/file");
    home_.file("cache/one-more");
    ASSERT_TRUE(keepPath(home_.place("cache/one")));
    EXPECT_TRUE(covers(home_.place("cache/one")));
    EXPECT_TRUE(covers(home_.place("cache/one/deep/file")));
    EXPECT_FALSE(covers(home_.place("cache/one-more")));
    EXPECT_FALSE(covers(home_.place("cache")));
    EXPECT_TRUE(list().liesBelow(home_.platform, home_.place("cache")));
    EXPECT_FALSE(list().liesBelow(home_.platform, home_.place("cache/one")));
}

TEST_P(Keeping, TheListIsInTheOrderInWhichPathsWereAddedEachOnce) {
    ASSERT_TRUE(keepPath(home_.file("b")));
    ASSERT_TRUE(keepPath(home_.file("a")));
    EXPECT_EQ(keepPath(home_.place("b")), false);
    EXPECT_THAT(list().paths(), ElementsAre(home_.place("b"), home_.place("a")));
}

TEST_P(Keeping, NamesOfAnyBytesAreKept) {
    const Path odd = home_.home / "new\nline \xE6\x96\x87%41";
    ASSERT_TRUE(keepPath(odd));
    EXPECT_THAT(list().paths(), ElementsAre(odd));
    EXPECT_TRUE(covers(odd / "below"));
}

TEST_P(Keeping, APathThatIsGoneStaysOnTheList) {
    ASSERT_TRUE(keepPath(home_.file("gone")));
    std::filesystem::remove(home_.place("gone"));
    EXPECT_THAT(list().paths(), ElementsAre(home_.place("gone")));
    EXPECT_TRUE(covers(home_.place("gone")));
}

TEST_P(Keeping, AKeptFolderIsMetUnderEveryNameThatLinksGiveIt) {
    home_.file("real/data/file");
    home_.link(home_.place("real"), "alias");
    ASSERT_TRUE(keepPath(home_.home / "alias/data"));
    EXPECT_TRUE(covers(home_.place("real/data/file")));
    EXPECT_TRUE(covers(home_.home / "alias/data/file"));
    EXPECT_TRUE(list().liesBelow(home_.platform, home_.place("real")));
}

TEST_P(Keeping, AKeptLinkKeepsWhatItNames) {
    home_.file("elsewhere/file");
    home_.link(home_.place("elsewhere"), "link");
    ASSERT_TRUE(keepPath(home_.home / "link"));
    EXPECT_TRUE(covers(home_.home / "link"));
    EXPECT_TRUE(covers(home_.place("elsewhere/file")));
}

TEST_P(Keeping, ALinkToAFolderThatHoldsAKeptPathTakesNothingAlong) {
    home_.file("real/kept");
    home_.link(home_.place("real"), "link");
    ASSERT_TRUE(keepPath(home_.place("real/kept")));
    EXPECT_TRUE(list().liesBelow(home_.platform, home_.place("real")));
    EXPECT_FALSE(list().liesBelow(home_.platform, home_.place("link")));
}

TEST_P(Keeping, WhatIsGoneHoldsNoFolderBack) {
    ASSERT_TRUE(keepPath(home_.file("folder/gone")));
    std::filesystem::remove(home_.place("folder/gone"));
    EXPECT_FALSE(list().liesBelow(home_.platform, home_.place("folder")));
}

TEST_P(Keeping, PlacesBelowAFolderAreSpelledAsAWalkFromItMeetsThem) {
    home_.file("real/data/file");
    home_.link(home_.place("real"), "alias");
    ASSERT_TRUE(keepPath(home_.place("real/data/file")));
    EXPECT_THAT(list().placesBelow(home_.platform, home_.home / "alias"), ElementsAre(home_.home / "alias/data/file"));
    EXPECT_THAT(list().placesBelow(home_.platform, home_.place("real/data/file")), IsEmpty());
}

TEST_P(Keeping, TwoThatKeepAtOnceBothStandOnTheList) {
    constexpr int each = 20;
    const auto keepMany = [&](const std::string& name) {
        for (int i = 0; i < each; ++i) {
            EXPECT_TRUE(keepPath(home_.home / (name + std::to_string(i))));
        }
    };
    std::thread other([&] { keepMany("other"); });
    keepMany("one");
    other.join();
    EXPECT_EQ(list().paths().size(), 2U * each);
}

TEST_P(Keeping, HomeTheRootAndUserFoldersCannotBeKept) {
    for (const Path& path : {Path("/"), home_.home, home_.home.parent_path(), home_.place("Documents")}) {
        EXPECT_FALSE(keepPath(path)) << path;
    }
    EXPECT_THAT(list().paths(), IsEmpty());
}

TEST_P(Keeping, WhatIsOfferedAgainIsNoLongerKept) {
    ASSERT_TRUE(keepPath(home_.file("a")));
    ASSERT_TRUE(keepPath(home_.file("b")));
    EXPECT_EQ(offerAgain(home_.platform, home_.layout, home_.place("a")), true);
    EXPECT_EQ(offerAgain(home_.platform, home_.layout, home_.place("never kept")), false);
    EXPECT_THAT(list().paths(), ElementsAre(home_.place("b")));
}

TEST_P(Keeping, AListThatCannotBeReadIsAnErrorAndIsNotOverwritten) {
    ASSERT_TRUE(keepPath(home_.file("a")));
    const Path file = home_.layout.stateFolder / "kept";
    std::filesystem::permissions(file, std::filesystem::perms::none);
    {
        const test::ScopedUnprivileged asAnybody;
        EXPECT_FALSE(KeptPaths::read(home_.platform, home_.layout));
        EXPECT_FALSE(keepPath(home_.place("b")));
    }
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    EXPECT_THAT(list().paths(), ElementsAre(home_.place("a")));
}

TEST_P(Keeping, ADamagedListKeepsWhatIsReadable) {
    ASSERT_TRUE(
        OwnFile(home_.layout.stateFolder / "kept").replace("relative\n\n" + home_.home.string() + "/good\nhalf"));
    EXPECT_THAT(list().paths(), ElementsAre(home_.home / "good"));
}

INSTANTIATE_TEST_SUITE_P(Systems, Keeping, ::testing::Values(System::Linux, System::Mac),
                         [](const auto& instance) { return instance.param == System::Linux ? "Linux" : "Mac"; });

} // namespace
} // namespace vellmoor
