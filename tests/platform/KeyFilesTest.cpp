#include "KeyFiles.h"

#include "LinuxPlatform.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vellmoor {
namespace {

using test::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::Key;

TEST(KeyFiles, KeepTranslationsUnderTheirFullKey) {
    const auto file = parseKeyFile("[Desktop Entry]\nName=Files\nName[zh_CN]=文件\n", false);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->at("Desktop Entry").at("Name"), "Files");
    EXPECT_EQ(file->at("Desktop Entry").at("Name[zh_CN]"), "文件");
}

TEST(KeyFiles, UnescapeTheValuesOfADesktopEntry) {
    const auto file = parseKeyFile("[Desktop Entry]\nComment=one\\stwo\\nthree\\\\\n", false);
    EXPECT_EQ(file->at("Desktop Entry").at("Comment"), "one two\nthree\\");
}

TEST(KeyFiles, GiveAValueThatCannotBeUnescapedAsItStands) {
    const auto file = parseKeyFile("[G]\nA=bad \\q escape\nB=caf\xe9\n", false);
    EXPECT_EQ(file->at("G").at("A"), "bad \\q escape");
    EXPECT_EQ(file->at("G").at("B"), "caf\xe9");
}

TEST(KeyFiles, KnowGroupsWithoutKeysAndCommentsAndBlanks) {
    const auto file = parseKeyFile("# comment\n\n[Empty]\n[Profile0]\n Path = a b \n", false);
    ASSERT_TRUE(file);
    EXPECT_THAT(*file, ElementsAre(Key("Empty"), Key("Profile0")));
    EXPECT_EQ(file->at("Profile0").at("Path"), "a b ");
}

TEST(KeyFiles, TextThatIsNoneAnswersNothing) {
    EXPECT_FALSE(parseKeyFile("just words\n", false));
    EXPECT_FALSE(parseKeyFile("Key=before any group\n", false));
}

TEST(UnitFiles, JoinContinuedLinesAndKeepValuesAsWritten) {
    const auto file = parseKeyFile("; comment\n[Service]\nExecStart=-/usr/bin/tool \\\n# between\n; between\n"
                                   "    --option=\"a \\\" b\" \\\n  last\nRestart=always\n",
                                   true);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->at("Service").at("ExecStart"), "-/usr/bin/tool  --option=\"a \\\" b\"  last");
    EXPECT_EQ(file->at("Service").at("Restart"), "always");
}

TEST(UnitFiles, AreKnownByTheirEnding) {
    const TemporaryFolder folder;
    const std::string text = "[Service]\nExecStart=/bin/a \\\n b\n";
    const LinuxPlatform platform;
    EXPECT_EQ(platform.keyFile(folder.text("a.service", text))->at("Service").at("ExecStart"), "/bin/a  b");
    EXPECT_FALSE(platform.keyFile(folder.text("a.desktop", text)));
}

TEST(ReadKeyFile, LeavesLanguagesOutThatTheProgramDoesNotSpeak) {
    const TemporaryFolder folder;
    const std::string text =
        "# Name[de]=no comment is lost\n[Desktop Entry]\nName=Files\nName[de]=Dateien\nName[zh_CN]=文件\n"
        "Name[en_GB]=Files, please\nComment[fr] = x\nExec=sh -c \"[ -e a ] = b\"\n[Desktop Action "
        "a]\nName=A\nName[de]=B";
    const auto entry = LinuxPlatform().keyFile(folder.text("a.desktop", text));
    ASSERT_TRUE(entry);
    EXPECT_THAT(entry->at("Desktop Entry"),
                ElementsAre(Key("Exec"), Key("Name"), Key("Name[en_GB]"), Key("Name[zh_CN]")));
    EXPECT_EQ(entry->at("Desktop Entry").at("Exec"), "sh -c \"[ -e a ] = b\"");
    EXPECT_THAT(entry->at("Desktop Action a"), ElementsAre(Key("Name")));
    const auto other = LinuxPlatform().keyFile(folder.text("a.ini", text));
    ASSERT_TRUE(other);
    EXPECT_TRUE(other->at("Desktop Entry").contains("Name[de]"));
}

TEST(ReadKeyFile, TakesRegularFilesOfAtMostOneMebibyte) {
    const TemporaryFolder folder;
    const LinuxPlatform platform;
    const std::string text = "[G]\nA=1\n";
    EXPECT_TRUE(platform.keyFile(folder.text("small", text)));
    EXPECT_TRUE(platform.keyFile(folder.text("full", text + "#" + std::string((1 << 20) - text.size() - 1, 'x'))));
    EXPECT_FALSE(platform.keyFile(folder.text("large", text + "#" + std::string((1 << 20) - text.size(), 'x'))));
    EXPECT_FALSE(platform.keyFile(folder.fifo("pipe")));
    EXPECT_FALSE(platform.keyFile(folder.path()));
    EXPECT_FALSE(platform.keyFile(folder / "missing"));
}

} // namespace
} // namespace vellmoor
