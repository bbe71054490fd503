// Whether an application of the uninstaller runs.
#include "applications/AppsFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;

class RunningApps : public ::testing::Test {
protected:
    EngineHome home{System::Linux};

    [[nodiscard]] std::string unit(const std::string& name) const {
        return "/user.slice/user@" + std::to_string(home.platform.user) + ".service/app.slice/" + name;
    }
    [[nodiscard]] bool runs(const CleanupItem& row) const {
        EngineContext context = home.context();
        return applicationRuns(context, row);
    }
};

/// Variables as /proc shows them; "|" stands for the byte between them.
std::string variables(std::string text) {
    std::ranges::replace(text, '|', '\0');
    return text;
}

TEST_F(RunningApps, AnAppImageRunsByItsProgramOrByTheMountOfItsVariables) {
    const Path first = home.file("Applications/First.AppImage");
    const Path second = home.file("Applications/Second.AppImage");
    home.file("Applications/Third.AppImage");
    process(home, 40, first.string());
    process(home, 41, "/tmp/.mount_abc/usr/bin/second",
            variables("A=b|APPIMAGE=" + second.string() + "|APPDIR=/tmp/.mount_abc|"));
    EXPECT_FALSE(application(home, "First").isCleanable);
    EXPECT_FALSE(application(home, "Second").isCleanable);
    EXPECT_TRUE(application(home, "Third").isCleanable);
}

TEST_F(RunningApps, AProgramThatAnAppImageStartedIsNotTheAppImage) {
    const Path image = home.file("Applications/Terminal.AppImage");
    const std::string inherited = "APPIMAGE=" + image.string();
    process(home, 41, "/usr/bin/bash", variables(inherited + "|APPDIR=/tmp/.mount_abc|"));
    process(home, 42, "/tmp/.mount_abcd/tool", variables(inherited + "|APPDIR=/tmp/.mount_abc|"));
    process(home, 43, "/usr/bin/other", variables(inherited + "|"));
    process(home, 44, "/usr/bin/odd", variables(inherited + "|APPDIR=|"));
    EXPECT_TRUE(application(home, "Terminal").isCleanable);
}

TEST_F(RunningApps, AProgramFolderRunsWhenAProcessComesFromIt) {
    const Path program = elf(home, "opt/editor/lib/editor");
    elf(home, "opt/editor/run");
    elf(home, "opt/editor2/run");
    process(home, 50, program.string() + " (deleted)");
    EXPECT_FALSE(application(home, "editor").isCleanable);
    EXPECT_TRUE(application(home, "editor2").isCleanable);
}

TEST_F(RunningApps, ProcessesOfOthersDoNotCount) {
    const Path program = elf(home, "opt/editor/run");
    process(home, 50, program.string());
    home.text("/proc/50/status", "Uid:\t12345\t12345\t12345\t12345\n");
    EXPECT_TRUE(application(home, "editor").isCleanable);
}

// Asked again, long after the scan

TEST_F(RunningApps, AFlatpakThatWasStartedSinceTheScanRuns) {
    flatpak(home, "org.example.Painter", "Painter");
    flatpakProgram(home);
    const CleanupItem row = application(home, "Painter");
    EXPECT_TRUE(row.isCleanable);
    EXPECT_FALSE(runs(row));
    process(home, 31, "/app/bin/program", "", unit("app-flatpak-org.example.Painter-31.scope"));
    EXPECT_TRUE(runs(row));
    EXPECT_THAT(titles(home), ElementsAre("Painter"));
}

TEST_F(RunningApps, EachCallOfOneContextAsksAfresh) {
    const Path image = home.file("Applications/Tool.AppImage");
    const CleanupItem row = application(home, "Tool");
    EngineContext context = home.context();
    EXPECT_FALSE(applicationRuns(context, row));
    process(home, 31, image.string());
    EXPECT_TRUE(applicationRuns(context, row));
    std::filesystem::remove_all(home.place("/proc/31"));
    EXPECT_FALSE(applicationRuns(context, row));
}

TEST_F(RunningApps, AProgramFolderThatWasStartedSinceTheScanRuns) {
    const Path program = elf(home, "opt/editor/bin/editor");
    const CleanupItem row = application(home, "editor");
    EXPECT_FALSE(runs(row));
    process(home, 31, program.string());
    EXPECT_TRUE(runs(row));
}

TEST_F(RunningApps, OtherRowsHaveNoApplicationThatRuns) {
    process(home, 31, "/usr/bin/true");
    EXPECT_FALSE(runs(CleanupItem()));
}

TEST(RunningMacApps, ABundleThatWasStartedSinceTheScanRuns) {
    EngineHome home(System::Mac);
    const Path path = bundle(home, "/Applications/Tool.app", "com.example.tool");
    const CleanupItem row = application(home, "Tool");
    EngineContext context = home.context();
    EXPECT_FALSE(applicationRuns(context, row));
    home.platform.running = {{.pid = 7, .name = "Tool", .bundleIdentifier = "com.example.tool", .bundlePath = {}}};
    EXPECT_TRUE(applicationRuns(context, row));
    home.platform.running = {{.pid = 7, .name = "Tool", .bundleIdentifier = {}, .bundlePath = path}};
    EXPECT_TRUE(applicationRuns(context, row));
}

} // namespace
} // namespace vellmoor::test
