#include "ScopedUnprivileged.h"
#include "found/ScanSnapshot.h"
#include "login/StartupFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::string_view agentText = "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>Label</key>"
                                       "<string>com.example.agent</string></dict></plist>";

class MacStartupActions : public ::testing::Test {
protected:
    EngineHome home{System::Mac};
    const Path enabled = home.place("Library/LaunchAgents");
    const Path disabled = home.place("Library/LaunchAgents.disabled");
    const std::string domain = "gui/" + std::to_string(home.platform.user);

    void SetUp() override {
        home.platform.tools[home.place("/bin/launchctl")] = [](const std::vector<std::string>&) {
            return CommandResult{5, "Boot-out failed: 5: Input/output error", ""};
        };
    }
    [[nodiscard]] StartupItem enabledItem() const {
        home.text(enabled / "com.example.agent.plist", agentText);
        return onlyItem(home);
    }
    [[nodiscard]] StartupItem disabledItem() const {
        home.text(disabled / "com.example.agent.plist", agentText);
        return onlyItem(home);
    }
    [[nodiscard]] std::string seconds() const {
        return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(home.now.time_since_epoch()).count());
    }
};

TEST_F(MacStartupActions, DisablingMovesTheListBesideItsFolder) {
    const StartupItem item = enabledItem();
    const StartupActionResult result = disable(home, item);
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.message, "Disabled agent from launching at login.");
    EXPECT_FALSE(home.has(enabled / "com.example.agent.plist"));
    EXPECT_EQ(contentOf(disabled / "com.example.agent.plist"), agentText);
}

TEST_F(MacStartupActions, DisablingUnloadsBeforeItMovesAndIgnoresTheOutcome) {
    const StartupItem item = enabledItem();
    std::vector<std::string> steps;
    home.platform.tools[home.place("/bin/launchctl")] = [&](const std::vector<std::string>& arguments) {
        steps.push_back(arguments.front());
        EXPECT_TRUE(home.has(item.plistURL));
        return CommandResult{-1, "", "No such file or directory"};
    };
    home.platform.beforeChange = [&](Operation operation, const Path&) {
        steps.emplace_back(operation == Operation::MoveItem ? "move" : "folder");
    };
    EXPECT_TRUE(disable(home, item).succeeded);
    EXPECT_THAT(steps, ElementsAre("folder", "bootout", "move"));
    EXPECT_THAT(calls(home), ElementsAre("bootout " + domain + " " + item.plistURL.string()));
    EXPECT_EQ(home.platform.invocations().front().tool, home.place("/bin/launchctl"));
}

TEST_F(MacStartupActions, DisablingWorksWithoutTheLoader) {
    home.platform.tools.clear();
    EXPECT_TRUE(disable(home, enabledItem()).succeeded);
}

TEST_F(MacStartupActions, EnablingMovesTheListBackAndLoadsItThere) {
    const StartupItem item = disabledItem();
    std::vector<std::string> steps;
    home.platform.tools[home.place("/bin/launchctl")] = [&](const std::vector<std::string>& arguments) {
        steps.push_back(arguments.front());
        EXPECT_TRUE(home.has(enabled / "com.example.agent.plist"));
        return CommandResult{1, "error", ""};
    };
    home.platform.beforeChange = [&](Operation operation, const Path&) {
        steps.emplace_back(operation == Operation::MoveItem ? "move" : "folder");
    };
    const StartupActionResult result = enable(home, item);
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.message, "Restored agent to launch at login.");
    EXPECT_THAT(steps, ElementsAre("folder", "move", "bootstrap"));
    EXPECT_THAT(calls(home), ElementsAre("bootstrap " + domain + " " + (enabled / "com.example.agent.plist").string()));
    EXPECT_EQ(contentOf(enabled / "com.example.agent.plist"), agentText);
    EXPECT_FALSE(home.has(disabled / "com.example.agent.plist"));
}

TEST_F(MacStartupActions, ANameThatIsTakenGetsTheTime) {
    const StartupItem item = enabledItem();
    home.text(disabled / "com.example.agent.plist", "older");
    EXPECT_TRUE(disable(home, item).succeeded);
    EXPECT_EQ(contentOf(disabled / "com.example.agent.plist"), "older");
    EXPECT_EQ(contentOf(disabled / ("com.example.agent-" + seconds() + ".plist")), agentText);
}

TEST_F(MacStartupActions, OnlyOneOtherNameIsTried) {
    const StartupItem item = enabledItem();
    home.text(disabled / "com.example.agent.plist", "older");
    home.text(disabled / ("com.example.agent-" + seconds() + ".plist"), "old");
    const StartupActionResult result = disable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Failed to disable agent: File exists");
    EXPECT_EQ(contentOf(item.plistURL), agentText);
    EXPECT_EQ(contentOf(disabled / ("com.example.agent-" + seconds() + ".plist")), "old");
}

TEST_F(MacStartupActions, ATimeStampedNameIsKeptWhenEnabling) {
    home.text(disabled / "com.example.agent-1731600000.plist", agentText);
    EXPECT_TRUE(enable(home, onlyItem(home)).succeeded);
    EXPECT_TRUE(home.has(enabled / "com.example.agent-1731600000.plist"));
}

TEST_F(MacStartupActions, EnablingOverAnExistingListFailsAndMovesNothing) {
    home.text(disabled / "com.example.agent.plist", agentText);
    home.text(enabled / "com.example.agent.plist", "other");
    StartupItem item;
    item.name = "Agent";
    item.plistURL = disabled / "com.example.agent.plist";
    const StartupActionResult result = enable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Enabling failed: a config with the same name already exists in LaunchAgents.");
    EXPECT_EQ(contentOf(enabled / "com.example.agent.plist"), "other");
    EXPECT_EQ(contentOf(disabled / "com.example.agent.plist"), agentText);
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(MacStartupActions, WhatIsDisabledCannotBeDisabled) {
    const StartupItem item = disabledItem();
    const StartupActionResult result = disable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "agent is already disabled.");
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(MacStartupActions, WhatIsEnabledCannotBeEnabled) {
    const StartupItem item = enabledItem();
    const StartupActionResult result = enable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "agent is already enabled.");
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(MacStartupActions, AListThatIsGoneCannotBeDisabled) {
    const StartupItem item = enabledItem();
    std::filesystem::remove(item.plistURL);
    const StartupActionResult result = disable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Startup item config not found: com.example.agent.plist.");
    EXPECT_FALSE(home.has(disabled));
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(MacStartupActions, AListThatIsGoneCannotBeEnabled) {
    const StartupItem item = disabledItem();
    std::filesystem::remove(item.plistURL);
    const StartupActionResult result = enable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Disabled config not found: com.example.agent.plist.");
    EXPECT_FALSE(home.has(enabled));
    EXPECT_THAT(calls(home), IsEmpty());
}

// Failures

TEST_F(MacStartupActions, AFolderThatCannotBeMadeStopsDisablingBeforeTheLoader) {
    const StartupItem item = enabledItem();
    home.platform.fail(Operation::CreateFolder, disabled, "Permission denied");
    const StartupActionResult result = disable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Failed to disable agent: Permission denied");
    EXPECT_TRUE(home.has(item.plistURL));
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(MacStartupActions, AFolderThatCannotBeMadeStopsEnabling) {
    const StartupItem item = disabledItem();
    home.platform.fail(Operation::CreateFolder, enabled, "Permission denied");
    const StartupActionResult result = enable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Failed to restore agent: Permission denied");
    EXPECT_TRUE(home.has(item.plistURL));
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(MacStartupActions, AFailedMoveLeavesTheListWhenDisabling) {
    const StartupItem item = enabledItem();
    home.platform.fail(Operation::MoveItem, item.plistURL, "Operation not permitted");
    const StartupActionResult result = disable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Failed to disable agent: Operation not permitted");
    EXPECT_EQ(contentOf(item.plistURL), agentText);
    EXPECT_THAT(calls(home), SizeIs(1));
}

TEST_F(MacStartupActions, AFailedMoveLeavesTheListWhenEnablingAndLoadsNothing) {
    const StartupItem item = disabledItem();
    home.platform.fail(Operation::MoveItem, item.plistURL, "Operation not permitted");
    const StartupActionResult result = enable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Failed to restore agent: Operation not permitted");
    EXPECT_EQ(contentOf(item.plistURL), agentText);
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(MacStartupActions, ATargetFolderThatIsAFileIsAFailure) {
    const StartupItem item = enabledItem();
    home.text(disabled, "I am a file");
    const StartupActionResult result = disable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_THAT(result.message, HasSubstr("Failed to disable agent: "));
    EXPECT_EQ(contentOf(item.plistURL), agentText);
    EXPECT_EQ(contentOf(disabled), "I am a file");
}

TEST_F(MacStartupActions, ATargetFolderThatIsNotWritableIsAFailure) {
    const StartupItem item = enabledItem();
    home.folder(disabled);
    home.setMode(disabled, 0555);
    const ScopedUnprivileged asAnybody;
    const StartupActionResult result = disable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Failed to disable agent: Permission denied");
    EXPECT_EQ(contentOf(item.plistURL), agentText);
}

TEST_F(MacStartupActions, APlaceholderInANameIsNotFilled) {
    home.text(enabled / "a.%@%d.plist", "<plist version=\"1.0\"><dict/></plist>");
    EXPECT_EQ(disable(home, onlyItem(home)).message, "Disabled %@%d from launching at login.");
}

} // namespace
} // namespace vellmoor::test
