#include "applications/AppsFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Optional;
using ::testing::SizeIs;

class MacApplications : public ::testing::Test {
protected:
    EngineHome home{System::Mac};
};

TEST_F(MacApplications, ARowHoldsTheBundleThenItsLeftovers) {
    const Path app = bundle(home, "/Applications/Editor.app", "com.example.editor", 40960);
    const Path cache = home.file("Library/Caches/com.example.editor/data", 8192).parent_path();
    const auto rows = applications(home);
    ASSERT_THAT(rows, SizeIs(1));
    const CleanupItem& row = rows.front();
    EXPECT_EQ(row.module, CleanerModule::appUninstaller);
    EXPECT_EQ(row.title, "Editor");
    EXPECT_EQ(row.description, "Found 1 related leftovers, bundle id: com.example.editor");
    EXPECT_EQ(row.symbol, "app.dashed");
    EXPECT_EQ(row.tint, Tint::orange);
    EXPECT_EQ(row.risk, CleanupRisk::high);
    EXPECT_TRUE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
    ASSERT_THAT(row.targets, SizeIs(2));
    EXPECT_EQ(row.targets[0].url, app);
    EXPECT_EQ(row.targets[1].url, cache);
    EXPECT_FALSE(row.targets[0].isSelected);
    EXPECT_EQ(row.bytes, row.targets[0].bytes + row.targets[1].bytes);
    EXPECT_EQ(row.files, row.targets[0].files + row.targets[1].files);
}

TEST_F(MacApplications, TheRowTellsWhatWasMeasured) {
    const Path app = bundle(home, "/Applications/Editor.app", "com.example.editor", 40960);
    home.file("Library/Caches/com.example.editor/data", 8192);
    home.file("Library/Logs/com.example.editor.log", 4096);
    const CleanupItem row = application(home, "Editor");
    ASSERT_TRUE(row.appInfo.has_value());
    EXPECT_THAT(row.appInfo->bundleIdentifier, Optional(std::string("com.example.editor")));
    EXPECT_EQ(row.appInfo->appPath, app.string());
    EXPECT_EQ(row.appInfo->appBytes, row.targets[0].bytes);
    EXPECT_GE(row.appInfo->appBytes, 40960);
    EXPECT_EQ(row.appInfo->residualBytes, 8192 + 4096);
    EXPECT_EQ(row.appInfo->residualCount, 2);
    EXPECT_FALSE(row.appInfo->isRunning);
}

TEST_F(MacApplications, AnApplicationWithoutLeftoversSaysSo) {
    bundle(home, "/Applications/Editor.app", "com.example.editor");
    EXPECT_EQ(application(home, "Editor").description, "No obvious leftovers found, bundle id: com.example.editor");
}

TEST_F(MacApplications, ABundleWithoutIdentifierLacksThatPart) {
    home.folder("/Applications/Editor.app/Contents");
    const CleanupItem row = application(home, "Editor");
    EXPECT_EQ(row.description, "No obvious leftovers found");
    EXPECT_EQ(row.appInfo->bundleIdentifier, std::nullopt);
}

TEST_F(MacApplications, BothFoldersAreListedOneLevelDeep) {
    bundle(home, "/Applications/A.app", "com.example.first", 400000);
    bundle(home, "Applications/B.app", "com.example.second");
    bundle(home, "/Applications/Suite/Inner.app", "com.example.inner");
    bundle(home, "/Applications/.Hidden.app", "com.example.hidden");
    home.file("/Applications/File.app");
    home.folder("/Applications/Folder");
    home.link("A.app", "/Applications/Link.app");
    EXPECT_THAT(titles(home), ElementsAre("A", "B"));
}

TEST_F(MacApplications, TheExtensionMayBeInCapitals) {
    bundle(home, "/Applications/Editor.APP", "com.example.editor");
    EXPECT_THAT(titles(home), ElementsAre("Editor"));
}

TEST_F(MacApplications, TheNameIsTheDisplayNameThenTheNameThenTheFolders) {
    home.text("/Applications/One.app/Contents/Info.plist",
              bundleList(stringKey("CFBundleDisplayName", "Shown") + stringKey("CFBundleName", "Short")));
    home.text("/Applications/Two.app/Contents/Info.plist", bundleList(stringKey("CFBundleName", "Short")));
    home.folder("/Applications/Three.app");
    EngineContext context = home.context();
    EXPECT_EQ(appDisplayName(context, home.place("/Applications/One.app")), "Shown");
    EXPECT_EQ(appDisplayName(context, home.place("/Applications/Two.app")), "Short");
    EXPECT_EQ(appDisplayName(context, home.place("/Applications/Three.app")), "Three");
}

TEST_F(MacApplications, LargestFirstBundleAndLeftoversTogether) {
    bundle(home, "/Applications/Small.app", "com.example.small", 4096);
    bundle(home, "/Applications/Middle.app", "com.example.middle", 100'000);
    home.file("Library/Caches/com.example.small", 500'000);
    EXPECT_THAT(titles(home), ElementsAre("Small", "Middle"));
}

TEST_F(MacApplications, TheProgramItselfAndTheSystemsNeverAppear) {
    bundle(home, "/Applications/Vellmoor.app", "com.example.self");
    bundle(home, "/System/Applications/Chess.app", "com.apple.chess");
    home.link(home.place("/System/Applications"), "Applications");
    EXPECT_THAT(titles(home), IsEmpty());
}

TEST_F(MacApplications, ProtectedAreTheOwnBundleAndSystemPaths) {
    const EngineContext context = home.context();
    for (const char* path : {"/System/Applications/Chess.app", "/usr/libexec/x.app", "/Library/CoreServices/Finder.app",
                             "/Applications/Vellmoor.app"}) {
        EXPECT_TRUE(isProtectedSystemAppPath(context, home.place(path))) << path;
    }
    EXPECT_TRUE(isProtectedSystemAppPath(context, "/System/Applications/Chess.app"));
    for (const char* path :
         {"/Applications/Systems.app", "/Applications/Vellmoor2.app", "/Systemic/x.app", "/Applications/usr/x.app"}) {
        EXPECT_FALSE(isProtectedSystemAppPath(context, home.place(path))) << path;
    }
}

TEST_F(MacApplications, ARunningApplicationIsKnownByItsPath) {
    const Path app = bundle(home, "/Applications/Editor.app", "com.example.editor");
    home.platform.running = {
        {.pid = 7, .name = "Editor", .bundleIdentifier = {}, .bundlePath = app / "", .isActive = {}}};
    const CleanupItem row = application(home, "Editor");
    EXPECT_EQ(row.description, "No obvious leftovers found, bundle id: com.example.editor, "
                               "the app is running, please quit it first");
    EXPECT_TRUE(row.appInfo->isRunning);
    EXPECT_FALSE(row.isCleanable);
    EXPECT_EQ(row.risk, CleanupRisk::previewOnly);
}

TEST_F(MacApplications, ARunningApplicationIsKnownByItsIdentifier) {
    bundle(home, "/Applications/Editor.app", "com.example.editor");
    home.platform.running = {
        {.pid = 7, .name = "Editor", .bundleIdentifier = "com.example.editor", .bundlePath = "/x.app", .isActive = {}}};
    EXPECT_THAT(application(home, "Editor").description, HasSubstr("the app is running"));
}

TEST_F(MacApplications, AnotherRunningApplicationChangesNothing) {
    bundle(home, "/Applications/Editor.app", "com.example.editor");
    home.platform.running = {
        {.pid = 7, .name = "Other", .bundleIdentifier = "com.example.other", .bundlePath = "/x.app", .isActive = {}}};
    EXPECT_TRUE(application(home, "Editor").isCleanable);
}

// Leftovers

TEST_F(MacApplications, TheTenLibraryFoldersAreSearchedInOrder) {
    bundle(home, "/Applications/Editor.app", "com.example.editor");
    const std::vector<std::string> places{"Library/Application Support/com.example.editor",
                                          "Library/Caches/com.example.editor",
                                          "Library/HTTPStorages/com.example.editor",
                                          "Library/Logs/com.example.editor",
                                          "Library/Preferences/com.example.editor.plist",
                                          "Library/Saved Application State/com.example.editor.savedState",
                                          "Library/WebKit/com.example.editor",
                                          "Library/Containers/com.example.editor",
                                          "Library/Group Containers/group.com.example.editor",
                                          "Library/LaunchAgents/com.example.editor.agent.plist"};
    for (const std::string& place : places) {
        home.file(place);
    }
    home.file("Library/Cookies/com.example.editor");
    EXPECT_EQ(leftovers(home, "Editor"), places);
}

TEST_F(MacApplications, TheIdentifierIsFoundWhateverTheCase) {
    bundle(home, "/Applications/Editor.app", "com.Example.Editor");
    home.file("Library/Caches/COM.example.editor.helper");
    EXPECT_THAT(leftovers(home, "Editor"), ElementsAre("Library/Caches/COM.example.editor.helper"));
}

TEST_F(MacApplications, TheNameIsFoundWithoutPunctuationAndExtension) {
    bundle(home, "/Applications/Text Editor.app", "com.example.other");
    home.file("Library/Application Support/My Text-Editor Data.folder");
    home.file("Library/Caches/text.editor"); // the extension does not count
    EXPECT_THAT(leftovers(home, "Text Editor"), ElementsAre("Library/Application Support/My Text-Editor Data.folder"));
}

TEST_F(MacApplications, ANameOfTwoLettersMatchesByIdentifierOnly) {
    bundle(home, "/Applications/QQ.app", "com.tencent.qq");
    home.file("Library/Caches/QQMusicThings");
    home.file("Library/Caches/com.tencent.qq");
    EXPECT_THAT(leftovers(home, "QQ"), ElementsAre("Library/Caches/com.tencent.qq"));
}

TEST_F(MacApplications, ANameHasFourCharactersNotBytes) {
    bundle(home, "/Applications/微信.app", "com.example.chat");
    bundle(home, "/Applications/网易音乐.app", "com.example.music");
    home.file("Library/Caches/微信缓存");
    home.file("Library/Caches/网易音乐缓存");
    EXPECT_THAT(leftovers(home, "微信"), IsEmpty());
    EXPECT_THAT(leftovers(home, "网易音乐"), ElementsAre("Library/Caches/网易音乐缓存"));
}

TEST_F(MacApplications, AnEmptyIdentifierMatchesNothing) {
    bundle(home, "/Applications/Tool.app", "");
    home.file("Library/Caches/com.example.anything");
    EXPECT_THAT(leftovers(home, "Tool"), IsEmpty());
}

TEST_F(MacApplications, AnIdentifierOfOneWordIsTreatedAsAName) {
    bundle(home, "/Applications/X.app", "com");
    bundle(home, "/Applications/Y.app", "paintbox");
    home.file("Library/Caches/com.example.anything");
    home.file("Library/Caches/Paint Box Data");
    EXPECT_THAT(leftovers(home, "X"), IsEmpty());
    EXPECT_THAT(leftovers(home, "Y"), ElementsAre("Library/Caches/Paint Box Data"));
}

TEST_F(MacApplications, WhatFitsAnotherApplicationBetterBelongsToThatOne) {
    bundle(home, "/Applications/Browser.app", "com.example.browser");
    bundle(home, "/Applications/Browser Canary.app", "com.example.browser.canary");
    home.file("Library/Preferences/com.example.browser.plist");
    home.file("Library/Preferences/com.example.browser.canary.plist");
    EXPECT_THAT(leftovers(home, "Browser"), ElementsAre("Library/Preferences/com.example.browser.plist"));
    EXPECT_THAT(leftovers(home, "Browser Canary"), ElementsAre("Library/Preferences/com.example.browser.canary.plist"));
}

TEST_F(MacApplications, WhatTwoCopiesShareIsOfferedByNeither) {
    bundle(home, "/Applications/Editor.app", "com.example.editor");
    bundle(home, "Applications/Editor.app", "com.example.editor");
    home.file("Library/Preferences/com.example.editor.plist");
    for (const CleanupItem& row : applications(home)) {
        EXPECT_THAT(row.targets, SizeIs(1));
    }
}

TEST_F(MacApplications, AFolderThatCannotBeListedHasNoLeftovers) {
    bundle(home, "/Applications/Editor.app", "com.example.editor");
    home.file("Library/Caches/com.example.editor");
    home.file("Library/Logs/com.example.editor");
    home.platform.fail(Operation::List, home.place("Library/Caches"), "Operation not permitted");
    EXPECT_THAT(leftovers(home, "Editor"), ElementsAre("Library/Logs/com.example.editor"));
}

TEST_F(MacApplications, OwnFilesAreNobodysLeftovers) {
    bundle(home, "/Applications/Moor.app", "org.vellmoor");
    home.file("Library/Preferences/org.vellmoor.Vellmoor.plist");
    EXPECT_THAT(leftovers(home, "Moor"), IsEmpty());
}

// Looking up

TEST_F(MacApplications, TheFirstBundleOfAnIdentifierIsFound) {
    const Path first = bundle(home, "/Applications/Editor.app", "com.example.editor");
    bundle(home, "Applications/Editor.app", "com.example.editor");
    EngineContext context = home.context();
    EXPECT_THAT(appLookupByBundleID(context, "com.example.editor"), Optional(first));
    EXPECT_EQ(appLookupByBundleID(context, "com.example.Editor"), std::nullopt);
    EXPECT_EQ(appLookupByBundleID(context, "com.example"), std::nullopt);
    EXPECT_EQ(appLookupByBundleID(context, ""), std::nullopt);
}

TEST(FriendlyName, IsTheLastPieceWithBlanks) {
    EXPECT_EQ(friendlyName("com.example.update-agent", "x"), "update agent");
    EXPECT_EQ(friendlyName("a_b", "x"), "a b");
    EXPECT_EQ(friendlyName("com.example..", "x"), "example");
    EXPECT_EQ(friendlyName("...", "fallback"), "fallback");
    EXPECT_EQ(friendlyName("", "fallback"), "fallback");
}

// Bad input

TEST_F(MacApplications, BrokenPropertyListsLeaveABundleWithoutIdentifier) {
    const std::vector<std::string> lists{"",
                                         "<?xml version=\"1.0\"?><plist><dict><key>CFBund",
                                         "bplist00\xff\xff",
                                         bundleList("<key>CFBundleIdentifier</key><integer>7</integer>"),
                                         "<plist version=\"1.0\"><array/></plist>",
                                         std::string(2U << 20U, 'x')};
    for (std::size_t i = 0; i < lists.size(); ++i) {
        home.text("/Applications/App" + std::to_string(i) + ".app/Contents/Info.plist", lists[i]);
    }
    home.fifo("/Applications/Fifo.app/Contents/Info.plist");
    const auto rows = applications(home);
    EXPECT_THAT(rows, SizeIs(lists.size() + 1));
    for (const CleanupItem& row : rows) {
        EXPECT_EQ(row.appInfo->bundleIdentifier, std::nullopt) << row.title;
    }
}

TEST_F(MacApplications, NamesOfAnyBytesAreListed) {
    for (const char* name : {"a\nb.app", "q\"q.app", "%@ %d.app"}) {
        home.folder(Path("/Applications") / name);
    }
    EXPECT_THAT(titles(home), ::testing::UnorderedElementsAre("a\nb", "q\"q", "%@ %d"));
}

TEST_F(MacApplications, ANameThatIsNotUtf8IsListed) {
    if (!takesName(home.home, "bad\xff.app")) {
        GTEST_SKIP() << "this file system has only names in UTF-8";
    }
    home.folder(Path("/Applications") / "bad\xff.app");
    EXPECT_THAT(titles(home), ::testing::ElementsAre("bad\xff"));
}

TEST_F(MacApplications, NoFoldersGiveNoRows) {
    EXPECT_THAT(applications(home), IsEmpty());
}

TEST_F(MacApplications, ACancelledScanEnds) {
    bundle(home, "/Applications/Editor.app", "com.example.editor");
    home.token.cancel();
    EXPECT_THROW((void)applications(home), ScanCancelled);
}

} // namespace
} // namespace vellmoor::test
