#include "memory/Memory.h"
#include "memory/MemoryFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using test::answering;
using test::EngineHome;
using test::Invocation;
using test::setTool;
using test::System;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacPurge : public ::testing::Test {
protected:
    void setPurge(std::string output, std::int32_t status) {
        setTool(home, "/usr/sbin/purge", answering(std::move(output), status));
    }
    void setScript(std::string output, std::int32_t status) {
        setTool(home, "/usr/bin/osascript", answering(std::move(output), status));
    }
    void expectFailure(std::string_view message) {
        const MemoryOptimization result = optimizeMemory(home.context());
        EXPECT_FALSE(result.succeeded);
        EXPECT_EQ(result.message, message);
    }

    EngineHome home{System::Mac};
    const std::string refusal = "purge: Unable to purge disk buffers: Operation not permitted\n";
};

TEST_F(MacPurge, TheFirstPurgeToolIsUsed) {
    setTool(home, "/bin/purge", answering(""));
    setTool(home, "/sbin/purge", answering(""));
    EXPECT_EQ(purgeExecutablePath(home.context()), home.place("/sbin/purge"));
    setTool(home, "/usr/bin/purge", answering(""));
    EXPECT_EQ(purgeExecutablePath(home.context()), home.place("/usr/bin/purge"));
    setTool(home, "/usr/sbin/purge", answering(""));
    EXPECT_EQ(purgeExecutablePath(home.context()), home.place("/usr/sbin/purge"));
}

TEST_F(MacPurge, APurgeFileThatIsNotExecutableIsNoTool) {
    home.text("/usr/sbin/purge", "#!/bin/sh\n");
    EXPECT_EQ(purgeExecutablePath(home.context()), std::nullopt);
}

TEST_F(MacPurge, WithoutAPurgeToolNothingIsRun) {
    expectFailure("This system does not provide the purge tool, so memory management cannot run.");
    EXPECT_THAT(home.platform.invocations(), IsEmpty());
}

TEST_F(MacPurge, AStatusOfZeroIsSuccess) {
    setPurge("", 0);
    const MemoryOptimization result = optimizeMemory(home.context());
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.message, "Requested macOS to free reclaimable file caches.");
    EXPECT_THAT(home.platform.invocations(), ElementsAre(Invocation{home.place("/usr/sbin/purge"), {}}));
}

TEST_F(MacPurge, ARefusalAsksForAdministratorRights) {
    setPurge(refusal, 1);
    setScript("", 0);
    const MemoryOptimization result = optimizeMemory(home.context());
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.message, "Requested macOS to free reclaimable file caches with admin authorization.");
    const Path purge = home.place("/usr/sbin/purge");
    const std::string script = "do shell script \"" + purge.string() + "\" with administrator privileges";
    EXPECT_THAT(home.platform.invocations(),
                ElementsAre(Invocation{purge, {}}, Invocation{home.place("/usr/bin/osascript"), {"-e", script}}));
}

TEST_F(MacPurge, TheCaseOfARefusalDoesNotMatter) {
    setPurge("OPERATION NOT PERMITTED", 1);
    setScript("", 0);
    EXPECT_TRUE(optimizeMemory(home.context()).succeeded);
}

TEST_F(MacPurge, ARefusalWithStatusZeroIsStillSuccess) {
    setPurge(refusal, 0);
    EXPECT_TRUE(optimizeMemory(home.context()).succeeded);
}

TEST_F(MacPurge, AClosedPasswordDialogIsACancellation) {
    setPurge(refusal, 1);
    setScript("0:59: execution error: User canceled. (-128)\n", 1);
    expectFailure("Admin authorization cancelled, memory optimization not performed.");
}

TEST_F(MacPurge, AClosedPasswordDialogIsKnownByItsNumberInEveryLanguage) {
    setPurge(refusal, 1);
    for (const char* said :
         {"0:59: execution error: 用户已取消。 (-128)\n", "0:59: execution error: Abgebrochen. (-128)\n"}) {
        setScript(said, 1);
        expectFailure("Admin authorization cancelled, memory optimization not performed.");
    }
}

TEST_F(MacPurge, AnotherErrorNumberIsNoCancellation) {
    setPurge(refusal, 1);
    setScript("0:59: execution error: -128 is not the number (-1280)\n", 1);
    expectFailure("0:59: execution error: -128 is not the number (-1280)");
}

TEST_F(MacPurge, WhatTheDialogSaidIsShownOnOneLine) {
    setPurge(refusal, 1);
    setScript("\n execution error:\nThe administrator user name or password was incorrect. \n", 1);
    expectFailure("execution error: The administrator user name or password was incorrect.");
}

TEST_F(MacPurge, ASilentDialogFailureShowsItsStatus) {
    setPurge(refusal, 1);
    setScript(" \n", 77);
    expectFailure("Admin authorization failed with status code 77.");
}

TEST_F(MacPurge, ADialogThatCouldNotStartShowsWhy) {
    setPurge(refusal, 1);
    expectFailure("No such file or directory");
}

TEST_F(MacPurge, AnotherFailureShowsWhatPurgeSaid) {
    setPurge("purge: first\nsecond\n", 2);
    setScript("", 0);
    expectFailure("purge: first second");
    EXPECT_THAT(home.platform.invocations(), ElementsAre(Invocation{home.place("/usr/sbin/purge"), {}}));
}

TEST_F(MacPurge, ASilentFailureShowsItsStatus) {
    setPurge("", 137);
    expectFailure("Memory cleanup failed, purge returned status code 137.");
}

TEST_F(MacPurge, PermissionDeniedAloneIsNoRefusal) {
    setPurge("permission denied", 1);
    setScript("", 0);
    expectFailure("permission denied");
}

class LinuxPurge : public ::testing::Test {
protected:
    MemoryOptimization optimize() {
        return optimizeMemory(home.context(),
                              [this] { callsBeforeDisks.push_back(home.platform.invocations().size()); });
    }
    void setHelper(std::string output, std::int32_t status) {
        setTool(home, "/usr/libexec/vellmoor/vellmoor-purge", answering(std::move(output), status));
    }
    void setSysctl(std::string output, std::int32_t status) {
        setTool(home, "/usr/sbin/sysctl", answering(std::move(output), status));
    }
    void setPkexec(std::string output, std::int32_t status) {
        setTool(home, "/usr/bin/pkexec", answering(std::move(output), status));
    }
    void expectFailure(std::string_view message) {
        const MemoryOptimization result = optimize();
        EXPECT_FALSE(result.succeeded);
        EXPECT_EQ(result.message, message);
    }

    EngineHome home{System::Linux};
    std::vector<std::size_t> callsBeforeDisks; ///< for each time that the disks were written
    const std::string refusal = "Operation not permitted\n";
    const std::string notInstalled = "The memory cleanup helper is not installed, so memory management cannot run.";
};

TEST_F(LinuxPurge, TheHelperGoesBeforeSysctlWhereverItIsInstalled) {
    EXPECT_EQ(purgeExecutablePath(home.context()), std::nullopt);
    setTool(home, "/sbin/sysctl", answering(""));
    EXPECT_EQ(purgeExecutablePath(home.context()), home.place("/sbin/sysctl"));
    for (const char* path : {"/usr/sbin/sysctl", "/usr/local/libexec/vellmoor/vellmoor-purge",
                             "/usr/lib/vellmoor/vellmoor-purge", "/usr/libexec/vellmoor/vellmoor-purge"}) {
        setTool(home, path, answering(""));
        EXPECT_EQ(purgeExecutablePath(home.context()), home.place(path));
    }
}

TEST_F(LinuxPurge, WithNeitherHelperNorSysctlNothingIsRun) {
    expectFailure(notInstalled);
    EXPECT_THAT(home.platform.invocations(), IsEmpty());
}

TEST_F(LinuxPurge, AHelperThatMayDoItNeedsNoAuthorization) {
    setHelper("", 0);
    const MemoryOptimization result = optimize();
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.message, "Requested the system to free reclaimable file caches.");
    EXPECT_THAT(home.platform.invocations(),
                ElementsAre(Invocation{home.place("/usr/libexec/vellmoor/vellmoor-purge"), {}}));
}

TEST_F(LinuxPurge, ARefusedHelperRunsAgainThroughPkexec) {
    setHelper(refusal, 1);
    setPkexec("", 0);
    const MemoryOptimization result = optimize();
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.message, "Requested the system to free reclaimable file caches with admin authorization.");
    const Path helper = home.place("/usr/libexec/vellmoor/vellmoor-purge");
    EXPECT_THAT(home.platform.invocations(),
                ElementsAre(Invocation{helper, {}},
                            Invocation{home.place("/usr/bin/pkexec"), {"--disable-internal-agent", helper.string()}}));
}

TEST_F(LinuxPurge, ARefusalWithoutPkexecIsNotInstalled) {
    setHelper(refusal, 1);
    expectFailure(notInstalled);
}

TEST_F(LinuxPurge, Status126MeansThatTheUserClosedTheDialog) {
    setHelper(refusal, 1);
    setPkexec("Error executing command as another user: Request dismissed\n", 126);
    expectFailure("Admin authorization cancelled, memory optimization not performed.");
}

TEST_F(LinuxPurge, Status127ShowsWhatPkexecSaid) {
    setHelper(refusal, 1);
    setPkexec("Error executing command as another user: No authentication agent found.\n", 127);
    expectFailure("Error executing command as another user: No authentication agent found.");
}

TEST_F(LinuxPurge, ASilentStatus127ShowsTheStatus) {
    setHelper(refusal, 1);
    setPkexec("", 127);
    expectFailure("Admin authorization failed with status code 127.");
}

TEST_F(LinuxPurge, AnotherStatusOfPkexecIsAFailureOfTheTool) {
    setHelper(refusal, 1);
    setPkexec("Read-only\nfile system\n", 1);
    expectFailure("Read-only file system");
}

TEST_F(LinuxPurge, UserCanceledInTheOutputIsNoCancellationHere) {
    setHelper(refusal, 1);
    setPkexec("User canceled", 1);
    expectFailure("User canceled");
}

TEST_F(LinuxPurge, AnotherFailureOfTheHelperIsShown) {
    setHelper("Read-only file system\n", 1);
    setPkexec("", 0);
    expectFailure("Read-only file system");
}

TEST_F(LinuxPurge, ASilentFailureShowsItsStatus) {
    setHelper("", 3);
    expectFailure("Memory cleanup failed with status code 3.");
}

TEST_F(LinuxPurge, WithoutAHelperSysctlIsCalledWithItsFixedArguments) {
    setSysctl("", 0);
    EXPECT_TRUE(optimize().succeeded);
    EXPECT_THAT(home.platform.invocations(),
                ElementsAre(Invocation{home.place("/usr/sbin/sysctl"), {"-q", "-w", "vm.drop_caches=3"}}));
}

TEST_F(LinuxPurge, TheDisksAreWrittenOnceBeforeSysctl) {
    setSysctl("sysctl: permission denied on key \"vm.drop_caches\"\n", 1);
    setPkexec("", 0);
    EXPECT_TRUE(optimize().succeeded);
    EXPECT_THAT(callsBeforeDisks, ElementsAre(0U));
}

TEST_F(LinuxPurge, TheHelperWritesTheDisksItself) {
    setHelper("", 0);
    EXPECT_TRUE(optimize().succeeded);
    EXPECT_THAT(callsBeforeDisks, IsEmpty());
}

TEST_F(LinuxPurge, ARefusedSysctlRunsAgainThroughPkexec) {
    setSysctl("sysctl: permission denied on key \"vm.drop_caches\"\n", 1);
    setPkexec("", 0);
    EXPECT_TRUE(optimize().succeeded);
    const Path sysctl = home.place("/usr/sbin/sysctl");
    EXPECT_EQ(home.platform.invocations().at(1),
              (Invocation{home.place("/usr/bin/pkexec"),
                          {"--disable-internal-agent", sysctl.string(), "-q", "-w", "vm.drop_caches=3"}}));
}

TEST_F(LinuxPurge, SysctlsRefusalIsAskedForInEnglish) {
    setSysctl("sysctl: permission denied on key \"vm.drop_caches\"\n", 1);
    setPkexec("", 0);
    EXPECT_TRUE(optimize().succeeded);
    EXPECT_TRUE(home.platform.ranUntranslated(home.place("/usr/sbin/sysctl")));
    EXPECT_FALSE(home.platform.ranUntranslated(home.place("/usr/bin/pkexec"))); // its words are for the user
}

TEST_F(LinuxPurge, AReadOnlyProcIsAnOrdinaryFailure) {
    setSysctl("sysctl: setting key \"vm.drop_caches\": Read-only file system\n", 1);
    setPkexec("", 0);
    expectFailure("sysctl: setting key \"vm.drop_caches\": Read-only file system");
}

} // namespace
} // namespace vellmoor
