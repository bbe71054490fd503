// Logs and crash reports on Linux.
#include "junk/JunkFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vellmoor {
namespace {

using test::LinuxJunk;
using test::names;
using test::row;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

TEST_F(LinuxJunk, LogsOfTheTableAreFoundAndNothingElse) {
    const std::vector<std::string> wanted{".xsession-errors",
                                          ".xsession-errors.old",
                                          ".local/share/xorg/Xorg.0.log",
                                          ".local/share/xorg/Xorg.0.log.old",
                                          ".local/share/sddm/xorg-session.log",
                                          ".local/state/a.log",
                                          ".local/state/app/b.log.1",
                                          ".local/state/app/x/c.log.gz",
                                          ".local/state/app/d.log.old",
                                          ".config/Editor/logs",
                                          ".npm/_logs",
                                          ".cache/JetBrains/Idea/log",
                                          ".cache/Google/AndroidStudio1/log",
                                          ".local/share/JetBrains/Toolbox/logs",
                                          ".local/share/Steam/logs"};
    for (const std::string& path : wanted) {
        home.file(path.ends_with("logs") || path.ends_with("/log") ? Path(path) / "a" : Path(path));
    }
    home.folder(".config/Editor/Code Cache");
    for (const char* path :
         {".config/hexchat/logs/chat", ".purple/logs/chat", ".local/state/weechat/w.log",
          ".local/state/profanity/p.log", ".local/state/a/b/c/too-deep.log", ".local/state/app/notes.txt",
          ".local/state/app/x.log.abc", ".local/share/xorg/other.txt", ".config/irc/logs/a"}) {
        home.file(path);
    }
    EXPECT_THAT(targets("System Logs"), ::testing::UnorderedElementsAreArray(wanted));
}

TEST_F(LinuxJunk, ALogThatIsALinkIsNoTarget) {
    home.file("real.log");
    home.link(home.place("real.log"), ".local/state/app/a.log");
    home.file(".local/state/app/b.log");
    EXPECT_THAT(targets("System Logs"), ElementsAre(".local/state/app/b.log"));
}

TEST_F(LinuxJunk, CrashReportsFollowTheLogs) {
    home.file(".xsession-errors");
    home.file("hs_err_pid1.log");
    home.file("replay_pid2.log");
    home.file("java_error_in_idea.hprof");
    home.file("hs_err_pid1.txt");
    EXPECT_THAT(targets("System Logs"),
                ::testing::AllOf(Contains(".xsession-errors"), Contains("hs_err_pid1.log"), Contains("replay_pid2.log"),
                                 Contains("java_error_in_idea.hprof"), Not(Contains("hs_err_pid1.txt"))));
    EXPECT_EQ(targets("System Logs").front(), ".xsession-errors");
}

TEST_F(LinuxJunk, SystemCrashReportsOfTheUserAreFound) {
    home.file("/var/crash/tool.1000.crash");
    home.file("/var/crash/tool.1000.upload");
    home.file("/var/crash/notes.txt");
    const auto items = scan();
    EXPECT_THAT(names(row(items, "System Logs")), UnorderedElementsAre("tool.1000.crash", "tool.1000.upload"));
}

TEST_F(LinuxJunk, CrashReportsOfAClosedBrowserAreFound) {
    home.file(".config/google-chrome/Crash Reports/completed/a.dmp");
    home.file(".config/google-chrome/Crash Reports/settings.dat");
    home.file(".mozilla/firefox/Crash Reports/pending/b.dmp");
    home.file(".mozilla/firefox/Crash Reports/InstallTime1");
    EXPECT_THAT(targets("System Logs"), UnorderedElementsAre(".config/google-chrome/Crash Reports/completed/a.dmp",
                                                             ".mozilla/firefox/Crash Reports/pending/b.dmp"));
    run("/usr/lib/firefox/firefox");
    EXPECT_THAT(targets("System Logs"), ElementsAre(".config/google-chrome/Crash Reports/completed/a.dmp"));
}

} // namespace
} // namespace vellmoor
