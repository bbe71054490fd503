#include "found/ScanSnapshot.h"
#include "login/StartupEntries.h"
#include "login/StartupFixture.h"
#include "login/StartupMasks.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::string_view toolText = "[Desktop Entry]\nType=Application\nName=Tool\nExec=tool\n";
constexpr std::string_view serviceText = "[Unit]\nDescription=Job\n[Service]\nExecStart=/bin/job\n";

class LinuxStartupActions : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
    const Path enabled = home.place(".config/autostart");
    const Path disabled = home.place(".config/autostart.disabled");
    const Path system = home.place("/etc/xdg/autostart");
    const Path services = home.place(".config/systemd/user");
    const Path disabledServices = home.place(".config/systemd/user.disabled");
    std::vector<std::string> steps; ///< changes and tool calls in their order

    void SetUp() override {
        home.environment.runtime = "/run/user/7";
        home.useEnvironment();
        home.file("/run/user/7/systemd/private", 0);
        home.platform.tools[home.place("/usr/bin/systemctl")] = [this](const std::vector<std::string>& arguments) {
            steps.push_back(arguments.at(1));
            return CommandResult{5, "Failed", ""}; // ignored
        };
        home.platform.beforeChange = [this](Operation operation, const Path& path) {
            const char* name = operation == Operation::MoveItem       ? "move "
                               : operation == Operation::CreateFolder ? "folder "
                               : operation == Operation::CreateFile   ? "create "
                               : operation == Operation::CreateLink   ? "link "
                                                                      : "remove ";
            steps.push_back(name + path.lexically_relative(home.place(".config")).string());
        };
    }
    [[nodiscard]] StartupItem item(const Path& file, std::string_view text) const {
        home.text(file, text);
        return onlyItem(home);
    }
    [[nodiscard]] StartupItem tool() const { return item(enabled / "tool.desktop", toolText); }
    [[nodiscard]] StartupItem disabledTool() const { return item(disabled / "tool.desktop", toolText); }
    void systemTool() const { home.text(system / "tool.desktop", toolText); }
};

// Autostart entries

TEST_F(LinuxStartupActions, DisablingStopsThenMovesThenReloads) {
    const StartupItem item = tool();
    const StartupActionResult result = disable(home, item);
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.message, "Disabled Tool from launching at login.");
    EXPECT_THAT(steps,
                ElementsAre("folder autostart.disabled", "stop", "move autostart/tool.desktop", "daemon-reload"));
    // No scope: it is also that of a program started by hand.
    EXPECT_THAT(calls(home), ElementsAre("--user stop app-tool@autostart.service", "--user daemon-reload"));
    EXPECT_EQ(contentOf(disabled / "tool.desktop"), toolText);
    EXPECT_FALSE(home.has(enabled / "tool.desktop"));
}

TEST_F(LinuxStartupActions, EnablingMovesThenReloadsThenStarts) {
    const StartupItem item = disabledTool();
    const StartupActionResult result = enable(home, item);
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.message, "Restored Tool to launch at login.");
    EXPECT_THAT(steps,
                ElementsAre("folder autostart", "move autostart.disabled/tool.desktop", "daemon-reload", "start"));
    EXPECT_THAT(calls(home), ElementsAre("--user daemon-reload", "--user start app-tool@autostart.service"));
    EXPECT_EQ(contentOf(enabled / "tool.desktop"), toolText);
}

TEST_F(LinuxStartupActions, TheUnitNameIsEscaped) {
    home.text(enabled / "org.foo-bar baz.desktop", toolText);
    EXPECT_TRUE(disable(home, onlyItem(home)).succeeded);
    EXPECT_EQ(calls(home).at(0), R"(--user stop app-org.foo\x2dbar\x20baz@autostart.service)");
}

TEST(UnitNameEscape, KeepsLettersDigitsColonUnderlineAndDot) {
    EXPECT_EQ(unitNameEscape("aZ09:_."), "aZ09:_.");
    EXPECT_EQ(unitNameEscape("org.foo-bar baz"), R"(org.foo\x2dbar\x20baz)");
    EXPECT_EQ(unitNameEscape(".hidden.x"), R"(\x2ehidden.x)");
    EXPECT_EQ(unitNameEscape("a*?[\\@/\n"), R"(a\x2a\x3f\x5b\x5c\x40\x2f\x0a)");
    EXPECT_EQ(unitNameEscape("é\xff"), R"(\xc3\xa9\xff)");
    EXPECT_EQ(unitNameEscape(""), "");
}

TEST_F(LinuxStartupActions, WithoutAServiceManagerNothingIsCalled) {
    std::filesystem::remove(home.place("/run/user/7/systemd/private"));
    EXPECT_TRUE(disable(home, tool()).succeeded);
    EXPECT_TRUE(enable(home, onlyItem(home)).succeeded);
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(LinuxStartupActions, WithoutARuntimeFolderNothingIsCalled) {
    home.environment.runtime.clear();
    home.useEnvironment();
    EXPECT_TRUE(disable(home, tool()).succeeded);
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(LinuxStartupActions, WithoutSystemctlNothingIsCalled) {
    home.platform.tools.clear();
    EXPECT_TRUE(disable(home, tool()).succeeded);
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(LinuxStartupActions, ALinkIsMovedAsALink) {
    home.text("apps/tool.desktop", toolText);
    home.link("../../apps/tool.desktop", enabled / "tool.desktop");
    EXPECT_TRUE(disable(home, onlyItem(home)).succeeded);
    EXPECT_EQ(std::filesystem::read_symlink(disabled / "tool.desktop"), "../../apps/tool.desktop");
    EXPECT_EQ(onlyItem(home).name, "Tool"); // and still leads there
    EXPECT_EQ(contentOf(home.place("apps/tool.desktop")), toolText);
}

// Entries that the system has, too

TEST_F(LinuxStartupActions, ASystemEntryOfTheSameNameIsMasked) {
    systemTool();
    const StartupItem item = tool();
    EXPECT_TRUE(disable(home, item).succeeded);
    EXPECT_EQ(contentOf(enabled / "tool.desktop"),
              "[Desktop Entry]\nType=Application\nName=Tool\nHidden=true\nX-Vellmoor-Mask=true\n");
    EXPECT_EQ(contentOf(disabled / "tool.desktop"), toolText);
    EXPECT_THAT(steps, ElementsAre("folder autostart.disabled", "stop", "move autostart/tool.desktop",
                                   "create autostart/tool.desktop", "daemon-reload"));
    EXPECT_FALSE(onlyItem(home).isEnabled); // the mask is not listed
}

TEST_F(LinuxStartupActions, EveryConfigFolderCounts) {
    home.environment.configDirs = {"/etc/one", "/etc/two"};
    home.useEnvironment();
    home.text("/etc/two/autostart/tool.desktop", toolText);
    EXPECT_TRUE(disable(home, tool()).succeeded);
    EXPECT_TRUE(isStartupMask(home.platform, StartupKind::Autostart, enabled / "tool.desktop"));
}

TEST_F(LinuxStartupActions, WithoutASystemEntryNothingIsMasked) {
    home.text(system / "other.desktop", toolText);
    EXPECT_TRUE(disable(home, tool()).succeeded);
    EXPECT_FALSE(home.has(enabled / "tool.desktop"));
}

TEST_F(LinuxStartupActions, TheMaskCarriesAnyNameSafely) {
    systemTool();
    const StartupItem item =
        this->item(enabled / "tool.desktop", "[Desktop Entry]\nExec=a\nName=\\s a\\nHidden=false\\\\ \\tb\n");
    EXPECT_TRUE(disable(home, item).succeeded);
    const auto mask = home.platform.keyFile(enabled / "tool.desktop");
    ASSERT_TRUE(mask.has_value());
    EXPECT_EQ(mask->at("Desktop Entry").at("Name"), "  a\nHidden=false\\ \tb");
    EXPECT_EQ(mask->at("Desktop Entry").at("Hidden"), "true");
}

TEST_F(LinuxStartupActions, AFileWithoutNameIsMaskedUnderTheShownOne) {
    systemTool();
    EXPECT_TRUE(disable(home, item(enabled / "tool.desktop", "[Desktop Entry]\nExec=a\n")).succeeded);
    EXPECT_EQ(home.platform.keyFile(enabled / "tool.desktop")->at("Desktop Entry").at("Name"), "tool");
}

TEST_F(LinuxStartupActions, EnablingReplacesTheMask) {
    systemTool();
    EXPECT_TRUE(disable(home, tool()).succeeded);
    steps.clear();
    EXPECT_TRUE(enable(home, onlyItem(home)).succeeded);
    EXPECT_EQ(contentOf(enabled / "tool.desktop"), toolText);
    EXPECT_FALSE(home.has(disabled / "tool.desktop"));
    EXPECT_THAT(steps, ElementsAre("folder autostart", "remove autostart/tool.desktop",
                                   "move autostart.disabled/tool.desktop", "daemon-reload", "start"));
}

TEST_F(LinuxStartupActions, AnEntryOfTheUsersIsNeverReplaced) {
    const StartupItem item = disabledTool();
    for (const char* text : {"[Desktop Entry]\nName=Mine\nHidden=true\n", "[Desktop Entry]\nX-Vellmoor-Mask=false\n",
                             "[Other]\nX-Vellmoor-Mask=true\n", "X-Vellmoor-Mask=true\n", ""}) {
        home.text(enabled / "tool.desktop", text);
        const StartupActionResult result = enable(home, item);
        EXPECT_FALSE(result.succeeded);
        EXPECT_EQ(result.message,
                  "Enabling failed: a config with the same name already exists in the autostart folder.");
        EXPECT_EQ(contentOf(enabled / "tool.desktop"), text);
        EXPECT_EQ(contentOf(disabled / "tool.desktop"), toolText);
    }
    EXPECT_THAT(calls(home), IsEmpty());
}

TEST_F(LinuxStartupActions, ADanglingLinkAtTheDestinationIsANameClash) {
    const StartupItem item = disabledTool();
    home.link("nowhere", enabled / "tool.desktop");
    EXPECT_FALSE(enable(home, item).succeeded);
    EXPECT_TRUE(home.has(disabled / "tool.desktop"));
}

// Failures

TEST_F(LinuxStartupActions, AMaskThatCannotBeWrittenUndoesTheMove) {
    systemTool();
    const StartupItem item = tool();
    home.platform.fail(Operation::CreateFile, enabled / "tool.desktop", "No space left on device");
    const StartupActionResult result = disable(home, item);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Failed to disable Tool: No space left on device");
    EXPECT_EQ(contentOf(enabled / "tool.desktop"), toolText);
    EXPECT_FALSE(home.has(disabled / "tool.desktop"));
}

TEST_F(LinuxStartupActions, AMaskAndAMoveThatFailAreBothTold) {
    systemTool();
    const StartupItem item = tool();
    home.platform.fail(Operation::CreateFile, enabled / "tool.desktop", "No space left on device");
    home.platform.fail(Operation::MoveItem, disabled / "tool.desktop", "Input/output error");
    const StartupActionResult result = disable(home, item);
    EXPECT_EQ(result.message, "Failed to disable Tool: No space left on device\nInput/output error");
    EXPECT_EQ(contentOf(disabled / "tool.desktop"), toolText); // nothing is lost
}

TEST_F(LinuxStartupActions, AMaskThatCannotBeRemovedStopsEnabling) {
    systemTool();
    EXPECT_TRUE(disable(home, tool()).succeeded);
    home.platform.fail(Operation::RemoveFile, enabled / "tool.desktop", "Operation not permitted");
    const StartupActionResult result = enable(home, onlyItem(home));
    EXPECT_EQ(result.message, "Failed to restore Tool: Operation not permitted");
    EXPECT_TRUE(isStartupMask(home.platform, StartupKind::Autostart, enabled / "tool.desktop"));
    EXPECT_EQ(contentOf(disabled / "tool.desktop"), toolText);
}

TEST_F(LinuxStartupActions, AFailedMoveBringsTheMaskBack) {
    systemTool();
    EXPECT_TRUE(disable(home, tool()).succeeded);
    const std::string mask = contentOf(enabled / "tool.desktop");
    home.platform.fail(Operation::MoveItem, disabled / "tool.desktop", "Input/output error");
    const StartupActionResult result = enable(home, onlyItem(home));
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "Failed to restore Tool: Input/output error");
    EXPECT_EQ(contentOf(enabled / "tool.desktop"), mask);
    EXPECT_EQ(contentOf(disabled / "tool.desktop"), toolText);
}

TEST_F(LinuxStartupActions, EverySingleFailureLeavesTheConfigurationSomewhere) {
    systemTool();
    for (std::size_t allowed = 0; allowed < 6; ++allowed) {
        EngineHome fresh(System::Linux);
        fresh.text("/etc/xdg/autostart/tool.desktop", toolText);
        fresh.text(".config/autostart/tool.desktop", toolText);
        fresh.platform.failAfter(allowed, "No space left on device");
        const bool succeeded = disable(fresh, onlyItem(fresh)).succeeded;
        const bool isAway = contentOf(fresh.place(".config/autostart.disabled/tool.desktop")) == toolText;
        const bool isThere = contentOf(fresh.place(".config/autostart/tool.desktop")) == toolText;
        EXPECT_NE(isAway, isThere) << allowed;
        EXPECT_EQ(succeeded, allowed >= 3) << allowed;
    }
}

TEST_F(LinuxStartupActions, TheMessagesNameTheFileThatIsGone) {
    const StartupItem item = tool();
    std::filesystem::remove(item.plistURL);
    EXPECT_EQ(disable(home, item).message, "Startup item config not found: tool.desktop.");
    StartupItem gone = item;
    gone.isEnabled = false;
    gone.plistURL = disabled / "tool.desktop";
    EXPECT_EQ(enable(home, gone).message, "Disabled config not found: tool.desktop.");
    EXPECT_EQ(enable(home, item).message, "Tool is already enabled.");
    EXPECT_EQ(disable(home, gone).message, "Tool is already disabled.");
    EXPECT_THAT(steps, IsEmpty());
}

// User services

TEST_F(LinuxStartupActions, AServiceIsStoppedMovedAndForgotten) {
    const StartupItem item = this->item(services / "job.service", serviceText);
    home.link(services / "job.service", services / "default.target.wants/job.service");
    EXPECT_TRUE(disable(home, item).succeeded);
    EXPECT_THAT(calls(home), ElementsAre("--user stop job.service", "--user daemon-reload"));
    EXPECT_EQ(contentOf(disabledServices / "job.service"), serviceText);
    EXPECT_TRUE(home.has(services / "default.target.wants/job.service"));
}

TEST_F(LinuxStartupActions, AServiceThatStartsAtLoginIsStarted) {
    home.link(services / "job.service", services / "default.target.wants/job.service");
    const StartupItem item = this->item(disabledServices / "job.service", serviceText);
    EXPECT_TRUE(enable(home, item).succeeded);
    EXPECT_THAT(calls(home), ElementsAre("--user daemon-reload", "--user start job.service"));
    EXPECT_EQ(contentOf(services / "job.service"), serviceText);
}

TEST_F(LinuxStartupActions, AServiceThatDoesNotStartAtLoginIsOnlyRestored) {
    const StartupItem item = this->item(disabledServices / "job.service", serviceText);
    EXPECT_TRUE(enable(home, item).succeeded);
    EXPECT_THAT(calls(home), ElementsAre("--user daemon-reload"));
}

TEST_F(LinuxStartupActions, AFileNameThatIsNoUnitNameIsNotPassedOn) {
    for (const char* name : {"*.service", "-Hhost.service", "a b.service", "?x.service"}) {
        const StartupItem item = this->item(services / name, serviceText);
        EXPECT_TRUE(disable(home, item).succeeded) << name;
        std::filesystem::remove(disabledServices / name);
    }
    for (const std::string& call : calls(home)) {
        EXPECT_EQ(call, "--user daemon-reload");
    }
}

TEST_F(LinuxStartupActions, AServiceOfThatNameIsNotReplaced) {
    home.text(services / "job.service", "[Service]\nExecStart=/bin/other\n");
    home.text(disabledServices / "job.service", serviceText);
    StartupItem item;
    item.name = "Job";
    item.plistURL = disabledServices / "job.service";
    EXPECT_FALSE(enable(home, item).succeeded);
    EXPECT_EQ(contentOf(disabledServices / "job.service"), serviceText);
    EXPECT_EQ(contentOf(services / "job.service"), "[Service]\nExecStart=/bin/other\n");
}

} // namespace
} // namespace vellmoor::test
