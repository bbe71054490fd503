#include "StandInPlatform.h"

#include "EngineHome.h"
#include "FileContent.h"
#include "TrashHelp.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace vellmoor::test {
namespace {

using test::contentOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Optional;
using ::testing::StartsWith;

Removal moveToTrash(const StandInPlatform& platform, const Path& path) {
    const TrashFolder home = platform.homeTrash();
    return moveToTrash(platform, requestFor(platform, path),
                       {.home = home, .known = {home}, .volumeForms = {}, .anchors = {platform.home}});
}

bool movesToTrash(const StandInPlatform& platform, const Path& path) {
    return moveToTrash(platform, path).result == RemovalResult::Done;
}

std::vector<std::string> namesIn(const StandInPlatform& platform, const Path& folder) {
    std::vector<std::string> names;
    const auto entries = platform.entries(folder);
    for (const FolderEntry& entry : entries.value_or(std::vector<FolderEntry>())) {
        names.push_back(entry.name);
    }
    std::ranges::sort(names);
    return names;
}

TEST(StandInTrash, OnMacOSIsAFolderAndAClashGetsTheTime) {
    EngineHome home(System::Mac);
    EXPECT_TRUE(movesToTrash(home.platform, home.text("a/note.txt", "one")));
    EXPECT_TRUE(movesToTrash(home.platform, home.text("b/note.txt", "two")));
    EXPECT_TRUE(movesToTrash(home.platform, home.text("c/note.txt", "three")));
    const auto names = namesIn(home.platform, home.home / ".Trash");
    ASSERT_EQ(names.size(), 3U);
    EXPECT_EQ(contentOf(home.home / ".Trash/note.txt"), "one");
    EXPECT_THAT(names[0], ::testing::MatchesRegex("note [0-9.]+( [0-9]+)?[.]txt"));
    EXPECT_FALSE(home.has("b/note.txt"));
}

TEST(StandInTrash, OnLinuxHasARestoreNoteForEachItem) {
    EngineHome home(System::Linux);
    EXPECT_TRUE(movesToTrash(home.platform, home.text("a b/note.txt", "one")));
    EXPECT_TRUE(movesToTrash(home.platform, home.text("c/note.txt", "two")));
    const Path trash = home.home / ".local/share/Trash";
    EXPECT_EQ(contentOf(trash / "files/note.txt"), "one");
    EXPECT_EQ(contentOf(trash / "files/note.2.txt"), "two");
    EXPECT_THAT(contentOf(trash / "info/note.txt.trashinfo"),
                ::testing::AllOf(StartsWith("[Trash Info]\nPath=/"), HasSubstr("/a%20b/note.txt\nDeletionDate=2")));
    EXPECT_TRUE(home.has(trash / "info/note.2.txt.trashinfo"));
}

TEST(StandInTrash, OfAVolumeLiesOnIt) {
    EngineHome mac(System::Mac);
    mac.platform.volumes = {{mac.folder("/Volumes/Stick"), "Stick"}};
    EXPECT_TRUE(movesToTrash(mac.platform, mac.file("/Volumes/Stick/file")));
    EXPECT_TRUE(mac.has(mac.place("/Volumes/Stick/.Trashes") / std::to_string(mac.platform.user) / "file"));
}

TEST(StandInTrash, AMissingPathFailsAndLeavesNoNote) {
    EngineHome home(System::Linux);
    EXPECT_EQ(moveToTrash(home.platform, home.home / "missing").result, RemovalResult::Vanished);
    EXPECT_THAT(namesIn(home.platform, home.platform.homeTrash().folder / "info"), ElementsAre());
}

TEST(StandInChanges, StayInsideTheHomeTheRootAndTheVolumes) {
    EngineHome home(System::Linux);
    const TemporaryFolder elsewhere;
    const Path file = elsewhere.file("file");
    EXPECT_FALSE(movesToTrash(home.platform, file));
    EXPECT_FALSE(home.platform.removeFile(file));
    EXPECT_FALSE(home.platform.moveItem(home.file("mine"), elsewhere / "mine"));
    EXPECT_FALSE(home.platform.createFile(home.home / "../../../new", ""));
    EXPECT_FALSE(movesToTrash(home.platform, home.home));
    EXPECT_TRUE(home.platform.exists(file));
    EXPECT_TRUE(home.has("mine"));
}

TEST(StandInFailures, HappenAtTheirPathWithTheirReason) {
    EngineHome home(System::Linux);
    const Path bad = home.file("bad");
    home.platform.fail(Operation::MoveToTrash, bad, "made to fail");
    home.platform.fail(Operation::List, home.folder("closed"), "not today");
    EXPECT_EQ(moveToTrash(home.platform, bad).reason, "made to fail");
    EXPECT_TRUE(home.platform.removeFile(bad));
    EXPECT_TRUE(movesToTrash(home.platform, home.file("good")));
    EXPECT_EQ(home.platform.entries(home.home / "closed").error(), "not today");
    EXPECT_FALSE(home.platform.isReadable(home.home / "closed"));
}

TEST(StandInFailures, StartAfterAGivenNumberOfChanges) {
    EngineHome home(System::Linux);
    home.platform.failAfter(1, "disk full");
    EXPECT_TRUE(home.platform.createFile(home.home / "one", ""));
    EXPECT_EQ(home.platform.createFile(home.home / "two", "").error(), "disk full");
    EXPECT_FALSE(home.has("two"));
    EXPECT_THAT(home.platform.changes(), ElementsAre(Change{Operation::CreateFile, home.home / "one"}));
}

TEST(StandInTools, AnswerTheirScriptAndAreRecorded) {
    EngineHome home(System::Mac);
    home.platform.tools["/bin/tool"] = [](const auto& arguments) {
        return CommandResult{arguments.empty() ? 0 : 1, "text", ""};
    };
    EXPECT_THAT(home.platform.commandOutput("/bin/tool", {}), Optional(std::string("text")));
    EXPECT_FALSE(home.platform.commandOutput("/bin/tool", {"-x"}));
    EXPECT_EQ(home.platform.commandResult("/bin/tool", {"-x"}).status, 1);
    EXPECT_TRUE(home.platform.isExecutable("/bin/tool"));
    EXPECT_THAT(home.platform.invocations(), ElementsAre(Invocation{"/bin/tool", {}}, Invocation{"/bin/tool", {"-x"}},
                                                         Invocation{"/bin/tool", {"-x"}}));
}

TEST(StandInTools, WithoutScriptCannotBeStartedEvenWhenReal) {
    const EngineHome home(System::Mac);
    EXPECT_EQ(home.platform.commandResult("/bin/true", {}).status, -1);
    EXPECT_EQ(home.platform.commandResult("/bin/true", {}).combinedOutput(), "No such file or directory");
    EXPECT_FALSE(home.platform.commandOutput("/bin/true", {}));
}

TEST(StandInPaths, AreStandardisedAsTheSystemDoes) {
    EngineHome mac(System::Mac);
    mac.file("/tmp/x");
    mac.file("real/inner/file");
    mac.link("real/inner", "alias");
    EXPECT_EQ(mac.platform.standardized(mac.place("/private/tmp/x")), mac.place("/tmp/x"));
    EXPECT_EQ(mac.platform.standardized(mac.place("/private/tmp/missing")), mac.place("/private/tmp/missing"));
    EXPECT_EQ(mac.platform.standardized(mac.home / "alias/.."), mac.home / "real");
    EXPECT_EQ(mac.platform.standardized(mac.home / "alias//./file/"), mac.home / "alias/file");
    const EngineHome linuxHome(System::Linux);
    linuxHome.link("real/inner", "alias");
    EXPECT_EQ(linuxHome.platform.standardized(linuxHome.home / "alias/.."), linuxHome.home);
}

TEST(StandInPackages, AreFoldersWithAPackagesNameOnMacOS) {
    const EngineHome mac(System::Mac);
    EXPECT_TRUE(mac.platform.isPackage(mac.folder("Some.app")));
    EXPECT_TRUE(mac.platform.isPackage(mac.folder("Photos.PhotosLibrary")));
    EXPECT_FALSE(mac.platform.isPackage(mac.folder("plain")));
    EXPECT_FALSE(mac.platform.isPackage(mac.folder("app")));
    EXPECT_FALSE(mac.platform.isPackage(mac.file("file.app")));
    const EngineHome linuxHome(System::Linux);
    EXPECT_FALSE(linuxHome.platform.isPackage(linuxHome.folder("Some.app")));
}

std::string propertyList(const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>";
}

TEST(PropertyLists, TellABundlesNames) {
    const EngineHome mac(System::Mac);
    mac.text("A.app/Contents/Info.plist", propertyList("<dict><key>CFBundleIdentifier</key><string>org.a</string>"
                                                       "<key>CFBundleName</key><string>Ä</string></dict>"));
    const auto info = mac.platform.bundleInfo(mac.home / "A.app");
    ASSERT_TRUE(info);
    EXPECT_EQ(info->identifier, "org.a");
    EXPECT_EQ(info->name, "Ä");
    EXPECT_FALSE(info->displayName);
}

TEST(PropertyLists, AFolderWithoutOneIsABundleWithoutNamesAndNothingIsNone) {
    const EngineHome mac(System::Mac);
    const auto info = mac.platform.bundleInfo(mac.folder("B.app"));
    ASSERT_TRUE(info);
    EXPECT_FALSE(info->identifier || info->name || info->displayName);
    EXPECT_FALSE(mac.platform.bundleInfo(mac.home / "missing.app"));
    EXPECT_FALSE(mac.platform.bundleInfo(mac.file("file.app")));
}

TEST(PropertyLists, ValuesOfAnotherTypeCountAsAbsent) {
    const EngineHome mac(System::Mac);
    const auto agent = mac.platform.launchAgent(mac.text(
        "a.plist", propertyList("<dict><key>Label</key><integer>1</integer><key>Program</key><array/>"
                                "<key>ProgramArguments</key><array><string>/bin/a</string><true/></array>"
                                "<key>KeepAlive</key><false/><key>RunAtLoad</key><integer>1</integer></dict>")));
    ASSERT_TRUE(agent);
    EXPECT_FALSE(agent->label);
    EXPECT_FALSE(agent->program);
    EXPECT_TRUE(agent->arguments.empty());
    EXPECT_TRUE(agent->hasKeepAlive);
    EXPECT_FALSE(agent->runAtLoad);
}

TEST(PropertyLists, ALaunchAgentIsReadWhole) {
    const EngineHome mac(System::Mac);
    const auto agent = mac.platform.launchAgent(mac.text(
        "a.plist", propertyList("<dict><key>Label</key><string>org.a</string><key>Program</key><string>/p</string>"
                                "<key>ProgramArguments</key><array><string>/bin/a</string><string>-x</string></array>"
                                "<key>RunAtLoad</key><true/></dict>")));
    ASSERT_TRUE(agent);
    EXPECT_EQ(agent->label, "org.a");
    EXPECT_EQ(agent->program, "/p");
    EXPECT_THAT(agent->arguments, ElementsAre("/bin/a", "-x"));
    EXPECT_FALSE(agent->hasKeepAlive);
    EXPECT_TRUE(agent->runAtLoad);
}

TEST(PropertyLists, TheBinaryFormIsReadToo) {
    // {"Label": "org.binary", "RunAtLoad": true}
    constexpr unsigned char bytes[] = {
        'b',  'p',  'l',  'i',  's',  't',  '0', '0', 0xd2, 0x01, 0x02, 0x03, 0x04, 0x55, 'L', 'a', 'b', 'e', 'l', 0x59,
        'R',  'u',  'n',  'A',  't',  'L',  'o', 'a', 'd',  0x5a, 'o',  'r',  'g',  '.',  'b', 'i', 'n', 'a', 'r', 'y',
        0x09, 0x08, 0x0d, 0x13, 0x1d, 0x28, 0,   0,   0,    0,    0,    0,    1,    1,    0,   0,   0,   0,   0,   0,
        0,    5,    0,    0,    0,    0,    0,   0,   0,    0,    0,    0,    0,    0,    0,   0,   0,   0x29};
    const EngineHome mac(System::Mac);
    const auto agent = mac.platform.launchAgent(
        mac.text("a.plist", std::string_view(reinterpret_cast<const char*>(bytes), sizeof bytes)));
    ASSERT_TRUE(agent);
    EXPECT_EQ(agent->label, "org.binary");
    EXPECT_TRUE(agent->runAtLoad);
}

TEST(PropertyLists, WhatIsNoneOrCannotBeReadAnswersNothing) {
    const EngineHome mac(System::Mac);
    EXPECT_FALSE(mac.platform.launchAgent(mac.text("text.plist", "just text")));
    EXPECT_FALSE(mac.platform.launchAgent(mac.text("array.plist", propertyList("<array/>"))));
    EXPECT_FALSE(mac.platform.launchAgent(mac.text("cut.plist", "bplist00")));
    EXPECT_FALSE(mac.platform.launchAgent(mac.fifo("pipe.plist")));
    EXPECT_FALSE(mac.platform.launchAgent(mac.file("huge.plist", 2 << 20)));
    EXPECT_FALSE(mac.platform.launchAgent(mac.home / "missing.plist"));
    const EngineHome linuxHome(System::Linux);
    EXPECT_FALSE(linuxHome.platform.launchAgent(linuxHome.text("a.plist", propertyList("<dict/>"))));
}

TEST(EngineHomes, PutPathsIntoHomeOrRootAndDateThem) {
    const EngineHome home(System::Linux);
    EXPECT_EQ(home.file("a/b"), home.home / "a/b");
    EXPECT_EQ(home.file("/proc/1/stat"), home.root / "proc/1/stat");
    EXPECT_EQ(home.file(home.home / "c"), home.home / "c");
    EXPECT_EQ(home.platform.facts(home.file("old", 10, days(8)))->modified, home.now - days(8));
}

} // namespace
} // namespace vellmoor::test
