#include "applications/AppsFixture.h"
#include "clean/Cleaning.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FlatpakRemoval : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
    const Path body = flatpak(home, "org.example.Painter", "Painter");

    [[nodiscard]] Outcome uninstall() const { return uninstallFlatpak(home.context(), body); }
    [[nodiscard]] std::vector<std::string> call(const std::string& ref) const {
        return {"uninstall", "--user", "--noninteractive", "--assumeyes", ref};
    }
};

TEST_F(FlatpakRemoval, OneCallPerInstalledVersion) {
    const Path tool = flatpakProgram(home);
    home.folder(body / "x86_64/beta");
    home.folder(body / "aarch64/stable");
    EXPECT_TRUE(uninstall().has_value());
    EXPECT_THAT(home.platform.invocations(),
                ElementsAre(Invocation{tool, call("app/org.example.Painter/aarch64/stable")},
                            Invocation{tool, call("app/org.example.Painter/x86_64/beta")},
                            Invocation{tool, call("app/org.example.Painter/x86_64/stable")}));
}

TEST_F(FlatpakRemoval, WhatFlatpakSaysIsTheReason) {
    flatpakProgram(home, {1, "error: Permission denied\n", ""});
    const Outcome outcome = uninstall();
    ASSERT_FALSE(outcome.has_value());
    EXPECT_EQ(outcome.error(), "error: Permission denied");
    EXPECT_TRUE(home.has(body / "x86_64/stable/0123abcd/files/bin/program"));
}

TEST_F(FlatpakRemoval, AFailureWithoutWordsTellsTheStatus) {
    flatpakProgram(home, {7, "", ""});
    EXPECT_EQ(uninstall().error(), "flatpak: 7");
}

TEST_F(FlatpakRemoval, OutputAndStartErrorAreBothTold) {
    flatpakProgram(home, {-1, "half", "No such file or directory"});
    EXPECT_EQ(uninstall().error(), "half\nNo such file or directory");
}

TEST_F(FlatpakRemoval, AFailureKeepsNoOtherVersionFromBeingRemoved) {
    home.folder(body / "aarch64/stable");
    const Path tool = home.place("/usr/bin/flatpak");
    home.platform.tools[tool] = [](const std::vector<std::string>& arguments) {
        return arguments.back().find("aarch64") != std::string::npos ? CommandResult{1, "in use", ""}
                                                                     : CommandResult{0, "", ""};
    };
    EXPECT_EQ(uninstall().error(), "in use");
    EXPECT_THAT(home.platform.invocations(), ::testing::SizeIs(2));
}

TEST_F(FlatpakRemoval, TheSecondPlaceOfTheProgramIsUsed) {
    const Path tool = home.place("/bin/flatpak");
    home.platform.tools[tool] = [](const std::vector<std::string>&) { return CommandResult{0, "", ""}; };
    EXPECT_TRUE(uninstall().has_value());
    EXPECT_EQ(home.platform.invocations().front().tool, tool);
}

TEST_F(FlatpakRemoval, WithoutProgramOrVersionNothingIsCalled) {
    EXPECT_FALSE(uninstall().has_value());
    flatpakProgram(home);
    EXPECT_FALSE(uninstallFlatpak(home.context(), home.folder(".local/share/flatpak/app/org.x.Empty")).has_value());
    EXPECT_FALSE(uninstallFlatpak(home.context(), home.place(".local/share/flatpak/app/org.x.Gone")).has_value());
    EXPECT_THAT(home.platform.invocations(), IsEmpty());
}

TEST_F(FlatpakRemoval, ABodyIsADirectChildOfTheAppFolder) {
    const EngineContext context = home.context();
    EXPECT_TRUE(isFlatpakBody(context, body));
    EXPECT_TRUE(isFlatpakBody(context, body / ""));
    for (const Path& path : {body / "current", body.parent_path(), home.place(".var/app/org.example.Painter"),
                             home.place(".local/share/flatpak/runtime/org.x.Y"), home.place("flatpak/app/org.x.Y"),
                             Path("/var/lib/flatpak/app/org.x.Y"), Path("")}) {
        EXPECT_FALSE(isFlatpakBody(context, path)) << path;
    }
}

TEST_F(FlatpakRemoval, ABodyIsKnownThroughALinkedHome) {
    home.link(home.home, "linked");
    EXPECT_TRUE(isFlatpakBody(home.context(), home.place("linked/.local/share/flatpak/app/org.example.Painter")));
}

class FlatpakClean : public FlatpakRemoval {
protected:
    /// Cleans the application's row with everything ticked.
    [[nodiscard]] CleanupReport clean() const {
        CleanupItem row = application(home, "Painter");
        row.isSelected = true;
        for (CleanupTarget& target : row.targets.edit()) {
            target.isSelected = true;
        }
        EngineContext context = home.context();
        return vellmoor::clean(context, {row}, std::chrono::milliseconds(0));
    }
};

TEST_F(FlatpakClean, TheBodyIsUninstalledAndTheLeftoversGoToTheTrash) {
    flatpakProgram(home);
    const Path data = home.file(".var/app/org.example.Painter/config/settings").parent_path().parent_path();
    const CleanupReport report = clean();
    EXPECT_EQ(report.attemptedCount, 2);
    EXPECT_EQ(report.removedCount, 2);
    EXPECT_EQ(report.failedCount, 0);
    ASSERT_THAT(home.platform.invocations(), ::testing::SizeIs(1));
    EXPECT_EQ(home.platform.invocations().front().arguments, call("app/org.example.Painter/x86_64/stable"));
    EXPECT_THAT(home.platform.changes(), ElementsAre(Change{Operation::MoveToTrash, data}));
    EXPECT_TRUE(home.has(body)); // only Flatpak itself may take it away
}

TEST_F(FlatpakClean, AFailureIsALineAndTheBodyStays) {
    flatpakProgram(home, {1, "error: Permission denied\n", ""});
    const CleanupReport report = clean();
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_THAT(report.failures, ElementsAre("org.example.Painter: error: Permission denied"));
    EXPECT_TRUE(home.has(body / "x86_64/stable/0123abcd/files/bin/program"));
    EXPECT_THAT(home.platform.changes(), IsEmpty());
}

TEST_F(FlatpakRemoval, TheMacHasNoFlatpaks) {
    const EngineHome mac(System::Mac);
    EXPECT_FALSE(isFlatpakBody(mac.context(), mac.folder(".local/share/flatpak/app/org.x.Y")));
}

} // namespace
} // namespace vellmoor::test
