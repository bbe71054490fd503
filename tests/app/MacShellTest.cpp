// The shell and the workspace over AppKit as tests/support/foundation plays it: which object is asked for what, and
// what becomes of its answers. How macOS itself behaves is seen on a Mac only.
#include "appkit/MacShell.h"

#include "DarwinSystem.h"
#include "Stage.h"
#include "appkit/AppKitWorkspace.h"
#include "texts/L.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace vellmoor {
namespace {

using test::stage;
using test::StagedMenuItem;
using test::StagedNote;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr unsigned long leftDown = 1, leftUp = 2, rightDown = 3, rightUp = 4; // AppKit's numbers of events

class MacShellTest : public ::testing::Test {
protected:
    void SetUp() override {
        test::resetStage();
        test::startApplication();
        L::setLanguage(AppLanguage::english);
        startShell();
    }

    void startShell() {
        shell_ = std::make_unique<MacShell>();
        shell_->install({.showMainWindow = [this] { asked_.emplace_back("window"); },
                         .quit = [this] { asked_.emplace_back("quit"); },
                         .edit =
                             [this](std::string_view action) {
                                 asked_.emplace_back(action);
                                 return windowTakes_;
                             }});
    }

    bool windowTakes_ = true;
    std::vector<std::string> asked_;
    std::unique_ptr<MacShell> shell_;
};

TEST_F(MacShellTest, NothingIsInstalledBeforeTheApplicationHasLaunched) {
    EXPECT_EQ(stage().statusItems, 0);
    EXPECT_THAT(stage().appleEvents, IsEmpty());
    test::finishLaunching();
    EXPECT_EQ(stage().statusItems, 1);
    EXPECT_TRUE(stage().isTemplate);
}

TEST_F(MacShellTest, ALaunchedApplicationIsNotWaitedFor) {
    shell_.reset();
    test::resetStage();
    stage().hasLaunched = true;
    MacShell shell;
    shell.install({});
    EXPECT_EQ(stage().statusItems, 1);
}

TEST_F(MacShellTest, TheLeftButtonShowsTheWindowAndTheRightOneTheMenu) {
    test::finishLaunching();
    test::clickStatusItem(leftDown);
    test::clickStatusItem(rightDown);
    EXPECT_THAT(asked_, IsEmpty());
    test::clickStatusItem(leftUp);
    EXPECT_THAT(asked_, ElementsAre("window"));
    EXPECT_THAT(stage().popUps, IsEmpty());
    test::clickStatusItem(rightUp);
    EXPECT_THAT(asked_, ElementsAre("window"));
    ASSERT_EQ(stage().popUps.size(), 1U);
    EXPECT_THAT(stage().popUps[0], ElementsAre(StagedMenuItem{"Open Vellmoor", "showMainWindow:", ""}, StagedMenuItem{},
                                               StagedMenuItem{"Quit", "quit:", ""}));
    EXPECT_EQ(stage().popUpHeight, 28); // below the button, which is 24 high
}

TEST_F(MacShellTest, TheMenuIsMadeAnewInTheLanguageOfTheMoment) {
    test::finishLaunching();
    test::clickStatusItem(rightUp);
    L::setLanguage(AppLanguage::chinese);
    test::clickStatusItem(rightUp);
    EXPECT_EQ(stage().popUps.at(1).front().title, "打开 Vellmoor");
    EXPECT_EQ(stage().popUps.at(1).size(), 3U);
}

TEST_F(MacShellTest, TheMenusItemsDoWhatTheySay) {
    test::finishLaunching();
    test::clickStatusItem(rightUp);
    EXPECT_TRUE(test::chooseMenuItem("", "Open Vellmoor"));
    EXPECT_TRUE(test::chooseMenuItem("", "Quit"));
    EXPECT_THAT(asked_, ElementsAre("window", "quit"));
}

TEST_F(MacShellTest, TheMenuBarHasItsTwoMenus) {
    test::finishLaunching();
    EXPECT_THAT(stage().menuBar["Window"], ElementsAre(StagedMenuItem{"Minimize", "performMiniaturize:", "m"},
                                                       StagedMenuItem{"Close", "performClose:", "w"}));
    EXPECT_THAT(stage().menuBar["Edit"],
                ElementsAre(StagedMenuItem{"Cut", "edit:", "x"}, StagedMenuItem{"Copy", "edit:", "c"},
                            StagedMenuItem{"Paste", "edit:", "v"}, StagedMenuItem{"Select All", "edit:", "a"}));
}

TEST_F(MacShellTest, AnEditActionGoesToTheWindowFirst) {
    test::finishLaunching();
    EXPECT_TRUE(test::chooseMenuItem("Edit", "Paste"));
    EXPECT_THAT(asked_, ElementsAre("paste:"));
    EXPECT_THAT(stage().calls, IsEmpty());
}

TEST_F(MacShellTest, WhatTheWindowDoesNotTakeGoesToAppKitsResponders) {
    test::finishLaunching();
    windowTakes_ = false;
    EXPECT_TRUE(test::chooseMenuItem("Edit", "Select All"));
    EXPECT_THAT(stage().calls, ElementsAre("responders selectAll:"));
}

TEST_F(MacShellTest, AClickOnTheDockShowsTheWindowAndALogOutQuits) {
    test::finishLaunching();
    EXPECT_TRUE(test::sendAppleEvent("aevt", "rapp"));
    EXPECT_TRUE(test::sendAppleEvent("aevt", "quit"));
    EXPECT_THAT(asked_, ElementsAre("window", "quit"));
    EXPECT_FALSE(test::sendAppleEvent("aevt", "odoc"));
}

TEST_F(MacShellTest, AShellThatGoesLeavesNothingBehind) {
    test::finishLaunching();
    shell_->setBusy(true);
    shell_.reset();
    EXPECT_EQ(stage().statusItems, 0);
    EXPECT_THAT(stage().appleEvents, IsEmpty());
    EXPECT_EQ(stage().activity, 0U);
    test::clickStatusItem(leftUp);
    EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(MacShellTest, AnApplicationThatWorksIsNotPutToSleep) {
    shell_->setBusy(true);
    EXPECT_EQ(stage().activity, 0x00FFFFFFU); // NSActivityUserInitiated
    shell_->setBusy(true);
    shell_->setBusy(false);
    EXPECT_EQ(stage().activity, 0U);
}

TEST_F(MacShellTest, TheProgramComesToTheFront) {
    shell_->activate();
    EXPECT_THAT(stage().calls, ElementsAre("policy 0", "unhide", "activate"));
}

TEST_F(MacShellTest, AWindowIsTakenOutOfTheDockOnlyWhenItIsThere) {
    shell_->bringToFront(test::nativeView());
    EXPECT_THAT(stage().calls, ElementsAre("front"));
    stage().calls.clear();
    stage().isMiniaturized = true;
    shell_->bringToFront(test::nativeView());
    EXPECT_THAT(stage().calls, ElementsAre("deminiaturize", "front"));
}

TEST_F(MacShellTest, AMessageIsShownAsItIs) {
    shell_->alert("Vellmoor", "no window");
    EXPECT_THAT(stage().alerts, ElementsAre("Vellmoor: no window"));
}

class Notes : public MacShellTest {
protected:
    void SetUp() override {
        MacShellTest::SetUp();
        shell_.reset();
        stage().ownBundle = "org.vellmoor.Vellmoor";
        startShell();
        test::takeLog();
    }
};

TEST_F(Notes, TheUserIsAskedWithTheFirstNoteAndThenItIsShown) {
    EXPECT_THAT(stage().permissionsAsked, IsEmpty());
    shell_->showNote("Vellmoor", "Scan complete");
    EXPECT_THAT(stage().permissionsAsked, ElementsAre(4U)); // UNAuthorizationOptionAlert: no sound, no badge
    EXPECT_THAT(stage().notes, IsEmpty());
    test::answerPermission(true);
    EXPECT_THAT(stage().notes, ElementsAre(StagedNote{"finished", "Vellmoor", "Scan complete", true}));
    EXPECT_THAT(test::takeLog(), IsEmpty());
}

TEST_F(Notes, ANoteTakesThePlaceOfTheOneBefore) {
    for (const char* text : {"Scan complete", "清理完成"}) {
        shell_->showNote("Vellmoor", text);
        test::answerPermission(true);
    }
    EXPECT_THAT(stage().notes, ElementsAre(StagedNote{"finished", "Vellmoor", "清理完成", true}));
}

TEST_F(Notes, AUserWhoWantsNoneSeesNone) {
    shell_->showNote("Vellmoor", "Scan complete");
    test::answerPermission(false);
    EXPECT_THAT(stage().notes, IsEmpty());
    EXPECT_THAT(test::takeLog(), IsEmpty());
}

TEST_F(Notes, WhatTheSystemRefusesIsLogged) {
    shell_->showNote("Vellmoor", "Scan complete");
    test::answerPermission(false, "Notifications are not allowed for this application");
    stage().noteFailure = "No room";
    shell_->showNote("Vellmoor", "Scan complete");
    test::answerPermission(true);
    EXPECT_THAT(stage().notes, IsEmpty());
    EXPECT_THAT(
        test::takeLog(),
        ElementsAre("org.vellmoor.Vellmoor/window: Asking for notes in NSCocoaErrorDomain failed (1): <private>",
                    "org.vellmoor.Vellmoor/window: Showing a note in NSCocoaErrorDomain failed (1): <private>"));
}

TEST_F(Notes, AClickShowsTheWindowOnTheMainThread) {
    EXPECT_TRUE(test::clickNote());
    EXPECT_THAT(asked_, IsEmpty()) << "another thread hears of it";
    test::runMainQueue();
    EXPECT_THAT(asked_, ElementsAre("window"));
}

TEST_F(Notes, ANoteThatIsTakenAwayShowsNoWindow) {
    EXPECT_TRUE(test::clickNote("com.apple.UNNotificationDismissActionIdentifier"));
    test::runMainQueue();
    EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(Notes, AClickThatComesWithTheEndDoesNothing) {
    EXPECT_TRUE(test::clickNote());
    shell_.reset();
    test::runMainQueue();
    EXPECT_THAT(asked_, IsEmpty());
    EXPECT_FALSE(test::clickNote());
}

TEST_F(Notes, AProgramInFrontWhoseWindowIsNotShowsThemAsWell) {
    EXPECT_EQ(test::presentNote(), 24U); // UNNotificationPresentationOptionList and -Banner
}

TEST_F(Notes, OutsideABundleTheSystemIsNotAsked) {
    shell_.reset();
    stage().ownBundle.clear(); // asking would raise
    startShell();
    shell_->showNote("Vellmoor", "Scan complete");
    shell_.reset();
    EXPECT_THAT(stage().permissionsAsked, IsEmpty());
    EXPECT_THAT(test::takeLog(), IsEmpty());
}

TEST_F(Notes, ABundleThatTheSystemDoesNotKnowHasNone) {
    stage().findsCentre = false;
    shell_->showNote("Vellmoor", "Scan complete");
    EXPECT_THAT(stage().permissionsAsked, IsEmpty());
    EXPECT_THAT(test::takeLog(), ElementsAre("org.vellmoor.Vellmoor/window: Finding the notification centre failed "
                                             "(0): <private>"));
}

class AppKitWorkspaceTest : public ::testing::Test {
protected:
    void SetUp() override { test::resetStage(); }
    AppKitWorkspace workspace_;
};

TEST_F(AppKitWorkspaceTest, AddressesFilesAndFoldersAreOpenedAndShown) {
    EXPECT_TRUE(workspace_.openAddress("x-apple.systempreferences:a?b"));
    EXPECT_TRUE(workspace_.openFile("/Users/anna/a b"));
    workspace_.reveal("/Users/anna/c");
    EXPECT_FALSE(workspace_.openAddress("\xff"));
    EXPECT_THAT(stage().calls, ElementsAre("open x-apple.systempreferences:a?b", "open file:///Users/anna/a%20b",
                                           "reveal /Users/anna/c"));
}

TEST_F(AppKitWorkspaceTest, WhatTheUserSetForTheDisplayIsTold) {
    EXPECT_FALSE(workspace_.reducesMotion());
    EXPECT_FALSE(workspace_.increasesContrast());
    stage().reducesMotion = true;
    EXPECT_TRUE(workspace_.reducesMotion());
    EXPECT_FALSE(workspace_.increasesContrast());
    stage().increasesContrast = true;
    EXPECT_TRUE(workspace_.increasesContrast());
}

TEST_F(AppKitWorkspaceTest, AnIconFillsItsPicture) {
    const Picture icon = workspace_.fileIcon("/Applications/A.app", 64);
    EXPECT_EQ(icon.width, 64);
    EXPECT_EQ(icon.height, 64);
    EXPECT_EQ(icon.bytes.size(), 64U * 64 * 4);
    ASSERT_EQ(stage().drawings.size(), 1U);
    EXPECT_EQ(stage().drawings[0].x, 0);
    EXPECT_EQ(stage().drawings[0].width, 64);
    EXPECT_EQ(stage().drawings[0].height, 64);
    EXPECT_EQ(stage().drawings[0].bytesPerRow, 64U * 4);
    EXPECT_EQ(stage().drawings[0].bitmapInfo, 1U); // kCGImageAlphaPremultipliedLast: red, green, blue, alpha
}

TEST_F(AppKitWorkspaceTest, ASymbolStandsInTheMiddleOfItsPicture) {
    EXPECT_EQ(workspace_.symbol("sparkles", 40).width, 40);
    EXPECT_THAT(stage().calls, ElementsAre("symbol of 31 points"));
    ASSERT_EQ(stage().drawings.size(), 1U);
    EXPECT_EQ(stage().drawings[0].x, 10);
    EXPECT_EQ(stage().drawings[0].y, 15);
    EXPECT_EQ(stage().drawings[0].width, 20);
}

TEST_F(AppKitWorkspaceTest, AnUnknownSymbolOrNoRoomIsNoPicture) {
    EXPECT_TRUE(workspace_.symbol("unknown", 40).bytes.empty());
    EXPECT_TRUE(workspace_.symbol("sparkles", 0).bytes.empty());
    EXPECT_TRUE(workspace_.fileIcon("/Applications/\xff.app", 40).bytes.empty());
}

} // namespace
} // namespace vellmoor
