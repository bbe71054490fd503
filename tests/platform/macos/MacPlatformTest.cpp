// Foundation as it answers here - on Linux GNUstep's - on files of a throw-away folder. The user's Trash, settings and
// running applications are left alone.
#include "MacPlatform.h"

#include "TemporaryFolder.h"
#include "trash/TrashSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr auto shell = "/bin/sh";

class MacPlatformTest : public ::testing::Test {
protected:
    [[nodiscard]] Path agent(const std::string& body) const {
        return folder_.text("agent.plist", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>" +
                                               body + "</dict></plist>");
    }

    [[nodiscard]] bool removes(const Path& path, const Path& trash) const {
        const auto session = platform_.trashSession({});
        const RemovalRequest request{.path = path, .identity = platform_.identity(path)};
        return session->removeFromTrash(request, {trash, trash, trash}).result == RemovalResult::Done;
    }

    test::TemporaryFolder folder_;
    MacPlatform platform_;
};

TEST_F(MacPlatformTest, AMoveNeverReplacesWhatIsThere) {
    const Path from = folder_.text("from", "new");
    const Path to = folder_.text("to", "old");
    const Outcome moved = platform_.moveItem(from, to);
    ASSERT_FALSE(moved);
    EXPECT_THAT(moved.error(), Not(IsEmpty()));
    EXPECT_EQ(platform_.fileContents(to, 100), "old");
    EXPECT_EQ(platform_.fileContents(from, 100), "new");
}

TEST_F(MacPlatformTest, AFolderIsMadeWithThoseAboveIt) {
    EXPECT_TRUE(platform_.createFolder(folder_ / "a/b/c"));
    EXPECT_TRUE(platform_.createFolder(folder_ / "a/b/c")); // there already
    EXPECT_TRUE(fs::is_directory(folder_ / "a/b/c"));
}

TEST_F(MacPlatformTest, WhatLiesInATrashGoesWithEverythingBelowAndWithNothingElse) {
    const Path trash = folder_.folder("Trash");
    const Path outside = folder_.text("kept", "kept");
    folder_.text("Trash/item/deep/file", "gone");
    folder_.link(outside, "Trash/item/link");
    EXPECT_TRUE(removes(trash / "item", trash));
    EXPECT_FALSE(fs::exists(trash / "item"));
    EXPECT_TRUE(fs::exists(outside));
}

TEST_F(MacPlatformTest, ALinkInATrashGoesItself) {
    const Path trash = folder_.folder("Trash");
    folder_.text("kept/file", "kept");
    folder_.link(folder_ / "kept", "Trash/link");
    EXPECT_TRUE(removes(trash / "link", trash));
    EXPECT_FALSE(fs::exists(fs::symlink_status(trash / "link")));
    EXPECT_TRUE(fs::exists(folder_ / "kept/file"));
}

TEST_F(MacPlatformTest, NothingOutsideTheTrashIsRemovedForGood) {
    const Path trash = folder_.folder("Trash");
    const Path outside = folder_.text("elsewhere/file", "kept");
    folder_.link(folder_ / "elsewhere", "Trash/way");
    EXPECT_FALSE(removes(outside, trash));
    EXPECT_FALSE(removes(trash / "way/file", trash));
    EXPECT_FALSE(removes(trash, trash));
    EXPECT_TRUE(fs::exists(outside));
    EXPECT_TRUE(fs::exists(trash));
}

TEST_F(MacPlatformTest, AnotherFileThanTheOneShownStaysInTheTrash) {
    const Path trash = folder_.folder("Trash");
    const Path item = folder_.text("Trash/item", "shown");
    const RemovalRequest request{.path = item, .identity = platform_.identity(item)};
    folder_.text("Trash/other", "not shown");
    fs::rename(trash / "other", item);
    const auto session = platform_.trashSession({});
    EXPECT_EQ(session->removeFromTrash(request, {trash, trash, trash}).result, RemovalResult::Changed);
    EXPECT_EQ(platform_.fileContents(item, 100), "not shown");
}

TEST_F(MacPlatformTest, WithoutAFolderThereIsNoBundle) {
    EXPECT_FALSE(platform_.bundleInfo(folder_ / "Gone.app"));
}

TEST_F(MacPlatformTest, ALaunchAgentsKeysAreRead) {
    const auto read = platform_.launchAgent(
        agent("<key>Label</key><string>org.example.agent</string><key>Program</key><string>/bin/a</string>"
              "<key>ProgramArguments</key><array><string>a</string><string>-b</string></array>"
              "<key>KeepAlive</key><false/><key>RunAtLoad</key><true/>"));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->label, "org.example.agent");
    EXPECT_EQ(read->program, "/bin/a");
    EXPECT_THAT(read->arguments, ElementsAre("a", "-b"));
    EXPECT_TRUE(read->hasKeepAlive);
    EXPECT_TRUE(read->runAtLoad);
}

TEST_F(MacPlatformTest, TheNumberOneDoesNotRunAtLoad) {
    const auto read = platform_.launchAgent(agent("<key>RunAtLoad</key><integer>1</integer>"));
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->runAtLoad);
}

TEST_F(MacPlatformTest, AnArgumentThatIsNoTextMakesTheListCountAsAbsent) {
    const auto read = platform_.launchAgent(
        agent("<key>ProgramArguments</key><array><string>a</string><integer>1</integer></array>"));
    ASSERT_TRUE(read);
    EXPECT_THAT(read->arguments, IsEmpty());
}

TEST_F(MacPlatformTest, WhatIsNoDictionaryIsNoLaunchAgent) {
    EXPECT_FALSE(platform_.launchAgent(folder_.text("a.plist", "<plist version=\"1.0\"><array/></plist>")));
    EXPECT_FALSE(platform_.launchAgent(folder_.text("b.plist", "no property list <")));
    EXPECT_FALSE(platform_.launchAgent(folder_ / "missing.plist"));
    EXPECT_FALSE(platform_.launchAgent(folder_.fifo("c.plist"))); // and it does not wait for a writer
}

TEST_F(MacPlatformTest, AToolsOutputAndErrorsComeTogether) {
    const CommandResult result = platform_.commandResult(shell, {"-c", "echo one; echo two >&2; exit 3"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.output, "one\ntwo\n");
    EXPECT_THAT(result.errorMessage, IsEmpty());
}

TEST_F(MacPlatformTest, OnlyASuccessfulToolHasOutput) {
    EXPECT_EQ(platform_.commandOutput(shell, {"-c", "echo one; echo two >&2"}), "one\n");
    EXPECT_EQ(platform_.commandOutput(shell, {"-c", "exit 0"}), "");
    EXPECT_EQ(platform_.commandOutput(shell, {"-c", "echo one; exit 1"}), std::nullopt);
}

TEST_F(MacPlatformTest, OutputThatIsNoUtf8CountsAsNone) {
    EXPECT_EQ(platform_.commandOutput(shell, {"-c", "printf '\\377'"}), std::nullopt);
    EXPECT_THAT(platform_.commandResult(shell, {"-c", "printf '\\377'"}).output, IsEmpty());
}

TEST_F(MacPlatformTest, AToolMayPrintMoreThanAPipeHolds) {
    const auto output = platform_.commandOutput("/usr/bin/head", {"-c", "1000000", "/dev/zero"});
    ASSERT_TRUE(output);
    EXPECT_EQ(output->size(), 1'000'000U);
}

TEST_F(MacPlatformTest, AMissingToolSaysWhyItDidNotStart) {
    const CommandResult result = platform_.commandResult(folder_ / "missing", {});
    EXPECT_EQ(result.status, -1);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_THAT(result.errorMessage, Not(IsEmpty()));
    EXPECT_EQ(platform_.commandOutput(folder_ / "missing", {}), std::nullopt);
}

TEST_F(MacPlatformTest, TheHostIsKnown) {
    EXPECT_GT(platform_.physicalMemory(), 0);
    EXPECT_TRUE(platform_.ownPath().is_absolute());
}

TEST_F(MacPlatformTest, LettersOfEveryScriptAreKept) {
    EXPECT_EQ(platform_.lowerCase("ÄPFEL"), "äpfel");
    EXPECT_EQ(platform_.lettersAndDigits("Größe 2 – 磁盘!"), "größe2磁盘");
}

} // namespace
} // namespace vellmoor
