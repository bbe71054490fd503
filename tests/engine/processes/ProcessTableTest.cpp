#include "processes/ProcessTable.h"

#include "memory/MemoryFixtures.h"
#include "processes/LinuxProcesses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <unistd.h>

namespace vellmoor {
namespace {

using test::addProcess;
using test::answering;
using test::EngineHome;
using test::Invocation;
using test::setTool;
using test::System;
using test::userUnit;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class MacProcesses : public ::testing::Test {
protected:
    void setPs(std::string output, std::int32_t status = 0) {
        setTool(home, "/bin/ps", answering(std::move(output), status));
    }
    std::set<std::string> names() { return runningProcessNames(home.platform, home.layout); }
    std::vector<ProcessMemorySample> samples() {
        return processMemorySamples(home.platform, home.layout, {home.platform, home.layout});
    }

    EngineHome home{System::Mac};
};

TEST_F(MacProcesses, NamesAreTheLastPathComponents) {
    setPs("/sbin/launchd\n"
          "/Applications/Safari.app/Contents/MacOS/Safari\n"
          "/Applications/Google Chrome.app/Contents/MacOS/Google Chrome\n"
          "\n"
          "-zsh\n"
          "ps\n");
    EXPECT_THAT(names(), UnorderedElementsAre("launchd", "Safari", "Google Chrome", "-zsh", "ps"));
    EXPECT_THAT(home.platform.invocations(), ElementsAre(Invocation{home.place("/bin/ps"), {"-axo", "comm="}}));
}

TEST_F(MacProcesses, AFailedListingHasNoNames) {
    setPs("/sbin/launchd\n", 1);
    EXPECT_THAT(names(), IsEmpty());
    home.platform.tools.clear();
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(MacProcesses, SlashesAtTheEndOfALineDoNotHideItsName) {
    setPs("/opt/tool//\n/\n");
    EXPECT_THAT(names(), UnorderedElementsAre("tool", "/"));
}

TEST_F(MacProcesses, SamplesKeepTheListingOrderAndSkipBrokenLines) {
    setPs("  900  512000 /Applications/Visual Studio Code.app/Contents/MacOS/Electron\n"
          "    1   22544 /sbin/launchd\n"
          "  abc 1 /bin/x\n"
          "  77 \n"
          "  902 1024 (zombie)\n");
    EXPECT_THAT(samples(),
                ElementsAre(ProcessMemorySample{900, 512000LL * 1024,
                                                "/Applications/Visual Studio Code.app/Contents/MacOS/Electron"},
                            ProcessMemorySample{1, 22544LL * 1024, "/sbin/launchd"},
                            ProcessMemorySample{902, 1024LL * 1024, "(zombie)"}));
    EXPECT_THAT(home.platform.invocations(),
                ElementsAre(Invocation{home.place("/bin/ps"), {"-axo", "pid=,rss=,comm="}}));
}

TEST_F(MacProcesses, AFailedListingHasNoSamples) {
    setPs("1 2 /sbin/launchd\n", 1);
    EXPECT_THAT(samples(), IsEmpty());
}

class LinuxProcessTable : public ::testing::Test {
protected:
    LinuxProcessTable() { home.layout.memory.processes.pageBytes = 4096; }
    std::set<std::string> names() { return runningProcessNames(home.platform, home.layout); }
    std::vector<ProcessMemorySample> samples() {
        return processMemorySamples(home.platform, home.layout, {home.platform, home.layout});
    }

    EngineHome home{System::Linux};
};

TEST_F(LinuxProcessTable, NamesAreThoseOfTheProgramAndOfTheProcess) {
    addProcess(home, {.pid = 10, .exe = "/usr/lib/firefox-esr/firefox-esr", .comm = "Isolated Web Co"});
    EXPECT_THAT(names(), UnorderedElementsAre("firefox-esr", "Isolated Web Co"));
    EXPECT_THAT(home.platform.invocations(), IsEmpty());
}

TEST_F(LinuxProcessTable, AReplacedProgramKeepsItsName) {
    addProcess(home, {.pid = 10, .exe = "/opt/google/chrome/chrome (deleted)"});
    EXPECT_THAT(names(), UnorderedElementsAre("chrome"));
}

TEST_F(LinuxProcessTable, AFlatpakIsOneToken) {
    addProcess(home, {.pid = 10,
                      .exe = "/app/lib/firefox/firefox",
                      .group = userUnit(home, "app-flatpak-org.mozilla.firefox-31.scope"),
                      .comm = "firefox"});
    EXPECT_THAT(names(), UnorderedElementsAre("flatpak:org.mozilla.firefox"));
}

TEST_F(LinuxProcessTable, AFlatpakOutsideItsScopeIsKnownByItsInfoFile) {
    addProcess(home, {.pid = 10, .exe = "/app/bin/gimp", .comm = "gimp"});
    home.text("/proc/10/root/.flatpak-info", "[Application]\nname=org.gimp.GIMP\nruntime=x\n");
    EXPECT_THAT(names(), UnorderedElementsAre("flatpak:org.gimp.GIMP"));
}

TEST_F(LinuxProcessTable, AnInfoFileWithoutANameIsNoFlatpak) {
    addProcess(home, {.pid = 10, .exe = "/usr/bin/gimp"});
    home.text("/proc/10/root/.flatpak-info", "[Instance]\nname=x\n");
    EXPECT_THAT(names(), UnorderedElementsAre("gimp"));
}

TEST_F(LinuxProcessTable, ASnapIsOneToken) {
    addProcess(home, {.pid = 10,
                      .exe = "/snap/firefox/4173/usr/lib/firefox/firefox",
                      .group = userUnit(home, "snap.firefox.firefox-8b7c2d8e-0a4f-4d53-9f2a-6c1b8f0e7d21.scope"),
                      .comm = "firefox"});
    EXPECT_THAT(names(), UnorderedElementsAre("snap:firefox"));
}

TEST_F(LinuxProcessTable, ASnapOutsideItsScopeIsKnownByItsProgram) {
    addProcess(home, {.pid = 10, .exe = "/snap/chromium/2800/usr/lib/chromium-browser/chrome", .comm = "chrome"});
    addProcess(home, {.pid = 11, .exe = "/var/lib/snapd/snap/brave/300/opt/brave.com/brave/brave", .comm = "brave"});
    EXPECT_THAT(names(), UnorderedElementsAre("snap:chromium", "snap:brave"));
}

TEST_F(LinuxProcessTable, AProgramStartedFromATerminalThatIsASnapCountsAsItself) {
    addProcess(home, {.pid = 10,
                      .exe = "/usr/lib/firefox/firefox",
                      .group = userUnit(home, "snap.ghostty.ghostty-8b7c2d8e-0a4f-4d53-9f2a-6c1b8f0e7d21.scope"),
                      .comm = "firefox"});
    EXPECT_THAT(names(), UnorderedElementsAre("snap:ghostty", "firefox"));
}

TEST_F(LinuxProcessTable, ProcessesOfOtherUsersDoNotCount) {
    addProcess(home, {.pid = 10, .exe = "/usr/bin/chromium", .comm = "chromium", .user = 4711});
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(samples(), IsEmpty());
}

TEST_F(LinuxProcessTable, RootsProcessesAreNotTheKernelsThreads) {
    addProcess(home, {.pid = 2, .comm = "kthreadd", .flags = 0x208040});
    addProcess(home, {.pid = 10, .exe = "/usr/bin/vim", .comm = "vim"});
    EXPECT_THAT(LinuxProcesses(home.platform, home.layout).pids(), ElementsAre(10));
}

TEST_F(LinuxProcessTable, TheEffectiveUserDecides) {
    addProcess(home, {.pid = 10, .exe = "/usr/bin/passwd"});
    const std::string user = std::to_string(home.platform.user);
    home.text("/proc/10/status", "Uid:\t" + user + "\t4711\t4711\t4711\n");
    EXPECT_THAT(names(), IsEmpty());
    home.text("/proc/10/status", "Uid:\t4711\t" + user + "\t" + user + "\t" + user + "\n");
    EXPECT_THAT(names(), ElementsAre("passwd"));
}

TEST_F(LinuxProcessTable, WithoutAStatusTheOwnerOfTheFolderDecides) {
    home.text("/proc/10/comm", "tool\n");
    EXPECT_THAT(names(), ElementsAre("tool"));
    home.platform.user = home.platform.user + 1;
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(LinuxProcessTable, AProcessThatMayNotBeLookedIntoIsNamedByItself) {
    addProcess(home, {.pid = 10, .comm = "ssh-agent"});
    EXPECT_THAT(names(), ElementsAre("ssh-agent"));
}

TEST_F(LinuxProcessTable, AProcessThatHasEndedDoesNotRun) {
    addProcess(home, {.pid = 10, .comm = "firefox"});
    home.text("/proc/10/stat", "10 (firefox) Z 1 10 10 0 -1 4194304 0 0 0 0 0 0 0 0 20 0 1 0 100 0 0 0\n");
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(LinuxProcessTable, OneLookStaysAsItWasAndAnotherSeesWhatChanged) {
    addProcess(home, {.pid = 10, .exe = "/usr/bin/one", .comm = "one"});
    const LinuxProcesses look(home.platform, home.layout);
    EXPECT_EQ(look.name(10), "one");
    EXPECT_THAT(look.pids(), ElementsAre(10));
    home.text("/proc/10/comm", "two\n");
    addProcess(home, {.pid = 11, .exe = "/usr/bin/three"});
    EXPECT_EQ(look.name(10), "one");
    EXPECT_THAT(look.pids(), ElementsAre(10));
    const LinuxProcesses again(home.platform, home.layout);
    EXPECT_EQ(again.name(10), "two");
    EXPECT_THAT(again.pids(), ElementsAre(10, 11));
}

TEST_F(LinuxProcessTable, ALookAheadKnowsOfAllWithoutAskingAgain) {
    std::vector<std::int32_t> own;
    for (std::int32_t pid = 10; pid < 40; ++pid) {
        const bool isOwn = pid % 3 != 0;
        addProcess(home, {.pid = pid,
                          .exe = "/usr/bin/tool" + std::to_string(pid),
                          .environment = "A=" + std::to_string(pid),
                          .pages = pid,
                          .comm = "tool" + std::to_string(pid),
                          .user = isOwn ? -1 : 4711});
        home.text("/proc/" + std::to_string(pid) + "/root/.flatpak-info",
                  "[Application]\nname=org.example.Tool" + std::to_string(pid) + "\n");
        if (isOwn) {
            own.push_back(pid);
        }
    }
    EngineContext context = home.context();
    LinuxProcesses::lookAhead(context);
    const LinuxProcesses& look = LinuxProcesses::of(context);
    std::filesystem::remove_all(home.place("/proc"));
    EXPECT_THAT(look.pids(), ElementsAreArray(own));
    for (const std::int32_t pid : own) {
        const std::string number = std::to_string(pid);
        EXPECT_EQ(look.executable(pid), home.place("/usr/bin/tool" + number));
        EXPECT_EQ(look.name(pid), "tool" + number);
        EXPECT_EQ(look.residentBytes(pid), pid * 4096);
        EXPECT_EQ(look.environment(pid), "A=" + number);
        EXPECT_EQ(look.flatpak(pid), "org.example.Tool" + number);
    }
}

TEST_F(LinuxProcessTable, OnlyNumbersAreProcesses) {
    home.text("/proc/self/comm", "self\n");
    home.text("/proc/12a/comm", "no\n");
    home.text("/proc/99999999999/comm", "large\n");
    home.text("/proc/meminfo", "MemTotal: 1 kB\n");
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(LinuxProcessTable, AMissingProcFolderHasNoProcesses) {
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(samples(), IsEmpty());
}

TEST_F(LinuxProcessTable, SamplesAreAscendingWithResidentBytesProgramAndStart) {
    addProcess(home, {.pid = 200, .exe = "/usr/bin/b", .pages = 3, .started = 77});
    addProcess(home, {.pid = 30, .exe = "/usr/bin/a b", .pages = 5, .started = 88});
    EXPECT_THAT(samples(), ElementsAre(ProcessMemorySample{30, 5 * 4096, home.place("/usr/bin/a b").string(), 88},
                                       ProcessMemorySample{200, 3 * 4096, home.place("/usr/bin/b").string(), 77}));
}

TEST_F(LinuxProcessTable, AProcessWithoutProgramOrReadableSizeIsHandled) {
    addProcess(home, {.pid = 10, .pages = 2});
    addProcess(home, {.pid = 11, .exe = "/usr/bin/gone"});
    std::filesystem::remove(home.place("/proc/11/statm"));
    EXPECT_THAT(samples(), ElementsAre(ProcessMemorySample{10, 2 * 4096, "", 100}));
}

TEST_F(LinuxProcessTable, AProgramInTheHomeKeepsItsPath) {
    const std::string tool = (home.home / "Applications/tool").string();
    addProcess(home, {.pid = 10, .exe = tool, .pages = 1});
    EXPECT_EQ(samples().at(0).command, tool);
}

TEST_F(LinuxProcessTable, TheParentIsReadFromTheStatus) {
    const LinuxProcesses processes(home.platform, home.layout);
    addProcess(home, {.pid = 10, .parent = 7});
    home.text("/proc/11/status", "PPid:\tx\n");
    EXPECT_EQ(processes.parent(10), 7);
    EXPECT_EQ(processes.parent(11), std::nullopt);
    EXPECT_EQ(processes.parent(12), std::nullopt);
}

// The /proc of the machine that runs the tests

TEST(RealProcesses, TheTestProgramFindsItself) {
    const test::StandInPlatform platform(System::Linux, "/home/nobody", "/");
    const SystemLayout layout = linuxLayout(linuxEnvironmentOf("/home/nobody"), platform.userId(), "/");
    const Path self = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_THAT(runningProcessNames(platform, layout), Contains(self.filename().string()));

    const std::vector<ProcessMemorySample> samples = processMemorySamples(platform, layout, {platform, layout});
    const auto own = std::ranges::find(samples, getpid(), &ProcessMemorySample::pid);
    ASSERT_NE(own, samples.end());
    EXPECT_EQ(own->command, self.string());
    EXPECT_GT(own->bytes, 100'000);
}

} // namespace
} // namespace vellmoor
