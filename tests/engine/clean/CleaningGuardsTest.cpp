#include "Host.h"
#include "ProtectedPaths.h"
#include "clean/CleaningFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using CleaningGuards = Cleaning;

INSTANTIATE_TEST_SUITE_P(On, CleaningGuards, ::testing::ValuesIn(test::hostedSystems()), systemName);

TEST_P(CleaningGuards, ALinkMovesToTheTrashAndWhatItNamesStays) {
    const Path document = home.text("Documents/thesis", "words");
    const Path link = home.link(document, "Stuff/link");
    clean(home, {link});
    EXPECT_FALSE(home.has(link));
    EXPECT_TRUE(std::filesystem::is_symlink(trashed("link")));
    EXPECT_EQ(contentOf(document), "words");
}

TEST_P(CleaningGuards, AFolderThatBecameALinkSinceTheScanMovesAsALink) {
    const Path document = home.text("Documents/thesis", "words");
    const Path target = home.link(document.parent_path(), "Stuff/cache");
    clean(home, {target});
    EXPECT_FALSE(home.has(target));
    EXPECT_EQ(contentOf(document), "words");
}

TEST_P(CleaningGuards, ALinkInTheTrashIsRemovedAsALink) {
    const Path document = home.text("Documents/thesis", "words");
    const Path link = home.link(document.parent_path(), trashed("link"));
    const CleanupReport report = clean(home, {link});
    EXPECT_THAT(report.failures, IsEmpty());
    expectRemovedForGood(link);
    EXPECT_EQ(contentOf(document), "words");
}

TEST_P(CleaningGuards, ALinkInTheTrashThatNamesTheHomeIsRemovedAsALink) {
    const Path document = home.text("Documents/thesis", "words");
    const Path link = home.link(home.home, trashed("link"));
    const CleanupReport report = clean(home, {link});
    EXPECT_THAT(report.failures, IsEmpty());
    expectRemovedForGood(link);
    EXPECT_EQ(contentOf(document), "words");
}

TEST_P(CleaningGuards, LinksDeepInATrashedFolderAreNotFollowed) {
    const Path document = home.text("Documents/thesis", "words");
    home.link(document.parent_path(), trashed("old/inner/folder-link"));
    home.link(document, trashed("old/file-link"));
    const CleanupReport report = clean(home, {trashed("old")});
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_FALSE(home.has(trashed("old")));
    EXPECT_EQ(contentOf(document), "words");
}

TEST_P(CleaningGuards, NothingBehindALinkInTheTrashIsTouched) {
    const Path document = home.text("Documents/thesis", "words");
    home.link(home.place("Documents"), trashed("folder"));
    const CleanupReport report = clean(home, {trashed("folder/thesis")});
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_THAT(report.failures, ElementsAre(StartsWith("thesis: ")));
    EXPECT_EQ(contentOf(document), "words");
}

TEST_P(CleaningGuards, NothingDeepBehindALinkInTheTrashIsTouched) {
    const Path document = home.text("Documents/essays/thesis", "words");
    home.link(home.place("Documents"), trashed("folder"));
    const CleanupReport report = clean(home, {trashed("folder/essays/thesis")});
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_THAT(report.failures, ElementsAre(StartsWith("thesis: ")));
    EXPECT_EQ(contentOf(document), "words");
}

TEST_P(CleaningGuards, ATrashThatBecameALinkToAnotherFolderIsNotEmptied) {
    const Path document = home.text("Documents/thesis", "words");
    home.file(trashed("thesis"));
    std::filesystem::rename(trash.contents, home.place("moved-away"));
    std::filesystem::create_symlink(home.place("Documents"), trash.contents);
    const CleanupReport report = clean(home, {trashed("thesis")});
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_THAT(report.failures, ElementsAre(StartsWith("thesis: ")));
    EXPECT_EQ(contentOf(document), "words");
}

TEST_P(CleaningGuards, TheHomeAndWhatLiesAboveItAreRefused) {
    const Path document = home.text("Documents/thesis", "words");
    const CleanupReport report = clean(home, {home.home, home.home.parent_path(), "/"});
    EXPECT_EQ(report.failedCount, 3);
    EXPECT_THAT(report.failures,
                ElementsAre(StartsWith(home.home.filename().string() + ": "),
                            StartsWith(home.home.parent_path().filename().string() + ": "), StartsWith("/: ")));
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_EQ(contentOf(document), "words");
}

TEST_P(CleaningGuards, EveryProtectedFolderIsRefused) {
    std::vector<Path> folders;
    for (const Path& path : protectedFolders(home.platform, home.layout)) {
        if (path != home.platform.own) {
            folders.push_back(home.folder(path));
        }
    }
    const CleanupReport report = clean(home, folders);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(static_cast<std::size_t>(report.failedCount), folders.size());
    EXPECT_THAT(home.platform.changes(), IsEmpty());
}

TEST_P(CleaningGuards, ADetourToAProtectedFolderIsRefused) {
    home.folder("Stuff");
    home.text("Documents/thesis", "words");
    const CleanupReport report = clean(home, {home.home / "Stuff/../Documents/."});
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_TRUE(home.has("Documents/thesis"));
}

TEST_P(CleaningGuards, AMountPointIsRefused) {
    const Path disk = home.folder("Stuff/disk");
    home.file("Stuff/disk/a");
    home.platform.mountPoints.insert(disk);
    const CleanupReport report = clean(home, {disk});
    EXPECT_THAT(report.failures, ElementsAre(StartsWith("disk: ")));
    EXPECT_TRUE(home.has("Stuff/disk/a"));
    EXPECT_THAT(home.platform.changes(), IsEmpty());
}

TEST_P(CleaningGuards, ARelativePathIsRefused) {
    const Path file = home.file("Stuff/a");
    const CleanupReport report = clean(home, {std::filesystem::relative(file)});
    EXPECT_THAT(report.failures, ElementsAre(StartsWith("a: ")));
    EXPECT_TRUE(home.has(file));
}

TEST_P(CleaningGuards, APathThatClimbsOutOfALinkIsRefused) {
    const Path named = home.text("Stuff/a", "words");
    home.folder("Other/inner");
    const Path meant = home.text("Other/a", "more words");
    home.link(home.place("Other/inner"), "Stuff/link");
    clean(home, {home.home / "Stuff/link/../a"});
    EXPECT_EQ(contentOf(named), "words"); // the lexical reading
    if (!isMac) {                         // macOS goes through the link, as the scan did
        EXPECT_EQ(contentOf(meant), "more words");
    }
}

} // namespace
} // namespace vellmoor::test
