#include "PropertyLists.h"
#include "found/ScanSnapshot.h"
#include "login/StartupFixture.h"

#include <cstdlib>
#include <memory>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::SizeIs;

std::string agentList(const std::string& keys) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n<dict>" +
           keys + "</dict>\n</plist>\n";
}

std::string key(const std::string& name, const std::string& value) {
    return "<key>" + name + "</key><string>" + value + "</string>";
}

std::string arguments(const std::vector<std::string>& values) {
    std::string list = "<key>ProgramArguments</key><array>";
    for (const std::string& value : values) {
        list += "<string>" + value + "</string>";
    }
    return list + "</array>";
}

class MacStartup : public ::testing::Test {
protected:
    EngineHome home{System::Mac};

    Path agent(const std::string& file, const std::string& keys) const {
        return home.text(Path("Library/LaunchAgents") / file, agentList(keys));
    }
    Path disabledAgent(const std::string& file, const std::string& keys) const {
        return home.text(Path("Library/LaunchAgents.disabled") / file, agentList(keys));
    }
    Path bundle(const Path& path, const std::string& keys) const {
        home.text(path / "Contents/Info.plist", agentList(keys));
        return home.place(path);
    }
    [[nodiscard]] bool startsAtLogin(const std::string& keys) const {
        agent("a.plist", keys);
        return onlyItem(home).startsAtLogin;
    }
};

// The records

TEST_F(MacStartup, AnAgentWithoutApplicationIsNamedAfterItsLabel) {
    const Path file = agent("file.plist", key("Label", "com.example.update-agent") + key("Program", "/opt/x/agent"));
    const StartupItem item = onlyItem(home);
    EXPECT_EQ(item.id, "com.example.update-agent");
    EXPECT_EQ(item.name, "update agent");
    EXPECT_EQ(item.label, "com.example.update-agent");
    EXPECT_EQ(item.description, "/opt/x/agent");
    EXPECT_EQ(item.plistURL, file);
    EXPECT_EQ(item.appURL, std::nullopt);
    EXPECT_THAT(item.program, Optional(std::string("/opt/x/agent")));
    EXPECT_TRUE(item.isEnabled);
    EXPECT_FALSE(item.startsAtLogin);
}

TEST_F(MacStartup, ABinaryListIsReadAlike) {
    home.text("Library/LaunchAgents/file.plist",
              binaryPropertyList(agentList(key("Label", "com.example.agent") + key("Program", "/opt/agent") +
                                           "<key>RunAtLoad</key><true/>")));
    const StartupItem item = onlyItem(home);
    EXPECT_EQ(item.label, "com.example.agent");
    EXPECT_EQ(item.program, "/opt/agent");
    EXPECT_TRUE(item.startsAtLogin);
}

TEST_F(MacStartup, WithoutLabelTheFileNameIsTheLabel) {
    agent("com.example.agent.plist", key("Program", "/opt/agent"));
    EXPECT_EQ(onlyItem(home).label, "com.example.agent");
    EXPECT_EQ(onlyItem(home).name, "agent");
}

TEST_F(MacStartup, ALabelWithoutAnyPieceFallsBackToTheFileName) {
    agent("My Agent.plist", key("Label", "...") + key("Program", "/opt/agent"));
    EXPECT_EQ(onlyItem(home).name, "My Agent");
}

TEST_F(MacStartup, WithoutProgramTheFirstArgumentIsTheProgram) {
    agent("a.plist", key("Label", "x") + arguments({"/opt/first", "second"}));
    EXPECT_THAT(onlyItem(home).program, Optional(std::string("/opt/first")));
}

TEST_F(MacStartup, TheProgramGoesBeforeTheArguments) {
    agent("a.plist", key("Label", "x") + key("Program", "/opt/program") + arguments({"/opt/first"}));
    EXPECT_THAT(onlyItem(home).program, Optional(std::string("/opt/program")));
}

TEST_F(MacStartup, WithoutAnyProgramTheFileIsTheDescription) {
    agent("a.plist", key("Label", "x"));
    EXPECT_EQ(onlyItem(home).program, std::nullopt);
    EXPECT_EQ(onlyItem(home).description, "a.plist");
}

TEST_F(MacStartup, AProgramInTheHomeFolderIsShortened) {
    agent("a.plist", key("Label", "x") + key("Program", home.place("bin/agent").string()));
    EXPECT_EQ(onlyItem(home).description, "~/bin/agent");
}

TEST_F(MacStartup, KeepAliveStartsAtLoginWhateverItsValue) {
    EXPECT_TRUE(startsAtLogin("<key>KeepAlive</key><false/>"));
    EXPECT_TRUE(startsAtLogin("<key>KeepAlive</key><dict/>"));
    EXPECT_TRUE(startsAtLogin("<key>KeepAlive</key><string>x</string><key>RunAtLoad</key><false/>"));
}

TEST_F(MacStartup, RunAtLoadStartsAtLoginOnlyWhenTrue) {
    EXPECT_TRUE(startsAtLogin("<key>RunAtLoad</key><true/>"));
    EXPECT_FALSE(startsAtLogin("<key>RunAtLoad</key><false/>"));
    EXPECT_FALSE(startsAtLogin("<key>RunAtLoad</key><integer>1</integer>"));
    EXPECT_FALSE(startsAtLogin("<key>RunAtLoad</key><string>true</string>"));
    EXPECT_FALSE(startsAtLogin(""));
}

// The application of an agent

TEST_F(MacStartup, AProgramInsideABundleBelongsToIt) {
    const Path app = bundle("/Applications/Foo.app",
                            key("CFBundleIdentifier", "com.example.foo") + key("CFBundleDisplayName", "Foo Shown"));
    agent("a.plist", key("Label", "x.y") + arguments({"/Applications/Foo.app/Contents/MacOS/Foo", "--daemon"}));
    const StartupItem item = onlyItem(home);
    EXPECT_THAT(item.appURL, Optional(app));
    EXPECT_EQ(item.id, "com.example.foo");
    EXPECT_EQ(item.name, "Foo Shown");
    EXPECT_EQ(item.label, "x.y");
}

TEST_F(MacStartup, AnyArgumentMayLieInABundle) {
    const Path app = bundle("Applications/Foo.app", key("CFBundleIdentifier", "com.example.foo"));
    agent("a.plist", key("Label", "x") + key("Program", "/usr/bin/open") +
                         arguments({"open", "/gone/Bar.app/x", (app / "Contents").string()}));
    EXPECT_THAT(onlyItem(home).appURL, Optional(app));
}

TEST_F(MacStartup, TheEndingIsFoundWhateverTheCase) {
    const Path app = bundle("Applications/Foo.APP", key("CFBundleName", "Foo"));
    agent("a.plist", key("Label", "x") + key("Program", (app / "Contents/MacOS/Foo").string()));
    EXPECT_THAT(onlyItem(home).appURL, Optional(app));
}

TEST_F(MacStartup, AnApplicationWithoutIdentifierLeavesTheLabelAsId) {
    const Path app = bundle("Applications/Foo.app", key("CFBundleName", "Foo"));
    agent("a.plist", key("Label", "x.y") + key("Program", (app / "x").string()));
    EXPECT_EQ(onlyItem(home).id, "x.y");
    EXPECT_EQ(onlyItem(home).name, "Foo");
}

TEST_F(MacStartup, ALabelThatIsAnIdentifierFindsTheApplication) {
    const Path app = bundle("/Applications/Foo.app", key("CFBundleIdentifier", "com.example.foo"));
    agent("a.plist", key("Label", "com.example.foo") + key("Program", "/opt/helper"));
    EXPECT_THAT(onlyItem(home).appURL, Optional(app));
}

TEST_F(MacStartup, ABundleThatIsGoneIsNone) {
    agent("a.plist", key("Label", "x") + key("Program", "/Applications/Gone.app/Contents/MacOS/Gone"));
    EXPECT_EQ(onlyItem(home).appURL, std::nullopt);
    EXPECT_EQ(onlyItem(home).description, "/Applications/Gone.app/Contents/MacOS/Gone");
}

// The list

TEST_F(MacStartup, EnabledItemsComeFirstThenTheNamesInOrder) {
    agent("1.plist", key("Label", "zebra"));
    agent("2.plist", key("Label", "Banana"));
    agent("3.plist", key("Label", "apple"));
    disabledAgent("4.plist", key("Label", "aardvark"));
    EXPECT_THAT(labels(home), ElementsAre("apple", "Banana", "zebra", "aardvark"));
    EXPECT_FALSE(startup(home).back().isEnabled);
}

TEST_F(MacStartup, OnlyVisiblePropertyListsAreItems) {
    agent("a.plist", key("Label", "a"));
    agent(".hidden.plist", key("Label", "h"));
    agent("b.plist.bak", key("Label", "b"));
    agent("c.PLIST", key("Label", "c"));
    agent("sub/d.plist", key("Label", "d"));
    EXPECT_THAT(labels(home), ElementsAre("a"));
}

TEST_F(MacStartup, TwoAgentsOfOneNameAreTwoItems) {
    agent("a.plist", key("Label", "same"));
    agent("b.plist", key("Label", "same"));
    EXPECT_THAT(labels(home), ElementsAre("same", "same"));
}

TEST_F(MacStartup, AFolderThatCannotBeListedHasNoItems) {
    agent("a.plist", key("Label", "a"));
    disabledAgent("b.plist", key("Label", "b"));
    home.platform.fail(Operation::List, home.place("Library/LaunchAgents"), "Operation not permitted");
    EXPECT_THAT(labels(home), ElementsAre("b"));
}

TEST_F(MacStartup, NoFoldersHaveNoItems) {
    EXPECT_THAT(startup(home), IsEmpty());
}

// Bad input

TEST_F(MacStartup, WhatIsNoDictionaryIsPassedOver) {
    const Path folder = "Library/LaunchAgents";
    const std::string whole = agentList(key("Label", "cut") + key("Program", "/opt/cut"));
    home.text(folder / "empty.plist", "");
    home.text(folder / "text.plist", "hello");
    home.text(folder / "cut.plist", binaryPropertyList(whole).substr(0, 20));
    home.text(folder / "array.plist", "<plist version=\"1.0\"><array><string>a</string></array></plist>");
    home.text(folder / "string.plist", "<plist version=\"1.0\"><string>a</string></plist>");
    home.text(folder / "huge.plist", agentList(key("Label", std::string(std::size_t{10} << 20U, 'x'))));
    home.folder(folder / "folder.plist");
    home.fifo(folder / "fifo.plist");
    home.link("nowhere", folder / "dangling.plist");
    home.link("loop.plist", folder / "loop.plist");
    EXPECT_THAT(startup(home), IsEmpty());
}

TEST_F(MacStartup, ValuesOfOtherTypesCountAsAbsent) {
    for (const char* value : {"<integer>7</integer>", "<array/>", "<dict/>", "<true/>", "<data>AAAA</data>"}) {
        agent("a.plist", std::string("<key>Label</key>") + value + "<key>Program</key>" + value +
                             "<key>ProgramArguments</key><string>/x</string>");
        const StartupItem item = onlyItem(home);
        EXPECT_EQ(item.label, "a") << value;
        EXPECT_EQ(item.program, std::nullopt) << value;
        EXPECT_FALSE(item.startsAtLogin) << value;
    }
}

TEST_F(MacStartup, ATextWithAZeroByteIsRead) {
    const std::string label("com.ex\0agent", 12); // the property list library once ended the program here
    agent("a.plist", key("Label", label));
    EXPECT_THAT(onlyItem(home).label, ::testing::StartsWith("com.ex"));
}

TEST_F(MacStartup, OneArgumentThatIsNoTextMakesTheArgumentsAbsent) {
    agent("a.plist", "<key>ProgramArguments</key><array><string>/x</string><integer>1</integer></array>");
    EXPECT_EQ(onlyItem(home).program, std::nullopt);
}

TEST_F(MacStartup, FileNamesOfAnyBytesAreItems) {
    for (const char* name : {"a\nb.plist", "q\"q.plist", "%@%d.plist"}) {
        agent(name, "");
    }
    EXPECT_THAT(labels(home), ::testing::UnorderedElementsAre("a\nb", "q\"q", "%@%d"));
}

TEST_F(MacStartup, AFileNameThatIsNotUtf8IsAnItem) {
    if (!takesName(home.home, "bad\xff.plist")) {
        GTEST_SKIP() << "this file system has only names in UTF-8";
    }
    agent("bad\xff.plist", "");
    EXPECT_THAT(labels(home), ::testing::ElementsAre("bad\xff"));
}

// The rows

TEST_F(MacStartup, TheFirstRowShowsTheAgents) {
    const Path file = agent("a.plist", key("Label", "a"));
    home.file("Library/LaunchAgents/.hidden");
    EngineContext context = home.context();
    const auto rows = performanceItems(context);
    ASSERT_THAT(rows, SizeIs(2));
    const CleanupItem& row = rows[0];
    EXPECT_EQ(row.module, CleanerModule::performance);
    EXPECT_EQ(row.title, "User Launch Agents");
    EXPECT_EQ(row.description, "Login launch configs in ~/Library/LaunchAgents");
    EXPECT_EQ(row.symbol, "power");
    EXPECT_EQ(row.tint, Tint::green);
    EXPECT_EQ(row.risk, CleanupRisk::previewOnly);
    EXPECT_FALSE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
    ASSERT_THAT(row.targets, SizeIs(1));
    EXPECT_EQ(row.targets.front().url, file);
}

TEST_F(MacStartup, TheSecondRowHoldsTheSavedState) {
    home.file("Library/Saved Application State/com.example.foo.savedState/data");
    home.file("Library/Saved Application State/.hidden");
    EngineContext context = home.context();
    const CleanupItem row = performanceItems(context)[1];
    EXPECT_EQ(row.module, CleanerModule::performance);
    EXPECT_EQ(row.title, "Saved Application State");
    EXPECT_EQ(row.description, "Window restore state and temporary session files");
    EXPECT_EQ(row.symbol, "clock.arrow.circlepath");
    EXPECT_EQ(row.tint, Tint::cyan);
    EXPECT_EQ(row.risk, CleanupRisk::cautious);
    EXPECT_TRUE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
    ASSERT_THAT(row.targets, SizeIs(1));
    EXPECT_EQ(row.targets.front().name, "com.example.foo.savedState");
}

TEST_F(MacStartup, WithoutFoldersBothRowsSaySo) {
    EngineContext context = home.context();
    const auto rows = performanceItems(context);
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows[0].description, "Login launch configs in ~/Library/LaunchAgents; no items found");
    EXPECT_EQ(rows[1].description, "Window restore state and temporary session files; no items found");
    EXPECT_FALSE(rows[1].isCleanable);
}

} // namespace
} // namespace vellmoor::test
