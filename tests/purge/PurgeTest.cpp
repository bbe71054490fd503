// No test writes to the real switch: the function gets a path of the temporary folder, and the real program runs as
// a user who may not open it.
#include "Purge.h"

#include "FileContent.h"
#include "ScopedUnprivileged.h"
#include "TemporaryFolder.h"
#include "layouts/MemoryLayout.h"
#include "layouts/linux/LinuxEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <grp.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;
using test::ScopedUnprivileged;
using test::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct PurgeResult {
    int status = -1;
    std::string errors;
    std::vector<std::string> atDisks; ///< what the switch held each time that the disks were written
};

PurgeResult drop(const fs::path& path) {
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* errors = open_memstream(&text, &size);
    PurgeResult result;
    result.status = dropFileCaches(path.c_str(), errors, [&] {
        result.atDisks.push_back(fs::is_regular_file(path) ? test::contentOf(path) : "");
    });
    std::fclose(errors);
    result.errors.assign(text, size);
    std::free(text);
    return result;
}

TEST(Purge, WritesThreeIntoTheSwitch) {
    const TemporaryFolder folder;
    const fs::path path = folder.text("drop_caches", "0");
    const PurgeResult result = drop(path);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(test::contentOf(path), "3");
}

TEST(Purge, WritesTheDisksBeforeTheCachesAreDropped) {
    const TemporaryFolder folder;
    EXPECT_THAT(drop(folder.text("drop_caches", "0")).atDisks, ElementsAre("0"));
}

TEST(Purge, WithoutTheRightItSaysSoAndChangesNothing) {
    const TemporaryFolder folder;
    const fs::path path = folder.text("drop_caches", "0");
    folder.setMode("drop_caches", 0400);
    PurgeResult result;
    {
        const ScopedUnprivileged unprivileged;
        result = drop(path);
    }
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "Operation not permitted\n");
    EXPECT_EQ(test::contentOf(path), "0");
    EXPECT_THAT(result.atDisks, IsEmpty());
}

TEST(Purge, BothErrorsOfMissingRightsReadTheSame) {
    EXPECT_STREQ(purgeErrorText(EACCES), "Operation not permitted");
    EXPECT_STREQ(purgeErrorText(EPERM), "Operation not permitted");
    EXPECT_STREQ(purgeErrorText(EROFS), "Read-only file system");
}

TEST(Purge, AMissingSwitchIsNotCreated) {
    const TemporaryFolder folder;
    const PurgeResult result = drop(folder / "drop_caches");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "No such file or directory\n");
    EXPECT_FALSE(fs::exists(folder / "drop_caches"));
}

TEST(Purge, AWriteThatFailsIsAFailure) {
    const PurgeResult result = drop("/dev/full");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "No space left on device\n");
}

// The program

/// In the child: becomes a user without rights and the program at `path`. Never returns.
[[noreturn]] void runUnprivileged(const char* path, const char* argument, int errors) {
    constexpr unsigned nobody = 65534;
    const bool dropped = geteuid() != 0 || (setgroups(0, nullptr) == 0 && setresgid(nobody, nobody, nobody) == 0 &&
                                            setresuid(nobody, nobody, nobody) == 0 && geteuid() == nobody);
    if (dropped && dup2(errors, STDERR_FILENO) >= 0) {
        std::array<char*, 3> arguments{const_cast<char*>(path), const_cast<char*>(argument), nullptr};
        execv(path, arguments.data());
    }
    _exit(125);
}

PurgeResult runProgram(const char* argument) {
    const TemporaryFolder folder; // a copy, because the build folder may be closed to the other user
    folder.setMode(".", 0755);
    const fs::path program = folder / "vellmoor-purge";
    fs::copy_file(PURGE_PROGRAM, program);
    folder.setMode("vellmoor-purge", 0755);

    std::array<int, 2> ends{};
    PurgeResult result;
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return result;
    }
    const pid_t child = fork();
    if (child == 0) {
        runUnprivileged(program.c_str(), argument, ends[1]);
    }
    close(ends[1]);
    std::array<char, 512> buffer{};
    for (ssize_t count = 0; (count = read(ends[0], buffer.data(), buffer.size())) > 0;) {
        result.errors.append(buffer.data(), static_cast<std::size_t>(count));
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

TEST(PurgeProgram, AnOrdinaryUserIsRefused) {
    const PurgeResult result = runProgram(nullptr);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "Operation not permitted\n");
}

TEST(PurgeProgram, ArgumentsAreRefused) {
    const PurgeResult result = runProgram("/tmp/other");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "vellmoor-purge takes no arguments\n");
}

TEST(PurgePolicy, NamesTheProgramThatTheMemoryLayoutLooksForFirst) {
    const MemoryLayout layout = linuxMemoryLayout(linuxEnvironmentOf("/home/tester"), 1000, "/");
    EXPECT_THAT(test::contentOf(PURGE_POLICY), HasSubstr("<annotate key=\"org.freedesktop.policykit.exec.path\">" +
                                                         layout.purgeTools.at(0).tool.string() + "</annotate>"));
}

TEST(PurgePolicy, AsksForAnAdministratorOnEverySession) {
    const std::string policy = test::contentOf(PURGE_POLICY);
    EXPECT_THAT(policy, HasSubstr("<allow_any>auth_admin</allow_any>"));
    EXPECT_THAT(policy, HasSubstr("<allow_inactive>auth_admin</allow_inactive>"));
    EXPECT_THAT(policy, HasSubstr("<allow_active>auth_admin_keep</allow_active>"));
}

} // namespace
} // namespace vellmoor
